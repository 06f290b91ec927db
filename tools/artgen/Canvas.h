#pragma once

#include <cairo.h>

#include <cstdint>
#include <string>

namespace artgen
{

// One picture being drawn: an ARGB32 Cairo image surface and its drawing context, cleared to
// transparent black. Pictures are drawn with Cairo on Get() and saved as a game bitmap (and a
// PNG to look at).
class Canvas
{
public:
    Canvas(int p_width, int p_height);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // False when Cairo could not make the surface (size out of range, no memory); drawing on
    // an invalid canvas does nothing and saving fails.
    bool IsValid() const;
    // False once any drawing call has failed (a missing font, no memory, a bad matrix).
    bool IsHealthy() const;

    cairo_t* Get() { return m_pContext; }
    cairo_surface_t* Surface() { return m_pSurface; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }

    // Softens the whole canvas (three box blurs, close to a Gaussian of about p_radius); for
    // glow layers drawn on a canvas of their own and painted over the picture.
    void Blur(int p_radius);

    // p_alpha true writes a 32-bit bitmap with straight alpha; false a 24-bit one with the
    // picture composited over black.
    bool SaveBitmap(const std::string& p_path, bool p_alpha);
    bool SavePng(const std::string& p_path);

private:
    int m_width = 0;
    int m_height = 0;
    cairo_surface_t* m_pSurface = nullptr;
    cairo_t* m_pContext = nullptr;
};

// A small fixed-seed generator so that every build draws the same stars and scratches; the
// standard distributions are not guaranteed to give the same numbers everywhere.
class Random
{
public:
    explicit Random(uint64_t p_seed) : m_state(p_seed) {}
    uint64_t Next();
    // Uniform in [p_low, p_high).
    double Uniform(double p_low, double p_high);

private:
    uint64_t m_state;
};

// Letter-spaced text: adds p_tracking between the characters of p_text (UTF-8) and appends
// the outline to the current path, its ink centred on p_centreX with its baseline at
// p_baseline. Uses the current font face and size. Returns the ink width.
double CentredTextPath(cairo_t* p_context, const std::string& p_text, double p_centreX,
                       double p_baseline, double p_tracking);

// Width of the ink of p_text set with p_tracking in the current font, without drawing.
double TrackedTextWidth(cairo_t* p_context, const std::string& p_text, double p_tracking);

} // namespace artgen
