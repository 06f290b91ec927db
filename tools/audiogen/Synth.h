#pragma once

// The game's four sound effects, synthesised from noise, oscillators, filters and envelopes,
// and the measurements that keep them clean: no clipping, no offset, silent ends, one loudness.

#include <cstdint>
#include <string>
#include <vector>

namespace audiogen
{

constexpr int SAMPLE_RATE = 44100;

// Mono samples in [-1, 1].
using Samples = std::vector<float>;

struct Effect
{
    std::string gameName; // e.g. "Sound\shoot.wav"
    Samples (*make)();
};

// The effects in the game's sound-id order: shoot, explosion, victory, laser shot.
const std::vector<Effect>& Effects();

Samples MakeShoot();
Samples MakeExplosion();
Samples MakeVictory();
Samples MakeLaserShot();

// How many samples at either end count as its start and its end (about a quarter of a
// millisecond): a sound that jumps straight to a high level there clicks.
constexpr int START_SAMPLES = 10;

// What a sound measures.
struct Levels
{
    double peak = 0.0;      // largest absolute sample
    double loudness = 0.0;  // loudest 50 ms stretch, RMS after a gentle low cut (dBFS)
    double mean = 0.0;      // DC offset
    double startLevel = 0.0; // largest absolute sample among the first and the last START_SAMPLES
    double endLevel = 0.0;
    double seconds = 0.0;
};
Levels Measure(const Samples& p_samples);

// All effects are brought to this loudness, and no sample goes past the ceiling.
constexpr double TARGET_LOUDNESS_DB = -13.0;
constexpr double PEAK_CEILING = 0.89; // about -1 dBFS

// Removes any offset, fades the very ends to silence, brings the loudness to the target and
// keeps peaks under the ceiling with a soft knee.
void Finish(Samples& p_samples);

} // namespace audiogen
