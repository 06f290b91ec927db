#pragma once

// The interface's look: one palette (dark navy, cool steel, amber as the single accent) and the
// drawing helpers every interface picture is made with.

#include "Canvas.h"
#include "Pictures.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace artgen
{

struct Rgb
{
    double r;
    double g;
    double b;
};

constexpr double PI_VALUE = 3.14159265358979323846;

namespace palette
{
constexpr Rgb SPACE_BLACK = {0.012, 0.016, 0.03};
constexpr Rgb NAVY_DEEP = {0.035, 0.05, 0.09};
constexpr Rgb NAVY = {0.07, 0.1, 0.17};
constexpr Rgb NAVY_LIGHT = {0.13, 0.18, 0.28};
constexpr Rgb STEEL_SHADOW = {0.2, 0.23, 0.28};
constexpr Rgb STEEL_DARK = {0.36, 0.4, 0.46};
constexpr Rgb STEEL = {0.58, 0.62, 0.68};
constexpr Rgb STEEL_LIGHT = {0.78, 0.81, 0.86};
constexpr Rgb STEEL_HIGHLIGHT = {0.93, 0.95, 0.98};
constexpr Rgb AMBER_DARK = {0.6, 0.3, 0.04};
constexpr Rgb AMBER = {1.0, 0.62, 0.16};
constexpr Rgb AMBER_LIGHT = {1.0, 0.82, 0.5};
constexpr Rgb ICE = {0.62, 0.8, 1.0}; // cool light for glass and holograms
constexpr Rgb WHITE = {1.0, 1.0, 1.0};
} // namespace palette

// Linear blend: p_t = 0 gives p_a, 1 gives p_b.
Rgb Mix(const Rgb& p_a, const Rgb& p_b, double p_t);
// Each channel times p_factor, clamped to 0..1.
Rgb Shade(const Rgb& p_colour, double p_factor);

void SetRgb(cairo_t* p_context, const Rgb& p_colour, double p_alpha = 1.0);
void AddStop(cairo_pattern_t* p_pattern, double p_offset, const Rgb& p_colour, double p_alpha = 1.0);
// Makes p_pattern the source and releases it.
void SetPattern(cairo_t* p_context, cairo_pattern_t* p_pattern);
// A vertical gradient from p_top (at p_y0) to p_bottom (at p_y1) as the source.
void SetVertical(cairo_t* p_context, double p_y0, double p_y1, const Rgb& p_top, const Rgb& p_bottom,
                 double p_alpha = 1.0);

void RoundedRectPath(cairo_t* p_context, double p_x, double p_y, double p_width, double p_height,
                     double p_radius);
// A rectangle with its four corners cut off at 45 degrees by p_cut.
void ChamferRectPath(cairo_t* p_context, double p_x, double p_y, double p_width, double p_height,
                     double p_cut);
void CirclePath(cairo_t* p_context, double p_x, double p_y, double p_radius);

// Brushed metal: faint horizontal streaks of light and dark over the current clip.
void AddBrushedGrain(cairo_t* p_context, double p_x, double p_y, double p_width, double p_height,
                     uint64_t p_seed, double p_strength);

// Draws p_shapes on a layer of their own, softens it by p_radius and lays it over the canvas
// with p_alpha: glows and soft shadows.
void PaintSoftLayer(Canvas& p_canvas, int p_radius, double p_alpha,
                    const std::function<void(cairo_t*)>& p_shapes);

// Stars on dark space: p_count of them, most faint, a few bright, a slight tint either way.
void PaintStars(cairo_t* p_context, double p_x, double p_y, double p_width, double p_height,
                uint64_t p_seed, int p_count, double p_brightness);

// A cloud of soft light: p_blobs overlapping radial glows in p_colour around (p_x, p_y),
// spread over p_spreadX x p_spreadY.
void PaintNebula(cairo_t* p_context, double p_x, double p_y, double p_spreadX, double p_spreadY,
                 const Rgb& p_colour, double p_alpha, int p_blobs, uint64_t p_seed);

// A colour with straight (not premultiplied) alpha, all 0..1.
struct Rgba
{
    double r;
    double g;
    double b;
    double a;
};

// Replaces every pixel of the canvas with p_shader's colour at that point, averaged over
// p_samples x p_samples points inside the pixel (smooth edges). For pictures easier to say
// pixel by pixel than as paths: bevels that must match exactly across pieces, glass, fields.
void ShadePixels(Canvas& p_canvas, int p_samples, const std::function<Rgba(double, double)>& p_shader);

// For pictures the game draws alpha-tested: every pixel at least p_threshold opaque becomes
// fully opaque (its own colour), every other one pure green (0, 255, 0), the colour key. A hard
// edge without the green fringe that drawing onto green would leave. Save the canvas as 24-bit.
void KeyToGreen(Canvas& p_canvas, double p_threshold = 0.5);

// Text in the interface's typeface (Liberation Sans), centred on p_x with its baseline at
// p_baseline, letter-spaced by p_tracking, filled with the current source.
void SetInterfaceFont(cairo_t* p_context, double p_size, bool p_bold);
void FillCentredText(cairo_t* p_context, const std::string& p_text, double p_x, double p_baseline,
                     double p_tracking);

// Adds one of the interface pictures of InterfaceArt.h, at the size and depth listed there.
void AddInterfacePicture(std::vector<PictureRecipe>& p_pictures, const char* p_gameName,
                         std::function<void(Canvas&)> p_draw);

} // namespace artgen
