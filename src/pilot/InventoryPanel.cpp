#include "pilot/InventoryPanel.h"

#include "pilot/Inventory.h"
#include "pilot/PartList.h"
#include "pilot/Shop.h"
#include "sim/PlayerShip.h"
#include "ui/FramedBox.h"
#include "ui/StaticObjects.h"

#include <cstdio>

namespace
{
constexpr int32_t HEADING_X = 12;
constexpr int32_t HEADING_Y = 10;
} // namespace

InventoryPanel::InventoryPanel(Shop& p_shop, float p_x, float p_y)
    : ShopPanel(p_shop), m_pHeading(std::make_unique<StaticText>()), m_pEmpty(std::make_unique<StaticText>())
{
    SetPosition(p_x, p_y);
    SetArea(0, 0, WIDTH, HEIGHT);
    MakeBox(WIDTH, HEIGHT);
    shopstyle::MakeHeading(*m_pHeading, "Your Inventory", 16, p_x + HEADING_X, p_y + HEADING_Y);
    m_pList = std::make_unique<PartList>(m_pCursor, LIST_LINES, LINE_HEIGHT, WIDTH - 2 * LIST_X);
    m_pList->SetPosition(p_x + LIST_X, p_y + LIST_Y);
    m_pEmpty->SetFont("Tahoma", 14, 0);
    m_pEmpty->SetColor(0.7, 0.7, 0.7, 0.7);
    m_pEmpty->SetText("(empty)");
    m_pEmpty->SetPosition(p_x + LIST_X, static_cast<float>(m_pList->GetLineY(0)));
    Rebuild();
}

InventoryPanel::~InventoryPanel() = default;

void InventoryPanel::Rebuild()
{
    m_pList->Clear();
    if (Shop::s_pShip != nullptr)
    {
        for (const Inventory::Item& item : Shop::s_pShip->GetInventory().GetItems())
        {
            if (item.m_pPart == nullptr)
            {
                continue;
            }
            char line[320];
            std::snprintf(line, sizeof(line), "(%d) %s", item.m_quantity, item.m_pPart->GetName().c_str());
            m_pList->Add(item.m_pPart->GetName(), item.m_kind, line);
        }
    }
    m_pList->Scroll(0);
}

bool InventoryPanel::AddPart(const std::string& p_name, int p_kind)
{
    if (Shop::s_pShip == nullptr)
    {
        return false;
    }
    Inventory& inventory = Shop::s_pShip->GetInventory();
    const int before = inventory.GetQuantity(p_name.c_str());
    inventory.Add(p_name.c_str(), p_kind, 1);
    Rebuild();
    return inventory.GetQuantity(p_name.c_str()) > before;
}

void InventoryPanel::RemovePart(const std::string& p_name, int p_kind)
{
    if (Shop::s_pShip != nullptr)
    {
        Shop::s_pShip->GetInventory().Remove(p_name.c_str(), p_kind, 1);
    }
    Rebuild();
}

bool InventoryPanel::Accept(const PartEntry& p_item)
{
    return AddPart(p_item.GetPartName(), p_item.GetPartKind());
}

bool InventoryPanel::Update(float p_dt)
{
    int32_t x = 0;
    int32_t y = 0;
    const bool pressed = WasJustPressed(x, y);
    m_pList->Update(p_dt);
    if (PartEntry* entry = pressed ? m_pList->EntryAt(x, y) : nullptr)
    {
        m_shop.PickUp(*entry, this, true);
    }
    return true;
}

bool InventoryPanel::Render()
{
    m_pBox->Render();
    m_pHeading->Render();
    m_pList->Render();
    if (m_pList->GetCount() == 0)
    {
        m_pEmpty->Render();
    }
    return true;
}
