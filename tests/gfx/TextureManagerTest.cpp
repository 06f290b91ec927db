#include "gfx/TextureManager.h"

#include "support/GlFixture.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
// A DIB the way the bitmap reader hands it over: 24-bit rows bottom-up, padded to 4 bytes.
platform::DibPixels MakeDib24(int p_width, int p_height, const std::vector<uint8_t>& p_bgrBottomUp)
{
    platform::DibPixels dib;
    dib.width = p_width;
    dib.height = p_height;
    dib.bitCount = 24;
    const size_t stride = (static_cast<size_t>(p_width) * 3 + 3) & ~static_cast<size_t>(3);
    dib.bits.assign(static_cast<size_t>(p_width) * p_height * 4, 0xEE);
    for (int row = 0; row < p_height; ++row)
    {
        for (int col = 0; col < p_width * 3; ++col)
        {
            dib.bits[row * stride + col] = p_bgrBottomUp[static_cast<size_t>(row) * p_width * 3 + col];
        }
    }
    return dib;
}
} // namespace

TEST(TextureManagerTest, WidensPaddedRowsOfEveryOddWidth)
{
    for (int width : {1, 2, 3, 5, 7, 127})
    {
        const int height = 3;
        std::vector<uint8_t> bgr;
        for (int row = 0; row < height; ++row)
        {
            for (int col = 0; col < width; ++col)
            {
                bgr.push_back(static_cast<uint8_t>(col));
                bgr.push_back(static_cast<uint8_t>(row));
                bgr.push_back(static_cast<uint8_t>(col + row * 7));
            }
        }
        platform::DibPixels dib = MakeDib24(width, height, bgr);
        TextureManager::ExpandPixels(dib, false, TextureManager::DEFAULT_COLOR_KEY);
        EXPECT_EQ(32, dib.bitCount);
        for (int row = 0; row < height; ++row)
        {
            for (int col = 0; col < width; ++col)
            {
                const uint8_t* p = &dib.bits[(static_cast<size_t>(row) * width + col) * 4];
                ASSERT_EQ(col, p[0]) << "width " << width << " row " << row << " col " << col;
                ASSERT_EQ(row, p[1]);
                ASSERT_EQ(col + row * 7, p[2]);
                ASSERT_EQ(255, p[3]);
            }
        }
    }
}

TEST(TextureManagerTest, ColourKeyMakesOnlyOpaquePureGreenTransparent)
{
    // Blue, green, red order: pure green, almost green, black, green-ish red.
    platform::DibPixels dib = MakeDib24(4, 1, {0, 255, 0, 0, 254, 0, 0, 0, 0, 0, 255, 1});
    TextureManager::ExpandPixels(dib, true, TextureManager::DEFAULT_COLOR_KEY);
    EXPECT_EQ(0, dib.bits[3]);
    EXPECT_EQ(255, dib.bits[7]);
    EXPECT_EQ(255, dib.bits[11]);
    EXPECT_EQ(255, dib.bits[15]);
    // The keyed pixel took its opaque neighbour's colour, so filtering shows no green fringe.
    EXPECT_EQ(254, dib.bits[1]);

    // Keyed pixels inside a keyed area stay key-coloured; one at the border of a red area turns red.
    platform::DibPixels row = MakeDib24(3, 1, {0, 255, 0, 0, 255, 0, 0, 0, 200});
    TextureManager::ExpandPixels(row, true, TextureManager::DEFAULT_COLOR_KEY);
    EXPECT_EQ((std::vector<uint8_t>{0, 255, 0, 0, 0, 0, 200, 0, 0, 0, 200, 255}),
              std::vector<uint8_t>(row.bits.begin(), row.bits.begin() + 12));

    // 32-bit pixels keep their own alpha; a green pixel that is not fully opaque is not the key.
    platform::DibPixels dib32;
    dib32.width = 3;
    dib32.height = 1;
    dib32.bitCount = 32;
    dib32.bits = {0, 255, 0, 255, 0, 255, 0, 128, 10, 20, 30, 77};
    TextureManager::ExpandPixels(dib32, true, TextureManager::DEFAULT_COLOR_KEY);
    EXPECT_EQ(0, dib32.bits[3]);
    EXPECT_EQ(128, dib32.bits[7]);
    EXPECT_EQ(77, dib32.bits[11]);
    EXPECT_EQ(30, dib32.bits[10]);
}

