#pragma once

// Something drawn behind the tiles that drifts with the player's ship (the starfield of
// levels without a tile map). The level owns it, moves it every update and draws it first.
class Background
{
public:
    virtual ~Background() = default;

    // p_vx, p_vy: the player's combined velocity with y pointing up; p_heading: radians.
    virtual void Move(double p_vx, double p_vy, double p_heading) = 0;
    virtual void Render() = 0;
};
