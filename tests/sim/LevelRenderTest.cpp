// A small level drawn through the camera under Xvfb at three headings, checked pixel by
// pixel. Set KORVATH_TEST_SCREENSHOT_DIR to keep the frames as PNG files.

#include "app/Mode.h"
#include "app/Renderer.h"
#include "gfx/Animation.h"
#include "gfx/Camera.h"
#include "gfx/Image.h"
#include "platform/Gl.h"
#include "platform/Window.h"
#include "sim/Level.h"
#include "sim/QuadNode.h"
#include "support/GlFixture.h"
#include "support/TestBitmaps.h"
#include "WorldDoubles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <cstdlib>
#include <string>
#include <vector>

using testsupport::ReadPixel;
using testsupport::Rgb;
using namespace worldtest;

namespace
{
const int MAP_SIZE = 40; // 8 x 8 leaves, play area 1920 .. 3200
const int TILE = 128;
const Rgb TILE_COLORS[2] = {{20, 30, 90}, {90, 90, 90}};
const Rgb SHIP = {250, 220, 40};
const Rgb ROCK = {255, 255, 255};
const Rgb ENEMY = {230, 30, 30};

// Stripes on every third column: a map drawn transposed would show rows.
uint16_t MapTile(int p_x, int p_y)
{
    return p_x == 16 && p_y == 17 ? 7 /* beyond the tile set: tile 0 */ : (p_x % 3 == 0 ? 1 : 0);
}

// The map in the level file's order: quarters of quarters down to the leaves.
void AppendQuadtreeOrder(int p_x, int p_y, int p_size, std::vector<uint16_t>& p_tiles)
{
    if (p_size == QuadNode::LEAF_TILES)
    {
        std::vector<uint16_t> leaf(QuadNode::NUM_TILES);
        for (int column = 0; column < p_size; ++column)
        {
            for (int row = 0; row < p_size; ++row)
            {
                leaf[QuadNode::TileIndex(column, row)] = MapTile(p_x + column, p_y + row);
            }
        }
        p_tiles.insert(p_tiles.end(), leaf.begin(), leaf.end());
        return;
    }
    const int half = p_size / 2;
    for (int quarter = 0; quarter < 4; ++quarter)
    {
        AppendQuadtreeOrder(p_x + (quarter % 2) * half, p_y + (quarter / 2) * half, half, p_tiles);
    }
}

// A square sprite; with p_arrow an upward arrowhead on the colour key.
bool WriteSprite(const char* p_name, int p_size, const Rgb& p_color, bool p_arrow)
{
    std::vector<uint8_t> rgb;
    for (int v = 0; v < p_size; ++v)
    {
        for (int u = 0; u < p_size; ++u)
        {
            const bool inside = !p_arrow || std::abs(u - p_size / 2) * 2 < v;
            const Rgb c = inside ? p_color : Rgb{0, 255, 0};
            rgb.insert(rgb.end(), {static_cast<uint8_t>(c.r), static_cast<uint8_t>(c.g), static_cast<uint8_t>(c.b)});
        }
    }
    return testsupport::WriteBitmap24(p_name, p_size, p_size, rgb);
}

class DrawCounter : public WorldObject
{
public:
    bool Render() override { return ++m_draws > 0; }
    int m_draws = 0;
};

bool Near(const Rgb& p_a, const Rgb& p_b, int p_tolerance = 12)
{
    return std::abs(p_a.r - p_b.r) <= p_tolerance && std::abs(p_a.g - p_b.g) <= p_tolerance &&
           std::abs(p_a.b - p_b.b) <= p_tolerance;
}
} // namespace

