// Loading a mission (Campaign::SetMission: level, shop, briefing, 60 objectives with their
// texts, win and lose rules, about 130 values) from a campaign file of 10,000 lines: 50
// missions of 200 lines, the mission loaded being the last. From a file that has not changed
// since the last load (the usual case: campaign files ship with the game), from a file
// changed a tenth of a second before each load, and from a file changed just before each
// load (within a tick of the file system's clock, when every value read checks the file byte
// by byte). Summed up at the end, on standard error, as time per load and as a share of a
// 60 Hz frame. No window is needed.

#include "BenchReporter.h"
#include "mission/Campaign.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include <unistd.h>

namespace
{
using bench::FRAME_BUDGET_MS;

const char* const FILE_NAME = "Campaign/big.ini";
const int MISSIONS = 50;
const int LINES_PER_MISSION = 200;
const int OBJECTIVES = 60;

// p_variant changes one briefing, so that a rewritten file differs from the last one.
std::string MakeCampaign(int p_variant)
{
    std::string text = "[Entry]\nFirstMission=Mission1\n";
    for (int m = 1; m <= MISSIONS; ++m)
    {
        const std::string n = std::to_string(m);
        int lines = 0;
        auto line = [&text, &lines](const std::string& p_line) {
            text += p_line;
            text += '\n';
            ++lines;
        };
        line("; ---- mission " + n);
        line("[Mission" + n + "]");
        line("Level=level" + n + ".lvl");
        line("Shop=shop" + n + ".shp");
        line("Brief=The briefing of mission " + n + (m == MISSIONS ? ", version " + std::to_string(p_variant) : "") +
             ": fly out, find the convoy, bring it home.");
        for (int o = 1; o <= OBJECTIVES; ++o)
        {
            const std::string label = "goal" + std::to_string(o);
            line("Obj" + std::to_string(o) + "=killed " + std::to_string(o) + " raiders " + label);
            line("Obj" + std::to_string(o) + "_text=Destroy " + std::to_string(o) + " ships");
            line(label + "_1=money " + std::to_string(100 * o));
        }
        line("Win1=objectives -1 Mission" + std::to_string(m + 1));
        line("Win2=killed * raiders Mission" + std::to_string(m + 1));
        line("Lose1=timepassed 600");
        line("Lose2=dead player");
        // The two lines of "Entry" count towards the first mission's.
        while (lines < LINES_PER_MISSION - (m == 1 ? 2 : 0))
        {
            line("; notes " + std::to_string(lines));
        }
    }
    return text;
}

bool WriteCampaign(int p_variant)
{
    std::ofstream out(FILE_NAME, std::ios::binary | std::ios::trunc);
    out << MakeCampaign(p_variant);
    return static_cast<bool>(out);
}

// As a file installed before the game starts: a file changed a moment ago is checked byte
// by byte until it has stood still a tick of the file system's clock.
void LetSettle()
{
    ::usleep(2'100'000);
}

const std::string LAST_MISSION = "Mission" + std::to_string(MISSIONS);

void BM_LoadMission10000Lines(benchmark::State& p_state)
{
    if (!WriteCampaign(0))
    {
        p_state.SkipWithError("cannot write the campaign");
        return;
    }
    LetSettle();
    Campaign campaign(FILE_NAME);
    for (auto _ : p_state)
    {
        campaign.SetMission(LAST_MISSION.c_str());
    }
    if (campaign.GetObjectiveTexts().size() != OBJECTIVES)
    {
        p_state.SkipWithError("the mission did not load");
    }
}
BENCHMARK(BM_LoadMission10000Lines)->Unit(benchmark::kMicrosecond)->MinTime(1.0);

// p_pauseMicroseconds: how long before each load the file changes.
void LoadChangedFile(benchmark::State& p_state, unsigned p_pauseMicroseconds)
{
    Campaign campaign(FILE_NAME);
    int variant = 0;
    for (auto _ : p_state)
    {
        p_state.PauseTiming();
        WriteCampaign(++variant);
        ::usleep(p_pauseMicroseconds);
        p_state.ResumeTiming();
        campaign.SetMission(LAST_MISSION.c_str());
    }
    if (campaign.GetBriefing() != "The briefing of mission " + std::to_string(MISSIONS) + ", version " +
                                      std::to_string(variant) + ": fly out, find the convoy, bring it home.")
    {
        p_state.SkipWithError("the change was not seen");
    }
}

void BM_LoadMission10000LinesChangedBefore(benchmark::State& p_state)
{
    LoadChangedFile(p_state, 100'000);
}
BENCHMARK(BM_LoadMission10000LinesChangedBefore)->Unit(benchmark::kMicrosecond)->Iterations(30);

void BM_LoadMission10000LinesChangedJustBefore(benchmark::State& p_state)
{
    LoadChangedFile(p_state, 0);
}
BENCHMARK(BM_LoadMission10000LinesChangedJustBefore)->Unit(benchmark::kMicrosecond)->MinTime(1.0);

// A game directory of our own.
bool MakeGameDirectory()
{
    char pattern[] = "/tmp/korvath_campaign_bench_XXXXXX";
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
    std::filesystem::create_directories("Campaign", ec);
    return !ec;
}
} // namespace

int main(int argc, char** argv)
{
    if (!MakeGameDirectory())
    {
        std::fprintf(stderr, "campaign_bench: cannot make a game directory\n");
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    bench::RecordingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::fprintf(stderr, "\nLoading a mission from a campaign of %d lines; share of a 60 Hz frame (%.1f ms):\n",
                 MISSIONS * LINES_PER_MISSION, FRAME_BUDGET_MS);
    for (const benchmark::BenchmarkReporter::Run& run : reporter.GetRuns())
    {
        if (run.run_type != benchmark::BenchmarkReporter::Run::RT_Iteration || run.error_occurred)
        {
            continue;
        }
        // Both benchmarks report in microseconds.
        const double cpuMs = run.GetAdjustedCPUTime() / 1000.0;
        const double realMs = run.GetAdjustedRealTime() / 1000.0;
        std::fprintf(stderr, "  %-44s real %10.3f ms (%8.2f%%), cpu %10.3f ms (%8.2f%%)\n",
                     run.run_name.function_name.c_str(), realMs, 100.0 * realMs / FRAME_BUDGET_MS, cpuMs,
                     100.0 * cpuMs / FRAME_BUDGET_MS);
    }
    return 0;
}
