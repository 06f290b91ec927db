#pragma once

#include <cstdint>

// What a mode's Update asks of the game; any other value keeps the mode running.
enum ModeCodeValue : int32_t
{
    MODECODE_MENUS = 0,
    MODECODE_HUB = 1,
    MODECODE_MISSION = 2,
    MODECODE_SLIDESHOW = 3,
    MODECODE_STAY = 6,
    MODECODE_QUIT = 7,
    MODECODE_CREDITS = 255,
};
