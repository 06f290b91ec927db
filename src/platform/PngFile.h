#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform
{

// Writes top-down RGBA pixels (4 bytes each) as a PNG file.
bool WritePng(const std::string& p_path, int32_t p_width, int32_t p_height,
              const std::vector<uint8_t>& p_rgbaTopDown);

// Reads any PNG file into top-down RGBA pixels (4 bytes each).
bool ReadPng(const std::string& p_path, int32_t& p_width, int32_t& p_height,
             std::vector<uint8_t>& p_rgbaTopDown);

} // namespace platform
