#include "platform/BitmapFile.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace
{

const std::string BMPSUITE = std::string(KORVATH_TESTDATA_DIR) + "/bmpsuite/";

std::vector<uint8_t> ReadAll(const std::string& p_path)
{
    std::ifstream in(p_path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

// Binary PPM (P6, maxval 255) as top-down R,G,B.
bool ReadPpm(const std::string& p_path, int& p_width, int& p_height, std::vector<uint8_t>& p_rgb)
{
    std::ifstream in(p_path, std::ios::binary);
    std::string magic;
    int maxValue = 0;
    in >> magic >> p_width >> p_height >> maxValue;
    in.get();
    if (!in || magic != "P6" || maxValue != 255 || p_width <= 0 || p_height <= 0)
        return false;
    p_rgb.resize(size_t(p_width) * size_t(p_height) * 3);
    return bool(in.read(reinterpret_cast<char*>(p_rgb.data()), std::streamsize(p_rgb.size())));
}

size_t Stride(const platform::DibPixels& p_pixels)
{
    return (size_t(p_pixels.width) * p_pixels.bitCount + 31) / 32 * 4;
}

// Checks every pixel's colour against the reference picture, mapping the bottom-up rows.
void ExpectMatchesReference(const platform::DibPixels& p_pixels, const std::string& p_name)
{
    int width = 0, height = 0;
    std::vector<uint8_t> rgb;
    ASSERT_TRUE(ReadPpm(BMPSUITE + "ref/rgb24.ppm", width, height, rgb));
    ASSERT_EQ(p_pixels.width, width) << p_name;
    ASSERT_EQ(p_pixels.height, height) << p_name;
    const size_t stride = Stride(p_pixels);
    const size_t bpp = p_pixels.bitCount / 8u;
    ASSERT_GE(p_pixels.bits.size(), size_t(width) * size_t(height) * 4) << p_name;
    int mismatches = 0;
    for (int y = 0; y < height; ++y)
    {
        const uint8_t* row = p_pixels.bits.data() + size_t(height - 1 - y) * stride;
        for (int x = 0; x < width; ++x)
        {
            const uint8_t* ref = &rgb[(size_t(y) * size_t(width) + size_t(x)) * 3];
            const uint8_t* px = row + size_t(x) * bpp;
            if (px[2] != ref[0] || px[1] != ref[1] || px[0] != ref[2])
                ++mismatches;
        }
    }
    EXPECT_EQ(mismatches, 0) << p_name;
}

// A bitmap assembled field by field, for the depths and headers the writer never produces.
struct BmpSpec
{
    uint32_t headerSize = 40;
    int32_t width = 1;
    int32_t height = 1;
    uint16_t bitCount = 24;
    uint32_t compression = 0;
    uint32_t colorsUsed = 0;
    std::vector<uint32_t> masks;          // in the header (V2+) or after a 40-byte one
    std::vector<uint8_t> palette;         // raw entries
    std::vector<std::vector<uint8_t>> rows; // file order, unpadded
};

void Put(std::vector<uint8_t>& p_out, size_t p_at, uint32_t p_value, int p_bytes)
{
    for (int i = 0; i < p_bytes; ++i)
        p_out[p_at + size_t(i)] = uint8_t(p_value >> (8 * i));
}

std::vector<uint8_t> BuildBmp(const BmpSpec& p_spec)
{
    const bool inHeader = p_spec.headerSize > 40;
    const size_t masksAfter = inHeader ? 0 : p_spec.masks.size() * 4;
    const size_t offset = 14 + p_spec.headerSize + masksAfter + p_spec.palette.size();
    const size_t stride = (size_t(p_spec.width) * p_spec.bitCount + 31) / 32 * 4;
    std::vector<uint8_t> out(offset + stride * p_spec.rows.size(), 0);
    out[0] = 'B';
    out[1] = 'M';
    Put(out, 2, uint32_t(out.size()), 4);
    Put(out, 10, uint32_t(offset), 4);
    Put(out, 14, p_spec.headerSize, 4);
    if (p_spec.headerSize == 12)
    {
        Put(out, 18, uint32_t(p_spec.width), 2);
        Put(out, 20, uint32_t(p_spec.height), 2);
        Put(out, 22, 1, 2);
        Put(out, 24, p_spec.bitCount, 2);
    }
    else
    {
        Put(out, 18, uint32_t(p_spec.width), 4);
        Put(out, 22, uint32_t(p_spec.height), 4);
        Put(out, 26, 1, 2);
        Put(out, 28, p_spec.bitCount, 2);
        Put(out, 30, p_spec.compression, 4);
        Put(out, 46, p_spec.colorsUsed, 4);
    }
    for (size_t i = 0; i < p_spec.masks.size(); ++i)
        Put(out, 14 + 40 + i * 4, p_spec.masks[i], 4);
    std::copy(p_spec.palette.begin(), p_spec.palette.end(),
              out.begin() + std::ptrdiff_t(14 + p_spec.headerSize + masksAfter));
    for (size_t r = 0; r < p_spec.rows.size(); ++r)
        std::copy(p_spec.rows[r].begin(), p_spec.rows[r].end(),
                  out.begin() + std::ptrdiff_t(offset + r * stride));
    return out;
}

bool Decode(const std::vector<uint8_t>& p_bytes, platform::DibPixels& p_out)
{
    return platform::DecodeBitmap(p_bytes.data(), p_bytes.size(), p_out);
}

// Blue, green, red (and fourth byte) of pixel x in bottom-up row y.
std::vector<uint8_t> PixelAt(const platform::DibPixels& p_pixels, int p_x, int p_y)
{
    const size_t bpp = p_pixels.bitCount / 8u;
    const uint8_t* at = p_pixels.bits.data() + size_t(p_y) * Stride(p_pixels) + size_t(p_x) * bpp;
    return std::vector<uint8_t>(at, at + bpp);
}

using Bytes = std::vector<uint8_t>;

} // namespace

TEST(BitmapFile, DecodesBmpSuiteReferenceFiles)
{
    for (const char* name : {"g/rgb24.bmp", "g/rgb24pal.bmp", "q/rgb24largepal.bmp",
                             "q/rgb24prof.bmp", "q/rgb24lprof.bmp"})
    {
        platform::DibPixels pixels;
        ASSERT_TRUE(platform::ReadBitmapFile(BMPSUITE + name, pixels)) << name;
        EXPECT_EQ(pixels.bitCount, 24) << name;
        ExpectMatchesReference(pixels, name);
    }

    // A plain reader sees this one's red and green swapped; it must still decode.
    platform::DibPixels prof2;
    ASSERT_TRUE(platform::ReadBitmapFile(BMPSUITE + "q/rgb24prof2.bmp", prof2));
    EXPECT_EQ(prof2.width, 127);
    EXPECT_EQ(prof2.height, 64);
}

TEST(BitmapFile, ThirtyTwoBitKeepsTheFourthByte)
{
    platform::DibPixels plain;
    ASSERT_TRUE(platform::ReadBitmapFile(BMPSUITE + "g/rgb32.bmp", plain));
    EXPECT_EQ(plain.bitCount, 32);
    ExpectMatchesReference(plain, "rgb32");
    for (size_t i = 3; i < size_t(plain.width) * size_t(plain.height) * 4; i += 4)
        ASSERT_EQ(plain.bits[i], 0) << "alpha invented at byte " << i;

    const Bytes file = ReadAll(BMPSUITE + "q/rgb32fakealpha.bmp");
    ASSERT_GT(file.size(), 54u);
    platform::DibPixels fake;
    ASSERT_TRUE(Decode(file, fake));
    ExpectMatchesReference(fake, "rgb32fakealpha");
    const size_t pixelBytes = size_t(fake.width) * size_t(fake.height) * 4;
    ASSERT_EQ(file.size(), 54 + pixelBytes);
    size_t nonZero = 0;
    for (size_t i = 3; i < pixelBytes; i += 4)
    {
        ASSERT_EQ(fake.bits[i], file[54 + i]) << "byte " << i;
        nonZero += fake.bits[i] != 0;
    }
    EXPECT_GT(nonZero, pixelBytes / 8);
}

TEST(BitmapFile, TopDownFilesComeOutBottomUp)
{
    for (const auto& [topDown, bottomUp] :
         {std::pair{"derived/rgb24-topdown.bmp", "g/rgb24.bmp"},
          std::pair{"derived/rgb32-topdown.bmp", "g/rgb32.bmp"}})
    {
        platform::DibPixels a, b;
        ASSERT_TRUE(platform::ReadBitmapFile(BMPSUITE + topDown, a)) << topDown;
        ASSERT_TRUE(platform::ReadBitmapFile(BMPSUITE + bottomUp, b)) << bottomUp;
        EXPECT_EQ(a.height, 64);
        EXPECT_EQ(a.bitCount, b.bitCount);
        EXPECT_TRUE(a.bits == b.bits) << topDown;
    }
}

TEST(BitmapFile, OddWidthsArePaddedAndOrdered)
{
    const std::string dir = testsupport::MakeTempDir("bitmapfile-odd");
    ASSERT_FALSE(dir.empty());
    for (int width : {1, 2, 3, 5})
    {
        const int height = 3;
        Bytes rgb;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                rgb.insert(rgb.end(), {uint8_t(10 + x), uint8_t(100 + y), uint8_t(200 + x + y)});
        const std::string path = dir + "/odd" + std::to_string(width) + ".bmp";
        ASSERT_TRUE(testsupport::WriteBitmap24(path, width, height, rgb));

        platform::DibPixels pixels;
        ASSERT_TRUE(platform::ReadBitmapFile(path, pixels)) << width;
        ASSERT_EQ(pixels.width, width);
        ASSERT_EQ(pixels.height, height);
        ASSERT_EQ(pixels.bitCount, 24);
        const size_t stride = (size_t(width) * 3 + 3) / 4 * 4;
        ASSERT_EQ(Stride(pixels), stride);
        ASSERT_GE(pixels.bits.size(), size_t(width) * height * 4);
        for (int row = 0; row < height; ++row)
        {
            const int y = height - 1 - row; // first row in the buffer is the bottom one
            for (int x = 0; x < width; ++x)
                EXPECT_EQ(PixelAt(pixels, x, row),
                          (Bytes{uint8_t(200 + x + y), uint8_t(100 + y), uint8_t(10 + x)}))
                    << "width " << width << " x " << x << " row " << row;
            for (size_t pad = size_t(width) * 3; pad < stride; ++pad)
                EXPECT_EQ(pixels.bits[size_t(row) * stride + pad], 0);
        }
        for (size_t i = stride * height; i < pixels.bits.size(); ++i)
            ASSERT_EQ(pixels.bits[i], 0) << "spare byte " << i;
    }
    std::error_code error;
    std::filesystem::remove_all(dir, error);
}

TEST(BitmapFile, PaletteAndSixteenBitBecomeTwentyFourBit)
{
    platform::DibPixels out;

    // 1-bit, two-colour palette: bits are read most significant first.
    BmpSpec mono;
    mono.width = 10;
    mono.bitCount = 1;
    mono.palette = {0, 0, 0, 0, 30, 20, 10, 0};
    mono.rows = {{0b10100000, 0b01000000}};
    ASSERT_TRUE(Decode(BuildBmp(mono), out));
    EXPECT_EQ(out.bitCount, 24);
    EXPECT_EQ(PixelAt(out, 0, 0), (Bytes{30, 20, 10}));
    EXPECT_EQ(PixelAt(out, 1, 0), (Bytes{0, 0, 0}));
    EXPECT_EQ(PixelAt(out, 2, 0), (Bytes{30, 20, 10}));
    EXPECT_EQ(PixelAt(out, 9, 0), (Bytes{30, 20, 10}));

    // 4-bit with only three palette entries declared (a fourth is stored but not counted):
    // index 3 and above is black.
    BmpSpec nibble;
    nibble.width = 3;
    nibble.height = 2;
    nibble.bitCount = 4;
    nibble.colorsUsed = 3;
    nibble.palette = {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 70, 80, 90, 0};
    nibble.rows = {{0x12, 0x00}, {0xF0, 0x30}};
    ASSERT_TRUE(Decode(BuildBmp(nibble), out));
    EXPECT_EQ(PixelAt(out, 0, 0), (Bytes{4, 5, 6}));
    EXPECT_EQ(PixelAt(out, 1, 0), (Bytes{7, 8, 9}));
    EXPECT_EQ(PixelAt(out, 2, 0), (Bytes{1, 2, 3}));
    EXPECT_EQ(PixelAt(out, 0, 1), (Bytes{0, 0, 0}));
    EXPECT_EQ(PixelAt(out, 2, 1), (Bytes{0, 0, 0}));

    // 8-bit with an OS/2 core header, whose palette holds 3-byte entries.
    BmpSpec core;
    core.headerSize = 12;
    core.width = 2;
    core.height = 2;
    core.bitCount = 8;
    core.palette.assign(256 * 3, 0);
    core.palette[5 * 3 + 0] = 50;
    core.palette[5 * 3 + 2] = 52;
    core.palette[255 * 3 + 1] = 99;
    core.rows = {{5, 255}, {255, 5}};
    ASSERT_TRUE(Decode(BuildBmp(core), out));
    EXPECT_EQ(PixelAt(out, 0, 0), (Bytes{50, 0, 52}));
    EXPECT_EQ(PixelAt(out, 1, 0), (Bytes{0, 99, 0}));
    EXPECT_EQ(PixelAt(out, 0, 1), (Bytes{0, 99, 0}));

    // 16-bit BI_RGB is 5-5-5; full-scale fields become 255.
    BmpSpec rgb555;
    rgb555.width = 2;
    rgb555.bitCount = 16;
    rgb555.rows = {{0x00, 0x7C, 0x1F, 0x00}}; // pure red, pure blue
    ASSERT_TRUE(Decode(BuildBmp(rgb555), out));
    EXPECT_EQ(PixelAt(out, 0, 0), (Bytes{0, 0, 255}));
    EXPECT_EQ(PixelAt(out, 1, 0), (Bytes{255, 0, 0}));

    // 16-bit 5-6-5 from BI_BITFIELDS masks after a 40-byte header.
    BmpSpec rgb565 = rgb555;
    rgb565.compression = 3;
    rgb565.masks = {0xF800, 0x07E0, 0x001F};
    rgb565.rows = {{0xE0, 0x07, 0x10, 0x84}}; // pure green; (16, 32, 16) of (31, 63, 31)
    ASSERT_TRUE(Decode(BuildBmp(rgb565), out));
    EXPECT_EQ(PixelAt(out, 0, 0), (Bytes{0, 255, 0}));
    EXPECT_EQ(PixelAt(out, 1, 0), (Bytes{132, 130, 132}));
}

TEST(BitmapFile, ThirtyTwoBitBitfieldsHonourTheMasks)
{
    platform::DibPixels out;

    // Masks in an unusual order (R,G,B,A from the low byte up) in a V4 header with alpha.
    BmpSpec v4;
    v4.headerSize = 108;
    v4.width = 1;
    v4.height = -1;
    v4.bitCount = 32;
    v4.compression = 3;
    v4.masks = {0x000000FF, 0x0000FF00, 0x00FF0000, 0xFF000000};
    v4.rows = {{11, 22, 33, 44}};
    ASSERT_TRUE(Decode(BuildBmp(v4), out));
    EXPECT_EQ(out.bitCount, 32);
    EXPECT_EQ(PixelAt(out, 0, 0), (Bytes{33, 22, 11, 44}));

    // No alpha mask (a 40-byte header with three masks): the alpha is opaque, whatever the
    // unused byte holds.
    BmpSpec noAlpha = v4;
    noAlpha.headerSize = 40;
    noAlpha.masks = {0x00FF0000, 0x0000FF00, 0x000000FF};
    noAlpha.rows = {{11, 22, 33, 0}};
    ASSERT_TRUE(Decode(BuildBmp(noAlpha), out));
    EXPECT_EQ(PixelAt(out, 0, 0), (Bytes{11, 22, 33, 255}));

    // A V2 header holds three masks: even when marked as having alpha, none is read past it.
    BmpSpec v2 = noAlpha;
    v2.headerSize = 52;
    v2.compression = 6;
    v2.rows = {{11, 22, 33, 0xF0}};
    ASSERT_TRUE(Decode(BuildBmp(v2), out));
    EXPECT_EQ(PixelAt(out, 0, 0), (Bytes{11, 22, 33, 255}));

    // 10-bit fields keep their top eight bits.
    BmpSpec wide = noAlpha;
    wide.masks = {0x3FF00000, 0x000FFC00, 0x000003FF};
    const uint32_t value = (1023u << 20) | (512u << 10) | 4u;
    wide.rows = {{uint8_t(value), uint8_t(value >> 8), uint8_t(value >> 16), uint8_t(value >> 24)}};
    ASSERT_TRUE(Decode(BuildBmp(wide), out));
    EXPECT_EQ(PixelAt(out, 0, 0), (Bytes{1, 128, 255, 255}));

    // A mask with a gap in it is a damaged header.
    BmpSpec gap = noAlpha;
    gap.masks = {0x00FF00FF, 0x0000FF00, 0};
    EXPECT_FALSE(Decode(BuildBmp(gap), out));
}

TEST(BitmapFile, RefusesDamagedAndHostileHeaders)
{
    const Bytes good = ReadAll(BMPSUITE + "g/rgb24.bmp");
    ASSERT_EQ(good.size(), 24630u);
    platform::DibPixels out;
    ASSERT_TRUE(Decode(good, out));

    auto refused = [&](const Bytes& p_bytes) {
        out.width = 7;
        out.bits.assign(16, 1);
        const bool ok = Decode(p_bytes, out);
        return !ok && out.bits.empty() && out.width == 0 && out.height == 0;
    };

    // Every truncation, through the headers byte by byte and the pixels in steps.
    for (size_t length = 0; length < good.size(); length += (length < 80 ? 1 : 97))
        ASSERT_TRUE(refused(Bytes(good.begin(), good.begin() + std::ptrdiff_t(length))))
            << "length " << length;
    EXPECT_TRUE(refused(Bytes(good.begin(), good.end() - 1)));
    EXPECT_FALSE(platform::DecodeBitmap(nullptr, 100, out));

    struct Patch
    {
        const char* what;
        size_t at;
        uint32_t value;
        int bytes;
    };
    const Patch patches[] = {
        {"magic", 0, 'B' | ('A' << 8), 2},
        {"offset past the end", 10, uint32_t(good.size() + 1), 4},
        {"offset inside the header", 10, 40, 4},
        {"huge offset", 10, 0xFFFFFFF0u, 4},
        {"header size", 14, 64, 4},
        {"zero width", 18, 0, 4},
        {"negative width", 18, uint32_t(-127), 4},
        {"width over the limit", 18, uint32_t(platform::MAX_BITMAP_SIDE + 1), 4},
        {"huge width", 18, 0x7FFFFFFFu, 4},
        {"zero height", 22, 0, 4},
        {"height over the limit", 22, uint32_t(platform::MAX_BITMAP_SIDE + 1), 4},
        {"top-down height over the limit", 22, uint32_t(-platform::MAX_BITMAP_SIDE - 1), 4},
        {"most negative height", 22, 0x80000000u, 4},
        {"height beyond the data", 22, 65, 4},
        {"two planes", 26, 2, 2},
        {"bit count 7", 28, 7, 2},
        {"bit count 64", 28, 64, 2},
        {"RLE8", 30, 1, 4},
        {"RLE4", 30, 2, 4},
        {"bitfields on 24-bit", 30, 3, 4},
        {"JPEG", 30, 4, 4},
        {"PNG", 30, 5, 4},
    };
    for (const Patch& patch : patches)
    {
        Bytes bad = good;
        Put(bad, patch.at, patch.value, patch.bytes);
        EXPECT_TRUE(refused(bad)) << patch.what;
    }

    // Claims 3,000,000 x 2,000,000 in 24 KB: refused at once, with nothing allocated.
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(platform::ReadBitmapFile(BMPSUITE + "b/reallybig.bmp", out));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    EXPECT_TRUE(out.bits.empty());

    EXPECT_FALSE(platform::ReadBitmapFile(BMPSUITE + "no-such-file.bmp", out));
    EXPECT_FALSE(platform::ReadBitmapFile(BMPSUITE, out)); // a directory
    EXPECT_FALSE(platform::ReadBitmapFile("", out));
}

TEST(BitmapFile, WriterRoundTripsThroughTheReader)
{
    const std::string dir = testsupport::MakeTempDir("bitmapfile-write");
    ASSERT_FALSE(dir.empty());
    const int width = 5, height = 3;
    Bytes rgba;
    for (int i = 0; i < width * height; ++i)
        rgba.insert(rgba.end(),
                    {uint8_t(i * 3), uint8_t(i * 5 + 1), uint8_t(255 - i), uint8_t(i * 17)});

    for (bool alpha : {false, true})
    {
        const std::string path = dir + (alpha ? "/a32.bmp" : "/a24.bmp");
        ASSERT_TRUE(platform::WriteBitmapFile(path, width, height, rgba, alpha));
        EXPECT_FALSE(std::filesystem::exists(path + ".tmp"));

        // Byte for byte what the hand-written test bitmap holds: the same headers (40-byte
        // info header, 2835 pixels per metre), bottom-up rows, padding.
        const int bitCount = alpha ? 32 : 24;
        EXPECT_TRUE(ReadAll(path) == testsupport::MakeBitmapBytes(width, height, bitCount, rgba));

        platform::DibPixels pixels;
        ASSERT_TRUE(platform::ReadBitmapFile(path, pixels));
        ASSERT_EQ(pixels.bitCount, alpha ? 32 : 24);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
            {
                const uint8_t* src = &rgba[size_t(y * width + x) * 4];
                Bytes expected{src[2], src[1], src[0]};
                if (alpha)
                    expected.push_back(src[3]);
                EXPECT_EQ(PixelAt(pixels, x, height - 1 - y), expected) << x << "," << y;
            }
    }

    EXPECT_FALSE(platform::WriteBitmapFile(dir + "/short.bmp", width, height,
                                           Bytes(rgba.begin(), rgba.end() - 1), true));
    EXPECT_FALSE(platform::WriteBitmapFile(dir + "/zero.bmp", 0, height, rgba, true));
    EXPECT_FALSE(platform::WriteBitmapFile(dir + "/missing/dir.bmp", width, height, rgba, true));
    EXPECT_FALSE(std::filesystem::exists(dir + "/short.bmp"));
    EXPECT_FALSE(std::filesystem::exists(dir + "/zero.bmp"));

    // The rename onto a directory fails: the temporary file must not be left behind.
    ASSERT_TRUE(std::filesystem::create_directories(dir + "/taken.bmp/inside"));
    EXPECT_FALSE(platform::WriteBitmapFile(dir + "/taken.bmp", width, height, rgba, true));
    EXPECT_FALSE(std::filesystem::exists(dir + "/taken.bmp.tmp"));
    std::error_code error;
    std::filesystem::remove_all(dir, error);
}
