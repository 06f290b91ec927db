// The raw devices on SDL itself: virtual joysticks, and keyboard and mouse events as the
// window system delivers them.
#include "input/InputSystem.h"
#include "platform/DikCodes.h"
#include "platform/MessageQueue.h"
#include "platform/RawInput.h"
#include "support/GlFixture.h"

#include <SDL2/SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace
{
constexpr int32_t CENTRE = 32767;

// An SDL virtual joystick with a handle of the test's own to move it.
struct Virtual
{
    int index = -1;
    SDL_Joystick* handle = nullptr;

    Virtual(SDL_JoystickType p_type, int p_axes, int p_buttons, int p_hats)
    {
        index = SDL_JoystickAttachVirtual(p_type, p_axes, p_buttons, p_hats);
        if (index >= 0)
        {
            handle = SDL_JoystickOpen(index);
        }
    }
    void Close()
    {
        if (handle != nullptr)
        {
            SDL_JoystickClose(handle);
            handle = nullptr;
        }
    }
};

// Pumps the window system's events into the devices, as the main loop does, then polls.
void Frame(InputSystem& p_input)
{
    platform::Message message;
    while (platform::MessageQueue::Peek(message))
    {
    }
    p_input.Poll();
}

void PushKey(SDL_Scancode p_scancode, bool p_down)
{
    SDL_Event event{};
    event.type = p_down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.state = p_down ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.scancode = p_scancode;
    SDL_PushEvent(&event);
}

void PushButton(uint8_t p_button, bool p_down)
{
    SDL_Event event{};
    event.type = p_down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.button = p_button;
    event.button.state = p_down ? SDL_PRESSED : SDL_RELEASED;
    SDL_PushEvent(&event);
}
} // namespace

TEST(RawInputSdlTest, VirtualJoysticksThroughSdl)
{
    setenv("KORVATH_HEADLESS", "1", 1);
    std::unique_ptr<platform::RawInput> raw = platform::CreateRawInput();
    ASSERT_NE(nullptr, raw);
    if (raw->GetJoystickCount() != 0)
    {
        GTEST_SKIP() << "a real game controller is attached";
    }
    // Enumerated first: a plain joystick with eight axes; second: a gamepad SDL knows.
    Virtual stick(SDL_JOYSTICK_TYPE_UNKNOWN, 8, 20, 1);
    Virtual pad(SDL_JOYSTICK_TYPE_GAMECONTROLLER, 6, 15, 0);
    ASSERT_NE(nullptr, stick.handle) << SDL_GetError();
    ASSERT_NE(nullptr, pad.handle) << SDL_GetError();
    ASSERT_EQ(2, raw->GetJoystickCount());
    // Triggers at rest.
    SDL_JoystickSetVirtualAxis(pad.handle, 4, -32768);
    SDL_JoystickSetVirtualAxis(pad.handle, 5, -32768);

    {
        // No window: the keyboard and the mouse say so; the controllers need none.
        testing::internal::CaptureStderr();
        InputSystem input(raw.get(), nullptr);
        const std::string messages = testing::internal::GetCapturedStderr();
        EXPECT_NE(std::string::npos, messages.find("Failed to set keyboard cooperative level.")) << messages;
        Joystick& joystick = *input.GetJoystick();
        ASSERT_EQ(2, joystick.GetCount());
        input.Poll();
        // Everything at rest reads 0 on both halves, triggers included.
        for (int32_t code = 0; code < 2 * 16; ++code)
        {
            EXPECT_EQ(0, joystick.GetAxis(code, false)) << code;
        }
        EXPECT_EQ(-1, joystick.FindPressedButton());

        // The stick is controller 1: its second slider to the end, X to the other end, button 19.
        SDL_JoystickSetVirtualAxis(stick.handle, 7, 32767);
        SDL_JoystickSetVirtualAxis(stick.handle, 0, -32768);
        SDL_JoystickSetVirtualButton(stick.handle, 19, 1);
        input.Poll();
        EXPECT_EQ(32768, joystick.GetAxis((8 + 7) * 2 + 1, false));
        EXPECT_EQ(32767, joystick.GetAxis((8 + 0) * 2, false));
        EXPECT_EQ(0, joystick.GetAxis((8 + 0) * 2 + 1, false));
        EXPECT_TRUE(joystick.IsButtonDown(128 + 19));
        EXPECT_EQ(128 + 19, joystick.FindPressedButton());
        EXPECT_EQ((8 + 0) * 2, joystick.FindMovedAxis());

        // The gamepad is controller 0, in the Xbox layout: A is button 0, the left shoulder
        // button 4, the left stick X and Y, the left trigger Z (positive half).
        input.SetBinding(MENU, DEVICE_JOYSTICK_BUTTON, 0);
        input.SetBinding(ACCELERATE, DEVICE_JOYSTICK_AXIS, 2 * 2 + 1);
        input.SetBinding(STRAFE_LEFT, DEVICE_JOYSTICK_AXIS, 0);
        SDL_JoystickSetVirtualButton(pad.handle, SDL_CONTROLLER_BUTTON_A, 1);
        SDL_JoystickSetVirtualButton(pad.handle, SDL_CONTROLLER_BUTTON_LEFTSHOULDER, 1);
        SDL_JoystickSetVirtualAxis(pad.handle, 4, 32767);
        SDL_JoystickSetVirtualAxis(pad.handle, 0, -32768);
        input.Poll();
        EXPECT_TRUE(input.WasPressed(MENU));
        EXPECT_TRUE(joystick.IsButtonDown(4));
        EXPECT_TRUE(input.WasPressed(ACCELERATE));
        EXPECT_EQ(32768, input.GetAxis(ACCELERATE));
        EXPECT_TRUE(input.IsDown(STRAFE_LEFT));
        EXPECT_EQ(32767, input.GetAxis(STRAFE_LEFT));

        // The stick is pulled out mid-run: it reads as released; the gamepad goes on.
        input.SetBinding(INTERACT, DEVICE_JOYSTICK_BUTTON, 128 + 19);
        stick.Close();
        ASSERT_EQ(0, SDL_JoystickDetachVirtual(stick.index));
        input.Poll();
        EXPECT_TRUE(input.WasReleased(INTERACT));
        EXPECT_EQ(0, joystick.GetAxis((8 + 7) * 2 + 1, false));
        EXPECT_TRUE(input.IsDown(MENU));
        input.Poll();
        EXPECT_FALSE(input.IsDown(INTERACT));
        SDL_JoystickSetVirtualButton(pad.handle, SDL_CONTROLLER_BUTTON_B, 1);
        input.Poll();
        EXPECT_TRUE(joystick.ButtonPressed(1));

        // The next set-up finds only the gamepad, still controller 0.
        testing::internal::CaptureStderr();
        input.Reset(nullptr);
        testing::internal::GetCapturedStderr();
        ASSERT_EQ(1, joystick.GetCount());
        input.Poll();
        EXPECT_TRUE(input.IsDown(MENU));
        EXPECT_EQ(0, joystick.GetAxis(1 * 2 + 1, false));
    }
    pad.Close();
    SDL_JoystickDetachVirtual(0);
    raw.reset();
}

