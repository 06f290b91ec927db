#include "ui/SlideBar.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

using uitest::UiInput;

namespace
{
constexpr float DT = 0.02f;

// A bar 200 wide and 16 tall at (300, 400); the bar picture is not there in these tests, so
// it gets its height here.
void Place(SlideBar& p_bar)
{
    p_bar.GetImage()->SetHeight(16);
    p_bar.SetPosition(300.0f, 400.0f);
}

int32_t Drag(UiInput& p_ui, SlideBar& p_bar, int32_t p_x, int32_t p_y, bool p_down)
{
    p_ui.Frame(p_x, p_y, p_down);
    p_bar.Update(DT);
    return p_bar.GetValue();
}
} // namespace

TEST(SlideBarTest, EndsAndMiddleOfTwoHundredPixelsAndTwoHundredFiftySixValues)
{
    UiInput ui;
    SlideBar bar(&ui.cursor);
    Place(bar);
    EXPECT_EQ(200, bar.GetImage()->GetWidth());
    EXPECT_EQ(256, bar.GetNumValues());
    EXPECT_EQ(0, bar.GetValue());

    EXPECT_EQ(0, Drag(ui, bar, 500, 408, false));
    EXPECT_EQ(255, Drag(ui, bar, 499, 408, true));
    EXPECT_TRUE(bar.IsDragging());
    EXPECT_EQ(128, Drag(ui, bar, 400, 408, true));
    EXPECT_EQ(0, Drag(ui, bar, 300, 408, true));
    EXPECT_EQ(1, Drag(ui, bar, 301, 408, true));
    // Past either end, and off the bar vertically, it clamps while the button is held.
    EXPECT_EQ(0, Drag(ui, bar, 100, 600, true));
    EXPECT_EQ(255, Drag(ui, bar, 900, 10, true));
    EXPECT_EQ(255, Drag(ui, bar, 400, 408, false));
    EXPECT_FALSE(bar.IsDragging());
    // Moving with the button up does nothing.
    EXPECT_EQ(255, Drag(ui, bar, 350, 408, false));
}

TEST(SlideBarTest, APressThatStartsOffTheBarNeverMovesIt)
{
    UiInput ui;
    SlideBar bar(&ui.cursor);
    Place(bar);
    bar.SetValue(40);
    Drag(ui, bar, 250, 408, false);
    EXPECT_EQ(40, Drag(ui, bar, 250, 408, true));
    EXPECT_EQ(40, Drag(ui, bar, 400, 408, true));
    EXPECT_FALSE(bar.IsDragging());
    // The bar's right and bottom edges are off it.
    Drag(ui, bar, 500, 408, false);
    EXPECT_EQ(40, Drag(ui, bar, 500, 408, true));
    Drag(ui, bar, 400, 416, false);
    EXPECT_EQ(40, Drag(ui, bar, 400, 416, true));
    Drag(ui, bar, 400, 415, false);
    EXPECT_EQ(128, Drag(ui, bar, 400, 415, true));
}

TEST(SlideBarTest, ValuesAndRanges)
{
    UiInput ui;
    SlideBar bar(&ui.cursor);
    Place(bar);
    bar.SetValue(300);
    EXPECT_EQ(255, bar.GetValue());
    bar.SetValue(17);
    EXPECT_EQ(17, bar.GetValue());

    // Rescaled to the nearest value of the new range: (255 * 99 + 127) / 255 = 99.
    bar.SetValue(255);
    bar.SetNumValues(100);
    EXPECT_EQ(99, bar.GetValue());
    bar.SetNumValues(256);
    EXPECT_EQ(255, bar.GetValue());
    bar.SetValue(128);
    bar.SetNumValues(100);
    EXPECT_EQ(50, bar.GetValue());

    // The audio screen's bar: 100 values over 500 pixels.
    bar.SetBarWidth(500);
    EXPECT_EQ(500, bar.GetImage()->GetWidth());
    Drag(ui, bar, 799, 405, false);
    EXPECT_EQ(99, Drag(ui, bar, 799, 405, true));
    EXPECT_EQ(50, Drag(ui, bar, 300 + 252, 405, true));
    // SetSize leaves the bar alone.
    bar.SetSize(10, 10);
    EXPECT_EQ(500, bar.GetImage()->GetWidth());
}
