#include "ShipPainter.h"

#include <algorithm>
#include <cmath>

namespace artgen
{

using kit::Rgb;

namespace
{

Vec3 Normalise(const Vec3& p_vector)
{
    const double length = std::sqrt(p_vector.x * p_vector.x + p_vector.y * p_vector.y + p_vector.z * p_vector.z);
    if (length <= 0.0)
        return {0.0, 0.0, 1.0};
    return {p_vector.x / length, p_vector.y / length, p_vector.z / length};
}

double Dot(const Vec3& p_a, const Vec3& p_b)
{
    return p_a.x * p_b.x + p_a.y * p_b.y + p_a.z * p_b.z;
}

// Light and shade of the painted metal.
constexpr double AMBIENT = 0.42;
constexpr double DIFFUSE = 0.72;
constexpr double SPECULAR_POWER = 22.0;

} // namespace

ShipPainter::ShipPainter(Canvas& p_canvas, Faction p_faction, double p_roll, bool p_longFlame)
    : m_canvas(p_canvas), m_faction(p_faction), m_roll(p_roll), m_longFlame(p_longFlame)
{
    m_cos = std::cos(p_roll);
    m_sin = std::sin(p_roll);
    m_centreX = p_canvas.Width() / 2.0;
    m_centreY = p_canvas.Height() / 2.0;
    // Close enough that a 40 degree bank visibly shrinks the low wing, far enough that the
    // rising one stays inside the picture.
    m_distance = 3.2 * std::max(p_canvas.Width(), p_canvas.Height()) / 2.0;
    // From the upper left, in front of the ship and above it.
    m_light = Normalise({-0.42, -0.36, 0.83});
    m_half = Normalise({m_light.x, m_light.y, m_light.z + 1.0});
    cairo_set_line_join(Cr(), CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(Cr(), CAIRO_LINE_CAP_ROUND);
}

void ShipPainter::SetLayout(double p_scale, double p_shiftY)
{
    m_layoutScale = p_scale > 0.0 ? p_scale : 1.0;
    m_shiftY = p_shiftY;
}

Vec3 ShipPainter::RollVector(const Vec3& p_vector) const
{
    return {p_vector.x * m_cos + p_vector.z * m_sin, p_vector.y, -p_vector.x * m_sin + p_vector.z * m_cos};
}

ShipPainter::Point2 ShipPainter::Project(double p_x, double p_y, double p_z) const
{
    const Vec3 rolled = RollVector({p_x * m_mirror * m_layoutScale, p_y * m_layoutScale, p_z * m_layoutScale});
    const double scale = m_distance / (m_distance - rolled.z);
    return {m_centreX + rolled.x * scale, m_centreY + m_shiftY + rolled.y * scale};
}

Rgb ShipPainter::Lit(const Rgb& p_albedo, Vec3 p_normal, double p_shine) const
{
    p_normal.x *= m_mirror;
    const Vec3 normal = RollVector(Normalise(p_normal));
    const double diffuse = std::max(0.0, Dot(normal, m_light));
    const double specular = std::pow(std::max(0.0, Dot(normal, m_half)), SPECULAR_POWER) * p_shine;
    const double light = AMBIENT + DIFFUSE * diffuse;
    return {p_albedo.r * light + specular, p_albedo.g * light + specular, p_albedo.b * light + specular};
}

void ShipPainter::Begin()
{
    cairo_new_path(Cr());
}

void ShipPainter::Move(double p_x, double p_y, double p_z)
{
    const Point2 point = Project(p_x, p_y, p_z);
    cairo_move_to(Cr(), point.x, point.y);
}

void ShipPainter::Line(double p_x, double p_y, double p_z)
{
    const Point2 point = Project(p_x, p_y, p_z);
    cairo_line_to(Cr(), point.x, point.y);
}

void ShipPainter::Curve(double p_x1, double p_y1, double p_x2, double p_y2, double p_x3, double p_y3, double p_z)
{
    const Point2 a = Project(p_x1, p_y1, p_z);
    const Point2 b = Project(p_x2, p_y2, p_z);
    const Point2 c = Project(p_x3, p_y3, p_z);
    cairo_curve_to(Cr(), a.x, a.y, b.x, b.y, c.x, c.y);
}

void ShipPainter::Close()
{
    cairo_close_path(Cr());
}

void ShipPainter::Poly(const std::vector<Point2>& p_points, double p_z)
{
    for (size_t i = 0; i < p_points.size(); ++i)
    {
        if (i == 0)
            Move(p_points[i].x, p_points[i].y, p_z);
        else
            Line(p_points[i].x, p_points[i].y, p_z);
    }
    Close();
}

void ShipPainter::SymOutline(const std::vector<Point2>& p_rightHalf, double p_z)
{
    const double mirror = m_mirror;
    m_mirror = 1.0;
    for (size_t i = 0; i < p_rightHalf.size(); ++i)
    {
        if (i == 0)
            Move(p_rightHalf[i].x, p_rightHalf[i].y, p_z);
        else
            Line(p_rightHalf[i].x, p_rightHalf[i].y, p_z);
    }
    for (size_t i = p_rightHalf.size(); i-- > 0;)
    {
        // A point on the axis at either end is shared by both halves.
        const bool end = i == 0 || i + 1 == p_rightHalf.size();
        if (!(end && p_rightHalf[i].x == 0.0))
            Line(-p_rightHalf[i].x, p_rightHalf[i].y, p_z);
    }
    Close();
    m_mirror = mirror;
}

void ShipPainter::Ellipse(double p_x, double p_y, double p_z, double p_halfWidth, double p_halfLength)
{
    // Four Bezier quarters; the control points are projected like any other point.
    const double k = 0.5522847498;
    const double x = p_x;
    const double y = p_y;
    const double a = p_halfWidth;
    const double b = p_halfLength;
    Move(x, y - b, p_z);
    Curve(x + k * a, y - b, x + a, y - k * b, x + a, y, p_z);
    Curve(x + a, y + k * b, x + k * a, y + b, x, y + b, p_z);
    Curve(x - k * a, y + b, x - a, y + k * b, x - a, y, p_z);
    Curve(x - a, y - k * b, x - k * a, y - b, x, y - b, p_z);
    Close();
}

void ShipPainter::FillFlat(const Rgb& p_albedo, Vec3 p_normal, double p_shine, bool p_keep)
{
    kit::SetSource(Cr(), Lit(p_albedo, p_normal, p_shine));
    if (p_keep)
        cairo_fill_preserve(Cr());
    else
        cairo_fill(Cr());
}

void ShipPainter::FillRound(const Rgb& p_albedo, double p_centreX, double p_halfWidth, double p_y, double p_z,
                            double p_bulge, double p_shine, double p_tiltY, bool p_keep)
{
    const double bulge = std::clamp(p_bulge, 0.0, 0.95);
    const Point2 from = Project(p_centreX - p_halfWidth, p_y, p_z);
    const Point2 to = Project(p_centreX + p_halfWidth, p_y, p_z);
    cairo_pattern_t* pattern = cairo_pattern_create_linear(from.x, from.y, to.x, to.y);
    const int stops = 9;
    for (int i = 0; i < stops; ++i)
    {
        const double u = -1.0 + 2.0 * double(i) / double(stops - 1);
        const double nx = u * bulge;
        const Vec3 normal{nx, p_tiltY, std::sqrt(std::max(0.05, 1.0 - nx * nx))};
        kit::AddStop(pattern, double(i) / double(stops - 1), Lit(p_albedo, normal, p_shine));
    }
    kit::UsePattern(Cr(), pattern);
    if (p_keep)
        cairo_fill_preserve(Cr());
    else
        cairo_fill(Cr());
}

void ShipPainter::Stroke(const Rgb& p_colour, double p_width, double p_alpha)
{
    kit::SetSource(Cr(), p_colour, p_alpha);
    cairo_set_line_width(Cr(), p_width);
    cairo_stroke(Cr());
}

void ShipPainter::PanelLine(const std::vector<Point2>& p_points, double p_z, double p_alpha)
{
    if (p_points.size() < 2)
        return;
    const auto path = [&](double p_dx, double p_dy) {
        Begin();
        for (size_t i = 0; i < p_points.size(); ++i)
        {
            if (i == 0)
                Move(p_points[i].x + p_dx, p_points[i].y + p_dy, p_z);
            else
                Line(p_points[i].x + p_dx, p_points[i].y + p_dy, p_z);
        }
    };
    path(0.45, 0.45);
    Stroke({1.0, 1.0, 1.0}, 0.5, p_alpha * 0.35);
    path(0.0, 0.0);
    Stroke({0.02, 0.03, 0.05}, 0.7, p_alpha);
}

void ShipPainter::Sphere(double p_x, double p_y, double p_z, double p_radius, const Rgb& p_albedo, double p_shine)
{
    const Point2 centre = Project(p_x, p_y, p_z);
    const double scale = m_layoutScale * m_distance /
                         (m_distance - RollVector({p_x * m_mirror * m_layoutScale, 0.0, p_z * m_layoutScale}).z);
    const double radius = p_radius * scale;
    // The light is fixed on the screen, so the bright side does not roll with the ship.
    const double hx = centre.x + m_light.x * radius * 0.55;
    const double hy = centre.y + m_light.y * radius * 0.55;
    cairo_pattern_t* ball = cairo_pattern_create_radial(hx, hy, 0.0, centre.x, centre.y, radius);
    const double top = AMBIENT + DIFFUSE;
    kit::AddStop(ball, 0.0, Rgb{p_albedo.r * top + p_shine, p_albedo.g * top + p_shine, p_albedo.b * top + p_shine});
    kit::AddStop(ball, 0.25, kit::Scale(p_albedo, top));
    kit::AddStop(ball, 0.75, kit::Scale(p_albedo, AMBIENT + DIFFUSE * 0.35));
    kit::AddStop(ball, 1.0, kit::Scale(p_albedo, AMBIENT * 0.7));
    kit::UsePattern(Cr(), ball);
    Begin();
    Ellipse(p_x, p_y, p_z, p_radius, p_radius);
    cairo_fill(Cr());
}

void ShipPainter::Canopy(double p_x, double p_y, double p_z, double p_halfWidth, double p_halfLength,
                         const Rgb& p_glass)
{
    cairo_t* cr = Cr();
    // Frame, then the glass a little higher.
    Begin();
    Ellipse(p_x, p_y, p_z, p_halfWidth + 0.8, p_halfLength + 0.8);
    FillFlat({0.12, 0.13, 0.15}, {0.0, 0.0, 1.0}, 0.2);

    Begin();
    Ellipse(p_x, p_y, p_z + p_halfWidth * 0.5, p_halfWidth, p_halfLength);
    const Point2 centre = Project(p_x, p_y, p_z + p_halfWidth * 0.5);
    const double radius = std::max(p_halfWidth, p_halfLength) * 1.1 * m_layoutScale;
    cairo_pattern_t* glass = cairo_pattern_create_radial(centre.x, centre.y, 0.0, centre.x, centre.y, radius);
    kit::AddStop(glass, 0.0, kit::Scale(p_glass, 0.45));
    kit::AddStop(glass, 0.75, kit::Scale(p_glass, 0.8));
    kit::AddStop(glass, 1.0, kit::Mix(p_glass, {1.0, 1.0, 1.0}, 0.25));
    kit::UsePattern(cr, glass);
    cairo_fill(cr);

    // The highlight sits where the dome's normal, rolled with the ship, meets the half vector.
    Vec3 wanted = m_half;
    wanted.x *= m_mirror;
    // Undo the roll: the normal in design space that becomes the half vector.
    const Vec3 normal{wanted.x * m_cos - wanted.z * m_sin, wanted.y, wanted.x * m_sin + wanted.z * m_cos};
    const double a = p_halfWidth;
    const double b = p_halfLength;
    const double c = p_halfWidth * 0.8;
    const double norm = std::sqrt(a * a * normal.x * normal.x + b * b * normal.y * normal.y + c * c * normal.z * normal.z);
    const double hx = p_x + a * a * normal.x / norm * m_mirror;
    const double hy = p_y + b * b * normal.y / norm;
    const double hz = p_z + p_halfWidth * 0.5 + c * c * normal.z / norm;
    const double saved = m_mirror;
    m_mirror = 1.0;
    const Point2 spot = Project(hx, hy, hz);
    m_mirror = saved;
    kit::Glow(cr, spot.x, spot.y, std::max(1.2, p_halfWidth * 0.75 * m_layoutScale), {1.0, 1.0, 1.0}, 0.85);
}

void ShipPainter::BeginDecal(double p_x, double p_y, double p_z)
{
    const Point2 origin = Project(p_x, p_y, p_z);
    const Point2 along = Project(p_x + 1.0, p_y, p_z);
    const Point2 down = Project(p_x, p_y + 1.0, p_z);
    cairo_save(Cr());
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, along.x - origin.x, along.y - origin.y, down.x - origin.x, down.y - origin.y, origin.x,
                      origin.y);
    cairo_transform(Cr(), &matrix);
}

void ShipPainter::EndDecal()
{
    cairo_restore(Cr());
}

void ShipPainter::Engine(double p_x, double p_y, double p_z, double p_radius, double p_flameScale)
{
    // The bell: a dark ring with a hot throat.
    Begin();
    Ellipse(p_x, p_y, p_z, p_radius, p_radius * 0.55);
    FillFlat({0.2, 0.21, 0.23}, {0.0, 0.3, 1.0}, 0.5);
    Begin();
    Ellipse(p_x, p_y + p_radius * 0.1, p_z, p_radius * 0.62, p_radius * 0.34);
    kit::SetSource(Cr(), kit::Mix(FlameInner(), FlameOuter(), 0.35));
    cairo_fill(Cr());
    m_nozzles.push_back({p_x * m_mirror, p_y, p_z, p_radius, p_flameScale});
}

void ShipPainter::Light(double p_x, double p_y, double p_z, double p_radius, const Rgb& p_colour, double p_alpha)
{
    m_lamps.push_back({p_x * m_mirror, p_y, p_z, p_radius, p_colour, p_alpha});
}

void ShipPainter::Weather(double p_amount, uint32_t p_seed)
{
    kit::PixelAccess pixels(m_canvas);
    // Blotchy wear a few pixels across, a little grain and a few darker scuffs.
    const auto blotch = [p_seed](double p_x, double p_y) {
        const double cell = 5.0;
        const double fx = p_x / cell;
        const double fy = p_y / cell;
        const int ix = int(std::floor(fx));
        const int iy = int(std::floor(fy));
        const double tx = fx - ix;
        const double ty = fy - iy;
        const double top = kit::Hash01(ix, iy, p_seed) * (1.0 - tx) + kit::Hash01(ix + 1, iy, p_seed) * tx;
        const double bottom = kit::Hash01(ix, iy + 1, p_seed) * (1.0 - tx) + kit::Hash01(ix + 1, iy + 1, p_seed) * tx;
        return top * (1.0 - ty) + bottom * ty - 0.5;
    };
    for (int y = 0; y < pixels.Height(); ++y)
        for (int x = 0; x < pixels.Width(); ++x)
        {
            uint32_t& word = pixels.Word(x, y);
            if ((word >> 24) == 0)
                continue;
            const double grain = kit::Hash01(x, y, p_seed + 5u) - 0.5;
            const double scuff = kit::Hash01(x / 3, y / 2, p_seed + 17u) > 0.96 ? -0.35 : 0.0;
            const double factor = 1.0 + p_amount * (0.8 * blotch(x, y) + 0.25 * grain + scuff);
            const auto channel = [factor, word](int p_shift) {
                const double value = double((word >> p_shift) & 0xFFu) * factor;
                const double limit = double(word >> 24);
                return uint32_t(std::clamp(value, 0.0, limit) + 0.5);
            };
            word = (word & 0xFF000000u) | (channel(16) << 16) | (channel(8) << 8) | channel(0);
        }
}

Rgb ShipPainter::FlameOuter() const
{
    return m_faction == Faction::Player ? kit::Hex(0x3D8BFF) : kit::Hex(0xFF5A1A);
}

Rgb ShipPainter::FlameInner() const
{
    return m_faction == Faction::Player ? kit::Hex(0x8FE8FF) : kit::Hex(0xFFC040);
}

Rgb ShipPainter::CanopyGlass() const
{
    return m_faction == Faction::Player ? kit::Hex(0x2FA8E8) : kit::Hex(0xD0202A);
}

void ShipPainter::Finish()
{
    Canvas layer(m_canvas.Width(), m_canvas.Height());
    if (!layer.IsValid())
        return;
    cairo_t* lr = layer.Get();
    cairo_set_operator(lr, CAIRO_OPERATOR_ADD);
    const double saved = m_mirror;
    m_mirror = 1.0;
    for (const Nozzle& nozzle : m_nozzles)
    {
        const Point2 at = Project(nozzle.x, nozzle.y, nozzle.z);
        const double scale =
            m_layoutScale * m_distance /
            (m_distance - RollVector({nozzle.x * m_layoutScale, 0.0, nozzle.z * m_layoutScale}).z);
        const double width = nozzle.radius * scale * std::max(0.65, m_cos);
        // Kept inside the picture (a flame cut off by the edge would show a hard line); the
        // short flame stays about half the long one so the two frames flicker visibly.
        const double room = m_canvas.Height() - 1.0 - at.y;
        const double longLength = std::min(room, nozzle.radius * scale * nozzle.flameScale * 5.0);
        const double length = m_longFlame ? longLength : std::min(longLength * 0.5, nozzle.radius * scale * nozzle.flameScale * 2.2);
        if (length <= 0.5)
            continue;
        // Outer flame: a teardrop from the nozzle down the screen.
        const auto teardrop = [&](double p_width, double p_length) {
            cairo_new_path(lr);
            cairo_move_to(lr, at.x - p_width, at.y);
            cairo_curve_to(lr, at.x - p_width, at.y + p_length * 0.45, at.x - p_width * 0.25, at.y + p_length * 0.8,
                           at.x, at.y + p_length);
            cairo_curve_to(lr, at.x + p_width * 0.25, at.y + p_length * 0.8, at.x + p_width, at.y + p_length * 0.45,
                           at.x + p_width, at.y);
            cairo_curve_to(lr, at.x + p_width, at.y - p_width * 0.5, at.x - p_width, at.y - p_width * 0.5,
                           at.x - p_width, at.y);
            cairo_close_path(lr);
        };
        teardrop(width * 0.95, length);
        cairo_pattern_t* outer = cairo_pattern_create_linear(at.x, at.y, at.x, at.y + length);
        kit::AddStop(outer, 0.0, kit::Mix(FlameOuter(), FlameInner(), 0.4), 1.0);
        kit::AddStop(outer, 0.4, FlameOuter(), 0.92);
        kit::AddStop(outer, 0.8, FlameOuter(), 0.45);
        kit::AddStop(outer, 1.0, FlameOuter(), 0.0);
        kit::UsePattern(lr, outer);
        cairo_fill(lr);
        const double coreLength = length * (m_longFlame ? 0.7 : 0.6);
        teardrop(width * 0.55, coreLength);
        cairo_pattern_t* core = cairo_pattern_create_linear(at.x, at.y, at.x, at.y + coreLength);
        kit::AddStop(core, 0.0, {1.0, 1.0, 1.0}, 1.0);
        kit::AddStop(core, 0.45, FlameInner(), 0.9);
        kit::AddStop(core, 1.0, FlameInner(), 0.0);
        kit::UsePattern(lr, core);
        cairo_fill(lr);
        kit::Glow(lr, at.x, at.y + width * 0.3, width * (m_longFlame ? 2.6 : 2.0), FlameOuter(), m_longFlame ? 0.55 : 0.4);
    }
    for (const Lamp& lamp : m_lamps)
    {
        const Point2 at = Project(lamp.x, lamp.y, lamp.z);
        const double radius = lamp.radius * m_layoutScale;
        kit::Glow(lr, at.x, at.y, radius * 2.4, lamp.colour, 0.55 * lamp.alpha);
        kit::Glow(lr, at.x, at.y, radius, kit::Mix(lamp.colour, {1.0, 1.0, 1.0}, 0.6), lamp.alpha);
    }
    m_mirror = saved;
    layer.Blur(1);

    const Rgb rim = m_faction == Faction::Player ? Rgb{0.02, 0.04, 0.08} : Rgb{0.07, 0.02, 0.02};
    kit::OutlineSprite(m_canvas, rim, 0.55);
    kit::AddLight(m_canvas, layer);
    kit::AvoidColourKey(m_canvas);
}

} // namespace artgen
