#include "platform/AudioDevice.h"
#include "support/TestAudio.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

using testsupport::DiskAudioCapture;
using testsupport::Frames;
using testsupport::MakeMidiBytes;

namespace
{

bool Playable(const std::vector<uint8_t>& p_bytes)
{
    return platform::IsPlayableMidi(p_bytes.data(), p_bytes.size());
}

// A song whose one track starts at byte 22: its events follow there.
std::vector<uint8_t> SongWithEvents(const std::vector<uint8_t>& p_events)
{
    std::vector<uint8_t> bytes = {'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 0, 0, 1, 0x01, 0xE0, 'M', 'T', 'r', 'k'};
    const uint32_t length = uint32_t(p_events.size());
    bytes.insert(bytes.end(), {uint8_t(length >> 24), uint8_t(length >> 16), uint8_t(length >> 8), uint8_t(length)});
    bytes.insert(bytes.end(), p_events.begin(), p_events.end());
    return bytes;
}

class AudioDeviceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_dir = testsupport::MakeTempDir("korvath-audio");
        ASSERT_FALSE(m_dir.empty());
    }
    void TearDown() override
    {
        std::error_code error;
        std::filesystem::remove_all(m_dir, error);
    }
    std::string m_dir;
};

} // namespace

TEST(MidiCheckTest, AcceptsWellFormedSongsAndRefusesEveryDamagedOne)
{
    const std::vector<uint8_t> song = MakeMidiBytes({{0, 480, 60, 100}, {480, 480, 64, 100}}, 960, 5);
    ASSERT_TRUE(Playable(song));
    // Running status, meta events, a sysex and an unknown chunk before the track are all fine.
    EXPECT_TRUE(Playable(SongWithEvents({0x00, 0x90, 60, 100, 0x10, 62, 100, 0x00, 0xFF, 0x01, 0x02, 'h', 'i', 0x00,
                                         0xF0, 0x02, 0x7E, 0xF7, 0x00, 0xFF, 0x2F, 0x00})));
    std::vector<uint8_t> withChunk(song.begin(), song.begin() + 14);
    withChunk.insert(withChunk.end(), {'X', 'F', 'I', 'H', 0, 0, 0, 2, 0xAB, 0xCD});
    withChunk.insert(withChunk.end(), song.begin() + 14, song.end());
    EXPECT_TRUE(Playable(withChunk));

    // Cut anywhere, the song is refused.
    for (size_t length = 0; length < song.size(); ++length)
        EXPECT_FALSE(platform::IsPlayableMidi(song.data(), length)) << length;
    EXPECT_FALSE(platform::IsPlayableMidi(nullptr, 100));

    const auto patched = [&song](size_t p_at, uint8_t p_value) {
        std::vector<uint8_t> bytes = song;
        bytes[p_at] = p_value;
        return bytes;
    };
    EXPECT_FALSE(Playable(patched(0, 'X')));    // not "MThd"
    EXPECT_FALSE(Playable(patched(7, 7)));      // header of seven bytes
    EXPECT_FALSE(Playable(patched(9, 2)));      // format 2
    EXPECT_FALSE(Playable(patched(11, 0)));     // no tracks
    EXPECT_FALSE(Playable(patched(11, 2)));     // a second track that is not there
    EXPECT_FALSE(Playable(patched(12, 0xE7)));  // SMPTE time
    std::vector<uint8_t> noDivision = patched(12, 0);
    noDivision[13] = 0;
    EXPECT_FALSE(Playable(noDivision));         // zero ticks a quarter note
    EXPECT_FALSE(Playable(patched(18, 0x40)));  // track length past the end
    EXPECT_FALSE(Playable(patched(15, 0x01)));  // chunk name that is not text

    // Events that would trip up the synthesizer.
    const std::vector<std::vector<uint8_t>> badEvents = {
        {0x00, 60, 100, 0x00, 0xFF, 0x2F, 0x00},                     // running status with no status yet
        {0x00, 0xFF, 0x51, 0x02, 0x07, 0xA1, 0x00, 0xFF, 0x2F, 0x00}, // tempo of two bytes
        {0x00, 0xFF, 0x51, 0x03, 0x00, 0x00, 0x00, 0x00, 0xFF, 0x2F, 0x00}, // tempo zero
        {0x00, 0xFF, 0x58, 0x03, 4, 2, 24, 0x00, 0xFF, 0x2F, 0x00},  // time signature of three bytes
        {0x00, 0xF2, 0x00, 0x00, 0x00, 0xFF, 0x2F, 0x00},            // system common message
        {0x00, 0x90, 60, 0xC4, 0x00, 0xFF, 0x2F, 0x00},              // data byte with the top bit
        {0x81, 0x81, 0x81, 0x81, 0x01, 0x90, 60, 100},               // five-byte delta time
        {0x00, 0xFF, 0x01, 0x7F, 'x'},                               // text running past the track
        {0x00, 0xF0, 0x05, 0x7E},                                    // sysex running past the track
        {0x00, 0x90, 60, 100, 0x00, 0xFF, 0x01, 0x00, 0x00, 62, 100, 0x00, 0xFF, 0x2F, 0x00}, // running status across a meta event
        {0x00, 0x90, 60},                                            // note cut short
    };
    for (size_t i = 0; i < badEvents.size(); ++i)
        EXPECT_FALSE(Playable(SongWithEvents(badEvents[i]))) << i;
    // Delta times of the largest size add up past what the synthesizer counts.
    std::vector<uint8_t> endless;
    for (int i = 0; i < 5; ++i)
        endless.insert(endless.end(), {0xFF, 0xFF, 0xFF, 0x7F, 0x90, 60, 100});
    endless.insert(endless.end(), {0x00, 0xFF, 0x2F, 0x00});
    EXPECT_FALSE(Playable(SongWithEvents(endless)));
    endless.erase(endless.begin(), endless.begin() + 7);
    EXPECT_TRUE(Playable(SongWithEvents(endless)));
    // The running-status case is only wrong after the meta event:
    EXPECT_TRUE(Playable(SongWithEvents({0x00, 0x90, 60, 100, 0x00, 62, 100, 0x00, 0xFF, 0x2F, 0x00})));
}

