#include "gfx/Font.h"
#include "ui/FramedBox.h"
#include "ui/StaticObjects.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
int32_t PieceWidth(const FramedBox& p_box, int32_t p_piece)
{
    return p_box.GetPiece(p_piece).GetWidth();
}

int32_t PieceHeight(const FramedBox& p_box, int32_t p_piece)
{
    return p_box.GetPiece(p_piece).GetHeight();
}
} // namespace

TEST(FramedBoxTest, NeverSmallerThanTwoCornersEachWay)
{
    FramedBox box;
    EXPECT_EQ(32, box.GetCornerSize());
    EXPECT_EQ(96, box.GetWidth());
    EXPECT_EQ(96, box.GetHeight());
    EXPECT_TRUE(box.HasMiddleX());
    EXPECT_TRUE(box.HasMiddleY());
    EXPECT_EQ(32, box.GetCentre()->GetWidth());

    // 50 x 20 with 32-pixel corners: 64 x 64, four corners only.
    box.SetSize(50, 20);
    EXPECT_EQ(64, box.GetWidth());
    EXPECT_EQ(64, box.GetHeight());
    EXPECT_FALSE(box.HasMiddleX());
    EXPECT_FALSE(box.HasMiddleY());

    // 64 x 100: no horizontal middle, a vertical one 36 tall.
    box.SetSize(64, 100);
    EXPECT_FALSE(box.HasMiddleX());
    EXPECT_TRUE(box.HasMiddleY());
    EXPECT_EQ(36, PieceHeight(box, FramedBox::LEFT));
    EXPECT_EQ(36, PieceHeight(box, FramedBox::RIGHT));

    box.SetSize(200, 150);
    EXPECT_EQ(136, PieceWidth(box, FramedBox::TOP));
    EXPECT_EQ(136, PieceWidth(box, FramedBox::BOTTOM));
    EXPECT_EQ(86, PieceHeight(box, FramedBox::LEFT));
    EXPECT_EQ(136, box.GetCentre()->GetWidth());
    EXPECT_EQ(86, box.GetCentre()->GetHeight());
}

TEST(FramedBoxTest, ScaleSetsTheBorderPieces)
{
    FramedBox box;
    box.SetSize(300, 200);
    box.SetScale(0.4f);
    EXPECT_EQ(13, box.GetCornerSize());
    for (int32_t corner : {FramedBox::TOP_LEFT, FramedBox::TOP_RIGHT, FramedBox::BOTTOM_LEFT, FramedBox::BOTTOM_RIGHT})
    {
        EXPECT_EQ(13, PieceWidth(box, corner));
        EXPECT_EQ(13, PieceHeight(box, corner));
    }
    EXPECT_EQ(274, PieceWidth(box, FramedBox::TOP));
    EXPECT_EQ(13, PieceHeight(box, FramedBox::TOP));
    EXPECT_EQ(274, PieceWidth(box, FramedBox::BOTTOM));
    EXPECT_EQ(13, PieceWidth(box, FramedBox::LEFT));
    EXPECT_EQ(174, PieceHeight(box, FramedBox::LEFT));
    EXPECT_EQ(174, PieceHeight(box, FramedBox::RIGHT));
    EXPECT_EQ(274, box.GetCentre()->GetWidth());
    EXPECT_EQ(174, box.GetCentre()->GetHeight());
    EXPECT_EQ(300, box.GetWidth());

    // The menus' other scales, and 32.5 truncated at full scale.
    box.SetScale(0.65f);
    EXPECT_EQ(21, box.GetCornerSize());
    box.SetScale(0.75f);
    EXPECT_EQ(24, box.GetCornerSize());
    box.SetScale(0.8f);
    EXPECT_EQ(26, box.GetCornerSize());
    box.SetScale(1.0f);
    EXPECT_EQ(32, box.GetCornerSize());
    EXPECT_EQ(236, PieceWidth(box, FramedBox::TOP));

    // Smaller corners let a smaller box keep its middle.
    box.SetScale(0.4f);
    box.SetSize(30, 27);
    EXPECT_TRUE(box.HasMiddleX());
    EXPECT_TRUE(box.HasMiddleY());
    EXPECT_EQ(4, box.GetCentre()->GetWidth());
    EXPECT_EQ(1, box.GetCentre()->GetHeight());
}

