#include "ShipDesigns.h"

#include "Rock.h"

#include <cmath>

namespace artgen
{

namespace
{

using kit::Hex;
using kit::Rgb;
using P = ShipPainter::Point2;

const Vec3 UP{0.0, 0.0, 1.0};

// The player's side: steel and blue, cyan glass, blue flames.
const Rgb STEEL = Hex(0x8E9BAD);
const Rgb STEEL_DARK = Hex(0x4B5668);
const Rgb BLUE = Hex(0x2F74D0);
const Rgb SKY = Hex(0x8CC4EE);
const Rgb WHITE = Hex(0xDDE4EC);
const Rgb TEAL = Hex(0x23A7A0);
const Rgb SLATE = Hex(0x66778A);
const Rgb NAVY = Hex(0x22407E);
const Rgb HAZARD = Hex(0xE2B23A);

// Everyone else: rust, black, crimson and gold, red glass, orange flames.
const Rgb RUST = Hex(0x9C3F24);
const Rgb RUST_DARK = Hex(0x5E2516);
const Rgb ORANGE = Hex(0xC8752E);
const Rgb CRIMSON = Hex(0xA8142A);
const Rgb BLACK = Hex(0x26262C);
const Rgb WASP_YELLOW = Hex(0xF0C020);
const Rgb WASP_BODY = Hex(0x3A3A42);
const Rgb WASP_WING = Hex(0x55525A);
const Rgb GOLD = Hex(0xD6A844);
const Rgb IVORY = Hex(0xE9E5DA);
const Rgb IVORY_SHADE = Hex(0xCBC6BA);
const Rgb BROWN = Hex(0x6E4B33);
const Rgb VIPER_GREEN = Hex(0x3B6B3A);
const Rgb VIPER_DARK = Hex(0x1F3A22);
const Rgb GUNMETAL = Hex(0x3C3F46);

const Rgb RED_EYE = Hex(0xFF3322);
const Rgb LASER_CYAN = Hex(0x40F0FF);
const Rgb NAV_RED = Hex(0xFF4040);
const Rgb NAV_GREEN = Hex(0x60FFA0);
const Rgb WINDOW = Hex(0xFFD890);

Vec3 Tilt(double p_x, double p_y)
{
    return {p_x, p_y, 1.0};
}

// A gun barrel along y from p_from to p_to (p_from nearer the nose), p_width wide.
void Barrel(ShipPainter& p, double p_x, double p_from, double p_to, double p_width, double p_z)
{
    const double half = p_width / 2.0;
    p.Begin();
    p.Poly({{p_x - half, p_from}, {p_x + half, p_from}, {p_x + half, p_to}, {p_x - half, p_to}}, p_z);
    p.FillRound(GUNMETAL, p_x, half, p_from, p_z, 0.8, 0.6);
    p.Begin();
    p.Ellipse(p_x, p_from + 0.4, p_z, half * 0.55, 0.45);
    kit::SetSource(p.Cr(), {0.02, 0.02, 0.03});
    cairo_fill(p.Cr());
}

// Navigation lights on the tips: red to port (left), green to starboard.
void NavLights(ShipPainter& p, double p_x, double p_y, double p_z, double p_radius)
{
    p.SetMirror(-1.0);
    p.Light(p_x, p_y, p_z, p_radius, NAV_RED, 0.8);
    p.SetMirror(1.0);
    p.Light(p_x, p_y, p_z, p_radius, NAV_GREEN, 0.8);
}

void Rivets(ShipPainter& p, const std::vector<P>& p_points, double p_z)
{
    for (const P& point : p_points)
    {
        p.Begin();
        p.Ellipse(point.x, point.y, p_z, 0.45, 0.45);
        kit::SetSource(p.Cr(), {0.05, 0.05, 0.06}, 0.55);
        cairo_fill(p.Cr());
    }
}

// ---- The player's hulls -------------------------------------------------------------------

// A boxy ore hauler: square body, a cargo pod on each flank with hazard stripes, one gun stub.
void DrawCargo(ShipPainter& p)
{
    Barrel(p, 0.0, -30.5, -22.0, 3.0, 3.0);
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        // engine housings
        p.Begin();
        p.Poly({{3, 13}, {10.5, 13}, {10.5, 19}, {3, 19}}, 2.0);
        p.FillRound(STEEL_DARK, 6.75, 3.75, 16, 2.0, 0.7);
        // cargo pod
        p.Begin();
        p.Poly({{12.5, -17}, {20, -15}, {22, -11}, {22, 11}, {20, 15}, {12.5, 16}}, 2.0);
        p.FillRound(STEEL, 17.2, 4.8, 0, 2.0, 0.75, 0.35);
        p.PanelLine({{13, -5}, {22, -5}}, 2.0);
        p.PanelLine({{13, 5}, {22, 5}}, 2.0);
        // hazard band across the pod's nose
        p.BeginDecal(17.2, -11.5, 2.0);
        cairo_t* cr = p.Cr();
        cairo_rectangle(cr, -4.6, -1.8, 9.2, 3.6);
        cairo_clip(cr);
        for (int i = -4; i < 5; ++i)
        {
            cairo_move_to(cr, i * 2.6 - 1.8, 2.0);
            cairo_line_to(cr, i * 2.6 - 0.5, 2.0);
            cairo_line_to(cr, i * 2.6 + 2.1, -2.0);
            cairo_line_to(cr, i * 2.6 + 0.8, -2.0);
            cairo_close_path(cr);
        }
        kit::SetSource(cr, p.Lit(HAZARD, UP, 0.2));
        cairo_fill(cr);
        p.EndDecal();
        p.Engine(6.75, 19.0, 2.0, 3.0);
    }
    p.SetMirror(1.0);
    // main body
    p.Begin();
    p.SymOutline({{0, -26}, {5, -25}, {11, -21}, {13, -12}, {13, 13}, {10, 17}, {0, 17}}, 4.0);
    p.FillRound(SLATE, 0.0, 13.0, 0.0, 4.0, 0.7, 0.4);
    // cargo hatch
    p.Begin();
    p.Poly({{-8, -6}, {8, -6}, {8, 11}, {-8, 11}}, 4.2);
    p.FillFlat(STEEL_DARK, UP, 0.2);
    p.PanelLine({{-8, 2.5}, {8, 2.5}}, 4.2, 0.6);
    p.PanelLine({{0, -6}, {0, 11}}, 4.2, 0.4);
    p.PanelLine({{-13, -10}, {13, -10}}, 4.0);
    Rivets(p, {{-10.5, -8}, {10.5, -8}, {-10.5, 13}, {10.5, 13}, {-10.5, 3}, {10.5, 3}}, 4.0);
    // dents in the old plating
    for (const P& dent : std::vector<P>{{-5.0, -14.0}, {9.0, 6.0}, {-11.0, 9.0}})
    {
        p.BeginDecal(dent.x, dent.y, 4.0);
        cairo_pattern_t* shade = cairo_pattern_create_radial(-0.6, -0.6, 0.0, 0.0, 0.0, 2.2);
        kit::AddStop(shade, 0.0, {0.0, 0.0, 0.0}, 0.4);
        kit::AddStop(shade, 1.0, {0.0, 0.0, 0.0}, 0.0);
        kit::UsePattern(p.Cr(), shade);
        cairo_arc(p.Cr(), 0.0, 0.0, 2.2, 0.0, 2.0 * kit::PI);
        cairo_fill(p.Cr());
        p.EndDecal();
    }
    // a blue co-op band behind the cockpit
    p.Begin();
    p.Poly({{-13, -11.5}, {13, -11.5}, {13, -9.5}, {-13, -9.5}}, 4.1);
    p.FillFlat(BLUE, UP, 0.3);
    p.Canopy(0.0, -17.0, 4.0, 4.2, 4.2, p.CanopyGlass());
    NavLights(p, 21.0, -13.0, 2.0, 1.0);
    p.Weather(0.22, 101u);
}

// A slim needle with short swept fins.
void DrawScout(ShipPainter& p)
{
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{4.5, 1}, {15, 13}, {16, 18}, {14.5, 19}, {4.5, 15}}, 1.0);
        p.FillFlat(SKY, Tilt(0.18, 0.05), 0.4);
        p.Begin();
        p.Poly({{13.2, 11}, {15, 13}, {16, 18}, {14.5, 19}, {13, 17.5}}, 1.1);
        p.FillFlat(BLUE, Tilt(0.18, 0.05), 0.4);
        p.PanelLine({{5, 8}, {12, 14}}, 1.0, 0.35);
        // canards
        p.Begin();
        p.Poly({{3, -11}, {7.5, -6}, {7.5, -4}, {3, -5}}, 2.0);
        p.FillFlat(SKY, Tilt(0.12, 0.0), 0.4);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.SymOutline({{0, -27.5}, {1.2, -24}, {3.4, -13}, {5.2, 0}, {5.6, 12}, {4.6, 19}, {0, 20}}, 4.0);
    p.FillRound(SKY, 0.0, 5.6, 0.0, 4.0, 0.85, 0.6);
    // a navy spine stripe from the canopy to the tail
    p.Begin();
    p.Poly({{-1.3, -2}, {1.3, -2}, {1.6, 18}, {-1.6, 18}}, 4.3);
    p.FillRound(NAVY, 0.0, 1.6, 8.0, 4.3, 0.6, 0.5);
    p.PanelLine({{-5, 6}, {5, 6}}, 4.0, 0.35);
    p.PanelLine({{-3.5, -16}, {3.5, -16}}, 4.0, 0.35);
    p.Canopy(0.0, -9.0, 4.0, 2.7, 5.2, p.CanopyGlass());
    p.Engine(0.0, 20.0, 2.0, 3.3, 1.1);
    NavLights(p, 15.5, 17.0, 1.0, 0.9);
    p.Weather(0.12, 102u);
}

