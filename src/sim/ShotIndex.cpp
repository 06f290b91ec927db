#include "sim/ShotIndex.h"

#include <algorithm>
#include <cmath>

#include "sim/Layers.h"
#include "sim/PhysicalDesc.h"
#include "sim/Projectile.h"
#include "sim/QuadNode.h"
#include "sim/WorldObject.h"

namespace
{
bool HasNan(double p_a, double p_b, double p_c, double p_d)
{
    return std::isnan(p_a) || std::isnan(p_b) || std::isnan(p_c) || std::isnan(p_d);
}
} // namespace

void ShotIndex::Build(const QuadNode* p_leaf)
{
    m_entries.clear();
    m_wide.clear();
    m_spans.clear();
    m_first = 0;
    size_t shots = 0;
    for (WorldObject* object = p_leaf->GetList(LAYER_PROJECTILES); object != nullptr; object = object->GetNextInList())
    {
        Entry entry;
        entry.m_pObject = object;
        // Only projectiles deal damage; anything else put into layer 2 is passed over.
        entry.m_pShot = dynamic_cast<Projectile*>(object);
        entry.m_pDesc = entry.m_pShot != nullptr ? object->GetPhysicalDesc() : nullptr;
        entry.m_team = object->GetTeam();
        if (entry.m_pDesc != nullptr)
        {
            entry.m_minX = entry.m_pDesc->GetWorldMin().x;
            entry.m_minY = entry.m_pDesc->GetWorldMin().y;
            entry.m_maxX = entry.m_pDesc->GetWorldMax().x;
            entry.m_maxY = entry.m_pDesc->GetWorldMax().y;
            ++shots;
        }
        m_entries.push_back(entry);
    }

    m_originX = p_leaf->GetXMin();
    m_originY = p_leaf->GetYMin();
    const double side = std::max({1.0, static_cast<double>(p_leaf->GetXMax()) - p_leaf->GetXMin() + 1.0,
                                  static_cast<double>(p_leaf->GetYMax()) - p_leaf->GetYMin() + 1.0});
    m_buckets =
        std::clamp(static_cast<int>(std::ceil(std::sqrt(static_cast<double>(shots)))), MIN_BUCKETS, MAX_BUCKETS);
    m_bucketSize = side / m_buckets;
    const size_t bucketCount = static_cast<size_t>(m_buckets) * static_cast<size_t>(m_buckets);
    m_bucketStart.assign(bucketCount + 1, 0);

    // Count each filed shot into the buckets it covers, then lay the buckets out one after
    // another and fill them in list order.
    const Span NOT_FILED{0, 0, -1, -1};
    m_spans.reserve(m_entries.size());
    for (uint32_t i = 0; i < m_entries.size(); ++i)
    {
        const Entry& entry = m_entries[i];
        // A shot without a shape has an inverted rectangle, which meets nothing.
        if (entry.m_pDesc == nullptr || (entry.m_minX > entry.m_maxX || entry.m_minY > entry.m_maxY))
        {
            m_spans.push_back(NOT_FILED);
            continue;
        }
        if (HasNan(entry.m_minX, entry.m_minY, entry.m_maxX, entry.m_maxY))
        {
            m_spans.push_back(NOT_FILED);
            m_wide.push_back(i);
            continue;
        }
        const Span span = Cover(entry.m_minX, entry.m_minY, entry.m_maxX, entry.m_maxY);
        const int64_t covered = static_cast<int64_t>(span.m_x1 - span.m_x0 + 1) * (span.m_y1 - span.m_y0 + 1);
        if (covered > MAX_SPAN)
        {
            m_spans.push_back(NOT_FILED);
            m_wide.push_back(i);
            continue;
        }
        m_spans.push_back(span);
        for (int y = span.m_y0; y <= span.m_y1; ++y)
        {
            for (int x = span.m_x0; x <= span.m_x1; ++x)
            {
                ++m_bucketStart[static_cast<size_t>(y) * m_buckets + x + 1];
            }
        }
    }
    for (size_t b = 0; b < bucketCount; ++b)
    {
        m_bucketStart[b + 1] += m_bucketStart[b];
    }
    m_filed.resize(m_bucketStart[bucketCount]);
    m_fill.assign(m_bucketStart.begin(), m_bucketStart.end() - 1);
    for (uint32_t i = 0; i < m_entries.size(); ++i)
    {
        const Span& span = m_spans[i];
        for (int y = span.m_y0; y <= span.m_y1; ++y)
        {
            for (int x = span.m_x0; x <= span.m_x1; ++x)
            {
                m_filed[m_fill[static_cast<size_t>(y) * m_buckets + x]++] = i;
            }
        }
    }
}

