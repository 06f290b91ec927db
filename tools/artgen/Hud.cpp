// The mission HUD's pictures (radar, status panel) and the options menu's HUD layout editor
// (a small screenshot and three pieces the player drags about, tinted by the colour sliders).

#include "InterfaceArt.h"
#include "Pictures.h"
#include "Style.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace artgen
{

namespace
{

using namespace palette;

constexpr double RADAR_GLASS = 77.5;  // blips reach 75 plus half their size
constexpr double RADAR_BEZEL = 81.5;  // the dial just touches the screen's left edge
constexpr double RADAR_HOUSING = 96.0;

// The radar sits in the top-left corner of the screen: a plate flush with both screen edges
// whose far corner curves round the dial.
void RadarHousingPath(cairo_t* p_context, double p_grow)
{
    const double cx = RADAR_CENTRE_X;
    const double cy = RADAR_CENTRE_Y;
    const double r = RADAR_HOUSING + p_grow;
    cairo_move_to(p_context, -10.0, -10.0);
    cairo_line_to(p_context, cx + r, -10.0);
    cairo_line_to(p_context, cx + r, cy);
    cairo_arc(p_context, cx, cy, r, 0.0, PI_VALUE / 2.0);
    cairo_line_to(p_context, -10.0, cy + r);
    cairo_close_path(p_context);
}

void DrawRadar(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double cx = RADAR_CENTRE_X;
    const double cy = RADAR_CENTRE_Y;

    // Housing with a soft shadow on the world around it.
    PaintSoftLayer(p_canvas, 5, 0.6, [](cairo_t* p_layer) {
        cairo_translate(p_layer, 2.0, 3.0);
        RadarHousingPath(p_layer, 0.0);
        cairo_set_source_rgba(p_layer, 0.0, 0.0, 0.0, 1.0);
        cairo_fill(p_layer);
    });
    RadarHousingPath(cr, 0.0);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);
    RadarHousingPath(cr, -1.5);
    cairo_pattern_t* plate = cairo_pattern_create_linear(0.0, 0.0, cx + RADAR_HOUSING, cy + RADAR_HOUSING);
    AddStop(plate, 0.0, NAVY_LIGHT);
    AddStop(plate, 1.0, NAVY);
    SetPattern(cr, plate);
    cairo_fill(cr);
    cairo_save(cr);
    RadarHousingPath(cr, -1.5);
    cairo_clip(cr);
    AddBrushedGrain(cr, 0.0, 0.0, cx + RADAR_HOUSING, cy + RADAR_HOUSING, 0x72616461u, 0.03);
    cairo_restore(cr);
    // An amber line following the curve.
    cairo_new_sub_path(cr);
    cairo_arc(cr, cx, cy, RADAR_HOUSING - 3.5, -0.05, PI_VALUE / 2.0 + 0.05);
    cairo_set_line_width(cr, 1.5);
    SetRgb(cr, AMBER, 0.9);
    cairo_stroke(cr);
    for (double angle : {PI_VALUE * 0.1, PI_VALUE * 0.25, PI_VALUE * 0.4})
    {
        const double x = cx + std::cos(angle + PI_VALUE / 12.0) * (RADAR_BEZEL + 7.0);
        const double y = cy + std::sin(angle + PI_VALUE / 12.0) * (RADAR_BEZEL + 7.0);
        CirclePath(cr, x, y, 1.7);
        SetRgb(cr, STEEL_LIGHT);
        cairo_fill(cr);
    }

    // The bezel: a steel ring lit from the upper left, with notches every 30 degrees.
    CirclePath(cr, cx, cy, RADAR_BEZEL);
    CirclePath(cr, cx, cy, RADAR_GLASS);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_pattern_t* ring = cairo_pattern_create_linear(cx - RADAR_BEZEL, cy - RADAR_BEZEL, cx + RADAR_BEZEL,
                                                        cy + RADAR_BEZEL);
    AddStop(ring, 0.0, STEEL_HIGHLIGHT);
    AddStop(ring, 0.5, STEEL);
    AddStop(ring, 1.0, STEEL_SHADOW);
    SetPattern(cr, ring);
    cairo_fill(cr);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_WINDING);
    CirclePath(cr, cx, cy, RADAR_BEZEL);
    cairo_set_line_width(cr, 1.2);
    SetRgb(cr, NAVY_DEEP);
    cairo_stroke(cr);
    // Bearing marks every 30 degrees on the plate round the dial.
    for (int i = 0; i < 12; ++i)
    {
        const double angle = i * PI_VALUE / 6.0;
        const double inner = RADAR_BEZEL + 2.5;
        const double outer = RADAR_BEZEL + (i % 3 == 0 ? 9.0 : 6.0);
        cairo_move_to(cr, cx + std::cos(angle) * inner, cy + std::sin(angle) * inner);
        cairo_line_to(cr, cx + std::cos(angle) * outer, cy + std::sin(angle) * outer);
    }
    cairo_set_line_width(cr, 1.4);
    SetRgb(cr, STEEL_LIGHT, 0.7);
    cairo_stroke(cr);

    // The glass: deep navy, darker to the rim, so red, white and yellow blips stand out.
    cairo_pattern_t* glass = cairo_pattern_create_radial(cx, cy - 10.0, 4.0, cx, cy, RADAR_GLASS);
    AddStop(glass, 0.0, {0.05, 0.1, 0.17});
    AddStop(glass, 1.0, {0.01, 0.02, 0.045});
    SetPattern(cr, glass);
    CirclePath(cr, cx, cy, RADAR_GLASS);
    cairo_fill(cr);
    cairo_set_line_width(cr, 1.0);
    for (double radius : {25.0, 50.0})
    {
        CirclePath(cr, cx, cy, radius);
        SetRgb(cr, ICE, 0.16);
        cairo_stroke(cr);
    }
    CirclePath(cr, cx, cy, RADAR_RIM + 0.5);
    SetRgb(cr, ICE, 0.28);
    cairo_stroke(cr);
    cairo_move_to(cr, cx - RADAR_RIM, cy + 0.5);
    cairo_line_to(cr, cx + RADAR_RIM, cy + 0.5);
    cairo_move_to(cr, cx + 0.5, cy - RADAR_RIM);
    cairo_line_to(cr, cx + 0.5, cy + RADAR_RIM);
    SetRgb(cr, ICE, 0.1);
    cairo_stroke(cr);
    // Forward is always up: an amber pointer on the rim.
    cairo_move_to(cr, cx - 6.0, cy - RADAR_BEZEL + 1.0);
    cairo_line_to(cr, cx + 6.0, cy - RADAR_BEZEL + 1.0);
    cairo_line_to(cr, cx, cy - RADAR_GLASS + 3.0);
    cairo_close_path(cr);
    SetRgb(cr, AMBER);
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, 1.0);
    SetRgb(cr, NAVY_DEEP);
    cairo_stroke(cr);
    // A faint reflection across the upper left of the glass.
    cairo_save(cr);
    CirclePath(cr, cx, cy, RADAR_GLASS - 2.0);
    cairo_clip(cr);
    cairo_pattern_t* reflection = cairo_pattern_create_linear(cx - 60.0, cy - 60.0, cx, cy);
    AddStop(reflection, 0.0, WHITE, 0.1);
    AddStop(reflection, 1.0, WHITE, 0.0);
    SetPattern(cr, reflection);
    CirclePath(cr, cx - 18.0, cy - 18.0, 62.0);
    cairo_fill(cr);
    // Inner shadow at the rim.
    cairo_pattern_t* rim = cairo_pattern_create_radial(cx, cy, RADAR_GLASS - 8.0, cx, cy, RADAR_GLASS);
    AddStop(rim, 0.0, {0.0, 0.0, 0.0}, 0.0);
    AddStop(rim, 1.0, {0.0, 0.0, 0.0}, 0.55);
    SetPattern(cr, rim);
    cairo_paint(cr);
    cairo_restore(cr);
}

