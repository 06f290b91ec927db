#include "mission/HudLayout.h"

#include "app/Application.h"
#include "gfx/Camera.h"
#include "mission/Radar.h"

namespace
{
constexpr int32_t SCREEN_WIDTH = Application::SCREEN_WIDTH;
constexpr int32_t SCREEN_HEIGHT = Application::SCREEN_HEIGHT;

// Column and row of each slot on the editor's 3 x 3 grid.
constexpr HudAlign SLOT_COLUMNS[Settings::NUM_HUD_SLOTS] = {HudAlign::LOW,  HudAlign::CENTRE, HudAlign::HIGH,
                                                            HudAlign::LOW,  HudAlign::HIGH,   HudAlign::LOW,
                                                            HudAlign::CENTRE, HudAlign::HIGH};
constexpr HudAlign SLOT_ROWS[Settings::NUM_HUD_SLOTS] = {HudAlign::LOW,  HudAlign::LOW,  HudAlign::LOW,
                                                         HudAlign::CENTRE, HudAlign::CENTRE, HudAlign::HIGH,
                                                         HudAlign::HIGH, HudAlign::HIGH};

// Where a piece of p_size starts along an axis of p_length when it keeps to p_align.
int32_t Start(HudAlign p_align, int32_t p_size, int32_t p_length)
{
    switch (p_align)
    {
    case HudAlign::LOW:
        return 0;
    case HudAlign::HIGH:
        return p_length - p_size;
    default:
        return (p_length - p_size) / 2;
    }
}

// The radar's dial centre along an axis and the plate's reach before and after it. The
// plate's flush side reaches exactly to the dial's place in the picture (p_flush), its round
// side further (Radar::PLATE_REACH); in the middle of an edge both sides are round.
void RadarAxis(HudAlign p_align, int32_t p_flush, int32_t p_length, int32_t& p_centre, int32_t& p_low, int32_t& p_high)
{
    switch (p_align)
    {
    case HudAlign::LOW:
        p_centre = p_flush;
        p_low = p_flush;
        p_high = Radar::PLATE_REACH;
        break;
    case HudAlign::HIGH:
        p_centre = p_length - p_flush;
        p_low = Radar::PLATE_REACH;
        p_high = p_flush;
        break;
    default:
        p_centre = p_length / 2;
        p_low = Radar::PLATE_REACH;
        p_high = Radar::PLATE_REACH;
        break;
    }
}
} // namespace

bool HudLayout::Rect::Overlaps(const Rect& p_other) const
{
    return left < p_other.right && p_other.left < right && top < p_other.bottom && p_other.top < bottom;
}

HudLayout::HudLayout(const Settings::HudSlots& p_slots)
    : m_slots(Settings::IsValidHudSlots(p_slots) ? p_slots : Settings::DEFAULT_HUD_SLOTS)
{
    PlaceRadar();
    PlaceStatus();
    PlaceMoney();
    PlaceMessages();
}

HudLayout::Rect HudLayout::GetShipRoom()
{
    const int32_t x = SCREEN_WIDTH / 2;
    const int32_t y = SCREEN_HEIGHT / 2 + static_cast<int32_t>(Camera::LEAD);
    return Rect{x - SHIP_ROOM, y - SHIP_ROOM, x + SHIP_ROOM, y + SHIP_ROOM};
}

HudAlign HudLayout::Column(int32_t p_slot)
{
    return p_slot >= 0 && p_slot < Settings::NUM_HUD_SLOTS ? SLOT_COLUMNS[p_slot] : HudAlign::LOW;
}

HudAlign HudLayout::Row(int32_t p_slot)
{
    return p_slot >= 0 && p_slot < Settings::NUM_HUD_SLOTS ? SLOT_ROWS[p_slot] : HudAlign::LOW;
}

