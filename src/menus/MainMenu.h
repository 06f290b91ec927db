#pragma once

#include "menus/PreGameMenu.h"

#include <cstdint>

// The title menu: the game's title picture and "Single", "Multiplayer", "Options" and "Exit".
// "Multiplayer" starts a fresh hot-seat game for two and goes straight to the hub.
class MainMenu : public PreGameMenu
{
public:
    enum ButtonIndex : int32_t
    {
        BUTTON_SINGLE = 0,
        BUTTON_MULTIPLAYER = 1,
        BUTTON_OPTIONS = 2,
        BUTTON_EXIT = 3,
        NUM_BUTTONS = 4,
    };
    static constexpr int32_t TITLE_PICTURE_ID = 1;
    static constexpr float TITLE_PICTURE_X = 260.0f;
    static constexpr float TITLE_PICTURE_Y = 200.0f;
    static constexpr int32_t TITLE_PICTURE_WIDTH = 650;
    static constexpr int32_t TITLE_PICTURE_HEIGHT = 325;
    static constexpr const char* MULTIPLAYER_CAMPAIGN = "multiplayer\\multiplayer.ini";
    static constexpr const char* PLAYER_ONE = "Player One";
    static constexpr const char* PLAYER_TWO = "Player Two";

    explicit MainMenu(Cursor* p_cursor);
    ~MainMenu() override;

    // Two fresh pilot records with the default ship and money, player one's loaded into the
    // player's ship, the two-player campaign from its first mission and a clean scoreboard.
    static void StartTwoPlayerGame();

protected:
    bool Create() override;
    int32_t HandleButtons(float p_dt) override;
};
