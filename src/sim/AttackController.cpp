#include "sim/AttackController.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "app/Random.h"
#include "sim/Bullet.h"
#include "sim/Layers.h"
#include "sim/Level.h"
#include "sim/MathTables.h"
#include "sim/Projectile.h"
#include "sim/Ship.h"

namespace
{
// 2 PI with the game's PI.
const double TWO_PI = 44.0 / 7.0;
const double SETTLED = 1e-7;
const int MAX_ITERATIONS = 1024;

double s_bulletSpeedSquared = 0.0;
bool s_bulletSpeedKnown = false;

double Dot(const Vector2& p_a, const Vector2& p_b)
{
    return p_a.x * p_b.x + p_a.y * p_b.y;
}

double Length(const Vector2& p_v)
{
    return std::sqrt(Dot(p_v, p_v));
}

Vector2 Centre(const WorldObject& p_object)
{
    return Vector2{p_object.GetCenterX(), p_object.GetCenterY()};
}

// The way p_object flies: its velocity, or where it faces when it stands still.
Vector2 FlightDirection(WorldObject& p_object)
{
    const PhysicalDesc* desc = p_object.GetPhysicalDesc();
    if (desc == nullptr)
    {
        return Vector2{};
    }
    const Vector2& velocity = desc->GetVelocity();
    if (velocity.x != 0.0 || velocity.y != 0.0)
    {
        return velocity;
    }
    const double radians = desc->GetHeading() * DEG2RAD;
    return Vector2{std::sin(radians), -std::cos(radians)};
}
} // namespace

AttackController::AttackController(Ship* p_owner) : Controller(p_owner), m_pShip(p_owner)
{
    GameSrandFromTime();
    m_patience = static_cast<float>(GameRand() / 32767.0 * 3.0 + 4.5);
    m_breakDuration = static_cast<float>(GameRand() / 32767.0 * 0.5 + 0.5);
    m_keepDistance = GameRand() % 116 + 50;
}

void AttackController::SetPersonality(float p_patience, float p_breakDuration, int p_keepDistance)
{
    m_patience = p_patience;
    m_breakDuration = p_breakDuration;
    m_keepDistance = p_keepDistance;
}

void AttackController::SetTimers(float p_shotTimer, float p_breakTimer, bool p_breakingAway)
{
    m_shotTimer = p_shotTimer;
    m_breakTimer = p_breakTimer;
    m_breakingAway = p_breakingAway;
}

void AttackController::ForgetBulletSpeed()
{
    s_bulletSpeedKnown = false;
    s_bulletSpeedSquared = 0.0;
}

int AttackController::Think(int p_state, float p_dt)
{
    if (p_state >= 0 && p_state < 3)
    {
        m_state = p_state;
    }
    return (this->*m_handlers[m_state])(p_dt);
}

double AttackController::TargetDistance() const
{
    if (m_pTarget == nullptr || m_pShip == nullptr)
    {
        return std::numeric_limits<double>::infinity();
    }
    const Vector2 target = Centre(*m_pTarget);
    const Vector2 owner = Centre(*m_pShip);
    return Length(Vector2{target.x - owner.x, target.y - owner.y});
}

int AttackController::Patrol(float p_dt)
{
    if (TargetDistance() > m_range)
    {
        m_pShip->SetRotation(Ship::DIRECTION_RIGHT);
        return m_state;
    }
    return Think(STATE_ATTACK, p_dt);
}

int AttackController::Recover(float p_dt)
{
    return Think(STATE_ATTACK, p_dt);
}

void AttackController::FireWeapon(int p_mount)
{
    std::unique_ptr<Projectile> shot = m_pShip->Fire(p_mount, false);
    if (!shot)
    {
        return;
    }
    if (Level* level = Level::GetCurrent())
    {
        level->Add(shot.release(), LAYER_PROJECTILES);
    }
}

