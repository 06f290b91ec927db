#include "gfx/Image.h"
#include "gfx/TextureManager.h"

#include "app/Renderer.h"
#include "support/GlFixture.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <vector>

using testsupport::ReadPixel;
using testsupport::Rgb;

namespace
{
void ExpectColor(const Rgb& p_expected, const Rgb& p_actual, int p_tolerance = 2)
{
    EXPECT_NEAR(p_expected.r, p_actual.r, p_tolerance);
    EXPECT_NEAR(p_expected.g, p_actual.g, p_tolerance);
    EXPECT_NEAR(p_expected.b, p_actual.b, p_tolerance);
}
} // namespace

class ImageTest : public testsupport::GlFixture
{
};

TEST_F(ImageTest, OddWidthBitmapIsUprightUnskewedAndKeyed)
{
    ASSERT_TRUE(StartApplication());
    // 5 x 3, every pixel its own colour, top-left pure green (the key), its neighbour almost green.
    const int width = 5;
    const int height = 3;
    std::vector<uint8_t> rgb;
    for (int row = 0; row < height; ++row)
    {
        for (int col = 0; col < width; ++col)
        {
            rgb.push_back(static_cast<uint8_t>(40 + col * 40));
            rgb.push_back(static_cast<uint8_t>(row * 60));
            rgb.push_back(static_cast<uint8_t>(200 - col * 20));
        }
    }
    rgb[0] = 0;
    rgb[1] = 255;
    rgb[2] = 0;
    rgb[3] = 0;
    rgb[4] = 254;
    rgb[5] = 0;
    ASSERT_TRUE(testsupport::WriteBitmap24("art_odd.bmp", width, height, rgb));

    Image background;
    background.Reset();
    background.SetColor(255, 255, 255, 255);
    Image image;
    ASSERT_TRUE(image.Load("art_odd.bmp"));
    EXPECT_EQ(width, image.GetWidth());
    EXPECT_EQ(height, image.GetHeight());

    m_app.GetRenderer()->BeginFrame();
    background.Draw(0.0, 0.0, 0.0, false);
    image.Draw(10.0, 20.0, 0.0, false);
    ExpectColor(Rgb{255, 255, 255}, ReadPixel(10, 20)); // keyed: the white square shows through
    ExpectColor(Rgb{0, 254, 0}, ReadPixel(11, 20));
    for (int row = 0; row < height; ++row)
    {
        for (int col = 0; col < width; ++col)
        {
            if (row == 0 && col < 2)
            {
                continue;
            }
            const size_t i = (static_cast<size_t>(row) * width + col) * 3;
            ExpectColor(Rgb{rgb[i], rgb[i + 1], rgb[i + 2]}, ReadPixel(10 + col, 20 + row));
        }
    }
    // Nothing drawn beyond the image's right edge or below it.
    ExpectColor(Rgb{255, 255, 255}, ReadPixel(15, 21));
    ExpectColor(Rgb{255, 255, 255}, ReadPixel(12, 23));
}

TEST_F(ImageTest, AlphaDecidesVisibilityPerDrawMode)
{
    ASSERT_TRUE(StartApplication());
    ASSERT_TRUE(testsupport::WriteSolidBitmap("red.bmp", 8, 8, 255, 0, 0, 24));
    Image image;
    image.Load(255, 255, 255, 128, "red.bmp");

    m_app.GetRenderer()->BeginFrame();
    // Positioned and unblended: alpha 0.5 is below the 0.7 reference, so nothing shows.
    image.Draw(0.0, 0.0, 0.0, false);
    ExpectColor(Rgb{0, 0, 0}, ReadPixel(4, 4));
    // At the current transform the reference is 0.07: it shows, fully red.
    image.Draw(false);
    ExpectColor(Rgb{255, 0, 0}, ReadPixel(4, 4));
    // Blended, half of it shows over black.
    image.Draw(100.0, 100.0, 0.0, true);
    ExpectColor(Rgb{128, 0, 0}, ReadPixel(104, 104), 3);

    // A 32-bit bitmap's own alpha fades its pixels when blended.
    ASSERT_TRUE(testsupport::WriteSolidBitmap("ghost.bmp", 8, 8, 0, 0, 255, 32, 64));
    Image ghost;
    ghost.Load("ghost.bmp");
    ghost.Draw(200.0, 200.0, 0.0, true);
    ExpectColor(Rgb{0, 0, 64}, ReadPixel(204, 204), 3);
}

TEST_F(ImageTest, ResetSizeAndSharing)
{
    ASSERT_TRUE(StartApplication());
    ASSERT_TRUE(testsupport::WriteSolidBitmap("blue.bmp", 16, 4, 0, 0, 255, 24));
    Image first;
    Image second;
    first.Load("blue.bmp");
    second.Load(10, 20, 30, 40, "blue.bmp");
    EXPECT_EQ(first.GetTexture(), second.GetTexture());
    EXPECT_EQ(1u, g_pTextureManager->GetCount());

    second.SetSize(64, 32);
    EXPECT_EQ(64, second.GetWidth());
    second.ResetSize();
    EXPECT_EQ(16, second.GetWidth());
    EXPECT_EQ(4, second.GetHeight());

    Image square;
    square.Load("blue.bmp");
    square.Reset();
    EXPECT_EQ(nullptr, square.GetTexture());
    m_app.GetRenderer()->BeginFrame();
    square.Draw(300.0, 300.0, 0.0, false);
    ExpectColor(Rgb{255, 255, 255}, ReadPixel(300, 300));
    ExpectColor(Rgb{255, 255, 255}, ReadPixel(399, 399));
    ExpectColor(Rgb{0, 0, 0}, ReadPixel(400, 399));
    ExpectColor(Rgb{0, 0, 0}, ReadPixel(399, 400));

    // A missing bitmap draws nothing at all.
    testing::internal::CaptureStderr();
    Image missing;
    missing.Load("nowhere.bmp");
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(0, missing.GetWidth());
    missing.Draw(500.0, 500.0, 0.0, true);
    ExpectColor(Rgb{0, 0, 0}, ReadPixel(500, 500));

    // No file name: the texture goes, the size stays.
    second.Load(nullptr);
    EXPECT_EQ(nullptr, second.GetTexture());
    EXPECT_EQ(16, second.GetWidth());
}

TEST_F(ImageTest, RegistryFollowsLifetimes)
{
    const size_t before = Image::GetRegisteredCount();
    {
        Image a;
        Image b;
        EXPECT_EQ(before + 2, Image::GetRegisteredCount());
    }
    EXPECT_EQ(before, Image::GetRegisteredCount());
}
