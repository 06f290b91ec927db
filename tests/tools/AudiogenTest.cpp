#include "audiogen/Score.h"
#include "audiogen/SoundFiles.h"
#include "audiogen/Synth.h"
#include "platform/AudioDevice.h"
#include "support/TestAudio.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <system_error>

namespace
{

using audiogen::Samples;

// ---- a small reader of what EncodeMidi writes, to check it from the outside ----------------

struct ReadEvent
{
    uint32_t tick;
    uint8_t status; // 0xFF for meta events
    uint8_t a;      // key / controller / meta type
    uint8_t b;      // velocity / value
};

struct ReadTrack
{
    std::vector<ReadEvent> events;
    uint32_t endTick = 0;
    bool ended = false;
};

uint32_t Big(const std::vector<uint8_t>& p_bytes, size_t p_at, int p_count)
{
    uint32_t value = 0;
    for (int i = 0; i < p_count; ++i)
        value = (value << 8) | p_bytes[p_at + size_t(i)];
    return value;
}

// Format-1 files as EncodeMidi writes them (no running status); false on anything unexpected.
bool ReadMidi(const std::vector<uint8_t>& p_bytes, uint16_t& p_division, std::vector<ReadTrack>& p_tracks)
{
    if (p_bytes.size() < 14 || std::string(p_bytes.begin(), p_bytes.begin() + 4) != "MThd" || Big(p_bytes, 8, 2) != 1)
        return false;
    const uint32_t count = Big(p_bytes, 10, 2);
    p_division = uint16_t(Big(p_bytes, 12, 2));
    size_t at = 14;
    for (uint32_t t = 0; t < count; ++t)
    {
        if (at + 8 > p_bytes.size() || std::string(p_bytes.begin() + std::ptrdiff_t(at), p_bytes.begin() + std::ptrdiff_t(at + 4)) != "MTrk")
            return false;
        const size_t end = at + 8 + Big(p_bytes, at + 4, 4);
        if (end > p_bytes.size())
            return false;
        at += 8;
        ReadTrack track;
        uint32_t tick = 0;
        while (at < end)
        {
            uint32_t delta = 0;
            uint8_t byte = 0;
            do
            {
                byte = p_bytes[at++];
                delta = (delta << 7) | (byte & 0x7Fu);
            } while ((byte & 0x80u) != 0 && at < end);
            tick += delta;
            const uint8_t status = p_bytes[at++];
            if (status == 0xFF)
            {
                const uint8_t type = p_bytes[at++];
                const uint8_t length = p_bytes[at++];
                track.events.push_back({tick, status, type, 0});
                at += length;
                if (type == 0x2F)
                {
                    track.ended = true;
                    track.endTick = tick;
                }
            }
            else if ((status & 0xF0u) == 0xC0u)
            {
                track.events.push_back({tick, status, p_bytes[at], 0});
                at += 1;
            }
            else
            {
                track.events.push_back({tick, status, p_bytes[at], p_bytes[at + 1]});
                at += 2;
            }
        }
        p_tracks.push_back(track);
    }
    return at == p_bytes.size();
}

// Zero crossings a second over [p_from, p_to) seconds: a rough pitch or brightness.
double CrossingRate(const Samples& p_samples, double p_from, double p_to)
{
    const size_t from = size_t(p_from * audiogen::SAMPLE_RATE);
    const size_t to = std::min(p_samples.size(), size_t(p_to * audiogen::SAMPLE_RATE));
    int crossings = 0;
    for (size_t i = from + 1; i < to; ++i)
        if ((p_samples[i - 1] < 0.0f) != (p_samples[i] < 0.0f))
            ++crossings;
    return crossings / 2.0 / (p_to - p_from);
}

double Rms(const Samples& p_samples, double p_from, double p_to)
{
    const size_t from = size_t(p_from * audiogen::SAMPLE_RATE);
    const size_t to = std::min(p_samples.size(), size_t(p_to * audiogen::SAMPLE_RATE));
    double sum = 0.0;
    for (size_t i = from; i < to; ++i)
        sum += double(p_samples[i]) * p_samples[i];
    return to > from ? std::sqrt(sum / double(to - from)) : 0.0;
}

const char* const SMALL_SCORE = R"(
title: Test
file: Sound\test.mid
tempo: 120
meter: 4/4
tracks:
  lead: {channel: 1, program: 81, velocity: 100, legato: 0.5}
  drums: {channel: 10}
sections:
  a:
    bars: 2
    lead: c4/4 f#3/8. bb2/16 c4+e4+g4/2 | c4/8t c4 c4 r/4 c4/2
    drums:
      kick: x...o...X....... *2
  b:
    bars: 2
    like: a
    lead: c5/1 *2
song: [a, b]
)";

} // namespace

