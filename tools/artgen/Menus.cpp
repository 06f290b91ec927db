// The menus' larger pieces: the ribbon down the left edge, the title plate, the in-game
// menu's green panel, the shop's ship display, the shield bubble and the two banners.

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

void Rivet(cairo_t* p_context, double p_x, double p_y, double p_radius)
{
    cairo_pattern_t* head = cairo_pattern_create_radial(p_x - p_radius * 0.4, p_y - p_radius * 0.4, 0.0, p_x, p_y,
                                                        p_radius);
    AddStop(head, 0.0, STEEL_HIGHLIGHT);
    AddStop(head, 1.0, STEEL_SHADOW);
    SetPattern(p_context, head);
    CirclePath(p_context, p_x, p_y, p_radius);
    cairo_fill(p_context);
}

// A horizontal seam between two plates: a dark line with a lit edge under it.
void Seam(cairo_t* p_context, double p_x0, double p_x1, double p_y)
{
    cairo_rectangle(p_context, p_x0, p_y, p_x1 - p_x0, 1.0);
    SetRgb(p_context, {0.0, 0.0, 0.0}, 0.6);
    cairo_fill(p_context);
    cairo_rectangle(p_context, p_x0, p_y + 1.0, p_x1 - p_x0, 1.0);
    SetRgb(p_context, STEEL_LIGHT, 0.12);
    cairo_fill(p_context);
}

// ---- Ribbon ---------------------------------------------------------------------------------

