#include "ArtKit.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace artgen::kit
{

Rgb Mix(const Rgb& p_a, const Rgb& p_b, double p_t)
{
    return {p_a.r + (p_b.r - p_a.r) * p_t, p_a.g + (p_b.g - p_a.g) * p_t, p_a.b + (p_b.b - p_a.b) * p_t};
}

Rgb Scale(const Rgb& p_colour, double p_factor)
{
    return {p_colour.r * p_factor, p_colour.g * p_factor, p_colour.b * p_factor};
}

Rgb Hex(uint32_t p_rgb)
{
    return {double((p_rgb >> 16) & 0xFFu) / 255.0, double((p_rgb >> 8) & 0xFFu) / 255.0,
            double(p_rgb & 0xFFu) / 255.0};
}

double Clamp01(double p_value)
{
    return p_value < 0.0 ? 0.0 : (p_value > 1.0 ? 1.0 : p_value);
}

double SmoothStep(double p_edge0, double p_edge1, double p_value)
{
    const double t = Clamp01((p_value - p_edge0) / (p_edge1 - p_edge0));
    return t * t * (3.0 - 2.0 * t);
}

void SetSource(cairo_t* p_context, const Rgb& p_colour, double p_alpha)
{
    cairo_set_source_rgba(p_context, Clamp01(p_colour.r), Clamp01(p_colour.g), Clamp01(p_colour.b), p_alpha);
}

void AddStop(cairo_pattern_t* p_pattern, double p_offset, const Rgb& p_colour, double p_alpha)
{
    cairo_pattern_add_color_stop_rgba(p_pattern, p_offset, Clamp01(p_colour.r), Clamp01(p_colour.g),
                                      Clamp01(p_colour.b), Clamp01(p_alpha));
}

void UsePattern(cairo_t* p_context, cairo_pattern_t* p_pattern)
{
    cairo_set_source(p_context, p_pattern);
    cairo_pattern_destroy(p_pattern);
}

void Glow(cairo_t* p_context, double p_x, double p_y, double p_radius, const Rgb& p_colour, double p_alpha)
{
    if (p_radius <= 0.0)
        return;
    cairo_pattern_t* glow = cairo_pattern_create_radial(p_x, p_y, 0.0, p_x, p_y, p_radius);
    AddStop(glow, 0.0, p_colour, p_alpha);
    AddStop(glow, 0.35, p_colour, p_alpha * 0.45);
    AddStop(glow, 1.0, p_colour, 0.0);
    UsePattern(p_context, glow);
    cairo_new_path(p_context);
    cairo_arc(p_context, p_x, p_y, p_radius, 0.0, 2.0 * PI);
    cairo_fill(p_context);
}

PixelAccess::PixelAccess(Canvas& p_canvas)
{
    if (!p_canvas.IsValid())
        return;
    m_pSurface = p_canvas.Surface();
    cairo_surface_flush(m_pSurface);
    m_pData = cairo_image_surface_get_data(m_pSurface);
    m_width = p_canvas.Width();
    m_height = p_canvas.Height();
    m_stride = cairo_image_surface_get_stride(m_pSurface);
    if (m_pData == nullptr)
        m_width = m_height = 0;
}

PixelAccess::~PixelAccess()
{
    if (m_pSurface != nullptr)
        cairo_surface_mark_dirty(m_pSurface);
}

uint32_t& PixelAccess::Word(int p_x, int p_y)
{
    return *reinterpret_cast<uint32_t*>(m_pData + size_t(p_y) * size_t(m_stride) + size_t(p_x) * 4);
}

Pixel PixelAccess::Get(int p_x, int p_y) const
{
    uint32_t word = 0;
    std::memcpy(&word, m_pData + size_t(p_y) * size_t(m_stride) + size_t(p_x) * 4, 4);
    Pixel pixel;
    const double alpha = double(word >> 24) / 255.0;
    pixel.a = alpha;
    if (alpha > 0.0)
    {
        pixel.r = double((word >> 16) & 0xFFu) / 255.0 / alpha;
        pixel.g = double((word >> 8) & 0xFFu) / 255.0 / alpha;
        pixel.b = double(word & 0xFFu) / 255.0 / alpha;
    }
    return pixel;
}

void PixelAccess::Set(int p_x, int p_y, const Pixel& p_pixel)
{
    const double alpha = Clamp01(p_pixel.a);
    const auto channel = [alpha](double p_value) {
        return uint32_t(std::lround(Clamp01(p_value) * alpha * 255.0));
    };
    const uint32_t word = (uint32_t(std::lround(alpha * 255.0)) << 24) | (channel(p_pixel.r) << 16) |
                          (channel(p_pixel.g) << 8) | channel(p_pixel.b);
    std::memcpy(m_pData + size_t(p_y) * size_t(m_stride) + size_t(p_x) * 4, &word, 4);
}

double Hash01(int32_t p_x, int32_t p_y, uint32_t p_seed)
{
    uint32_t h = uint32_t(p_x) * 0x8DA6B343u ^ uint32_t(p_y) * 0xD8163841u ^ p_seed * 0xCB1AB31Fu;
    h ^= h >> 15;
    h *= 0x2C1B3C6Du;
    h ^= h >> 12;
    h *= 0x297A2D39u;
    h ^= h >> 15;
    return double(h >> 8) / 16777216.0;
}

PeriodicNoise::PeriodicNoise(int p_period, uint32_t p_seed) : m_period(std::max(1, p_period))
{
    m_gradients.resize(size_t(m_period) * size_t(m_period) * 2);
    for (int y = 0; y < m_period; ++y)
        for (int x = 0; x < m_period; ++x)
        {
            const double angle = 2.0 * PI * Hash01(x, y, p_seed);
            const size_t at = (size_t(y) * size_t(m_period) + size_t(x)) * 2;
            m_gradients[at] = std::cos(angle);
            m_gradients[at + 1] = std::sin(angle);
        }
}

double PeriodicNoise::At(double p_x, double p_y) const
{
    const double fx = std::floor(p_x);
    const double fy = std::floor(p_y);
    const double tx = p_x - fx;
    const double ty = p_y - fy;
    const auto wrap = [this](double p_cell) {
        int cell = int(std::fmod(p_cell, double(m_period)));
        return cell < 0 ? cell + m_period : cell;
    };
    const int x0 = wrap(fx);
    const int y0 = wrap(fy);
    const int x1 = (x0 + 1) % m_period;
    const int y1 = (y0 + 1) % m_period;
    const auto dot = [this](int p_cx, int p_cy, double p_dx, double p_dy) {
        const size_t at = (size_t(p_cy) * size_t(m_period) + size_t(p_cx)) * 2;
        return m_gradients[at] * p_dx + m_gradients[at + 1] * p_dy;
    };
    const double n00 = dot(x0, y0, tx, ty);
    const double n10 = dot(x1, y0, tx - 1.0, ty);
    const double n01 = dot(x0, y1, tx, ty - 1.0);
    const double n11 = dot(x1, y1, tx - 1.0, ty - 1.0);
    const double sx = tx * tx * tx * (tx * (tx * 6.0 - 15.0) + 10.0);
    const double sy = ty * ty * ty * (ty * (ty * 6.0 - 15.0) + 10.0);
    const double top = n00 + (n10 - n00) * sx;
    const double bottom = n01 + (n11 - n01) * sx;
    return (top + (bottom - top) * sy) * 1.41421356;
}

TileableFbm::TileableFbm(double p_size, int p_baseCells, int p_octaves, double p_gain, uint32_t p_seed)
    : m_size(p_size), m_baseCells(std::max(1, p_baseCells)), m_gain(p_gain)
{
    double weight = 1.0;
    double total = 0.0;
    for (int octave = 0; octave < p_octaves; ++octave)
    {
        m_octaves.emplace_back(m_baseCells << octave, p_seed + uint32_t(octave) * 7919u);
        total += weight;
        weight *= m_gain;
    }
    m_norm = total > 0.0 ? 1.0 / total : 1.0;
}

double TileableFbm::At(double p_x, double p_y) const
{
    double sum = 0.0;
    double weight = 1.0;
    double cells = double(m_baseCells) / m_size;
    for (const PeriodicNoise& octave : m_octaves)
    {
        sum += weight * octave.At(p_x * cells, p_y * cells);
        weight *= m_gain;
        cells *= 2.0;
    }
    return sum * m_norm;
}

void OutlineSprite(Canvas& p_canvas, const Rgb& p_rim, double p_strength)
{
    PixelAccess pixels(p_canvas);
    const int width = pixels.Width();
    const int height = pixels.Height();
    std::vector<double> alpha(size_t(width) * size_t(height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            alpha[size_t(y) * size_t(width) + size_t(x)] = double(pixels.Word(x, y) >> 24) / 255.0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
        {
            const double own = alpha[size_t(y) * size_t(width) + size_t(x)];
            if (own >= 0.99)
                continue;
            double neighbour = 0.0;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                {
                    const int nx = x + dx;
                    const int ny = y + dy;
                    if (nx >= 0 && ny >= 0 && nx < width && ny < height)
                        neighbour = std::max(neighbour, alpha[size_t(ny) * size_t(width) + size_t(nx)]);
                }
            const double rim = neighbour * p_strength;
            if (rim <= own)
                continue;
            // The rim goes under what is there: the pixel's own colour stays on top.
            const Pixel top = pixels.Get(x, y);
            Pixel out;
            out.a = own + rim * (1.0 - own);
            const double under = rim * (1.0 - own);
            out.r = (top.r * own + p_rim.r * under) / out.a;
            out.g = (top.g * own + p_rim.g * under) / out.a;
            out.b = (top.b * own + p_rim.b * under) / out.a;
            pixels.Set(x, y, out);
        }
}

void AvoidColourKey(Canvas& p_canvas)
{
    PixelAccess pixels(p_canvas);
    for (int y = 0; y < pixels.Height(); ++y)
        for (int x = 0; x < pixels.Width(); ++x)
        {
            uint32_t& word = pixels.Word(x, y);
            if (word == 0xFF00FF00u)
                word = 0xFF00FE00u;
        }
}

void AddLight(Canvas& p_canvas, Canvas& p_layer, double p_alpha)
{
    cairo_t* cr = p_canvas.Get();
    cairo_save(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_ADD);
    cairo_set_source_surface(cr, p_layer.Surface(), 0.0, 0.0);
    cairo_paint_with_alpha(cr, p_alpha);
    cairo_restore(cr);
}

} // namespace artgen::kit
