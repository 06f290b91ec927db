#include "support/TestBitmaps.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include <unistd.h>

namespace testsupport
{

namespace
{

void Put16(std::vector<uint8_t>& p_bytes, size_t p_at, uint32_t p_value)
{
    p_bytes[p_at] = uint8_t(p_value);
    p_bytes[p_at + 1] = uint8_t(p_value >> 8);
}

void Put32(std::vector<uint8_t>& p_bytes, size_t p_at, uint32_t p_value)
{
    Put16(p_bytes, p_at, p_value & 0xFFFFu);
    Put16(p_bytes, p_at + 2, p_value >> 16);
}

} // namespace

std::vector<uint8_t> MakeBitmapBytes(int p_width, int p_height, int p_bitCount,
                                     const std::vector<uint8_t>& p_rgbaTopDown)
{
    // Test bitmaps are small; the cap keeps a mistaken call from writing gigabytes.
    if (p_width <= 0 || p_height <= 0 || p_width > 4096 || p_height > 4096 ||
        (p_bitCount != 24 && p_bitCount != 32))
        return {};
    const size_t width = size_t(p_width);
    const size_t height = size_t(p_height);
    if (p_rgbaTopDown.size() != width * height * 4)
        return {};

    const size_t bytesPerPixel = size_t(p_bitCount) / 8;
    const size_t stride = (width * bytesPerPixel + 3) / 4 * 4;
    const size_t offset = 14 + 40;
    std::vector<uint8_t> bytes(offset + stride * height, 0);
    bytes[0] = 'B';
    bytes[1] = 'M';
    Put32(bytes, 2, uint32_t(bytes.size()));
    Put32(bytes, 10, uint32_t(offset));
    Put32(bytes, 14, 40);
    Put32(bytes, 18, uint32_t(p_width));
    Put32(bytes, 22, uint32_t(p_height));
    Put16(bytes, 26, 1);
    Put16(bytes, 28, uint32_t(p_bitCount));
    Put32(bytes, 30, 0); // BI_RGB
    Put32(bytes, 34, uint32_t(stride * height));
    Put32(bytes, 38, 2835);
    Put32(bytes, 42, 2835);

    for (size_t row = 0; row < height; ++row)
    {
        // The file's first row is the bottom of the picture.
        const uint8_t* src = &p_rgbaTopDown[(height - 1 - row) * width * 4];
        uint8_t* dst = &bytes[offset + row * stride];
        for (size_t x = 0; x < width; ++x)
        {
            dst[x * bytesPerPixel + 0] = src[x * 4 + 2];
            dst[x * bytesPerPixel + 1] = src[x * 4 + 1];
            dst[x * bytesPerPixel + 2] = src[x * 4 + 0];
            if (bytesPerPixel == 4)
                dst[x * bytesPerPixel + 3] = src[x * 4 + 3];
        }
    }
    return bytes;
}

bool WriteFileBytes(const std::string& p_path, const std::vector<uint8_t>& p_bytes)
{
    std::FILE* file = std::fopen(p_path.c_str(), "wb");
    if (file == nullptr)
        return false;
    const bool written =
        p_bytes.empty() || std::fwrite(p_bytes.data(), 1, p_bytes.size(), file) == p_bytes.size();
    return std::fclose(file) == 0 && written;
}

bool WriteSolidBitmap(const std::string& p_path, int p_width, int p_height, uint8_t p_red,
                      uint8_t p_green, uint8_t p_blue, int p_bitCount, uint8_t p_alpha)
{
    if (p_width <= 0 || p_height <= 0 || p_width > 4096 || p_height > 4096)
        return false;
    std::vector<uint8_t> rgba(size_t(p_width) * size_t(p_height) * 4);
    for (size_t i = 0; i < rgba.size(); i += 4)
    {
        rgba[i + 0] = p_red;
        rgba[i + 1] = p_green;
        rgba[i + 2] = p_blue;
        rgba[i + 3] = p_alpha;
    }
    const std::vector<uint8_t> bytes = MakeBitmapBytes(p_width, p_height, p_bitCount, rgba);
    return !bytes.empty() && WriteFileBytes(p_path, bytes);
}

bool WriteBitmap24(const std::string& p_path, int p_width, int p_height,
                   const std::vector<uint8_t>& p_rgbTopDown)
{
    if (p_width <= 0 || p_height <= 0 || p_width > 4096 || p_height > 4096)
        return false;
    const size_t pixels = size_t(p_width) * size_t(p_height);
    if (p_rgbTopDown.size() != pixels * 3)
        return false;
    std::vector<uint8_t> rgba(pixels * 4, 255);
    for (size_t i = 0; i < pixels; ++i)
    {
        rgba[i * 4 + 0] = p_rgbTopDown[i * 3 + 0];
        rgba[i * 4 + 1] = p_rgbTopDown[i * 3 + 1];
        rgba[i * 4 + 2] = p_rgbTopDown[i * 3 + 2];
    }
    const std::vector<uint8_t> bytes = MakeBitmapBytes(p_width, p_height, 24, rgba);
    return !bytes.empty() && WriteFileBytes(p_path, bytes);
}

std::string MakeTempDir(const std::string& p_tag)
{
    static std::atomic<unsigned> s_counter{0};
    std::error_code error;
    const std::filesystem::path base = std::filesystem::temp_directory_path(error);
    if (error)
        return "";
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    // Process id, a counter and the clock keep parallel test processes apart; create_directory
    // reports false for a name that already exists, so a clash is simply retried.
    for (int attempt = 0; attempt < 100; ++attempt)
    {
        const std::string name = p_tag + "-" + std::to_string(::getpid()) + "-" +
                                 std::to_string(s_counter.fetch_add(1)) + "-" +
                                 std::to_string(ticks % 1000000) + "-" + std::to_string(attempt);
        const std::filesystem::path dir = base / name;
        if (std::filesystem::create_directory(dir, error) && !error)
            return dir.string();
    }
    return "";
}

} // namespace testsupport