// The menus' spine: the buttons drop onto it at x 15 and come to rest 70 pixels apart from
// y 210. Drawn alpha-tested on black, so it is opaque and its right edge ends in a hard rail.
void DrawRibbon(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    const double rail = w - 18.0;

    cairo_pattern_t* base = cairo_pattern_create_linear(0.0, 0.0, rail, 0.0);
    AddStop(base, 0.0, {0.03, 0.045, 0.08});
    AddStop(base, 1.0, {0.085, 0.115, 0.19});
    SetPattern(cr, base);
    cairo_paint(cr);
    // Light falls from the top.
    cairo_pattern_t* shade = cairo_pattern_create_linear(0.0, 0.0, 0.0, h);
    AddStop(shade, 0.0, NAVY_LIGHT, 0.35);
    AddStop(shade, 0.35, NAVY_LIGHT, 0.0);
    AddStop(shade, 1.0, {0.0, 0.0, 0.0}, 0.35);
    SetPattern(cr, shade);
    cairo_rectangle(cr, 0.0, 0.0, rail, h);
    cairo_fill(cr);
    AddBrushedGrain(cr, 0.0, 0.0, rail, h, 0x7269626Eu, 0.025);

    // Plates and their rivets.
    const double seams[] = {100.0, 184.0, 566.0, 664.0};
    for (double y : seams)
    {
        Seam(cr, 0.0, rail, y);
        for (double x = 12.0; x < rail - 6.0; x += 40.0)
            Rivet(cr, x, y + 7.0, 1.6);
    }

    // The emblem above the title plate: the monogram in a cut-cornered badge.
    const double badgeX = (rail) / 2.0;
    const double badgeY = 52.0;
    PaintSoftLayer(p_canvas, 8, 0.6, [&](cairo_t* p_layer) {
        ChamferRectPath(p_layer, badgeX - 30.0, badgeY - 30.0, 60.0, 60.0, 14.0);
        SetRgb(p_layer, AMBER, 0.6);
        cairo_fill(p_layer);
    });
    ChamferRectPath(cr, badgeX - 30.0, badgeY - 30.0, 60.0, 60.0, 14.0);
    SetVertical(cr, badgeY - 30.0, badgeY + 30.0, STEEL_LIGHT, STEEL_SHADOW);
    cairo_fill(cr);
    ChamferRectPath(cr, badgeX - 27.0, badgeY - 27.0, 54.0, 54.0, 12.5);
    SetVertical(cr, badgeY - 27.0, badgeY + 27.0, NAVY, NAVY_DEEP);
    cairo_fill(cr);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
    MonogramPath(cr, badgeX + 1.0, badgeY, 32.0);
    SetVertical(cr, badgeY - 16.0, badgeY + 16.0, AMBER_LIGHT, AMBER);
    cairo_fill(cr);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_WINDING);

    // The track the buttons ride down, with a lamp beside each resting place.
    const double trackTop = 196.0;
    const double trackBottom = 552.0;
    for (double x : {8.0, 157.0})
    {
        cairo_rectangle(cr, x, trackTop, 2.0, trackBottom - trackTop);
        SetRgb(cr, {0.0, 0.0, 0.0}, 0.7);
        cairo_fill(cr);
        cairo_rectangle(cr, x + 2.0, trackTop, 1.0, trackBottom - trackTop);
        SetRgb(cr, STEEL_LIGHT, 0.18);
        cairo_fill(cr);
    }
    for (int i = 0; i < 5; ++i)
    {
        const double y = 210.0 + 70.0 * i + BUTTON_HEIGHT / 2.0;
        const double x = 164.5;
        cairo_pattern_t* glow = cairo_pattern_create_radial(x, y, 0.0, x, y, 7.0);
        AddStop(glow, 0.0, AMBER, 0.55);
        AddStop(glow, 1.0, AMBER, 0.0);
        SetPattern(cr, glow);
        CirclePath(cr, x, y, 7.0);
        cairo_fill(cr);
        CirclePath(cr, x, y, 2.2);
        SetRgb(cr, AMBER_LIGHT);
        cairo_fill(cr);
    }

    // Vents low down.
    for (int i = 0; i < 7; ++i)
    {
        const double y = 690.0 + 9.0 * i;
        RoundedRectPath(cr, 22.0, y, rail - 44.0, 4.0, 2.0);
        SetRgb(cr, {0.0, 0.0, 0.0}, 0.75);
        cairo_fill(cr);
        cairo_rectangle(cr, 24.0, y + 4.0, rail - 48.0, 1.0);
        SetRgb(cr, STEEL_LIGHT, 0.1);
        cairo_fill(cr);
    }

    // The rail: an amber light line, then bevelled steel, then shadow falling off to black.
    cairo_pattern_t* lamp = cairo_pattern_create_linear(rail - 10.0, 0.0, rail, 0.0);
    AddStop(lamp, 0.0, AMBER, 0.0);
    AddStop(lamp, 1.0, AMBER, 0.28);
    SetPattern(cr, lamp);
    cairo_rectangle(cr, rail - 10.0, 0.0, 10.0, h);
    cairo_fill(cr);
    cairo_rectangle(cr, rail - 2.0, 0.0, 2.0, h);
    SetRgb(cr, AMBER);
    cairo_fill(cr);
    cairo_pattern_t* steel = cairo_pattern_create_linear(rail, 0.0, rail + 10.0, 0.0);
    AddStop(steel, 0.0, STEEL_HIGHLIGHT);
    AddStop(steel, 0.35, STEEL_LIGHT);
    AddStop(steel, 1.0, STEEL_SHADOW);
    SetPattern(cr, steel);
    cairo_rectangle(cr, rail, 0.0, 10.0, h);
    cairo_fill(cr);
    cairo_pattern_t* falloff = cairo_pattern_create_linear(rail + 10.0, 0.0, w, 0.0);
    AddStop(falloff, 0.0, {0.06, 0.07, 0.09});
    AddStop(falloff, 1.0, {0.0, 0.0, 0.0});
    SetPattern(cr, falloff);
    cairo_rectangle(cr, rail + 10.0, 0.0, w - rail - 10.0, h);
    cairo_fill(cr);
    for (double y = 30.0; y < h; y += 96.0)
        Rivet(cr, rail + 5.0, y, 1.8);
}

// ---- Title plate ----------------------------------------------------------------------------

