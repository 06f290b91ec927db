// A whole fight without a window: the player's ship, flown by a simple scripted pilot, takes
// on a band of raiders in a level built from the shipped data, with a fixed seed and a fixed
// frame time. Ships must die, explosions come and go, kills pay, and the same fight twice
// must be the same fight.

#include "app/Settings.h"
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

// A hit on the player's ship: what came in, and how much shield and armour it took.
struct Hit
{
    unsigned amount = 0;
    unsigned lost = 0;
    bool operator==(const Hit&) const = default;
};

// The player's ship of the fight, noting every hit.
class RecordingPlayer : public PlayerShip
{
public:
    void TakeDamage(unsigned p_amount) override
    {
        const unsigned before = GetShield() + GetArmour();
        TakeHit(p_amount);
        m_hits.push_back(Hit{p_amount, before - (GetShield() + GetArmour())});
    }

    std::vector<Hit> m_hits;

protected:
    virtual void TakeHit(unsigned p_amount) { PlayerShip::TakeDamage(p_amount); }
};

// The player's ship as it was before there were difficulties: every hit taken as it comes.
class UnscaledPlayer : public RecordingPlayer
{
protected:
    void TakeHit(unsigned p_amount) override { Ship::TakeDamage(p_amount); }
};

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
    // Every 15 frames: the player's place and heading, its armour, the raiders left and the
    // explosions.
    std::vector<double> trace;
    std::vector<Hit> hits;

    static constexpr size_t TRACE_STRIDE = 6;
    static constexpr size_t TRACE_ARMOUR = 3;
    // The trace without the armour.
    std::vector<double> Motion() const
    {
        std::vector<double> motion;
        for (size_t i = 0; i < trace.size(); ++i)
        {
            if (i % TRACE_STRIDE != TRACE_ARMOUR)
            {
                motion.push_back(trace[i]);
            }
        }
        return motion;
    }
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

    template <class Player = RecordingPlayer>
    BattleResult Fight()
    {
        BattleResult result;
        FixedSeed seed(1234);
        ScopedCatalog catalog;
        Player player;
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
        result.hits = player.m_hits;
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

TEST_F(BattleTest, MediumIsTheFightAsItWasAndEasyAndHardChangeOnlyTheDamageTaken)
{
    // Medium through the difficulty, and the same fight with every hit taken as it comes (the
    // game before there were difficulties): the same fight to the last hit and frame.
    ASSERT_EQ(Settings::DIFFICULTY_MEDIUM, g_settings.GetDifficulty());
    const BattleResult medium = Fight();
    const BattleResult unscaled = Fight<UnscaledPlayer>();
    ASSERT_FALSE(medium.hits.empty());
    EXPECT_EQ(unscaled.frames, medium.frames);
    EXPECT_EQ(unscaled.trace, medium.trace);
    EXPECT_EQ(unscaled.hits, medium.hits);
    EXPECT_EQ(unscaled.money, medium.money);
    EXPECT_EQ(unscaled.armour, medium.armour);
    EXPECT_EQ(unscaled.shield, medium.shield);

    for (int32_t difficulty : {Settings::DIFFICULTY_EASY, Settings::DIFFICULTY_HARD})
    {
        SCOPED_TRACE(Settings::GetDifficultyName(difficulty));
        ASSERT_TRUE(g_settings.SetDifficulty(difficulty));
        const BattleResult fight = Fight();
        // The same hits come in, in the same order; each takes its scaled amount (or what was
        // left), and everything but the armour goes as at Medium.
        ASSERT_EQ(medium.hits.size(), fight.hits.size());
        unsigned taken = 0;
        unsigned scaledTotal = 0;
        for (size_t i = 0; i < fight.hits.size(); ++i)
        {
            EXPECT_EQ(medium.hits[i].amount, fight.hits[i].amount) << "hit " << i;
            EXPECT_EQ(PlayerShip::ScaleDamage(fight.hits[i].amount, difficulty), fight.hits[i].lost) << "hit " << i;
            taken += fight.hits[i].lost;
            scaledTotal += PlayerShip::ScaleDamage(fight.hits[i].amount, difficulty);
        }
        EXPECT_EQ(scaledTotal, taken);
        EXPECT_TRUE(fight.playerAlive);
        EXPECT_EQ(medium.frames, fight.frames);
        EXPECT_EQ(medium.Motion(), fight.Motion());
        EXPECT_EQ(medium.money, fight.money);
        EXPECT_EQ(medium.enemiesLeft, fight.enemiesLeft);
    }
}
