#pragma once

// The bytes of the game's sound files: 16-bit PCM WAV effects and Standard MIDI File songs.

#include "Synth.h"

#include <cstdint>
#include <string>
#include <vector>

namespace audiogen
{

// A RIFF/WAVE file, PCM, 16-bit, mono, SAMPLE_RATE; samples are rounded and clamped.
std::vector<uint8_t> EncodeWav(const Samples& p_samples);

// Reads back what EncodeWav writes (and any 16-bit PCM WAV): false for anything else.
bool DecodeWav(const std::vector<uint8_t>& p_bytes, std::vector<int16_t>& p_samples, int& p_channels,
               int& p_sampleRate);

struct MidiNote
{
    uint32_t start = 0;  // ticks
    uint32_t length = 0; // ticks
    uint8_t key = 60;
    uint8_t velocity = 100;
};

struct MidiTrack
{
    std::string name;
    uint8_t channel = 0; // 0..15, 9 for drums
    int program = -1;    // 0..127, or -1 for none (drums)
    uint8_t volume = 100;
    uint8_t pan = 64;
    uint8_t reverb = 40;
    uint8_t chorus = 0;
    std::vector<MidiNote> notes;
};

struct MidiSong
{
    std::string title;
    uint16_t ticksPerQuarter = 480;
    uint32_t microsPerQuarter = 500000;
    uint8_t meterTop = 4;
    uint8_t meterBottom = 4;
    uint32_t lengthTicks = 0; // every track ends here, so a looping player wraps on the bar line
    std::vector<MidiTrack> tracks;
};

// A format-1 file: a tempo track, then one track per part. Notes are cut at the song's end.
std::vector<uint8_t> EncodeMidi(const MidiSong& p_song);

// Writes p_bytes to p_path through a temporary file and a rename, making the folder first.
bool WriteFileAtomically(const std::string& p_path, const std::vector<uint8_t>& p_bytes, std::string& p_error);

} // namespace audiogen
