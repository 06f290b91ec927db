#include "menus/OptionsMenu.h"

#include "app/Application.h"
#include "gfx/Font.h"
#include "input/Action.h"
#include "sound/Sound.h"
#include "ui/Button.h"
#include "ui/ControlRow.h"
#include "ui/Draggable.h"
#include "ui/HudLayoutEditor.h"
#include "ui/RadioGroup.h"
#include "ui/SlideBar.h"
#include "ui/StaticObjects.h"
#include "ui/ToggleButton.h"

#include <cstdio>
#include <memory>

namespace
{
const char* const LABELS[OptionsMenu::NUM_BUTTONS] = {"Gameplay", "Controls", "Video", "Audio", "Cancel"};
constexpr const char* BUTTON_UP_FILE = "art\\button_up.bmp";
constexpr const char* BUTTON_DOWN_FILE = "art\\button_down.bmp";

struct Place
{
    float x;
    float y;
};

// Gameplay: the difficulty buttons in the order they are added (Medium, Easy, Hard), the
// editor and its pieces, the tint bars.
constexpr Place DIFFICULTY_PLACES[OptionsMenu::NUM_DIFFICULTIES] = {
    {500.0f, 120.0f}, {350.0f, 120.0f}, {650.0f, 120.0f}};
constexpr Place DIFFICULTY_LABEL_PLACE = {509.0f, 79.0f};
constexpr Place HUD_LABEL_PLACE = {495.0f, 240.0f};
constexpr Place HUD_EDITOR_PLACE = {410.0f, 280.0f};
constexpr int32_t HUD_EDITOR_WIDTH = 300;
constexpr int32_t HUD_EDITOR_HEIGHT = 225;
constexpr int32_t HUD_PIECE_WIDTH = 75;
constexpr int32_t HUD_PIECE_HEIGHT = 56;
// By Settings::HudPiece.
const char* const HUD_PIECE_PICTURES[OptionsMenu::NUM_HUD_PIECES] = {
    "art\\hud_customize_radar.bmp", "art\\hud_customize_status.bmp", "art\\hud_customize_comm.bmp"};
constexpr char TINT_LETTERS[OptionsMenu::NUM_TINT_CHANNELS] = {'R', 'G', 'B', 'T'};
constexpr float TINT_BAR_X = 355.0f;
constexpr float TINT_LABEL_X = 335.0f;
constexpr float TINT_TOP = 530.0f;
constexpr float TINT_SPACING = 40.0f;
constexpr int32_t TINT_BAR_WIDTH = 400;
constexpr int32_t TINT_VALUES = 256;

// Controls: one row per action, 40 pixels apart.
constexpr Place CONTROL_ROWS_PLACE = {350.0f, 150.0f};
constexpr float CONTROL_ROW_SPACING = 40.0f;

// Video: a column of buttons 10 pixels apart.
constexpr Place RESOLUTIONS_PLACE = {450.0f, 125.0f};
constexpr float RESOLUTION_GAP = 10.0f;

// Audio.
constexpr Place VOLUME_BAR_PLACE = {300.0f, 300.0f};
constexpr Place VOLUME_LABEL_PLACE = {300.0f, 250.0f};
constexpr int32_t VOLUME_BAR_WIDTH = 500;
constexpr int32_t VOLUME_VALUES = Sound::SLIDER_MAX + 1;
static_assert(Settings::VOLUME_MAX == Sound::SLIDER_MAX, "the stored volume is the bar's position");

std::unique_ptr<StaticText> MakeLabel(const char* p_text, int32_t p_size, int32_t p_style, Place p_place)
{
    auto label = std::make_unique<StaticText>();
    label->SetFont("Tahoma", p_size, p_style);
    label->SetText(p_text);
    label->SetColor(1.0, 1.0, 1.0, 1.0);
    label->SetPosition(p_place.x, p_place.y);
    return label;
}

// A push button or toggle in the menus' pictures with a black caption.
void DressButton(Button& p_button, const char* p_text, int32_t p_style, Place p_place)
{
    p_button.LoadImagesOrSize(BUTTON_UP_FILE, BUTTON_DOWN_FILE, PreGameMenu::FALLBACK_BUTTON_WIDTH,
                              PreGameMenu::FALLBACK_BUTTON_HEIGHT);
    p_button.SetFont("Tahoma", 12, p_style);
    p_button.SetText(p_text, 0.0, 0.0, 0.0, 1.0);
    p_button.SetPosition(p_place.x, p_place.y);
}
} // namespace