// Forward-swept wings with gun pods on the tips, gunmetal with blue stripes.
void DrawCorsair(ShipPainter& p)
{
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        // tail fins
        p.Begin();
        p.Poly({{4.5, 14}, {11, 22}, {11, 25}, {4.5, 22}}, 1.5);
        p.FillFlat(STEEL_DARK, Tilt(0.2, 0.0), 0.3);
        // the wing, swept forward
        p.Begin();
        p.Poly({{5, 3}, {23, -9}, {26, -7}, {25.5, -1}, {6, 16}}, 1.5);
        p.FillFlat(STEEL_DARK, Tilt(0.16, -0.05), 0.45);
        // a blue stripe along the leading edge
        p.Begin();
        p.Poly({{7, 5.5}, {23, -5}, {23.3, -2.6}, {7.4, 8.5}}, 1.6);
        p.FillFlat(BLUE, Tilt(0.16, -0.05), 0.45);
        p.PanelLine({{8, 12}, {24, -2}}, 1.5, 0.35);
        // gun pod on the tip
        Barrel(p, 25.0, -13.0, 0.0, 2.6, 2.0);
        p.Engine(3.0, 24.0, 2.0, 2.5);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.SymOutline({{0, -29}, {2.4, -24}, {5, -12}, {6, 6}, {5.5, 20}, {3.2, 24}, {0, 24}}, 4.0);
    p.FillRound(GUNMETAL, 0.0, 6.0, 0.0, 4.0, 0.85, 0.6);
    // blue chevrons down the nose
    for (int i = 0; i < 2; ++i)
    {
        const double y = -20.0 + i * 3.2;
        p.Begin();
        p.Poly({{0, y}, {3.8, y + 3.6}, {3.8, y + 5.0}, {0, y + 1.6}, {-3.8, y + 5.0}, {-3.8, y + 3.6}}, 4.3);
        p.FillFlat(BLUE, UP, 0.4);
    }
    p.PanelLine({{-5.5, 2}, {5.5, 2}}, 4.0);
    p.PanelLine({{-5.5, 14}, {5.5, 14}}, 4.0);
    p.PanelLine({{0, 2}, {0, 22}}, 4.0, 0.3);
    p.Canopy(0.0, -9.5, 4.0, 3.2, 6.0, p.CanopyGlass());
    NavLights(p, 26.0, -6.0, 2.0, 0.9);
    p.Weather(0.15, 103u);
}

// A long white fuselage with a lance for a nose, teal trim.
void DrawLancer(ShipPainter& p)
{
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{5, 1}, {18, 17}, {20, 25}, {17, 25}, {5, 20}}, 1.5);
        p.FillFlat(WHITE, Tilt(0.16, 0.0), 0.5);
        p.Begin();
        p.Poly({{16, 15}, {18, 17}, {20, 25}, {17, 25}, {15.5, 21}}, 1.6);
        p.FillFlat(TEAL, Tilt(0.16, 0.0), 0.5);
        p.PanelLine({{6, 12}, {15, 20}}, 1.5, 0.3);
        p.Begin();
        p.Poly({{4, -12}, {10, -5}, {10, -3}, {4, -5}}, 2.5);
        p.FillFlat(TEAL, Tilt(0.12, 0.0), 0.4);
        p.Engine(2.8, 28.5, 2.0, 2.8);
    }
    p.SetMirror(1.0);
    // the lance
    p.Begin();
    p.Poly({{0, -35.5}, {1.3, -24}, {-1.3, -24}}, 4.5);
    p.FillRound(Hex(0xB8C4CC), 0.0, 1.3, -28.0, 4.5, 0.8, 0.8);
    p.Begin();
    p.SymOutline({{0, -25.5}, {2.6, -22}, {4.6, -10}, {5.6, 10}, {5.1, 24}, {3.2, 28.5}, {0, 28.5}}, 4.0);
    p.FillRound(WHITE, 0.0, 5.6, 0.0, 4.0, 0.85, 0.6);
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{3.0, -6}, {4.3, -6}, {4.8, 24}, {3.5, 24}}, 4.2);
        p.FillFlat(TEAL, Tilt(0.4, 0.0), 0.5);
    }
    p.SetMirror(1.0);
    p.PanelLine({{-5.4, 4}, {5.4, 4}}, 4.0, 0.3);
    p.PanelLine({{-5.2, 18}, {5.2, 18}}, 4.0, 0.3);
    p.Canopy(0.0, -13.0, 4.0, 3.0, 6.5, p.CanopyGlass());
    NavLights(p, 19.0, 23.0, 1.5, 0.9);
    p.Weather(0.1, 104u);
}

