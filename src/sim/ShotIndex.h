#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class PhysicalDesc;
class Projectile;
class QuadNode;
class WorldObject;

// The shots of one leaf, filed once per collision pass by their bounding rectangles in a grid
// of buckets over the leaf, so that a ship is tested only against the shots whose rectangles
// meet its own. Every shot of the list has an entry, in list order (head first), whether or
// not it can hit; the candidates of a ship come back in that order, which is the order the
// hits are applied in.
//
// The index is a snapshot. The collision pass keeps it true to the list: it marks the shots it
// destroys, and it builds the index again when something was put at the front of the list
// (a new shot, whose place is before every entry).
class ShotIndex
{
public:
    struct Entry
    {
        WorldObject* m_pObject = nullptr;
        Projectile* m_pShot = nullptr;         // null: not a projectile, which never hits
        const PhysicalDesc* m_pDesc = nullptr; // null: no shape, which never hits
        double m_minX = 0.0;
        double m_minY = 0.0;
        double m_maxX = 0.0;
        double m_maxY = 0.0;
        uint32_t m_query = 0; // the last query that listed it
        uint8_t m_team = 0;
        bool m_alive = true;
    };

    // Files the layer-2 list of p_leaf.
    void Build(const QuadNode* p_leaf);
    // Whether the list still starts where the index does: nothing was put in front.
    bool IsCurrent(const QuadNode* p_leaf);
    // Whether the list holds exactly the entries still alive, after anything put in front
    // since the build (a check for debug builds: it walks the whole list).
    bool MatchesList(const QuadNode* p_leaf) const;
    // The shot left the list.
    void MarkRemoved(size_t p_entry);

    // The numbers of the entries, in list order, of the projectiles still alive, not of team
    // p_team, whose rectangles meet [p_min, p_max] (inclusive edges, as the exact test takes
    // them). The answer is kept until the next call.
    const std::vector<uint32_t>& FindCandidates(uint8_t p_team, double p_minX, double p_minY, double p_maxX,
                                                double p_maxY);

    Entry& GetEntry(size_t p_entry) { return m_entries[p_entry]; }
    size_t GetCount() const { return m_entries.size(); }

private:
    // Buckets per side: about one shot per bucket, within these bounds.
    static constexpr int MIN_BUCKETS = 1;
    static constexpr int MAX_BUCKETS = 64;
    // A shot whose rectangle spans more buckets than this (a long beam) is kept aside and
    // offered to every ship instead.
    static constexpr int64_t MAX_SPAN = 16;

    struct Span
    {
        int m_x0;
        int m_y0;
        int m_x1;
        int m_y1;
    };
    Span Cover(double p_minX, double p_minY, double p_maxX, double p_maxY) const;
    int Bucket(double p_value, double p_origin) const;
    static bool Overlaps(const Entry& p_entry, double p_minX, double p_minY, double p_maxX, double p_maxY);

    std::vector<Entry> m_entries; // list order
    size_t m_first = 0;           // the first entry still alive
    double m_originX = 0.0;
    double m_originY = 0.0;
    double m_bucketSize = 1.0;
    int m_buckets = 1;                   // per side
    std::vector<uint32_t> m_bucketStart; // m_buckets² + 1 offsets into m_filed
    std::vector<uint32_t> m_filed;       // entry numbers, each bucket in list order
    std::vector<uint32_t> m_wide;        // shots offered to every ship, in list order
    std::vector<Span> m_spans;           // scratch of Build
    std::vector<uint32_t> m_fill;        // scratch of Build
    std::vector<uint32_t> m_candidates;  // the answer of FindCandidates
    uint32_t m_query = 0;
};
