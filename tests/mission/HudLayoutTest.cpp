// Where the HUD's pieces go for every choice of slots: the classic corners by default, every
// piece on the screen and clear of the others everywhere else.
#include "mission/HudLayout.h"
#include "menus/OptionsMenu.h"
#include "mission/Radar.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
constexpr int32_t SCREEN_WIDTH = 1024;
constexpr int32_t SCREEN_HEIGHT = 768;

bool OnScreen(const HudLayout::Rect& p_rect)
{
    return p_rect.left >= 0 && p_rect.top >= 0 && p_rect.right <= SCREEN_WIDTH && p_rect.bottom <= SCREEN_HEIGHT &&
           p_rect.left < p_rect.right && p_rect.top < p_rect.bottom;
}

// Where the first messages go: from their place, as wide as a message may be, the room the
// layout keeps free for them.
HudLayout::Rect MessageRoom(const HudLayout::MessagePlace& p_place)
{
    HudLayout::Rect room;
    room.left = p_place.horizontal == HudAlign::HIGH ? p_place.x - p_place.width : p_place.x;
    room.right = room.left + p_place.width;
    room.top = p_place.vertical == HudAlign::HIGH ? p_place.y - HudLayout::MESSAGE_ROOM : p_place.y;
    room.bottom = room.top + HudLayout::MESSAGE_ROOM;
    return room;
}

std::string Describe(const Settings::HudSlots& p_slots)
{
    return "radar " + std::to_string(p_slots[0]) + ", status " + std::to_string(p_slots[1]) + ", messages " +
           std::to_string(p_slots[2]);
}
} // namespace

TEST(HudLayoutTest, TheDefaultLayoutIsTheClassicHud)
{
    const HudLayout layout;
    // The radar's picture at (0, 0), its dial at (80, 82), as made for that corner.
    EXPECT_EQ(Radar::CENTRE_X, layout.GetRadar().centreX);
    EXPECT_EQ(Radar::CENTRE_Y, layout.GetRadar().centreY);
    EXPECT_EQ(HudAlign::LOW, layout.GetRadar().horizontal);
    EXPECT_EQ(HudAlign::LOW, layout.GetRadar().vertical);
    // The status panel at (1024 - 256 + 96, 0): flush with the top-right corner.
    EXPECT_EQ((HudLayout::Rect{864, 0, 1024, 88}), layout.GetStatus());
    // The newest message at (256, 40), older ones below; the money at (25, 700).
    EXPECT_EQ(HudAlign::CENTRE, layout.GetMessages().horizontal);
    EXPECT_EQ(HudAlign::LOW, layout.GetMessages().vertical);
    EXPECT_EQ(256, layout.GetMessages().x);
    EXPECT_EQ(40, layout.GetMessages().y);
    EXPECT_EQ(25, layout.GetMoney().left);
    EXPECT_EQ(700, layout.GetMoney().top);

    // Slots that cannot be (out of range, shared) give the default.
    for (const Settings::HudSlots& bad : {Settings::HudSlots{0, 0, 1}, Settings::HudSlots{8, 2, 1}})
    {
        const HudLayout fallback(bad);
        EXPECT_EQ(Settings::DEFAULT_HUD_SLOTS, fallback.GetSlots());
        EXPECT_EQ(layout.GetStatus(), fallback.GetStatus());
    }
}

