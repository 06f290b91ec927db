#pragma once

#include "app/Settings.h"
#include "menus/PreGameMenu.h"

#include <cstdint>

class HudLayoutEditor;
class InputSystem;
class RadioGroup;
class SlideBar;

// The settings page of the front end, opened from the title menu and over a running mission.
// "Gameplay", "Controls", "Video" and "Audio" each show one screen; "Cancel" lets the buttons
// fall away and brings back the title menu. It opens on the settings as they are stored, and
// every change takes effect and is written to config.ini at once: a captured key (through
// the controls configuration), a resolution, and through g_settings the difficulty, a HUD
// piece let go in its slot, and the tint and volume bars once they are let go.
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
    // The difficulty buttons in the order they are added are the radio group's indices,
    // numbered as the settings number the difficulties; the tint bars, top to bottom.
    using enum Settings::Difficulty;
    using enum Settings::TintChannel;

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
    // Resolution button i of Settings::RESOLUTIONS.
    static constexpr int32_t ID_FIRST_RESOLUTION = 30;
    static constexpr int32_t ID_VOLUME_BAR = 36;
    static constexpr int32_t ID_VOLUME_LABEL = 37;

    static constexpr int32_t NUM_RESOLUTIONS = Settings::NUM_RESOLUTIONS;

    // The HUD layout editor's eight slots on its picture, and its three pieces (the radar,
    // the status panel and the messages, in the order of Settings::HudPiece).
    static constexpr int32_t NUM_HUD_SLOTS = Settings::NUM_HUD_SLOTS;
    static constexpr int32_t HUD_SLOTS[NUM_HUD_SLOTS][2] = {{0, 0},    {112, 0},   {225, 0},   {0, 84},
                                                            {225, 84}, {0, 169}, {112, 169}, {225, 169}};
    static constexpr int32_t NUM_HUD_PIECES = Settings::NUM_HUD_PIECES;

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
    // The difficulty, the HUD layout and (once no bar is held) the tint into the settings.
    void StoreGameplay();
    void ApplyResolutionClicks();
    void ApplyVolume();

    InputSystem* m_pInput; // not owned; null: the application's
};
