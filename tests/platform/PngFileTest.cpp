#include "platform/BitmapFile.h"
#include "platform/PngFile.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace
{

using Bytes = std::vector<uint8_t>;

const std::string BMPSUITE = std::string(KORVATH_TESTDATA_DIR) + "/bmpsuite/";

Bytes ReadAll(const std::string& p_path)
{
    std::ifstream in(p_path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

void PutBE32(Bytes& p_out, uint32_t p_value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        p_out.push_back(uint8_t(p_value >> shift));
}

uint32_t Crc32(const uint8_t* p_data, size_t p_size)
{
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < p_size; ++i)
    {
        crc ^= p_data[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

void AddChunk(Bytes& p_png, const char* p_type, const Bytes& p_data)
{
    PutBE32(p_png, uint32_t(p_data.size()));
    const size_t start = p_png.size();
    p_png.insert(p_png.end(), p_type, p_type + 4);
    p_png.insert(p_png.end(), p_data.begin(), p_data.end());
    PutBE32(p_png, Crc32(&p_png[start], p_png.size() - start));
}

// A PNG written by hand: zlib with stored (uncompressed) blocks, filter 0 on every row.
// p_rows holds the raw scanlines without their filter bytes. Small pictures only.
Bytes MakePng(uint32_t p_width, uint32_t p_height, uint8_t p_bitDepth, uint8_t p_colorType,
              const Bytes& p_rows, size_t p_rowBytes, const Bytes& p_palette = {},
              const Bytes& p_transparency = {})
{
    Bytes raw;
    for (size_t y = 0; y * p_rowBytes < p_rows.size(); ++y)
    {
        raw.push_back(0);
        raw.insert(raw.end(), p_rows.begin() + std::ptrdiff_t(y * p_rowBytes),
                   p_rows.begin() + std::ptrdiff_t((y + 1) * p_rowBytes));
    }
    Bytes zlib = {0x78, 0x01, 0x01, uint8_t(raw.size()), uint8_t(raw.size() >> 8),
                  uint8_t(~raw.size()), uint8_t(~raw.size() >> 8)};
    zlib.insert(zlib.end(), raw.begin(), raw.end());
    uint32_t a = 1, b = 0;
    for (uint8_t byte : raw)
    {
        a = (a + byte) % 65521u;
        b = (b + a) % 65521u;
    }
    PutBE32(zlib, (b << 16) | a);

    Bytes png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    Bytes header;
    PutBE32(header, p_width);
    PutBE32(header, p_height);
    header.insert(header.end(), {p_bitDepth, p_colorType, 0, 0, 0});
    AddChunk(png, "IHDR", header);
    if (!p_palette.empty())
        AddChunk(png, "PLTE", p_palette);
    if (!p_transparency.empty())
        AddChunk(png, "tRNS", p_transparency);
    AddChunk(png, "IDAT", zlib);
    AddChunk(png, "IEND", {});
    return png;
}

class PngFileTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_dir = testsupport::MakeTempDir("pngfile");
        ASSERT_FALSE(m_dir.empty());
    }
    void TearDown() override
    {
        std::error_code error;
        std::filesystem::remove_all(m_dir, error);
    }

    // Writes p_bytes to a file and reads it back through ReadPng.
    bool ReadBytes(const Bytes& p_bytes, int32_t& p_width, int32_t& p_height, Bytes& p_rgba)
    {
        const std::string path = m_dir + "/in.png";
        return testsupport::WriteFileBytes(path, p_bytes) &&
               platform::ReadPng(path, p_width, p_height, p_rgba);
    }

    std::string m_dir;
};

} // namespace

TEST_F(PngFileTest, RoundTripKeepsEveryByte)
{
    const int32_t width = 7, height = 5;
    Bytes rgba;
    for (int i = 0; i < width * height; ++i)
        rgba.insert(rgba.end(),
                    {uint8_t(i * 7), uint8_t(255 - i), uint8_t(i * 31), uint8_t(i * 13)});
    const std::string path = m_dir + "/out.png";
    ASSERT_TRUE(platform::WritePng(path, width, height, rgba));
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp"));

    int32_t w = 0, h = 0;
    Bytes back;
    ASSERT_TRUE(platform::ReadPng(path, w, h, back));
    EXPECT_EQ(w, width);
    EXPECT_EQ(h, height);
    EXPECT_TRUE(back == rgba);

    EXPECT_FALSE(platform::WritePng(m_dir + "/short.png", width, height,
                                    Bytes(rgba.begin(), rgba.end() - 1)));
    EXPECT_FALSE(platform::WritePng(m_dir + "/big.png", 16385, 1, Bytes(16385 * 4)));
    EXPECT_FALSE(platform::WritePng(m_dir + "/no/such/dir.png", width, height, rgba));
    EXPECT_FALSE(std::filesystem::exists(m_dir + "/short.png"));
}

TEST_F(PngFileTest, ReadsReferenceImages)
{
    int32_t w = 0, h = 0;
    Bytes rgba;
    ASSERT_TRUE(platform::ReadPng(BMPSUITE + "ref/rgb24.png", w, h, rgba));
    ASSERT_EQ(w, 127);
    ASSERT_EQ(h, 64);
    ASSERT_EQ(rgba.size(), 127u * 64u * 4u);
    struct Spot
    {
        int x, y;
        uint8_t r, g, b;
    };
    for (const Spot& s : {Spot{0, 0, 255, 0, 0}, Spot{126, 0, 159, 159, 189}, Spot{0, 63, 0, 0, 0},
                          Spot{126, 63, 96, 96, 126}, Spot{63, 31, 255, 255, 255},
                          Spot{10, 5, 235, 82, 82}, Spot{100, 50, 109, 109, 113}})
    {
        const uint8_t* px = &rgba[size_t(s.y * 127 + s.x) * 4];
        EXPECT_EQ(Bytes(px, px + 4), (Bytes{s.r, s.g, s.b, 255})) << s.x << "," << s.y;
    }

    // The RGBA reference carries the alphas of the 32-bit bitmap, and its colours wherever
    // a pixel is not fully transparent (the reference clears those).
    platform::DibPixels bitmap;
    ASSERT_TRUE(platform::ReadBitmapFile(BMPSUITE + "q/rgb32fakealpha.bmp", bitmap));
    ASSERT_TRUE(platform::ReadPng(BMPSUITE + "ref/fakealpha.png", w, h, rgba));
    ASSERT_EQ(w, bitmap.width);
    ASSERT_EQ(h, bitmap.height);
    int mismatches = 0;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
        {
            const uint8_t* png = &rgba[size_t(y * w + x) * 4];
            const uint8_t* bmp = &bitmap.bits[size_t((h - 1 - y) * w + x) * 4];
            const bool colourDiffers = png[0] != bmp[2] || png[1] != bmp[1] || png[2] != bmp[0];
            mismatches += png[3] != bmp[3] || (png[3] != 0 && colourDiffers);
        }
    EXPECT_EQ(mismatches, 0);
}

TEST_F(PngFileTest, ConvertsOtherFormatsToRgba)
{
    int32_t w = 0, h = 0;
    Bytes rgba;

    // 8-bit grey: no alpha channel, so alpha is opaque.
    ASSERT_TRUE(ReadBytes(MakePng(3, 1, 8, 0, {0, 128, 255}, 3), w, h, rgba));
    EXPECT_EQ(rgba, (Bytes{0, 0, 0, 255, 128, 128, 128, 255, 255, 255, 255, 255}));

    // 16-bit grey with alpha keeps the high bytes.
    ASSERT_TRUE(ReadBytes(MakePng(2, 1, 16, 4, {0x12, 0x34, 0xFF, 0xFF, 0xAB, 0xCD, 0x40, 0x00}, 8),
                          w, h, rgba));
    EXPECT_EQ(rgba, (Bytes{0x12, 0x12, 0x12, 0xFF, 0xAB, 0xAB, 0xAB, 0x40}));

    // 16-bit RGB, two rows.
    ASSERT_TRUE(ReadBytes(MakePng(1, 2, 16, 2, {1, 0, 2, 0, 3, 0, 0xFE, 0, 0xFD, 0, 0xFC, 0}, 6),
                          w, h, rgba));
    EXPECT_EQ(h, 2);
    EXPECT_EQ(rgba, (Bytes{1, 2, 3, 255, 0xFE, 0xFD, 0xFC, 255}));

    // 2-bit palette with transparency for the first two entries only.
    const Bytes palette = {10, 20, 30, 40, 50, 60, 70, 80, 90};
    ASSERT_TRUE(ReadBytes(MakePng(3, 1, 2, 3, {0b00011000}, 1, palette, {0, 128}), w, h, rgba));
    EXPECT_EQ(w, 3);
    EXPECT_EQ(rgba, (Bytes{10, 20, 30, 0, 40, 50, 60, 128, 70, 80, 90, 255}));
}

TEST_F(PngFileTest, RefusesDamagedFiles)
{
    const Bytes good = ReadAll(BMPSUITE + "ref/rgb24.png");
    ASSERT_GT(good.size(), 100u);
    int32_t w = 0, h = 0;
    Bytes rgba;
    ASSERT_TRUE(ReadBytes(good, w, h, rgba));

    auto refused = [&](const Bytes& p_bytes) {
        w = h = 5;
        rgba.assign(4, 1);
        return !ReadBytes(p_bytes, w, h, rgba) && w == 0 && h == 0 && rgba.empty();
    };
    for (size_t length = 0; length < good.size(); length += 61)
        EXPECT_TRUE(refused(Bytes(good.begin(), good.begin() + std::ptrdiff_t(length))))
            << "length " << length;

    Bytes garbage(4096);
    for (size_t i = 0; i < garbage.size(); ++i)
        garbage[i] = uint8_t(i * 2654435761u >> 13);
    EXPECT_TRUE(refused(garbage));

    Bytes corrupt = good; // a flipped bit in the image data fails its checksum
    corrupt[corrupt.size() - 30] ^= 0x10;
    EXPECT_TRUE(refused(corrupt));

    // Too wide: refused from the header, before the rows would be allocated.
    EXPECT_TRUE(refused(MakePng(16385, 1, 8, 0, Bytes(16385), 16385)));
    EXPECT_TRUE(refused(MakePng(1, 0x7FFFFFFF, 8, 0, {0}, 1)));

    EXPECT_FALSE(platform::ReadPng(m_dir + "/missing.png", w, h, rgba));
    EXPECT_FALSE(platform::ReadPng(m_dir, w, h, rgba));
}