// ---- Status panel ---------------------------------------------------------------------------

struct StatusRow
{
    const char* label;
    double centre;    // y of the bar's middle
    double thickness; // the bar's line width
    double start;     // x where the bar starts
    Rgb colour;       // the bar's colour, repeated on the label's chip
};

const StatusRow STATUS_ROWS[] = {
    {"ARMOUR", 11.0, 10.0, 59.0, {1.0, 0.0, 0.0}},   {"SHIELD", 26.0, 10.0, 59.0, {0.15, 0.35, 1.0}},
    {"BULLETS", 48.0, 7.0, 62.0, {0.0, 0.78, 0.0}},  {"MISSILES", 60.0, 7.0, 62.0, {1.0, 1.0, 0.0}},
    {"ENERGY", 73.0, 7.0, 62.0, {0.0, 1.0, 1.0}},
};

// Hangs from the top-right corner of the screen; the game draws its bars over the troughs.
void StatusPanelPath(cairo_t* p_context, double p_w, double p_h, double p_inset)
{
    const double cut = 16.0;
    cairo_move_to(p_context, p_inset, -10.0);
    cairo_line_to(p_context, p_w + 10.0, -10.0);
    cairo_line_to(p_context, p_w + 10.0, p_h - p_inset);
    cairo_line_to(p_context, cut + p_inset * 0.4, p_h - p_inset);
    cairo_line_to(p_context, p_inset, p_h - cut - p_inset * 0.4);
    cairo_close_path(p_context);
}