TEST(Audiogen, EffectsAreCleanPcmAtOneLoudness)
{
    ASSERT_EQ(audiogen::Effects().size(), 4u);
    const char* const NAMES[] = {"Sound\\shoot.wav", "Sound\\explosion.wav", "Sound\\victory.wav", "Sound\\laser_shot.wav"};
    platform::AudioDevice device;
    device.Open(); // SDL's silent driver in the tests: loading still decodes the file
    ASSERT_TRUE(device.IsOpen());
    for (size_t i = 0; i < audiogen::Effects().size(); ++i)
    {
        const audiogen::Effect& effect = audiogen::Effects()[i];
        SCOPED_TRACE(effect.gameName);
        EXPECT_EQ(effect.gameName, NAMES[i]);
        const Samples samples = effect.make();
        const audiogen::Levels levels = audiogen::Measure(samples);
        EXPECT_GT(levels.seconds, 0.1);
        EXPECT_LT(levels.seconds, 4.0);
        EXPECT_NEAR(levels.loudness, audiogen::TARGET_LOUDNESS_DB, 0.5);
        EXPECT_LE(levels.peak, audiogen::PEAK_CEILING + 1e-6);
        EXPECT_LT(std::fabs(levels.mean), 1e-3);
        EXPECT_LT(levels.startLevel, 0.12) << "a click at the start";
        EXPECT_LT(levels.endLevel, 0.002) << "a click at the end";

        const std::vector<uint8_t> wav = audiogen::EncodeWav(samples);
        std::vector<int16_t> decoded;
        int channels = 0;
        int rate = 0;
        ASSERT_TRUE(audiogen::DecodeWav(wav, decoded, channels, rate));
        EXPECT_EQ(channels, 1);
        EXPECT_EQ(rate, audiogen::SAMPLE_RATE);
        ASSERT_EQ(decoded.size(), samples.size());
        int fullScale = 0;
        for (const int16_t sample : decoded)
            if (sample >= 32767 || sample <= -32767)
                ++fullScale;
        EXPECT_LE(fullScale, 3);
        EXPECT_EQ(decoded.front(), 0);
        EXPECT_EQ(decoded.back(), 0);
        // The game's own loader takes it.
        const int32_t handle = device.LoadFromMemory(wav.data(), wav.size());
        EXPECT_GT(handle, 0);
        EXPECT_FALSE(device.IsMusic(handle));
    }
}

TEST(Audiogen, EffectsSoundLikeWhatTheyAre)
{
    // The machine gun: short and fast to die away.
    const Samples shot = audiogen::MakeShoot();
    EXPECT_LT(double(shot.size()) / audiogen::SAMPLE_RATE, 0.4);
    EXPECT_LT(Rms(shot, 0.15, 0.2), Rms(shot, 0.0, 0.04) * 0.1);
    // The laser dives: far more crossings at the start than at the end.
    const Samples laser = audiogen::MakeLaserShot();
    EXPECT_GT(CrossingRate(laser, 0.0, 0.03), 3.0 * CrossingRate(laser, 0.2, 0.3));
    // The explosion lasts and ends in a low rumble, darker than its crack.
    const Samples blast = audiogen::MakeExplosion();
    EXPECT_GE(double(blast.size()) / audiogen::SAMPLE_RATE, 1.5);
    EXPECT_LT(CrossingRate(blast, 1.0, 1.5), 400.0);
    EXPECT_GT(CrossingRate(blast, 0.0, 0.1), 2.0 * CrossingRate(blast, 1.0, 1.5));
    EXPECT_GT(Rms(blast, 1.0, 1.5), 0.01);
    // The fanfare is a tone, not noise: its pickups sit near G4 (392 Hz) plus overtones, and
    // it keeps sounding for over two seconds.
    const Samples fanfare = audiogen::MakeVictory();
    EXPECT_GT(Rms(fanfare, 2.0, 2.4), 0.02);
    EXPECT_LT(CrossingRate(fanfare, 0.45, 0.8), 2000.0);
}

