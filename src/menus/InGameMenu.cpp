#include "menus/InGameMenu.h"

#include "app/Application.h"
#include "app/ModeCode.h"
#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "input/Action.h"
#include "input/Cursor.h"
#include "input/InputSystem.h"
#include "menus/ObjectivesScreen.h"
#include "menus/OptionsMenu.h"
#include "pilot/CampaignLink.h"
#include "platform/Gl.h"
#include "sound/Sound.h"
#include "ui/Button.h"
#include "ui/UiDraw.h"

namespace
{
const char* const CAPTIONS[InGameMenu::NUM_BUTTONS] = {"Objectives", "Options", "Main Menu", "Exit"};
// Where "Menu" is printed over the panel.
constexpr int32_t TITLE_X = 486;
constexpr int32_t TITLE_Y = 257;
constexpr uint8_t OVERLAY_GREY = 25;
// The size of the buttons' pictures.
constexpr int32_t FALLBACK_BUTTON_WIDTH = 176;
constexpr int32_t FALLBACK_BUTTON_HEIGHT = 40;
} // namespace

InGameMenu::InGameMenu(Cursor* p_cursor, ObjectivesScreen* p_objectives)
    : Menu(p_cursor), m_pInput(nullptr), m_pObjectives(p_objectives), m_showObjectives(false), m_visible(false),
      m_pFont(nullptr), m_backgroundX(0.0), m_backgroundY(0.0), m_fadeStep(FADE_STEP), m_fadeAlpha(0),
      m_fadeMax(FADE_MAX)
{
    Init();
}

InGameMenu::~InGameMenu()
{
    m_pSubMenu.reset();
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
}

bool InGameMenu::Init()
{
    if (m_pFont == nullptr)
    {
        // Spelt so: the font list finds the nearest typeface, as Windows did.
        m_pFont = g_fontList.GetFont("Ariel", 14, 0);
    }

    m_background.Load("art\\menugreenbg.bmp");
    m_backgroundX = Application::SCREEN_WIDTH / 2.0 - m_background.GetWidth() / 2.0;
    m_backgroundY = Application::SCREEN_HEIGHT / 2.0 - m_background.GetHeight() / 2.0;

    m_overlay.SetSize(Application::SCREEN_WIDTH, Application::SCREEN_HEIGHT);
    m_overlay.Load(OVERLAY_GREY, OVERLAY_GREY, OVERLAY_GREY, m_fadeAlpha, nullptr);

    SetNumInputObjects(NUM_BUTTONS);
    const int32_t panelMiddle = static_cast<int32_t>(m_backgroundX) + m_background.GetWidth() / 2;
    for (int32_t i = 0; i < NUM_BUTTONS; ++i)
    {
        auto button = std::make_unique<Button>(m_pCursor);
        button->LoadImagesOrSize("art\\button_up2.bmp", "art\\button_down2.bmp", FALLBACK_BUTTON_WIDTH,
                                 FALLBACK_BUTTON_HEIGHT);
        button->SetFont("Tahoma", 12, 0);
        button->SetText(CAPTIONS[i], 0.0, 0.0, 0.0, 1.0);
        const double x = panelMiddle - button->GetWidth() / 2;
        const double y = m_backgroundY + (i + 1) * button->GetHeight() * 1.5;
        button->SetPosition(static_cast<float>(x), static_cast<float>(y));
        SetInputObject(i, std::move(button));
    }

    // Loaded now so that leaving for the menus starts the title music without a pause.
    if (g_pSound != nullptr)
    {
        g_pSound->Load(Sound::SOUND_TITLE_MUSIC);
    }
    return true;
}

Button* InGameMenu::GetButton(int32_t p_slot) const
{
    return static_cast<Button*>(GetInputObject(p_slot));
}

void InGameMenu::SetVisible(bool p_visible)
{
    m_visible = p_visible;
    if (!m_visible)
    {
        m_fadeAlpha = 0;
        m_overlay.SetAlpha(m_fadeAlpha);
    }
}

void InGameMenu::OpenOptions()
{
    m_pSubMenu = std::make_unique<OptionsMenu>(m_pCursor, m_pInput);
    m_pSubMenu->Init();
}

bool InGameMenu::HandleInput(InputSystem* p_input)
{
    m_pInput = p_input;
    if (p_input != nullptr && p_input->WasPressed(MENU))
    {
        SetVisible(!m_visible);
    }
    return true;
}

int32_t InGameMenu::Update(float p_dt)
{
    m_pCursor->Update(p_dt);

    m_fadeAlpha = static_cast<uint8_t>(m_fadeAlpha + m_fadeStep > m_fadeMax ? m_fadeMax : m_fadeAlpha + m_fadeStep);
    m_overlay.SetAlpha(m_fadeAlpha);

    if (m_pSubMenu)
    {
        // It asks for the title menu when "Cancel" is clicked; here that means only that its
        // buttons start falling, and the panel comes back once they are gone.
        if (m_pSubMenu->Update(p_dt) == MENUCODE_CLOSED)
        {
            m_pSubMenu.reset();
        }
        return MODECODE_STAY;
    }
    if (m_showObjectives)
    {
        if (m_pObjectives == nullptr || !m_pObjectives->Update(p_dt))
        {
            m_showObjectives = false;
        }
        return MODECODE_STAY;
    }

    for (int32_t i = 0; i < NUM_BUTTONS; ++i)
    {
        GetButton(i)->Update(p_dt);
    }
    int32_t clicks[NUM_BUTTONS] = {};
    for (int32_t i = 0; i < NUM_BUTTONS; ++i)
    {
        GetButton(i)->GetClick(&clicks[i]);
    }
    if (clicks[BUTTON_OBJECTIVES] != CLICK_NONE)
    {
        ShowObjectives();
        return MODECODE_STAY;
    }
    if (clicks[BUTTON_OPTIONS] != CLICK_NONE)
    {
        OpenOptions();
        return MODECODE_STAY;
    }
    if (clicks[BUTTON_MAIN_MENU] != CLICK_NONE)
    {
        if (g_pCampaignLink != nullptr)
        {
            g_pCampaignLink->Reset();
        }
        return MODECODE_MENUS;
    }
    if (clicks[BUTTON_EXIT] != CLICK_NONE)
    {
        return MODECODE_QUIT;
    }
    return MODECODE_STAY;
}

bool InGameMenu::Render()
{
    if (!m_visible)
    {
        return true;
    }
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    m_overlay.Draw(0.0, 0.0, 0.0, true);

    if (m_pSubMenu)
    {
        m_pSubMenu->Render();
    }
    else if (m_showObjectives && m_pObjectives != nullptr)
    {
        m_pObjectives->Render();
    }
    else
    {
        if (ui::HasPicture(m_background))
        {
            m_background.Draw(m_backgroundX, m_backgroundY, 0.0, true);
        }
        if (m_pFont != nullptr)
        {
            m_pFont->Print(0.7, 0.45, 0.45, 1.0, TITLE_X, TITLE_Y, "Menu");
        }
        Menu::Render();
    }
    m_pCursor->Render();
    return true;
}