Vector2 AttackController::GetInterceptPoint() const
{
    const Vector2 targetCentre = Centre(*m_pTarget);
    const Vector2 ownerCentre = Centre(*m_pShip);
    const PhysicalDesc* targetDesc = m_pTarget->GetPhysicalDesc();
    if (targetDesc == nullptr)
    {
        return targetCentre;
    }
    const double bulletSpeed = m_pShip->GetPhysicalDesc()->GetSpeed() + Bullet::SPEED;
    const Vector2 u = targetDesc->GetVelocity();
    const double omega = targetDesc->GetRotationSpeed();

    if (omega == 0.0)
    {
        if (!s_bulletSpeedKnown)
        {
            s_bulletSpeedSquared = bulletSpeed * bulletSpeed;
            s_bulletSpeedKnown = true;
        }
        const double s2 = s_bulletSpeedSquared;
        const Vector2 p{targetCentre.x - ownerCentre.x, targetCentre.y - ownerCentre.y};
        const double a = Dot(u, u) / s2 - 1.0;
        const double b = 2.0 * Dot(u, p) / s2;
        const double c = Dot(p, p) / s2;
        const double discriminant = b * b - 4.0 * a * c;
        // A target as fast as the bullet, or one it can never reach: aim at it.
        if (a == 0.0 || !(discriminant >= 0.0))
        {
            return targetCentre;
        }
        double t = (std::sqrt(discriminant) - b) / (2.0 * a);
        if (t < 0.0)
        {
            t = (-std::sqrt(discriminant) - b) / (2.0 * a);
        }
        const Vector2 aim{targetCentre.x + u.x * t, targetCentre.y + u.y * t};
        return std::isfinite(aim.x) && std::isfinite(aim.y) ? aim : targetCentre;
    }

    // A turning target moves on a circle of radius R around Z.
    const double uLength = Length(u);
    if (uLength == 0.0)
    {
        return targetCentre;
    }
    const double radius = std::fabs(targetDesc->GetSpeed() / (omega * DEG2RAD));
    const Vector2 perpendicular = omega > 0.0 ? Vector2{-u.y, u.x} : Vector2{u.y, -u.x};
    const Vector2 z{targetDesc->GetX() + perpendicular.x / uLength * radius,
                    targetDesc->GetY() + perpendicular.y / uLength * radius};
    const Vector2 q{ownerCentre.x - z.x, ownerCentre.y - z.y};
    const double d = Length(q);
    const Vector2 onCircle{targetDesc->GetX() - z.x, targetDesc->GetY() - z.y};
    const double onCircleLength = Length(onCircle);
    if (d == 0.0 || onCircleLength == 0.0)
    {
        return targetCentre;
    }
    const double cosPhi = std::clamp(Dot(onCircle, q) / (onCircleLength * d), -1.0, 1.0);
    double phi = std::acos(cosPhi);
    if (onCircle.x * q.y - onCircle.y * q.x > 0.0)
    {
        phi = TWO_PI - phi;
    }
    const double k = -omega * DEG2RAD / bulletSpeed;
    double theta = 0.0;
    bool settled = false;
    for (int i = 0; i < MAX_ITERATIONS; ++i)
    {
        const double next = k * std::sqrt(radius * radius + d * d - 2.0 * d * radius * std::cos(theta)) - phi;
        const bool close = std::fabs(next - theta) <= SETTLED;
        theta = next;
        if (close)
        {
            settled = true;
            break;
        }
    }
    if (!settled)
    {
        return targetCentre;
    }
    const double reach = Length(Vector2{targetCentre.x - z.x, targetCentre.y - z.y});
    const Vector2 scaled{q.x / d * reach, q.y / d * reach};
    const Vector2 aim{z.x + scaled.y * std::sin(theta) + scaled.x * std::cos(theta),
                      z.y + scaled.y * std::cos(theta) - scaled.x * std::sin(theta)};
    return std::isfinite(aim.x) && std::isfinite(aim.y) ? aim : targetCentre;
}

int AttackController::Attack(float p_dt)
{
    m_shotTimer += p_dt;
    if (TargetDistance() > m_range)
    {
        return Think(STATE_PATROL, p_dt);
    }
    const Vector2 ownerCentre = Centre(*m_pShip);
    const Vector2 aim = GetInterceptPoint();
    const Vector2 d{aim.x - ownerCentre.x, aim.y - ownerCentre.y};
    const Vector2 v = FlightDirection(*m_pShip);
    const double cross = d.y * v.x - d.x * v.y;

    // Staying badly aimed for longer than the ship's patience (and a little luck) makes it
    // break away for a moment.
    if (!m_breakingAway)
    {
        const int r = GameRand() % 768;
        if (r / 256.0 + m_patience <= m_breakTimer)
        {
            m_breakingAway = true;
            m_breakTimer = 0.0f;
        }
    }
    if (m_breakingAway)
    {
        m_breakTimer += p_dt;
        if (m_breakTimer >= m_breakDuration)
        {
            m_breakingAway = false;
            m_breakTimer = 0.0f;
        }
    }

    // Degrees between the flight direction and the aim point; the turn eases off as it closes.
    const double lengths = Length(d) * Length(v);
    const double angle = lengths > 0.0 ? std::acos(std::clamp(Dot(d, v) / lengths, -1.0, 1.0)) * RAD2DEG : 0.0;
    const double k = std::min((angle / AIM_ANGLE) * (angle / AIM_ANGLE), 1.0);
    const double rate = m_pShip->GetTurnRate() * k;
    const bool towardsLeft = cross < 0.0;
    m_pShip->SetRotationSpeed(static_cast<float>(towardsLeft != m_breakingAway ? -rate : rate));

    if (angle >= AIM_ANGLE)
    {
        if (!m_breakingAway)
        {
            m_breakTimer += p_dt;
        }
    }
    else
    {
        m_breakTimer = 0.0f;
        if (m_shotTimer > SHOT_INTERVAL)
        {
            m_shotTimer = 0.0f;
            FireWeapon(0);
        }
    }

    // Close in fast from afar, ease off near the personal distance, back off when closer.
    const Vector2 targetCentre = Centre(*m_pTarget);
    const Vector2 e{targetCentre.x - ownerCentre.x, targetCentre.y - ownerCentre.y};
    if (Dot(e, v) <= 0.0)
    {
        m_pShip->SetThrust(m_breakingAway ? Ship::DIRECTION_FORWARD : Ship::DIRECTION_BACKWARD);
        return m_state;
    }
    const double keep = m_keepDistance;
    double gap = Length(e) - keep;
    double acceleration = 0.0;
    if (gap >= 0.0)
    {
        const PhysicalDesc* targetDesc = m_pTarget->GetPhysicalDesc();
        const double targetSpeed = targetDesc != nullptr ? targetDesc->GetSpeed() : 0.0;
        if (gap <= MAX_ACCELERATION && m_pShip->GetPhysicalDesc()->GetSpeed() < targetSpeed)
        {
            gap -= keep;
        }
        if (gap > MAX_ACCELERATION)
        {
            gap = MAX_ACCELERATION;
        }
        acceleration = gap;
    }
    else
    {
        acceleration = keep != 0.0 ? gap / keep * MAX_ACCELERATION : -MAX_ACCELERATION;
    }
    m_pShip->SetAcceleration(static_cast<float>(m_breakingAway ? -acceleration : acceleration));
    return m_state;
}
