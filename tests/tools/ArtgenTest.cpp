#include "artgen/PixelConvert.h"
#include "platform/BitmapFile.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace
{

// One pixel as Cairo stores it: a native-endian word of alpha, red, green, blue.
void PutArgb(std::vector<uint8_t>& p_buffer, size_t p_offset, uint32_t p_alpha, uint32_t p_red,
             uint32_t p_green, uint32_t p_blue)
{
    const uint32_t word = (p_alpha << 24) | (p_red << 16) | (p_green << 8) | p_blue;
    std::memcpy(p_buffer.data() + p_offset, &word, 4);
}

std::vector<uint8_t> Pixel(const std::vector<uint8_t>& p_rgba, size_t p_index)
{
    return std::vector<uint8_t>(p_rgba.begin() + std::ptrdiff_t(p_index * 4),
                                p_rgba.begin() + std::ptrdiff_t(p_index * 4 + 4));
}

// A 3 x 2 surface with rows padded to 16 bytes, as Cairo pads them; the padding holds junk
// that must not leak into the output.
std::vector<uint8_t> SampleSurface()
{
    std::vector<uint8_t> surface(32, 0xEE);
    PutArgb(surface, 0, 255, 200, 100, 50); // opaque
    PutArgb(surface, 4, 128, 64, 32, 128);  // half transparent, premultiplied
    PutArgb(surface, 8, 0, 0, 0, 0);        // fully transparent
    PutArgb(surface, 16, 51, 51, 0, 25);    // faint
    PutArgb(surface, 20, 255, 0, 0, 255);   // opaque blue
    PutArgb(surface, 24, 10, 30, 5, 10);    // damaged: colour above alpha
    return surface;
}

const size_t SAMPLE_STRIDE = 16;

} // namespace

TEST(Artgen, ArgbToRgbaOrdersChannelsAndUnpremultiplies)
{
    const std::vector<uint8_t> surface = SampleSurface();
    std::vector<uint8_t> rgba;
    ASSERT_TRUE(artgen::ArgbToRgba(surface.data(), SAMPLE_STRIDE, 3, 2, true, rgba));
    ASSERT_EQ(rgba.size(), 3u * 2u * 4u);
    EXPECT_EQ(Pixel(rgba, 0), (std::vector<uint8_t>{200, 100, 50, 255}));
    // 64 / 128 of full, rounded: 128, 64, 255.
    EXPECT_EQ(Pixel(rgba, 1), (std::vector<uint8_t>{128, 64, 255, 128}));
    EXPECT_EQ(Pixel(rgba, 2), (std::vector<uint8_t>{0, 0, 0, 0}));
    EXPECT_EQ(Pixel(rgba, 3), (std::vector<uint8_t>{255, 0, 125, 51}));
    EXPECT_EQ(Pixel(rgba, 4), (std::vector<uint8_t>{0, 0, 255, 255}));
    EXPECT_EQ(Pixel(rgba, 5), (std::vector<uint8_t>{255, 128, 255, 10}));

    // Kept premultiplied the colours are the picture over black.
    ASSERT_TRUE(artgen::ArgbToRgba(surface.data(), SAMPLE_STRIDE, 3, 2, false, rgba));
    EXPECT_EQ(Pixel(rgba, 1), (std::vector<uint8_t>{64, 32, 128, 128}));
    EXPECT_EQ(Pixel(rgba, 3), (std::vector<uint8_t>{51, 0, 25, 51}));
    EXPECT_EQ(Pixel(rgba, 5), (std::vector<uint8_t>{30, 5, 10, 10}));

    // Every premultiplied value Cairo can produce comes back within rounding of the original.
    std::vector<uint8_t> ramp(256 * 4);
    for (uint32_t alpha = 1; alpha < 256; ++alpha)
    {
        for (uint32_t colour = 0; colour < 256; ++colour)
            PutArgb(ramp, colour * 4, alpha, (colour * alpha + 127) / 255, 0, 0);
        ASSERT_TRUE(artgen::ArgbToRgba(ramp.data(), ramp.size(), 256, 1, true, rgba));
        for (uint32_t colour = 0; colour < 256; ++colour)
        {
            const int error = int(rgba[colour * 4]) - int(colour);
            ASSERT_LE(std::abs(error) * int(alpha), 255) << "alpha " << alpha << " colour " << colour;
        }
    }
}

