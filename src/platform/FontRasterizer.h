#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform
{

// One anti-aliased glyph: an 8-bit coverage bitmap, rows top-down.
struct GlyphBitmap
{
    int32_t width = 0;
    int32_t height = 0;
    int32_t left = 0;    // pixels from the pen position to the bitmap's left edge
    int32_t top = 0;     // pixels from the baseline up to the bitmap's top row
    int32_t advance = 0; // whole pixels the pen moves on, as GetCharWidth32 reports it
    std::vector<uint8_t> coverage; // width x height, 0 transparent .. 255 solid
};

// Stands in for CreateFont + GetCharWidth32 + wglUseFontBitmaps: finds the installed font
// that fontconfig matches for a Windows typeface name ("Arial" -> Liberation Sans, "Tahoma"
// -> DejaVu Sans or Liberation Sans, unknown names -> the default sans) and renders the
// character codes of the Windows-1252 code page through FreeType.
class FontRasterizer
{
public:
    FontRasterizer();
    ~FontRasterizer();
    FontRasterizer(const FontRasterizer&) = delete;
    FontRasterizer& operator=(const FontRasterizer&) = delete;

    // p_pixelHeight is the character (em) height in pixels, as a negative CreateFont height
    // asks for. Returns false when no font at all could be opened or the height is not
    // positive; the rasterizer then stays closed.
    bool Open(const std::string& p_typeFace, int32_t p_pixelHeight, bool p_bold, bool p_italic,
              bool p_underline, bool p_strikeOut);
    bool IsOpen() const;
    void Close();

    // The file that fontconfig chose (for tests and diagnostics).
    const std::string& GetFontFile() const;

    int32_t GetAscent() const;  // pixels above the baseline
    int32_t GetDescent() const; // pixels below the baseline (positive)

    // Renders the character whose Windows-1252 code is p_code. Codes the code page leaves
    // undefined (and control codes) render as an empty glyph that still has an advance, as
    // Windows gives them the default character's width. False only when not open.
    bool RenderGlyph(uint8_t p_code, GlyphBitmap& p_glyph);

    // Unicode code point of a Windows-1252 byte (0 for the five undefined codes).
    static uint32_t Cp1252ToUnicode(uint8_t p_code);

private:
    struct Impl;
    std::unique_ptr<Impl> m_pImpl;
};

} // namespace platform