class LevelRenderTest : public testsupport::GlFixture
{
protected:
    void ExpectColorAt(const Rgb& p_expected, const Vector2& p_screen, const char* p_what)
    {
        ASSERT_TRUE(p_screen.x >= 0 && p_screen.x < 1024 && p_screen.y >= 0 && p_screen.y < 768)
            << p_what << " is off the screen";
        const int x = static_cast<int>(std::lround(p_screen.x));
        const int y = static_cast<int>(std::lround(p_screen.y));
        const Rgb actual = ReadPixel(x, y);
        EXPECT_TRUE(Near(p_expected, actual))
            << p_what << " at (" << x << ", " << y << ") is " << actual.r << ", " << actual.g << ", " << actual.b;
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

TEST_F(LevelRenderTest, FollowedShipStaysBelowTheCentrePointingUp)
{
    ASSERT_TRUE(StartApplication());
    ASSERT_TRUE(testsupport::WriteSolidBitmap("tile000.bmp", TILE, TILE, 20, 30, 90, 24));
    ASSERT_TRUE(testsupport::WriteSolidBitmap("tile001.bmp", TILE, TILE, 90, 90, 90, 24));
    ASSERT_TRUE(WriteSprite("ship.bmp", 32, SHIP, true));
    ASSERT_TRUE(WriteSprite("enemy.bmp", 24, ENEMY, false));
    ASSERT_TRUE(WriteSprite("rock.bmp", 24, ROCK, false));

    Camera camera;
    Animation ship; // the player's ship outlives the level
    Level level;
    RecordingMission mission;
    ASSERT_TRUE(level.Create(MAP_SIZE, TILE, TILE, &camera));
    level.SetMission(&mission);
    ASSERT_TRUE(QuadNode::LoadTileSet("tile000.bmp", 2));
    std::vector<uint16_t> tiles;
    AppendQuadtreeOrder(0, 0, MAP_SIZE, tiles);
    level.SetTiles(tiles);

    // The player's ship where a level puts it, just inside the play area's corner.
    ship.Init(1, 1.0f, true);
    ship.AddImage("ship.bmp");
    ship.SetPosition(2020.0f, 2020.0f);
    level.SetPlayer(&ship);
    level.Add(&ship, LAYER_SHIPS);
    // A rock ahead; an enemy reaching over the leaf border x = 1920 onto a rock in the next
    // leaf, which is visited later, yet ships are drawn over scenery.
    auto* enemy = new Animation();
    enemy->Init(1, 1.0f, true);
    enemy->AddImage("enemy.bmp");
    enemy->SetPosition(1900.0f, 1700.0f);
    level.Add(enemy, LAYER_SHIPS);
    for (const Vector2& p : {Vector2{2120.0, 1820.0}, Vector2{1920.0, 1710.0}})
    {
        auto* rock = new WorldObject();
        rock->LoadImage("rock.bmp");
        rock->InitPhysicalDesc();
        rock->SetPosition(static_cast<float>(p.x), static_cast<float>(p.y));
        level.Add(rock, LAYER_SCENERY);
    }
    DrawCounter* nearby = new DrawCounter();
    DrawCounter* farAway = new DrawCounter();
    for (DrawCounter* counter : {nearby, farAway})
    {
        counter->InitPhysicalDesc();
        counter->SetPosition(counter == nearby ? 2300.0f : 4800.0f, counter == nearby ? 2300.0f : 4800.0f);
        level.Add(counter, LAYER_SCENERY);
    }

    for (double heading : {0.0, 45.0, 300.0})
    {
        SCOPED_TRACE("heading " + std::to_string(heading));
        ship.GetPhysicalDesc()->SetHeading(heading);
        camera.Follow(&ship);
        camera.SetAngle(heading);
        m_app.GetRenderer()->BeginFrame();
        camera.Apply();
        ASSERT_TRUE(level.Render());
        SaveScreenshot("level-heading-" + std::to_string(static_cast<int>(heading)) + ".png");

        // The ship's corner trails the followed point by one unit, 210 below the centre,
        // and the arrow points up: its tip is at the top, its base at the bottom.
        const Vector2 corner = camera.WorldToScreen(ship.GetX(), ship.GetY());
        EXPECT_NEAR(512.0, corner.x, 2.5);
        EXPECT_NEAR(595.0, corner.y, 2.5);
        ExpectColorAt(SHIP, Vector2{corner.x + 16, corner.y + 6}, "arrow tip");
        ExpectColorAt(SHIP, Vector2{corner.x + 4, corner.y + 28}, "arrow base, left");
        ExpectColorAt(SHIP, Vector2{corner.x + 28, corner.y + 28}, "arrow base, right");
        const Rgb besideTip = ReadPixel(static_cast<int>(corner.x + 4), static_cast<int>(corner.y + 6));
        EXPECT_FALSE(Near(SHIP, besideTip, 60)) << "upside down";
        ExpectColorAt(ROCK, camera.WorldToScreen(2132.0, 1832.0), "rock ahead");
        ExpectColorAt(ENEMY, camera.WorldToScreen(1922.0, 1717.0), "enemy over the rock");
        ExpectColorAt(ROCK, camera.WorldToScreen(1935.0, 1730.0), "rock beside the enemy");
        const uint8_t* border = Level::GetBorderColor();
        ExpectColorAt(Rgb{border[0], border[1], border[2]}, camera.WorldToScreen(2100.0, 1920.0), "border");

        // Tiles: column 15 is a stripe, 16 is not, and 16's out-of-range tile shows tile 0.
        ExpectColorAt(TILE_COLORS[1], camera.WorldToScreen(15 * TILE + 64, 14 * TILE + 64), "stripe");
        ExpectColorAt(TILE_COLORS[0], camera.WorldToScreen(16 * TILE + 64, 14 * TILE + 64), "tile");
        ExpectColorAt(TILE_COLORS[0], camera.WorldToScreen(16 * TILE + 64, 17 * TILE + 10), "tile 7");
    }
    EXPECT_EQ(3, nearby->m_draws); // only the leaves in view are drawn
    EXPECT_EQ(0, farAway->m_draws);

    // A lost mission shows the map and the border but no object.
    mission.m_defeat = true;
    m_app.GetRenderer()->BeginFrame();
    camera.Apply();
    level.Render();
    SaveScreenshot("level-defeat.png");
    const Vector2 corner = camera.WorldToScreen(ship.GetX(), ship.GetY());
    EXPECT_FALSE(Near(SHIP, ReadPixel(static_cast<int>(corner.x + 16), static_cast<int>(corner.y + 20)), 60));
    EXPECT_EQ(3, nearby->m_draws);
}

namespace
{
// What the mission does after the display was made anew: the map's lists again.
class LevelMode : public Mode
{
public:
    explicit LevelMode(Level& p_level) : m_level(p_level) {}
    bool Initialize() override { return true; }
    bool Shutdown() override { return true; }
    int32_t Update(float) override { return 6; }
    bool Render() override { return true; }
    bool HandleInput(InputSystem*) override { return true; }
    void OnDisplayReset() override { m_level.RebuildDisplayLists(); }

private:
    Level& m_level;
};
} // namespace

TEST_F(LevelRenderTest, ANewDisplayKeepsTheMapAndEveryPicture)
{
    ASSERT_TRUE(StartApplication());
    ASSERT_TRUE(testsupport::WriteSolidBitmap("tile000.bmp", TILE, TILE, 20, 30, 90, 24));
    ASSERT_TRUE(testsupport::WriteSolidBitmap("tile001.bmp", TILE, TILE, 90, 90, 90, 24));
    Camera camera;
    Level level;
    ASSERT_TRUE(level.Create(MAP_SIZE, TILE, TILE, &camera));
    ASSERT_TRUE(QuadNode::LoadTileSet("tile000.bmp", 2));
    std::vector<uint16_t> tiles;
    AppendQuadtreeOrder(0, 0, MAP_SIZE, tiles);
    level.SetTiles(tiles);
    // Pictures made after the map (a menu opened over the mission), many enough that the new
    // context hands their lists the numbers the map's lists had in the old one.
    std::vector<std::unique_ptr<Image>> pictures;
    for (int i = 0; i < 200; ++i)
    {
        pictures.push_back(std::make_unique<Image>());
        pictures.back()->Reset();
    }
    LevelMode mode(level);
    m_app.SetMode(&mode);

    ASSERT_TRUE(m_app.ChangeResolution(1024, 768));
    for (size_t i = 0; i < pictures.size(); ++i)
    {
        EXPECT_EQ(GL_TRUE, glIsList(pictures[i]->GetDisplayList())) << "picture " << i;
    }
    Animation lookout;
    lookout.Init(1, 1.0f, true);
    lookout.SetPosition(2020.0f, 2020.0f);
    camera.Follow(&lookout);
    m_app.GetRenderer()->BeginFrame();
    camera.Apply();
    ASSERT_TRUE(level.Render());
    ExpectColorAt(TILE_COLORS[1], camera.WorldToScreen(15 * TILE + 64, 14 * TILE + 64), "stripe");
    ExpectColorAt(TILE_COLORS[0], camera.WorldToScreen(16 * TILE + 64, 14 * TILE + 64), "tile");
    glLoadIdentity();
    pictures.back()->Draw(10.0, 10.0, 0.0, false);
    EXPECT_EQ(255, ReadPixel(50, 50).g);
    m_app.SetMode(nullptr);
}
