#pragma once

#include <array>
#include <cstdint>
#include <memory>

namespace platform
{

class Window;

// The device states in the layouts of DirectInput 8, which the input system reads.
constexpr int32_t RAW_KEY_COUNT = 256;
constexpr int32_t RAW_MOUSE_BUTTONS = 4;
constexpr int32_t RAW_JOYSTICK_AXES = 8;
constexpr int32_t RAW_JOYSTICK_BUTTONS = 128;
// A joystick axis reads 0..65535; this is an axis at rest.
constexpr int32_t RAW_AXIS_CENTRE = 32767;
constexpr int32_t RAW_AXIS_MAX = 65535;
// A button byte or key byte with this bit set is down.
constexpr uint8_t RAW_DOWN = 0x80;
// A point-of-view hat that points nowhere.
constexpr uint32_t RAW_POV_CENTRED = 0xFFFFFFFFu;

// The keyboard: one byte per DIK_ code.
using RawKeyState = std::array<uint8_t, RAW_KEY_COUNT>;

// DIMOUSESTATE: motion since the previous read in mouse counts, the wheel's movement
// (120 per notch, positive away from the player) and the buttons left, right, middle, fourth.
struct RawMouseState
{
    int32_t lX = 0;
    int32_t lY = 0;
    int32_t lZ = 0;
    uint8_t rgbButtons[RAW_MOUSE_BUTTONS] = {0, 0, 0, 0};
};

// The part of DIJOYSTATE2 the game reads: eight axes (X, Y, Z, X rotation, Y rotation,
// Z rotation, two sliders), four hats in hundredths of a degree and 128 buttons.
struct RawJoystickState
{
    int32_t lX = RAW_AXIS_CENTRE;
    int32_t lY = RAW_AXIS_CENTRE;
    int32_t lZ = RAW_AXIS_CENTRE;
    int32_t lRx = RAW_AXIS_CENTRE;
    int32_t lRy = RAW_AXIS_CENTRE;
    int32_t lRz = RAW_AXIS_CENTRE;
    int32_t rglSlider[2] = {RAW_AXIS_CENTRE, RAW_AXIS_CENTRE};
    uint32_t rgdwPOV[4] = {RAW_POV_CENTRED, RAW_POV_CENTRED, RAW_POV_CENTRED, RAW_POV_CENTRED};
    uint8_t rgbButtons[RAW_JOYSTICK_BUTTONS] = {};

    // Axis 0..7 in the order above.
    int32_t& Axis(int32_t p_axis);
};

// One input device, with DirectInput's life cycle: set the data format and the cooperative
// level, acquire, read, unacquire. Every call answers whether it worked.
class RawDevice
{
public:
    virtual ~RawDevice() = default;
    // The devices here always report in the layouts above; a stand-in may refuse.
    virtual bool SetDataFormat() = 0;
    // Binds the device to the game's window.
    virtual bool SetCooperativeLevel(Window* p_window) = 0;
    virtual bool Acquire() = 0;
    virtual void Unacquire() = 0;
};

class RawKeyboard : public RawDevice
{
public:
    // False (state untouched) when the device cannot be read now.
    virtual bool GetState(RawKeyState& p_keys) = 0;
};

class RawMouse : public RawDevice
{
public:
    // Motion and wheel are those since the previous read.
    virtual bool GetState(RawMouseState& p_state) = 0;
};

class RawJoystick : public RawDevice
{
public:
    // Brings the device's state up to date; false when it is gone or not acquired.
    virtual bool Poll() = 0;
    virtual bool GetState(RawJoystickState& p_state) = 0;
};

// What stands in for the DirectInput interface: makes the devices.
class RawInput
{
public:
    virtual ~RawInput() = default;
    // Null when there is no such device.
    virtual std::unique_ptr<RawKeyboard> CreateKeyboard() = 0;
    virtual std::unique_ptr<RawMouse> CreateMouse() = 0;
    // The attached game controllers, in the order they are enumerated.
    virtual int32_t GetJoystickCount() = 0;
    // Opens the p_index-th enumerated controller; null when it cannot be opened.
    virtual std::unique_ptr<RawJoystick> CreateJoystick(int32_t p_index) = 0;
};

// The keyboard, mouse and game controllers of this machine, through SDL: key states mapped
// from SDL scancodes to DIK_ codes, the mouse in relative mode while acquired, joysticks and
// gamepads (those SDL's controller database knows) in the joystick layout. Null when the
// event system cannot start. Only one may exist at a time.
std::unique_ptr<RawInput> CreateRawInput();

// The DIK_ code of an SDL scancode, 0 when the key has none.
uint8_t DikFromScancode(int32_t p_scancode);

} // namespace platform
