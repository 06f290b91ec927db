#include "platform/RawInput.h"

#include "platform/DikCodes.h"
#include "platform/EventPump.h"
#include "platform/Window.h"

#include <SDL2/SDL.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <utility>

namespace platform
{

int32_t& RawJoystickState::Axis(int32_t p_axis)
{
    switch (p_axis)
    {
    case 0:
        return lX;
    case 1:
        return lY;
    case 2:
        return lZ;
    case 3:
        return lRx;
    case 4:
        return lRy;
    case 5:
        return lRz;
    case 6:
        return rglSlider[0];
    default:
        return rglSlider[1];
    }
}

namespace
{

// Every key of a PC keyboard, the keypad, the navigation block and the media keys, with the
// code DirectInput gives the same key.
const std::pair<SDL_Scancode, uint8_t> SCANCODE_TO_DIK[] = {
    {SDL_SCANCODE_ESCAPE, DIK_ESCAPE},
    {SDL_SCANCODE_1, DIK_1},
    {SDL_SCANCODE_2, DIK_2},
    {SDL_SCANCODE_3, DIK_3},
    {SDL_SCANCODE_4, DIK_4},
    {SDL_SCANCODE_5, DIK_5},
    {SDL_SCANCODE_6, DIK_6},
    {SDL_SCANCODE_7, DIK_7},
    {SDL_SCANCODE_8, DIK_8},
    {SDL_SCANCODE_9, DIK_9},
    {SDL_SCANCODE_0, DIK_0},
    {SDL_SCANCODE_MINUS, DIK_MINUS},
    {SDL_SCANCODE_EQUALS, DIK_EQUALS},
    {SDL_SCANCODE_BACKSPACE, DIK_BACK},
    {SDL_SCANCODE_TAB, DIK_TAB},
    {SDL_SCANCODE_Q, DIK_Q},
    {SDL_SCANCODE_W, DIK_W},
    {SDL_SCANCODE_E, DIK_E},
    {SDL_SCANCODE_R, DIK_R},
    {SDL_SCANCODE_T, DIK_T},
    {SDL_SCANCODE_Y, DIK_Y},
    {SDL_SCANCODE_U, DIK_U},
    {SDL_SCANCODE_I, DIK_I},
    {SDL_SCANCODE_O, DIK_O},
    {SDL_SCANCODE_P, DIK_P},
    {SDL_SCANCODE_LEFTBRACKET, DIK_LBRACKET},
    {SDL_SCANCODE_RIGHTBRACKET, DIK_RBRACKET},
    {SDL_SCANCODE_RETURN, DIK_RETURN},
    {SDL_SCANCODE_LCTRL, DIK_LCONTROL},
    {SDL_SCANCODE_A, DIK_A},
    {SDL_SCANCODE_S, DIK_S},
    {SDL_SCANCODE_D, DIK_D},
    {SDL_SCANCODE_F, DIK_F},
    {SDL_SCANCODE_G, DIK_G},
    {SDL_SCANCODE_H, DIK_H},
    {SDL_SCANCODE_J, DIK_J},
    {SDL_SCANCODE_K, DIK_K},
    {SDL_SCANCODE_L, DIK_L},
    {SDL_SCANCODE_SEMICOLON, DIK_SEMICOLON},
    {SDL_SCANCODE_APOSTROPHE, DIK_APOSTROPHE},
    {SDL_SCANCODE_GRAVE, DIK_GRAVE},
    {SDL_SCANCODE_LSHIFT, DIK_LSHIFT},
    {SDL_SCANCODE_BACKSLASH, DIK_BACKSLASH},
    // The ISO key beside Enter sends the backslash key's scan code.
    {SDL_SCANCODE_NONUSHASH, DIK_BACKSLASH},
    {SDL_SCANCODE_Z, DIK_Z},
    {SDL_SCANCODE_X, DIK_X},
    {SDL_SCANCODE_C, DIK_C},
    {SDL_SCANCODE_V, DIK_V},
    {SDL_SCANCODE_B, DIK_B},
    {SDL_SCANCODE_N, DIK_N},
    {SDL_SCANCODE_M, DIK_M},
    {SDL_SCANCODE_COMMA, DIK_COMMA},
    {SDL_SCANCODE_PERIOD, DIK_PERIOD},
    {SDL_SCANCODE_SLASH, DIK_SLASH},
    {SDL_SCANCODE_RSHIFT, DIK_RSHIFT},
    {SDL_SCANCODE_KP_MULTIPLY, DIK_MULTIPLY},
    {SDL_SCANCODE_LALT, DIK_LMENU},
    {SDL_SCANCODE_SPACE, DIK_SPACE},
    {SDL_SCANCODE_CAPSLOCK, DIK_CAPITAL},
    {SDL_SCANCODE_F1, DIK_F1},
    {SDL_SCANCODE_F2, DIK_F2},
    {SDL_SCANCODE_F3, DIK_F3},
    {SDL_SCANCODE_F4, DIK_F4},
    {SDL_SCANCODE_F5, DIK_F5},
    {SDL_SCANCODE_F6, DIK_F6},
    {SDL_SCANCODE_F7, DIK_F7},
    {SDL_SCANCODE_F8, DIK_F8},
    {SDL_SCANCODE_F9, DIK_F9},
    {SDL_SCANCODE_F10, DIK_F10},
    {SDL_SCANCODE_NUMLOCKCLEAR, DIK_NUMLOCK},
    {SDL_SCANCODE_SCROLLLOCK, DIK_SCROLL},
    {SDL_SCANCODE_KP_7, DIK_NUMPAD7},
    {SDL_SCANCODE_KP_8, DIK_NUMPAD8},
    {SDL_SCANCODE_KP_9, DIK_NUMPAD9},
    {SDL_SCANCODE_KP_MINUS, DIK_SUBTRACT},
    {SDL_SCANCODE_KP_4, DIK_NUMPAD4},
    {SDL_SCANCODE_KP_5, DIK_NUMPAD5},
    {SDL_SCANCODE_KP_6, DIK_NUMPAD6},
    {SDL_SCANCODE_KP_PLUS, DIK_ADD},
    {SDL_SCANCODE_KP_1, DIK_NUMPAD1},
    {SDL_SCANCODE_KP_2, DIK_NUMPAD2},
    {SDL_SCANCODE_KP_3, DIK_NUMPAD3},
    {SDL_SCANCODE_KP_0, DIK_NUMPAD0},
    {SDL_SCANCODE_KP_PERIOD, DIK_DECIMAL},
    {SDL_SCANCODE_NONUSBACKSLASH, DIK_OEM_102},
    {SDL_SCANCODE_F11, DIK_F11},
    {SDL_SCANCODE_F12, DIK_F12},
    {SDL_SCANCODE_F13, DIK_F13},
    {SDL_SCANCODE_F14, DIK_F14},
    {SDL_SCANCODE_F15, DIK_F15},
    {SDL_SCANCODE_INTERNATIONAL2, DIK_KANA},
    {SDL_SCANCODE_INTERNATIONAL1, DIK_ABNT_C1},
    {SDL_SCANCODE_INTERNATIONAL4, DIK_CONVERT},
    {SDL_SCANCODE_INTERNATIONAL5, DIK_NOCONVERT},
    {SDL_SCANCODE_INTERNATIONAL3, DIK_YEN},
    // The Brazilian keypad's separator, which Windows reports as ABNT_C2.
    {SDL_SCANCODE_KP_COMMA, DIK_ABNT_C2},
    {SDL_SCANCODE_KP_EQUALS, DIK_NUMPADEQUALS},
    {SDL_SCANCODE_AUDIOPREV, DIK_PREVTRACK},
    {SDL_SCANCODE_STOP, DIK_STOP},
    {SDL_SCANCODE_AUDIONEXT, DIK_NEXTTRACK},
    {SDL_SCANCODE_KP_ENTER, DIK_NUMPADENTER},
    {SDL_SCANCODE_RCTRL, DIK_RCONTROL},
    {SDL_SCANCODE_MUTE, DIK_MUTE},
    {SDL_SCANCODE_AUDIOMUTE, DIK_MUTE},
    {SDL_SCANCODE_CALCULATOR, DIK_CALCULATOR},
    {SDL_SCANCODE_AUDIOPLAY, DIK_PLAYPAUSE},
    {SDL_SCANCODE_AUDIOSTOP, DIK_MEDIASTOP},
    {SDL_SCANCODE_VOLUMEDOWN, DIK_VOLUMEDOWN},
    {SDL_SCANCODE_VOLUMEUP, DIK_VOLUMEUP},
    {SDL_SCANCODE_AC_HOME, DIK_WEBHOME},
    {SDL_SCANCODE_KP_DIVIDE, DIK_DIVIDE},
    {SDL_SCANCODE_PRINTSCREEN, DIK_SYSRQ},
    {SDL_SCANCODE_SYSREQ, DIK_SYSRQ},
    {SDL_SCANCODE_RALT, DIK_RMENU},
    {SDL_SCANCODE_PAUSE, DIK_PAUSE},
    {SDL_SCANCODE_HOME, DIK_HOME},
    {SDL_SCANCODE_UP, DIK_UP},
    {SDL_SCANCODE_PAGEUP, DIK_PRIOR},
    {SDL_SCANCODE_LEFT, DIK_LEFT},
    {SDL_SCANCODE_RIGHT, DIK_RIGHT},
    {SDL_SCANCODE_END, DIK_END},
    {SDL_SCANCODE_DOWN, DIK_DOWN},
    {SDL_SCANCODE_PAGEDOWN, DIK_NEXT},
    {SDL_SCANCODE_INSERT, DIK_INSERT},
    {SDL_SCANCODE_DELETE, DIK_DELETE},
    {SDL_SCANCODE_LGUI, DIK_LWIN},
    {SDL_SCANCODE_RGUI, DIK_RWIN},
    {SDL_SCANCODE_APPLICATION, DIK_APPS},
    {SDL_SCANCODE_MENU, DIK_APPS},
    {SDL_SCANCODE_POWER, DIK_POWER},
    {SDL_SCANCODE_SLEEP, DIK_SLEEP},
    {SDL_SCANCODE_AC_SEARCH, DIK_WEBSEARCH},
    {SDL_SCANCODE_AC_BOOKMARKS, DIK_WEBFAVORITES},
    {SDL_SCANCODE_AC_REFRESH, DIK_WEBREFRESH},
    {SDL_SCANCODE_AC_STOP, DIK_WEBSTOP},
    {SDL_SCANCODE_AC_FORWARD, DIK_WEBFORWARD},
    {SDL_SCANCODE_AC_BACK, DIK_WEBBACK},
    {SDL_SCANCODE_COMPUTER, DIK_MYCOMPUTER},
    {SDL_SCANCODE_MAIL, DIK_MAIL},
    {SDL_SCANCODE_MEDIASELECT, DIK_MEDIASELECT},
};

std::array<uint8_t, SDL_NUM_SCANCODES> MakeScancodeTable()
{
    std::array<uint8_t, SDL_NUM_SCANCODES> table{};
    for (const auto& [scancode, dik] : SCANCODE_TO_DIK)
    {
        table[scancode] = dik;
    }
    return table;
}

const std::array<uint8_t, SDL_NUM_SCANCODES> s_dikFromScancode = MakeScancodeTable();

// What the window system reported since the devices were last read. Keys and buttons that
// went down since the last read count as down once even if they are already up again, so a
// tap shorter than a frame is not lost.
struct EventState
{
    uint8_t keys[RAW_KEY_COUNT] = {};
    uint8_t keysPressed[RAW_KEY_COUNT] = {};
    int64_t dx = 0;
    int64_t dy = 0;
    int64_t wheel = 0;
    uint8_t buttons[RAW_MOUSE_BUTTONS] = {};
    uint8_t buttonsPressed[RAW_MOUSE_BUTTONS] = {};

