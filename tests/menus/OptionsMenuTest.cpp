// The options menu played with the mouse and keyboard at the places a player clicks.
#include "app/Mode.h"
#include "app/ModeCode.h"
#include "app/Settings.h"
#include "gfx/Image.h"
#include "input/Action.h"
#include "input/ControlsConfig.h"
#include "menus/MainMenu.h"
#include "menus/MenuMode.h"
#include "menus/OptionsMenu.h"
#include "platform/DikCodes.h"
#include "sound/Sound.h"
#include "support/WorkDir.h"
#include "ui/Button.h"
#include "ui/ControlRow.h"
#include "ui/HudLayoutEditor.h"
#include "ui/RadioGroup.h"
#include "ui/SlideBar.h"
#include "ui/ToggleButton.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>

namespace
{
constexpr float DT = 0.05f;
constexpr int32_t BAR_HEIGHT = 16;

// The middle of menu button p_button at rest.
constexpr int32_t MENU_BUTTON_X = 80;
int32_t MenuButtonY(int32_t p_button)
{
    return 230 + 70 * p_button;
}

std::string ReadFile(const char* p_name)
{
    std::ifstream file(p_name);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

// Plays a menu frame by frame with the scripted mouse and keyboard.
struct Player
{
    uitest::UiInput& ui;
    Menu& menu;

    int32_t Frame(int32_t p_x, int32_t p_y, bool p_down)
    {
        ui.Frame(p_x, p_y, p_down);
        return menu.Update(DT);
    }
    // Press and release at one place; what the menu answered to the release.
    int32_t Click(int32_t p_x, int32_t p_y)
    {
        Frame(p_x, p_y, false);
        Frame(p_x, p_y, true);
        return Frame(p_x, p_y, false);
    }
    int32_t ClickMenuButton(int32_t p_button) { return Click(MENU_BUTTON_X, MenuButtonY(p_button)); }
    void Drag(int32_t p_fromX, int32_t p_fromY, int32_t p_toX, int32_t p_toY)
    {
        Frame(p_fromX, p_fromY, false);
        Frame(p_fromX, p_fromY, true);
        Frame(p_toX, p_toY, true);
        Frame(p_toX, p_toY, false);
    }
};

class OptionsMenuTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        PreGameMenu::ForgetFirstButton();
        m_oldSound = g_pSound;
        g_pSound = &m_sound;
    }
    void TearDown() override
    {
        m_menu.reset();
        g_pSound = m_oldSound;
        WorkDirTest::TearDown();
    }

    // A new options menu, opened: every button at rest.
    OptionsMenu& Open()
    {
        m_menu = std::make_unique<OptionsMenu>(&m_ui.cursor, &m_ui.input.GetInput());
        m_menu->Init();
        // Without the pictures the bars get the height of theirs.
        for (int32_t channel = 0; channel < OptionsMenu::NUM_TINT_CHANNELS; ++channel)
        {
            m_menu->GetTintBar(channel)->GetImage()->SetHeight(BAR_HEIGHT);
        }
        m_menu->GetVolumeBar()->GetImage()->SetHeight(BAR_HEIGHT);
        m_ui.Frame(0, 0, false);
        m_menu->Update(DT);
        m_menu->Update(6.0f);
        EXPECT_EQ(PreGameMenu::STATE_OPEN, m_menu->GetState());
        return *m_menu;
    }
    Player Play() { return Player{m_ui, *m_menu}; }

    uitest::UiInput m_ui;
    Sound m_sound;
    Sound* m_oldSound = nullptr;
    std::unique_ptr<OptionsMenu> m_menu;
};
} // namespace

