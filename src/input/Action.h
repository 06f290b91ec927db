#pragma once

#include <cstdint>

// The twelve things a player can do; each is bound to one input (see ControlsConfig).
// Their names are the keys of the section "Keys" of config.ini.
enum Action : int32_t
{
    SHOOT_FORWARD = 0, // weapon slot 1
    SHOOT_LEFT = 1,    // slot 2
    SHOOT_RIGHT = 2,   // slot 3
    SHOOT_BACK = 3,    // slot 4
    STRAFE_LEFT = 4,
    STRAFE_RIGHT = 5,
    ACCELERATE = 6,
    DECELERATE = 7,
    ROTATE_LEFT = 8,
    ROTATE_RIGHT = 9,
    INTERACT = 10,
    MENU = 11, // the in-game menu
};

constexpr int32_t ACTION_COUNT = 12;
