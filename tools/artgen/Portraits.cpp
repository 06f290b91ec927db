// The pilots' portraits in "Portraits\": the pilot menu offers them to a new recruit and uses
// the chosen file's name as the suggested pilot name, so each is named for its pilot.
// Painted from layers of soft shapes: background, shoulders, head, features, then what each
// pilot wears (helmet, headset, implants) and a rim light.

#include "InterfaceArt.h"
#include "Pictures.h"
#include "Style.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace artgen
{

namespace
{

using namespace palette;

enum class Hair
{
    NONE,
    SHORT,
    BUZZ,
    BUN,
    LONG,
    MOHAWK,
    SWEPT
};

enum class Kind
{
    HUMAN,
    VEYL,    // tall-skulled, crested, large dark eyes
    SAURIAN, // scaled, frilled, slit pupils
    ANDROID, // a machine face
    HELMET   // a pilot behind a closed visor
};

struct Pilot
{
    const char* name;
    Kind kind;
    Rgb background;
    Rgb backgroundGlow;
    Rgb rim; // light from behind
    Rgb skin;
    Rgb hairColour;
    Hair hair;
    Rgb iris;
    Rgb suit;
    Rgb suitAccent;
    double headWidth; // half-width of the face
    double jaw;       // 0 narrow to 1 square
    double smile;     // -1 grim to 1 smiling
    double brow;      // tilt of the brows: positive frowns
    bool beard;
    bool eyepatch;
    bool scar;
    bool freckles;
    bool headset;
    bool helmet; // open flight helmet, visor raised
    bool goggles;
    bool cyberEye;
    bool facePaint;
    bool earring;
};

constexpr double CX = PORTRAIT_WIDTH / 2.0;
constexpr double HEAD_TOP = 34.0;
constexpr double CHIN = 104.0;
constexpr double EYE_Y = 70.0;

double Lerp(double p_a, double p_b, double p_t)
{
    return p_a + (p_b - p_a) * p_t;
}

// ---- Background and shoulders ---------------------------------------------------------------

void PaintBackdrop(Canvas& p_canvas, const Pilot& p_pilot, uint64_t p_seed)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double h = p_canvas.Height();
    cairo_pattern_t* wall = cairo_pattern_create_radial(w * 0.3, h * 0.25, 4.0, w * 0.5, h * 0.5, h * 0.85);
    AddStop(wall, 0.0, p_pilot.backgroundGlow);
    AddStop(wall, 1.0, p_pilot.background);
    SetPattern(cr, wall);
    cairo_paint(cr);
    // Cockpit lights out of focus behind the pilot.
    Random random(p_seed);
    for (int i = 0; i < 9; ++i)
    {
        const double x = random.Uniform(0.0, w);
        const double y = random.Uniform(0.0, h * 0.6);
        const double radius = random.Uniform(3.0, 10.0);
        const Rgb colour = random.Uniform(0.0, 1.0) < 0.35 ? AMBER : Mix(p_pilot.backgroundGlow, WHITE, 0.4);
        cairo_pattern_t* bokeh = cairo_pattern_create_radial(x, y, 0.0, x, y, radius);
        AddStop(bokeh, 0.0, colour, 0.22);
        AddStop(bokeh, 0.8, colour, 0.12);
        AddStop(bokeh, 1.0, colour, 0.0);
        SetPattern(cr, bokeh);
        CirclePath(cr, x, y, radius);
        cairo_fill(cr);
    }
    // A panel edge across the back wall.
    cairo_rectangle(cr, 0.0, h * 0.62, w, 1.0);
    SetRgb(cr, WHITE, 0.06);
    cairo_fill(cr);
}

void ShouldersPath(cairo_t* p_context)
{
    cairo_move_to(p_context, -4.0, 160.0);
    cairo_line_to(p_context, -4.0, 140.0);
    cairo_curve_to(p_context, 4.0, 124.0, 24.0, 117.0, 44.0, 114.0);
    cairo_line_to(p_context, 81.0, 114.0);
    cairo_curve_to(p_context, 101.0, 117.0, 121.0, 124.0, 129.0, 140.0);
    cairo_line_to(p_context, 129.0, 160.0);
    cairo_close_path(p_context);
}

void PaintShoulders(cairo_t* p_context, const Pilot& p_pilot)
{
    cairo_t* cr = p_context;
    // Neck first, so the collar sits over it.
    const bool machine = p_pilot.kind == Kind::ANDROID;
    const double neck = p_pilot.kind == Kind::SAURIAN ? 17.0 : 13.0;
    cairo_rectangle(cr, CX - neck, CHIN - 12.0, 2.0 * neck, 30.0);
    if (machine)
    {
        SetVertical(cr, CHIN - 12.0, CHIN + 18.0, STEEL_DARK, STEEL_SHADOW);
        cairo_fill(cr);
        for (double x : {CX - 7.0, CX + 4.0})
        {
            cairo_rectangle(cr, x, CHIN - 6.0, 3.0, 22.0);
            SetVertical(cr, CHIN - 6.0, CHIN + 16.0, STEEL_HIGHLIGHT, STEEL_DARK);
            cairo_fill(cr);
        }
    }
    else
    {
        SetVertical(cr, CHIN - 12.0, CHIN + 18.0, Shade(p_pilot.skin, 0.55), Shade(p_pilot.skin, 0.8));
        cairo_fill(cr);
    }

    ShouldersPath(cr);
    cairo_pattern_t* suit = cairo_pattern_create_linear(0.0, 112.0, PORTRAIT_WIDTH, 160.0);
    AddStop(suit, 0.0, Mix(p_pilot.suit, WHITE, 0.25));
    AddStop(suit, 0.6, p_pilot.suit);
    AddStop(suit, 1.0, Shade(p_pilot.suit, 0.45));
    SetPattern(cr, suit);
    cairo_fill(cr);
    // Harness straps and a shoulder patch.
    cairo_save(cr);
    ShouldersPath(cr);
    cairo_clip(cr);
    cairo_set_line_width(cr, 6.0);
    for (int side = -1; side <= 1; side += 2)
    {
        cairo_move_to(cr, CX + side * 26.0, 112.0);
        cairo_curve_to(cr, CX + side * 22.0, 130.0, CX + side * 14.0, 145.0, CX + side * 10.0, 160.0);
    }
    SetRgb(cr, Shade(p_pilot.suit, 0.35));
    cairo_stroke(cr);
    cairo_set_line_width(cr, 1.0);
    for (int side = -1; side <= 1; side += 2)
    {
        cairo_move_to(cr, CX + side * 28.0, 113.0);
        cairo_curve_to(cr, CX + side * 24.0, 130.0, CX + side * 16.0, 145.0, CX + side * 12.0, 160.0);
    }
    SetRgb(cr, WHITE, 0.18);
    cairo_stroke(cr);
    // Buckles.
    for (int side = -1; side <= 1; side += 2)
    {
        RoundedRectPath(cr, CX + side * 18.0 - 4.0, 136.0, 8.0, 6.0, 1.5);
        SetVertical(cr, 136.0, 142.0, STEEL_HIGHLIGHT, STEEL_DARK);
        cairo_fill(cr);
    }
    ChamferRectPath(cr, 8.0, 128.0, 16.0, 11.0, 3.0);
    SetRgb(cr, p_pilot.suitAccent);
    cairo_fill(cr);
    ChamferRectPath(cr, 10.0, 130.0, 12.0, 7.0, 2.0);
    SetRgb(cr, Shade(p_pilot.suitAccent, 0.6));
    cairo_fill(cr);
    cairo_restore(cr);
    // The collar: a padded ring round the base of the neck, its front half over the neck.
    auto collar = [&](double p_from, double p_to, double p_width, const Rgb& p_colour) {
        cairo_save(cr);
        cairo_translate(cr, CX, CHIN + 13.0);
        cairo_scale(cr, 1.0, 0.32);
        cairo_new_sub_path(cr);
        cairo_arc(cr, 0.0, 0.0, neck + 3.0, p_from, p_to);
        cairo_restore(cr);
        cairo_set_line_width(cr, p_width);
        SetRgb(cr, p_colour);
        cairo_stroke(cr);
    };
    collar(PI_VALUE, 2.0 * PI_VALUE, 4.0, Shade(p_pilot.suitAccent, 0.45));
    collar(0.0, PI_VALUE, 6.0, Shade(p_pilot.suitAccent, 0.7));
    collar(0.15, PI_VALUE - 0.15, 2.5, Mix(p_pilot.suitAccent, WHITE, 0.3));
}

// ---- The head -------------------------------------------------------------------------------

void FacePath(cairo_t* p_context, const Pilot& p_pilot)
{
    const double a = p_pilot.headWidth;
    const double top = p_pilot.kind == Kind::VEYL ? HEAD_TOP - 8.0 : HEAD_TOP;
    const double jawX = a * Lerp(0.55, 0.85, p_pilot.jaw);
    const double chinHalf = a * Lerp(0.12, 0.36, p_pilot.jaw);
    cairo_move_to(p_context, CX, top);
    cairo_curve_to(p_context, CX + a * 0.75, top, CX + a, top + 16.0, CX + a, EYE_Y - 4.0);
    cairo_curve_to(p_context, CX + a, EYE_Y + 12.0, CX + jawX + 2.0, CHIN - 16.0, CX + jawX, CHIN - 10.0);
    cairo_curve_to(p_context, CX + jawX - 4.0, CHIN - 3.0, CX + chinHalf + 4.0, CHIN, CX + chinHalf, CHIN);
    cairo_line_to(p_context, CX - chinHalf, CHIN);
    cairo_curve_to(p_context, CX - chinHalf - 4.0, CHIN, CX - jawX + 4.0, CHIN - 3.0, CX - jawX, CHIN - 10.0);
    cairo_curve_to(p_context, CX - jawX - 2.0, CHIN - 16.0, CX - a, EYE_Y + 12.0, CX - a, EYE_Y - 4.0);
    cairo_curve_to(p_context, CX - a, top + 16.0, CX - a * 0.75, top, CX, top);
    cairo_close_path(p_context);
}

void PaintEars(cairo_t* p_context, const Pilot& p_pilot)
{
    if (p_pilot.kind != Kind::HUMAN)
        return;
    for (int side = -1; side <= 1; side += 2)
    {
        const double x = CX + side * (p_pilot.headWidth - 1.0);
        cairo_save(p_context);
        cairo_translate(p_context, x, EYE_Y + 4.0);
        cairo_scale(p_context, 5.5, 10.0);
        CirclePath(p_context, 0.0, 0.0, 1.0);
        cairo_restore(p_context);
        SetRgb(p_context, Shade(p_pilot.skin, side < 0 ? 0.85 : 0.65));
        cairo_fill(p_context);
        if (p_pilot.earring && side > 0)
        {
            CirclePath(p_context, x + 2.0, EYE_Y + 15.0, 1.8);
            SetRgb(p_context, AMBER_LIGHT);
            cairo_fill(p_context);
        }
    }
}

// Skin lit from the upper left, shadowed to the right and under the cheekbones.
void PaintSkin(Canvas& p_canvas, const Pilot& p_pilot)
{
    cairo_t* cr = p_canvas.Get();
    FacePath(cr, p_pilot);
    cairo_pattern_t* skin = cairo_pattern_create_radial(CX - 9.0, EYE_Y - 14.0, 3.0, CX, EYE_Y, p_pilot.headWidth * 1.6);
    AddStop(skin, 0.0, Mix(p_pilot.skin, WHITE, 0.22));
    AddStop(skin, 0.55, p_pilot.skin);
    AddStop(skin, 1.0, Shade(p_pilot.skin, 0.55));
    SetPattern(cr, skin);
    cairo_fill(cr);
    cairo_save(cr);
    FacePath(cr, p_pilot);
    cairo_clip(cr);
    // The shadow side.
    cairo_pattern_t* side = cairo_pattern_create_linear(CX + 4.0, 0.0, CX + p_pilot.headWidth, 0.0);
    cairo_pattern_add_color_stop_rgba(side, 0.0, 0.0, 0.0, 0.0, 0.0);
    cairo_pattern_add_color_stop_rgba(side, 1.0, 0.0, 0.0, 0.0, 0.35);
    SetPattern(cr, side);
    cairo_paint(cr);
    // Cheeks and eye sockets, softly.
    for (int s = -1; s <= 1; s += 2)
    {
        const double x = CX + s * p_pilot.headWidth * 0.5;
        cairo_pattern_t* socket = cairo_pattern_create_radial(x, EYE_Y - 1.0, 0.0, x, EYE_Y - 1.0, 10.0);
        cairo_pattern_add_color_stop_rgba(socket, 0.0, 0.0, 0.0, 0.0, 0.18);
        cairo_pattern_add_color_stop_rgba(socket, 1.0, 0.0, 0.0, 0.0, 0.0);
        SetPattern(cr, socket);
        cairo_paint(cr);
        const double cheekX = CX + s * p_pilot.headWidth * 0.62;
        cairo_pattern_t* cheek = cairo_pattern_create_radial(cheekX, EYE_Y + 14.0, 0.0, cheekX, EYE_Y + 14.0, 8.0);
        AddStop(cheek, 0.0, {0.9, 0.35, 0.3}, p_pilot.kind == Kind::HUMAN ? 0.14 : 0.0);
        AddStop(cheek, 1.0, {0.9, 0.35, 0.3}, 0.0);
        SetPattern(cr, cheek);
        cairo_paint(cr);
    }
    // The jaw's underside.
    cairo_pattern_t* jaw = cairo_pattern_create_linear(0.0, CHIN - 14.0, 0.0, CHIN);
    cairo_pattern_add_color_stop_rgba(jaw, 0.0, 0.0, 0.0, 0.0, 0.0);
    cairo_pattern_add_color_stop_rgba(jaw, 1.0, 0.0, 0.0, 0.0, 0.22);
    SetPattern(cr, jaw);
    cairo_paint(cr);
    if (p_pilot.kind == Kind::SAURIAN)
    {
        // Scales: small overlapping arcs in rows.
        Random random(0x7363616C65u);
        cairo_set_line_width(cr, 0.8);
        for (double y = HEAD_TOP; y < CHIN + 4.0; y += 4.0)
        {
            const double shift = (int(y) / 4 % 2) * 2.5;
            for (double x = CX - 40.0 + shift; x < CX + 40.0; x += 5.0)
            {
                cairo_new_sub_path(cr);
                cairo_arc(cr, x, y, 2.6, 0.1 * PI_VALUE, 0.9 * PI_VALUE);
                SetRgb(cr, Shade(p_pilot.skin, 0.5), random.Uniform(0.25, 0.5));
                cairo_stroke(cr);
            }
        }
    }
    if (p_pilot.freckles)
    {
        Random random(0x667265636Bu);
        for (int i = 0; i < 34; ++i)
        {
            const double s = random.Uniform(0.0, 1.0) < 0.5 ? -1.0 : 1.0;
            const double x = CX + s * random.Uniform(4.0, 17.0);
            const double y = EYE_Y + random.Uniform(5.0, 14.0);
            CirclePath(cr, x, y, random.Uniform(0.35, 0.7));
            SetRgb(cr, {0.55, 0.28, 0.15}, random.Uniform(0.35, 0.7));
            cairo_fill(cr);
        }
    }
    cairo_restore(cr);
}

void PaintEye(cairo_t* p_context, const Pilot& p_pilot, double p_x, double p_side)
{
    cairo_t* cr = p_context;
    const bool alien = p_pilot.kind == Kind::VEYL;
    const double half = alien ? 7.0 : 5.6;
    const double open = alien ? 4.6 : 3.0;
    const double tilt = alien ? 1.6 * p_side : 0.0; // Veyl eyes slant up at the outer corner
    auto eyePath = [&]() {
        cairo_move_to(cr, p_x - half, EYE_Y + (p_side < 0 ? tilt : -tilt) * 0.0);
        cairo_curve_to(cr, p_x - half * 0.4, EYE_Y - open - (p_side < 0 ? tilt : 0.0), p_x + half * 0.4,
                       EYE_Y - open - (p_side > 0 ? tilt : 0.0), p_x + half, EYE_Y - tilt * p_side * 0.0);
        cairo_curve_to(cr, p_x + half * 0.4, EYE_Y + open * 0.8, p_x - half * 0.4, EYE_Y + open * 0.8, p_x - half,
                       EYE_Y);
        cairo_close_path(cr);
    };
    eyePath();
    if (alien)
        SetRgb(cr, {0.05, 0.03, 0.1});
    else if (p_pilot.kind == Kind::SAURIAN)
        SetRgb(cr, Mix(p_pilot.iris, WHITE, 0.2));
    else
        SetRgb(cr, {0.93, 0.91, 0.88});
    cairo_fill(cr);
    cairo_save(cr);
    eyePath();
    cairo_clip(cr);
    if (p_pilot.kind == Kind::SAURIAN)
    {
        cairo_save(cr);
        cairo_translate(cr, p_x + 0.5, EYE_Y);
        cairo_scale(cr, 0.5, 1.8);
        CirclePath(cr, 0.0, 0.0, 1.6);
        cairo_restore(cr);
        SetRgb(cr, {0.02, 0.02, 0.02});
        cairo_fill(cr);
    }
    else
    {
        const double irisRadius = alien ? 3.6 : 2.5;
        cairo_pattern_t* iris = cairo_pattern_create_radial(p_x + 0.6, EYE_Y - 0.6, 0.3, p_x + 0.6, EYE_Y - 0.3, irisRadius);
        AddStop(iris, 0.0, Mix(p_pilot.iris, WHITE, 0.35));
        AddStop(iris, 1.0, Shade(p_pilot.iris, 0.55));
        SetPattern(cr, iris);
        CirclePath(cr, p_x + 0.6, EYE_Y - 0.3, irisRadius);
        cairo_fill(cr);
        CirclePath(cr, p_x + 0.6, EYE_Y - 0.3, alien ? 1.3 : 1.1);
        SetRgb(cr, {0.02, 0.02, 0.03});
        cairo_fill(cr);
    }
    // The upper lid's shadow on the eye.
    cairo_rectangle(cr, p_x - half, EYE_Y - open - 1.0, 2.0 * half, open * 0.7);
    SetRgb(cr, {0.0, 0.0, 0.0}, 0.25);
    cairo_fill(cr);
    cairo_restore(cr);
    CirclePath(cr, p_x - 0.4, EYE_Y - 1.3, alien ? 1.1 : 0.7);
    SetRgb(cr, WHITE, 0.9);
    cairo_fill(cr);
    // Lid line and lashes.
    cairo_move_to(cr, p_x - half - 0.5, EYE_Y + 0.3);
    cairo_curve_to(cr, p_x - half * 0.4, EYE_Y - open - 0.6, p_x + half * 0.4, EYE_Y - open - 0.6, p_x + half + 0.8,
                   EYE_Y - 0.3);
    cairo_set_line_width(cr, 1.3);
    SetRgb(cr, Shade(p_pilot.skin, 0.25));
    cairo_stroke(cr);
}

void PaintFeatures(cairo_t* p_context, const Pilot& p_pilot)
{
    cairo_t* cr = p_context;
    const double eyeOffset = p_pilot.headWidth * 0.42;
    for (int side = -1; side <= 1; side += 2)
    {
        const double x = CX + side * eyeOffset;
        if (!(p_pilot.eyepatch && side < 0) && !(p_pilot.cyberEye && side > 0))
            PaintEye(cr, p_pilot, x, side);
        // Brows (the Veyl and Saurians have ridges instead).
        const double inner = x - side * 5.5;
        const double outer = x + side * 6.5;
        const double lift = p_pilot.brow * 2.0;
        cairo_move_to(cr, inner, EYE_Y - 7.0 + lift);
        cairo_curve_to(cr, Lerp(inner, outer, 0.3), EYE_Y - 10.0, Lerp(inner, outer, 0.7), EYE_Y - 10.5,
                       outer, EYE_Y - 7.5 - lift * 0.3);
        if (p_pilot.kind == Kind::HUMAN)
        {
            cairo_set_line_width(cr, 2.2);
            SetRgb(cr, Shade(p_pilot.hair == Hair::NONE ? p_pilot.skin : p_pilot.hairColour, 0.7));
        }
        else
        {
            cairo_set_line_width(cr, 2.6);
            SetRgb(cr, Shade(p_pilot.skin, 0.6), 0.7);
        }
        cairo_stroke(cr);
    }
    // Nose: a shadow down its right side and the nostrils.
    const double noseY = EYE_Y + 15.0;
    if (p_pilot.kind == Kind::SAURIAN)
    {
        for (int side = -1; side <= 1; side += 2)
        {
            cairo_move_to(cr, CX + side * 2.5, noseY - 1.0);
            cairo_line_to(cr, CX + side * 4.5, noseY + 1.0);
        }
        cairo_set_line_width(cr, 1.3);
        SetRgb(cr, Shade(p_pilot.skin, 0.3));
        cairo_stroke(cr);
    }
    else
    {
        cairo_move_to(cr, CX + 1.5, EYE_Y - 2.0);
        cairo_curve_to(cr, CX + 3.0, EYE_Y + 6.0, CX + 5.0, noseY - 3.0, CX + 3.5, noseY);
        cairo_set_line_width(cr, 1.6);
        SetRgb(cr, {0.0, 0.0, 0.0}, 0.18);
        cairo_stroke(cr);
        cairo_move_to(cr, CX - 4.5, noseY);
        cairo_curve_to(cr, CX - 2.0, noseY + 2.0, CX + 2.0, noseY + 2.0, CX + 4.5, noseY);
        cairo_set_line_width(cr, 1.2);
        SetRgb(cr, Shade(p_pilot.skin, 0.45), 0.8);
        cairo_stroke(cr);
        // The light on the bridge.
        cairo_move_to(cr, CX - 0.5, EYE_Y + 1.0);
        cairo_line_to(cr, CX - 0.8, noseY - 3.0);
        cairo_set_line_width(cr, 1.2);
        SetRgb(cr, WHITE, 0.18);
        cairo_stroke(cr);
    }
    // Mouth.
    const double mouthY = EYE_Y + 24.0;
    const double mouthHalf = p_pilot.kind == Kind::SAURIAN ? 12.0 : 7.5;
    const double curve = p_pilot.smile * 2.5;
    cairo_move_to(cr, CX - mouthHalf, mouthY - curve);
    cairo_curve_to(cr, CX - 3.0, mouthY + curve * 0.5, CX + 3.0, mouthY + curve * 0.5, CX + mouthHalf, mouthY - curve);
    cairo_set_line_width(cr, 1.4);
    SetRgb(cr, Shade(p_pilot.skin, 0.3));
    cairo_stroke(cr);
    if (p_pilot.kind == Kind::HUMAN)
    {
        // The lower lip catches the light.
        cairo_move_to(cr, CX - 4.5, mouthY + 2.5);
        cairo_curve_to(cr, CX - 2.0, mouthY + 4.2, CX + 2.0, mouthY + 4.2, CX + 4.5, mouthY + 2.5);
        cairo_set_line_width(cr, 1.6);
        SetRgb(cr, Mix(p_pilot.skin, Rgb{0.75, 0.35, 0.35}, 0.35));
        cairo_stroke(cr);
    }
}

// ---- Hair and what the pilots wear ----------------------------------------------------------

void HairCapPath(cairo_t* p_context, const Pilot& p_pilot, double p_fringe)
{
    const double a = p_pilot.headWidth + 2.5;
    cairo_move_to(p_context, CX - a, EYE_Y - 4.0);
    cairo_curve_to(p_context, CX - a - 1.0, HEAD_TOP - 14.0, CX + a + 1.0, HEAD_TOP - 14.0, CX + a, EYE_Y - 4.0);
    cairo_curve_to(p_context, CX + a - 3.0, EYE_Y - 14.0, CX + 10.0, p_fringe + 2.0, CX, p_fringe);
    cairo_curve_to(p_context, CX - 12.0, p_fringe - 1.0, CX - a + 2.0, EYE_Y - 12.0, CX - a, EYE_Y - 4.0);
    cairo_close_path(p_context);
}

// Fills the current path with the hair's colour and combs strands into it.
void FillHair(cairo_t* p_context, const Pilot& p_pilot, double p_top, double p_bottom)
{
    SetVertical(p_context, p_top, p_bottom, Mix(p_pilot.hairColour, WHITE, 0.2), Shade(p_pilot.hairColour, 0.6));
    cairo_save(p_context);
    cairo_clip_preserve(p_context);
    cairo_fill(p_context);
    Random random(uint64_t(p_top * 97.0 + p_bottom * 13.0));
    cairo_set_line_width(p_context, 0.7);
    for (int i = 0; i < 46; ++i)
    {
        const double x = CX + random.Uniform(-1.2, 1.2) * (p_pilot.headWidth + 4.0);
        const double y = random.Uniform(p_top - 6.0, p_bottom);
        cairo_move_to(p_context, x, y);
        cairo_curve_to(p_context, x + 2.0, y + 3.0, x + 3.0, y + 6.0, x + random.Uniform(1.0, 5.0), y + 9.0);
        const bool light = random.Uniform(0.0, 1.0) < 0.5;
        SetRgb(p_context, light ? WHITE : Rgb{0.0, 0.0, 0.0}, 0.14);
        cairo_stroke(p_context);
    }
    cairo_restore(p_context);
}

void PaintHairBack(cairo_t* p_context, const Pilot& p_pilot)
{
    if (p_pilot.hair != Hair::LONG || p_pilot.helmet)
        return;
    const double a = p_pilot.headWidth + 6.0;
    cairo_move_to(p_context, CX - a, EYE_Y - 10.0);
    cairo_curve_to(p_context, CX - a - 6.0, EYE_Y + 20.0, CX - a - 2.0, 110.0, CX - a - 8.0, 128.0);
    cairo_line_to(p_context, CX - 10.0, 118.0);
    cairo_line_to(p_context, CX + 10.0, 118.0);
    cairo_line_to(p_context, CX + a + 8.0, 128.0);
    cairo_curve_to(p_context, CX + a + 2.0, 110.0, CX + a + 6.0, EYE_Y + 20.0, CX + a, EYE_Y - 10.0);
    cairo_close_path(p_context);
    SetVertical(p_context, EYE_Y - 10.0, 130.0, p_pilot.hairColour, Shade(p_pilot.hairColour, 0.45));
    cairo_fill(p_context);
}

void PaintHairFront(cairo_t* p_context, const Pilot& p_pilot)
{
    cairo_t* cr = p_context;
    if (p_pilot.helmet)
        return;
    switch (p_pilot.hair)
    {
    case Hair::NONE:
        return;
    case Hair::BUZZ:
        cairo_save(cr);
        FacePath(cr, p_pilot);
        cairo_clip(cr);
        HairCapPath(cr, p_pilot, HEAD_TOP + 10.0);
        SetRgb(cr, p_pilot.hairColour, 0.75);
        cairo_fill(cr);
        cairo_restore(cr);
        return;
    case Hair::MOHAWK:
    {
        cairo_save(cr);
        FacePath(cr, p_pilot);
        cairo_clip(cr);
        HairCapPath(cr, p_pilot, HEAD_TOP + 9.0);
        SetRgb(cr, p_pilot.hairColour, 0.3); // shaved sides
        cairo_fill(cr);
        cairo_restore(cr);
        cairo_move_to(cr, CX - 6.0, HEAD_TOP + 14.0);
        cairo_curve_to(cr, CX - 9.0, HEAD_TOP - 6.0, CX - 4.0, HEAD_TOP - 18.0, CX + 4.0, HEAD_TOP - 20.0);
        cairo_curve_to(cr, CX + 7.0, HEAD_TOP - 10.0, CX + 8.0, HEAD_TOP + 2.0, CX + 6.0, HEAD_TOP + 14.0);
        cairo_close_path(cr);
        FillHair(cr, p_pilot, HEAD_TOP - 20.0, HEAD_TOP + 14.0);
        return;
    }
    case Hair::BUN:
        CirclePath(cr, CX + 2.0, HEAD_TOP - 5.0, 9.5);
        FillHair(cr, p_pilot, HEAD_TOP - 15.0, HEAD_TOP + 4.0);
        HairCapPath(cr, p_pilot, HEAD_TOP + 8.0);
        FillHair(cr, p_pilot, HEAD_TOP - 8.0, EYE_Y);
        return;
    case Hair::SHORT:
    case Hair::SWEPT:
    case Hair::LONG:
    {
        const double fringe = p_pilot.hair == Hair::SWEPT ? HEAD_TOP + 9.0 : HEAD_TOP + 14.0;
        HairCapPath(cr, p_pilot, fringe);
        FillHair(cr, p_pilot, HEAD_TOP - 8.0, EYE_Y);
        if (p_pilot.hair == Hair::SWEPT)
        {
            // A quiff swept to one side.
            cairo_move_to(cr, CX - 20.0, HEAD_TOP + 8.0);
            cairo_curve_to(cr, CX - 16.0, HEAD_TOP - 18.0, CX + 18.0, HEAD_TOP - 17.0, CX + 27.0, HEAD_TOP + 6.0);
            cairo_curve_to(cr, CX + 12.0, HEAD_TOP + 2.0, CX - 6.0, HEAD_TOP + 4.0, CX - 20.0, HEAD_TOP + 8.0);
            FillHair(cr, p_pilot, HEAD_TOP - 16.0, HEAD_TOP + 8.0);
        }
        if (p_pilot.hair == Hair::LONG)
        {
            for (int side = -1; side <= 1; side += 2)
            {
                const double a = p_pilot.headWidth + 3.0;
                cairo_move_to(cr, CX + side * a, EYE_Y - 8.0);
                cairo_curve_to(cr, CX + side * (a + 3.0), EYE_Y + 14.0, CX + side * (a - 1.0), EYE_Y + 30.0,
                               CX + side * (a + 2.0), EYE_Y + 42.0);
                cairo_line_to(cr, CX + side * (a - 6.0), EYE_Y + 30.0);
                cairo_curve_to(cr, CX + side * (a - 5.0), EYE_Y + 16.0, CX + side * (a - 5.0), EYE_Y, CX + side * (a - 3.0),
                               EYE_Y - 12.0);
                cairo_close_path(cr);
                FillHair(cr, p_pilot, EYE_Y - 10.0, EYE_Y + 42.0);
            }
        }
        return;
    }
    }
}

void PaintBeard(cairo_t* p_context, const Pilot& p_pilot)
{
    if (!p_pilot.beard)
        return;
    cairo_t* cr = p_context;
    const double a = p_pilot.headWidth;
    cairo_move_to(cr, CX - a + 1.0, EYE_Y + 4.0);
    cairo_curve_to(cr, CX - a + 2.0, CHIN - 4.0, CX - 12.0, CHIN + 8.0, CX, CHIN + 9.0);
    cairo_curve_to(cr, CX + 12.0, CHIN + 8.0, CX + a - 2.0, CHIN - 4.0, CX + a - 1.0, EYE_Y + 4.0);
    cairo_curve_to(cr, CX + a - 6.0, EYE_Y + 16.0, CX + 10.0, EYE_Y + 18.0, CX + 9.0, EYE_Y + 27.0);
    cairo_curve_to(cr, CX + 4.0, EYE_Y + 30.0, CX - 4.0, EYE_Y + 30.0, CX - 9.0, EYE_Y + 27.0);
    cairo_curve_to(cr, CX - 10.0, EYE_Y + 18.0, CX - a + 6.0, EYE_Y + 16.0, CX - a + 1.0, EYE_Y + 4.0);
    cairo_close_path(cr);
    FillHair(cr, p_pilot, EYE_Y, CHIN + 9.0);
    // Moustache.
    cairo_move_to(cr, CX - 11.0, EYE_Y + 25.0);
    cairo_curve_to(cr, CX - 6.0, EYE_Y + 18.0, CX + 6.0, EYE_Y + 18.0, CX + 11.0, EYE_Y + 25.0);
    cairo_curve_to(cr, CX + 5.0, EYE_Y + 21.5, CX - 5.0, EYE_Y + 21.5, CX - 11.0, EYE_Y + 25.0);
    FillHair(cr, p_pilot, EYE_Y + 18.0, EYE_Y + 25.0);
}

void PaintHelmet(cairo_t* p_context, const Pilot& p_pilot)
{
    if (!p_pilot.helmet)
        return;
    cairo_t* cr = p_context;
    const double a = p_pilot.headWidth + 9.0;
    // The shell around the face, open at the front.
    cairo_move_to(cr, CX - a, CHIN + 4.0);
    cairo_curve_to(cr, CX - a - 4.0, EYE_Y - 10.0, CX - a + 2.0, HEAD_TOP - 14.0, CX, HEAD_TOP - 15.0);
    cairo_curve_to(cr, CX + a - 2.0, HEAD_TOP - 14.0, CX + a + 4.0, EYE_Y - 10.0, CX + a, CHIN + 4.0);
    cairo_line_to(cr, CX + a - 9.0, CHIN + 4.0);
    cairo_curve_to(cr, CX + a - 8.0, EYE_Y + 4.0, CX + a - 10.0, EYE_Y - 12.0, CX + 12.0, EYE_Y - 14.0);
    cairo_line_to(cr, CX - 12.0, EYE_Y - 14.0);
    cairo_curve_to(cr, CX - a + 10.0, EYE_Y - 12.0, CX - a + 8.0, EYE_Y + 4.0, CX - a + 9.0, CHIN + 4.0);
    cairo_close_path(cr);
    cairo_pattern_t* shell = cairo_pattern_create_linear(CX - a, HEAD_TOP - 14.0, CX + a, CHIN);
    AddStop(shell, 0.0, Mix(p_pilot.suitAccent, WHITE, 0.55));
    AddStop(shell, 0.5, p_pilot.suitAccent);
    AddStop(shell, 1.0, Shade(p_pilot.suitAccent, 0.4));
    SetPattern(cr, shell);
    cairo_fill(cr);
    // A stripe over the crown.
    cairo_move_to(cr, CX - 4.0, HEAD_TOP - 14.6);
    cairo_line_to(cr, CX + 4.0, HEAD_TOP - 14.6);
    cairo_line_to(cr, CX + 4.0, EYE_Y - 14.0);
    cairo_line_to(cr, CX - 4.0, EYE_Y - 14.0);
    cairo_close_path(cr);
    SetRgb(cr, AMBER);
    cairo_fill(cr);
    // The raised visor, a dark band across the brow.
    cairo_move_to(cr, CX - a + 4.0, EYE_Y - 20.0);
    cairo_curve_to(cr, CX - a + 6.0, HEAD_TOP - 12.0, CX + a - 6.0, HEAD_TOP - 12.0, CX + a - 4.0, EYE_Y - 20.0);
    cairo_curve_to(cr, CX + a - 8.0, EYE_Y - 24.0, CX - a + 8.0, EYE_Y - 24.0, CX - a + 4.0, EYE_Y - 20.0);
    cairo_close_path(cr);
    cairo_pattern_t* visor = cairo_pattern_create_linear(0.0, HEAD_TOP - 10.0, 0.0, EYE_Y - 20.0);
    AddStop(visor, 0.0, {0.35, 0.55, 0.75});
    AddStop(visor, 1.0, {0.05, 0.08, 0.14});
    SetPattern(cr, visor);
    cairo_fill(cr);
    // Side fittings.
    for (int side = -1; side <= 1; side += 2)
    {
        CirclePath(cr, CX + side * (a - 4.0), EYE_Y + 4.0, 4.0);
        SetVertical(cr, EYE_Y, EYE_Y + 8.0, STEEL_HIGHLIGHT, STEEL_SHADOW);
        cairo_fill(cr);
    }
}

void PaintHeadset(cairo_t* p_context, const Pilot& p_pilot)
{
    if (!p_pilot.headset)
        return;
    cairo_t* cr = p_context;
    const double a = p_pilot.headWidth + 3.0;
    cairo_new_sub_path(cr);
    cairo_arc(cr, CX, EYE_Y + 2.0, a, PI_VALUE * 1.02, PI_VALUE * 1.98);
    cairo_set_line_width(cr, 3.0);
    SetRgb(cr, STEEL_SHADOW);
    cairo_stroke(cr);
    for (int side = -1; side <= 1; side += 2)
    {
        RoundedRectPath(cr, CX + side * a - 5.0, EYE_Y - 3.0, 10.0, 15.0, 4.0);
        SetVertical(cr, EYE_Y - 3.0, EYE_Y + 12.0, STEEL, STEEL_SHADOW);
        cairo_fill(cr);
    }
    // The microphone boom to the mouth.
    cairo_move_to(cr, CX + a, EYE_Y + 8.0);
    cairo_curve_to(cr, CX + a - 2.0, EYE_Y + 22.0, CX + 16.0, EYE_Y + 26.0, CX + 9.0, EYE_Y + 26.0);
    cairo_set_line_width(cr, 1.8);
    SetRgb(cr, STEEL_SHADOW);
    cairo_stroke(cr);
    RoundedRectPath(cr, CX + 5.0, EYE_Y + 23.5, 6.0, 5.0, 2.0);
    SetRgb(cr, AMBER);
    cairo_fill(cr);
}

void PaintGoggles(cairo_t* p_context, const Pilot& p_pilot)
{
    if (!p_pilot.goggles)
        return;
    cairo_t* cr = p_context;
    const double y = HEAD_TOP + 6.0;
    cairo_rectangle(cr, CX - p_pilot.headWidth - 3.0, y - 2.0, 2.0 * p_pilot.headWidth + 6.0, 4.0);
    SetRgb(cr, {0.18, 0.14, 0.12});
    cairo_fill(cr);
    for (int side = -1; side <= 1; side += 2)
    {
        const double x = CX + side * 10.0;
        CirclePath(cr, x, y, 8.5);
        SetVertical(cr, y - 8.0, y + 8.0, STEEL_LIGHT, STEEL_SHADOW);
        cairo_fill(cr);
        CirclePath(cr, x, y, 6.5);
        cairo_pattern_t* lens = cairo_pattern_create_linear(x - 6.0, y - 6.0, x + 6.0, y + 6.0);
        AddStop(lens, 0.0, AMBER_LIGHT);
        AddStop(lens, 0.5, AMBER);
        AddStop(lens, 1.0, {0.35, 0.15, 0.05});
        SetPattern(cr, lens);
        cairo_fill(cr);
        CirclePath(cr, x - 2.0, y - 2.5, 1.6);
        SetRgb(cr, WHITE, 0.8);
        cairo_fill(cr);
    }
}

void PaintMarks(cairo_t* p_context, const Pilot& p_pilot)
{
    cairo_t* cr = p_context;
    const double eyeOffset = p_pilot.headWidth * 0.42;
    if (p_pilot.eyepatch)
    {
        cairo_move_to(cr, CX - p_pilot.headWidth, EYE_Y - 14.0);
        cairo_line_to(cr, CX + p_pilot.headWidth, EYE_Y - 20.0);
        cairo_set_line_width(cr, 1.6);
        SetRgb(cr, {0.08, 0.07, 0.07});
        cairo_stroke(cr);
        cairo_save(cr);
        cairo_translate(cr, CX - eyeOffset, EYE_Y);
        cairo_scale(cr, 7.5, 6.0);
        CirclePath(cr, 0.0, 0.0, 1.0);
        cairo_restore(cr);
        SetVertical(cr, EYE_Y - 6.0, EYE_Y + 6.0, {0.25, 0.22, 0.2}, {0.05, 0.05, 0.05});
        cairo_fill(cr);
    }
    if (p_pilot.scar)
    {
        const double x = CX + eyeOffset + 3.0;
        cairo_move_to(cr, x - 3.0, EYE_Y - 12.0);
        cairo_line_to(cr, x + 3.0, EYE_Y + 14.0);
        cairo_set_line_width(cr, 1.6);
        SetRgb(cr, Mix(p_pilot.skin, Rgb{0.85, 0.55, 0.55}, 0.5));
        cairo_stroke(cr);
        for (double t : {0.3, 0.55, 0.8})
        {
            const double sx = Lerp(x - 3.0, x + 3.0, t);
            const double sy = Lerp(EYE_Y - 12.0, EYE_Y + 14.0, t);
            cairo_move_to(cr, sx - 2.0, sy + 0.5);
            cairo_line_to(cr, sx + 2.0, sy - 0.5);
        }
        cairo_set_line_width(cr, 0.8);
        SetRgb(cr, Shade(p_pilot.skin, 0.6));
        cairo_stroke(cr);
    }
    if (p_pilot.facePaint)
    {
        for (int side = -1; side <= 1; side += 2)
        {
            for (int i = 0; i < 2; ++i)
            {
                const double x = CX + side * (eyeOffset + 1.0);
                const double y = EYE_Y + 6.0 + i * 4.5;
                cairo_move_to(cr, x - 6.0, y);
                cairo_line_to(cr, x + 6.0, y - side * 1.0);
            }
        }
        cairo_set_line_width(cr, 2.2);
        SetRgb(cr, AMBER, 0.85);
        cairo_stroke(cr);
    }
    if (p_pilot.cyberEye)
    {
        const double x = CX + eyeOffset;
        // A steel plate over the eye and temple, a red lens, lines into the skin.
        cairo_move_to(cr, x - 8.0, EYE_Y - 10.0);
        cairo_line_to(cr, x + 13.0, EYE_Y - 13.0);
        cairo_line_to(cr, CX + p_pilot.headWidth + 1.0, EYE_Y + 2.0);
        cairo_line_to(cr, x + 8.0, EYE_Y + 10.0);
        cairo_line_to(cr, x - 7.0, EYE_Y + 7.0);
        cairo_close_path(cr);
        SetVertical(cr, EYE_Y - 12.0, EYE_Y + 10.0, STEEL_HIGHLIGHT, STEEL_SHADOW);
        cairo_fill_preserve(cr);
        cairo_set_line_width(cr, 0.8);
        SetRgb(cr, NAVY_DEEP);
        cairo_stroke(cr);
        cairo_pattern_t* glow = cairo_pattern_create_radial(x, EYE_Y, 0.0, x, EYE_Y, 9.0);
        AddStop(glow, 0.0, {1.0, 0.2, 0.1}, 0.7);
        AddStop(glow, 1.0, {1.0, 0.2, 0.1}, 0.0);
        SetPattern(cr, glow);
        CirclePath(cr, x, EYE_Y, 9.0);
        cairo_fill(cr);
        CirclePath(cr, x, EYE_Y, 3.6);
        SetRgb(cr, {0.1, 0.02, 0.02});
        cairo_fill(cr);
        CirclePath(cr, x, EYE_Y, 2.2);
        SetRgb(cr, {1.0, 0.3, 0.15});
        cairo_fill(cr);
        CirclePath(cr, x - 0.7, EYE_Y - 0.8, 0.7);
        SetRgb(cr, WHITE);
        cairo_fill(cr);
        for (double dy : {4.0, 8.0})
        {
            cairo_move_to(cr, x + 8.0, EYE_Y + dy);
            cairo_line_to(cr, x + 10.0, EYE_Y + dy + 10.0);
            cairo_line_to(cr, x + 6.0, EYE_Y + dy + 16.0);
        }
        cairo_set_line_width(cr, 0.9);
        SetRgb(cr, {0.2, 0.85, 1.0}, 0.6);
        cairo_stroke(cr);
    }
}

// ---- Other kinds ----------------------------------------------------------------------------

void PaintCrest(cairo_t* p_context, const Pilot& p_pilot)
{
    if (p_pilot.kind == Kind::VEYL)
    {
        // Three ridges sweeping back from the brow.
        for (int i = -1; i <= 1; ++i)
        {
            const double x = CX + i * 8.0;
            cairo_move_to(p_context, x - 2.5, EYE_Y - 12.0);
            cairo_curve_to(p_context, x - 3.0, HEAD_TOP + 4.0, x + i * 5.0 - 2.0, HEAD_TOP - 8.0, x + i * 6.0, HEAD_TOP - 10.0);
            cairo_curve_to(p_context, x + i * 5.0 + 2.0, HEAD_TOP - 6.0, x + 3.0, HEAD_TOP + 4.0, x + 2.5, EYE_Y - 12.0);
            cairo_close_path(p_context);
            SetVertical(p_context, HEAD_TOP - 10.0, EYE_Y - 12.0, Mix(p_pilot.skin, WHITE, 0.35), Shade(p_pilot.skin, 0.6));
            cairo_fill(p_context);
        }
        // Markings under the eyes.
        for (int side = -1; side <= 1; side += 2)
        {
            for (int i = 0; i < 3; ++i)
            {
                CirclePath(p_context, CX + side * (p_pilot.headWidth * 0.42 + 2.0 + i * 2.6), EYE_Y + 7.0 + i * 1.2, 0.9);
                SetRgb(p_context, p_pilot.iris, 0.9);
                cairo_fill(p_context);
            }
        }
    }
    if (p_pilot.kind == Kind::SAURIAN)
    {
        // Frills spreading from behind the jaw.
        for (int side = -1; side <= 1; side += 2)
        {
            const double root = CX + side * (p_pilot.headWidth - 4.0);
            for (int i = 0; i < 4; ++i)
            {
                const double angle = (-0.9 + i * 0.45);
                const double length = 20.0 - std::abs(i - 1.5) * 3.0;
                const double tipX = root + side * std::cos(angle) * length;
                const double tipY = EYE_Y + 6.0 + std::sin(angle) * length;
                cairo_move_to(p_context, root, EYE_Y - 2.0 + i * 5.0);
                cairo_line_to(p_context, tipX, tipY);
                cairo_line_to(p_context, root, EYE_Y + 5.0 + i * 5.0);
            }
            cairo_close_path(p_context);
            SetRgb(p_context, Mix(p_pilot.skin, p_pilot.suitAccent, 0.5));
            cairo_fill(p_context);
        }
    }
}

void AndroidFacePath(cairo_t* p_context, const Pilot& p_pilot)
{
    const double a = p_pilot.headWidth;
    cairo_move_to(p_context, CX, HEAD_TOP - 2.0);
    cairo_curve_to(p_context, CX + a * 0.9, HEAD_TOP - 2.0, CX + a, HEAD_TOP + 14.0, CX + a, EYE_Y);
    cairo_line_to(p_context, CX + a - 4.0, CHIN - 14.0);
    cairo_line_to(p_context, CX + 9.0, CHIN);
    cairo_line_to(p_context, CX - 9.0, CHIN);
    cairo_line_to(p_context, CX - a + 4.0, CHIN - 14.0);
    cairo_line_to(p_context, CX - a, EYE_Y);
    cairo_curve_to(p_context, CX - a, HEAD_TOP + 14.0, CX - a * 0.9, HEAD_TOP - 2.0, CX, HEAD_TOP - 2.0);
    cairo_close_path(p_context);
}

void PaintAndroid(Canvas& p_canvas, const Pilot& p_pilot)
{
    cairo_t* cr = p_canvas.Get();
    AndroidFacePath(cr, p_pilot);
    cairo_pattern_t* metal = cairo_pattern_create_linear(CX - p_pilot.headWidth, HEAD_TOP, CX + p_pilot.headWidth, CHIN);
    AddStop(metal, 0.0, STEEL_HIGHLIGHT);
    AddStop(metal, 0.45, STEEL_LIGHT);
    AddStop(metal, 1.0, STEEL_SHADOW);
    SetPattern(cr, metal);
    cairo_fill(cr);
    cairo_save(cr);
    AndroidFacePath(cr, p_pilot);
    cairo_clip(cr);
    // Panel seams.
    cairo_set_line_width(cr, 0.9);
    SetRgb(cr, NAVY_DEEP, 0.6);
    cairo_move_to(cr, CX, HEAD_TOP - 2.0);
    cairo_line_to(cr, CX, EYE_Y - 9.0);
    cairo_move_to(cr, CX - p_pilot.headWidth, EYE_Y + 12.0);
    cairo_line_to(cr, CX - 8.0, EYE_Y + 16.0);
    cairo_line_to(cr, CX + 8.0, EYE_Y + 16.0);
    cairo_line_to(cr, CX + p_pilot.headWidth, EYE_Y + 12.0);
    cairo_stroke(cr);
    // The eye band, glowing.
    RoundedRectPath(cr, CX - p_pilot.headWidth + 3.0, EYE_Y - 6.0, 2.0 * p_pilot.headWidth - 6.0, 11.0, 4.0);
    SetRgb(cr, {0.02, 0.04, 0.07});
    cairo_fill(cr);
    cairo_restore(cr);
    PaintSoftLayer(p_canvas, 3, 1.0, [&](cairo_t* p_layer) {
        for (int side = -1; side <= 1; side += 2)
        {
            RoundedRectPath(p_layer, CX + side * 10.0 - 6.0, EYE_Y - 2.5, 12.0, 4.0, 2.0);
            SetRgb(p_layer, p_pilot.iris);
            cairo_fill(p_layer);
        }
    });
    for (int side = -1; side <= 1; side += 2)
    {
        RoundedRectPath(cr, CX + side * 10.0 - 5.0, EYE_Y - 1.5, 10.0, 2.5, 1.2);
        SetRgb(cr, Mix(p_pilot.iris, WHITE, 0.6));
        cairo_fill(cr);
    }
    // The speaker grille where a mouth would be.
    for (int i = 0; i < 4; ++i)
    {
        cairo_rectangle(cr, CX - 7.0, EYE_Y + 21.0 + i * 3.0, 14.0, 1.5);
        SetRgb(cr, NAVY_DEEP, 0.8);
        cairo_fill(cr);
    }
    // Ear discs.
    for (int side = -1; side <= 1; side += 2)
    {
        CirclePath(cr, CX + side * p_pilot.headWidth, EYE_Y + 2.0, 6.0);
        SetVertical(cr, EYE_Y - 4.0, EYE_Y + 8.0, STEEL_LIGHT, STEEL_SHADOW);
        cairo_fill(cr);
        CirclePath(cr, CX + side * p_pilot.headWidth, EYE_Y + 2.0, 2.0);
        SetRgb(cr, p_pilot.iris);
        cairo_fill(cr);
    }
}

void PaintClosedHelmet(Canvas& p_canvas, const Pilot& p_pilot)
{
    cairo_t* cr = p_canvas.Get();
    const double a = p_pilot.headWidth + 8.0;
    const double top = HEAD_TOP - 12.0;
    const double bottom = CHIN + 8.0;
    auto shellPath = [&]() {
        cairo_move_to(cr, CX - a + 4.0, bottom);
        cairo_curve_to(cr, CX - a - 3.0, EYE_Y + 10.0, CX - a - 2.0, top + 4.0, CX, top);
        cairo_curve_to(cr, CX + a + 2.0, top + 4.0, CX + a + 3.0, EYE_Y + 10.0, CX + a - 4.0, bottom);
        cairo_close_path(cr);
    };
    shellPath();
    cairo_pattern_t* shell = cairo_pattern_create_radial(CX - 12.0, top + 14.0, 2.0, CX, EYE_Y, a * 1.5);
    AddStop(shell, 0.0, WHITE);
    AddStop(shell, 0.4, Mix(p_pilot.suitAccent, WHITE, 0.5));
    AddStop(shell, 1.0, Shade(p_pilot.suitAccent, 0.35));
    SetPattern(cr, shell);
    cairo_fill(cr);
    // Decals: an amber stripe and a squadron number.
    cairo_save(cr);
    shellPath();
    cairo_clip(cr);
    cairo_move_to(cr, CX - 30.0, top + 2.0);
    cairo_line_to(cr, CX - 20.0, top + 2.0);
    cairo_line_to(cr, CX - 34.0, bottom);
    cairo_line_to(cr, CX - 44.0, bottom);
    cairo_close_path(cr);
    SetRgb(cr, AMBER, 0.9);
    cairo_fill(cr);
    cairo_restore(cr);
    // The visor, down: dark glass reflecting the cockpit.
    auto visorPath = [&]() {
        cairo_move_to(cr, CX - a + 8.0, EYE_Y - 12.0);
        cairo_curve_to(cr, CX - 12.0, EYE_Y - 20.0, CX + 12.0, EYE_Y - 20.0, CX + a - 8.0, EYE_Y - 12.0);
        cairo_curve_to(cr, CX + a - 4.0, EYE_Y + 6.0, CX + a - 10.0, EYE_Y + 20.0, CX, EYE_Y + 22.0);
        cairo_curve_to(cr, CX - a + 10.0, EYE_Y + 20.0, CX - a + 4.0, EYE_Y + 6.0, CX - a + 8.0, EYE_Y - 12.0);
        cairo_close_path(cr);
    };
    visorPath();
    cairo_pattern_t* glass = cairo_pattern_create_linear(0.0, EYE_Y - 18.0, 0.0, EYE_Y + 22.0);
    AddStop(glass, 0.0, {0.25, 0.3, 0.45});
    AddStop(glass, 0.45, {0.05, 0.06, 0.12});
    AddStop(glass, 0.55, {0.45, 0.28, 0.12});
    AddStop(glass, 1.0, {0.08, 0.05, 0.05});
    SetPattern(cr, glass);
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, 2.0);
    SetRgb(cr, STEEL_SHADOW);
    cairo_stroke(cr);
    cairo_save(cr);
    visorPath();
    cairo_clip(cr);
    // Reflections: a bright streak and the instrument lights.
    cairo_move_to(cr, CX - 22.0, EYE_Y - 14.0);
    cairo_curve_to(cr, CX - 10.0, EYE_Y - 18.0, CX + 4.0, EYE_Y - 17.0, CX + 14.0, EYE_Y - 14.0);
    cairo_set_line_width(cr, 3.0);
    SetRgb(cr, WHITE, 0.55);
    cairo_stroke(cr);
    Random random(0x7669736F72u);
    for (int i = 0; i < 14; ++i)
    {
        CirclePath(cr, CX + random.Uniform(-24.0, 24.0), EYE_Y + random.Uniform(4.0, 16.0), random.Uniform(0.6, 1.4));
        SetRgb(cr, random.Uniform(0.0, 1.0) < 0.5 ? AMBER_LIGHT : ICE, 0.8);
        cairo_fill(cr);
    }
    cairo_restore(cr);
    // Breathing fittings under the visor.
    for (int side = -1; side <= 1; side += 2)
    {
        CirclePath(cr, CX + side * 12.0, EYE_Y + 27.0, 3.5);
        SetVertical(cr, EYE_Y + 24.0, EYE_Y + 31.0, STEEL_LIGHT, STEEL_SHADOW);
        cairo_fill(cr);
    }
}