// A broad armoured wedge of thick overlapping plates.
void DrawBastion(ShipPainter& p)
{
    p.Begin();
    p.SymOutline({{0, -34}, {10, -30}, {26, -4}, {30, 10}, {30, 22}, {24, 28}, {0, 28}}, 3.0);
    p.FillRound(SLATE, 0.0, 30.0, 0.0, 3.0, 0.5, 0.35);
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{4, -27}, {11, -25}, {22, -6}, {11, -3}, {4, -7}}, 4.5);
        p.FillFlat(SLATE, Tilt(0.25, -0.2), 0.35);
        p.Begin();
        p.Poly({{4, -27}, {11, -25}, {22, -6}, {11, -3}, {4, -7}}, 4.5);
        p.Stroke({0.05, 0.06, 0.08}, 0.8, 0.6);
        p.Begin();
        p.Poly({{9, -1}, {24, -2}, {28, 9}, {28, 20}, {11, 20}}, 4.5);
        p.FillFlat(SLATE, Tilt(0.3, 0.0), 0.35);
        p.Begin();
        p.Poly({{9, -1}, {24, -2}, {28, 9}, {28, 20}, {11, 20}}, 4.5);
        p.Stroke({0.05, 0.06, 0.08}, 0.8, 0.6);
        // a blue unit band on each rear plate
        p.Begin();
        p.Poly({{12, 3}, {25.5, 2.5}, {26.2, 5.2}, {12.3, 5.8}}, 4.6);
        p.FillFlat(BLUE, Tilt(0.3, 0.0), 0.35);
        Rivets(p, {{7, -22}, {15, -9}, {13, 17}, {26, 17}, {25, 1}}, 4.6);
        p.Engine(8.0, 28.0, 2.0, 3.6);
        p.Engine(18.5, 27.0, 2.0, 3.0);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.Poly({{-3.5, -31}, {3.5, -31}, {4.5, 22}, {-4.5, 22}}, 6.0);
    p.FillRound(STEEL, 0.0, 4.5, 0.0, 6.0, 0.8, 0.45);
    p.PanelLine({{-4.2, 6}, {4.2, 6}}, 6.0, 0.5);
    Barrel(p, -1.6, -38.5, -29.0, 2.2, 6.5);
    Barrel(p, 1.6, -38.5, -29.0, 2.2, 6.5);
    p.Canopy(0.0, -15.0, 6.0, 3.0, 4.5, p.CanopyGlass());
    NavLights(p, 29.0, 16.0, 3.5, 1.1);
    p.Weather(0.2, 105u);
}

// The finest ship in the Reach: a sleek dark-blue delta with glowing engine pods.
void DrawInterceptor(ShipPainter& p)
{
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{2, -17}, {22, 15}, {22.5, 21}, {4, 19}}, 1.5);
        p.FillFlat(NAVY, Tilt(0.14, -0.05), 0.55);
        // white leading-edge stripe
        p.Begin();
        p.Poly({{4.5, -12}, {22, 15}, {21.5, 17}, {4.5, -8.5}}, 1.6);
        p.FillFlat(WHITE, Tilt(0.14, -0.05), 0.5);
        p.PanelLine({{6, 2}, {16, 17}}, 1.5, 0.35);
        // engine pod
        p.Begin();
        p.Poly({{9.5, 3}, {14.5, 3}, {15.2, 19}, {8.8, 19}}, 3.0);
        p.FillRound(STEEL_DARK, 12.0, 3.2, 10.0, 3.0, 0.85, 0.6);
        p.Light(12.0, 5.0, 3.5, 1.4, Hex(0x5AB8FF), 0.9);
        p.Light(12.0, 12.0, 3.5, 1.1, Hex(0x5AB8FF), 0.7);
        p.Engine(12.0, 19.5, 3.0, 3.0, 1.15);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.SymOutline({{0, -30}, {2.4, -24}, {4.8, -8}, {5.4, 12}, {4, 21}, {0, 21}}, 4.0);
    p.FillRound(NAVY, 0.0, 5.4, 0.0, 4.0, 0.85, 0.7);
    p.Begin();
    p.Poly({{-0.8, -27}, {0.8, -27}, {1.2, -14}, {-1.2, -14}}, 4.3);
    p.FillFlat(WHITE, UP, 0.5);
    p.PanelLine({{-5, 8}, {5, 8}}, 4.0, 0.35);
    p.Canopy(0.0, -10.0, 4.0, 3.0, 6.5, p.CanopyGlass());
    NavLights(p, 22.0, 19.0, 1.5, 0.9);
    p.Weather(0.08, 106u);
}

// ---- Computer ships -----------------------------------------------------------------------

// A hive drone: a small round pod with two stubby guns and one red eye.
void DrawDrone(ShipPainter& p)
{
    const Rgb dullOrange = Hex(0xB0652C);
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{8, -4}, {15, 2}, {15, 8}, {8, 8}}, 1.5);
        p.FillFlat(RUST_DARK, Tilt(0.25, 0.0), 0.3);
        Barrel(p, 5.0, -15.5, -7.0, 2.4, 3.5);
    }
    p.SetMirror(1.0);
    p.Engine(0.0, 11.0, 1.5, 2.6);
    p.Sphere(0.0, 0.0, 3.0, 10.5, dullOrange, 0.35);
    p.Begin();
    p.Ellipse(0.0, 0.0, 6.0, 7.0, 7.0);
    p.Stroke({0.1, 0.05, 0.02}, 0.7, 0.55);
    p.PanelLine({{-10, 2}, {-7, 2}}, 5.0, 0.4);
    p.PanelLine({{7, 2}, {10, 2}}, 5.0, 0.4);
    // the eye: a dark socket with a red lens
    p.Begin();
    p.Ellipse(0.0, -5.0, 9.0, 3.2, 3.0);
    kit::SetSource(p.Cr(), {0.05, 0.02, 0.02});
    cairo_fill(p.Cr());
    p.Begin();
    p.Ellipse(0.0, -5.0, 9.5, 1.9, 1.8);
    kit::SetSource(p.Cr(), Hex(0xE02010));
    cairo_fill(p.Cr());
    p.Light(0.0, -5.0, 10.0, 1.6, RED_EYE, 1.0);
    p.Weather(0.25, 201u);
}