class TextureManagerGlTest : public testsupport::GlFixture
{
};

TEST_F(TextureManagerGlTest, SharesBySortedNameAndKeepsFailedNodes)
{
    ASSERT_TRUE(StartApplication());
    ASSERT_TRUE(testsupport::WriteSolidBitmap("b.bmp", 4, 2, 255, 0, 0, 24));
    ASSERT_TRUE(testsupport::WriteSolidBitmap("a.bmp", 3, 5, 0, 0, 255, 32));
    ASSERT_TRUE(testsupport::WriteSolidBitmap("c.bmp", 1, 1, 0, 0, 0, 24));

    TextureManager& manager = *g_pTextureManager;
    TextureNode* b = manager.GetTexture("b.bmp");
    TextureNode* c = manager.GetTexture("c.bmp");
    TextureNode* a = manager.GetTexture("a.bmp");
    EXPECT_EQ(b, manager.GetTexture("b.bmp"));
    EXPECT_EQ(4, b->m_width);
    EXPECT_EQ(2, b->m_height);
    EXPECT_EQ(3, a->m_width);
    EXPECT_EQ(5, a->m_height);
    EXPECT_NE(0u, c->m_textureId);
    EXPECT_NE(a->m_textureId, b->m_textureId);

    // A name differing in case is another node (it loads the same file again), and sorts
    // before lower case, as byte order does.
    TextureNode* upper = manager.GetTexture("B.bmp");
    EXPECT_NE(b, upper);
    EXPECT_EQ(4, upper->m_width);

    // A missing file still gets its node, with no size and no texture.
    testing::internal::CaptureStderr();
    TextureNode* missing = manager.GetTexture("art\\nothing.bmp");
    EXPECT_NE(std::string::npos, testing::internal::GetCapturedStderr().find("art\\nothing.bmp"));
    ASSERT_NE(nullptr, missing);
    EXPECT_EQ(0, missing->m_width);
    EXPECT_EQ(0u, missing->m_textureId);
    EXPECT_EQ(missing, manager.GetTexture("art\\nothing.bmp"));

    std::vector<std::string> order;
    for (const TextureNode* node = manager.GetHead(); node != nullptr; node = node->m_pNext.get())
    {
        order.push_back(node->m_fileName);
    }
    EXPECT_EQ((std::vector<std::string>{"B.bmp", "a.bmp", "art\\nothing.bmp", "b.bmp", "c.bmp"}), order);
}

TEST_F(TextureManagerGlTest, DamagedBitmapsNeverCrash)
{
    ASSERT_TRUE(StartApplication());
    std::vector<uint8_t> good = testsupport::MakeBitmapBytes(16, 16, 24, std::vector<uint8_t>(16 * 16 * 4, 200));
    ASSERT_FALSE(good.empty());
    std::vector<uint8_t> truncated(good.begin(), good.begin() + static_cast<long>(good.size() / 2));
    ASSERT_TRUE(testsupport::WriteFileBytes("truncated.bmp", truncated));
    std::vector<uint8_t> huge = good;
    // Width field of the info header: 0x7FFFFFFF; height: -0x7FFFFFFF.
    huge[18] = 0xFF;
    huge[19] = 0xFF;
    huge[20] = 0xFF;
    huge[21] = 0x7F;
    huge[22] = 0x01;
    huge[23] = 0x00;
    huge[24] = 0x00;
    huge[25] = 0x80;
    ASSERT_TRUE(testsupport::WriteFileBytes("huge.bmp", huge));
    ASSERT_TRUE(testsupport::WriteFileBytes("empty.bmp", {}));

    testing::internal::CaptureStderr();
    for (const char* name : {"truncated.bmp", "huge.bmp", "empty.bmp", "missing.bmp"})
    {
        const TextureNode* node = g_pTextureManager->GetTexture(name);
        ASSERT_NE(nullptr, node);
        EXPECT_EQ(0, node->m_width) << name;
        EXPECT_EQ(0u, node->m_textureId) << name;
    }
    testing::internal::GetCapturedStderr();
}
