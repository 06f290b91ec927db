#include "pilot/ShipPanel.h"

#include "pilot/InventoryPanel.h"
#include "pilot/PartList.h"
#include "pilot/ShipParts.h"
#include "pilot/Shop.h"
#include "sim/PlayerShip.h"
#include "sim/Weapon.h"
#include "ui/StaticObjects.h"
#include "ui/UiDraw.h"

#include <cmath>
#include <cstdio>

namespace
{
// Where each line's name is written, from the panel's position: the mounts (front, left,
// right, back), then hull, shield and engine. The picture has a strip under each.
constexpr int32_t LINE_OFFSETS[ShipPanel::NUM_LINES][2] = {{90, 2},   {2, 100},  {220, 100}, {90, 200},
                                                           {90, 135}, {90, 155}, {90, 220}};
// The widest name a line may show: the side mounts' strips are short (the right one ends at
// the picture's edge), the others run across the picture.
constexpr int32_t SIDE_TEXT_WIDTH = 116;
constexpr int32_t TEXT_WIDTH = 230;
constexpr int32_t HEADING_X = -155;
constexpr int32_t HEADING_Y = 15;
constexpr int32_t AMMO_LABEL_X = -170;
constexpr int32_t AMMO_COUNT_X = -70;
constexpr int32_t AMMO_Y = 90;
constexpr int32_t AMMO_SPACING = 20;
const char* const AMMO_LABELS[] = {"Bullets:", "Energy:", "Missiles:"};
// An empty mount's line: dimmer than a weapon's.
constexpr double EMPTY_GREY = 0.6;

int KindOfLine(int p_line)
{
    switch (p_line)
    {
    case ShipPanel::LINE_HULL:
        return PART_HULL;
    case ShipPanel::LINE_SHIELD:
        return PART_SHIELD;
    case ShipPanel::LINE_ENGINE:
        return PART_ENGINE;
    default:
        return PART_WEAPON;
    }
}

bool IsMount(int p_line)
{
    return p_line >= ShipPanel::LINE_FRONT && p_line <= ShipPanel::LINE_BACK;
}
} // namespace

ShipPanel::ShipPanel(Shop& p_shop, float p_x, float p_y) : ShopPanel(p_shop), m_pHeading(std::make_unique<StaticText>())
{
    SetPosition(p_x, p_y);
    SetArea(0, 0, WIDTH, HEIGHT);
    m_picture.Load("art\\menu\\ship_display.bmp");
    shopstyle::MakeHeading(*m_pHeading, "- Your Ship -", 16, p_x + HEADING_X, p_y + HEADING_Y);
    for (int i = 0; i < NUM_AMMO; ++i)
    {
        const float y = p_y + static_cast<float>(AMMO_Y + AMMO_SPACING * i);
        m_pAmmoLabels[i] = std::make_unique<StaticText>();
        m_pAmmoLabels[i]->SetFont("Tahoma", 14, 0);
        m_pAmmoLabels[i]->SetText(AMMO_LABELS[i]);
        m_pAmmoLabels[i]->SetPosition(p_x + AMMO_LABEL_X, y);
        m_pAmmoCounts[i] = std::make_unique<StaticText>();
        m_pAmmoCounts[i]->SetFont("Tahoma", 14, 0);
        m_pAmmoCounts[i]->SetPosition(p_x + AMMO_COUNT_X, y);
    }
    Refresh();
}

ShipPanel::~ShipPanel() = default;

void ShipPanel::GetLinePosition(int p_line, int32_t& p_x, int32_t& p_y) const
{
    p_x = ui::Whole(GetX()) + LINE_OFFSETS[p_line][0];
    p_y = ui::Whole(GetY()) + LINE_OFFSETS[p_line][1];
}

std::string ShipPanel::FittedName(int p_line) const
{
    const PlayerShip* ship = Shop::s_pShip;
    if (ship == nullptr)
    {
        return "";
    }
    const Part* part = nullptr;
    switch (p_line)
    {
    case LINE_HULL:
        part = ship->GetHull();
        break;
    case LINE_SHIELD:
        part = ship->GetShieldGenerator();
        break;
    case LINE_ENGINE:
        part = ship->GetEngine();
        break;
    default:
    {
        const Weapon* weapon = ship->GetWeapon(p_line - LINE_FRONT);
        return weapon != nullptr ? weapon->GetTableName() : "";
    }
    }
    return part != nullptr ? part->GetName() : "";
}

