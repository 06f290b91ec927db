// The level tiles: deep space, nebulae, dust and the ion storm, 200 numbered 128 x 128 tiles
// for every tile set of tilesets.yaml, and the plain tile under the moving starfield.
//
// Maps put tiles side by side in any order, so every tile of one family (deep space, each
// nebula colour, dust, the storm) has exactly the same edges: a shared backdrop plus, for a
// nebula, the family's own seamless cloud at a fixed edge strength. A tile's own character
// (how dense the cloud is, its stars and rocks) lives inside and fades out before the edges.

#include "ArtKit.h"
#include "ArtSources.h"
#include "Pictures.h"
#include "Rock.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <string>

namespace artgen
{

namespace
{

using kit::Hex;
using kit::Rgb;

constexpr int TILE = 128;
constexpr int TILES_PER_SET = 200;
// The tile set the game loads as one picture under its starfield.
const char* const STAR_TILE = "Art\\startile000.bmp";

// Width of the band along each edge where a tile's own features give way to the family's.
constexpr double EDGE_BAND = 44.0;

enum class Family
{
    Space,
    BlueNebula,
    RedNebula,
    TealNebula,
    Dust,
    Storm
};

struct Recipe
{
    Family family;
    double density; // cloud strength inside the tile; the edges always have the family's
    int stars;
    int pebbles;
    bool brightStar;
    bool lightning;
};

// Tiles 000 to 011 as tilesets.yaml's legend names them; the rest repeat these twelve with
// other stars, rocks and cloud shapes, so a map maker has variants to choose from.
const std::array<Recipe, 12> RECIPES = {{
    {Family::Space, 0.0, 14, 0, false, false},
    {Family::Space, 0.0, 20, 0, false, false},
    {Family::Space, 0.0, 8, 0, true, false},
    {Family::BlueNebula, 0.5, 8, 0, false, false},
    {Family::BlueNebula, 1.0, 4, 0, false, false},
    {Family::RedNebula, 0.5, 8, 0, false, false},
    {Family::RedNebula, 1.0, 4, 0, false, false},
    {Family::TealNebula, 0.5, 8, 0, false, false},
    {Family::TealNebula, 1.0, 4, 0, false, false},
    {Family::Dust, 0.5, 6, 7, false, false},
    {Family::Dust, 1.0, 3, 24, false, false},
    {Family::Storm, 1.0, 4, 0, false, true},
}};

// Cloud strength along the edges of every tile of a nebula family.
constexpr double EDGE_LEVEL = 0.15;

struct FamilyLook
{
    Rgb glow;   // the cloud's colour where it is thickest
    Rgb haze;   // its colour where thin
    uint32_t seed;
};

FamilyLook LookOf(Family p_family)
{
    switch (p_family)
    {
    case Family::BlueNebula:
        return {Hex(0x6A9CFF), Hex(0x1E3C9A), 11u};
    case Family::RedNebula:
        return {Hex(0xFF6A5A), Hex(0x8A1A2A), 12u};
    case Family::TealNebula:
        return {Hex(0x5AF0D8), Hex(0x0E6A6E), 13u};
    case Family::Dust:
        return {Hex(0xB08A60), Hex(0x4A3424), 14u};
    case Family::Storm:
        return {Hex(0xC88AFF), Hex(0x4A1E7A), 15u};
    case Family::Space:
        break;
    }
    return {Hex(0x000000), Hex(0x000000), 10u};
}

// A 128 x 128 field of values, computed once and shared by every tile that needs it.
using Field = std::vector<double>;

Field MakeField(int p_baseCells, int p_octaves, double p_gain, uint32_t p_seed)
{
    const kit::TileableFbm noise(TILE, p_baseCells, p_octaves, p_gain, p_seed);
    Field field(size_t(TILE) * TILE);
    for (int y = 0; y < TILE; ++y)
        for (int x = 0; x < TILE; ++x)
            field[size_t(y) * TILE + size_t(x)] = noise.At(x + 0.5, y + 0.5);
    return field;
}

// The faint backdrop every tile shares, and each family's cloud; built on first use (the
// tiles are drawn on several threads; function statics are made once).
const Field& Backdrop()
{
    static const Field s_field = MakeField(2, 4, 0.5, 7u);
    return s_field;
}

const Field& Cloud(Family p_family)
{
    static const std::array<Field, 6> s_fields = [] {
        std::array<Field, 6> fields;
        for (int i = 1; i < 6; ++i)
            fields[size_t(i)] = MakeField(2, 5, 0.55, LookOf(Family(i)).seed);
        return fields;
    }();
    return s_fields[size_t(p_family)];
}

// 0 on the tile's edges, 1 inside, smooth between.
double InteriorMask(double p_x, double p_y)
{
    const double edge = std::min(std::min(p_x, TILE - p_x), std::min(p_y, TILE - p_y));
    return kit::SmoothStep(0.0, EDGE_BAND, edge);
}

void PaintTile(Canvas& p_canvas, const Recipe& p_recipe, uint32_t p_seed)
{
    const Rgb deep = Hex(0x04060C);
    const Rgb backdropTint = Hex(0x141C34);
    const FamilyLook look = LookOf(p_recipe.family);
    const bool cloudy = p_recipe.family != Family::Space;
    const Field& backdrop = Backdrop();
    const Field* cloud = cloudy ? &Cloud(p_recipe.family) : nullptr;
    // The tile's own shaping of the cloud inside: not seamless, so masked to the interior.
    const kit::TileableFbm shape(TILE, 3, 3, 0.5, p_seed * 31u + 5u);
    {
        kit::PixelAccess pixels(p_canvas);
        for (int y = 0; y < TILE; ++y)
            for (int x = 0; x < TILE; ++x)
            {
                const size_t at = size_t(y) * TILE + size_t(x);
                const double haze = kit::Clamp01(0.5 + 0.8 * backdrop[at]);
                Rgb colour = kit::Mix(deep, backdropTint, haze * haze * 0.4);
                if (cloudy)
                {
                    const double inside = InteriorMask(x + 0.5, y + 0.5);
                    const double own = 0.75 + 0.45 * shape.At(x + 0.5, y + 0.5);
                    const double level = EDGE_LEVEL + (p_recipe.density * own - EDGE_LEVEL) * inside;
                    const double body = kit::Clamp01(0.45 + 0.9 * (*cloud)[at]);
                    const double amount = kit::Clamp01((body * body - 0.12) * level * 1.6);
                    const Rgb tint = kit::Mix(look.haze, look.glow, kit::Clamp01(body * level * 1.2 - 0.1));
                    colour = {colour.r + tint.r * amount, colour.g + tint.g * amount, colour.b + tint.b * amount};
                }
                pixels.Set(x, y, {colour.r, colour.g, colour.b, 1.0});
            }
    }

    cairo_t* cr = p_canvas.Get();
    Random random(p_seed * 7919ull + 3ull);
    // Stars stay clear of the edges so that no star is cut by a neighbour.
    const double margin = 6.0;
    const double cloudDim = cloudy ? 0.6 : 1.0;
    for (int i = 0; i < p_recipe.stars; ++i)
    {
        const double x = random.Uniform(margin, TILE - margin);
        const double y = random.Uniform(margin, TILE - margin);
        const double bright = random.Uniform(0.0, 1.0);
        const double tint = random.Uniform(-1.0, 1.0);
        const Rgb star{0.85 + 0.15 * tint, 0.88, 1.0 - 0.15 * tint};
        const double alpha = (0.18 + 0.6 * bright * bright * bright) * cloudDim;
        kit::Glow(cr, x, y, 0.9 + 1.4 * bright, star, alpha);
    }
    if (p_recipe.brightStar)
    {
        // Its glow ends well inside the tile.
        const double x = random.Uniform(48.0, 80.0);
        const double y = random.Uniform(48.0, 80.0);
        kit::Glow(cr, x, y, 30.0, Hex(0x7A9CFF), 0.18);
        kit::Glow(cr, x, y, 9.0, Hex(0xCFE0FF), 0.6);
        cairo_set_line_width(cr, 0.7);
        for (int ray = 0; ray < 2; ++ray)
        {
            const double length = ray == 0 ? 14.0 : 9.0;
            cairo_pattern_t* spike = cairo_pattern_create_radial(x, y, 0.0, x, y, length);
            kit::AddStop(spike, 0.0, Hex(0xFFFFFF), 0.8);
            kit::AddStop(spike, 1.0, Hex(0xFFFFFF), 0.0);
            kit::UsePattern(cr, spike);
            if (ray == 0)
            {
                cairo_move_to(cr, x - length, y);
                cairo_line_to(cr, x + length, y);
            }
            else
            {
                cairo_move_to(cr, x, y - length);
                cairo_line_to(cr, x, y + length);
            }
            cairo_stroke(cr);
        }
        kit::Glow(cr, x, y, 2.6, Hex(0xFFFFFF), 1.0);
    }
    for (int i = 0; i < p_recipe.pebbles; ++i)
    {
        const double radius = random.Uniform(1.2, i % 5 == 0 ? 4.5 : 2.6);
        const double reach = margin + radius * 1.6;
        RockStyle style;
        style.light = Hex(0x9A8068);
        style.dark = Hex(0x1E1812);
        style.craters = radius > 3.0 ? 2 : 0;
        style.lumpiness = 0.22;
        style.seed = p_seed * 97u + uint32_t(i);
        PaintRock(p_canvas, random.Uniform(reach, TILE - reach), random.Uniform(reach, TILE - reach), radius,
                  radius * random.Uniform(0.7, 1.0), style);
    }
    if (p_recipe.lightning)
    {
        // Faint forks of lightning inside the storm, with a soft glow round them.
        Canvas glow(TILE, TILE);
        cairo_t* g = glow.Get();
        cairo_set_line_cap(g, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(g, CAIRO_LINE_JOIN_ROUND);
        for (int bolt = 0; bolt < 2; ++bolt)
        {
            double x = random.Uniform(36.0, 92.0);
            double y = random.Uniform(30.0, 50.0);
            const double heading = random.Uniform(0.9, 2.2);
            cairo_move_to(g, x, y);
            for (int step = 0; step < 7; ++step)
            {
                x += std::cos(heading) * 7.0 + random.Uniform(-5.0, 5.0);
                y += std::sin(heading) * 7.0 + random.Uniform(-3.0, 3.0);
                x = std::clamp(x, 26.0, TILE - 26.0);
                y = std::clamp(y, 26.0, TILE - 26.0);
                cairo_line_to(g, x, y);
            }
        }
        cairo_set_line_width(g, 1.0);
        kit::SetSource(g, Hex(0xE8D8FF), 0.7);
        cairo_stroke_preserve(g);
        Canvas soft(TILE, TILE);
        cairo_t* s = soft.Get();
        cairo_path_t* path = cairo_copy_path(g);
        cairo_append_path(s, path);
        cairo_path_destroy(path);
        cairo_new_path(g);
        cairo_set_line_width(s, 5.0);
        kit::SetSource(s, Hex(0xA060FF), 0.6);
        cairo_stroke(s);
        soft.Blur(3);
        kit::AddLight(p_canvas, soft, 0.8);
        kit::AddLight(p_canvas, glow, 0.8);
    }
    kit::AvoidColourKey(p_canvas);
}

// All colour key: the level draws its tiles over the moving starfield, which must show through
// every star tile.
void PaintStarTile(Canvas& p_canvas)
{
    cairo_t* s = p_canvas.Get();
    cairo_set_source_rgb(s, 0.0, 1.0, 0.0);
    cairo_paint(s);
}

bool SameName(const std::string& p_a, const std::string& p_b)
{
    return p_a.size() == p_b.size() &&
           std::equal(p_a.begin(), p_a.end(), p_b.begin(), [](char p_x, char p_y) {
               return std::tolower(static_cast<unsigned char>(p_x)) == std::tolower(static_cast<unsigned char>(p_y));
           });
}

// The game's numbering: the three digits before the extension count up from the first file.
bool NumberedName(const std::string& p_first, int p_index, std::string& p_name)
{
    const size_t dot = p_first.rfind('.');
    if (dot == std::string::npos || dot < 3)
        return false;
    for (size_t i = dot - 3; i < dot; ++i)
        if (!std::isdigit(static_cast<unsigned char>(p_first[i])))
            return false;
    const int start = std::stoi(p_first.substr(dot - 3, 3));
    if (start + p_index > 999)
        return false;
    char digits[16];
    std::snprintf(digits, sizeof(digits), "%03d", start + p_index);
    p_name = p_first.substr(0, dot - 3) + digits + p_first.substr(dot);
    return true;
}

void ListWorldPictures(const ArtContext& p_context, std::vector<PictureRecipe>& p_pictures)
{
    std::vector<TileSetSource> sets;
    ReadTileSets(p_context.dataDir, sets);
    std::vector<std::string> drawn;
    for (const TileSetSource& set : sets)
    {
        if (SameName(set.first, STAR_TILE))
            continue; // drawn below
        if (std::find(drawn.begin(), drawn.end(), set.first) != drawn.end())
            continue;
        drawn.push_back(set.first);
        for (int index = 0; index < TILES_PER_SET; ++index)
        {
            std::string name;
            if (!NumberedName(set.first, index, name))
            {
                std::fprintf(stderr, "korvath-artgen: the tile set %s does not start with a numbered picture (%s)\n",
                             set.name.c_str(), set.first.c_str());
                break;
            }
            const Recipe recipe = RECIPES[size_t(index) % RECIPES.size()];
            const uint32_t seed = uint32_t(index) + 1u;
            p_pictures.push_back(
                {name, TILE, TILE, false, [recipe, seed](Canvas& p_canvas) { PaintTile(p_canvas, recipe, seed); }});
        }
    }
    // The game knows the star tile by this name whatever the sources say.
    p_pictures.push_back({STAR_TILE, TILE, TILE, false, PaintStarTile});
}

const PictureRegistrar s_world(ListWorldPictures);

} // namespace
} // namespace artgen
