#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace platform
{

// What the device mixes: 16-bit signed samples, interleaved stereo, at this rate.
constexpr int32_t AUDIO_SAMPLE_RATE = 44100;
constexpr int32_t AUDIO_CHANNELS = 2;
// Frames per mixing buffer (about 23 ms at 44.1 kHz).
constexpr int32_t AUDIO_BUFFER_FRAMES = 1024;

// True when p_data is a Standard MIDI File (format 0 or 1, ticks per quarter note) whose chunks
// and events all lie inside the data and that the synthesizer can read. Damaged songs are
// refused here, before the synthesizer ever sees them.
bool IsPlayableMidi(const uint8_t* p_data, size_t p_size);

// The sound output: WAV effects as mixer chunks, each play on a mixer channel of its own so
// that shots and explosions overlap, and MIDI music rendered by FluidSynth with a General MIDI
// soundfont. One device can be open at a time; everything is called from the main thread.
class AudioDevice
{
public:
    // Effects that can sound at the same time; a further effect takes over the oldest one.
    static constexpr int32_t EFFECT_CHANNELS = 32;

    AudioDevice();
    ~AudioDevice();
    AudioDevice(const AudioDevice&) = delete;
    AudioDevice& operator=(const AudioDevice&) = delete;

    // Opens the system's sound output. When there is none (no sound card, a busy device), it
    // opens SDL's silent "dummy" output instead, so that loading and playing go on unheard,
    // and returns false. False with IsOpen() false only if even that fails.
    bool Open();
    // Stops everything and frees every loaded sound.
    void Close();
    bool IsOpen() const;
    // Open on the silent stand-in.
    bool IsSilent() const;

    // Loads a WAV effect ("RIFF"/"WAVE") or a MIDI song ("MThd") from an already resolved file
    // path or from memory. Returns a handle (> 0), or 0 when the device is closed or the data
    // is missing, damaged or neither kind.
    int32_t Load(const std::string& p_resolvedPath);
    int32_t LoadFromMemory(const uint8_t* p_data, size_t p_size);
    // Stops the sound and frees it; unknown handles are ignored.
    void Free(int32_t p_handle);
    bool IsLoaded(int32_t p_handle) const;
    bool IsMusic(int32_t p_handle) const;

    // An effect starts from its beginning on a free channel, overlapping earlier plays. Music
    // replaces whatever music plays and starts from its beginning; without a soundfont it
    // "plays" silently. False for an unknown handle.
    bool Play(int32_t p_handle);
    // Silences every play of the sound at once. False for an unknown handle.
    bool Stop(int32_t p_handle);
    // Makes the sound repeat endlessly (or not) from its next play on; music that is playing
    // now follows at once and keeps going past its end.
    bool SetLooping(int32_t p_handle, bool p_looping);
    // Effects: some channel plays it. Music: it was started and not stopped since.
    bool IsPlaying(int32_t p_handle) const;

    // The cue for a completed objective, applied to the music that plays now (false if
    // p_handle is not that music): a cymbal crash over it and a short lift of its tempo that
    // eases back, without restarting it.
    bool AccentMusic(int32_t p_handle);
    // Position of the playing music in MIDI ticks, -1 if no music is being rendered.
    int32_t GetMusicTick() const;

    // Linear gain of the whole output, effects and music alike, from 0 (silent) to 1 (as
    // recorded); it applies at once to what is playing.
    void SetGain(float p_gain);
    float GetGain() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_pImpl;
};

} // namespace platform