TEST_F(OptionsMenuTest, FiveButtonsEachOfTheFirstFourShowsItsScreen)
{
    OptionsMenu& menu = Open();
    Player player = Play();
    ASSERT_EQ(OptionsMenu::NUM_BUTTONS, menu.GetNumButtons());
    const char* const labels[] = {"Gameplay", "Controls", "Video", "Audio", "Cancel"};
    for (int32_t i = 0; i < OptionsMenu::NUM_BUTTONS; ++i)
    {
        EXPECT_EQ(labels[i], menu.GetButton(i)->GetText());
    }
    EXPECT_EQ("Options", menu.GetTitle()->GetText());
    EXPECT_EQ(OptionsMenu::SCREEN_GAMEPLAY, menu.GetCurrentScreen());

    for (int32_t screen : {OptionsMenu::SCREEN_AUDIO, OptionsMenu::SCREEN_CONTROLS, OptionsMenu::SCREEN_VIDEO,
                           OptionsMenu::SCREEN_GAMEPLAY})
    {
        EXPECT_EQ(MENUCODE_STAY, player.ClickMenuButton(screen));
        EXPECT_EQ(screen, menu.GetCurrentScreen());
    }
    // Only the shown screen's objects are found by id; each screen has its own.
    EXPECT_NE(nullptr, menu.FindObject(OptionsMenu::ID_HUD_EDITOR));
    EXPECT_EQ(nullptr, menu.FindObject(OptionsMenu::ID_VOLUME_BAR));
    player.ClickMenuButton(OptionsMenu::BUTTON_CONTROLS);
    for (int32_t action = 0; action < ACTION_COUNT; ++action)
    {
        auto* row = dynamic_cast<ControlRow*>(menu.FindObject(OptionsMenu::ID_FIRST_CONTROL_ROW + action));
        ASSERT_NE(nullptr, row) << action;
        EXPECT_EQ(action, row->GetAction());
        EXPECT_EQ(350.0, row->GetX());
        EXPECT_EQ(150.0 + 40.0 * action, row->GetY());
    }
}

TEST_F(OptionsMenuTest, ACapturedKeyIsInEffectAndInConfigIniAtOnce)
{
    OptionsMenu& menu = Open();
    Player player = Play();
    player.ClickMenuButton(OptionsMenu::BUTTON_CONTROLS);
    auto* row = dynamic_cast<ControlRow*>(menu.FindObject(OptionsMenu::ID_FIRST_CONTROL_ROW + SHOOT_FORWARD));
    ASSERT_NE(nullptr, row);
    EXPECT_STREQ("W", row->GetKeyBox().GetShownText());

    // The box of SHOOT_FORWARD spans x 550..750 of the row at y 150.
    player.Click(600, 165);
    EXPECT_STREQ("Hit Any Key", row->GetKeyBox().GetShownText());
    m_ui.input.KeyDown(DIK_Q);
    player.Frame(600, 165, false);
    m_ui.input.KeyUp(DIK_Q);
    player.Frame(600, 165, false);

    EXPECT_STREQ("Q", row->GetKeyBox().GetShownText());
    const Binding bound = m_ui.input->GetBinding(SHOOT_FORWARD);
    EXPECT_EQ(DEVICE_KEYBOARD, bound.device);
    EXPECT_EQ(DIK_Q, bound.code);
    // Written before "Cancel", and only that action's entry.
    EXPECT_NE(std::string::npos, ReadFile("config.ini").find("SHOOT_FORWARD=Q")) << ReadFile("config.ini");
    const ControlsConfig stored("./config.ini");
    EXPECT_EQ(DIK_Q, stored.GetBinding(SHOOT_FORWARD).code);
    EXPECT_EQ(DIK_A, stored.GetBinding(SHOOT_LEFT).code);
    EXPECT_EQ(MENUCODE_STAY, player.Frame(0, 0, false));

    // The other boxes were not touched by the click or the key.
    auto* left = dynamic_cast<ControlRow*>(menu.FindObject(OptionsMenu::ID_FIRST_CONTROL_ROW + SHOOT_LEFT));
    ASSERT_NE(nullptr, left);
    EXPECT_STREQ("A", left->GetKeyBox().GetShownText());
}

