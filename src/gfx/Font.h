#pragma once

#include <cstdarg>
#include <cstdint>

// Style bits of a font.
enum FontStyle : int32_t
{
    FONT_BOLD = 1,
    FONT_ITALIC = 2,
    FONT_UNDERLINE = 4,
    FONT_STRIKEOUT = 8,
};

// One typeface at one size and style, as 256 display lists of anti-aliased glyphs (one per
// Windows-1252 code) and the advance width of every code in logical units.
class Font
{
public:
    // Logical pixels per inch, as the desktop reports them.
    static constexpr int32_t LOGICAL_DPI = 96;
    static constexpr int32_t TEXT_BUFFER_SIZE = 1024;

    Font();
    Font(const char* p_typeFace, int32_t p_pointSize, int32_t p_flags);
    ~Font();
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    bool Create(const char* p_typeFace, int32_t p_pointSize, int32_t p_flags);
    void DeleteLists();

    // Text is placed by the top-left corner of its line: the baseline goes to y + height.
    bool SetPosition(int32_t p_x, int32_t p_y);
    bool Print(int32_t p_x, int32_t p_y, const char* p_format, ...) __attribute__((format(printf, 4, 5)));
    bool Print(double p_red, double p_green, double p_blue, double p_alpha, int32_t p_x, int32_t p_y,
               const char* p_format, ...) __attribute__((format(printf, 8, 9)));

    float GetTextWidth(const char* p_string) const;
    int32_t GetHeight() const { return m_height; }
    float GetCharWidth(uint8_t p_code) const { return m_widths[p_code]; }
    uint32_t GetListBase() const { return m_listBase; }

    // The character height Windows would have been asked for, in pixels of a display
    // p_displayHeight tall, for a font whose logical height is p_logicalHeight.
    static int32_t PixelHeight(int32_t p_logicalHeight, int32_t p_displayHeight);
    // Point size to logical height at the logical DPI, rounded like MulDiv.
    static int32_t LogicalHeight(int32_t p_pointSize);

private:
    bool PrintV(int32_t p_x, int32_t p_y, const char* p_format, va_list p_args);
    bool PrintBuffer(int32_t p_x, int32_t p_y, int p_length);

    uint32_t m_listBase;
    int32_t m_height;
    float m_widths[256];
    uint32_t m_atlas;     // texture holding every glyph of the lists
    int32_t m_penX;       // where SetPosition put the baseline origin
    int32_t m_penY;
    float m_pixelScaleX;  // logical units per display pixel when the lists were made
    float m_pixelScaleY;
};
