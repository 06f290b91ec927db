#pragma once

#include <vector>

#include "sim/ShotIndex.h"

class QuadNode;

// The quadtree's leaves as an n × n array of cells, row by row, for the per-frame collision
// pass: shots are tested against the ships of their own cell only.
class CollisionGrid
{
public:
    CollisionGrid() = default;

    // Takes the leaves under p_root in quadtree order and lays them out four at a time as
    // 2 × 2 blocks: for rows r = 0, 2, ... and columns c = 0, 2, ..., the next four leaves
    // fill (r, c), (r, c + 1), (r + 1, c), (r + 1, c + 1).
    void Build(QuadNode* p_root, int p_size);
    // Collides every cell with itself, in row-major order.
    void Update();

    int GetSize() const { return m_size; }
    // The leaf at row p_row, column p_column; null outside the grid.
    QuadNode* GetCell(int p_row, int p_column) const;

private:
    std::vector<QuadNode*> m_cells; // row by row
    int m_size = 0;
    ShotIndex m_shotIndex; // reused by every cell, so that a frame allocates nothing
};
