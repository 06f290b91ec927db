#pragma once

#include <cstdint>

// The kind of physical input a binding names; the meaning of the binding's code depends on it.
enum InputDevice : uint8_t
{
    DEVICE_KEYBOARD = 0,        // DIK_ code 0..255
    DEVICE_MOUSE = 1,           // button 0..3, MOUSE_WHEEL_UP or MOUSE_WHEEL_DOWN
    DEVICE_JOYSTICK_BUTTON = 2, // controller * 128 + button
    DEVICE_JOYSTICK_AXIS = 3,   // (controller * 8 + axis) * 2 + half (0 negative, 1 positive)
    DEVICE_NONE = 255,          // a name that denotes nothing
};

// Mouse codes of the two wheel directions.
constexpr int32_t MOUSE_WHEEL_UP = 255;
constexpr int32_t MOUSE_WHEEL_DOWN = 254;

// The one physical input an action is bound to.
struct Binding
{
    int32_t code = 0;
    uint8_t device = DEVICE_NONE;

    bool operator==(const Binding& p_other) const = default;
};
