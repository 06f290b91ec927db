#include "app/Mode.h"
#include "app/ModeCode.h"
#include "menus/MainMenu.h"
#include "menus/MenuMode.h"
#include "menus/PortraitPicker.h"
#include "menus/SinglePlayerMenu.h"
#include "mission/Campaign.h"
#include "pilot/Pilot.h"
#include "platform/DikCodes.h"
#include "sim/PlayerShip.h"
#include "support/WorkDir.h"
#include "ui/Button.h"
#include "ui/StaticObjects.h"
#include "ui/TextField.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

namespace
{
namespace fs = std::filesystem;

class QuietMode : public Mode
{
public:
    bool Initialize() override { return true; }
    bool Shutdown() override { return true; }
    int32_t Update(float) override { return MODECODE_STAY; }
    bool Render() override { return true; }
    bool HandleInput(InputSystem*) override { return true; }
};

// Without a display no picture loads, so the carousels list names only.
void Touch(const std::string& p_path)
{
    fs::create_directories(fs::path(p_path).parent_path());
    std::ofstream(p_path) << "x";
}

void WriteSave(const char* p_file, const char* p_name, const char* p_mission, int32_t p_money)
{
    Pilot record(p_file);
    record.SetPilotName(p_name);
    record.SetPortrait("Portraits\\a.bmp");
    record.SetMissionName(p_mission);
    record.SetMoney(p_money);
    ASSERT_TRUE(record.Save(nullptr));
}

Pilot ReadSave(const char* p_file)
{
    Pilot record(p_file);
    EXPECT_TRUE(record.Load(nullptr)) << p_file;
    return record;
}

class SinglePlayerMenuTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        PreGameMenu::ForgetFirstButton();
        // Listed a, b, c%: the last is the newest and comes first.
        for (const char* name : {"Portraits/b.bmp", "Portraits/c%.bmp", "Portraits/a.bmp"})
        {
            Touch(name);
        }
        fs::create_directories("Saves");
        fs::create_directories("Campaign");
        std::ofstream("Campaign/korvath.ini") << "[Entry]\nFirstMission=Opening\n";
        g_campaign.Reload(Campaign::DEFAULT_FILE);
    }
    void TearDown() override
    {
        m_menu.reset();
        g_campaign.Reload(Campaign::DEFAULT_FILE);
        WorkDirTest::TearDown();
    }

    // Made, opened and at rest.
    void Open()
    {
        m_menu = std::make_unique<SinglePlayerMenu>(&m_ui.cursor, &m_ui.input.GetInput());
        ASSERT_TRUE(m_menu->Init());
        m_ui.Frame(0, 0, false);
        m_menu->Update(0.05f);
        m_menu->Update(5.0f);
        ASSERT_EQ(PreGameMenu::STATE_OPEN, m_menu->GetState());
    }
    // What the menu answered to the release.
    int32_t ClickAt(int32_t p_x, int32_t p_y)
    {
        m_ui.Frame(p_x, p_y, true);
        m_menu->Update(0.05f);
        m_ui.Frame(p_x, p_y, false);
        return m_menu->Update(0.05f);
    }
    int32_t Click(int32_t p_button) { return ClickAt(80, 230 + 70 * p_button); }
    int32_t Execute() { return ClickAt(940, 740); }
    // The arrows of the portrait strip (y 200) or the save strip (y 80).
    void StepRight(int32_t p_stripY) { ClickAt(785, p_stripY + 100); }
    void Key(uint8_t p_code)
    {
        m_ui.input.KeyDown(p_code);
        m_ui.Frame(0, 0, false);
        m_menu->Update(0.05f);
        m_ui.input.KeyUp(p_code);
        m_ui.Frame(0, 0, false);
        m_menu->Update(0.05f);
    }
    void Shifted(uint8_t p_code)
    {
        m_ui.input.KeyDown(DIK_LSHIFT);
        Key(p_code);
        m_ui.input.KeyUp(DIK_LSHIFT);
    }
    void ClearName()
    {
        while (Field()->GetLength() > 0)
        {
            Key(DIK_BACK);
        }
    }

    TextField* Field() const { return dynamic_cast<TextField*>(m_menu->FindObject(SinglePlayerMenu::ID_NAME_FIELD)); }
    PortraitPicker* Picker(int32_t p_id) const { return dynamic_cast<PortraitPicker*>(m_menu->FindObject(p_id)); }
    std::string Text(int32_t p_id) const
    {
        const auto* text = dynamic_cast<const StaticText*>(m_menu->FindObject(p_id));
        return text != nullptr ? text->GetText() : "(none)";
    }

    QuietMode m_mode; // makes the player's ship
    uitest::UiInput m_ui;
    std::unique_ptr<SinglePlayerMenu> m_menu;
};
} // namespace