// Drawn at x -80, so only its right 240 pixels show; the menu's title is printed on it in
// green, a little above its middle.
void TitlePlatePath(cairo_t* p_context, double p_w, double p_h, double p_inset)
{
    const double tip = 22.0;
    cairo_move_to(p_context, -10.0, p_inset);
    cairo_line_to(p_context, p_w - tip - p_inset * 0.4, p_inset);
    cairo_line_to(p_context, p_w - p_inset, p_h * 0.5);
    cairo_line_to(p_context, p_w - tip - p_inset * 0.4, p_h - p_inset);
    cairo_line_to(p_context, -10.0, p_h - p_inset);
    cairo_close_path(p_context);
}

void DrawTitlePlate(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    TitlePlatePath(cr, w, h, 0.5);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);
    TitlePlatePath(cr, w, h, 2.0);
    SetVertical(cr, 2.0, h - 2.0, STEEL_LIGHT, STEEL_SHADOW);
    cairo_fill(cr);
    TitlePlatePath(cr, w, h, 4.5);
    cairo_save(cr);
    cairo_clip_preserve(cr);
    SetVertical(cr, 4.5, h - 4.5, NAVY_LIGHT, NAVY_DEEP);
    cairo_fill(cr);
    // A sheen across the glass and a fine scan texture.
    cairo_pattern_t* sheen = cairo_pattern_create_linear(0.0, 4.5, 0.0, h * 0.5);
    AddStop(sheen, 0.0, ICE, 0.16);
    AddStop(sheen, 1.0, ICE, 0.0);
    SetPattern(cr, sheen);
    cairo_paint(cr);
    for (double y = 6.0; y < h - 4.0; y += 3.0)
    {
        cairo_rectangle(cr, 0.0, y, w, 1.0);
        SetRgb(cr, {0.0, 0.0, 0.0}, 0.18);
        cairo_fill(cr);
    }
    // The amber line along the foot.
    cairo_rectangle(cr, 80.0, h - 8.0, w - 110.0, 2.0);
    cairo_pattern_t* line = cairo_pattern_create_linear(80.0, 0.0, w - 30.0, 0.0);
    AddStop(line, 0.0, AMBER, 0.0);
    AddStop(line, 0.25, AMBER, 1.0);
    AddStop(line, 1.0, AMBER, 1.0);
    SetPattern(cr, line);
    cairo_fill(cr);
    cairo_restore(cr);
    // Three chevrons at the tip.
    for (int i = 0; i < 3; ++i)
    {
        const double x = w - 52.0 + i * 8.0;
        cairo_move_to(cr, x, h * 0.5 - 8.0);
        cairo_line_to(cr, x + 5.0, h * 0.5);
        cairo_line_to(cr, x, h * 0.5 + 8.0);
        cairo_set_line_width(cr, 2.2);
        SetRgb(cr, AMBER, 0.35 + 0.3 * i);
        cairo_stroke(cr);
    }
}

// ---- In-game menu panel ---------------------------------------------------------------------

