#include "app/Renderer.h"
#include "gfx/FontList.h"
#include "input/Cursor.h"
#include "platform/Gl.h"
#include "support/GlFixture.h"
#include "support/TestBitmaps.h"
#include "ui/Button.h"
#include "ui/FramedBox.h"
#include "ui/KeyCaptureBox.h"
#include "ui/SlideBar.h"
#include "ui/TextField.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

using testsupport::ReadPixel;
using testsupport::Rgb;

namespace
{
struct Box
{
    int left = -1;
    int top = -1;
    int right = -1; // inclusive
    int bottom = -1;
    bool Empty() const { return left < 0; }
    double CentreX() const { return (left + right) / 2.0; }
    double CentreY() const { return (top + bottom) / 2.0; }
};

// The rectangle around every pixel of a display rectangle brighter than p_threshold.
Box Ink(int p_x, int p_y, int p_width, int p_height, int p_threshold = 100)
{
    GLint viewport[4] = {0, 0, 0, 0};
    glGetIntegerv(GL_VIEWPORT, viewport);
    std::vector<uint8_t> pixels(static_cast<size_t>(p_width) * p_height * 4);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadBuffer(GL_BACK);
    glReadPixels(viewport[0] + p_x, viewport[1] + viewport[3] - p_y - p_height, p_width, p_height, GL_RGBA,
                 GL_UNSIGNED_BYTE, pixels.data());
    Box box;
    for (int row = 0; row < p_height; ++row)
    {
        // GL rows count from the bottom.
        const int y = p_y + p_height - 1 - row;
        for (int col = 0; col < p_width; ++col)
        {
            const uint8_t* pixel = &pixels[(static_cast<size_t>(row) * p_width + col) * 4];
            if ((pixel[0] + pixel[1] + pixel[2]) / 3 > p_threshold)
            {
                const int x = p_x + col;
                if (box.Empty())
                {
                    box = Box{x, y, x, y};
                }
                box.left = std::min(box.left, x);
                box.right = std::max(box.right, x);
                box.top = std::min(box.top, y);
                box.bottom = std::max(box.bottom, y);
            }
        }
    }
    return box;
}

bool Same(const Rgb& p_a, const Rgb& p_b)
{
    return std::abs(p_a.r - p_b.r) <= 2 && std::abs(p_a.g - p_b.g) <= 2 && std::abs(p_a.b - p_b.b) <= 2;
}

class WidgetRenderTest : public testsupport::GlFixture
{
protected:
    bool Start()
    {
        return StartApplication();
    }

    void BeginFrame() { m_app.GetRenderer()->BeginFrame(); }

    Cursor m_cursor; // never set up: the widgets see no mouse
};

const char* const BOX_FILES[FramedBox::PIECE_COUNT] = {
    "box_topleft.bmp", "box_topright.bmp", "box_bottomleft.bmp", "box_bottomright.bmp",
    "box_top.bmp",     "box_left.bmp",     "box_right.bmp",      "box_bottom.bmp",
};
const Rgb BOX_COLOURS[FramedBox::PIECE_COUNT] = {
    {255, 0, 0}, {0, 0, 255}, {255, 255, 0}, {255, 0, 255}, {0, 255, 255}, {255, 128, 0}, {128, 0, 255}, {255, 255, 255},
};
const Rgb BLACK{0, 0, 0};
const Rgb CENTRE_GREY{150, 150, 150};
} // namespace

