#include "gfx/Font.h"

#include "app/Application.h"
#include "platform/FontRasterizer.h"
#include "platform/Gl.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <vector>

namespace
{
// The one buffer every formatted string passes through before it is drawn.
char s_textBuffer[Font::TEXT_BUFFER_SIZE];

constexpr int32_t ATLAS_WIDTH = 1024;
constexpr int32_t GLYPH_COUNT = 255; // codes 0..254 get glyphs; the list of 255 stays empty

void GetDisplaySize(int32_t& p_width, int32_t& p_height)
{
    p_width = 1024;
    p_height = 768;
    if (g_pApplication != nullptr && g_pApplication->GetDisplayWidth() > 0 && g_pApplication->GetDisplayHeight() > 0)
    {
        p_width = g_pApplication->GetDisplayWidth();
        p_height = g_pApplication->GetDisplayHeight();
    }
}
} // namespace

Font::Font()
    : m_listBase(0), m_height(0), m_widths(), m_atlas(0), m_penX(0), m_penY(0), m_pixelScaleX(1.0f),
      m_pixelScaleY(1.0f)
{
}

Font::Font(const char* p_typeFace, int32_t p_pointSize, int32_t p_flags) : Font()
{
    Create(p_typeFace, p_pointSize, p_flags);
}

Font::~Font()
{
    DeleteLists();
}

int32_t Font::LogicalHeight(int32_t p_pointSize)
{
    // MulDiv(size, dpi, 72): rounds half away from zero.
    const int64_t product = static_cast<int64_t>(p_pointSize) * LOGICAL_DPI;
    if (product >= 0)
    {
        return static_cast<int32_t>((product + 36) / 72);
    }
    return -static_cast<int32_t>((-product + 36) / 72);
}

int32_t Font::PixelHeight(int32_t p_logicalHeight, int32_t p_displayHeight)
{
    return static_cast<int32_t>((static_cast<int64_t>(p_logicalHeight) * p_displayHeight + 384) / 768);
}

bool Font::Create(const char* p_typeFace, int32_t p_pointSize, int32_t p_flags)
{
    if (p_typeFace == nullptr)
    {
        return false;
    }
    int32_t displayWidth = 0;
    int32_t displayHeight = 0;
    GetDisplaySize(displayWidth, displayHeight);

    const int32_t height = LogicalHeight(p_pointSize);
    const int32_t pixelHeight = PixelHeight(height, displayHeight);
    platform::FontRasterizer rasterizer;
    if (pixelHeight <= 0 ||
        !rasterizer.Open(p_typeFace, pixelHeight, (p_flags & FONT_BOLD) != 0, (p_flags & FONT_ITALIC) != 0,
                         (p_flags & FONT_UNDERLINE) != 0, (p_flags & FONT_STRIKEOUT) != 0))
    {
        return false;
    }
    m_height = height;

    std::vector<platform::GlyphBitmap> glyphs(256);
    for (int code = 0; code < 256; ++code)
    {
        rasterizer.RenderGlyph(static_cast<uint8_t>(code), glyphs[code]);
        m_widths[code] = static_cast<float>(glyphs[code].advance) * 1024.0f / static_cast<float>(displayWidth);
    }

    const GLuint base = glGenLists(256);
    if (base == 0)
    {
        return false;
    }

    // Shelf-pack the glyphs into one alpha texture, a pixel apart so that filtering never
    // bleeds a neighbour in.
    std::vector<int32_t> atlasX(GLYPH_COUNT, 0);
    std::vector<int32_t> atlasY(GLYPH_COUNT, 0);
    int32_t penX = 1;
    int32_t penY = 1;
    int32_t shelfHeight = 0;
    for (int code = 0; code < GLYPH_COUNT; ++code)
    {
        const platform::GlyphBitmap& glyph = glyphs[code];
        if (glyph.width <= 0 || glyph.height <= 0)
        {
            continue;
        }
        if (penX + glyph.width + 1 > ATLAS_WIDTH)
        {
            penX = 1;
            penY += shelfHeight + 1;
            shelfHeight = 0;
        }
        atlasX[code] = penX;
        atlasY[code] = penY;
        penX += glyph.width + 1;
        shelfHeight = std::max(shelfHeight, glyph.height);
    }
    const int32_t atlasHeight = penY + shelfHeight + 1;
    std::vector<uint8_t> atlas(static_cast<size_t>(ATLAS_WIDTH) * atlasHeight, 0);
    for (int code = 0; code < GLYPH_COUNT; ++code)
    {
        const platform::GlyphBitmap& glyph = glyphs[code];
        for (int32_t row = 0; row < glyph.height; ++row)
        {
            for (int32_t col = 0; col < glyph.width; ++col)
            {
                atlas[static_cast<size_t>(atlasY[code] + row) * ATLAS_WIDTH + atlasX[code] + col] =
                    glyph.coverage[static_cast<size_t>(row) * glyph.width + col];
            }
        }
    }
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, ATLAS_WIDTH, atlasHeight, 0, GL_ALPHA, GL_UNSIGNED_BYTE, atlas.data());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);

    // Each list draws its glyph at the pen (on the baseline) and moves the pen on, the way
    // glyph bitmaps move the raster position.
    const float scaleX = 1024.0f / static_cast<float>(displayWidth);
    const float scaleY = 768.0f / static_cast<float>(displayHeight);
    const float texelU = 1.0f / static_cast<float>(ATLAS_WIDTH);
    const float texelV = 1.0f / static_cast<float>(atlasHeight);
    for (int code = 0; code < 256; ++code)
    {
        glNewList(base + code, GL_COMPILE);
        if (code < GLYPH_COUNT)
        {
            const platform::GlyphBitmap& glyph = glyphs[code];
            if (glyph.width > 0 && glyph.height > 0)
            {
                const float x0 = static_cast<float>(glyph.left) * scaleX;
                const float y0 = static_cast<float>(-glyph.top) * scaleY;
                const float x1 = static_cast<float>(glyph.left + glyph.width) * scaleX;
                const float y1 = static_cast<float>(glyph.height - glyph.top) * scaleY;
                const float u0 = static_cast<float>(atlasX[code]) * texelU;
                const float v0 = static_cast<float>(atlasY[code]) * texelV;
                const float u1 = static_cast<float>(atlasX[code] + glyph.width) * texelU;
                const float v1 = static_cast<float>(atlasY[code] + glyph.height) * texelV;
                glBegin(GL_QUADS);
                glTexCoord2f(u0, v0);
                glVertex2f(x0, y0);
                glTexCoord2f(u0, v1);
                glVertex2f(x0, y1);
                glTexCoord2f(u1, v1);
                glVertex2f(x1, y1);
                glTexCoord2f(u1, v0);
                glVertex2f(x1, y0);
                glEnd();
            }
            glTranslatef(static_cast<float>(glyph.advance) * scaleX, 0.0f, 0.0f);
        }
        glEndList();
    }

    DeleteLists();
    m_listBase = base;
    m_atlas = texture;
    m_pixelScaleX = scaleX;
    m_pixelScaleY = scaleY;
    return true;
}

