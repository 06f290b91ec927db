// The HUD drawn under Xvfb with the game's own pictures, checked pixel by pixel over a black
// screen, then over a small level for a look. Set KORVATH_TEST_SCREENSHOT_DIR to keep the
// frames as PNG files.

#include "HudTestSupport.h"
#include "app/Renderer.h"
#include "app/Settings.h"
#include "gfx/Font.h"
#include "gfx/Camera.h"
#include "mission/Hud.h"
#include "mission/Radar.h"
#include "platform/Gl.h"
#include "platform/Window.h"
#include "sim/Level.h"
#include "sim/QuadNode.h"
#include "support/GlFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <string>
#include <tuple>
#include <vector>

using hudtest::MakeMarker;
using hudtest::TestPlayer;
using testsupport::ReadPixel;
using testsupport::Rgb;

namespace
{
const Rgb RED{255, 0, 0};
const Rgb YELLOW{255, 255, 0};
const Rgb WHITE{255, 255, 255};
const Rgb BLUE{0, 0, 255};
const Rgb GREEN{0, 200, 0};
const Rgb CYAN{0, 255, 255};

bool Near(const Rgb& p_a, const Rgb& p_b, int p_tolerance = 8)
{
    return std::abs(p_a.r - p_b.r) <= p_tolerance && std::abs(p_a.g - p_b.g) <= p_tolerance &&
           std::abs(p_a.b - p_b.b) <= p_tolerance;
}

// Pixels of a display rectangle brighter than p_threshold on every channel.
int CountBright(int p_x, int p_y, int p_width, int p_height, int p_threshold = 180)
{
    int count = 0;
    for (int y = p_y; y < p_y + p_height; ++y)
    {
        for (int x = p_x; x < p_x + p_width; ++x)
        {
            const Rgb c = ReadPixel(x, y);
            count += c.r > p_threshold && c.g > p_threshold && c.b > p_threshold ? 1 : 0;
        }
    }
    return count;
}

const char* const TILES[] = {"art\\tiles\\space000.bmp", "art\\tiles\\space001.bmp", "art\\tiles\\space002.bmp",
                             "art\\tiles\\space003.bmp"};
} // namespace

class HudRenderTest : public testsupport::GlFixture
{
protected:
    void ExpectColour(const Rgb& p_expected, int p_x, int p_y, const char* p_what)
    {
        const Rgb actual = ReadPixel(p_x, p_y);
        EXPECT_TRUE(Near(p_expected, actual))
            << p_what << " at (" << p_x << ", " << p_y << ") is " << actual.r << ", " << actual.g << ", " << actual.b;
    }
    void ExpectNotColour(const Rgb& p_colour, int p_x, int p_y, const char* p_what)
    {
        const Rgb actual = ReadPixel(p_x, p_y);
        EXPECT_FALSE(Near(p_colour, actual, 40)) << p_what << " at (" << p_x << ", " << p_y << ")";
    }
    void SaveScreenshot(const std::string& p_name)
    {
        const char* dir = std::getenv("KORVATH_TEST_SCREENSHOT_DIR");
        if (dir != nullptr && dir[0] != '\0')
        {
            m_app.GetWindow()->SaveScreenshot((std::string(dir) + "/" + p_name).c_str());
        }
    }
};

