#pragma once

#include <vector>

#include "sim/Geometry.h"

// The motion of one object: position, heading (degrees, 0 up the screen, growing
// clockwise), forward speed with acceleration, rotation, strafe, and a triangle shape
// that is carried along for collisions.
class PhysicalDesc
{
public:
    // Side of the default square shape.
    static constexpr unsigned DEFAULT_BOX_SIZE = 32;

    PhysicalDesc();

    // One integration step of p_dt seconds.
    void Update(float p_dt);

    // Replaces the shape by a box of two triangles; a zero height makes a square.
    void SetBox(unsigned p_width, unsigned p_height, short p_x, short p_y);
    // Replaces the shape by a copy of p_count triangles. Refuses a negative count or a
    // missing array (when the count is not 0) and keeps the old shape.
    bool SetTriangles(const Triangle* p_triangles, int p_count);

    // Outlines the world shape in red with GL lines (needs a current context).
    void RenderTriangles() const;

    double GetX() const { return m_x; }
    double GetY() const { return m_y; }
    void SetPosition(double p_x, double p_y)
    {
        m_x = p_x;
        m_y = p_y;
    }
    double GetHeading() const { return m_heading; }
    void SetHeading(double p_heading) { m_heading = p_heading; }
    double GetSpeed() const { return m_speed; }
    void SetSpeed(double p_speed) { m_speed = p_speed; }
    double GetAcceleration() const { return m_acceleration; }
    void SetAcceleration(double p_acceleration) { m_acceleration = p_acceleration; }
    double GetRotationSpeed() const { return m_rotationSpeed; }
    void SetRotationSpeed(double p_rotationSpeed) { m_rotationSpeed = p_rotationSpeed; }
    double GetStrafe() const { return m_strafe; }
    void SetStrafe(double p_strafe) { m_strafe = p_strafe; }
    // Both velocities are recomputed by every Update.
    const Vector2& GetVelocity() const { return m_velocity; }
    void SetVelocity(const Vector2& p_velocity) { m_velocity = p_velocity; }
    const Vector2& GetStrafeVelocity() const { return m_strafeVelocity; }

    int GetNumTriangles() const { return m_numTriangles; }
    const Triangle* GetLocalTriangles() const { return m_localTriangles.data(); }
    // The shape placed at the position and turned by the heading as of the last Update.
    const Triangle* GetWorldTriangles() const { return m_worldTriangles.data(); }
    // The smallest rectangle around the world shape (inverted, min above max, when the shape
    // has no triangles): collision tests skip pairs whose rectangles do not meet.
    const Vector2& GetWorldMin() const { return m_worldMin; }
    const Vector2& GetWorldMax() const { return m_worldMax; }

    int GetBoxX() const { return m_boxX; }
    int GetBoxY() const { return m_boxY; }
    unsigned GetBoxWidth() const { return m_boxWidth; }
    unsigned GetBoxHeight() const { return m_boxHeight; }

private:
    void UpdateWorldBounds();

    std::vector<Triangle> m_localTriangles;
    double m_acceleration = 0.0;
    double m_x = 0.0;
    double m_y = 0.0;
    double m_speed = 0.0;
    Vector2 m_velocity;
    Vector2 m_strafeVelocity;
    double m_strafe = 0.0;
    double m_heading = 0.0;
    double m_rotationSpeed = 0.0;
    std::vector<Triangle> m_worldTriangles;
    int m_numTriangles = 0;
    int m_boxX = 0;
    int m_boxY = 0;
    unsigned m_boxWidth = 0;
    unsigned m_boxHeight = 0;
    Vector2 m_worldMin;
    Vector2 m_worldMax;
};