    void ReleaseAll()
    {
        std::memset(keys, 0, sizeof(keys));
        std::memset(keysPressed, 0, sizeof(keysPressed));
        std::memset(buttons, 0, sizeof(buttons));
        std::memset(buttonsPressed, 0, sizeof(buttonsPressed));
        dx = 0;
        dy = 0;
        wheel = 0;
    }
};

EventState s_events;
bool s_rawInputExists = false;

// DirectInput's button order: left, right, middle, fourth.
int MouseButtonIndex(uint8_t p_sdlButton)
{
    switch (p_sdlButton)
    {
    case SDL_BUTTON_LEFT:
        return 0;
    case SDL_BUTTON_RIGHT:
        return 1;
    case SDL_BUTTON_MIDDLE:
        return 2;
    case SDL_BUTTON_X1:
        return 3;
    default:
        return -1;
    }
}

void OnEvent(const SDL_Event& p_event)
{
    switch (p_event.type)
    {
    case SDL_KEYDOWN:
    case SDL_KEYUP:
    {
        const uint8_t code = DikFromScancode(p_event.key.keysym.scancode);
        if (code == 0)
        {
            break;
        }
        if (p_event.type == SDL_KEYDOWN)
        {
            s_events.keys[code] = RAW_DOWN;
            s_events.keysPressed[code] = RAW_DOWN;
        }
        else
        {
            s_events.keys[code] = 0;
        }
        break;
    }
    case SDL_MOUSEMOTION:
        s_events.dx += p_event.motion.xrel;
        s_events.dy += p_event.motion.yrel;
        break;
    case SDL_MOUSEWHEEL:
    {
        // One notch is 120, as on Windows; positive turns away from the player.
        const int64_t notches = p_event.wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -p_event.wheel.y : p_event.wheel.y;
        s_events.wheel += notches * 120;
        break;
    }
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
    {
        const int index = MouseButtonIndex(p_event.button.button);
        if (index < 0)
        {
            break;
        }
        if (p_event.type == SDL_MOUSEBUTTONDOWN)
        {
            s_events.buttons[index] = RAW_DOWN;
            s_events.buttonsPressed[index] = RAW_DOWN;
        }
        else
        {
            s_events.buttons[index] = 0;
        }
        break;
    }
    case SDL_WINDOWEVENT:
        // Whatever is let go while another window has the focus is never reported to us.
        if (p_event.window.event == SDL_WINDOWEVENT_FOCUS_LOST)
        {
            s_events.ReleaseAll();
        }
        break;
    default:
        break;
    }
}

int32_t Clamp32(int64_t p_value)
{
    return static_cast<int32_t>(std::clamp<int64_t>(p_value, INT32_MIN, INT32_MAX));
}

bool IsUsableWindow(Window* p_window)
{
    return p_window != nullptr && p_window->IsOpen();
}

class SdlKeyboard : public RawKeyboard
{
public:
    ~SdlKeyboard() override { SdlKeyboard::Unacquire(); }

