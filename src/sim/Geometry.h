#pragma once

// Positions, velocities and collision shapes in world units (pixels, y down).
struct Vector2
{
    double x = 0.0;
    double y = 0.0;
};

// Three corners, kept as six plain doubles so that shapes can be copied as arrays.
struct Triangle
{
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
    double x3 = 0.0;
    double y3 = 0.0;
};