TEST(Audiogen, FinishRemovesOffsetClicksAndPeaks)
{
    // A loud tone on a large offset that starts and stops abruptly.
    Samples samples(audiogen::SAMPLE_RATE / 2);
    for (size_t i = 0; i < samples.size(); ++i)
        samples[i] = float(0.3 + 1.5 * std::sin(double(i) * 0.05));
    audiogen::Finish(samples);
    const audiogen::Levels levels = audiogen::Measure(samples);
    EXPECT_LT(std::fabs(levels.mean), 1e-3);
    EXPECT_LE(levels.peak, audiogen::PEAK_CEILING + 1e-6);
    EXPECT_LT(levels.startLevel, 0.12);
    EXPECT_LT(levels.endLevel, 0.01);
    EXPECT_EQ(samples.front(), 0.0f);
    EXPECT_NEAR(levels.loudness, audiogen::TARGET_LOUDNESS_DB, 0.5);

    Samples empty;
    audiogen::Finish(empty);
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(audiogen::Measure(empty).peak, 0.0);
}

TEST(Audiogen, WavReaderRefusesWhatIsNotPcm)
{
    const std::vector<uint8_t> good = audiogen::EncodeWav(Samples(100, 0.25f));
    std::vector<int16_t> samples;
    int channels = 0;
    int rate = 0;
    ASSERT_TRUE(audiogen::DecodeWav(good, samples, channels, rate));
    EXPECT_EQ(samples.size(), 100u);
    EXPECT_EQ(samples[0], int16_t(std::lround(0.25 * 32767.0)));
    // Cut short inside the data, a damaged tag, a float format.
    EXPECT_FALSE(audiogen::DecodeWav(std::vector<uint8_t>(good.begin(), good.end() - 10), samples, channels, rate));
    std::vector<uint8_t> bad = good;
    bad[8] = 'X';
    EXPECT_FALSE(audiogen::DecodeWav(bad, samples, channels, rate));
    bad = good;
    bad[20] = 3;
    EXPECT_FALSE(audiogen::DecodeWav(bad, samples, channels, rate));
    EXPECT_FALSE(audiogen::DecodeWav({}, samples, channels, rate));
}

TEST(Audiogen, ScoreNotationBecomesNotes)
{
    audiogen::Score score;
    std::string error;
    ASSERT_TRUE(audiogen::ParseScore(SMALL_SCORE, "small.yaml", score, error)) << error;
    EXPECT_EQ(score.gameName, "Sound\\test.mid");
    const audiogen::MidiSong& song = score.song;
    EXPECT_EQ(song.microsPerQuarter, 500000u);
    EXPECT_EQ(song.lengthTicks, 4u * 1920u);
    ASSERT_EQ(song.tracks.size(), 2u);
    const audiogen::MidiTrack& lead = song.tracks[0];
    EXPECT_EQ(lead.channel, 0);
    EXPECT_EQ(lead.program, 80); // General MIDI 81, counted from 0 in the file
    const audiogen::MidiTrack& drums = song.tracks[1];
    EXPECT_EQ(drums.channel, 9);
    EXPECT_EQ(drums.program, -1);

    // Starts and keys of section a's lead: a quarter, a dotted eighth, a sixteenth, a chord.
    std::vector<std::pair<uint32_t, int>> heard;
    for (const audiogen::MidiNote& note : lead.notes)
        heard.emplace_back(note.start, note.key);
    const std::vector<std::pair<uint32_t, int>> expected = {
        {0, 60}, {480, 54}, {840, 46}, {960, 60}, {960, 64}, {960, 67},     // bar 1
        {1920, 60}, {2080, 60}, {2240, 60}, {2880, 60},                     // bar 2: triplets, rest
        {3840, 72}, {5760, 72}};                                            // section b's own lead
    EXPECT_EQ(heard, expected);
    // legato 0.5: a quarter sounds for an eighth; the notes are played a little unevenly.
    EXPECT_EQ(lead.notes[0].length, 240u);
    for (const audiogen::MidiNote& note : lead.notes)
        EXPECT_NEAR(note.velocity, 100, 5);

    // The drum grid, twice over in a and again in b (b is like a): x, o and X.
    std::vector<uint32_t> kicks;
    for (const audiogen::MidiNote& note : drums.notes)
    {
        EXPECT_EQ(note.key, 36);
        kicks.push_back(note.start);
    }
    const std::vector<uint32_t> expectedKicks = {0, 480, 960, 1920, 2400, 2880, 3840, 4320, 4800, 5760, 6240, 6720};
    EXPECT_EQ(kicks, expectedKicks);
    EXPECT_LT(drums.notes[1].velocity, drums.notes[0].velocity);
    EXPECT_GT(drums.notes[2].velocity, drums.notes[0].velocity);
}

