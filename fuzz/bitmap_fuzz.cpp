// Feeds arbitrary bytes to the bitmap decoder. A decoded picture must hold the promised
// width x height x 4 bytes, and every byte of it must be readable.
#include "platform/BitmapFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    platform::DibPixels pixels;
    if (!platform::DecodeBitmap(p_data, p_size, pixels))
    {
        if (!pixels.bits.empty() || pixels.width != 0 || pixels.height != 0)
            std::abort(); // a refusal must leave nothing behind
        return 0;
    }
    if (pixels.width <= 0 || pixels.height <= 0 || pixels.width > platform::MAX_BITMAP_SIDE ||
        pixels.height > platform::MAX_BITMAP_SIDE ||
        (pixels.bitCount != 24 && pixels.bitCount != 32))
        std::abort();
    const size_t needed = size_t(pixels.width) * size_t(pixels.height) * 4;
    if (pixels.bits.size() < needed)
        std::abort();

    // Summing every byte makes the sanitizers see a read of the whole buffer.
    unsigned sum = 0;
    for (uint8_t byte : pixels.bits)
        sum += byte;
    volatile unsigned sink = sum;
    (void)sink;
    return 0;
}
