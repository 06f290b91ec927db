#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Small sound files for tests, written byte by byte, and a reader of what SDL's "disk" audio
// driver writes, so that tests can measure what the game really mixed.
namespace testsupport
{

// The bytes of a 16-bit PCM WAV file from interleaved samples.
std::vector<uint8_t> MakeWavBytes(const std::vector<int16_t>& p_samples, int p_channels, int p_sampleRate);
// Interleaved stereo samples of a constant level: mixed with itself, it adds up exactly.
std::vector<int16_t> MakeLevelSamples(int16_t p_level, double p_seconds, int p_sampleRate = 44100);
// Interleaved stereo samples of a sine tone of the given peak amplitude (0..32767).
std::vector<int16_t> MakeToneSamples(double p_frequency, double p_seconds, double p_amplitude,
                                     int p_sampleRate = 44100);

struct MidiNote
{
    uint32_t start;  // ticks
    uint32_t length; // ticks
    uint8_t key;
    uint8_t velocity;
};

// The bytes of a format-0 Standard MIDI File on channel 0 with p_program (General MIDI,
// 0-based), 480 ticks a quarter note and p_microsPerQuarter (500000: 120 beats a minute, so
// 960 ticks a second). The end-of-track event sits at p_endTick, which sets the song's length.
std::vector<uint8_t> MakeMidiBytes(const std::vector<MidiNote>& p_notes, uint32_t p_endTick,
                                   uint8_t p_program = 0, uint32_t p_microsPerQuarter = 500000);
constexpr uint32_t MIDI_TICKS_PER_SECOND = 960;

// While it lives, audio devices that are opened write their output through SDL's "disk"
// driver to a file in p_dir instead of playing it (SDL_AUDIODRIVER, SDL_DISKAUDIOFILE,
// SDL_DISKAUDIODELAY); the old environment comes back when it is destroyed. The driver writes
// in about real time, so "frames written" is the position of the audio clock.
class DiskAudioCapture
{
public:
    explicit DiskAudioCapture(const std::string& p_dir);
    ~DiskAudioCapture();
    DiskAudioCapture(const DiskAudioCapture&) = delete;
    DiskAudioCapture& operator=(const DiskAudioCapture&) = delete;

    // Stereo frames in the file so far.
    int64_t FramesWritten() const;
    // Waits until p_frames more frames than now have been written; false after p_timeoutSeconds.
    bool WaitFrames(int64_t p_frames, double p_timeoutSeconds = 10.0) const;
    // Waits until the file holds at least p_frame frames.
    bool WaitUntilFrame(int64_t p_frame, double p_timeoutSeconds = 10.0) const;
    // Everything written so far, as interleaved 16-bit stereo samples.
    std::vector<int16_t> ReadSamples() const;
    const std::string& GetPath() const { return m_path; }

private:
    struct SavedVariable
    {
        std::string name;
        bool wasSet;
        std::string value;
    };

    std::string m_path;
    std::vector<SavedVariable> m_saved;
};

// Frames (stereo sample pairs) per second of audio at 44.1 kHz.
constexpr int64_t FRAMES_PER_SECOND = 44100;
int64_t Frames(double p_seconds);

// Largest absolute sample and root mean square over frames [p_from, p_to) of interleaved stereo
// samples; the range is cut to what exists, and an empty range gives 0.
int32_t PeakLevel(const std::vector<int16_t>& p_samples, int64_t p_from, int64_t p_to);
double RmsLevel(const std::vector<int16_t>& p_samples, int64_t p_from, int64_t p_to);
// The first frame at or after p_from whose level exceeds p_threshold, or -1.
int64_t FirstFrameAbove(const std::vector<int16_t>& p_samples, int64_t p_from, int32_t p_threshold);

} // namespace testsupport