TEST(FramedBoxTest, TheCentreIsTheColourDarkenedTo150)
{
    FramedBox box;
    const uint8_t* centre = box.GetCentre()->GetColor();
    EXPECT_EQ(150, centre[0]);
    EXPECT_EQ(150, centre[2]);
    box.SetColor(255, 0, 0, 200);
    EXPECT_EQ(150, centre[0]);
    EXPECT_EQ(0, centre[1]);
    EXPECT_EQ(0, centre[2]);
    EXPECT_EQ(200, centre[3]);
    const uint8_t* corner = box.GetPiece(FramedBox::BOTTOM_RIGHT).GetColor();
    EXPECT_EQ(255, corner[0]);
    EXPECT_EQ(0, corner[1]);
    EXPECT_EQ(200, corner[3]);
    // (x * 150 + 127) / 255 rounds: 100 gives 59, 1 gives 1, 128 gives 75.
    box.SetColor(100, 1, 128, 255);
    EXPECT_EQ(59, centre[0]);
    EXPECT_EQ(1, centre[1]);
    EXPECT_EQ(75, centre[2]);
}

class WrappedTextTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(nullptr, m_text.GetFont());
        // The widths come from the installed font; without one there is nothing to measure.
        ASSERT_GT(m_text.GetFont()->GetCharWidth('a'), 0.0f);
    }

    std::vector<std::string> Wrap(const char* p_text, float p_maxWidth)
    {
        m_text.SetMaxWidth(static_cast<int32_t>(p_maxWidth));
        m_text.SetText(p_text);
        std::vector<std::string> lines;
        for (size_t i = 0; i < m_text.GetNumLines(); ++i)
        {
            lines.push_back(m_text.GetLine(i));
        }
        return lines;
    }

    float Width(const char* p_text) { return m_text.GetFont()->GetTextWidth(p_text); }

    WrappedText m_text;
};

TEST_F(WrappedTextTest, BreaksAtTheSpaceAfterAWord)
{
    using Lines = std::vector<std::string>;
    // Exactly wide enough for the first two words and the space between them.
    EXPECT_EQ((Lines{"abc def", "ghi"}), Wrap("abc def ghi", Width("abc def")));
    EXPECT_EQ(2, m_text.GetHeight() / m_text.GetFont()->GetHeight());
    EXPECT_EQ(static_cast<int>(Width("abc def")), m_text.GetWidth());

    // The word whose last character makes the line too wide stays on it.
    EXPECT_EQ((Lines{"abc def", "ghi"}), Wrap("abc def ghi", Width("abc de")));
    // One character narrower than that, the break comes after the first word.
    EXPECT_EQ((Lines{"abc", "def", "ghi"}), Wrap("abc def ghi", Width("abc d") - 1.0f));
    // Wide enough for everything: one line.
    EXPECT_EQ((Lines{"abc def ghi"}), Wrap("abc def ghi", Width("abc def ghi")));
}

TEST_F(WrappedTextTest, NeverSplitsAWordAndDropsSpacesAtTheBreak)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ((Lines{"Extraordinarily", "long"}), Wrap("Extraordinarily long", 10.0f));
    EXPECT_EQ((Lines{"Unbreakable"}), Wrap("Unbreakable", 10.0f));
    // Spaces at the start of a continued line are dropped; trailing ones end the text.
    EXPECT_EQ((Lines{"aaa", "bbb"}), Wrap("aaa     bbb", Width("aaa")));
    EXPECT_EQ((Lines{"aaa"}), Wrap("aaa     ", Width("aaa")));
    // Spaces before the first word belong to it.
    EXPECT_EQ((Lines{"  aaa", "bbb"}), Wrap("  aaa bbb", Width("  aaa")));
    // A new text replaces the old lines.
    EXPECT_EQ((Lines{""}), Wrap("", 100.0f));
    EXPECT_EQ(m_text.GetFont()->GetHeight(), m_text.GetHeight());
}
