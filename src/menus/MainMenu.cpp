#include "menus/MainMenu.h"

#include "app/Mode.h"
#include "app/ModeCode.h"
#include "mission/Campaign.h"
#include "mission/MissionMode.h"
#include "mission/Scoreboard.h"
#include "pilot/Pilot.h"
#include "sim/PlayerShip.h"
#include "ui/StaticObjects.h"

#include <cstdio>
#include <memory>

namespace
{
const char* const LABELS[MainMenu::NUM_BUTTONS] = {"Single", "Multiplayer", "Options", "Exit"};
} // namespace

MainMenu::MainMenu(Cursor* p_cursor) : PreGameMenu(p_cursor) {}

MainMenu::~MainMenu() = default;

bool MainMenu::Create()
{
    SetNumScreens(1);
    auto picture = std::make_unique<StaticImage>();
    picture->LoadImage("art\\title.bmp");
    picture->SetSize(TITLE_PICTURE_WIDTH, TITLE_PICTURE_HEIGHT);
    picture->SetPosition(TITLE_PICTURE_X, TITLE_PICTURE_Y);
    AddObject(0, std::move(picture), TITLE_PICTURE_ID);
    CreateButtons(LABELS, NUM_BUTTONS);
    SetTitle("Main");
    return true;
}

void MainMenu::StartTwoPlayerGame()
{
    // One record, saved under both names: the two players start from identical ships.
    Pilot record(MissionMode::PLAYER1_FILE);
    record.SetPilotName(PLAYER_ONE);
    record.SetPortrait("");
    if (!record.Save(nullptr))
    {
        std::fprintf(stderr, "Korvath: could not write %s\n", MissionMode::PLAYER1_FILE);
    }
    record.SetFileName(MissionMode::PLAYER2_FILE);
    record.SetPilotName(PLAYER_TWO);
    if (!record.Save(nullptr))
    {
        std::fprintf(stderr, "Korvath: could not write %s\n", MissionMode::PLAYER2_FILE);
    }
    if (Mode::s_pPlayer != nullptr)
    {
        Mode::s_pPlayer->LoadPilot(MissionMode::PLAYER1_FILE);
    }
    g_campaign.Reload(MULTIPLAYER_CAMPAIGN);
    g_twoPlayer = true;
    g_secondPlayerTurn = false;
    g_scoreboard.Reset();
}

int32_t MainMenu::HandleButtons(float p_dt)
{
    (void)p_dt;
    if (WasButtonClicked(BUTTON_SINGLE))
    {
        Close();
        g_campaign.Reload(Campaign::DEFAULT_FILE);
        g_twoPlayer = false;
        return MENUCODE_OPEN_SINGLE_PLAYER;
    }
    if (WasButtonClicked(BUTTON_MULTIPLAYER))
    {
        Close();
        StartTwoPlayerGame();
        return MODECODE_HUB;
    }
    if (WasButtonClicked(BUTTON_OPTIONS))
    {
        Close();
        return MENUCODE_OPEN_OPTIONS;
    }
    // Leaves at once: the program ends without the closing slide.
    if (WasButtonClicked(BUTTON_EXIT))
    {
        return MENUCODE_QUIT;
    }
    return MENUCODE_STAY;
}
