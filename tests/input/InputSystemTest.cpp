#include "input/ControlsConfig.h"
#include "input/InputSystem.h"
#include "input/ScriptedRawInput.h"
#include "platform/DikCodes.h"
#include "support/ScriptedInput.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

using testsupport::ScriptedInput;

namespace
{
constexpr int32_t CENTRE = 32767;

size_t Count(const std::string& p_text, const std::string& p_what)
{
    size_t count = 0;
    for (size_t at = p_text.find(p_what); at != std::string::npos; at = p_text.find(p_what, at + 1))
    {
        ++count;
    }
    return count;
}

// Message boxes must go to standard error, never wait for a click.
class InputSetupTest : public ::testing::Test
{
protected:
    void SetUp() override { setenv("KORVATH_HEADLESS", "1", 1); }
};
} // namespace

TEST(InputSystemTest, KeyHeldOverSeveralFramesIsPressedOnceAndReleasedOnce)
{
    ScriptedInput input;
    input.Poll();
    EXPECT_FALSE(input->IsDown(SHOOT_FORWARD));
    EXPECT_FALSE(input->AnyKeyDown());

    input.KeyDown(DIK_W);
    input.Poll();
    EXPECT_TRUE(input->WasPressed(SHOOT_FORWARD));
    EXPECT_TRUE(input->IsDown(SHOOT_FORWARD));
    EXPECT_FALSE(input->WasReleased(SHOOT_FORWARD));
    EXPECT_TRUE(input->AnyKeyDown());
    EXPECT_TRUE(input->GetKeyboard()->KeyPressed(DIK_W));
    // Nothing else moved.
    EXPECT_FALSE(input->IsDown(SHOOT_LEFT));
    EXPECT_FALSE(input->WasPressed(MENU));

    for (int frame = 0; frame < 3; ++frame)
    {
        input.Poll();
        EXPECT_FALSE(input->WasPressed(SHOOT_FORWARD));
        EXPECT_TRUE(input->IsDown(SHOOT_FORWARD));
        EXPECT_FALSE(input->WasReleased(SHOOT_FORWARD));
    }

    input.KeyUp(DIK_W);
    input.Poll();
    EXPECT_TRUE(input->WasReleased(SHOOT_FORWARD));
    EXPECT_FALSE(input->IsDown(SHOOT_FORWARD));
    EXPECT_FALSE(input->WasPressed(SHOOT_FORWARD));
    EXPECT_TRUE(input->GetKeyboard()->KeyReleased(DIK_W));
    EXPECT_TRUE(input->GetKeyboard()->IsKeyUp(DIK_W));
    EXPECT_FALSE(input->AnyKeyDown());

    input.Poll();
    EXPECT_FALSE(input->WasReleased(SHOOT_FORWARD));

    // The last code of the keyboard counts for AnyKeyDown too; codes beyond it are never down.
    input.KeyDown(255);
    input.Poll();
    EXPECT_TRUE(input->AnyKeyDown());
    EXPECT_FALSE(input->GetKeyboard()->IsKeyDown(256));
    EXPECT_FALSE(input->GetKeyboard()->IsKeyDown(-1));
}

TEST(InputSystemTest, MouseButtonsAndMotion)
{
    ScriptedInput input;
    input->SetBinding(SHOOT_LEFT, DEVICE_MOUSE, 1);
    input.MouseButton(1, true);
    input.Poll();
    EXPECT_TRUE(input->WasPressed(SHOOT_LEFT));
    EXPECT_TRUE(input->IsDown(SHOOT_LEFT));
    input.Poll();
    EXPECT_FALSE(input->WasPressed(SHOOT_LEFT));
    EXPECT_TRUE(input->IsDown(SHOOT_LEFT));
    input.MouseButton(1, false);
    input.Poll();
    EXPECT_TRUE(input->WasReleased(SHOOT_LEFT));
    EXPECT_FALSE(input->IsDown(SHOOT_LEFT));

    // A click is not a key.
    input.MouseButton(0, true);
    input.Poll();
    EXPECT_TRUE(input.GetMouse()->ButtonPressed(0));
    EXPECT_FALSE(input->AnyKeyDown());

    // Motion is what happened since the previous poll, once.
    input.MoveMouse(3, -4);
    input.MoveMouse(2, 1);
    input.Poll();
    int32_t dx = 0;
    int32_t dy = 0;
    input.GetMouse()->GetDelta(dx, dy);
    EXPECT_EQ(5, dx);
    EXPECT_EQ(-3, dy);
    input.Poll();
    input.GetMouse()->GetDelta(dx, dy);
    EXPECT_EQ(0, dx);
    EXPECT_EQ(0, dy);

    // A binding to a mouse code that is neither a button nor a wheel direction never fires.
    input->SetBinding(SHOOT_BACK, DEVICE_MOUSE, 7);
    EXPECT_FALSE(input->IsDown(SHOOT_BACK));
    EXPECT_FALSE(input->WasPressed(SHOOT_BACK));
}

