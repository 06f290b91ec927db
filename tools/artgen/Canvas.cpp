#include "Canvas.h"

#include "PixelConvert.h"
#include "platform/BitmapFile.h"
#include "platform/PngFile.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

namespace artgen
{

namespace
{

// One box-blur pass along a line of p_count pixels p_step bytes apart, all four channels
// alike (premultiplied colour blurs correctly channel by channel). Outside the line is
// transparent, so glows fade out at the edges rather than smear.
void BoxBlurLine(uint8_t* p_line, size_t p_count, size_t p_step, int p_radius,
                 std::vector<uint32_t>& p_scratch)
{
    p_scratch.resize(p_count * 4);
    for (size_t i = 0; i < p_count; ++i)
        for (size_t c = 0; c < 4; ++c)
            p_scratch[i * 4 + c] = p_line[i * p_step + c];

    const size_t radius = size_t(p_radius);
    const uint32_t window = uint32_t(2 * radius + 1);
    uint32_t sum[4] = {0, 0, 0, 0};
    for (size_t i = 0; i < std::min(radius, p_count); ++i)
        for (size_t c = 0; c < 4; ++c)
            sum[c] += p_scratch[i * 4 + c];
    for (size_t i = 0; i < p_count; ++i)
    {
        const size_t enter = i + radius;
        if (enter < p_count)
            for (size_t c = 0; c < 4; ++c)
                sum[c] += p_scratch[enter * 4 + c];
        for (size_t c = 0; c < 4; ++c)
            p_line[i * p_step + c] = uint8_t((sum[c] + window / 2) / window);
        if (i >= radius)
            for (size_t c = 0; c < 4; ++c)
                sum[c] -= p_scratch[(i - radius) * 4 + c];
    }
}

// The byte length of the UTF-8 character starting at p_text[p_at]; malformed input is taken a
// byte at a time so that nothing reads past the end.
size_t Utf8Length(const std::string& p_text, size_t p_at)
{
    size_t length = 1;
    while (p_at + length < p_text.size() && (uint8_t(p_text[p_at + length]) & 0xC0u) == 0x80u)
        ++length;
    return length;
}

// Ink extent of tracked text set from pen position 0.
void MeasureTracked(cairo_t* p_context, const std::string& p_text, double p_tracking,
                    double& p_left, double& p_right)
{
    p_left = 0.0;
    p_right = 0.0;
    bool any = false;
    double pen = 0.0;
    for (size_t at = 0; at < p_text.size();)
    {
        const size_t length = Utf8Length(p_text, at);
        const std::string glyph = p_text.substr(at, length);
        at += length;
        cairo_text_extents_t extents;
        cairo_text_extents(p_context, glyph.c_str(), &extents);
        if (extents.width > 0.0)
        {
            const double left = pen + extents.x_bearing;
            const double right = left + extents.width;
            p_left = any ? std::min(p_left, left) : left;
            p_right = any ? std::max(p_right, right) : right;
            any = true;
        }
        pen += extents.x_advance + p_tracking;
    }
}

} // namespace

Canvas::Canvas(int p_width, int p_height)
{
    if (p_width <= 0 || p_height <= 0)
        return;
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, p_width, p_height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
    {
        cairo_surface_destroy(surface);
        return;
    }
    m_pSurface = surface;
    m_pContext = cairo_create(m_pSurface);
    m_width = p_width;
    m_height = p_height;
}

Canvas::~Canvas()
{
    if (m_pContext != nullptr)
        cairo_destroy(m_pContext);
    if (m_pSurface != nullptr)
        cairo_surface_destroy(m_pSurface);
}

bool Canvas::IsValid() const
{
    return m_pSurface != nullptr && m_pContext != nullptr;
}

bool Canvas::IsHealthy() const
{
    return IsValid() && cairo_status(m_pContext) == CAIRO_STATUS_SUCCESS &&
           cairo_surface_status(m_pSurface) == CAIRO_STATUS_SUCCESS;
}

void Canvas::Blur(int p_radius)
{
    if (!IsValid() || p_radius <= 0)
        return;
    cairo_surface_flush(m_pSurface);
    uint8_t* data = cairo_image_surface_get_data(m_pSurface);
    const size_t stride = size_t(cairo_image_surface_get_stride(m_pSurface));
    const size_t width = size_t(m_width);
    const size_t height = size_t(m_height);
    std::vector<uint32_t> scratch;
    try
    {
        scratch.reserve(std::max(width, height) * 4);
    }
    catch (const std::bad_alloc&)
    {
        return;
    }
    // Three box passes come close enough to a Gaussian for soft light.
    for (int pass = 0; pass < 3; ++pass)
    {
        for (size_t y = 0; y < height; ++y)
            BoxBlurLine(data + y * stride, width, 4, p_radius, scratch);
        for (size_t x = 0; x < width; ++x)
            BoxBlurLine(data + x * 4, height, stride, p_radius, scratch);
    }
    cairo_surface_mark_dirty(m_pSurface);
}

bool Canvas::SaveBitmap(const std::string& p_path, bool p_alpha)
{
    if (!IsHealthy())
        return false;
    cairo_surface_flush(m_pSurface);
    std::vector<uint8_t> rgba;
    if (!ArgbToRgba(cairo_image_surface_get_data(m_pSurface),
                    size_t(cairo_image_surface_get_stride(m_pSurface)), m_width, m_height,
                    p_alpha, rgba))
        return false;
    return platform::WriteBitmapFile(p_path, m_width, m_height, rgba, p_alpha);
}

bool Canvas::SavePng(const std::string& p_path)
{
    if (!IsHealthy())
        return false;
    cairo_surface_flush(m_pSurface);
    std::vector<uint8_t> rgba;
    if (!ArgbToRgba(cairo_image_surface_get_data(m_pSurface),
                    size_t(cairo_image_surface_get_stride(m_pSurface)), m_width, m_height,
                    true, rgba))
        return false;
    return platform::WritePng(p_path, m_width, m_height, rgba);
}

uint64_t Random::Next()
{
    // splitmix64
    m_state += 0x9E3779B97F4A7C15ull;
    uint64_t z = m_state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

double Random::Uniform(double p_low, double p_high)
{
    const double unit = double(Next() >> 11) * (1.0 / 9007199254740992.0); // 2^-53
    return p_low + (p_high - p_low) * unit;
}

double TrackedTextWidth(cairo_t* p_context, const std::string& p_text, double p_tracking)
{
    double left = 0.0;
    double right = 0.0;
    MeasureTracked(p_context, p_text, p_tracking, left, right);
    return right - left;
}

double CentredTextPath(cairo_t* p_context, const std::string& p_text, double p_centreX,
                       double p_baseline, double p_tracking)
{
    double left = 0.0;
    double right = 0.0;
    MeasureTracked(p_context, p_text, p_tracking, left, right);
    double pen = p_centreX - (left + right) / 2.0;
    for (size_t at = 0; at < p_text.size();)
    {
        const size_t length = Utf8Length(p_text, at);
        const std::string glyph = p_text.substr(at, length);
        at += length;
        cairo_text_extents_t extents;
        cairo_text_extents(p_context, glyph.c_str(), &extents);
        cairo_move_to(p_context, pen, p_baseline);
        cairo_text_path(p_context, glyph.c_str());
        pen += extents.x_advance + p_tracking;
    }
    return right - left;
}

} // namespace artgen
