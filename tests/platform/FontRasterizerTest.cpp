#include "platform/FontRasterizer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

namespace
{

using platform::FontRasterizer;
using platform::GlyphBitmap;

GlyphBitmap Render(FontRasterizer& p_font, uint8_t p_code)
{
    GlyphBitmap glyph;
    EXPECT_TRUE(p_font.RenderGlyph(p_code, glyph)) << "code " << int(p_code);
    EXPECT_EQ(glyph.coverage.size(), size_t(glyph.width) * size_t(glyph.height));
    return glyph;
}

uint8_t At(const GlyphBitmap& p_glyph, int32_t p_x, int32_t p_y)
{
    return p_glyph.coverage[size_t(p_y) * size_t(p_glyph.width) + size_t(p_x)];
}

uint64_t TotalCoverage(const GlyphBitmap& p_glyph)
{
    uint64_t sum = 0;
    for (uint8_t value : p_glyph.coverage)
    {
        sum += value;
    }
    return sum;
}

int CountLit(const GlyphBitmap& p_glyph, int32_t p_row)
{
    int lit = 0;
    for (int32_t x = 0; x < p_glyph.width; ++x)
    {
        lit += At(p_glyph, x, p_row) != 0;
    }
    return lit;
}

int32_t FirstLit(const GlyphBitmap& p_glyph, int32_t p_row)
{
    int32_t x = 0;
    while (x < p_glyph.width && At(p_glyph, x, p_row) == 0)
    {
        ++x;
    }
    return x;
}

// Whether the row whose upper edge is p_rowTop pixels above the baseline is solid across
// [0, advance).
bool RowSolidAcrossAdvance(const GlyphBitmap& p_glyph, int32_t p_rowTop)
{
    const int32_t row = p_glyph.top - p_rowTop;
    if (row < 0 || row >= p_glyph.height || p_glyph.left > 0 ||
        p_glyph.left + p_glyph.width < p_glyph.advance)
    {
        return false;
    }
    for (int32_t x = -p_glyph.left; x < p_glyph.advance - p_glyph.left; ++x)
    {
        if (At(p_glyph, x, row) != 255)
        {
            return false;
        }
    }
    return true;
}

bool Contains(const std::string& p_text, const std::string& p_part)
{
    return p_text.find(p_part) != std::string::npos;
}

} // namespace

TEST(FontRasterizerTest, ResolvesWindowsTypefaces)
{
    FontRasterizer font;
    ASSERT_TRUE(font.Open("Arial", 16, false, false, false, false));
    EXPECT_TRUE(Contains(font.GetFontFile(), "LiberationSans-Regular")) << font.GetFontFile();
    ASSERT_TRUE(font.Open("Arial", 16, true, false, false, false));
    EXPECT_TRUE(Contains(font.GetFontFile(), "LiberationSans-Bold")) << font.GetFontFile();
    ASSERT_TRUE(font.Open("Tahoma", 12, false, false, false, false));
    EXPECT_TRUE(Contains(font.GetFontFile(), "DejaVuSans") ||
                Contains(font.GetFontFile(), "LiberationSans"))
        << font.GetFontFile();

    // Unknown names, the game's own misspelling and hostile names land on the default sans.
    FontRasterizer sans;
    ASSERT_TRUE(sans.Open("sans-serif", 12, false, false, false, false));
    const std::string names[] = {"Ariel", "NoSuchFace", "", std::string(100000, 'x'),
                                 "../../../etc/passwd", "\xff\xfe\x81\x9d\x80"};
    for (const std::string& name : names)
    {
        ASSERT_TRUE(font.Open(name, 12, false, false, false, false)) << name;
        EXPECT_EQ(font.GetFontFile(), sans.GetFontFile()) << name;
        EXPECT_GT(Render(font, 'A').width, 0);
    }
}

TEST(FontRasterizerTest, RejectsBadHeightsAndStaysClosed)
{
    FontRasterizer font;
    GlyphBitmap glyph;
    EXPECT_FALSE(font.RenderGlyph('A', glyph));
    ASSERT_TRUE(font.Open("Arial", 16, false, false, false, false));
    for (int32_t height : {0, -16, INT32_MIN, 100000, INT32_MAX})
    {
        EXPECT_FALSE(font.Open("Arial", height, false, false, false, false)) << height;
        EXPECT_FALSE(font.IsOpen());
        EXPECT_TRUE(font.GetFontFile().empty());
        EXPECT_FALSE(font.RenderGlyph('A', glyph));
    }
}

