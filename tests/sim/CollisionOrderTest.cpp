// The collision pass tests only ships and shots whose rectangles meet; these tests hold it to
// the plain walk it replaced (every ship of a leaf, in list order, against every shot of the
// leaf, in list order), kept here as the reference: the same hits, in the same order, on
// hand-made leaves full of awkward shapes and in a seeded crowded battle of real ships.

#include "forge/Forge.h"
#include "gfx/Animation.h"
#include "sim/Collide.h"
#include "sim/CollisionGrid.h"
#include "sim/CombatSupport.h"
#include "sim/EntityShip.h"
#include "sim/Level.h"
#include "sim/PlayerShip.h"
#include "sim/Projectile.h"
#include "sim/QuadNode.h"
#include "sim/Weapon.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using combattest::FixedSeed;
using combattest::MakeEntity;
using combattest::MakeMachineGun;
using combattest::RecordingMission;
using combattest::ScopedCatalog;
using combattest::WriteGameFile;

namespace
{

// The walk the collision pass used before shots were filed by their rectangles.
bool ReferenceCornerInside(const PhysicalDesc& p_area, const PhysicalDesc& p_shape)
{
    if (p_shape.GetWorldMin().x > p_area.GetWorldMax().x || p_shape.GetWorldMax().x < p_area.GetWorldMin().x ||
        p_shape.GetWorldMin().y > p_area.GetWorldMax().y || p_shape.GetWorldMax().y < p_area.GetWorldMin().y)
    {
        return false;
    }
    for (int i = 0; i < p_area.GetNumTriangles(); ++i)
    {
        const Triangle& area = p_area.GetWorldTriangles()[i];
        for (int j = 0; j < p_shape.GetNumTriangles(); ++j)
        {
            const Triangle& c = p_shape.GetWorldTriangles()[j];
            if (IsStrictlyInside(area, c.x1, c.y1) || IsStrictlyInside(area, c.x2, c.y2) ||
                IsStrictlyInside(area, c.x3, c.y3))
            {
                return true;
            }
        }
    }
    return false;
}

void ReferenceCollide(QuadNode* p_a, QuadNode* p_b)
{
    for (WorldObject* ship = p_a->GetList(LAYER_SHIPS); ship != nullptr; ship = ship->GetNextInList())
    {
        const PhysicalDesc* shipDesc = ship->GetPhysicalDesc();
        if (shipDesc == nullptr)
        {
            continue;
        }
        WorldObject* object = p_b->GetList(LAYER_PROJECTILES);
        while (object != nullptr)
        {
            const PhysicalDesc* shotDesc = object->GetPhysicalDesc();
            Projectile* shot = dynamic_cast<Projectile*>(object);
            if (shotDesc == nullptr || object->GetTeam() == ship->GetTeam() ||
                !ReferenceCornerInside(*shipDesc, *shotDesc) || shot == nullptr)
            {
                object = object->GetNextInList();
                continue;
            }
            ship->TakeDamage(shot->GetDamage());
            if (shot->SurvivesHits())
            {
                object = object->GetNextInList();
                continue;
            }
            shot->SetDead(true);
            WorldObject* previous = static_cast<WorldObject*>(shot->m_pPrev);
            p_b->Remove(shot, LAYER_PROJECTILES);
            object = previous != nullptr ? previous->GetNextInList() : p_b->GetList(LAYER_PROJECTILES);
        }
    }
}

// CollisionGrid::Update with the reference walk.
void ReferenceGridPass(Level& p_level)
{
    CollisionGrid* grid = p_level.GetGrid();
    for (int row = 0; row < grid->GetSize(); ++row)
    {
        for (int column = 0; column < grid->GetSize(); ++column)
        {
            ReferenceCollide(grid->GetCell(row, column), grid->GetCell(row, column));
        }
    }
}

// Level::Update with the reference walk (the level has no starfield, and nothing in these
// worlds reads the level's clock).
void ReferenceUpdate(Level& p_level, float p_dt)
{
    QuadNode::AdvanceFrameCounter();
    p_level.GetRoot()->Update(p_dt);
    ReferenceGridPass(p_level);
}

// Every hit of a leaf world, in order: "ship <- damage", each shot's damage being its number.
std::vector<std::string> g_hits;

class LogShip : public WorldObject
{
public:
    explicit LogShip(int p_id) : m_id(p_id) { InitPhysicalDesc(); }
    void TakeDamage(unsigned p_amount) override
    {
        g_hits.push_back(std::to_string(m_id) + " <- " + std::to_string(p_amount));
    }
    PhysicalDesc& Desc() { return *m_pPhysicalDesc; }

private:
    int m_id;
};

class LogShot : public Projectile
{
public:
    LogShot(unsigned p_id, uint8_t p_team, uint8_t p_hitKind, bool p_splinters) : m_id(p_id), m_splinters(p_splinters)
    {
        m_hitKind = p_hitKind;
        SetDamage(p_id, p_team);
        InitPhysicalDesc();
    }
    // A used-up shot that splinters puts a new one in front of its leaf's list, as a bomb's
    // blast is put there; its number is the next hundred.
    void SetDead(bool p_dead) override
    {
        const bool dies = p_dead && !m_dead;
        Projectile::SetDead(p_dead);
        if (dies && m_splinters && Level::GetCurrent() != nullptr)
        {
            auto* splinter = new LogShot(m_id + 100, m_team, HIT_KIND_DEFAULT, false);
            splinter->Desc().SetBox(12, 12, 0, 0);
            splinter->Desc().SetPosition(GetX(), GetY());
            splinter->Desc().Update(0.0f);
            Level::GetCurrent()->Add(splinter, LAYER_PROJECTILES);
        }
    }
    bool Update(float p_dt) override { return WorldObject::Update(p_dt); }
    PhysicalDesc& Desc() { return *m_pPhysicalDesc; }
    unsigned GetId() const { return m_id; }

private:
    unsigned m_id;
    bool m_splinters;
};

// Something in the shots' layer that is no projectile: it must never hit.
class Debris : public WorldObject
{
public:
    Debris() { InitPhysicalDesc(); }
    PhysicalDesc& Desc() { return *m_pPhysicalDesc; }
};

const double LEAF_X = 1920.0; // the leaf 1920..2559 of an 80 x 80 map of 128-unit tiles
const double LEAF_SIDE = 640.0;

// One leaf crowded with ships and shots of every awkward kind, the same for the same seed:
// turned boxes, shapes reaching out of the leaf, beams across the whole leaf, shapes without
// triangles, dead ships, debris, shots that survive their hits and shots that splinter when
// used up.
void Populate(Level& p_level, uint32_t p_seed, int p_ships, int p_shots)
{
    std::mt19937 random(p_seed);
    auto uniform = [&random](double p_low, double p_high) {
        return std::uniform_real_distribution<double>(p_low, p_high)(random);
    };
    auto chance = [&random](int p_percent) { return static_cast<int>(random() % 100) < p_percent; };
    // Clusters, so that many shots pile onto some ships.
    const double centreX = LEAF_X + uniform(50.0, LEAF_SIDE - 50.0);
    const double centreY = LEAF_X + uniform(50.0, LEAF_SIDE - 50.0);
    auto place = [&](PhysicalDesc& p_desc) {
        const bool clustered = chance(60);
        const double x = clustered ? centreX + uniform(-60.0, 60.0) : LEAF_X + uniform(0.0, LEAF_SIDE - 1.0);
        const double y = clustered ? centreY + uniform(-60.0, 60.0) : LEAF_X + uniform(0.0, LEAF_SIDE - 1.0);
        p_desc.SetPosition(x, y);
        p_desc.SetHeading(chance(50) ? uniform(0.0, 360.0) : 0.0);
        p_desc.Update(0.0f);
    };
    for (int i = 0; i < p_ships; ++i)
    {
        auto* ship = new LogShip(i);
        ship->SetTeam(static_cast<uint8_t>(random() % 2));
        if (chance(5))
        {
            ship->Desc().SetTriangles(nullptr, 0);
        }
        else
        {
            ship->Desc().SetBox(static_cast<unsigned>(uniform(8.0, 90.0)), static_cast<unsigned>(uniform(0.0, 60.0)),
                                static_cast<short>(uniform(-20.0, 20.0)), static_cast<short>(uniform(-20.0, 20.0)));
        }
        place(ship->Desc());
        // Dead ships are still hit until the level removes them.
        ship->SetDead(chance(10));
        p_level.Add(ship, LAYER_SHIPS);
    }
    const uint8_t KINDS[] = {Projectile::HIT_KIND_DEFAULT, Projectile::HIT_KIND_MISSILE, Projectile::HIT_KIND_BOMB,
                             Projectile::HIT_KIND_BEAM};
    for (int i = 0; i < p_shots; ++i)
    {
        if (chance(4))
        {
            auto* debris = new Debris();
            place(debris->Desc());
            p_level.Add(debris, LAYER_PROJECTILES);
            continue;
        }
        auto* shot = new LogShot(static_cast<unsigned>(1000 + i), static_cast<uint8_t>(random() % 2),
                                 KINDS[random() % 4], chance(15));
        const int shape = static_cast<int>(random() % 10);
        if (shape == 0)
        {
            // A beam: a thin triangle across the leaf and beyond.
            const Triangle beam{0.0, 0.0, 2.0, 0.0, 1.0, -uniform(300.0, 1500.0)};
            shot->Desc().SetTriangles(&beam, 1);
        }
        else if (shape == 1)
        {
            shot->Desc().SetTriangles(nullptr, 0);
        }
        else
        {
            shot->Desc().SetBox(static_cast<unsigned>(uniform(2.0, 24.0)), static_cast<unsigned>(uniform(0.0, 24.0)), 0,
                                0);
        }
        place(shot->Desc());
        p_level.Add(shot, LAYER_PROJECTILES);
    }
}

// The hits of three collision passes over the world of the crowded leaf (some of it spills
// into the neighbouring leaves), and the shots left, leaf by leaf in list order.
std::vector<std::string> CollideLeaf(uint32_t p_seed, int p_ships, int p_shots, bool p_reference)
{
    g_hits.clear();
    Level level;
    EXPECT_TRUE(level.Create(80, 128, 128, nullptr));
    Populate(level, p_seed, p_ships, p_shots);
    for (int pass = 0; pass < 3; ++pass)
    {
        g_hits.push_back("pass " + std::to_string(pass));
        if (p_reference)
        {
            ReferenceGridPass(level);
        }
        else
        {
            level.GetGrid()->Update();
        }
    }
    std::vector<std::string> result = g_hits;
    std::vector<QuadNode*> leaves;
    level.GetRoot()->CollectLeaves(leaves);
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(LAYER_PROJECTILES); object != nullptr;
             object = object->GetNextInList())
        {
            auto* shot = dynamic_cast<LogShot*>(object);
            result.push_back("left " + (shot != nullptr ? std::to_string(shot->GetId()) : std::string("debris")));
        }
    }
    return result;
}

