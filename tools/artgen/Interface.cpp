// The widgets' pictures: cursor, push buttons, framed-box pieces, slide bar, arrow buttons,
// the portrait frame and the check mark. Buttons are blank plates: the game prints captions.

#include "InterfaceArt.h"
#include "Pictures.h"
#include "Style.h"

#include <algorithm>
#include <cmath>

namespace artgen
{

namespace
{

using namespace palette;

// ---- Cursor ---------------------------------------------------------------------------------

// The game reports the cursor's top-left pixel as its position, so the tip sits there.
void ArrowPath(cairo_t* p_context)
{
    static const double POINTS[][2] = {{1.0, 1.0},   {1.0, 23.0},  {6.5, 18.0}, {10.5, 27.0},
                                       {14.5, 25.3}, {10.6, 16.6}, {17.6, 16.6}};
    cairo_move_to(p_context, POINTS[0][0], POINTS[0][1]);
    for (size_t i = 1; i < std::size(POINTS); ++i)
        cairo_line_to(p_context, POINTS[i][0], POINTS[i][1]);
    cairo_close_path(p_context);
}

void DrawCursor(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    PaintSoftLayer(p_canvas, 1, 0.55, [](cairo_t* p_layer) {
        cairo_translate(p_layer, 1.5, 2.0);
        ArrowPath(p_layer);
        cairo_set_source_rgba(p_layer, 0.0, 0.0, 0.0, 1.0);
        cairo_fill(p_layer);
    });
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
    ArrowPath(cr);
    SetVertical(cr, 1.0, 27.0, STEEL_HIGHLIGHT, STEEL);
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, 1.4);
    SetRgb(cr, NAVY_DEEP);
    cairo_stroke(cr);
    // The accent: an amber edge down the pointer's left side.
    cairo_move_to(cr, 2.6, 4.2);
    cairo_line_to(cr, 2.6, 19.0);
    cairo_set_line_width(cr, 1.3);
    SetRgb(cr, AMBER);
    cairo_stroke(cr);
}

// ---- Push buttons ---------------------------------------------------------------------------

// A steel plate with cut corners; pressed, it sinks and lights up amber. Captions are black.
void DrawPlate(Canvas& p_canvas, bool p_pressed)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    const double cut = std::min(8.0, h / 4.0);

    ChamferRectPath(cr, 0.0, 0.0, w, h, cut);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);

    // The bevel: light from above, or from below once pressed in.
    ChamferRectPath(cr, 1.5, 1.5, w - 3.0, h - 3.0, cut - 0.6);
    if (p_pressed)
        SetVertical(cr, 1.5, h - 1.5, STEEL_SHADOW, STEEL_LIGHT);
    else
        SetVertical(cr, 1.5, h - 1.5, STEEL_HIGHLIGHT, STEEL_SHADOW);
    cairo_fill(cr);

    const double inset = 3.5;
    ChamferRectPath(cr, inset, inset, w - 2.0 * inset, h - 2.0 * inset, cut - 1.4);
    cairo_save(cr);
    cairo_clip_preserve(cr);
    if (p_pressed)
        SetVertical(cr, inset, h - inset, {1.0, 0.74, 0.4}, {0.94, 0.56, 0.16});
    else
        SetVertical(cr, inset, h - inset, {0.87, 0.89, 0.93}, {0.64, 0.68, 0.75});
    cairo_fill(cr);
    AddBrushedGrain(cr, inset, inset, w - 2.0 * inset, h - 2.0 * inset, p_pressed ? 0x51u : 0x50u, 0.05);
    if (!p_pressed)
    {
        // Gloss over the upper half.
        cairo_rectangle(cr, 0.0, inset, w, (h - 2.0 * inset) * 0.45);
        cairo_pattern_t* gloss = cairo_pattern_create_linear(0.0, inset, 0.0, h * 0.5);
        AddStop(gloss, 0.0, WHITE, 0.35);
        AddStop(gloss, 1.0, WHITE, 0.0);
        SetPattern(cr, gloss);
        cairo_fill(cr);
    }
    cairo_restore(cr);

    // The accent: a short amber light along the foot, brighter when pressed. The ends stay
    // clear, since long captions fill the plate.
    const double lightY = h - inset - 2.5;
    cairo_pattern_t* light = cairo_pattern_create_linear(w * 0.25, 0.0, w * 0.75, 0.0);
    const Rgb lamp = p_pressed ? Rgb{1.0, 0.95, 0.8} : AMBER;
    AddStop(light, 0.0, lamp, 0.0);
    AddStop(light, 0.5, lamp, p_pressed ? 1.0 : 0.85);
    AddStop(light, 1.0, lamp, 0.0);
    SetPattern(cr, light);
    cairo_rectangle(cr, w * 0.25, lightY, w * 0.5, 1.5);
    cairo_fill(cr);
}

