#include "support/TestAudio.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <thread>

namespace testsupport
{

namespace
{

void PutLittle(std::vector<uint8_t>& p_bytes, uint32_t p_value, int p_count)
{
    for (int i = 0; i < p_count; ++i)
        p_bytes.push_back(uint8_t(p_value >> (8 * i)));
}

void PutBig32(std::vector<uint8_t>& p_bytes, uint32_t p_value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        p_bytes.push_back(uint8_t(p_value >> shift));
}

void PutVarLen(std::vector<uint8_t>& p_bytes, uint32_t p_value)
{
    uint8_t groups[5];
    int count = 0;
    groups[count++] = uint8_t(p_value & 0x7F);
    while ((p_value >>= 7) != 0)
        groups[count++] = uint8_t(0x80 | (p_value & 0x7F));
    while (count > 0)
        p_bytes.push_back(groups[--count]);
}

// The disk driver writes 1024-frame buffers; 10 ms between them runs the audio clock a little
// over twice as fast as real time, which keeps the tests short.
const char* DISK_DELAY_MS = "10";

} // namespace

std::vector<uint8_t> MakeWavBytes(const std::vector<int16_t>& p_samples, int p_channels, int p_sampleRate)
{
    const uint32_t dataBytes = uint32_t(p_samples.size() * 2);
    std::vector<uint8_t> bytes;
    bytes.insert(bytes.end(), {'R', 'I', 'F', 'F'});
    PutLittle(bytes, 36 + dataBytes, 4);
    bytes.insert(bytes.end(), {'W', 'A', 'V', 'E', 'f', 'm', 't', ' '});
    PutLittle(bytes, 16, 4);
    PutLittle(bytes, 1, 2); // PCM
    PutLittle(bytes, uint32_t(p_channels), 2);
    PutLittle(bytes, uint32_t(p_sampleRate), 4);
    PutLittle(bytes, uint32_t(p_sampleRate * p_channels * 2), 4);
    PutLittle(bytes, uint32_t(p_channels * 2), 2);
    PutLittle(bytes, 16, 2);
    bytes.insert(bytes.end(), {'d', 'a', 't', 'a'});
    PutLittle(bytes, dataBytes, 4);
    for (int16_t sample : p_samples)
        PutLittle(bytes, uint16_t(sample), 2);
    return bytes;
}

std::vector<int16_t> MakeLevelSamples(int16_t p_level, double p_seconds, int p_sampleRate)
{
    return std::vector<int16_t>(size_t(std::lround(p_seconds * p_sampleRate)) * 2, p_level);
}

std::vector<int16_t> MakeToneSamples(double p_frequency, double p_seconds, double p_amplitude, int p_sampleRate)
{
    const size_t frames = size_t(std::lround(p_seconds * p_sampleRate));
    std::vector<int16_t> samples(frames * 2);
    for (size_t i = 0; i < frames; ++i)
    {
        const double value = p_amplitude * std::sin(2.0 * 3.14159265358979323846 * p_frequency * double(i) / p_sampleRate);
        samples[i * 2] = samples[i * 2 + 1] = int16_t(std::lround(value));
    }
    return samples;
}

std::vector<uint8_t> MakeMidiBytes(const std::vector<MidiNote>& p_notes, uint32_t p_endTick, uint8_t p_program,
                                   uint32_t p_microsPerQuarter)
{
    struct Event
    {
        uint32_t tick;
        uint8_t status;
        uint8_t key;
        uint8_t velocity;
    };
    std::vector<Event> events;
    for (const MidiNote& note : p_notes)
    {
        events.push_back({note.start, 0x90, note.key, note.velocity});
        events.push_back({note.start + note.length, 0x80, note.key, 0});
    }
    // Note-offs before note-ons at the same tick, so a repeated key sounds again.
    std::stable_sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
        return a.tick != b.tick ? a.tick < b.tick : a.status < b.status;
    });

    std::vector<uint8_t> track;
    PutVarLen(track, 0);
    track.insert(track.end(), {0xFF, 0x51, 0x03, uint8_t(p_microsPerQuarter >> 16), uint8_t(p_microsPerQuarter >> 8),
                               uint8_t(p_microsPerQuarter)});
    PutVarLen(track, 0);
    track.insert(track.end(), {0xC0, p_program});
    uint32_t now = 0;
    for (const Event& event : events)
    {
        PutVarLen(track, event.tick - now);
        track.insert(track.end(), {event.status, event.key, event.velocity});
        now = event.tick;
    }
    PutVarLen(track, p_endTick > now ? p_endTick - now : 0);
    track.insert(track.end(), {0xFF, 0x2F, 0x00});

    std::vector<uint8_t> bytes = {'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 0, 0, 1, 0x01, 0xE0, 'M', 'T', 'r', 'k'};
    PutBig32(bytes, uint32_t(track.size()));
    bytes.insert(bytes.end(), track.begin(), track.end());
    return bytes;
}

