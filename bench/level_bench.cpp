// The cost of one Level::Update (moving every object, re-filing those that cross a leaf
// border, and the collision pass) with 100, 1,000 and 10,000 ships and as many shots:
// spread over an 80 x 80-tile map, and crowded into one leaf, the worst case of the
// per-cell collision test. Printed at the end as time per update and as a share of a
// 60 Hz frame. No window is needed.

#include "app/Random.h"
#include "sim/Level.h"
#include "sim/Projectile.h"
#include "sim/WorldObject.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{
const double FRAME_BUDGET_MS = 1000.0 / 60.0;

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
    void TakeDamage(unsigned p_amount) override { m_damage += p_amount; }
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

void RunUpdates(benchmark::State& p_state, bool p_crowded)
{
    const int count = static_cast<int>(p_state.range(0));
    Level level;
    if (!level.Create(80, 128, 128, nullptr))
    {
        p_state.SkipWithError("cannot build the level");
        return;
    }
    Populate(level, count, p_crowded);
    for (auto _ : p_state)
    {
        level.Update(1.0f / 60.0f);
    }
    p_state.counters["objects"] = 2.0 * count;
}

void BM_LevelUpdateSpread(benchmark::State& p_state)
{
    RunUpdates(p_state, false);
}
BENCHMARK(BM_LevelUpdateSpread)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->MinTime(0.5);

void BM_LevelUpdateCrowded(benchmark::State& p_state)
{
    RunUpdates(p_state, true);
}
BENCHMARK(BM_LevelUpdateCrowded)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->MinTime(0.5);

// Remembers each run's real and processor time per update (in microseconds).
class BudgetReporter : public benchmark::ConsoleReporter
{
public:
    struct Times
    {
        std::string name;
        double real;
        double cpu;
    };
    void ReportRuns(const std::vector<Run>& p_runs) override
    {
        for (const Run& run : p_runs)
        {
            m_runs.push_back({run.run_name.function_name + "/" + run.run_name.args, run.GetAdjustedRealTime(),
                              run.GetAdjustedCPUTime()});
        }
        ConsoleReporter::ReportRuns(p_runs);
    }
    std::vector<Times> m_runs;
};
} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    BudgetReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    // On a shared machine the processor time is the steadier figure; a frame pays the real one.
    std::printf("\nLevel::Update, ships + as many shots; share of a 60 Hz frame (%.1f ms):\n", FRAME_BUDGET_MS);
    std::printf("  %-28s %12s %9s %12s %9s\n", "", "real ms", "share", "cpu ms", "share");
    for (size_t i = 0; i < reporter.m_runs.size(); ++i)
    {
        const BudgetReporter::Times& run = reporter.m_runs[i];
        const double realMs = run.real / 1000.0;
        const double cpuMs = run.cpu / 1000.0;
        std::printf("  %-28s %12.3f %8.2f%% %12.3f %8.2f%%", run.name.c_str(), realMs, 100.0 * realMs / FRAME_BUDGET_MS,
                    cpuMs, 100.0 * cpuMs / FRAME_BUDGET_MS);
        const std::string kind = run.name.substr(0, run.name.find('/'));
        if (i > 0 && reporter.m_runs[i - 1].name.rfind(kind, 0) == 0 && reporter.m_runs[i - 1].cpu > 0.0)
        {
            std::printf("  x%.0f cpu for 10x the objects", run.cpu / reporter.m_runs[i - 1].cpu);
        }
        std::printf("\n");
    }
    return 0;
}
