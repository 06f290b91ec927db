#include "app/Mode.h"
#include "sound/Sound.h"
#include "support/TestAudio.h"
#include "support/TestBitmaps.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

using testsupport::DiskAudioCapture;
using testsupport::Frames;
using testsupport::MakeLevelSamples;
using testsupport::MakeMidiBytes;
using testsupport::MakeWavBytes;
using testsupport::MidiNote;
using testsupport::PeakLevel;
using testsupport::RmsLevel;

namespace
{

// What a call changes reaches the file within a few mixing buffers of the frame count read
// after it returns (one buffer may be mixing, the C library may hold one). Tests read the
// count before a call to bound what came before it, and after the call to bound what follows,
// so that a test thread kept waiting by a busy machine does not blur the two.
const int64_t LAG = 3 * 1024;

std::vector<uint8_t> LevelWav(int16_t p_level, double p_seconds)
{
    return MakeWavBytes(MakeLevelSamples(p_level, p_seconds), 2, 44100);
}

// A held organ chord: an even level for as long as it lasts.
std::vector<uint8_t> OrganMidi(double p_seconds)
{
    const uint32_t ticks = uint32_t(p_seconds * testsupport::MIDI_TICKS_PER_SECOND);
    return MakeMidiBytes({{0, ticks, 60, 100}, {0, ticks, 67, 100}}, ticks, 16);
}

// Sets an environment variable for one test and puts the old value back.
class ScopedEnv
{
public:
    ScopedEnv(const char* p_name, const std::string& p_value) : m_name(p_name)
    {
        const char* old = std::getenv(p_name);
        m_wasSet = old != nullptr;
        m_old = m_wasSet ? old : "";
        setenv(p_name, p_value.c_str(), 1);
    }
    ~ScopedEnv()
    {
        if (m_wasSet)
            setenv(m_name.c_str(), m_old.c_str(), 1);
        else
            unsetenv(m_name.c_str());
    }

private:
    std::string m_name;
    bool m_wasSet;
    std::string m_old;
};

class QuietMode : public Mode
{
public:
    bool Initialize() override { return true; }
    bool Shutdown() override { return true; }
    int32_t Update(float) override { return 6; }
    bool Render() override { return true; }
    bool HandleInput(InputSystem*) override { return true; }
};

} // namespace

class SoundTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        // No message box may wait for an answer, and no test plays through the speakers.
        m_env.push_back(std::make_unique<ScopedEnv>("KORVATH_HEADLESS", "1"));
        if (std::getenv("SDL_AUDIODRIVER") == nullptr)
            m_env.push_back(std::make_unique<ScopedEnv>("SDL_AUDIODRIVER", "dummy"));
        WorkDirTest::SetUp();
        std::filesystem::create_directory("Sound");
    }

    // Writes the file of a sound id where the game looks for it.
    void WriteSound(int32_t p_id, const std::vector<uint8_t>& p_bytes)
    {
        std::string name = Sound::GetFileName(p_id);
        for (char& c : name)
            if (c == '\\')
                c = '/';
        ASSERT_TRUE(testsupport::WriteFileBytes(name, p_bytes));
    }

    std::vector<std::unique_ptr<ScopedEnv>> m_env;
};

TEST_F(SoundTest, PlayLoadsOnFirstUseAndPutsTheEffectIntoTheOutput)
{
    WriteSound(Sound::SOUND_SHOOT, LevelWav(8000, 0.2));
    DiskAudioCapture capture(m_dir);
    Sound sound;
    ASSERT_TRUE(sound.Init());
    ASSERT_TRUE(capture.WaitFrames(Frames(0.05)));

    const int64_t start = capture.FramesWritten();
    EXPECT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    const int64_t played = capture.FramesWritten();
    EXPECT_EQ(1, sound.GetNumSounds());
    EXPECT_TRUE(sound.IsLoaded(Sound::SOUND_SHOOT));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.4)));

    const std::vector<int16_t> out = capture.ReadSamples();
    EXPECT_EQ(0, PeakLevel(out, 0, start));
    const int64_t onset = testsupport::FirstFrameAbove(out, start, 0);
    ASSERT_GE(onset, start);
    EXPECT_LT(onset, played + LAG);
    // The first play sounds like any other: the whole effect at its recorded level, then silence.
    EXPECT_EQ(8000, PeakLevel(out, onset, onset + Frames(0.2)));
    EXPECT_EQ(8000, PeakLevel(out, onset + Frames(0.2) - 1, onset + Frames(0.2)));
    EXPECT_EQ(0, PeakLevel(out, onset + Frames(0.2), onset + Frames(0.4)));

    // A later play reuses the loaded sound.
    EXPECT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    EXPECT_EQ(1, sound.GetNumSounds());
}

