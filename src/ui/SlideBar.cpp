#include "ui/SlideBar.h"

#include "gfx/Image.h"
#include "ui/UiDraw.h"

#include <cassert>

SlideBar::SlideBar(Cursor* p_pCursor)
    : InputObject(p_pCursor), m_numValues(DEFAULT_NUM_VALUES), m_value(0), m_dragging(false), m_lastButtonDown(false)
{
    LoadImage("art\\slider_bg.bmp");
    assert(m_pImage && "m_pImage");
    m_pImage->SetWidth(DEFAULT_BAR_WIDTH);
    m_pKnobImage = std::make_unique<Image>();
    m_pKnobImage->Load("art\\slider.bmp");
}

SlideBar::~SlideBar() = default;

bool SlideBar::SetSize(int p_width, int p_height)
{
    (void)p_width;
    (void)p_height;
    return false;
}

void SlideBar::SetValue(int32_t p_value)
{
    m_value = p_value < m_numValues - 1 ? p_value : m_numValues - 1;
}

void SlideBar::SetNumValues(int32_t p_numValues)
{
    assert(p_numValues > 1 && "p_numValues > 1");
    if (p_numValues < 2)
    {
        return;
    }
    const int32_t oldLast = m_numValues - 1;
    m_value = (m_value * (p_numValues - 1) + oldLast / 2) / oldLast;
    m_numValues = p_numValues;
}

void SlideBar::SetBarWidth(int32_t p_width)
{
    assert(p_width > 1 && "p_width > 1");
    if (p_width < 2)
    {
        return;
    }
    m_pImage->SetWidth(p_width);
}

bool SlideBar::Update(float p_dt)
{
    (void)p_dt;
    int32_t x = 0;
    int32_t y = 0;
    const bool down = ui::ReadCursor(m_pCursor, x, y);
    const int32_t left = ui::Whole(GetX());
    const int32_t top = ui::Whole(GetY());
    const int32_t width = m_pImage->GetWidth();
    const int32_t height = m_pImage->GetHeight();

    if (!down)
    {
        m_dragging = false;
    }
    else if (!m_lastButtonDown && left <= x && x < left + width && top <= y && y < top + height)
    {
        m_dragging = true;
    }

    if (m_dragging && width > 1)
    {
        // The knob goes to the position nearest the cursor.
        m_value = ((x - left) * (m_numValues - 1) + (width - 1) / 2) / (width - 1);
        if (m_value < 0)
        {
            m_value = 0;
        }
        else if (m_value > m_numValues - 1)
        {
            m_value = m_numValues - 1;
        }
    }
    m_lastButtonDown = down;
    return true;
}

bool SlideBar::Render()
{
    const int32_t x = ui::Whole(GetX());
    const int32_t y = ui::Whole(GetY());
    if (ui::HasPicture(*m_pImage))
    {
        m_pImage->Draw(x, y, 0.0, false);
    }
    if (ui::HasPicture(*m_pKnobImage))
    {
        const int32_t barWidth = m_pImage->GetWidth();
        const int32_t knobX = x + (m_value * (barWidth - 1) + (m_numValues - 1) / 2) / (m_numValues - 1) -
                              m_pKnobImage->GetWidth() / 2;
        const int32_t knobY = y - m_pKnobImage->GetHeight() / 2 + m_pImage->GetHeight() / 2;
        m_pKnobImage->Draw(knobX, knobY, 0.0, false);
    }
    return true;
}
