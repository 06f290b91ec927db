#pragma once

#include "menus/PreGameMenu.h"

#include <cstdint>

class HudLayoutEditor;
class InputSystem;
class RadioGroup;
class SlideBar;

// The settings page of the front end, opened from the title menu and over a running mission.
// "Gameplay", "Controls", "Video" and "Audio" each show one screen; "Cancel" lets the buttons
// fall away and brings back the title menu. What lasts: every key captured on the controls
// screen (applied and written to config.ini at once), the resolution (changed at once) and
// the volume. The difficulty, HUD layout and HUD tint live only as long as the menu; they can
// be read from its objects through the getters below.
class OptionsMenu : public PreGameMenu
{
public:
    enum ButtonIndex : int32_t
    {
        BUTTON_GAMEPLAY = 0,
        BUTTON_CONTROLS = 1,
        BUTTON_VIDEO = 2,
        BUTTON_AUDIO = 3,
        BUTTON_CANCEL = 4,
        NUM_BUTTONS = 5,
    };
    // A screen's index is that of the button that shows it.
    enum ScreenIndex : int32_t
    {
        SCREEN_GAMEPLAY = 0,
        SCREEN_CONTROLS = 1,
        SCREEN_VIDEO = 2,
        SCREEN_AUDIO = 3,
        NUM_SCREENS = 4,
    };
    // The difficulty buttons in the order they are added: the radio group's indices.
    enum Difficulty : int32_t
    {
        DIFFICULTY_MEDIUM = 0,
        DIFFICULTY_EASY = 1,
        DIFFICULTY_HARD = 2,
        NUM_DIFFICULTIES = 3,
    };
    // The tint bars, top to bottom.
    enum TintChannel : int32_t
    {
        TINT_RED = 0,
        TINT_GREEN = 1,
        TINT_BLUE = 2,
        TINT_ALPHA = 3,
        NUM_TINT_CHANNELS = 4,
    };

    // Ids of the screens' objects.
    static constexpr int32_t ID_DIFFICULTY_LABEL = 5;
    static constexpr int32_t ID_DIFFICULTY = 6;
    static constexpr int32_t ID_HUD_LABEL = 7;
    static constexpr int32_t ID_HUD_EDITOR = 8;
    // Tint bar i is ID_FIRST_TINT_BAR + 2 i, its label ID_FIRST_TINT_LABEL + 2 i.
    static constexpr int32_t ID_FIRST_TINT_BAR = 10;
    static constexpr int32_t ID_FIRST_TINT_LABEL = 15;
    // The control row of action i.
    static constexpr int32_t ID_FIRST_CONTROL_ROW = 18;
    // Resolution button i of RESOLUTIONS.
    static constexpr int32_t ID_FIRST_RESOLUTION = 30;
    static constexpr int32_t ID_VOLUME_BAR = 36;
    static constexpr int32_t ID_VOLUME_LABEL = 37;

    struct Resolution
    {
        const char* label;
        uint16_t width;
        uint16_t height;
    };
    static constexpr int32_t NUM_RESOLUTIONS = 6;
    static constexpr Resolution RESOLUTIONS[NUM_RESOLUTIONS] = {
        {"1600x1200", 1600, 1200}, {"1400x1050", 1400, 1050}, {"1280x1024", 1280, 1024},
        {"1024x768", 1024, 768},   {"800x600", 800, 600},     {"640x480", 640, 480},
    };

    // The HUD layout editor: its picture, place and size, its eight slots, and the three
    // pieces with the slot each starts in.
    static constexpr int32_t NUM_HUD_SLOTS = 8;
    static constexpr int32_t HUD_SLOTS[NUM_HUD_SLOTS][2] = {{0, 0},    {112, 0},   {225, 0},   {0, 84},
                                                            {225, 84}, {0, 169}, {112, 169}, {225, 169}};
    static constexpr int32_t NUM_HUD_PIECES = 3;

    // The control rows bind through p_input, or the application's input system when it is null.
    explicit OptionsMenu(Cursor* p_cursor, InputSystem* p_input = nullptr);
    ~OptionsMenu() override;

    // The selected difficulty (a Difficulty).
    int32_t GetDifficulty() const;
    // The slot HUD piece p_piece (0 radar, 1 status, 2 messages) sits in; -1 for no such piece.
    int32_t GetHudSlot(int32_t p_piece) const;
    // The value 0..255 of a tint bar; -1 for no such bar.
    int32_t GetTint(int32_t p_channel) const;
    // The volume bar's position 0..99 (see Sound::VolumeFromSlider).
    int32_t GetVolumePosition() const;

    RadioGroup* GetDifficultyGroup() const;
    HudLayoutEditor* GetHudEditor() const;
    SlideBar* GetTintBar(int32_t p_channel) const;
    SlideBar* GetVolumeBar() const;
    Button* GetResolutionButton(int32_t p_index) const;

protected:
    bool Create() override;
    int32_t HandleButtons(float p_dt) override;

private:
    void CreateGameplayScreen();
    void CreateControlsScreen();
    void CreateVideoScreen();
    void CreateAudioScreen();
    // The HUD pieces take the tint bars' colour.
    void ApplyTint();
    void ApplyResolutionClicks();
    void ApplyVolume();

    InputSystem* m_pInput; // not owned; null: the application's
};
