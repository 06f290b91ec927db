#include "pilot/ForSalePanel.h"

#include "pilot/PartList.h"
#include "pilot/Shop.h"
#include "pilot/ShopList.h"
#include "sim/PlayerShip.h"
#include "ui/Button.h"
#include "ui/FramedBox.h"
#include "ui/MenuButton.h"
#include "ui/StaticObjects.h"

namespace
{
const char* const BUTTON_UP = "art\\button_up.bmp";
const char* const BUTTON_DOWN = "art\\button_down.bmp";
constexpr int32_t BUTTON_FONT_SIZE = 10;
constexpr int32_t HEADING_SIZE = 16;
constexpr int32_t HEADING_X = 12;
constexpr int32_t HEADING_Y = 10;
constexpr const char* TITLE = "Parts For Sale";
const char* const CATEGORIES[NUM_PART_KINDS] = {"Hulls", "Engines", "Shields", "Power Plants", "Copilots", "Weapons"};
const char* const PACKS[ForSalePanel::NUM_AMMO_PACKS] = {"Bullets (100 pack)", "Energy (50 pack)",
                                                          "Missiles (25 pack)"};
} // namespace

ForSalePanel::ForSalePanel(Shop& p_shop, const ShopList& p_list, float p_x, float p_y)
    : ShopPanel(p_shop), m_shopList(p_list), m_pHeading(std::make_unique<StaticText>()),
      m_pAmmoHeading(std::make_unique<StaticText>()), m_openKind(NO_LIST)
{
    SetPosition(p_x, p_y);
    SetArea(0, 0, WIDTH, HEIGHT);
    MakeBox(WIDTH, HEIGHT);
    shopstyle::MakeHeading(*m_pHeading, TITLE, HEADING_SIZE, p_x + HEADING_X, p_y + HEADING_Y);

    const float buttonX = p_x + BUTTON_X;
    float y = p_y + FIRST_KIND_Y;
    for (int kind = 0; kind < NUM_PART_KINDS; ++kind)
    {
        if (m_shopList.GetCount(kind) == 0)
        {
            continue;
        }
        m_kindButtons.push_back(KindButton{kind, ui::MakeMenuButton(m_pCursor, BUTTON_UP, BUTTON_DOWN, CATEGORIES[kind],
                                                                     BUTTON_FONT_SIZE, static_cast<int32_t>(buttonX),
                                                                     static_cast<int32_t>(y), BUTTON_WIDTH,
                                                                     BUTTON_HEIGHT)});
        y += BUTTON_SPACING;
    }

    m_pList = std::make_unique<PartList>(m_pCursor, LIST_LINES, LINE_HEIGHT, WIDTH - 2 * LIST_X);
    m_pList->SetPosition(p_x + LIST_X, p_y + LIST_Y);
    m_pBack = ui::MakeMenuButton(m_pCursor, BUTTON_UP, BUTTON_DOWN, "Back", BUTTON_FONT_SIZE,
                                 static_cast<int32_t>(p_x) + (WIDTH - BACK_WIDTH) / 2,
                                 static_cast<int32_t>(p_y) + BACK_Y, BACK_WIDTH, BACK_HEIGHT);

    shopstyle::MakeHeading(*m_pAmmoHeading, "Ammo", HEADING_SIZE, p_x + HEADING_X, p_y + AMMO_HEADING_Y);
    for (int pack = 0; pack < NUM_AMMO_PACKS; ++pack)
    {
        m_pAmmoButtons[pack] = ui::MakeMenuButton(m_pCursor, BUTTON_UP, BUTTON_DOWN, PACKS[pack], BUTTON_FONT_SIZE,
                                                  static_cast<int32_t>(buttonX),
                                                  static_cast<int32_t>(p_y) + FIRST_AMMO_Y + pack * BUTTON_SPACING,
                                                  BUTTON_WIDTH, BUTTON_HEIGHT);
    }
}

ForSalePanel::~ForSalePanel() = default;

Button* ForSalePanel::GetKindButton(int p_kind) const
{
    for (const KindButton& entry : m_kindButtons)
    {
        if (entry.kind == p_kind)
        {
            return entry.button.get();
        }
    }
    return nullptr;
}

void ForSalePanel::Open(int p_kind)
{
    m_openKind = p_kind >= 0 && p_kind < NUM_PART_KINDS ? p_kind : NO_LIST;
    m_pList->Clear();
    if (m_openKind == NO_LIST)
    {
        m_pHeading->SetText(TITLE);
        return;
    }
    m_pHeading->SetText(CATEGORIES[m_openKind]);
    for (const std::string& name : m_shopList.GetNames(m_openKind))
    {
        m_pList->Add(name, m_openKind, name);
    }
    m_pList->Scroll(-m_pList->GetCount());
}

bool ForSalePanel::Update(float p_dt)
{
    int32_t x = 0;
    int32_t y = 0;
    const bool pressed = WasJustPressed(x, y);
    int32_t click = CLICK_NONE;
    if (m_openKind == NO_LIST)
    {
        for (const KindButton& entry : m_kindButtons)
        {
            entry.button->Update(p_dt);
            entry.button->GetClick(&click);
            if (click != CLICK_NONE)
            {
                Open(entry.kind);
                break;
            }
        }
    }
    else
    {
        m_pList->Update(p_dt);
        m_pBack->Update(p_dt);
        m_pBack->GetClick(&click);
        if (click != CLICK_NONE)
        {
            Open(NO_LIST);
        }
        else if (PartEntry* entry = pressed ? m_pList->EntryAt(x, y) : nullptr)
        {
            m_shop.PickUp(*entry, this, true);
        }
    }
    for (int pack = 0; pack < NUM_AMMO_PACKS; ++pack)
    {
        m_pAmmoButtons[pack]->Update(p_dt);
        m_pAmmoButtons[pack]->GetClick(&click);
        if (click != CLICK_NONE)
        {
            m_shop.BuyAmmo(pack);
        }
    }
    return true;
}

bool ForSalePanel::Render()
{
    m_pBox->Render();
    m_pHeading->Render();
    if (m_openKind == NO_LIST)
    {
        for (const KindButton& entry : m_kindButtons)
        {
            entry.button->Render();
        }
    }
    else
    {
        m_pList->Render();
        m_pBack->Render();
    }
    m_pAmmoHeading->Render();
    for (const auto& button : m_pAmmoButtons)
    {
        button->Render();
    }
    return true;
}

bool ForSalePanel::Accept(const PartEntry& p_item)
{
    const Part* part = Shop::FindPart(p_item);
    if (part == nullptr || Shop::s_pShip == nullptr)
    {
        return false;
    }
    Shop::s_pShip->GetPilot().AddMoney(part->GetPrice() / 3);
    return true;
}
