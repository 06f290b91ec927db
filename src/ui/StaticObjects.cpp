#include "ui/StaticObjects.h"

#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "gfx/Image.h"
#include "input/Cursor.h"
#include "ui/UiDraw.h"

#include <cassert>

namespace
{
// Static objects never read their cursor, but every input object needs one.
Cursor* PlaceholderCursor()
{
    static Cursor s_placeholder;
    return &s_placeholder;
}
} // namespace

StaticObject::StaticObject() : InputObject(PlaceholderCursor()) {}

StaticObject::~StaticObject() = default;

bool StaticObject::Update(float p_dt)
{
    (void)p_dt;
    return true;
}

StaticText::StaticText() : m_hasText(false), m_pFont(nullptr), m_color{1.0, 1.0, 1.0, 1.0}
{
    m_pFont = g_fontList.GetFont("Arial", 12, 0);
}

StaticText::~StaticText()
{
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
}

bool StaticText::Render()
{
    if (!m_hasText || m_pFont == nullptr)
    {
        return true;
    }
    ui::PrintText(m_pFont, m_color[0], m_color[1], m_color[2], m_color[3], ui::Whole(GetX()), ui::Whole(GetY()),
                  m_text.c_str());
    return true;
}

int StaticText::GetWidth() const
{
    if (!m_hasText || m_pFont == nullptr)
    {
        return 0;
    }
    return static_cast<int>(m_pFont->GetTextWidth(m_text.c_str()));
}

int StaticText::GetHeight() const
{
    return m_pFont != nullptr ? m_pFont->GetHeight() : 0;
}

void StaticText::SetText(const char* p_text)
{
    assert(p_text && "p_text");
    if (p_text == nullptr)
    {
        return;
    }
    m_text = p_text;
    m_hasText = true;
}

void StaticText::SetColor(double p_red, double p_green, double p_blue, double p_alpha)
{
    m_color[0] = p_red;
    m_color[1] = p_green;
    m_color[2] = p_blue;
    m_color[3] = p_alpha;
}

void StaticText::SetFont(const char* p_typeFace, int32_t p_size, int32_t p_style)
{
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
    }
    m_pFont = g_fontList.GetFont(p_typeFace, p_size, p_style);
}

WrappedText::WrappedText() : m_maxWidth(300) {}

WrappedText::~WrappedText() = default;

void WrappedText::SetText(const char* p_text)
{
    StaticText::SetText(p_text);
    m_lines.clear();
    if (!m_hasText)
    {
        return;
    }
    m_lines.push_back(0);
    const size_t length = m_text.size();
    constexpr size_t NO_BREAK = static_cast<size_t>(-1);
    size_t breakAt = NO_BREAK;
    float width = 0.0f;
    size_t i = 0;
    while (i < length)
    {
        const char c = m_text[i];
        if (c != ' ' && i + 1 < length && m_text[i + 1] == ' ')
        {
            breakAt = i + 1;
        }
        if (m_pFont != nullptr)
        {
            width += m_pFont->GetCharWidth(static_cast<uint8_t>(c));
        }
        if (width > static_cast<float>(m_maxWidth) && breakAt != NO_BREAK)
        {
            m_text[breakAt] = '\0';
            size_t next = breakAt + 1;
            while (next < length && m_text[next] == ' ')
            {
                ++next;
            }
            if (next >= length)
            {
                break;
            }
            // The new line's characters are measured again from its start.
            m_lines.push_back(next);
            width = 0.0f;
            breakAt = NO_BREAK;
            i = next;
            continue;
        }
        ++i;
    }
}

std::string WrappedText::GetLine(size_t p_line) const
{
    if (p_line >= m_lines.size())
    {
        return std::string();
    }
    return std::string(m_text.c_str() + m_lines[p_line]);
}

bool WrappedText::Render()
{
    if (m_pFont == nullptr)
    {
        return true;
    }
    const int32_t x = ui::Whole(GetX());
    const int32_t y = ui::Whole(GetY());
    for (size_t line = 0; line < m_lines.size(); ++line)
    {
        ui::PrintText(m_pFont, m_color[0], m_color[1], m_color[2], m_color[3], x,
                      y + static_cast<int32_t>(line) * m_pFont->GetHeight(), m_text.c_str() + m_lines[line]);
    }
    return true;
}

int WrappedText::GetWidth() const
{
    return m_maxWidth;
}

int WrappedText::GetHeight() const
{
    return static_cast<int>(m_lines.size()) * (m_pFont != nullptr ? m_pFont->GetHeight() : 0);
}

StaticImage::StaticImage() = default;

StaticImage::~StaticImage() = default;

bool StaticImage::Render()
{
    assert(m_pImage && "m_pImage");
    if (m_pImage && ui::HasPicture(*m_pImage))
    {
        m_pImage->Draw(ui::Whole(GetX()), ui::Whole(GetY()), 0.0, false);
    }
    return true;
}
