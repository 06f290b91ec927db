// The cost of one Level::Update in a crowded battle: 200 computer ships loaded from entity files
// (machine guns, lasers, missiles and bombs) hunting the player's ship in the middle of the
// map, their shots, the player's machine gun, laser and multi-laser sweeping through them, and
// the explosions of the ships that die. The fallen are replaced between measured frames, so
// every measured frame has the full crowd. Printed at the end as time per update and as a
// share of a 60 Hz frame, with the average number of ships, shots and explosions (the summary
// on standard error). No window is needed.

#include "BenchReporter.h"
#include "app/DevOptions.h"
#include "app/Random.h"
#include "gfx/Animation.h"
#include "pilot/DataFile.h"
#include "pilot/PartCatalog.h"
#include "sim/EntityShip.h"
#include "sim/Level.h"
#include "sim/PlayerShip.h"
#include "sim/Projectile.h"
#include "sim/QuadNode.h"
#include "sim/Weapon.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace
{
using bench::FRAME_BUDGET_MS;
const float FRAME_TIME = 1.0f / 60.0f;
const int CROWD = 200;
const double CENTRE = 5000.0;
const char* const KINDS[] = {"000", "001", "002", "003"};
const char* const WEAPONS[] = {"Machine Gun", "Laser", "Missile", "Bomb"};

// A player's ship that does not die and carries three guns.
class BenchPlayer : public PlayerShip
{
public:
    BenchPlayer()
    {
        m_armour = 4000000000u;
        m_maxSpeed = 200;
        m_turnRate = 90;
        m_pWeapons[0] = dynamic_cast<Weapon*>(g_pPartCatalog->Find("Machine Gun", PART_WEAPON));
        m_pWeapons[1] = dynamic_cast<Weapon*>(g_pPartCatalog->Find("Laser", PART_WEAPON));
        m_pWeapons[2] = dynamic_cast<Weapon*>(g_pPartCatalog->Find("Multi-Laser", PART_WEAPON));
        GetPilot().SetBullets(65535);
        GetPilot().SetEnergy(65535);
    }
};

void WriteEntity(const std::string& p_name, const char* p_weapon)
{
    DataFile file;
    file.Open(p_name.c_str(), "wb");
    file.WriteString("art\\hulls\\dart\\dart");
    file.WriteUInt16(120); // minimum speed
    file.WriteUInt16(320); // maximum speed
    file.WriteUInt16(110); // thrust
    file.WriteUInt16(160); // turn rate
    file.WriteString(p_weapon);
    file.WriteInt32(120); // armour
    file.WriteInt32(40);  // shield
    file.WriteUInt8(0);   // attack
    file.WriteUInt8(1);   // the computer's team
    file.WriteInt16(8);
    file.WriteInt16(6);
    file.WriteUInt16(32);
    file.WriteUInt16(38);
    file.Close();
}

void WriteMachineGun()
{
    DataFile file;
    file.Open("GOB\\Parts\\weapon000.wpn", "wb");
    file.WriteString("");
    file.WriteString("Machine Gun");
    file.WriteInt32(0);
    file.WriteInt32(5000);
    file.WriteUInt8(13);
    file.WriteUInt8(13);
    file.WriteUInt16(0);
    file.WriteInt32(6);
    file.WriteInt32(13);
    file.WriteInt32(0);
    file.WriteUInt8(8);
    file.Close();
}

// A game directory of our own with the entity and weapon files.
bool MakeGameDirectory()
{
    char pattern[] = "/tmp/korvath_battle_bench_XXXXXX";
    const char* dir = ::mkdtemp(pattern);
    if (dir == nullptr || ::chdir(dir) != 0)
    {
        return false;
    }
    static std::string s_dir = dir;
    std::atexit([] {
        std::error_code ec;
        std::filesystem::remove_all(s_dir, ec);
    });
    std::error_code ec;
    std::filesystem::create_directories("entity", ec);
    std::filesystem::create_directories("GOB/Parts", ec);
    WriteMachineGun();
    for (int i = 0; i < 4; ++i)
    {
        WriteEntity(std::string("entity\\air") + KINDS[i] + ".nme", WEAPONS[i]);
    }
    g_devOptions.hasSeed = true;
    g_devOptions.seed = 2024;
    CreatePartCatalog();
    return true;
}

struct Census
{
    int ships = 0;
    int shots = 0;
    int explosions = 0;
};

Census Count(Level& p_level)
{
    std::vector<QuadNode*> leaves;
    p_level.GetRoot()->CollectLeaves(leaves);
    Census census;
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* o = leaf->GetList(LAYER_SHIPS); o != nullptr; o = o->GetNextInList())
        {
            census.ships += o->IsEnemy() ? 1 : 0;
            census.explosions += dynamic_cast<Animation*>(o) != nullptr ? 1 : 0;
        }
        for (WorldObject* o = leaf->GetList(LAYER_PROJECTILES); o != nullptr; o = o->GetNextInList())
        {
            ++census.shots;
        }
    }
    return census;
}

