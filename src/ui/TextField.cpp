#include "ui/TextField.h"

#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "gfx/Image.h"
#include "input/InputSystem.h"
#include "platform/DikCodes.h"
#include "ui/UiDraw.h"

#include <cmath>

namespace
{
constexpr int32_t KEY_CODES = 256;
constexpr int32_t TEXT_MARGIN = 7;
// The text must stay narrower than the frame by both margins.
constexpr int32_t TEXT_LIMIT_MARGIN = 14;
constexpr int32_t CARET_WIDTH = 3;
constexpr double CARET_TINT = 220.0;
constexpr int32_t FRAME_EXTRA_HEIGHT = 8;
constexpr int32_t DEFAULT_WIDTH = 350;

// The US keyboard's main block by DIK code from 2 (the digit 1) to 57 (space): unshifted and
// shifted. Zero where a key types nothing.
const char UNSHIFTED[] = "\0\0" "1234567890-=\b\0qwertyuiop[]\0\0asdfghjkl;'`\0\\zxcvbnm,./\0\0\0 ";
const char SHIFTED[] = "\0\0" "!@#$%^&*()_+\b\0QWERTYUIOP{}\0\0ASDFGHJKL:\"~\0|ZXCVBNM<>?\0\0\0 ";
constexpr int32_t TABLE_SIZE = 58;
static_assert(sizeof(UNSHIFTED) == TABLE_SIZE + 1 && sizeof(SHIFTED) == TABLE_SIZE + 1, "one entry per code 0..57");
} // namespace

TextField::TextField(Cursor* p_pCursor, InputSystem* p_input)
    : InputObject(p_pCursor), m_pInput(p_input), m_pFont(nullptr), m_color{1.0, 1.0, 1.0, 1.0}, m_buffer{},
      m_length(0), m_textWidth(0.0f), m_percentCount(0), m_capsLock(false), m_repeatTime{}, m_blinkTime(0.0f),
      m_caretVisible(false)
{
    m_frame.SetScale(0.4f);
    m_pImage = std::make_unique<Image>();
    m_pImage->Load(nullptr);
    m_pImage->SetSize(CARET_WIDTH, 0);
    SetColor(1.0, 1.0, 1.0, 1.0);
    SetFont("Tahoma", 20, 0);
    SetWidth(DEFAULT_WIDTH);
}

TextField::~TextField()
{
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
}

void TextField::SetPosition(float p_x, float p_y)
{
    InputObject::SetPosition(p_x, p_y);
    m_frame.SetPosition(p_x, p_y);
}

void TextField::Move(double p_dx, double p_dy)
{
    InputObject::Move(p_dx, p_dy);
    m_frame.Move(p_dx, p_dy);
}

void TextField::SetFont(const char* p_typeFace, int32_t p_size, int32_t p_style)
{
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
    }
    m_pFont = g_fontList.GetFont(p_typeFace, p_size, p_style);
    const int32_t height = m_pFont != nullptr ? m_pFont->GetHeight() : 0;
    m_frame.SetSize(m_frame.GetWidth(), height + FRAME_EXTRA_HEIGHT);
    m_pImage->SetHeight(height);
}

void TextField::SetWidth(int32_t p_width)
{
    m_frame.SetSize(p_width, m_frame.GetHeight());
}

void TextField::SetColor(double p_red, double p_green, double p_blue, double p_alpha)
{
    m_color[0] = p_red;
    m_color[1] = p_green;
    m_color[2] = p_blue;
    m_color[3] = p_alpha;
    auto tint = [](double p_component) { return static_cast<uint8_t>(p_component * CARET_TINT); };
    m_pImage->SetColor(tint(p_red), tint(p_green), tint(p_blue), tint(p_alpha));
}

float TextField::GetTextLimit() const
{
    return static_cast<float>(m_frame.GetWidth() - TEXT_LIMIT_MARGIN);
}

char TextField::KeyToChar(int32_t p_code, bool p_shifted)
{
    if (p_code < 2 || p_code > DIK_DELETE)
    {
        return 0;
    }
    if (p_code == DIK_DELETE)
    {
        return DELETE_CHAR;
    }
    if (p_code >= TABLE_SIZE)
    {
        return 0;
    }
    return p_shifted ? SHIFTED[p_code] : UNSHIFTED[p_code];
}

