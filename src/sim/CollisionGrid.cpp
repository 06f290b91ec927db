#include "sim/CollisionGrid.h"

#include "sim/Collide.h"
#include "sim/QuadNode.h"

void CollisionGrid::Build(QuadNode* p_root, int p_size)
{
    m_cells.clear();
    m_size = 0;
    if (p_root == nullptr)
    {
        return;
    }
    std::vector<QuadNode*> leaves;
    p_root->CollectLeaves(leaves);
    int size = p_size > 0 ? p_size : 0;
    if (static_cast<size_t>(size) * static_cast<size_t>(size) != leaves.size())
    {
        // A map whose size is not 10 × a power of two has a different number of leaves
        // than cells; the grid then takes the tree's own side so that every leaf is tested.
        size = 1;
        while (static_cast<size_t>(size) * static_cast<size_t>(size) < leaves.size())
        {
            size *= 2;
        }
    }
    m_size = size;
    m_cells.assign(static_cast<size_t>(size) * static_cast<size_t>(size), nullptr);
    // Beyond a 4 × 4 grid the blocks do not follow the map's geometry; that is harmless,
    // since cells are only ever collided with themselves.
    size_t next = 0;
    for (int r = 0; r < size; r += 2)
    {
        for (int c = 0; c < size; c += 2)
        {
            const int rows[4] = {r, r, r + 1, r + 1};
            const int columns[4] = {c, c + 1, c, c + 1};
            for (int k = 0; k < 4 && next < leaves.size(); ++k)
            {
                if (rows[k] < size && columns[k] < size)
                {
                    m_cells[static_cast<size_t>(rows[k]) * size + columns[k]] = leaves[next];
                }
                ++next;
            }
        }
    }
}

void CollisionGrid::Update()
{
    for (QuadNode* cell : m_cells)
    {
        Collide(cell, cell, m_shotIndex);
    }
}

QuadNode* CollisionGrid::GetCell(int p_row, int p_column) const
{
    if (p_row < 0 || p_column < 0 || p_row >= m_size || p_column >= m_size)
    {
        return nullptr;
    }
    return m_cells[static_cast<size_t>(p_row) * m_size + p_column];
}
