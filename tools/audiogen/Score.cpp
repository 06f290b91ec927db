#include "Score.h"

#include <yaml-cpp/yaml.h>

#include <cctype>
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace audiogen
{

namespace
{

constexpr uint16_t TICKS_PER_QUARTER = 480;
constexpr int DEFAULT_DRUM_STEPS = 16;
constexpr int DRUM_CHANNEL = 9;

// A mistake in the score, with the line it is on.
struct ScoreError
{
    int line;
    std::string message;
};

struct TrackSetup
{
    MidiTrack track;
    int velocity = 90;
    double legato = 0.92;
    bool drums = false;
};

std::string Quote(const std::string& p_text)
{
    return "\"" + p_text + "\"";
}

int LineOf(const YAML::Node& p_node)
{
    return p_node.Mark().line + 1;
}

// A missing key gives a node that throws when asked its type; these ask safely.
bool IsMap(const YAML::Node& p_node)
{
    return p_node && p_node.IsMap();
}

bool IsSequence(const YAML::Node& p_node)
{
    return p_node && p_node.IsSequence();
}

// A small deterministic wobble of loudness, so repeated notes do not sound machine-stamped.
int Humanise(uint32_t p_tick, int p_key)
{
    uint32_t h = p_tick * 2654435761u ^ uint32_t(p_key) * 40503u;
    h ^= h >> 13;
    h *= 0x5bd1e995u;
    h ^= h >> 15;
    return int(h % 11u) - 5;
}

// "c4", "f#3", "bb2", "c-1": the MIDI key, or -1.
int ParsePitch(const std::string& p_text)
{
    static const int OFFSETS[] = {9, 11, 0, 2, 4, 5, 7}; // a b c d e f g
    if (p_text.empty())
        return -1;
    const char letter = char(std::tolower(static_cast<unsigned char>(p_text[0])));
    if (letter < 'a' || letter > 'g')
        return -1;
    int key = OFFSETS[letter - 'a'];
    size_t at = 1;
    if (at < p_text.size() && (p_text[at] == '#' || p_text[at] == 'b'))
    {
        key += p_text[at] == '#' ? 1 : -1;
        ++at;
    }
    const std::string octave = p_text.substr(at);
    if (octave.empty() || octave.size() > 2)
        return -1;
    size_t digits = 0;
    for (size_t i = 0; i < octave.size(); ++i)
        if (std::isdigit(static_cast<unsigned char>(octave[i])) || (i == 0 && octave[i] == '-'))
            ++digits;
    if (digits != octave.size() || octave == "-")
        return -1;
    const int value = (std::stoi(octave) + 1) * 12 + key;
    return value >= 0 && value <= 127 ? value : -1;
}

// "/8", "/4.", "/8t": the length in ticks, or 0.
uint32_t ParseLength(const std::string& p_text)
{
    size_t at = 0;
    std::string digits;
    while (at < p_text.size() && std::isdigit(static_cast<unsigned char>(p_text[at])))
        digits += p_text[at++];
    if (digits.empty() || digits.size() > 2)
        return 0;
    const int division = std::stoi(digits);
    if (division != 1 && division != 2 && division != 4 && division != 8 && division != 16 && division != 32)
        return 0;
    uint32_t ticks = TICKS_PER_QUARTER * 4u / uint32_t(division);
    const std::string rest = p_text.substr(at);
    if (rest == ".")
        ticks = ticks * 3u / 2u;
    else if (rest == "t")
        ticks = ticks * 2u / 3u;
    else if (!rest.empty())
        return 0;
    return ticks;
}

// A length as a fraction of a whole note for messages: "7/8", in the meter's unit when it can.
std::string Beats(uint32_t p_ticks, int p_meterBottom)
{
    for (uint32_t denominator = uint32_t(p_meterBottom); denominator <= 64; denominator *= 2)
    {
        const uint32_t unit = TICKS_PER_QUARTER * 4u / denominator;
        if (p_ticks % unit == 0)
            return std::to_string(p_ticks / unit) + "/" + std::to_string(denominator);
    }
    return std::to_string(p_ticks) + " ticks";
}

// "... *3" at the end of a part stands for the part three times over. False for a count that
// makes no sense.
bool ExpandRepeat(const std::string& p_text, std::string& p_out)
{
    p_out = p_text;
    const size_t last = p_text.find_last_not_of(" \t\n");
    if (last == std::string::npos)
        return true;
    const size_t star = p_text.rfind('*');
    if (star == std::string::npos || p_text.find_first_not_of("0123456789", star + 1) <= last)
        return true;
    const std::string count = p_text.substr(star + 1, last - star);
    if (count.empty() || count.size() > 3)
        return false;
    const int times = std::stoi(count);
    if (times < 1 || times > 256)
        return false;
    // Each copy starts a new bar.
    std::string body = p_text.substr(0, star);
    while (!body.empty() && (body.back() == ' ' || body.back() == '|' || body.back() == '\n' || body.back() == '\t'))
        body.pop_back();
    p_out.clear();
    for (int i = 0; i < times; ++i)
        p_out += (i == 0 ? "" : " | ") + body;
    return true;
}

// The notes of one melodic part of a section, placed from p_start.
bool ParseNotes(const std::string& p_text, const TrackSetup& p_setup, uint32_t p_start, uint32_t p_barTicks,
                int p_bars, int p_meterBottom, std::vector<MidiNote>& p_notes, std::string& p_error)
{
    std::string text;
    if (!ExpandRepeat(p_text, text))
    {
        p_error = "cannot read the repeat count at the end";
        return false;
    }
    std::istringstream words(text);
    std::string word;
    uint32_t length = TICKS_PER_QUARTER;
    uint32_t at = 0;
    uint32_t barStart = 0;
    int bar = 1;
    const auto checkBar = [&]() {
        if (at - barStart != p_barTicks)
        {
            p_error = "bar " + std::to_string(bar) + " holds " + Beats(at - barStart, p_meterBottom) + " of a bar, not " +
                      Beats(p_barTicks, p_meterBottom);
            return false;
        }
        barStart = at;
        ++bar;
        return true;
    };
    while (words >> word)
    {
        if (word == "|")
        {
            if (!checkBar())
                return false;
            continue;
        }
        std::string body = word;
        bool shortNote = false;
        bool accent = false;
        while (!body.empty() && (body.back() == '\'' || body.back() == '>'))
        {
            (body.back() == '\'' ? shortNote : accent) = true;
            body.pop_back();
        }
        const size_t slash = body.find('/');
        if (slash != std::string::npos)
        {
            length = ParseLength(body.substr(slash + 1));
            if (length == 0)
            {
                p_error = "cannot read the length of " + Quote(word) + " (use /1, /2, /4, /8, /16 or /32, then . or t)";
                return false;
            }
            body = body.substr(0, slash);
        }
        if (body != "r")
        {
            std::vector<int> keys;
            std::istringstream chord(body);
            std::string pitch;
            while (std::getline(chord, pitch, '+'))
            {
                const int key = ParsePitch(pitch);
                if (key < 0)
                {
                    p_error = "cannot read the note " + Quote(word);
                    return false;
                }
                keys.push_back(key);
            }
            if (keys.empty())
            {
                p_error = "cannot read the note " + Quote(word);
                return false;
            }
            const double hold = shortNote ? 0.45 : p_setup.legato;
            const uint32_t sounding = std::max<uint32_t>(1, uint32_t(std::lround(length * hold)));
            for (const int key : keys)
            {
                const int velocity = p_setup.velocity + (accent ? 18 : 0) + Humanise(p_start + at, key);
                p_notes.push_back({p_start + at, sounding, uint8_t(key), uint8_t(std::clamp(velocity, 1, 127))});
            }
        }
        at += length;
        if (at > p_barTicks * uint32_t(p_bars) + p_barTicks * 4u)
            break; // far past the end: reported below
    }
    if (at != barStart && !checkBar())
        return false;
    if (at != p_barTicks * uint32_t(p_bars))
    {
        p_error = "the part is " + Beats(at, p_meterBottom) + " long, not " + std::to_string(p_bars) + " bars of " +
                  Beats(p_barTicks, p_meterBottom);
        return false;
    }
    return true;
}

// The hits of one drum of a drum part.
bool ParseGrid(const std::string& p_grid, int p_key, const TrackSetup& p_setup, uint32_t p_start, uint32_t p_barTicks,
               int p_bars, int p_steps, std::vector<MidiNote>& p_notes, std::string& p_error)
{
    const uint32_t step = p_barTicks / uint32_t(p_steps);
    std::string grid;
    if (!ExpandRepeat(p_grid, grid))
    {
        p_error = "cannot read the repeat count at the end";
        return false;
    }
    int count = 0;
    for (const char c : grid)
    {
        if (c == ' ' || c == '|' || c == '\n' || c == '\t')
            continue;
        if (c != 'x' && c != 'X' && c != 'o' && c != '.' && c != '-')
        {
            p_error = std::string("a drum step must be x, X, o, . or -, not '") + c + "'";
            return false;
        }
        if (c == 'x' || c == 'X' || c == 'o')
        {
            const int base = c == 'X' ? p_setup.velocity + 22 : (c == 'o' ? p_setup.velocity - 30 : p_setup.velocity);
            const uint32_t tick = p_start + uint32_t(count) * step;
            p_notes.push_back(
                {tick, std::max<uint32_t>(1, step * 3 / 4), uint8_t(p_key), uint8_t(std::clamp(base + Humanise(tick, p_key), 1, 127))});
        }
        ++count;
    }
    if (count != p_steps * p_bars)
    {
        p_error = std::to_string(count) + " steps, not " + std::to_string(p_steps * p_bars) + " (" +
                  std::to_string(p_bars) + " bars of " + std::to_string(p_steps) + ")";
        return false;
    }
    return true;
}

bool Parse(const YAML::Node& p_root, Score& p_score, ScoreError& p_error)
{
    const auto fail = [&](const YAML::Node& p_node, const std::string& p_message) {
        p_error = {p_node ? LineOf(p_node) : LineOf(p_root), p_message};
        return false;
    };
    if (!IsMap(p_root))
        return fail(p_root, "a score is a map with title, file, tempo, meter, tracks, sections and song");
    MidiSong& song = p_score.song;
    song.title = p_root["title"].as<std::string>("");
    p_score.gameName = p_root["file"].as<std::string>("");
    if (p_score.gameName.empty())
        return fail(p_root["file"], "the score names no file (file: Sound\\name.mid)");
    const double tempo = p_root["tempo"].as<double>(0.0);
    if (tempo < 20.0 || tempo > 400.0)
        return fail(p_root["tempo"], "the tempo must be 20 to 400 quarter notes a minute");
    song.ticksPerQuarter = TICKS_PER_QUARTER;
    song.microsPerQuarter = uint32_t(std::lround(60000000.0 / tempo));
    const std::string meter = p_root["meter"].as<std::string>("4/4");
    const size_t slash = meter.find('/');
    int top = 0;
    int bottom = 0;
    if (slash != std::string::npos && slash > 0 && slash + 1 < meter.size() &&
        meter.find_first_not_of("0123456789/") == std::string::npos)
    {
        top = std::stoi(meter.substr(0, slash));
        bottom = std::stoi(meter.substr(slash + 1));
    }
    if (top < 1 || top > 16 || (bottom != 2 && bottom != 4 && bottom != 8))
        return fail(p_root["meter"], "cannot read the meter " + Quote(meter) + " (for example 4/4, 3/4 or 6/8)");
    song.meterTop = uint8_t(top);
    song.meterBottom = uint8_t(bottom);
    const uint32_t barTicks = TICKS_PER_QUARTER * 4u * uint32_t(top) / uint32_t(bottom);
    const int drumSteps = p_root["drum_steps"].as<int>(DEFAULT_DRUM_STEPS);
    if (drumSteps < 1 || barTicks % uint32_t(drumSteps) != 0)
        return fail(p_root["drum_steps"], "drum_steps must divide the bar evenly");

    const YAML::Node tracks = p_root["tracks"];
    if (!IsMap(tracks) || tracks.size() == 0)
        return fail(tracks, "the score has no tracks");
    std::vector<TrackSetup> setups;
    std::map<std::string, size_t> trackIndex;
    for (const auto& entry : tracks)
    {
        TrackSetup setup;
        setup.track.name = entry.first.as<std::string>();
        const YAML::Node& node = entry.second;
        const int channel = node["channel"].as<int>(0);
        if (channel < 1 || channel > 16)
            return fail(node, "track " + Quote(setup.track.name) + ": the channel must be 1 to 16");
        setup.track.channel = uint8_t(channel - 1);
        setup.drums = setup.track.channel == DRUM_CHANNEL;
        const int program = node["program"].as<int>(setup.drums ? 0 : -1);
        if (!setup.drums && (program < 1 || program > 128))
            return fail(node, "track " + Quote(setup.track.name) + ": the program must be a General MIDI number, 1 to 128");
        setup.track.program = setup.drums ? -1 : program - 1;
        const auto byte = [&](const char* p_key, int p_default) {
            return uint8_t(std::clamp(node[p_key].as<int>(p_default), 0, 127));
        };
        setup.track.volume = byte("volume", 100);
        setup.track.pan = byte("pan", 64);
        setup.track.reverb = byte("reverb", 40);
        setup.track.chorus = byte("chorus", 0);
        setup.velocity = std::clamp(node["velocity"].as<int>(90), 1, 127);
        setup.legato = std::clamp(node["legato"].as<double>(0.92), 0.1, 1.0);
        trackIndex[setup.track.name] = setups.size();
        setups.push_back(setup);
    }

    const YAML::Node sections = p_root["sections"];
    if (!IsMap(sections))
        return fail(sections, "the score has no sections");
    const YAML::Node order = p_root["song"];
    if (!IsSequence(order) || order.size() == 0)
        return fail(order, "the song lists no sections");
    uint32_t at = 0;
    for (const YAML::Node& item : order)
    {
        const std::string name = item.as<std::string>("");
        const YAML::Node section = sections[name];
        if (!IsMap(section))
            return fail(item, "no section " + Quote(name));
        const int bars = section["bars"].as<int>(0);
        if (bars < 1 || bars > 256)
            return fail(section, "section " + Quote(name) + ": bars must be 1 to 256");
        // A section "like" another takes the other's parts unless it gives its own.
        std::vector<std::pair<YAML::Node, YAML::Node>> parts;
        for (const auto& part : section)
            parts.emplace_back(part.first, part.second);
        if (section["like"])
        {
            const std::string model = section["like"].as<std::string>("");
            const YAML::Node other = sections[model];
            if (!IsMap(other) || other["like"])
                return fail(section["like"], "section " + Quote(name) + " is like " + Quote(model) +
                                                 ", which is not a section of its own");
            if (other["bars"].as<int>(0) != bars)
                return fail(section["like"], "section " + Quote(name) + " has another number of bars than " + Quote(model));
            for (const auto& part : other)
                if (!section[part.first.as<std::string>()])
                    parts.emplace_back(part.first, part.second);
        }
        for (const auto& part : parts)
        {
            const std::string trackName = part.first.as<std::string>();
            if (trackName == "bars" || trackName == "like")
                continue;
            const auto found = trackIndex.find(trackName);
            if (found == trackIndex.end())
                return fail(part.first, "section " + Quote(name) + ": no track " + Quote(trackName));
            TrackSetup& setup = setups[found->second];
            std::string problem;
            if (setup.drums)
            {
                if (!IsMap(part.second))
                    return fail(part.second, "section " + Quote(name) + ", track " + Quote(trackName) +
                                                 ": drums are a map of drum names to step grids");
                for (const auto& drum : part.second)
                {
                    const std::string drumName = drum.first.as<std::string>();
                    const int key = DrumKey(drumName);
                    if (key < 0)
                        return fail(drum.first, "section " + Quote(name) + ": no drum called " + Quote(drumName));
                    if (!ParseGrid(drum.second.as<std::string>(""), key, setup, at, barTicks, bars, drumSteps,
                                   setup.track.notes, problem))
                        return fail(drum.second, "section " + Quote(name) + ", " + drumName + ": " + problem);
                }
            }
            else if (!ParseNotes(part.second.as<std::string>(""), setup, at, barTicks, bars, bottom, setup.track.notes,
                                 problem))
                return fail(part.second, "section " + Quote(name) + ", track " + Quote(trackName) + ": " + problem);
        }
        at += barTicks * uint32_t(bars);
    }
    song.lengthTicks = at;
    for (TrackSetup& setup : setups)
        song.tracks.push_back(std::move(setup.track));
    return true;
}

} // namespace

int DrumKey(const std::string& p_name)
{
    static const std::map<std::string, int> KEYS = {
        {"kick", 36},  {"side", 37},  {"snare", 38},  {"clap", 39},    {"snare2", 40}, {"floor", 41},
        {"hat", 42},   {"tom3", 45},  {"pedal", 44},  {"open", 46},    {"tom2", 47},   {"tom1", 50},
        {"crash", 49}, {"ride", 51},  {"china", 52},  {"bell", 53},    {"tamb", 54},   {"splash", 55},
        {"cowbell", 56}, {"crash2", 57}, {"shaker", 70}};
    const auto found = KEYS.find(p_name);
    return found == KEYS.end() ? -1 : found->second;
}

bool ParseScore(const std::string& p_text, const std::string& p_displayName, Score& p_score, std::string& p_error)
{
    p_score = Score();
    ScoreError error{0, ""};
    try
    {
        if (Parse(YAML::Load(p_text), p_score, error))
            return true;
    }
    catch (const YAML::Exception& e)
    {
        error = {e.mark.line + 1, e.msg};
    }
    p_error = p_displayName + ":" + std::to_string(error.line) + ": " + error.message;
    return false;
}

bool ReadScore(const std::string& p_path, Score& p_score, std::string& p_error)
{
    std::ifstream file(p_path, std::ios::binary);
    if (!file)
    {
        p_error = p_path + ": cannot be read";
        return false;
    }
    std::ostringstream text;
    text << file.rdbuf();
    return ParseScore(text.str(), p_path, p_score, p_error);
}

} // namespace audiogen