void Font::DeleteLists()
{
    if (m_listBase != 0)
    {
        glDeleteLists(m_listBase, 256);
        m_listBase = 0;
    }
    if (m_atlas != 0)
    {
        GLuint texture = m_atlas;
        glDeleteTextures(1, &texture);
        m_atlas = 0;
    }
}

bool Font::SetPosition(int32_t p_x, int32_t p_y)
{
    if (m_listBase == 0)
    {
        return false;
    }
    m_penX = p_x;
    m_penY = p_y + m_height;
    return true;
}

bool Font::PrintBuffer(int32_t p_x, int32_t p_y, int p_length)
{
    SetPosition(p_x, p_y);
    // Put the pen on a whole display pixel so that the glyphs stay crisp at any resolution.
    const float penX = std::round(static_cast<float>(m_penX) / m_pixelScaleX) * m_pixelScaleX;
    const float penY = std::round(static_cast<float>(m_penY) / m_pixelScaleY) * m_pixelScaleY;

    glPushAttrib(GL_ENABLE_BIT | GL_LIST_BIT | GL_TEXTURE_BIT);
    glDisable(GL_ALPHA_TEST);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, m_atlas);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glPushMatrix();
    glTranslatef(penX, penY, 0.0f);
    glListBase(m_listBase);
    glCallLists(p_length, GL_UNSIGNED_BYTE, s_textBuffer);
    glPopMatrix();
    glBlendFunc(GL_ONE, GL_ZERO);
    glPopAttrib();
    return true;
}

bool Font::PrintV(int32_t p_x, int32_t p_y, const char* p_format, va_list p_args)
{
    if (m_listBase == 0 || p_format == nullptr)
    {
        return false;
    }
    const int written = std::vsnprintf(s_textBuffer, sizeof(s_textBuffer), p_format, p_args);
    if (written < 0)
    {
        return false;
    }
    // Longer text is cut to what the buffer holds.
    return PrintBuffer(p_x, p_y, std::min(written, TEXT_BUFFER_SIZE - 1));
}

bool Font::Print(int32_t p_x, int32_t p_y, const char* p_format, ...)
{
    va_list args;
    va_start(args, p_format);
    const bool printed = PrintV(p_x, p_y, p_format, args);
    va_end(args);
    return printed;
}

bool Font::Print(double p_red, double p_green, double p_blue, double p_alpha, int32_t p_x, int32_t p_y,
                 const char* p_format, ...)
{
    glColor4d(p_red, p_green, p_blue, p_alpha);
    va_list args;
    va_start(args, p_format);
    const bool printed = PrintV(p_x, p_y, p_format, args);
    va_end(args);
    return printed;
}

float Font::GetTextWidth(const char* p_string) const
{
    assert(p_string && "p_string");
    if (p_string == nullptr)
    {
        return 0.0f;
    }
    float width = 0.0f;
    for (const unsigned char* c = reinterpret_cast<const unsigned char*>(p_string); *c != '\0'; ++c)
    {
        width += m_widths[*c];
    }
    return width;
}
