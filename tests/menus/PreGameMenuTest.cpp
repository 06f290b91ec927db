#include "input/Cursor.h"
#include "menus/PreGameMenu.h"
#include "support/WorkDir.h"
#include "ui/Button.h"
#include "ui/StaticObjects.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{
// The fall into place takes 4u, the hops 2u and u.
constexpr double U = 0.9 / 7.0;
constexpr int32_t CLICKED = 42;

// A menu of a few buttons and nothing else that answers CLICKED for a click on any button.
class ButtonsMenu : public PreGameMenu
{
public:
    ButtonsMenu(Cursor* p_cursor, int32_t p_buttons) : PreGameMenu(p_cursor), m_buttons(p_buttons) {}

    int32_t handled = 0;

protected:
    bool Create() override
    {
        static const char* const LABELS[] = {"One", "Two", "Three", "Four", "Five"};
        SetNumScreens(2);
        if (m_buttons > 0)
        {
            CreateButtons(LABELS, m_buttons);
        }
        SetTitle("Test");
        return true;
    }
    int32_t HandleButtons(float) override
    {
        ++handled;
        for (int32_t i = 0; i < GetNumButtons(); ++i)
        {
            if (WasButtonClicked(i))
            {
                return CLICKED;
            }
        }
        return MENUCODE_STAY;
    }

private:
    int32_t m_buttons;
};

class PreGameMenuTest : public testsupport::WorkDirTest
{
protected:
    // Every test is a fresh run of the program: no button made yet.
    void SetUp() override
    {
        WorkDirTest::SetUp();
        PreGameMenu::ForgetFirstButton();
    }

    // Advances the menu's transition to exactly p_time seconds (after its first frame).
    static int32_t UpdateTo(PreGameMenu& p_menu, double p_time)
    {
        return p_menu.Update(static_cast<float>(p_time - p_menu.GetTransitionTime()));
    }
    static int32_t Y(const PreGameMenu& p_menu, int32_t p_button)
    {
        return static_cast<int32_t>(p_menu.GetButton(p_button)->GetY());
    }
};
} // namespace

TEST_F(PreGameMenuTest, FourButtonsDropOneAfterAnotherAndBounceTwice)
{
    Cursor cursor;
    ButtonsMenu menu(&cursor, 4);
    ASSERT_TRUE(menu.Init());
    // Without their pictures the buttons are 140 x 40: everything starts 40 above the screen.
    EXPECT_EQ(40, menu.GetButton(0)->GetHeight());
    EXPECT_DOUBLE_EQ(-40.0, PreGameMenu::GetStartHeight());
    EXPECT_EQ(PreGameMenu::STATE_OPENING, menu.GetState());

    // The bottom button (3) drops at once and lands at 420 after 4u; its hops are 460/250 of
    // the top button's.
    EXPECT_EQ(-40, PreGameMenu::DropY(0.0, 3));
    EXPECT_EQ(420, PreGameMenu::DropY(4 * U, 3));
    EXPECT_EQ(387, PreGameMenu::DropY(5 * U, 3));  // 420 - 250/14 * 460/250
    EXPECT_EQ(417, PreGameMenu::DropY(6.5 * U, 3)); // 420 - 250/196 * 460/250
    EXPECT_EQ(420, PreGameMenu::DropY(7 * U, 3));
    // The top button: 17.9 up in the middle of the first hop, 1.3 in the second.
    EXPECT_EQ(210, PreGameMenu::DropY(4 * U, 0));
    EXPECT_EQ(192, PreGameMenu::DropY(5 * U, 0));
    EXPECT_EQ(208, PreGameMenu::DropY(6.5 * U, 0));
    EXPECT_EQ(210, PreGameMenu::DropY(0.9, 0));

    // Through the menu's own clock (read in the middle of the hops, where rounding cannot
    // move them): the top button waits 3 seconds, then follows the same path.
    menu.Update(0.05f);
    EXPECT_EQ(-40, Y(menu, 0));
    UpdateTo(menu, 5 * U);
    EXPECT_EQ(387, Y(menu, 3));
    EXPECT_EQ(-40, Y(menu, 0));
    UpdateTo(menu, 1.0 + 5 * U);
    EXPECT_EQ(322, Y(menu, 2)); // in the middle of its first hop above 350
    EXPECT_EQ(420, Y(menu, 3));
    UpdateTo(menu, 3.0 + 5 * U);
    EXPECT_EQ(192, Y(menu, 0));
    UpdateTo(menu, 3.0 + 6.5 * U);
    EXPECT_EQ(208, Y(menu, 0));
    UpdateTo(menu, 3.95);
    EXPECT_EQ(PreGameMenu::STATE_OPENING, menu.GetState());
    UpdateTo(menu, 4.89);
    EXPECT_EQ(PreGameMenu::STATE_OPENING, menu.GetState());
    UpdateTo(menu, 4.91);
    EXPECT_EQ(PreGameMenu::STATE_OPEN, menu.GetState());
    for (int32_t i = 0; i < 4; ++i)
    {
        EXPECT_EQ(15, static_cast<int32_t>(menu.GetButton(i)->GetX()));
        EXPECT_EQ(210 + 70 * i, Y(menu, i));
    }

    // A second menu drops from the same height, whatever its first button.
    ButtonsMenu another(&cursor, 2);
    another.Init();
    EXPECT_DOUBLE_EQ(-40.0, PreGameMenu::GetStartHeight());
}

