#include "platform/AudioDevice.h"

#include <SDL2/SDL.h>
#include <SDL2/SDL_mixer.h>
#include <fluidsynth.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>
#include <vector>

namespace platform
{

namespace
{

// No sound file of the game comes near this; a bigger file is taken as damaged.
constexpr size_t MAX_SOUND_BYTES = 64u * 1024u * 1024u;

// FluidSynth stops reading a song with more tracks than this.
constexpr uint32_t MAX_MIDI_TRACKS = 128;
// Keeps tick arithmetic far from overflowing inside the synthesizer.
constexpr uint32_t MAX_TRACK_TICKS = 0x3FFFFFFFu;

// Songs use MIDI channels 0..15; the objective cue plays on channels of its own above them.
constexpr int SYNTH_MIDI_CHANNELS = 32;
constexpr int ACCENT_DRUM_CHANNEL = 16 + 9;
constexpr int CRASH_CYMBAL_KEY = 49;
constexpr int ACCENT_VELOCITY = 127;
// Let go of the cymbal only once it has rung out; some fonts cut a drum short at its release.
constexpr double ACCENT_RING_SECONDS = 2.5;
// FluidSynth's own default of 0.2 leaves General MIDI music well below the effects.
constexpr float SYNTH_GAIN = 0.45f;

// The tempo lift of the objective cue: this much faster for a while, then easing back.
constexpr double LIFT_FACTOR = 1.2;
constexpr double LIFT_HOLD_SECONDS = 3.0;
constexpr double LIFT_EASE_SECONDS = 2.0;

uint32_t ReadBigEndian32(const uint8_t* p_bytes)
{
    return (uint32_t(p_bytes[0]) << 24) | (uint32_t(p_bytes[1]) << 16) | (uint32_t(p_bytes[2]) << 8) |
           uint32_t(p_bytes[3]);
}

// A MIDI variable-length quantity: at most four bytes, none of them past p_end.
bool ReadVarLen(const uint8_t* p_data, size_t& p_pos, size_t p_end, uint32_t& p_value)
{
    p_value = 0;
    for (int i = 0; i < 4; ++i)
    {
        if (p_pos >= p_end)
        {
            return false;
        }
        const uint8_t byte = p_data[p_pos++];
        p_value = (p_value << 7) | (byte & 0x7Fu);
        if ((byte & 0x80u) == 0)
        {
            return true;
        }
    }
    return false;
}

// Walks every event of one track chunk (p_data[p_pos, p_end)).
bool IsPlayableTrack(const uint8_t* p_data, size_t p_pos, size_t p_end)
{
    uint8_t runningStatus = 0;
    uint32_t ticks = 0;
    while (p_pos < p_end)
    {
        uint32_t delta = 0;
        if (!ReadVarLen(p_data, p_pos, p_end, delta) || p_pos >= p_end)
        {
            return false;
        }
        ticks += delta;
        if (ticks > MAX_TRACK_TICKS)
        {
            return false;
        }

        uint8_t status = p_data[p_pos];
        if ((status & 0x80u) != 0)
        {
            ++p_pos;
        }
        else if (runningStatus != 0)
        {
            status = runningStatus;
        }
        else
        {
            return false;
        }

        if (status == 0xFF)
        {
            runningStatus = 0;
            if (p_pos >= p_end)
            {
                return false;
            }
            const uint8_t type = p_data[p_pos++];
            uint32_t length = 0;
            if (!ReadVarLen(p_data, p_pos, p_end, length) || length > p_end - p_pos)
            {
                return false;
            }
            // The synthesizer refuses these meta events at any other length.
            if ((type == 0x51 && length != 3) || (type == 0x54 && length != 5) ||
                (type == 0x58 && length != 4) || (type == 0x59 && length != 2))
            {
                return false;
            }
            if (type == 0x51 && p_data[p_pos] == 0 && p_data[p_pos + 1] == 0 && p_data[p_pos + 2] == 0)
            {
                return false; // a tempo of zero microseconds per beat
            }
            p_pos += length;
            if (type == 0x2F)
            {
                return true; // end of track: whatever follows is never read
            }
        }
        else if (status == 0xF0 || status == 0xF7)
        {
            runningStatus = 0;
            uint32_t length = 0;
            if (!ReadVarLen(p_data, p_pos, p_end, length) || length > p_end - p_pos)
            {
                return false;
            }
            p_pos += length;
        }
        else if (status >= 0xF0)
        {
            return false; // system common and real-time messages have no place in a file
        }
        else
        {
            runningStatus = status;
            const uint8_t kind = status & 0xF0u;
            const size_t dataBytes = (kind == 0xC0 || kind == 0xD0) ? 1 : 2;
            if (dataBytes > p_end - p_pos)
            {
                return false;
            }
            for (size_t i = 0; i < dataBytes; ++i)
            {
                if ((p_data[p_pos + i] & 0x80u) != 0)
                {
                    return false;
                }
            }
            p_pos += dataBytes;
        }
    }
    return true;
}

bool IsWave(const uint8_t* p_data, size_t p_size)
{
    return p_size >= 12 && std::memcmp(p_data, "RIFF", 4) == 0 && std::memcmp(p_data + 8, "WAVE", 4) == 0;
}

bool IsMidi(const uint8_t* p_data, size_t p_size)
{
    return p_size >= 4 && std::memcmp(p_data, "MThd", 4) == 0;
}

// The synthesizer's complaints about a song or a soundfont would only repeat what the game
// reports in its own words.
void SilenceFluidSynthLog()
{
    static bool s_done = false;
    if (!s_done)
    {
        fluid_set_log_function(FLUID_ERR, nullptr, nullptr);
        fluid_set_log_function(FLUID_WARN, nullptr, nullptr);
        fluid_set_log_function(FLUID_INFO, nullptr, nullptr);
        fluid_set_log_function(FLUID_DBG, nullptr, nullptr);
        s_done = true;
    }
}

// Where a General MIDI soundfont may be: what the player named in SDL_SOUNDFONTS (as for
// SDL_mixer, separated by ':' or ';'), otherwise Debian's layout, where
// /usr/share/sounds/sf2/default-GM.sf2 is the alternatives link to the chosen GM font
// (timgm6mb-soundfont provides TimGM6mb.sf2 there), then any other font in that folder and
// the layout some other distributions use.
std::vector<std::string> SoundFontCandidates(bool& p_fromEnvironment)
{
    std::vector<std::string> candidates;
    const char* named = std::getenv("SDL_SOUNDFONTS");
    p_fromEnvironment = named != nullptr && named[0] != '\0';
    if (p_fromEnvironment)
    {
        std::string list = named;
        size_t start = 0;
        while (start <= list.size())
        {
            size_t end = list.find_first_of(":;", start);
            if (end == std::string::npos)
            {
                end = list.size();
            }
            if (end > start)
            {
                candidates.push_back(list.substr(start, end - start));
            }
            start = end + 1;
        }
        return candidates;
    }

    const std::string debianDir = "/usr/share/sounds/sf2";
    candidates.push_back(debianDir + "/default-GM.sf2");
    candidates.push_back(debianDir + "/TimGM6mb.sf2");
    candidates.push_back(debianDir + "/FluidR3_GM.sf2");
    std::error_code error;
    std::vector<std::string> others;
    for (std::filesystem::directory_iterator it(debianDir, error), end; !error && it != end; it.increment(error))
    {
        if (it->path().extension() == ".sf2")
        {
            others.push_back(it->path().string());
        }
    }
    std::sort(others.begin(), others.end());
    candidates.insert(candidates.end(), others.begin(), others.end());
    candidates.push_back("/usr/share/soundfonts/default.sf2");
    candidates.push_back("/usr/share/soundfonts/FluidR3_GM.sf2");
    return candidates;
}

bool ReadWholeFile(const std::string& p_path, std::vector<uint8_t>& p_bytes)
{
    std::error_code error;
    if (p_path.empty() || !std::filesystem::is_regular_file(p_path, error))
    {
        return false;
    }
    const std::uintmax_t size = std::filesystem::file_size(p_path, error);
    if (error || size > MAX_SOUND_BYTES)
    {
        return false;
    }
    std::ifstream file(p_path, std::ios::binary);
    if (!file)
    {
        return false;
    }
    p_bytes.resize(size_t(size));
    file.read(reinterpret_cast<char*>(p_bytes.data()), std::streamsize(size));
    return bool(file) || size == 0;
}

// Only one device can own SDL_mixer at a time.
bool s_mixerTaken = false;

} // namespace

bool IsPlayableMidi(const uint8_t* p_data, size_t p_size)
{
    if (p_data == nullptr || p_size < 14 || !IsMidi(p_data, p_size))
    {
        return false;
    }
    // The synthesizer reads a header of exactly six bytes and ignores the length field.
    const uint32_t headerLength = ReadBigEndian32(p_data + 4);
    const uint32_t format = (uint32_t(p_data[8]) << 8) | p_data[9];
    const uint32_t tracks = (uint32_t(p_data[10]) << 8) | p_data[11];
    const uint32_t division = (uint32_t(p_data[12]) << 8) | p_data[13];
    if (headerLength != 6 || format > 1 || tracks == 0 || tracks > MAX_MIDI_TRACKS ||
        (division & 0x8000u) != 0 || division == 0)
    {
        return false; // also SMPTE time, which the synthesizer does not play
    }

    size_t pos = 14;
    uint32_t found = 0;
    while (found < tracks)
    {
        if (p_size - pos < 8)
        {
            return false;
        }
        for (size_t i = 0; i < 4; ++i)
        {
            if (p_data[pos + i] < 0x20 || p_data[pos + i] > 0x7E)
            {
                return false;
            }
        }
        const uint32_t length = ReadBigEndian32(p_data + pos + 4);
        const size_t body = pos + 8;
        if (length > p_size - body)
        {
            return false;
        }
        if (std::memcmp(p_data + pos, "MTrk", 4) == 0)
        {
            if (!IsPlayableTrack(p_data, body, body + length))
            {
                return false;
            }
            ++found;
        }
        pos = body + length;
    }
    return true;
}

struct AudioDevice::Impl
{
    struct Segment
    {
        Mix_Chunk* pChunk = nullptr;   // effects
        std::vector<uint8_t> midi;     // music: the song's bytes, read again at every play
        bool looping = false;
    };