// "Menu" is printed 17 pixels below its top in dusty red, and four buttons follow from 60
// pixels down, 60 apart.
void DrawGreenPanel(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    ChamferRectPath(cr, 0.0, 0.0, w, h, 14.0);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);
    ChamferRectPath(cr, 1.5, 1.5, w - 3.0, h - 3.0, 13.4);
    SetVertical(cr, 1.5, h - 1.5, STEEL_LIGHT, STEEL_SHADOW);
    cairo_fill(cr);
    ChamferRectPath(cr, 5.0, 5.0, w - 10.0, h - 10.0, 12.0);
    cairo_save(cr);
    cairo_clip_preserve(cr);
    SetVertical(cr, 5.0, h - 5.0, {0.07, 0.25, 0.17}, {0.02, 0.09, 0.07});
    cairo_fill(cr);
    // A fine grid on the glass.
    cairo_set_line_width(cr, 1.0);
    SetRgb(cr, {0.4, 1.0, 0.7}, 0.05);
    for (double x = 12.5; x < w; x += 12.0)
    {
        cairo_move_to(cr, x, 0.0);
        cairo_line_to(cr, x, h);
    }
    for (double y = 12.5; y < h; y += 12.0)
    {
        cairo_move_to(cr, 0.0, y);
        cairo_line_to(cr, w, y);
    }
    cairo_stroke(cr);
    // The heading band where "Menu" goes.
    cairo_rectangle(cr, 0.0, 0.0, w, 48.0);
    SetVertical(cr, 0.0, 48.0, {0.03, 0.12, 0.08}, {0.015, 0.06, 0.04}, 0.85);
    cairo_fill(cr);
    cairo_restore(cr);
    Seam(cr, 5.0, w - 5.0, 48.0);
    cairo_rectangle(cr, 24.0, 46.0, w - 48.0, 1.5);
    SetRgb(cr, AMBER, 0.9);
    cairo_fill(cr);
    for (double x : {14.0, w - 14.0})
    {
        Rivet(cr, x, 24.0, 2.0);
        Rivet(cr, x, h - 14.0, 2.0);
    }
}

// ---- Shop: the ship display -----------------------------------------------------------------

struct Slot
{
    double x;
    double y;
    const char* caption;
    double captionX; // where the caption sits, left of or above the name
    double captionY;
    bool mount;
};

// The shop prints the fitted parts' names at fixed points of this picture (the weapon mounts
// are also where parts are dropped); each gets a strip, and a small caption says what it is.
const Slot SHIP_SLOTS[] = {
    {90, 2, "FRONT", 84, 15, true},       {2, 100, "LEFT", 4, 95, true},   {220, 100, "RIGHT", 222, 95, true},
    {90, 200, "REAR", 84, 213, true},     {90, 135, "HULL", 84, 148, false}, {90, 155, "SHIELD", 84, 168, false},
    {90, 220, "ENGINE", 84, 233, false},
};

void BlueprintShipPath(cairo_t* p_context)
{
    // A generic fighter seen from above, nose up, centred on x 150.
    static const double HULL[][2] = {{150, 24}, {160, 44}, {166, 84},  {246, 118}, {250, 132}, {170, 134},
                                     {172, 176}, {188, 192}, {186, 198}, {150, 194}, {114, 198}, {112, 192},
                                     {128, 176}, {130, 134}, {50, 132},  {54, 118},  {134, 84},  {140, 44}};
    cairo_move_to(p_context, HULL[0][0], HULL[0][1]);
    for (size_t i = 1; i < std::size(HULL); ++i)
        cairo_line_to(p_context, HULL[i][0], HULL[i][1]);
    cairo_close_path(p_context);
}

