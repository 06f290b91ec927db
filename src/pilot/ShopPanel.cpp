#include "pilot/ShopPanel.h"

#include "gfx/Font.h"
#include "pilot/PartList.h"
#include "pilot/Shop.h"
#include "ui/FramedBox.h"
#include "ui/StaticObjects.h"
#include "ui/UiDraw.h"

#include <cstdio>

namespace
{
// Where the money stands right of "Funds:".
constexpr int32_t FUNDS_VALUE_X = 80;
} // namespace

void shopstyle::MakeHeading(StaticText& p_text, const char* p_caption, int32_t p_size, double p_x, double p_y)
{
    p_text.SetFont("Tahoma", p_size, 0);
    p_text.SetColor(1.0, 1.0, 1.0, 1.0);
    p_text.SetText(p_caption);
    p_text.SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
}

ShopPanel::ShopPanel(Shop& p_shop) : InputObject(Shop::s_pCursor), m_shop(p_shop), m_lastButtonDown(false)
{
    int32_t x = 0;
    int32_t y = 0;
    // A press that was already down when the panel appeared is not the player's pick.
    m_lastButtonDown = ui::ReadCursor(m_pCursor, x, y);
}

ShopPanel::~ShopPanel() = default;

void ShopPanel::SetArea(int32_t p_x, int32_t p_y, int32_t p_width, int32_t p_height)
{
    m_areaX = p_x;
    m_areaY = p_y;
    m_areaWidth = p_width;
    m_areaHeight = p_height;
}

void ShopPanel::MakeBox(int32_t p_width, int32_t p_height)
{
    m_pBox = std::make_unique<FramedBox>();
    m_pBox->SetScale(shopstyle::BOX_SCALE);
    m_pBox->SetSize(p_width, p_height);
    m_pBox->SetColor(shopstyle::BOX_GREY, shopstyle::BOX_GREY, shopstyle::BOX_GREY, shopstyle::BOX_ALPHA);
    m_pBox->SetPosition(static_cast<float>(GetX()), static_cast<float>(GetY()));
}

bool ShopPanel::Contains(int32_t p_x, int32_t p_y) const
{
    const int32_t left = ui::Whole(GetX()) + m_areaX;
    const int32_t top = ui::Whole(GetY()) + m_areaY;
    return left <= p_x && p_x < left + m_areaWidth && top <= p_y && p_y < top + m_areaHeight;
}

bool ShopPanel::TakesDrop(Draggable* p_item)
{
    int32_t x = 0;
    int32_t y = 0;
    ui::ReadCursor(p_item != nullptr ? p_item->GetCursor() : nullptr, x, y);
    return p_item != nullptr && Contains(x, y);
}

bool ShopPanel::CanAccept(const PartEntry& p_item) const
{
    return Shop::FindPart(p_item) != nullptr;
}

bool ShopPanel::WasJustPressed(int32_t& p_x, int32_t& p_y)
{
    const bool down = ui::ReadCursor(m_pCursor, p_x, p_y);
    const bool pressed = down && !m_lastButtonDown;
    m_lastButtonDown = down;
    return pressed;
}

FundsPanel::FundsPanel(Cursor* p_pCursor)
    : InputObject(p_pCursor), m_pLabel(std::make_unique<StaticText>()), m_pValue(std::make_unique<StaticText>())
{
    shopstyle::MakeHeading(*m_pLabel, "Funds:", 16, 0.0, 0.0);
    m_pValue->SetFont("Tahoma", 16, FONT_BOLD);
    m_pValue->SetColor(0.6, 1.0, 0.6, 1.0);
}

FundsPanel::~FundsPanel() = default;

void FundsPanel::SetPosition(float p_x, float p_y)
{
    InputObject::SetPosition(p_x, p_y);
    m_pLabel->SetPosition(p_x, p_y);
    m_pValue->SetPosition(p_x + FUNDS_VALUE_X, p_y);
}

bool FundsPanel::Update(float p_dt)
{
    (void)p_dt;
    return true;
}

bool FundsPanel::Render()
{
    m_pLabel->Render();
    m_pValue->Render();
    return true;
}

void FundsPanel::Show(int32_t p_money)
{
    char text[32];
    std::snprintf(text, sizeof(text), "$%u", static_cast<unsigned>(p_money));
    m_pValue->SetText(text);
}