TEST_F(SoundTest, EffectsOverlapAndABurstNeverCutsItselfOff)
{
    WriteSound(Sound::SOUND_SHOOT, LevelWav(500, 1.0));
    WriteSound(Sound::SOUND_EXPLOSION, LevelWav(3000, 0.3));
    DiskAudioCapture capture(m_dir);
    Sound sound;
    ASSERT_TRUE(sound.Init());
    ASSERT_TRUE(sound.Load(Sound::SOUND_SHOOT));
    ASSERT_TRUE(sound.Load(Sound::SOUND_EXPLOSION));

    // An explosion over a shot: both are heard, added.
    const int64_t start = capture.FramesWritten();
    ASSERT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.1)));
    ASSERT_TRUE(sound.Play(Sound::SOUND_EXPLOSION));
    ASSERT_TRUE(capture.WaitFrames(Frames(1.0)));
    std::vector<int16_t> out = capture.ReadSamples();
    const int64_t shot = testsupport::FirstFrameAbove(out, start, 0);
    ASSERT_GE(shot, 0);
    const int64_t shotEnd = shot + Frames(1.0);
    EXPECT_EQ(500, PeakLevel(out, shot, shot + 1000));
    EXPECT_EQ(3500, PeakLevel(out, shot, shotEnd));
    // The explosion ends first; the shot goes on to its end.
    EXPECT_EQ(500, PeakLevel(out, shotEnd - 1000, shotEnd));
    EXPECT_EQ(500, RmsLevel(out, shotEnd - 1000, shotEnd));
    EXPECT_EQ(0, PeakLevel(out, shotEnd, shotEnd + 1000));

    // Forty shots in one go: every play is taken, and once all channels sound the oldest
    // make room, so the mix holds as many shots as there are channels.
    const int64_t burst = capture.FramesWritten();
    for (int i = 0; i < 40; ++i)
        EXPECT_TRUE(sound.Play(Sound::SOUND_SHOOT)) << i;
    ASSERT_TRUE(capture.WaitFrames(Frames(0.6)));
    out = capture.ReadSamples();
    EXPECT_EQ(platform::AudioDevice::EFFECT_CHANNELS * 500, PeakLevel(out, burst, burst + Frames(1.5)));
}

TEST_F(SoundTest, StopAndUnloadAllSilenceWhatPlays)
{
    WriteSound(Sound::SOUND_SHOOT, LevelWav(2000, 2.0));
    WriteSound(Sound::SOUND_MISSION_MUSIC, OrganMidi(3.0));
    DiskAudioCapture capture(m_dir);
    Sound sound;
    ASSERT_TRUE(sound.Init());

    ASSERT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.15)));
    const int64_t beforeStop = capture.FramesWritten();
    EXPECT_TRUE(sound.Stop(Sound::SOUND_SHOOT));
    const int64_t stopped = capture.FramesWritten();
    EXPECT_FALSE(sound.IsPlaying(Sound::SOUND_SHOOT));
    EXPECT_TRUE(sound.IsLoaded(Sound::SOUND_SHOOT));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.2)));
    std::vector<int16_t> out = capture.ReadSamples();
    EXPECT_EQ(2000, PeakLevel(out, beforeStop - 1000, beforeStop));
    EXPECT_EQ(0, PeakLevel(out, stopped + LAG, stopped + Frames(0.2)));

    // Effect and music together, then everything goes at once.
    ASSERT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    ASSERT_TRUE(sound.Play(Sound::SOUND_MISSION_MUSIC));
    EXPECT_TRUE(sound.IsPlaying(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));
    const int64_t beforeUnload = capture.FramesWritten();
    sound.UnloadAll();
    const int64_t unloaded = capture.FramesWritten();
    EXPECT_EQ(0, sound.GetNumSounds());
    EXPECT_FALSE(sound.IsPlaying(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));
    out = capture.ReadSamples();
    // Music over the effect: more than the effect alone before, nothing after.
    EXPECT_GT(PeakLevel(out, beforeUnload - Frames(0.1), beforeUnload), 2500);
    EXPECT_EQ(0, PeakLevel(out, unloaded + LAG, unloaded + Frames(0.3)));
}

