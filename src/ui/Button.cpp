#include "ui/Button.h"

#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "gfx/Image.h"
#include "ui/UiDraw.h"

#include <cassert>

namespace
{
// A new button's last click lies far in the past, so its first click is never a double one.
constexpr float NO_RECENT_CLICK = 200.0f;
} // namespace

Button::Button(Cursor* p_pCursor)
    : InputObject(p_pCursor), m_pFont(nullptr), m_hasText(false), m_textColor{1.0, 1.0, 1.0, 1.0},
      m_textOffsetUp{0, 0}, m_textOffsetDown{0, 0}, m_timeSinceClick(NO_RECENT_CLICK), m_doubleClicked(false),
      m_clickCount(0), m_pressed(false), m_armed(false), m_lastButtonDown(false), m_lastX(0), m_lastY(0)
{
    // A button made while the mouse button is held must not take that press.
    m_lastButtonDown = ReadCursor(m_lastX, m_lastY);
}

Button::~Button()
{
    m_pPressedImage.reset();
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
}

bool Button::ReadCursor(int32_t& p_x, int32_t& p_y) const
{
    return ui::ReadCursor(m_pCursor, p_x, p_y);
}

bool Button::LoadImages(const char* p_upFile, const char* p_downFile)
{
    if (p_downFile != nullptr)
    {
        if (!m_pPressedImage)
        {
            m_pPressedImage = std::make_unique<Image>();
        }
        m_pPressedImage->Load(p_downFile);
        if (!ui::HasPicture(*m_pPressedImage))
        {
            return false;
        }
    }
    if (m_pImage)
    {
        m_pImage->Load(p_upFile);
    }
    else
    {
        LoadImage(p_upFile);
    }
    const bool loaded = m_pImage && ui::HasPicture(*m_pImage);
    m_size.width = m_pImage ? m_pImage->GetWidth() : 0;
    m_size.height = m_pImage ? m_pImage->GetHeight() : 0;
    // The game's art is drawn to match; a missing normal picture is not a size mismatch.
    assert((!loaded || !m_pPressedImage ||
            (m_size.width == m_pPressedImage->GetWidth() && m_size.height == m_pPressedImage->GetHeight())) &&
           "m_size.width == m_pPressedImage->GetWidth() && m_size.height == m_pPressedImage->GetHeight()");
    return loaded;
}

bool Button::LoadImagesOrSize(const char* p_upFile, const char* p_downFile, int p_width, int p_height)
{
    if (LoadImages(p_upFile, p_downFile) && GetWidth() > 0)
    {
        return true;
    }
    SetSize(p_width, p_height);
    return false;
}

bool Button::SetSize(int p_width, int p_height)
{
    m_size.width = p_width;
    m_size.height = p_height;
    if (m_pImage)
    {
        m_pImage->SetSize(p_width, p_height);
    }
    if (m_pPressedImage)
    {
        m_pPressedImage->SetSize(p_width, p_height);
    }
    return true;
}

void Button::SetFont(const char* p_typeFace, int32_t p_size, int32_t p_style)
{
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
    }
    m_pFont = g_fontList.GetFont(p_typeFace, p_size, p_style);
}

void Button::SetText(const char* p_text, double p_red, double p_green, double p_blue, double p_alpha)
{
    assert(p_text && "p_text");
    if (p_text == nullptr)
    {
        return;
    }
    if (m_pFont == nullptr)
    {
        SetFont("Arial", 12, 0);
    }
    m_text = p_text;
    m_hasText = true;
    m_textColor[0] = p_red;
    m_textColor[1] = p_green;
    m_textColor[2] = p_blue;
    m_textColor[3] = p_alpha;
}

void Button::SetTextOffsets(int32_t p_upX, int32_t p_upY, int32_t p_downX, int32_t p_downY)
{
    m_textOffsetUp[0] = p_upX;
    m_textOffsetUp[1] = p_upY;
    m_textOffsetDown[0] = p_downX;
    m_textOffsetDown[1] = p_downY;
}

bool Button::GetClick(int32_t* p_click)
{
    if (p_click != nullptr)
    {
        *p_click = m_clickCount > 0 ? CLICK_SINGLE : CLICK_NONE;
        if (m_doubleClicked)
        {
            *p_click = CLICK_DOUBLE;
        }
    }
    m_clickCount = 0;
    m_doubleClicked = false;
    return m_pressed;
}

bool Button::IsInside(int32_t p_x, int32_t p_y) const
{
    const double x = GetX();
    const double y = GetY();
    return x <= p_x && p_x < x + m_size.width && y <= p_y && p_y < y + m_size.height;
}

bool Button::Update(float p_dt)
{
    m_timeSinceClick += p_dt;
    int32_t x = 0;
    int32_t y = 0;
    const bool down = ReadCursor(x, y);
    const bool justPressed = !m_lastButtonDown && down;
    const bool justReleased = m_lastButtonDown && !down;

    if (justReleased)
    {
        m_armed = false;
    }
    if (!IsInside(x, y))
    {
        m_pressed = false;
    }
    else if (justPressed)
    {
        m_pressed = true;
        m_armed = true;
    }
    else if (justReleased && m_pressed)
    {
        m_pressed = false;
        ++m_clickCount;
        if (m_timeSinceClick < DOUBLE_CLICK_TIME)
        {
            m_doubleClicked = true;
        }
        m_timeSinceClick = 0.0f;
    }
    else if (m_armed)
    {
        // Back on the button with the mouse button still held.
        m_pressed = true;
    }

    m_lastButtonDown = down;
    m_lastX = x;
    m_lastY = y;
    return true;
}

bool Button::Render()
{
    const int32_t x = ui::Whole(GetX());
    const int32_t y = ui::Whole(GetY());
    Image* image = m_pressed && m_pPressedImage ? m_pPressedImage.get() : m_pImage.get();
    if (image != nullptr && ui::HasPicture(*image))
    {
        image->Draw(x, y, 0.0, true);
    }
    if (m_pFont != nullptr && m_hasText)
    {
        const int32_t* offset = m_pressed ? m_textOffsetDown : m_textOffsetUp;
        const int32_t textWidth = static_cast<int32_t>(m_pFont->GetTextWidth(m_text.c_str()));
        const int32_t lineHeight = static_cast<int32_t>(m_pFont->GetHeight() * 1.1);
        ui::PrintText(m_pFont, m_textColor[0], m_textColor[1], m_textColor[2], m_textColor[3],
                      x + offset[0] + (m_size.width - textWidth) / 2, y + offset[1] + (m_size.height - lineHeight) / 2,
                      m_text.c_str());
    }
    return true;
}