    bool SetDataFormat() override { return true; }
    // Non-exclusive: the keys are read from the game window's events.
    bool SetCooperativeLevel(Window* p_window) override { return IsUsableWindow(p_window); }
    bool Acquire() override
    {
        m_acquired = true;
        return true;
    }
    void Unacquire() override { m_acquired = false; }

    bool GetState(RawKeyState& p_keys) override
    {
        if (!m_acquired)
        {
            return false;
        }
        for (int32_t i = 0; i < RAW_KEY_COUNT; ++i)
        {
            p_keys[i] = s_events.keys[i] | s_events.keysPressed[i];
        }
        std::memset(s_events.keysPressed, 0, sizeof(s_events.keysPressed));
        return true;
    }

private:
    bool m_acquired = false;
};

class SdlMouse : public RawMouse
{
public:
    ~SdlMouse() override { SdlMouse::Unacquire(); }

    bool SetDataFormat() override { return true; }
    // Exclusive: relative mode, so the desktop pointer neither shows nor leaves the window.
    // Where the system cannot do that the mouse still moves the game's cursor.
    bool SetCooperativeLevel(Window* p_window) override
    {
        m_exclusive = IsUsableWindow(p_window) && SDL_SetRelativeMouseMode(SDL_TRUE) == 0;
        return m_exclusive;
    }
    bool Acquire() override
    {
        if (m_exclusive && SDL_GetRelativeMouseMode() == SDL_FALSE)
        {
            SDL_SetRelativeMouseMode(SDL_TRUE);
        }
        m_acquired = true;
        return true;
    }
    void Unacquire() override
    {
        if (m_exclusive && m_acquired)
        {
            SDL_SetRelativeMouseMode(SDL_FALSE);
        }
        m_acquired = false;
    }

