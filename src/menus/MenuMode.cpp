#include "menus/MenuMode.h"

#include "app/ModeCode.h"
#include "gfx/TextureManager.h"
#include "menus/MainMenu.h"
#include "menus/Menu.h"
#include "menus/OptionsMenu.h"
#include "menus/SinglePlayerMenu.h"
#include "platform/System.h"
#include "sound/Sound.h"

MenuMode::MenuMode() : m_result(MODECODE_MISSION)
{
    MenuMode::Initialize();
}

MenuMode::~MenuMode()
{
    MenuMode::Shutdown();
}

bool MenuMode::Initialize()
{
    return true;
}

bool MenuMode::Init(Mouse* p_mouse, int32_t p_startMenu)
{
    (void)p_mouse;
    if (g_pTextureManager != nullptr)
    {
        for (const char* picture : PRELOADED_PICTURES)
        {
            g_pTextureManager->GetTexture(picture);
        }
    }
    m_result = MODECODE_MISSION;
    const int32_t start =
        p_startMenu == MENUCODE_OPEN_SINGLE_PLAYER || p_startMenu == MENUCODE_OPEN_OPTIONS ? p_startMenu
                                                                                            : MENUCODE_OPEN_TITLE;
    OpenMenu(start);
    StartMusic();
    return true;
}

void MenuMode::StartMusic()
{
    const bool playing = g_pSound != nullptr && g_pSound->Play(Sound::SOUND_TITLE_MUSIC) &&
                         g_pSound->SetLooping(Sound::SOUND_TITLE_MUSIC);
    if (!playing)
    {
        platform::ShowMessageBox(MUSIC_ERROR_TEXT, MUSIC_ERROR_CAPTION);
    }
}

std::unique_ptr<Menu> MenuMode::NewMenu(int32_t p_code)
{
    switch (p_code)
    {
    case MENUCODE_OPEN_SINGLE_PLAYER:
        return std::make_unique<SinglePlayerMenu>(&s_cursor);
    case MENUCODE_OPEN_OPTIONS:
        return std::make_unique<OptionsMenu>(&s_cursor);
    default:
        return std::make_unique<MainMenu>(&s_cursor);
    }
}

void MenuMode::OpenMenu(int32_t p_code)
{
    std::unique_ptr<Menu> menu = NewMenu(p_code);
    if (!menu)
    {
        menu = std::make_unique<MainMenu>(&s_cursor);
    }
    menu->Init();
    m_menuList.push_front(MenuNode{std::move(menu)});
}

int32_t MenuMode::Update(float p_dt)
{
    s_cursor.Update(p_dt);
    auto node = m_menuList.begin();
    while (node != m_menuList.end())
    {
        const int32_t code = node->m_pMenu->Update(p_dt);
        switch (code)
        {
        case MENUCODE_QUIT:
            return MODECODE_QUIT;
        case MENUCODE_CLOSED:
            node = m_menuList.erase(node);
            if (m_menuList.empty())
            {
                return m_result;
            }
            continue;
        case MENUCODE_OPEN_TITLE:
        case MENUCODE_OPEN_SINGLE_PLAYER:
        case MENUCODE_OPEN_OPTIONS:
            // The new menu goes first and is updated from the next frame on.
            OpenMenu(code);
            break;
        default:
            // Compared as unsigned, so that a negative code leaves nothing.
            if (static_cast<uint32_t>(code) <= static_cast<uint32_t>(MENUCODE_LAST_MODECODE))
            {
                m_result = code;
                return code;
            }
            break;
        }
        ++node;
    }
    return MODECODE_STAY;
}

bool MenuMode::Render()
{
    for (const MenuNode& node : m_menuList)
    {
        if (!node.m_pMenu->Render())
        {
            break;
        }
    }
    s_cursor.Render();
    return true;
}

bool MenuMode::HandleInput(InputSystem* p_input)
{
    for (const MenuNode& node : m_menuList)
    {
        node.m_pMenu->HandleInput(p_input);
    }
    return true;
}

bool MenuMode::Shutdown()
{
    while (!m_menuList.empty())
    {
        m_menuList.pop_front();
    }
    return true;
}
