// Shots and explosions: the machine-gun tracer, the missile, the bomb and the eight frames of
// the fireball every destroyed ship, missile and bomb leaves.

#include "ArtKit.h"
#include "Pictures.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace artgen
{

namespace
{

using kit::Hex;
using kit::Rgb;

constexpr int EXPLOSION_FRAMES = 8;
// The fireball is drawn with its top-left corner on the ship's, so it covers a fighter-sized
// ship (most are 48 to 64 pixels).
constexpr int EXPLOSION_SIZE = 64;

// The tracer is drawn alpha-tested (anything at 70 % alpha or less vanishes) and never turned,
// so it is a round hot dot with no soft rim.
void DrawBullet(Canvas& p_canvas)
{
    kit::PixelAccess pixels(p_canvas);
    const double centre = pixels.Width() / 2.0;
    for (int y = 0; y < pixels.Height(); ++y)
        for (int x = 0; x < pixels.Width(); ++x)
        {
            const double d = std::hypot(x + 0.5 - centre, y + 0.5 - centre) / centre;
            if (d > 1.0)
                continue;
            const Rgb colour = kit::Mix(Hex(0xFFFBE0), Hex(0xFF9A20), kit::SmoothStep(0.2, 1.0, d));
            pixels.Set(x, y, {colour.r, colour.g, colour.b, d < 0.8 ? 1.0 : 0.85});
        }
}

// A missile seen from above, nose up: white body, red nose and fins, a spark of exhaust.
void DrawMissile(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double w = p_canvas.Width();
    const double cx = w / 2.0;
    // fins
    cairo_move_to(cr, cx - 1.2, 9.0);
    cairo_line_to(cr, 0.3, 12.5);
    cairo_line_to(cr, 0.3, 14.0);
    cairo_line_to(cr, cx - 1.2, 12.5);
    cairo_close_path(cr);
    cairo_move_to(cr, cx + 1.2, 9.0);
    cairo_line_to(cr, w - 0.3, 12.5);
    cairo_line_to(cr, w - 0.3, 14.0);
    cairo_line_to(cr, cx + 1.2, 12.5);
    cairo_close_path(cr);
    kit::SetSource(cr, Hex(0xB8202A));
    cairo_fill(cr);
    // body, lit from the left
    cairo_rectangle(cr, cx - 1.5, 3.5, 3.0, 9.5);
    cairo_pattern_t* body = cairo_pattern_create_linear(cx - 1.5, 0.0, cx + 1.5, 0.0);
    kit::AddStop(body, 0.0, Hex(0xFFFFFF));
    kit::AddStop(body, 1.0, Hex(0x8A9098));
    kit::UsePattern(cr, body);
    cairo_fill(cr);
    // nose
    cairo_move_to(cr, cx - 1.5, 3.6);
    cairo_curve_to(cr, cx - 1.5, 1.5, cx - 0.5, 0.3, cx, 0.2);
    cairo_curve_to(cr, cx + 0.5, 0.3, cx + 1.5, 1.5, cx + 1.5, 3.6);
    cairo_close_path(cr);
    kit::SetSource(cr, Hex(0xD02830));
    cairo_fill(cr);
    // exhaust
    kit::Glow(cr, cx, 14.2, 2.2, Hex(0xFFD060), 1.0);
    kit::Glow(cr, cx, 14.0, 1.0, Hex(0xFFFFFF), 1.0);
    kit::AvoidColourKey(p_canvas);
}

// A spiked mine with a red warning light.
void DrawBomb(Canvas& p_canvas)
{
    cairo_t* cr = p_canvas.Get();
    const double c = p_canvas.Width() / 2.0;
    const double r = c * 0.62;
    for (int i = 0; i < 8; ++i)
    {
        const double angle = 2.0 * kit::PI * i / 8.0 + kit::PI / 8.0;
        const double ca = std::cos(angle);
        const double sa = std::sin(angle);
        cairo_move_to(cr, c + (r - 1.0) * ca - 1.1 * sa, c + (r - 1.0) * sa + 1.1 * ca);
        cairo_line_to(cr, c + (c - 0.6) * ca, c + (c - 0.6) * sa);
        cairo_line_to(cr, c + (r - 1.0) * ca + 1.1 * sa, c + (r - 1.0) * sa - 1.1 * ca);
        cairo_close_path(cr);
    }
    kit::SetSource(cr, Hex(0x6A6E76));
    cairo_fill(cr);
    cairo_pattern_t* ball = cairo_pattern_create_radial(c - r * 0.4, c - r * 0.4, 0.0, c, c, r);
    kit::AddStop(ball, 0.0, Hex(0x9AA0AA));
    kit::AddStop(ball, 0.5, Hex(0x4A4E56));
    kit::AddStop(ball, 1.0, Hex(0x1A1C20));
    kit::UsePattern(cr, ball);
    cairo_arc(cr, c, c, r, 0.0, 2.0 * kit::PI);
    cairo_fill(cr);
    cairo_set_line_width(cr, 0.8);
    cairo_arc(cr, c, c, r * 0.62, 0.0, 2.0 * kit::PI);
    kit::SetSource(cr, Hex(0xE0B020), 0.8);
    cairo_stroke(cr);
    kit::Glow(cr, c, c, r * 0.75, Hex(0xFF3020), 0.9);
    kit::Glow(cr, c, c, r * 0.3, Hex(0xFFE0D0), 1.0);
    kit::AvoidColourKey(p_canvas);
}

// Fire colour by heat: smoke, dark red, orange, yellow, white.
Rgb FireColour(double p_heat)
{
    static const Rgb RAMP[] = {Hex(0x2A2624), Hex(0x5A1808), Hex(0xC8400C), Hex(0xFF9A1E), Hex(0xFFE27A), Hex(0xFFFFF0)};
    const double h = kit::Clamp01(p_heat) * 5.0;
    const int i = std::min(4, int(h));
    return kit::Mix(RAMP[i], RAMP[i + 1], h - i);
}

// One frame of the fireball: it flashes, swells, cools from white through orange to smoke and
// thins away. p_frame counts from 0 to EXPLOSION_FRAMES - 1.
void DrawExplosion(Canvas& p_canvas, int p_frame)
{
    const double t = double(p_frame) / double(EXPLOSION_FRAMES - 1);
    const double size = p_canvas.Width();
    const double centre = size / 2.0;
    const double radius = size * 0.47 * (0.32 + 0.68 * (1.0 - std::pow(1.0 - t, 2.2)));
    const double heatScale = 1.25 - 1.05 * t;
    const double fade = t < 0.5 ? 1.0 : 1.0 - (t - 0.5) / 0.65;
    const kit::PeriodicNoise lumps(32, 4242u);
    const kit::PeriodicNoise wisps(32, 4343u);
    {
        kit::PixelAccess pixels(p_canvas);
        for (int y = 0; y < pixels.Height(); ++y)
            for (int x = 0; x < pixels.Width(); ++x)
            {
                const double dx = (x + 0.5 - centre) / radius;
                const double dy = (y + 0.5 - centre) / radius;
                const double d = std::sqrt(dx * dx + dy * dy);
                if (d > 1.6)
                    continue;
                // The billows grow with the ball and churn a little from frame to frame.
                const double n = 0.55 * lumps.At(dx * 2.2 + 8.0 + t * 0.6, dy * 2.2 + 8.0) +
                                 0.3 * lumps.At(dx * 4.8 + 3.0, dy * 4.8 + 3.0 - t * 0.8) +
                                 0.15 * lumps.At(dx * 9.6 + 1.0, dy * 9.6 + 5.0);
                const double density = kit::SmoothStep(1.0, 0.8, d + 0.42 * n);
                if (density <= 0.0)
                    continue;
                // Late frames burn out from the middle, leaving a ragged ring of smoke.
                const double hollow = t > 0.5 ? kit::SmoothStep(0.0, 0.9, d + 0.5 * wisps.At(dx * 3.0, dy * 3.0) + 1.1 - t * 1.25) : 1.0;
                const double heat = (1.0 - d * 0.85) * heatScale + 0.5 * n;
                const Rgb colour = FireColour(heat);
                const double alpha = density * fade * hollow * (heat > 0.12 ? 1.0 : 0.75);
                pixels.Set(x, y, {colour.r, colour.g, colour.b, alpha});
            }
    }

    cairo_t* cr = p_canvas.Get();
    // The first frames: a white flash and a shock ring.
    if (p_frame <= 1)
        kit::Glow(cr, centre, centre, radius * 0.9, Hex(0xFFFFFF), p_frame == 0 ? 0.9 : 0.5);
    if (p_frame >= 1 && p_frame <= 4)
    {
        const double ring = radius * (1.1 + 0.15 * p_frame);
        cairo_set_line_width(cr, 1.0);
        cairo_arc(cr, centre, centre, std::min(ring, centre - 1.0), 0.0, 2.0 * kit::PI);
        kit::SetSource(cr, Hex(0xFFE8B0), 0.4 * (1.0 - (p_frame - 1) / 4.0));
        cairo_stroke(cr);
    }
    // Sparks and debris thrown outwards, the same ones in every frame.
    Random random(977u);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    for (int i = 0; i < 22; ++i)
    {
        const double angle = random.Uniform(0.0, 2.0 * kit::PI);
        const double speed = random.Uniform(0.45, 1.0);
        const double from = std::min(centre - 1.5, size * 0.08 + size * 0.5 * speed * t);
        const double to = std::min(centre - 1.0, from + size * 0.06 * speed * (1.0 - t * 0.6));
        const double alpha = (1.0 - t) * random.Uniform(0.5, 1.0);
        if (p_frame == 0 || alpha <= 0.05)
            continue;
        cairo_move_to(cr, centre + from * std::cos(angle), centre + from * std::sin(angle));
        cairo_line_to(cr, centre + to * std::cos(angle), centre + to * std::sin(angle));
        cairo_set_line_width(cr, i % 3 == 0 ? 1.4 : 0.9);
        kit::SetSource(cr, i % 3 == 0 ? Hex(0x8A8078) : Hex(0xFFD890), alpha);
        cairo_stroke(cr);
    }
    kit::AvoidColourKey(p_canvas);
}

void ListCombatPictures(const ArtContext&, std::vector<PictureRecipe>& p_pictures)
{
    p_pictures.push_back({"art\\bullet00.bmp", 6, 6, true, DrawBullet});
    p_pictures.push_back({"art\\missile00.bmp", 8, 16, true, DrawMissile});
    p_pictures.push_back({"art\\bomb00.bmp", 16, 16, true, DrawBomb});
    for (int frame = 0; frame < EXPLOSION_FRAMES; ++frame)
    {
        char name[40];
        std::snprintf(name, sizeof(name), "art\\explosion\\exp%02d.bmp", frame);
        p_pictures.push_back({name, EXPLOSION_SIZE, EXPLOSION_SIZE, true,
                              [frame](Canvas& p_canvas) { DrawExplosion(p_canvas, frame); }});
    }
}

const PictureRegistrar s_combat(ListCombatPictures);

} // namespace
} // namespace artgen
