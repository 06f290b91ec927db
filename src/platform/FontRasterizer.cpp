#include "platform/FontRasterizer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_BITMAP_H
#include FT_SYNTHESIS_H

namespace platform
{

namespace
{

// Windows keeps a typeface name in LOGFONT::lfFaceName[32]; longer names are cut there.
constexpr size_t MAX_FACE_NAME_BYTES = 31;

// Far beyond any text the game draws; keeps a stray height from asking FreeType for
// gigantic bitmaps.
constexpr int32_t MAX_PIXEL_HEIGHT = 1024;

// A glyph bitmap larger than this is not drawn (a damaged font could claim anything).
constexpr int64_t MAX_GLYPH_PIXELS = int64_t(4) * MAX_PIXEL_HEIGHT * MAX_PIXEL_HEIGHT;

constexpr FT_Int32 LOAD_FLAGS = FT_LOAD_DEFAULT | FT_LOAD_TARGET_LIGHT;

// 0x80..0x9F of Windows-1252; 0 marks the codes the code page leaves undefined.
constexpr std::array<uint16_t, 32> CP1252_HIGH = {
    0x20AC, 0x0000, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x0000, 0x017D, 0x0000,
    0x0000, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x0000, 0x017E, 0x0178};

struct LibraryDeleter
{
    void operator()(FT_Library p_library) const { FT_Done_FreeType(p_library); }
};
struct FaceDeleter
{
    void operator()(FT_Face p_face) const { FT_Done_Face(p_face); }
};
struct PatternDeleter
{
    void operator()(FcPattern* p_pattern) const { FcPatternDestroy(p_pattern); }
};
struct FontSetDeleter
{
    void operator()(FcFontSet* p_set) const { FcFontSetDestroy(p_set); }
};
struct ObjectSetDeleter
{
    void operator()(FcObjectSet* p_set) const { FcObjectSetDestroy(p_set); }
};

using LibraryPtr = std::unique_ptr<FT_LibraryRec_, LibraryDeleter>;
using FacePtr = std::unique_ptr<FT_FaceRec_, FaceDeleter>;
using PatternPtr = std::unique_ptr<FcPattern, PatternDeleter>;
using FontSetPtr = std::unique_ptr<FcFontSet, FontSetDeleter>;
using ObjectSetPtr = std::unique_ptr<FcObjectSet, ObjectSetDeleter>;

bool EnsureFontconfig()
{
    // Loading the configuration and caches is slow and must happen once per process, not
    // per rasterizer; the configuration then lives until exit.
    static const bool s_ready = FcInit() == FcTrue;
    return s_ready;
}

void AppendUtf8(std::string& p_out, uint32_t p_codePoint)
{
    if (p_codePoint < 0x80)
    {
        p_out += char(p_codePoint);
    }
    else if (p_codePoint < 0x800)
    {
        p_out += char(0xC0 | (p_codePoint >> 6));
        p_out += char(0x80 | (p_codePoint & 0x3F));
    }
    else
    {
        p_out += char(0xE0 | (p_codePoint >> 12));
        p_out += char(0x80 | ((p_codePoint >> 6) & 0x3F));
        p_out += char(0x80 | (p_codePoint & 0x3F));
    }
}

// The game passes ANSI (Windows-1252) names as CreateFontA did; fontconfig wants UTF-8.
std::string FaceNameToUtf8(const std::string& p_typeFace)
{
    std::string name;
    for (size_t i = 0; i < p_typeFace.size() && i < MAX_FACE_NAME_BYTES; ++i)
    {
        const uint8_t code = uint8_t(p_typeFace[i]);
        if (code == 0)
        {
            break;
        }
        const uint32_t codePoint = FontRasterizer::Cp1252ToUnicode(code);
        if (codePoint != 0)
        {
            AppendUtf8(name, codePoint);
        }
    }
    return name;
}

struct FontLocation
{
    std::string file;
    int index = 0;
};

bool GetLocation(const FcPattern* p_pattern, FontLocation& p_location)
{
    FcChar8* file = nullptr;
    if (FcPatternGetString(p_pattern, FC_FILE, 0, &file) != FcResultMatch || file == nullptr)
    {
        return false;
    }
    int index = 0;
    if (FcPatternGetInteger(p_pattern, FC_INDEX, 0, &index) != FcResultMatch)
    {
        index = 0;
    }
    p_location.file = reinterpret_cast<const char*>(file);
    p_location.index = index;
    return !p_location.file.empty();
}

bool MatchFamily(const std::string& p_family, bool p_bold, bool p_italic,
                 FontLocation& p_location)
{
    PatternPtr pattern(FcPatternCreate());
    if (!pattern)
    {
        return false;
    }
    if (!p_family.empty())
    {
        FcPatternAddString(pattern.get(), FC_FAMILY,
                           reinterpret_cast<const FcChar8*>(p_family.c_str()));
    }
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, p_bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, p_italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    if (!FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern))
    {
        return false;
    }
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    PatternPtr match(FcFontMatch(nullptr, pattern.get(), &result));
    return match && GetLocation(match.get(), p_location);
}

std::vector<FontLocation> ListScalableFonts()
{
    std::vector<FontLocation> locations;
    PatternPtr pattern(FcPatternCreate());
    ObjectSetPtr objects(FcObjectSetBuild(FC_FILE, FC_INDEX, nullptr));
    if (!pattern || !objects)
    {
        return locations;
    }
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FontSetPtr fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    if (!fonts)
    {
        return locations;
    }
    for (int i = 0; i < fonts->nfont; ++i)
    {
        FontLocation location;
        if (GetLocation(fonts->fonts[i], location))
        {
            locations.push_back(std::move(location));
        }
    }
    return locations;
}

int32_t RoundedAdvance(const FT_GlyphSlot p_slot)
{
    return int32_t((p_slot->advance.x + 32) >> 6);
}

// Copies FreeType's bitmap into top-down 8-bit coverage. A negative pitch means the rows
// are stored bottom-up, with the buffer pointing at the lowest row.
void CopyRows(const FT_Bitmap& p_bitmap, int p_maxValue, std::vector<uint8_t>& p_coverage)
{
    const size_t width = p_bitmap.width;
    const size_t rows = p_bitmap.rows;
    const ptrdiff_t pitch = p_bitmap.pitch;
    const uint8_t* topRow = p_bitmap.buffer;
    if (pitch < 0)
    {
        topRow -= pitch * ptrdiff_t(rows - 1);
    }
    p_coverage.assign(width * rows, 0);
    for (size_t y = 0; y < rows; ++y)
    {
        const uint8_t* source = topRow + pitch * ptrdiff_t(y);
        uint8_t* target = p_coverage.data() + y * width;
        if (p_maxValue == 255)
        {
            std::copy(source, source + width, target);
            continue;
        }
        for (size_t x = 0; x < width; ++x)
        {
            const int value = std::min<int>(source[x], p_maxValue);
            target[x] = uint8_t((value * 255 + p_maxValue / 2) / p_maxValue);
        }
    }
}

bool CopyBitmap(FT_Library p_library, const FT_Bitmap& p_bitmap, GlyphBitmap& p_glyph)
{
    if (p_bitmap.width == 0 || p_bitmap.rows == 0 || p_bitmap.buffer == nullptr)
    {
        return true;
    }
    if (int64_t(p_bitmap.width) * int64_t(p_bitmap.rows) > MAX_GLYPH_PIXELS)
    {
        return false;
    }
    if (p_bitmap.pixel_mode == FT_PIXEL_MODE_GRAY && p_bitmap.num_grays == 256)
    {
        CopyRows(p_bitmap, 255, p_glyph.coverage);
    }
    else
    {
        // Embedded bitmaps can be 1, 2 or 4 bits deep, or colour; bring them to 8 bits.
        FT_Bitmap converted;
        FT_Bitmap_Init(&converted);
        const bool ok = FT_Bitmap_Convert(p_library, &p_bitmap, &converted, 1) == 0 &&
                        converted.num_grays >= 2 && converted.width == p_bitmap.width &&
                        converted.rows == p_bitmap.rows;
        if (ok)
        {
            CopyRows(converted, converted.num_grays - 1, p_glyph.coverage);
        }
        FT_Bitmap_Done(p_library, &converted);
        if (!ok)
        {
            return false;
        }
    }
    p_glyph.width = int32_t(p_bitmap.width);
    p_glyph.height = int32_t(p_bitmap.rows);
    return true;
}

// Paints a solid horizontal line across [0, advance) whose upper edge lies p_lineTop pixels
// above the baseline (negative: below), growing the bitmap to hold it.
void DrawLine(GlyphBitmap& p_glyph, int32_t p_lineTop, int32_t p_thickness)
{
    if (p_glyph.advance <= 0 || p_thickness <= 0)
    {
        return;
    }
    const bool hasBitmap = p_glyph.width > 0 && p_glyph.height > 0;
    const int32_t lineBottom = p_lineTop - p_thickness;
    const int32_t left = hasBitmap ? std::min(p_glyph.left, 0) : 0;
    const int32_t right =
        hasBitmap ? std::max(p_glyph.left + p_glyph.width, p_glyph.advance) : p_glyph.advance;
    const int32_t top = hasBitmap ? std::max(p_glyph.top, p_lineTop) : p_lineTop;
    const int32_t bottom =
        hasBitmap ? std::min(p_glyph.top - p_glyph.height, lineBottom) : lineBottom;
    const int32_t width = right - left;
    const int32_t height = top - bottom;

    std::vector<uint8_t> coverage(size_t(width) * size_t(height), 0);
    if (hasBitmap)
    {
        const int32_t offsetX = p_glyph.left - left;
        const int32_t offsetY = top - p_glyph.top;
        for (int32_t y = 0; y < p_glyph.height; ++y)
        {
            const uint8_t* source = p_glyph.coverage.data() + size_t(y) * size_t(p_glyph.width);
            std::copy(source, source + p_glyph.width,
                      coverage.data() + size_t(y + offsetY) * size_t(width) + size_t(offsetX));
        }
    }
    for (int32_t y = top - p_lineTop; y < top - lineBottom; ++y)
    {
        uint8_t* row = coverage.data() + size_t(y) * size_t(width);
        std::fill(row - left, row - left + p_glyph.advance, uint8_t(255));
    }
    p_glyph.width = width;
    p_glyph.height = height;
    p_glyph.left = left;
    p_glyph.top = top;
    p_glyph.coverage = std::move(coverage);
}

} // namespace