TEST_F(AudioDeviceTest, HandlesAndTheOneDeviceRule)
{
    platform::AudioDevice closed;
    const std::vector<uint8_t> song = MakeMidiBytes({{0, 96, 60, 100}}, 480);
    EXPECT_EQ(0, closed.LoadFromMemory(song.data(), song.size()));
    EXPECT_EQ(-1, closed.GetMusicTick());

    platform::AudioDevice device;
    device.Open();
    ASSERT_TRUE(device.IsOpen());
    platform::AudioDevice second;
    EXPECT_FALSE(second.Open());
    EXPECT_FALSE(second.IsOpen());

    const std::vector<uint8_t> wav =
        testsupport::MakeWavBytes(testsupport::MakeLevelSamples(1000, 0.05), 2, 44100);
    const int32_t effect = device.LoadFromMemory(wav.data(), wav.size());
    const int32_t music = device.LoadFromMemory(song.data(), song.size());
    ASSERT_GT(effect, 0);
    ASSERT_GT(music, 0);
    EXPECT_NE(effect, music);
    EXPECT_FALSE(device.IsMusic(effect));
    EXPECT_TRUE(device.IsMusic(music));
    const std::vector<uint8_t> junk(64, 0x33);
    EXPECT_EQ(0, device.LoadFromMemory(junk.data(), junk.size()));
    EXPECT_EQ(0, device.Load(m_dir + "/missing.wav"));
    EXPECT_EQ(0, device.Load(m_dir)); // a directory is not a sound
    EXPECT_EQ(0, device.Load(""));

    // The cue belongs to the music that plays, nothing else.
    EXPECT_FALSE(device.AccentMusic(music));
    EXPECT_FALSE(device.AccentMusic(effect));
    EXPECT_TRUE(device.Play(music));
    EXPECT_EQ(!device.IsSilent(), device.AccentMusic(music));

    device.Free(effect);
    device.Free(effect);
    device.Free(12345);
    EXPECT_FALSE(device.IsLoaded(effect));
    EXPECT_FALSE(device.Play(effect));
    EXPECT_FALSE(device.Stop(effect));
    EXPECT_FALSE(device.SetLooping(effect, true));
    EXPECT_TRUE(device.IsLoaded(music));

    // Closing frees everything; the device opens again afterwards.
    device.Close();
    EXPECT_FALSE(device.IsLoaded(music));
    EXPECT_FALSE(device.Play(music));
    device.Open();
    EXPECT_TRUE(device.IsOpen());
}

TEST_F(AudioDeviceTest, ObjectiveCueLiftsTheTempoWithoutRestartingTheSong)
{
    // Ten seconds of one held note: long enough that the song never wraps during the test.
    const uint32_t ticks = 10 * testsupport::MIDI_TICKS_PER_SECOND;
    const std::vector<uint8_t> song = MakeMidiBytes({{0, ticks, 48, 40}}, ticks, 48);
    DiskAudioCapture capture(m_dir);
    platform::AudioDevice device;
    ASSERT_TRUE(device.Open());
    const int32_t music = device.LoadFromMemory(song.data(), song.size());
    ASSERT_GT(music, 0);
    ASSERT_TRUE(device.Play(music));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.2)));

    // Ticks per frame of output, measured over a second.
    const auto measure = [&](double& p_rate) {
        const int64_t frames = capture.FramesWritten();
        const int32_t tick = device.GetMusicTick();
        if (!capture.WaitFrames(Frames(1.0)))
            return false;
        p_rate = double(device.GetMusicTick() - tick) / double(capture.FramesWritten() - frames);
        return true;
    };
    double plain = 0.0;
    ASSERT_TRUE(measure(plain));
    EXPECT_NEAR(double(testsupport::MIDI_TICKS_PER_SECOND) / 44100.0, plain, plain * 0.1);

    const int32_t beforeCue = device.GetMusicTick();
    ASSERT_TRUE(device.AccentMusic(music));
    EXPECT_GE(device.GetMusicTick(), beforeCue); // not back at the start
    double lifted = 0.0;
    ASSERT_TRUE(measure(lifted));
    EXPECT_NEAR(1.2, lifted / plain, 0.1);
    EXPECT_TRUE(device.IsPlaying(music));
}
