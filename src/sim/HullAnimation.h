#pragma once

#include <memory>
#include <string>
#include <vector>

#include "gfx/Animation.h"

// A ship's picture: a still animation that alternates a short and a long engine flame, faster
// with speed, and as many lean steps to either side as the pictures provide, the full lean
// at 225 degrees a second.
//
// The frames of a base name B are "B_short_still0000.bmp" and "B_long_still0000.bmp", then
// for each lean step i "B_short_left%04d.bmp", "B_long_left%04d.bmp", "B_short_right%04d.bmp"
// and "B_long_right%04d.bmp".
class HullAnimation : public Animation
{
public:
    // One frame a second up to this speed, faster above.
    static constexpr double FLAME_SPEED = 57.6;
    // The turn rate (degrees a second) that leans the ship fully.
    static constexpr double FULL_LEAN_RATE = 225.0;

    HullAnimation();
    ~HullAnimation() override;

    // Discards what was loaded and loads the frames of p_baseName. Without the still pictures
    // the base name itself is taken as the one still frame. Missing pictures load as empty
    // frames, which draw nothing.
    bool LoadHull(const std::string& p_baseName);

    // Advances the still and every lean animation.
    bool Update(float p_dt) override;
    // Draws the ship at (p_x, p_y) turned by p_heading, with p_turn the turn rate over
    // FULL_LEAN_RATE (negative to the left) and p_speed its forward speed.
    void Draw(double p_x, double p_y, double p_heading, double p_turn, double p_speed);
    // The animation Draw shows for p_turn and p_speed: smooths the turn (a jump of more than
    // 0.1 moves only a 3.5th of the way), gives the chosen animation its frame time.
    Animation* SelectAnimation(double p_turn, double p_speed);

    int GetNumTurnFrames() const { return m_numTurnFrames; }
    Animation* GetLeftTurn(int p_index) const;
    Animation* GetRightTurn(int p_index) const;
    double GetLastTurn() const { return m_lastTurn; }

private:
    std::vector<std::unique_ptr<Animation>> m_pLeftTurn;
    std::vector<std::unique_ptr<Animation>> m_pRightTurn;
    int m_numTurnFrames = 0;
    double m_lastTurn = 0.0;
};
