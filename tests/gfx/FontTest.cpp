#include "gfx/Font.h"
#include "gfx/FontList.h"

#include "app/Renderer.h"
#include "support/GlFixture.h"

#include <gtest/gtest.h>

using testsupport::ReadPixel;

namespace
{
// Rows (display y) that hold any lit pixel in a rectangle; -1 when none does.
void LitRows(int p_x, int p_y, int p_width, int p_height, int& p_first, int& p_last)
{
    p_first = -1;
    p_last = -1;
    for (int y = p_y; y < p_y + p_height; ++y)
    {
        for (int x = p_x; x < p_x + p_width; ++x)
        {
            if (ReadPixel(x, y).r > 100)
            {
                if (p_first < 0)
                {
                    p_first = y;
                }
                p_last = y;
                break;
            }
        }
    }
}
} // namespace

TEST(FontMetricsTest, HeightsScaleWithTheDisplay)
{
    EXPECT_EQ(16, Font::LogicalHeight(12));
    EXPECT_EQ(32, Font::LogicalHeight(24));
    EXPECT_EQ(11, Font::LogicalHeight(8)); // 10.67 rounds up
    EXPECT_EQ(16, Font::PixelHeight(16, 768));
    EXPECT_EQ(13, Font::PixelHeight(16, 600));
    EXPECT_EQ(10, Font::PixelHeight(16, 480));
    EXPECT_EQ(25, Font::PixelHeight(16, 1200));
}

class FontTest : public testsupport::GlFixture
{
};

TEST_F(FontTest, ListSharesFontsByTypefaceIgnoringCase)
{
    ASSERT_TRUE(StartApplication());
    FontList list;
    Font* tahoma = list.GetFont("Tahoma", 12, 0);
    ASSERT_NE(nullptr, tahoma);
    EXPECT_EQ(tahoma, list.GetFont("Tahoma", 12, 0));
    EXPECT_EQ(tahoma, list.GetFont("tahoma", 12, 0));
    EXPECT_EQ(3, list.GetRefCount(tahoma));
    Font* bold = list.GetFont("Tahoma", 12, FONT_BOLD);
    Font* bigger = list.GetFont("Tahoma", 13, 0);
    EXPECT_NE(tahoma, bold);
    EXPECT_NE(tahoma, bigger);
    EXPECT_EQ(3u, list.GetCount());

    // Handing back never goes below zero, and a font nobody uses stays for the next asker.
    for (int i = 0; i < 5; ++i)
    {
        list.ReleaseFont(tahoma);
    }
    EXPECT_EQ(0, list.GetRefCount(tahoma));
    EXPECT_EQ(tahoma, list.GetFont("TAHOMA", 12, 0));
    EXPECT_EQ(1, list.GetRefCount(tahoma));

    // Bold glyphs are wider.
    EXPECT_GT(bold->GetTextWidth("Wide words"), tahoma->GetTextWidth("Wide words"));
    EXPECT_EQ(16, tahoma->GetHeight());
    list.DeleteAllLists();
}

TEST_F(FontTest, WidthsUseEveryCharacterCodesOwnWidth)
{
    ASSERT_TRUE(StartApplication());
    Font font("Arial", 12, 0);
    ASSERT_NE(0u, font.GetListBase());
    EXPECT_GT(font.GetCharWidth(0x80), 0.0f); // the euro sign
    EXPECT_GT(font.GetCharWidth(0xE9), 0.0f);
    EXPECT_NE(font.GetCharWidth('i'), font.GetCharWidth('W'));
    EXPECT_FLOAT_EQ(font.GetCharWidth('a') + font.GetCharWidth(0xE9) + font.GetCharWidth(0x80) + font.GetCharWidth(0xFF),
                    font.GetTextWidth("a\xE9\x80\xFF"));
    EXPECT_FLOAT_EQ(0.0f, font.GetTextWidth(""));
}

TEST_F(FontTest, TextHangsFromItsTopLeftWithTheBaselineAtHeight)
{
    ASSERT_TRUE(StartApplication());
    Font font("Arial", 12, 0);
    m_app.GetRenderer()->BeginFrame();
    ASSERT_TRUE(font.Print(1.0, 1.0, 1.0, 1.0, 100, 100, "%s", "HHH"));
    int first = 0;
    int last = 0;
    LitRows(95, 90, 60, 40, first, last);
    // A capital sits on the baseline at y + 16 and rises about three quarters of the height.
    EXPECT_EQ(115, last);
    EXPECT_GE(first, 102);
    EXPECT_LE(first, 106);
    // The text starts at x and runs as wide as its measured width.
    bool litLeft = false;
    bool litRight = false;
    for (int y = first; y <= last; ++y)
    {
        litLeft = litLeft || ReadPixel(101, y).r > 100 || ReadPixel(102, y).r > 100;
        litRight = litRight || ReadPixel(100 + static_cast<int>(font.GetTextWidth("HHH")) + 2, y).r > 100;
    }
    EXPECT_TRUE(litLeft);
    EXPECT_FALSE(litRight);

    // Printing without a format draws nothing and says so; a misspelt typeface still draws.
    EXPECT_FALSE(font.Print(0, 0, nullptr));
    Font misspelt("Ariel", 12, 0);
    EXPECT_TRUE(misspelt.Print(1.0, 1.0, 1.0, 1.0, 300, 300, "Hello"));
    LitRows(295, 290, 80, 40, first, last);
    EXPECT_GT(last, 0);
}

TEST_F(FontTest, LongTextIsCutToTheBuffer)
{
    ASSERT_TRUE(StartApplication());
    Font font("Tahoma", 12, 0);
    std::string longText(5000, 'x');
    m_app.GetRenderer()->BeginFrame();
    EXPECT_TRUE(font.Print(0, 0, "%s%s", longText.c_str(), "tail"));
    EXPECT_TRUE(font.Print(0, 20, "100%%"));
}

TEST(FontWithoutDisplayTest, FailedFontAnswersWidthsAndRefusesToPrint)
{
    Font empty;
    EXPECT_EQ(0u, empty.GetListBase());
    EXPECT_EQ(0, empty.GetHeight());
    EXPECT_FALSE(empty.Print(10, 10, "nothing"));
    EXPECT_FALSE(empty.SetPosition(10, 10));
    EXPECT_FLOAT_EQ(0.0f, empty.GetTextWidth("abc"));
}

TEST_F(FontTest, FontsMadeBeforeTheDisplayDrawOnceItStarts)
{
    // Without a context a font gets no lists; the display's start gives it its glyphs.
    Font* early = g_fontList.GetFont("Tahoma", 13, 0);
    ASSERT_NE(nullptr, early);
    EXPECT_EQ(0u, early->GetListBase());
    ASSERT_TRUE(StartApplication());
    EXPECT_NE(0u, early->GetListBase());
    m_app.GetRenderer()->BeginFrame();
    EXPECT_TRUE(early->Print(1.0, 1.0, 1.0, 1.0, 10, 10, "Early"));
    g_fontList.ReleaseFont(early);
}
