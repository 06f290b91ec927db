#include "gfx/Font.h"
#include "platform/DikCodes.h"
#include "support/ScriptedInput.h"
#include "ui/TextField.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <string>

using uitest::UiInput;

namespace
{
// A power of two, so that the repeat timers add up exactly.
constexpr float DT = 1.0f / 64.0f;

class TextFieldTest : public ::testing::Test
{
protected:
    TextFieldTest() : m_field(&m_ui.cursor, &m_ui.input.GetInput()) {}

    void SetUp() override
    {
        ASSERT_NE(nullptr, m_field.GetFont());
        ASSERT_GT(m_field.GetFont()->GetCharWidth('a'), 0.0f);
    }

    void Frame(float p_dt = DT)
    {
        m_ui.input.Poll();
        m_field.Update(p_dt);
    }

    void Type(uint8_t p_code)
    {
        m_ui.input.KeyDown(p_code);
        Frame();
        m_ui.input.KeyUp(p_code);
        Frame();
    }

    float Width(const char* p_text) const { return m_field.GetFont()->GetTextWidth(p_text); }

    UiInput m_ui;
    TextField m_field;
};
} // namespace

TEST(TextFieldKeysTest, UsLayoutUnshiftedAndShifted)
{
    const std::string digits = "1234567890-=";
    const std::string shiftedDigits = "!@#$%^&*()_+";
    for (int32_t code = DIK_1; code <= DIK_EQUALS; ++code)
    {
        EXPECT_EQ(digits[code - DIK_1], TextField::KeyToChar(code, false)) << code;
        EXPECT_EQ(shiftedDigits[code - DIK_1], TextField::KeyToChar(code, true)) << code;
    }
    const struct
    {
        uint8_t code;
        char plain;
        char shifted;
    } keys[] = {{DIK_Q, 'q', 'Q'},         {DIK_P, 'p', 'P'},         {DIK_LBRACKET, '[', '{'},
                {DIK_RBRACKET, ']', '}'},  {DIK_A, 'a', 'A'},         {DIK_L, 'l', 'L'},
                {DIK_SEMICOLON, ';', ':'}, {DIK_APOSTROPHE, '\'', '"'}, {DIK_GRAVE, '`', '~'},
                {DIK_BACKSLASH, '\\', '|'}, {DIK_Z, 'z', 'Z'},        {DIK_M, 'm', 'M'},
                {DIK_COMMA, ',', '<'},     {DIK_PERIOD, '.', '>'},    {DIK_SLASH, '/', '?'},
                {DIK_SPACE, ' ', ' '},     {DIK_BACK, 8, 8},          {DIK_DELETE, 127, 127}};
    for (const auto& key : keys)
    {
        EXPECT_EQ(key.plain, TextField::KeyToChar(key.code, false)) << int(key.code);
        EXPECT_EQ(key.shifted, TextField::KeyToChar(key.code, true)) << int(key.code);
    }
    // Keys without a character: escape, tab, enter, the modifiers, caps lock, function keys,
    // the numeric keypad, the arrows; and codes outside 2..211.
    for (int32_t code : {0, 1, int(DIK_ESCAPE), int(DIK_TAB), int(DIK_RETURN), int(DIK_LCONTROL), int(DIK_LSHIFT),
                         int(DIK_RSHIFT), int(DIK_MULTIPLY), int(DIK_LMENU), int(DIK_CAPITAL), int(DIK_F1),
                         int(DIK_NUMPAD7), int(DIK_NUMPAD0), int(DIK_DECIMAL), int(DIK_NUMPADENTER), int(DIK_UP),
                         int(DIK_LEFT), int(DIK_HOME), 210, 212, 255, -1, 256})
    {
        EXPECT_EQ(0, TextField::KeyToChar(code, false)) << code;
        EXPECT_EQ(0, TextField::KeyToChar(code, true)) << code;
    }
}

