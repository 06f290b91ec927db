// Three minutes of game time of the hive mission with the soak's bot, on the data the forge
// builds from data/: once the battle is under way neither memory nor the objects may keep
// growing. (`make soak` flies thirty minutes.)
#include "forge/Forge.h"
#include "soak/Soak.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace
{

constexpr double MINUTE = 60.0;

class SoakTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        std::ostringstream out;
        std::ostringstream err;
        ASSERT_EQ(0, forge::Build(std::string(KORVATH_SOURCE_DIR) + "/data", m_dir, out, err)) << err.str();
        std::filesystem::create_directories("Saves");
    }

    // The samples of game seconds [p_from, p_to).
    static std::vector<soak::Sample> Between(const std::vector<soak::Sample>& p_samples, double p_from, double p_to)
    {
        std::vector<soak::Sample> part;
        for (const soak::Sample& sample : p_samples)
        {
            if (sample.seconds >= p_from - 1e-6 && sample.seconds < p_to - 1e-6)
            {
                part.push_back(sample);
            }
        }
        return part;
    }

    template <typename Field>
    static size_t Most(const std::vector<soak::Sample>& p_samples, Field p_field)
    {
        size_t most = 0;
        for (const soak::Sample& sample : p_samples)
        {
            most = std::max(most, static_cast<size_t>(p_field(sample)));
        }
        return most;
    }

    // The least over a stretch: what stays when the fewest objects are about. Something lost
    // for good raises it; the coming and going of the battle does not.
    template <typename Field>
    static size_t Least(const std::vector<soak::Sample>& p_samples, Field p_field)
    {
        size_t least = SIZE_MAX;
        for (const soak::Sample& sample : p_samples)
        {
            least = std::min(least, static_cast<size_t>(p_field(sample)));
        }
        return least;
    }
};

TEST_F(SoakTest, ThreeMinutesOfTheHiveGrowNeitherMemoryNorObjects)
{
    soak::Options options;
    options.seconds = 3.0 * MINUTE;
    options.sampleEvery = 10.0;
    std::vector<soak::Sample> samples;
    std::string error;
    ASSERT_TRUE(soak::Run(
        options, [&samples](const soak::Sample& p_sample) { samples.push_back(p_sample); }, error))
        << error;
    ASSERT_EQ(samples.size(), 19u);
    EXPECT_FALSE(std::filesystem::exists("Saves/Soak0.sav")); // the soak takes its pilot file away again

    // It was a battle: the hive kept launching drones and the bot kept shooting them down.
    EXPECT_GE(samples.back().kills, 8);
    EXPECT_GE(Most(samples, [](const soak::Sample& p) { return p.peakObjects; }), 40u);

    // The first minute brings the battle under way; the third must hold no more than the second.
    const std::vector<soak::Sample> second = Between(samples, MINUTE, 2.0 * MINUTE);
    const std::vector<soak::Sample> third = Between(samples, 2.0 * MINUTE, 3.0 * MINUTE + 1.0);
    auto peak = [](const soak::Sample& p) { return p.peakObjects; };
    auto objects = [](const soak::Sample& p) { return p.WorldObjects(); };
    auto images = [](const soak::Sample& p) { return p.images; };
    auto named = [](const soak::Sample& p) { return p.namedObjects; };
    EXPECT_LE(Most(third, peak), Most(second, peak) * 3 / 2 + 10);
    EXPECT_LE(Least(third, objects), Least(second, objects) + 2);
    // Every explosion and ship holds its pictures: one never let go keeps a score of them.
    EXPECT_LE(Least(third, images), Least(second, images) + 10);
    EXPECT_EQ(Most(third, named), Most(second, named));

#if !defined(__SANITIZE_ADDRESS__)
    // The sanitizer keeps freed memory aside, so only a plain build can watch memory.
    auto heap = [](const soak::Sample& p) { return p.heapBytes; };
    auto resident = [](const soak::Sample& p) { return p.residentBytes; };
    EXPECT_LE(Least(third, heap), Least(second, heap) + 8u * 1024u);
    EXPECT_LE(Most(third, resident), Most(second, resident) + 512u * 1024u);
#endif
}

} // namespace
