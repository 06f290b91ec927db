#pragma once

// Draws a ship seen from above as a shallow 3-D model, so that one design gives the straight
// frame and every banked frame: points carry a height, the painter rolls them about the ship's
// long axis with a little perspective (the dipping wing shrinks, the rising one grows, the
// canopy slides towards the low side) and shades surfaces from their normals under a fixed
// light, so highlights move as the ship banks. Engine flames and lights go on an additive layer.

#include "ArtKit.h"

#include <vector>

namespace artgen
{

struct Vec3
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

// Whose ship it is decides the family look: flame and light colours, the rim.
enum class Faction
{
    Player,
    Enemy
};

class ShipPainter
{
public:
    // Design coordinates are pixels from the canvas centre, x to the right, y down the screen
    // (the nose at negative y), z towards the viewer. p_roll (radians) > 0 banks to the right.
    ShipPainter(Canvas& p_canvas, Faction p_faction, double p_roll, bool p_longFlame);

    cairo_t* Cr() { return m_canvas.Get(); }
    Canvas& GetCanvas() { return m_canvas; }
    double Roll() const { return m_roll; }
    bool LongFlame() const { return m_longFlame; }
    Faction GetFaction() const { return m_faction; }

    // Shrinks the design by p_scale and moves it by p_shiftY (pixels) on the canvas, so that
    // one drawing can leave room for its flames.
    void SetLayout(double p_scale, double p_shiftY);

    // Mirrors x of every following point, normal and light (1 or -1), for symmetric parts.
    void SetMirror(double p_sign) { m_mirror = p_sign < 0.0 ? -1.0 : 1.0; }
    double Mirror() const { return m_mirror; }

    struct Point2
    {
        double x;
        double y;
    };
    Point2 Project(double p_x, double p_y, double p_z) const;
    // Brightness-lit colour of a surface with this normal (in design space, before mirroring).
    kit::Rgb Lit(const kit::Rgb& p_albedo, Vec3 p_normal, double p_shine) const;

    // Path building in design coordinates.
    void Begin();
    void Move(double p_x, double p_y, double p_z);
    void Line(double p_x, double p_y, double p_z);
    void Curve(double p_x1, double p_y1, double p_x2, double p_y2, double p_x3, double p_y3, double p_z);
    void Close();
    // A closed polygon of (x, y) pairs at height p_z.
    void Poly(const std::vector<Point2>& p_points, double p_z);
    // A closed outline symmetric about x = 0: p_rightHalf runs from the nose (x >= 0) to the
    // tail; the left half is its mirror image. Ignores the mirror setting.
    void SymOutline(const std::vector<Point2>& p_rightHalf, double p_z);
    void Ellipse(double p_x, double p_y, double p_z, double p_halfWidth, double p_halfLength);

    // Fills the current path (and clears it unless p_keep).
    void FillFlat(const kit::Rgb& p_albedo, Vec3 p_normal, double p_shine = 0.35, bool p_keep = false);
    // Rounded like a cylinder running along y: shading across x from p_centreX - p_halfWidth to
    // p_centreX + p_halfWidth; p_bulge (0..0.95) how strongly the sides turn away, p_tiltY tilts
    // the whole surface forward (< 0) or back.
    void FillRound(const kit::Rgb& p_albedo, double p_centreX, double p_halfWidth, double p_y, double p_z,
                   double p_bulge, double p_shine = 0.45, double p_tiltY = 0.0, bool p_keep = false);
    void Stroke(const kit::Rgb& p_colour, double p_width, double p_alpha);
    // A thin dark seam between plates with a faint light edge beside it.
    void PanelLine(const std::vector<Point2>& p_points, double p_z, double p_alpha = 0.45);

    // A ball lit from the painter's light, e.g. a drone's body or a sensor dome.
    void Sphere(double p_x, double p_y, double p_z, double p_radius, const kit::Rgb& p_albedo, double p_shine = 0.5);

    // A glass canopy: an ellipsoid dome with a highlight where it faces the light.
    void Canopy(double p_x, double p_y, double p_z, double p_halfWidth, double p_halfLength, const kit::Rgb& p_glass);

    // Draws a decal in design units about (p_x, p_y, p_z): the context is set to the projection's
    // local linear map there until EndDecal.
    void BeginDecal(double p_x, double p_y, double p_z);
    void EndDecal();

    // An engine nozzle at the tail: drawn now, its flame on the light layer at Finish. The
    // flame points down the screen; p_flameScale stretches it.
    void Engine(double p_x, double p_y, double p_z, double p_radius, double p_flameScale = 1.0);
    // A coloured light (navigation light, sensor eye, weapon tip) on the light layer.
    void Light(double p_x, double p_y, double p_z, double p_radius, const kit::Rgb& p_colour, double p_alpha = 1.0);

    // Scuffs the paint a little so plates do not look like plastic.
    void Weather(double p_amount, uint32_t p_seed);
    // Flames and lights, then the rim and the colour-key guard.
    void Finish();

    // The family colours.
    kit::Rgb FlameOuter() const;
    kit::Rgb FlameInner() const;
    kit::Rgb CanopyGlass() const;

private:
    Vec3 RollVector(const Vec3& p_vector) const;

    struct Nozzle
    {
        double x, y, z, radius, flameScale;
    };
    struct Lamp
    {
        double x, y, z, radius;
        kit::Rgb colour;
        double alpha;
    };

    Canvas& m_canvas;
    Faction m_faction;
    double m_roll;
    bool m_longFlame;
    double m_mirror = 1.0;
    double m_layoutScale = 1.0;
    double m_shiftY = 0.0;
    double m_cos;
    double m_sin;
    double m_centreX;
    double m_centreY;
    double m_distance; // viewer distance for the perspective
    Vec3 m_light;
    Vec3 m_half;
    std::vector<Nozzle> m_nozzles;
    std::vector<Lamp> m_lamps;
};

} // namespace artgen