void DrawStatusPanel(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    StatusPanelPath(cr, w, h, 0.0);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);
    StatusPanelPath(cr, w, h, 1.5);
    cairo_pattern_t* plate = cairo_pattern_create_linear(0.0, 0.0, 0.0, h);
    AddStop(plate, 0.0, NAVY_LIGHT);
    AddStop(plate, 1.0, NAVY);
    SetPattern(cr, plate);
    cairo_fill(cr);
    // Steel edge along the left and the foot, amber inside it.
    cairo_move_to(cr, 2.0, 0.0);
    cairo_line_to(cr, 2.0, h - 16.6);
    cairo_line_to(cr, 16.6, h - 2.0);
    cairo_line_to(cr, w, h - 2.0);
    cairo_set_line_width(cr, 2.0);
    SetVertical(cr, 0.0, h, STEEL_LIGHT, STEEL_SHADOW);
    cairo_stroke(cr);
    cairo_move_to(cr, 4.8, 0.0);
    cairo_line_to(cr, 4.8, h - 18.0);
    cairo_line_to(cr, 18.0, h - 4.8);
    cairo_line_to(cr, w, h - 4.8);
    cairo_set_line_width(cr, 1.0);
    SetRgb(cr, AMBER, 0.8);
    cairo_stroke(cr);
    // Between the ship's state and its ammunition.
    cairo_rectangle(cr, 8.0, 37.0, w - 8.0, 1.0);
    SetRgb(cr, {0.0, 0.0, 0.0}, 0.5);
    cairo_fill(cr);
    cairo_rectangle(cr, 8.0, 38.0, w - 8.0, 1.0);
    SetRgb(cr, STEEL_LIGHT, 0.15);
    cairo_fill(cr);

    for (const StatusRow& row : STATUS_ROWS)
    {
        // The trough: a recess one pixel wider than the bar all round.
        const double top = std::floor(row.centre - row.thickness / 2.0) - 1.0;
        const double height = std::ceil(row.thickness) + 2.0;
        const double left = row.start - 2.0;
        cairo_rectangle(cr, left, top, w - left - 1.0, height);
        SetVertical(cr, top, top + height, {0.0, 0.0, 0.0}, {0.03, 0.05, 0.09}, 0.95);
        cairo_fill(cr);
        cairo_rectangle(cr, left, top + height, w - left - 1.0, 1.0);
        SetRgb(cr, STEEL_LIGHT, 0.35);
        cairo_fill(cr);
        // Faint scale marks every quarter.
        for (int i = 1; i < 4; ++i)
        {
            const double x = std::floor(row.start + (w - 3.0 - row.start) * i / 4.0) + 0.5;
            cairo_move_to(cr, x, top + 1.0);
            cairo_line_to(cr, x, top + height - 1.0);
        }
        cairo_set_line_width(cr, 1.0);
        SetRgb(cr, ICE, 0.12);
        cairo_stroke(cr);
        // Label with a chip in the bar's colour.
        cairo_rectangle(cr, 9.0, row.centre - 3.0, 3.0, 6.0);
        SetRgb(cr, row.colour);
        cairo_fill(cr);
        SetInterfaceFont(cr, 7.5, true);
        cairo_move_to(cr, 15.0, row.centre + 2.8);
        SetRgb(cr, STEEL_LIGHT);
        cairo_show_text(cr, row.label);
    }
}

// ---- HUD layout editor ----------------------------------------------------------------------

// The editor's slots, as offsets on its 300 x 225 screenshot; each piece is 75 x 56.
const double EDITOR_SLOTS[][2] = {{0, 0}, {112, 0}, {225, 0}, {0, 84}, {225, 84}, {0, 169}, {112, 169}, {225, 169}};

void MiniShipPath(cairo_t* p_context, double p_x, double p_y, double p_size, double p_heading)
{
    cairo_save(p_context);
    cairo_translate(p_context, p_x, p_y);
    cairo_rotate(p_context, p_heading);
    cairo_scale(p_context, p_size, p_size);
    cairo_move_to(p_context, 0.0, -1.0);
    cairo_line_to(p_context, 0.75, 0.8);
    cairo_line_to(p_context, 0.0, 0.45);
    cairo_line_to(p_context, -0.75, 0.8);
    cairo_close_path(p_context);
    cairo_restore(p_context);
}