    bool GetState(RawMouseState& p_state) override
    {
        if (!m_acquired)
        {
            return false;
        }
        p_state.lX = Clamp32(s_events.dx);
        p_state.lY = Clamp32(s_events.dy);
        p_state.lZ = Clamp32(s_events.wheel);
        for (int32_t i = 0; i < RAW_MOUSE_BUTTONS; ++i)
        {
            p_state.rgbButtons[i] = s_events.buttons[i] | s_events.buttonsPressed[i];
        }
        s_events.dx = 0;
        s_events.dy = 0;
        s_events.wheel = 0;
        std::memset(s_events.buttonsPressed, 0, sizeof(s_events.buttonsPressed));
        return true;
    }

private:
    bool m_exclusive = false;
    bool m_acquired = false;
};

// SDL's -32768..32767 onto DirectInput's 0..65535, with SDL's rest (0) on the game's centre
// (32767) so that an axis at rest reads 0 on both halves.
int32_t AxisFromSdl(int16_t p_value)
{
    return p_value <= 0 ? std::max(0, p_value + RAW_AXIS_CENTRE) : p_value + RAW_AXIS_CENTRE + 1;
}

uint32_t PovFromHat(uint8_t p_hat)
{
    switch (p_hat)
    {
    case SDL_HAT_UP:
        return 0;
    case SDL_HAT_RIGHTUP:
        return 4500;
    case SDL_HAT_RIGHT:
        return 9000;
    case SDL_HAT_RIGHTDOWN:
        return 13500;
    case SDL_HAT_DOWN:
        return 18000;
    case SDL_HAT_LEFTDOWN:
        return 22500;
    case SDL_HAT_LEFT:
        return 27000;
    case SDL_HAT_LEFTUP:
        return 31500;
    default:
        return RAW_POV_CENTRED;
    }
}

// A gamepad's buttons in the order DirectInput gives an Xbox pad (A, B, X, Y, shoulders,
// Back, Start, stick clicks), then the rest, the D-pad among them so that it can be bound.
const SDL_GameControllerButton GAMEPAD_BUTTONS[] = {
    SDL_CONTROLLER_BUTTON_A,          SDL_CONTROLLER_BUTTON_B,          SDL_CONTROLLER_BUTTON_X,
    SDL_CONTROLLER_BUTTON_Y,          SDL_CONTROLLER_BUTTON_LEFTSHOULDER, SDL_CONTROLLER_BUTTON_RIGHTSHOULDER,
    SDL_CONTROLLER_BUTTON_BACK,       SDL_CONTROLLER_BUTTON_START,      SDL_CONTROLLER_BUTTON_LEFTSTICK,
    SDL_CONTROLLER_BUTTON_RIGHTSTICK, SDL_CONTROLLER_BUTTON_GUIDE,      SDL_CONTROLLER_BUTTON_DPAD_UP,
    SDL_CONTROLLER_BUTTON_DPAD_DOWN,  SDL_CONTROLLER_BUTTON_DPAD_LEFT,  SDL_CONTROLLER_BUTTON_DPAD_RIGHT,
    SDL_CONTROLLER_BUTTON_MISC1,      SDL_CONTROLLER_BUTTON_PADDLE1,    SDL_CONTROLLER_BUTTON_PADDLE2,
    SDL_CONTROLLER_BUTTON_PADDLE3,    SDL_CONTROLLER_BUTTON_PADDLE4,    SDL_CONTROLLER_BUTTON_TOUCHPAD,
};

class SdlJoystick : public RawJoystick
{
public:
    SdlJoystick(SDL_Joystick* p_joystick, SDL_GameController* p_controller)
        : m_pJoystick(p_joystick), m_pController(p_controller)
    {
    }
    ~SdlJoystick() override
    {
        if (m_pController != nullptr)
        {
            SDL_GameControllerClose(m_pController);
        }
        else if (m_pJoystick != nullptr)
        {
            SDL_JoystickClose(m_pJoystick);
        }
    }
    SdlJoystick(const SdlJoystick&) = delete;
    SdlJoystick& operator=(const SdlJoystick&) = delete;