TEST_F(SinglePlayerMenuTest, NewRecruitNamesFollowThePortraitUntilTypedAndNeverOverwriteAPilot)
{
    WriteSave("Saves\\Ace0.sav", "Old Ace", "Mission3", 777);
    Open();
    const char* const labels[] = {"New Recruit", "Returning Pilot", "Cancel"};
    for (int32_t i = 0; i < SinglePlayerMenu::NUM_BUTTONS; ++i)
    {
        EXPECT_EQ(labels[i], m_menu->GetButton(i)->GetText());
    }
    EXPECT_EQ("Single", m_menu->GetTitle()->GetText());
    auto* execute = dynamic_cast<Button*>(m_menu->FindObject(SinglePlayerMenu::ID_EXECUTE));
    ASSERT_NE(nullptr, execute);
    EXPECT_EQ("Execute", execute->GetText());
    EXPECT_EQ(1024 - 6, static_cast<int>(execute->GetX()) + execute->GetWidth());
    EXPECT_EQ(768 - 6, static_cast<int>(execute->GetY()) + execute->GetHeight());

    // The newest portrait, its stem in the field (the percent sign stored twice).
    ASSERT_NE(nullptr, Picker(SinglePlayerMenu::ID_PORTRAITS));
    EXPECT_EQ(275, static_cast<int>(Picker(SinglePlayerMenu::ID_PORTRAITS)->GetX()));
    EXPECT_EQ("Portraits\\c%.bmp", m_menu->GetPortraitFile());
    EXPECT_EQ(365, static_cast<int>(Field()->GetX()));
    EXPECT_EQ(420, static_cast<int>(Field()->GetY()));
    EXPECT_EQ(350, Field()->GetFrame().GetWidth());
    EXPECT_STREQ("c%%", Field()->GetText());

    // Untouched, the name follows the portraits; typed, it stays.
    StepRight(200);
    EXPECT_EQ(1, m_menu->GetPortraitIndex());
    EXPECT_STREQ("b", Field()->GetText());
    ClearName();
    Shifted(DIK_A);
    Key(DIK_C);
    Key(DIK_E);
    StepRight(200);
    EXPECT_EQ("Portraits\\a.bmp", m_menu->GetPortraitFile());
    EXPECT_STREQ("Ace", Field()->GetText());

    // Ace0 is taken: Ace1 is made with the face shown, loaded into the ship, and the hub asked for.
    EXPECT_EQ(MODECODE_HUB, Execute());
    EXPECT_EQ(PreGameMenu::STATE_CLOSING, m_menu->GetState());
    const Pilot made = ReadSave("Saves\\Ace1.sav");
    EXPECT_EQ("Ace", made.GetPilotName());
    EXPECT_EQ("Portraits\\a.bmp", made.GetPortrait());
    EXPECT_EQ(Pilot::DEFAULT_HULL, made.GetHullName());
    EXPECT_EQ(777, ReadSave("Saves\\Ace0.sav").GetMoney());
    EXPECT_EQ("Saves\\Ace1.sav", Mode::s_pPlayer->GetPilot().GetFileName());
    EXPECT_EQ("Ace", Mode::s_pPlayer->GetPilot().GetPilotName());
    EXPECT_STREQ("Opening", g_campaign.GetMissionName());
}

