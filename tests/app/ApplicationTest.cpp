#include "app/Application.h"
#include "app/ErrorLog.h"
#include "app/Mode.h"
#include "app/Renderer.h"
#include "app/Settings.h"
#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "gfx/Image.h"
#include "platform/Gl.h"
#include "platform/Window.h"
#include "sound/Sound.h"
#include "support/GlFixture.h"
#include "support/TestBitmaps.h"

#include <SDL2/SDL.h>
#include <gtest/gtest.h>

using testsupport::MeanBrightness;
using testsupport::ReadPixel;

namespace
{
// Counts the modes told about a display reset.
class ResetCountingMode : public Mode
{
public:
    bool Initialize() override { return true; }
    bool Shutdown() override { return true; }
    int32_t Update(float) override { return 6; }
    bool Render() override { return true; }
    bool HandleInput(InputSystem*) override { return true; }
    void OnDisplayReset() override { ++resets; }
    int resets = 0;
};
} // namespace

class ApplicationTest : public testsupport::GlFixture
{
};

TEST_F(ApplicationTest, ResolutionChangeRebuildsImagesAndText)
{
    ASSERT_TRUE(StartApplication());
    ASSERT_TRUE(testsupport::WriteSolidBitmap("art_red.bmp", 32, 32, 255, 0, 0, 24));
    Image image;
    image.Load("art_red.bmp");
    image.SetSize(1024, 384);
    Font* font = g_fontList.GetFont("Arial", 24, FONT_BOLD);
    ResetCountingMode mode;
    m_app.SetMode(&mode);

    ASSERT_TRUE(m_app.ChangeResolution(800, 600));
    EXPECT_EQ(800, m_app.GetDisplayWidth());
    EXPECT_EQ(600, m_app.GetDisplayHeight());
    EXPECT_EQ(1024, m_app.GetScreenWidth());
    EXPECT_EQ(768, m_app.GetScreenHeight());
    EXPECT_EQ(1, mode.resets);
    EXPECT_NE(0u, image.GetDisplayList());
    EXPECT_NE(0u, font->GetListBase());

    m_app.GetRenderer()->BeginFrame();
    image.Draw(0.0, 0.0, 0.0, false);
    // The top half of the logical screen is the top half of the 800 x 600 display.
    EXPECT_EQ(255, ReadPixel(400, 100).r);
    EXPECT_EQ(255, ReadPixel(799, 299).r);
    EXPECT_EQ(0, ReadPixel(400, 301).r);
    ASSERT_TRUE(font->Print(1.0, 1.0, 1.0, 1.0, 100, 500, "Still here"));
    // 500 logical is 390 display rows down; the text covers some of the band below.
    EXPECT_GT(MeanBrightness(70, 390, 200, 25), 5.0);
    g_fontList.ReleaseFont(font);
}

TEST_F(ApplicationTest, RefusedResolutionKeepsTheOldDisplay)
{
    ASSERT_TRUE(StartApplication());
    Image white;
    white.Reset();
    const int reported = g_errorLog.GetCount();

    EXPECT_FALSE(m_app.ChangeResolution(100, 100));
    EXPECT_EQ(reported + 1, g_errorLog.GetCount());
    EXPECT_STREQ("Unable to set new resolution", g_errorLog.GetMessage(reported));
    // The player is not left without a window: the old resolution comes back, and draws.
    ASSERT_NE(nullptr, m_app.GetWindow());
    EXPECT_EQ(1024, m_app.GetDisplayWidth());
    EXPECT_EQ(768, m_app.GetDisplayHeight());
    m_app.GetRenderer()->BeginFrame();
    white.Draw(10.0, 10.0, 0.0, false);
    EXPECT_EQ(255, ReadPixel(50, 50).r);
}

TEST_F(ApplicationTest, TheSoundStartsAtTheKeptVolume)
{
    // The volume bar left at 50 last time: -20 dB from the start, before any menu opens.
    ASSERT_TRUE(g_settings.SetVolume(50));
    ASSERT_TRUE(StartApplication());
    ASSERT_NE(nullptr, g_pSound);
    EXPECT_EQ(Sound::VolumeFromSlider(50), g_pSound->GetVolume());
    EXPECT_EQ(-2000, g_pSound->GetVolume());
}

TEST_F(ApplicationTest, QuadOverTheLogicalScreenCoversTheDisplay)
{
    ASSERT_TRUE(StartApplication(800, 600));
    Image white;
    white.Reset();
    white.SetSize(1024, 768);
    m_app.GetRenderer()->BeginFrame();
    white.Draw(false);
    for (auto [x, y] : {std::pair{0, 0}, std::pair{799, 0}, std::pair{0, 599}, std::pair{799, 599}, std::pair{400, 300}})
    {
        EXPECT_EQ(255, ReadPixel(x, y).g) << x << "," << y;
    }

    // A zero height becomes one pixel instead of a division by zero.
    m_app.GetRenderer()->Resize(800, 0);
    GLint viewport[4] = {0, 0, 0, 0};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(1, viewport[3]);
}

TEST_F(ApplicationTest, AWindowLargerThanTheDesktopShrinksToFitKeepingItsShape)
{
    ASSERT_TRUE(StartApplication());
    SDL_Rect usable;
    ASSERT_EQ(0, SDL_GetDisplayUsableBounds(0, &usable));
    if (usable.w >= 1600 && usable.h >= 1200)
    {
        GTEST_SKIP() << "the desktop holds 1600 x 1200";
    }
    ASSERT_TRUE(m_app.ChangeResolution(1600, 1200));
    EXPECT_EQ(1600, m_app.GetDisplayWidth());
    int width = 0;
    int height = 0;
    SDL_GetWindowSize(static_cast<SDL_Window*>(m_app.GetWindow()->GetNativeHandle()), &width, &height);
    EXPECT_LE(width, usable.w);
    EXPECT_LE(height, usable.h);
    EXPECT_TRUE(width == usable.w || height == usable.h) << width << " x " << height;
    EXPECT_NEAR(4.0 / 3.0, static_cast<double>(width) / height, 0.01);
    // The whole picture in the window: a quad over the logical screen reaches its corners.
    int32_t x = 0;
    int32_t y = 0;
    int32_t w = 0;
    int32_t h = 0;
    m_app.GetWindow()->GetViewport(x, y, w, h);
    EXPECT_EQ(0, x);
    EXPECT_EQ(0, y);
    EXPECT_EQ(width, w);
    EXPECT_EQ(height, h);

    // Back to a size the desktop holds: exactly that size again.
    ASSERT_TRUE(m_app.ChangeResolution(800, 600));
    SDL_GetWindowSize(static_cast<SDL_Window*>(m_app.GetWindow()->GetNativeHandle()), &width, &height);
    EXPECT_EQ(800, width);
    EXPECT_EQ(600, height);
}

TEST(FitViewportTest, LetterboxesOtherShapes)
{
    int32_t x = 0;
    int32_t y = 0;
    int32_t w = 0;
    int32_t h = 0;
    platform::FitViewport(1024, 768, 1920, 1080, x, y, w, h);
    EXPECT_EQ(1440, w);
    EXPECT_EQ(1080, h);
    EXPECT_EQ(240, x);
    EXPECT_EQ(0, y);
    platform::FitViewport(1024, 768, 1024, 1280, x, y, w, h);
    EXPECT_EQ(1024, w);
    EXPECT_EQ(768, h);
    EXPECT_EQ(0, x);
    EXPECT_EQ(256, y);
    platform::FitViewport(800, 600, 800, 600, x, y, w, h);
    EXPECT_EQ(0, x);
    EXPECT_EQ(800, w);
}