void DrawButtonUp(Canvas& p_canvas)
{
    DrawPlate(p_canvas, false);
}

void DrawButtonDown(Canvas& p_canvas)
{
    DrawPlate(p_canvas, true);
}

// ---- Framed box pieces ----------------------------------------------------------------------

// The whole 96 x 96 box, pixel by pixel; each piece is one 32 x 32 cell of it. The bands run
// straight along the edges so that the middle pieces can be stretched, and everything inside
// the frame is exactly (150, 150, 150): the box's own flat centre, so no seam shows.
Rgba BoxFrameAt(double p_x, double p_y)
{
    const double size = 3.0 * BOX_PIECE_SIZE;
    const double radius = 9.0;
    // Distance inwards from the rounded outer edge.
    const double qx = std::abs(p_x - size / 2.0) - (size / 2.0 - radius);
    const double qy = std::abs(p_y - size / 2.0) - (size / 2.0 - radius);
    const double outside = std::hypot(std::max(qx, 0.0), std::max(qy, 0.0)) + std::min(std::max(qx, qy), 0.0) - radius;
    const double d = -outside;
    if (d < 0.0)
        return {0.0, 0.0, 0.0, 0.0};
    if (d >= 9.5)
        return {150.0 / 255.0, 150.0 / 255.0, 150.0 / 255.0, 1.0};

    // Which edge the point belongs to (mitred corners) and how that edge is lit.
    const double top = p_y;
    const double left = p_x;
    const double right = size - p_x;
    const double bottom = size - p_y;
    double light = 1.0;
    const double nearest = std::min({top, left, right, bottom});
    if (nearest == left)
        light = 0.78;
    else if (nearest == right)
        light = 0.42;
    else if (nearest == bottom)
        light = 0.3;

    Rgb colour;
    if (d < 1.5)
        colour = {0.07, 0.09, 0.13};
    else if (d < 6.5)
        colour = Shade(Mix(STEEL_SHADOW, STEEL_HIGHLIGHT, light), 1.06 - 0.08 * (d - 1.5) / 5.0);
    else if (d < 8.0)
        colour = {0.2, 0.23, 0.28};
    else
        colour = Mix(STEEL_DARK, STEEL_LIGHT, 1.0 - light);
    return {colour.r, colour.g, colour.b, 1.0};
}

void DrawBoxPiece(Canvas& p_canvas, int p_column, int p_row)
{
    const double offsetX = p_column * double(BOX_PIECE_SIZE);
    const double offsetY = p_row * double(BOX_PIECE_SIZE);
    ShadePixels(p_canvas, 4, [offsetX, offsetY](double p_x, double p_y) {
        return BoxFrameAt(p_x + offsetX, p_y + offsetY);
    });
}

// ---- Slide bar ------------------------------------------------------------------------------

// Stretched sideways to 400 and 500 pixels, so everything runs along it.
void DrawSliderBar(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    cairo_rectangle(cr, 0.0, 0.0, w, h);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);
    // A recessed channel: shadow above, lit lip below.
    cairo_rectangle(cr, 1.0, 1.0, w - 2.0, h - 2.0);
    SetVertical(cr, 1.0, h - 1.0, STEEL_SHADOW, STEEL_LIGHT);
    cairo_fill(cr);
    cairo_rectangle(cr, 2.0, 3.0, w - 4.0, h - 6.0);
    SetVertical(cr, 3.0, h - 3.0, {0.02, 0.03, 0.06}, NAVY);
    cairo_fill(cr);
    // The groove the knob rides in, with a faint amber light.
    cairo_rectangle(cr, 3.0, h / 2.0 - 1.0, w - 6.0, 2.0);
    SetRgb(cr, AMBER_DARK);
    cairo_fill(cr);
    cairo_rectangle(cr, 3.0, h / 2.0 - 0.5, w - 6.0, 1.0);
    SetRgb(cr, AMBER, 0.8);
    cairo_fill(cr);
    KeyToGreen(p_canvas);
}