TEST_F(SoundTest, LoopingMusicKeepsSoundingPastItsEnd)
{
    // A song of a quarter of a second: one short note, then rest.
    const std::vector<uint8_t> song = MakeMidiBytes({{0, 96, 72, 110}}, 240, 80);
    WriteSound(Sound::SOUND_TITLE_MUSIC, song);
    WriteSound(Sound::SOUND_MISSION_MUSIC, song);
    DiskAudioCapture capture(m_dir);
    Sound sound;
    ASSERT_TRUE(sound.Init());
    ASSERT_TRUE(sound.Load(Sound::SOUND_TITLE_MUSIC));
    ASSERT_TRUE(sound.Load(Sound::SOUND_MISSION_MUSIC));

    // The title music as the menus start it: played once.
    const int64_t once = capture.FramesWritten();
    ASSERT_TRUE(sound.Play(Sound::SOUND_TITLE_MUSIC));
    ASSERT_TRUE(capture.WaitFrames(Frames(1.0)));
    // The mission music as a mission starts it: played, then set to repeat.
    const int64_t looped = capture.FramesWritten();
    ASSERT_TRUE(sound.Play(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(sound.SetLooping(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(capture.WaitFrames(Frames(1.0)));
    const std::vector<int16_t> out = capture.ReadSamples();

    const int64_t onceStart = testsupport::FirstFrameAbove(out, once, 300);
    const int64_t loopStart = testsupport::FirstFrameAbove(out, looped, 300);
    ASSERT_GE(onceStart, 0);
    ASSERT_GE(loopStart, 0);
    // Both start alike...
    const double onceFirst = RmsLevel(out, onceStart, onceStart + Frames(0.08));
    EXPECT_GT(onceFirst, 500.0);
    EXPECT_NEAR(onceFirst, RmsLevel(out, loopStart, loopStart + Frames(0.08)), onceFirst * 0.3);
    // ...but only the repeating one sounds again in its third and fourth passes.
    for (double pass : {0.5, 0.75})
    {
        const double repeated = RmsLevel(out, loopStart + Frames(pass), loopStart + Frames(pass + 0.08));
        const double played = RmsLevel(out, onceStart + Frames(pass), onceStart + Frames(pass + 0.08));
        EXPECT_GT(repeated, onceFirst * 0.5) << pass;
        EXPECT_LT(played, onceFirst * 0.1) << pass;
    }
}

TEST_F(SoundTest, VolumeScalesEffectsAndMusicThatPlay)
{
    WriteSound(Sound::SOUND_SHOOT, LevelWav(16000, 3.0));
    WriteSound(Sound::SOUND_TITLE_MUSIC, OrganMidi(3.0));
    DiskAudioCapture capture(m_dir);
    Sound sound;
    ASSERT_TRUE(sound.Init());

    ASSERT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    // Frame counts before and after each change of volume.
    int64_t before[4];
    int64_t after[4];
    const int32_t volumes[4] = {-600, Sound::VolumeFromSlider(0), Sound::VolumeFromSlider(Sound::SLIDER_MAX), 0};
    for (int i = 0; i < 4; ++i)
    {
        ASSERT_TRUE(capture.WaitFrames(Frames(0.1)));
        before[i] = capture.FramesWritten();
        sound.SetVolume(volumes[i]);
        after[i] = capture.FramesWritten();
    }
    std::vector<int16_t> out = capture.ReadSamples();
    EXPECT_EQ(16000, PeakLevel(out, before[0] - 1000, before[0]));
    // -6 dB: half the amplitude.
    EXPECT_NEAR(8019, PeakLevel(out, after[0] + LAG, before[1]), 1);
    EXPECT_NEAR(8019, RmsLevel(out, after[0] + LAG, before[1]), 1.0);
    // The bar's left end is silence, its right end the sound as recorded.
    EXPECT_EQ(0, PeakLevel(out, after[1] + LAG, before[2]));
    EXPECT_EQ(16000, PeakLevel(out, after[2] + LAG, before[3]));
    ASSERT_TRUE(sound.Stop(Sound::SOUND_SHOOT));

    // The same volume reaches the music while it plays.
    ASSERT_TRUE(sound.Play(Sound::SOUND_TITLE_MUSIC));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.4)));
    const int64_t loud = capture.FramesWritten();
    sound.SetVolume(-1200); // a quarter of the amplitude
    const int64_t quietened = capture.FramesWritten();
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));
    out = capture.ReadSamples();
    const double loudLevel = RmsLevel(out, loud - Frames(0.2), loud);
    const double quietLevel = RmsLevel(out, quietened + LAG, quietened + LAG + Frames(0.2));
    EXPECT_GT(loudLevel, 500.0);
    EXPECT_NEAR(0.25, quietLevel / loudLevel, 0.05);
}