TEST(Artgen, ArgbToRgbaRefusesNonsense)
{
    const std::vector<uint8_t> surface = SampleSurface();
    std::vector<uint8_t> rgba = {1, 2, 3};
    EXPECT_FALSE(artgen::ArgbToRgba(nullptr, SAMPLE_STRIDE, 3, 2, true, rgba));
    EXPECT_TRUE(rgba.empty());
    rgba = {1, 2, 3};
    EXPECT_FALSE(artgen::ArgbToRgba(surface.data(), 11, 3, 2, true, rgba)); // stride < a row
    EXPECT_TRUE(rgba.empty());
    EXPECT_FALSE(artgen::ArgbToRgba(surface.data(), SAMPLE_STRIDE, 0, 2, true, rgba));
    EXPECT_FALSE(artgen::ArgbToRgba(surface.data(), SAMPLE_STRIDE, 3, -1, true, rgba));
    EXPECT_TRUE(rgba.empty());
}

// What the generator does with a finished picture: convert, write, and the game's reader
// must see the same colours, with alpha for 32-bit files and composited over black for 24-bit.
TEST(Artgen, PicturesSurviveTheTripThroughABitmapFile)
{
    const std::string dir = testsupport::MakeTempDir("korvath-artgen");
    ASSERT_FALSE(dir.empty());
    const std::vector<uint8_t> surface = SampleSurface();

    for (const bool alpha : {true, false})
    {
        std::vector<uint8_t> rgba;
        ASSERT_TRUE(artgen::ArgbToRgba(surface.data(), SAMPLE_STRIDE, 3, 2, alpha, rgba));
        const std::string path = dir + (alpha ? "/alpha.bmp" : "/opaque.bmp");
        ASSERT_TRUE(platform::WriteBitmapFile(path, 3, 2, rgba, alpha));

        platform::DibPixels pixels;
        ASSERT_TRUE(platform::ReadBitmapFile(path, pixels));
        ASSERT_EQ(pixels.width, 3);
        ASSERT_EQ(pixels.height, 2);
        ASSERT_EQ(pixels.bitCount, alpha ? 32 : 24);
        const size_t bytes = alpha ? 4 : 3;
        const size_t stride = (3 * bytes + 3) / 4 * 4;
        for (size_t y = 0; y < 2; ++y)
        {
            for (size_t x = 0; x < 3; ++x)
            {
                // The file is bottom-up and blue first.
                const uint8_t* got = pixels.bits.data() + (1 - y) * stride + x * bytes;
                const std::vector<uint8_t> want = Pixel(rgba, y * 3 + x);
                EXPECT_EQ(got[0], want[2]) << alpha << " " << x << "," << y;
                EXPECT_EQ(got[1], want[1]) << alpha << " " << x << "," << y;
                EXPECT_EQ(got[2], want[0]) << alpha << " " << x << "," << y;
                if (alpha)
                {
                    EXPECT_EQ(got[3], want[3]) << x << "," << y;
                }
            }
        }
    }
    // Spot checks against the source itself, not just the converter's own output.
    platform::DibPixels opaque;
    ASSERT_TRUE(platform::ReadBitmapFile(dir + "/opaque.bmp", opaque));
    const uint8_t* topMiddle = opaque.bits.data() + 12 + 3; // top row is the second in the file
    EXPECT_EQ(topMiddle[0], 128);
    EXPECT_EQ(topMiddle[1], 32);
    EXPECT_EQ(topMiddle[2], 64);

    std::error_code error;
    std::filesystem::remove_all(dir, error);
}