struct FontRasterizer::Impl
{
    LibraryPtr m_pLibrary; // declared before the face so that it is released after it
    FacePtr m_pFace;
    std::string m_fontFile;
    int32_t m_pixelHeight = 0;
    int32_t m_ascent = 0;
    int32_t m_descent = 0;
    int32_t m_defaultAdvance = 0;
    int32_t m_lineThickness = 1;
    int32_t m_underlineTop = 0;
    int32_t m_strikeOutTop = 0;
    bool m_syntheticBold = false;
    bool m_syntheticItalic = false;
    bool m_underline = false;
    bool m_strikeOut = false;

    bool OpenFace(const FontLocation& p_location);
    bool LoadGlyph(FT_UInt p_index);
};

bool FontRasterizer::Impl::OpenFace(const FontLocation& p_location)
{
    FT_Face face = nullptr;
    if (FT_New_Face(m_pLibrary.get(), p_location.file.c_str(), p_location.index, &face) != 0)
    {
        return false;
    }
    FacePtr owned(face);
    if (!FT_IS_SCALABLE(face) || FT_Set_Pixel_Sizes(face, 0, FT_UInt(m_pixelHeight)) != 0)
    {
        return false;
    }
    m_pFace = std::move(owned);
    m_fontFile = p_location.file;
    return true;
}

