#pragma once

// Lit rock: asteroids, the hive's shell, the rocks under the outpost and the pirate base.

#include "ArtKit.h"

namespace artgen
{

struct RockStyle
{
    kit::Rgb light{0.62, 0.57, 0.52};
    kit::Rgb dark{0.16, 0.14, 0.13};
    int craters = 6;
    double lumpiness = 0.15; // how far the outline strays from an ellipse
    double roughness = 0.5;  // small bumps on the surface
    uint32_t seed = 1u;
};

// Paints a rock over what the canvas holds, centred on (p_x, p_y) with radii p_radiusX and
// p_radiusY (its outline strays by the lumpiness), lit from the upper left like the ships.
void PaintRock(Canvas& p_canvas, double p_x, double p_y, double p_radiusX, double p_radiusY, const RockStyle& p_style);

} // namespace artgen
