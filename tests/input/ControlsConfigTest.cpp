#include "input/Action.h"
#include "input/ControlsConfig.h"
#include "input/KeyNameTable.h"
#include "platform/DikCodes.h"
#include "platform/Profile.h"
#include "support/TestBitmaps.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{
// Runs each test in a fresh game directory, where "./config.ini" is the test's own.
class ControlsConfigTest : public testsupport::WorkDirTest
{
protected:
    static void WriteConfig(const std::string& p_text)
    {
        std::ofstream file("config.ini", std::ios::binary);
        file << p_text;
    }
    static std::string ReadConfig()
    {
        std::ifstream file("config.ini", std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

};

Binding Key(uint8_t p_code)
{
    return Binding{p_code, DEVICE_KEYBOARD};
}
} // namespace

TEST_F(ControlsConfigTest, WithoutConfigEveryActionHasItsDefault)
{
    const ControlsConfig config;
    EXPECT_EQ("./config.ini", config.GetFileName());
    const Binding expected[ACTION_COUNT] = {Key(DIK_W),       Key(DIK_A),       Key(DIK_D),       Key(DIK_S),
                                            Key(DIK_NUMPAD4), Key(DIK_NUMPAD6), Key(DIK_NUMPAD8), Key(DIK_NUMPAD5),
                                            Key(DIK_NUMPAD7), Key(DIK_NUMPAD9), Key(DIK_SPACE),   Key(DIK_ESCAPE)};
    const char* names[ACTION_COUNT] = {"W",       "A",       "D",       "S",     "NUMPAD4", "NUMPAD6",
                                       "NUMPAD8", "NUMPAD5", "NUMPAD7", "NUMPAD9", "SPACE", "ESCAPE"};
    for (int32_t action = 0; action < ACTION_COUNT; ++action)
    {
        EXPECT_EQ(expected[action], config.GetBinding(action)) << action;
        EXPECT_STREQ(names[action], ControlsConfig::GetDefaultKeyName(action));
    }
    EXPECT_STREQ("ERROR_BAD_ACTION", ControlsConfig::GetDefaultKeyName(ACTION_COUNT));
    EXPECT_STREQ("ERROR_BAD_ACTION", ControlsConfig::GetDefaultKeyName(-1));
    EXPECT_EQ(DEVICE_NONE, config.GetBinding(ACTION_COUNT).device);
    // Reading never creates the file.
    EXPECT_FALSE(std::filesystem::exists("config.ini"));
}

TEST_F(ControlsConfigTest, EntriesOfTheFile)
{
    WriteConfig("[Video]\r\nSHOOT_FORWARD=Q\r\n"
                "[keys]\r\n"
                "ROTATE_LEFT=axis1\r\n"
                "MENU = jOy3\r\n"
                "ACCELERATE=BANANA\r\n"
                "INTERACT=\r\n"
                "shoot_back=space\r\n"
                "STRAFE_LEFT=LEFT_MOUSE\r\n"
                "STRAFE_RIGHT=MWHEEL_DOWN\r\n"
                "DECELERATE=JOY129\r\n"
                "ROTATE_RIGHT=AXIS32\r\n"
                "SHOOT_LEFT=ThisNameIsFarLongerThanThirtyOneCharacters\r\n");
    const ControlsConfig config;
    // Another section's entry of the same name does not count.
    EXPECT_EQ(Key(DIK_W), config.GetBinding(SHOOT_FORWARD));
    EXPECT_EQ((Binding{0, DEVICE_JOYSTICK_AXIS}), config.GetBinding(ROTATE_LEFT));
    EXPECT_EQ((Binding{2, DEVICE_JOYSTICK_BUTTON}), config.GetBinding(MENU));
    EXPECT_EQ(Key(DIK_NUMPAD8), config.GetBinding(ACCELERATE));
    // An empty value binds code 0, which no key produces.
    EXPECT_EQ(Key(0), config.GetBinding(INTERACT));
    EXPECT_EQ(Key(DIK_SPACE), config.GetBinding(SHOOT_BACK));
    EXPECT_EQ((Binding{0, DEVICE_MOUSE}), config.GetBinding(STRAFE_LEFT));
    EXPECT_EQ((Binding{MOUSE_WHEEL_DOWN, DEVICE_MOUSE}), config.GetBinding(STRAFE_RIGHT));
    EXPECT_EQ((Binding{128, DEVICE_JOYSTICK_BUTTON}), config.GetBinding(DECELERATE));
    EXPECT_EQ((Binding{31, DEVICE_JOYSTICK_AXIS}), config.GetBinding(ROTATE_RIGHT));
    // Cut to 31 characters it is still no name: the default.
    EXPECT_EQ(Key(DIK_A), config.GetBinding(SHOOT_LEFT));
    EXPECT_EQ(Key(DIK_D), config.GetBinding(SHOOT_RIGHT));
}

TEST_F(ControlsConfigTest, SavingWritesOneEntryAndKeepsTheRest)
{
    WriteConfig("; the player's file\n[Video]\nWidth=800\n[Keys]\nMENU=ESCAPE\n");
    const ControlsConfig config;
    ASSERT_TRUE(config.SaveBinding(SHOOT_FORWARD, Binding{MOUSE_WHEEL_UP, DEVICE_MOUSE}));
    EXPECT_EQ((Binding{MOUSE_WHEEL_UP, DEVICE_MOUSE}), config.GetBinding(SHOOT_FORWARD));
    char value[32];
    platform::GetPrivateProfileString("Keys", "SHOOT_FORWARD", "", value, sizeof(value), "config.ini");
    EXPECT_STREQ("MWHEEL_UP", value);
    ASSERT_TRUE(config.SaveBinding(SHOOT_FORWARD, Binding{MOUSE_WHEEL_DOWN, DEVICE_MOUSE}));
    platform::GetPrivateProfileString("Keys", "SHOOT_FORWARD", "", value, sizeof(value), "config.ini");
    EXPECT_STREQ("MWHEEL_DOWN", value);

    // A key without a name is written empty and reads back as the code no key produces.
    ASSERT_TRUE(config.SaveBinding(INTERACT, Key(0x54)));
    EXPECT_EQ(Key(0), config.GetBinding(INTERACT));

    const std::string text = ReadConfig();
    EXPECT_NE(std::string::npos, text.find("; the player's file"));
    EXPECT_NE(std::string::npos, text.find("Width=800"));
    EXPECT_NE(std::string::npos, text.find("MENU=ESCAPE"));
    EXPECT_FALSE(config.SaveBinding(ACTION_COUNT, Key(DIK_W)));

    // Nothing is read or written outside the game directory.
    const ControlsConfig outside("../config.ini");
    EXPECT_FALSE(outside.SaveBinding(MENU, Key(DIK_Q)));
    EXPECT_EQ(Key(DIK_ESCAPE), outside.GetBinding(MENU));
}

TEST(KeyNameTest, NamesOfEveryKindOfInput)
{
    EXPECT_EQ("W", ControlsConfig::GetKeyName(Key(DIK_W)));
    EXPECT_EQ("", ControlsConfig::GetKeyName(Key(0)));
    EXPECT_EQ("", ControlsConfig::GetKeyName(Key(240)));
    EXPECT_EQ("", ControlsConfig::GetKeyName(Binding{-5, DEVICE_KEYBOARD}));
    EXPECT_EQ("LEFT_MOUSE", ControlsConfig::GetKeyName(Binding{0, DEVICE_MOUSE}));
    EXPECT_EQ("MWHEEL_UP", ControlsConfig::GetKeyName(Binding{255, DEVICE_MOUSE}));
    EXPECT_EQ("MWHEEL_DOWN", ControlsConfig::GetKeyName(Binding{254, DEVICE_MOUSE}));
    EXPECT_EQ("JOY129", ControlsConfig::GetKeyName(Binding{128, DEVICE_JOYSTICK_BUTTON}));
    EXPECT_EQ("AXIS2", ControlsConfig::GetKeyName(Binding{1, DEVICE_JOYSTICK_AXIS}));
    EXPECT_EQ("JOY2147483648", ControlsConfig::GetKeyName(Binding{INT32_MAX, DEVICE_JOYSTICK_BUTTON}));
    EXPECT_EQ("ERROR_INVALID_DEVICE", ControlsConfig::GetKeyName(Binding{0, DEVICE_NONE}));
    EXPECT_EQ("ERROR_INVALID_DEVICE", ControlsConfig::GetKeyName(Binding{0, 4}));

    EXPECT_EQ(Key(DIK_SPACE), ControlsConfig::ParseKeyName("Space"));
    EXPECT_EQ((Binding{0, DEVICE_NONE}), ControlsConfig::ParseKeyName("RETURN"));
    EXPECT_EQ((Binding{0, DEVICE_NONE}), ControlsConfig::ParseKeyName("BANANA"));
    // No text is the empty name, as an empty value is.
    EXPECT_EQ(Key(0), ControlsConfig::ParseKeyName(nullptr));
    // As sscanf reads "JOY%d": the number, whatever follows it.
    EXPECT_EQ((Binding{-1, DEVICE_JOYSTICK_BUTTON}), ControlsConfig::ParseKeyName("JOY0"));
    EXPECT_EQ((Binding{6, DEVICE_JOYSTICK_BUTTON}), ControlsConfig::ParseKeyName("joy7x"));
    EXPECT_EQ((Binding{-3, DEVICE_JOYSTICK_AXIS}), ControlsConfig::ParseKeyName("AXIS-2"));
    EXPECT_EQ((Binding{0, DEVICE_NONE}), ControlsConfig::ParseKeyName("JOY"));
    EXPECT_EQ((Binding{0, DEVICE_NONE}), ControlsConfig::ParseKeyName("JOY99999999999"));
    EXPECT_EQ((Binding{INT32_MAX - 1, DEVICE_JOYSTICK_BUTTON}), ControlsConfig::ParseKeyName("JOY2147483647"));
    // AX is a key; AXIS needs its number.
    EXPECT_EQ(Key(DIK_AX), ControlsConfig::ParseKeyName("ax"));
}

TEST(KeyNameTest, RoundTripOfEveryNamedBinding)
{
    std::vector<Binding> bindings;
    for (int32_t code = 0; code < 256; ++code)
    {
        bindings.push_back(Key(static_cast<uint8_t>(code)));
    }
    for (int32_t code : {0, 1, 2, 3, 254, 255})
    {
        bindings.push_back(Binding{code, DEVICE_MOUSE});
    }
    for (int32_t code = -1; code < 4 * 128; ++code)
    {
        bindings.push_back(Binding{code, DEVICE_JOYSTICK_BUTTON});
    }
    for (int32_t code = -1; code < 4 * 16; ++code)
    {
        bindings.push_back(Binding{code, DEVICE_JOYSTICK_AXIS});
    }
    int named = 0;
    for (const Binding& binding : bindings)
    {
        const std::string name = ControlsConfig::GetKeyName(binding);
        if (name.empty())
        {
            continue;
        }
        ++named;
        EXPECT_EQ(binding, ControlsConfig::ParseKeyName(name.c_str())) << name;
    }
    EXPECT_EQ(144 + 6 + 513 + 65, named);
}

TEST(KeyNameTest, TheTableHoldsTheKeyNamesAtTheirCodes)
{
    EXPECT_EQ(12, g_keyNames.GetNumActions());
    EXPECT_EQ(238, g_keyNames.GetNumKeys());
    EXPECT_EQ(4, g_keyNames.GetNumMouseButtons());
    EXPECT_STREQ("SHOOT_FORWARD", g_keyNames.GetActionName(SHOOT_FORWARD));
    EXPECT_STREQ("ROTATE_RIGHT", g_keyNames.GetActionName(ROTATE_RIGHT));
    EXPECT_STREQ("MENU", g_keyNames.GetActionName(MENU));
    EXPECT_STREQ("", g_keyNames.GetActionName(12));

    // The 144 names in code order, as players and old config.ini files know them.
    const std::string expected =
        "ESCAPE 1 2 3 4 5 6 7 8 9 0 MINUS EQUALS BACKSPACE TAB Q W E R T Y U I O P LBRACKET RBRACKET ENTER "
        "LCTRL A S D F G H J K L SEMICOLON APOSTROPHE TILDE LSHIFT BACKSLASH Z X C V B N M COMMA PERIOD SLASH "
        "RSHIFT MULTIPLY LALT SPACE CAPSLOCK F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 NUMLOCK SCROLL NUMPAD7 NUMPAD8 "
        "NUMPAD9 SUBTRACT NUMPAD4 NUMPAD5 NUMPAD6 ADD NUMPAD1 NUMPAD2 NUMPAD3 NUMPAD0 DECIMAL OEM_102 F11 F12 "
        "F13 F14 F15 KANA ABNT_C1 CONVERT NOCONVERT YEN ABNT_C2 NUMPADEQUALS PREVTRACK AT COLON UNDERLINE KANJI "
        "STOP AX UNLABELED NEXTTRACK NUMPADENTER RCTRL MUTE CALCULATOR PLAYPAUSE MEDIASTOP VOLUMEDOWN VOLUMEUP "
        "WEBHOME NUMPADCOMMA DIVIDE PRINTSCREEN RALT PAUSE HOME UP PAGEUP LEFT RIGHT END DOWN PAGEDOWN INSERT "
        "DELETE LWIN RWIN APPS POWER SLEEP WAKE WEBSEARCH WEBFAVORITES WEBREFRESH WEBSTOP WEBFORWARD WEBBACK "
        "MYCOMPUTER MAIL MEDIASELECT";
    std::string names;
    for (int32_t code = 0; code < 256; ++code)
    {
        const std::string name = g_keyNames.GetKeyName(code);
        if (!name.empty())
        {
            names += (names.empty() ? "" : " ") + name;
        }
    }
    EXPECT_EQ(expected, names);
    // A few at the codes DirectInput gives them.
    EXPECT_STREQ("NUMPAD8", g_keyNames.GetKeyName(0x48));
    EXPECT_STREQ("PREVTRACK", g_keyNames.GetKeyName(0x90));
    EXPECT_STREQ("PRINTSCREEN", g_keyNames.GetKeyName(0xB7));
    EXPECT_STREQ("", g_keyNames.GetKeyName(0x54));
}