TEST(RawInputSdlTest, ScancodesMapToDirectInputCodes)
{
    EXPECT_EQ(DIK_W, platform::DikFromScancode(SDL_SCANCODE_W));
    EXPECT_EQ(DIK_NUMPAD8, platform::DikFromScancode(SDL_SCANCODE_KP_8));
    EXPECT_EQ(DIK_NUMPADENTER, platform::DikFromScancode(SDL_SCANCODE_KP_ENTER));
    EXPECT_EQ(DIK_RMENU, platform::DikFromScancode(SDL_SCANCODE_RALT));
    EXPECT_EQ(DIK_PRIOR, platform::DikFromScancode(SDL_SCANCODE_PAGEUP));
    EXPECT_EQ(0, platform::DikFromScancode(SDL_SCANCODE_UNKNOWN));
    EXPECT_EQ(0, platform::DikFromScancode(-1));
    EXPECT_EQ(0, platform::DikFromScancode(SDL_NUM_SCANCODES));

    // Every key of a full PC keyboard reaches a distinct code: letters, digits, F1..F12,
    // the keypad and the navigation block.
    bool seen[256] = {};
    int keys = 0;
    auto check = [&](SDL_Scancode p_first, SDL_Scancode p_last) {
        for (int scancode = p_first; scancode <= p_last; ++scancode)
        {
            const uint8_t code = platform::DikFromScancode(scancode);
            EXPECT_NE(0, code) << SDL_GetScancodeName(static_cast<SDL_Scancode>(scancode));
            EXPECT_FALSE(seen[code]) << SDL_GetScancodeName(static_cast<SDL_Scancode>(scancode));
            seen[code] = true;
            ++keys;
        }
    };
    check(SDL_SCANCODE_A, SDL_SCANCODE_0);
    check(SDL_SCANCODE_RETURN, SDL_SCANCODE_BACKSLASH);
    check(SDL_SCANCODE_SEMICOLON, SDL_SCANCODE_SLASH);
    check(SDL_SCANCODE_CAPSLOCK, SDL_SCANCODE_F12);
    check(SDL_SCANCODE_PRINTSCREEN, SDL_SCANCODE_KP_PERIOD);
    check(SDL_SCANCODE_NONUSBACKSLASH, SDL_SCANCODE_APPLICATION);
    check(SDL_SCANCODE_LCTRL, SDL_SCANCODE_RGUI);
    EXPECT_EQ(105, keys);
    // The ISO key beside Enter is the backslash key's.
    EXPECT_EQ(DIK_BACKSLASH, platform::DikFromScancode(SDL_SCANCODE_NONUSHASH));
}

