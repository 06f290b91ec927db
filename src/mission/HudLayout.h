#pragma once

#include "app/Settings.h"

#include <array>
#include <cstdint>

// Which way a HUD piece keeps to the screen along one axis: against the low edge (left or
// top), in the middle, or against the high edge (right or bottom).
enum class HudAlign
{
    LOW,
    CENTRE,
    HIGH,
};

// Where the HUD's pieces go on the 1024 x 768 screen for the slots the player chose. The
// eight slots are those of the options menu's layout editor, whose picture is the screen in
// small: its 3 x 3 grid without the middle, so each slot is a corner or the middle of an edge,
//
//     0  1  2
//     3     4
//     5  6  7
//
// and a piece in a slot lies flush with the screen edges the slot touches and centred along
// the others. The radar in slot 0 and the status panel in slot 2 are the classic corners.
//
// The messages keep clear of the radar, the status panel, the money and the player's ship
// (which the camera always shows at the same place); the money keeps its place in the
// bottom-left corner unless a piece lies there, and then stands right of it.
class HudLayout
{
public:
    // Half-open: [left, right) x [top, bottom).
    struct Rect
    {
        int32_t left = 0;
        int32_t top = 0;
        int32_t right = 0;
        int32_t bottom = 0;

        bool Overlaps(const Rect& p_other) const;
        bool operator==(const Rect&) const = default;
    };
    // The radar: its dial's centre on the screen, how its plate meets the screen edges, and
    // what the plate covers.
    struct RadarPlace
    {
        int32_t centreX = 0;
        int32_t centreY = 0;
        HudAlign horizontal = HudAlign::LOW;
        HudAlign vertical = HudAlign::LOW;
        Rect box;
    };
    // The messages, newest nearest the edge their slot touches. x is where each message's
    // text starts, or for HIGH where its widest line ends; y is the top of the newest message
    // (LOW and CENTRE: the older ones below it) or the bottom of the newest (HIGH: the older
    // ones above it). Messages wrap at width: narrower beside the screen's middle, so that
    // they stay clear of the middle of the screen, where the player's ship is.
    struct MessagePlace
    {
        HudAlign horizontal = HudAlign::CENTRE;
        HudAlign vertical = HudAlign::LOW;
        int32_t x = 0;
        int32_t y = 0;
        int32_t width = 0;
    };

    // The status panel's picture.
    static constexpr int32_t STATUS_WIDTH = 160;
    static constexpr int32_t STATUS_HEIGHT = 88;
    // Where the messages begin with nothing in their way (centred: x 256 to 768).
    static constexpr int32_t MESSAGE_X = 256;
    static constexpr int32_t MESSAGE_Y = 40;
    static constexpr int32_t MESSAGE_WIDTH = 512;
    // The wrap width of messages at the left or right edge.
    static constexpr int32_t SIDE_MESSAGE_WIDTH = 384;
    // Distance of the messages from a side edge, and of the money from the left edge.
    static constexpr int32_t EDGE_MARGIN = 25;
    // The room looked at for the first messages, and their distance from a piece in the way.
    static constexpr int32_t MESSAGE_ROOM = 150;
    static constexpr int32_t CLEARANCE = 16;
    static constexpr int32_t MONEY_X = 25;
    static constexpr int32_t MONEY_Y = 700;
    // Enough for "Money: $" and the largest amount.
    static constexpr int32_t MONEY_WIDTH = 200;
    static constexpr int32_t MONEY_HEIGHT = 20;
    // Half the side of the square around the player's ship that messages leave free.
    static constexpr int32_t SHIP_ROOM = 48;

    explicit HudLayout(const Settings::HudSlots& p_slots = Settings::DEFAULT_HUD_SLOTS);

    static HudAlign Column(int32_t p_slot);
    static HudAlign Row(int32_t p_slot);

    const Settings::HudSlots& GetSlots() const { return m_slots; }
    const RadarPlace& GetRadar() const { return m_radar; }
    // The status panel's picture's top-left corner is the box's.
    const Rect& GetStatus() const { return m_status; }
    const MessagePlace& GetMessages() const { return m_messages; }
    // The money text's top-left corner is the box's.
    const Rect& GetMoney() const { return m_money; }
    // Where the player's ship shows.
    static Rect GetShipRoom();

private:
    void PlaceRadar();
    void PlaceStatus();
    void PlaceMoney();
    void PlaceMessages();

    Settings::HudSlots m_slots;
    RadarPlace m_radar;
    Rect m_status;
    MessagePlace m_messages;
    Rect m_money;
};
