#include "platform/BitmapFile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <new>
#include <system_error>

namespace platform
{

namespace
{

constexpr size_t FILE_HEADER_SIZE = 14;
constexpr uint32_t CORE_HEADER_SIZE = 12;
constexpr uint32_t INFO_HEADER_SIZE = 40;
constexpr uint32_t V2_HEADER_SIZE = 52;
constexpr uint32_t V3_HEADER_SIZE = 56;
constexpr uint32_t V4_HEADER_SIZE = 108;
constexpr uint32_t V5_HEADER_SIZE = 124;

constexpr uint32_t BI_RGB = 0;
constexpr uint32_t BI_BITFIELDS = 3;
constexpr uint32_t BI_ALPHABITFIELDS = 6;

constexpr int32_t PIXELS_PER_METRE = 2835; // 72 dpi, what Windows writes

// Anything bigger than the largest legal pixel block plus generous room for palettes and
// colour profiles is not a bitmap the game can use; refusing it keeps a stray huge file
// from being read into memory.
constexpr uint64_t MAX_FILE_BYTES =
    uint64_t(MAX_BITMAP_SIDE) * uint64_t(MAX_BITMAP_SIDE) * 4u + (uint64_t(64) << 20);

uint16_t ReadU16(const uint8_t* p_at)
{
    return uint16_t(p_at[0] | (p_at[1] << 8));
}

uint32_t ReadU32(const uint8_t* p_at)
{
    return uint32_t(p_at[0]) | (uint32_t(p_at[1]) << 8) | (uint32_t(p_at[2]) << 16) |
           (uint32_t(p_at[3]) << 24);
}

int32_t ReadI32(const uint8_t* p_at)
{
    return int32_t(ReadU32(p_at));
}

void PutU16(uint8_t* p_at, uint16_t p_value)
{
    p_at[0] = uint8_t(p_value);
    p_at[1] = uint8_t(p_value >> 8);
}

void PutU32(uint8_t* p_at, uint32_t p_value)
{
    p_at[0] = uint8_t(p_value);
    p_at[1] = uint8_t(p_value >> 8);
    p_at[2] = uint8_t(p_value >> 16);
    p_at[3] = uint8_t(p_value >> 24);
}

// One colour channel described by a BI_BITFIELDS mask, scaled to 0..255.
struct Channel
{
    uint32_t mask = 0;
    int shift = 0;
    int bits = 0;

    // Masks must be a single run of bits; anything else is a damaged header.
    bool Init(uint32_t p_mask)
    {
        mask = p_mask;
        shift = 0;
        bits = 0;
        if (p_mask == 0)
            return true;
        while (((p_mask >> shift) & 1u) == 0)
            ++shift;
        uint32_t run = p_mask >> shift;
        while (bits < 32 && ((run >> bits) & 1u) != 0)
            ++bits;
        return bits == 32 || (run >> bits) == 0;
    }