TEST_F(WidgetRenderTest, FramedBoxDrawsEachPieceInItsPlace)
{
    std::filesystem::create_directories(m_dir + "/art");
    for (int i = 0; i < FramedBox::PIECE_COUNT; ++i)
    {
        ASSERT_TRUE(testsupport::WriteSolidBitmap(m_dir + "/art/" + BOX_FILES[i], 32, 32, BOX_COLOURS[i].r,
                                                  BOX_COLOURS[i].g, BOX_COLOURS[i].b, 24));
    }
    ASSERT_TRUE(Start());

    // 200 x 150 at (100, 100): corners 32, edges 136 wide and 86 tall.
    FramedBox box;
    box.SetSize(200, 150);
    box.SetPosition(100.0f, 100.0f);
    // 50 x 20 grows to 64 x 64: four corners and nothing else.
    FramedBox small;
    small.SetSize(50, 20);
    small.SetPosition(400.0f, 100.0f);
    // 64 x 100: the left and right edges, no top, bottom or centre.
    FramedBox narrow;
    narrow.SetSize(64, 100);
    narrow.SetPosition(600.0f, 100.0f);
    // The options menu's smaller border.
    FramedBox scaled;
    scaled.SetSize(100, 60);
    scaled.SetScale(0.4f);
    scaled.SetPosition(100.0f, 400.0f);

    BeginFrame();
    box.Render();
    small.Render();
    narrow.Render();
    scaled.Render();

    const struct
    {
        int x, y;
        Rgb colour;
    } expected[] = {
        {101, 101, BOX_COLOURS[FramedBox::TOP_LEFT]},     {131, 131, BOX_COLOURS[FramedBox::TOP_LEFT]},
        {132, 101, BOX_COLOURS[FramedBox::TOP]},          {267, 131, BOX_COLOURS[FramedBox::TOP]},
        {268, 101, BOX_COLOURS[FramedBox::TOP_RIGHT]},    {299, 131, BOX_COLOURS[FramedBox::TOP_RIGHT]},
        {101, 132, BOX_COLOURS[FramedBox::LEFT]},         {131, 217, BOX_COLOURS[FramedBox::LEFT]},
        {132, 132, CENTRE_GREY},                          {267, 217, CENTRE_GREY},
        {268, 132, BOX_COLOURS[FramedBox::RIGHT]},        {299, 217, BOX_COLOURS[FramedBox::RIGHT]},
        {101, 218, BOX_COLOURS[FramedBox::BOTTOM_LEFT]},  {131, 249, BOX_COLOURS[FramedBox::BOTTOM_LEFT]},
        {200, 240, BOX_COLOURS[FramedBox::BOTTOM]},       {299, 249, BOX_COLOURS[FramedBox::BOTTOM_RIGHT]},
        {300, 175, BLACK},                                {200, 250, BLACK},
        {99, 175, BLACK},                                 {200, 99, BLACK},

        {415, 115, BOX_COLOURS[FramedBox::TOP_LEFT]},     {448, 115, BOX_COLOURS[FramedBox::TOP_RIGHT]},
        {415, 148, BOX_COLOURS[FramedBox::BOTTOM_LEFT]},  {448, 148, BOX_COLOURS[FramedBox::BOTTOM_RIGHT]},
        {464, 130, BLACK},                                {430, 164, BLACK},

        {610, 110, BOX_COLOURS[FramedBox::TOP_LEFT]},     {650, 110, BOX_COLOURS[FramedBox::TOP_RIGHT]},
        {610, 150, BOX_COLOURS[FramedBox::LEFT]},         {650, 150, BOX_COLOURS[FramedBox::RIGHT]},
        {610, 190, BOX_COLOURS[FramedBox::BOTTOM_LEFT]},  {650, 190, BOX_COLOURS[FramedBox::BOTTOM_RIGHT]},

        {106, 406, BOX_COLOURS[FramedBox::TOP_LEFT]},     {113, 406, BOX_COLOURS[FramedBox::TOP]},
        {186, 406, BOX_COLOURS[FramedBox::TOP]},          {187, 406, BOX_COLOURS[FramedBox::TOP_RIGHT]},
        {106, 413, BOX_COLOURS[FramedBox::LEFT]},         {150, 430, CENTRE_GREY},
        {150, 453, BOX_COLOURS[FramedBox::BOTTOM]},       {199, 459, BOX_COLOURS[FramedBox::BOTTOM_RIGHT]},
        {150, 464, BLACK},
    };
    for (const auto& point : expected)
    {
        const Rgb pixel = ReadPixel(point.x, point.y);
        EXPECT_TRUE(Same(point.colour, pixel)) << "at " << point.x << "," << point.y << ": " << pixel.r << " "
                                               << pixel.g << " " << pixel.b;
    }
}