// The Red Maw raider: a crude arrowhead of welded plates with a fanged mouth on the nose.
void DrawDart(ShipPainter& p)
{
    p.Begin();
    p.SymOutline({{0, -22}, {6, -11}, {16, 12}, {15, 16}, {8, 13}, {5, 16}, {0, 15}}, 3.0);
    p.FillRound(RUST, 0.0, 16.0, 0.0, 3.0, 0.45, 0.3);
    // welded plates of odd tones
    const std::vector<std::vector<P>> plates = {{{-3, -16}, {3, -15}, {5, -8}, {-4, -7}},
                                                {{6, -6}, {12, 7}, {7, 9}, {3, 0}},
                                                {{-7, -3}, {-3, 2}, {-6, 10}, {-12, 8}},
                                                {{-2, 6}, {4, 5}, {5, 12}, {-3, 12}}};
    const Rgb tones[] = {Hex(0x8A3A22), Hex(0xA8512E), RUST_DARK, Hex(0x7C3520)};
    for (size_t i = 0; i < plates.size(); ++i)
    {
        p.Begin();
        p.Poly(plates[i], 3.3);
        p.FillFlat(tones[i], Tilt(0.05 * double(i) - 0.08, -0.1), 0.25);
        p.Begin();
        p.Poly(plates[i], 3.3);
        cairo_set_dash(p.Cr(), std::vector<double>{0.8, 0.7}.data(), 2, 0.0);
        p.Stroke(Hex(0xE09050), 0.55, 0.7);
        cairo_set_dash(p.Cr(), nullptr, 0, 0.0);
    }
    // the fanged mouth
    p.BeginDecal(0.0, 1.5, 3.4);
    cairo_t* cr = p.Cr();
    cairo_new_path(cr);
    cairo_move_to(cr, -5.5, -1.5);
    cairo_curve_to(cr, -4.5, 4.0, 4.5, 4.0, 5.5, -1.5);
    cairo_close_path(cr);
    kit::SetSource(cr, {0.06, 0.01, 0.01});
    cairo_fill(cr);
    for (int i = -2; i <= 2; ++i)
    {
        const double x = i * 2.0;
        cairo_move_to(cr, x - 0.8, -1.4);
        cairo_line_to(cr, x + 0.8, -1.4);
        cairo_line_to(cr, x, 1.0 - 0.25 * std::abs(i));
        cairo_close_path(cr);
    }
    kit::SetSource(cr, p.Lit(IVORY, UP, 0.3));
    cairo_fill(cr);
    p.EndDecal();
    Barrel(p, 0.0, -23.0, -17.0, 1.8, 3.8);
    p.Canopy(0.0, -9.5, 3.0, 2.4, 3.4, p.CanopyGlass());
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Engine(4.6, 15.5, 2.0, 2.4);
    }
    p.SetMirror(1.0);
    p.Weather(0.3, 202u);
}

// The Red Maw interceptor: a thin segmented body and four narrow wings, black and yellow.
void DrawWasp(ShipPainter& p)
{
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{3, -6}, {18, -15}, {20, -12.5}, {4, -1}}, 2.0);
        p.FillFlat(WASP_WING, Tilt(0.2, -0.1), 0.6);
        p.Begin();
        p.Poly({{11, -10.6}, {18, -15}, {20, -12.5}, {12.5, -7.8}}, 2.1);
        p.FillFlat(WASP_YELLOW, Tilt(0.2, -0.1), 0.4);
        p.Begin();
        p.Poly({{3, 2}, {17, 9}, {16.5, 12}, {3.5, 6}}, 1.5);
        p.FillFlat(WASP_WING, Tilt(0.2, 0.05), 0.6);
        p.Begin();
        p.Poly({{10.5, 5.8}, {17, 9}, {16.5, 12}, {10.5, 9}}, 1.6);
        p.FillFlat(WASP_YELLOW, Tilt(0.2, 0.05), 0.4);
    }
    p.SetMirror(1.0);
    // abdomen with stripes
    p.Begin();
    p.Ellipse(0.0, 9.0, 3.0, 4.2, 9.0);
    p.FillRound(WASP_YELLOW, 0.0, 4.2, 9.0, 3.0, 0.85, 0.4);
    cairo_save(p.Cr());
    p.Begin();
    p.Ellipse(0.0, 9.0, 3.0, 4.2, 9.0);
    cairo_clip(p.Cr());
    for (int i = 0; i < 4; ++i)
    {
        const double y = 2.5 + i * 4.0;
        p.Begin();
        p.Poly({{-5, y}, {5, y}, {5, y + 1.9}, {-5, y + 1.9}}, 3.1);
        p.FillRound(BLACK, 0.0, 4.2, y, 3.1, 0.85, 0.4);
    }
    cairo_restore(p.Cr());
    // thorax and head
    p.Begin();
    p.Ellipse(0.0, -4.0, 4.0, 4.6, 6.0);
    p.FillRound(WASP_BODY, 0.0, 4.6, -4.0, 4.0, 0.85, 0.6);
    p.Begin();
    p.Ellipse(0.0, -15.0, 4.0, 3.4, 5.0);
    p.FillRound(WASP_BODY, 0.0, 3.4, -15.0, 4.0, 0.85, 0.6);
    p.Canopy(0.0, -5.0, 4.0, 2.0, 3.4, p.CanopyGlass());
    Barrel(p, 0.0, -21.5, -18.0, 1.4, 4.5);
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Light(2.0, -16.5, 6.0, 1.0, RED_EYE, 0.9);
    }
    p.SetMirror(1.0);
    p.Engine(0.0, 18.2, 2.0, 2.1);
    p.Weather(0.1, 203u);
}

// A laser fighter: a long hooded hull like a serpent's, dark green, a cyan laser tip.
void DrawViper(ShipPainter& p)
{
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{4, 2}, {15, 9}, {17, 17}, {14, 17}, {4, 12}}, 1.5);
        p.FillFlat(VIPER_DARK, Tilt(0.18, 0.0), 0.4);
        p.Begin();
        p.Poly({{13, 8}, {15, 9}, {17, 17}, {15.5, 17}}, 1.6);
        p.FillFlat(ORANGE, Tilt(0.18, 0.0), 0.3);
        p.Engine(2.2, 23.5, 2.0, 2.0);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.SymOutline({{0, -26}, {3, -24.5}, {8.5, -17}, {8.5, -10}, {4.5, -5}, {4.3, 8}, {4.6, 16}, {3.2, 24}, {0, 24.5}},
                 3.5);
    p.FillRound(VIPER_GREEN, 0.0, 8.5, -14.0, 3.5, 0.75, 0.55);
    // scales down the back
    for (int i = 0; i < 7; ++i)
    {
        const double y = -6.0 + i * 4.2;
        p.Begin();
        p.Move(-3.4, y, 3.8);
        p.Curve(-1.5, y + 2.2, 1.5, y + 2.2, 3.4, y, 3.8);
        p.Stroke(Hex(0x7FB070), 0.6, 0.55);
    }
    // hood markings
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{4.5, -20}, {7.5, -16}, {7.5, -12}, {4.5, -14}}, 3.7);
        p.FillFlat(ORANGE, Tilt(0.15, 0.0), 0.3);
        p.Light(3.2, -19.0, 5.0, 0.9, RED_EYE, 0.9);
    }
    p.SetMirror(1.0);
    p.Canopy(0.0, -12.0, 3.5, 2.2, 4.0, p.CanopyGlass());
    // the laser emitter
    p.Begin();
    p.Poly({{-1.2, -27}, {1.2, -27}, {1.5, -23}, {-1.5, -23}}, 4.0);
    p.FillFlat(GUNMETAL, UP, 0.5);
    p.Light(0.0, -27.0, 4.5, 1.5, LASER_CYAN, 1.0);
    p.Weather(0.12, 204u);
}

