#include "HudTestSupport.h"
#include "app/Settings.h"
#include "mission/Hud.h"
#include "mission/StatusPanel.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

using hudtest::TestPlayer;

namespace
{
const std::string LONG_TEXT = "Two raiders are coming round the far side of the station, and a third is waiting "
                              "in the asteroid field beyond the beacon for you to chase them.";

const HudMessage& Message(const Hud& p_hud, size_t p_index)
{
    return **std::next(p_hud.GetMessages().begin(), static_cast<long>(p_index));
}

using HudSettingsTest = testsupport::WorkDirTest;
} // namespace

TEST(HudTest, NewestMessageOnTopAndEachOlderOneBelowIt)
{
    Hud hud;
    hud.AddMessage("first", 10.0f, 0.1f);
    hud.AddMessage("second", 2.0f, 0.0f);
    ASSERT_EQ(2u, hud.GetMessages().size());
    const HudMessage& second = Message(hud, 0);
    const HudMessage& first = Message(hud, 1);
    EXPECT_EQ("second", second.GetFullText());
    EXPECT_EQ(Hud::MESSAGE_X, second.GetX());
    EXPECT_EQ(40, second.GetY());
    EXPECT_EQ(Hud::MESSAGE_X, first.GetX());
    EXPECT_EQ(40 + second.GetHeight() + 30, first.GetY());
    EXPECT_GT(second.GetHeight(), 0);

    // A message that wraps pushes the older ones down by all its lines before it has typed
    // a single character.
    hud.AddMessage(LONG_TEXT.c_str(), 10.0f, 0.1f);
    const HudMessage& third = Message(hud, 0);
    ASSERT_GE(third.GetNumLines(), 2u);
    EXPECT_EQ(40, third.GetY());
    EXPECT_EQ(40 + third.GetHeight() + 30, second.GetY());
    EXPECT_EQ(second.GetY() + second.GetHeight() + 30, first.GetY());

    // "second" types in 6 frames and is gone 2 seconds later; the one below moves up into
    // its place.
    for (int frame = 0; frame < 6; ++frame)
    {
        hud.Update(0.0f);
    }
    hud.Update(1.0f);
    EXPECT_EQ(3u, hud.GetMessages().size());
    hud.Update(1.0f);
    ASSERT_EQ(2u, hud.GetMessages().size());
    EXPECT_EQ(LONG_TEXT, Message(hud, 0).GetFullText());
    EXPECT_EQ("first", Message(hud, 1).GetFullText());
    EXPECT_EQ(40 + Message(hud, 0).GetHeight() + 30, Message(hud, 1).GetY());
}

TEST(HudTest, MoneyAndAmmunitionComeFromThePlayersRecord)
{
    TestPlayer player;
    player.SetAmmunition(500, 0, 200);
    player.GetPilot().SetMoney(1234);
    Hud hud(&player);
    EXPECT_EQ(1234, hud.GetMoney());

    StatusPanel& panel = hud.GetStatusPanel();
    EXPECT_EQ(500, panel.GetStartBullets());
    EXPECT_EQ(0, panel.GetStartMissiles());
    EXPECT_EQ(200, panel.GetStartEnergy());

    // Half the bullets, missiles found although the mission started without any, more energy
    // than at the start: the missile bar stays away and the energy bar stays in its trough.
    player.SetAmmunition(250, 12, 300);
    player.SetDefences(30, 120, 0, 0);
    StatusPanel::Bars bars = panel.Measure(player);
    EXPECT_DOUBLE_EQ(47.5, bars.bullets);
    EXPECT_DOUBLE_EQ(0.0, bars.missiles);
    EXPECT_DOUBLE_EQ(95.0, bars.energy);
    EXPECT_DOUBLE_EQ(24.5, bars.armour);
    EXPECT_DOUBLE_EQ(0.0, bars.shield); // no shield fitted

    player.SetDefences(0, 120, 45, 60);
    bars = panel.Measure(player);
    EXPECT_DOUBLE_EQ(0.0, bars.armour);
    EXPECT_DOUBLE_EQ(73.5, bars.shield);

    // Without a player the HUD has no money; the ship given later sets the ammunition scale,
    // once.
    Hud later;
    EXPECT_EQ(0, later.GetMoney());
    EXPECT_FALSE(later.GetStatusPanel().HasStartCounts());
    later.SetPlayer(&player);
    EXPECT_EQ(250, later.GetStatusPanel().GetStartBullets());
    EXPECT_EQ(1234, later.GetMoney());
    player.SetAmmunition(100, 0, 0);
    later.SetPlayer(&player);
    EXPECT_EQ(250, later.GetStatusPanel().GetStartBullets());
}