TEST_F(TextFieldTest, TheFrameAndCaretFollowTheFont)
{
    // "Tahoma" 20 is 27 pixels: a frame 8 pixels taller, a caret as tall, tinted 220.
    EXPECT_EQ(35, m_field.GetFrame().GetHeight());
    EXPECT_EQ(350, m_field.GetFrame().GetWidth());
    EXPECT_EQ(27, m_field.GetImage()->GetHeight());
    EXPECT_EQ(220, m_field.GetImage()->GetColor()[0]);

    m_field.SetFont("Tahoma", 24, 0);
    EXPECT_EQ(40, m_field.GetFrame().GetHeight());
    EXPECT_EQ(32, m_field.GetImage()->GetHeight());
    // Never lower than its two 13-pixel border pieces.
    m_field.SetFont("Arial", 12, 0);
    EXPECT_EQ(26, m_field.GetFrame().GetHeight());
    EXPECT_EQ(16, m_field.GetImage()->GetHeight());
    EXPECT_EQ(350, m_field.GetFrame().GetWidth());
}

TEST_F(TextFieldTest, ShiftAndCapsLockGiveTheShiftedCharacters)
{
    Type(DIK_A);
    Type(DIK_1);
    m_ui.input.KeyDown(DIK_LSHIFT);
    Type(DIK_B);
    Type(DIK_2);
    m_ui.input.KeyUp(DIK_LSHIFT);
    m_ui.input.KeyDown(DIK_RSHIFT);
    Type(DIK_SLASH);
    m_ui.input.KeyUp(DIK_RSHIFT);
    EXPECT_STREQ("a1B@?", m_field.GetText());

    // Caps lock: capitals and the digit row's symbols too; shift with it changes nothing.
    Type(DIK_CAPITAL);
    EXPECT_TRUE(m_field.IsCapsLock());
    Type(DIK_C);
    Type(DIK_3);
    m_ui.input.KeyDown(DIK_LSHIFT);
    Type(DIK_D);
    Type(DIK_4);
    m_ui.input.KeyUp(DIK_LSHIFT);
    Type(DIK_CAPITAL);
    EXPECT_FALSE(m_field.IsCapsLock());
    Type(DIK_E);
    EXPECT_STREQ("a1B@?C#D$e", m_field.GetText());

    // Keys without a character type nothing.
    Type(DIK_F1);
    Type(DIK_NUMPAD5);
    Type(DIK_LEFT);
    Type(DIK_DELETE);
    Type(DIK_RETURN);
    EXPECT_STREQ("a1B@?C#D$e", m_field.GetText());
    EXPECT_EQ(10, m_field.GetLength());

    // Two keys in one poll both type, in code order.
    m_ui.input.KeyDown(DIK_Z);
    m_ui.input.KeyDown(DIK_Q);
    Frame();
    EXPECT_STREQ("a1B@?C#D$eqz", m_field.GetText());
}

TEST_F(TextFieldTest, AHeldKeyRepeatsAfterAPauseThenQuickly)
{
    // 0.63 s is 40.32 frames of 1/64 s: the second character comes with the 41st frame after
    // the press, then one every 0.03 s, that is every second frame.
    m_ui.input.KeyDown(DIK_X);
    Frame();
    EXPECT_EQ(1, m_field.GetLength());
    for (int frame = 1; frame <= 40; ++frame)
    {
        Frame();
    }
    EXPECT_EQ(1, m_field.GetLength());
    Frame();
    EXPECT_EQ(2, m_field.GetLength());
    Frame();
    EXPECT_EQ(2, m_field.GetLength());
    Frame();
    EXPECT_EQ(3, m_field.GetLength());
    for (int frame = 0; frame < 10; ++frame)
    {
        Frame();
    }
    EXPECT_EQ(8, m_field.GetLength());

    // Letting go resets the timer: the next hold waits the whole pause again.
    m_ui.input.KeyUp(DIK_X);
    Frame();
    m_ui.input.KeyDown(DIK_X);
    Frame();
    EXPECT_EQ(9, m_field.GetLength());
    for (int frame = 1; frame <= 40; ++frame)
    {
        Frame();
    }
    EXPECT_EQ(9, m_field.GetLength());
    Frame();
    EXPECT_EQ(10, m_field.GetLength());
    m_ui.input.KeyUp(DIK_X);
    Frame();

    // Backspace repeats like any key and stops at the empty field.
    m_ui.input.KeyDown(DIK_BACK);
    Frame();
    EXPECT_EQ(9, m_field.GetLength());
    for (int frame = 0; frame < 60; ++frame)
    {
        Frame();
    }
    EXPECT_EQ(0, m_field.GetLength());
    EXPECT_EQ(0.0f, m_field.GetTextWidth());
    EXPECT_STREQ("", m_field.GetText());
}

