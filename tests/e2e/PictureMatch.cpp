#include "e2e/PictureMatch.h"

#include "platform/BitmapFile.h"
#include "platform/PngFile.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace e2e
{

namespace
{
constexpr int SMALL_PICTURE = 128;
constexpr int MIN_COMPARED = 200;
} // namespace

double PictureMatch(const std::string& p_screenshot, const std::string& p_bitmap, int p_x, int p_y)
{
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> shot;
    platform::DibPixels picture;
    if (!platform::ReadPng(p_screenshot, width, height, shot) || !platform::ReadBitmapFile(p_bitmap, picture))
    {
        return -1.0;
    }
    const int bytes = picture.bitCount / 8;
    const size_t stride = (static_cast<size_t>(picture.width) * bytes + 3) & ~size_t{3};
    // Small pictures (ship sprites) are compared pixel by pixel, larger ones on a sparser grid.
    const int step = picture.width < SMALL_PICTURE && picture.height < SMALL_PICTURE ? 1 : 2;
    int compared = 0;
    int matching = 0;
    for (int y = 0; y < picture.height; y += step)
    {
        for (int x = 0; x < picture.width; x += step)
        {
            const uint8_t* b = &picture.bits[(picture.height - 1 - y) * stride + x * bytes];
            if (b[0] + b[1] + b[2] < 240 || (bytes == 4 && b[3] < 250))
            {
                continue;
            }
            const int sx = p_x + x;
            const int sy = p_y + y;
            if (sx < 0 || sy < 0 || sx >= width || sy >= height)
            {
                continue;
            }
            const uint8_t* s = &shot[(static_cast<size_t>(sy) * width + sx) * 4];
            ++compared;
            if (std::abs(s[0] - b[2]) < 40 && std::abs(s[1] - b[1]) < 40 && std::abs(s[2] - b[0]) < 40)
            {
                ++matching;
            }
        }
    }
    return compared >= MIN_COMPARED ? static_cast<double>(matching) / compared : 0.0;
}

} // namespace e2e
