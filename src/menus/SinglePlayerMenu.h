#pragma once

#include "menus/PreGameMenu.h"

#include <cstdint>
#include <string>

class InputSystem;
class PortraitPicker;
class TextField;

// Where a single-player game starts. "New Recruit" (screen 0): the player picks a portrait
// and types a name, and "Execute" makes a new pilot file. "Returning Pilot" (screen 1): the
// player picks a saved pilot and sees its mission, funds, ammunition and ship, and "Execute"
// starts it. Either way the pilot is loaded into the player's ship and the menu hands up the
// hub. "Cancel" goes back to the title menu.
class SinglePlayerMenu : public PreGameMenu
{
public:
    enum ButtonIndex : int32_t
    {
        BUTTON_NEW_RECRUIT = 0,
        BUTTON_RETURNING_PILOT = 1,
        BUTTON_CANCEL = 2,
        NUM_BUTTONS = 3,
    };
    enum Screen : int32_t
    {
        SCREEN_NEW_RECRUIT = 0,
        SCREEN_RETURNING_PILOT = 1,
        NUM_SCREENS = 2,
    };

    // Object ids; the status values (10 to 34, even) sit one below their labels' ids.
    static constexpr int32_t ID_EXECUTE = 3;
    static constexpr int32_t ID_PORTRAITS = 4;
    static constexpr int32_t ID_NAME_FIELD = 5;
    static constexpr int32_t ID_SAVES = 6;
    static constexpr int32_t ID_PILOT_NAME = 7;
    static constexpr int32_t ID_AMMO = 8;
    static constexpr int32_t ID_SHIP_STATUS = 9;
    static constexpr int32_t ID_FUNDS = 10;
    static constexpr int32_t ID_BULLETS = 12;
    static constexpr int32_t ID_ENERGY = 14;
    static constexpr int32_t ID_MISSILES = 16;
    static constexpr int32_t ID_BOMBS = 18;
    static constexpr int32_t ID_MISSION = 20;
    static constexpr int32_t ID_HULL = 22;
    static constexpr int32_t ID_ENGINE = 24;
    static constexpr int32_t ID_SHIELD = 26;
    // Weapon n (0..3) is ID_WEAPON + 2n.
    static constexpr int32_t ID_WEAPON = 28;

    static constexpr const char* NO_SAVES_TEXT = "You have no saved games.";
    // A status value before a save has filled it.
    static constexpr const char* UNFILLED_TEXT = "SetMe!";
    // Follows the file name of a save that cannot be read.
    static constexpr const char* UNREADABLE_TEXT = " cannot be read.";
    static constexpr const char* SAVE_FAILED_CAPTION = "Error";

    static constexpr float PORTRAITS_X = 275.0f;
    static constexpr float PORTRAITS_Y = 200.0f;
    static constexpr float NAME_FIELD_X = 365.0f;
    static constexpr float NAME_FIELD_Y = 420.0f;
    static constexpr int32_t NAME_FIELD_WIDTH = 350;
    static constexpr float SAVES_X = 275.0f;
    static constexpr float SAVES_Y = 80.0f;
    static constexpr float PILOT_NAME_X = 365.0f;
    static constexpr float PILOT_NAME_Y = 290.0f;
    static constexpr float NO_SAVES_X = 365.0f;
    static constexpr float NO_SAVES_Y = 300.0f;
    // "Execute" keeps this far from the right and bottom edges of the screen.
    static constexpr int32_t EXECUTE_MARGIN = 6;

    // The name field reads the keyboard of p_input, or the application's when it is null.
    explicit SinglePlayerMenu(Cursor* p_cursor, InputSystem* p_input = nullptr);
    ~SinglePlayerMenu() override;

    // A file name without its folder: "Portraits\Ace.bmp" gives "Ace.bmp".
    static std::string FileName(const std::string& p_file);
    // A file name without its folder and extension: "Portraits\Ace.bmp" gives "Ace".
    static std::string FileStem(const std::string& p_file);

    int32_t GetPortraitIndex() const { return m_portraitIndex; }
    int32_t GetSaveIndex() const { return m_saveIndex; }
    const std::string& GetPortraitFile() const { return m_portraitFile; }
    bool HasSaves() const { return m_hasSaves; }

protected:
    bool Create() override;
    int32_t HandleButtons(float p_dt) override;

private:
    void CreateNewRecruitScreen();
    void CreateReturningPilotScreen();
    void CreateStatus();
    // Shows the pilot of save p_file on the current screen.
    void FillStatus(const std::string& p_file);
    void SetValue(int32_t p_id, const std::string& p_text);
    // The portrait picker's new choice renames a name the player has not typed over.
    void FollowPortrait(PortraitPicker& p_picker);
    // Whether "Execute" starts a game now, on the screen shown.
    bool CanExecute();
    // Writes a new pilot from the name and portrait; its file name, or "" when it cannot be
    // written.
    std::string CreatePilot();

    InputSystem* m_pInput; // not owned; null: the application's
    int32_t m_portraitIndex;
    int32_t m_saveIndex;
    std::string m_portraitFile;
    bool m_hasSaves;
    // What the name field was given from the portrait; a different text was typed.
    std::string m_portraitName;
};