// A missile boat: a heavy brown hull with a missile rack on each flank.
void DrawMarauder(ShipPainter& p)
{
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{11, -15}, {23, -13}, {25, -9}, {25, 15}, {22, 19}, {11, 19}}, 2.5);
        p.FillRound(GUNMETAL, 18.0, 7.0, 0.0, 2.5, 0.6, 0.4);
        // three missiles in their rails
        for (int m = 0; m < 3; ++m)
        {
            const double x = 14.5 + m * 3.6;
            p.Begin();
            p.Poly({{x - 1.1, -9}, {x + 1.1, -9}, {x + 1.1, 9}, {x - 1.1, 9}}, 3.5);
            p.FillRound(IVORY, x, 1.1, 0.0, 3.5, 0.85, 0.5);
            p.Begin();
            p.Poly({{x - 1.1, -9}, {x, -12}, {x + 1.1, -9}}, 3.5);
            p.FillFlat(CRIMSON, Tilt(0.0, -0.4), 0.4);
            p.Begin();
            p.Poly({{x - 1.6, 7}, {x + 1.6, 7}, {x + 1.6, 9.5}, {x - 1.6, 9.5}}, 3.4);
            p.FillFlat(CRIMSON, UP, 0.3);
        }
        p.Engine(18.0, 19.5, 2.0, 2.3);
        p.Engine(5.0, 26.5, 2.0, 3.2);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.SymOutline({{0, -31}, {6, -28}, {11, -15}, {12, 18}, {9, 26}, {0, 26}}, 4.0);
    p.FillRound(BROWN, 0.0, 12.0, 0.0, 4.0, 0.75, 0.35);
    // red bands
    for (double y : {-18.0, 10.0})
    {
        p.Begin();
        p.Poly({{-11.5, y}, {11.5, y}, {11.8, y + 3.0}, {-11.8, y + 3.0}}, 4.2);
        p.FillRound(CRIMSON, 0.0, 11.8, y, 4.2, 0.75, 0.35);
    }
    p.PanelLine({{0, -10}, {0, 8}}, 4.0, 0.4);
    p.PanelLine({{-11, -2}, {11, -2}}, 4.0, 0.4);
    Rivets(p, {{-8, -8}, {8, -8}, {-8, 5}, {8, 5}}, 4.2);
    Barrel(p, 0.0, -33.0, -27.0, 2.2, 4.5);
    p.Canopy(0.0, -22.5, 4.0, 3.2, 3.8, p.CanopyGlass());
    p.Weather(0.28, 205u);
}

// A Halcyon Combine gunship: a clean white hull with gold trim, the Combine's sun on its back
// and a twin laser on the nose.
void DrawWarden(ShipPainter& p)
{
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        // swept wings with gold tips and a dark nacelle at the root
        p.Begin();
        p.Poly({{12, -10}, {33, 12}, {36, 26}, {30, 28}, {12, 26}}, 2.0);
        p.FillFlat(IVORY_SHADE, Tilt(0.16, -0.05), 0.45);
        p.Begin();
        p.Poly({{28, 6}, {33, 12}, {36, 26}, {31, 27}}, 2.1);
        p.FillFlat(GOLD, Tilt(0.16, -0.05), 0.8);
        p.Begin();
        p.Poly({{14, 14}, {29, 16}, {29.5, 19}, {14, 18}}, 2.2);
        p.FillFlat(GUNMETAL, Tilt(0.16, 0.0), 0.4);
        p.PanelLine({{14, 2}, {30, 20}}, 2.0, 0.35);
        p.Begin();
        p.Poly({{11, 4}, {18, 4}, {19, 33}, {12, 33}}, 4.0);
        p.FillRound(GUNMETAL, 15.0, 3.8, 18.0, 4.0, 0.8, 0.55);
        p.Light(15.0, 6.0, 5.0, 1.0, RED_EYE, 0.7);
        p.Engine(15.5, 33.5, 3.0, 3.2);
        p.Engine(6.0, 37.0, 3.0, 3.4);
        Barrel(p, 2.8, -47.0, -35.0, 2.4, 7.0);
        p.Light(2.8, -47.0, 7.5, 1.3, LASER_CYAN, 0.95);
        p.Light(35.0, 25.0, 2.5, 1.0, NAV_RED, 0.7);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.SymOutline({{0, -42}, {5, -38}, {10, -22}, {12, 0}, {12, 32}, {9, 37}, {0, 37}}, 5.0);
    p.FillRound(IVORY_SHADE, 0.0, 12.0, 0.0, 5.0, 0.8, 0.6);
    // dark intakes either side of the cockpit and gold trim along the spine
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{5.5, -26}, {9.5, -20}, {10.5, -8}, {6.5, -10}}, 5.3);
        p.FillFlat(GUNMETAL, Tilt(0.3, -0.1), 0.3);
        p.Begin();
        p.Poly({{3.2, -6}, {4.6, -6}, {5.2, 34}, {3.8, 34}}, 5.4);
        p.FillFlat(GOLD, Tilt(0.25, 0.0), 0.8);
    }
    p.SetMirror(1.0);
    // the sun emblem
    p.BeginDecal(0.0, 12.0, 5.6);
    cairo_t* cr = p.Cr();
    for (int i = 0; i < 12; ++i)
    {
        const double angle = 2.0 * kit::PI * i / 12.0;
        const double inner = 3.6;
        const double outer = i % 2 == 0 ? 7.0 : 5.6;
        cairo_move_to(cr, inner * std::cos(angle - 0.22), inner * std::sin(angle - 0.22));
        cairo_line_to(cr, outer * std::cos(angle), outer * std::sin(angle));
        cairo_line_to(cr, inner * std::cos(angle + 0.22), inner * std::sin(angle + 0.22));
        cairo_close_path(cr);
    }
    cairo_new_sub_path(cr);
    cairo_arc(cr, 0.0, 0.0, 3.2, 0.0, 2.0 * kit::PI);
    kit::SetSource(cr, p.Lit(GOLD, UP, 0.6));
    cairo_fill(cr);
    cairo_arc(cr, 0.0, 0.0, 1.7, 0.0, 2.0 * kit::PI);
    kit::SetSource(cr, p.Lit(Hex(0xB07820), UP, 0.2));
    cairo_fill(cr);
    p.EndDecal();
    p.PanelLine({{-12, -2}, {12, -2}}, 5.0, 0.35);
    p.PanelLine({{-12, 24}, {12, 24}}, 5.0, 0.35);
    p.PanelLine({{0, -2}, {0, 4}}, 5.0, 0.3);
    p.Canopy(0.0, -25.0, 5.0, 3.4, 6.0, p.CanopyGlass());
    p.Weather(0.08, 206u);
}

