#include "ui/Draggable.h"

#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "gfx/Image.h"
#include "ui/UiDraw.h"

#include <cassert>

std::list<DropTarget*> g_dropTargets;

namespace
{
constexpr double SHADOW_ALPHA = 0.8;
} // namespace

void RegisterDropTarget(DropTarget* p_target)
{
    assert(p_target && "p_target");
    if (p_target != nullptr)
    {
        g_dropTargets.push_front(p_target);
    }
}

void ClearDropTargets()
{
    g_dropTargets.clear();
}

Draggable::Draggable(Cursor* p_pCursor)
    : InputObject(p_pCursor), m_dragging(false), m_dropped(false), m_lastButtonDown(false), m_dragOffsetX(0),
      m_dragOffsetY(0)
{
}

Draggable::~Draggable() = default;

bool Draggable::IsInside(int32_t p_x, int32_t p_y) const
{
    if (!m_pImage)
    {
        return false;
    }
    const double x = GetX();
    const double y = GetY();
    return x <= p_x && p_x < x + m_pImage->GetWidth() && y <= p_y && p_y < y + m_pImage->GetHeight();
}

bool Draggable::WasDropped()
{
    const bool dropped = m_dropped;
    m_dropped = false;
    return dropped;
}

void Draggable::StartDrag()
{
    int32_t x = 0;
    int32_t y = 0;
    m_lastButtonDown = ui::ReadCursor(m_pCursor, x, y);
    m_dragging = true;
    m_dragOffsetX = ui::Whole(GetX()) - x;
    m_dragOffsetY = ui::Whole(GetY()) - y;
}

bool Draggable::FindDropTarget(DropTarget*& p_target)
{
    p_target = nullptr;
    if (!WasDropped())
    {
        return false;
    }
    for (DropTarget* target : g_dropTargets)
    {
        if (target->TakesDrop(this))
        {
            p_target = target;
            break;
        }
    }
    return true;
}

bool Draggable::Update(float p_dt)
{
    (void)p_dt;
    int32_t x = 0;
    int32_t y = 0;
    const bool down = ui::ReadCursor(m_pCursor, x, y);
    if (m_dragging)
    {
        if (down)
        {
            SetPosition(static_cast<float>(x + m_dragOffsetX), static_cast<float>(y + m_dragOffsetY));
        }
        else
        {
            m_dropped = true;
            m_dragging = false;
        }
    }
    else if (!m_lastButtonDown && down && IsInside(x, y))
    {
        m_dragging = true;
        m_dragOffsetX = ui::Whole(GetX()) - x;
        m_dragOffsetY = ui::Whole(GetY()) - y;
    }
    m_lastButtonDown = down;
    return true;
}

bool Draggable::Render()
{
    if (m_pImage && ui::HasPicture(*m_pImage))
    {
        m_pImage->Draw(ui::Whole(GetX()), ui::Whole(GetY()), 0.0, true);
    }
    return true;
}

DraggableText::DraggableText(Cursor* p_pCursor)
    : Draggable(p_pCursor), m_hasText(false), m_pFont(nullptr), m_color{1.0, 1.0, 1.0, 1.0}
{
    m_pFont = g_fontList.GetFont("Tahoma", 12, FONT_BOLD);
}

DraggableText::~DraggableText()
{
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
}

void DraggableText::SetText(const char* p_text)
{
    assert(p_text && "p_text");
    if (p_text == nullptr)
    {
        return;
    }
    m_text = p_text;
    m_hasText = true;
}

void DraggableText::SetColor(double p_red, double p_green, double p_blue, double p_alpha)
{
    m_color[0] = p_red;
    m_color[1] = p_green;
    m_color[2] = p_blue;
    m_color[3] = p_alpha;
}

int DraggableText::GetWidth() const
{
    if (!m_hasText || m_pFont == nullptr)
    {
        return 0;
    }
    return static_cast<int>(m_pFont->GetTextWidth(m_text.c_str()));
}

int DraggableText::GetHeight() const
{
    return m_pFont != nullptr ? m_pFont->GetHeight() : 0;
}

bool DraggableText::IsInside(int32_t p_x, int32_t p_y) const
{
    if (!m_hasText)
    {
        return false;
    }
    const double x = GetX();
    const double y = GetY();
    return x <= p_x && p_x < x + GetWidth() && y <= p_y && p_y < y + GetHeight();
}

bool DraggableText::Render()
{
    if (m_hasText)
    {
        if (m_shadow)
        {
            ui::PrintText(m_pFont, 0.0, 0.0, 0.0, SHADOW_ALPHA * m_color[3], ui::Whole(GetX()) + 1, ui::Whole(GetY()) + 1,
                          m_text.c_str());
        }
        ui::PrintText(m_pFont, m_color[0], m_color[1], m_color[2], m_color[3], ui::Whole(GetX()), ui::Whole(GetY()),
                      m_text.c_str());
    }
    return true;
}