    bool SetDataFormat() override { return true; }
    // SDL shares controllers between programs; there is nothing to claim.
    bool SetCooperativeLevel(Window*) override { return true; }
    bool Acquire() override
    {
        m_acquired = SDL_JoystickGetAttached(m_pJoystick) == SDL_TRUE;
        return m_acquired;
    }
    void Unacquire() override { m_acquired = false; }

    bool Poll() override
    {
        if (!m_acquired)
        {
            return false;
        }
        SDL_JoystickUpdate();
        if (SDL_JoystickGetAttached(m_pJoystick) != SDL_TRUE)
        {
            m_acquired = false;
            return false;
        }
        return true;
    }

    bool GetState(RawJoystickState& p_state) override
    {
        if (!m_acquired)
        {
            return false;
        }
        p_state = RawJoystickState();
        if (m_pController != nullptr)
        {
            ReadGamepad(p_state);
        }
        else
        {
            ReadJoystick(p_state);
        }
        return true;
    }

private:
    void ReadGamepad(RawJoystickState& p_state)
    {
        p_state.lX = AxisFromSdl(SDL_GameControllerGetAxis(m_pController, SDL_CONTROLLER_AXIS_LEFTX));
        p_state.lY = AxisFromSdl(SDL_GameControllerGetAxis(m_pController, SDL_CONTROLLER_AXIS_LEFTY));
        p_state.lRx = AxisFromSdl(SDL_GameControllerGetAxis(m_pController, SDL_CONTROLLER_AXIS_RIGHTX));
        p_state.lRy = AxisFromSdl(SDL_GameControllerGetAxis(m_pController, SDL_CONTROLLER_AXIS_RIGHTY));
        // Each trigger on an axis of its own (DirectInput shares one between them), resting
        // at the centre so that only its positive half moves: a released trigger is not held.
        const int16_t left = SDL_GameControllerGetAxis(m_pController, SDL_CONTROLLER_AXIS_TRIGGERLEFT);
        const int16_t right = SDL_GameControllerGetAxis(m_pController, SDL_CONTROLLER_AXIS_TRIGGERRIGHT);
        p_state.lZ = AxisFromSdl(std::max<int16_t>(left, 0));
        p_state.lRz = AxisFromSdl(std::max<int16_t>(right, 0));
        int32_t index = 0;
        for (SDL_GameControllerButton button : GAMEPAD_BUTTONS)
        {
            p_state.rgbButtons[index++] = SDL_GameControllerGetButton(m_pController, button) != 0 ? RAW_DOWN : 0;
        }
        uint8_t hat = SDL_HAT_CENTERED;
        hat |= SDL_GameControllerGetButton(m_pController, SDL_CONTROLLER_BUTTON_DPAD_UP) != 0 ? SDL_HAT_UP : 0;
        hat |= SDL_GameControllerGetButton(m_pController, SDL_CONTROLLER_BUTTON_DPAD_RIGHT) != 0 ? SDL_HAT_RIGHT : 0;
        hat |= SDL_GameControllerGetButton(m_pController, SDL_CONTROLLER_BUTTON_DPAD_DOWN) != 0 ? SDL_HAT_DOWN : 0;
        hat |= SDL_GameControllerGetButton(m_pController, SDL_CONTROLLER_BUTTON_DPAD_LEFT) != 0 ? SDL_HAT_LEFT : 0;
        p_state.rgdwPOV[0] = PovFromHat(hat);
    }

