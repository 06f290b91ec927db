#include "SoakBot.h"

#include <cmath>
#include <memory>

#include "sim/Layers.h"
#include "sim/Level.h"
#include "sim/MathTables.h"
#include "sim/PlayerShip.h"
#include "sim/Projectile.h"
#include "sim/QuadNode.h"
#include "sim/SpawnerController.h"

namespace soak
{

namespace
{
constexpr uint16_t FULL_AMMUNITION = 65535;
// Where the classification of a position says it lies inside the play area.
constexpr int INSIDE_PLAY_AREA = 4;
// How fast the patrol point moves round the hive, in radians per second.
constexpr double PATROL_TURN = 0.3;

double Distance(double p_ax, double p_ay, double p_bx, double p_by)
{
    return std::hypot(p_bx - p_ax, p_by - p_ay);
}

// Degrees to turn from p_from to p_to, in [-180, 180).
double TurnBetween(double p_from, double p_to)
{
    return std::fmod(p_to - p_from + 540.0, 360.0) - 180.0;
}

bool IsSpawner(const Ship& p_ship)
{
    return dynamic_cast<SpawnerController*>(p_ship.GetController()) != nullptr;
}
} // namespace

void SoakBot::FindTargets(Ship*& p_nearest, Ship*& p_spawner) const
{
    p_nearest = nullptr;
    p_spawner = nullptr;
    double nearest = 0.0;
    std::vector<QuadNode*> leaves;
    m_level.GetRoot()->CollectLeaves(leaves);
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(LAYER_SHIPS); object != nullptr; object = object->GetNextInList())
        {
            auto* ship = dynamic_cast<Ship*>(object);
            if (ship == nullptr || !ship->IsEnemy() || ship->IsDead())
            {
                continue;
            }
            if (IsSpawner(*ship))
            {
                p_spawner = ship;
                continue;
            }
            const double distance =
                Distance(m_ship.GetCenterX(), m_ship.GetCenterY(), ship->GetCenterX(), ship->GetCenterY());
            if (p_nearest == nullptr || distance < nearest)
            {
                p_nearest = ship;
                nearest = distance;
            }
        }
    }
}

void SoakBot::SteerTowards(double p_x, double p_y)
{
    const double wanted = std::atan2(p_x - m_ship.GetCenterX(), -(p_y - m_ship.GetCenterY())) / DEG2RAD;
    const double turn = TurnBetween(m_ship.GetHeading(), wanted);
    m_ship.SetRotation(std::fabs(turn) < 2.0 ? Ship::DIRECTION_NONE
                                             : (turn < 0.0 ? Ship::DIRECTION_LEFT : Ship::DIRECTION_RIGHT));
}

void SoakBot::KeepFighting()
{
    Pilot& pilot = m_ship.GetPilot();
    pilot.SetBullets(FULL_AMMUNITION);
    pilot.SetEnergy(FULL_AMMUNITION);
    pilot.SetMissiles(FULL_AMMUNITION);
    if (m_ship.IsDead() || m_ship.GetArmour() < m_ship.GetMaxArmour() / 4 * 3)
    {
        m_ship.Repair();
    }
}

void SoakBot::Act(float p_dt)
{
    KeepFighting();
    Ship* target = nullptr;
    Ship* spawner = nullptr;
    FindTargets(target, spawner);

    if (m_level.Classify(m_ship.GetX(), m_ship.GetY()) != INSIDE_PLAY_AREA)
    {
        SteerTowards((m_level.GetLeft() + m_level.GetRight()) / 2.0, (m_level.GetTop() + m_level.GetBottom()) / 2.0);
        m_ship.SetThrust(Ship::DIRECTION_FORWARD);
        return;
    }
    if (target == nullptr)
    {
        m_patrolAngle += PATROL_TURN * p_dt;
        const double x = spawner != nullptr ? spawner->GetCenterX() : (m_level.GetLeft() + m_level.GetRight()) / 2.0;
        const double y = spawner != nullptr ? spawner->GetCenterY() : (m_level.GetTop() + m_level.GetBottom()) / 2.0;
        SteerTowards(x + PATROL_RADIUS * std::cos(m_patrolAngle), y + PATROL_RADIUS * std::sin(m_patrolAngle));
        m_ship.SetThrust(Ship::DIRECTION_FORWARD);
        return;
    }

    const double tx = target->GetCenterX();
    const double ty = target->GetCenterY();
    SteerTowards(tx, ty);
    const double distance = Distance(m_ship.GetCenterX(), m_ship.GetCenterY(), tx, ty);
    m_ship.SetThrust(distance > KEEP_DISTANCE ? Ship::DIRECTION_FORWARD : Ship::DIRECTION_BACKWARD);
    const double wanted = std::atan2(tx - m_ship.GetCenterX(), -(ty - m_ship.GetCenterY())) / DEG2RAD;
    if (distance < FIRE_RANGE && std::fabs(TurnBetween(m_ship.GetHeading(), wanted)) < FIRE_ANGLE)
    {
        for (int mount = 0; mount < Ship::NUM_MOUNTS; ++mount)
        {
            // A weapon that is not ready yet makes nothing.
            m_level.Add(m_ship.Fire(mount, true).release(), LAYER_PROJECTILES);
        }
    }
}

} // namespace soak
