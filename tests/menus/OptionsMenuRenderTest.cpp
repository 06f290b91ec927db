// The options menu in a real window under Xvfb with the game's own pictures: the resolution
// buttons make the display anew, and the tint bars colour the HUD pieces.
// Set KORVATH_TEST_SCREENSHOT_DIR to keep the frames as PNG files.
#include "../mission/HudTestSupport.h"
#include "app/Renderer.h"
#include "app/Settings.h"
#include "input/Action.h"
#include "input/InputSystem.h"
#include "menus/OptionsMenu.h"
#include "platform/MessageQueue.h"
#include "platform/Window.h"
#include "support/GlFixture.h"
#include "ui/Button.h"
#include "ui/UiInput.h"

#include <SDL2/SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

using testsupport::MeanBrightness;
using testsupport::ReadPixel;
using testsupport::Rgb;

namespace
{
constexpr float DT = 0.05f;

uint32_t WindowId(const platform::Window* p_window)
{
    return p_window != nullptr ? SDL_GetWindowID(static_cast<SDL_Window*>(p_window->GetNativeHandle())) : 0;
}
} // namespace

class OptionsMenuRenderTest : public testsupport::GlFixture
{
protected:
    void SetUp() override
    {
        GlFixture::SetUp();
        if (!StartApplication())
        {
            GTEST_SKIP() << "no display";
        }
        hudtest::WriteGamePictures({"art\\ribbon.bmp", "art\\menu_title_bg.bmp", "art\\button_up.bmp",
                                    "art\\button_down.bmp", "art\\slider_bg.bmp", "art\\slider.bmp",
                                    "art\\hud_customize_screenshot.bmp", "art\\hud_customize_radar.bmp",
                                    "art\\hud_customize_status.bmp", "art\\hud_customize_comm.bmp"});
        PreGameMenu::ForgetFirstButton();
        m_menu = std::make_unique<OptionsMenu>(&m_ui.cursor, &m_ui.input.GetInput());
        m_menu->Init();
        m_ui.Frame(0, 0, false);
        m_menu->Update(DT);
        m_menu->Update(6.0f);
    }
    void TearDown() override
    {
        m_menu.reset();
        GlFixture::TearDown();
    }

    void Click(int32_t p_x, int32_t p_y)
    {
        for (bool down : {false, true, false})
        {
            m_ui.Frame(p_x, p_y, down);
            m_menu->Update(DT);
        }
    }
    void Draw()
    {
        m_app.GetRenderer()->BeginFrame();
        m_menu->Render();
    }
    void SaveScreenshot(const std::string& p_name)
    {
        const char* dir = std::getenv("KORVATH_TEST_SCREENSHOT_DIR");
        if (dir != nullptr && dir[0] != '\0')
        {
            m_app.GetWindow()->SaveScreenshot((std::string(dir) + "/" + p_name).c_str());
        }
    }
    // Display pixels of a button's face, in logical units, darker than a caption's strokes.
    int CountDarkOnButton(int p_x, int p_y, double p_scale)
    {
        int dark = 0;
        for (int y = p_y + 12; y < p_y + 28; ++y)
        {
            for (int x = p_x + 20; x < p_x + 120; ++x)
            {
                const Rgb c = ReadPixel(static_cast<int>(x * p_scale), static_cast<int>(y * p_scale));
                dark += c.r + c.g + c.b < 150 ? 1 : 0;
            }
        }
        return dark;
    }

    static std::string ReadConfig()
    {
        std::ifstream file("config.ini");
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }

    uitest::UiInput m_ui;
    std::unique_ptr<OptionsMenu> m_menu;
};

