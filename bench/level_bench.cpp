// The cost of one Level::Update (moving every object, re-filing those that cross a leaf
// border, and the collision pass) with 100, 1,000 and 10,000 ships and as many shots:
// spread over an 80 x 80-tile map, and crowded into one leaf, the worst case of the
// per-cell collision test; and the cost of the collision pass alone on the same worlds.
// The counter "hits" is the number of ship-shot contacts per pass: the work no collision
// test can avoid. Summed up at the end, on standard error, as time per update and as a
// share of a 60 Hz frame. No window is needed.

#include "BenchReporter.h"
#include "app/Random.h"
#include "sim/CollisionGrid.h"
#include "sim/Level.h"
#include "sim/Projectile.h"
#include "sim/WorldObject.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{
using bench::FRAME_BUDGET_MS;

// Contacts since the last reset, over every ship.
uint64_t s_hits = 0;

// A ship that circles and soaks up hits.
class BenchShip : public WorldObject
{
public:
    BenchShip(double p_x, double p_y, double p_heading, double p_speed, double p_turnRate, uint8_t p_team)
    {
        m_team = p_team;
        InitPhysicalDesc();
        m_pPhysicalDesc->SetPosition(p_x, p_y);
        m_pPhysicalDesc->SetHeading(p_heading);
        m_pPhysicalDesc->SetSpeed(p_speed);
        m_pPhysicalDesc->SetRotationSpeed(p_turnRate);
    }
    bool IsEnemy() const override { return true; }
    void TakeDamage(unsigned p_amount) override
    {
        m_damage += p_amount;
        ++s_hits;
    }
    unsigned m_damage = 0;
};

// A shot that circles and, like a bomb, is not used up by a hit, so the population stays
// the same from one update to the next.
class BenchShot : public Projectile
{
public:
    BenchShot(double p_x, double p_y, double p_heading, double p_speed, double p_turnRate, uint8_t p_team)
    {
        m_hitKind = HIT_KIND_BOMB;
        SetDamage(1, p_team);
        InitPhysicalDesc();
        m_pPhysicalDesc->SetBox(4, 16, 0, 0);
        m_pPhysicalDesc->SetPosition(p_x, p_y);
        m_pPhysicalDesc->SetHeading(p_heading);
        m_pPhysicalDesc->SetSpeed(p_speed);
        m_pPhysicalDesc->SetRotationSpeed(p_turnRate);
    }
    bool Update(float p_dt) override { return WorldObject::Update(p_dt); }
};

double Random(double p_low, double p_high)
{
    return p_low + (p_high - p_low) * GameRand() / GAME_RAND_MAX;
}

// p_count ships and p_count shots, half of each on either team. Spread: anywhere in the play
// area, flying wide circles that cross leaf borders. Crowded: all inside the leaf at
// (1920, 1920)-(2559, 2559), on circles small enough never to leave it.
void Populate(Level& p_level, int p_count, bool p_crowded)
{
    GameSrand(12345);
    const double low = p_crowded ? 1980.0 : p_level.GetLeft();
    const double high = p_crowded ? 2490.0 : p_level.GetRight();
    for (int i = 0; i < p_count; ++i)
    {
        const uint8_t team = static_cast<uint8_t>(i % 2);
        p_level.Add(new BenchShip(Random(low, high), Random(low, high), Random(0, 359), p_crowded ? 40.0 : 150.0,
                                  p_crowded ? 90.0 : 45.0, team),
                    LAYER_SHIPS);
        p_level.Add(new BenchShot(Random(low, high), Random(low, high), Random(0, 359), p_crowded ? 60.0 : 300.0,
                                  p_crowded ? 180.0 : 120.0, team),
                    LAYER_PROJECTILES);
    }
}

// p_collisionsOnly: only the collision pass, which changes nothing the next pass sees (the
// shots survive their hits and the ships only count them).
void Run(benchmark::State& p_state, bool p_crowded, bool p_collisionsOnly)
{
    const int count = static_cast<int>(p_state.range(0));
    Level level;
    if (!level.Create(80, 128, 128, nullptr))
    {
        p_state.SkipWithError("cannot build the level");
        return;
    }
    Populate(level, count, p_crowded);
    if (p_collisionsOnly)
    {
        // One update places every shape.
        level.Update(1.0f / 60.0f);
    }
    s_hits = 0;
    for (auto _ : p_state)
    {
        if (p_collisionsOnly)
        {
            level.GetGrid()->Update();
        }
        else
        {
            level.Update(1.0f / 60.0f);
        }
    }
    p_state.counters["objects"] = 2.0 * count;
    p_state.counters["hits"] = benchmark::Counter(static_cast<double>(s_hits), benchmark::Counter::kAvgIterations);
}

void BM_LevelUpdateSpread(benchmark::State& p_state)
{
    Run(p_state, false, false);
}
BENCHMARK(BM_LevelUpdateSpread)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->MinTime(0.5);

void BM_LevelUpdateCrowded(benchmark::State& p_state)
{
    Run(p_state, true, false);
}
BENCHMARK(BM_LevelUpdateCrowded)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->MinTime(0.5);

void BM_CollisionsSpread(benchmark::State& p_state)
{
    Run(p_state, false, true);
}
BENCHMARK(BM_CollisionsSpread)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->MinTime(0.5);

void BM_CollisionsCrowded(benchmark::State& p_state)
{
    Run(p_state, true, true);
}
BENCHMARK(BM_CollisionsCrowded)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->MinTime(0.5);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    bench::RecordingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    // On a shared machine the processor time is the steadier figure; a frame pays the real one.
    std::fprintf(stderr, "\nLevel::Update and the collision pass alone, ships + as many shots; share of a 60 Hz frame (%.1f ms):\n",
                 FRAME_BUDGET_MS);
    std::fprintf(stderr, "  %-28s %12s %9s %12s %9s %10s\n", "", "real ms", "share", "cpu ms", "share", "hits");
    const benchmark::BenchmarkReporter::Run* previous = nullptr;
    for (const benchmark::BenchmarkReporter::Run& run : reporter.GetRuns())
    {
        if (run.run_type != benchmark::BenchmarkReporter::Run::RT_Iteration || run.error_occurred)
        {
            continue;
        }
        // Every benchmark here reports in microseconds.
        const double realMs = run.GetAdjustedRealTime() / 1000.0;
        const double cpuMs = run.GetAdjustedCPUTime() / 1000.0;
        const auto hits = run.counters.find("hits");
        const std::string name = run.run_name.function_name + "/" + run.run_name.args;
        std::fprintf(stderr, "  %-28s %12.3f %8.2f%% %12.3f %8.2f%% %10.0f", name.c_str(), realMs,
                     100.0 * realMs / FRAME_BUDGET_MS, cpuMs, 100.0 * cpuMs / FRAME_BUDGET_MS,
                     hits != run.counters.end() ? hits->second.value : 0.0);
        if (previous != nullptr && previous->run_name.function_name == run.run_name.function_name &&
            previous->GetAdjustedCPUTime() > 0.0)
        {
            std::fprintf(stderr, "  x%.0f cpu for 10x the objects", run.GetAdjustedCPUTime() / previous->GetAdjustedCPUTime());
        }
        std::fprintf(stderr, "\n");
        previous = &run;
    }
    return 0;
}