TEST_F(OptionsMenuTest, ClickingTheSelectedDifficultyKeepsItAnotherMovesItAndIsKept)
{
    OptionsMenu& menu = Open();
    Player player = Play();
    RadioGroup* group = menu.GetDifficultyGroup();
    ASSERT_NE(nullptr, group);
    EXPECT_EQ(OptionsMenu::DIFFICULTY_MEDIUM, menu.GetDifficulty());
    ToggleButton* medium = group->GetSelectedButton();
    ASSERT_NE(nullptr, medium);
    EXPECT_EQ("Medium", medium->GetText());

    // "Medium" at (500, 120), "Easy" at (350, 120), "Hard" at (650, 120).
    player.Click(520, 135);
    EXPECT_EQ(OptionsMenu::DIFFICULTY_MEDIUM, menu.GetDifficulty());
    EXPECT_TRUE(medium->IsPressed());
    EXPECT_EQ(std::string::npos, ReadFile("config.ini").find("Difficulty")) << "nothing changed, nothing written";

    player.Click(670, 135);
    EXPECT_EQ(OptionsMenu::DIFFICULTY_HARD, menu.GetDifficulty());
    EXPECT_EQ("Hard", group->GetSelectedButton()->GetText());
    EXPECT_FALSE(medium->IsPressed());
    // In play and in config.ini at once.
    EXPECT_EQ(Settings::DIFFICULTY_HARD, g_settings.GetDifficulty());
    EXPECT_NE(std::string::npos, ReadFile("config.ini").find("Difficulty=Hard")) << ReadFile("config.ini");

    player.Click(370, 135);
    EXPECT_EQ(OptionsMenu::DIFFICULTY_EASY, menu.GetDifficulty());
    // The choice stays readable while another screen is shown.
    player.ClickMenuButton(OptionsMenu::BUTTON_AUDIO);
    EXPECT_EQ(OptionsMenu::DIFFICULTY_EASY, menu.GetDifficulty());

    // A menu opened later, in this run or the next, starts on it.
    Settings stored;
    stored.Load();
    EXPECT_EQ(Settings::DIFFICULTY_EASY, stored.GetDifficulty());
    OptionsMenu& again = Open();
    EXPECT_EQ(OptionsMenu::DIFFICULTY_EASY, again.GetDifficulty());
    EXPECT_EQ("Easy", again.GetDifficultyGroup()->GetSelectedButton()->GetText());
}