TEST(HudTest, BarLengthsStayWithinTheirTroughs)
{
    EXPECT_DOUBLE_EQ(0.0, StatusPanel::BarLength(95, 10.0, 0.0));
    EXPECT_DOUBLE_EQ(0.0, StatusPanel::BarLength(95, 0.0, 10.0));
    EXPECT_DOUBLE_EQ(95.0, StatusPanel::BarLength(95, 10.0, 10.0));
    EXPECT_DOUBLE_EQ(95.0, StatusPanel::BarLength(95, 11.0, 10.0));
    EXPECT_DOUBLE_EQ(9.8, StatusPanel::BarLength(98, 1.0, 10.0));
}

TEST_F(HudSettingsTest, MessagesGoWhereTheLayoutPutsThemNewestNearestTheEdge)
{
    Hud hud;
    hud.AddMessage("first", 10.0f, 0.1f);
    hud.AddMessage(LONG_TEXT.c_str(), 10.0f, 0.1f);
    const HudMessage& newest = Message(hud, 0);
    const HudMessage& older = Message(hud, 1);
    // Its widest line fills most of the wrap width.
    ASSERT_GT(newest.GetTextWidth(), HudMessage::WRAP_WIDTH * 3 / 4);
    EXPECT_EQ(40, newest.GetY());

    // The messages piece in the bottom-right slot: the newest ends 40 above the bottom and 25
    // in from the right edge, the older one above it; the change shows in the next frame.
    ASSERT_TRUE(g_settings.SetHudSlots({0, 2, 7}));
    hud.Update(0.0f);
    EXPECT_EQ((Settings::HudSlots{0, 2, 7}), hud.GetLayout().GetSlots());
    EXPECT_EQ(768 - 40, newest.GetY() + newest.GetHeight());
    EXPECT_EQ(1024 - 25, newest.GetX() + newest.GetTextWidth());
    EXPECT_EQ(newest.GetY() - 30, older.GetY() + older.GetHeight());
    EXPECT_EQ(1024 - 25, older.GetX() + older.GetTextWidth());

    // In the middle of the left edge: down from the middle of the screen.
    ASSERT_TRUE(g_settings.SetHudSlots({6, 2, 3}));
    hud.Update(0.0f);
    EXPECT_EQ((768 - 150) / 2, newest.GetY());
    EXPECT_EQ(25, newest.GetX());
    EXPECT_EQ(newest.GetY() + newest.GetHeight() + 30, older.GetY());

    // Bottom left: up from above the money. A new message joins at the edge, the others make
    // way; beside the middle of the screen it wraps narrower.
    ASSERT_TRUE(g_settings.SetHudSlots({6, 2, 5}));
    hud.Update(0.0f);
    hud.AddMessage(LONG_TEXT.c_str(), 10.0f, 0.1f);
    EXPECT_EQ(700 - 16, Message(hud, 0).GetY() + Message(hud, 0).GetHeight());
    EXPECT_EQ(HudLayout::SIDE_MESSAGE_WIDTH, Message(hud, 0).GetMaxWidth());
    EXPECT_GT(Message(hud, 0).GetNumLines(), newest.GetNumLines());
    EXPECT_EQ(Message(hud, 0).GetY() - 30, newest.GetY() + newest.GetHeight());
}
