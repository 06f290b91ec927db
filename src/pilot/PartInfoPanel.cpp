#include "pilot/PartInfoPanel.h"

#include "gfx/Font.h"
#include "pilot/ShipParts.h"
#include "pilot/ShopPanel.h"
#include "sim/Weapon.h"
#include "ui/FramedBox.h"
#include "ui/StaticObjects.h"
#include "ui/UiDraw.h"

#include <cstdio>

namespace
{
constexpr int32_t NAME_X = 20;
constexpr int32_t NAME_Y = 10;
constexpr int32_t TYPE_X = 35;
constexpr int32_t TYPE_Y = 40;
constexpr int32_t PRICE_X = 300;
constexpr int32_t FIRST_ROW_Y = 150;
constexpr int32_t ROW_SPACING = 30;
constexpr int32_t LABEL_X = 115;
constexpr int32_t VALUE_X = 310;
// The picture is centred on this point, right of the stats and under the price.
constexpr int32_t PICTURE_CENTRE_X = 470;
constexpr int32_t PICTURE_CENTRE_Y = 95;
// A hull's picture: its ship flying straight.
constexpr const char* HULL_FRAME = "_short_still0000.bmp";

std::unique_ptr<StaticText> MakeText(int32_t p_size, int32_t p_style, double p_grey, float p_x, float p_y)
{
    auto text = std::make_unique<StaticText>();
    text->SetFont("Tahoma", p_size, p_style);
    text->SetColor(p_grey, p_grey, p_grey, 1.0);
    text->SetPosition(p_x, p_y);
    return text;
}
} // namespace

PartInfoPanel::PartInfoPanel(Cursor* p_pCursor, float p_x, float p_y)
    : InputObject(p_pCursor), m_rowCount(0), m_pShown(nullptr)
{
    SetPosition(p_x, p_y);
    m_pBox = std::make_unique<FramedBox>();
    m_pBox->SetScale(shopstyle::BOX_SCALE);
    m_pBox->SetSize(WIDTH, HEIGHT);
    m_pBox->SetColor(shopstyle::BOX_GREY, shopstyle::BOX_GREY, shopstyle::BOX_GREY, shopstyle::BOX_ALPHA);
    m_pBox->SetPosition(p_x, p_y);
    m_pName = MakeText(18, FONT_BOLD, 1.0, p_x + NAME_X, p_y + NAME_Y);
    m_pType = MakeText(14, 0, 0.85, p_x + TYPE_X, p_y + TYPE_Y);
    m_pPrice = MakeText(16, FONT_BOLD, 1.0, p_x + PRICE_X, p_y + NAME_Y);
    m_pPrice->SetColor(1.0, 0.85, 0.45, 1.0);
    for (int row = 0; row < MAX_ROWS; ++row)
    {
        const float y = p_y + static_cast<float>(FIRST_ROW_Y + ROW_SPACING * row);
        m_pLabels[row] = MakeText(14, 0, 0.85, p_x + LABEL_X, y);
        m_pValues[row] = MakeText(14, FONT_BOLD, 1.0, p_x + VALUE_X, y);
    }
}

PartInfoPanel::~PartInfoPanel() = default;

bool PartInfoPanel::Update(float p_dt)
{
    (void)p_dt;
    return true;
}

void PartInfoPanel::SetRow(int p_row, const char* p_label, const char* p_value)
{
    m_pLabels[p_row]->SetText(p_label);
    m_pValues[p_row]->SetText(p_value);
}

void PartInfoPanel::Show(Part* p_part)
{
    if (p_part == nullptr)
    {
        return;
    }
    m_pShown = p_part;
    m_pName->SetText(p_part->GetName().c_str());
    char text[64];
    std::snprintf(text, sizeof(text), "Price: $%d", p_part->GetPrice());
    m_pPrice->SetText(text);
    m_hullPicture.Load(nullptr);

    char value[MAX_ROWS][64];
    if (const auto* hull = dynamic_cast<const HullPart*>(p_part))
    {
        m_pType->SetText("Type: Hull");
        std::snprintf(value[0], sizeof(value[0]), "%d degrees/sec", hull->GetTurnRate());
        std::snprintf(value[1], sizeof(value[1]), "%d", hull->GetArmour());
        SetRow(0, "Max Rotation:", value[0]);
        SetRow(1, "Armor Strength:", value[1]);
        m_rowCount = 2;
        m_hullPicture.Load((hull->GetImageName() + HULL_FRAME).c_str());
    }
    else if (const auto* engine = dynamic_cast<const EnginePart*>(p_part))
    {
        m_pType->SetText("Type: Engine");
        std::snprintf(value[0], sizeof(value[0]), "%d meters/sec", engine->GetForwardSpeed());
        std::snprintf(value[1], sizeof(value[1]), "%d meters/sec", engine->GetReverseSpeed());
        std::snprintf(value[2], sizeof(value[2]), "%d meters/sec^2", engine->GetAcceleration());
        SetRow(0, "Max Speed:", value[0]);
        SetRow(1, "Min Speed:", value[1]);
        SetRow(2, "Max Acceleration:", value[2]);
        m_rowCount = 3;
    }
    else if (const auto* shield = dynamic_cast<const ShieldPart*>(p_part))
    {
        m_pType->SetText("Type: Shield");
        std::snprintf(value[0], sizeof(value[0]), "%d", shield->GetCapacity());
        std::snprintf(value[1], sizeof(value[1]), "%d per hit", shield->GetAbsorption());
        SetRow(0, "Shield Strength:", value[0]);
        SetRow(1, "Absorbtion Rate:", value[1]);
        m_rowCount = 2;
    }
    else if (const auto* weapon = dynamic_cast<const Weapon*>(p_part))
    {
        m_pType->SetText("Type: Weapon");
        std::snprintf(value[0], sizeof(value[0]), "%.02f shots/sec", static_cast<double>(weapon->GetFiringRate()));
        std::snprintf(value[1], sizeof(value[1]), "%d", weapon->GetMaxDamage());
        SetRow(0, "Firing Rate:", value[0]);
        SetRow(1, "Damage:", value[1]);
        m_rowCount = 2;
    }
    else
    {
        // Power plants and copilots do nothing the panel could show.
        m_rowCount = 0;
    }
}

bool PartInfoPanel::Render()
{
    m_pBox->Render();
    m_pName->Render();
    m_pType->Render();
    m_pPrice->Render();
    for (int row = 0; row < m_rowCount; ++row)
    {
        m_pLabels[row]->Render();
        m_pValues[row]->Render();
    }
    const int32_t centreX = ui::Whole(GetX()) + PICTURE_CENTRE_X;
    const int32_t centreY = ui::Whole(GetY()) + PICTURE_CENTRE_Y;
    if (!m_hullPicture.GetFileName().empty() && ui::HasPicture(m_hullPicture))
    {
        m_hullPicture.Draw(centreX - m_hullPicture.GetWidth() / 2, centreY - m_hullPicture.GetHeight() / 2, 0.0, true);
    }
    else if (m_pShown != nullptr)
    {
        Image* picture = m_pShown->GetImage();
        if (picture != nullptr && !picture->GetFileName().empty() && ui::HasPicture(*picture))
        {
            m_pShown->DrawAt(centreX - picture->GetWidth() / 2, centreY - picture->GetHeight() / 2, 0.0);
        }
    }
    return true;
}