    void ReadJoystick(RawJoystickState& p_state)
    {
        const int32_t axes = std::min(SDL_JoystickNumAxes(m_pJoystick), RAW_JOYSTICK_AXES);
        for (int32_t axis = 0; axis < axes; ++axis)
        {
            p_state.Axis(axis) = AxisFromSdl(SDL_JoystickGetAxis(m_pJoystick, axis));
        }
        const int32_t buttons = std::min(SDL_JoystickNumButtons(m_pJoystick), RAW_JOYSTICK_BUTTONS);
        for (int32_t button = 0; button < buttons; ++button)
        {
            p_state.rgbButtons[button] = SDL_JoystickGetButton(m_pJoystick, button) != 0 ? RAW_DOWN : 0;
        }
        const int32_t hats = std::min(SDL_JoystickNumHats(m_pJoystick), 4);
        for (int32_t hat = 0; hat < hats; ++hat)
        {
            p_state.rgdwPOV[hat] = PovFromHat(SDL_JoystickGetHat(m_pJoystick, hat));
        }
    }

    SDL_Joystick* m_pJoystick;
    SDL_GameController* m_pController; // owns m_pJoystick when set
    bool m_acquired = false;
};

class SdlRawInput : public RawInput
{
public:
    SdlRawInput()
    {
        s_rawInputExists = true;
        s_events.ReleaseAll();
        m_controllersUp = SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) == 0;
        if (m_controllersUp)
        {
            // The devices are read by polling; events nobody takes would only fill the queue.
            SDL_JoystickEventState(SDL_IGNORE);
            SDL_GameControllerEventState(SDL_IGNORE);
        }
        else
        {
            std::fprintf(stderr, "Korvath: game controllers are not available: %s\n", SDL_GetError());
        }
        AddEventListener(&OnEvent);
    }

