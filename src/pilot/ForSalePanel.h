#pragma once

#include <array>
#include <memory>
#include <vector>

#include "pilot/Shop.h"
#include "pilot/ShopPanel.h"

class Button;
class PartList;
class ShopList;

// What the shop sells: a button per part kind it has names of, each opening the list of those
// names, and the three ammunition packs. Parts dropped here are sold back for a third of their
// price.
class ForSalePanel : public ShopPanel
{
public:
    static constexpr int NUM_AMMO_PACKS = Shop::NUM_AMMO_PACKS;
    static constexpr int32_t WIDTH = 200;
    static constexpr int32_t HEIGHT = 435;
    static constexpr int32_t BUTTON_WIDTH = 120;
    static constexpr int32_t BUTTON_HEIGHT = 33;
    static constexpr int32_t BUTTON_SPACING = 37;
    // Relative to the panel: the first kind button, the list, the ammunition buttons.
    static constexpr int32_t BUTTON_X = (WIDTH - BUTTON_WIDTH) / 2;
    static constexpr int32_t FIRST_KIND_Y = 45;
    static constexpr int32_t LIST_X = 12;
    static constexpr int32_t LIST_Y = 42;
    static constexpr int LIST_LINES = 8;
    static constexpr int32_t LINE_HEIGHT = 18;
    static constexpr int32_t BACK_WIDTH = 100;
    static constexpr int32_t BACK_HEIGHT = 30;
    static constexpr int32_t BACK_Y = 232;
    static constexpr int32_t AMMO_HEADING_Y = 276;
    static constexpr int32_t FIRST_AMMO_Y = 302;

    ForSalePanel(Shop& p_shop, const ShopList& p_list, float p_x, float p_y);
    ~ForSalePanel() override;

    bool Update(float p_dt) override;
    bool Render() override;
    // Sells: a third of the part's price, rounded down, is added to the money.
    bool Accept(const PartEntry& p_item) override;

    // Shows the names of a kind (replacing the kind buttons) or, with NO_LIST, the buttons again.
    void Open(int p_kind);
    static constexpr int NO_LIST = -1;

    int GetOpenKind() const { return m_openKind; }
    // The button of a kind, null when the shop sells none of that kind.
    Button* GetKindButton(int p_kind) const;
    Button* GetAmmoButton(int p_pack) const { return m_pAmmoButtons[p_pack].get(); }
    Button* GetBackButton() const { return m_pBack.get(); }
    PartList& GetList() const { return *m_pList; }
    const StaticText& GetHeading() const { return *m_pHeading; }

private:
    struct KindButton
    {
        int kind;
        std::unique_ptr<Button> button;
    };

    const ShopList& m_shopList;
    std::unique_ptr<StaticText> m_pHeading;
    std::vector<KindButton> m_kindButtons;
    std::unique_ptr<PartList> m_pList;
    std::unique_ptr<Button> m_pBack;
    std::unique_ptr<StaticText> m_pAmmoHeading;
    std::array<std::unique_ptr<Button>, NUM_AMMO_PACKS> m_pAmmoButtons;
    int m_openKind;
};
