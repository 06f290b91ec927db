#include "input/InputScript.h"

#include "input/ControlsConfig.h"
#include "platform/DikCodes.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

InputScript g_inputScript;

namespace
{
std::string Lower(std::string p_text)
{
    for (char& c : p_text)
    {
        if (c >= 'A' && c <= 'Z')
        {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return p_text;
}

std::vector<std::string> SplitWords(const std::string& p_line)
{
    std::vector<std::string> words;
    std::string word;
    for (char c : p_line)
    {
        if (c == '#')
        {
            break;
        }
        if (c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f')
        {
            if (!word.empty())
            {
                words.push_back(word);
                word.clear();
            }
        }
        else
        {
            word += c;
        }
    }
    if (!word.empty())
    {
        words.push_back(word);
    }
    return words;
}

// A whole decimal number within [p_min, p_max], nothing else in the word.
bool ParseNumber(const std::string& p_word, int64_t p_min, int64_t p_max, int64_t& p_value)
{
    if (p_word.empty() || p_word.size() > 20)
    {
        return false;
    }
    errno = 0;
    char* end = nullptr;
    const long long value = std::strtoll(p_word.c_str(), &end, 10);
    if (errno != 0 || end != p_word.c_str() + p_word.size() || p_word[0] == '+' || p_word[0] == ' ')
    {
        return false;
    }
    if (value < p_min || value > p_max)
    {
        return false;
    }
    p_value = value;
    return true;
}

// Seconds of a frame's time step: more than 0, at most the longest frame the game allows.
bool ParseSeconds(const std::string& p_word, float& p_seconds)
{
    if (p_word.empty() || p_word.size() > 32)
    {
        return false;
    }
    errno = 0;
    char* end = nullptr;
    const float value = std::strtof(p_word.c_str(), &end);
    if (errno != 0 || end != p_word.c_str() + p_word.size() || !(value > 0.0f) || value > InputScript::MAX_FRAME_SECONDS)
    {
        return false;
    }
    p_seconds = value;
    return true;
}

bool ParseUpDown(const std::string& p_word, bool& p_down)
{
    const std::string word = Lower(p_word);
    if (word == "down" || word == "up")
    {
        p_down = word == "down";
        return true;
    }
    return false;
}
} // namespace

InputScript::InputScript()
    : m_pDevices(std::make_unique<ScriptedRawInput>()), m_hasSeed(false), m_seed(0), m_next(0), m_joystickCount(0),
      m_loaded(false), m_leftAlt(false), m_rightAlt(false)
{
}

void InputScript::Clear()
{
    m_pDevices = std::make_unique<ScriptedRawInput>();
    m_events.clear();
    m_frameTimes.clear();
    m_hasSeed = false;
    m_seed = 0;
    m_next = 0;
    m_joystickCount = 0;
    m_loaded = false;
    m_leftAlt = false;
    m_rightAlt = false;
}

bool InputScript::Load(const std::string& p_fileName, std::string& p_error)
{
    Clear();
    std::ifstream file(p_fileName, std::ios::binary);
    if (!file)
    {
        p_error = p_fileName + ": cannot be read";
        return false;
    }
    std::ostringstream text;
    text << file.rdbuf();
    if (file.bad())
    {
        p_error = p_fileName + ": cannot be read";
        return false;
    }
    std::string error;
    if (!Parse(text.str(), error))
    {
        p_error = p_fileName + " " + error;
        return false;
    }
    return true;
}

bool InputScript::ParseLine(const std::vector<std::string>& p_words, Event& p_event, std::string& p_error) const
{
    int64_t frame = 0;
    if (!ParseNumber(p_words[0], 1, INT64_MAX / 2, frame))
    {
        p_error = "the frame must be a number from 1, not \"" + p_words[0] + "\"";
        return false;
    }
    p_event.frame = frame;
    if (p_words.size() < 2)
    {
        p_error = "an event must follow the frame";
        return false;
    }
    const std::string what = Lower(p_words[1]);
    const size_t count = p_words.size();
    int64_t n1 = 0;
    int64_t n2 = 0;
    int64_t n3 = 0;

    if (what == "quit" && count == 2)
    {
        p_event.kind = Kind::Quit;
        return true;
    }
    if (what == "dt" && count == 3)
    {
        if (!ParseSeconds(p_words[2], p_event.seconds))
        {
            p_error = "a frame's time must be seconds above 0 and at most 5, not \"" + p_words[2] + "\"";
            return false;
        }
        p_event.kind = Kind::FrameTime;
        return true;
    }
    if (what == "key" && count == 4)
    {
        const Binding binding = ControlsConfig::ParseKeyName(p_words[2].c_str());
        if (binding.device != DEVICE_KEYBOARD || binding.code == 0)
        {
            p_error = "unknown key name \"" + p_words[2] + "\"";
            return false;
        }
        if (!ParseUpDown(p_words[3], p_event.down))
        {
            p_error = "expected down or up, not \"" + p_words[3] + "\"";
            return false;
        }
        p_event.kind = Kind::Key;
        p_event.a = binding.code;
        return true;
    }
    if (what == "mouse" && count >= 3)
    {
        const std::string part = Lower(p_words[2]);
        if (part == "move" && count == 5)
        {
            if (!ParseNumber(p_words[3], -1000000, 1000000, n1) || !ParseNumber(p_words[4], -1000000, 1000000, n2))
            {
                p_error = "mouse move needs two whole numbers of counts";
                return false;
            }
            p_event.kind = Kind::MouseMove;
            p_event.a = static_cast<int32_t>(n1);
            p_event.b = static_cast<int32_t>(n2);
            return true;
        }
        if (part == "button" && count == 5)
        {
            if (!ParseNumber(p_words[3], 0, platform::RAW_MOUSE_BUTTONS - 1, n1))
            {
                p_error = "the mouse button must be 0 to 3, not \"" + p_words[3] + "\"";
                return false;
            }
            if (!ParseUpDown(p_words[4], p_event.down))
            {
                p_error = "expected down or up, not \"" + p_words[4] + "\"";
                return false;
            }
            p_event.kind = Kind::MouseButton;
            p_event.a = static_cast<int32_t>(n1);
            return true;
        }
        if (part == "wheel" && count == 4)
        {
            if (!ParseNumber(p_words[3], -1000000, 1000000, n1))
            {
                p_error = "mouse wheel needs a whole number, not \"" + p_words[3] + "\"";
                return false;
            }
            p_event.kind = Kind::MouseWheel;
            p_event.a = static_cast<int32_t>(n1);
            return true;
        }
    }
    if (what == "joy" && count >= 4)
    {
        if (!ParseNumber(p_words[2], 0, MAX_JOYSTICKS - 1, n1))
        {
            p_error = "the controller must be 0 to 15, not \"" + p_words[2] + "\"";
            return false;
        }
        p_event.a = static_cast<int32_t>(n1);
        const std::string part = Lower(p_words[3]);
        if (part == "axis" && count == 6)
        {
            if (!ParseNumber(p_words[4], 0, platform::RAW_JOYSTICK_AXES - 1, n2))
            {
                p_error = "the axis must be 0 to 7, not \"" + p_words[4] + "\"";
                return false;
            }
            if (!ParseNumber(p_words[5], 0, platform::RAW_AXIS_MAX, n3))
            {
                p_error = "the axis value must be 0 to 65535, not \"" + p_words[5] + "\"";
                return false;
            }
            p_event.kind = Kind::JoyAxis;
            p_event.b = static_cast<int32_t>(n2);
            p_event.c = static_cast<int32_t>(n3);
            return true;
        }
        if (part == "button" && count == 6)
        {
            if (!ParseNumber(p_words[4], 0, platform::RAW_JOYSTICK_BUTTONS - 1, n2))
            {
                p_error = "the button must be 0 to 127, not \"" + p_words[4] + "\"";
                return false;
            }
            if (!ParseUpDown(p_words[5], p_event.down))
            {
                p_error = "expected down or up, not \"" + p_words[5] + "\"";
                return false;
            }
            p_event.kind = Kind::JoyButton;
            p_event.b = static_cast<int32_t>(n2);
            return true;
        }
    }
    p_error = "not an event: \"" + p_words[1] + (count > 2 ? " ..." : "") + "\"";
    return false;
}

bool InputScript::Parse(const std::string& p_text, std::string& p_error)
{
    Clear();
    std::vector<Event> events;
    std::map<int64_t, float> frameTimes;
    bool hasSeed = false;
    uint32_t seed = 0;
    int32_t joysticks = 0;
    size_t start = 0;
    int64_t lineNumber = 0;
    while (start < p_text.size())
    {
        size_t end = p_text.find('\n', start);
        if (end == std::string::npos)
        {
            end = p_text.size();
        }
        ++lineNumber;
        const std::vector<std::string> words = SplitWords(p_text.substr(start, end - start));
        start = end + 1;
        if (words.empty())
        {
            continue;
        }
        if (Lower(words[0]) == "seed")
        {
            int64_t value = 0;
            if (words.size() != 2 || !ParseNumber(words[1], 0, UINT32_MAX, value))
            {
                p_error = "line " + std::to_string(lineNumber) + ": seed needs one whole number from 0 to 4294967295";
                return false;
            }
            hasSeed = true;
            seed = static_cast<uint32_t>(value);
            continue;
        }
        Event event;
        std::string error;
        if (!ParseLine(words, event, error))
        {
            p_error = "line " + std::to_string(lineNumber) + ": " + error;
            return false;
        }
        if (event.kind == Kind::FrameTime)
        {
            frameTimes[event.frame] = event.seconds;
            continue;
        }
        if (event.kind == Kind::JoyAxis || event.kind == Kind::JoyButton)
        {
            joysticks = std::max(joysticks, event.a + 1);
        }
        events.push_back(event);
    }
    // Lines of one frame keep their order.
    std::stable_sort(events.begin(), events.end(),
                     [](const Event& p_a, const Event& p_b) { return p_a.frame < p_b.frame; });

    m_events = std::move(events);
    m_frameTimes = std::move(frameTimes);
    m_hasSeed = hasSeed;
    m_seed = seed;
    m_joystickCount = joysticks;
    for (int32_t j = 0; j < joysticks; ++j)
    {
        m_pDevices->AddJoystick();
    }
    m_loaded = true;
    return true;
}

InputScript::Requests InputScript::BeginFrame(int64_t p_frame)
{
    Requests requests;
    if (!m_loaded)
    {
        return requests;
    }
    for (; m_next < m_events.size() && m_events[m_next].frame <= p_frame; ++m_next)
    {
        const Event& event = m_events[m_next];
        // The game numbers controllers from the last one enumerated.
        const int32_t slot = m_joystickCount - 1 - event.a;
        switch (event.kind)
        {
        case Kind::Key:
            m_pDevices->SetKey(static_cast<uint8_t>(event.a), event.down);
            NoteKey(static_cast<uint8_t>(event.a), event.down, requests);
            break;
        case Kind::MouseMove:
            m_pDevices->MoveMouse(event.a, event.b);
            break;
        case Kind::MouseButton:
            m_pDevices->SetMouseButton(event.a, event.down);
            break;
        case Kind::MouseWheel:
            m_pDevices->TurnWheel(event.a);
            break;
        case Kind::JoyAxis:
            m_pDevices->SetJoystickAxis(slot, event.b, event.c);
            break;
        case Kind::JoyButton:
            m_pDevices->SetJoystickButton(slot, event.b, event.down);
            break;
        case Kind::Quit:
            requests.quit = true;
            break;
        case Kind::FrameTime:
            break;
        }
    }
    return requests;
}

void InputScript::NoteKey(uint8_t p_code, bool p_down, Requests& p_requests)
{
    if (p_code == DIK_LALT)
    {
        m_leftAlt = p_down;
    }
    else if (p_code == DIK_RALT)
    {
        m_rightAlt = p_down;
    }
    else if (p_down && (p_code == DIK_RETURN || p_code == DIK_NUMPADENTER) && (m_leftAlt || m_rightAlt))
    {
        p_requests.toggleFullScreen = true;
    }
}

bool InputScript::GetFrameTime(int64_t p_frame, float& p_seconds) const
{
    const auto found = m_frameTimes.find(p_frame);
    if (found == m_frameTimes.end())
    {
        return false;
    }
    p_seconds = found->second;
    return true;
}
