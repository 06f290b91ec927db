#pragma once

#include "sim/Geometry.h"

class QuadNode;
class ShotIndex;
class WorldObject;

// Whether (p_x, p_y) lies strictly inside the triangle: the three edge cross products all
// have the same sign. A point on an edge or corner is not inside, and neither is any point
// of a degenerate triangle.
bool IsStrictlyInside(const Triangle& p_triangle, double p_x, double p_y);

// Tests every ship of p_a's layer 0 against every projectile of p_b's layer 2 of another
// team. A projectile with a corner strictly inside one of a ship's triangles deals its
// damage; unless its hit kind keeps it alive, it is then marked dead and destroyed.
// Ships are taken in list order and, for each, the shots in list order; only pairs whose
// bounding rectangles meet are tested, which changes nothing else, since the exact test
// rejects every other pair.
void Collide(QuadNode* p_a, QuadNode* p_b);
// The same, with the shot index of a caller that collides many cells.
void Collide(QuadNode* p_a, QuadNode* p_b, ShotIndex& p_index);

// Whether a corner of either object's world shape lies strictly inside the other's.
bool Touching(WorldObject* p_a, WorldObject* p_b);