TEST_F(OptionsMenuRenderTest, ResolutionButtonsMakeTheDisplayAnewEvenAtTheResolutionInUse)
{
    Click(80, 230 + 70 * OptionsMenu::BUTTON_VIDEO);
    ASSERT_EQ(OptionsMenu::SCREEN_VIDEO, m_menu->GetCurrentScreen());
    // "1024x768" is the fourth button of the column at x 450 from y 125, 50 apart.
    const Button* current = m_menu->GetResolutionButton(3);
    ASSERT_NE(nullptr, current);
    EXPECT_EQ("1024x768", current->GetText());
    EXPECT_EQ(450.0, current->GetX());
    EXPECT_EQ(275.0, current->GetY());

    // The devices let go of the window; only a new set-up brings them back.
    const uint32_t oldWindow = WindowId(m_app.GetWindow());
    m_app.GetInput()->GetKeyboard()->Release();
    m_app.GetInput()->GetMouse()->Release();
    ASSERT_EQ(SDL_FALSE, SDL_GetRelativeMouseMode());

    Click(470, 290);
    EXPECT_EQ(1024, m_app.GetDisplayWidth());
    EXPECT_EQ(768, m_app.GetDisplayHeight());
    EXPECT_NE(oldWindow, WindowId(m_app.GetWindow())) << "a new window";
    EXPECT_EQ(SDL_TRUE, SDL_GetRelativeMouseMode()) << "the mouse set up again";
    SDL_Event key{};
    key.type = SDL_KEYDOWN;
    key.key.state = SDL_PRESSED;
    key.key.keysym.scancode = SDL_SCANCODE_W;
    SDL_PushEvent(&key);
    platform::Message message;
    while (platform::MessageQueue::Peek(message))
    {
    }
    m_app.GetInput()->Poll();
    EXPECT_TRUE(m_app.GetInput()->WasPressed(SHOOT_FORWARD)) << "the keyboard set up again";

    // "800x600": the menu whole at the new size, its captions drawn; kept for the next start.
    EXPECT_NE(std::string::npos, ReadConfig().find("Resolution=1024x768")) << ReadConfig();
    Click(470, 340);
    EXPECT_EQ(800, m_app.GetDisplayWidth());
    EXPECT_EQ(600, m_app.GetDisplayHeight());
    EXPECT_EQ(800, g_settings.GetWidth());
    EXPECT_NE(std::string::npos, ReadConfig().find("Resolution=800x600")) << ReadConfig();
    Draw();
    SaveScreenshot("options-video-800x600.png");
    const double scale = 800.0 / 1024.0;
    for (int32_t i = 0; i < OptionsMenu::NUM_RESOLUTIONS; ++i)
    {
        const Button* button = m_menu->GetResolutionButton(i);
        const int x = static_cast<int>(button->GetX());
        const int y = static_cast<int>(button->GetY());
        EXPECT_GT(MeanBrightness(static_cast<int>((x + 10) * scale), static_cast<int>((y + 5) * scale), 80, 20), 100.0)
            << button->GetText();
        EXPECT_GT(CountDarkOnButton(x, y, scale), 15) << "caption of " << button->GetText();
    }
}

TEST_F(OptionsMenuRenderTest, TintBarsColourTheHudPieces)
{
    // The radar piece in slot 0 at (410, 280), 75 x 56; the red bar at (355, 530).
    const auto radar = [] { return MeanBrightness(420, 290, 55, 36); };
    Draw();
    SaveScreenshot("options-gameplay.png");
    const Rgb before = ReadPixel(447, 308);
    EXPECT_GT(radar(), 120.0) << "the light piece over the dark screenshot";

    // Red to nothing: the piece loses its red and keeps its green.
    for (auto [x, down] : {std::pair{754, false}, std::pair{754, true}, std::pair{300, true}, std::pair{300, false}})
    {
        m_ui.Frame(x, 538, down);
        m_menu->Update(DT);
    }
    ASSERT_EQ(0, m_menu->GetTint(OptionsMenu::TINT_RED));
    Draw();
    SaveScreenshot("options-gameplay-no-red.png");
    const Rgb after = ReadPixel(447, 308);
    EXPECT_LT(after.r, before.r / 4 + 5);
    EXPECT_NEAR(before.g, after.g, 8);
}