TEST(Audiogen, ScoreMistakesNameTheLineAndTheProblem)
{
    const auto failure = [](const std::string& p_text) {
        audiogen::Score score;
        std::string error;
        EXPECT_FALSE(audiogen::ParseScore(p_text, "bad.yaml", score, error));
        return error;
    };
    const std::string head = "title: T\nfile: Sound\\t.mid\ntempo: 120\nmeter: 4/4\n"
                             "tracks:\n  lead: {channel: 1, program: 1}\n  drums: {channel: 10}\n";
    // A bar one eighth short, on line 11.
    std::string error = failure(head + "sections:\n  a:\n    bars: 2\n    lead: c4/1 | c4/2 c4/4 c4/8 | c4/1\nsong: [a]\n");
    EXPECT_NE(error.find("bad.yaml:11:"), std::string::npos) << error;
    EXPECT_NE(error.find("bar 2 holds 7/8 of a bar, not 4/4"), std::string::npos) << error;
    // Too short overall, without bar lines.
    error = failure(head + "sections:\n  a:\n    bars: 2\n    lead: c4/1\nsong: [a]\n");
    EXPECT_NE(error.find("not 2 bars"), std::string::npos) << error;
    error = failure(head + "sections:\n  a:\n    bars: 1\n    lead: h4/1\nsong: [a]\n");
    EXPECT_NE(error.find("cannot read the note \"h4/1\""), std::string::npos) << error;
    error = failure(head + "sections:\n  a:\n    bars: 1\n    lead: c4/3\nsong: [a]\n");
    EXPECT_NE(error.find("cannot read the length"), std::string::npos) << error;
    error = failure(head + "sections:\n  a:\n    bars: 1\n    drums: {cowbel: x...x...x...x...}\nsong: [a]\n");
    EXPECT_NE(error.find("no drum called \"cowbel\""), std::string::npos) << error;
    error = failure(head + "sections:\n  a:\n    bars: 1\n    drums: {kick: x...x...x...x..}\nsong: [a]\n");
    EXPECT_NE(error.find("15 steps, not 16"), std::string::npos) << error;
    error = failure(head + "sections:\n  a:\n    bars: 1\n    flute: c4/1\nsong: [a]\n");
    EXPECT_NE(error.find("no track \"flute\""), std::string::npos) << error;
    error = failure(head + "sections:\n  a:\n    bars: 1\n    lead: c4/1\nsong: [a, b]\n");
    EXPECT_NE(error.find("no section \"b\""), std::string::npos) << error;
    error = failure(head + "sections:\n  a:\n    bars: 1\n    lead: c4/1\n");
    EXPECT_NE(error.find("the song lists no sections"), std::string::npos) << error;
    error = failure("title: T\nfile: x.mid\ntempo: 120\nmeter: 5/3\ntracks: {lead: {channel: 1, program: 1}}\n");
    EXPECT_NE(error.find("cannot read the meter"), std::string::npos) << error;
    error = failure("title: T\nfile: x.mid\ntempo: 120\ntracks: {lead: {channel: 17, program: 1}}\n");
    EXPECT_NE(error.find("channel must be 1 to 16"), std::string::npos) << error;
    error = failure("title: [unclosed\n");
    EXPECT_EQ(error.rfind("bad.yaml:", 0), 0u) << error;
    error = failure("- a list\n- not a score\n");
    EXPECT_NE(error.find("a score is a map"), std::string::npos) << error;
}

TEST(Audiogen, MidiEndsEveryTrackOnTheLoopPoint)
{
    audiogen::MidiSong song;
    song.title = "Loop";
    song.lengthTicks = 1920;
    audiogen::MidiTrack track;
    track.name = "lead";
    track.program = 30;
    // A note repeated back to back, and one that would ring past the end.
    track.notes = {{0, 480, 64, 100}, {480, 480, 64, 100}, {1440, 960, 67, 90}, {2000, 100, 70, 90}};
    song.tracks.push_back(track);
    const std::vector<uint8_t> bytes = audiogen::EncodeMidi(song);
    EXPECT_TRUE(platform::IsPlayableMidi(bytes.data(), bytes.size()));

    uint16_t division = 0;
    std::vector<ReadTrack> tracks;
    ASSERT_TRUE(ReadMidi(bytes, division, tracks));
    EXPECT_EQ(division, 480);
    ASSERT_EQ(tracks.size(), 2u);
    for (const ReadTrack& read : tracks)
    {
        EXPECT_TRUE(read.ended);
        EXPECT_EQ(read.endTick, 1920u);
    }
    // At tick 480 the first note ends before the second starts; the long note is cut at the
    // loop point; the note after the end is left out.
    std::vector<std::tuple<uint32_t, uint8_t, uint8_t>> notes;
    for (const ReadEvent& event : tracks[1].events)
        if ((event.status & 0xE0u) == 0x80u)
            notes.emplace_back(event.tick, uint8_t(event.status & 0xF0u), event.a);
    const std::vector<std::tuple<uint32_t, uint8_t, uint8_t>> expected = {
        {0, 0x90, 64}, {480, 0x80, 64}, {480, 0x90, 64}, {960, 0x80, 64}, {1440, 0x90, 67}, {1920, 0x80, 67}};
    EXPECT_EQ(notes, expected);
}