TEST_F(PreGameMenuTest, FirstFrameIsOneHundredthAndAMenuWithoutButtonsOpensAfterTheBounceTime)
{
    Cursor cursor;
    ButtonsMenu menu(&cursor, 0);
    ASSERT_TRUE(menu.Init());
    EXPECT_EQ(MENUCODE_STAY, menu.Update(3.0f));
    EXPECT_FLOAT_EQ(0.01f, menu.GetTransitionTime());
    EXPECT_EQ(1, menu.handled); // interactive from the first frame
    UpdateTo(menu, 0.89);
    EXPECT_EQ(PreGameMenu::STATE_OPENING, menu.GetState());
    UpdateTo(menu, 0.91);
    EXPECT_EQ(PreGameMenu::STATE_OPEN, menu.GetState());
    EXPECT_FLOAT_EQ(0.0f, menu.GetTransitionTime());

    // Closing restarts the clock at 0.01 too, and the menu answers 8 after 0.7 s, once.
    menu.Close();
    EXPECT_EQ(MENUCODE_STAY, menu.Update(0.5f));
    EXPECT_FLOAT_EQ(0.01f, menu.GetTransitionTime());
    EXPECT_EQ(MENUCODE_STAY, menu.Update(0.68f));
    EXPECT_EQ(MENUCODE_CLOSED, menu.Update(0.02f));
    EXPECT_EQ(PreGameMenu::STATE_OPEN, menu.GetState());
}

TEST_F(PreGameMenuTest, ClicksCountWhileDroppingButNotWhileFalling)
{
    uitest::UiInput ui;
    ButtonsMenu menu(&ui.cursor, 2);
    ASSERT_TRUE(menu.Init());
    ui.Frame(0, 0, false);
    menu.Update(0.05f);
    UpdateTo(menu, 1.0); // button 1 has come to rest at 280, button 0 still waits above
    ASSERT_EQ(PreGameMenu::STATE_OPENING, menu.GetState());
    ASSERT_EQ(280, Y(menu, 1));

    // Down and up on the bottom button while the menu is still opening.
    ui.Frame(80, 300, true);
    EXPECT_EQ(MENUCODE_STAY, menu.Update(0.05f));
    ui.Frame(80, 300, false);
    EXPECT_EQ(CLICKED, menu.Update(0.05f));

    // Open: a click on the top button is handled, once.
    UpdateTo(menu, 2.95);
    ASSERT_EQ(PreGameMenu::STATE_OPEN, menu.GetState());
    ui.Frame(80, 230, true);
    menu.Update(0.05f);
    ui.Frame(80, 230, false);
    EXPECT_EQ(CLICKED, menu.Update(0.05f));
    EXPECT_EQ(MENUCODE_STAY, menu.Update(0.05f));

    // Falling: the buttons are neither updated nor asked, so a click there does nothing.
    menu.Close();
    const int32_t handled = menu.handled;
    ui.Frame(80, 230, true);
    EXPECT_EQ(MENUCODE_STAY, menu.Update(0.01f));
    ui.Frame(80, 230, false);
    EXPECT_EQ(MENUCODE_STAY, menu.Update(0.01f));
    EXPECT_EQ(handled, menu.handled);
    // The buttons fall off the bottom: the top one is below the screen after 0.7 s.
    EXPECT_EQ(MENUCODE_CLOSED, UpdateTo(menu, 0.71));
    EXPECT_EQ(362, PreGameMenu::FallY(0.35, 0)); // a quarter of the way: 608 / 4 down
    EXPECT_EQ(818, PreGameMenu::FallY(0.7, 0));
    EXPECT_EQ(888, PreGameMenu::FallY(0.7, 1)); // scaled by (70 + 608) / 608
}

TEST_F(PreGameMenuTest, ScreensAndCommonObjectsAreFoundByIdCommonFirst)
{
    Cursor cursor;
    ButtonsMenu menu(&cursor, 1);
    ASSERT_TRUE(menu.Init());
    ASSERT_EQ(2, menu.GetNumScreens());

    auto onScreen = std::make_unique<StaticText>();
    StaticText* screenText = onScreen.get();
    menu.AddObject(0, std::move(onScreen), 5);
    auto later = std::make_unique<StaticText>();
    StaticText* laterText = later.get();
    menu.AddObject(0, std::move(later), 6);
    auto second = std::make_unique<StaticText>();
    StaticText* secondText = second.get();
    menu.AddObject(1, std::move(second), 6);
    EXPECT_EQ(screenText, menu.FindObject(5));
    EXPECT_EQ(laterText, menu.FindObject(6));
    EXPECT_EQ(nullptr, menu.FindObject(7));

    // Only the current screen is searched.
    menu.SetScreen(1);
    EXPECT_EQ(nullptr, menu.FindObject(5));
    EXPECT_EQ(secondText, menu.FindObject(6));

    // A common object with the same id wins over the screen's.
    auto common = std::make_unique<StaticText>();
    StaticText* commonText = common.get();
    menu.AddCommonObject(std::move(common), 6);
    EXPECT_EQ(commonText, menu.FindObject(6));
    menu.SetScreen(0);
    EXPECT_EQ(commonText, menu.FindObject(6));

    // A new set of screens drops the old objects.
    menu.SetNumScreens(1);
    EXPECT_EQ(nullptr, menu.FindObject(5));
    EXPECT_EQ(commonText, menu.FindObject(6));
}
