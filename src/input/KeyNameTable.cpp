#include "input/KeyNameTable.h"

#include "input/Action.h"
#include "platform/DikCodes.h"

namespace
{
struct KeyName
{
    uint8_t code;
    const char* name;
};

// Each key is called by its DIK_ constant's name, except where the constant's name is not the
// one players know (BACK, RETURN, GRAVE, PRIOR, ...).
constexpr KeyName KEY_NAMES[] = {
    {DIK_ESCAPE, "ESCAPE"},
    {DIK_1, "1"},
    {DIK_2, "2"},
    {DIK_3, "3"},
    {DIK_4, "4"},
    {DIK_5, "5"},
    {DIK_6, "6"},
    {DIK_7, "7"},
    {DIK_8, "8"},
    {DIK_9, "9"},
    {DIK_0, "0"},
    {DIK_MINUS, "MINUS"},
    {DIK_EQUALS, "EQUALS"},
    {DIK_BACK, "BACKSPACE"},
    {DIK_TAB, "TAB"},
    {DIK_Q, "Q"},
    {DIK_W, "W"},
    {DIK_E, "E"},
    {DIK_R, "R"},
    {DIK_T, "T"},
    {DIK_Y, "Y"},
    {DIK_U, "U"},
    {DIK_I, "I"},
    {DIK_O, "O"},
    {DIK_P, "P"},
    {DIK_LBRACKET, "LBRACKET"},
    {DIK_RBRACKET, "RBRACKET"},
    {DIK_RETURN, "ENTER"},
    {DIK_LCONTROL, "LCTRL"},
    {DIK_A, "A"},
    {DIK_S, "S"},
    {DIK_D, "D"},
    {DIK_F, "F"},
    {DIK_G, "G"},
    {DIK_H, "H"},
    {DIK_J, "J"},
    {DIK_K, "K"},
    {DIK_L, "L"},
    {DIK_SEMICOLON, "SEMICOLON"},
    {DIK_APOSTROPHE, "APOSTROPHE"},
    {DIK_GRAVE, "TILDE"},
    {DIK_LSHIFT, "LSHIFT"},
    {DIK_BACKSLASH, "BACKSLASH"},
    {DIK_Z, "Z"},
    {DIK_X, "X"},
    {DIK_C, "C"},
    {DIK_V, "V"},
    {DIK_B, "B"},
    {DIK_N, "N"},
    {DIK_M, "M"},
    {DIK_COMMA, "COMMA"},
    {DIK_PERIOD, "PERIOD"},
    {DIK_SLASH, "SLASH"},
    {DIK_RSHIFT, "RSHIFT"},
    {DIK_MULTIPLY, "MULTIPLY"},
    {DIK_LMENU, "LALT"},
    {DIK_SPACE, "SPACE"},
    {DIK_CAPITAL, "CAPSLOCK"},
    {DIK_F1, "F1"},
    {DIK_F2, "F2"},
    {DIK_F3, "F3"},
    {DIK_F4, "F4"},
    {DIK_F5, "F5"},
    {DIK_F6, "F6"},
    {DIK_F7, "F7"},
    {DIK_F8, "F8"},
    {DIK_F9, "F9"},
    {DIK_F10, "F10"},
    {DIK_NUMLOCK, "NUMLOCK"},
    {DIK_SCROLL, "SCROLL"},
    {DIK_NUMPAD7, "NUMPAD7"},
    {DIK_NUMPAD8, "NUMPAD8"},
    {DIK_NUMPAD9, "NUMPAD9"},
    {DIK_SUBTRACT, "SUBTRACT"},
    {DIK_NUMPAD4, "NUMPAD4"},
    {DIK_NUMPAD5, "NUMPAD5"},
    {DIK_NUMPAD6, "NUMPAD6"},
    {DIK_ADD, "ADD"},
    {DIK_NUMPAD1, "NUMPAD1"},
    {DIK_NUMPAD2, "NUMPAD2"},
    {DIK_NUMPAD3, "NUMPAD3"},
    {DIK_NUMPAD0, "NUMPAD0"},
    {DIK_DECIMAL, "DECIMAL"},
    {DIK_OEM_102, "OEM_102"},
    {DIK_F11, "F11"},
    {DIK_F12, "F12"},
    {DIK_F13, "F13"},
    {DIK_F14, "F14"},
    {DIK_F15, "F15"},
    {DIK_KANA, "KANA"},
    {DIK_ABNT_C1, "ABNT_C1"},
    {DIK_CONVERT, "CONVERT"},
    {DIK_NOCONVERT, "NOCONVERT"},
    {DIK_YEN, "YEN"},
    {DIK_ABNT_C2, "ABNT_C2"},
    {DIK_NUMPADEQUALS, "NUMPADEQUALS"},
    {DIK_PREVTRACK, "PREVTRACK"},
    {DIK_AT, "AT"},
    {DIK_COLON, "COLON"},
    {DIK_UNDERLINE, "UNDERLINE"},
    {DIK_KANJI, "KANJI"},
    {DIK_STOP, "STOP"},
    {DIK_AX, "AX"},
    {DIK_UNLABELED, "UNLABELED"},
    {DIK_NEXTTRACK, "NEXTTRACK"},
    {DIK_NUMPADENTER, "NUMPADENTER"},
    {DIK_RCONTROL, "RCTRL"},
    {DIK_MUTE, "MUTE"},
    {DIK_CALCULATOR, "CALCULATOR"},
    {DIK_PLAYPAUSE, "PLAYPAUSE"},
    {DIK_MEDIASTOP, "MEDIASTOP"},
    {DIK_VOLUMEDOWN, "VOLUMEDOWN"},
    {DIK_VOLUMEUP, "VOLUMEUP"},
    {DIK_WEBHOME, "WEBHOME"},
    {DIK_NUMPADCOMMA, "NUMPADCOMMA"},
    {DIK_DIVIDE, "DIVIDE"},
    {DIK_SYSRQ, "PRINTSCREEN"},
    {DIK_RMENU, "RALT"},
    {DIK_PAUSE, "PAUSE"},
    {DIK_HOME, "HOME"},
    {DIK_UP, "UP"},
    {DIK_PRIOR, "PAGEUP"},
    {DIK_LEFT, "LEFT"},
    {DIK_RIGHT, "RIGHT"},
    {DIK_END, "END"},
    {DIK_DOWN, "DOWN"},
    {DIK_NEXT, "PAGEDOWN"},
    {DIK_INSERT, "INSERT"},
    {DIK_DELETE, "DELETE"},
    {DIK_LWIN, "LWIN"},
    {DIK_RWIN, "RWIN"},
    {DIK_APPS, "APPS"},
    {DIK_POWER, "POWER"},
    {DIK_SLEEP, "SLEEP"},
    {DIK_WAKE, "WAKE"},
    {DIK_WEBSEARCH, "WEBSEARCH"},
    {DIK_WEBFAVORITES, "WEBFAVORITES"},
    {DIK_WEBREFRESH, "WEBREFRESH"},
    {DIK_WEBSTOP, "WEBSTOP"},
    {DIK_WEBFORWARD, "WEBFORWARD"},
    {DIK_WEBBACK, "WEBBACK"},
    {DIK_MYCOMPUTER, "MYCOMPUTER"},
    {DIK_MAIL, "MAIL"},
    {DIK_MEDIASELECT, "MEDIASELECT"},
};

constexpr const char* ACTION_NAMES[ACTION_COUNT] = {
    "SHOOT_FORWARD", "SHOOT_LEFT", "SHOOT_RIGHT",  "SHOOT_BACK", "STRAFE_LEFT", "STRAFE_RIGHT",
    "ACCELERATE",    "DECELERATE", "ROTATE_LEFT", "ROTATE_RIGHT", "INTERACT",  "MENU",
};

constexpr const char* MOUSE_BUTTON_NAMES[KeyNameTable::NUM_MOUSE_BUTTONS] = {"LEFT_MOUSE", "RIGHT_MOUSE", "MOUSE3",
                                                                            "MOUSE4"};
} // namespace

