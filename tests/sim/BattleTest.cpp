// A whole fight without a window: the player's ship, flown by a simple scripted pilot, takes
// on a band of raiders in a level built from the shipped data, with a fixed seed and a fixed
// frame time. Ships must die, explosions come and go, kills pay, and the same fight twice
// must be the same fight.

#include "forge/Forge.h"
#include "gfx/Animation.h"
#include "sim/CombatSupport.h"
#include "sim/EntityShip.h"
#include "sim/Level.h"
#include "sim/MathTables.h"
#include "sim/PlayerShip.h"
#include "sim/Projectile.h"
#include "sim/QuadNode.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <sstream>
#include <vector>

using combattest::FixedSeed;
using combattest::RecordingMission;
using combattest::ScopedCatalog;
using combattest::WriteGameFile;

namespace
{
const int RAIDERS = 5;
const int32_t RAIDER_REWARD = 400; // 10 x a dart's armour of 40
const float FRAME_TIME = 1.0f / 30.0f;
const int MAX_FRAMES = 30 * 180;

struct BattleResult
{
    int frames = 0;
    int enemiesLeft = 0;
    int32_t money = 0;
    unsigned armour = 0;
    unsigned shield = 0;
    int mostExplosions = 0;
    int explosionsAtEnd = 0;
    bool playerAlive = true;
    std::vector<double> trace;
};

// The scripted pilot: turns towards the nearest raider, closes to 350 units and fires both
// mounts whenever it is aimed within 6 degrees.
class ScriptedPilot
{
public:
    ScriptedPilot(PlayerShip& p_ship, Level& p_level) : m_ship(p_ship), m_level(p_level) {}

    void Fly(int p_frame)
    {
        WorldObject* target = Nearest();
        if (target == nullptr)
        {
            m_ship.SetRotation(Ship::DIRECTION_NONE);
            m_ship.SetThrust(Ship::DIRECTION_BACKWARD);
            return;
        }
        const double dx = target->GetCenterX() - m_ship.GetX();
        const double dy = target->GetCenterY() - m_ship.GetY();
        const double wanted = std::atan2(dx, -dy) / DEG2RAD;
        double off = std::fmod(wanted - m_ship.GetHeading() + 540.0, 360.0) - 180.0;
        m_ship.SetRotation(std::fabs(off) < 2.0 ? Ship::DIRECTION_NONE
                                                 : (off < 0.0 ? Ship::DIRECTION_LEFT : Ship::DIRECTION_RIGHT));
        const double distance = std::hypot(dx, dy);
        m_ship.SetThrust(distance > 350.0 ? Ship::DIRECTION_FORWARD : Ship::DIRECTION_BACKWARD);
        if (std::fabs(off) < 6.0 && distance < 1400.0)
        {
            // A key press every fifth of a second.
            if (p_frame % 6 == 0)
            {
                m_level.Add(m_ship.Fire(0, true).release(), LAYER_PROJECTILES);
            }
            m_level.Add(m_ship.Fire(1, true).release(), LAYER_PROJECTILES);
        }
    }

private:
    WorldObject* Nearest()
    {
        std::vector<QuadNode*> leaves;
        m_level.GetRoot()->CollectLeaves(leaves);
        WorldObject* nearest = nullptr;
        double best = std::numeric_limits<double>::infinity();
        for (QuadNode* leaf : leaves)
        {
            for (WorldObject* object = leaf->GetList(LAYER_SHIPS); object != nullptr; object = object->GetNextInList())
            {
                if (!object->IsEnemy() || object->IsDead())
                {
                    continue;
                }
                const double d = std::hypot(object->GetX() - m_ship.GetX(), object->GetY() - m_ship.GetY());
                if (d < best)
                {
                    best = d;
                    nearest = object;
                }
            }
        }
        return nearest;
    }