TEST_F(SoundTest, VolumeBarRunsFromSilenceToFullInEvenDecibelSteps)
{
    EXPECT_EQ(Sound::VOLUME_SILENT, Sound::VolumeFromSlider(0));
    EXPECT_EQ(Sound::VOLUME_SILENT, Sound::VolumeFromSlider(-3));
    EXPECT_EQ(-Sound::SLIDER_RANGE, Sound::VolumeFromSlider(1));
    EXPECT_EQ(-2000, Sound::VolumeFromSlider(50));
    EXPECT_EQ(Sound::VOLUME_FULL, Sound::VolumeFromSlider(99));
    EXPECT_EQ(Sound::VOLUME_FULL, Sound::VolumeFromSlider(250));
    for (int32_t position = 2; position <= Sound::SLIDER_MAX; ++position)
    {
        const int32_t step = Sound::VolumeFromSlider(position) - Sound::VolumeFromSlider(position - 1);
        EXPECT_NEAR(double(Sound::SLIDER_RANGE) / (Sound::SLIDER_MAX - 1), step, 1.0) << position;
    }
    for (int32_t position = 0; position <= Sound::SLIDER_MAX; ++position)
        EXPECT_EQ(position, Sound::SliderFromVolume(Sound::VolumeFromSlider(position))) << position;
    // Attenuations between the bar's notches land on the nearest one; any sound at all is at least 1.
    EXPECT_EQ(1, Sound::SliderFromVolume(-9000));
    EXPECT_EQ(Sound::SLIDER_MAX, Sound::SliderFromVolume(-10));

    Sound sound;
    EXPECT_EQ(Sound::VOLUME_FULL, sound.GetVolume());
    sound.SetVolume(99); // the bar's raw value is not an attenuation: no louder than full
    EXPECT_EQ(Sound::VOLUME_FULL, sound.GetVolume());
    sound.SetVolume(-25000);
    EXPECT_EQ(Sound::VOLUME_SILENT, sound.GetVolume());
}

TEST_F(SoundTest, ListKeepsOneNodePerLoadedId)
{
    WriteSound(Sound::SOUND_SHOOT, LevelWav(1000, 0.05));
    WriteSound(Sound::SOUND_EXPLOSION, LevelWav(1000, 0.05));
    WriteSound(Sound::SOUND_VICTORY, LevelWav(1000, 0.05));
    WriteSound(Sound::SOUND_MISSION_MUSIC, OrganMidi(0.5));
    Sound sound;
    ASSERT_TRUE(sound.Init());

    for (int32_t id : {-1, 6, 100})
    {
        EXPECT_FALSE(sound.Load(id)) << id;
        EXPECT_FALSE(sound.Play(id)) << id;
        EXPECT_FALSE(sound.Stop(id)) << id;
        EXPECT_FALSE(sound.SetLooping(id)) << id;
        EXPECT_FALSE(sound.Unload(id)) << id;
        EXPECT_EQ(nullptr, Sound::GetFileName(id));
    }
    EXPECT_FALSE(sound.Stop(Sound::SOUND_SHOOT));
    EXPECT_FALSE(sound.Unload(Sound::SOUND_SHOOT));
    EXPECT_FALSE(sound.SetLooping(Sound::SOUND_SHOOT));
    EXPECT_EQ(0, sound.GetNumSounds());

    // A mission's start: shoot, victory, explosion, music.
    for (int32_t id : {0, 2, 1, 4})
        EXPECT_TRUE(sound.Load(id)) << id;
    EXPECT_EQ(4, sound.GetNumSounds());
    EXPECT_FALSE(sound.Load(Sound::SOUND_VICTORY));
    EXPECT_EQ(4, sound.GetNumSounds());
    EXPECT_TRUE(sound.Unload(Sound::SOUND_VICTORY));
    EXPECT_FALSE(sound.Unload(Sound::SOUND_VICTORY));
    EXPECT_EQ(3, sound.GetNumSounds());
    EXPECT_TRUE(sound.Load(Sound::SOUND_VICTORY));
    EXPECT_EQ(4, sound.GetNumSounds());

    // The laser's file does not exist: that id stays silent, nothing else changes.
    EXPECT_FALSE(sound.Load(Sound::SOUND_LASER_SHOT));
    EXPECT_FALSE(sound.Play(Sound::SOUND_LASER_SHOT));
    EXPECT_FALSE(sound.IsLoaded(Sound::SOUND_LASER_SHOT));
    EXPECT_EQ(4, sound.GetNumSounds());
    EXPECT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    EXPECT_TRUE(sound.Play(Sound::SOUND_MISSION_MUSIC));

    sound.UnloadAll();
    EXPECT_EQ(0, sound.GetNumSounds());
    for (int32_t id = 0; id < Sound::NUM_SOUND_IDS; ++id)
        EXPECT_FALSE(sound.IsLoaded(id)) << id;
    EXPECT_TRUE(sound.Load(Sound::SOUND_SHOOT));
}