TEST_F(OptionsMenuTest, HudPiecesSnapToTheNearestFreeSlotAndTheBarsSetTheTintBothKeptOnceLetGo)
{
    // Radar, status and messages stored in slots 0, 2 and 7 of the editor at (410, 280).
    ASSERT_TRUE(g_settings.SetHudSlots({0, 2, 7}));
    OptionsMenu& menu = Open();
    Player player = Play();
    EXPECT_EQ(0, menu.GetHudSlot(0));
    EXPECT_EQ(2, menu.GetHudSlot(1));
    EXPECT_EQ(7, menu.GetHudSlot(2));

    // The radar grabbed 10 pixels into it and held with its corner at (60, 40) in the
    // editor: nothing is stored while it is held.
    player.Frame(420, 290, false);
    player.Frame(420, 290, true);
    player.Frame(410 + 60 + 10, 280 + 40 + 10, true);
    EXPECT_EQ((Settings::HudSlots{0, 2, 7}), g_settings.GetHudSlots());
    // Let go there, between slots 0, 1 and 3, it snaps to the nearest, slot 1 at (112, 0),
    // and the layout is kept.
    player.Frame(410 + 60 + 10, 280 + 40 + 10, false);
    EXPECT_EQ(1, menu.GetHudSlot(0));
    EXPECT_EQ((Settings::HudSlots{1, 2, 7}), g_settings.GetHudSlots());
    EXPECT_NE(std::string::npos, ReadFile("config.ini").find("HudLayout=1,2,7")) << ReadFile("config.ini");
    // Let go exactly on the status piece's slot 2: the nearest free slot is 4 at (225, 84).
    player.Drag(410 + 112 + 10, 290, 410 + 225 + 10, 290);
    EXPECT_EQ(4, menu.GetHudSlot(0));
    EXPECT_EQ(2, menu.GetHudSlot(1));
    // The messages piece dropped on the radar's new slot goes elsewhere too.
    player.Drag(410 + 225 + 10, 280 + 169 + 10, 410 + 225 + 10, 280 + 84 + 10);
    const std::set<int32_t> slots = {menu.GetHudSlot(0), menu.GetHudSlot(1), menu.GetHudSlot(2)};
    EXPECT_EQ(3u, slots.size()) << "no two pieces share a slot";
    EXPECT_EQ(4, menu.GetHudSlot(0));
    EXPECT_EQ((Settings::HudSlots{4, 2, menu.GetHudSlot(2)}), g_settings.GetHudSlots());

    // The four bars start at full colour; the red one dragged to its left end and the
    // transparency one to its middle. A bar being dragged tints the pieces but is kept only
    // once it is let go.
    for (int32_t channel = 0; channel < OptionsMenu::NUM_TINT_CHANNELS; ++channel)
    {
        EXPECT_EQ(255, menu.GetTint(channel)) << channel;
    }
    player.Frame(355 + 399, 530 + 8, false);
    player.Frame(355 + 399, 530 + 8, true);
    player.Frame(300, 530 + 8, true);
    EXPECT_EQ(0, menu.GetTint(OptionsMenu::TINT_RED));
    EXPECT_EQ(Settings::DEFAULT_TINT, g_settings.GetTint());
    player.Frame(300, 530 + 8, false);
    EXPECT_EQ((Settings::Tint{0, 255, 255, 255}), g_settings.GetTint());
    player.Drag(355 + 399, 650 + 8, 355 + 200, 650 + 8);
    EXPECT_EQ(0, menu.GetTint(OptionsMenu::TINT_RED));
    EXPECT_EQ(255, menu.GetTint(OptionsMenu::TINT_GREEN));
    EXPECT_EQ(128, menu.GetTint(OptionsMenu::TINT_ALPHA));
    EXPECT_EQ(-1, menu.GetTint(OptionsMenu::NUM_TINT_CHANNELS));
    EXPECT_NE(std::string::npos, ReadFile("config.ini").find("HudTint=0,255,255,128")) << ReadFile("config.ini");

    // A menu opened later shows the pieces where they were let go and the bars where they
    // were left, and tints its pieces at once.
    const Settings::HudSlots kept = g_settings.GetHudSlots();
    OptionsMenu& again = Open();
    for (int32_t piece = 0; piece < OptionsMenu::NUM_HUD_PIECES; ++piece)
    {
        EXPECT_EQ(kept[static_cast<size_t>(piece)], again.GetHudSlot(piece)) << piece;
    }
    EXPECT_EQ(0, again.GetTint(OptionsMenu::TINT_RED));
    EXPECT_EQ(128, again.GetTint(OptionsMenu::TINT_ALPHA));
}

