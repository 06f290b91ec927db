#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

// Kept free of Cairo and header-only so the unit tests can check it without linking the
// generator.
namespace artgen
{

// Turns pixels in Cairo's ARGB32 layout (one native-endian 32-bit word per pixel holding
// alpha, red, green, blue, colours premultiplied by alpha; rows p_stride bytes apart) into
// top-down R,G,B,A bytes as the bitmap and PNG writers take them.
//
// With p_unpremultiply the colours are divided by alpha, which is what a file with an alpha
// channel needs; fully transparent pixels become 0,0,0,0. Without it the colours stay
// premultiplied, which is exactly the picture composited over black: the right thing for a
// file whose alpha is dropped.
//
// Returns false (and leaves p_rgba empty) for a size that makes no sense or when the memory
// cannot be had.
inline bool ArgbToRgba(const uint8_t* p_pixels, size_t p_stride, int32_t p_width,
                       int32_t p_height, bool p_unpremultiply, std::vector<uint8_t>& p_rgba)
{
    p_rgba.clear();
    if (p_pixels == nullptr || p_width <= 0 || p_height <= 0 ||
        p_stride < size_t(p_width) * 4)
        return false;
    const size_t width = size_t(p_width);
    const size_t height = size_t(p_height);
    try
    {
        p_rgba.resize(width * height * 4);
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }

    uint8_t* out = p_rgba.data();
    for (size_t y = 0; y < height; ++y)
    {
        const uint8_t* row = p_pixels + y * p_stride;
        for (size_t x = 0; x < width; ++x, out += 4)
        {
            uint32_t word = 0;
            std::memcpy(&word, row + x * 4, 4);
            const uint32_t alpha = word >> 24;
            uint32_t red = (word >> 16) & 0xFFu;
            uint32_t green = (word >> 8) & 0xFFu;
            uint32_t blue = word & 0xFFu;
            if (p_unpremultiply)
            {
                if (alpha == 0)
                {
                    red = green = blue = 0;
                }
                else if (alpha < 255)
                {
                    // Rounded, and clamped because a damaged surface may hold colour > alpha.
                    red = (red * 255 + alpha / 2) / alpha;
                    green = (green * 255 + alpha / 2) / alpha;
                    blue = (blue * 255 + alpha / 2) / alpha;
                    red = red > 255 ? 255 : red;
                    green = green > 255 ? 255 : green;
                    blue = blue > 255 ? 255 : blue;
                }
            }
            out[0] = uint8_t(red);
            out[1] = uint8_t(green);
            out[2] = uint8_t(blue);
            out[3] = uint8_t(alpha);
        }
    }
    return true;
}

} // namespace artgen