TEST_F(SoundTest, ModeChangeUnloadsEverySoundAndSilencesTheMusic)
{
    WriteSound(Sound::SOUND_SHOOT, LevelWav(1000, 2.0));
    WriteSound(Sound::SOUND_MISSION_MUSIC, OrganMidi(3.0));
    DiskAudioCapture capture(m_dir);
    Sound sound;
    ASSERT_TRUE(sound.Init());
    g_pSound = &sound;

    Mode* mode = new QuietMode();
    ASSERT_TRUE(sound.Load(Sound::SOUND_SHOOT));
    ASSERT_TRUE(sound.Load(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(sound.Play(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(sound.SetLooping(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));
    const int64_t beforeChange = capture.FramesWritten();
    delete mode;
    const int64_t changed = capture.FramesWritten();
    g_pSound = nullptr;

    EXPECT_EQ(0, sound.GetNumSounds());
    EXPECT_FALSE(sound.IsPlaying(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));
    const std::vector<int16_t> out = capture.ReadSamples();
    EXPECT_GT(PeakLevel(out, beforeChange - Frames(0.1), beforeChange), 1000);
    EXPECT_EQ(0, PeakLevel(out, changed + LAG, changed + Frames(0.3)));
}

TEST_F(SoundTest, DamagedFilesAreRefusedWithoutHarm)
{
    const std::vector<uint8_t> wav = LevelWav(1000, 0.1);
    const std::vector<uint8_t> midi = OrganMidi(0.5);
    std::vector<uint8_t> badFormat = wav;
    badFormat[22] = 0; // no channels
    std::vector<uint8_t> hugeTrack = midi;
    hugeTrack[18] = 0x7F; // track length far past the end

    const std::vector<std::vector<uint8_t>> damaged = {
        {},
        {'R', 'I', 'F', 'F'},
        std::vector<uint8_t>(wav.begin(), wav.begin() + 30), // header cut short
        badFormat,
        std::vector<uint8_t>(midi.begin(), midi.begin() + midi.size() / 2),
        hugeTrack,
        std::vector<uint8_t>(3000, 0xA5),
    };
    Sound sound;
    ASSERT_TRUE(sound.Init());
    for (size_t i = 0; i < damaged.size(); ++i)
    {
        WriteSound(Sound::SOUND_SHOOT, damaged[i]);
        WriteSound(Sound::SOUND_TITLE_MUSIC, damaged[i]);
        EXPECT_FALSE(sound.Load(Sound::SOUND_SHOOT)) << i;
        EXPECT_FALSE(sound.Play(Sound::SOUND_TITLE_MUSIC)) << i;
        EXPECT_EQ(0, sound.GetNumSounds()) << i;
    }
    // The files are read again on the next load: once repaired, they play.
    WriteSound(Sound::SOUND_SHOOT, wav);
    WriteSound(Sound::SOUND_TITLE_MUSIC, midi);
    EXPECT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    EXPECT_TRUE(sound.Play(Sound::SOUND_TITLE_MUSIC));
    EXPECT_EQ(2, sound.GetNumSounds());
}

TEST_F(SoundTest, WithoutASoundDeviceTheGameSaysSoAndGoesOnSilent)
{
    WriteSound(Sound::SOUND_SHOOT, LevelWav(1000, 0.1));
    WriteSound(Sound::SOUND_MISSION_MUSIC, OrganMidi(0.5));
    ScopedEnv driver("SDL_AUDIODRIVER", "korvath-no-such-driver");
    Sound sound;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(sound.Init());
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(std::string::npos, said.find("Korvath: Error Initializing Sound")) << said;

    EXPECT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    EXPECT_TRUE(sound.Play(Sound::SOUND_MISSION_MUSIC));
    EXPECT_TRUE(sound.SetLooping(Sound::SOUND_MISSION_MUSIC));
    sound.SetTempoParam();
    sound.SetVolume(-1000);
    EXPECT_EQ(2, sound.GetNumSounds());
    EXPECT_TRUE(sound.Unload(Sound::SOUND_SHOOT));
    EXPECT_EQ(1, sound.GetNumSounds());
}

TEST_F(SoundTest, MissingSoundfontLeavesOnlyTheMusicSilentAndIsReportedOnce)
{
    WriteSound(Sound::SOUND_SHOOT, LevelWav(1000, 0.2));
    WriteSound(Sound::SOUND_MISSION_MUSIC, OrganMidi(1.0));
    WriteSound(Sound::SOUND_TITLE_MUSIC, OrganMidi(1.0));
    ASSERT_TRUE(testsupport::WriteFileBytes(m_dir + "/broken.sf2", std::vector<uint8_t>(5000, 0x5A)));
    ScopedEnv fonts("SDL_SOUNDFONTS", m_dir + "/missing.sf2:" + m_dir + "/broken.sf2");
    DiskAudioCapture capture(m_dir);
    Sound sound;
    ASSERT_TRUE(sound.Init());

    testing::internal::CaptureStderr();
    const int64_t start = capture.FramesWritten();
    EXPECT_TRUE(sound.Play(Sound::SOUND_TITLE_MUSIC));
    EXPECT_TRUE(sound.Play(Sound::SOUND_MISSION_MUSIC));
    sound.SetTempoParam();
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));
    const int64_t effect = capture.FramesWritten();
    EXPECT_TRUE(sound.Play(Sound::SOUND_SHOOT));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));
    const std::string said = testing::internal::GetCapturedStderr();

    const std::string message = "no soundfont named in SDL_SOUNDFONTS";
    const size_t first = said.find(message);
    EXPECT_NE(std::string::npos, first) << said;
    EXPECT_EQ(std::string::npos, said.find(message, first + 1)) << said;
    const std::vector<int16_t> out = capture.ReadSamples();
    EXPECT_EQ(0, PeakLevel(out, start, effect));
    EXPECT_EQ(1000, PeakLevel(out, effect, effect + Frames(0.3)));
}