// Brings the crowd back to CROWD ships, on a ring 300 to 1800 units around the player.
void TopUp(Level& p_level, BenchPlayer& p_player, int p_alive)
{
    for (int i = p_alive; i < CROWD; ++i)
    {
        auto* ship = new EntityShip();
        ship->Load((std::string("entity\\air") + KINDS[i % 4] + ".nme").c_str());
        const double angle = GameRand() * 0.000191747;
        const double radius = 300.0 + GameRand() % 1500;
        ship->SetPosition(static_cast<float>(CENTRE + radius * std::cos(angle)),
                          static_cast<float>(CENTRE + radius * std::sin(angle)));
        ship->GetPhysicalDesc()->SetHeading(GameRand() % 360);
        ship->SetTarget(&p_player);
        p_level.Add(ship, LAYER_SHIPS);
    }
}

void BM_CrowdedBattle(benchmark::State& p_state)
{
    GameSrand(77);
    BenchPlayer player;
    Level level;
    if (!level.Create(80, 128, 128, nullptr))
    {
        p_state.SkipWithError("cannot build the level");
        return;
    }
    player.SetPosition(static_cast<float>(CENTRE), static_cast<float>(CENTRE));
    player.GetPhysicalDesc()->SetSpeed(150.0);
    player.SetRotationSpeed(45.0f);
    level.SetPlayer(&player);
    level.Add(&player, LAYER_SHIPS);
    TopUp(level, player, 0);

    Census total;
    int frame = 0;
    for (auto _ : p_state)
    {
        level.Update(FRAME_TIME);
        level.Add(player.Fire(1, true).release(), LAYER_PROJECTILES);
        level.Add(player.Fire(2, true).release(), LAYER_PROJECTILES);
        if (frame % 6 == 0)
        {
            level.Add(player.Fire(0, true).release(), LAYER_PROJECTILES);
        }
        ++frame;
        if (frame % 30 == 0)
        {
            p_state.PauseTiming();
            const Census census = Count(level);
            total.ships += census.ships;
            total.shots += census.shots;
            total.explosions += census.explosions;
            TopUp(level, player, census.ships);
            p_state.ResumeTiming();
        }
    }
    const int samples = frame / 30 > 0 ? frame / 30 : 1;
    p_state.counters["ships"] = static_cast<double>(total.ships) / samples;
    p_state.counters["shots"] = static_cast<double>(total.shots) / samples;
    p_state.counters["explosions"] = static_cast<double>(total.explosions) / samples;
}
BENCHMARK(BM_CrowdedBattle)->Unit(benchmark::kMicrosecond)->MinTime(3.0);

double Median(std::vector<double> p_values)
{
    if (p_values.empty())
    {
        return 0.0;
    }
    std::sort(p_values.begin(), p_values.end());
    return p_values[p_values.size() / 2];
}
} // namespace

int main(int argc, char** argv)
{
    if (!MakeGameDirectory())
    {
        std::fprintf(stderr, "battle_bench: cannot make a game directory\n");
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    bench::RecordingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    // Every measured run (not the aggregates of repetitions), in microseconds per update.
    std::vector<double> real;
    std::vector<double> cpu;
    for (const benchmark::BenchmarkReporter::Run& run : reporter.GetRuns())
    {
        if (run.run_type == benchmark::BenchmarkReporter::Run::RT_Iteration && !run.error_occurred)
        {
            real.push_back(run.GetAdjustedRealTime());
            cpu.push_back(run.GetAdjustedCPUTime());
        }
    }
    // On a shared machine the processor time is the steadier figure; a frame pays the real one.
    const double realMs = Median(real) / 1000.0;
    const double cpuMs = Median(cpu) / 1000.0;
    std::fprintf(stderr, "\nLevel::Update of a crowded battle (median of %zu runs); share of a 60 Hz frame (%.1f ms):\n",
                 real.size(), FRAME_BUDGET_MS);
    std::fprintf(stderr, "  real %.3f ms (%.1f%%), cpu %.3f ms (%.1f%%)\n", realMs, 100.0 * realMs / FRAME_BUDGET_MS,
                 cpuMs, 100.0 * cpuMs / FRAME_BUDGET_MS);
    DestroyPartCatalog();
    return 0;
}