OptionsMenu::OptionsMenu(Cursor* p_cursor, InputSystem* p_input) : PreGameMenu(p_cursor), m_pInput(p_input) {}

OptionsMenu::~OptionsMenu() = default;

bool OptionsMenu::Create()
{
    SetNumScreens(NUM_SCREENS);
    CreateGameplayScreen();
    CreateControlsScreen();
    CreateVideoScreen();
    CreateAudioScreen();
    CreateButtons(LABELS, NUM_BUTTONS);
    SetTitle("Options");
    SetScreen(SCREEN_GAMEPLAY);
    return true;
}

void OptionsMenu::CreateGameplayScreen()
{
    AddObject(SCREEN_GAMEPLAY, MakeLabel("Difficulty", 18, FONT_BOLD, DIFFICULTY_LABEL_PLACE), ID_DIFFICULTY_LABEL);

    auto difficulty = std::make_unique<RadioGroup>(m_pCursor);
    for (int32_t i = 0; i < NUM_DIFFICULTIES; ++i)
    {
        ToggleButton* choice = difficulty->AddButton();
        DressButton(*choice, Settings::GetDifficultyName(i), FONT_BOLD, DIFFICULTY_PLACES[i]);
        choice->SetTextOffsets(0, 0, 2, 1);
    }
    difficulty->Select(g_settings.GetDifficulty());
    AddObject(SCREEN_GAMEPLAY, std::move(difficulty), ID_DIFFICULTY);

    AddObject(SCREEN_GAMEPLAY, MakeLabel("HUD Layout", 18, FONT_BOLD, HUD_LABEL_PLACE), ID_HUD_LABEL);

    auto editor = std::make_unique<HudLayoutEditor>(m_pCursor);
    editor->LoadImage("art\\hud_customize_screenshot.bmp");
    editor->SetSize(HUD_EDITOR_WIDTH, HUD_EDITOR_HEIGHT);
    editor->SetPosition(HUD_EDITOR_PLACE.x, HUD_EDITOR_PLACE.y);
    for (const auto& slot : HUD_SLOTS)
    {
        editor->AddSlot(slot[0], slot[1]);
    }
    for (int32_t piece = 0; piece < NUM_HUD_PIECES; ++piece)
    {
        Draggable* item = editor->AddPiece(g_settings.GetHudSlot(piece));
        item->LoadImage(HUD_PIECE_PICTURES[piece]);
        item->SetSize(HUD_PIECE_WIDTH, HUD_PIECE_HEIGHT);
    }
    AddObject(SCREEN_GAMEPLAY, std::move(editor), ID_HUD_EDITOR);

    for (int32_t i = 0; i < NUM_TINT_CHANNELS; ++i)
    {
        const float y = TINT_TOP + TINT_SPACING * static_cast<float>(i);
        auto bar = std::make_unique<SlideBar>(m_pCursor);
        bar->SetNumValues(TINT_VALUES);
        bar->SetBarWidth(TINT_BAR_WIDTH);
        bar->SetValue(g_settings.GetTint()[static_cast<size_t>(i)]);
        bar->SetPosition(TINT_BAR_X, y);
        AddObject(SCREEN_GAMEPLAY, std::move(bar), ID_FIRST_TINT_BAR + 2 * i);

        char letter[2];
        std::snprintf(letter, sizeof(letter), "%c", TINT_LETTERS[i]);
        AddObject(SCREEN_GAMEPLAY, MakeLabel(letter, 16, FONT_ITALIC, Place{TINT_LABEL_X, y}),
                  ID_FIRST_TINT_LABEL + 2 * i);
    }
    ApplyTint();
}

