// Scenery: the stations, rigs, wrecks, beacons and asteroids the levels place under the ships
// (loaded by the game as "Entity\" + the name). Lit from the same side as the ships.

#include "ArtSources.h"
#include "Pictures.h"
#include "Rock.h"
#include "ShipPainter.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace artgen
{

namespace
{

using kit::Hex;
using kit::Rgb;
using P = ShipPainter::Point2;

const Vec3 UP{0.0, 0.0, 1.0};
const Rgb HULL = Hex(0x9AA3AE);
const Rgb HULL_DARK = Hex(0x515A66);
const Rgb METAL = Hex(0x6E747C);
const Rgb WARM = Hex(0xFFD890);
const Rgb RED_LIGHT = Hex(0xFF3A2A);
const Rgb SOLAR = Hex(0x1C3A78);

RockStyle Rock(uint32_t p_seed, int p_craters = 8)
{
    RockStyle style;
    style.light = Hex(0x9C8C7C);
    style.dark = Hex(0x1C1814);
    style.craters = p_craters;
    style.lumpiness = 0.14;
    style.roughness = 0.6;
    style.seed = p_seed;
    return style;
}

double Cx(Canvas& p_canvas)
{
    return p_canvas.Width() / 2.0;
}

double Cy(Canvas& p_canvas)
{
    return p_canvas.Height() / 2.0;
}

// A solar panel: a dark blue plate with a cell grid, from (p_x, p_y), p_width by p_height.
void SolarPanel(ShipPainter& p, double p_x, double p_y, double p_width, double p_height, double p_z)
{
    p.Begin();
    p.Poly({{p_x, p_y}, {p_x + p_width, p_y}, {p_x + p_width, p_y + p_height}, {p_x, p_y + p_height}}, p_z);
    p.FillFlat(SOLAR, {0.1, -0.15, 1.0}, 0.9);
    const int columns = std::max(2, int(std::abs(p_width) / 4.0));
    const int rows = std::max(2, int(std::abs(p_height) / 4.0));
    for (int i = 1; i < columns; ++i)
        p.PanelLine({{p_x + p_width * i / columns, p_y}, {p_x + p_width * i / columns, p_y + p_height}}, p_z, 0.5);
    for (int j = 1; j < rows; ++j)
        p.PanelLine({{p_x, p_y + p_height * j / rows}, {p_x + p_width, p_y + p_height * j / rows}}, p_z, 0.5);
    p.Begin();
    p.Poly({{p_x, p_y}, {p_x + p_width, p_y}, {p_x + p_width, p_y + p_height}, {p_x, p_y + p_height}}, p_z);
    p.Stroke(HULL, 0.8, 0.9);
}

// A round module seen from above: a cylinder lying along y.
void Module(ShipPainter& p, double p_x, double p_y, double p_halfWidth, double p_halfLength, const Rgb& p_colour,
            double p_z)
{
    p.Begin();
    p.Move(p_x - p_halfWidth, p_y - p_halfLength + p_halfWidth, p_z);
    p.Curve(p_x - p_halfWidth, p_y - p_halfLength, p_x + p_halfWidth, p_y - p_halfLength, p_x + p_halfWidth,
            p_y - p_halfLength + p_halfWidth, p_z);
    p.Line(p_x + p_halfWidth, p_y + p_halfLength - p_halfWidth, p_z);
    p.Curve(p_x + p_halfWidth, p_y + p_halfLength, p_x - p_halfWidth, p_y + p_halfLength, p_x - p_halfWidth,
            p_y + p_halfLength - p_halfWidth, p_z);
    p.Close();
    p.FillRound(p_colour, p_x, p_halfWidth, p_y, p_z, 0.9, 0.5);
}

void Tube(ShipPainter& p, const P& p_from, const P& p_to, double p_width, double p_z)
{
    p.Begin();
    p.Move(p_from.x, p_from.y, p_z);
    p.Line(p_to.x, p_to.y, p_z);
    p.Stroke(Hex(0x2A2E34), p_width + 1.2, 1.0);
    p.Begin();
    p.Move(p_from.x, p_from.y, p_z);
    p.Line(p_to.x, p_to.y, p_z);
    p.Stroke(METAL, p_width, 1.0);
}

// ---- the pictures -------------------------------------------------------------------------

void DrawBeacon(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    for (int i = 0; i < 3; ++i)
    {
        const double angle = 2.0 * kit::PI * i / 3.0 - kit::PI / 2.0;
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        p.Begin();
        p.Poly({{c * 4.0 - s * 2.5, s * 4.0 + c * 2.5}, {c * 17.0 - s * 4.0, s * 17.0 + c * 4.0},
                {c * 17.0 + s * 4.0, s * 17.0 - c * 4.0}, {c * 4.0 + s * 2.5, s * 4.0 - c * 2.5}},
               1.0);
        p.FillFlat(SOLAR, {0.0, -0.1, 1.0}, 0.8);
        p.PanelLine({{c * 10.0 - s * 3.2, s * 10.0 + c * 3.2}, {c * 10.0 + s * 3.2, s * 10.0 - c * 3.2}}, 1.0, 0.5);
    }
    p.Sphere(0.0, 0.0, 3.0, 6.5, HULL_DARK, 0.4);
    p.Begin();
    p.Ellipse(0.0, 0.0, 6.0, 3.4, 3.4);
    p.FillFlat(Hex(0x103818), UP, 0.2);
    p.Light(0.0, 0.0, 7.0, 3.2, Hex(0x60FF80), 1.0);
    p.Light(0.0, 0.0, 7.0, 6.5, Hex(0x30D060), 0.5);
    p.Finish();
}

void DrawOutpost(Canvas& p_canvas)
{
    PaintRock(p_canvas, Cx(p_canvas) - 6.0, Cy(p_canvas) + 6.0, 74.0, 66.0, Rock(501u, 10));
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    Tube(p, {-30, -14}, {10, -14}, 3.0, 4.0);
    Tube(p, {-8, -14}, {-8, 28}, 3.0, 4.0);
    Tube(p, {10, -14}, {34, 14}, 3.0, 4.0);
    Module(p, -30.0, -14.0, 9.0, 22.0, HULL, 6.0);
    Module(p, 10.0, -14.0, 8.0, 18.0, Hex(0xB8AE98), 6.0);
    Module(p, -8.0, 28.0, 8.0, 16.0, HULL, 6.0);
    p.Sphere(34.0, 16.0, 6.0, 12.0, HULL, 0.6);
    p.Sphere(-44.0, 30.0, 4.0, 7.0, Hex(0xB8AE98), 0.5);
    Tube(p, {-44, 30}, {-16, 28}, 2.5, 4.0);
    for (int i = 0; i < 5; ++i)
    {
        p.Light(-30.0, -28.0 + i * 7.0, 10.0, 0.8, WARM, 0.9);
        p.Light(-8.0, 18.0 + i * 5.0, 10.0, 0.8, WARM, 0.9);
    }
    // the antenna mast and its dish
    p.Begin();
    p.Move(10.0, -30.0, 8.0);
    p.Line(38.0, -58.0, 8.0);
    p.Stroke(Hex(0xC0C6CC), 1.4, 1.0);
    p.Sphere(40.0, -60.0, 10.0, 7.0, Hex(0xD8DCE0), 0.6);
    p.Light(40.0, -60.0, 12.0, 1.4, RED_LIGHT, 0.9);
    SolarPanel(p, 24.0, -4.0, 22.0, 10.0, 5.0);
    p.Finish();
}

void DrawMiningRig(Canvas& p_canvas)
{
    PaintRock(p_canvas, Cx(p_canvas), Cy(p_canvas) + 4.0, 62.0, 56.0, Rock(502u, 7));
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    // clamps reaching down onto the rock
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        Tube(p, {14, -14}, {40, -36}, 4.0, 4.0);
        Tube(p, {14, 14}, {42, 32}, 4.0, 4.0);
        p.Begin();
        p.Ellipse(40.0, -36.0, 3.0, 4.0, 4.0);
        p.FillFlat(HULL_DARK, UP, 0.3);
        p.Begin();
        p.Ellipse(42.0, 32.0, 3.0, 4.0, 4.0);
        p.FillFlat(HULL_DARK, UP, 0.3);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.Poly({{-20, -20}, {20, -20}, {20, 20}, {-20, 20}}, 7.0);
    p.FillFlat(Hex(0x8A8070), UP, 0.4);
    // hazard edge and deck plates
    p.Begin();
    p.Poly({{-20, -20}, {20, -20}, {20, 20}, {-20, 20}}, 7.0);
    cairo_set_dash(p.Cr(), std::vector<double>{3.0, 3.0}.data(), 2, 0.0);
    p.Stroke(Hex(0xE2B23A), 2.0, 1.0);
    cairo_set_dash(p.Cr(), nullptr, 0, 0.0);
    p.PanelLine({{-20, 0}, {20, 0}}, 7.0);
    p.PanelLine({{0, -20}, {0, 20}}, 7.0);
    // the drill head in the middle
    p.Sphere(0.0, 0.0, 9.0, 9.0, METAL, 0.6);
    for (int i = 0; i < 6; ++i)
    {
        const double angle = 2.0 * kit::PI * i / 6.0;
        p.Begin();
        p.Move(std::cos(angle) * 4.0, std::sin(angle) * 4.0, 12.0);
        p.Line(std::cos(angle + 0.6) * 8.5, std::sin(angle + 0.6) * 8.5, 12.0);
        p.Stroke(Hex(0x2A2A2A), 1.2, 0.8);
    }
    // floodlights on the corners, throwing light onto the rock
    for (const P& corner : std::vector<P>{{-20, -20}, {20, -20}, {20, 20}, {-20, 20}})
    {
        p.Light(corner.x, corner.y, 9.0, 2.0, Hex(0xFFF0C0), 1.0);
        p.Light(corner.x * 1.9, corner.y * 1.9, 2.0, 10.0, Hex(0xFFE0A0), 0.18);
    }
    p.Finish();
}

void DrawDepot(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    // the frame
    p.Begin();
    p.Poly({{-90, -40}, {20, -40}, {20, 56}, {-90, 56}}, 2.0);
    p.FillFlat(HULL_DARK, UP, 0.3);
    for (int i = 0; i <= 5; ++i)
        p.PanelLine({{-90, -40 + i * 19.2}, {20, -40 + i * 19.2}}, 2.0, 0.7);
    // stacked container bays
    const Rgb colours[] = {Hex(0xC8902A), Hex(0x3C7FB0), Hex(0xA83A2A), Hex(0x6A8A4A), Hex(0xE2B23A), HULL};
    Random random(503u);
    for (int row = 0; row < 5; ++row)
        for (int column = 0; column < 4; ++column)
        {
            if (random.Uniform(0.0, 1.0) < 0.15)
                continue; // an empty bay
            const double x = -87.0 + column * 26.5;
            const double y = -37.0 + row * 19.2;
            const Rgb colour = colours[size_t(random.Uniform(0.0, 5.99))];
            p.Begin();
            p.Poly({{x, y}, {x + 24, y}, {x + 24, y + 14}, {x, y + 14}}, 4.0 + random.Uniform(0.0, 3.0));
            p.FillRound(colour, x + 12.0, 12.0, y, 5.0, 0.4, 0.3);
            for (int rib = 1; rib < 6; ++rib)
                p.PanelLine({{x + rib * 4.0, y}, {x + rib * 4.0, y + 14}}, 5.0, 0.25);
        }
    // the landing pad
    Tube(p, {20, 8}, {40, 8}, 5.0, 3.0);
    p.Begin();
    p.Ellipse(62.0, 8.0, 4.0, 30.0, 30.0);
    p.FillFlat(Hex(0x5A626C), UP, 0.4);
    p.Begin();
    p.Ellipse(62.0, 8.0, 4.2, 24.0, 24.0);
    p.Stroke(Hex(0xE2B23A), 2.0, 0.9);
    p.BeginDecal(62.0, 8.0, 4.3);
    cairo_t* cr = p.Cr();
    cairo_rectangle(cr, -9.0, -11.0, 4.0, 22.0);
    cairo_rectangle(cr, 5.0, -11.0, 4.0, 22.0);
    cairo_rectangle(cr, -5.0, -2.0, 10.0, 4.0);
    kit::SetSource(cr, Hex(0xE8E8E8), 0.9);
    cairo_fill(cr);
    p.EndDecal();
    for (int i = 0; i < 8; ++i)
    {
        const double angle = 2.0 * kit::PI * i / 8.0;
        p.Light(62.0 + std::cos(angle) * 28.0, 8.0 + std::sin(angle) * 28.0, 5.0, 1.2, i % 2 == 0 ? WARM : RED_LIGHT, 0.9);
    }
    // the control tower
    p.Sphere(8.0, -58.0 + 10.0, 6.0, 8.0, HULL, 0.5);
    p.Light(8.0, -48.0, 12.0, 1.2, RED_LIGHT, 0.9);
    p.Finish();
}

void DrawRelay(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    // the truss
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        SolarPanel(p, 12.0, -9.0, 30.0, 18.0, 2.0);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.Poly({{-14, -3}, {14, -3}, {14, 3}, {-14, 3}}, 3.0);
    p.FillFlat(METAL, UP, 0.4);
    for (int i = -3; i <= 3; ++i)
        p.PanelLine({{i * 4.0 - 2.0, -3}, {i * 4.0 + 2.0, 3}}, 3.2, 0.6);
    // the dish, facing up at the viewer
    p.Begin();
    p.Ellipse(0.0, 0.0, 6.0, 16.0, 16.0);
    cairo_pattern_t* dish = cairo_pattern_create_radial(Cx(p_canvas) + 5.0, Cy(p_canvas) + 5.0, 1.0, Cx(p_canvas),
                                                        Cy(p_canvas), 16.0);
    kit::AddStop(dish, 0.0, Hex(0xF0F2F4));
    kit::AddStop(dish, 0.7, Hex(0xA8AEB6));
    kit::AddStop(dish, 1.0, Hex(0x5A6068));
    kit::UsePattern(p.Cr(), dish);
    cairo_fill(p.Cr());
    p.Begin();
    p.Ellipse(0.0, 0.0, 6.5, 16.0, 16.0);
    p.Stroke(Hex(0x30343A), 1.0, 0.9);
    for (int i = 0; i < 3; ++i)
    {
        const double angle = 2.0 * kit::PI * i / 3.0;
        p.Begin();
        p.Move(std::cos(angle) * 15.0, std::sin(angle) * 15.0, 7.0);
        p.Line(0.0, 0.0, 12.0);
        p.Stroke(Hex(0x40444A), 0.8, 0.9);
    }
    p.Sphere(0.0, 0.0, 12.0, 2.2, METAL, 0.6);
    p.Light(0.0, 0.0, 13.0, 1.0, RED_LIGHT, 0.9);
    p.Finish();
}

// A ragged burnt edge: a zig-zag from (p_x, p_top) to (p_x, p_bottom).
void TornEdge(std::vector<P>& p_points, double p_x, double p_top, double p_bottom, uint32_t p_seed, bool p_down)
{
    Random random(p_seed);
    const int steps = 9;
    for (int i = 0; i <= steps; ++i)
    {
        const double t = p_down ? double(i) / steps : 1.0 - double(i) / steps;
        p_points.push_back({p_x + random.Uniform(-5.0, 5.0), p_top + (p_bottom - p_top) * t});
    }
}

void Scorch(Canvas& p_canvas, double p_x, double p_y, double p_radius)
{
    cairo_t* cr = p_canvas.Get();
    cairo_save(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_ATOP);
    cairo_pattern_t* burn = cairo_pattern_create_radial(p_x, p_y, 0.0, p_x, p_y, p_radius);
    kit::AddStop(burn, 0.0, Hex(0x080604), 0.9);
    kit::AddStop(burn, 1.0, Hex(0x080604), 0.0);
    kit::UsePattern(cr, burn);
    cairo_arc(cr, p_x, p_y, p_radius, 0.0, 2.0 * kit::PI);
    cairo_fill(cr);
    cairo_restore(cr);
}

void DrawWreckFreighter(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    cairo_t* cr = p.Cr();
    // the bow half, drifted up and turned a little
    cairo_save(cr);
    cairo_translate(cr, -8.0, -4.0);
    cairo_rotate(cr, -0.1);
    {
        std::vector<P> bow = {{-90, -4}, {-80, -20}, {-20, -22}};
        TornEdge(bow, -12.0, -22.0, 20.0, 504u, true);
        bow.push_back({-80, 18});
        bow.push_back({-92, 6});
        p.Begin();
        p.Poly(bow, 3.0);
        p.FillRound(Hex(0x57524A), -50.0, 20.0, 0.0, 3.0, 0.5, 0.3);
        for (int i = 0; i < 4; ++i)
            p.PanelLine({{-74.0 + i * 14.0, -20}, {-74.0 + i * 14.0, 18}}, 3.0, 0.5);
        p.Canopy(-80.0, -1.0, 3.0, 4.0, 6.0, Hex(0x303840));
    }
    cairo_restore(cr);
    // the stern half
    cairo_save(cr);
    cairo_translate(cr, 10.0, 4.0);
    cairo_rotate(cr, 0.11);
    {
        std::vector<P> stern;
        TornEdge(stern, 0.0, 20.0, -22.0, 505u, true);
        stern.push_back({70, -22});
        stern.push_back({80, -14});
        stern.push_back({80, 14});
        stern.push_back({70, 20});
        p.Begin();
        p.Poly(stern, 3.0);
        p.FillRound(Hex(0x4E4A43), 40.0, 20.0, 0.0, 3.0, 0.5, 0.3);
        for (int i = 0; i < 4; ++i)
            p.PanelLine({{14.0 + i * 14.0, -20}, {14.0 + i * 14.0, 18}}, 3.0, 0.5);
        for (double y : {-10.0, 10.0})
        {
            p.Begin();
            p.Ellipse(82.0, y, 3.0, 3.5, 6.0);
            p.FillFlat(Hex(0x2A2824), UP, 0.2);
        }
    }
    cairo_restore(cr);
    Scorch(p_canvas, Cx(p_canvas) - 20.0, Cy(p_canvas) - 4.0, 22.0);
    Scorch(p_canvas, Cx(p_canvas) + 12.0, Cy(p_canvas) + 6.0, 24.0);
    Scorch(p_canvas, Cx(p_canvas) + 60.0, Cy(p_canvas) - 10.0, 12.0);
    // embers still glowing in the torn edges, and a few loose plates
    p.Light(-18.0, -2.0, 4.0, 1.5, Hex(0xFF7A20), 0.9);
    p.Light(4.0, 12.0, 4.0, 1.2, Hex(0xFF5A10), 0.8);
    p.Light(8.0, -8.0, 4.0, 1.0, Hex(0xFF9A30), 0.7);
    Random random(506u);
    for (int i = 0; i < 7; ++i)
    {
        const double x = random.Uniform(-20.0, 20.0);
        const double y = random.Uniform(-40.0, 40.0);
        const double size = random.Uniform(2.0, 5.0);
        p.Begin();
        p.Poly({{x, y}, {x + size, y + 1.0}, {x + size * 0.6, y + size}}, 3.0);
        p.FillFlat(Hex(0x5A544A), {random.Uniform(-0.5, 0.5), random.Uniform(-0.5, 0.5), 1.0}, 0.3);
    }
    p.Finish();
}

void DrawWreckFighter(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    cairo_t* cr = p.Cr();
    cairo_save(cr);
    cairo_translate(cr, 2.0, 0.0);
    cairo_rotate(cr, 0.6);
    // one wing left, the other a stub torn off
    p.Begin();
    p.Poly({{4, -2}, {26, 10}, {27, 15}, {5, 13}}, 1.5);
    p.FillFlat(Hex(0x5A606A), {0.15, 0.0, 1.0}, 0.3);
    p.Begin();
    p.Poly({{-4, -2}, {-10, 1}, {-8, 4}, {-12, 7}, {-5, 11}}, 1.5);
    p.FillFlat(Hex(0x4A5058), {-0.15, 0.0, 1.0}, 0.3);
    p.Begin();
    p.SymOutline({{0, -26}, {2.5, -20}, {5, -6}, {5.5, 14}, {4, 20}, {0, 20}}, 4.0);
    p.FillRound(Hex(0x6A707A), 0.0, 5.5, 0.0, 4.0, 0.85, 0.3);
    p.Canopy(0.0, -9.0, 4.0, 2.6, 5.0, Hex(0x20262C));
    cairo_restore(cr);
    Scorch(p_canvas, Cx(p_canvas) - 6.0, Cy(p_canvas) + 2.0, 14.0);
    Scorch(p_canvas, Cx(p_canvas) + 8.0, Cy(p_canvas) + 10.0, 10.0);
    p.Light(-8.0, 2.0, 3.0, 1.2, Hex(0xFF7A20), 0.8);
    p.Finish();
}

void DrawListeningPost(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    const int arrays = 8;
    for (int i = 0; i < arrays; ++i)
    {
        const double angle = 2.0 * kit::PI * i / arrays;
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        Tube(p, {c * 14.0, s * 14.0}, {c * 40.0, s * 40.0}, 2.0, 3.0);
        // an antenna array: a grid plate square to the strut
        const double x = c * 46.0;
        const double y = s * 46.0;
        p.Begin();
        p.Poly({{x - s * 11.0 - c * 4.0, y + c * 11.0 - s * 4.0},
                {x + s * 11.0 - c * 4.0, y - c * 11.0 - s * 4.0},
                {x + s * 11.0 + c * 4.0, y - c * 11.0 + s * 4.0},
                {x - s * 11.0 + c * 4.0, y + c * 11.0 + s * 4.0}},
               4.0);
        p.FillFlat(Hex(0x8A929C), {c * 0.3, s * 0.3, 1.0}, 0.6);
        for (int rib = -2; rib <= 2; ++rib)
            p.PanelLine({{x + s * rib * 4.0 - c * 4.0, y - c * rib * 4.0 - s * 4.0},
                         {x + s * rib * 4.0 + c * 4.0, y - c * rib * 4.0 + s * 4.0}},
                        4.2, 0.5);
        p.Light(c * 52.0, s * 52.0, 5.0, 0.9, i % 2 == 0 ? RED_LIGHT : WARM, 0.8);
    }
    // the ring joining the struts, then the core
    p.Begin();
    p.Ellipse(0.0, 0.0, 3.0, 30.0, 30.0);
    p.Stroke(Hex(0x2A2E34), 3.4, 1.0);
    p.Begin();
    p.Ellipse(0.0, 0.0, 3.0, 30.0, 30.0);
    p.Stroke(METAL, 2.2, 1.0);
    p.Sphere(0.0, 0.0, 6.0, 15.0, Hex(0x7A8A70), 0.5);
    p.Begin();
    p.Ellipse(0.0, 0.0, 12.0, 6.0, 6.0);
    p.FillFlat(Hex(0x3A4A36), UP, 0.4);
    p.Light(0.0, 0.0, 13.0, 1.6, Hex(0x8AF0FF), 0.9);
    p.Finish();
}

// A gun barrel along y, nose at p_from.
void BarrelAt(ShipPainter& p, double p_x, double p_from, double p_to, double p_width, double p_z)
{
    p.Begin();
    p.Poly({{p_x - p_width / 2, p_from}, {p_x + p_width / 2, p_from}, {p_x + p_width / 2, p_to}, {p_x - p_width / 2, p_to}},
           p_z);
    p.FillRound(METAL, p_x, p_width / 2, p_from, p_z, 0.8, 0.5);
}

void DrawPirateBase(Canvas& p_canvas)
{
    PaintRock(p_canvas, Cx(p_canvas), Cy(p_canvas), 116.0, 84.0, Rock(507u, 12));
    ShipPainter p(p_canvas, Faction::Enemy, 0.0, false);
    cairo_t* cr = p.Cr();
    // hangar mouths cut into the rock, lit red from inside
    const double mouths[][4] = {{-52, -18, 18, 11}, {36, 24, 20, 12}, {8, -42, 14, 9}};
    for (const auto& mouth : mouths)
    {
        const P at = p.Project(mouth[0], mouth[1], 0.0);
        cairo_save(cr);
        cairo_translate(cr, at.x, at.y);
        cairo_scale(cr, mouth[2], mouth[3]);
        cairo_arc(cr, 0.0, 0.0, 1.0, 0.0, 2.0 * kit::PI);
        cairo_restore(cr);
        cairo_pattern_t* inside = cairo_pattern_create_radial(at.x, at.y, 0.0, at.x, at.y, mouth[2]);
        kit::AddStop(inside, 0.0, Hex(0x6A0A08));
        kit::AddStop(inside, 0.6, Hex(0x200404));
        kit::AddStop(inside, 1.0, Hex(0x080202));
        kit::UsePattern(cr, inside);
        cairo_fill(cr);
        p.Light(mouth[0], mouth[1], 0.0, mouth[2] * 0.5, Hex(0xFF2A1A), 0.45);
        for (int i = -1; i <= 1; i += 2)
            p.Light(mouth[0] + i * mouth[2], mouth[1], 1.0, 1.2, RED_LIGHT, 1.0);
    }
    // a gun tower and antennas on the crest
    p.Sphere(-10.0, 10.0, 6.0, 9.0, Hex(0x4A3A34), 0.4);
    BarrelAt(p, -10.0, -6.0, 4.0, 2.4, 10.0);
    for (const P& antenna : std::vector<P>{{60, -30}, {-80, 30}, {20, 56}})
    {
        p.Begin();
        p.Move(antenna.x, antenna.y, 4.0);
        p.Line(antenna.x + 10.0, antenna.y - 14.0, 4.0);
        p.Stroke(Hex(0x8A8078), 1.2, 1.0);
        p.Light(antenna.x + 10.0, antenna.y - 14.0, 5.0, 1.3, RED_LIGHT, 1.0);
    }
    // the Red Maw's mark daubed on the rock
    p.BeginDecal(-56.0, 30.0, 1.0);
    cairo_move_to(cr, -10.0, -3.0);
    cairo_curve_to(cr, -8.0, 8.0, 8.0, 8.0, 10.0, -3.0);
    cairo_close_path(cr);
    kit::SetSource(cr, Hex(0x8A1010), 0.85);
    cairo_fill(cr);
    for (int i = -3; i <= 3; ++i)
    {
        cairo_move_to(cr, i * 2.7 - 1.0, -3.0);
        cairo_line_to(cr, i * 2.7 + 1.0, -3.0);
        cairo_line_to(cr, i * 2.7, 1.5 - 0.3 * std::abs(i));
        cairo_close_path(cr);
    }
    kit::SetSource(cr, Hex(0xE8E0D0), 0.9);
    cairo_fill(cr);
    p.EndDecal();
    p.Finish();
}

void DrawStation(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    // docking arms reaching out past the wheel
    for (int i = 0; i < 4; ++i)
    {
        const double angle = kit::PI / 4.0 + kit::PI / 2.0 * i;
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        Tube(p, {c * 20.0, s * 20.0}, {c * 118.0, s * 118.0}, 4.0, 2.0);
        p.Begin();
        p.Poly({{c * 112.0 - s * 6.0, s * 112.0 + c * 6.0}, {c * 124.0 - s * 6.0, s * 124.0 + c * 6.0},
                {c * 124.0 + s * 6.0, s * 124.0 - c * 6.0}, {c * 112.0 + s * 6.0, s * 112.0 - c * 6.0}},
               3.0);
        p.FillFlat(HULL_DARK, UP, 0.3);
        p.Light(c * 124.0, s * 124.0, 4.0, 1.5, i % 2 == 0 ? RED_LIGHT : Hex(0x60FF90), 0.9);
    }
    // the wheel: a thick ring of habitat sections
    const double outer = 96.0;
    const double inner = 74.0;
    cairo_t* cr = p.Cr();
    const P centre = p.Project(0.0, 0.0, 0.0);
    cairo_new_path(cr);
    cairo_arc(cr, centre.x, centre.y, outer, 0.0, 2.0 * kit::PI);
    cairo_new_sub_path(cr);
    cairo_arc_negative(cr, centre.x, centre.y, inner, 2.0 * kit::PI, 0.0);
    cairo_pattern_t* ring = cairo_pattern_create_radial(centre.x, centre.y, inner, centre.x, centre.y, outer);
    kit::AddStop(ring, 0.0, kit::Scale(HULL, 0.55));
    kit::AddStop(ring, 0.35, kit::Scale(HULL, 1.0));
    kit::AddStop(ring, 0.6, kit::Scale(HULL, 1.08));
    kit::AddStop(ring, 1.0, kit::Scale(HULL, 0.5));
    kit::UsePattern(cr, ring);
    cairo_fill(cr);
    // light falls on the upper left of the wheel
    cairo_arc(cr, centre.x, centre.y, outer, 0.0, 2.0 * kit::PI);
    cairo_new_sub_path(cr);
    cairo_arc_negative(cr, centre.x, centre.y, inner, 2.0 * kit::PI, 0.0);
    cairo_pattern_t* shade = cairo_pattern_create_linear(centre.x - outer, centre.y - outer, centre.x + outer, centre.y + outer);
    kit::AddStop(shade, 0.0, Hex(0xFFFFFF), 0.15);
    kit::AddStop(shade, 1.0, Hex(0x000000), 0.3);
    kit::UsePattern(cr, shade);
    cairo_fill(cr);
    const int sections = 24;
    cairo_set_line_width(cr, 1.0);
    for (int i = 0; i < sections; ++i)
    {
        const double angle = 2.0 * kit::PI * i / sections;
        cairo_move_to(cr, centre.x + std::cos(angle) * inner, centre.y + std::sin(angle) * inner);
        cairo_line_to(cr, centre.x + std::cos(angle) * outer, centre.y + std::sin(angle) * outer);
    }
    kit::SetSource(cr, Hex(0x1A1E24), 0.6);
    cairo_stroke(cr);
    // warm windows in two rows round the wheel
    for (int i = 0; i < sections * 3; ++i)
    {
        const double angle = 2.0 * kit::PI * (i + 0.5) / (sections * 3);
        for (const double r : {80.0, 90.0})
            if (kit::Hash01(i, int(r), 508u) > 0.3)
                p.Light(std::cos(angle) * r, std::sin(angle) * r, 3.0, 0.55, WARM, 0.85);
    }
    // spokes and the hub
    for (int i = 0; i < 6; ++i)
    {
        const double angle = 2.0 * kit::PI * i / 6.0;
        Tube(p, {std::cos(angle) * 24.0, std::sin(angle) * 24.0}, {std::cos(angle) * 74.0, std::sin(angle) * 74.0}, 5.0,
             2.0);
    }
    p.Sphere(0.0, 0.0, 8.0, 26.0, HULL, 0.6);
    p.Begin();
    p.Ellipse(0.0, 0.0, 30.0, 10.0, 10.0);
    p.FillFlat(HULL_DARK, UP, 0.3);
    p.Light(0.0, 0.0, 31.0, 4.0, Hex(0xFFE8B0), 0.7);
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        SolarPanel(p, 28.0, -8.0, 36.0, 16.0, 9.0);
    }
    p.SetMirror(1.0);
    p.Finish();
}

void DrawJumpGate(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    cairo_t* cr = p.Cr();
    const P centre = p.Project(0.0, 0.0, 0.0);
    const double outer = 152.0;
    const double inner = 122.0;
    // the field inside the ring
    cairo_pattern_t* field = cairo_pattern_create_radial(centre.x, centre.y, 0.0, centre.x, centre.y, inner);
    kit::AddStop(field, 0.0, Hex(0x3A8AFF), 0.10);
    kit::AddStop(field, 0.7, Hex(0x3A8AFF), 0.18);
    kit::AddStop(field, 1.0, Hex(0x8AC8FF), 0.4);
    kit::UsePattern(cr, field);
    cairo_arc(cr, centre.x, centre.y, inner, 0.0, 2.0 * kit::PI);
    cairo_fill(cr);
    // faint swirls in the field
    cairo_set_line_width(cr, 1.2);
    for (int i = 0; i < 5; ++i)
    {
        const double r = 30.0 + i * 18.0;
        cairo_arc(cr, centre.x, centre.y, r, i * 1.3, i * 1.3 + 2.2);
        kit::SetSource(cr, Hex(0x9AD0FF), 0.12);
        cairo_stroke(cr);
    }
    // segments of the ring, each a shaded block with a gap between
    const int segments = 16;
    for (int i = 0; i < segments; ++i)
    {
        const double from = 2.0 * kit::PI * i / segments + 0.025;
        const double to = 2.0 * kit::PI * (i + 1) / segments - 0.025;
        cairo_new_path(cr);
        cairo_arc(cr, centre.x, centre.y, outer, from, to);
        cairo_arc_negative(cr, centre.x, centre.y, inner, to, from);
        cairo_close_path(cr);
        const double middle = (from + to) / 2.0;
        // the side facing the light is brighter
        const double facing = 0.5 + 0.5 * (-std::cos(middle) * 0.6 - std::sin(middle) * 0.5);
        cairo_pattern_t* block = cairo_pattern_create_radial(centre.x, centre.y, inner, centre.x, centre.y, outer);
        kit::AddStop(block, 0.0, kit::Scale(METAL, 0.5 + 0.3 * facing));
        kit::AddStop(block, 0.5, kit::Scale(HULL, 0.7 + 0.5 * facing));
        kit::AddStop(block, 1.0, kit::Scale(METAL, 0.45 + 0.3 * facing));
        kit::UsePattern(cr, block);
        cairo_fill(cr);
        // a plate line and a light on each segment
        cairo_arc(cr, centre.x, centre.y, (inner + outer) / 2.0, from + 0.04, to - 0.04);
        kit::SetSource(cr, Hex(0x20242A), 0.5);
        cairo_set_line_width(cr, 1.0);
        cairo_stroke(cr);
        p.Light(std::cos(middle) * (inner + 3.0), std::sin(middle) * (inner + 3.0), 0.0, 1.6, Hex(0x8AC8FF), 0.9);
    }
    // the emitters at the four quarters
    for (int i = 0; i < 4; ++i)
    {
        const double angle = kit::PI / 2.0 * i;
        p.Sphere(std::cos(angle) * (outer - 15.0), std::sin(angle) * (outer - 15.0), 6.0, 14.0, HULL, 0.5);
        p.Light(std::cos(angle) * (outer - 15.0), std::sin(angle) * (outer - 15.0), 10.0, 4.0, Hex(0x6AB0FF), 0.9);
    }
    p.Finish();
}

void DrawAsteroid(Canvas& p_canvas, uint32_t p_seed)
{
    const double r = p_canvas.Width() * 0.4;
    PaintRock(p_canvas, Cx(p_canvas), Cy(p_canvas), r, r * 0.85, Rock(p_seed, 5 + int(r / 12.0)));
    kit::OutlineSprite(p_canvas, {0.02, 0.02, 0.02}, 0.5);
    kit::AvoidColourKey(p_canvas);
}

struct SceneryDesign
{
    const char* picture;
    int width;
    int height;
    void (*draw)(Canvas& p_canvas);
};

const SceneryDesign SCENERY[] = {
    {"beacon.bmp", 48, 48, DrawBeacon},
    {"outpost.bmp", 192, 192, DrawOutpost},
    {"mining_rig.bmp", 160, 160, DrawMiningRig},
    {"depot.bmp", 192, 160, DrawDepot},
    {"relay.bmp", 96, 96, DrawRelay},
    {"wreck_freighter.bmp", 192, 96, DrawWreckFreighter},
    {"wreck_fighter.bmp", 80, 64, DrawWreckFighter},
    {"listening_post.bmp", 128, 128, DrawListeningPost},
    {"pirate_base.bmp", 256, 192, DrawPirateBase},
    {"station.bmp", 256, 256, DrawStation},
    {"jumpgate.bmp", 320, 320, DrawJumpGate},
    {"asteroid_large.bmp", 160, 160, [](Canvas& p_canvas) { DrawAsteroid(p_canvas, 601u); }},
    {"asteroid_medium.bmp", 96, 96, [](Canvas& p_canvas) { DrawAsteroid(p_canvas, 602u); }},
    {"asteroid_small.bmp", 48, 48, [](Canvas& p_canvas) { DrawAsteroid(p_canvas, 603u); }},
};

void ListSceneryPictures(const ArtContext& p_context, std::vector<PictureRecipe>& p_pictures)
{
    std::vector<std::string> wanted;
    ReadSceneryPictures(p_context.dataDir, wanted);
    for (const std::string& picture : wanted)
    {
        const SceneryDesign* design = nullptr;
        for (const SceneryDesign& candidate : SCENERY)
            if (picture == candidate.picture)
                design = &candidate;
        if (design == nullptr)
        {
            std::fprintf(stderr, "korvath-artgen: no drawing for the scenery picture %s\n", picture.c_str());
            continue;
        }
        p_pictures.push_back({"Entity\\" + picture, design->width, design->height, true, design->draw});
    }
}

const PictureRegistrar s_scenery(ListSceneryPictures);

} // namespace
} // namespace artgen