TEST_F(SoundTest, ObjectiveCueMarksOnlyTheMissionMusicWhilePlaying)
{
    // Songs of one short note and a long rest: the cue is all that sounds later on.
    const std::vector<uint8_t> song = MakeMidiBytes({{0, 48, 60, 60}}, 4 * testsupport::MIDI_TICKS_PER_SECOND, 0);
    WriteSound(Sound::SOUND_MISSION_MUSIC, song);
    WriteSound(Sound::SOUND_TITLE_MUSIC, song);
    DiskAudioCapture capture(m_dir);
    Sound sound;
    ASSERT_TRUE(sound.Init());

    // Before the mission music is loaded the cue does nothing.
    sound.SetTempoParam();
    ASSERT_TRUE(sound.Play(Sound::SOUND_TITLE_MUSIC));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.6)));
    const int64_t titleCue = capture.FramesWritten();
    sound.SetTempoParam(); // the title music is not the mission's
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));

    ASSERT_TRUE(sound.Play(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(sound.SetLooping(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.6)));
    const int64_t cue = capture.FramesWritten();
    sound.SetTempoParam();
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));
    EXPECT_TRUE(sound.IsPlaying(Sound::SOUND_MISSION_MUSIC));

    // The banner stops the music; a cue then has nothing to mark.
    ASSERT_TRUE(sound.Stop(Sound::SOUND_MISSION_MUSIC));
    ASSERT_TRUE(capture.WaitFrames(Frames(0.1)));
    const int64_t stoppedCue = capture.FramesWritten();
    sound.SetTempoParam();
    ASSERT_TRUE(capture.WaitFrames(Frames(0.3)));

    const std::vector<int16_t> out = capture.ReadSamples();
    const double quiet = RmsLevel(out, cue - Frames(0.1), cue);
    const double marked = RmsLevel(out, cue, cue + Frames(0.3));
    EXPECT_GT(marked, 300.0);
    EXPECT_GT(marked, 10.0 * quiet);
    EXPECT_LT(RmsLevel(out, titleCue, titleCue + Frames(0.3)), 0.1 * marked);
    EXPECT_EQ(0, PeakLevel(out, stoppedCue, stoppedCue + Frames(0.3)));
}