// The drone hive: a pitted rock grown over with fleshy pods, a glowing launch maw in the
// middle; its "long" frame is the maw flaring.
void DrawHive(ShipPainter& p)
{
    Canvas& canvas = p.GetCanvas();
    const double cx = canvas.Width() / 2.0;
    const double cy = canvas.Height() / 2.0;
    RockStyle rock;
    rock.light = Hex(0x8C7A6A);
    rock.dark = Hex(0x2A221E);
    rock.craters = 14;
    rock.lumpiness = 0.12;
    rock.roughness = 0.5;
    rock.seed = 6006u;
    PaintRock(canvas, cx, cy, 52.0, 50.0, rock);

    cairo_t* cr = p.Cr();
    // pods clustered round the rim, each with a faint glow inside
    static const double PODS[][3] = {{-30, -26, 9}, {28, -30, 8}, {36, 8, 9.5}, {-38, 10, 8},
                                     {-16, 34, 8.5}, {18, 34, 9}, {0, -40, 7}, {-34, -6, 6}};
    const Rgb flesh = Hex(0x7A3A4A);
    for (const auto& pod : PODS)
    {
        const double x = cx + pod[0];
        const double y = cy + pod[1];
        const double r = pod[2];
        cairo_pattern_t* body = cairo_pattern_create_radial(x - r * 0.35, y - r * 0.35, 0.0, x, y, r);
        kit::AddStop(body, 0.0, kit::Mix(flesh, {1.0, 0.85, 0.8}, 0.45));
        kit::AddStop(body, 0.6, flesh);
        kit::AddStop(body, 1.0, kit::Scale(flesh, 0.35));
        kit::UsePattern(cr, body);
        cairo_new_path(cr);
        cairo_arc(cr, x, y, r, 0.0, 2.0 * kit::PI);
        cairo_fill(cr);
        cairo_arc(cr, x + r * 0.1, y + r * 0.15, r * 0.35, 0.0, 2.0 * kit::PI);
        kit::SetSource(cr, Hex(0x300810), 0.8);
        cairo_fill(cr);
        p.Light(pod[0] + r * 0.1, pod[1] + r * 0.15, 0.0, r * 0.22, Hex(0xFF7030), p.LongFlame() ? 0.9 : 0.55);
    }
    // veins from the pods to the maw
    cairo_set_line_width(cr, 1.4);
    for (const auto& pod : PODS)
    {
        cairo_move_to(cr, cx + pod[0] * 0.8, cy + pod[1] * 0.8);
        cairo_curve_to(cr, cx + pod[0] * 0.5 + 4.0, cy + pod[1] * 0.5 - 3.0, cx + pod[0] * 0.3, cy + pod[1] * 0.3,
                       cx + pod[0] * 0.2, cy + pod[1] * 0.2);
    }
    kit::SetSource(cr, Hex(0x5A2030), 0.8);
    cairo_stroke(cr);
    // the maw: a dark pit with a burning throat
    cairo_pattern_t* maw = cairo_pattern_create_radial(cx, cy, 0.0, cx, cy, 17.0);
    kit::AddStop(maw, 0.0, p.LongFlame() ? Hex(0xFFE080) : Hex(0xFFA040));
    kit::AddStop(maw, 0.35, p.LongFlame() ? Hex(0xFF6A20) : Hex(0xC83A10));
    kit::AddStop(maw, 0.75, Hex(0x3A0A08));
    kit::AddStop(maw, 1.0, Hex(0x1A0C0A));
    kit::UsePattern(cr, maw);
    cairo_new_path(cr);
    // a ragged mouth ringed with teeth
    const int teeth = 18;
    for (int i = 0; i < teeth; ++i)
    {
        const double angle = 2.0 * kit::PI * i / teeth;
        const double r = (i % 2 == 0 ? 17.0 : 12.5) + 2.0 * (kit::Hash01(i, 3, 6006u) - 0.5);
        if (i == 0)
            cairo_move_to(cr, cx + r * std::cos(angle), cy + r * std::sin(angle));
        else
            cairo_line_to(cr, cx + r * std::cos(angle), cy + r * std::sin(angle));
    }
    cairo_close_path(cr);
    cairo_fill(cr);
    p.Light(0.0, 0.0, 0.0, p.LongFlame() ? 9.0 : 6.0, Hex(0xFF6A20), p.LongFlame() ? 1.0 : 0.7);
}

// The co-op freighter Marigold: a long spine with yellow container pods, a marigold on the bow.
void DrawFreighter(ShipPainter& p)
{
    // spine
    p.Begin();
    p.Poly({{-3.5, -26}, {3.5, -26}, {3.5, 38}, {-3.5, 38}}, 2.5);
    p.FillRound(STEEL_DARK, 0.0, 3.5, 0.0, 2.5, 0.8, 0.4);
    const Rgb containers[] = {HAZARD, Hex(0xC98F2A), SLATE, HAZARD, Hex(0x3C7FB0), HAZARD, Hex(0xC98F2A), HAZARD};
    int index = 0;
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        for (int row = 0; row < 4; ++row)
        {
            const double top = -22.0 + row * 14.0;
            const Rgb colour = containers[index++ % 8];
            p.Begin();
            p.Poly({{4.5, top}, {18.5, top}, {18.5, top + 12.5}, {4.5, top + 12.5}}, 3.5);
            p.FillRound(colour, 11.5, 7.0, top, 3.5, 0.55, 0.3);
            p.PanelLine({{4.5, top + 4.2}, {18.5, top + 4.2}}, 3.5, 0.35);
            p.PanelLine({{4.5, top + 8.4}, {18.5, top + 8.4}}, 3.5, 0.35);
            p.PanelLine({{11.5, top}, {11.5, top + 12.5}}, 3.5, 0.25);
        }
        // clamps from the spine to the pods
        for (int row = 0; row < 4; ++row)
        {
            const double y = -16.0 + row * 14.0;
            p.Begin();
            p.Poly({{3.5, y - 1.0}, {5.0, y - 1.0}, {5.0, y + 1.0}, {3.5, y + 1.0}}, 3.6);
            p.FillFlat(GUNMETAL, UP, 0.3);
        }
        p.Engine(5.0, 42.5, 2.0, 3.0);
    }
    p.SetMirror(1.0);
    // stern block
    p.Begin();
    p.Poly({{-10, 35}, {10, 35}, {9, 42}, {-9, 42}}, 3.0);
    p.FillRound(SLATE, 0.0, 10.0, 38.0, 3.0, 0.7, 0.4);
    // bow
    p.Begin();
    p.SymOutline({{0, -45}, {6, -43}, {10, -35}, {10.5, -26}, {6, -23}, {0, -23}}, 4.0);
    p.FillRound(STEEL, 0.0, 10.5, -34.0, 4.0, 0.75, 0.45);
    // the marigold on the bow
    p.BeginDecal(0.0, -30.0, 4.2);
    cairo_t* cr = p.Cr();
    for (int i = 0; i < 10; ++i)
    {
        const double angle = 2.0 * kit::PI * i / 10.0;
        cairo_save(cr);
        cairo_rotate(cr, angle);
        cairo_scale(cr, 1.0, 0.55);
        cairo_arc(cr, 3.1, 0.0, 1.9, 0.0, 2.0 * kit::PI);
        cairo_restore(cr);
    }
    kit::SetSource(cr, p.Lit(Hex(0xF08A1A), UP, 0.3));
    cairo_fill(cr);
    cairo_arc(cr, 0.0, 0.0, 1.7, 0.0, 2.0 * kit::PI);
    kit::SetSource(cr, p.Lit(Hex(0xFFD23A), UP, 0.3));
    cairo_fill(cr);
    p.EndDecal();
    p.Canopy(0.0, -39.5, 4.0, 3.6, 2.8, p.CanopyGlass());
    NavLights(p, 18.5, -21.0, 3.5, 1.0);
    p.Weather(0.2, 107u);
}