TEST(InputSystemTest, WheelIsAOneFramePressAndNeverHeld)
{
    ScriptedInput input;
    input->SetBinding(SHOOT_FORWARD, DEVICE_MOUSE, MOUSE_WHEEL_UP);
    input->SetBinding(SHOOT_BACK, DEVICE_MOUSE, MOUSE_WHEEL_DOWN);

    input.TurnWheel(1);
    input.Poll();
    EXPECT_TRUE(input->WasPressed(SHOOT_FORWARD));
    EXPECT_FALSE(input->WasPressed(SHOOT_BACK));
    EXPECT_FALSE(input->IsDown(SHOOT_FORWARD));
    EXPECT_FALSE(input->WasReleased(SHOOT_FORWARD));
    EXPECT_EQ(120, input.GetMouse()->GetWheel());

    input.Poll();
    EXPECT_FALSE(input->WasPressed(SHOOT_FORWARD));
    EXPECT_FALSE(input->WasReleased(SHOOT_FORWARD));

    input.TurnWheel(-2);
    input.Poll();
    EXPECT_TRUE(input->WasPressed(SHOOT_BACK));
    EXPECT_FALSE(input->WasPressed(SHOOT_FORWARD));
    EXPECT_FALSE(input->IsDown(SHOOT_BACK));
    input.Poll();
    EXPECT_FALSE(input->WasPressed(SHOOT_BACK));
}

TEST(InputSystemTest, JoystickButtonsOfTwoControllers)
{
    ScriptedInput input(2);
    ASSERT_EQ(2, input->GetJoystick()->GetCount());
    input->SetBinding(MENU, DEVICE_JOYSTICK_BUTTON, 2);       // JOY3: controller 0, button 2
    input->SetBinding(INTERACT, DEVICE_JOYSTICK_BUTTON, 128); // JOY129: controller 1, button 0

    input.JoyButton(1, 2, true);
    input.Poll();
    EXPECT_FALSE(input->IsDown(MENU));

    input.JoyButton(0, 2, true);
    input.Poll();
    EXPECT_TRUE(input->WasPressed(MENU));
    EXPECT_TRUE(input->IsDown(MENU));
    input.Poll();
    EXPECT_FALSE(input->WasPressed(MENU));
    EXPECT_TRUE(input->IsDown(MENU));
    input.JoyButton(0, 2, false);
    input.Poll();
    EXPECT_TRUE(input->WasReleased(MENU));
    EXPECT_FALSE(input->IsDown(MENU));

    input.JoyButton(1, 0, true);
    input.JoyButton(1, 127, true);
    input.Poll();
    EXPECT_TRUE(input->WasPressed(INTERACT));
    EXPECT_TRUE(input->GetJoystick()->IsButtonDown(255));
    EXPECT_FALSE(input->AnyKeyDown());
}

