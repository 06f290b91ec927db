#include "input/ControlsConfig.h"

#include "input/Action.h"
#include "input/KeyNameTable.h"
#include "platform/Profile.h"

#include <cstdio>
#include <cstring>
#include <limits>

ControlsConfig g_controlsConfig;

namespace
{
const char* const SECTION = "Keys";
// Values longer than this are cut.
constexpr uint32_t VALUE_SIZE = 32;

const char* const DEFAULT_KEYS[ACTION_COUNT] = {
    "W", "A", "D", "S", "NUMPAD4", "NUMPAD6", "NUMPAD8", "NUMPAD5", "NUMPAD7", "NUMPAD9", "SPACE", "ESCAPE",
};

// As sscanf(text, "JOY%d", &n) on a name that starts with p_prefix: blanks, a sign and at
// least one digit follow; anything after the number is ignored. A number beyond 32 bits scans
// as nothing.
bool ScanNumbered(const std::string& p_text, const char* p_prefix, int32_t& p_number)
{
    const size_t prefixLength = std::strlen(p_prefix);
    if (p_text.compare(0, prefixLength, p_prefix) != 0)
    {
        return false;
    }
    size_t i = prefixLength;
    while (i < p_text.size() && (p_text[i] == ' ' || p_text[i] == '\t'))
    {
        ++i;
    }
    bool negative = false;
    if (i < p_text.size() && (p_text[i] == '+' || p_text[i] == '-'))
    {
        negative = p_text[i] == '-';
        ++i;
    }
    int64_t value = 0;
    size_t digits = 0;
    for (; i < p_text.size() && p_text[i] >= '0' && p_text[i] <= '9'; ++i, ++digits)
    {
        value = value * 10 + (p_text[i] - '0');
        if (value > std::numeric_limits<int32_t>::max())
        {
            return false;
        }
    }
    if (digits == 0)
    {
        return false;
    }
    p_number = static_cast<int32_t>(negative ? -value : value);
    return true;
}

std::string Numbered(const char* p_prefix, int32_t p_code)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%s%lld", p_prefix, static_cast<long long>(p_code) + 1);
    return text;
}
} // namespace

ControlsConfig::ControlsConfig() : m_fileName(DEFAULT_FILE_NAME) {}

ControlsConfig::ControlsConfig(const char* p_fileName)
    : m_fileName(p_fileName != nullptr ? p_fileName : DEFAULT_FILE_NAME)
{
}

Binding ControlsConfig::GetBinding(int32_t p_action) const
{
    if (p_action < 0 || p_action >= ACTION_COUNT)
    {
        return Binding{0, DEVICE_NONE};
    }
    char value[VALUE_SIZE];
    platform::GetPrivateProfileString(SECTION, g_keyNames.GetActionName(p_action), DEFAULT_KEYS[p_action], value,
                                      VALUE_SIZE, m_fileName.c_str());
    const Binding binding = ParseKeyName(value);
    if (binding.device == DEVICE_NONE)
    {
        return ParseKeyName(DEFAULT_KEYS[p_action]);
    }
    return binding;
}

bool ControlsConfig::SaveBinding(int32_t p_action, const Binding& p_binding) const
{
    if (p_action < 0 || p_action >= ACTION_COUNT)
    {
        return false;
    }
    const std::string name = GetKeyName(p_binding);
    return platform::WritePrivateProfileString(SECTION, g_keyNames.GetActionName(p_action), name.c_str(),
                                               m_fileName.c_str());
}

std::string ControlsConfig::GetKeyName(const Binding& p_binding)
{
    switch (p_binding.device)
    {
    case DEVICE_KEYBOARD:
        return g_keyNames.GetKeyName(p_binding.code);
    case DEVICE_MOUSE:
        if (p_binding.code == MOUSE_WHEEL_UP)
        {
            return g_keyNames.GetWheelUpName();
        }
        if (p_binding.code == MOUSE_WHEEL_DOWN)
        {
            return g_keyNames.GetWheelDownName();
        }
        return g_keyNames.GetMouseButtonName(p_binding.code);
    case DEVICE_JOYSTICK_BUTTON:
        return Numbered("JOY", p_binding.code);
    case DEVICE_JOYSTICK_AXIS:
        return Numbered("AXIS", p_binding.code);
    default:
        return "ERROR_INVALID_DEVICE";
    }
}

Binding ControlsConfig::ParseKeyName(const char* p_text)
{
    std::string text = p_text != nullptr ? p_text : "";
    for (char& c : text)
    {
        if (c >= 'a' && c <= 'z')
        {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    int32_t number = 0;
    if (ScanNumbered(text, "JOY", number))
    {
        return Binding{number - 1, DEVICE_JOYSTICK_BUTTON};
    }
    if (ScanNumbered(text, "AXIS", number))
    {
        return Binding{number - 1, DEVICE_JOYSTICK_AXIS};
    }
    for (int32_t i = 0; i < g_keyNames.GetNumMouseButtons(); ++i)
    {
        if (text == g_keyNames.GetMouseButtonName(i))
        {
            return Binding{i, DEVICE_MOUSE};
        }
    }
    if (text == g_keyNames.GetWheelUpName())
    {
        return Binding{MOUSE_WHEEL_UP, DEVICE_MOUSE};
    }
    if (text == g_keyNames.GetWheelDownName())
    {
        return Binding{MOUSE_WHEEL_DOWN, DEVICE_MOUSE};
    }
    for (int32_t code = 0; code < g_keyNames.GetNumKeys(); ++code)
    {
        if (text == g_keyNames.GetKeyName(code))
        {
            return Binding{code, DEVICE_KEYBOARD};
        }
    }
    return Binding{0, DEVICE_NONE};
}

const char* ControlsConfig::GetDefaultKeyName(int32_t p_action)
{
    return p_action >= 0 && p_action < ACTION_COUNT ? DEFAULT_KEYS[p_action] : "ERROR_BAD_ACTION";
}