bool FontRasterizer::Impl::LoadGlyph(FT_UInt p_index)
{
    FT_Face face = m_pFace.get();
    if (FT_Load_Glyph(face, p_index, LOAD_FLAGS) != 0)
    {
        return false;
    }
    if (m_syntheticItalic)
    {
        FT_GlyphSlot_Oblique(face->glyph);
    }
    if (m_syntheticBold)
    {
        FT_GlyphSlot_Embolden(face->glyph);
    }
    return true;
}

FontRasterizer::FontRasterizer() = default;

FontRasterizer::~FontRasterizer() = default;

bool FontRasterizer::Open(const std::string& p_typeFace, int32_t p_pixelHeight, bool p_bold,
                          bool p_italic, bool p_underline, bool p_strikeOut)
{
    Close();
    if (p_pixelHeight <= 0 || p_pixelHeight > MAX_PIXEL_HEIGHT)
    {
        return false;
    }
    auto impl = std::make_unique<Impl>();
    impl->m_pixelHeight = p_pixelHeight;
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0)
    {
        return false;
    }
    impl->m_pLibrary.reset(library);

    // fontconfig failing to start leaves nothing to search, but the matching calls below
    // then simply find nothing.
    EnsureFontconfig();
    bool opened = false;
    FontLocation location;
    if (MatchFamily(FaceNameToUtf8(p_typeFace), p_bold, p_italic, location))
    {
        opened = impl->OpenFace(location);
    }
    if (!opened && MatchFamily("sans-serif", p_bold, p_italic, location))
    {
        opened = impl->OpenFace(location);
    }
    if (!opened)
    {
        for (const FontLocation& candidate : ListScalableFonts())
        {
            if (impl->OpenFace(candidate))
            {
                opened = true;
                break;
            }
        }
    }
    if (!opened)
    {
        return false;
    }

    FT_Face face = impl->m_pFace.get();
    impl->m_syntheticBold = p_bold && (face->style_flags & FT_STYLE_FLAG_BOLD) == 0;
    impl->m_syntheticItalic = p_italic && (face->style_flags & FT_STYLE_FLAG_ITALIC) == 0;
    impl->m_underline = p_underline;
    impl->m_strikeOut = p_strikeOut;

    const FT_Size_Metrics& metrics = face->size->metrics;
    impl->m_ascent = int32_t((metrics.ascender + 63) >> 6);
    impl->m_descent = int32_t(((-metrics.descender) + 63) >> 6);

    // Windows gives characters a font cannot show the width of its default glyph.
    if (impl->LoadGlyph(0))
    {
        impl->m_defaultAdvance = RoundedAdvance(face->glyph);
    }
    else if (impl->LoadGlyph(FT_Get_Char_Index(face, ' ')))
    {
        impl->m_defaultAdvance = RoundedAdvance(face->glyph);
    }

    impl->m_lineThickness = std::max(1, (p_pixelHeight + 7) / 14);
    const double thickness = impl->m_lineThickness;
    // FreeType gives the centre of the underline stroke; keep the line below the baseline
    // and, where there is room, inside the descent.
    const double underlineCentre =
        double(FT_MulFix(face->underline_position, metrics.y_scale)) / 64.0;
    int32_t underlineTop = int32_t(std::lround(underlineCentre + thickness / 2.0));
    underlineTop = std::max(underlineTop, impl->m_lineThickness - impl->m_descent);
    impl->m_underlineTop = std::min(underlineTop, 0);
    impl->m_strikeOutTop = int32_t(std::lround(0.3 * p_pixelHeight + thickness / 2.0));

    m_pImpl = std::move(impl);
    return true;
}