TEST(InputSystemTest, HalfAxisThresholds)
{
    ScriptedInput input(1);
    input->SetBinding(ACCELERATE, DEVICE_JOYSTICK_AXIS, 3); // AXIS4: Y, positive half
    input->SetBinding(DECELERATE, DEVICE_JOYSTICK_AXIS, 2); // AXIS3: Y, negative half
    input.Poll();
    // At rest both halves read 0; an action bound to a key has no axis.
    EXPECT_EQ(0, input->GetAxis(ACCELERATE));
    EXPECT_EQ(0, input->GetAxis(DECELERATE));
    EXPECT_EQ(-1, input->GetAxis(SHOOT_FORWARD));

    auto setY = [&](int32_t p_half) {
        input.JoyAxis(0, 1, CENTRE + p_half);
        input.Poll();
    };

    // Exactly 16383: neither down nor pressed, even after a big rise.
    setY(16383);
    EXPECT_EQ(16383, input->GetAxis(ACCELERATE));
    EXPECT_FALSE(input->IsDown(ACCELERATE));
    EXPECT_FALSE(input->WasPressed(ACCELERATE));
    // 16384 is down, but a rise of 1 is no press.
    setY(16384);
    EXPECT_TRUE(input->IsDown(ACCELERATE));
    EXPECT_FALSE(input->WasPressed(ACCELERATE));
    // A fall back to 16383 is not a release (and from 16384 not big enough anyway).
    setY(30000);
    setY(16383);
    EXPECT_FALSE(input->IsDown(ACCELERATE));
    EXPECT_FALSE(input->WasReleased(ACCELERATE));
    // A fall of 5001 to 16382 is.
    setY(21383);
    setY(16382);
    EXPECT_TRUE(input->WasReleased(ACCELERATE));

    // Creeping up by 5000 a frame reaches down without a press.
    setY(0);
    for (int32_t value = 5000; value <= 20000; value += 5000)
    {
        setY(value);
        EXPECT_FALSE(input->WasPressed(ACCELERATE)) << value;
    }
    EXPECT_TRUE(input->IsDown(ACCELERATE));
    // A rise of 5001 ending at 16384 is a press; from rest to full deflection too.
    setY(11383);
    setY(16384);
    EXPECT_TRUE(input->WasPressed(ACCELERATE));
    setY(0);
    setY(32768);
    EXPECT_TRUE(input->WasPressed(ACCELERATE));
    EXPECT_EQ(32768, input->GetAxis(ACCELERATE));
    EXPECT_EQ(0, input->GetAxis(DECELERATE));
    input.Poll();
    EXPECT_FALSE(input->WasPressed(ACCELERATE));
    // Full deflection to rest: released.
    setY(0);
    EXPECT_TRUE(input->WasReleased(ACCELERATE));

    // The negative half mirrors it: raw 0 is 32767 on the negative half.
    setY(-CENTRE);
    EXPECT_EQ(32767, input->GetAxis(DECELERATE));
    EXPECT_TRUE(input->WasPressed(DECELERATE));
    EXPECT_TRUE(input->IsDown(DECELERATE));
    EXPECT_FALSE(input->IsDown(ACCELERATE));
    EXPECT_EQ(0, input->GetJoystick()->GetAxis(2, true));
    EXPECT_EQ(32767, input->GetJoystick()->GetAxis(2, false));
}

TEST(InputSystemTest, ControllerIndicesAndCodesOfAbsentControllers)
{
    ScriptedRawInput devices;
    const int32_t first = devices.AddJoystick();
    const int32_t second = devices.AddJoystick();
    InputSystem input(&devices, nullptr);
    Joystick& joystick = *input.GetJoystick();
    ASSERT_EQ(2, joystick.GetCount());

    // The first enumerated controller is controller 1, the second controller 0.
    devices.SetJoystickButton(first, 0, true);
    devices.SetJoystickAxis(second, 0, 65535);
    input.Poll();
    EXPECT_TRUE(joystick.IsButtonDown(128));
    EXPECT_FALSE(joystick.IsButtonDown(0));
    EXPECT_EQ(32768, joystick.GetAxis(1, false));
    EXPECT_EQ(0, joystick.GetAxis(17, false));

    // Controller 2 is not attached; negative codes name nothing.
    devices.SetJoystickButton(first, 1, true);
    input.Poll();
    for (int32_t code : {256, 300, -1, -128})
    {
        EXPECT_FALSE(joystick.IsButtonDown(code)) << code;
        EXPECT_FALSE(joystick.ButtonPressed(code)) << code;
    }
    EXPECT_EQ(0, joystick.GetAxis(32, false));
    EXPECT_EQ(0, joystick.GetAxis(-2, false));
    // Such bindings are kept and simply never fire; an axis binding still reads as a value.
    input.SetBinding(MENU, DEVICE_JOYSTICK_BUTTON, 299);
    input.SetBinding(ACCELERATE, DEVICE_JOYSTICK_AXIS, 40);
    EXPECT_FALSE(input.IsDown(MENU));
    EXPECT_FALSE(input.WasPressed(ACCELERATE));
    EXPECT_EQ(0, input.GetAxis(ACCELERATE));
    EXPECT_EQ(DEVICE_JOYSTICK_BUTTON, input.GetBinding(MENU).device);
}