void TextField::InsertChar(char p_char)
{
    if (p_char == BACKSPACE_CHAR)
    {
        Backspace();
        return;
    }
    if (p_char == DELETE_CHAR || m_pFont == nullptr)
    {
        return;
    }
    const float width = m_textWidth + m_pFont->GetCharWidth(static_cast<uint8_t>(p_char));
    // The width decides; the room check only keeps the buffer from overflowing with a font
    // whose characters are unusually narrow.
    const int32_t room = p_char == '%' ? 2 : 1;
    if (!(width < GetTextLimit()) || m_length + room > MAX_LENGTH)
    {
        return;
    }
    m_buffer[m_length++] = p_char;
    if (p_char == '%')
    {
        m_buffer[m_length++] = '%';
        ++m_percentCount;
    }
    m_buffer[m_length] = '\0';
    m_textWidth = width;
}

void TextField::Backspace()
{
    if (m_length <= 0)
    {
        return;
    }
    const char removed = m_buffer[--m_length];
    if (removed == '%' && m_length > 0 && m_buffer[m_length - 1] == '%')
    {
        --m_length;
        --m_percentCount;
    }
    m_buffer[m_length] = '\0';
    if (m_pFont != nullptr)
    {
        m_textWidth -= m_pFont->GetCharWidth(static_cast<uint8_t>(removed));
    }
    if (m_length == 0)
    {
        // No rounding left over from the subtractions.
        m_textWidth = 0.0f;
    }
}

void TextField::SetText(const char* p_text)
{
    m_length = 0;
    m_buffer[0] = '\0';
    m_textWidth = 0.0f;
    m_percentCount = 0;
    if (p_text == nullptr || m_pFont == nullptr)
    {
        return;
    }
    for (const char* c = p_text; *c != '\0' && m_length < MAX_LENGTH; ++c)
    {
        const float width = m_textWidth + m_pFont->GetCharWidth(static_cast<uint8_t>(*c));
        if (!(width < GetTextLimit()))
        {
            break;
        }
        m_buffer[m_length++] = *c;
        if (*c == '%' && m_length < MAX_LENGTH)
        {
            m_buffer[m_length++] = '%';
            ++m_percentCount;
        }
        m_textWidth = width;
    }
    m_buffer[m_length] = '\0';
}

bool TextField::Update(float p_dt)
{
    InputSystem* input = ui::InputOrApplication(m_pInput);
    const Keyboard* keyboard = input != nullptr ? input->GetKeyboard() : nullptr;
    if (keyboard != nullptr)
    {
        const bool shift = keyboard->IsKeyDown(DIK_LSHIFT) || keyboard->IsKeyDown(DIK_RSHIFT);
        if (keyboard->KeyPressed(DIK_CAPITAL))
        {
            m_capsLock = !m_capsLock;
        }
        for (int32_t code = 0; code < KEY_CODES; ++code)
        {
            bool typed = false;
            if (keyboard->KeyPressed(code))
            {
                typed = true;
            }
            else if (keyboard->IsKeyDown(code))
            {
                m_repeatTime[code] += p_dt;
                if (m_repeatTime[code] >= REPEAT_DELAY)
                {
                    typed = true;
                    m_repeatTime[code] = REPEAT_RESTART;
                }
            }
            else if (keyboard->KeyReleased(code))
            {
                m_repeatTime[code] = 0.0f;
            }
            if (typed)
            {
                const char c = KeyToChar(code, shift || m_capsLock);
                if (c != 0)
                {
                    InsertChar(c);
                }
            }
        }
    }

    m_blinkTime += p_dt;
    if (m_blinkTime >= BLINK_TIME)
    {
        m_blinkTime = 0.0f;
        m_caretVisible = !m_caretVisible;
    }
    return true;
}

bool TextField::Render()
{
    m_frame.Render();
    const int32_t x = ui::Whole(GetX());
    const int32_t y = ui::Whole(GetY());
    if (m_pFont != nullptr)
    {
        ui::PrintText(m_pFont, m_color[0], m_color[1], m_color[2], m_color[3], x + TEXT_MARGIN, y, m_buffer);
    }
    if (m_caretVisible)
    {
        const int32_t fontHeight = m_pFont != nullptr ? m_pFont->GetHeight() : 0;
        m_pImage->Draw(static_cast<int32_t>(x + TEXT_MARGIN + m_textWidth + 1.0f),
                       y + (fontHeight - m_pImage->GetHeight()), 0.0, false);
    }
    return true;
}
