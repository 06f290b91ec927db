#pragma once

#include "gfx/Image.h"
#include "menus/Menu.h"

#include <cstdint>

class Button;
class Font;
class ObjectivesScreen;

// The menu a player opens over a running mission with MENU (Escape): the screen darkens, a
// green panel offers "Objectives", "Main Menu" and "Exit", and "Objectives" shows the mission's
// objectives screen in its place. The mission mode owns it, passes it input every frame, and
// while it is open updates and draws it instead of the world and returns its codes.
class InGameMenu : public Menu
{
public:
    // The buttons' slots, top to bottom.
    enum ButtonSlot : int32_t
    {
        BUTTON_OBJECTIVES = 0,
        BUTTON_MAIN_MENU = 1,
        BUTTON_EXIT = 2,
        NUM_BUTTONS = 3,
    };

    static constexpr uint8_t FADE_STEP = 1;
    static constexpr uint8_t FADE_MAX = 200;

    // p_objectives is the mission's objectives screen (not owned); without one "Objectives"
    // does nothing.
    explicit InGameMenu(Cursor* p_cursor, ObjectivesScreen* p_objectives = nullptr);
    ~InGameMenu() override;

    bool Init() override;
    // MENU opens and closes the menu; closing it clears the darkening so that the next
    // opening fades in again. True.
    bool HandleInput(InputSystem* p_input) override;
    // The cursor, the fade, then the objectives page or the buttons: 6 to stay, 0 for
    // "Main Menu" (the campaign is back on its first mission), 7 for "Exit".
    int32_t Update(float p_dt) override;
    // Nothing while the menu is hidden.
    bool Render() override;

    bool IsVisible() const { return m_visible; }
    void SetVisible(bool p_visible);
    bool IsShowingObjectives() const { return m_showObjectives; }
    // What "Objectives" does: the objectives page in place of the buttons (when there is one).
    void ShowObjectives() { m_showObjectives = m_pObjectives != nullptr; }
    uint8_t GetFadeAlpha() const { return m_fadeAlpha; }
    Button* GetButton(int32_t p_slot) const;
    const Image& GetBackground() const { return m_background; }
    double GetBackgroundX() const { return m_backgroundX; }
    double GetBackgroundY() const { return m_backgroundY; }

private:
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
