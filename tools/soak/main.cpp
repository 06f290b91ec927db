// korvath-soak [--minutes N] [--every SECONDS] [--frame-time SECONDS] [--mission NAME] [--seed N]
//
// Run in a game directory (`make soak` runs it in build/game for 30 minutes of game time).
// Prints one line per game minute (or per --every seconds): resident memory, the heap in use
// and the world's objects; at the end, how they moved once the battle was under way.
#include "soak/Soak.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace
{
// The battle counts as under way from this game minute on.
constexpr double STEADY_FROM_SECONDS = 5.0 * 60.0;
constexpr double MEGABYTE = 1024.0 * 1024.0;

bool ParseArguments(int p_argc, char** p_argv, soak::Options& p_options)
{
    for (int i = 1; i < p_argc; ++i)
    {
        const bool hasValue = i + 1 < p_argc;
        if (std::strcmp(p_argv[i], "--minutes") == 0 && hasValue)
        {
            p_options.seconds = 60.0 * std::atof(p_argv[++i]);
        }
        else if (std::strcmp(p_argv[i], "--every") == 0 && hasValue)
        {
            p_options.sampleEvery = std::atof(p_argv[++i]);
        }
        else if (std::strcmp(p_argv[i], "--frame-time") == 0 && hasValue)
        {
            p_options.frameTime = static_cast<float>(std::atof(p_argv[++i]));
        }
        else if (std::strcmp(p_argv[i], "--mission") == 0 && hasValue)
        {
            p_options.mission = p_argv[++i];
        }
        else if (std::strcmp(p_argv[i], "--seed") == 0 && hasValue)
        {
            p_options.seed = static_cast<uint32_t>(std::strtoul(p_argv[++i], nullptr, 10));
        }
        else
        {
            return false;
        }
    }
    return p_options.seconds > 0.0 && p_options.frameTime > 0.0f && p_options.sampleEvery > 0.0;
}
} // namespace

int main(int argc, char** argv)
{
    soak::Options options;
    if (!ParseArguments(argc, argv, options))
    {
        std::fprintf(
            stderr,
            "usage: korvath-soak [--minutes N] [--every SECONDS] [--frame-time SECONDS] [--mission NAME] [--seed N]\n");
        return 2;
    }
    std::printf("soak: %s of %s, %.0f minutes of game time at %.4f s a frame\n", options.mission.c_str(),
                options.campaign.c_str(), options.seconds / 60.0, options.frameTime);
    std::printf("%6s %8s %9s %6s %10s %6s %7s %5s %7s %6s %6s %9s %6s %8s\n", "minute", "rss MB", "heap KB", "ships",
                "explosions", "shots", "scenery", "peak", "images", "named", "kills", "money", "status", "wall s");
    std::vector<soak::Sample> samples;
    const auto start = std::chrono::steady_clock::now();
    std::string error;
    const bool ok = soak::Run(
        options,
        [&samples, start](const soak::Sample& p_sample) {
            samples.push_back(p_sample);
            const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
            std::printf("%6.2f %8.1f %9.1f %6d %10d %6d %7d %5d %7zu %6zu %6d %9d %6d %8.1f\n", p_sample.seconds / 60.0,
                        p_sample.residentBytes / MEGABYTE, p_sample.heapBytes / 1024.0, p_sample.ships,
                        p_sample.explosions, p_sample.shots, p_sample.scenery, p_sample.peakObjects, p_sample.images,
                        p_sample.namedObjects, p_sample.kills, p_sample.money, p_sample.status, wall);
            std::fflush(stdout);
        },
        error);
    if (!ok)
    {
        std::fprintf(stderr, "korvath-soak: %s\n", error.c_str());
        return 1;
    }
    // From the minute the battle is under way to the end: how much memory and objects moved.
    const auto steady = std::find_if(samples.begin(), samples.end(), [](const soak::Sample& p_sample) {
        return p_sample.seconds >= STEADY_FROM_SECONDS;
    });
    if (steady != samples.end())
    {
        int most = 0;
        for (auto it = steady; it != samples.end(); ++it)
        {
            most = std::max(most, it->peakObjects);
        }
        std::printf(
            "from minute %.0f to %.0f: resident memory %+.1f MB (%.1f to %.1f MB), heap %+.1f KB, world objects "
            "%d to %d (at most %d), images %zu to %zu\n",
            steady->seconds / 60.0, samples.back().seconds / 60.0,
            (static_cast<double>(samples.back().residentBytes) - static_cast<double>(steady->residentBytes)) / MEGABYTE,
            steady->residentBytes / MEGABYTE, samples.back().residentBytes / MEGABYTE,
            (static_cast<double>(samples.back().heapBytes) - static_cast<double>(steady->heapBytes)) / 1024.0,
            steady->WorldObjects(), samples.back().WorldObjects(), most, steady->images, samples.back().images);
    }
    return 0;
}
