#include "ui/KeyCaptureBox.h"

#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "gfx/Image.h"
#include "input/ControlsConfig.h"
#include "input/InputSystem.h"
#include "ui/UiDraw.h"

namespace
{
constexpr int32_t KEY_CODES = 256;
constexpr int32_t MOUSE_BUTTONS = 4;
} // namespace

KeyCaptureBox::KeyCaptureBox(Cursor* p_pCursor, InputSystem* p_input)
    : InputObject(p_pCursor), m_pInput(p_input), m_capturing(false), m_hasKey(false), m_justCaptured(false),
      m_lastButtonDown(false), m_pFont(nullptr)
{
    m_pImage = std::make_unique<Image>();
    m_pImage->Load(nullptr);
    m_pFont = g_fontList.GetFont("Tahoma", 14, 0);
}

KeyCaptureBox::~KeyCaptureBox()
{
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
}

bool KeyCaptureBox::GetBinding(Binding& p_binding) const
{
    if (!m_hasKey)
    {
        return false;
    }
    p_binding = m_binding;
    return true;
}

void KeyCaptureBox::SetBinding(uint8_t p_device, int32_t p_code)
{
    m_binding.device = p_device;
    m_binding.code = p_code;
    m_hasKey = true;
}

void KeyCaptureBox::SetColor(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha)
{
    m_pImage->SetColor(p_red, p_green, p_blue, p_alpha);
}

bool KeyCaptureBox::Update(float p_dt)
{
    (void)p_dt;
    m_justCaptured = false;
    int32_t x = 0;
    int32_t y = 0;
    const bool down = ui::ReadCursor(m_pCursor, x, y);

    if (!m_capturing)
    {
        const double left = GetX();
        const double top = GetY();
        if (!m_lastButtonDown && down && left <= x && x < left + m_pImage->GetWidth() && top <= y &&
            y < top + m_pImage->GetHeight())
        {
            m_capturing = true;
        }
        m_lastButtonDown = down;
        return true;
    }

    // Every source is asked; a later find replaces an earlier one.
    InputSystem* input = ui::InputOrApplication(m_pInput);
    bool found = false;
    Binding captured;
    if (input != nullptr)
    {
        if (const Keyboard* keyboard = input->GetKeyboard())
        {
            for (int32_t code = 0; code < KEY_CODES; ++code)
            {
                if (keyboard->KeyPressed(code))
                {
                    captured = Binding{code, DEVICE_KEYBOARD};
                    found = true;
                    break;
                }
            }
        }
        if (const Joystick* joystick = input->GetJoystick())
        {
            const int32_t button = joystick->FindPressedButton();
            if (button >= 0)
            {
                captured = Binding{button, DEVICE_JOYSTICK_BUTTON};
                found = true;
            }
            const int32_t axis = joystick->FindMovedAxis();
            if (axis >= 0)
            {
                captured = Binding{axis, DEVICE_JOYSTICK_AXIS};
                found = true;
            }
        }
        if (const Mouse* mouse = input->GetMouse())
        {
            for (int32_t button = 0; button < MOUSE_BUTTONS; ++button)
            {
                if (mouse->ButtonPressed(button))
                {
                    captured = Binding{button, DEVICE_MOUSE};
                    found = true;
                    break;
                }
            }
            if (!found && mouse->GetWheel() != 0)
            {
                captured = Binding{mouse->GetWheel() > 0 ? MOUSE_WHEEL_UP : MOUSE_WHEEL_DOWN, DEVICE_MOUSE};
                found = true;
            }
        }
    }
    if (found)
    {
        m_binding = captured;
        m_hasKey = true;
        m_capturing = false;
        m_justCaptured = true;
    }
    m_lastButtonDown = down;
    return true;
}

const char* KeyCaptureBox::GetShownText() const
{
    if (m_capturing)
    {
        return "Hit Any Key";
    }
    if (!m_hasKey)
    {
        return "No Key";
    }
    m_shownName = ControlsConfig::GetKeyName(m_binding);
    return m_shownName.c_str();
}

bool KeyCaptureBox::Render()
{
    const int32_t x = ui::Whole(GetX());
    const int32_t y = ui::Whole(GetY());
    m_pImage->Draw(x, y, 0.0, true);
    if (m_pFont == nullptr)
    {
        return true;
    }
    const char* text = GetShownText();
    const int32_t textWidth = static_cast<int32_t>(m_pFont->GetTextWidth(text));
    const int32_t width = m_pImage->GetWidth();
    const int32_t height = m_pImage->GetHeight();
    ui::PrintText(m_pFont, 0.0, 0.0, 0.0, 1.0, x + width / 2 - textWidth / 2,
                  y + height / 2 - static_cast<int32_t>(m_pFont->GetHeight() / 1.5), text);
    return true;
}
