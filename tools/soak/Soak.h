#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

// A long battle for finding what grows: the player's ship, flown by a bot, fights a mission
// of the campaign in the working directory (a game directory) headless, at a fixed time step,
// as fast as it runs; every so often the process's resident memory and the world's objects
// are counted.
namespace soak
{

struct Options
{
    double seconds = 30.0 * 60.0; // game time
    float frameTime = 1.0f / 60.0f;
    double sampleEvery = 60.0; // game seconds between samples
    std::string campaign = "Campaign\\korvath.ini";
    std::string mission = "Mission4"; // the hive
    uint32_t seed = 20261123;
};

struct Sample
{
    double seconds = 0.0;     // game time
    size_t residentBytes = 0; // the process's resident set
    size_t heapBytes = 0;     // handed out by malloc and not yet freed
    int ships = 0;            // computer ships in the world
    int explosions = 0;
    int shots = 0;
    int scenery = 0;
    int peakObjects = 0;     // the most world objects in any frame since the last sample
    size_t images = 0;       // every image alive, world or not
    size_t namedObjects = 0; // entries of the campaign's registry
    int kills = 0;           // computer ships destroyed so far
    int32_t money = 0;
    int32_t status = 0; // the mission's: 0 running, 1 won, 2 lost (the battle goes on regardless)

    int WorldObjects() const { return ships + explosions + shots + scenery; }
};

// The resident set of this process, in bytes (0 where it cannot be read).
size_t ResidentBytes();
// The bytes malloc has handed out and not had back: steadier than the resident set, which
// the allocator's own caching moves.
size_t HeapBytes();

// Flies the battle, handing each sample (the first at game time 0) to p_onSample. False, with
// p_error saying why, when the mission cannot be set up (no level, no parts).
bool Run(const Options& p_options, const std::function<void(const Sample&)>& p_onSample, std::string& p_error);

} // namespace soak