TEST_F(SinglePlayerMenuTest, NamesAreStoredAsTypedAndTheirFilesStayInSaves)
{
    Open();
    ClearName();
    // An empty name starts nothing.
    EXPECT_EQ(MENUCODE_STAY, Execute());
    EXPECT_EQ(PreGameMenu::STATE_OPEN, m_menu->GetState());
    EXPECT_TRUE(fs::is_empty("Saves"));

    Key(DIK_5);
    Shifted(DIK_5);
    EXPECT_STREQ("5%%", Field()->GetText());
    EXPECT_EQ(MODECODE_HUB, Execute());
    EXPECT_EQ("5%%", ReadSave("Saves\\5%%0.sav").GetPilotName());

    Open();
    ClearName();
    for (uint8_t key : {DIK_PERIOD, DIK_PERIOD, DIK_SLASH, DIK_X})
    {
        Key(key);
    }
    EXPECT_EQ(MODECODE_HUB, Execute());
    EXPECT_EQ("../x", ReadSave("Saves\\___x0.sav").GetPilotName());
    EXPECT_FALSE(fs::exists("x0.sav"));
    EXPECT_FALSE(fs::exists("../x0.sav"));
}

TEST_F(SinglePlayerMenuTest, WithoutPortraitsTheRecruitHasNoFaceAndWithoutSavesNothingReturns)
{
    fs::remove_all("Portraits");
    fs::remove_all("Saves");
    Open();
    EXPECT_EQ(-1, Picker(SinglePlayerMenu::ID_PORTRAITS)->GetIndex());
    EXPECT_STREQ("", Field()->GetText());
    EXPECT_EQ(MENUCODE_STAY, Execute());

    Click(SinglePlayerMenu::BUTTON_RETURNING_PILOT);
    EXPECT_FALSE(m_menu->HasSaves());
    EXPECT_EQ(SinglePlayerMenu::NO_SAVES_TEXT, Text(SinglePlayerMenu::ID_PILOT_NAME));
    EXPECT_EQ(nullptr, m_menu->FindObject(SinglePlayerMenu::ID_SAVES));
    EXPECT_EQ(nullptr, m_menu->FindObject(SinglePlayerMenu::ID_FUNDS));
    EXPECT_EQ(MENUCODE_STAY, Execute());
    EXPECT_EQ(PreGameMenu::STATE_OPEN, m_menu->GetState());

    // Back on the first screen a typed name still starts, without a portrait. The folder for
    // the pilot is missing: the player is told and stays.
    Click(SinglePlayerMenu::BUTTON_NEW_RECRUIT);
    Key(DIK_Z);
    EXPECT_EQ(MENUCODE_STAY, Execute());
    fs::create_directories("Saves");
    EXPECT_EQ(MODECODE_HUB, Execute());
    EXPECT_EQ("", ReadSave("Saves\\z0.sav").GetPortrait());
}