    uint8_t Extract(uint32_t p_pixel, uint8_t p_absent) const
    {
        if (bits == 0)
            return p_absent;
        uint32_t value = (p_pixel & mask) >> shift;
        if (bits >= 8)
            return uint8_t(value >> (bits - 8));
        uint32_t maxValue = (1u << bits) - 1u;
        return uint8_t((value * 255u + maxValue / 2u) / maxValue);
    }
};

struct Header
{
    uint32_t headerSize = 0;
    int32_t width = 0;
    int32_t height = 0; // as in the file; negative for top-down
    uint16_t bitCount = 0;
    uint32_t compression = BI_RGB;
    uint32_t colorsUsed = 0;
    uint32_t masks[4] = {0, 0, 0, 0}; // red, green, blue, alpha
    bool hasAlphaMask = false;
    size_t paletteStart = 0;
    size_t paletteEntrySize = 4;
    uint32_t pixelOffset = 0;
};

bool ParseHeader(const uint8_t* p_data, size_t p_size, Header& p_header)
{
    if (p_data == nullptr || p_size < FILE_HEADER_SIZE + 4)
        return false;
    if (p_data[0] != 'B' || p_data[1] != 'M')
        return false;
    p_header.pixelOffset = ReadU32(p_data + 10);

    const uint8_t* info = p_data + FILE_HEADER_SIZE;
    p_header.headerSize = ReadU32(info);
    const uint32_t hs = p_header.headerSize;
    if (hs != CORE_HEADER_SIZE && hs != INFO_HEADER_SIZE && hs != V2_HEADER_SIZE &&
        hs != V3_HEADER_SIZE && hs != V4_HEADER_SIZE && hs != V5_HEADER_SIZE)
        return false;
    if (p_size - FILE_HEADER_SIZE < hs)
        return false;

    uint16_t planes = 0;
    if (hs == CORE_HEADER_SIZE)
    {
        // OS/2-style header: 16-bit unsigned sizes, RGB triples in the palette.
        p_header.width = ReadU16(info + 4);
        p_header.height = ReadU16(info + 6);
        planes = ReadU16(info + 8);
        p_header.bitCount = ReadU16(info + 10);
        p_header.paletteEntrySize = 3;
        if (p_header.bitCount != 1 && p_header.bitCount != 4 && p_header.bitCount != 8 &&
            p_header.bitCount != 24)
            return false;
    }
    else
    {
        p_header.width = ReadI32(info + 4);
        p_header.height = ReadI32(info + 8);
        planes = ReadU16(info + 12);
        p_header.bitCount = ReadU16(info + 14);
        p_header.compression = ReadU32(info + 16);
        p_header.colorsUsed = ReadU32(info + 32);
    }
    if (planes != 1)
        return false;

    size_t afterHeader = FILE_HEADER_SIZE + hs;
    const uint32_t compression = p_header.compression;
    const uint16_t bitCount = p_header.bitCount;
    if (compression == BI_BITFIELDS || compression == BI_ALPHABITFIELDS)
    {
        if (bitCount != 16 && bitCount != 32)
            return false;
        // A V2 header has room for three masks only; V3 and later carry an alpha mask too.
        size_t maskCount = 4;
        if (hs == INFO_HEADER_SIZE)
            maskCount = compression == BI_ALPHABITFIELDS ? 4 : 3;
        else if (hs == V2_HEADER_SIZE)
            maskCount = 3;
        const bool withAlpha = maskCount == 4;
        const uint8_t* maskAt = info + INFO_HEADER_SIZE;
        if (hs == INFO_HEADER_SIZE)
        {
            // Plain info header: the masks follow it, ahead of any palette.
            if (p_size - afterHeader < maskCount * 4)
                return false;
            afterHeader += maskCount * 4;
        }
        for (size_t i = 0; i < maskCount; ++i)
            p_header.masks[i] = ReadU32(maskAt + i * 4);
        p_header.hasAlphaMask = withAlpha && p_header.masks[3] != 0;
    }
    else if (compression != BI_RGB)
    {
        return false; // RLE, JPEG and PNG payloads are not used by the game
    }
    else if (bitCount != 1 && bitCount != 4 && bitCount != 8 && bitCount != 16 &&
             bitCount != 24 && bitCount != 32)
    {
        return false;
    }

    if (p_header.width <= 0 || p_header.width > MAX_BITMAP_SIDE)
        return false;
    if (p_header.height == 0 || p_header.height < -MAX_BITMAP_SIDE ||
        p_header.height > MAX_BITMAP_SIDE)
        return false;
    if (p_header.pixelOffset < afterHeader || p_header.pixelOffset > p_size)
        return false;
    p_header.paletteStart = afterHeader;
    return true;
}

bool Allocate(std::vector<uint8_t>& p_bits, size_t p_size)
{
    try
    {
        p_bits.assign(p_size, 0);
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    catch (const std::length_error&)
    {
        return false;
    }
    return true;
}

} // namespace

bool DecodeBitmap(const uint8_t* p_data, size_t p_size, DibPixels& p_out)
{
    p_out = DibPixels{};

    Header header;
    if (!ParseHeader(p_data, p_size, header))
        return false;

    const uint64_t width = uint64_t(header.width);
    const bool topDown = header.height < 0;
    const uint64_t height = topDown ? uint64_t(-int64_t(header.height)) : uint64_t(header.height);

    // Both sides are at most MAX_BITMAP_SIDE here, so none of this can overflow 64 bits.
    const uint64_t srcStride = ((width * header.bitCount + 31u) / 32u) * 4u;
    const uint64_t available = p_size - header.pixelOffset;
    if (srcStride * height > available)
        return false;

    const uint16_t outBitCount = header.bitCount == 32 ? 32 : 24;
    const uint64_t outStride = ((width * outBitCount + 31u) / 32u) * 4u;
    const uint64_t outSize = std::max(outStride * height, width * height * 4u);

    std::array<uint8_t, 256 * 3> palette{}; // B, G, R; entries past the file's stay black
    size_t paletteCount = 0;
    if (header.bitCount <= 8)
    {
        const size_t maxEntries = size_t(1) << header.bitCount;
        size_t declared = header.colorsUsed == 0 ? maxEntries : header.colorsUsed;
        declared = std::min(declared, maxEntries);
        const size_t room = (header.pixelOffset - header.paletteStart) / header.paletteEntrySize;
        paletteCount = std::min(declared, room);
        for (size_t i = 0; i < paletteCount; ++i)
        {
            const uint8_t* entry = p_data + header.paletteStart + i * header.paletteEntrySize;
            palette[i * 3 + 0] = entry[0];
            palette[i * 3 + 1] = entry[1];
            palette[i * 3 + 2] = entry[2];
        }
    }

    Channel red, green, blue, alpha;
    const bool bitfields = header.compression != BI_RGB;
    if (bitfields)
    {
        if (!red.Init(header.masks[0]) || !green.Init(header.masks[1]) ||
            !blue.Init(header.masks[2]) ||
            !alpha.Init(header.hasAlphaMask ? header.masks[3] : 0))
            return false;
    }
    else if (header.bitCount == 16)
    {
        red.Init(0x7C00u);
        green.Init(0x03E0u);
        blue.Init(0x001Fu);
    }

    DibPixels result;
    result.width = header.width;
    result.height = int32_t(height);
    result.bitCount = outBitCount;
    if (!Allocate(result.bits, size_t(outSize)))
        return false;

    const uint8_t* pixels = p_data + header.pixelOffset;
    const size_t w = size_t(width);
    for (uint64_t row = 0; row < height; ++row)
    {
        const uint8_t* src = pixels + row * srcStride;
        // A top-down file's first row is the picture's top; the buffer starts at the bottom.
        const uint64_t outRow = topDown ? height - 1 - row : row;
        uint8_t* dst = result.bits.data() + outRow * outStride;

        switch (header.bitCount)
        {
        case 24:
            std::copy(src, src + w * 3, dst);
            break;
        case 32:
            if (!bitfields)
            {
                std::copy(src, src + w * 4, dst);
                break;
            }
            for (size_t x = 0; x < w; ++x)
            {
                const uint32_t value = ReadU32(src + x * 4);
                dst[x * 4 + 0] = blue.Extract(value, 0);
                dst[x * 4 + 1] = green.Extract(value, 0);
                dst[x * 4 + 2] = red.Extract(value, 0);
                dst[x * 4 + 3] = alpha.Extract(value, 255);
            }
            break;
        case 16:
            for (size_t x = 0; x < w; ++x)
            {
                const uint32_t value = ReadU16(src + x * 2);
                dst[x * 3 + 0] = blue.Extract(value, 0);
                dst[x * 3 + 1] = green.Extract(value, 0);
                dst[x * 3 + 2] = red.Extract(value, 0);
            }
            break;
        default: // 1, 4 or 8 bits per palette index, most significant bits first
        {
            const unsigned bits = header.bitCount;
            const unsigned perByte = 8u / bits;
            const unsigned indexMask = (1u << bits) - 1u;
            for (size_t x = 0; x < w; ++x)
            {
                const unsigned shift = 8u - bits * unsigned(x % perByte + 1);
                const size_t index = (src[x / perByte] >> shift) & indexMask;
                if (index < paletteCount)
                    std::copy(&palette[index * 3], &palette[index * 3] + 3, dst + x * 3);
                // else: the buffer is already zero, i.e. black
            }
            break;
        }
        }
    }

    p_out = std::move(result);
    return true;
}

bool ReadBitmapFile(const std::string& p_path, DibPixels& p_out)
{
    p_out = DibPixels{};
    if (p_path.empty())
        return false;

    std::error_code error;
    const std::filesystem::path path(p_path);
    if (!std::filesystem::is_regular_file(path, error) || error)
        return false;
    const uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > MAX_FILE_BYTES)
        return false;

    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    std::vector<uint8_t> data;
    if (!Allocate(data, size_t(size)))
        return false;
    if (size > 0 && !in.read(reinterpret_cast<char*>(data.data()), std::streamsize(size)))
        return false;
    return DecodeBitmap(data.data(), data.size(), p_out);
}

bool WriteBitmapFile(const std::string& p_path, int32_t p_width, int32_t p_height,
                     const std::vector<uint8_t>& p_rgbaTopDown, bool p_alpha)
{
    if (p_path.empty() || p_width <= 0 || p_height <= 0 || p_width > MAX_BITMAP_SIDE ||
        p_height > MAX_BITMAP_SIDE)
        return false;
    const size_t width = size_t(p_width);
    const size_t height = size_t(p_height);
    if (p_rgbaTopDown.size() < width * height * 4)
        return false;

    const uint16_t bitCount = p_alpha ? 32 : 24;
    const size_t stride = ((width * bitCount + 31) / 32) * 4;
    const size_t imageSize = stride * height;
    const size_t offset = FILE_HEADER_SIZE + INFO_HEADER_SIZE;
    const size_t fileSize = offset + imageSize;
    if (fileSize > UINT32_MAX)
        return false;

    std::vector<uint8_t> file;
    if (!Allocate(file, fileSize))
        return false;
    uint8_t* at = file.data();
    at[0] = 'B';
    at[1] = 'M';
    PutU32(at + 2, uint32_t(fileSize));
    PutU32(at + 10, uint32_t(offset));
    at += FILE_HEADER_SIZE;
    PutU32(at + 0, INFO_HEADER_SIZE);
    PutU32(at + 4, uint32_t(p_width));
    PutU32(at + 8, uint32_t(p_height)); // positive: bottom-up
    PutU16(at + 12, 1);
    PutU16(at + 14, bitCount);
    PutU32(at + 16, BI_RGB);
    PutU32(at + 20, uint32_t(imageSize));
    PutU32(at + 24, uint32_t(PIXELS_PER_METRE));
    PutU32(at + 28, uint32_t(PIXELS_PER_METRE));
    // Colours used and important stay 0.

    const size_t bytesPerPixel = bitCount / 8u;
    for (size_t y = 0; y < height; ++y)
    {
        const uint8_t* src = p_rgbaTopDown.data() + (height - 1 - y) * width * 4;
        uint8_t* dst = file.data() + offset + y * stride;
        for (size_t x = 0; x < width; ++x)
        {
            dst[x * bytesPerPixel + 0] = src[x * 4 + 2];
            dst[x * bytesPerPixel + 1] = src[x * 4 + 1];
            dst[x * bytesPerPixel + 2] = src[x * 4 + 0];
            if (p_alpha)
                dst[x * bytesPerPixel + 3] = src[x * 4 + 3];
        }
    }

    const std::string tempPath = p_path + ".tmp";
    std::FILE* out = std::fopen(tempPath.c_str(), "wb");
    if (out == nullptr)
        return false;
    const bool written = std::fwrite(file.data(), 1, file.size(), out) == file.size();
    const bool closed = std::fclose(out) == 0;
    std::error_code error;
    if (!written || !closed)
    {
        std::filesystem::remove(tempPath, error);
        return false;
    }
    std::filesystem::rename(tempPath, p_path, error);
    if (error)
    {
        std::error_code ignored;
        std::filesystem::remove(tempPath, ignored);
        return false;
    }
    return true;
}

} // namespace platform
