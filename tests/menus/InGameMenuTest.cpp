#include "app/ModeCode.h"
#include "input/Action.h"
#include "menus/InGameMenu.h"
#include "menus/ObjectivesScreen.h"
#include "menus/OptionsMenu.h"
#include "pilot/CampaignLink.h"
#include "platform/DikCodes.h"
#include "support/WorkDir.h"
#include "ui/Button.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <string>

using uitest::UiInput;

namespace
{
constexpr float DT = 0.02f;

// Installed as the campaign while it lives; counts the resets.
class CampaignProbe : public CampaignLink
{
public:
    CampaignProbe() : m_previous(g_pCampaignLink) { g_pCampaignLink = this; }
    ~CampaignProbe() override { g_pCampaignLink = m_previous; }
    void SetMission(const char* p_name) override { m_mission = p_name != nullptr ? p_name : ""; }
    void Reset() override
    {
        ++m_resets;
        m_mission = "first";
    }
    const char* GetMissionName() const override { return m_mission.c_str(); }

    int m_resets = 0;
    std::string m_mission = "third";

private:
    CampaignLink* m_previous;
};

// One frame as the mission mode plays it with the menu open: the poll (with the mouse at
// (p_x, p_y)), the menu's input, then its update.
int32_t Frame(UiInput& p_ui, InGameMenu& p_menu, int32_t p_x = 0, int32_t p_y = 0, bool p_down = false)
{
    p_ui.Frame(p_x, p_y, p_down);
    p_menu.HandleInput(&p_ui.input.GetInput());
    return p_menu.Update(DT);
}

// Presses and releases the mouse over slot p_slot's button; answers the last frame's code.
int32_t ClickButton(UiInput& p_ui, InGameMenu& p_menu, int32_t p_slot)
{
    const Button* button = p_menu.GetButton(p_slot);
    const int32_t x = static_cast<int32_t>(button->GetX()) + 20;
    const int32_t y = static_cast<int32_t>(button->GetY()) + 10;
    EXPECT_EQ(MODECODE_STAY, Frame(p_ui, p_menu, x, y, false));
    EXPECT_EQ(MODECODE_STAY, Frame(p_ui, p_menu, x, y, true));
    return Frame(p_ui, p_menu, x, y, false);
}

void PressMenuKey(UiInput& p_ui)
{
    p_ui.input.KeyDown(DIK_ESCAPE);
}
} // namespace

TEST(InGameMenuTest, EscapeTogglesTheMenuAndEveryOpeningFadesInAgain)
{
    UiInput ui;
    InGameMenu menu(&ui.cursor);
    EXPECT_FALSE(menu.IsVisible());
    EXPECT_EQ(0, menu.GetFadeAlpha());

    PressMenuKey(ui);
    ui.Frame(0, 0, false);
    menu.HandleInput(&ui.input.GetInput());
    EXPECT_TRUE(menu.IsVisible());
    // Held down, the key does not toggle again.
    EXPECT_EQ(MODECODE_STAY, Frame(ui, menu));
    EXPECT_TRUE(menu.IsVisible());
    EXPECT_EQ(1, menu.GetFadeAlpha()); // one step a frame

    for (int frame = 0; frame < 250; ++frame)
    {
        Frame(ui, menu);
    }
    EXPECT_EQ(InGameMenu::FADE_MAX, menu.GetFadeAlpha());

    // Released and pressed again: hidden, and the darkening starts from clear next time.
    ui.input.KeyUp(DIK_ESCAPE);
    Frame(ui, menu);
    PressMenuKey(ui);
    ui.Frame(0, 0, false);
    menu.HandleInput(&ui.input.GetInput());
    EXPECT_FALSE(menu.IsVisible());
    EXPECT_EQ(0, menu.GetFadeAlpha());

    // Twice in quick succession: open, closed, and open again fading in from 0.
    ui.input.KeyUp(DIK_ESCAPE);
    ui.Frame(0, 0, false);
    menu.HandleInput(&ui.input.GetInput());
    PressMenuKey(ui);
    EXPECT_EQ(MODECODE_STAY, Frame(ui, menu));
    EXPECT_TRUE(menu.IsVisible());
    EXPECT_EQ(1, menu.GetFadeAlpha());
    EXPECT_TRUE(menu.HandleInput(nullptr));
}

TEST(InGameMenuTest, ButtonsSitOnThePanelOneAndAHalfHeightsApart)
{
    UiInput ui;
    InGameMenu menu(&ui.cursor);
    ASSERT_EQ(InGameMenu::NUM_BUTTONS, menu.GetNumInputObjects());
    const char* const captions[] = {"Objectives", "Options", "Main Menu", "Exit"};
    const double panelMiddle = static_cast<int32_t>(menu.GetBackgroundX()) + menu.GetBackground().GetWidth() / 2;
    for (int32_t i = 0; i < InGameMenu::NUM_BUTTONS; ++i)
    {
        const Button* button = menu.GetButton(i);
        ASSERT_NE(nullptr, button);
        EXPECT_EQ(captions[i], button->GetText());
        // The buttons keep a clickable size even when their pictures are missing.
        EXPECT_GT(button->GetWidth(), 0);
        EXPECT_GT(button->GetHeight(), 0);
        EXPECT_EQ(panelMiddle - button->GetWidth() / 2, button->GetX());
        EXPECT_EQ(menu.GetBackgroundY() + (i + 1) * button->GetHeight() * 1.5, button->GetY());
    }
}

