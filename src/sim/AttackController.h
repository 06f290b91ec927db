#pragma once

#include "sim/Controller.h"
#include "sim/Geometry.h"

class Ship;

// The hunting behaviour of computer ships: patrols (circles to the right) while the target is
// farther than 2000 units; within that it attacks: turns towards where its shots will meet the
// target, fires mount 0 when aimed within 10 degrees (at most about twice a second), closes in
// to a personal distance and backs off when closer, and now and then breaks away for a moment
// after staying badly aimed too long.
//
// Each controller draws its personal values (patience, break-away time, distance) when it is
// made, after seeding the random numbers from the clock: ships made in the same second share
// them.
class AttackController : public Controller
{
public:
    static constexpr int STATE_PATROL = 0;
    static constexpr int STATE_ATTACK = 1;
    static constexpr int STATE_RECOVER = 2;
    static constexpr unsigned RANGE = 2000;
    // Aimed: within this many degrees of the aim point.
    static constexpr double AIM_ANGLE = 10.0;
    static constexpr float SHOT_INTERVAL = 0.5f;
    // The largest acceleration a controller asks for, either way.
    static constexpr double MAX_ACCELERATION = 150.0;

    explicit AttackController(Ship* p_owner);

    // Takes p_state (0 patrol, 1 attack, 2 recover) when it is one of them, runs that state
    // and answers the state it ends in.
    int Think(int p_state, float p_dt) override;

    // Where to shoot so that a bullet from the owner meets the target: ahead on its straight
    // line, or ahead on its circle when it turns. The target's centre when there is no
    // answer.
    Vector2 GetInterceptPoint() const;

    int GetState() const { return m_state; }
    unsigned GetRange() const { return m_range; }
    float GetBreakTimer() const { return m_breakTimer; }
    float GetShotTimer() const { return m_shotTimer; }
    bool IsBreakingAway() const { return m_breakingAway; }
    float GetPatience() const { return m_patience; }
    float GetBreakDuration() const { return m_breakDuration; }
    int GetKeepDistance() const { return m_keepDistance; }
    // For tests and tools that need a known personality.
    void SetPersonality(float p_patience, float p_breakDuration, int p_keepDistance);
    void SetTimers(float p_shotTimer, float p_breakTimer, bool p_breakingAway);

    // The bullet speed the straight-line intercept uses is squared once, from the speed of the
    // first shooter that aims, and kept for the whole run. Forget it (tests).
    static void ForgetBulletSpeed();

private:
    int Patrol(float p_dt);
    int Attack(float p_dt);
    int Recover(float p_dt);
    // Fires mount p_mount without ammunition and adds the shot to the current level.
    void FireWeapon(int p_mount);
    // Distance between the centres of target and owner; infinite without a target.
    double TargetDistance() const;

    Ship* m_pShip; // the owner, as a ship
    unsigned m_range = RANGE;
    int m_state = STATE_PATROL;
    int (AttackController::*m_handlers[3])(float) = {&AttackController::Patrol, &AttackController::Attack,
                                                      &AttackController::Recover};
    float m_breakTimer = 0.0f;
    float m_shotTimer = 0.0f;
    bool m_breakingAway = false;
    float m_patience = 0.0f;
    float m_breakDuration = 0.0f;
    int m_keepDistance = 0;
};
