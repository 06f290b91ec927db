#include "mission/HudMessage.h"

#include "gfx/Font.h"
#include "ui/UiDraw.h"

#include <algorithm>
#include <cmath>

namespace
{
float NonNegative(float p_value)
{
    return std::isfinite(p_value) && p_value > 0.0f ? p_value : 0.0f;
}
} // namespace

HudMessage::HudMessage(const char* p_text, float p_seconds, float p_interval, int32_t p_wrapWidth)
    : m_fullText(p_text != nullptr ? p_text : ""), m_remaining(NonNegative(p_seconds)), m_total(m_remaining),
      m_interval(NonNegative(p_interval)), m_length(m_fullText.size()), m_numShown(0), m_accumulator(0.0f),
      m_textWidth(0)
{
    SetFont("Arial", 14, FONT_BOLD);
    SetColor(1.0, 1.0, 1.0, 1.0);
    SetMaxWidth(p_wrapWidth);
    SetText(m_fullText.c_str());

    // A continued line starts after the spaces its break skipped.
    size_t start = 0;
    for (size_t line = 0; line < GetNumLines(); ++line)
    {
        if (line > 0)
        {
            while (start < m_length && m_fullText[start] == ' ')
            {
                ++start;
            }
        }
        m_lineStarts.push_back(start);
        const std::string text = GetLine(line);
        start += text.size();
        if (m_pFont != nullptr)
        {
            m_textWidth = std::max(m_textWidth, static_cast<int32_t>(m_pFont->GetTextWidth(text.c_str())));
        }
    }
}

HudMessage::~HudMessage() = default;

bool HudMessage::Update(float p_dt)
{
    if (m_numShown < m_length)
    {
        m_accumulator += p_dt;
        if (m_accumulator >= m_interval)
        {
            m_accumulator = 0.0f;
            ++m_numShown;
        }
        return true;
    }
    m_remaining -= p_dt;
    if (m_remaining <= 0.0f)
    {
        return false;
    }
    if (m_remaining <= FADE_SHARE * m_total)
    {
        SetColor(1.0, 1.0, 1.0, m_remaining / (FADE_SHARE * m_total));
    }
    return true;
}

bool HudMessage::Render()
{
    if (m_pFont == nullptr)
    {
        return true;
    }
    const int32_t x = ui::Whole(GetX());
    const int32_t y = ui::Whole(GetY());
    for (size_t line = 0; line < m_lineStarts.size(); ++line)
    {
        const size_t start = m_lineStarts[line];
        if (start >= m_numShown)
        {
            break;
        }
        const std::string text = GetLine(line).substr(0, m_numShown - start);
        ui::PrintText(m_pFont, m_color[0], m_color[1], m_color[2], m_color[3], x,
                      y + static_cast<int32_t>(line) * m_pFont->GetHeight(), text.c_str());
    }
    return true;
}