// ---- The whole portrait ---------------------------------------------------------------------

void PaintRimLight(Canvas& p_canvas, const Pilot& p_pilot)
{
    // Light from behind on the right edge of the head and shoulders.
    PaintSoftLayer(p_canvas, 2, 0.85, [&](cairo_t* p_layer) {
        cairo_save(p_layer);
        cairo_rectangle(p_layer, CX + 8.0, 0.0, PORTRAIT_WIDTH, PORTRAIT_HEIGHT);
        cairo_clip(p_layer);
        if (p_pilot.kind == Kind::ANDROID)
            AndroidFacePath(p_layer, p_pilot);
        else
            FacePath(p_layer, p_pilot);
        ShouldersPath(p_layer);
        cairo_set_line_width(p_layer, 2.0);
        SetRgb(p_layer, p_pilot.rim, 0.9);
        cairo_stroke(p_layer);
        cairo_restore(p_layer);
    });
}

void PaintPortrait(Canvas& p_canvas, const Pilot& p_pilot, uint64_t p_seed)
{
    cairo_t* cr = p_canvas.Get();
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    PaintBackdrop(p_canvas, p_pilot, p_seed);
    // A soft shadow of the figure on the wall behind it.
    PaintSoftLayer(p_canvas, 6, 0.45, [&](cairo_t* p_layer) {
        cairo_translate(p_layer, -5.0, 3.0);
        FacePath(p_layer, p_pilot);
        ShouldersPath(p_layer);
        cairo_set_source_rgba(p_layer, 0.0, 0.0, 0.0, 1.0);
        cairo_fill(p_layer);
    });
    PaintHairBack(cr, p_pilot);
    PaintShoulders(cr, p_pilot);
    switch (p_pilot.kind)
    {
    case Kind::ANDROID:
        PaintAndroid(p_canvas, p_pilot);
        break;
    case Kind::HELMET:
        PaintClosedHelmet(p_canvas, p_pilot);
        break;
    default:
        PaintEars(cr, p_pilot);
        if (p_pilot.kind == Kind::SAURIAN)
            PaintCrest(cr, p_pilot);
        PaintSkin(p_canvas, p_pilot);
        if (p_pilot.kind == Kind::VEYL)
            PaintCrest(cr, p_pilot);
        PaintFeatures(cr, p_pilot);
        PaintMarks(cr, p_pilot);
        PaintBeard(cr, p_pilot);
        PaintHairFront(cr, p_pilot);
        PaintHelmet(cr, p_pilot);
        PaintHeadset(cr, p_pilot);
        PaintGoggles(cr, p_pilot);
        break;
    }
    PaintRimLight(p_canvas, p_pilot);
    // Vignette.
    cairo_pattern_t* vignette = cairo_pattern_create_radial(CX, 70.0, 40.0, CX, 78.0, 110.0);
    cairo_pattern_add_color_stop_rgba(vignette, 0.0, 0.0, 0.0, 0.0, 0.0);
    cairo_pattern_add_color_stop_rgba(vignette, 1.0, 0.0, 0.0, 0.0, 0.5);
    SetPattern(cr, vignette);
    cairo_paint(cr);
}