TEST_F(HudRenderTest, RadarStatusPanelMoneyAndMessages)
{
    ASSERT_TRUE(StartApplication());
    hudtest::WriteGamePictures({"art\\hudradar.bmp", "art\\hudstats.bmp", TILES[0], TILES[1], TILES[2], TILES[3],
                                "art\\hulls\\cargo\\cargo_short_still0000.bmp",
                                "art\\hulls\\cargo\\cargo_long_still0000.bmp",
                                "art\\hulls\\drone\\drone_short_still0000.bmp", "entity\\asteroid_medium.bmp"});

    Camera camera;
    TestPlayer player; // outlives the level, as the game's does
    player.GetHullAnimation().LoadHull("art\\hulls\\cargo\\cargo");
    player.Place(5000.0, 5000.0, 0.0);
    player.SetAmmunition(500, 0, 200); // a mission started without missiles
    player.GetPilot().SetMoney(1234);
    player.SetDefences(60, 120, 30, 30);

    Level level;
    ASSERT_TRUE(level.Create(80, 128, 128, &camera));
    ASSERT_TRUE(QuadNode::LoadTileSet(TILES[0], 4));
    std::vector<uint16_t> tiles(80 * 80);
    for (size_t i = 0; i < tiles.size(); ++i)
    {
        tiles[i] = static_cast<uint16_t>((i * 7 + i / 13) % 4);
    }
    level.SetTiles(tiles);
    level.SetPlayer(&player);
    level.Add(&player, LAYER_SHIPS);
    WorldObject* ahead = MakeMarker(5000.0, 4600.0, "art\\hulls\\drone\\drone_short_still0000.bmp");
    level.Add(ahead, LAYER_SHIPS);
    level.Add(MakeMarker(1000.0, 5000.0, "art\\hulls\\drone\\drone_short_still0000.bmp"), LAYER_SHIPS);
    WorldObject* rock = MakeMarker(5200.0, 5000.0, "entity\\asteroid_medium.bmp");
    level.Add(rock, LAYER_SCENERY);

    Hud hud(&player);
    // The radar in the top-left corner, the status panel flush with the right edge of the screen.
    EXPECT_EQ(256, hud.GetRadar().GetWidth());
    EXPECT_EQ(80, hud.GetLayout().GetRadar().centreX);
    EXPECT_EQ(82, hud.GetLayout().GetRadar().centreY);
    EXPECT_EQ(864, hud.GetLayout().GetStatus().left);
    EXPECT_EQ(0, hud.GetLayout().GetStatus().top);
    player.SetAmmunition(250, 0, 200);

    const std::string older = "Beacon located.";
    const std::string newer = "Incoming transmission: the convoy has left the gate early. Escort it to the relay "
                              "beacon before the raiders close in, and keep its armour above half.";
    hud.AddMessage(older.c_str(), 30.0f, 0.0f);
    hud.AddMessage(newer.c_str(), 30.0f, 0.0f);
    const HudMessage& typing = *hud.GetMessages().front();
    ASSERT_GE(typing.GetNumLines(), 2u);
    const int lineHeight = typing.GetHeight() / static_cast<int>(typing.GetNumLines());
    // 30 characters of the newer one: the older one is typed out, the newer one has part of
    // its first line.
    for (int frame = 0; frame < 30; ++frame)
    {
        hud.Update(0.02f);
    }

    m_app.GetRenderer()->BeginFrame();
    hud.Render();

    // Radar: the player at the centre, the drone ahead above it, the rock to its right in
    // white, the far drone on the rim to the left in yellow.
    ExpectColour(RED, 80, 82, "player blip");
    ExpectColour(RED, 80, 72, "blip of the drone ahead");
    ExpectColour(WHITE, 85, 82, "blip of the rock");
    ExpectColour(YELLOW, 5, 82, "blip on the rim");
    ExpectNotColour(RED, 80, 77, "between the blips");

    // Status panel at (864, 0): armour half full (49 of 98), shield full, half the bullets,
    // no missile bar at all, all the energy.
    ExpectColour(RED, 864 + 59 + 2, 11, "armour bar start");
    ExpectColour(RED, 864 + 59 + 47, 11, "armour bar end");
    ExpectNotColour(RED, 864 + 59 + 52, 11, "beyond the armour bar");
    ExpectColour(RED, 864 + 59 + 20, 7, "armour bar, 10 pixels thick");
    ExpectColour(RED, 864 + 59 + 20, 15, "armour bar, 10 pixels thick");
    ExpectColour(BLUE, 864 + 59 + 96, 26, "shield bar");
    ExpectColour(GREEN, 864 + 62 + 45, 48, "bullet bar");
    ExpectNotColour(GREEN, 864 + 62 + 50, 48, "beyond the bullet bar");
    for (int x : {864 + 63, 864 + 62 + 47, 864 + 62 + 93})
    {
        ExpectNotColour(YELLOW, x, 60, "missile bar of a mission started without missiles");
    }
    ExpectColour(CYAN, 864 + 62 + 93, 73, "energy bar");

    // Money in white at (25, 700).
    EXPECT_GT(CountBright(25, 700, 200, 24), 30) << "money";
    EXPECT_EQ(0, CountBright(0, 650, 1024, 40)) << "nothing but the money in the lower part";

    // Messages at x 256: the newer at the top with exactly its first 30 characters, its later
    // lines still empty; the older one below the room of the newer one's whole text. Letters
    // hang below their line's height (the baseline sits at y + height), so the rows of the
    // next line are looked at from a quarter of a line further down.
    ASSERT_NE(nullptr, typing.GetFont());
    const int typedWidth = static_cast<int>(typing.GetFont()->GetTextWidth(newer.substr(0, 30).c_str()));
    const int descent = lineHeight / 4;
    EXPECT_GT(CountBright(256, 40, typedWidth, lineHeight + descent), 20) << "typed start of the newest message";
    EXPECT_EQ(0, CountBright(256 + typedWidth + 2, 40, 512 - typedWidth - 2, lineHeight + descent))
        << "the rest of its first line is untyped";
    EXPECT_EQ(0, CountBright(256, 40 + lineHeight + descent, 512, typing.GetHeight() - lineHeight - descent))
        << "second line";
    const int olderY = 40 + typing.GetHeight() + 30;
    EXPECT_EQ(olderY, hud.GetMessages().back()->GetY());
    EXPECT_GT(CountBright(256, olderY, 200, lineHeight), 20) << "older message";
    EXPECT_EQ(0, CountBright(256, olderY - 28, 512, 26)) << "the gap above the older message";
    SaveScreenshot("hud-black.png");

    // The radar turns with the ship: at heading 60 a drone 400 ahead is still straight above
    // the centre, and the rock 200 east shows 30 degrees right of straight ahead.
    player.Place(5000.0, 5000.0, 60.0);
    const double a = 60.0 * std::numbers::pi / 180.0;
    ahead->SetPosition(static_cast<float>(5000.0 + 400.0 * std::sin(a)), static_cast<float>(5000.0 - 400.0 * std::cos(a)));
    for (int frame = 0; frame < 200; ++frame)
    {
        hud.Update(0.02f);
    }
    camera.Follow(&player);
    camera.SetAngle(60.0);
    m_app.GetRenderer()->BeginFrame();
    camera.Apply();
    level.Render();
    hud.Render();
    ExpectColour(RED, 80, 72, "drone ahead at heading 60");
    ExpectColour(RED, 80, 82, "player blip at heading 60");
    const Radar::Blip rockBlip = Radar::PlaceBlip(5000.0, 5000.0, 60.0, 5, 5200.0, 5000.0, 255, 255, 255);
    EXPECT_NEAR(5.0 * std::cos(a), rockBlip.x, 0.05);
    EXPECT_NEAR(-5.0 * std::sin(a), rockBlip.y, 0.05);
    ExpectColour(WHITE, 80 + static_cast<int>(std::lround(rockBlip.x)), 82 + static_cast<int>(std::lround(rockBlip.y)),
                 "rock blip at heading 60");
    SaveScreenshot("hud-level.png");
    (void)rock;
}