TEST(CollisionOrder, EveryLeafGivesTheHitsOfThePlainWalkInItsOrder)
{
    size_t hits = 0;
    size_t splinters = 0;
    const struct
    {
        int ships;
        int shots;
    } sizes[] = {{1, 1}, {3, 40}, {40, 3}, {60, 60}, {250, 400}};
    for (uint32_t seed = 1; seed <= 12; ++seed)
    {
        for (const auto& size : sizes)
        {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", " + std::to_string(size.ships) + " ships, " +
                         std::to_string(size.shots) + " shots");
            const std::vector<std::string> expected = CollideLeaf(seed, size.ships, size.shots, true);
            const std::vector<std::string> actual = CollideLeaf(seed, size.ships, size.shots, false);
            size_t same = 0;
            while (same < expected.size() && same < actual.size() && expected[same] == actual[same])
            {
                ++same;
            }
            ASSERT_EQ(expected, actual) << "from line " << same << ": "
                                        << (same < expected.size() ? expected[same] : std::string("(end)")) << " / "
                                        << (same < actual.size() ? actual[same] : std::string("(end)"));
            for (const std::string& line : expected)
            {
                hits += line.find(" <- ") != std::string::npos;
                // A splinter's number is its shot's number plus 100: 1100 and up.
                splinters += line.find(" <- 11") != std::string::npos || line.find("left 11") != std::string::npos;
            }
        }
    }
    // The worlds were crowded enough to matter: many hits, and splinters among them.
    EXPECT_GT(hits, 5000u);
    EXPECT_GT(splinters, 20u);
}

