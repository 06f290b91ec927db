#include "SoundFiles.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace audiogen
{

namespace
{

void Put16(std::vector<uint8_t>& p_out, uint32_t p_value)
{
    p_out.push_back(uint8_t(p_value & 0xFFu));
    p_out.push_back(uint8_t((p_value >> 8) & 0xFFu));
}

void Put32(std::vector<uint8_t>& p_out, uint32_t p_value)
{
    Put16(p_out, p_value & 0xFFFFu);
    Put16(p_out, p_value >> 16);
}

void PutBig16(std::vector<uint8_t>& p_out, uint32_t p_value)
{
    p_out.push_back(uint8_t((p_value >> 8) & 0xFFu));
    p_out.push_back(uint8_t(p_value & 0xFFu));
}

void PutBig32(std::vector<uint8_t>& p_out, uint32_t p_value)
{
    PutBig16(p_out, p_value >> 16);
    PutBig16(p_out, p_value & 0xFFFFu);
}

void PutText(std::vector<uint8_t>& p_out, const char* p_text)
{
    for (const char* c = p_text; *c != '\0'; ++c)
        p_out.push_back(uint8_t(*c));
}

uint32_t Get16(const std::vector<uint8_t>& p_bytes, size_t p_at)
{
    return uint32_t(p_bytes[p_at]) | (uint32_t(p_bytes[p_at + 1]) << 8);
}

uint32_t Get32(const std::vector<uint8_t>& p_bytes, size_t p_at)
{
    return Get16(p_bytes, p_at) | (Get16(p_bytes, p_at + 2) << 16);
}

void PutVarLen(std::vector<uint8_t>& p_out, uint32_t p_value)
{
    uint8_t bytes[5];
    int count = 0;
    bytes[count++] = uint8_t(p_value & 0x7Fu);
    while ((p_value >>= 7) != 0)
        bytes[count++] = uint8_t((p_value & 0x7Fu) | 0x80u);
    while (count > 0)
        p_out.push_back(bytes[--count]);
}

// One timed event of a track; at the same tick note-offs go before note-ons so that a note
// repeated back to back is not cut by its own predecessor's release.
struct Event
{
    uint32_t tick;
    int order; // 0 set-up, 1 note off, 2 note on
    std::vector<uint8_t> bytes;
};

std::vector<uint8_t> TrackChunk(std::vector<Event>& p_events, uint32_t p_endTick)
{
    std::stable_sort(p_events.begin(), p_events.end(), [](const Event& p_a, const Event& p_b) {
        return p_a.tick != p_b.tick ? p_a.tick < p_b.tick : p_a.order < p_b.order;
    });
    std::vector<uint8_t> data;
    uint32_t now = 0;
    for (const Event& event : p_events)
    {
        PutVarLen(data, event.tick - now);
        now = event.tick;
        data.insert(data.end(), event.bytes.begin(), event.bytes.end());
    }
    PutVarLen(data, p_endTick >= now ? p_endTick - now : 0);
    data.insert(data.end(), {0xFF, 0x2F, 0x00});
    std::vector<uint8_t> chunk;
    PutText(chunk, "MTrk");
    PutBig32(chunk, uint32_t(data.size()));
    chunk.insert(chunk.end(), data.begin(), data.end());
    return chunk;
}

Event MetaText(uint8_t p_type, const std::string& p_text)
{
    Event event{0, 0, {0xFF, p_type}};
    PutVarLen(event.bytes, uint32_t(p_text.size()));
    event.bytes.insert(event.bytes.end(), p_text.begin(), p_text.end());
    return event;
}

} // namespace

std::vector<uint8_t> EncodeWav(const Samples& p_samples)
{
    const uint32_t dataBytes = uint32_t(p_samples.size() * 2);
    std::vector<uint8_t> out;
    out.reserve(44 + dataBytes);
    PutText(out, "RIFF");
    Put32(out, 36 + dataBytes);
    PutText(out, "WAVE");
    PutText(out, "fmt ");
    Put32(out, 16);
    Put16(out, 1); // PCM
    Put16(out, 1); // mono
    Put32(out, SAMPLE_RATE);
    Put32(out, SAMPLE_RATE * 2);
    Put16(out, 2);
    Put16(out, 16);
    PutText(out, "data");
    Put32(out, dataBytes);
    for (float sample : p_samples)
    {
        const long value = std::lround(std::clamp(double(sample), -1.0, 1.0) * 32767.0);
        Put16(out, uint32_t(uint16_t(int16_t(value))));
    }
    return out;
}

bool DecodeWav(const std::vector<uint8_t>& p_bytes, std::vector<int16_t>& p_samples, int& p_channels,
               int& p_sampleRate)
{
    p_samples.clear();
    if (p_bytes.size() < 12 || std::string(p_bytes.begin(), p_bytes.begin() + 4) != "RIFF" ||
        std::string(p_bytes.begin() + 8, p_bytes.begin() + 12) != "WAVE")
        return false;
    bool haveFormat = false;
    size_t at = 12;
    while (at + 8 <= p_bytes.size())
    {
        const std::string id(p_bytes.begin() + std::ptrdiff_t(at), p_bytes.begin() + std::ptrdiff_t(at + 4));
        const uint32_t size = Get32(p_bytes, at + 4);
        at += 8;
        if (size > p_bytes.size() - at)
            return false;
        if (id == "fmt ")
        {
            if (size < 16 || Get16(p_bytes, at) != 1 || Get16(p_bytes, at + 14) != 16)
                return false;
            p_channels = int(Get16(p_bytes, at + 2));
            p_sampleRate = int(Get32(p_bytes, at + 4));
            haveFormat = p_channels > 0;
        }
        else if (id == "data")
        {
            if (!haveFormat || size % 2 != 0)
                return false;
            for (size_t i = 0; i < size; i += 2)
                p_samples.push_back(int16_t(uint16_t(Get16(p_bytes, at + i))));
            return true;
        }
        at += size + (size & 1u);
    }
    return false;
}

std::vector<uint8_t> EncodeMidi(const MidiSong& p_song)
{
    std::vector<uint8_t> out;
    PutText(out, "MThd");
    PutBig32(out, 6);
    PutBig16(out, 1);
    PutBig16(out, uint32_t(p_song.tracks.size() + 1));
    PutBig16(out, p_song.ticksPerQuarter);

    std::vector<Event> tempo;
    tempo.push_back(MetaText(0x03, p_song.title));
    const uint32_t micros = p_song.microsPerQuarter;
    tempo.push_back({0, 0, {0xFF, 0x51, 0x03, uint8_t(micros >> 16), uint8_t(micros >> 8), uint8_t(micros)}});
    uint8_t denominatorPower = 0;
    while ((1u << denominatorPower) < p_song.meterBottom && denominatorPower < 7)
        ++denominatorPower;
    tempo.push_back({0, 0, {0xFF, 0x58, 0x04, p_song.meterTop, denominatorPower, 24, 8}});
    const std::vector<uint8_t> tempoChunk = TrackChunk(tempo, p_song.lengthTicks);
    out.insert(out.end(), tempoChunk.begin(), tempoChunk.end());

    for (const MidiTrack& track : p_song.tracks)
    {
        std::vector<Event> events;
        events.push_back(MetaText(0x03, track.name));
        const uint8_t channel = track.channel & 0x0Fu;
        const auto control = [&](uint8_t p_number, uint8_t p_value) {
            events.push_back({0, 0, {uint8_t(0xB0u | channel), p_number, uint8_t(p_value & 0x7Fu)}});
        };
        if (track.program >= 0)
            events.push_back({0, 0, {uint8_t(0xC0u | channel), uint8_t(track.program & 0x7F)}});
        control(7, track.volume);
        control(10, track.pan);
        control(91, track.reverb);
        control(93, track.chorus);
        for (const MidiNote& note : track.notes)
        {
            if (note.start >= p_song.lengthTicks || note.length == 0)
                continue;
            const uint32_t end = std::min(p_song.lengthTicks, note.start + note.length);
            events.push_back({note.start, 2, {uint8_t(0x90u | channel), uint8_t(note.key & 0x7F),
                                              uint8_t(std::clamp<int>(note.velocity, 1, 127))}});
            events.push_back({end, 1, {uint8_t(0x80u | channel), uint8_t(note.key & 0x7F), 0}});
        }
        const std::vector<uint8_t> chunk = TrackChunk(events, p_song.lengthTicks);
        out.insert(out.end(), chunk.begin(), chunk.end());
    }
    return out;
}

bool WriteFileAtomically(const std::string& p_path, const std::vector<uint8_t>& p_bytes, std::string& p_error)
{
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path path(p_path);
    if (path.has_parent_path())
        fs::create_directories(path.parent_path(), error);
    if (error)
    {
        p_error = "cannot make the folder " + path.parent_path().string() + ": " + error.message();
        return false;
    }
    const std::string temporary = p_path + ".tmp";
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(p_bytes.data()), std::streamsize(p_bytes.size()));
        if (!file)
        {
            p_error = "cannot write " + temporary;
            file.close();
            fs::remove(temporary, error);
            return false;
        }
    }
    fs::rename(temporary, path, error);
    if (error)
    {
        p_error = "cannot rename " + temporary + " to " + p_path + ": " + error.message();
        fs::remove(temporary, error);
        return false;
    }
    return true;
}

} // namespace audiogen