void DrawSliderKnob(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    ChamferRectPath(cr, 0.0, 0.0, w, h, 3.0);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);
    ChamferRectPath(cr, 1.0, 1.0, w - 2.0, h - 2.0, 2.5);
    cairo_pattern_t* steel = cairo_pattern_create_linear(1.0, 0.0, w - 1.0, 0.0);
    AddStop(steel, 0.0, STEEL_HIGHLIGHT);
    AddStop(steel, 0.5, STEEL_LIGHT);
    AddStop(steel, 1.0, STEEL_DARK);
    SetPattern(cr, steel);
    cairo_fill(cr);
    // Grip lines and an amber centre mark.
    for (int i = -1; i <= 1; i += 2)
    {
        const double y = h / 2.0 + i * 6.0;
        cairo_rectangle(cr, 4.0, y - 1.0, w - 8.0, 1.0);
        SetRgb(cr, STEEL_SHADOW);
        cairo_fill(cr);
        cairo_rectangle(cr, 4.0, y, w - 8.0, 1.0);
        SetRgb(cr, WHITE, 0.8);
        cairo_fill(cr);
    }
    cairo_rectangle(cr, 3.0, h / 2.0 - 1.5, w - 6.0, 3.0);
    SetRgb(cr, AMBER);
    cairo_fill(cr);
    KeyToGreen(p_canvas);
}

// ---- Arrow buttons --------------------------------------------------------------------------

enum class Direction
{
    UP,
    DOWN,
    LEFT,
    RIGHT
};

// A plate like the push buttons with a navy chevron on it. p_drawnWidth x p_drawnHeight is
// the size the game shows it at; the picture is drawn stretched so that it looks right there.
void DrawArrowButton(Canvas& p_canvas, Direction p_direction, bool p_pressed, double p_drawnWidth,
                     double p_drawnHeight)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_drawnWidth;
    const double h = p_drawnHeight;
    cairo_scale(cr, p_canvas.Width() / w, p_canvas.Height() / h);
    const double cut = std::min({6.0, w / 5.0, h / 5.0});

    ChamferRectPath(cr, 0.0, 0.0, w, h, cut);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);
    const double rim = h < 20.0 ? 1.0 : 1.5;
    ChamferRectPath(cr, rim, rim, w - 2.0 * rim, h - 2.0 * rim, cut - 0.4);
    if (p_pressed)
        SetVertical(cr, rim, h - rim, STEEL_SHADOW, STEEL_LIGHT);
    else
        SetVertical(cr, rim, h - rim, STEEL_HIGHLIGHT, STEEL_SHADOW);
    cairo_fill(cr);
    const double inset = rim * 2.2;
    ChamferRectPath(cr, inset, inset, w - 2.0 * inset, h - 2.0 * inset, std::max(0.5, cut - 1.2));
    if (p_pressed)
        SetVertical(cr, inset, h - inset, {1.0, 0.74, 0.4}, {0.94, 0.56, 0.16});
    else
        SetVertical(cr, inset, h - inset, {0.87, 0.89, 0.93}, {0.64, 0.68, 0.75});
    cairo_fill(cr);

    // The chevron, sized by the shorter side.
    const double cx = w / 2.0 + (p_pressed ? 0.5 : 0.0);
    const double cy = h / 2.0 + (p_pressed ? 0.5 : 0.0);
    const bool vertical = p_direction == Direction::UP || p_direction == Direction::DOWN;
    const double along = vertical ? std::min(h * 0.28, w * 0.2) : std::min(w * 0.3, h * 0.2);
    const double across = along * 1.7;
    const double thick = std::max(1.6, along * 0.55);
    cairo_save(cr);
    cairo_translate(cr, cx, cy);
    switch (p_direction)
    {
    case Direction::UP:
        cairo_rotate(cr, -PI_VALUE / 2.0);
        break;
    case Direction::DOWN:
        cairo_rotate(cr, PI_VALUE / 2.0);
        break;
    case Direction::LEFT:
        cairo_rotate(cr, PI_VALUE);
        break;
    case Direction::RIGHT:
        break;
    }
    // Pointing right in its own frame: two arms meeting at the tip.
    cairo_move_to(cr, -along, -across);
    cairo_line_to(cr, -along + thick, -across);
    cairo_line_to(cr, along + thick * 0.5, 0.0);
    cairo_line_to(cr, -along + thick, across);
    cairo_line_to(cr, -along, across);
    cairo_line_to(cr, along - thick * 0.5, 0.0);
    cairo_close_path(cr);
    SetRgb(cr, NAVY_DEEP);
    cairo_fill(cr);
    cairo_restore(cr);
}