TEST(InGameMenuTest, ButtonsShowTheObjectivesLeaveForTheMenusOrQuit)
{
    UiInput ui;
    CampaignProbe campaign;
    ObjectivesScreen objectives(&ui.cursor);
    objectives.AddObjective("Destroy the raiders.", 1);
    InGameMenu menu(&ui.cursor, &objectives);
    menu.SetVisible(true);

    // "Objectives" shows the page; its OK brings the buttons back.
    EXPECT_EQ(MODECODE_STAY, ClickButton(ui, menu, InGameMenu::BUTTON_OBJECTIVES));
    EXPECT_TRUE(menu.IsShowingObjectives());
    // While the page shows, the buttons under it do not take clicks.
    EXPECT_EQ(MODECODE_STAY, ClickButton(ui, menu, InGameMenu::BUTTON_EXIT));
    EXPECT_TRUE(menu.IsShowingObjectives());

    // Closed with Escape and opened again, the page is still there.
    PressMenuKey(ui);
    Frame(ui, menu);
    EXPECT_FALSE(menu.IsVisible());
    ui.input.KeyUp(DIK_ESCAPE);
    Frame(ui, menu);
    PressMenuKey(ui);
    Frame(ui, menu);
    ui.input.KeyUp(DIK_ESCAPE);
    EXPECT_TRUE(menu.IsVisible());
    EXPECT_TRUE(menu.IsShowingObjectives());

    const Button& ok = objectives.GetOkButton();
    const int32_t okX = static_cast<int32_t>(ok.GetX()) + 5;
    const int32_t okY = static_cast<int32_t>(ok.GetY()) + 5;
    Frame(ui, menu, okX, okY, false);
    Frame(ui, menu, okX, okY, true);
    EXPECT_EQ(MODECODE_STAY, Frame(ui, menu, okX, okY, false));
    EXPECT_FALSE(menu.IsShowingObjectives());

    // "Main Menu" puts the campaign back on its first mission before leaving.
    EXPECT_EQ(0, campaign.m_resets);
    EXPECT_EQ(MODECODE_MENUS, ClickButton(ui, menu, InGameMenu::BUTTON_MAIN_MENU));
    EXPECT_EQ(1, campaign.m_resets);
    EXPECT_EQ(std::string("first"), campaign.GetMissionName());

    EXPECT_EQ(MODECODE_QUIT, ClickButton(ui, menu, InGameMenu::BUTTON_EXIT));
    EXPECT_EQ(1, campaign.m_resets);

    // Without an objectives screen "Objectives" leaves the buttons up.
    InGameMenu bare(&ui.cursor);
    bare.SetVisible(true);
    EXPECT_EQ(MODECODE_STAY, ClickButton(ui, bare, InGameMenu::BUTTON_OBJECTIVES));
    EXPECT_FALSE(bare.IsShowingObjectives());
}

// Runs in a folder of its own: the options write config.ini.
class InGameOptionsTest : public testsupport::WorkDirTest
{
};

TEST_F(InGameOptionsTest, OptionsOverTheMissionReturnToTheButtonsWithTheNewKeyInEffect)
{
    PreGameMenu::ForgetFirstButton();
    UiInput ui;
    InGameMenu menu(&ui.cursor);
    menu.SetVisible(true);

    EXPECT_EQ(MODECODE_STAY, ClickButton(ui, menu, InGameMenu::BUTTON_OPTIONS));
    OptionsMenu* options = menu.GetOptions();
    ASSERT_NE(nullptr, options);
    // Until its buttons have dropped in (6 s), then "Controls" and the box of SHOOT_FORWARD.
    for (int frame = 0; frame < 300; ++frame)
    {
        Frame(ui, menu);
    }
    ASSERT_EQ(PreGameMenu::STATE_OPEN, options->GetState());
    const auto click = [&](int32_t p_x, int32_t p_y) {
        Frame(ui, menu, p_x, p_y, false);
        Frame(ui, menu, p_x, p_y, true);
        return Frame(ui, menu, p_x, p_y, false);
    };
    click(80, 230 + 70 * OptionsMenu::BUTTON_CONTROLS);
    EXPECT_EQ(OptionsMenu::SCREEN_CONTROLS, options->GetCurrentScreen());
    click(600, 165);
    ui.input.KeyDown(DIK_Q);
    Frame(ui, menu);
    ui.input.KeyUp(DIK_Q);
    Frame(ui, menu);

    // "Cancel": the buttons under the options take no clicks while they fall.
    EXPECT_EQ(MODECODE_STAY, click(80, 230 + 70 * OptionsMenu::BUTTON_CANCEL));
    EXPECT_EQ(PreGameMenu::STATE_CLOSING, options->GetState());
    EXPECT_EQ(MODECODE_STAY, ClickButton(ui, menu, InGameMenu::BUTTON_EXIT));
    for (int frame = 0; frame < 40 && menu.GetOptions() != nullptr; ++frame)
    {
        Frame(ui, menu);
    }
    EXPECT_EQ(nullptr, menu.GetOptions()) << "the options are gone once their buttons fell (0.7 s)";
    EXPECT_TRUE(menu.IsVisible());
    EXPECT_EQ(MODECODE_QUIT, ClickButton(ui, menu, InGameMenu::BUTTON_EXIT));

    // Q now fires the forward weapon, W no longer does.
    ui.input.KeyDown(DIK_W);
    ui.input.Poll();
    EXPECT_FALSE(ui.input->WasPressed(SHOOT_FORWARD));
    ui.input.KeyDown(DIK_Q);
    ui.input.Poll();
    EXPECT_TRUE(ui.input->WasPressed(SHOOT_FORWARD));
}
