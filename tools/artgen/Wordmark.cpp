#include "Wordmark.h"

#include "Style.h"

#include <cmath>
#include <vector>

namespace artgen
{

namespace
{

using namespace palette;

struct Point
{
    double x;
    double y;
};

struct Letter
{
    double width;
    std::vector<std::vector<Point>> outlines; // the first is the letter, the rest its holes
};

// Strokes are 22 units thick; the letters share their heights and cut angles.
const Letter& LetterK()
{
    static const Letter letter = {
        80.0,
        {{{0, 0}, {22, 0}, {22, 38}, {50, 0}, {79, 0}, {43, 50}, {80, 100}, {51, 100}, {22, 62}, {22, 100}, {0, 100}}}};
    return letter;
}

const Letter& LetterO()
{
    static const Letter letter = {86.0,
                                  {{{18, 0}, {68, 0}, {86, 18}, {86, 82}, {68, 100}, {18, 100}, {0, 82}, {0, 18}},
                                   {{30, 22}, {56, 22}, {64, 30}, {64, 70}, {56, 78}, {30, 78}, {22, 70}, {22, 30}}}};
    return letter;
}

const Letter& LetterR()
{
    static const Letter letter = {82.0,
                                  {{{0, 0}, {64, 0}, {80, 16}, {80, 46}, {66, 58}, {82, 100}, {58, 100}, {45, 62},
                                    {22, 62}, {22, 100}, {0, 100}},
                                   {{22, 21}, {53, 21}, {58, 26}, {58, 37}, {53, 42}, {22, 42}}}};
    return letter;
}

const Letter& LetterV()
{
    static const Letter letter = {88.0, {{{0, 0}, {24, 0}, {44, 70}, {64, 0}, {88, 0}, {56, 100}, {32, 100}}}};
    return letter;
}

const Letter& LetterA()
{
    static const Letter letter = {88.0,
                                  {{{32, 0}, {56, 0}, {88, 100}, {64, 100}, {58, 80}, {30, 80}, {24, 100}, {0, 100}},
                                   {{44, 27}, {53, 58}, {35, 58}}}};
    return letter;
}

const Letter& LetterT()
{
    static const Letter letter = {
        82.0, {{{0, 0}, {82, 0}, {82, 22}, {52, 22}, {52, 100}, {30, 100}, {30, 22}, {0, 22}}}};
    return letter;
}

const Letter& LetterH()
{
    static const Letter letter = {80.0,
                                  {{{0, 0}, {22, 0}, {22, 39}, {58, 39}, {58, 0}, {80, 0}, {80, 100}, {58, 100},
                                    {58, 61}, {22, 61}, {22, 100}, {0, 100}}}};
    return letter;
}

constexpr double SPACING = 14.0;
constexpr double LEAN = 0.16; // forward lean: x moves right as y goes up

const Letter* const NAME[] = {&LetterK(), &LetterO(), &LetterR(), &LetterV(), &LetterA(), &LetterT(), &LetterH()};

void LetterPath(cairo_t* p_context, const Letter& p_letter, double p_left)
{
    for (const std::vector<Point>& outline : p_letter.outlines)
    {
        cairo_new_sub_path(p_context);
        for (size_t i = 0; i < outline.size(); ++i)
        {
            // Leaning about the baseline's middle keeps the box centred.
            const double x = p_left + outline[i].x + (50.0 - outline[i].y) * LEAN;
            if (i == 0)
                cairo_move_to(p_context, x, outline[i].y);
            else
                cairo_line_to(p_context, x, outline[i].y);
        }
        cairo_close_path(p_context);
    }
}

} // namespace

double WordmarkWidth()
{
    double width = 0.0;
    for (const Letter* letter : NAME)
        width += letter->width;
    return width + SPACING * double(std::size(NAME) - 1);
}

void WordmarkPath(cairo_t* p_context, double p_x, double p_y, double p_height)
{
    const double scale = p_height / 100.0;
    cairo_save(p_context);
    cairo_translate(p_context, p_x - WordmarkWidth() * scale / 2.0, p_y - p_height / 2.0);
    cairo_scale(p_context, scale, scale);
    double left = 0.0;
    for (const Letter* letter : NAME)
    {
        LetterPath(p_context, *letter, left);
        left += letter->width + SPACING;
    }
    cairo_restore(p_context);
}

void MonogramPath(cairo_t* p_context, double p_x, double p_y, double p_height)
{
    const double scale = p_height / 100.0;
    cairo_save(p_context);
    cairo_translate(p_context, p_x - LetterK().width * scale / 2.0, p_y - p_height / 2.0);
    cairo_scale(p_context, scale, scale);
    LetterPath(p_context, LetterK(), 0.0);
    cairo_restore(p_context);
}

void DrawWordmark(Canvas& p_canvas, double p_x, double p_y, double p_height, double p_glow)
{
    cairo_t* cr = p_canvas.Get();
    const double top = p_y - p_height / 2.0;
    const double bottom = p_y + p_height / 2.0;
    if (p_glow > 0.0)
    {
        PaintSoftLayer(p_canvas, int(std::lround(p_height * 0.16)), p_glow, [&](cairo_t* p_layer) {
            cairo_set_fill_rule(p_layer, CAIRO_FILL_RULE_EVEN_ODD);
            WordmarkPath(p_layer, p_x, p_y, p_height);
            SetRgb(p_layer, AMBER);
            cairo_fill(p_layer);
        });
    }
    cairo_save(cr);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
    // The extrusion: the letters repeated downwards in deepening steel.
    const double depth = std::max(2.0, p_height * 0.07);
    const int steps = int(std::ceil(depth));
    for (int i = steps; i >= 1; --i)
    {
        const double offset = depth * i / steps;
        cairo_new_path(cr);
        WordmarkPath(cr, p_x, p_y + offset, p_height);
        SetRgb(cr, Mix(Rgb{0.02, 0.03, 0.05}, STEEL_SHADOW, 1.0 - double(i) / steps));
        cairo_fill(cr);
    }
    // The faces: bright steel above a dark horizon band, lighter towards the foot.
    cairo_new_path(cr);
    WordmarkPath(cr, p_x, p_y, p_height);
    cairo_pattern_t* face = cairo_pattern_create_linear(0.0, top, 0.0, bottom);
    AddStop(face, 0.0, STEEL_HIGHLIGHT);
    AddStop(face, 0.46, STEEL_LIGHT);
    AddStop(face, 0.5, STEEL_DARK);
    AddStop(face, 0.56, STEEL);
    AddStop(face, 1.0, Mix(STEEL_LIGHT, AMBER_LIGHT, 0.35));
    SetPattern(cr, face);
    cairo_fill_preserve(cr);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
    cairo_set_line_width(cr, std::max(1.0, p_height * 0.018));
    SetRgb(cr, AMBER);
    cairo_stroke(cr);
    cairo_restore(cr);
}

} // namespace artgen
