#include "sound/Sound.h"

#include "platform/Paths.h"
#include "platform/System.h"

#include <algorithm>
#include <cmath>

Sound* g_pSound = nullptr;

namespace
{
const char* const SOUND_FILES[Sound::NUM_SOUND_IDS] = {
    "Sound\\shoot.wav",     "Sound\\explosion.wav",      "Sound\\victory.wav",
    "Sound\\laser_shot.wav", "Sound\\Loops_Of_Fury.mid", "Sound\\title_screen.mid",
};
} // namespace

Sound::Sound() : m_volume(VOLUME_FULL) {}

Sound::~Sound()
{
    Shutdown();
}

bool Sound::Init()
{
    if (m_device.Open())
    {
        return true;
    }
    platform::ShowMessageBox("Error Initializing Sound", "Korvath");
    return false;
}

const char* Sound::GetFileName(int32_t p_id)
{
    if (p_id < 0 || p_id >= NUM_SOUND_IDS)
    {
        return nullptr;
    }
    return SOUND_FILES[p_id];
}

const Sound::SoundNode* Sound::Find(int32_t p_id) const
{
    for (const SoundNode& node : m_sounds)
    {
        if (node.m_id == p_id)
        {
            return &node;
        }
    }
    return nullptr;
}

bool Sound::IsLoaded(int32_t p_id) const
{
    return Find(p_id) != nullptr;
}

bool Sound::IsPlaying(int32_t p_id) const
{
    const SoundNode* node = Find(p_id);
    return node != nullptr && m_device.IsPlaying(node->m_segment);
}

bool Sound::Load(int32_t p_id)
{
    const char* fileName = GetFileName(p_id);
    if (fileName == nullptr || Find(p_id) != nullptr)
    {
        return false;
    }
    // A missing or damaged file leaves the sound silent: no node, nothing else changes.
    const int32_t segment = m_device.Load(platform::ResolvePath(fileName));
    if (segment == 0)
    {
        return false;
    }
    m_sounds.push_back(SoundNode{segment, p_id});
    return true;
}

// All six sounds count as effects, so a play never sets looping by itself: whoever wants a
// sound to repeat (the mission, for its music) calls SetLooping. The first play of a sound,
// the one that loads it, behaves like every later one.
bool Sound::Play(int32_t p_id)
{
    if (Find(p_id) == nullptr && !Load(p_id))
    {
        return false;
    }
    return m_device.Play(Find(p_id)->m_segment);
}

bool Sound::Stop(int32_t p_id)
{
    const SoundNode* node = Find(p_id);
    if (node == nullptr)
    {
        return false;
    }
    m_device.Stop(node->m_segment);
    return true;
}

bool Sound::SetLooping(int32_t p_id)
{
    const SoundNode* node = Find(p_id);
    return node != nullptr && m_device.SetLooping(node->m_segment, true);
}

bool Sound::Unload(int32_t p_id)
{
    for (auto it = m_sounds.begin(); it != m_sounds.end(); ++it)
    {
        if (it->m_id == p_id)
        {
            m_device.Free(it->m_segment); // stops it first
            m_sounds.erase(it);
            return true;
        }
    }
    return false;
}

void Sound::UnloadAll()
{
    while (!m_sounds.empty())
    {
        Unload(m_sounds.front().m_id);
    }
}

void Sound::SetVolume(int32_t p_volume)
{
    m_volume = std::clamp(p_volume, VOLUME_SILENT, VOLUME_FULL);
    float gain = 0.0f;
    if (m_volume > VOLUME_SILENT)
    {
        gain = static_cast<float>(std::pow(10.0, m_volume / 2000.0));
    }
    m_device.SetGain(gain);
}

void Sound::SetTempoParam()
{
    const SoundNode* node = Find(SOUND_MISSION_MUSIC);
    if (node != nullptr)
    {
        m_device.AccentMusic(node->m_segment);
    }
}

int32_t Sound::VolumeFromSlider(int32_t p_position)
{
    if (p_position <= 0)
    {
        return VOLUME_SILENT;
    }
    if (p_position >= SLIDER_MAX)
    {
        return VOLUME_FULL;
    }
    const double attenuation = double(SLIDER_RANGE) * (SLIDER_MAX - p_position) / (SLIDER_MAX - 1);
    return -static_cast<int32_t>(std::lround(attenuation));
}

int32_t Sound::SliderFromVolume(int32_t p_volume)
{
    if (p_volume <= VOLUME_SILENT)
    {
        return 0;
    }
    const double steps = double(-p_volume) * (SLIDER_MAX - 1) / SLIDER_RANGE;
    const int32_t position = SLIDER_MAX - static_cast<int32_t>(std::lround(steps));
    return std::clamp(position, int32_t(1), SLIDER_MAX);
}

void Sound::Shutdown()
{
    UnloadAll();
    m_device.Close();
}
