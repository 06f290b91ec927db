// The combat's pictures and effects drawn under Xvfb: a ship that leans as it turns, its
// shield flashing when hit, a laser beam, an explosion, the BFG's square and the starfield.
// Set KORVATH_TEST_SCREENSHOT_DIR to keep the frames as PNG files.

#include "app/Renderer.h"
#include "gfx/Animation.h"
#include "gfx/Camera.h"
#include "platform/Gl.h"
#include "platform/Window.h"
#include "sim/BfgShot.h"
#include "sim/CombatSupport.h"
#include "sim/Explosion.h"
#include "sim/LaserBeam.h"
#include "sim/Level.h"
#include "sim/QuadNode.h"
#include "sim/Starfield.h"
#include "sim/Weapon.h"
#include "support/GlFixture.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

using combattest::FixedSeed;
using combattest::ProbePlayer;
using combattest::ProbeShip;
using testsupport::ReadPixel;
using testsupport::Rgb;

namespace
{
const Rgb STILL = {240, 200, 40};
const Rgb LEAN = {40, 200, 240};
const Rgb SHIELD = {60, 255, 60};
const Rgb FIRE = {255, 120, 20};

bool Near(const Rgb& p_a, const Rgb& p_b, int p_tolerance = 16)
{
    return std::abs(p_a.r - p_b.r) <= p_tolerance && std::abs(p_a.g - p_b.g) <= p_tolerance &&
           std::abs(p_a.b - p_b.b) <= p_tolerance;
}

std::string Describe(const Rgb& p_c)
{
    return std::to_string(p_c.r) + ", " + std::to_string(p_c.g) + ", " + std::to_string(p_c.b);
}

class CombatRenderTest : public testsupport::GlFixture
{
protected:
    void Sprite(const std::string& p_path, int p_size, const Rgb& p_color)
    {
        std::filesystem::create_directories(std::filesystem::path(p_path).parent_path());
        ASSERT_TRUE(testsupport::WriteSolidBitmap(p_path, p_size, p_size, static_cast<uint8_t>(p_color.r),
                                                  static_cast<uint8_t>(p_color.g), static_cast<uint8_t>(p_color.b), 24));
    }
    void SaveScreenshot(const std::string& p_name)
    {
        const char* dir = std::getenv("KORVATH_TEST_SCREENSHOT_DIR");
        if (dir != nullptr && dir[0] != '\0')
        {
            m_app.GetWindow()->SaveScreenshot((std::string(dir) + "/" + p_name).c_str());
        }
    }
    void BeginFrame(Camera& p_camera, WorldObject& p_ship)
    {
        p_camera.Follow(&p_ship);
        p_camera.SetAngle(p_ship.GetHeading());
        m_app.GetRenderer()->BeginFrame();
        p_camera.Apply();
    }
};
} // namespace

