#pragma once

#include <cstdint>

#include "sim/Geometry.h"

class GameObject;

// The world rectangle a level draws: whatever the turned view can show.
struct ViewRect
{
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;
};

// The mission view: follows the player's ship and turns the world so that the ship always
// points up the screen, 210 units below the centre so that the player sees what lies ahead.
class Camera
{
public:
    // How far below the screen centre the followed point is shown.
    static constexpr double LEAD = 210.0;

    Camera();

    // Follows the point one unit ahead of p_target, along its motion or, standing still,
    // along its facing. An object without a description is ignored.
    void Follow(GameObject* p_target);
    // Turns the view so that heading p_angle (degrees) points up; kept in [0, 360).
    void SetAngle(double p_angle);
    // Refreshes the view rectangle and loads the view transform into the model-view matrix.
    void Apply();

    // The first step of Apply: the square around the followed point that the level draws.
    void RefreshView();
    // What Apply translates by after turning: the screen centre turned back by the view
    // angle, less the point shown at the centre.
    Vector2 GetTranslation() const;
    // Where Apply's transform puts the world point (p_x, p_y) on the logical screen.
    Vector2 WorldToScreen(double p_x, double p_y) const;

    double GetX() const { return m_x; }
    double GetY() const { return m_y; }
    double GetAngle() const { return m_angle; }
    const ViewRect& GetView() const { return m_view; }

private:
    double m_halfWidth;
    double m_halfHeight;
    double m_x = 0.0;
    double m_y = 0.0;
    double m_angle = 0.0;
    ViewRect m_view;
};