TEST(Audiogen, GameScoresAreWholeLoopsOfMelodyBassAndDrums)
{
    const std::map<std::string, std::string> SCORES = {{"title_screen.yaml", "Sound\\title_screen.mid"},
                                                       {"loops_of_fury.yaml", "Sound\\Loops_Of_Fury.mid"}};
    for (const auto& [file, gameName] : SCORES)
    {
        SCOPED_TRACE(file);
        audiogen::Score score;
        std::string error;
        ASSERT_TRUE(audiogen::ReadScore(std::string(KORVATH_SOURCE_DIR) + "/data/music/" + file, score, error)) << error;
        EXPECT_EQ(score.gameName, gameName);
        const audiogen::MidiSong& song = score.song;
        const uint32_t bar = song.ticksPerQuarter * 4u * song.meterTop / song.meterBottom;
        EXPECT_EQ(song.lengthTicks % bar, 0u);
        const double seconds = double(song.lengthTicks) / song.ticksPerQuarter * song.microsPerQuarter / 1e6;
        EXPECT_GT(seconds, 20.0);
        EXPECT_LT(seconds, 120.0);
        bool drums = false;
        int lowest = 127;
        int highest = 0;
        std::vector<int> programs;
        for (const audiogen::MidiTrack& track : song.tracks)
        {
            EXPECT_FALSE(track.notes.empty()) << track.name;
            drums = drums || track.channel == 9;
            if (track.program >= 0)
                programs.push_back(track.program);
            for (const audiogen::MidiNote& note : track.notes)
            {
                EXPECT_LT(note.start, song.lengthTicks);
                if (track.channel != 9)
                {
                    lowest = std::min<int>(lowest, note.key);
                    highest = std::max<int>(highest, note.key);
                }
            }
            // Something sounds on the first beat, so the loop does not stumble.
            if (track.channel == 9)
            {
                EXPECT_EQ(track.notes.front().start, 0u);
            }
        }
        EXPECT_TRUE(drums);
        EXPECT_LE(lowest, 45) << "no bass line";
        EXPECT_GE(highest, 72) << "no melody above middle C";
        std::sort(programs.begin(), programs.end());
        EXPECT_GE(std::unique(programs.begin(), programs.end()) - programs.begin(), 3);
        const std::vector<uint8_t> bytes = audiogen::EncodeMidi(song);
        EXPECT_TRUE(platform::IsPlayableMidi(bytes.data(), bytes.size()));
    }
}

// Plays both songs through the game's own music path (FluidSynth with the General MIDI
// soundfont) into SDL's disk driver and listens for music.
TEST(Audiogen, GameSongsSoundThroughTheSynthesizer)
{
    const std::string dir = testsupport::MakeTempDir("korvath-audiogen");
    ASSERT_FALSE(dir.empty());
    for (const char* file : {"title_screen.yaml", "loops_of_fury.yaml"})
    {
        SCOPED_TRACE(file);
        audiogen::Score score;
        std::string error;
        ASSERT_TRUE(audiogen::ReadScore(std::string(KORVATH_SOURCE_DIR) + "/data/music/" + file, score, error)) << error;
        const std::vector<uint8_t> bytes = audiogen::EncodeMidi(score.song);
        testsupport::DiskAudioCapture capture(dir);
        platform::AudioDevice device;
        ASSERT_TRUE(device.Open());
        const int32_t music = device.LoadFromMemory(bytes.data(), bytes.size());
        ASSERT_GT(music, 0);
        ASSERT_TRUE(device.IsMusic(music));
        ASSERT_TRUE(device.Play(music));
        ASSERT_TRUE(capture.WaitFrames(testsupport::Frames(2.0)));
        if (device.GetMusicTick() < 0)
            GTEST_SKIP() << "no General MIDI soundfont on this machine";
        const std::vector<int16_t> samples = capture.ReadSamples();
        const int64_t frames = int64_t(samples.size() / 2);
        // Over the second half of what was rendered: clearly audible, never clipping.
        EXPECT_GT(testsupport::RmsLevel(samples, frames / 2, frames), 300.0);
        EXPECT_LT(testsupport::PeakLevel(samples, 0, frames), 32767);
        device.Close();
    }
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
}