TEST(FontRasterizerTest, MetricsFollowThePixelHeight)
{
    FontRasterizer small;
    FontRasterizer large;
    ASSERT_TRUE(small.Open("Arial", 16, false, false, false, false));
    ASSERT_TRUE(large.Open("Arial", 32, false, false, false, false));
    const GlyphBitmap w16 = Render(small, 'W');
    const GlyphBitmap w32 = Render(large, 'W');
    EXPECT_GT(w16.advance, 0);
    EXPECT_GE(w32.advance * 10, w16.advance * 17);
    EXPECT_LE(w32.advance * 10, w16.advance * 23);

    EXPECT_GT(small.GetAscent(), small.GetDescent());
    EXPECT_GT(small.GetDescent(), 0);
    EXPECT_GT(large.GetAscent() + large.GetDescent(), small.GetAscent() + small.GetDescent() + 12);

    // Capitals sit on the baseline below the ascent; descenders stay within the descent.
    const GlyphBitmap g = Render(large, 'g');
    EXPECT_LE(w32.top, large.GetAscent());
    EXPECT_GE(w32.top, 16);
    EXPECT_LT(g.top - g.height, 0);
    EXPECT_GE(g.top - g.height, -large.GetDescent());
}

TEST(FontRasterizerTest, GlyphBitmapsAreAntiAliasedAndTopDown)
{
    FontRasterizer font;
    ASSERT_TRUE(font.Open("Arial", 32, false, false, false, false));
    const GlyphBitmap a = Render(font, 'A');
    ASSERT_GT(a.width, 0);
    ASSERT_GT(a.height, 0);
    bool partial = false;
    for (uint8_t value : a.coverage)
    {
        partial = partial || (value > 0 && value < 255);
    }
    EXPECT_TRUE(partial);

    // 'A' is narrow at its apex: row 0 must be the top, and the bitmap is tight around the
    // ink.
    EXPECT_GT(CountLit(a, 0), 0);
    EXPECT_LT(CountLit(a, 0), CountLit(a, a.height - 1));

    // 'I' is a stem with room on either side.
    const GlyphBitmap i = Render(font, 'I');
    EXPECT_GT(i.left, 0);
    EXPECT_LT(i.left + i.width, i.advance);

    const GlyphBitmap space = Render(font, ' ');
    EXPECT_GT(space.advance, 0);
    EXPECT_EQ(TotalCoverage(space), 0u);
}

TEST(FontRasterizerTest, BoldAndItalic)
{
    FontRasterizer regular;
    FontRasterizer bold;
    ASSERT_TRUE(regular.Open("Arial", 24, false, false, false, false));
    ASSERT_TRUE(bold.Open("Arial", 24, true, false, false, false));
    uint64_t regularInk = 0;
    uint64_t boldInk = 0;
    for (uint8_t code : {'A', 'W', 'e', 'l', '0'})
    {
        regularInk += TotalCoverage(Render(regular, code));
        boldInk += TotalCoverage(Render(bold, code));
    }
    EXPECT_GT(boldInk * 10, regularInk * 12);

    // DejaVu's maths face comes in one style only, so bold and italic must be made up.
    const std::string single = "DejaVu Math TeX Gyre";
    ASSERT_TRUE(regular.Open(single, 24, false, false, false, false));
    if (!Contains(regular.GetFontFile(), "DejaVuMathTeXGyre"))
    {
        GTEST_SKIP() << "single-style face not installed: " << regular.GetFontFile();
    }
    FontRasterizer italic;
    ASSERT_TRUE(bold.Open(single, 24, true, false, false, false));
    ASSERT_TRUE(italic.Open(single, 24, false, true, false, false));
    ASSERT_EQ(bold.GetFontFile(), regular.GetFontFile());
    ASSERT_EQ(italic.GetFontFile(), regular.GetFontFile());
    const GlyphBitmap plainI = Render(regular, 'I');
    const GlyphBitmap boldI = Render(bold, 'I');
    const GlyphBitmap italicI = Render(italic, 'I');
    ASSERT_GT(plainI.height, 0);
    ASSERT_GT(italicI.height, 0);
    EXPECT_GT(TotalCoverage(boldI) * 10, TotalCoverage(plainI) * 12);
    EXPECT_GE(boldI.advance, plainI.advance);
    // The shear leans the letter to the right without moving the pen further.
    EXPECT_EQ(FirstLit(plainI, 0), FirstLit(plainI, plainI.height - 1));
    EXPECT_GT(FirstLit(italicI, 0), FirstLit(italicI, italicI.height - 1) + 2);
    EXPECT_EQ(italicI.advance, plainI.advance);
}

TEST(FontRasterizerTest, MapsWindows1252)
{
    const std::pair<uint8_t, uint32_t> table[] = {
        {0x80, 0x20AC}, {0x82, 0x201A}, {0x8C, 0x0152}, {0x92, 0x2019}, {0x96, 0x2013},
        {0x99, 0x2122}, {0x9E, 0x017E}, {0x9F, 0x0178}, {0x81, 0}, {0x8D, 0},
        {0x8F, 0},      {0x90, 0},      {0x9D, 0}};
    for (const auto& [code, unicode] : table)
    {
        EXPECT_EQ(FontRasterizer::Cp1252ToUnicode(code), unicode) << int(code);
    }
    for (int code = 0; code < 256; ++code)
    {
        if (code < 0x80 || code >= 0xA0)
        {
            EXPECT_EQ(FontRasterizer::Cp1252ToUnicode(uint8_t(code)), uint32_t(code));
        }
    }
}