bool ShotIndex::IsCurrent(const QuadNode* p_leaf)
{
    while (m_first < m_entries.size() && !m_entries[m_first].m_alive)
    {
        ++m_first;
    }
    const WorldObject* expected = m_first < m_entries.size() ? m_entries[m_first].m_pObject : nullptr;
    return p_leaf->GetList(LAYER_PROJECTILES) == expected;
}

bool ShotIndex::MatchesList(const QuadNode* p_leaf) const
{
    size_t next = 0;
    auto skipRemoved = [this, &next] {
        while (next < m_entries.size() && !m_entries[next].m_alive)
        {
            ++next;
        }
    };
    skipRemoved();
    const WorldObject* object = p_leaf->GetList(LAYER_PROJECTILES);
    // Shots put in front since the index was built come first.
    while (object != nullptr && next < m_entries.size() && object != m_entries[next].m_pObject)
    {
        object = object->GetNextInList();
    }
    for (; object != nullptr; object = object->GetNextInList())
    {
        if (next >= m_entries.size() || object != m_entries[next].m_pObject)
        {
            return false;
        }
        ++next;
        skipRemoved();
    }
    return next == m_entries.size();
}

void ShotIndex::MarkRemoved(size_t p_entry)
{
    m_entries[p_entry].m_alive = false;
}

const std::vector<uint32_t>& ShotIndex::FindCandidates(uint8_t p_team, double p_minX, double p_minY, double p_maxX,
                                                       double p_maxY)
{
    std::vector<uint32_t>& out = m_candidates;
    out.clear();
    if (++m_query == 0)
    {
        for (Entry& entry : m_entries)
        {
            entry.m_query = 0;
        }
        m_query = 1;
    }
    if (HasNan(p_minX, p_minY, p_maxX, p_maxY))
    {
        // Not comparable with the buckets: every shot is offered, as the exact test decides.
        for (uint32_t i = static_cast<uint32_t>(m_first); i < m_entries.size(); ++i)
        {
            const Entry& entry = m_entries[i];
            if (entry.m_alive && entry.m_pDesc != nullptr && entry.m_team != p_team &&
                Overlaps(entry, p_minX, p_minY, p_maxX, p_maxY))
            {
                out.push_back(i);
            }
        }
        return out;
    }
    auto offer = [&](uint32_t p_entry) {
        Entry& entry = m_entries[p_entry];
        if (entry.m_query == m_query)
        {
            return;
        }
        entry.m_query = m_query;
        if (entry.m_alive && entry.m_team != p_team && Overlaps(entry, p_minX, p_minY, p_maxX, p_maxY))
        {
            out.push_back(p_entry);
        }
    };
    if (p_minX <= p_maxX && p_minY <= p_maxY)
    {
        const Span span = Cover(p_minX, p_minY, p_maxX, p_maxY);
        for (int y = span.m_y0; y <= span.m_y1; ++y)
        {
            for (int x = span.m_x0; x <= span.m_x1; ++x)
            {
                const size_t bucket = static_cast<size_t>(y) * m_buckets + x;
                for (uint32_t k = m_bucketStart[bucket]; k < m_bucketStart[bucket + 1]; ++k)
                {
                    offer(m_filed[k]);
                }
            }
        }
    }
    for (uint32_t entry : m_wide)
    {
        offer(entry);
    }
    std::sort(out.begin(), out.end());
    return out;
}

ShotIndex::Span ShotIndex::Cover(double p_minX, double p_minY, double p_maxX, double p_maxY) const
{
    return Span{Bucket(p_minX, m_originX), Bucket(p_minY, m_originY), Bucket(p_maxX, m_originX),
                Bucket(p_maxY, m_originY)};
}

int ShotIndex::Bucket(double p_value, double p_origin) const
{
    // Clamped, so that what reaches past the leaf shares its edge buckets: the bucket number
    // never decreases with the coordinate, so rectangles that meet share a bucket.
    const double bucket = std::floor((p_value - p_origin) / m_bucketSize);
    return static_cast<int>(std::clamp(bucket, 0.0, static_cast<double>(m_buckets - 1)));
}

bool ShotIndex::Overlaps(const Entry& p_entry, double p_minX, double p_minY, double p_maxX, double p_maxY)
{
    // The negation of the exact test's own rejection, so that both agree whatever the values.
    return !(p_entry.m_minX > p_maxX || p_entry.m_maxX < p_minX || p_entry.m_minY > p_maxY || p_entry.m_maxY < p_minY);
}