Pilot BasePilot(const char* p_name, Kind p_kind)
{
    Pilot pilot = {};
    pilot.name = p_name;
    pilot.kind = p_kind;
    pilot.background = {0.03, 0.05, 0.09};
    pilot.backgroundGlow = {0.15, 0.22, 0.35};
    pilot.rim = ICE;
    pilot.skin = {0.85, 0.66, 0.52};
    pilot.hairColour = {0.25, 0.17, 0.1};
    pilot.hair = Hair::SHORT;
    pilot.iris = {0.35, 0.5, 0.3};
    pilot.suit = {0.22, 0.26, 0.32};
    pilot.suitAccent = AMBER;
    pilot.headWidth = 24.0;
    pilot.jaw = 0.5;
    return pilot;
}

std::vector<Pilot> MakePilots()
{
    std::vector<Pilot> pilots;

    Pilot kestrel = BasePilot("Kestrel", Kind::HUMAN);
    kestrel.background = {0.02, 0.08, 0.09};
    kestrel.backgroundGlow = {0.1, 0.38, 0.4};
    kestrel.rim = {0.6, 1.0, 0.95};
    kestrel.skin = {0.78, 0.56, 0.42};
    kestrel.hairColour = {0.16, 0.1, 0.07};
    kestrel.hair = Hair::BUN;
    kestrel.iris = {0.3, 0.6, 0.35};
    kestrel.suit = {0.75, 0.45, 0.15};
    kestrel.suitAccent = {0.3, 0.34, 0.4};
    kestrel.headWidth = 22.0;
    kestrel.jaw = 0.25;
    kestrel.smile = 0.5;
    kestrel.headset = true;
    pilots.push_back(kestrel);

    Pilot brannoc = BasePilot("Brannoc", Kind::HUMAN);
    brannoc.background = {0.08, 0.04, 0.02};
    brannoc.backgroundGlow = {0.4, 0.22, 0.1};
    brannoc.rim = AMBER_LIGHT;
    brannoc.skin = {0.88, 0.7, 0.6};
    brannoc.hairColour = {0.7, 0.7, 0.7};
    brannoc.hair = Hair::SHORT;
    brannoc.suit = {0.14, 0.18, 0.28};
    brannoc.headWidth = 25.0;
    brannoc.jaw = 0.9;
    brannoc.smile = -0.4;
    brannoc.brow = 1.0;
    brannoc.beard = true;
    brannoc.eyepatch = true;
    brannoc.scar = true;
    pilots.push_back(brannoc);

    Pilot vexa = BasePilot("Vexa", Kind::VEYL);
    vexa.background = {0.06, 0.02, 0.1};
    vexa.backgroundGlow = {0.35, 0.15, 0.5};
    vexa.rim = {0.85, 0.7, 1.0};
    vexa.skin = {0.45, 0.6, 0.8};
    vexa.hair = Hair::NONE;
    vexa.iris = {0.75, 0.45, 1.0};
    vexa.suit = {0.7, 0.72, 0.78};
    vexa.suitAccent = {0.55, 0.3, 0.8};
    vexa.headWidth = 22.0;
    vexa.jaw = 0.0;
    vexa.smile = 0.2;
    pilots.push_back(vexa);

    Pilot rook = BasePilot("Rook", Kind::HUMAN);
    rook.background = {0.09, 0.02, 0.02};
    rook.backgroundGlow = {0.45, 0.1, 0.08};
    rook.rim = {1.0, 0.5, 0.4};
    rook.skin = {0.72, 0.52, 0.38};
    rook.hairColour = {0.08, 0.07, 0.06};
    rook.hair = Hair::BUZZ;
    rook.iris = {0.35, 0.25, 0.15};
    rook.suit = {0.3, 0.32, 0.3};
    rook.headWidth = 25.0;
    rook.jaw = 0.8;
    rook.smile = -0.2;
    rook.brow = 0.8;
    rook.cyberEye = true;
    pilots.push_back(rook);

    Pilot sable = BasePilot("Sable", Kind::HUMAN);
    sable.background = {0.02, 0.04, 0.12};
    sable.backgroundGlow = {0.12, 0.25, 0.6};
    sable.rim = {0.6, 0.8, 1.0};
    sable.skin = {0.42, 0.28, 0.2};
    sable.hair = Hair::NONE;
    sable.iris = {0.3, 0.18, 0.1};
    sable.suit = {0.2, 0.26, 0.4};
    sable.suitAccent = {0.9, 0.92, 0.95};
    sable.headWidth = 22.0;
    sable.jaw = 0.3;
    sable.smile = 0.1;
    sable.brow = 0.4;
    sable.helmet = true;
    sable.earring = true;
    pilots.push_back(sable);

    Pilot tarn = BasePilot("Tarn", Kind::SAURIAN);
    tarn.background = {0.04, 0.06, 0.02};
    tarn.backgroundGlow = {0.28, 0.34, 0.1};
    tarn.rim = {0.9, 1.0, 0.6};
    tarn.skin = {0.36, 0.55, 0.3};
    tarn.hair = Hair::NONE;
    tarn.iris = {0.95, 0.8, 0.2};
    tarn.suit = {0.35, 0.28, 0.2};
    tarn.suitAccent = {0.85, 0.35, 0.15};
    tarn.headWidth = 26.0;
    tarn.jaw = 1.0;
    tarn.smile = -0.6;
    pilots.push_back(tarn);

    Pilot unit = BasePilot("Unit7", Kind::ANDROID);
    unit.background = {0.01, 0.06, 0.07};
    unit.backgroundGlow = {0.05, 0.3, 0.35};
    unit.rim = {0.5, 1.0, 1.0};
    unit.iris = {0.2, 0.9, 1.0};
    unit.suit = {0.16, 0.18, 0.2};
    unit.suitAccent = {0.2, 0.7, 0.8};
    unit.headWidth = 23.0;
    pilots.push_back(unit);

    Pilot mira = BasePilot("Mira", Kind::HUMAN);
    mira.background = {0.1, 0.04, 0.03};
    mira.backgroundGlow = {0.6, 0.3, 0.15};
    mira.rim = {1.0, 0.8, 0.55};
    mira.skin = {0.95, 0.78, 0.68};
    mira.hairColour = {0.72, 0.28, 0.1};
    mira.hair = Hair::LONG;
    mira.iris = {0.3, 0.45, 0.7};
    mira.suit = {0.3, 0.4, 0.3};
    mira.suitAccent = {0.85, 0.55, 0.2};
    mira.headWidth = 21.0;
    mira.jaw = 0.15;
    mira.smile = 0.9;
    mira.brow = -0.5;
    mira.freckles = true;
    mira.goggles = true;
    pilots.push_back(mira);

    Pilot dax = BasePilot("Dax", Kind::HUMAN);
    dax.background = {0.02, 0.07, 0.04};
    dax.backgroundGlow = {0.1, 0.35, 0.2};
    dax.rim = {0.6, 1.0, 0.7};
    dax.skin = {0.55, 0.38, 0.26};
    dax.hairColour = {0.1, 0.08, 0.06};
    dax.hair = Hair::MOHAWK;
    dax.iris = {0.25, 0.18, 0.1};
    dax.suit = {0.18, 0.2, 0.16};
    dax.headWidth = 24.0;
    dax.jaw = 0.7;
    dax.smile = 0.4;
    dax.brow = 0.3;
    dax.facePaint = true;
    dax.earring = true;
    pilots.push_back(dax);

    Pilot orla = BasePilot("Orla", Kind::HELMET);
    orla.background = {0.03, 0.04, 0.06};
    orla.backgroundGlow = {0.3, 0.35, 0.45};
    orla.rim = WHITE;
    orla.suit = {0.25, 0.3, 0.38};
    orla.suitAccent = {0.85, 0.88, 0.92};
    orla.headWidth = 23.0;
    pilots.push_back(orla);

    Pilot hollis = BasePilot("Hollis", Kind::HUMAN);
    hollis.background = {0.04, 0.04, 0.08};
    hollis.backgroundGlow = {0.25, 0.25, 0.45};
    hollis.rim = {0.8, 0.85, 1.0};
    hollis.skin = {0.9, 0.74, 0.62};
    hollis.hairColour = {0.85, 0.7, 0.35};
    hollis.hair = Hair::SWEPT;
    hollis.iris = {0.35, 0.55, 0.8};
    hollis.suit = {0.55, 0.57, 0.62};
    hollis.suitAccent = {0.2, 0.4, 0.75};
    hollis.headWidth = 23.0;
    hollis.jaw = 0.6;
    hollis.smile = 0.6;
    hollis.brow = -0.3;
    pilots.push_back(hollis);

    return pilots;
}

void ListPortraits(const ArtContext&, std::vector<PictureRecipe>& p_pictures)
{
    uint64_t seed = 0x706F727472u;
    for (const Pilot& pilot : MakePilots())
    {
        const std::string name = std::string(PORTRAIT_FOLDER) + "\\" + pilot.name + ".bmp";
        ++seed;
        p_pictures.push_back({name, PORTRAIT_WIDTH, PORTRAIT_HEIGHT, false,
                              [pilot, seed](Canvas& p_canvas) { PaintPortrait(p_canvas, pilot, seed); }});
    }
}

const PictureRegistrar s_portraits(ListPortraits);

} // namespace

} // namespace artgen