void ShipPanel::Refresh()
{
    for (int line = 0; line < NUM_LINES; ++line)
    {
        const std::string name = FittedName(line);
        const bool mount = IsMount(line);
        auto entry = std::make_unique<PartEntry>(m_pCursor, name, KindOfLine(line), mount ? line - LINE_FRONT : PartEntry::NO_MOUNT);
        if (mount && name.empty())
        {
            entry->SetColor(EMPTY_GREY, EMPTY_GREY, EMPTY_GREY, 1.0);
        }
        const bool side = line == LINE_LEFT || line == LINE_RIGHT;
        entry->SetLine(mount && name.empty() ? NO_WEAPON : name, side ? SIDE_TEXT_WIDTH : TEXT_WIDTH);
        int32_t x = 0;
        int32_t y = 0;
        GetLinePosition(line, x, y);
        entry->SetPosition(static_cast<float>(x), static_cast<float>(y));
        m_pLines[line] = std::move(entry);
    }
    if (Shop::s_pShip != nullptr)
    {
        const Pilot& pilot = Shop::s_pShip->GetPilot();
        const unsigned counts[NUM_AMMO] = {pilot.GetBullets(), pilot.GetEnergy(), pilot.GetMissiles()};
        for (int i = 0; i < NUM_AMMO; ++i)
        {
            char text[16];
            std::snprintf(text, sizeof(text), "%u", counts[i]);
            m_pAmmoCounts[i]->SetText(text);
        }
    }
}

bool ShipPanel::Update(float p_dt)
{
    (void)p_dt;
    int32_t x = 0;
    int32_t y = 0;
    if (!WasJustPressed(x, y))
    {
        return true;
    }
    for (const auto& line : m_pLines)
    {
        if (!line->IsInside(x, y) || line->GetPartName().empty())
        {
            continue;
        }
        // Only weapons come off the ship; the hull, engine and shield are just shown.
        m_shop.PickUp(*line, this, line->GetMount() != PartEntry::NO_MOUNT);
        break;
    }
    return true;
}

bool ShipPanel::Render()
{
    if (ui::HasPicture(m_picture))
    {
        m_picture.Draw(GetX(), GetY(), 0.0, true);
    }
    m_pHeading->Render();
    for (const auto& line : m_pLines)
    {
        line->Render();
    }
    for (int i = 0; i < NUM_AMMO; ++i)
    {
        m_pAmmoLabels[i]->Render();
        m_pAmmoCounts[i]->Render();
    }
    return true;
}

bool ShipPanel::CanAccept(const PartEntry& p_item) const
{
    const int kind = p_item.GetPartKind();
    const bool fits = kind == PART_HULL || kind == PART_ENGINE || kind == PART_SHIELD || kind == PART_WEAPON;
    return fits && ShopPanel::CanAccept(p_item);
}

int ShipPanel::NearestMount(int32_t p_x, int32_t p_y) const
{
    int nearest = 0;
    unsigned best = 0;
    for (int mount = 0; mount < NUM_MOUNTS; ++mount)
    {
        int32_t x = 0;
        int32_t y = 0;
        GetLinePosition(LINE_FRONT + mount, x, y);
        const double dx = static_cast<double>(p_x) - x;
        const double dy = static_cast<double>(p_y) - y;
        const unsigned distance = static_cast<unsigned>(std::sqrt(dx * dx + dy * dy));
        if (mount == 0 || distance < best)
        {
            nearest = mount;
            best = distance;
        }
    }
    return nearest;
}

void ShipPanel::FitWeapon(int p_mount, const std::string& p_name)
{
    Shop::s_pShip->SetPart(PART_WEAPON + p_mount, p_name.empty() ? nullptr : p_name.c_str());
}

bool ShipPanel::Accept(const PartEntry& p_item)
{
    if (!CanAccept(p_item) || Shop::s_pShip == nullptr)
    {
        return false;
    }
    const int kind = p_item.GetPartKind();
    std::string old;
    if (kind == PART_WEAPON)
    {
        const int mount = NearestMount(ui::Whole(p_item.GetX()), ui::Whole(p_item.GetY()));
        old = FittedName(LINE_FRONT + mount);
        FitWeapon(mount, p_item.GetPartName());
    }
    else
    {
        Shop::s_pShip->SetPart(kind, p_item.GetPartName().c_str(), &old);
    }
    if (!old.empty())
    {
        m_shop.GetInventoryPanel().AddPart(old, kind);
    }
    Refresh();
    return true;
}

void ShipPanel::DropWeapon(const PartEntry& p_item, ShopPanel* p_target)
{
    const int from = p_item.GetMount();
    if (from < 0 || from >= NUM_MOUNTS || Shop::s_pShip == nullptr)
    {
        return;
    }
    if (p_target == nullptr || p_target == this)
    {
        const int to = NearestMount(ui::Whole(p_item.GetX()), ui::Whole(p_item.GetY()));
        if (to != from)
        {
            const std::string moved = FittedName(LINE_FRONT + from);
            FitWeapon(from, FittedName(LINE_FRONT + to));
            FitWeapon(to, moved);
        }
    }
    else if (p_target->Accept(p_item))
    {
        FitWeapon(from, "");
    }
    Refresh();
}