// A crowded battle of real ships: 160 computer ships with machine guns, lasers, missiles and
// bombs around a player's ship that sweeps them with its lasers. Per frame: the deaths, the
// money the kills pay, the ships left, the shots in flight, every hit in order, and every
// ship's armour and shield.
class CrowdedBattle : public testsupport::WorkDirTest
{
protected:
    static constexpr int CROWD = 160;
    static constexpr int FRAMES = 480;
    static constexpr float FRAME_TIME = 1.0f / 30.0f;
    static constexpr double CENTRE = 5000.0;

    void SetUp() override
    {
        WorkDirTest::SetUp();
        WriteGameFile("GOB\\Parts\\weapon000.wpn", MakeMachineGun());
        const char* const weapons[] = {"Machine Gun", "Laser", "Missile", "Bomb"};
        for (int i = 0; i < 4; ++i)
        {
            char name[32];
            std::snprintf(name, sizeof(name), "entity\\air%03d.nme", i);
            WriteGameFile(name, MakeEntity(weapons[i], 30, 20));
        }
    }

    // Every hit taken, in order, this frame: "name <- damage".
    static inline std::string s_frameHits;

    // A computer ship that notes its hits.
    class NotingShip : public EntityShip
    {
    public:
        void TakeDamage(unsigned p_amount) override
        {
            s_frameHits += ' ' + GetName() + "<-" + std::to_string(p_amount);
            EntityShip::TakeDamage(p_amount);
        }
    };

