#pragma once

#include "Canvas.h"

namespace artgen
{

// The game's name, KORVATH, in its own angular letters (straight strokes, cut corners, a
// forward lean). Units: the letters are 100 high; WordmarkWidth() wide.
double WordmarkWidth();

// Appends the outline of the name to the current path, its box centred on (p_x, p_y) and
// scaled so that the letters are p_height tall. Fill it even-odd (the O, R and A have holes).
void WordmarkPath(cairo_t* p_context, double p_x, double p_y, double p_height);

// The full treatment: an amber glow of strength p_glow (0 for none), a dark extrusion below,
// steel faces and an amber keyline.
void DrawWordmark(Canvas& p_canvas, double p_x, double p_y, double p_height, double p_glow);

// Just the letter K, in the same units, as a monogram: centred on (p_x, p_y), p_height tall.
void MonogramPath(cairo_t* p_context, double p_x, double p_y, double p_height);

} // namespace artgen