TEST_F(CombatRenderTest, ShipsBeamsExplosionsAndTheBfgShow)
{
    ASSERT_TRUE(StartApplication());
    FixedSeed seed(3);
    Sprite("art/hulls/test/test_short_still0000.bmp", 32, STILL);
    Sprite("art/hulls/test/test_long_still0000.bmp", 32, STILL);
    for (const char* part : {"_short_left", "_long_left", "_short_right", "_long_right"})
    {
        Sprite(std::string("art/hulls/test/test") + part + "0000.bmp", 32, LEAN);
    }
    Sprite("art/menu/shield.bmp", 16, SHIELD);
    for (int i = 0; i < 8; ++i)
    {
        Sprite("art/explosion/exp0" + std::to_string(i) + ".bmp", 64, FIRE);
    }

    Camera camera;
    ProbePlayer player;
    player.GetHullAnimation().LoadHull("art\\hulls\\test\\test");
    player.Place(3000.0, 3000.0, 0.0, 0.0);
    Level level;
    ASSERT_TRUE(level.Create(80, 128, 128, &camera));
    level.SetPlayer(&player);
    level.Add(&player, LAYER_SHIPS);

    // Still, then leaning at full turn once the lean has caught up.
    BeginFrame(camera, player);
    level.Render();
    const Vector2 corner = camera.WorldToScreen(player.GetX(), player.GetY());
    const Rgb still = ReadPixel(static_cast<int>(corner.x) + 16, static_cast<int>(corner.y) + 16);
    EXPECT_TRUE(Near(STILL, still)) << Describe(still);
    player.SetRotationSpeed(-225.0f);
    for (int i = 0; i < 20; ++i)
    {
        BeginFrame(camera, player);
        level.Render();
    }
    const Rgb lean = ReadPixel(static_cast<int>(corner.x) + 16, static_cast<int>(corner.y) + 16);
    EXPECT_TRUE(Near(LEAN, lean)) << Describe(lean);
    player.SetRotationSpeed(0.0f);

    // A laser beam straight ahead, up the screen.
    Laser laser;
    player.Mount(0, &laser);
    player.GetPilot().SetEnergy(1);
    level.Add(player.Fire(0, true).release(), LAYER_PROJECTILES);
    level.Update(0.0f);
    BeginFrame(camera, player);
    level.Render();
    SaveScreenshot("combat-laser.png");
    // Without a hull the shot leaves from the middle of the picture's top edge.
    const Rgb beam = ReadPixel(static_cast<int>(std::lround(corner.x)) + 16, static_cast<int>(corner.y) - 150);
    EXPECT_LT(beam.r, 80) << Describe(beam);
    EXPECT_GT(beam.g, 150) << Describe(beam);
    EXPECT_GT(beam.b, 150) << Describe(beam);

    // A computer ship hit: its shield flashes around it; it dies and leaves an explosion.
    auto* enemy = new ProbeShip();
    enemy->GetHullAnimation().LoadHull("art\\hulls\\test\\test");
    enemy->Desc().SetBox(16, 16, 0, 0);
    enemy->Place(3200.0, 2800.0, 0.0, 0.0);
    enemy->Desc().SetBox(16, 16, 0, 0);
    enemy->GetShieldSprite()->LoadImage("art\\menu\\shield.bmp");
    enemy->SetDefences(50, 0);
    level.Add(enemy, LAYER_SHIPS);
    enemy->TakeDamage(1);
    BeginFrame(camera, player);
    level.Render();
    // The shield picture is centred on the box: its corner 8 units up and left of the box's.
    const Vector2 shieldCorner = camera.WorldToScreen(3200.0 - 0.0, 2800.0 - 0.0);
    const Rgb shield = ReadPixel(static_cast<int>(shieldCorner.x) + 2, static_cast<int>(shieldCorner.y) + 2);
    EXPECT_TRUE(Near(SHIELD, shield)) << Describe(shield);
    enemy->TakeDamage(100);
    level.Update(0.0f);
    BeginFrame(camera, player);
    level.Render();
    SaveScreenshot("combat-explosion.png");
    const Vector2 blast = camera.WorldToScreen(3232.0, 2832.0);
    const Rgb fire = ReadPixel(static_cast<int>(blast.x), static_cast<int>(blast.y));
    EXPECT_TRUE(Near(FIRE, fire)) << Describe(fire);

    // The BFG's square around the player's ship, 1000 units to each side: larger than the
    // screen, so it is looked at from farther away.
    Bfg bfg;
    player.Mount(1, &bfg);
    player.GetPilot().SetEnergy(1);
    std::unique_ptr<Projectile> shot = player.Fire(1, true);
    ASSERT_NE(nullptr, shot);
    shot->Update(0.0f);
    m_app.GetRenderer()->BeginFrame();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(512.0, 384.0, 0.0);
    glScaled(0.3, 0.3, 1.0);
    glTranslated(-3000.0, -3000.0, 0.0);
    shot->Render();
    SaveScreenshot("combat-bfg.png");
    int bright = 0;
    for (int d = -3; d <= 3; ++d)
    {
        for (const Rgb& c : {ReadPixel(512, 384 + 300 + d), ReadPixel(512 - 300 + d, 384)})
        {
            bright += (c.r > 100 && c.g > 100 && c.b > 100) ? 1 : 0;
        }
    }
    EXPECT_GE(bright, 2);
    EXPECT_TRUE(Near(Rgb{0, 0, 0}, ReadPixel(512, 384)));
}

TEST_F(CombatRenderTest, TheStarfieldStreaksBehindTheShip)
{
    ASSERT_TRUE(StartApplication());
    FixedSeed seed(8);
    Camera camera;
    ProbePlayer player;
    player.SetLimits(0, 400, 100, 110);
    player.Place(3000.0, 3000.0, 30.0, 250.0);
    Level level;
    ASSERT_TRUE(level.Create(80, 128, 128, &camera));
    auto starfield = std::make_unique<Starfield>(5000, 2000, 0);
    starfield->SetScreen(1024, 768, 512, 610);
    level.SetBackground(std::move(starfield));
    level.SetPlayer(&player);
    level.Add(&player, LAYER_SHIPS);
    for (int i = 0; i < 5; ++i)
    {
        level.Update(1.0f / 30.0f);
    }
    BeginFrame(camera, player);
    level.Render();
    SaveScreenshot("combat-starfield.png");
    std::vector<uint8_t> pixels(1024 * 768 * 4);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadBuffer(GL_BACK);
    glReadPixels(0, 0, 1024, 768, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    int lit = 0;
    int litTop = 0;
    for (size_t i = 0; i < pixels.size(); i += 4)
    {
        if (pixels[i] + pixels[i + 1] + pixels[i + 2] > 60)
        {
            ++lit;
            litTop += i / 4 >= 1024 * 384 ? 1 : 0; // GL rows start at the bottom
        }
    }
    // Faint short streaks, hundreds of pixels of the 786 432, in both halves of the screen.
    EXPECT_GT(lit, 500);
    EXPECT_LT(lit, 200000);
    EXPECT_GT(litTop, lit / 5);
    EXPECT_LT(litTop, lit * 4 / 5);
}