    ~SdlRawInput() override
    {
        RemoveEventListener(&OnEvent);
        if (m_controllersUp)
        {
            SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
        }
        SDL_QuitSubSystem(SDL_INIT_EVENTS);
        s_rawInputExists = false;
    }

    SdlRawInput(const SdlRawInput&) = delete;
    SdlRawInput& operator=(const SdlRawInput&) = delete;

    std::unique_ptr<RawKeyboard> CreateKeyboard() override { return std::make_unique<SdlKeyboard>(); }
    std::unique_ptr<RawMouse> CreateMouse() override { return std::make_unique<SdlMouse>(); }

    int32_t GetJoystickCount() override
    {
        if (!m_controllersUp)
        {
            return 0;
        }
        // Takes note of controllers plugged in or pulled out since the last look.
        SDL_JoystickUpdate();
        return std::max(SDL_NumJoysticks(), 0);
    }

    std::unique_ptr<RawJoystick> CreateJoystick(int32_t p_index) override
    {
        if (!m_controllersUp || p_index < 0 || p_index >= SDL_NumJoysticks())
        {
            return nullptr;
        }
        if (SDL_IsGameController(p_index) == SDL_TRUE)
        {
            if (SDL_GameController* controller = SDL_GameControllerOpen(p_index))
            {
                return std::make_unique<SdlJoystick>(SDL_GameControllerGetJoystick(controller), controller);
            }
        }
        if (SDL_Joystick* joystick = SDL_JoystickOpen(p_index))
        {
            return std::make_unique<SdlJoystick>(joystick, nullptr);
        }
        return nullptr;
    }

private:
    bool m_controllersUp = false;
};

} // namespace

uint8_t DikFromScancode(int32_t p_scancode)
{
    if (p_scancode < 0 || p_scancode >= SDL_NUM_SCANCODES)
    {
        return 0;
    }
    return s_dikFromScancode[p_scancode];
}

std::unique_ptr<RawInput> CreateRawInput()
{
    // The event state is shared by the devices, so a second source would steal the first's.
    if (s_rawInputExists || SDL_InitSubSystem(SDL_INIT_EVENTS) != 0)
    {
        return nullptr;
    }
    return std::make_unique<SdlRawInput>();
}

} // namespace platform
