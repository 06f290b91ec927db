#pragma once

#include "input/Binding.h"

#include <cstdint>
#include <string>

// The bindings as the player chose them, in the section "Keys" of config.ini: one entry per
// action name, the value a key, mouse-button, wheel, joystick-button or axis name. Nothing is
// cached: every read goes to the file and every save writes it at once.
class ControlsConfig
{
public:
    // The settings file of the game directory; the other settings share it (Settings).
    static constexpr const char* DEFAULT_FILE_NAME = "./config.ini";

    // The file in the working directory, "./config.ini".
    ControlsConfig();
    // Another file (tests); null selects "./config.ini".
    explicit ControlsConfig(const char* p_fileName);

    // The stored binding of the action, or its default when the entry is missing or unknown.
    Binding GetBinding(int32_t p_action) const;
    // Writes the binding's name as the action's entry; false when the file cannot be written.
    bool SaveBinding(int32_t p_action, const Binding& p_binding) const;

    // "W", "LEFT_MOUSE", "MWHEEL_UP", "JOY3", "AXIS2"; "" for a key without a name and
    // "ERROR_INVALID_DEVICE" for a binding to no device.
    static std::string GetKeyName(const Binding& p_binding);
    // The binding a name denotes, in any letter case; device DEVICE_NONE when it denotes none.
    static Binding ParseKeyName(const char* p_text);
    // The action's default key name; "ERROR_BAD_ACTION" outside 0..11.
    static const char* GetDefaultKeyName(int32_t p_action);

    const std::string& GetFileName() const { return m_fileName; }

private:
    std::string m_fileName;
};

extern ControlsConfig g_controlsConfig;