TEST(InputSystemTest, FindMovedAxisAndPressedButton)
{
    ScriptedInput none;
    none.Poll();
    EXPECT_EQ(-1, none->GetJoystick()->FindMovedAxis());
    EXPECT_EQ(-1, none->GetJoystick()->FindPressedButton());

    ScriptedInput input(2);
    input.Poll();
    Joystick& joystick = *input->GetJoystick();
    EXPECT_EQ(-1, joystick.FindMovedAxis());

    // A move of exactly 10000 is not enough; 10001 is.
    input.JoyAxis(1, 5, CENTRE - 10000);
    input.Poll();
    EXPECT_EQ(-1, joystick.FindMovedAxis());
    input.JoyAxis(1, 5, CENTRE - 20001);
    input.Poll();
    EXPECT_EQ((1 * 8 + 5) * 2, joystick.FindMovedAxis());
    // Held still it is no longer moving.
    input.Poll();
    EXPECT_EQ(-1, joystick.FindMovedAxis());
    // Back towards the centre, still on the negative side: the negative half again.
    input.JoyAxis(1, 5, CENTRE - 5000);
    input.Poll();
    EXPECT_EQ((1 * 8 + 5) * 2, joystick.FindMovedAxis());
    // Controller 0 comes first.
    input.JoyAxis(1, 0, 65535);
    input.JoyAxis(0, 7, 65535);
    input.Poll();
    EXPECT_EQ(7 * 2 + 1, joystick.FindMovedAxis());

    input.JoyButton(1, 3, true);
    input.JoyButton(1, 2, true);
    input.Poll();
    EXPECT_EQ(128 + 2, joystick.FindPressedButton());
    input.JoyButton(0, 100, true);
    input.Poll();
    EXPECT_EQ(100, joystick.FindPressedButton());
    // Held buttons are not pressed again.
    input.Poll();
    EXPECT_EQ(-1, joystick.FindPressedButton());
}

