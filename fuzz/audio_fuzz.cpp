// Feeds arbitrary bytes to the sound loaders: the MIDI check, and the device's loading from
// memory, where a WAV goes through SDL's decoder into a mixer chunk. What loads must also play,
// stop and free cleanly. Songs are loaded but not played: the synthesizer would read them on
// the mixing thread, out of step with the inputs.
#include "platform/AudioDevice.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace
{
platform::AudioDevice* s_pDevice = nullptr;
}

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    s_pDevice = new platform::AudioDevice();
    if (!s_pDevice->Open())
        std::abort(); // the dummy output always opens
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    const bool playable = platform::IsPlayableMidi(p_data, p_size);
    const int32_t handle = s_pDevice->LoadFromMemory(p_data, p_size);
    const bool midiMagic = p_size >= 4 && std::memcmp(p_data, "MThd", 4) == 0;
    if (playable && handle == 0)
        std::abort(); // a song that passes the check must load
    if (handle == 0)
        return 0;
    if (s_pDevice->IsMusic(handle) != midiMagic)
        std::abort();
    if (!s_pDevice->IsMusic(handle))
    {
        if (!s_pDevice->Play(handle) || !s_pDevice->Stop(handle))
            std::abort();
        s_pDevice->SetLooping(handle, true);
        s_pDevice->Play(handle);
    }
    s_pDevice->Free(handle);
    if (s_pDevice->IsLoaded(handle))
        std::abort();
    return 0;
}
