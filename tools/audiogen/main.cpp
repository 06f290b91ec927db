// korvath-audiogen: writes the game's sounds into a game directory.
//
//   korvath-audiogen GAME_DIR [--data DATA_DIR]
//
// The four effects are synthesised ("Sound\shoot.wav", ...); every score in DATA_DIR/music
// becomes the MIDI file it names. Each sound is measured as it is written and the figures are
// printed, so a change that makes one clip or click shows in the build log.

#include "Score.h"
#include "SoundFiles.h"
#include "Synth.h"
#include "platform/AudioDevice.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace
{

namespace fs = std::filesystem;

// "Sound\shoot.wav" -> GAME_DIR/Sound/shoot.wav
std::string OutputPath(const std::string& p_gameDir, const std::string& p_gameName)
{
    std::string relative = p_gameName;
    std::replace(relative.begin(), relative.end(), '\\', '/');
    return (fs::path(p_gameDir) / relative).string();
}

double Decibels(double p_level)
{
    return 20.0 * std::log10(std::max(p_level, 1e-9));
}

void PrintUsage()
{
    std::fprintf(stderr, "usage: korvath-audiogen GAME_DIR [--data DATA_DIR]\n");
}

} // namespace

int main(int p_argc, char** p_argv)
{
    std::string gameDir;
    std::string dataDir = "data";
    for (int i = 1; i < p_argc; ++i)
    {
        const std::string argument = p_argv[i];
        if (argument == "--data" && i + 1 < p_argc)
            dataDir = p_argv[++i];
        else if (argument == "--help" || argument == "-h")
        {
            PrintUsage();
            return 0;
        }
        else if (!argument.empty() && argument[0] != '-' && gameDir.empty())
            gameDir = argument;
        else
        {
            PrintUsage();
            return 2;
        }
    }
    if (gameDir.empty())
    {
        PrintUsage();
        return 2;
    }

    int failures = 0;
    for (const audiogen::Effect& effect : audiogen::Effects())
    {
        const audiogen::Samples samples = effect.make();
        const audiogen::Levels levels = audiogen::Measure(samples);
        std::string error;
        if (!audiogen::WriteFileAtomically(OutputPath(gameDir, effect.gameName), audiogen::EncodeWav(samples), error))
        {
            std::fprintf(stderr, "korvath-audiogen: %s\n", error.c_str());
            ++failures;
            continue;
        }
        std::printf("korvath-audiogen: %-24s %.2f s, loudness %.1f dBFS, peak %.1f dBFS\n", effect.gameName.c_str(),
                    levels.seconds, levels.loudness, Decibels(levels.peak));
    }

    std::vector<fs::path> scores;
    std::error_code listError;
    for (fs::directory_iterator it(fs::path(dataDir) / "music", listError), end; !listError && it != end;
         it.increment(listError))
        if (it->path().extension() == ".yaml")
            scores.push_back(it->path());
    std::sort(scores.begin(), scores.end());
    if (scores.empty())
    {
        std::fprintf(stderr, "korvath-audiogen: no scores in %s/music\n", dataDir.c_str());
        ++failures;
    }
    for (const fs::path& path : scores)
    {
        audiogen::Score score;
        std::string error;
        if (!audiogen::ReadScore(path.string(), score, error))
        {
            std::fprintf(stderr, "korvath-audiogen: %s\n", error.c_str());
            ++failures;
            continue;
        }
        const std::vector<uint8_t> bytes = audiogen::EncodeMidi(score.song);
        if (!platform::IsPlayableMidi(bytes.data(), bytes.size()))
        {
            std::fprintf(stderr, "korvath-audiogen: %s: the song would not play\n", path.c_str());
            ++failures;
            continue;
        }
        if (!audiogen::WriteFileAtomically(OutputPath(gameDir, score.gameName), bytes, error))
        {
            std::fprintf(stderr, "korvath-audiogen: %s\n", error.c_str());
            ++failures;
            continue;
        }
        const double seconds = double(score.song.lengthTicks) / score.song.ticksPerQuarter *
                               score.song.microsPerQuarter / 1e6;
        std::printf("korvath-audiogen: %-24s %zu tracks, %.1f s a pass\n", score.gameName.c_str(),
                    score.song.tracks.size(), seconds);
    }
    return failures == 0 ? 0 : 1;
}