// Baron Skarrow's fighter: sharp black blades with crimson edges and a gold fanged mouth.
void DrawAce(ShipPainter& p)
{
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{4, -8}, {20, 6}, {23, 16}, {14, 12}, {7, 18}}, 1.5);
        p.FillFlat(BLACK, Tilt(0.18, -0.05), 0.7);
        p.Begin();
        p.Poly({{4, -8}, {20, 6}, {23, 16}, {21, 11}, {5, -3}}, 1.6);
        p.FillFlat(CRIMSON, Tilt(0.18, -0.05), 0.6);
        // forward blades
        p.Begin();
        p.Poly({{5, -9}, {9.5, -22}, {8.5, -8}}, 2.0);
        p.FillFlat(CRIMSON, Tilt(0.2, -0.2), 0.6);
        p.Engine(3.6, 22.0, 2.0, 2.6);
        p.Light(22.5, 15.0, 1.5, 0.9, RED_EYE, 0.8);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.SymOutline({{0, -28}, {2.6, -21}, {5.2, -8}, {6, 8}, {5, 20}, {0, 22}}, 4.0);
    p.FillRound(BLACK, 0.0, 6.0, 0.0, 4.0, 0.85, 0.8);
    p.BeginDecal(0.0, 9.0, 4.3);
    cairo_t* cr = p.Cr();
    cairo_move_to(cr, -4.2, -1.2);
    cairo_curve_to(cr, -3.4, 3.2, 3.4, 3.2, 4.2, -1.2);
    cairo_close_path(cr);
    kit::SetSource(cr, p.Lit(GOLD, UP, 0.9));
    cairo_fill(cr);
    for (int i = -1; i <= 1; ++i)
    {
        cairo_move_to(cr, i * 2.2 - 0.7, -0.9);
        cairo_line_to(cr, i * 2.2 + 0.7, -0.9);
        cairo_line_to(cr, i * 2.2, 1.3);
        cairo_close_path(cr);
    }
    kit::SetSource(cr, {0.08, 0.0, 0.02});
    cairo_fill(cr);
    p.EndDecal();
    p.PanelLine({{0, -4}, {0, 4}}, 4.0, 0.4);
    p.Canopy(0.0, -12.0, 4.0, 2.6, 5.0, p.CanopyGlass());
    p.Weather(0.06, 208u);
}

// The Combine dreadnought: a massive white-and-gold wedge, three laser emitters across the bow,
// a bridge tower, a lit hangar and a row of engines at the stern.
void DrawLeviathan(ShipPainter& p)
{
    const std::vector<P> hull = {{0, -88}, {12, -85}, {28, -68}, {46, -40}, {60, -8}, {70, 30}, {70, 62}, {60, 77}, {0, 78}};
    p.Begin();
    p.SymOutline(hull, 4.0);
    p.FillRound(IVORY_SHADE, 0.0, 70.0, 0.0, 4.0, 0.55, 0.45);
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        // a raised inner deck with its own shading, and plates between
        p.Begin();
        p.Poly({{10, -74}, {24, -58}, {40, -30}, {52, 0}, {58, 60}, {20, 70}, {18, -40}}, 6.0);
        p.FillFlat(IVORY_SHADE, Tilt(0.12, -0.06), 0.5);
        p.Begin();
        p.Poly({{10, -74}, {24, -58}, {40, -30}, {52, 0}, {58, 60}, {20, 70}, {18, -40}}, 6.0);
        p.Stroke(Hex(0x6A6458), 0.8, 0.7);
        for (double y : {-50.0, -30.0, -10.0, 10.0, 30.0, 50.0})
            p.PanelLine({{18.0 + (y < -40 ? 2 : 0), y}, {std::min(57.0, 40.0 + y * 0.4 + 16.0), y}}, 6.0, 0.3);
        p.PanelLine({{30, -40}, {30, 66}}, 6.0, 0.25);
        p.PanelLine({{44, -12}, {44, 64}}, 6.0, 0.25);
        // a dark trench along the flank with lit windows
        p.Begin();
        p.Poly({{56, -10}, {61, -8}, {68, 30}, {68, 60}, {63, 60}, {62, 30}}, 4.5);
        p.FillFlat(GUNMETAL, Tilt(0.35, 0.0), 0.3);
        for (int i = 0; i < 8; ++i)
            p.Light(60.0 + i * 0.75, -2.0 + i * 8.4, 5.0, 0.55, WINDOW, 0.75);
        // gold armour edges
        p.Begin();
        p.Poly({{12, -85}, {28, -68}, {46, -40}, {44, -37}, {26, -65}, {11, -81}}, 4.5);
        p.FillFlat(GOLD, Tilt(0.2, -0.2), 0.8);
        p.Begin();
        p.Poly({{60, 77}, {70, 62}, {70, 58}, {58, 73}, {24, 74}, {24, 77}}, 4.5);
        p.FillFlat(GOLD, Tilt(0.2, 0.1), 0.8);
        // turrets
        for (const P& turret : std::vector<P>{{34.0, -22.0}, {44.0, 14.0}, {40.0, 46.0}})
        {
            p.Sphere(turret.x, turret.y, 8.0, 5.0, IVORY_SHADE, 0.4);
            Barrel(p, turret.x - 1.2, turret.y - 11.0, turret.y - 3.0, 1.6, 10.0);
            Barrel(p, turret.x + 1.2, turret.y - 11.0, turret.y - 3.0, 1.6, 10.0);
        }
        // the side emitters of the bow
        p.Begin();
        p.Poly({{24, -70}, {32, -66}, {32, -54}, {24, -57}}, 7.0);
        p.FillRound(GUNMETAL, 28.0, 4.0, -62.0, 7.0, 0.8, 0.5);
        p.Light(28.0, -68.0, 8.0, 2.4, LASER_CYAN, 1.0);
        for (double x : {10.0, 23.0, 36.0, 49.0})
            p.Engine(x, 79.0, 3.0, 5.0, 0.9);
    }
    p.SetMirror(1.0);
    // the spine with the bow emitter
    p.Begin();
    p.Poly({{-9, -82}, {9, -82}, {13, 62}, {-13, 62}}, 10.0);
    p.FillRound(IVORY_SHADE, 0.0, 13.0, 0.0, 10.0, 0.85, 0.6);
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{8.5, -80}, {10.5, -80}, {14.5, 60}, {12.5, 60}}, 10.3);
        p.FillFlat(GOLD, Tilt(0.45, 0.0), 0.9);
    }
    p.SetMirror(1.0);
    for (double y : {-60.0, -10.0, 10.0})
        p.PanelLine({{-11, y}, {11, y}}, 10.0, 0.4);
    p.Begin();
    p.Poly({{-5, -92}, {5, -92}, {6, -80}, {-6, -80}}, 11.0);
    p.FillRound(GUNMETAL, 0.0, 6.0, -86.0, 11.0, 0.8, 0.5);
    p.Light(0.0, -91.0, 12.0, 2.8, LASER_CYAN, 1.0);
    // the sun emblem on the foredeck
    p.BeginDecal(0.0, -40.0, 10.5);
    cairo_t* cr = p.Cr();
    for (int i = 0; i < 16; ++i)
    {
        const double angle = 2.0 * kit::PI * i / 16.0;
        const double outer = i % 2 == 0 ? 11.5 : 9.0;
        cairo_move_to(cr, 5.5 * std::cos(angle - 0.16), 5.5 * std::sin(angle - 0.16));
        cairo_line_to(cr, outer * std::cos(angle), outer * std::sin(angle));
        cairo_line_to(cr, 5.5 * std::cos(angle + 0.16), 5.5 * std::sin(angle + 0.16));
        cairo_close_path(cr);
    }
    cairo_new_sub_path(cr);
    cairo_arc(cr, 0.0, 0.0, 5.0, 0.0, 2.0 * kit::PI);
    kit::SetSource(cr, p.Lit(GOLD, UP, 0.5));
    cairo_fill(cr);
    cairo_arc(cr, 0.0, 0.0, 2.6, 0.0, 2.0 * kit::PI);
    kit::SetSource(cr, p.Lit(Hex(0xB07820), UP, 0.2));
    cairo_fill(cr);
    p.EndDecal();
    // a lit hangar mouth amidships
    p.Begin();
    p.Poly({{-8, -6}, {8, -6}, {8, 6}, {-8, 6}}, 10.2);
    p.FillFlat(Hex(0x1A1A1E), UP, 0.1);
    p.Light(0.0, 0.0, 10.5, 4.0, WINDOW, 0.45);
    for (int i = -2; i <= 2; ++i)
        p.Light(i * 3.2, 5.0, 10.5, 0.5, Hex(0xFFB040), 0.9);
    // the bridge tower
    p.Begin();
    p.Poly({{-11, 26}, {11, 26}, {13, 54}, {-13, 54}}, 16.0);
    p.FillRound(IVORY_SHADE, 0.0, 13.0, 40.0, 16.0, 0.85, 0.6);
    p.Begin();
    p.Poly({{-11, 26}, {11, 26}, {13, 54}, {-13, 54}}, 16.0);
    p.Stroke(GOLD, 1.0, 0.9);
    p.Begin();
    p.Poly({{-9, 29}, {9, 29}, {9, 32}, {-9, 32}}, 16.2);
    p.FillFlat(Hex(0x202028), UP, 0.6);
    for (int i = -3; i <= 3; ++i)
        p.Light(i * 2.6, 30.5, 16.5, 0.6, WINDOW, 0.9);
    p.Sphere(0.0, 44.0, 17.0, 4.0, IVORY_SHADE, 0.5);
    p.Engine(0.0, 80.0, 3.0, 6.0, 0.9);
    p.Weather(0.07, 209u);
}