// ---- Portrait frame -------------------------------------------------------------------------

// The window the portrait shows through. The cutout covers everything outside it in white,
// which the picker tints to the grey of its frame's middle; the border outlines it.
void PortraitWindowPath(cairo_t* p_context, double p_grow)
{
    const double inset = 4.0 - p_grow;
    const double w = PORTRAIT_WIDTH - 2.0 * inset;
    const double h = PORTRAIT_HEIGHT - 2.0 * inset;
    const double big = 16.0 + p_grow * 0.4;
    const double small = 6.0 + p_grow * 0.4;
    // Cut deep at the top-left and bottom-right, lightly at the other two corners.
    cairo_new_sub_path(p_context);
    cairo_move_to(p_context, inset + big, inset);
    cairo_line_to(p_context, inset + w - small, inset);
    cairo_line_to(p_context, inset + w, inset + small);
    cairo_line_to(p_context, inset + w, inset + h - big);
    cairo_line_to(p_context, inset + w - big, inset + h);
    cairo_line_to(p_context, inset + small, inset + h);
    cairo_line_to(p_context, inset, inset + h - small);
    cairo_line_to(p_context, inset, inset + big);
    cairo_close_path(p_context);
}

void DrawPortraitCutout(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    cairo_rectangle(cr, 0.0, 0.0, p_canvas.Width(), p_canvas.Height());
    PortraitWindowPath(cr, 0.0);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
    SetRgb(cr, WHITE);
    cairo_fill(cr);
}

void DrawPortraitBorder(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
    // A dark keyline outside, a light rail on it.
    PortraitWindowPath(cr, 1.0);
    cairo_set_line_width(cr, 3.5);
    SetRgb(cr, Shade(STEEL_SHADOW, 0.6));
    cairo_stroke(cr);
    PortraitWindowPath(cr, 0.75);
    cairo_set_line_width(cr, 1.6);
    SetRgb(cr, WHITE);
    cairo_stroke(cr);
    // Amber brackets along the two deep cuts.
    const double inset = 3.0;
    cairo_set_line_width(cr, 2.6);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    SetRgb(cr, AMBER);
    cairo_move_to(cr, inset, inset + 30.0);
    cairo_line_to(cr, inset, inset + 16.4);
    cairo_line_to(cr, inset + 16.4, inset);
    cairo_line_to(cr, inset + 30.0, inset);
    cairo_stroke(cr);
    const double right = PORTRAIT_WIDTH - inset;
    const double bottom = PORTRAIT_HEIGHT - inset;
    cairo_move_to(cr, right, bottom - 30.0);
    cairo_line_to(cr, right, bottom - 16.4);
    cairo_line_to(cr, right - 16.4, bottom);
    cairo_line_to(cr, right - 30.0, bottom);
    cairo_stroke(cr);
}

// ---- Check mark -----------------------------------------------------------------------------

// 20 pixels square: the objectives screen puts it 45 pixels left of the text, and the bullet
// sits 25 pixels left of the text.
void CheckPath(cairo_t* p_context)
{
    cairo_move_to(p_context, 3.0, 10.5);
    cairo_line_to(p_context, 8.0, 15.5);
    cairo_line_to(p_context, 17.0, 4.0);
}