TEST(InputSystemTest, LostDevicesHoldNothing)
{
    ScriptedInput input(1);
    input->SetBinding(ACCELERATE, DEVICE_JOYSTICK_AXIS, 1); // AXIS2: X, positive half
    input->SetBinding(MENU, DEVICE_JOYSTICK_BUTTON, 0);
    input.KeyDown(DIK_W);
    input.MouseButton(0, true);
    input.JoyAxis(0, 0, 65535);
    input.JoyButton(0, 0, true);
    input.Poll();
    ASSERT_TRUE(input->IsDown(SHOOT_FORWARD));
    ASSERT_TRUE(input->IsDown(ACCELERATE));

    // The keyboard and the mouse cannot be read, even after re-acquiring: nothing is held.
    input.GetDevices().KeyboardFaults().read = true;
    input.GetDevices().MouseFaults().read = true;
    input.MoveMouse(10, 10);
    EXPECT_FALSE(input->GetKeyboard()->Poll());
    EXPECT_FALSE(input->GetKeyboard()->IsKeyDown(DIK_W));
    EXPECT_TRUE(input->GetKeyboard()->KeyReleased(DIK_W));
    EXPECT_FALSE(input.GetMouse()->Poll());
    EXPECT_FALSE(input.GetMouse()->IsButtonDown(0));
    int32_t dx = 1;
    int32_t dy = 1;
    input.GetMouse()->GetDelta(dx, dy);
    EXPECT_EQ(0, dx);
    EXPECT_EQ(0, dy);
    input.Poll();
    EXPECT_FALSE(input->IsDown(SHOOT_FORWARD));
    EXPECT_FALSE(input->WasReleased(SHOOT_FORWARD));

    // Readable again: the key that is still down is pressed anew.
    input.GetDevices().KeyboardFaults().read = false;
    input.GetDevices().MouseFaults().read = false;
    input.Poll();
    EXPECT_TRUE(input->WasPressed(SHOOT_FORWARD));
    EXPECT_TRUE(input.GetMouse()->ButtonPressed(0));

    // The controller is pulled out: its buttons and axes read as released, never as stale.
    input.GetDevices().SetJoystickAttached(input.Slot(0), false);
    input.Poll();
    EXPECT_TRUE(input->WasReleased(MENU));
    EXPECT_TRUE(input->WasReleased(ACCELERATE));
    EXPECT_EQ(0, input->GetAxis(ACCELERATE));
    input.Poll();
    EXPECT_FALSE(input->IsDown(MENU));
    EXPECT_EQ(1, input->GetJoystick()->GetCount());

    // Plugged back in, it is picked up at the next reset, with the bindings kept.
    input.GetDevices().SetJoystickAttached(input.Slot(0), true);
    input.Poll();
    EXPECT_FALSE(input->IsDown(MENU));
    input->Reset(nullptr);
    input.Poll();
    EXPECT_TRUE(input->IsDown(MENU));
    EXPECT_EQ(DEVICE_JOYSTICK_BUTTON, input->GetBinding(MENU).device);
}

TEST(InputSystemTest, ResetPicksUpControllersAndKeepsBindings)
{
    ScriptedRawInput devices;
    InputSystem input(&devices, nullptr);
    input.SetBinding(INTERACT, DEVICE_JOYSTICK_BUTTON, 5);
    EXPECT_EQ(0, input.GetJoystick()->GetCount());

    const int32_t plugged = devices.AddJoystick();
    devices.SetJoystickButton(plugged, 5, true);
    input.Poll();
    EXPECT_EQ(0, input.GetJoystick()->GetCount());
    EXPECT_FALSE(input.IsDown(INTERACT));

    input.Reset(nullptr);
    EXPECT_EQ(1, input.GetJoystick()->GetCount());
    EXPECT_EQ((Binding{5, DEVICE_JOYSTICK_BUTTON}), input.GetBinding(INTERACT));
    // Set-up reads the controller into both snapshots, so a held button is not a fresh press.
    EXPECT_TRUE(input.GetJoystick()->IsButtonDown(5));
    EXPECT_FALSE(input.GetJoystick()->ButtonPressed(5));
    input.Poll();
    EXPECT_TRUE(input.IsDown(INTERACT));

    // One that was pulled out is gone after the next reset.
    devices.SetJoystickAttached(plugged, false);
    input.Reset(nullptr);
    EXPECT_EQ(0, input.GetJoystick()->GetCount());
    input.Poll();
    EXPECT_FALSE(input.IsDown(INTERACT));
}

TEST(InputSystemTest, ActionsOutsideTheTableAskNothing)
{
    ScriptedInput input;
    input.KeyDown(0);
    input.Poll();
    for (int32_t action : {-1, ACTION_COUNT, 1000})
    {
        EXPECT_FALSE(input->WasPressed(action));
        EXPECT_FALSE(input->IsDown(action));
        EXPECT_FALSE(input->WasReleased(action));
        EXPECT_EQ(-1, input->GetAxis(action));
        EXPECT_EQ(DEVICE_NONE, input->GetBinding(action).device);
        input->SetBinding(action, DEVICE_KEYBOARD, 0);
    }
    // A binding to no device never fires.
    input->SetBinding(INTERACT, DEVICE_NONE, 0);
    EXPECT_FALSE(input->IsDown(INTERACT));
    EXPECT_FALSE(input->WasPressed(INTERACT));
    EXPECT_EQ(-1, input->GetAxis(INTERACT));
}