TEST_F(OptionsMenuTest, TheVolumeBarStartsAtTheStoredVolumeAndKeepsWhereItIsLetGo)
{
    // A volume between two of the bar's steps: opening the Audio screen leaves it exactly so.
    const int32_t start = Sound::SliderFromVolume(-1234);
    ASSERT_NE(-1234, Sound::VolumeFromSlider(start));
    ASSERT_TRUE(g_settings.SetVolume(start));
    m_sound.SetVolume(-1234);
    OptionsMenu& menu = Open();
    Player player = Play();
    EXPECT_EQ(start, menu.GetVolumePosition());
    player.ClickMenuButton(OptionsMenu::BUTTON_AUDIO);
    for (int frame = 0; frame < 5; ++frame)
    {
        player.Frame(0, 0, false);
    }
    EXPECT_EQ(-1234, m_sound.GetVolume());

    // The bar is 500 wide at (300, 300) with 100 positions: the middle is 50, -20 dB. It is
    // heard while it is dragged and kept once it is let go.
    player.Frame(300 + 350, 308, false);
    player.Frame(300 + 350, 308, true);
    player.Frame(300 + 252, 308, true);
    EXPECT_EQ(50, menu.GetVolumePosition());
    EXPECT_EQ(Sound::VolumeFromSlider(50), m_sound.GetVolume());
    EXPECT_EQ(start, g_settings.GetVolume());
    player.Frame(300 + 252, 308, false);
    EXPECT_EQ(50, g_settings.GetVolume());
    EXPECT_NE(std::string::npos, ReadFile("config.ini").find("Volume=50")) << ReadFile("config.ini");
    // Its left end is silence.
    player.Click(300, 308);
    EXPECT_EQ(Sound::VOLUME_SILENT, m_sound.GetVolume());
    EXPECT_EQ(0, g_settings.GetVolume());

    // A fresh menu's bar starts there, and the silence stays.
    OptionsMenu& fresh = Open();
    Player again = Play();
    EXPECT_EQ(0, fresh.GetVolumePosition());
    again.ClickMenuButton(OptionsMenu::BUTTON_AUDIO);
    again.Frame(0, 0, false);
    EXPECT_EQ(Sound::VOLUME_SILENT, m_sound.GetVolume());
}

TEST_F(OptionsMenuTest, CancelOpensAFreshTitleMenuWhileTheOptionsFallAway)
{
    setenv("KORVATH_HEADLESS", "1", 1);
    Cursor& cursor = Mode::s_cursor;
    if (!cursor.Init(nullptr, 0.0, 0.0, m_ui.input.GetMouse()))
    {
        cursor.Rebind(m_ui.input.GetMouse());
    }
    {
        MenuMode mode;
        testing::internal::CaptureStderr(); // the title music is missing here
        mode.Init(nullptr, MENUCODE_OPEN_OPTIONS);
        testing::internal::GetCapturedStderr();
        ASSERT_EQ(1u, mode.GetMenus().size());
        auto* options = dynamic_cast<OptionsMenu*>(mode.GetMenus().front().m_pMenu.get());
        ASSERT_NE(nullptr, options);
        const auto frame = [&](bool p_down) {
            m_ui.input.MouseButton(0, p_down);
            m_ui.input.Poll();
            cursor.SetPosition(static_cast<float>(MENU_BUTTON_X), static_cast<float>(MenuButtonY(4)));
            return mode.Update(DT);
        };
        mode.Update(DT);
        mode.Update(6.0f);
        ASSERT_EQ(PreGameMenu::STATE_OPEN, options->GetState());

        frame(false);
        frame(true);
        EXPECT_EQ(MODECODE_STAY, frame(false));
        ASSERT_EQ(2u, mode.GetMenus().size());
        auto* title = dynamic_cast<MainMenu*>(mode.GetMenus().front().m_pMenu.get());
        ASSERT_NE(nullptr, title) << "a title menu goes first";
        EXPECT_EQ(PreGameMenu::STATE_OPENING, title->GetState());
        EXPECT_EQ(PreGameMenu::STATE_CLOSING, options->GetState());

        // The options buttons fall for 0.7 s, then the options menu is gone.
        for (int i = 0; i < 13; ++i)
        {
            frame(false);
        }
        EXPECT_EQ(2u, mode.GetMenus().size());
        EXPECT_GT(options->GetButton(0)->GetY(), 600.0);
        for (int i = 0; i < 2; ++i)
        {
            frame(false);
        }
        ASSERT_EQ(1u, mode.GetMenus().size());
        EXPECT_EQ(title, mode.GetMenus().front().m_pMenu.get());
    }
    cursor.Rebind(nullptr);
}
