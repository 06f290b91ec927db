#pragma once

#include <memory>
#include <string>

#include "pilot/ShopPanel.h"

class PartList;

// The pilot's spare parts, one line "(quantity) name" each, newest first. Parts dropped here
// are kept: bought ones after they were paid for, fitted ones taken off the ship.
class InventoryPanel : public ShopPanel
{
public:
    static constexpr int32_t WIDTH = 200;
    static constexpr int32_t HEIGHT = 635;
    static constexpr int32_t LIST_X = 12;
    static constexpr int32_t LIST_Y = 42;
    static constexpr int LIST_LINES = 30;
    static constexpr int32_t LINE_HEIGHT = 18;

    InventoryPanel(Shop& p_shop, float p_x, float p_y);
    ~InventoryPanel() override;

    bool Update(float p_dt) override;
    bool Render() override;
    // One more of the part.
    bool Accept(const PartEntry& p_item) override;

    // One more of a part; false when the catalogue does not know it.
    bool AddPart(const std::string& p_name, int p_kind);
    // One less of a part; the line goes with the last one.
    void RemovePart(const std::string& p_name, int p_kind);
    // The lines again from the inventory.
    void Rebuild();

    PartList& GetList() const { return *m_pList; }

private:
    std::unique_ptr<StaticText> m_pHeading;
    std::unique_ptr<StaticText> m_pEmpty;
    std::unique_ptr<PartList> m_pList;
};
