#include "app/Settings.h"

#include "input/ControlsConfig.h"
#include "platform/Profile.h"

#include <cstdio>
#include <set>
#include <string_view>

Settings g_settings;

namespace
{
const char* const KEY_VOLUME = "Volume";
const char* const KEY_RESOLUTION = "Resolution";
const char* const KEY_FULL_SCREEN = "FullScreen";
const char* const KEY_DIFFICULTY = "Difficulty";
const char* const KEY_HUD_LAYOUT = "HudLayout";
const char* const KEY_HUD_TINT = "HudTint";
// Every valid value is far shorter; a longer one is cut and then fails to parse.
constexpr uint32_t VALUE_SIZE = 64;
// No setting's number has more digits; more would only risk overflow.
constexpr size_t MAX_DIGITS = 5;

const char* const DIFFICULTY_NAMES[Settings::NUM_DIFFICULTIES] = {"Medium", "Easy", "Hard"};

bool IsBlank(char p_c)
{
    return p_c == ' ' || p_c == '\t';
}

char Lower(char p_c)
{
    return (p_c >= 'A' && p_c <= 'Z') ? static_cast<char>(p_c - 'A' + 'a') : p_c;
}

bool EqualsNoCase(std::string_view p_a, std::string_view p_b)
{
    if (p_a.size() != p_b.size())
    {
        return false;
    }
    for (size_t i = 0; i < p_a.size(); ++i)
    {
        if (Lower(p_a[i]) != Lower(p_b[i]))
        {
            return false;
        }
    }
    return true;
}

// Reads a whole number 0..p_max at p_pos (blanks around it skipped), leaving p_pos after it.
bool ReadNumber(std::string_view p_text, size_t& p_pos, int32_t p_max, int32_t& p_value)
{
    while (p_pos < p_text.size() && IsBlank(p_text[p_pos]))
    {
        ++p_pos;
    }
    int32_t value = 0;
    size_t digits = 0;
    for (; p_pos < p_text.size() && p_text[p_pos] >= '0' && p_text[p_pos] <= '9'; ++p_pos, ++digits)
    {
        if (digits == MAX_DIGITS)
        {
            return false;
        }
        value = value * 10 + (p_text[p_pos] - '0');
    }
    while (p_pos < p_text.size() && IsBlank(p_text[p_pos]))
    {
        ++p_pos;
    }
    if (digits == 0 || value > p_max)
    {
        return false;
    }
    p_value = value;
    return true;
}

// N numbers 0..p_max separated by p_separator (a letter in either case), nothing else.
template <size_t N>
bool ParseNumbers(std::string_view p_text, char p_separator, int32_t p_max, std::array<int32_t, N>& p_values)
{
    size_t pos = 0;
    for (size_t i = 0; i < N; ++i)
    {
        if (i > 0)
        {
            if (pos >= p_text.size() || Lower(p_text[pos]) != Lower(p_separator))
            {
                return false;
            }
            ++pos;
        }
        if (!ReadNumber(p_text, pos, p_max, p_values[i]))
        {
            return false;
        }
    }
    return pos == p_text.size();
}

template <size_t N>
std::string JoinNumbers(const std::array<int32_t, N>& p_values, char p_separator)
{
    std::string text;
    for (size_t i = 0; i < N; ++i)
    {
        if (i > 0)
        {
            text += p_separator;
        }
        text += std::to_string(p_values[i]);
    }
    return text;
}
} // namespace

Settings::Settings() : Settings(nullptr) {}

Settings::Settings(const char* p_fileName)
    : m_fileName(p_fileName != nullptr ? p_fileName : ControlsConfig::DEFAULT_FILE_NAME)
{
    Reset();
}

void Settings::Reset()
{
    m_volume = DEFAULT_VOLUME;
    m_width = DEFAULT_WIDTH;
    m_height = DEFAULT_HEIGHT;
    m_fullScreen = DEFAULT_FULL_SCREEN;
    m_difficulty = DEFAULT_DIFFICULTY;
    m_hudSlots = DEFAULT_HUD_SLOTS;
    m_tint = DEFAULT_TINT;
}

bool Settings::Read(const char* p_key, std::string& p_value) const
{
    char buffer[VALUE_SIZE];
    platform::GetPrivateProfileString(SECTION, p_key, "", buffer, VALUE_SIZE, m_fileName.c_str());
    p_value = buffer;
    return !p_value.empty();
}