    bool open = false;
    bool silent = false;
    std::map<int32_t, Segment> segments;
    int32_t nextHandle = 1;
    std::atomic<float> gain{1.0f};

    // Music: touched by the mixing thread, so only while holding pLock.
    SDL_mutex* pLock = nullptr;
    bool synthTried = false;
    fluid_settings_t* pSettings = nullptr;
    fluid_synth_t* pSynth = nullptr;
    fluid_player_t* pPlayer = nullptr;
    int32_t musicHandle = 0;     // the music started last and not stopped since
    int64_t liftFrames = -1;     // frames rendered since the objective cue, -1 when none runs

    bool OpenMixer();
    void EnsureSynth();
    void StopMusicLocked();
    void UpdateLiftLocked(int p_frames);
    int32_t AddSegment(Segment&& p_segment);

    static void SDLCALL MixMusic(void* p_udata, Uint8* p_stream, int p_length);
    static void SDLCALL ApplyGain(void* p_udata, Uint8* p_stream, int p_length);
};

bool AudioDevice::Impl::OpenMixer()
{
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
    {
        return false;
    }
    // No format changes allowed: SDL converts for the hardware, and the mixer always works in
    // the one format that the music renderer writes.
    if (Mix_OpenAudioDevice(AUDIO_SAMPLE_RATE, AUDIO_S16SYS, AUDIO_CHANNELS, AUDIO_BUFFER_FRAMES, nullptr, 0) != 0)
    {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    return true;
}

// The soundfont is read when the first song is loaded rather than at start-up: a game that
// never plays music never pays for it.
void AudioDevice::Impl::EnsureSynth()
{
    if (synthTried)
    {
        return;
    }
    synthTried = true;
    if (silent)
    {
        return; // nobody would hear it
    }
    SilenceFluidSynthLog();

    fluid_settings_t* settings = new_fluid_settings();
    if (settings == nullptr)
    {
        return;
    }
    fluid_settings_setnum(settings, "synth.sample-rate", double(AUDIO_SAMPLE_RATE));
    fluid_settings_setint(settings, "synth.midi-channels", SYNTH_MIDI_CHANNELS);
    fluid_settings_setnum(settings, "synth.gain", double(SYNTH_GAIN));
    fluid_settings_setint(settings, "synth.lock-memory", 0);
    // Events are timed by the samples rendered, on the mixing thread: no timer thread.
    fluid_settings_setstr(settings, "player.timing-source", "sample");
    // A reset at the end of every pass would cut off the notes that ring into the next one.
    fluid_settings_setint(settings, "player.reset-synth", 0);
    fluid_synth_t* synth = new_fluid_synth(settings);
    if (synth == nullptr)
    {
        delete_fluid_settings(settings);
        return;
    }

    bool fromEnvironment = false;
    const std::vector<std::string> candidates = SoundFontCandidates(fromEnvironment);
    bool loaded = false;
    for (const std::string& candidate : candidates)
    {
        std::error_code error;
        if (std::filesystem::is_regular_file(candidate, error) &&
            fluid_synth_sfload(synth, candidate.c_str(), 1) != FLUID_FAILED)
        {
            loaded = true;
            break;
        }
    }
    if (!loaded)
    {
        if (fromEnvironment)
        {
            std::fprintf(stderr,
                         "Korvath: no soundfont named in SDL_SOUNDFONTS (%s) could be loaded; the music stays silent.\n",
                         std::getenv("SDL_SOUNDFONTS"));
        }
        else
        {
            std::fprintf(stderr,
                         "Korvath: no General MIDI soundfont found (looked for /usr/share/sounds/sf2/default-GM.sf2 "
                         "and other .sf2 files); the music stays silent. Install the package timgm6mb-soundfont, "
                         "or name a soundfont file in SDL_SOUNDFONTS.\n");
        }
        std::fflush(stderr);
        delete_fluid_synth(synth);
        delete_fluid_settings(settings);
        return;
    }

    SDL_LockMutex(pLock);
    pSettings = settings;
    pSynth = synth;
    SDL_UnlockMutex(pLock);
}

void AudioDevice::Impl::StopMusicLocked()
{
    if (pPlayer != nullptr)
    {
        fluid_player_stop(pPlayer);
        delete_fluid_player(pPlayer);
        pPlayer = nullptr;
    }
    if (pSynth != nullptr)
    {
        fluid_synth_all_sounds_off(pSynth, -1);
    }
    musicHandle = 0;
    liftFrames = -1;
}

void AudioDevice::Impl::UpdateLiftLocked(int p_frames)
{
    if (liftFrames < 0 || pPlayer == nullptr)
    {
        return;
    }
    const int64_t before = liftFrames;
    liftFrames += p_frames;
    const int64_t release = int64_t(ACCENT_RING_SECONDS * AUDIO_SAMPLE_RATE);
    if (before < release && liftFrames >= release)
    {
        fluid_synth_noteoff(pSynth, ACCENT_DRUM_CHANNEL, CRASH_CYMBAL_KEY);
    }
    const double seconds = double(liftFrames) / AUDIO_SAMPLE_RATE;
    double factor = 1.0;
    if (seconds < LIFT_HOLD_SECONDS)
    {
        factor = LIFT_FACTOR;
    }
    else if (seconds < LIFT_HOLD_SECONDS + LIFT_EASE_SECONDS)
    {
        factor = LIFT_FACTOR - (LIFT_FACTOR - 1.0) * (seconds - LIFT_HOLD_SECONDS) / LIFT_EASE_SECONDS;
    }
    else
    {
        liftFrames = -1;
    }
    fluid_player_set_tempo(pPlayer, FLUID_PLAYER_TEMPO_INTERNAL, factor);
}

int32_t AudioDevice::Impl::AddSegment(Segment&& p_segment)
{
    const int32_t handle = nextHandle++;
    segments.emplace(handle, std::move(p_segment));
    return handle;
}

// The mixer's music hook: the stream arrives silent and the effects are mixed over it afterwards.
void SDLCALL AudioDevice::Impl::MixMusic(void* p_udata, Uint8* p_stream, int p_length)
{
    Impl* impl = static_cast<Impl*>(p_udata);
    SDL_LockMutex(impl->pLock);
    // Nothing is rendered while no song plays: a stop is silence at once, reverb tail and all.
    if (impl->pSynth != nullptr && impl->pPlayer != nullptr)
    {
        const int frames = p_length / int(sizeof(int16_t) * AUDIO_CHANNELS);
        int16_t* samples = reinterpret_cast<int16_t*>(p_stream);
        fluid_synth_write_s16(impl->pSynth, frames, samples, 0, AUDIO_CHANNELS, samples, 1, AUDIO_CHANNELS);
        impl->UpdateLiftLocked(frames);
    }
    SDL_UnlockMutex(impl->pLock);
}

// Runs on the finished mix, so the volume reaches effects and music alike.
void SDLCALL AudioDevice::Impl::ApplyGain(void* p_udata, Uint8* p_stream, int p_length)
{
    const float gain = static_cast<Impl*>(p_udata)->gain.load();
    if (gain >= 1.0f)
    {
        return;
    }
    int16_t* samples = reinterpret_cast<int16_t*>(p_stream);
    const int count = p_length / int(sizeof(int16_t));
    if (gain <= 0.0f)
    {
        std::memset(p_stream, 0, size_t(count) * sizeof(int16_t));
        return;
    }
    for (int i = 0; i < count; ++i)
    {
        samples[i] = int16_t(std::lround(float(samples[i]) * gain));
    }
}

AudioDevice::AudioDevice() : m_pImpl(std::make_unique<Impl>()) {}

AudioDevice::~AudioDevice()
{
    Close();
}

bool AudioDevice::Open()
{
    if (m_pImpl->open)
    {
        return !m_pImpl->silent;
    }
    if (s_mixerTaken)
    {
        return false;
    }

    bool heard = m_pImpl->OpenMixer();
    if (!heard)
    {
        std::fprintf(stderr, "Korvath: no sound output (%s); the game goes on without sound.\n", SDL_GetError());
        // The silent stand-in keeps every sound loading and playing as usual, unheard.
        SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
        const bool standIn = m_pImpl->OpenMixer();
        SDL_ResetHint(SDL_HINT_AUDIODRIVER);
        if (!standIn)
        {
            return false;
        }
        m_pImpl->silent = true;
    }

    s_mixerTaken = true;
    m_pImpl->open = true;
    m_pImpl->pLock = SDL_CreateMutex();
    Mix_AllocateChannels(EFFECT_CHANNELS);
    Mix_SetPostMix(&Impl::ApplyGain, m_pImpl.get());
    if (m_pImpl->pLock != nullptr)
    {
        Mix_HookMusic(&Impl::MixMusic, m_pImpl.get());
    }
    else
    {
        m_pImpl->synthTried = true; // without the lock no music is rendered
    }
    return heard;
}

void AudioDevice::Close()
{
    Impl& impl = *m_pImpl;
    if (!impl.open)
    {
        return;
    }
    // After these return, the mixing thread no longer calls into this device.
    Mix_HookMusic(nullptr, nullptr);
    Mix_SetPostMix(nullptr, nullptr);
    Mix_HaltChannel(-1);

    impl.StopMusicLocked();
    if (impl.pSynth != nullptr)
    {
        delete_fluid_synth(impl.pSynth);
        impl.pSynth = nullptr;
    }
    if (impl.pSettings != nullptr)
    {
        delete_fluid_settings(impl.pSettings);
        impl.pSettings = nullptr;
    }
    for (auto& entry : impl.segments)
    {
        if (entry.second.pChunk != nullptr)
        {
            Mix_FreeChunk(entry.second.pChunk);
        }
    }
    impl.segments.clear();
    Mix_CloseAudio();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    if (impl.pLock != nullptr)
    {
        SDL_DestroyMutex(impl.pLock);
        impl.pLock = nullptr;
    }
    impl.open = false;
    impl.silent = false;
    impl.synthTried = false;
    s_mixerTaken = false;
}

bool AudioDevice::IsOpen() const
{
    return m_pImpl->open;
}

bool AudioDevice::IsSilent() const
{
    return m_pImpl->open && m_pImpl->silent;
}

int32_t AudioDevice::Load(const std::string& p_resolvedPath)
{
    if (!m_pImpl->open)
    {
        return 0;
    }
    std::vector<uint8_t> bytes;
    if (!ReadWholeFile(p_resolvedPath, bytes))
    {
        return 0;
    }
    return LoadFromMemory(bytes.data(), bytes.size());
}

int32_t AudioDevice::LoadFromMemory(const uint8_t* p_data, size_t p_size)
{
    Impl& impl = *m_pImpl;
    if (!impl.open || p_data == nullptr || p_size > MAX_SOUND_BYTES)
    {
        return 0;
    }
    Impl::Segment segment;
    if (IsWave(p_data, p_size))
    {
        SDL_RWops* stream = SDL_RWFromConstMem(p_data, int(p_size));
        if (stream == nullptr)
        {
            return 0;
        }
        segment.pChunk = Mix_LoadWAV_RW(stream, 1);
        if (segment.pChunk == nullptr)
        {
            return 0;
        }
        if (segment.pChunk->alen < sizeof(int16_t) * AUDIO_CHANNELS)
        {
            Mix_FreeChunk(segment.pChunk); // not one sample frame: the mixer would refuse to play it
            return 0;
        }
    }
    else if (IsPlayableMidi(p_data, p_size))
    {
        impl.EnsureSynth();
        segment.midi.assign(p_data, p_data + p_size);
    }
    else
    {
        return 0;
    }
    return impl.AddSegment(std::move(segment));
}

void AudioDevice::Free(int32_t p_handle)
{
    Impl& impl = *m_pImpl;
    auto it = impl.segments.find(p_handle);
    if (it == impl.segments.end())
    {
        return;
    }
    Stop(p_handle);
    if (it->second.pChunk != nullptr)
    {
        Mix_FreeChunk(it->second.pChunk); // also halts any channel still playing it
    }
    impl.segments.erase(it);
}

bool AudioDevice::IsLoaded(int32_t p_handle) const
{
    return m_pImpl->segments.count(p_handle) != 0;
}

bool AudioDevice::IsMusic(int32_t p_handle) const
{
    auto it = m_pImpl->segments.find(p_handle);
    return it != m_pImpl->segments.end() && it->second.pChunk == nullptr;
}

bool AudioDevice::Play(int32_t p_handle)
{
    Impl& impl = *m_pImpl;
    auto it = impl.segments.find(p_handle);
    if (it == impl.segments.end())
    {
        return false;
    }
    Impl::Segment& segment = it->second;
    if (segment.pChunk != nullptr)
    {
        const int loops = segment.looping ? -1 : 0;
        int channel = Mix_PlayChannel(-1, segment.pChunk, loops);
        if (channel < 0)
        {
            // Every channel is busy: the sound that started longest ago makes room.
            const int oldest = Mix_GroupOldest(-1);
            if (oldest >= 0)
            {
                Mix_HaltChannel(oldest);
                channel = Mix_PlayChannel(oldest, segment.pChunk, loops);
            }
        }
        return channel >= 0;
    }

    SDL_LockMutex(impl.pLock);
    impl.StopMusicLocked();
    impl.musicHandle = p_handle;
    if (impl.pSynth != nullptr)
    {
        // The previous song's instruments and controllers must not colour this one.
        fluid_synth_system_reset(impl.pSynth);
        impl.pPlayer = new_fluid_player(impl.pSynth);
        if (impl.pPlayer != nullptr)
        {
            fluid_player_add_mem(impl.pPlayer, segment.midi.data(), segment.midi.size());
            fluid_player_set_loop(impl.pPlayer, segment.looping ? -1 : 1);
            fluid_player_play(impl.pPlayer);
        }
    }
    SDL_UnlockMutex(impl.pLock);
    return true;
}

bool AudioDevice::Stop(int32_t p_handle)
{
    Impl& impl = *m_pImpl;
    auto it = impl.segments.find(p_handle);
    if (it == impl.segments.end())
    {
        return false;
    }
    if (it->second.pChunk != nullptr)
    {
        for (int channel = 0; channel < EFFECT_CHANNELS; ++channel)
        {
            if (Mix_GetChunk(channel) == it->second.pChunk && Mix_Playing(channel))
            {
                Mix_HaltChannel(channel);
            }
        }
        return true;
    }
    SDL_LockMutex(impl.pLock);
    if (impl.musicHandle == p_handle)
    {
        impl.StopMusicLocked();
    }
    SDL_UnlockMutex(impl.pLock);
    return true;
}

bool AudioDevice::SetLooping(int32_t p_handle, bool p_looping)
{
    Impl& impl = *m_pImpl;
    auto it = impl.segments.find(p_handle);
    if (it == impl.segments.end())
    {
        return false;
    }
    it->second.looping = p_looping;
    if (it->second.pChunk == nullptr)
    {
        SDL_LockMutex(impl.pLock);
        if (impl.musicHandle == p_handle && impl.pPlayer != nullptr)
        {
            fluid_player_set_loop(impl.pPlayer, p_looping ? -1 : 1);
        }
        SDL_UnlockMutex(impl.pLock);
    }
    return true;
}

bool AudioDevice::IsPlaying(int32_t p_handle) const
{
    Impl& impl = *m_pImpl;
    auto it = impl.segments.find(p_handle);
    if (it == impl.segments.end())
    {
        return false;
    }
    if (it->second.pChunk != nullptr)
    {
        for (int channel = 0; channel < EFFECT_CHANNELS; ++channel)
        {
            if (Mix_GetChunk(channel) == it->second.pChunk && Mix_Playing(channel))
            {
                return true;
            }
        }
        return false;
    }
    SDL_LockMutex(impl.pLock);
    const bool playing = impl.musicHandle == p_handle;
    SDL_UnlockMutex(impl.pLock);
    return playing;
}

bool AudioDevice::AccentMusic(int32_t p_handle)
{
    Impl& impl = *m_pImpl;
    if (!impl.open || p_handle == 0)
    {
        return false;
    }
    SDL_LockMutex(impl.pLock);
    const bool current = impl.musicHandle == p_handle && impl.pPlayer != nullptr;
    if (current)
    {
        // A reset of the synthesizer (a new song) turns every channel melodic again.
        fluid_synth_set_channel_type(impl.pSynth, ACCENT_DRUM_CHANNEL, CHANNEL_TYPE_DRUM);
        fluid_synth_program_change(impl.pSynth, ACCENT_DRUM_CHANNEL, 0);
        fluid_synth_noteon(impl.pSynth, ACCENT_DRUM_CHANNEL, CRASH_CYMBAL_KEY, ACCENT_VELOCITY);
        impl.liftFrames = 0;
        fluid_player_set_tempo(impl.pPlayer, FLUID_PLAYER_TEMPO_INTERNAL, LIFT_FACTOR);
    }
    SDL_UnlockMutex(impl.pLock);
    return current;
}

int32_t AudioDevice::GetMusicTick() const
{
    Impl& impl = *m_pImpl;
    if (!impl.open)
    {
        return -1;
    }
    SDL_LockMutex(impl.pLock);
    const int32_t tick = impl.pPlayer != nullptr ? fluid_player_get_current_tick(impl.pPlayer) : -1;
    SDL_UnlockMutex(impl.pLock);
    return tick;
}

void AudioDevice::SetGain(float p_gain)
{
    m_pImpl->gain.store(std::clamp(p_gain, 0.0f, 1.0f));
}

float AudioDevice::GetGain() const
{
    return m_pImpl->gain.load();
}

} // namespace platform
