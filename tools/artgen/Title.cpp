// The game's logo (the main menu shows it), the hub's planets and the three credits slides.

#include "InterfaceArt.h"
#include "Pictures.h"
#include "Style.h"
#include "Wordmark.h"

#include <algorithm>
#include <cmath>

namespace artgen
{

namespace
{

using namespace palette;

// Darkens every edge of the canvas to pure black over p_width pixels: pictures the game draws
// alpha-tested on its black screen then have no visible border at all.
void FadeEdgesToBlack(cairo_t* p_context, double p_w, double p_h, double p_width)
{
    struct Edge
    {
        double x0, y0, x1, y1;
        double rx, ry, rw, rh;
    };
    const Edge edges[] = {
        {0.0, 0.0, 0.0, p_width, 0.0, 0.0, p_w, p_width},
        {0.0, p_h, 0.0, p_h - p_width, 0.0, p_h - p_width, p_w, p_width},
        {0.0, 0.0, p_width, 0.0, 0.0, 0.0, p_width, p_h},
        {p_w, 0.0, p_w - p_width, 0.0, p_w - p_width, 0.0, p_width, p_h},
    };
    for (const Edge& edge : edges)
    {
        cairo_pattern_t* fade = cairo_pattern_create_linear(edge.x0, edge.y0, edge.x1, edge.y1);
        cairo_pattern_add_color_stop_rgba(fade, 0.0, 0.0, 0.0, 0.0, 1.0);
        cairo_pattern_add_color_stop_rgba(fade, 1.0, 0.0, 0.0, 0.0, 0.0);
        SetPattern(p_context, fade);
        cairo_rectangle(p_context, edge.rx, edge.ry, edge.rw, edge.rh);
        cairo_fill(p_context);
    }
    // The outermost pixels exactly black, whatever the gradient rounds to.
    cairo_rectangle(p_context, 0.0, 0.0, p_w, p_h);
    cairo_rectangle(p_context, 2.0, 2.0, p_w - 4.0, p_h - 4.0);
    cairo_set_fill_rule(p_context, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_set_source_rgb(p_context, 0.0, 0.0, 0.0);
    cairo_fill(p_context);
    cairo_set_fill_rule(p_context, CAIRO_FILL_RULE_WINDING);
}

// A planet lit from one side: its disc, a darkening terminator, an atmosphere rim.
struct Planet
{
    double x;
    double y;
    double radius;
    Rgb light;
    Rgb dark;
    Rgb atmosphere;
    double lightAngle; // where the sun is, radians (0 to the right, growing clockwise)
};

void PaintPlanet(Canvas& p_canvas, const Planet& p_planet, int p_bands, uint64_t p_seed)
{
    cairo_t* cr = p_canvas.Get();
    const double lx = std::cos(p_planet.lightAngle);
    const double ly = std::sin(p_planet.lightAngle);
    const double r = p_planet.radius;
    // The glow of the atmosphere around the lit limb.
    PaintSoftLayer(p_canvas, int(std::max(4.0, r * 0.05)), 0.9, [&](cairo_t* p_layer) {
        cairo_new_sub_path(p_layer);
        cairo_arc(p_layer, p_planet.x, p_planet.y, r + r * 0.015, p_planet.lightAngle - 1.6, p_planet.lightAngle + 1.6);
        cairo_set_line_width(p_layer, std::max(3.0, r * 0.04));
        SetRgb(p_layer, p_planet.atmosphere, 0.9);
        cairo_stroke(p_layer);
    });
    cairo_save(cr);
    CirclePath(cr, p_planet.x, p_planet.y, r);
    cairo_clip(cr);
    cairo_pattern_t* body = cairo_pattern_create_radial(p_planet.x + lx * r * 0.55, p_planet.y + ly * r * 0.55, r * 0.05,
                                                        p_planet.x + lx * r * 0.2, p_planet.y + ly * r * 0.2, r * 1.25);
    AddStop(body, 0.0, p_planet.light);
    AddStop(body, 0.55, Mix(p_planet.light, p_planet.dark, 0.6));
    AddStop(body, 1.0, p_planet.dark);
    SetPattern(cr, body);
    cairo_paint(cr);
    // Cloud bands: soft stripes across the disc.
    Random random(p_seed);
    for (int i = 0; i < p_bands; ++i)
    {
        const double y = p_planet.y - r + random.Uniform(0.0, 2.0 * r);
        const double thickness = random.Uniform(0.03, 0.12) * r;
        const Rgb tone = random.Uniform(0.0, 1.0) < 0.5 ? WHITE : Rgb{0.25, 0.1, 0.02};
        const double alpha = random.Uniform(0.05, 0.14);
        cairo_pattern_t* band = cairo_pattern_create_linear(0.0, y - thickness, 0.0, y + thickness);
        AddStop(band, 0.0, tone, 0.0);
        AddStop(band, 0.5, tone, alpha);
        AddStop(band, 1.0, tone, 0.0);
        SetPattern(cr, band);
        cairo_rectangle(cr, p_planet.x - r, y - thickness, 2.0 * r, 2.0 * thickness);
        cairo_fill(cr);
    }
    // Night side.
    cairo_pattern_t* night = cairo_pattern_create_linear(p_planet.x + lx * r * 0.1, p_planet.y + ly * r * 0.1,
                                                         p_planet.x - lx * r, p_planet.y - ly * r);
    cairo_pattern_add_color_stop_rgba(night, 0.0, 0.0, 0.0, 0.0, 0.0);
    cairo_pattern_add_color_stop_rgba(night, 0.55, 0.0, 0.0, 0.0, 0.85);
    cairo_pattern_add_color_stop_rgba(night, 1.0, 0.0, 0.0, 0.0, 0.97);
    SetPattern(cr, night);
    cairo_paint(cr);
    // The atmosphere's inner rim on the lit side.
    cairo_pattern_t* rim = cairo_pattern_create_radial(p_planet.x - lx * r * 0.08, p_planet.y - ly * r * 0.08, r * 0.9,
                                                       p_planet.x, p_planet.y, r);
    AddStop(rim, 0.0, p_planet.atmosphere, 0.0);
    AddStop(rim, 1.0, p_planet.atmosphere, 0.55);
    SetPattern(cr, rim);
    cairo_paint(cr);
    cairo_restore(cr);
}

// ---- The logo -------------------------------------------------------------------------------

// Shown alpha-tested at (260, 200) on the black menu screen: opaque, fading to black at the
// edges. The name over the rim of a planet at sunrise.
void DrawTitle(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    const double cx = w / 2.0;
    SetRgb(cr, SPACE_BLACK);
    cairo_paint(cr);
    PaintNebula(cr, cx, h * 0.45, w * 0.9, h * 0.6, {0.12, 0.2, 0.42}, 0.28, 12, 0x7469746Cu);
    PaintStars(cr, 0.0, 0.0, w, h, 0x4B4F5256u, 150, 1.0);

    // The planet's rim with the sun just rising over it.
    const double planetRadius = 1300.0;
    const double planetY = h * 0.88 + planetRadius;
    PaintSoftLayer(p_canvas, 22, 0.9, [&](cairo_t* p_layer) {
        CirclePath(p_layer, cx, planetY, planetRadius + 6.0);
        SetRgb(p_layer, AMBER, 0.7);
        cairo_fill(p_layer);
    });
    CirclePath(cr, cx, planetY, planetRadius);
    cairo_pattern_t* ground = cairo_pattern_create_linear(0.0, planetY - planetRadius, 0.0, h);
    AddStop(ground, 0.0, {0.16, 0.1, 0.06});
    AddStop(ground, 0.08, {0.03, 0.03, 0.05});
    AddStop(ground, 1.0, {0.0, 0.0, 0.0});
    SetPattern(cr, ground);
    cairo_fill(cr);
    cairo_new_sub_path(cr);
    cairo_arc(cr, cx, planetY, planetRadius, -PI_VALUE / 2.0 - 0.3, -PI_VALUE / 2.0 + 0.3);
    cairo_set_line_width(cr, 1.5);
    SetRgb(cr, AMBER_LIGHT, 0.9);
    cairo_stroke(cr);
    // The sun: a star flare on the horizon.
    const double sunY = planetY - planetRadius - 2.0;
    cairo_pattern_t* sun = cairo_pattern_create_radial(cx, sunY, 0.0, cx, sunY, 90.0);
    AddStop(sun, 0.0, WHITE, 0.95);
    AddStop(sun, 0.12, AMBER_LIGHT, 0.6);
    AddStop(sun, 1.0, AMBER, 0.0);
    SetPattern(cr, sun);
    CirclePath(cr, cx, sunY, 90.0);
    cairo_fill(cr);
    cairo_pattern_t* streak = cairo_pattern_create_linear(cx - w * 0.45, 0.0, cx + w * 0.45, 0.0);
    AddStop(streak, 0.0, AMBER_LIGHT, 0.0);
    AddStop(streak, 0.5, WHITE, 0.8);
    AddStop(streak, 1.0, AMBER_LIGHT, 0.0);
    SetPattern(cr, streak);
    cairo_rectangle(cr, cx - w * 0.45, sunY - 1.0, w * 0.9, 2.0);
    cairo_fill(cr);

    const double nameHeight = 80.0;
    DrawWordmark(p_canvas, cx, h * 0.4, nameHeight, 0.55);

    // The line under the name.
    SetInterfaceFont(cr, 15.0, true);
    SetRgb(cr, STEEL_LIGHT);
    const double lineY = h * 0.4 + nameHeight / 2.0 + 42.0;
    const double width = TrackedTextWidth(cr, "FRONTIER SPACE COMBAT", 9.0);
    FillCentredText(cr, "FRONTIER SPACE COMBAT", cx, lineY, 9.0);
    for (int side = -1; side <= 1; side += 2)
    {
        const double from = cx + side * (width / 2.0 + 16.0);
        const double to = cx + side * (width / 2.0 + 90.0);
        cairo_pattern_t* rule = cairo_pattern_create_linear(from, 0.0, to, 0.0);
        AddStop(rule, 0.0, AMBER, 1.0);
        AddStop(rule, 1.0, AMBER, 0.0);
        SetPattern(cr, rule);
        cairo_rectangle(cr, std::min(from, to), lineY - 6.0, std::abs(to - from), 1.5);
        cairo_fill(cr);
    }
    FadeEdgesToBlack(cr, w, h, 40.0);
}

// ---- The hub's planets ----------------------------------------------------------------------

// Behind the briefing (x 250 to 850 from y 300) the sky stays dark; the shop draws its panels
// over the same picture.
void DrawPlanets(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    cairo_pattern_t* sky = cairo_pattern_create_radial(w * 0.75, h * 0.1, 0.0, w * 0.6, h * 0.4, w * 0.9);
    AddStop(sky, 0.0, {0.05, 0.07, 0.13});
    AddStop(sky, 1.0, {0.008, 0.01, 0.02});
    SetPattern(cr, sky);
    cairo_paint(cr);
    PaintNebula(cr, w * 0.25, h * 0.25, w * 0.5, h * 0.45, {0.3, 0.16, 0.45}, 0.16, 14, 0x706C616Eu);
    PaintNebula(cr, w * 0.6, h * 0.55, w * 0.9, h * 0.35, {0.1, 0.28, 0.42}, 0.1, 14, 0x6E6562u);
    PaintNebula(cr, w * 0.1, h * 0.7, w * 0.3, h * 0.3, {0.6, 0.3, 0.1}, 0.07, 8, 0x64757374u);
    PaintStars(cr, 0.0, 0.0, w, h, 0x706C616E6574u, 700, 1.0);

    // A ringed gas giant at the top right, lit from the left.
    const Planet giant = {905.0, 75.0, 215.0, {0.95, 0.78, 0.55}, {0.3, 0.16, 0.08}, {1.0, 0.72, 0.4}, PI_VALUE * 0.85};
    const double ringTilt = -0.32;
    auto ringPath = [&](cairo_t* p_context, double p_from, double p_to, double p_scale) {
        cairo_save(p_context);
        cairo_translate(p_context, giant.x, giant.y);
        cairo_rotate(p_context, ringTilt);
        cairo_scale(p_context, giant.radius * 1.25 * p_scale, giant.radius * 0.24 * p_scale);
        cairo_new_sub_path(p_context);
        cairo_arc(p_context, 0.0, 0.0, 1.0, p_from, p_to);
        cairo_restore(p_context);
    };
    // The rings: many fine ellipses, the far half behind the planet, the near half in front.
    auto rings = [&](double p_from, double p_to, double p_alpha) {
        Random random(0x72696E67u);
        for (int i = 0; i < 60; ++i)
        {
            const double scale = 1.0 + i * 0.011;
            const bool gap = i > 34 && i < 39;
            ringPath(cr, p_from, p_to, scale);
            cairo_set_line_width(cr, 1.2);
            SetRgb(cr, Mix(Rgb{0.85, 0.7, 0.5}, Rgb{0.95, 0.9, 0.8}, random.Uniform(0.0, 1.0)),
                   gap ? 0.02 : p_alpha * random.Uniform(0.3, 1.0));
            cairo_stroke(cr);
        }
    };
    rings(PI_VALUE, 2.0 * PI_VALUE, 0.16);
    PaintPlanet(p_canvas, giant, 26, 0x67696Eu);
    rings(0.0, PI_VALUE, 0.35);
    // A small moon on the left.
    PaintPlanet(p_canvas, {118.0, 150.0, 34.0, {0.75, 0.8, 0.85}, {0.12, 0.14, 0.18}, {0.6, 0.8, 1.0}, PI_VALUE * 0.1},
                6, 0x6D6F6F6Eu);

    // The home world's night side along the bottom, city lights and a thin blue dawn line.
    const double homeRadius = 1700.0;
    const double homeX = w * 0.42;
    const double homeY = h + homeRadius - 92.0;
    PaintSoftLayer(p_canvas, 14, 0.9, [&](cairo_t* p_layer) {
        CirclePath(p_layer, homeX, homeY, homeRadius + 4.0);
        SetRgb(p_layer, {0.25, 0.55, 1.0}, 0.6);
        cairo_fill(p_layer);
    });
    CirclePath(cr, homeX, homeY, homeRadius);
    cairo_pattern_t* ground = cairo_pattern_create_linear(0.0, homeY - homeRadius, 0.0, h);
    AddStop(ground, 0.0, {0.05, 0.08, 0.14});
    AddStop(ground, 0.15, {0.015, 0.02, 0.04});
    AddStop(ground, 1.0, {0.005, 0.008, 0.015});
    SetPattern(cr, ground);
    cairo_fill(cr);
    cairo_save(cr);
    CirclePath(cr, homeX, homeY, homeRadius - 3.0);
    cairo_clip(cr);
    Random lights(0x6369747975u);
    for (int i = 0; i < 260; ++i)
    {
        const double x = lights.Uniform(0.0, w);
        const double y = lights.Uniform(h - 92.0, h);
        const double cluster = std::sin(x * 0.013) * std::sin(x * 0.031 + 1.0);
        if (cluster < 0.1)
            continue;
        CirclePath(cr, x, y, lights.Uniform(0.4, 1.1));
        SetRgb(cr, {1.0, 0.75, 0.4}, lights.Uniform(0.2, 0.7) * cluster);
        cairo_fill(cr);
    }
    cairo_restore(cr);
    cairo_new_sub_path(cr);
    cairo_arc(cr, homeX, homeY, homeRadius, -PI_VALUE / 2.0 - 0.45, -PI_VALUE / 2.0 + 0.45);
    cairo_set_line_width(cr, 1.5);
    SetRgb(cr, {0.55, 0.8, 1.0}, 0.8);
    cairo_stroke(cr);
}

// ---- Credits --------------------------------------------------------------------------------

// Deep space for a slide that fades in and out of black.
void PaintSlideSpace(Canvas& p_canvas, uint64_t p_seed)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    cairo_pattern_t* sky = cairo_pattern_create_radial(w / 2.0, h * 0.45, 0.0, w / 2.0, h / 2.0, w * 0.65);
    AddStop(sky, 0.0, {0.045, 0.06, 0.1});
    AddStop(sky, 1.0, {0.004, 0.006, 0.012});
    SetPattern(cr, sky);
    cairo_paint(cr);
    PaintStars(cr, 0.0, 0.0, w, h, p_seed, 260, 0.8);
}

void Heading(cairo_t* p_context, const char* p_text, double p_x, double p_baseline)
{
    SetInterfaceFont(p_context, 14.0, true);
    SetRgb(p_context, AMBER);
    FillCentredText(p_context, p_text, p_x, p_baseline, 5.0);
}

void Name(cairo_t* p_context, const char* p_text, double p_x, double p_baseline)
{
    SetInterfaceFont(p_context, 24.0, false);
    SetRgb(p_context, STEEL_HIGHLIGHT);
    FillCentredText(p_context, p_text, p_x, p_baseline, 1.5);
}

void DrawCredits1(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double cx = p_canvas.Width() / 2.0;
    PaintSlideSpace(p_canvas, 0x6372656431u);
    PaintNebula(cr, cx, 330.0, 700.0, 260.0, {0.12, 0.2, 0.42}, 0.25, 14, 0x31u);
    DrawWordmark(p_canvas, cx, 320.0, 120.0, 0.6);
    SetInterfaceFont(cr, 18.0, false);
    SetRgb(cr, STEEL_LIGHT);
    FillCentredText(cr, "a game by", cx, 470.0, 3.0);
    SetInterfaceFont(cr, 34.0, true);
    cairo_new_path(cr);
    CentredTextPath(cr, "THE KORVATH TEAM", cx, 520.0, 8.0);
    SetVertical(cr, 490.0, 520.0, AMBER_LIGHT, AMBER);
    cairo_fill(cr);
}

void DrawCredits2(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double cx = w / 2.0;
    PaintSlideSpace(p_canvas, 0x6372656432u);
    PaintPlanet(p_canvas, {w + 60.0, 760.0, 300.0, {0.6, 0.75, 0.95}, {0.05, 0.07, 0.12}, {0.5, 0.75, 1.0}, PI_VALUE * 1.2},
                18, 0x32u);
    SetInterfaceFont(cr, 40.0, true);
    SetRgb(cr, STEEL_HIGHLIGHT);
    FillCentredText(cr, "CREDITS", cx, 120.0, 16.0);
    cairo_rectangle(cr, cx - 60.0, 140.0, 120.0, 2.0);
    SetRgb(cr, AMBER);
    cairo_fill(cr);
    const char* const ROLES[] = {"GAME DESIGN", "PROGRAMMING", "ART AND ANIMATION", "MUSIC AND SOUND", "LEVELS AND MISSIONS",
                                 "TESTING"};
    for (size_t i = 0; i < std::size(ROLES); ++i)
    {
        const double column = (i % 2 == 0) ? cx - 200.0 : cx + 200.0;
        const double top = 230.0 + double(i / 2) * 130.0;
        Heading(cr, ROLES[i], column, top);
        Name(cr, "The Korvath team", column, top + 38.0);
    }
}

void DrawCredits3(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double cx = w / 2.0;
    PaintSlideSpace(p_canvas, 0x6372656433u);
    PaintNebula(cr, cx, 300.0, 800.0, 300.0, {0.45, 0.25, 0.1}, 0.14, 14, 0x33u);
    SetInterfaceFont(cr, 46.0, true);
    cairo_new_path(cr);
    CentredTextPath(cr, "THANK YOU FOR PLAYING", cx, 300.0, 6.0);
    SetVertical(cr, 262.0, 300.0, STEEL_HIGHLIGHT, STEEL);
    cairo_fill(cr);
    SetInterfaceFont(cr, 18.0, false);
    SetRgb(cr, STEEL_LIGHT);
    FillCentredText(cr, "The Reach is safe, for now.", cx, 350.0, 1.0);

    Heading(cr, "MADE WITH", cx, 470.0);
    SetInterfaceFont(cr, 18.0, false);
    SetRgb(cr, STEEL_HIGHLIGHT);
    FillCentredText(cr, "SDL2   OpenGL   FreeType   fontconfig   Cairo   FluidSynth", cx, 505.0, 1.0);
    Heading(cr, "WITH THANKS TO", cx, 575.0);
    SetInterfaceFont(cr, 18.0, false);
    SetRgb(cr, STEEL_HIGHLIGHT);
    FillCentredText(cr, "Corvel School of Game Development   and   Brask Productions", cx, 610.0, 1.0);
    SetInterfaceFont(cr, 14.0, false);
    SetRgb(cr, STEEL);
    FillCentredText(cr, "The Korvath team", cx, 700.0, 3.0);
}

void ListTitlePictures(const ArtContext&, std::vector<PictureRecipe>& p_pictures)
{
    AddInterfacePicture(p_pictures, "art\\title.bmp", DrawTitle);
    AddInterfacePicture(p_pictures, "art\\planets.bmp", DrawPlanets);
    AddInterfacePicture(p_pictures, "art\\credits\\credits1.bmp", DrawCredits1);
    AddInterfacePicture(p_pictures, "art\\credits\\credits2.bmp", DrawCredits2);
    AddInterfacePicture(p_pictures, "art\\credits\\credits3.bmp", DrawCredits3);
}

const PictureRegistrar s_title(ListTitlePictures);

} // namespace

} // namespace artgen
