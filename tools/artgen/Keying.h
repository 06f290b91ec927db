#pragma once

#include <algorithm>
#include <cstdint>

// Header-only so that the unit tests can check it without linking the generator.
namespace artgen
{

constexpr uint32_t KEY_WORD = 0xFF00FF00u;      // opaque pure green in Cairo's ARGB32 word
constexpr uint32_t NEAR_KEY_WORD = 0xFF00FE00u; // what a drawn pure green becomes instead

// One premultiplied ARGB32 pixel of a picture the game draws alpha-tested: at least
// p_limit (0..255) opaque, it becomes fully opaque in its own colour; otherwise the colour key.
// A drawn colour that happens to be the key itself is nudged off it, so it stays visible.
inline uint32_t KeyPixel(uint32_t p_word, uint32_t p_limit)
{
    const uint32_t alpha = p_word >> 24;
    if (alpha == 0 || alpha < p_limit)
        return KEY_WORD;
    const uint32_t red = std::min(255u, (((p_word >> 16) & 0xFFu) * 255u + alpha / 2u) / alpha);
    const uint32_t green = std::min(255u, (((p_word >> 8) & 0xFFu) * 255u + alpha / 2u) / alpha);
    const uint32_t blue = std::min(255u, ((p_word & 0xFFu) * 255u + alpha / 2u) / alpha);
    const uint32_t word = 0xFF000000u | (red << 16) | (green << 8) | blue;
    return word == KEY_WORD ? NEAR_KEY_WORD : word;
}

} // namespace artgen