void OptionsMenu::CreateControlsScreen()
{
    for (int32_t action = 0; action < ACTION_COUNT; ++action)
    {
        auto row = std::make_unique<ControlRow>(m_pCursor, m_pInput);
        row->SetAction(action);
        row->SetPosition(CONTROL_ROWS_PLACE.x, CONTROL_ROWS_PLACE.y + CONTROL_ROW_SPACING * static_cast<float>(action));
        AddObject(SCREEN_CONTROLS, std::move(row), ID_FIRST_CONTROL_ROW + action);
    }
}

void OptionsMenu::CreateVideoScreen()
{
    float y = RESOLUTIONS_PLACE.y;
    for (int32_t i = 0; i < NUM_RESOLUTIONS; ++i)
    {
        auto button = std::make_unique<Button>(m_pCursor);
        DressButton(*button, Settings::RESOLUTIONS[i].label, 0, Place{RESOLUTIONS_PLACE.x, y});
        button->SetTextOffsets(0, 0, 1, 1);
        y += static_cast<float>(button->GetHeight()) + RESOLUTION_GAP;
        AddObject(SCREEN_VIDEO, std::move(button), ID_FIRST_RESOLUTION + i);
    }
}

void OptionsMenu::CreateAudioScreen()
{
    auto bar = std::make_unique<SlideBar>(m_pCursor);
    bar->SetNumValues(VOLUME_VALUES);
    bar->SetBarWidth(VOLUME_BAR_WIDTH);
    // Where the stored volume is: opening this screen never changes what the player hears.
    bar->SetValue(g_settings.GetVolume());
    bar->SetPosition(VOLUME_BAR_PLACE.x, VOLUME_BAR_PLACE.y);
    AddObject(SCREEN_AUDIO, std::move(bar), ID_VOLUME_BAR);
    AddObject(SCREEN_AUDIO, MakeLabel("Audio Volume", 24, FONT_BOLD, VOLUME_LABEL_PLACE), ID_VOLUME_LABEL);
}

int32_t OptionsMenu::HandleButtons(float p_dt)
{
    (void)p_dt;
    for (int32_t screen = 0; screen < NUM_SCREENS; ++screen)
    {
        if (WasButtonClicked(screen))
        {
            SetScreen(screen);
        }
    }
    if (WasButtonClicked(BUTTON_CANCEL))
    {
        Close();
        return MENUCODE_OPEN_TITLE;
    }
    switch (GetCurrentScreen())
    {
    case SCREEN_GAMEPLAY:
        ApplyTint();
        StoreGameplay();
        break;
    case SCREEN_VIDEO:
        ApplyResolutionClicks();
        break;
    case SCREEN_AUDIO:
        ApplyVolume();
        break;
    default:
        // Each control row applies and stores its own binding.
        break;
    }
    return MENUCODE_STAY;
}

void OptionsMenu::ApplyTint()
{
    HudLayoutEditor* editor = GetHudEditor();
    if (editor == nullptr)
    {
        return;
    }
    uint8_t tint[NUM_TINT_CHANNELS] = {};
    for (int32_t i = 0; i < NUM_TINT_CHANNELS; ++i)
    {
        tint[i] = static_cast<uint8_t>(GetTint(i));
    }
    editor->SetColor(tint[TINT_RED], tint[TINT_GREEN], tint[TINT_BLUE], tint[TINT_ALPHA]);
}

void OptionsMenu::StoreGameplay()
{
    const int32_t difficulty = GetDifficulty();
    if (difficulty != g_settings.GetDifficulty())
    {
        g_settings.SetDifficulty(difficulty);
    }
    // A piece being dragged still holds its old slot: the layout changes when it is let go.
    Settings::HudSlots slots = {};
    for (int32_t piece = 0; piece < NUM_HUD_PIECES; ++piece)
    {
        slots[static_cast<size_t>(piece)] = GetHudSlot(piece);
    }
    if (slots != g_settings.GetHudSlots())
    {
        g_settings.SetHudSlots(slots);
    }
    Settings::Tint tint = {};
    for (int32_t channel = 0; channel < NUM_TINT_CHANNELS; ++channel)
    {
        const SlideBar* bar = GetTintBar(channel);
        if (bar == nullptr || bar->IsDragging())
        {
            return;
        }
        tint[static_cast<size_t>(channel)] = static_cast<uint8_t>(bar->GetValue());
    }
    if (tint != g_settings.GetTint())
    {
        g_settings.SetTint(tint);
    }
}