// A glimpse of a mission at a third of its size, with the eight places a piece can go.
void DrawEditorScreenshot(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    SetVertical(cr, 0.0, h, {0.02, 0.03, 0.07}, {0.01, 0.015, 0.035});
    cairo_paint(cr);
    PaintNebula(cr, w * 0.7, h * 0.35, w * 0.8, h * 0.6, {0.15, 0.45, 0.55}, 0.22, 10, 0x6E6562u);
    PaintNebula(cr, w * 0.2, h * 0.75, w * 0.6, h * 0.5, {0.4, 0.2, 0.55}, 0.18, 8, 0x76696Fu);
    PaintStars(cr, 0.0, 0.0, w, h, 0x73746172u, 160, 1.0);
    // An asteroid and a beacon.
    cairo_pattern_t* rock = cairo_pattern_create_radial(70.0, 122.0, 1.0, 74.0, 126.0, 13.0);
    AddStop(rock, 0.0, {0.55, 0.5, 0.44});
    AddStop(rock, 1.0, {0.16, 0.14, 0.12});
    SetPattern(cr, rock);
    cairo_move_to(cr, 62.0, 124.0);
    cairo_curve_to(cr, 62.0, 112.0, 80.0, 110.0, 86.0, 119.0);
    cairo_curve_to(cr, 90.0, 130.0, 80.0, 140.0, 70.0, 136.0);
    cairo_curve_to(cr, 64.0, 133.0, 62.0, 130.0, 62.0, 124.0);
    cairo_fill(cr);
    CirclePath(cr, 205.0, 150.0, 5.0);
    SetRgb(cr, {0.3, 1.0, 0.4}, 0.25);
    cairo_fill(cr);
    CirclePath(cr, 205.0, 150.0, 1.6);
    SetRgb(cr, {0.6, 1.0, 0.6});
    cairo_fill(cr);
    // The player in the middle, raiders closing in, a shot between them.
    MiniShipPath(cr, 150.0, 118.0, 7.0, 0.3);
    SetVertical(cr, 110.0, 126.0, STEEL_HIGHLIGHT, AMBER);
    cairo_fill(cr);
    const double raiders[][3] = {{188.0, 88.0, -2.2}, {100.0, 70.0, 2.4}, {178.0, 176.0, -0.6}};
    for (const auto& raider : raiders)
    {
        MiniShipPath(cr, raider[0], raider[1], 5.5, raider[2]);
        SetRgb(cr, {0.85, 0.2, 0.15});
        cairo_fill(cr);
    }
    cairo_move_to(cr, 155.0, 110.0);
    cairo_line_to(cr, 172.0, 96.0);
    cairo_set_line_width(cr, 1.2);
    SetRgb(cr, AMBER_LIGHT, 0.9);
    cairo_stroke(cr);

    // The slots, dashed, so the player sees where pieces snap to.
    const double dash[] = {3.0, 3.0};
    cairo_set_dash(cr, dash, 2, 0.0);
    cairo_set_line_width(cr, 1.0);
    for (const auto& slot : EDITOR_SLOTS)
    {
        cairo_rectangle(cr, slot[0] + 1.5, slot[1] + 1.5, 72.0, 53.0);
        SetRgb(cr, ICE, 0.35);
        cairo_stroke(cr);
    }
    cairo_set_dash(cr, nullptr, 0, 0.0);
    cairo_rectangle(cr, 0.5, 0.5, w - 1.0, h - 1.0);
    SetRgb(cr, STEEL);
    cairo_stroke(cr);
}

// The pieces are near-white so that the colour sliders' tint shows true.
void PiecePlate(cairo_t* p_context, double p_w, double p_h)
{
    ChamferRectPath(p_context, 0.5, 0.5, p_w - 1.0, p_h - 1.0, 7.0);
    SetVertical(p_context, 0.0, p_h, {0.95, 0.96, 0.98}, {0.74, 0.77, 0.82}, 0.92);
    cairo_fill_preserve(p_context);
    cairo_set_line_width(p_context, 1.0);
    SetRgb(p_context, {0.18, 0.2, 0.24});
    cairo_stroke(p_context);
}

void PieceLabel(cairo_t* p_context, const char* p_text, double p_x, double p_baseline)
{
    SetInterfaceFont(p_context, 8.0, true);
    SetRgb(p_context, {0.15, 0.17, 0.22});
    FillCentredText(p_context, p_text, p_x, p_baseline, 0.8);
}

