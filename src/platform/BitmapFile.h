#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace platform
{

// The pixels of a Windows bitmap as GetDIBits hands them over: rows bottom-up, each row
// padded to a multiple of four bytes, in the bitmap's own layout (24-bit: blue, green, red;
// 32-bit: blue, green, red and a fourth byte taken as it is in the file). Bitmaps of other
// depths (palette, 16-bit) are converted to 24-bit. The buffer holds at least
// width x height x 4 bytes so that 24-bit pixels can be widened in place.
struct DibPixels
{
    int32_t width = 0;
    int32_t height = 0;
    uint16_t bitCount = 0; // 24 or 32
    std::vector<uint8_t> bits;
};

// Largest width or height the reader accepts; bigger headers are refused before any
// allocation is made.
constexpr int32_t MAX_BITMAP_SIDE = 16384;

// Decodes a bitmap from memory. Refuses (returns false, leaves p_out empty) anything that is
// not a complete, sensible bitmap: bad magic, truncated headers or pixel data, a width or
// height that is zero, negative (other than a top-down height) or above MAX_BITMAP_SIDE,
// compressions other than BI_RGB and BI_BITFIELDS, unknown depths.
bool DecodeBitmap(const uint8_t* p_data, size_t p_size, DibPixels& p_out);

// Reads and decodes a bitmap file; p_path is used as it is (callers resolve game names).
bool ReadBitmapFile(const std::string& p_path, DibPixels& p_out);

// Writes a 32-bit BI_RGB bitmap (bottom-up) from top-down RGBA pixels (4 bytes each).
// With p_alpha false it writes a 24-bit bitmap and drops the alpha. The file is written to a
// temporary name and renamed, so a failure leaves no partial file.
bool WriteBitmapFile(const std::string& p_path, int32_t p_width, int32_t p_height,
                     const std::vector<uint8_t>& p_rgbaTopDown, bool p_alpha);

} // namespace platform