TEST_F(InputSetupTest, EveryMissingDeviceIsReportedOnceAndTheGameGoesOn)
{
    testing::internal::CaptureStderr();
    {
        InputSystem input(nullptr, nullptr);
        input.Poll();
        EXPECT_FALSE(input.AnyKeyDown());
        EXPECT_EQ(0, input.GetJoystick()->GetCount());
        input.Reset(nullptr);
    }
    const std::string noInput = testing::internal::GetCapturedStderr();
    for (const char* message :
         {"Failed to create input system.", "Failed to create keyboard device.", "Failed to set keyboard data format.",
          "Failed to set keyboard cooperative level.", "Failed create mouse interface.",
          "Failed to set mouse data format.", "Failed to set mouse cooperative level.",
          "Failed to get mouse device state."})
    {
        // Once at start and once more for the reset.
        EXPECT_EQ(message == std::string("Failed to create input system.") ? 1u : 2u,
                  Count(noInput, std::string("ERROR: ") + message + "\n"))
            << message << "\n"
            << noInput;
    }

    // No keyboard: its three boxes, and the mouse still works.
    ScriptedRawInput devices;
    devices.KeyboardFaults().create = true;
    testing::internal::CaptureStderr();
    InputSystem input(&devices, nullptr);
    const std::string noKeyboard = testing::internal::GetCapturedStderr();
    EXPECT_EQ(3u, Count(noKeyboard, "ERROR: ")) << noKeyboard;
    EXPECT_EQ(1u, Count(noKeyboard, "Failed to set keyboard cooperative level."));
    devices.SetMouseButton(0, true);
    input.Poll();
    EXPECT_TRUE(input.GetMouse()->ButtonPressed(0));
}

TEST_F(InputSetupTest, EachFailingCallShowsItsOwnMessage)
{
    ScriptedRawInput devices;
    devices.MouseFaults().dataFormat = true;
    devices.KeyboardFaults().cooperativeLevel = true;
    const int32_t pad = devices.AddJoystick();
    devices.JoystickFaults(pad)->dataFormat = true;
    devices.JoystickFaults(pad)->cooperativeLevel = true;
    testing::internal::CaptureStderr();
    InputSystem input(&devices, nullptr);
    const std::string messages = testing::internal::GetCapturedStderr();
    EXPECT_EQ("ERROR: Failed to set keyboard cooperative level.\n"
              "ERROR: Failed to set mouse data format.\n"
              "ERROR: Failed to set joystick data format.\n"
              "ERROR: Failed to set joystick cooperative level.\n",
              messages);
    EXPECT_EQ(1, input.GetJoystick()->GetCount());

    // A controller that cannot be opened is skipped without a word.
    ScriptedRawInput other;
    other.JoystickFaults(other.AddJoystick())->create = true;
    other.AddJoystick();
    testing::internal::CaptureStderr();
    InputSystem skipping(&other, nullptr);
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_EQ(1, skipping.GetJoystick()->GetCount());
}

TEST_F(InputSetupTest, ControllerThatCannotBeAcquiredAtStartIsReadOnceItCanBe)
{
    ScriptedRawInput devices;
    const int32_t pad = devices.AddJoystick();
    devices.JoystickFaults(pad)->acquire = true;
    devices.SetJoystickButton(pad, 4, true);
    devices.SetJoystickAxis(pad, 0, 0);
    testing::internal::CaptureStderr();
    InputSystem input(&devices, nullptr);
    EXPECT_EQ("ERROR: Failed to get initial joystick state.\n", testing::internal::GetCapturedStderr());
    ASSERT_EQ(1, input.GetJoystick()->GetCount());
    // Unread, it rests: no axis pushed to its end, no button down.
    EXPECT_EQ(0, input.GetJoystick()->GetAxis(0, false));
    EXPECT_FALSE(input.GetJoystick()->IsButtonDown(4));
    input.Poll();
    EXPECT_FALSE(input.GetJoystick()->IsButtonDown(4));

    devices.JoystickFaults(pad)->acquire = false;
    input.Poll();
    EXPECT_TRUE(input.GetJoystick()->ButtonPressed(4));
    EXPECT_EQ(32767, input.GetJoystick()->GetAxis(0, false));
}
