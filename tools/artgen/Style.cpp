#include "Style.h"

#include "InterfaceArt.h"
#include "Keying.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace artgen
{

Rgb Mix(const Rgb& p_a, const Rgb& p_b, double p_t)
{
    return {p_a.r + (p_b.r - p_a.r) * p_t, p_a.g + (p_b.g - p_a.g) * p_t, p_a.b + (p_b.b - p_a.b) * p_t};
}

Rgb Shade(const Rgb& p_colour, double p_factor)
{
    auto clamp = [](double p_value) { return std::clamp(p_value, 0.0, 1.0); };
    return {clamp(p_colour.r * p_factor), clamp(p_colour.g * p_factor), clamp(p_colour.b * p_factor)};
}

void SetRgb(cairo_t* p_context, const Rgb& p_colour, double p_alpha)
{
    cairo_set_source_rgba(p_context, p_colour.r, p_colour.g, p_colour.b, p_alpha);
}

void AddStop(cairo_pattern_t* p_pattern, double p_offset, const Rgb& p_colour, double p_alpha)
{
    cairo_pattern_add_color_stop_rgba(p_pattern, p_offset, p_colour.r, p_colour.g, p_colour.b, p_alpha);
}

void SetPattern(cairo_t* p_context, cairo_pattern_t* p_pattern)
{
    cairo_set_source(p_context, p_pattern);
    cairo_pattern_destroy(p_pattern);
}

void SetVertical(cairo_t* p_context, double p_y0, double p_y1, const Rgb& p_top, const Rgb& p_bottom,
                 double p_alpha)
{
    cairo_pattern_t* gradient = cairo_pattern_create_linear(0.0, p_y0, 0.0, p_y1);
    AddStop(gradient, 0.0, p_top, p_alpha);
    AddStop(gradient, 1.0, p_bottom, p_alpha);
    SetPattern(p_context, gradient);
}

void RoundedRectPath(cairo_t* p_context, double p_x, double p_y, double p_width, double p_height,
                     double p_radius)
{
    const double r = std::min({p_radius, p_width / 2.0, p_height / 2.0});
    cairo_new_sub_path(p_context);
    cairo_arc(p_context, p_x + p_width - r, p_y + r, r, -PI_VALUE / 2.0, 0.0);
    cairo_arc(p_context, p_x + p_width - r, p_y + p_height - r, r, 0.0, PI_VALUE / 2.0);
    cairo_arc(p_context, p_x + r, p_y + p_height - r, r, PI_VALUE / 2.0, PI_VALUE);
    cairo_arc(p_context, p_x + r, p_y + r, r, PI_VALUE, 1.5 * PI_VALUE);
    cairo_close_path(p_context);
}

void ChamferRectPath(cairo_t* p_context, double p_x, double p_y, double p_width, double p_height,
                     double p_cut)
{
    const double c = std::min({p_cut, p_width / 2.0, p_height / 2.0});
    cairo_new_sub_path(p_context);
    cairo_move_to(p_context, p_x + c, p_y);
    cairo_line_to(p_context, p_x + p_width - c, p_y);
    cairo_line_to(p_context, p_x + p_width, p_y + c);
    cairo_line_to(p_context, p_x + p_width, p_y + p_height - c);
    cairo_line_to(p_context, p_x + p_width - c, p_y + p_height);
    cairo_line_to(p_context, p_x + c, p_y + p_height);
    cairo_line_to(p_context, p_x, p_y + p_height - c);
    cairo_line_to(p_context, p_x, p_y + c);
    cairo_close_path(p_context);
}

void CirclePath(cairo_t* p_context, double p_x, double p_y, double p_radius)
{
    cairo_new_sub_path(p_context);
    cairo_arc(p_context, p_x, p_y, p_radius, 0.0, 2.0 * PI_VALUE);
    cairo_close_path(p_context);
}

void AddBrushedGrain(cairo_t* p_context, double p_x, double p_y, double p_width, double p_height,
                     uint64_t p_seed, double p_strength)
{
    Random random(p_seed);
    cairo_save(p_context);
    cairo_set_line_width(p_context, 1.0);
    const int lines = int(p_height * 1.5);
    for (int i = 0; i < lines; ++i)
    {
        const double y = std::floor(p_y + random.Uniform(0.0, p_height)) + 0.5;
        const double start = p_x + random.Uniform(-0.3, 0.7) * p_width;
        const double length = random.Uniform(0.2, 0.9) * p_width;
        const bool light = random.Uniform(0.0, 1.0) < 0.5;
        const double alpha = p_strength * random.Uniform(0.3, 1.0);
        cairo_set_source_rgba(p_context, light ? 1.0 : 0.0, light ? 1.0 : 0.0, light ? 1.0 : 0.0, alpha);
        cairo_move_to(p_context, start, y);
        cairo_line_to(p_context, start + length, y);
        cairo_stroke(p_context);
    }
    cairo_restore(p_context);
}

void PaintSoftLayer(Canvas& p_canvas, int p_radius, double p_alpha,
                    const std::function<void(cairo_t*)>& p_shapes)
{
    Canvas layer(p_canvas.Width(), p_canvas.Height());
    if (!layer.IsValid())
        return;
    p_shapes(layer.Get());
    layer.Blur(p_radius);
    cairo_t* cr = p_canvas.Get();
    cairo_save(cr);
    cairo_set_source_surface(cr, layer.Surface(), 0.0, 0.0);
    cairo_paint_with_alpha(cr, p_alpha);
    cairo_restore(cr);
}

void PaintStars(cairo_t* p_context, double p_x, double p_y, double p_width, double p_height,
                uint64_t p_seed, int p_count, double p_brightness)
{
    Random random(p_seed);
    for (int i = 0; i < p_count; ++i)
    {
        const double x = p_x + random.Uniform(0.0, p_width);
        const double y = p_y + random.Uniform(0.0, p_height);
        const double size = random.Uniform(0.0, 1.0);
        const double light = random.Uniform(0.0, 1.0);
        const double tint = random.Uniform(-1.0, 1.0);
        const double alpha = std::min(1.0, p_brightness * (0.08 + 0.75 * light * light * light));
        const double radius = 0.4 + 0.8 * size * size * size;
        cairo_set_source_rgba(p_context, 0.85 + 0.12 * tint, 0.9, 0.98 - 0.12 * tint, alpha);
        CirclePath(p_context, x, y, radius);
        cairo_fill(p_context);
        // The brightest few get a soft halo.
        if (light > 0.985)
        {
            cairo_pattern_t* halo = cairo_pattern_create_radial(x, y, 0.0, x, y, radius * 6.0);
            cairo_pattern_add_color_stop_rgba(halo, 0.0, 0.8, 0.88, 1.0, 0.35 * p_brightness);
            cairo_pattern_add_color_stop_rgba(halo, 1.0, 0.8, 0.88, 1.0, 0.0);
            SetPattern(p_context, halo);
            CirclePath(p_context, x, y, radius * 6.0);
            cairo_fill(p_context);
        }
    }
}

void PaintNebula(cairo_t* p_context, double p_x, double p_y, double p_spreadX, double p_spreadY,
                 const Rgb& p_colour, double p_alpha, int p_blobs, uint64_t p_seed)
{
    Random random(p_seed);
    for (int i = 0; i < p_blobs; ++i)
    {
        const double x = p_x + random.Uniform(-0.5, 0.5) * p_spreadX;
        const double y = p_y + random.Uniform(-0.5, 0.5) * p_spreadY;
        const double radius = random.Uniform(0.15, 0.45) * std::max(p_spreadX, p_spreadY);
        const double alpha = p_alpha * random.Uniform(0.4, 1.0);
        const Rgb colour = Mix(p_colour, palette::WHITE, random.Uniform(0.0, 0.15));
        cairo_pattern_t* blob = cairo_pattern_create_radial(x, y, 0.0, x, y, radius);
        AddStop(blob, 0.0, colour, alpha);
        AddStop(blob, 0.5, colour, alpha * 0.4);
        AddStop(blob, 1.0, colour, 0.0);
        SetPattern(p_context, blob);
        CirclePath(p_context, x, y, radius);
        cairo_fill(p_context);
    }
}

void ShadePixels(Canvas& p_canvas, int p_samples, const std::function<Rgba(double, double)>& p_shader)
{
    if (!p_canvas.IsValid() || p_samples < 1)
        return;
    cairo_surface_t* surface = p_canvas.Surface();
    cairo_surface_flush(surface);
    uint8_t* data = cairo_image_surface_get_data(surface);
    const size_t stride = size_t(cairo_image_surface_get_stride(surface));
    const double step = 1.0 / p_samples;
    const double weight = 1.0 / (p_samples * p_samples);
    auto toByte = [](double p_value) { return uint32_t(std::lround(std::clamp(p_value, 0.0, 1.0) * 255.0)); };
    for (int y = 0; y < p_canvas.Height(); ++y)
    {
        uint8_t* row = data + size_t(y) * stride;
        for (int x = 0; x < p_canvas.Width(); ++x)
        {
            double red = 0.0;
            double green = 0.0;
            double blue = 0.0;
            double alpha = 0.0;
            for (int sy = 0; sy < p_samples; ++sy)
            {
                for (int sx = 0; sx < p_samples; ++sx)
                {
                    const Rgba sample = p_shader(x + (sx + 0.5) * step, y + (sy + 0.5) * step);
                    const double a = std::clamp(sample.a, 0.0, 1.0);
                    red += sample.r * a;
                    green += sample.g * a;
                    blue += sample.b * a;
                    alpha += a;
                }
            }
            const uint32_t a = toByte(alpha * weight);
            // Premultiplied: no colour may exceed the alpha.
            const uint32_t r = std::min(a, toByte(red * weight));
            const uint32_t g = std::min(a, toByte(green * weight));
            const uint32_t b = std::min(a, toByte(blue * weight));
            const uint32_t word = (a << 24) | (r << 16) | (g << 8) | b;
            std::memcpy(row + size_t(x) * 4, &word, 4);
        }
    }
    cairo_surface_mark_dirty(surface);
}

void KeyToGreen(Canvas& p_canvas, double p_threshold)
{
    if (!p_canvas.IsValid())
        return;
    cairo_surface_t* surface = p_canvas.Surface();
    cairo_surface_flush(surface);
    uint8_t* data = cairo_image_surface_get_data(surface);
    const size_t stride = size_t(cairo_image_surface_get_stride(surface));
    const uint32_t limit = uint32_t(std::lround(std::clamp(p_threshold, 0.0, 1.0) * 255.0));
    for (int y = 0; y < p_canvas.Height(); ++y)
    {
        uint8_t* row = data + size_t(y) * stride;
        for (int x = 0; x < p_canvas.Width(); ++x)
        {
            uint32_t word = 0;
            std::memcpy(&word, row + size_t(x) * 4, 4);
            word = KeyPixel(word, limit);
            std::memcpy(row + size_t(x) * 4, &word, 4);
        }
    }
    cairo_surface_mark_dirty(surface);
}

void SetInterfaceFont(cairo_t* p_context, double p_size, bool p_bold)
{
    cairo_select_font_face(p_context, "Liberation Sans", CAIRO_FONT_SLANT_NORMAL,
                           p_bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(p_context, p_size);
}

void FillCentredText(cairo_t* p_context, const std::string& p_text, double p_x, double p_baseline,
                     double p_tracking)
{
    cairo_new_path(p_context);
    CentredTextPath(p_context, p_text, p_x, p_baseline, p_tracking);
    cairo_fill(p_context);
}

void AddInterfacePicture(std::vector<PictureRecipe>& p_pictures, const char* p_gameName,
                         std::function<void(Canvas&)> p_draw)
{
    const InterfacePicture* picture = FindInterfacePicture(p_gameName);
    if (picture == nullptr)
    {
        std::fprintf(stderr, "korvath-artgen: %s has no size in InterfaceArt.h\n", p_gameName);
        return;
    }
    p_pictures.push_back({p_gameName, picture->width, picture->height, picture->alpha, std::move(p_draw)});
}

} // namespace artgen