constexpr KeyNameTable::KeyNameTable()
    : m_numActions(NUM_ACTIONS), m_numKeys(NUM_KEYS), m_numMouseButtons(NUM_MOUSE_BUTTONS), m_actionNames{},
      m_keyNames{}, m_mouseButtonNames{}, m_wheelUpName("MWHEEL_UP"), m_wheelDownName("MWHEEL_DOWN")
{
    for (int32_t i = 0; i < NUM_ACTIONS; ++i)
    {
        m_actionNames[i] = ACTION_NAMES[i];
    }
    for (const char*& name : m_keyNames)
    {
        name = "";
    }
    for (const KeyName& key : KEY_NAMES)
    {
        m_keyNames[key.code] = key.name;
    }
    for (int32_t i = 0; i < NUM_MOUSE_BUTTONS; ++i)
    {
        m_mouseButtonNames[i] = MOUSE_BUTTON_NAMES[i];
    }
}

// Built at compile time, so it is complete before any other global's constructor runs.
constinit const KeyNameTable g_keyNames;

const char* KeyNameTable::GetActionName(int32_t p_action) const
{
    return p_action >= 0 && p_action < m_numActions ? m_actionNames[p_action] : "";
}

const char* KeyNameTable::GetKeyName(int32_t p_code) const
{
    return p_code >= 0 && p_code < m_numKeys ? m_keyNames[p_code] : "";
}

const char* KeyNameTable::GetMouseButtonName(int32_t p_button) const
{
    return p_button >= 0 && p_button < m_numMouseButtons ? m_mouseButtonNames[p_button] : "";
}