    PlayerShip& m_ship;
    Level& m_level;
};

int CountExplosions(Level& p_level)
{
    std::vector<QuadNode*> leaves;
    p_level.GetRoot()->CollectLeaves(leaves);
    int count = 0;
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(LAYER_SHIPS); object != nullptr; object = object->GetNextInList())
        {
            count += dynamic_cast<Animation*>(object) != nullptr;
        }
    }
    return count;
}

class BattleTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        std::ostringstream out;
        std::ostringstream err;
        ASSERT_EQ(0, forge::Build(std::string(KORVATH_SOURCE_DIR) + "/data", m_dir, out, err)) << err.str();

        // Open space, and a band of raiders waiting ahead of the player's start.
        forge::LevelRecord level;
        level.tileSet = "art\\tiles\\space000.bmp";
        level.mapSize = 80;
        level.tiles.assign(80 * 80, 0);
        for (int i = 0; i < RAIDERS; ++i)
        {
            level.ships.push_back(forge::ShipRecord{"001", "", 2900 + 150 * i, 2300 + 120 * (i % 3)});
        }
        WriteGameFile("Campaign\\battle.lvl", level);

        forge::PilotRecord pilot;
        pilot.pilotName = "Scripted";
        pilot.energy = 400;
        pilot.weaponNames = {"Machine Gun", "Laser", "", ""};
        WriteGameFile("Saves\\Scripted0.sav", pilot);
    }

    BattleResult Fight()
    {
        BattleResult result;
        FixedSeed seed(1234);
        ScopedCatalog catalog;
        PlayerShip player;
        EXPECT_TRUE(player.LoadPilot("Saves\\Scripted0.sav"));
        RecordingMission mission;
        Level level;
        EXPECT_TRUE(level.Load("Campaign\\battle.lvl", nullptr, &player));
        level.SetMission(&mission);
        EXPECT_EQ(RAIDERS, level.GetEnemiesLeft());
        ScriptedPilot pilot(player, level);

        int afterLastKill = 0;
        for (result.frames = 1; result.frames <= MAX_FRAMES && afterLastKill < 30; ++result.frames)
        {
            level.Update(FRAME_TIME);
            pilot.Fly(result.frames);
            const int explosions = CountExplosions(level);
            result.mostExplosions = std::max(result.mostExplosions, explosions);
            if (level.GetEnemiesLeft() == 0 || mission.m_defeat)
            {
                ++afterLastKill;
            }
            if (result.frames % 15 == 0)
            {
                result.trace.insert(result.trace.end(), {player.GetX(), player.GetY(), player.GetHeading(),
                                                         static_cast<double>(player.GetArmour()),
                                                         static_cast<double>(level.GetEnemiesLeft()),
                                                         static_cast<double>(explosions)});
            }
        }
        result.enemiesLeft = level.GetEnemiesLeft();
        result.money = player.GetPilot().GetMoney();
        result.armour = player.GetArmour();
        result.shield = player.GetShield();
        result.explosionsAtEnd = CountExplosions(level);
        result.playerAlive = !mission.m_defeat;
        return result;
    }
};
} // namespace

TEST_F(BattleTest, TheScriptedPilotBeatsTheRaidersTheSameWayEveryTime)
{
    const BattleResult first = Fight();
    const int kills = RAIDERS - first.enemiesLeft;
    EXPECT_EQ(RAIDERS, kills) << "after " << first.frames << " frames";
    EXPECT_TRUE(first.playerAlive);
    // The raiders fought back: the shield (60) is gone and the armour (450) took hits.
    EXPECT_EQ(0u, first.shield);
    EXPECT_LT(first.armour, 450u);
    EXPECT_EQ(RAIDER_REWARD * kills, first.money);
    EXPECT_GE(first.mostExplosions, 1);
    // A second after the last kill every explosion has burnt out.
    EXPECT_EQ(0, first.explosionsAtEnd);
    EXPECT_LT(first.frames, MAX_FRAMES);

    const BattleResult second = Fight();
    EXPECT_EQ(first.frames, second.frames);
    EXPECT_EQ(first.money, second.money);
    EXPECT_EQ(first.trace, second.trace);
}