void Settings::Load()
{
    Reset();
    std::string text;
    std::array<int32_t, 1> one = {};
    if (Read(KEY_VOLUME, text) && ParseNumbers(text, ',', VOLUME_MAX, one))
    {
        m_volume = one[0];
    }
    std::array<int32_t, 2> size = {};
    if (Read(KEY_RESOLUTION, text) && ParseNumbers(text, 'x', UINT16_MAX, size) &&
        IsOfferedResolution(static_cast<uint16_t>(size[0]), static_cast<uint16_t>(size[1])))
    {
        m_width = static_cast<uint16_t>(size[0]);
        m_height = static_cast<uint16_t>(size[1]);
    }
    if (Read(KEY_FULL_SCREEN, text) && ParseNumbers(text, ',', 1, one))
    {
        m_fullScreen = one[0] == 1;
    }
    if (Read(KEY_DIFFICULTY, text))
    {
        for (int32_t i = 0; i < NUM_DIFFICULTIES; ++i)
        {
            if (EqualsNoCase(text, DIFFICULTY_NAMES[i]))
            {
                m_difficulty = i;
            }
        }
    }
    HudSlots slots = {};
    // The layout counts only as a whole: three pieces in three different slots.
    if (Read(KEY_HUD_LAYOUT, text) && ParseNumbers(text, ',', NUM_HUD_SLOTS - 1, slots) && IsValidHudSlots(slots))
    {
        m_hudSlots = slots;
    }
    std::array<int32_t, NUM_TINT_CHANNELS> tint = {};
    if (Read(KEY_HUD_TINT, text) && ParseNumbers(text, ',', UINT8_MAX, tint))
    {
        for (int32_t i = 0; i < NUM_TINT_CHANNELS; ++i)
        {
            m_tint[static_cast<size_t>(i)] = static_cast<uint8_t>(tint[static_cast<size_t>(i)]);
        }
    }
}

bool Settings::Write(const char* p_key, const std::string& p_value) const
{
    return platform::WritePrivateProfileString(SECTION, p_key, p_value.c_str(), m_fileName.c_str());
}

int32_t Settings::GetHudSlot(int32_t p_piece) const
{
    return p_piece >= 0 && p_piece < NUM_HUD_PIECES ? m_hudSlots[static_cast<size_t>(p_piece)] : -1;
}

bool Settings::SetVolume(int32_t p_volume)
{
    if (p_volume < 0 || p_volume > VOLUME_MAX)
    {
        return false;
    }
    m_volume = p_volume;
    return Write(KEY_VOLUME, std::to_string(p_volume));
}

bool Settings::SetResolution(uint16_t p_width, uint16_t p_height)
{
    if (!IsOfferedResolution(p_width, p_height))
    {
        return false;
    }
    m_width = p_width;
    m_height = p_height;
    return Write(KEY_RESOLUTION, JoinNumbers(std::array<int32_t, 2>{p_width, p_height}, 'x'));
}

bool Settings::SetFullScreen(bool p_fullScreen)
{
    m_fullScreen = p_fullScreen;
    return Write(KEY_FULL_SCREEN, p_fullScreen ? "1" : "0");
}

bool Settings::SetDifficulty(int32_t p_difficulty)
{
    if (p_difficulty < 0 || p_difficulty >= NUM_DIFFICULTIES)
    {
        return false;
    }
    m_difficulty = p_difficulty;
    return Write(KEY_DIFFICULTY, DIFFICULTY_NAMES[p_difficulty]);
}

bool Settings::SetHudSlots(const HudSlots& p_slots)
{
    if (!IsValidHudSlots(p_slots))
    {
        return false;
    }
    m_hudSlots = p_slots;
    return Write(KEY_HUD_LAYOUT, JoinNumbers(p_slots, ','));
}

bool Settings::SetTint(const Tint& p_tint)
{
    m_tint = p_tint;
    std::array<int32_t, NUM_TINT_CHANNELS> values = {};
    for (size_t i = 0; i < values.size(); ++i)
    {
        values[i] = p_tint[i];
    }
    return Write(KEY_HUD_TINT, JoinNumbers(values, ','));
}

const char* Settings::GetDifficultyName(int32_t p_difficulty)
{
    return p_difficulty >= 0 && p_difficulty < NUM_DIFFICULTIES ? DIFFICULTY_NAMES[p_difficulty] : "";
}

bool Settings::IsValidHudSlots(const HudSlots& p_slots)
{
    std::set<int32_t> used;
    for (int32_t slot : p_slots)
    {
        if (slot < 0 || slot >= NUM_HUD_SLOTS || !used.insert(slot).second)
        {
            return false;
        }
    }
    return true;
}

bool Settings::IsOfferedResolution(uint16_t p_width, uint16_t p_height)
{
    for (const Resolution& resolution : RESOLUTIONS)
    {
        if (resolution.width == p_width && resolution.height == p_height)
        {
            return true;
        }
    }
    return false;
}
