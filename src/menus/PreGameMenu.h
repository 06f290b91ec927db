#pragma once

#include "gfx/Image.h"
#include "menus/Menu.h"

#include <cstdint>
#include <forward_list>
#include <memory>
#include <vector>

class Button;
class GameObject;

// The common look and motion of the front-end menus: the ribbon down the left edge, a title
// plate, a column of buttons that drop in from above one after another and bounce twice, and
// fall off the bottom of the screen when the menu closes. Besides the buttons a menu shows one
// of its screens (pages of other objects) and the objects common to every screen. A subclass
// fills the menu in Create and turns clicks into a menu code in HandleButtons.
class PreGameMenu : public Menu
{
public:
    enum State : int32_t
    {
        STATE_OPENING = 0,
        STATE_OPEN = 1,
        STATE_CLOSING = 2,
    };

    // Where the buttons come to rest: button i at (BUTTON_X, REST_Y + BUTTON_SPACING * i).
    static constexpr int32_t BUTTON_X = 15;
    static constexpr double REST_Y = 210.0;
    static constexpr double BUTTON_SPACING = 70.0;
    // The landing and the two hops of a dropping button take this long.
    static constexpr double BOUNCE_TIME = 0.9;
    // A closing menu's buttons fall for this long.
    static constexpr double FALL_TIME = 0.7;
    // The first transition frame advances by this much, whatever the frame's time.
    static constexpr float FIRST_STEP = 0.01f;
    // Used when the button pictures are missing, so the buttons can still be clicked.
    static constexpr int32_t FALLBACK_BUTTON_WIDTH = 140;
    static constexpr int32_t FALLBACK_BUTTON_HEIGHT = 40;

    explicit PreGameMenu(Cursor* p_cursor);
    ~PreGameMenu() override;

    // Create, from the start of the opening; Create's answer.
    bool Init() override;
    // Interactive while opening and open: the buttons, the current screen's objects and the
    // common objects are updated and HandleButtons answers; 6 while closing, 8 once closed.
    int32_t Update(float p_dt) override;
    // The ribbon, title, screen and common objects unless closing; the buttons always.
    bool Render() override;

    // Replaces every screen (and its objects) by p_count empty ones; true.
    bool SetNumScreens(int32_t p_count);
    // Puts the object in front of the screen's list, so later objects update and draw first.
    bool AddObject(int32_t p_screen, std::unique_ptr<GameObject> p_object, int32_t p_id);
    bool AddCommonObject(std::unique_ptr<GameObject> p_object, int32_t p_id);
    void SetScreen(int32_t p_screen);
    // The common objects first, then the current screen's; the first with that id, or null.
    GameObject* FindObject(int32_t p_id) const;
    // The object with that id on screen p_screen, whichever screen is shown; null when none.
    GameObject* FindObjectOn(int32_t p_screen, int32_t p_id) const;
    bool SetTitle(const char* p_text);
    // One button per label, in label order, waiting just above the screen; true.
    bool CreateButtons(const char* const* p_labels, int32_t p_count);
    // Whether button p_button reported a click or double click (which clears it).
    bool WasButtonClicked(int32_t p_button);
    // Forgets every pending click, so that none outlives the frame.
    void ResetButtons();
    // The buttons start falling out; the menu answers 8 once they are gone.
    void Close();

    State GetState() const { return m_state; }
    float GetTransitionTime() const { return m_transitionTime; }
    int32_t GetNumButtons() const { return m_numButtons; }
    int32_t GetNumScreens() const { return m_numScreens; }
    int32_t GetCurrentScreen() const { return m_currentScreen; }
    Button* GetButton(int32_t p_button) const;
    Button* GetTitle() const { return m_title.get(); }
    const Image& GetBackground() const { return m_background; }

    // Where button p_button is while dropping, p_time seconds after its own drop began, and
    // while falling, p_time seconds into the fall (its y in both cases).
    static int32_t DropY(double p_time, int32_t p_button);
    static int32_t FallY(double p_time, int32_t p_button);
    // The height above the screen that every drop starts from: minus the height of the first
    // button the program made; 0 until then.
    static double GetStartHeight();
    // A run of the program starts without a first button; tests that need that call this.
    static void ForgetFirstButton();

protected:
    // 7 while interactive, 6 while closing, 8 when the closing has ended.
    int32_t StepTransition(float p_dt);
    // The subclass's reading of the clicks: a menu code.
    virtual int32_t HandleButtons(float p_dt) = 0;
    // The subclass builds its screens, buttons and title.
    virtual bool Create() = 0;

private:
    struct ScreenObject
    {
        std::unique_ptr<GameObject> m_pObject;
        int32_t m_id;
    };
    using ObjectList = std::forward_list<ScreenObject>;

    static GameObject* FindIn(const ObjectList& p_list, int32_t p_id);
    static void UpdateAll(const ObjectList& p_list, float p_dt);
    static void RenderAll(const ObjectList& p_list);
    const ObjectList* CurrentScreen() const;

    Image m_background;
    State m_state;
    std::unique_ptr<Button> m_title;
    int32_t m_numButtons;
    float m_transitionTime;
    int32_t m_numScreens;
    int32_t m_currentScreen;
    std::vector<ObjectList> m_screens;
    ObjectList m_commonObjects;
};