DiskAudioCapture::DiskAudioCapture(const std::string& p_dir) : m_path(p_dir + "/audio-out.raw")
{
    const std::pair<const char*, std::string> variables[] = {
        {"SDL_AUDIODRIVER", "disk"},
        {"SDL_DISKAUDIOFILE", m_path},
        {"SDL_DISKAUDIODELAY", DISK_DELAY_MS},
    };
    for (const auto& variable : variables)
    {
        const char* old = std::getenv(variable.first);
        m_saved.push_back({variable.first, old != nullptr, old != nullptr ? old : ""});
        setenv(variable.first, variable.second.c_str(), 1);
    }
}

DiskAudioCapture::~DiskAudioCapture()
{
    for (const SavedVariable& variable : m_saved)
    {
        if (variable.wasSet)
            setenv(variable.name.c_str(), variable.value.c_str(), 1);
        else
            unsetenv(variable.name.c_str());
    }
}

int64_t DiskAudioCapture::FramesWritten() const
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(m_path, error);
    return error ? 0 : int64_t(size / 4);
}

bool DiskAudioCapture::WaitUntilFrame(int64_t p_frame, double p_timeoutSeconds) const
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(p_timeoutSeconds);
    while (FramesWritten() < p_frame)
    {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

bool DiskAudioCapture::WaitFrames(int64_t p_frames, double p_timeoutSeconds) const
{
    return WaitUntilFrame(FramesWritten() + p_frames, p_timeoutSeconds);
}

std::vector<int16_t> DiskAudioCapture::ReadSamples() const
{
    std::ifstream file(m_path, std::ios::binary);
    std::vector<int16_t> samples;
    uint8_t pair[2];
    while (file.read(reinterpret_cast<char*>(pair), 2))
        samples.push_back(int16_t(uint16_t(pair[0] | (pair[1] << 8))));
    return samples;
}

int64_t Frames(double p_seconds)
{
    return int64_t(std::llround(p_seconds * double(FRAMES_PER_SECOND)));
}

namespace
{
// Clips [p_from, p_to) to the frames present.
bool ClipRange(const std::vector<int16_t>& p_samples, int64_t& p_from, int64_t& p_to)
{
    const int64_t frames = int64_t(p_samples.size() / 2);
    p_from = std::max<int64_t>(p_from, 0);
    p_to = std::min<int64_t>(p_to, frames);
    return p_from < p_to;
}
} // namespace

int32_t PeakLevel(const std::vector<int16_t>& p_samples, int64_t p_from, int64_t p_to)
{
    if (!ClipRange(p_samples, p_from, p_to))
        return 0;
    int32_t peak = 0;
    for (int64_t i = p_from * 2; i < p_to * 2; ++i)
        peak = std::max(peak, std::abs(int32_t(p_samples[size_t(i)])));
    return peak;
}

double RmsLevel(const std::vector<int16_t>& p_samples, int64_t p_from, int64_t p_to)
{
    if (!ClipRange(p_samples, p_from, p_to))
        return 0.0;
    double sum = 0.0;
    for (int64_t i = p_from * 2; i < p_to * 2; ++i)
        sum += double(p_samples[size_t(i)]) * double(p_samples[size_t(i)]);
    return std::sqrt(sum / double((p_to - p_from) * 2));
}

int64_t FirstFrameAbove(const std::vector<int16_t>& p_samples, int64_t p_from, int32_t p_threshold)
{
    const int64_t frames = int64_t(p_samples.size() / 2);
    for (int64_t frame = std::max<int64_t>(p_from, 0); frame < frames; ++frame)
    {
        if (std::abs(int32_t(p_samples[size_t(frame * 2)])) > p_threshold ||
            std::abs(int32_t(p_samples[size_t(frame * 2 + 1)])) > p_threshold)
            return frame;
    }
    return -1;
}

} // namespace testsupport
