#pragma once

#include <cstdint>
#include <memory>

#include "ui/Draggable.h"
#include "ui/InputObject.h"

class FramedBox;
class PartEntry;
class Shop;
class StaticText;

// A panel of the shop that part lines can be dropped on: it takes a drop when the cursor is
// let go inside its area, and Accept does what dropping a part there means (sell, keep, fit).
class ShopPanel : public InputObject, public DropTarget
{
public:
    explicit ShopPanel(Shop& p_shop);
    ~ShopPanel() override;

    bool TakesDrop(Draggable* p_item) override;
    bool Contains(int32_t p_x, int32_t p_y) const;
    // Whether dropping the part here would do anything; nothing is charged for a drop that
    // would not. By default: whether the catalogue knows the part.
    virtual bool CanAccept(const PartEntry& p_item) const;
    // Does what the drop means; false when nothing happened (an unknown part).
    virtual bool Accept(const PartEntry& p_item) = 0;

protected:
    // The area that takes drops, relative to the panel's position.
    void SetArea(int32_t p_x, int32_t p_y, int32_t p_width, int32_t p_height);
    // The translucent grey box of the panels, p_width x p_height at the panel's position.
    void MakeBox(int32_t p_width, int32_t p_height);
    // Whether the left button went down since the last call, with the cursor in p_x, p_y.
    bool WasJustPressed(int32_t& p_x, int32_t& p_y);

    Shop& m_shop;
    std::unique_ptr<FramedBox> m_pBox;

private:
    int32_t m_areaX = 0;
    int32_t m_areaY = 0;
    int32_t m_areaWidth = 0;
    int32_t m_areaHeight = 0;
    bool m_lastButtonDown;
};

// "Funds:" and the player's money.
class FundsPanel : public InputObject
{
public:
    explicit FundsPanel(Cursor* p_pCursor);
    ~FundsPanel() override;

    void SetPosition(float p_x, float p_y) override;
    bool Update(float p_dt) override;
    bool Render() override;
    // Shows the money as "$%u".
    void Show(int32_t p_money);

    const StaticText& GetValue() const { return *m_pValue; }

private:
    std::unique_ptr<StaticText> m_pLabel;
    std::unique_ptr<StaticText> m_pValue;
};

// The shop's shared look.
namespace shopstyle
{
constexpr uint8_t BOX_GREY = 150;
constexpr uint8_t BOX_ALPHA = 130;
// The corner size of the panels' boxes, as a share of the box pictures.
constexpr float BOX_SCALE = 0.65f;
// Headings over the panels.
void MakeHeading(StaticText& p_text, const char* p_caption, int32_t p_size, double p_x, double p_y);
} // namespace shopstyle
