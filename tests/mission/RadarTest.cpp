#include "HudTestSupport.h"
#include "gfx/Camera.h"
#include "mission/Radar.h"
#include "sim/Level.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using hudtest::MakeMarker;

namespace
{
double Length(double p_x, double p_y)
{
    return std::sqrt(p_x * p_x + p_y * p_y);
}
} // namespace

TEST(RadarTest, BlipsLieWhereTheTurnedViewShowsTheirObjects)
{
    // What the screen shows ahead of the ship the radar shows above its centre, at 40 world
    // units a pixel; both turn with the ship.
    WorldObject ship;
    ship.InitPhysicalDesc();
    const struct
    {
        double dx, dy;
    } offsets[] = {{0.0, -400.0}, {300.0, 0.0}, {-120.0, 250.0}, {1000.0, -1500.0}, {-2000.0, -700.0}};
    for (double heading : {0.0, 30.0, 90.0, 135.0, 200.0, 271.5, 359.0})
    {
        ship.GetPhysicalDesc()->SetPosition(5000.0, 4000.0);
        ship.GetPhysicalDesc()->SetHeading(heading);
        Camera camera;
        camera.Follow(&ship);
        camera.SetAngle(heading);
        const Vector2 shipOnScreen = camera.WorldToScreen(5000.0, 4000.0);
        for (const auto& offset : offsets)
        {
            const Vector2 onScreen = camera.WorldToScreen(5000.0 + offset.dx, 4000.0 + offset.dy);
            const Radar::Blip blip = Radar::PlaceBlip(5000.0, 4000.0, heading, Radar::DEFAULT_ZOOM,
                                                      5000.0 + offset.dx, 4000.0 + offset.dy, 255, 0, 0);
            // The game turns by its 22/7 degrees, the view by true ones: a tenth of a pixel.
            EXPECT_NEAR((onScreen.x - shipOnScreen.x) / 40.0, blip.x, 0.2)
                << "heading " << heading << ", offset " << offset.dx << "," << offset.dy;
            EXPECT_NEAR((onScreen.y - shipOnScreen.y) / 40.0, blip.y, 0.2)
                << "heading " << heading << ", offset " << offset.dx << "," << offset.dy;
            EXPECT_FALSE(blip.onRim);
            EXPECT_EQ(255, blip.red);
            EXPECT_EQ(0, blip.green);
        }
    }

    // Straight ahead is straight up, whichever way the ship points.
    const Radar::Blip north = Radar::PlaceBlip(0.0, 1000.0, 0.0, 5, 0.0, 600.0, 255, 0, 0);
    EXPECT_NEAR(0.0, north.x, 0.05);
    EXPECT_NEAR(-10.0, north.y, 0.05);
    const Radar::Blip east = Radar::PlaceBlip(1000.0, 1000.0, 90.0, 5, 1400.0, 1000.0, 255, 0, 0);
    EXPECT_NEAR(0.0, east.x, 0.05);
    EXPECT_NEAR(-10.0, east.y, 0.05);
    // The ship's right-hand side is the radar's right-hand side.
    const Radar::Blip starboard = Radar::PlaceBlip(1000.0, 1000.0, 90.0, 5, 1000.0, 1400.0, 255, 0, 0);
    EXPECT_NEAR(10.0, starboard.x, 0.05);
}

TEST(RadarTest, WhatIsOutOfReachSitsOnTheRimInYellow)
{
    // 4000 units away at zoom 5 is 100 pixels out: pinned to the rim, 75 out, same bearing.
    const Radar::Blip far = Radar::PlaceBlip(5000.0, 5000.0, 0.0, 5, 1000.0, 5000.0, 255, 0, 0);
    EXPECT_TRUE(far.onRim);
    EXPECT_EQ(255, far.red);
    EXPECT_EQ(255, far.green);
    EXPECT_EQ(0, far.blue);
    EXPECT_NEAR(75.0, Length(far.x, far.y), 1e-9);
    EXPECT_NEAR(-75.0, far.x, 0.1); // to the left of a ship heading up the map
    // Scenery is pinned in yellow as well.
    const Radar::Blip rock = Radar::PlaceBlip(5000.0, 5000.0, 0.0, 5, 5000.0, 9000.0, 255, 255, 255);
    EXPECT_TRUE(rock.onRim);
    EXPECT_EQ(0, rock.blue);

    // Exactly 75 pixels out is still inside; a unit further is on the rim.
    const Radar::Blip edge = Radar::PlaceBlip(5000.0, 5000.0, 0.0, 5, 2000.0, 5000.0, 255, 255, 255);
    EXPECT_FALSE(edge.onRim);
    EXPECT_EQ(255, edge.blue);
    EXPECT_TRUE(Radar::PlaceBlip(5000.0, 5000.0, 0.0, 5, 1999.0, 5000.0, 255, 0, 0).onRim);

    // At zoom 10 the same enemy is 50 pixels out, in range.
    const Radar::Blip zoomed = Radar::PlaceBlip(5000.0, 5000.0, 0.0, 10, 1000.0, 5000.0, 255, 0, 0);
    EXPECT_FALSE(zoomed.onRim);
    EXPECT_NEAR(50.0, Length(zoomed.x, zoomed.y), 1e-9);

    Radar radar;
    EXPECT_EQ(5, radar.GetZoom());
    radar.SetZoom(0); // a zoom of 0 would divide by nothing
    EXPECT_EQ(1, radar.GetZoom());
}

TEST(RadarTest, ShowsShipsInRedAndSceneryInWhiteButNoShots)
{
    hudtest::TestPlayer player;
    player.Place(5000.0, 5000.0, 0.0);
    Level level;
    ASSERT_TRUE(level.Create(80, 128, 128, nullptr));
    level.SetPlayer(&player);
    level.Add(&player, LAYER_SHIPS);
    level.Add(MakeMarker(5000.0, 4600.0), LAYER_SHIPS);    // an enemy ahead
    level.Add(MakeMarker(5200.0, 5000.0), LAYER_SCENERY);  // a rock to the right
    level.Add(MakeMarker(4900.0, 5000.0), LAYER_PROJECTILES); // a shot: not shown
    level.Add(MakeMarker(700.0, 5000.0), LAYER_SHIPS);     // far off to the left

    Radar radar;
    std::vector<Radar::Blip> blips;
    radar.CollectBlips(*level.GetGrid(), player, blips);
    ASSERT_EQ(4u, blips.size());
    int red = 0;
    int white = 0;
    int yellow = 0;
    for (const Radar::Blip& blip : blips)
    {
        if (blip.onRim)
        {
            ++yellow;
            EXPECT_NEAR(-75.0, blip.x, 0.1);
        }
        else if (blip.blue == 255)
        {
            ++white;
            EXPECT_NEAR(5.0, blip.x, 0.05);
            EXPECT_NEAR(0.0, blip.y, 0.05);
        }
        else
        {
            ++red;
            EXPECT_NEAR(0.0, blip.x, 0.05);
            // The player's own ship at the centre, the enemy 10 pixels above it.
            EXPECT_TRUE(std::abs(blip.y) < 0.05 || std::abs(blip.y + 10.0) < 0.05) << blip.y;
        }
    }
    EXPECT_EQ(2, red);
    EXPECT_EQ(1, white);
    EXPECT_EQ(1, yellow);
}
