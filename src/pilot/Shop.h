#pragma once

#include <cstdint>
#include <memory>

#include "pilot/ShopList.h"

class Button;
class Cursor;
class DropTarget;
class ForSalePanel;
class FundsPanel;
class Image;
class InventoryPanel;
class Part;
class PartEntry;
class PartInfoPanel;
class PlayerShip;
class ShipPanel;
class ShopPanel;
class StaticText;

// Between missions the player fits the ship here with the money earned: parts are bought,
// sold, kept and fitted by dragging their names between the panels, and ammunition is bought
// in packs. Money, ammunition, inventory and fitted parts change at once; "Done" saves the
// pilot and closes the shop.
class Shop
{
public:
    static constexpr int32_t AMMO_PACK_PRICE = 500;
    static constexpr float NOTICE_SECONDS = 2.0f;
    // Bullets, energy and missiles in a pack.
    static constexpr int NUM_AMMO_PACKS = 3;
    static constexpr uint16_t PACK_ROUNDS[NUM_AMMO_PACKS] = {100, 50, 25};
    static constexpr const char* FIRST_PART_SHOWN = "Cargo Hull";

    // Reads the shop file (a file that does not read leaves less or nothing for sale) and
    // lays out the panels. The drop targets become the shop's panels alone.
    Shop(const char* p_fileName, Image* p_background, PlayerShip* p_ship, Cursor* p_cursor);
    ~Shop();
    Shop(const Shop&) = delete;
    Shop& operator=(const Shop&) = delete;

    // One frame: the panels and "Done" read the cursor, a part being dragged follows it and
    // takes effect where it is let go. True once "Done" was pressed, after the pilot was saved.
    bool Update(float p_dt);
    bool Render();

    // What the panels ask of the shop.
    // Shows the part of a line and, when p_draggable, starts dragging a copy of the line.
    void PickUp(const PartEntry& p_line, ShopPanel* p_source, bool p_draggable);
    // A pack of ammunition (0 bullets, 1 energy, 2 missiles) for $500; false, with the notice,
    // when the money is short.
    bool BuyAmmo(int p_pack);
    void ShowNotice();
    InventoryPanel& GetInventoryPanel() const { return *m_pInventory; }

    // The catalogue's part of a line, or null.
    static Part* FindPart(const PartEntry& p_line);

    const ShopList& GetList() const { return m_list; }
    ForSalePanel& GetForSalePanel() const { return *m_pForSale; }
    ShipPanel& GetShipPanel() const { return *m_pShip; }
    PartInfoPanel& GetInfoPanel() const { return *m_pInfo; }
    const FundsPanel& GetFundsPanel() const { return *m_pFunds; }
    Button* GetDoneButton() const { return m_pDone.get(); }
    const StaticText& GetTitle() const { return *m_pTitle; }
    // The line being dragged, or null.
    const PartEntry* GetDragged() const { return m_pDragged.get(); }
    // Seconds the "Insufficient Funds!" notice still shows.
    static float GetNoticeTime() { return s_noticeTime; }

    // For the panels: the player's ship and the shared cursor of the open shop.
    static PlayerShip* s_pShip;
    static Cursor* s_pCursor;

private:
    // A line let go over p_target (null: over no panel).
    void Drop(ShopPanel* p_target);
    void Buy(const PartEntry& p_item, ShopPanel* p_target);
    ShopPanel* PanelOf(DropTarget* p_target) const;
    void ShowFunds();

    ShopList m_list;
    std::unique_ptr<Button> m_pDone;
    Image* m_pBackground; // not owned
    std::unique_ptr<StaticText> m_pTitle;
    std::unique_ptr<FundsPanel> m_pFunds;
    std::unique_ptr<ForSalePanel> m_pForSale;
    std::unique_ptr<InventoryPanel> m_pInventory;
    std::unique_ptr<PartInfoPanel> m_pInfo;
    std::unique_ptr<ShipPanel> m_pShip;
    std::unique_ptr<StaticText> m_pNotice;
    std::unique_ptr<PartEntry> m_pDragged;
    ShopPanel* m_pDragSource;
    // Drawn under the dragged name, so it reads over whatever it passes: a plate in a frame.
    std::unique_ptr<Image> m_pDragFrame;
    std::unique_ptr<Image> m_pDragBacking;

    // The notice outlives any one shop: closing and opening the shop does not cut it short.
    static float s_noticeTime;
};