TEST_F(WidgetRenderTest, ButtonCaptionIsCentredAndShiftsWhenPressed)
{
    ASSERT_TRUE(Start());
    Button button(&m_cursor);
    // No pictures exist here: the button draws its caption only.
    EXPECT_FALSE(button.LoadImages("art\\button_up.bmp", "art\\button_down.bmp"));
    button.SetSize(200, 60);
    button.SetPosition(300.0f, 200.0f);
    button.SetFont("Tahoma", 12, 0);
    button.SetText("Centre");
    button.SetTextOffsets(0, 0, 2, 1);

    BeginFrame();
    button.Render();
    const Box up = Ink(300, 200, 200, 60);
    ASSERT_FALSE(up.Empty());
    EXPECT_NEAR(400.0, up.CentreX(), 2.0);
    EXPECT_NEAR(230.0, up.CentreY(), 3.0);
    EXPECT_TRUE(Same(BLACK, ReadPixel(301, 201)));

    button.SetPressed(true);
    BeginFrame();
    button.Render();
    const Box down = Ink(300, 200, 200, 60);
    EXPECT_EQ(up.left + 2, down.left);
    EXPECT_EQ(up.right + 2, down.right);
    EXPECT_EQ(up.top + 1, down.top);
    EXPECT_EQ(up.bottom + 1, down.bottom);
}

TEST_F(WidgetRenderTest, KeyBoxCentresItsTextAndTheFieldPlacesItsCaret)
{
    ASSERT_TRUE(Start());
    KeyCaptureBox box(&m_cursor);
    box.SetSize(200, 30);
    box.SetColor(255, 255, 255, 255);
    box.SetPosition(100.0f, 100.0f);
    BeginFrame();
    box.Render();
    EXPECT_TRUE(Same(Rgb{255, 255, 255}, ReadPixel(101, 101)));
    // The black "No Key" on the white box: the dark ink's middle is the box's middle.
    Box dark;
    for (int y = 100; y < 130; ++y)
    {
        for (int x = 100; x < 300; ++x)
        {
            if (ReadPixel(x, y).r < 100)
            {
                if (dark.Empty())
                {
                    dark = Box{x, y, x, y};
                }
                dark.left = std::min(dark.left, x);
                dark.right = std::max(dark.right, x);
                dark.top = std::min(dark.top, y);
                dark.bottom = std::max(dark.bottom, y);
            }
        }
    }
    ASSERT_FALSE(dark.Empty());
    EXPECT_NEAR(200.0, dark.CentreX(), 2.0);
    EXPECT_NEAR(115.0, dark.CentreY(), 4.0);

    // The caret sits one pixel after the text, 7 pixels in from the field's left edge.
    TextField field(&m_cursor);
    field.SetPosition(100.0f, 300.0f);
    field.SetText("Ace");
    for (int i = 0; i < 25 && !field.IsCaretVisible(); ++i)
    {
        field.Update(0.05f);
    }
    ASSERT_TRUE(field.IsCaretVisible());
    BeginFrame();
    field.Render();
    const int caretX = 100 + 7 + static_cast<int>(field.GetTextWidth()) + 1;
    EXPECT_TRUE(Same(Rgb{220, 220, 220}, ReadPixel(caretX + 1, 310)));
    EXPECT_TRUE(Same(Rgb{220, 220, 220}, ReadPixel(caretX + 1, 300 + 26)));
    EXPECT_FALSE(Same(Rgb{220, 220, 220}, ReadPixel(caretX + 4, 310)));
    // The white text (not the grey centre of the frame, nor the caret) ends before the caret.
    const Box text = Ink(100, 300, 300, 27, 230);
    ASSERT_FALSE(text.Empty());
    EXPECT_GE(text.left, 107);
    EXPECT_LT(text.right, caretX);
    EXPECT_GT(text.right, caretX - 12);
}

TEST_F(WidgetRenderTest, MissingPicturesDrawNothing)
{
    ASSERT_TRUE(Start());
    SlideBar bar(&m_cursor);
    bar.SetPosition(100.0f, 100.0f);
    FramedBox box;
    box.SetScale(0.4f);
    box.SetSize(200, 100);
    box.SetPosition(400.0f, 100.0f);
    BeginFrame();
    bar.Render();
    box.Render();
    // Only the box's grey centre, which is no picture, shows.
    const Box lit = Ink(0, 0, 1024, 768, 20);
    ASSERT_FALSE(lit.Empty());
    EXPECT_EQ(413, lit.left);
    EXPECT_EQ(113, lit.top);
    EXPECT_EQ(586, lit.right);
    EXPECT_EQ(186, lit.bottom);
}