TEST_F(HudRenderTest, RadarAndStatusPanelGoWhereTheSettingsPutThemInTheirTint)
{
    ASSERT_TRUE(StartApplication());
    hudtest::WriteGamePictures({"art\\hudradar.bmp", "art\\hudstats.bmp"});
    TestPlayer player;
    player.Place(5000.0, 5000.0, 0.0);
    player.SetAmmunition(500, 0, 200);
    player.SetDefences(60, 120, 30, 30);
    Level level;
    ASSERT_TRUE(level.Create(80, 128, 128, nullptr));
    level.SetPlayer(&player);
    level.Add(&player, LAYER_SHIPS);
    level.Add(MakeMarker(5000.0, 4600.0), LAYER_SHIPS);
    Hud hud(&player);

    // The radar in the bottom-right corner, the status panel in the bottom-left one.
    ASSERT_TRUE(g_settings.SetHudSlots({7, 5, 1}));
    m_app.GetRenderer()->BeginFrame();
    hud.Render();
    SaveScreenshot("hud-bottom-corners.png");
    const int cx = 1024 - 80;
    const int cy = 768 - 82;
    ExpectColour(RED, cx, cy, "player blip at the dial's centre");
    ExpectColour(RED, cx, cy - 10, "blip of the ship ahead, above the centre");
    // The plate fills the corner; forward is still marked at the top of the dial.
    const Rgb plate = ReadPixel(1018, 762);
    EXPECT_GT(plate.b, plate.r + 10) << "navy plate in the corner";
    const Rgb mark = ReadPixel(cx, cy - 78);
    EXPECT_GT(mark.r, 150) << "amber forward mark";
    EXPECT_GT(mark.r, mark.b + 80) << "amber forward mark";
    const Rgb opposite = ReadPixel(cx, cy + 78);
    EXPECT_LT(opposite.r, 150) << "no forward mark at the bottom of the dial";
    EXPECT_EQ(0, CountBright(0, 0, 200, 200, 20)) << "nothing left in the top-left corner";
    // The status panel's bars where the panel is: half the armour, the full shield.
    ExpectColour(RED, 59 + 2, 680 + 11, "armour bar");
    ExpectColour(BLUE, 59 + 96, 680 + 26, "shield bar");
    ExpectNotColour(RED, 864 + 59 + 2, 11, "nothing in the top-right corner");
    const Rgb panel = ReadPixel(30, 680 + 40);

    // A red tint colours both pictures and nothing drawn over them.
    ASSERT_TRUE(g_settings.SetTint({255, 0, 0, 255}));
    m_app.GetRenderer()->BeginFrame();
    hud.Render();
    SaveScreenshot("hud-bottom-corners-red.png");
    for (auto [tinted, untinted, what] : {std::tuple{ReadPixel(1018, 762), plate, "radar plate"},
                                          std::tuple{ReadPixel(cx, cy - 78), mark, "forward mark"},
                                          std::tuple{ReadPixel(30, 680 + 40), panel, "status panel"}})
    {
        EXPECT_NEAR(untinted.r, tinted.r, 3) << what;
        EXPECT_LE(tinted.g, 2) << what;
        EXPECT_LE(tinted.b, 2) << what;
    }
    ExpectColour(RED, cx, cy - 10, "blip");
    ExpectColour(BLUE, 59 + 96, 680 + 26, "shield bar");

    // Fully transparent: the pictures are gone, the blips and bars stay.
    ASSERT_TRUE(g_settings.SetTint({255, 255, 255, 0}));
    m_app.GetRenderer()->BeginFrame();
    hud.Render();
    const Rgb gone = ReadPixel(1018, 762);
    EXPECT_EQ(0, gone.r + gone.g + gone.b);
    ExpectColour(RED, cx, cy - 10, "blip");
    ExpectColour(BLUE, 59 + 96, 680 + 26, "shield bar");

    // Back in the classic corners, untinted: as before.
    ASSERT_TRUE(g_settings.SetHudSlots(Settings::DEFAULT_HUD_SLOTS));
    ASSERT_TRUE(g_settings.SetTint(Settings::DEFAULT_TINT));
    m_app.GetRenderer()->BeginFrame();
    hud.Render();
    ExpectColour(RED, 80, 72, "blip of the ship ahead in the top-left corner");
    ExpectColour(BLUE, 864 + 59 + 96, 26, "shield bar in the top-right corner");
    EXPECT_EQ(0, CountBright(cx - 60, cy - 60, 120, 120, 20)) << "nothing left in the bottom-right corner";
}