TEST_F(TextFieldTest, PercentSignsAreStoredTwiceAndRemovedTogether)
{
    Type(DIK_5);
    m_ui.input.KeyDown(DIK_LSHIFT);
    Type(DIK_5);
    m_ui.input.KeyUp(DIK_LSHIFT);
    Type(DIK_0);
    EXPECT_STREQ("5%%0", m_field.GetText());
    EXPECT_EQ(4, m_field.GetLength());
    EXPECT_EQ(1, m_field.GetPercentCount());
    // The width counts the percent sign once, as it is shown.
    EXPECT_FLOAT_EQ(Width("5%0"), m_field.GetTextWidth());

    Type(DIK_BACK);
    EXPECT_STREQ("5%%", m_field.GetText());
    Type(DIK_BACK);
    EXPECT_STREQ("5", m_field.GetText());
    EXPECT_EQ(0, m_field.GetPercentCount());
    EXPECT_FLOAT_EQ(Width("5"), m_field.GetTextWidth());
    Type(DIK_BACK);
    Type(DIK_BACK);
    EXPECT_STREQ("", m_field.GetText());
    EXPECT_EQ(0.0f, m_field.GetTextWidth());

    // SetText doubles them too.
    m_field.SetText("100% sure");
    EXPECT_STREQ("100%% sure", m_field.GetText());
    EXPECT_EQ(1, m_field.GetPercentCount());
    EXPECT_FLOAT_EQ(Width("100% sure"), m_field.GetTextWidth());
}

TEST_F(TextFieldTest, TheTextStaysNarrowerThanTheFrame)
{
    // 350 - 14 = 336 pixels for the text.
    const float limit = 336.0f;
    const float wide = m_field.GetFont()->GetCharWidth('W');
    const float narrow = m_field.GetFont()->GetCharWidth('i');
    ASSERT_GT(wide, narrow);
    m_ui.input.KeyDown(DIK_LSHIFT);
    for (int i = 0; i < 60; ++i)
    {
        Type(DIK_W);
    }
    m_ui.input.KeyUp(DIK_LSHIFT);
    const int32_t capitals = m_field.GetLength();
    EXPECT_EQ(static_cast<int32_t>((limit - 0.001f) / wide), capitals);
    EXPECT_LT(m_field.GetTextWidth(), limit);
    EXPECT_GE(m_field.GetTextWidth() + wide, limit);

    // A narrower character may still fit after a wide one was dropped.
    int32_t added = 0;
    while (m_field.GetTextWidth() + narrow < limit)
    {
        Type(DIK_I);
        ++added;
        ASSERT_LT(added, 100);
    }
    EXPECT_EQ(capitals + added, m_field.GetLength());
    Type(DIK_I);
    EXPECT_EQ(capitals + added, m_field.GetLength());

    // SetText stops at the first character that would reach the limit.
    m_field.SetText(std::string(200, 'W').c_str());
    EXPECT_EQ(capitals, m_field.GetLength());
    m_field.SetWidth(100);
    m_field.SetText("iiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiii");
    EXPECT_LT(m_field.GetTextWidth(), 86.0f);
    EXPECT_GE(m_field.GetTextWidth() + narrow, 86.0f);
    m_field.SetText(nullptr);
    EXPECT_STREQ("", m_field.GetText());
}

TEST_F(TextFieldTest, TheCaretBlinksEveryHalfSecond)
{
    EXPECT_FALSE(m_field.IsCaretVisible());
    Frame(0.25f);
    EXPECT_FALSE(m_field.IsCaretVisible());
    Frame(0.25f);
    EXPECT_TRUE(m_field.IsCaretVisible());
    Frame(0.5f);
    EXPECT_FALSE(m_field.IsCaretVisible());
}