TEST(HudLayoutTest, TheSlotsAreTheEditorsGridOnTheScreen)
{
    // The editor's slots lie at x 0, 112, 225 and y 0, 84, 169 of its picture: left, middle,
    // right and top, middle, bottom.
    const auto align = [](int32_t p_offset) {
        return p_offset == 0 ? HudAlign::LOW : (p_offset < 150 ? HudAlign::CENTRE : HudAlign::HIGH);
    };
    for (int32_t slot = 0; slot < Settings::NUM_HUD_SLOTS; ++slot)
    {
        EXPECT_EQ(align(OptionsMenu::HUD_SLOTS[slot][0]), HudLayout::Column(slot)) << slot;
        EXPECT_EQ(align(OptionsMenu::HUD_SLOTS[slot][1] * 300 / 225), HudLayout::Row(slot)) << slot;
    }

    // The radar in the bottom-right corner: its plate flush with both edges, the dial 80 and
    // 82 pixels in from them. The status panel in the bottom-left one, the money beside it.
    const HudLayout corners({7, 5, 0});
    EXPECT_EQ(1024 - 80, corners.GetRadar().centreX);
    EXPECT_EQ(768 - 82, corners.GetRadar().centreY);
    EXPECT_EQ((HudLayout::Rect{1024 - 176, 768 - 178, 1024, 768}), corners.GetRadar().box);
    EXPECT_EQ((HudLayout::Rect{0, 680, 160, 768}), corners.GetStatus());
    EXPECT_EQ(160 + 25, corners.GetMoney().left);
    EXPECT_EQ(700, corners.GetMoney().top);
    EXPECT_EQ(HudAlign::LOW, corners.GetMessages().horizontal);
    EXPECT_EQ(25, corners.GetMessages().x);
    EXPECT_EQ(40, corners.GetMessages().y);

    // In the middle of an edge: centred along it, round on both sides.
    const HudLayout middles({1, 6, 4});
    EXPECT_EQ(512, middles.GetRadar().centreX);
    EXPECT_EQ((HudLayout::Rect{512 - 96, 0, 512 + 96, 178}), middles.GetRadar().box);
    EXPECT_EQ((HudLayout::Rect{432, 680, 592, 768}), middles.GetStatus());
    EXPECT_EQ(HudAlign::HIGH, middles.GetMessages().horizontal);
    EXPECT_EQ(1024 - 25, middles.GetMessages().x);
    EXPECT_EQ(HudLayout::SIDE_MESSAGE_WIDTH, middles.GetMessages().width);

    // Along the bottom in the middle: up from just above the player's ship, which the camera
    // shows 210 below the middle of the screen.
    const HudLayout bottom({0, 2, 6});
    EXPECT_EQ(HudAlign::HIGH, bottom.GetMessages().vertical);
    EXPECT_EQ(384 + 210 - HudLayout::SHIP_ROOM - HudLayout::CLEARANCE, bottom.GetMessages().y);
    EXPECT_EQ(HudLayout::MESSAGE_WIDTH, bottom.GetMessages().width);
}

TEST(HudLayoutTest, EveryLayoutKeepsEachPieceOnTheScreenAndClearOfTheOthers)
{
    int layouts = 0;
    for (int32_t radar = 0; radar < Settings::NUM_HUD_SLOTS; ++radar)
    {
        for (int32_t status = 0; status < Settings::NUM_HUD_SLOTS; ++status)
        {
            for (int32_t messages = 0; messages < Settings::NUM_HUD_SLOTS; ++messages)
            {
                const Settings::HudSlots slots = {radar, status, messages};
                if (!Settings::IsValidHudSlots(slots))
                {
                    continue;
                }
                ++layouts;
                SCOPED_TRACE(Describe(slots));
                const HudLayout layout(slots);
                const HudLayout::Rect& radarBox = layout.GetRadar().box;
                const HudLayout::Rect& statusBox = layout.GetStatus();
                const HudLayout::Rect& moneyBox = layout.GetMoney();
                const HudLayout::Rect room = MessageRoom(layout.GetMessages());
                EXPECT_TRUE(OnScreen(radarBox));
                EXPECT_TRUE(OnScreen(statusBox));
                EXPECT_TRUE(OnScreen(moneyBox));
                EXPECT_TRUE(OnScreen(room));
                EXPECT_FALSE(radarBox.Overlaps(statusBox));
                EXPECT_FALSE(moneyBox.Overlaps(radarBox));
                EXPECT_FALSE(moneyBox.Overlaps(statusBox));
                EXPECT_FALSE(room.Overlaps(radarBox));
                EXPECT_FALSE(room.Overlaps(statusBox));
                EXPECT_FALSE(room.Overlaps(moneyBox));
                EXPECT_FALSE(room.Overlaps(HudLayout::GetShipRoom()));
                // Each piece keeps to the edges of its slot: its low edge, its high edge or
                // the middle between them.
                const auto along = [](HudAlign p_align, int32_t p_low, int32_t p_high, int32_t p_length) {
                    switch (p_align)
                    {
                    case HudAlign::LOW:
                        return p_low == 0;
                    case HudAlign::HIGH:
                        return p_high == p_length;
                    default:
                        return p_low + p_high == p_length;
                    }
                };
                const auto expectAt = [&](const HudLayout::Rect& p_box, int32_t p_slot) {
                    EXPECT_TRUE(along(HudLayout::Column(p_slot), p_box.left, p_box.right, SCREEN_WIDTH)) << p_slot;
                    EXPECT_TRUE(along(HudLayout::Row(p_slot), p_box.top, p_box.bottom, SCREEN_HEIGHT)) << p_slot;
                };
                expectAt(radarBox, radar);
                expectAt(statusBox, status);
            }
        }
    }
    EXPECT_EQ(8 * 7 * 6, layouts);
}