void DrawRadarPiece(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    PiecePlate(cr, w, h);
    const double cx = 23.0;
    const double cy = h / 2.0;
    CirclePath(cr, cx, cy, 19.0);
    SetRgb(cr, {0.3, 0.33, 0.38});
    cairo_fill(cr);
    CirclePath(cr, cx, cy, 16.0);
    SetRgb(cr, {0.12, 0.14, 0.18});
    cairo_fill(cr);
    cairo_set_line_width(cr, 0.8);
    for (double r : {6.0, 11.0})
    {
        CirclePath(cr, cx, cy, r);
        SetRgb(cr, WHITE, 0.35);
        cairo_stroke(cr);
    }
    for (const auto& blip : {std::array<double, 2>{0.0, 0.0}, {6.0, -7.0}, {-8.0, 5.0}})
    {
        cairo_rectangle(cr, cx + blip[0] - 1.2, cy + blip[1] - 1.2, 2.4, 2.4);
        SetRgb(cr, WHITE);
        cairo_fill(cr);
    }
    cairo_move_to(cr, cx - 3.0, cy - 19.0);
    cairo_line_to(cr, cx + 3.0, cy - 19.0);
    cairo_line_to(cr, cx, cy - 14.0);
    cairo_close_path(cr);
    SetRgb(cr, WHITE);
    cairo_fill(cr);
    SetInterfaceFont(cr, 7.0, true);
    SetRgb(cr, {0.15, 0.17, 0.22});
    FillCentredText(cr, "RADAR", 57.5, cy + 2.5, 0.3);
}

void DrawStatusPiece(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    PiecePlate(cr, w, h);
    PieceLabel(cr, "STATUS", w / 2.0, 13.0);
    const double fills[] = {0.85, 0.6, 0.9, 0.4, 1.0};
    for (int i = 0; i < 5; ++i)
    {
        const double y = 18.0 + i * 6.8;
        cairo_rectangle(cr, 8.0, y, w - 16.0, 4.0);
        SetRgb(cr, {0.12, 0.14, 0.18});
        cairo_fill(cr);
        cairo_rectangle(cr, 9.0, y + 1.0, (w - 18.0) * fills[i], 2.0);
        SetRgb(cr, WHITE);
        cairo_fill(cr);
    }
}

void DrawCommPiece(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    PiecePlate(cr, w, h);
    // A message balloon with lines of text, an antenna beside it.
    RoundedRectPath(cr, 20.0, 9.0, w - 28.0, 29.0, 4.0);
    cairo_move_to(cr, 26.0, 38.0);
    cairo_line_to(cr, 22.0, 45.0);
    cairo_line_to(cr, 33.0, 38.0);
    SetRgb(cr, {0.12, 0.14, 0.18});
    cairo_fill(cr);
    const double lines[] = {0.85, 0.7, 0.5};
    for (int i = 0; i < 3; ++i)
    {
        cairo_rectangle(cr, 25.0, 14.0 + i * 7.5, (w - 38.0) * lines[i], 2.5);
        SetRgb(cr, WHITE);
        cairo_fill(cr);
    }
    cairo_set_line_width(cr, 1.5);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    SetRgb(cr, {0.15, 0.17, 0.22});
    cairo_move_to(cr, 11.0, 44.0);
    cairo_line_to(cr, 11.0, 20.0);
    cairo_stroke(cr);
    for (double r : {4.0, 7.5})
    {
        cairo_new_sub_path(cr);
        cairo_arc(cr, 11.0, 18.0, r, -PI_VALUE * 0.8, -PI_VALUE * 0.2);
        cairo_stroke(cr);
    }
    PieceLabel(cr, "COMMS", w / 2.0 + 6.0, h - 5.0);
}

void ListHudPictures(const ArtContext&, std::vector<PictureRecipe>& p_pictures)
{
    AddInterfacePicture(p_pictures, "art\\hudradar.bmp", DrawRadar);
    AddInterfacePicture(p_pictures, "art\\hudstats.bmp", DrawStatusPanel);
    AddInterfacePicture(p_pictures, "art\\hud_customize_screenshot.bmp", DrawEditorScreenshot);
    AddInterfacePicture(p_pictures, "art\\hud_customize_radar.bmp", DrawRadarPiece);
    AddInterfacePicture(p_pictures, "art\\hud_customize_status.bmp", DrawStatusPiece);
    AddInterfacePicture(p_pictures, "art\\hud_customize_comm.bmp", DrawCommPiece);
}

const PictureRegistrar s_hud(ListHudPictures);

} // namespace

} // namespace artgen