void DrawCheck(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    PaintSoftLayer(p_canvas, 1, 0.5, [](cairo_t* p_layer) {
        cairo_translate(p_layer, 0.8, 1.2);
        CheckPath(p_layer);
        cairo_set_line_cap(p_layer, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(p_layer, CAIRO_LINE_JOIN_ROUND);
        cairo_set_line_width(p_layer, 5.5);
        cairo_set_source_rgba(p_layer, 0.0, 0.0, 0.0, 1.0);
        cairo_stroke(p_layer);
    });
    CheckPath(cr);
    cairo_set_line_width(cr, 5.2);
    SetRgb(cr, NAVY_DEEP);
    cairo_stroke(cr);
    CheckPath(cr);
    cairo_set_line_width(cr, 3.0);
    SetVertical(cr, 4.0, 16.0, {0.55, 1.0, 0.55}, {0.12, 0.7, 0.25});
    cairo_stroke(cr);
}

void ListWidgetPictures(const ArtContext&, std::vector<PictureRecipe>& p_pictures)
{
    auto add = [&p_pictures](const char* p_name, std::function<void(Canvas&)> p_draw) {
        AddInterfacePicture(p_pictures, p_name, std::move(p_draw));
    };
    add("art\\cursor.bmp", DrawCursor);
    add("art\\button_up.bmp", DrawButtonUp);
    add("art\\button_down.bmp", DrawButtonDown);
    add("art\\button_up2.bmp", DrawButtonUp);
    add("art\\button_down2.bmp", DrawButtonDown);

    static const char* const BOX_PIECES[][3] = {
        {"art\\box_topleft.bmp", "0", "0"},    {"art\\box_topright.bmp", "2", "0"},
        {"art\\box_bottomleft.bmp", "0", "2"}, {"art\\box_bottomright.bmp", "2", "2"},
        {"art\\box_top.bmp", "1", "0"},        {"art\\box_left.bmp", "0", "1"},
        {"art\\box_right.bmp", "2", "1"},      {"art\\box_bottom.bmp", "1", "2"},
    };
    for (const auto& piece : BOX_PIECES)
    {
        const int column = piece[1][0] - '0';
        const int row = piece[2][0] - '0';
        add(piece[0], [column, row](Canvas& p_canvas) { DrawBoxPiece(p_canvas, column, row); });
    }

    add("art\\slider_bg.bmp", DrawSliderBar);
    add("art\\slider.bmp", DrawSliderKnob);

    struct Arrow
    {
        const char* up;
        const char* down;
        Direction direction;
        double drawnWidth;
        double drawnHeight;
    };
    // The picker shows its side arrows at 0.6 x 0.8 of their pictures' size.
    const double sideWidth = std::floor(SIDE_ARROW_WIDTH * 0.6);
    const double sideHeight = std::floor(SIDE_ARROW_HEIGHT * 0.8);
    const Arrow arrows[] = {
        {"art\\up_arrow_button_up.bmp", "art\\up_arrow_button_down.bmp", Direction::UP, SCROLL_ARROW_WIDTH,
         SCROLL_ARROW_HEIGHT},
        {"art\\down_arrow_button_up.bmp", "art\\down_arrow_button_down.bmp", Direction::DOWN, SCROLL_ARROW_WIDTH,
         SCROLL_ARROW_HEIGHT},
        {"art\\left_arrow_button_up.bmp", "art\\left_arrow_button_down.bmp", Direction::LEFT, sideWidth, sideHeight},
        {"art\\right_arrow_button_up.bmp", "art\\right_arrow_button_down.bmp", Direction::RIGHT, sideWidth,
         sideHeight},
    };
    for (const Arrow& arrow : arrows)
    {
        add(arrow.up, [arrow](Canvas& p_canvas) {
            DrawArrowButton(p_canvas, arrow.direction, false, arrow.drawnWidth, arrow.drawnHeight);
        });
        add(arrow.down, [arrow](Canvas& p_canvas) {
            DrawArrowButton(p_canvas, arrow.direction, true, arrow.drawnWidth, arrow.drawnHeight);
        });
    }

    add("art\\portrait_cutout.bmp", DrawPortraitCutout);
    add("art\\portrait_border.bmp", DrawPortraitBorder);
    add("Art\\check.bmp", DrawCheck);
}

const PictureRegistrar s_widgets(ListWidgetPictures);

} // namespace

} // namespace artgen
