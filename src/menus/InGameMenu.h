#pragma once

#include "gfx/Image.h"
#include "menus/Menu.h"

#include <cstdint>
#include <memory>

class Button;
class Font;
class ObjectivesScreen;
class OptionsMenu;

// The menu a player opens over a running mission with MENU (Escape): the screen darkens, a
// green panel offers "Objectives", "Options", "Main Menu" and "Exit"; "Objectives" shows the
// mission's objectives screen in its place, "Options" the options menu over the frozen
// mission until its "Cancel" has let its buttons fall away. The mission mode owns it, passes
// it input every frame, and while it is open updates and draws it instead of the world and
// returns its codes.
class InGameMenu : public Menu
{
public:
    // The buttons' slots, top to bottom.
    enum ButtonSlot : int32_t
    {
        BUTTON_OBJECTIVES = 0,
        BUTTON_OPTIONS = 1,
        BUTTON_MAIN_MENU = 2,
        BUTTON_EXIT = 3,
        NUM_BUTTONS = 4,
    };

    static constexpr uint8_t FADE_STEP = 1;
    static constexpr uint8_t FADE_MAX = 200;

    // p_objectives is the mission's objectives screen (not owned); without one "Objectives"
    // does nothing.
    explicit InGameMenu(Cursor* p_cursor, ObjectivesScreen* p_objectives = nullptr);
    ~InGameMenu() override;

    bool Init() override;
    // MENU opens and closes the menu; closing it clears the darkening so that the next
    // opening fades in again. The options menu binds keys through this input system. True.
    bool HandleInput(InputSystem* p_input) override;
    // The cursor, the fade, then the options menu, the objectives page or the buttons: 6 to
    // stay, 0 for "Main Menu" (the campaign is back on its first mission), 7 for "Exit".
    int32_t Update(float p_dt) override;
    // Nothing while the menu is hidden.
    bool Render() override;

    bool IsVisible() const { return m_visible; }
    void SetVisible(bool p_visible);
    bool IsShowingObjectives() const { return m_showObjectives; }
    // What "Objectives" does: the objectives page in place of the buttons (when there is one).
    void ShowObjectives() { m_showObjectives = m_pObjectives != nullptr; }
    // What "Options" does: a fresh options menu in place of the buttons.
    void OpenOptions();
    // The options menu while it is open (also while its buttons fall away), else null.
    OptionsMenu* GetOptions() const { return m_pSubMenu.get(); }
    uint8_t GetFadeAlpha() const { return m_fadeAlpha; }
    Button* GetButton(int32_t p_slot) const;
    const Image& GetBackground() const { return m_background; }
    double GetBackgroundX() const { return m_backgroundX; }
    double GetBackgroundY() const { return m_backgroundY; }

private:
    std::unique_ptr<OptionsMenu> m_pSubMenu;
    InputSystem* m_pInput;           // not owned: the one the mission last handed over
    ObjectivesScreen* m_pObjectives; // not owned
    bool m_showObjectives;
    bool m_visible;
    Font* m_pFont;
    Image m_background;
    double m_backgroundX;
    double m_backgroundY;
    Image m_overlay;
    uint8_t m_fadeStep;
    uint8_t m_fadeAlpha;
    uint8_t m_fadeMax;
};