void DrawShipDisplay(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    ChamferRectPath(cr, 0.0, 0.0, w, h, 10.0);
    SetVertical(cr, 0.0, h, {0.05, 0.08, 0.14}, {0.02, 0.035, 0.07}, 0.92);
    cairo_fill(cr);
    cairo_save(cr);
    ChamferRectPath(cr, 0.0, 0.0, w, h, 10.0);
    cairo_clip(cr);
    // Blueprint grid.
    cairo_set_line_width(cr, 1.0);
    for (double x = 0.5; x < w; x += 15.0)
    {
        cairo_move_to(cr, x, 0.0);
        cairo_line_to(cr, x, h);
    }
    for (double y = 0.5; y < h; y += 15.0)
    {
        cairo_move_to(cr, 0.0, y);
        cairo_line_to(cr, w, y);
    }
    SetRgb(cr, ICE, 0.06);
    cairo_stroke(cr);
    // The ship as a hologram.
    PaintSoftLayer(p_canvas, 4, 0.7, [](cairo_t* p_layer) {
        BlueprintShipPath(p_layer);
        cairo_set_line_width(p_layer, 3.0);
        SetRgb(p_layer, ICE, 0.5);
        cairo_stroke(p_layer);
    });
    BlueprintShipPath(cr);
    SetRgb(cr, ICE, 0.07);
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, 1.2);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    SetRgb(cr, ICE, 0.55);
    cairo_stroke(cr);
    // Centre line and engine glow.
    cairo_move_to(cr, 150.5, 30.0);
    cairo_line_to(cr, 150.5, 190.0);
    SetRgb(cr, ICE, 0.2);
    cairo_stroke(cr);
    cairo_restore(cr);

    // Strips for the names: weapon mounts with an amber tick, parts in plain steel.
    for (const Slot& slot : SHIP_SLOTS)
    {
        const double x = slot.x - 2.0;
        const double y = slot.y - 1.0;
        const double stripWidth = std::min(124.0, w - x);
        cairo_rectangle(cr, x, y, stripWidth, 20.0);
        cairo_pattern_t* strip = cairo_pattern_create_linear(x, 0.0, x + stripWidth, 0.0);
        AddStop(strip, 0.0, NAVY_DEEP, 0.9);
        AddStop(strip, 1.0, NAVY_DEEP, 0.0);
        SetPattern(cr, strip);
        cairo_fill(cr);
        cairo_rectangle(cr, x, y + 19.0, stripWidth, 1.0);
        cairo_pattern_t* rule = cairo_pattern_create_linear(x, 0.0, x + stripWidth, 0.0);
        const Rgb colour = slot.mount ? AMBER : STEEL;
        AddStop(rule, 0.0, colour, 0.9);
        AddStop(rule, 1.0, colour, 0.0);
        SetPattern(cr, rule);
        cairo_fill(cr);
        if (slot.mount)
        {
            cairo_rectangle(cr, x, y, 2.0, 20.0);
            SetRgb(cr, AMBER);
            cairo_fill(cr);
        }
        SetInterfaceFont(cr, 8.0, true);
        cairo_text_extents_t extents;
        cairo_text_extents(cr, slot.caption, &extents);
        // Captions left of the name when there is room, otherwise above it.
        const double captionX = slot.captionX < slot.x ? slot.captionX - extents.x_advance : slot.captionX;
        cairo_move_to(cr, captionX, slot.captionY);
        SetRgb(cr, slot.mount ? AMBER_LIGHT : STEEL, 0.85);
        cairo_show_text(cr, slot.caption);
    }
    // The frame: a thin steel line, bright at the top.
    ChamferRectPath(cr, 0.5, 0.5, w - 1.0, h - 1.0, 10.0);
    SetVertical(cr, 0.0, h, STEEL_LIGHT, STEEL_SHADOW);
    cairo_set_line_width(cr, 1.0);
    cairo_stroke(cr);
}

// ---- Shield bubble --------------------------------------------------------------------------