const ShipDesign DESIGNS[] = {
    {"cargo", 64, 64, Faction::Player, true, 0.95, -1.0, DrawCargo},
    {"scout", 56, 56, Faction::Player, true, 0.85, -3.0, DrawScout},
    {"corsair", 64, 64, Faction::Player, true, 0.88, -2.0, DrawCorsair},
    {"lancer", 64, 72, Faction::Player, true, 0.9, -2.0, DrawLancer},
    {"bastion", 80, 80, Faction::Player, true, 0.9, -3.0, DrawBastion},
    {"interceptor", 64, 64, Faction::Player, true, 0.9, -2.0, DrawInterceptor},
    {"drone", 40, 40, Faction::Enemy, true, 0.9, -2.0, DrawDrone},
    {"dart", 48, 48, Faction::Enemy, true, 0.88, -2.0, DrawDart},
    {"wasp", 48, 48, Faction::Enemy, true, 0.85, -2.0, DrawWasp},
    {"viper", 56, 56, Faction::Enemy, true, 0.88, -2.0, DrawViper},
    {"marauder", 72, 72, Faction::Enemy, true, 0.88, -3.0, DrawMarauder},
    {"warden", 96, 96, Faction::Enemy, true, 0.9, -4.0, DrawWarden},
    {"hive", 128, 128, Faction::Enemy, false, 1.0, 0.0, DrawHive},
    {"freighter", 64, 96, Faction::Player, true, 0.88, -4.0, DrawFreighter},
    {"ace", 56, 56, Faction::Enemy, true, 0.88, -2.0, DrawAce},
    {"leviathan", 192, 192, Faction::Enemy, true, 0.88, -5.0, DrawLeviathan},
};

} // namespace

const ShipDesign* FindShipDesign(const std::string& p_key)
{
    for (const ShipDesign& design : DESIGNS)
        if (p_key == design.key)
            return &design;
    return nullptr;
}

void DrawGenericShip(ShipPainter& p)
{
    // Drawn for a 64 x 64 canvas and scaled to the real one.
    const double sx = p.GetCanvas().Width() / 64.0;
    const double sy = p.GetCanvas().Height() / 64.0;
    const Rgb body = p.GetFaction() == Faction::Player ? STEEL : RUST;
    const Rgb wing = p.GetFaction() == Faction::Player ? BLUE : RUST_DARK;
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{4 * sx, -6 * sy}, {24 * sx, 12 * sy}, {24 * sx, 18 * sy}, {5 * sx, 16 * sy}}, 1.5);
        p.FillFlat(wing, Tilt(0.16, 0.0), 0.4);
        p.Engine(3.2 * sx, 22 * sy, 2.0, 2.6 * std::min(sx, sy));
    }
    p.SetMirror(1.0);
    p.Begin();
    p.SymOutline({{0, -28 * sy}, {3 * sx, -22 * sy}, {6 * sx, -6 * sy}, {6 * sx, 16 * sy}, {4 * sx, 22 * sy},
                  {0, 22 * sy}},
                 4.0);
    p.FillRound(body, 0.0, 6.0 * sx, 0.0, 4.0, 0.85, 0.5);
    p.Canopy(0.0, -10.0 * sy, 4.0, 3.0 * sx, 5.5 * sy, p.CanopyGlass());
    p.Weather(0.12, 300u);
}

} // namespace artgen
