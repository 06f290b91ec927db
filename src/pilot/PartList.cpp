#include "pilot/PartList.h"

#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "pilot/Part.h"
#include "ui/Button.h"
#include "ui/MenuButton.h"
#include "ui/UiDraw.h"

#include <algorithm>

namespace
{
constexpr const char* ELLIPSIS = "...";

// The longest start of p_text that, followed by "...", is no wider than p_maxWidth.
std::string FitText(const Font* p_font, const std::string& p_text, int p_maxWidth)
{
    if (p_font == nullptr || p_font->GetTextWidth(p_text.c_str()) <= static_cast<float>(p_maxWidth))
    {
        return p_text;
    }
    std::string cut = p_text;
    while (!cut.empty() && p_font->GetTextWidth((cut + ELLIPSIS).c_str()) > static_cast<float>(p_maxWidth))
    {
        cut.pop_back();
    }
    return cut + ELLIPSIS;
}
} // namespace

PartEntry::PartEntry(Cursor* p_pCursor, const std::string& p_partName, int p_kind, int p_mount)
    : DraggableText(p_pCursor), m_partName(p_partName), m_partKind(p_kind), m_mount(p_mount)
{
    double rgb[3];
    GetKindColour(p_kind, rgb);
    SetColor(rgb[0], rgb[1], rgb[2], 1.0);
    // The panels are see-through and the planets behind them bright in places.
    SetShadow(true);
}

void PartEntry::SetLine(const std::string& p_text, int p_maxWidth)
{
    Font* font = g_fontList.GetFont("Tahoma", 12, FONT_BOLD);
    SetText(FitText(font, p_text, p_maxWidth).c_str());
    g_fontList.ReleaseFont(font);
}

std::unique_ptr<PartEntry> PartEntry::Copy() const
{
    auto copy = std::make_unique<PartEntry>(m_pCursor, m_partName, m_partKind, m_mount);
    copy->SetText(GetText().c_str());
    copy->SetShadow(false);
    copy->SetPosition(static_cast<float>(GetX()), static_cast<float>(GetY()));
    return copy;
}

void PartEntry::GetKindColour(int p_kind, double p_rgb[3])
{
    static constexpr double COLOURS[][3] = {
        {0.75, 1.0, 0.75}, // hull
        {1.0, 1.0, 0.75},  // engine
        {0.75, 1.0, 1.0},  // shield
    };
    static constexpr double WEAPON[3] = {1.0, 0.75, 0.75};
    // Black would vanish on the dark panels: power plants and copilots are light violet.
    static constexpr double OTHER[3] = {0.85, 0.75, 1.0};
    const double* colour = OTHER;
    if (p_kind >= PART_HULL && p_kind <= PART_SHIELD)
    {
        colour = COLOURS[p_kind];
    }
    else if (p_kind == PART_WEAPON)
    {
        colour = WEAPON;
    }
    std::copy(colour, colour + 3, p_rgb);
}

PartList::PartList(Cursor* p_pCursor, int p_visibleLines, int32_t p_lineHeight, int32_t p_width)
    : InputObject(p_pCursor), m_visibleLines(p_visibleLines), m_lineHeight(p_lineHeight), m_width(p_width),
      m_first(0)
{
    m_pUp = ui::MakeMenuButton(p_pCursor, "art\\up_arrow_button_up.bmp", "art\\up_arrow_button_down.bmp", "", 10, 0,
                               0, ARROW_WIDTH, ARROW_HEIGHT);
    m_pDown = ui::MakeMenuButton(p_pCursor, "art\\down_arrow_button_up.bmp", "art\\down_arrow_button_down.bmp", "",
                                 10, 0, 0, ARROW_WIDTH, ARROW_HEIGHT);
}

PartList::~PartList() = default;

void PartList::SetPosition(float p_x, float p_y)
{
    InputObject::SetPosition(p_x, p_y);
    const float arrowX = p_x + static_cast<float>((m_width - ARROW_WIDTH) / 2);
    m_pUp->SetPosition(arrowX, p_y);
    m_pDown->SetPosition(arrowX, static_cast<float>(GetLineY(m_visibleLines) + ARROW_GAP));
    PlaceLines();
}

int PartList::GetHeight() const
{
    return 2 * (ARROW_HEIGHT + ARROW_GAP) + m_visibleLines * m_lineHeight;
}

int32_t PartList::GetLineY(int p_row) const
{
    return ui::Whole(GetY()) + ARROW_HEIGHT + ARROW_GAP + p_row * m_lineHeight;
}

bool PartList::Update(float p_dt)
{
    m_pUp->Update(p_dt);
    m_pDown->Update(p_dt);
    int32_t click = CLICK_NONE;
    m_pUp->GetClick(&click);
    if (click != CLICK_NONE)
    {
        Scroll(-1);
    }
    m_pDown->GetClick(&click);
    if (click != CLICK_NONE)
    {
        Scroll(1);
    }
    return true;
}

bool PartList::Render()
{
    const int last = std::min(GetCount(), m_first + m_visibleLines);
    for (int i = m_first; i < last; ++i)
    {
        m_entries[i]->Render();
    }
    m_pUp->Render();
    m_pDown->Render();
    return true;
}

void PartList::Clear()
{
    m_entries.clear();
}

PartEntry* PartList::Add(const std::string& p_partName, int p_kind, const std::string& p_text)
{
    auto entry = std::make_unique<PartEntry>(m_pCursor, p_partName, p_kind);
    entry->SetLine(p_text, m_width);
    entry->SetPosition(static_cast<float>(GetX()), static_cast<float>(GetLineY(GetCount() - m_first)));
    m_entries.push_back(std::move(entry));
    return m_entries.back().get();
}

void PartList::Scroll(int p_lines)
{
    const int last = std::max(0, GetCount() - m_visibleLines);
    m_first = std::clamp(m_first + p_lines, 0, last);
    PlaceLines();
}

void PartList::PlaceLines()
{
    for (int i = 0; i < GetCount(); ++i)
    {
        m_entries[i]->SetPosition(static_cast<float>(GetX()), static_cast<float>(GetLineY(i - m_first)));
    }
}

PartEntry* PartList::EntryAt(int32_t p_x, int32_t p_y) const
{
    const int last = std::min(GetCount(), m_first + m_visibleLines);
    for (int i = m_first; i < last; ++i)
    {
        if (m_entries[i]->IsInside(p_x, p_y))
        {
            return m_entries[i].get();
        }
    }
    return nullptr;
}

PartEntry* PartList::GetEntry(int p_index) const
{
    return p_index >= 0 && p_index < GetCount() ? m_entries[p_index].get() : nullptr;
}