    // A player's ship that does not die, with three guns and ammunition for ever.
    class Gunship : public combattest::ProbePlayer
    {
    public:
        void TakeDamage(unsigned p_amount) override
        {
            s_frameHits += " player<-" + std::to_string(p_amount);
            combattest::ProbePlayer::TakeDamage(p_amount);
        }

        Gunship()
        {
            m_armour = 4000000000u;
            m_maxSpeed = 200;
            m_turnRate = 90;
            Mount(0, dynamic_cast<Weapon*>(g_pPartCatalog->Find("Machine Gun", PART_WEAPON)));
            Mount(1, dynamic_cast<Weapon*>(g_pPartCatalog->Find("Laser", PART_WEAPON)));
            Mount(2, dynamic_cast<Weapon*>(g_pPartCatalog->Find("Multi-Laser", PART_WEAPON)));
            GetPilot().SetBullets(65535);
            GetPilot().SetEnergy(65535);
        }
    };

    std::vector<std::string> Fight(bool p_reference)
    {
        FixedSeed seed(4242);
        ScopedCatalog catalog;
        Gunship player;
        RecordingMission mission;
        Level level;
        EXPECT_TRUE(level.Create(80, 128, 128, nullptr));
        level.SetMission(&mission);
        player.SetPosition(static_cast<float>(CENTRE), static_cast<float>(CENTRE));
        // Turning fast on a small circle, its lasers sweep through the crowd.
        player.GetPhysicalDesc()->SetSpeed(60.0);
        player.SetRotationSpeed(120.0f);
        level.SetPlayer(&player);
        level.Add(&player, LAYER_SHIPS);
        for (int i = 0; i < CROWD; ++i)
        {
            auto* ship = new NotingShip();
            ship->Load(("entity\\air00" + std::to_string(i % 4) + ".nme").c_str());
            ship->SetName(("ship" + std::to_string(i)).c_str());
            const double angle = i * 2.399963;
            const double radius = 150.0 + (i * 37) % 900;
            ship->SetPosition(static_cast<float>(CENTRE + radius * std::cos(angle)),
                              static_cast<float>(CENTRE + radius * std::sin(angle)));
            ship->GetPhysicalDesc()->SetHeading((i * 53) % 360);
            ship->SetTarget(&player);
            level.Add(ship, LAYER_SHIPS);
        }
        level.SetEnemyCount(CROWD);

        std::vector<std::string> trace;
        std::set<std::string> dead;
        for (int frame = 1; frame <= FRAMES; ++frame)
        {
            s_frameHits.clear();
            if (p_reference)
            {
                ReferenceUpdate(level, FRAME_TIME);
            }
            else
            {
                level.Update(FRAME_TIME);
            }
            level.Add(player.Fire(1, true).release(), LAYER_PROJECTILES);
            level.Add(player.Fire(2, true).release(), LAYER_PROJECTILES);
            if (frame % 6 == 0)
            {
                level.Add(player.Fire(0, true).release(), LAYER_PROJECTILES);
            }
            trace.push_back(Census(level, frame, player, dead));
        }
        return trace;
    }

