#include "menus/ObjectivesScreen.h"

#include "app/Application.h"
#include "gfx/Font.h"
#include "ui/UiDraw.h"

namespace
{
// The logical screen's centre.
constexpr double CENTRE_X = Application::SCREEN_WIDTH / 2.0;
constexpr double CENTRE_Y = Application::SCREEN_HEIGHT / 2.0;
constexpr double PANEL_MIDDLE = ObjectivesScreen::PANEL_WIDTH / 2.0;

constexpr int32_t OK_WIDTH = 75;
constexpr int32_t OK_HEIGHT = 30;
constexpr int32_t BULLET_X = 35;
constexpr int32_t TEXT_X = 60;

void Place(InputObject& p_object, double p_x, double p_y)
{
    p_object.SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
}
} // namespace

ObjectivesScreen::ObjectivesScreen(Cursor* p_pCursor) : InputObject(p_pCursor), m_okButton(p_pCursor), m_remaining(0)
{
    m_frame.SetColor(255, 255, 255, 175);
    m_frame.SetScale(0.8f);

    m_title.SetFont("Tahoma", 18, FONT_BOLD);
    m_title.SetColor(0.0, 0.0, 0.0, 1.0);
    m_title.SetText("Objectives");

    m_okButton.LoadImages("art\\button_up.bmp", "art\\button_down.bmp");
    m_okButton.SetFont("Tahoma", 10, FONT_BOLD);
    m_okButton.SetText("OK", 0.0, 0.0, 0.0, 1.0);
    m_okButton.SetSize(OK_WIDTH, OK_HEIGHT);
    m_okButton.SetTextOffsets(0, 0, -2, -1);

    m_check.Load("Art\\check.bmp");
    Layout();
}

ObjectivesScreen::~ObjectivesScreen() = default;

void ObjectivesScreen::AddObjective(const char* p_text, int32_t p_id)
{
    Entry entry;
    entry.id = p_id;
    entry.pBullet = std::make_unique<StaticText>();
    entry.pBullet->SetFont("Arial", 11, FONT_BOLD);
    entry.pBullet->SetColor(0.0, 0.0, 0.0, 1.0);
    entry.pBullet->SetText("-");
    entry.pText = std::make_unique<WrappedText>();
    entry.pText->SetFont("Arial", 11, FONT_BOLD);
    entry.pText->SetColor(0.0, 0.0, 0.0, 1.0);
    entry.pText->SetMaxWidth(TEXT_WIDTH);
    entry.pText->SetText(p_text != nullptr ? p_text : "");
    m_entries.push_back(std::move(entry));
    ++m_remaining;
    Layout();
}

void ObjectivesScreen::MarkDone(int32_t p_id)
{
    for (Entry& entry : m_entries)
    {
        if (entry.id == p_id && !entry.done)
        {
            entry.done = true;
            --m_remaining;
        }
    }
}

bool ObjectivesScreen::AreDone(int32_t p_mask) const
{
    uint32_t mask = static_cast<uint32_t>(p_mask);
    for (const Entry& entry : m_entries)
    {
        // Ids without a bit (0, negative, beyond 32) clear nothing.
        if (entry.done && entry.id >= 1 && entry.id <= 32)
        {
            mask &= ~(1u << (entry.id - 1));
        }
    }
    return mask == 0;
}

bool ObjectivesScreen::IsDone(int32_t p_index) const
{
    return p_index >= 0 && p_index < GetNumObjectives() && m_entries[static_cast<size_t>(p_index)].done;
}

const WrappedText* ObjectivesScreen::GetText(int32_t p_index) const
{
    if (p_index < 0 || p_index >= GetNumObjectives())
    {
        return nullptr;
    }
    return m_entries[static_cast<size_t>(p_index)].pText.get();
}

const StaticText* ObjectivesScreen::GetBullet(int32_t p_index) const
{
    if (p_index < 0 || p_index >= GetNumObjectives())
    {
        return nullptr;
    }
    return m_entries[static_cast<size_t>(p_index)].pBullet.get();
}

void ObjectivesScreen::Layout()
{
    // Laid out on a panel at (0, 0) first, then the whole panel is centred on the screen.
    double y = 20.0;
    const double titleX = PANEL_MIDDLE - m_title.GetWidth() / 2.0;
    const double titleY = y;
    y += m_title.GetHeight() + 25;

    std::vector<double> rows;
    rows.reserve(m_entries.size());
    for (const Entry& entry : m_entries)
    {
        rows.push_back(y);
        y += entry.pText->GetHeight() + 20;
    }

    y += 15;
    const double okX = PANEL_MIDDLE - m_okButton.GetWidth() / 2.0;
    const double okY = y;
    y += m_okButton.GetHeight() + 20;

    const int32_t height = static_cast<int32_t>(y);
    m_frame.SetSize(PANEL_WIDTH, height);
    const double dx = static_cast<int32_t>(CENTRE_X - PANEL_MIDDLE);
    const double dy = static_cast<int32_t>(CENTRE_Y - y / 2.0);

    Place(m_title, titleX + dx, titleY + dy);
    for (size_t i = 0; i < m_entries.size(); ++i)
    {
        Place(*m_entries[i].pBullet, BULLET_X + dx, rows[i] + dy);
        Place(*m_entries[i].pText, TEXT_X + dx, rows[i] + dy);
    }
    Place(m_okButton, okX + dx, okY + dy);
    Place(m_frame, dx, dy);
    Place(*this, dx, dy);
}

bool ObjectivesScreen::Update(float p_dt)
{
    m_okButton.Update(p_dt);
    int32_t click = CLICK_NONE;
    m_okButton.GetClick(&click);
    return click == CLICK_NONE;
}

bool ObjectivesScreen::Render()
{
    m_frame.Render();
    m_title.Render();
    const bool hasCheck = ui::HasPicture(m_check);
    for (const Entry& entry : m_entries)
    {
        if (entry.done && hasCheck)
        {
            m_check.Draw(ui::Whole(entry.pText->GetX()) - CHECK_OFFSET, ui::Whole(entry.pText->GetY()), 0.0, true);
        }
        entry.pBullet->Render();
        entry.pText->Render();
    }
    m_okButton.Render();
    return true;
}