TEST_F(SinglePlayerMenuTest, ReturningPilotShowsAndStartsTheSaveInTheMiddleCell)
{
    WriteSave("Saves\\Ann0.sav", "Ann", "Mission3", 1234);
    WriteSave("Saves\\Bob0.sav", "Bob", "", 5);
    std::ofstream("Saves/Cut0.sav") << "abc"; // ends inside the money
    {
        Pilot ann = ReadSave("Saves\\Ann0.sav");
        ann.SetBullets(11);
        ann.SetEnergy(22);
        ann.SetMissiles(33);
        ann.SetWeaponName(2, "Flak");
        ASSERT_TRUE(ann.Save(nullptr));
    }
    Open();
    EXPECT_EQ(MENUCODE_STAY, Click(SinglePlayerMenu::BUTTON_RETURNING_PILOT));
    ASSERT_EQ(SinglePlayerMenu::SCREEN_RETURNING_PILOT, m_menu->GetCurrentScreen());
    PortraitPicker* saves = Picker(SinglePlayerMenu::ID_SAVES);
    ASSERT_NE(nullptr, saves);
    EXPECT_EQ(80, static_cast<int>(saves->GetY()));

    // The newest save cannot be read: listed, shown as such, and not started.
    EXPECT_EQ("Saves\\Cut0.sav", saves->GetFile());
    EXPECT_EQ("Cut0.sav cannot be read.", Text(SinglePlayerMenu::ID_PILOT_NAME));
    EXPECT_EQ("", Text(SinglePlayerMenu::ID_FUNDS));
    EXPECT_EQ(MENUCODE_STAY, Execute());

    // A save without a mission shows the campaign's first one.
    StepRight(80);
    EXPECT_EQ("Bob", Text(SinglePlayerMenu::ID_PILOT_NAME));
    EXPECT_EQ("Opening", Text(SinglePlayerMenu::ID_MISSION));
    EXPECT_EQ("$5", Text(SinglePlayerMenu::ID_FUNDS));

    StepRight(80);
    EXPECT_EQ("Ann", Text(SinglePlayerMenu::ID_PILOT_NAME));
    EXPECT_EQ("Mission3", Text(SinglePlayerMenu::ID_MISSION));
    EXPECT_EQ("$1234", Text(SinglePlayerMenu::ID_FUNDS));
    EXPECT_EQ("11", Text(SinglePlayerMenu::ID_BULLETS));
    EXPECT_EQ("22", Text(SinglePlayerMenu::ID_ENERGY));
    EXPECT_EQ("33", Text(SinglePlayerMenu::ID_MISSILES));
    EXPECT_EQ("33", Text(SinglePlayerMenu::ID_BOMBS));
    EXPECT_EQ(Pilot::DEFAULT_HULL, Text(SinglePlayerMenu::ID_HULL));
    EXPECT_EQ(Pilot::DEFAULT_ENGINE, Text(SinglePlayerMenu::ID_ENGINE));
    EXPECT_EQ(Pilot::DEFAULT_SHIELD, Text(SinglePlayerMenu::ID_SHIELD));
    EXPECT_EQ(Pilot::DEFAULT_WEAPON, Text(SinglePlayerMenu::ID_WEAPON));
    EXPECT_EQ("", Text(SinglePlayerMenu::ID_WEAPON + 2));
    EXPECT_EQ("Flak", Text(SinglePlayerMenu::ID_WEAPON + 4));
    EXPECT_EQ("Weapon 4:", Text(35));
    EXPECT_EQ("Ammo:", Text(SinglePlayerMenu::ID_AMMO));

    // The portrait strip is on the other screen: its arrows' places do nothing here.
    ClickAt(290, 300);
    EXPECT_EQ(2, m_menu->GetPortraitIndex());

    EXPECT_EQ(MODECODE_HUB, Execute());
    EXPECT_EQ("Saves\\Ann0.sav", Mode::s_pPlayer->GetPilot().GetFileName());
    EXPECT_EQ(1234, Mode::s_pPlayer->GetPilot().GetMoney());
    EXPECT_STREQ("Mission3", g_campaign.GetMissionName());
}

TEST_F(SinglePlayerMenuTest, CancelReturnsToTheTitleMenuWhichTheMenuModeOpensFor10)
{
    Open();
    EXPECT_EQ(MENUCODE_OPEN_TITLE, Click(SinglePlayerMenu::BUTTON_CANCEL));
    EXPECT_EQ(PreGameMenu::STATE_CLOSING, m_menu->GetState());

    MenuMode mode;
    mode.Init(nullptr, MENUCODE_OPEN_SINGLE_PLAYER);
    ASSERT_EQ(1u, mode.GetMenus().size());
    EXPECT_NE(nullptr, dynamic_cast<SinglePlayerMenu*>(mode.GetMenus().front().m_pMenu.get()));
    MenuMode title;
    title.Init(nullptr, MENUCODE_OPEN_TITLE);
    EXPECT_NE(nullptr, dynamic_cast<MainMenu*>(title.GetMenus().front().m_pMenu.get()));
}