    static std::string Census(Level& p_level, int p_frame, Gunship& p_player, std::set<std::string>& p_dead)
    {
        std::ostringstream line;
        line << "frame " << p_frame << ": money " << p_player.GetPilot().GetMoney() << ", ships left "
             << p_level.GetEnemiesLeft() << ",";
        std::vector<QuadNode*> leaves;
        p_level.GetRoot()->CollectLeaves(leaves);
        int shots = 0;
        int explosions = 0;
        std::ostringstream ships;
        for (QuadNode* leaf : leaves)
        {
            for (WorldObject* o = leaf->GetList(LAYER_SHIPS); o != nullptr; o = o->GetNextInList())
            {
                explosions += dynamic_cast<Animation*>(o) != nullptr;
                auto* ship = dynamic_cast<Ship*>(o);
                if (ship == nullptr || ship == &p_player)
                {
                    continue;
                }
                ships << ' ' << ship->GetName() << '=' << ship->GetArmour() << '/' << ship->GetShield();
                if (ship->IsDead() && p_dead.insert(ship->GetName()).second)
                {
                    line << " dies " << ship->GetName();
                }
            }
            for (WorldObject* o = leaf->GetList(LAYER_PROJECTILES); o != nullptr; o = o->GetNextInList())
            {
                ++shots;
            }
        }
        line << " shots " << shots << ", explosions " << explosions << "; hits" << s_frameHits << ";" << ships.str();
        return line.str();
    }
};

TEST_F(CrowdedBattle, GivesTheDeathsRewardsAndFramesOfThePlainWalk)
{
    const std::vector<std::string> expected = Fight(true);
    const std::vector<std::string> actual = Fight(false);
    ASSERT_EQ(expected.size(), actual.size());
    for (size_t i = 0; i < expected.size(); ++i)
    {
        ASSERT_EQ(expected[i], actual[i]);
    }
    // It was a battle: ships died and the kills paid.
    size_t deaths = 0;
    for (const std::string& line : expected)
    {
        for (size_t at = line.find(" dies "); at != std::string::npos; at = line.find(" dies ", at + 1))
        {
            ++deaths;
        }
    }
    EXPECT_GT(deaths, 100u);
    EXPECT_EQ(std::string::npos, expected.back().find("money 0,"));
}

} // namespace
