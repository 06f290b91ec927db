#include "pilot/Shop.h"

#include "gfx/Font.h"
#include "gfx/Image.h"
#include "pilot/ForSalePanel.h"
#include "pilot/InventoryPanel.h"
#include "pilot/PartCatalog.h"
#include "pilot/PartInfoPanel.h"
#include "pilot/PartList.h"
#include "pilot/ShipPanel.h"
#include "sim/PlayerShip.h"
#include "ui/Button.h"
#include "ui/MenuButton.h"
#include "ui/StaticObjects.h"
#include "ui/UiDraw.h"

#include <algorithm>

PlayerShip* Shop::s_pShip = nullptr;
Cursor* Shop::s_pCursor = nullptr;
float Shop::s_noticeTime = 0.0f;

namespace
{
constexpr float TITLE_X = 35.0f;
constexpr float TITLE_Y = 35.0f;
constexpr float FUNDS_X = 800.0f;
constexpr float FUNDS_Y = 40.0f;
constexpr float FOR_SALE_X = 800.0f;
constexpr float FOR_SALE_Y = 115.0f;
constexpr float INVENTORY_X = 20.0f;
constexpr float INVENTORY_Y = 115.0f;
constexpr float INFO_X = 235.0f;
constexpr float INFO_Y = 450.0f;
constexpr float SHIP_X = 455.0f;
constexpr float SHIP_Y = 130.0f;
constexpr int32_t DONE_X = 788;
constexpr int32_t DONE_Y = 680;
constexpr int32_t DONE_WIDTH = 140;
constexpr int32_t DONE_HEIGHT = 40;
// The notice sits in the gap between the ship and the part information, centred on them.
constexpr int32_t NOTICE_CENTRE_X = 510;
constexpr int32_t NOTICE_Y = 392;
constexpr uint16_t MAX_ROUNDS = 65535;
// Around the dragged name: a dark plate a little larger than the text.
constexpr uint8_t BACKING_RGBA[4] = {30, 38, 64, 235};
constexpr uint8_t FRAME_RGBA[4] = {230, 160, 60, 255};
constexpr int32_t BACKING_MARGIN_X = 4;
constexpr int32_t BACKING_MARGIN_Y = 1;
} // namespace

Shop::Shop(const char* p_fileName, Image* p_background, PlayerShip* p_ship, Cursor* p_cursor)
    : m_pBackground(p_background), m_pDragSource(nullptr), m_pDragFrame(std::make_unique<Image>()),
      m_pDragBacking(std::make_unique<Image>())
{
    s_pShip = p_ship;
    s_pCursor = p_cursor;
    m_list.Load(p_fileName);

    m_pDone = ui::MakeMenuButton(p_cursor, "art\\button_up.bmp", "art\\button_down.bmp", "Done", 14, DONE_X, DONE_Y,
                                 DONE_WIDTH, DONE_HEIGHT);
    m_pTitle = std::make_unique<StaticText>();
    m_pTitle->SetFont("Tahoma", 30, FONT_BOLD);
    m_pTitle->SetText(m_list.GetTitle().c_str());
    m_pTitle->SetPosition(TITLE_X, TITLE_Y);

    m_pFunds = std::make_unique<FundsPanel>(p_cursor);
    m_pFunds->SetPosition(FUNDS_X, FUNDS_Y);
    m_pForSale = std::make_unique<ForSalePanel>(*this, m_list, FOR_SALE_X, FOR_SALE_Y);
    m_pInventory = std::make_unique<InventoryPanel>(*this, INVENTORY_X, INVENTORY_Y);
    m_pInfo = std::make_unique<PartInfoPanel>(p_cursor, INFO_X, INFO_Y);
    m_pShip = std::make_unique<ShipPanel>(*this, SHIP_X, SHIP_Y);

    m_pNotice = std::make_unique<StaticText>();
    m_pNotice->SetFont("Tahoma", 24, FONT_BOLD);
    m_pNotice->SetColor(1.0, 0.35, 0.3, 1.0);
    m_pNotice->SetText("Insufficient Funds!");
    m_pNotice->SetPosition(static_cast<float>(NOTICE_CENTRE_X - m_pNotice->GetWidth() / 2), static_cast<float>(NOTICE_Y));

    // Registered at the head, so the ship is asked first, then the inventory, then the stock.
    ClearDropTargets();
    RegisterDropTarget(m_pForSale.get());
    RegisterDropTarget(m_pInventory.get());
    RegisterDropTarget(m_pShip.get());

    if (g_pPartCatalog != nullptr)
    {
        m_pInfo->Show(g_pPartCatalog->Find(FIRST_PART_SHOWN, PART_HULL));
    }
    ShowFunds();
}

Shop::~Shop()
{
    ClearDropTargets();
    s_pShip = nullptr;
    s_pCursor = nullptr;
}

Part* Shop::FindPart(const PartEntry& p_line)
{
    return g_pPartCatalog != nullptr ? g_pPartCatalog->Find(p_line.GetPartName().c_str(), p_line.GetPartKind())
                                     : nullptr;
}

void Shop::ShowFunds()
{
    m_pFunds->Show(s_pShip != nullptr ? s_pShip->GetPilot().GetMoney() : 0);
}

void Shop::ShowNotice()
{
    s_noticeTime = NOTICE_SECONDS;
}