// Shown for a second after each hit, stretched over the ship's box and turned with it: a
// clear middle, a bright rim, a faint hexagonal lattice and a highlight to the upper left.
Rgba ShieldAt(double p_x, double p_y, double p_size)
{
    const double radius = p_size / 2.0 - 1.0;
    const double dx = p_x - p_size / 2.0;
    const double dy = p_y - p_size / 2.0;
    const double r = std::hypot(dx, dy) / radius;
    if (r >= 1.0)
        return {0.0, 0.0, 0.0, 0.0};
    // Brighter towards the rim, as a bubble seen through its depth.
    const double fresnel = std::pow(r, 4.0);
    double alpha = 0.06 + 0.5 * fresnel;
    // The rim itself, with a soft outer falloff.
    const double edge = (1.0 - r) * radius; // pixels to the edge
    alpha += 0.55 * std::exp(-edge * edge / 4.0);
    alpha *= std::min(1.0, edge * 1.5);
    // Hexagon lattice: distance to the nearest cell border of a hexagonal grid.
    const double cell = p_size / 9.0;
    const double qx = dx / cell;
    const double qy = dy / cell;
    const double rowHeight = std::sqrt(3.0) / 2.0;
    double best = 1e9;
    double second = 1e9;
    const int row = int(std::floor(qy / rowHeight));
    for (int j = row - 1; j <= row + 1; ++j)
    {
        const double shift = (j % 2 == 0) ? 0.0 : 0.5;
        const int column = int(std::floor(qx - shift));
        for (int i = column - 1; i <= column + 1; ++i)
        {
            const double d = std::hypot(qx - (i + shift), qy - j * rowHeight);
            if (d < best)
            {
                second = best;
                best = d;
            }
            else if (d < second)
            {
                second = d;
            }
        }
    }
    const double border = (second - best) * cell; // pixels from the cell border, roughly
    alpha += (0.1 + 0.35 * fresnel) * std::exp(-border * border / 1.2);
    // The highlight.
    const double hx = dx / radius + 0.42;
    const double hy = dy / radius + 0.46;
    const double highlight = std::exp(-(hx * hx + hy * hy) / 0.035);
    alpha += 0.5 * highlight;
    const Rgb colour = Mix(Mix(Rgb{0.3, 0.65, 1.0}, Rgb{0.65, 0.95, 1.0}, fresnel), WHITE, highlight);
    return {colour.r, colour.g, colour.b, std::min(alpha, 1.0)};
}

void DrawShield(Canvas& p_canvas)
{
    const double size = p_canvas.Width();
    ShadePixels(p_canvas, 3, [size](double p_x, double p_y) { return ShieldAt(p_x, p_y, size); });
}

// ---- Banners --------------------------------------------------------------------------------

void BannerPlatePath(cairo_t* p_context, double p_x, double p_y, double p_w, double p_h)
{
    const double cut = p_h * 0.42;
    cairo_new_sub_path(p_context);
    cairo_move_to(p_context, p_x + cut, p_y);
    cairo_line_to(p_context, p_x + p_w - cut, p_y);
    cairo_line_to(p_context, p_x + p_w, p_y + p_h / 2.0);
    cairo_line_to(p_context, p_x + p_w - cut, p_y + p_h);
    cairo_line_to(p_context, p_x + cut, p_y + p_h);
    cairo_line_to(p_context, p_x, p_y + p_h / 2.0);
    cairo_close_path(p_context);
}