void HudLayout::PlaceRadar()
{
    const int32_t slot = m_slots[Settings::HUD_RADAR];
    m_radar.horizontal = Column(slot);
    m_radar.vertical = Row(slot);
    int32_t before = 0;
    int32_t after = 0;
    RadarAxis(m_radar.horizontal, Radar::CENTRE_X, SCREEN_WIDTH, m_radar.centreX, before, after);
    m_radar.box.left = m_radar.centreX - before;
    m_radar.box.right = m_radar.centreX + after;
    RadarAxis(m_radar.vertical, Radar::CENTRE_Y, SCREEN_HEIGHT, m_radar.centreY, before, after);
    m_radar.box.top = m_radar.centreY - before;
    m_radar.box.bottom = m_radar.centreY + after;
}

void HudLayout::PlaceStatus()
{
    const int32_t slot = m_slots[Settings::HUD_STATUS];
    m_status.left = Start(Column(slot), STATUS_WIDTH, SCREEN_WIDTH);
    m_status.top = Start(Row(slot), STATUS_HEIGHT, SCREEN_HEIGHT);
    m_status.right = m_status.left + STATUS_WIDTH;
    m_status.bottom = m_status.top + STATUS_HEIGHT;
}

void HudLayout::PlaceMoney()
{
    m_money = Rect{MONEY_X, MONEY_Y, MONEY_X + MONEY_WIDTH, MONEY_Y + MONEY_HEIGHT};
    // Moved right past whatever piece covers it; the pieces are far narrower than the screen.
    for (bool moved = true; moved;)
    {
        moved = false;
        for (const Rect& piece : {m_radar.box, m_status})
        {
            if (m_money.Overlaps(piece))
            {
                m_money.left = piece.right + EDGE_MARGIN;
                m_money.right = m_money.left + MONEY_WIDTH;
                moved = true;
            }
        }
    }
}

void HudLayout::PlaceMessages()
{
    const int32_t slot = m_slots[Settings::HUD_MESSAGES];
    m_messages.horizontal = Column(slot);
    m_messages.vertical = Row(slot);
    int32_t left = 0;
    switch (m_messages.horizontal)
    {
    case HudAlign::LOW:
        m_messages.width = SIDE_MESSAGE_WIDTH;
        m_messages.x = EDGE_MARGIN;
        left = EDGE_MARGIN;
        break;
    case HudAlign::HIGH:
        m_messages.width = SIDE_MESSAGE_WIDTH;
        m_messages.x = SCREEN_WIDTH - EDGE_MARGIN;
        left = m_messages.x - SIDE_MESSAGE_WIDTH;
        break;
    default:
        m_messages.width = MESSAGE_WIDTH;
        m_messages.x = MESSAGE_X;
        left = MESSAGE_X;
        break;
    }
    const bool upwards = m_messages.vertical == HudAlign::HIGH;
    switch (m_messages.vertical)
    {
    case HudAlign::LOW:
        m_messages.y = MESSAGE_Y;
        break;
    case HudAlign::HIGH:
        m_messages.y = SCREEN_HEIGHT - MESSAGE_Y;
        break;
    default:
        m_messages.y = (SCREEN_HEIGHT - MESSAGE_ROOM) / 2;
        break;
    }
    // The room of the first messages, moved on past each piece (or the money, or the ship) in
    // its way.
    for (bool moved = true; moved;)
    {
        moved = false;
        const int32_t right = left + m_messages.width;
        const Rect room = upwards ? Rect{left, m_messages.y - MESSAGE_ROOM, right, m_messages.y}
                                  : Rect{left, m_messages.y, right, m_messages.y + MESSAGE_ROOM};
        for (const Rect& obstacle : {m_radar.box, m_status, m_money, GetShipRoom()})
        {
            if (room.Overlaps(obstacle))
            {
                m_messages.y = upwards ? obstacle.top - CLEARANCE : obstacle.bottom + CLEARANCE;
                moved = true;
                break;
            }
        }
    }
}