bool FontRasterizer::IsOpen() const
{
    return m_pImpl != nullptr;
}

void FontRasterizer::Close()
{
    m_pImpl.reset();
}

const std::string& FontRasterizer::GetFontFile() const
{
    static const std::string s_none;
    return m_pImpl ? m_pImpl->m_fontFile : s_none;
}

int32_t FontRasterizer::GetAscent() const
{
    return m_pImpl ? m_pImpl->m_ascent : 0;
}

int32_t FontRasterizer::GetDescent() const
{
    return m_pImpl ? m_pImpl->m_descent : 0;
}

bool FontRasterizer::RenderGlyph(uint8_t p_code, GlyphBitmap& p_glyph)
{
    p_glyph = GlyphBitmap{};
    if (!m_pImpl)
    {
        return false;
    }
    Impl& impl = *m_pImpl;
    const uint32_t codePoint = Cp1252ToUnicode(p_code);
    if (p_code < 0x20 || p_code == 0x7F || codePoint == 0)
    {
        p_glyph.advance = impl.m_defaultAdvance;
        return true;
    }

    FT_Face face = impl.m_pFace.get();
    if (!impl.LoadGlyph(FT_Get_Char_Index(face, codePoint)))
    {
        p_glyph.advance = impl.m_defaultAdvance;
        return true;
    }
    FT_GlyphSlot slot = face->glyph;
    p_glyph.advance = RoundedAdvance(slot);
    if (slot->format == FT_GLYPH_FORMAT_BITMAP ||
        FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) == 0)
    {
        if (CopyBitmap(impl.m_pLibrary.get(), slot->bitmap, p_glyph))
        {
            p_glyph.left = slot->bitmap_left;
            p_glyph.top = slot->bitmap_top;
        }
        else
        {
            p_glyph.coverage.clear();
            p_glyph.width = 0;
            p_glyph.height = 0;
        }
    }

    if (impl.m_underline)
    {
        DrawLine(p_glyph, impl.m_underlineTop, impl.m_lineThickness);
    }
    if (impl.m_strikeOut)
    {
        DrawLine(p_glyph, impl.m_strikeOutTop, impl.m_lineThickness);
    }
    return true;
}

uint32_t FontRasterizer::Cp1252ToUnicode(uint8_t p_code)
{
    if (p_code >= 0x80 && p_code < 0xA0)
    {
        return CP1252_HIGH[p_code - 0x80];
    }
    return p_code;
}

} // namespace platform
