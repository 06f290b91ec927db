#include "gfx/Font.h"
#include "gfx/Image.h"
#include "ui/Button.h"
#include "ui/RadioGroup.h"
#include "ui/ToggleButton.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

using uitest::UiInput;

namespace
{
constexpr float DT = 0.05f;

// A 100 x 40 button at (200, 100): inside is 200..299 by 100..139.
void Place(Button& p_button)
{
    p_button.SetSize(100, 40);
    p_button.SetPosition(200.0f, 100.0f);
}

// Plays one frame and answers whether the button is drawn pressed after it.
bool Step(UiInput& p_ui, Button& p_button, int32_t p_x, int32_t p_y, bool p_down, float p_dt = DT)
{
    p_ui.Frame(p_x, p_y, p_down);
    p_button.Update(p_dt);
    return p_button.IsPressed();
}

int32_t Click(Button& p_button)
{
    int32_t click = -1;
    p_button.GetClick(&click);
    return click;
}
} // namespace

TEST(ButtonTest, AClickNeedsThePressAndTheReleaseOnTheButton)
{
    UiInput ui;
    Button button(&ui.cursor);
    Place(button);

    // Press on it, move off, release: no click, and drawn normal from the moment it is left.
    EXPECT_FALSE(Step(ui, button, 250, 120, false));
    EXPECT_TRUE(Step(ui, button, 250, 120, true));
    EXPECT_TRUE(button.IsArmed());
    EXPECT_FALSE(Step(ui, button, 350, 120, true));
    EXPECT_FALSE(Step(ui, button, 350, 120, false));
    EXPECT_EQ(CLICK_NONE, Click(button));

    // Press, off, back on with the button still held, release: one click.
    EXPECT_TRUE(Step(ui, button, 250, 120, true));
    EXPECT_FALSE(Step(ui, button, 250, 200, true));
    EXPECT_TRUE(Step(ui, button, 260, 110, true));
    EXPECT_FALSE(Step(ui, button, 260, 110, false));
    EXPECT_FALSE(button.IsArmed());
    EXPECT_EQ(CLICK_SINGLE, Click(button));
    EXPECT_EQ(CLICK_NONE, Click(button));

    // Press outside, move on, release on it: no click, never drawn pressed.
    EXPECT_FALSE(Step(ui, button, 150, 120, true));
    EXPECT_FALSE(Step(ui, button, 250, 120, true));
    EXPECT_FALSE(Step(ui, button, 250, 120, false));
    EXPECT_EQ(CLICK_NONE, Click(button));

    // Released elsewhere after leaving, the button is disarmed: coming back up does nothing.
    EXPECT_TRUE(Step(ui, button, 250, 120, true));
    EXPECT_FALSE(Step(ui, button, 400, 120, false));
    EXPECT_FALSE(Step(ui, button, 250, 120, false));
    EXPECT_EQ(CLICK_NONE, Click(button));
}

TEST(ButtonTest, TheRightAndBottomEdgesAreOutside)
{
    UiInput ui;
    Button button(&ui.cursor);
    Place(button);
    EXPECT_TRUE(button.IsInside(200, 100));
    EXPECT_TRUE(button.IsInside(299, 139));
    EXPECT_FALSE(button.IsInside(300, 120));
    EXPECT_FALSE(button.IsInside(250, 140));
    EXPECT_FALSE(button.IsInside(199, 120));
    EXPECT_FALSE(button.IsInside(250, 99));

    // Pressing exactly on the right edge does nothing.
    EXPECT_FALSE(Step(ui, button, 300, 120, false));
    EXPECT_FALSE(Step(ui, button, 300, 120, true));
    EXPECT_FALSE(Step(ui, button, 300, 120, false));
    EXPECT_EQ(CLICK_NONE, Click(button));
    // The top-left pixel is the button's.
    EXPECT_TRUE(Step(ui, button, 200, 100, true));
    EXPECT_FALSE(Step(ui, button, 200, 100, false));
    EXPECT_EQ(CLICK_SINGLE, Click(button));
}

TEST(ButtonTest, DoubleClicksAreSecondClicksWithinHalfASecond)
{
    UiInput ui;
    Button button(&ui.cursor);
    Place(button);
    auto clickOnce = [&](float p_gap) {
        // Waits until p_gap seconds after the previous release, then clicks within one frame.
        Step(ui, button, 250, 120, false, p_gap - DT);
        Step(ui, button, 250, 120, true, DT / 2);
        Step(ui, button, 250, 120, false, DT / 2);
    };

    // The first click of a new button is never a double click.
    clickOnce(0.1f);
    EXPECT_EQ(CLICK_SINGLE, Click(button));
    // 0.3 s after the previous one: double.
    clickOnce(0.3f);
    EXPECT_EQ(CLICK_DOUBLE, Click(button));
    // 0.6 s apart: single each time.
    clickOnce(0.6f);
    EXPECT_EQ(CLICK_SINGLE, Click(button));
    clickOnce(0.6f);
    EXPECT_EQ(CLICK_SINGLE, Click(button));

    // Clicks nobody asked for wait; GetClick without an out-parameter still clears them.
    clickOnce(0.6f);
    clickOnce(0.3f);
    EXPECT_FALSE(button.GetClick());
    EXPECT_EQ(CLICK_NONE, Click(button));
    clickOnce(0.6f);
    Step(ui, button, 250, 120, false);
    Step(ui, button, 250, 120, false);
    EXPECT_EQ(CLICK_SINGLE, Click(button));
}