TEST(FontRasterizerTest, RendersAccentedAndUndefinedCodes)
{
    FontRasterizer font;
    ASSERT_TRUE(font.Open("Arial", 16, false, false, false, false));
    // Liberation's missing glyph is a box far wider than a space.
    const GlyphBitmap control = Render(font, 0x01);
    EXPECT_GT(control.advance, Render(font, ' ').advance);

    // Accented letters are their own glyphs: the base letter's width, taller ink.
    const std::pair<uint8_t, uint8_t> accented[] = {{0xE9, 'e'}, {0xC9, 'E'}, {0x9F, 'Y'}};
    for (const auto& [code, base] : accented)
    {
        const GlyphBitmap letter = Render(font, code);
        const GlyphBitmap plain = Render(font, base);
        EXPECT_NE(letter.advance, control.advance) << int(code);
        EXPECT_EQ(letter.advance, plain.advance) << int(code);
        EXPECT_GT(letter.top, plain.top) << int(code);
    }
    const GlyphBitmap euro = Render(font, 0x80);
    EXPECT_GT(euro.advance, 0);
    EXPECT_NE(euro.advance, control.advance);
    EXPECT_GT(TotalCoverage(euro), 0u);

    for (int code = 0; code < 256; ++code)
    {
        const GlyphBitmap glyph = Render(font, uint8_t(code));
        if (code < 0x20 || code == 0x7F || FontRasterizer::Cp1252ToUnicode(uint8_t(code)) == 0)
        {
            EXPECT_TRUE(glyph.coverage.empty()) << code;
            EXPECT_EQ(glyph.advance, control.advance) << code;
        }
    }
}

TEST(FontRasterizerTest, DrawsUnderlineAndStrikeOut)
{
    const int32_t height = 28;
    const int32_t thickness = 2; // round(28 / 14)
    FontRasterizer plain;
    FontRasterizer underlined;
    FontRasterizer struck;
    ASSERT_TRUE(plain.Open("Arial", height, false, false, false, false));
    ASSERT_TRUE(underlined.Open("Arial", height, false, false, true, false));
    ASSERT_TRUE(struck.Open("Arial", height, false, false, false, true));

    // A space has no ink of its own: the line alone, below the baseline, the advance wide.
    const GlyphBitmap space = Render(underlined, ' ');
    ASSERT_GT(space.advance, 0);
    EXPECT_EQ(space.width, space.advance);
    EXPECT_EQ(space.height, thickness);
    EXPECT_LE(space.top, 0);
    EXPECT_GE(space.top - space.height, -underlined.GetDescent());
    EXPECT_EQ(TotalCoverage(space), uint64_t(255) * size_t(space.width) * size_t(space.height));

    // 'o' keeps its own ink and grows downwards to take in the underline.
    const GlyphBitmap o = Render(plain, 'o');
    const GlyphBitmap oUnder = Render(underlined, 'o');
    EXPECT_EQ(oUnder.top, o.top);
    EXPECT_TRUE(RowSolidAcrossAdvance(oUnder, space.top));
    EXPECT_TRUE(RowSolidAcrossAdvance(oUnder, space.top - 1));
    EXPECT_GT(TotalCoverage(oUnder), TotalCoverage(o));

    // The strike-out crosses at about 30% of the em height; '_' grows up to reach it.
    const int32_t strikeTop = (height * 3 + 5) / 10 + thickness / 2;
    const GlyphBitmap oStruck = Render(struck, 'o');
    EXPECT_TRUE(RowSolidAcrossAdvance(oStruck, strikeTop));
    EXPECT_TRUE(RowSolidAcrossAdvance(oStruck, strikeTop - 1));
    EXPECT_FALSE(RowSolidAcrossAdvance(oStruck, strikeTop + 1));
    const GlyphBitmap underscore = Render(struck, '_');
    const GlyphBitmap plainUnderscore = Render(plain, '_');
    EXPECT_EQ(underscore.top, strikeTop);
    EXPECT_EQ(underscore.top - underscore.height, plainUnderscore.top - plainUnderscore.height);
    EXPECT_TRUE(RowSolidAcrossAdvance(underscore, strikeTop));
    EXPECT_GT(CountLit(underscore, underscore.height - 1), 0);

    EXPECT_TRUE(Render(underlined, 0x09).coverage.empty());
}

TEST(FontRasterizerTest, ReopensManyTimes)
{
    FontRasterizer reused;
    for (int i = 0; i < 200; ++i)
    {
        FontRasterizer font;
        const bool bold = (i & 1) != 0;
        ASSERT_TRUE(font.Open(i % 3 == 0 ? "Tahoma" : "Arial", 8 + i % 24, bold, (i & 2) != 0,
                              (i & 4) != 0, (i & 8) != 0));
        EXPECT_GT(Render(font, 'M').width, 0);
        ASSERT_TRUE(reused.Open("Ariel", 10 + i % 5, bold, false, false, false));
        EXPECT_GT(Render(reused, 0xE9).width, 0);
    }
}
