#pragma once

#include "app/Mode.h"

#include <cstdint>
#include <list>
#include <memory>

class Menu;
class Mouse;

// An open menu of the front end's stack.
struct MenuNode
{
    std::unique_ptr<Menu> m_pMenu;
};

// The front end: a stack of open menus, newest first. Each menu answers a menu code every
// frame: the mode opens the menu a code names, removes a menu that has finished closing,
// quits, or hands a code 0 to 4 up to the game. A menu sliding away stays in the stack, drawn
// over its successor, until it answers that it has closed.
class MenuMode : public Mode
{
public:
    // Asked of the texture manager at the start, so that the first menu shows without a pause.
    static constexpr const char* PRELOADED_PICTURES[] = {"art\\cursor.bmp",     "art\\ribbon.bmp",
                                                          "art\\button_up.bmp", "art\\button_down.bmp",
                                                          "art\\menu_title_bg.bmp", "art\\title.bmp"};
    static constexpr const char* MUSIC_ERROR_TEXT = "Sound cannot loop/play";
    static constexpr const char* MUSIC_ERROR_CAPTION = "Error";

    MenuMode();
    ~MenuMode() override;

    // Loads the pictures, opens the start menu (10 the single-player menu, 12 the options, any
    // other code the title menu) and starts the title music, which loops while the menus run.
    // When the music cannot play the player is told once and the menus work on in silence.
    bool Init(Mouse* p_mouse, int32_t p_startMenu);

    bool Initialize() override;
    bool Shutdown() override;
    int32_t Update(float p_dt) override;
    bool Render() override;
    bool HandleInput(InputSystem* p_input) override;

    // The open menus, newest first.
    const std::list<MenuNode>& GetMenus() const { return m_menuList; }
    int32_t GetResult() const { return m_result; }

protected:
    // The menu a code opens, not yet initialised: 10 the pilot menu, 12 the options, any other
    // code the title menu, so that a player is never left on an empty screen.
    virtual std::unique_ptr<Menu> NewMenu(int32_t p_code);

private:
    // Makes, initialises and puts first the menu p_code names.
    void OpenMenu(int32_t p_code);
    void StartMusic();

    std::list<MenuNode> m_menuList;
    int32_t m_result;
};
