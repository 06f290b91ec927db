#include "platform/PngFile.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>
#include <system_error>

namespace platform
{

namespace
{

// Pictures bigger than this are not game art; refusing them also caps what a hostile header
// can make the reader allocate.
constexpr png_uint_32 MAX_PNG_SIDE = 16384;

// libpng reports errors through this; it must not return, so it jumps back to the setjmp of
// whichever helper below is running.
[[noreturn]] void OnPngError(png_structp p_png, png_const_charp /*p_message*/)
{
    png_longjmp(p_png, 1);
}

void OnPngWarning(png_structp /*p_png*/, png_const_charp /*p_message*/)
{
}

struct FileCloser
{
    void operator()(std::FILE* p_file) const
    {
        std::fclose(p_file);
    }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

struct ReadStructs
{
    png_structp png = nullptr;
    png_infop info = nullptr;

    ~ReadStructs()
    {
        if (png != nullptr)
            png_destroy_read_struct(&png, info != nullptr ? &info : nullptr, nullptr);
    }
};

struct WriteStructs
{
    png_structp png = nullptr;
    png_infop info = nullptr;

    ~WriteStructs()
    {
        if (png != nullptr)
            png_destroy_write_struct(&png, info != nullptr ? &info : nullptr);
    }
};

// The helpers that call setjmp hold nothing with a destructor, so a longjmp out of libpng
// skips no C++ cleanup; the buffers they fill belong to their callers.

// Reads the header and sets libpng up to deliver 8-bit RGBA rows.
bool ReadPngHeader(png_structp p_png, png_infop p_info, std::FILE* p_file, png_uint_32* p_width,
                   png_uint_32* p_height)
{
    if (setjmp(png_jmpbuf(p_png)))
        return false;

    png_init_io(p_png, p_file);
    png_set_user_limits(p_png, MAX_PNG_SIDE, MAX_PNG_SIDE);
    png_read_info(p_png, p_info);

    const png_uint_32 width = png_get_image_width(p_png, p_info);
    const png_uint_32 height = png_get_image_height(p_png, p_info);
    if (width == 0 || height == 0 || width > MAX_PNG_SIDE || height > MAX_PNG_SIDE)
        return false;

    const int colorType = png_get_color_type(p_png, p_info);
    const bool hasTransparency = png_get_valid(p_png, p_info, PNG_INFO_tRNS) != 0;
    png_set_expand(p_png); // palette to RGB, small greys to 8 bits, tRNS to alpha
    png_set_strip_16(p_png);
    png_set_gray_to_rgb(p_png);
    if ((colorType & PNG_COLOR_MASK_ALPHA) == 0 && !hasTransparency)
        png_set_add_alpha(p_png, 0xFF, PNG_FILLER_AFTER);
    png_set_interlace_handling(p_png);
    png_read_update_info(p_png, p_info);

    if (png_get_bit_depth(p_png, p_info) != 8 || png_get_channels(p_png, p_info) != 4 ||
        png_get_rowbytes(p_png, p_info) != size_t(width) * 4)
        return false;
    *p_width = width;
    *p_height = height;
    return true;
}

bool ReadPngRows(png_structp p_png, png_infop p_info, png_bytepp p_rows)
{
    if (setjmp(png_jmpbuf(p_png)))
        return false;
    png_read_image(p_png, p_rows);
    png_read_end(p_png, p_info);
    return true;
}

bool WritePngImage(png_structp p_png, png_infop p_info, std::FILE* p_file, png_uint_32 p_width,
                   png_uint_32 p_height, png_bytepp p_rows)
{
    if (setjmp(png_jmpbuf(p_png)))
        return false;
    png_init_io(p_png, p_file);
    png_set_IHDR(p_png, p_info, p_width, p_height, 8, PNG_COLOR_TYPE_RGB_ALPHA,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(p_png, p_info);
    png_write_image(p_png, p_rows);
    png_write_end(p_png, nullptr);
    return true;
}

} // namespace

bool ReadPng(const std::string& p_path, int32_t& p_width, int32_t& p_height,
             std::vector<uint8_t>& p_rgbaTopDown)
{
    p_width = 0;
    p_height = 0;
    p_rgbaTopDown.clear();
    if (p_path.empty())
        return false;

    std::error_code error;
    if (!std::filesystem::is_regular_file(p_path, error) || error)
        return false;
    FilePtr file(std::fopen(p_path.c_str(), "rb"));
    if (!file)
        return false;

    ReadStructs structs;
    structs.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnPngError, OnPngWarning);
    if (structs.png == nullptr)
        return false;
    structs.info = png_create_info_struct(structs.png);
    if (structs.info == nullptr)
        return false;

    png_uint_32 width = 0;
    png_uint_32 height = 0;
    if (!ReadPngHeader(structs.png, structs.info, file.get(), &width, &height))
        return false;

    std::vector<uint8_t> pixels;
    std::vector<png_bytep> rows;
    try
    {
        pixels.resize(size_t(width) * size_t(height) * 4);
        rows.resize(height);
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    for (size_t y = 0; y < height; ++y)
        rows[y] = pixels.data() + y * size_t(width) * 4;
    if (!ReadPngRows(structs.png, structs.info, rows.data()))
        return false;

    p_width = int32_t(width);
    p_height = int32_t(height);
    p_rgbaTopDown = std::move(pixels);
    return true;
}

bool WritePng(const std::string& p_path, int32_t p_width, int32_t p_height,
              const std::vector<uint8_t>& p_rgbaTopDown)
{
    if (p_path.empty() || p_width <= 0 || p_height <= 0 || png_uint_32(p_width) > MAX_PNG_SIDE ||
        png_uint_32(p_height) > MAX_PNG_SIDE)
        return false;
    const size_t rowBytes = size_t(p_width) * 4;
    if (p_rgbaTopDown.size() < rowBytes * size_t(p_height))
        return false;

    std::vector<png_bytep> rows;
    try
    {
        rows.resize(size_t(p_height));
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    // libpng takes non-const rows but does not write to them when no transform is set.
    uint8_t* base = const_cast<uint8_t*>(p_rgbaTopDown.data());
    for (size_t y = 0; y < rows.size(); ++y)
        rows[y] = base + y * rowBytes;

    const std::string tempPath = p_path + ".tmp";
    std::error_code error;
    bool written = false;
    {
        FilePtr file(std::fopen(tempPath.c_str(), "wb"));
        if (!file)
            return false;
        {
            WriteStructs structs;
            structs.png =
                png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, OnPngError, OnPngWarning);
            if (structs.png != nullptr)
                structs.info = png_create_info_struct(structs.png);
            written = structs.info != nullptr &&
                      WritePngImage(structs.png, structs.info, file.get(), png_uint_32(p_width),
                                    png_uint_32(p_height), rows.data());
        }
        // Close here rather than through the deleter: a failed flush must count as failure.
        written = std::fclose(file.release()) == 0 && written;
    }
    if (written)
        std::filesystem::rename(tempPath, p_path, error);
    if (!written || error)
    {
        std::error_code ignored;
        std::filesystem::remove(tempPath, ignored);
        return false;
    }
    return true;
}

} // namespace platform
