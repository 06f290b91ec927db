#pragma once

// Small helpers shared by the ship, combat, world and part pictures: colours, direct pixel
// access to a canvas, tileable noise and the finishing passes every sprite gets.

#include "Canvas.h"

#include <cstdint>
#include <vector>

namespace artgen::kit
{

constexpr double PI = 3.14159265358979323846;

struct Rgb
{
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
};

Rgb Mix(const Rgb& p_a, const Rgb& p_b, double p_t);
Rgb Scale(const Rgb& p_colour, double p_factor);
// A colour from 0xRRGGBB.
Rgb Hex(uint32_t p_rgb);

double Clamp01(double p_value);
double SmoothStep(double p_edge0, double p_edge1, double p_value);

void SetSource(cairo_t* p_context, const Rgb& p_colour, double p_alpha = 1.0);
void AddStop(cairo_pattern_t* p_pattern, double p_offset, const Rgb& p_colour, double p_alpha = 1.0);
// Sets p_pattern as the source and releases it.
void UsePattern(cairo_t* p_context, cairo_pattern_t* p_pattern);
// A soft round light: p_colour at the centre fading to nothing at p_radius.
void Glow(cairo_t* p_context, double p_x, double p_y, double p_radius, const Rgb& p_colour, double p_alpha);

// Straight (not premultiplied) colour and alpha of one pixel, 0..1.
struct Pixel
{
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
    double a = 0.0;
};

// The canvas's pixels for direct reading and writing; flushes Cairo on construction and marks
// the surface dirty on destruction, so Cairo drawing may follow.
class PixelAccess
{
public:
    explicit PixelAccess(Canvas& p_canvas);
    ~PixelAccess();
    PixelAccess(const PixelAccess&) = delete;
    PixelAccess& operator=(const PixelAccess&) = delete;

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    Pixel Get(int p_x, int p_y) const;
    void Set(int p_x, int p_y, const Pixel& p_pixel);
    // Premultiplied word as Cairo keeps it.
    uint32_t& Word(int p_x, int p_y);

private:
    cairo_surface_t* m_pSurface = nullptr;
    uint8_t* m_pData = nullptr;
    int m_width = 0;
    int m_height = 0;
    int m_stride = 0;
};

// Deterministic hash of integer coordinates and a seed to [0, 1).
double Hash01(int32_t p_x, int32_t p_y, uint32_t p_seed);

// Gradient noise that repeats every p_period lattice cells in x and y, so a picture sampled
// over whole periods joins itself without a seam. Values roughly in [-1, 1].
class PeriodicNoise
{
public:
    PeriodicNoise(int p_period, uint32_t p_seed);
    double At(double p_x, double p_y) const; // in lattice cells

private:
    int m_period;
    std::vector<double> m_gradients; // p_period * p_period unit vectors, x then y
};

// Fractal sum of p_octaves periodic noises over a square of p_size pixels: the first octave has
// p_baseCells lattice cells across the square, each further one twice as many at p_gain times
// the weight. Seamless across the square's edges. Values roughly in [-1, 1].
class TileableFbm
{
public:
    TileableFbm(double p_size, int p_baseCells, int p_octaves, double p_gain, uint32_t p_seed);
    double At(double p_x, double p_y) const; // in pixels

private:
    double m_size;
    int m_baseCells;
    double m_gain;
    double m_norm = 1.0;
    std::vector<PeriodicNoise> m_octaves;
};

// Finishing touches for a sprite with alpha:
// - a thin dark rim around the silhouette, so it reads over bright backgrounds;
// - no opaque pixel left at exactly the transparent key (0, 255, 0).
void OutlineSprite(Canvas& p_canvas, const Rgb& p_rim, double p_strength);
void AvoidColourKey(Canvas& p_canvas);

// Adds p_layer onto p_canvas light by light (additive), for glows and flames.
void AddLight(Canvas& p_canvas, Canvas& p_layer, double p_alpha = 1.0);

} // namespace artgen::kit