// Shown over the battle for two seconds: the word large and lit, a line beneath.
void DrawBanner(Canvas& p_canvas, const char* p_word, const char* p_line, const Rgb& p_accent,
                const Rgb& p_accentLight, const Rgb& p_glass)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double cx = w / 2.0;
    const double plateY = 34.0;
    const double plateH = 100.0;

    // Wings: long tapering bars either side.
    for (int side = -1; side <= 1; side += 2)
    {
        for (int i = 0; i < 3; ++i)
        {
            const double y = plateY + 30.0 + i * 16.0;
            const double inner = cx + side * (w * 0.3);
            const double outer = cx + side * (w * 0.5 - 6.0 - i * 14.0);
            cairo_move_to(cr, inner, y);
            cairo_line_to(cr, outer, y);
            cairo_line_to(cr, outer - side * 8.0, y + 8.0);
            cairo_line_to(cr, inner, y + 8.0);
            cairo_close_path(cr);
            cairo_pattern_t* wing = cairo_pattern_create_linear(inner, 0.0, outer, 0.0);
            AddStop(wing, 0.0, p_accent, 0.95);
            AddStop(wing, 1.0, p_accent, 0.15);
            SetPattern(cr, wing);
            cairo_fill(cr);
        }
    }
    // The plate.
    PaintSoftLayer(p_canvas, 10, 0.8, [&](cairo_t* p_layer) {
        BannerPlatePath(p_layer, 40.0, plateY, w - 80.0, plateH);
        SetRgb(p_layer, p_accent, 0.8);
        cairo_fill(p_layer);
    });
    BannerPlatePath(cr, 40.0, plateY, w - 80.0, plateH);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);
    BannerPlatePath(cr, 42.5, plateY + 2.5, w - 85.0, plateH - 5.0);
    SetVertical(cr, plateY, plateY + plateH, STEEL_LIGHT, STEEL_SHADOW);
    cairo_fill(cr);
    BannerPlatePath(cr, 47.0, plateY + 6.0, w - 94.0, plateH - 12.0);
    SetVertical(cr, plateY + 6.0, plateY + plateH - 6.0, Mix(p_glass, WHITE, 0.08), Shade(p_glass, 0.45));
    cairo_fill(cr);

    // The word, with a glow of its own.
    SetInterfaceFont(cr, 50.0, true);
    const double baseline = plateY + 68.0;
    PaintSoftLayer(p_canvas, 7, 0.9, [&](cairo_t* p_layer) {
        SetInterfaceFont(p_layer, 50.0, true);
        cairo_new_path(p_layer);
        CentredTextPath(p_layer, p_word, cx, baseline, 7.0);
        SetRgb(p_layer, p_accent);
        cairo_fill(p_layer);
    });
    cairo_new_path(cr);
    CentredTextPath(cr, p_word, cx, baseline + 3.0, 7.0);
    SetRgb(cr, {0.0, 0.0, 0.0}, 0.6);
    cairo_fill(cr);
    cairo_new_path(cr);
    CentredTextPath(cr, p_word, cx, baseline, 7.0);
    cairo_pattern_t* face = cairo_pattern_create_linear(0.0, baseline - 36.0, 0.0, baseline);
    AddStop(face, 0.0, WHITE);
    AddStop(face, 0.45, p_accentLight);
    AddStop(face, 1.0, p_accent);
    SetPattern(cr, face);
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, 1.2);
    SetRgb(cr, Shade(p_accent, 0.45));
    cairo_stroke(cr);

    // The line beneath, between two short rules.
    SetInterfaceFont(cr, 15.0, true);
    const double lineY = plateY + plateH + 24.0;
    const double width = TrackedTextWidth(cr, p_line, 6.0);
    SetRgb(cr, STEEL_HIGHLIGHT);
    FillCentredText(cr, p_line, cx, lineY, 6.0);
    for (int side = -1; side <= 1; side += 2)
    {
        const double from = cx + side * (width / 2.0 + 14.0);
        const double to = cx + side * (width / 2.0 + 64.0);
        cairo_rectangle(cr, std::min(from, to), lineY - 6.0, std::abs(to - from), 2.0);
        SetRgb(cr, p_accent);
        cairo_fill(cr);
    }
}

void DrawVictoryBanner(Canvas& p_canvas)
{
    DrawBanner(p_canvas, "VICTORY", "MISSION ACCOMPLISHED", AMBER, AMBER_LIGHT, NAVY);
}

void DrawDefeatBanner(Canvas& p_canvas)
{
    DrawBanner(p_canvas, "DEFEAT", "MISSION FAILED", {0.9, 0.16, 0.12}, {1.0, 0.62, 0.52}, {0.16, 0.05, 0.07});
}

void ListMenuPictures(const ArtContext&, std::vector<PictureRecipe>& p_pictures)
{
    AddInterfacePicture(p_pictures, "art\\ribbon.bmp", DrawRibbon);
    AddInterfacePicture(p_pictures, "art\\menu_title_bg.bmp", DrawTitlePlate);
    AddInterfacePicture(p_pictures, "art\\menugreenbg.bmp", DrawGreenPanel);
    AddInterfacePicture(p_pictures, "art\\menu\\ship_display.bmp", DrawShipDisplay);
    AddInterfacePicture(p_pictures, "art\\menu\\shield.bmp", DrawShield);
    AddInterfacePicture(p_pictures, "art\\victorybanner.bmp", DrawVictoryBanner);
    AddInterfacePicture(p_pictures, "art\\defeatbanner.bmp", DrawDefeatBanner);
}

const PictureRegistrar s_menus(ListMenuPictures);

} // namespace

} // namespace artgen
