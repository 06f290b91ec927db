#include "Rock.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace artgen
{

namespace
{

struct Crater
{
    double x;
    double y;
    double radius;
};

} // namespace

void PaintRock(Canvas& p_canvas, double p_x, double p_y, double p_radiusX, double p_radiusY, const RockStyle& p_style)
{
    if (!p_canvas.IsValid() || p_radiusX <= 1.0 || p_radiusY <= 1.0)
        return;
    const double mean = (p_radiusX + p_radiusY) / 2.0;
    const double reach = 1.0 + 2.0 * p_style.lumpiness + 0.05;
    const int left = std::max(0, int(std::floor(p_x - p_radiusX * reach)));
    const int right = std::min(p_canvas.Width() - 1, int(std::ceil(p_x + p_radiusX * reach)));
    const int top = std::max(0, int(std::floor(p_y - p_radiusY * reach)));
    const int bottom = std::min(p_canvas.Height() - 1, int(std::ceil(p_y + p_radiusY * reach)));
    if (left > right || top > bottom)
        return;
    const int width = right - left + 1;
    const int height = bottom - top + 1;

    const kit::PeriodicNoise outline(16, p_style.seed);
    const kit::PeriodicNoise bumps(64, p_style.seed + 1u);
    const kit::PeriodicNoise colour(64, p_style.seed + 2u);
    Random random(uint64_t(p_style.seed) * 2654435761ull + 7u);
    std::vector<Crater> craters;
    for (int i = 0; i < p_style.craters; ++i)
    {
        const double angle = random.Uniform(0.0, 2.0 * kit::PI);
        const double distance = std::sqrt(random.Uniform(0.0, 1.0)) * 0.75;
        const double radius = mean * random.Uniform(0.07, 0.22);
        craters.push_back({p_x + std::cos(angle) * distance * p_radiusX, p_y + std::sin(angle) * distance * p_radiusY,
                           radius});
    }

    // Height and coverage of every pixel of the box.
    std::vector<double> heights(size_t(width) * size_t(height), -1.0);
    std::vector<double> coverage(size_t(width) * size_t(height), 0.0);
    for (int j = 0; j < height; ++j)
        for (int i = 0; i < width; ++i)
        {
            const double px = left + i + 0.5;
            const double py = top + j + 0.5;
            const double nx = (px - p_x) / p_radiusX;
            const double ny = (py - p_y) / p_radiusY;
            const double distance = std::sqrt(nx * nx + ny * ny);
            const double angle = std::atan2(ny, nx);
            const double edge = 1.0 + p_style.lumpiness * outline.At(3.0 + 1.6 * std::cos(angle), 3.0 + 1.6 * std::sin(angle)) +
                                0.5 * p_style.lumpiness * outline.At(8.0 + 3.2 * std::cos(angle), 8.0 + 3.2 * std::sin(angle));
            const size_t at = size_t(j) * size_t(width) + size_t(i);
            coverage[at] = kit::Clamp01((edge - distance) * mean + 0.5);
            const double inside = std::max(0.0, 1.0 - (distance / edge) * (distance / edge));
            double h = std::sqrt(inside) * mean * 0.8;
            h += p_style.roughness * mean * 0.06 *
                 (bumps.At(px / mean * 4.0, py / mean * 4.0) + 0.5 * bumps.At(px / mean * 9.0 + 20.0, py / mean * 9.0));
            for (const Crater& crater : craters)
            {
                const double q = std::hypot(px - crater.x, py - crater.y) / crater.radius;
                if (q < 1.0)
                    h -= (1.0 - q * q) * crater.radius * 0.55;
                else if (q < 1.35)
                    h += (1.0 - (q - 1.0) / 0.35) * crater.radius * 0.12;
            }
            heights[at] = h;
        }

    const double lx = -0.55;
    const double ly = -0.45;
    const double lz = 0.70;
    const double lightNorm = std::sqrt(lx * lx + ly * ly + lz * lz);
    kit::PixelAccess pixels(p_canvas);
    for (int j = 0; j < height; ++j)
        for (int i = 0; i < width; ++i)
        {
            const size_t at = size_t(j) * size_t(width) + size_t(i);
            const double alpha = coverage[at];
            if (alpha <= 0.0)
                continue;
            const auto heightAt = [&](int p_i, int p_j) {
                p_i = std::clamp(p_i, 0, width - 1);
                p_j = std::clamp(p_j, 0, height - 1);
                return heights[size_t(p_j) * size_t(width) + size_t(p_i)];
            };
            const double dx = (heightAt(i + 1, j) - heightAt(i - 1, j)) / 2.0;
            const double dy = (heightAt(i, j + 1) - heightAt(i, j - 1)) / 2.0;
            const double norm = std::sqrt(dx * dx + dy * dy + 1.0);
            const double diffuse = std::max(0.0, (-dx * lx - dy * ly + lz) / (norm * lightNorm));
            const double px = left + i + 0.5;
            const double py = top + j + 0.5;
            const double albedo = 0.85 + 0.3 * colour.At(px / mean * 3.0, py / mean * 3.0);
            const double shade = kit::Clamp01((0.12 + 0.95 * diffuse) * albedo);
            const kit::Rgb rock = kit::Mix(p_style.dark, p_style.light, shade);
            // Over what is there.
            const kit::Pixel below = pixels.Get(left + i, top + j);
            kit::Pixel out;
            out.a = alpha + below.a * (1.0 - alpha);
            if (out.a > 0.0)
            {
                out.r = (rock.r * alpha + below.r * below.a * (1.0 - alpha)) / out.a;
                out.g = (rock.g * alpha + below.g * below.a * (1.0 - alpha)) / out.a;
                out.b = (rock.b * alpha + below.b * below.a * (1.0 - alpha)) / out.a;
            }
            pixels.Set(left + i, top + j, out);
        }
}

} // namespace artgen