class RawInputWindowTest : public testsupport::GlFixture
{
};

TEST_F(RawInputWindowTest, KeyboardAndMouseFromTheWindowSystem)
{
    if (!StartApplication())
    {
        GTEST_SKIP() << "no display";
    }
    InputSystem& input = *m_app.GetInput();
    // The mouse is in relative mode while the game runs: no desktop pointer, none escaping.
    EXPECT_EQ(SDL_TRUE, SDL_GetRelativeMouseMode());
    Frame(input);
    Frame(input);

    PushKey(SDL_SCANCODE_KP_8, true);
    PushKey(SDL_SCANCODE_RIGHT, true);
    Frame(input);
    EXPECT_TRUE(input.WasPressed(ACCELERATE));
    EXPECT_TRUE(input.GetKeyboard()->IsKeyDown(DIK_RIGHT));
    Frame(input);
    EXPECT_TRUE(input.IsDown(ACCELERATE));
    EXPECT_FALSE(input.WasPressed(ACCELERATE));
    PushKey(SDL_SCANCODE_KP_8, false);
    Frame(input);
    EXPECT_TRUE(input.WasReleased(ACCELERATE));

    // A tap shorter than a frame still counts, for one poll.
    PushKey(SDL_SCANCODE_SPACE, true);
    PushKey(SDL_SCANCODE_SPACE, false);
    Frame(input);
    EXPECT_TRUE(input.WasPressed(INTERACT));
    Frame(input);
    EXPECT_FALSE(input.IsDown(INTERACT));
    EXPECT_TRUE(input.WasReleased(INTERACT));

    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.xrel = 7;
    motion.motion.yrel = -3;
    SDL_PushEvent(&motion);
    SDL_PushEvent(&motion);
    SDL_Event wheel{};
    wheel.type = SDL_MOUSEWHEEL;
    wheel.wheel.y = 1;
    wheel.wheel.direction = SDL_MOUSEWHEEL_FLIPPED;
    SDL_PushEvent(&wheel);
    PushButton(SDL_BUTTON_RIGHT, true);
    Frame(input);
    int32_t dx = 0;
    int32_t dy = 0;
    input.GetMouse()->GetDelta(dx, dy);
    EXPECT_EQ(14, dx);
    EXPECT_EQ(-6, dy);
    // A flipped wheel turned "up" is the player pulling it towards themselves.
    EXPECT_EQ(-120, input.GetMouse()->GetWheel());
    EXPECT_TRUE(input.GetMouse()->ButtonPressed(1));
    EXPECT_FALSE(input.GetMouse()->IsButtonDown(0));
    Frame(input);
    input.GetMouse()->GetDelta(dx, dy);
    EXPECT_EQ(0, dx);
    EXPECT_EQ(0, input.GetMouse()->GetWheel());
    EXPECT_TRUE(input.GetMouse()->IsButtonDown(1));

    // Losing the focus lets go of everything: the releases happen where the game cannot see them.
    PushKey(SDL_SCANCODE_W, true);
    Frame(input);
    ASSERT_TRUE(input.IsDown(SHOOT_FORWARD));
    SDL_Event focus{};
    focus.type = SDL_WINDOWEVENT;
    focus.window.event = SDL_WINDOWEVENT_FOCUS_LOST;
    SDL_PushEvent(&focus);
    Frame(input);
    EXPECT_TRUE(input.WasReleased(SHOOT_FORWARD));
    EXPECT_TRUE(input.GetMouse()->ButtonReleased(1));

    // The devices are bound to the new window after a change of resolution.
    ASSERT_TRUE(m_app.ChangeResolution(800, 600));
    EXPECT_EQ(SDL_TRUE, SDL_GetRelativeMouseMode());
    PushKey(SDL_SCANCODE_ESCAPE, true);
    Frame(input);
    EXPECT_TRUE(input.WasPressed(MENU));

    m_app.Shutdown();
    m_started = false;
    EXPECT_EQ(SDL_FALSE, SDL_GetRelativeMouseMode());
}
