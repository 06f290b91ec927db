#pragma once

#include <cstdint>

// The names by which actions and inputs are written in config.ini and shown on the controls
// screen. Joystick inputs have no table: they are named "JOY%d" and "AXIS%d" (ControlsConfig).
class KeyNameTable
{
public:
    static constexpr int32_t NUM_ACTIONS = 12;
    static constexpr int32_t NUM_KEYS = 238;
    static constexpr int32_t NUM_MOUSE_BUTTONS = 4;

    constexpr KeyNameTable();

    int32_t GetNumActions() const { return m_numActions; }
    int32_t GetNumKeys() const { return m_numKeys; }
    int32_t GetNumMouseButtons() const { return m_numMouseButtons; }

    // "SHOOT_FORWARD" ... "MENU"; "" outside 0..11.
    const char* GetActionName(int32_t p_action) const;
    // The name of the key with this DIK_ code; "" for codes without a key or outside 0..237.
    const char* GetKeyName(int32_t p_code) const;
    // "LEFT_MOUSE", "RIGHT_MOUSE", "MOUSE3", "MOUSE4"; "" outside 0..3.
    const char* GetMouseButtonName(int32_t p_button) const;
    const char* GetWheelUpName() const { return m_wheelUpName; }
    const char* GetWheelDownName() const { return m_wheelDownName; }

private:
    int32_t m_numActions;
    int32_t m_numKeys;
    int32_t m_numMouseButtons;
    const char* m_actionNames[NUM_ACTIONS];
    const char* m_keyNames[NUM_KEYS];
    const char* m_mouseButtonNames[NUM_MOUSE_BUTTONS];
    const char* m_wheelUpName;
    const char* m_wheelDownName;
};

extern const KeyNameTable g_keyNames;
