#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Small bitmap files for tests, written byte by byte here rather than through the game's own
// writer, so that a test of the reader does not just check the writer's mirror image.
namespace testsupport
{

// A bottom-up BI_RGB bitmap of one colour. p_bitCount is 24 or 32; p_alpha is the fourth byte
// of each 32-bit pixel and ignored for 24-bit files.
bool WriteSolidBitmap(const std::string& p_path, int p_width, int p_height, uint8_t p_red,
                      uint8_t p_green, uint8_t p_blue, int p_bitCount, uint8_t p_alpha = 255);

// A bottom-up 24-bit BI_RGB bitmap from top-down R,G,B pixels (3 bytes each, no padding).
bool WriteBitmap24(const std::string& p_path, int p_width, int p_height,
                   const std::vector<uint8_t>& p_rgbTopDown);

// The bytes of a bottom-up BI_RGB bitmap (BITMAPINFOHEADER, no palette) of p_bitCount 24 or 32
// from top-down R,G,B,A pixels (4 bytes each); 24-bit files drop the alpha. Empty when the
// arguments make no sense. For tests that damage or patch a file before reading it.
std::vector<uint8_t> MakeBitmapBytes(int p_width, int p_height, int p_bitCount,
                                     const std::vector<uint8_t>& p_rgbaTopDown);

// Writes raw bytes to a file; true on success.
bool WriteFileBytes(const std::string& p_path, const std::vector<uint8_t>& p_bytes);

// A new, empty directory under the system's temporary directory whose name starts with
// p_tag; "" if it could not be made.
std::string MakeTempDir(const std::string& p_tag);

} // namespace testsupport