void OptionsMenu::ApplyResolutionClicks()
{
    for (int32_t i = 0; i < NUM_RESOLUTIONS; ++i)
    {
        Button* button = GetResolutionButton(i);
        int32_t click = CLICK_NONE;
        if (button != nullptr)
        {
            button->GetClick(&click);
        }
        // Also at the resolution in use: the display is made anew either way. A resolution
        // the display refused is not kept.
        const Settings::Resolution& resolution = Settings::RESOLUTIONS[i];
        if (click != CLICK_NONE && g_pApplication != nullptr &&
            g_pApplication->ChangeResolution(resolution.width, resolution.height))
        {
            g_settings.SetResolution(resolution.width, resolution.height);
        }
    }
}

void OptionsMenu::ApplyVolume()
{
    const SlideBar* bar = GetVolumeBar();
    if (bar == nullptr)
    {
        return;
    }
    // A volume between two of the bar's steps stays as it is until the bar moves.
    const int32_t position = bar->GetValue();
    if (g_pSound != nullptr && Sound::SliderFromVolume(g_pSound->GetVolume()) != position)
    {
        g_pSound->SetVolume(Sound::VolumeFromSlider(position));
    }
    // Heard while the bar is dragged, kept once it is let go.
    if (!bar->IsDragging() && position != g_settings.GetVolume())
    {
        g_settings.SetVolume(position);
    }
}

RadioGroup* OptionsMenu::GetDifficultyGroup() const
{
    return dynamic_cast<RadioGroup*>(FindObjectOn(SCREEN_GAMEPLAY, ID_DIFFICULTY));
}

HudLayoutEditor* OptionsMenu::GetHudEditor() const
{
    return dynamic_cast<HudLayoutEditor*>(FindObjectOn(SCREEN_GAMEPLAY, ID_HUD_EDITOR));
}

SlideBar* OptionsMenu::GetTintBar(int32_t p_channel) const
{
    if (p_channel < 0 || p_channel >= NUM_TINT_CHANNELS)
    {
        return nullptr;
    }
    return dynamic_cast<SlideBar*>(FindObjectOn(SCREEN_GAMEPLAY, ID_FIRST_TINT_BAR + 2 * p_channel));
}

SlideBar* OptionsMenu::GetVolumeBar() const
{
    return dynamic_cast<SlideBar*>(FindObjectOn(SCREEN_AUDIO, ID_VOLUME_BAR));
}

Button* OptionsMenu::GetResolutionButton(int32_t p_index) const
{
    if (p_index < 0 || p_index >= NUM_RESOLUTIONS)
    {
        return nullptr;
    }
    return dynamic_cast<Button*>(FindObjectOn(SCREEN_VIDEO, ID_FIRST_RESOLUTION + p_index));
}

int32_t OptionsMenu::GetDifficulty() const
{
    const RadioGroup* group = GetDifficultyGroup();
    return group != nullptr ? group->GetSelectedIndex() : DIFFICULTY_MEDIUM;
}

int32_t OptionsMenu::GetHudSlot(int32_t p_piece) const
{
    const HudLayoutEditor* editor = GetHudEditor();
    return editor != nullptr ? editor->GetPieceSlot(p_piece) : -1;
}

int32_t OptionsMenu::GetTint(int32_t p_channel) const
{
    const SlideBar* bar = GetTintBar(p_channel);
    return bar != nullptr ? bar->GetValue() : -1;
}

int32_t OptionsMenu::GetVolumePosition() const
{
    const SlideBar* bar = GetVolumeBar();
    return bar != nullptr ? bar->GetValue() : 0;
}