void Shop::PickUp(const PartEntry& p_line, ShopPanel* p_source, bool p_draggable)
{
    m_pInfo->Show(FindPart(p_line));
    if (!p_draggable)
    {
        return;
    }
    m_pDragged = p_line.Copy();
    m_pDragged->StartDrag();
    m_pDragSource = p_source;
    const int32_t width = m_pDragged->GetWidth() + 2 * BACKING_MARGIN_X;
    const int32_t height = m_pDragged->GetHeight() + 2 * BACKING_MARGIN_Y;
    m_pDragBacking->Load(BACKING_RGBA[0], BACKING_RGBA[1], BACKING_RGBA[2], BACKING_RGBA[3], nullptr);
    m_pDragBacking->SetSize(width, height);
    m_pDragFrame->Load(FRAME_RGBA[0], FRAME_RGBA[1], FRAME_RGBA[2], FRAME_RGBA[3], nullptr);
    m_pDragFrame->SetSize(width + 2, height + 2);
}

bool Shop::BuyAmmo(int p_pack)
{
    if (s_pShip == nullptr || p_pack < 0 || p_pack >= NUM_AMMO_PACKS)
    {
        return false;
    }
    Pilot& pilot = s_pShip->GetPilot();
    if (pilot.GetMoney() < AMMO_PACK_PRICE)
    {
        ShowNotice();
        return false;
    }
    pilot.AddMoney(-AMMO_PACK_PRICE);
    const uint16_t counts[] = {pilot.GetBullets(), pilot.GetEnergy(), pilot.GetMissiles()};
    const auto count = static_cast<uint16_t>(std::min<int>(MAX_ROUNDS, counts[p_pack] + PACK_ROUNDS[p_pack]));
    if (p_pack == 0)
    {
        pilot.SetBullets(count);
    }
    else if (p_pack == 1)
    {
        pilot.SetEnergy(count);
    }
    else
    {
        pilot.SetMissiles(count);
    }
    ShowFunds();
    m_pShip->Refresh();
    return true;
}

ShopPanel* Shop::PanelOf(DropTarget* p_target) const
{
    for (ShopPanel* panel : {static_cast<ShopPanel*>(m_pForSale.get()), static_cast<ShopPanel*>(m_pInventory.get()),
                             static_cast<ShopPanel*>(m_pShip.get())})
    {
        if (static_cast<DropTarget*>(panel) == p_target)
        {
            return panel;
        }
    }
    return nullptr;
}

void Shop::Buy(const PartEntry& p_item, ShopPanel* p_target)
{
    // Let go over the stock itself or beside every panel: nothing was bought.
    const Part* part = FindPart(p_item);
    if (p_target == nullptr || p_target == m_pForSale.get() || part == nullptr || s_pShip == nullptr)
    {
        return;
    }
    // Refused before paying: the ship has no place for a power plant or a copilot.
    if (!p_target->CanAccept(p_item))
    {
        return;
    }
    Pilot& pilot = s_pShip->GetPilot();
    if (static_cast<uint32_t>(pilot.GetMoney()) < static_cast<uint32_t>(part->GetPrice()))
    {
        ShowNotice();
        return;
    }
    pilot.AddMoney(-static_cast<int64_t>(part->GetPrice()));
    p_target->Accept(p_item);
}

void Shop::Drop(ShopPanel* p_target)
{
    const PartEntry& item = *m_pDragged;
    if (m_pDragSource == m_pForSale.get())
    {
        Buy(item, p_target);
    }
    else if (m_pDragSource == m_pInventory.get())
    {
        if (p_target != nullptr && p_target != m_pInventory.get() && p_target->Accept(item))
        {
            m_pInventory->RemovePart(item.GetPartName(), item.GetPartKind());
        }
    }
    else if (m_pDragSource == m_pShip.get())
    {
        m_pShip->DropWeapon(item, p_target);
    }
    ShowFunds();
}

bool Shop::Update(float p_dt)
{
    m_pDone->Update(p_dt);
    m_pFunds->Update(p_dt);
    m_pForSale->Update(p_dt);
    m_pInventory->Update(p_dt);
    m_pInfo->Update(p_dt);
    m_pShip->Update(p_dt);

    if (m_pDragged)
    {
        m_pDragged->Update(p_dt);
        DropTarget* target = nullptr;
        if (m_pDragged->FindDropTarget(target))
        {
            Drop(PanelOf(target));
            m_pDragged.reset();
            m_pDragSource = nullptr;
        }
    }
    s_noticeTime = std::max(0.0f, s_noticeTime - p_dt);

    int32_t click = CLICK_NONE;
    m_pDone->GetClick(&click);
    if (click == CLICK_NONE)
    {
        return false;
    }
    if (s_pShip != nullptr)
    {
        s_pShip->SaveRecord();
    }
    return true;
}

bool Shop::Render()
{
    if (m_pBackground != nullptr && ui::HasPicture(*m_pBackground))
    {
        m_pBackground->Draw(0.0, 0.0, 0.0, false);
    }
    m_pTitle->Render();
    m_pFunds->Render();
    m_pForSale->Render();
    m_pInventory->Render();
    m_pInfo->Render();
    m_pShip->Render();
    m_pDone->Render();
    if (m_pDragged)
    {
        const double x = m_pDragged->GetX() - BACKING_MARGIN_X;
        const double y = m_pDragged->GetY() - BACKING_MARGIN_Y;
        m_pDragFrame->Draw(x - 1.0, y - 1.0, 0.0, true);
        m_pDragBacking->Draw(x, y, 0.0, true);
        m_pDragged->Render();
    }
    if (s_noticeTime > 0.0f)
    {
        m_pNotice->Render();
    }
    return true;
}