TEST(ButtonTest, GetClickAnswersWhetherTheButtonIsDrawnPressed)
{
    UiInput ui;
    Button button(&ui.cursor);
    Place(button);
    Step(ui, button, 250, 120, true);
    int32_t click = -1;
    EXPECT_TRUE(button.GetClick(&click));
    EXPECT_EQ(CLICK_NONE, click);
    Step(ui, button, 250, 120, false);
    EXPECT_FALSE(button.GetClick(&click));
    EXPECT_EQ(CLICK_SINGLE, click);
}

TEST(ButtonTest, AButtonMadeWhileTheMouseIsHeldDoesNotTakeThatPress)
{
    UiInput ui;
    ui.Frame(250, 120, true);
    Button button(&ui.cursor);
    Place(button);
    EXPECT_FALSE(Step(ui, button, 250, 120, true));
    EXPECT_FALSE(Step(ui, button, 250, 120, false));
    EXPECT_EQ(CLICK_NONE, Click(button));
}

TEST(ButtonTest, MissingPicturesAndTheDefaultFont)
{
    UiInput ui;
    Button button(&ui.cursor);
    // The pressed picture fails first, so the normal one is not even tried.
    EXPECT_FALSE(button.LoadImages("art\\no_such_up.bmp", "art\\no_such_down.bmp"));
    EXPECT_EQ(nullptr, button.GetImage());
    EXPECT_EQ(0, button.GetWidth());
    // Sized by hand it still works, pressed picture included.
    button.SetSize(120, 33);
    EXPECT_EQ(33, button.GetPressedImage()->GetHeight());
    // Text without a font first takes "Arial" 12.
    EXPECT_EQ(nullptr, button.GetFont());
    button.SetText("Done");
    ASSERT_NE(nullptr, button.GetFont());
    EXPECT_EQ(16, button.GetFont()->GetHeight());
}

TEST(ToggleButtonTest, EachPressFlipsItAndCountsNoClick)
{
    UiInput ui;
    ToggleButton toggle(&ui.cursor);
    Place(toggle);
    EXPECT_TRUE(Step(ui, toggle, 250, 120, true));
    // Holding, moving off and releasing change nothing.
    EXPECT_TRUE(Step(ui, toggle, 400, 120, true));
    EXPECT_TRUE(Step(ui, toggle, 250, 120, false));
    EXPECT_EQ(CLICK_NONE, Click(toggle));
    EXPECT_FALSE(Step(ui, toggle, 250, 120, true));
    EXPECT_FALSE(Step(ui, toggle, 250, 120, false));
    // A press outside leaves it.
    EXPECT_FALSE(Step(ui, toggle, 100, 120, true));
    EXPECT_FALSE(Step(ui, toggle, 100, 120, false));
}

TEST(RadioGroupTest, TheSelectionMovesButNeverVanishes)
{
    UiInput ui;
    RadioGroup group(&ui.cursor);
    EXPECT_EQ(-1, group.GetSelectedIndex());
    // Added in the options menu's order: "Medium", "Easy", "Hard".
    ToggleButton* medium = group.AddButton();
    ToggleButton* easy = group.AddButton();
    ToggleButton* hard = group.AddButton();
    int32_t x = 100;
    for (ToggleButton* button : {easy, medium, hard})
    {
        button->SetSize(100, 40);
        button->SetPosition(static_cast<float>(x), 100.0f);
        x += 150;
    }
    EXPECT_EQ(0, group.GetSelectedIndex());
    EXPECT_EQ(medium, group.GetSelectedButton());
    EXPECT_TRUE(medium->IsPressed());
    EXPECT_FALSE(easy->IsPressed());

    auto press = [&](int32_t p_x) {
        ui.Frame(p_x, 120, true);
        group.Update(DT);
        ui.Frame(p_x, 120, false);
        group.Update(DT);
    };

    // Clicking the selected one leaves it selected.
    press(300);
    EXPECT_EQ(0, group.GetSelectedIndex());
    EXPECT_TRUE(medium->IsPressed());
    // Clicking another moves the selection: "Hard" was added third.
    press(450);
    EXPECT_EQ(2, group.GetSelectedIndex());
    EXPECT_TRUE(hard->IsPressed());
    EXPECT_FALSE(medium->IsPressed());
    EXPECT_FALSE(easy->IsPressed());
    press(150);
    EXPECT_EQ(1, group.GetSelectedIndex());
    EXPECT_TRUE(easy->IsPressed());
    EXPECT_FALSE(hard->IsPressed());
    // Clicking between the buttons changes nothing.
    press(220);
    EXPECT_EQ(1, group.GetSelectedIndex());
    int pressedCount = 0;
    for (ToggleButton* button : {easy, medium, hard})
    {
        pressedCount += button->IsPressed() ? 1 : 0;
    }
    EXPECT_EQ(1, pressedCount);
}
