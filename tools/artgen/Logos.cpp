#include "Logos.h"
#include "Pictures.h"

#include <cmath>

namespace artgen
{

namespace
{

constexpr double PI = 3.14159265358979323846;

struct Colour
{
    double r;
    double g;
    double b;
};

void SetColour(cairo_t* p_context, const Colour& p_colour, double p_alpha = 1.0)
{
    cairo_set_source_rgba(p_context, p_colour.r, p_colour.g, p_colour.b, p_alpha);
}

void AddStop(cairo_pattern_t* p_pattern, double p_offset, const Colour& p_colour,
             double p_alpha = 1.0)
{
    cairo_pattern_add_color_stop_rgba(p_pattern, p_offset, p_colour.r, p_colour.g, p_colour.b,
                                      p_alpha);
}

// Takes ownership of p_pattern.
void SetPattern(cairo_t* p_context, cairo_pattern_t* p_pattern)
{
    cairo_set_source(p_context, p_pattern);
    cairo_pattern_destroy(p_pattern);
}

// Deep space that darkens to black at the edges, so the fade in and out has no hard frame,
// with faint stars kept away from the middle where the mark sits.
void PaintSpace(Canvas& p_canvas, const Colour& p_centre, const Colour& p_edge, uint64_t p_seed,
                int p_starCount, double p_clearRadius)
{
    cairo_t* cr = p_canvas.Get();
    const double width = p_canvas.Width();
    const double height = p_canvas.Height();
    const double cx = width / 2.0;
    const double cy = height / 2.0;

    cairo_pattern_t* sky = cairo_pattern_create_radial(cx, cy * 0.9, 0.0, cx, cy, width * 0.62);
    AddStop(sky, 0.0, p_centre);
    AddStop(sky, 1.0, p_edge);
    SetPattern(cr, sky);
    cairo_paint(cr);

    Random random(p_seed);
    for (int i = 0; i < p_starCount; ++i)
    {
        const double x = random.Uniform(0.0, width);
        const double y = random.Uniform(0.0, height);
        const double size = random.Uniform(0.0, 1.0);
        const double brightness = random.Uniform(0.0, 1.0);
        const double tint = random.Uniform(-1.0, 1.0);
        // Most stars barely there, a few clearly visible.
        double alpha = 0.06 + 0.5 * brightness * brightness * brightness;
        const double distance = std::hypot(x - cx, (y - cy) * 1.2);
        if (distance < p_clearRadius)
            alpha *= std::pow(distance / p_clearRadius, 2.0);
        const double radius = 0.45 + 0.75 * size * size;
        cairo_set_source_rgba(cr, 0.86 + 0.1 * tint, 0.9, 0.98 - 0.1 * tint, alpha);
        cairo_arc(cr, x, y, radius, 0.0, 2.0 * PI);
        cairo_fill(cr);
    }
}

// A soft light behind a mark, fading to nothing.
void PaintHalo(cairo_t* p_context, double p_x, double p_y, double p_radius, const Colour& p_colour,
               double p_alpha)
{
    cairo_pattern_t* halo = cairo_pattern_create_radial(p_x, p_y, 0.0, p_x, p_y, p_radius);
    AddStop(halo, 0.0, p_colour, p_alpha);
    AddStop(halo, 0.45, p_colour, p_alpha * 0.35);
    AddStop(halo, 1.0, p_colour, 0.0);
    SetPattern(p_context, halo);
    cairo_arc(p_context, p_x, p_y, p_radius, 0.0, 2.0 * PI);
    cairo_fill(p_context);
}

// ---- Corvel ---------------------------------------------------------------------------------

const Colour CORVEL_GOLD_LIGHT = {0.91, 0.80, 0.57};
const Colour CORVEL_GOLD = {0.78, 0.66, 0.44};
const Colour CORVEL_GOLD_DARK = {0.55, 0.45, 0.28};
const Colour CORVEL_IVORY = {0.94, 0.92, 0.87};
const Colour CORVEL_FIELD_LIGHT = {0.10, 0.13, 0.22};
const Colour CORVEL_FIELD_DARK = {0.025, 0.032, 0.06};

// Gold lit from above, across the emblem's height.
void SetCorvelGold(cairo_t* p_context, double p_top, double p_bottom)
{
    cairo_pattern_t* gold = cairo_pattern_create_linear(0.0, p_top, 0.0, p_bottom);
    AddStop(gold, 0.0, CORVEL_GOLD_LIGHT);
    AddStop(gold, 0.55, CORVEL_GOLD);
    AddStop(gold, 1.0, CORVEL_GOLD_DARK);
    SetPattern(p_context, gold);
}

// A star of p_points sharp rays with straight sides.
void StarPath(cairo_t* p_context, double p_x, double p_y, int p_points, double p_outer,
              double p_inner, double p_rotation)
{
    for (int i = 0; i < p_points * 2; ++i)
    {
        const double angle = p_rotation + PI * double(i) / double(p_points) - PI / 2.0;
        const double radius = (i % 2 == 0) ? p_outer : p_inner;
        const double x = p_x + radius * std::cos(angle);
        const double y = p_y + radius * std::sin(angle);
        if (i == 0)
            cairo_move_to(p_context, x, y);
        else
            cairo_line_to(p_context, x, y);
    }
    cairo_close_path(p_context);
}

// Part of a tilted elliptical orbit, from p_from to p_to (radians along the ellipse).
void OrbitArc(cairo_t* p_context, double p_x, double p_y, double p_rx, double p_ry, double p_tilt,
              double p_from, double p_to)
{
    cairo_save(p_context);
    cairo_translate(p_context, p_x, p_y);
    cairo_rotate(p_context, p_tilt);
    cairo_scale(p_context, p_rx, p_ry);
    cairo_new_sub_path(p_context);
    cairo_arc(p_context, 0.0, 0.0, 1.0, p_from, p_to);
    cairo_restore(p_context);
}

void DrawCorvelEmblem(cairo_t* p_context, double p_x, double p_y)
{
    cairo_t* cr = p_context;
    const double outer = 150.0;
    const double field = 122.0;

    PaintHalo(cr, p_x, p_y, 280.0, {0.30, 0.36, 0.55}, 0.16);

    // The seal's body hides the stars behind it.
    cairo_pattern_t* body = cairo_pattern_create_radial(p_x, p_y - 40.0, 10.0, p_x, p_y, outer);
    AddStop(body, 0.0, {0.06, 0.075, 0.12});
    AddStop(body, 1.0, {0.02, 0.025, 0.045});
    SetPattern(cr, body);
    cairo_arc(cr, p_x, p_y, outer, 0.0, 2.0 * PI);
    cairo_fill(cr);

    // Rim: a heavy ring, a fine ring and a graduated band between them, like a struck medal.
    SetCorvelGold(cr, p_y - outer, p_y + outer);
    cairo_set_line_width(cr, 3.5);
    cairo_arc(cr, p_x, p_y, outer - 1.75, 0.0, 2.0 * PI);
    cairo_stroke(cr);
    cairo_set_line_width(cr, 1.0);
    cairo_arc(cr, p_x, p_y, outer - 9.0, 0.0, 2.0 * PI);
    cairo_stroke(cr);
    cairo_set_line_width(cr, 1.8);
    cairo_arc(cr, p_x, p_y, field + 1.0, 0.0, 2.0 * PI);
    cairo_stroke(cr);

    const int ticks = 72;
    cairo_set_line_width(cr, 1.1);
    for (int i = 0; i < ticks; ++i)
    {
        if (i % 18 == 0)
            continue; // the cardinal marks below take these places
        const double angle = 2.0 * PI * double(i) / double(ticks);
        const double from = (i % 2 == 0) ? field + 6.0 : field + 8.0;
        const double to = outer - 13.0;
        cairo_move_to(cr, p_x + from * std::cos(angle), p_y + from * std::sin(angle));
        cairo_line_to(cr, p_x + to * std::cos(angle), p_y + to * std::sin(angle));
    }
    SetColour(cr, CORVEL_GOLD, 0.55);
    cairo_stroke(cr);
    for (int i = 0; i < 4; ++i)
    {
        const double angle = PI / 2.0 * double(i);
        const double r = (field + outer - 9.0) / 2.0 + 0.5;
        StarPath(cr, p_x + r * std::cos(angle), p_y + r * std::sin(angle), 4, 6.5, 2.2, angle);
    }
    SetCorvelGold(cr, p_y - outer, p_y + outer);
    cairo_fill(cr);

    // The field: night sky inside the ring.
    cairo_pattern_t* sky = cairo_pattern_create_radial(p_x, p_y - 30.0, 0.0, p_x, p_y, field);
    AddStop(sky, 0.0, CORVEL_FIELD_LIGHT);
    AddStop(sky, 1.0, CORVEL_FIELD_DARK);
    SetPattern(cr, sky);
    cairo_arc(cr, p_x, p_y, field, 0.0, 2.0 * PI);
    cairo_fill(cr);
    static const double FIELD_STARS[][3] = {{-62, -58, 1.3}, {48, -78, 1.0}, {78, -30, 1.2},
                                            {-86, 22, 1.0},  {-30, 74, 1.1}, {56, 62, 1.3},
                                            {-18, -96, 0.9}, {96, 30, 0.8}};
    for (const auto& star : FIELD_STARS)
    {
        cairo_arc(cr, p_x + star[0], p_y + star[1], star[2], 0.0, 2.0 * PI);
        SetColour(cr, CORVEL_IVORY, 0.55);
        cairo_fill(cr);
    }

    // Orbit: the far half passes behind the star, the near half in front of it.
    const double orbitX = 98.0;
    const double orbitY = 31.0;
    const double tilt = -0.38;
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_width(cr, 1.6);
    OrbitArc(cr, p_x, p_y, orbitX, orbitY, tilt, PI, 2.0 * PI);
    SetColour(cr, CORVEL_GOLD, 0.55);
    cairo_stroke(cr);

    PaintHalo(cr, p_x, p_y, 70.0, {1.0, 0.93, 0.78}, 0.28);
    StarPath(cr, p_x, p_y, 4, 30.0, 6.0, PI / 4.0);
    SetColour(cr, CORVEL_GOLD, 0.7);
    cairo_fill(cr);
    StarPath(cr, p_x, p_y, 4, 58.0, 9.5, 0.0);
    cairo_pattern_t* star = cairo_pattern_create_radial(p_x, p_y, 0.0, p_x, p_y, 58.0);
    AddStop(star, 0.0, {1.0, 0.99, 0.95});
    AddStop(star, 0.5, CORVEL_IVORY);
    AddStop(star, 1.0, CORVEL_GOLD_LIGHT);
    SetPattern(cr, star);
    cairo_fill(cr);

    // The near half, broken where the planet sits on it.
    const double planetAt = 2.25;
    const double gap = 0.16;
    cairo_set_line_width(cr, 2.2);
    OrbitArc(cr, p_x, p_y, orbitX, orbitY, tilt, 0.0, planetAt - gap);
    OrbitArc(cr, p_x, p_y, orbitX, orbitY, tilt, planetAt + gap, PI);
    SetCorvelGold(cr, p_y - orbitY, p_y + orbitY + 30.0);
    cairo_stroke(cr);

    const double ex = orbitX * std::cos(planetAt);
    const double ey = orbitY * std::sin(planetAt);
    const double planetX = p_x + ex * std::cos(tilt) - ey * std::sin(tilt);
    const double planetY = p_y + ex * std::sin(tilt) + ey * std::cos(tilt);
    cairo_pattern_t* planet =
        cairo_pattern_create_radial(planetX - 2.5, planetY - 2.5, 0.5, planetX, planetY, 8.0);
    AddStop(planet, 0.0, CORVEL_IVORY);
    AddStop(planet, 1.0, CORVEL_GOLD_DARK);
    SetPattern(cr, planet);
    cairo_arc(cr, planetX, planetY, 7.0, 0.0, 2.0 * PI);
    cairo_fill(cr);
}

// ---- Brask Productions -----------------------------------------------------------------------

const Colour BRASK_ACCENT = {0.36, 0.72, 0.92};
const Colour BRASK_STEEL_LIGHT = {0.96, 0.97, 0.99};
const Colour BRASK_STEEL_MID = {0.74, 0.78, 0.84};
const Colour BRASK_STEEL_DARK = {0.55, 0.60, 0.68};
const Colour BRASK_STEEL_LOW = {0.86, 0.89, 0.93};

// Polished steel: bright top, a horizon line across the middle, lighter again below.
void SetSteel(cairo_t* p_context, double p_top, double p_bottom)
{
    cairo_pattern_t* steel = cairo_pattern_create_linear(0.0, p_top, 0.0, p_bottom);
    AddStop(steel, 0.0, BRASK_STEEL_LIGHT);
    AddStop(steel, 0.5, BRASK_STEEL_MID);
    AddStop(steel, 0.52, BRASK_STEEL_DARK);
    AddStop(steel, 1.0, BRASK_STEEL_LOW);
    SetPattern(p_context, steel);
}

void HexagonPath(cairo_t* p_context, double p_x, double p_y, double p_radius)
{
    for (int i = 0; i < 6; ++i)
    {
        const double angle = PI / 3.0 * double(i) - PI / 2.0;
        const double x = p_x + p_radius * std::cos(angle);
        const double y = p_y + p_radius * std::sin(angle);
        if (i == 0)
            cairo_move_to(p_context, x, y);
        else
            cairo_line_to(p_context, x, y);
    }
    cairo_close_path(p_context);
}

// The angular B, cut from straight lines with chamfered corners, leaning forward. Its box is
// 100 x 140 units, centred on p_x, p_y and scaled by p_scale; fill it even-odd.
void MonogramPath(cairo_t* p_context, double p_x, double p_y, double p_scale)
{
    static const double OUTLINE[][2] = {{0, 0},    {78, 0},    {98, 20},  {98, 53}, {87, 68},
                                        {100, 81}, {100, 120}, {80, 140}, {0, 140}};
    static const double UPPER[][2] = {{26, 22}, {64, 22}, {72, 30}, {72, 49}, {64, 57}, {26, 57}};
    static const double LOWER[][2] = {{26, 79}, {66, 79}, {74, 87}, {74, 110}, {66, 118},
                                      {26, 118}};
    const double lean = 0.2;
    cairo_save(p_context);
    cairo_translate(p_context, p_x, p_y);
    cairo_scale(p_context, p_scale, p_scale);
    cairo_matrix_t shear;
    cairo_matrix_init(&shear, 1.0, 0.0, -lean, 1.0, 0.0, 0.0);
    cairo_transform(p_context, &shear);
    cairo_translate(p_context, -50.0, -70.0);
    auto polygon = [p_context](const double (*p_points)[2], int p_count) {
        cairo_move_to(p_context, p_points[0][0], p_points[0][1]);
        for (int i = 1; i < p_count; ++i)
            cairo_line_to(p_context, p_points[i][0], p_points[i][1]);
        cairo_close_path(p_context);
    };
    polygon(OUTLINE, 9);
    polygon(UPPER, 6);
    polygon(LOWER, 6);
    cairo_restore(p_context);
}

// Fills the monogram split in two by a thin rising cut through its waist, the mark's one
// flourish: it reads as speed rather than as a plain letter.
void FillMonogram(cairo_t* p_context, double p_x, double p_y, double p_scale)
{
    cairo_save(p_context);
    cairo_new_path(p_context);
    cairo_rectangle(p_context, p_x - 100.0 * p_scale, p_y - 100.0 * p_scale, 200.0 * p_scale,
                    200.0 * p_scale);
    const double halfGap = 2.6 * p_scale;
    const double leftX = p_x - 80.0 * p_scale;
    const double rightX = p_x + 80.0 * p_scale;
    const double leftY = p_y + 16.0 * p_scale;
    const double rightY = p_y - 12.0 * p_scale;
    cairo_move_to(p_context, leftX, leftY - halfGap);
    cairo_line_to(p_context, rightX, rightY - halfGap);
    cairo_line_to(p_context, rightX, rightY + halfGap);
    cairo_line_to(p_context, leftX, leftY + halfGap);
    cairo_close_path(p_context);
    cairo_set_fill_rule(p_context, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_clip(p_context);
    MonogramPath(p_context, p_x, p_y, p_scale);
    cairo_fill(p_context);
    cairo_restore(p_context);
}

} // namespace

void DrawCorvelLogo(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double cx = p_canvas.Width() / 2.0;
    PaintSpace(p_canvas, {0.045, 0.055, 0.09}, {0.006, 0.008, 0.014}, 0x636F7276656Cull, 170,
               330.0);

    DrawCorvelEmblem(cr, cx, 296.0);

    cairo_select_font_face(cr, "Liberation Serif", CAIRO_FONT_SLANT_NORMAL,
                           CAIRO_FONT_WEIGHT_BOLD);
    cairo_set_font_size(cr, 74.0);
    cairo_new_path(cr);
    CentredTextPath(cr, "CORVEL", cx, 548.0, 22.0);
    cairo_pattern_t* name = cairo_pattern_create_linear(0.0, 494.0, 0.0, 548.0);
    AddStop(name, 0.0, {0.97, 0.96, 0.92});
    AddStop(name, 1.0, {0.80, 0.77, 0.70});
    SetPattern(cr, name);
    cairo_fill(cr);

    // A fine rule with a small diamond between the name and the line beneath.
    const double ruleY = 578.5;
    cairo_pattern_t* rule = cairo_pattern_create_linear(cx - 170.0, 0.0, cx + 170.0, 0.0);
    AddStop(rule, 0.0, CORVEL_GOLD, 0.0);
    AddStop(rule, 0.3, CORVEL_GOLD, 0.8);
    AddStop(rule, 0.7, CORVEL_GOLD, 0.8);
    AddStop(rule, 1.0, CORVEL_GOLD, 0.0);
    SetPattern(cr, rule);
    cairo_set_line_width(cr, 1.0);
    cairo_move_to(cr, cx - 170.0, ruleY);
    cairo_line_to(cr, cx - 12.0, ruleY);
    cairo_move_to(cr, cx + 12.0, ruleY);
    cairo_line_to(cr, cx + 170.0, ruleY);
    cairo_stroke(cr);
    StarPath(cr, cx, ruleY, 2, 5.0, 3.5, PI / 2.0);
    SetColour(cr, CORVEL_GOLD);
    cairo_fill(cr);

    cairo_select_font_face(cr, "Liberation Sans", CAIRO_FONT_SLANT_NORMAL,
                           CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, 16.0);
    CentredTextPath(cr, "SCHOOL OF GAME DEVELOPMENT", cx, 614.0, 5.5);
    SetColour(cr, {0.74, 0.68, 0.54});
    cairo_fill(cr);
}

void DrawBraskProductions(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double cx = p_canvas.Width() / 2.0;
    const double markY = 282.0;
    const double hexRadius = 116.0;
    const double nameBaseline = 556.0;
    const double nameSize = 116.0;
    const double nameTracking = 18.0;
    const double monogramScale = 1.05;
    PaintSpace(p_canvas, {0.03, 0.045, 0.065}, {0.004, 0.006, 0.009}, 0x627261736Bull, 110, 360.0);

    // The glow: the mark's shapes in the accent colour, blurred on a layer of their own.
    Canvas glow(p_canvas.Width(), p_canvas.Height());
    cairo_t* g = glow.Get();
    SetColour(g, BRASK_ACCENT);
    cairo_set_line_width(g, 6.0);
    HexagonPath(g, cx, markY, hexRadius);
    cairo_stroke(g);
    FillMonogram(g, cx, markY, monogramScale);
    cairo_select_font_face(g, "Liberation Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
    cairo_set_font_size(g, nameSize);
    CentredTextPath(g, "BRASK", cx, nameBaseline, nameTracking);
    SetColour(g, BRASK_ACCENT, 0.6);
    cairo_fill(g);
    glow.Blur(14);
    cairo_set_source_surface(cr, glow.Surface(), 0.0, 0.0);
    cairo_paint_with_alpha(cr, 0.5);

    // Badge: a dark hexagon with a bright rim and a fine inner line.
    HexagonPath(cr, cx, markY, hexRadius);
    cairo_pattern_t* plate =
        cairo_pattern_create_linear(0.0, markY - hexRadius, 0.0, markY + hexRadius);
    AddStop(plate, 0.0, {0.06, 0.09, 0.12});
    AddStop(plate, 1.0, {0.015, 0.025, 0.035});
    SetPattern(cr, plate);
    cairo_fill_preserve(cr);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
    cairo_set_line_width(cr, 3.0);
    SetColour(cr, BRASK_ACCENT);
    cairo_stroke(cr);
    HexagonPath(cr, cx, markY, hexRadius - 10.0);
    cairo_set_line_width(cr, 1.0);
    SetColour(cr, BRASK_ACCENT, 0.35);
    cairo_stroke(cr);

    SetSteel(cr, markY - 70.0 * monogramScale, markY + 70.0 * monogramScale);
    FillMonogram(cr, cx, markY, monogramScale);

    cairo_select_font_face(cr, "Liberation Sans", CAIRO_FONT_SLANT_NORMAL,
                           CAIRO_FONT_WEIGHT_BOLD);
    cairo_set_font_size(cr, nameSize);
    CentredTextPath(cr, "BRASK", cx, nameBaseline, nameTracking);
    SetSteel(cr, nameBaseline - nameSize * 0.72, nameBaseline);
    cairo_fill(cr);

    // PRODUCTIONS, spaced wide, between two lines that fade outwards.
    const double subBaseline = 606.0;
    cairo_set_font_size(cr, 20.0);
    const double subWidth = CentredTextPath(cr, "PRODUCTIONS", cx, subBaseline, 14.0);
    SetColour(cr, BRASK_ACCENT);
    cairo_fill(cr);
    const double lineY = subBaseline - 7.5;
    const double inner = subWidth / 2.0 + 22.0;
    const double length = 110.0;
    for (int side = -1; side <= 1; side += 2)
    {
        const double from = cx + side * inner;
        const double to = cx + side * (inner + length);
        cairo_pattern_t* line = cairo_pattern_create_linear(from, 0.0, to, 0.0);
        AddStop(line, 0.0, BRASK_ACCENT, 0.8);
        AddStop(line, 1.0, BRASK_ACCENT, 0.0);
        SetPattern(cr, line);
        cairo_set_line_width(cr, 1.5);
        cairo_move_to(cr, from, lineY);
        cairo_line_to(cr, to, lineY);
        cairo_stroke(cr);
    }
}

} // namespace artgen

namespace artgen
{
namespace
{
void ListLogoPictures(const ArtContext&, std::vector<PictureRecipe>& p_pictures)
{
    p_pictures.push_back({"art\\menu\\corvel_logo.bmp", 1024, 768, false, DrawCorvelLogo});
    p_pictures.push_back({"art\\menu\\brask_productions.bmp", 1024, 768, false, DrawBraskProductions});
}
const PictureRegistrar s_logos(ListLogoPictures);
} // namespace
} // namespace artgen
