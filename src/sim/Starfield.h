#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/Background.h"

// The streaking stars drawn behind levels without a tile map. Each star has a position in a
// space scaled by its depth z (25..254); it is drawn at its position over z, as a line from
// where it is now to where it was a frame ago, so stars nearer the eye move faster and streak
// longer. The field turns with the player's ship and drifts against its flight.
class Starfield : public Background
{
public:
    static constexpr int DEFAULT_CAPACITY = 5000;

    struct Star
    {
        float x = 0.0f;
        float y = 0.0f;
        float z = 0.0f;
        int previousX = 0;
        int previousY = 0;
        int currentX = 0;
        int currentY = 0;
        uint32_t color = 0; // 0xRRGGBB
    };

    // Room for p_capacity stars (DEFAULT_CAPACITY when below 1), p_inUse of them moved and
    // drawn (all when not between 1 and the capacity), colours of scheme p_scheme (0 warm
    // whites, oranges and violets; 1 greys; 2 blue-whites; 3 red-whites).
    Starfield(int p_capacity, int p_inUse, int p_scheme);

    // The screen size and the point the field turns about; a centre with both coordinates
    // below 1 means the middle of the screen. Places every star and gives it its colour.
    void SetScreen(int p_width, int p_height, int p_centerX, int p_centerY);

    // One frame: p_vx, p_vy the player's velocity with y pointing up, p_heading in radians.
    void Move(double p_vx, double p_vy, double p_heading) override;
    // Screen-space lines from the centre, whatever the current view.
    void Render() override;

    int GetCapacity() const { return static_cast<int>(m_stars.size()); }
    int GetInUse() const { return m_inUse; }
    int GetBound() const { return m_bound; }
    int GetCenterX() const { return m_centerX; }
    int GetCenterY() const { return m_centerY; }
    const Star& GetStar(int p_index) const { return m_stars[static_cast<size_t>(p_index)]; }

private:
    void PlaceStar(Star& p_star);
    uint32_t MakeColor(float p_z);

    int m_inUse = 0;
    int m_scheme = 0;
    int m_centerX = 0;
    int m_centerY = 0;
    int m_width = 0;
    int m_height = 0;
    // Stars whose drawn point leaves [-m_bound, m_bound] come back on the other side.
    int m_bound = 1;
    std::vector<Star> m_stars;
    bool m_hasAngle = false;
    double m_previousAngle = 0.0;
};
