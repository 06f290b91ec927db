#pragma once

#include "platform/AudioDevice.h"

#include <cstdint>
#include <list>

// The game's six sounds, named by id: four WAV effects and two MIDI songs. A sound is loaded
// from its file on first use and kept until it is unloaded; every mode change unloads them all.
//
// Volume is an attenuation in hundredths of a decibel, as DirectSound counts it: 0 plays the
// sounds as recorded, -600 at half the amplitude, VOLUME_SILENT (-100 dB) and below not at all.
// It applies to the whole output, effects and music alike, including what is playing.
//
// The options menu's volume bar (positions 0..99) maps onto it with VolumeFromSlider:
//   position 0        -> VOLUME_SILENT (silence)
//   positions 1..99   -> -40 dB .. 0 dB, evenly spaced in decibels (about 0.4 dB a step),
//                        so that each step sounds about as large as any other;
//                        position 99 is full volume, 50 is -20 dB.
class Sound
{
public:
    static constexpr int32_t SOUND_SHOOT = 0;
    static constexpr int32_t SOUND_EXPLOSION = 1;
    static constexpr int32_t SOUND_VICTORY = 2;
    static constexpr int32_t SOUND_LASER_SHOT = 3;
    static constexpr int32_t SOUND_MISSION_MUSIC = 4;
    static constexpr int32_t SOUND_TITLE_MUSIC = 5;
    static constexpr int32_t NUM_SOUND_IDS = 6;

    static constexpr int32_t VOLUME_FULL = 0;
    static constexpr int32_t VOLUME_SILENT = -10000;
    static constexpr int32_t SLIDER_MAX = 99;
    // Attenuation at slider position 1, the quietest audible setting.
    static constexpr int32_t SLIDER_RANGE = 4000;

    Sound();
    virtual ~Sound();
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;

    // Opens the sound output. When it cannot start, shows "Error Initializing Sound" and the
    // game goes on silent (sounds still load and "play"); returns false then.
    bool Init();

    // False if the id is already loaded, unknown, or its file is missing or unreadable.
    bool Load(int32_t p_id);
    // Loads the sound first if needed. Effects overlap earlier plays of themselves; a song
    // replaces the song playing. False if the sound cannot be loaded.
    bool Play(int32_t p_id);
    // False if the id is not loaded.
    bool Stop(int32_t p_id);
    // Repeats the sound endlessly: a song at once, the play under way included; an effect
    // from its next play on. False if not loaded.
    bool SetLooping(int32_t p_id);
    // Stops the sound and forgets it. False if not loaded.
    bool Unload(int32_t p_id);
    void UnloadAll();
    // p_volume in hundredths of a decibel (see above), clamped to VOLUME_SILENT..VOLUME_FULL.
    void SetVolume(int32_t p_volume);
    // The objective cue: marks a completed objective on the mission music (id 4) while it plays,
    // with a cymbal crash and a short lift of its tempo, without restarting it.
    void SetTempoParam();

    int32_t GetVolume() const { return m_volume; }
    int32_t GetNumSounds() const { return static_cast<int32_t>(m_sounds.size()); }
    bool IsLoaded(int32_t p_id) const;
    bool IsPlaying(int32_t p_id) const;

    // The file of a sound id ("Sound\shoot.wav" ...), null for an unknown id.
    static const char* GetFileName(int32_t p_id);
    // The options menu's volume bar, 0..99, to an attenuation for SetVolume, and back.
    static int32_t VolumeFromSlider(int32_t p_position);
    static int32_t SliderFromVolume(int32_t p_volume);

private:
    struct SoundNode
    {
        int32_t m_segment; // the device's handle of the loaded sound, owned
        int32_t m_id;
    };

    void Shutdown();
    const SoundNode* Find(int32_t p_id) const;

    platform::AudioDevice m_device;
    // Loaded sounds in loading order; UnloadAll takes them from the front.
    std::list<SoundNode> m_sounds;
    int32_t m_volume;
};

extern Sound* g_pSound;
