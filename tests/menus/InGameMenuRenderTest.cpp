// The in-game menu and the objectives screen drawn under Xvfb with the game's own pictures.
// Set KORVATH_TEST_SCREENSHOT_DIR to keep the frames as PNG files.

#include "../mission/HudTestSupport.h"
#include "app/Renderer.h"
#include "gfx/Image.h"
#include "input/Cursor.h"
#include "menus/InGameMenu.h"
#include "menus/ObjectivesScreen.h"
#include "platform/BitmapFile.h"
#include "platform/Gl.h"
#include "platform/Paths.h"
#include "platform/Window.h"
#include "support/GlFixture.h"
#include "ui/Button.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

using testsupport::ReadPixel;
using testsupport::Rgb;

namespace
{
constexpr uint8_t GREY = 200;

// The pixels of a display rectangle, top row first, read in one go.
std::vector<Rgb> ReadBlock(int p_x, int p_y, int p_width, int p_height)
{
    GLint viewport[4] = {0, 0, 0, 0};
    glGetIntegerv(GL_VIEWPORT, viewport);
    std::vector<uint8_t> rgba(static_cast<size_t>(p_width) * static_cast<size_t>(p_height) * 4u);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadBuffer(GL_BACK);
    glReadPixels(viewport[0] + p_x, viewport[1] + viewport[3] - p_y - p_height, p_width, p_height, GL_RGBA,
                 GL_UNSIGNED_BYTE, rgba.data());
    std::vector<Rgb> pixels(static_cast<size_t>(p_width) * static_cast<size_t>(p_height));
    for (int row = 0; row < p_height; ++row)
    {
        // GL rows count from the bottom.
        const uint8_t* source = rgba.data() + static_cast<size_t>(p_height - 1 - row) * p_width * 4u;
        for (int column = 0; column < p_width; ++column)
        {
            pixels[static_cast<size_t>(row) * p_width + column] =
                Rgb{source[column * 4], source[column * 4 + 1], source[column * 4 + 2]};
        }
    }
    return pixels;
}

// Pixels of a display rectangle tinted green: green clearly above red and above blue.
int CountGreen(int p_x, int p_y, int p_width, int p_height)
{
    int count = 0;
    for (const Rgb& c : ReadBlock(p_x, p_y, p_width, p_height))
    {
        count += c.g > c.r + 8 && c.g > c.b + 2 ? 1 : 0;
    }
    return count;
}

// A picture of the game directory as its file holds it.
struct Picture
{
    platform::DibPixels dib;

    bool Load(const char* p_name) { return platform::ReadBitmapFile(platform::ResolvePath(p_name), dib); }
    int Width() const { return dib.width; }
    int Height() const { return dib.height; }
    // Opaque pixels only; false elsewhere and outside the picture.
    bool At(int p_x, int p_y, Rgb& p_colour) const
    {
        if (p_x < 0 || p_y < 0 || p_x >= dib.width || p_y >= dib.height)
        {
            return false;
        }
        const int bytes = dib.bitCount / 8;
        const size_t stride = (static_cast<size_t>(dib.width) * bytes + 3u) & ~size_t{3};
        const uint8_t* pixel = dib.bits.data() + static_cast<size_t>(dib.height - 1 - p_y) * stride + p_x * bytes;
        if (bytes == 4 && pixel[3] != 255)
        {
            return false;
        }
        p_colour = Rgb{pixel[2], pixel[1], pixel[0]};
        return true;
    }
};

// Of the opaque pixels of p_picture inside the part (p_fromX, p_fromY, p_width, p_height) of
// it, drawn with its top-left corner at display (p_x, p_y): the share that shows on the
// screen as the picture has them, give or take a few levels.
double ShareAsPicture(const Picture& p_picture, int p_x, int p_y, int p_fromX, int p_fromY, int p_width, int p_height)
{
    const std::vector<Rgb> screen = ReadBlock(p_x + p_fromX, p_y + p_fromY, p_width, p_height);
    int opaque = 0;
    int same = 0;
    for (int y = 0; y < p_height; ++y)
    {
        for (int x = 0; x < p_width; ++x)
        {
            Rgb expected{};
            if (!p_picture.At(p_fromX + x, p_fromY + y, expected))
            {
                continue;
            }
            ++opaque;
            const Rgb& actual = screen[static_cast<size_t>(y) * p_width + x];
            same += std::abs(actual.r - expected.r) <= 4 && std::abs(actual.g - expected.g) <= 4 &&
                            std::abs(actual.b - expected.b) <= 4
                        ? 1
                        : 0;
        }
    }
    return opaque > 0 ? static_cast<double>(same) / opaque : 0.0;
}
} // namespace

class InGameMenuRenderTest : public testsupport::GlFixture
{
protected:
    void SetUp() override
    {
        GlFixture::SetUp();
        if (!StartApplication())
        {
            GTEST_SKIP() << "no display";
        }
        hudtest::WriteGamePictures({"art\\menugreenbg.bmp", "art\\button_up2.bmp", "art\\button_down2.bmp",
                                    "art\\button_up.bmp", "art\\button_down.bmp", "art\\box_topleft.bmp",
                                    "art\\box_topright.bmp", "art\\box_bottomleft.bmp", "art\\box_bottomright.bmp",
                                    "art\\box_top.bmp", "art\\box_left.bmp", "art\\box_right.bmp",
                                    "art\\box_bottom.bmp", "Art\\check.bmp", "art\\cursor.bmp"});
        m_backdrop.SetSize(1024, 768);
        m_backdrop.Load(GREY, GREY, GREY, 255, nullptr);
    }

    // A light screen standing in for the mission under the menu.
    void BeginFrame()
    {
        m_app.GetRenderer()->BeginFrame();
        m_backdrop.Draw(0.0, 0.0, 0.0, false);
    }

    void SaveScreenshot(const std::string& p_name)
    {
        const char* dir = std::getenv("KORVATH_TEST_SCREENSHOT_DIR");
        if (dir != nullptr && dir[0] != '\0')
        {
            m_app.GetWindow()->SaveScreenshot((std::string(dir) + "/" + p_name).c_str());
        }
    }

    Image m_backdrop;
};

TEST_F(InGameMenuRenderTest, DarkensTheScreenUnderTheGreenPanel)
{
    Cursor cursor; // never bound to a mouse: it shows nothing
    InGameMenu menu(&cursor);
    // The panel picture centred on the screen, the buttons on it.
    Picture panel;
    ASSERT_TRUE(panel.Load("art\\menugreenbg.bmp"));
    ASSERT_EQ(240, menu.GetBackground().GetWidth());
    ASSERT_EQ(panel.Width(), menu.GetBackground().GetWidth());
    ASSERT_EQ(panel.Height(), menu.GetBackground().GetHeight());
    EXPECT_EQ(392.0, menu.GetBackgroundX());
    EXPECT_EQ(240.0, menu.GetBackgroundY());
    for (int32_t i = 0; i < InGameMenu::NUM_BUTTONS; ++i)
    {
        EXPECT_EQ(424.0, menu.GetButton(i)->GetX()) << i;
        EXPECT_EQ(300.0 + 60.0 * i, menu.GetButton(i)->GetY()) << i;
        EXPECT_EQ(176, menu.GetButton(i)->GetWidth());
    }
    const int px = static_cast<int>(menu.GetBackgroundX());
    const int py = static_cast<int>(menu.GetBackgroundY());
    // The panel's glass below the buttons, and its left and right margins beside them: nothing
    // but the panel is drawn there.
    const int belowButtons = 300 + 60 * (InGameMenu::NUM_BUTTONS - 1) + 40 - py;
    const auto glassBelow = [&] { return ShareAsPicture(panel, px, py, 0, belowButtons, 240, 288 - belowButtons); };
    const auto margins = [&] {
        return (ShareAsPicture(panel, px, py, 0, 0, 30, 288) + ShareAsPicture(panel, px, py, 210, 0, 30, 288)) / 2.0;
    };

    // Hidden, it draws nothing.
    BeginFrame();
    menu.Render();
    EXPECT_EQ(GREY, ReadPixel(500, 280).r);
    EXPECT_EQ(0, CountGreen(px, py, 240, 288));

    // Just opened: the panel as its picture has it, on the screen not darkened yet.
    menu.SetVisible(true);
    BeginFrame();
    menu.Render();
    EXPECT_EQ(GREY, ReadPixel(20, 20).r);
    EXPECT_GT(glassBelow(), 0.95) << "the green panel";
    EXPECT_GT(margins(), 0.95) << "the green panel";
    EXPECT_GT(CountGreen(px, py, 240, 288), 240 * 288 / 3) << "the panel reads green";

    // 200 frames later the screen around it is at its darkest: 25 grey at alpha 200, and the
    // panel over the darkening is as bright as before.
    for (int frame = 0; frame < 250; ++frame)
    {
        menu.Update(0.02f);
    }
    BeginFrame();
    menu.Render();
    const int darkest = static_cast<int>((GREY * 55 + 25 * 200) / 255.0 + 0.5);
    EXPECT_NEAR(darkest, ReadPixel(20, 20).r, 3);
    EXPECT_NEAR(darkest, ReadPixel(1000, 700).g, 3);
    EXPECT_NEAR(darkest, ReadPixel(px - 2, py + 100).b, 3);
    EXPECT_GT(glassBelow(), 0.95) << "the panel is not darkened";
    EXPECT_GT(margins(), 0.95) << "the panel is not darkened";
    // The button pictures cover the panel where they lie, light, with their dark captions on
    // them.
    for (int32_t i = 0; i < InGameMenu::NUM_BUTTONS; ++i)
    {
        const Button* button = menu.GetButton(i);
        const int x = static_cast<int>(button->GetX());
        const int y = static_cast<int>(button->GetY());
        EXPECT_LT(ShareAsPicture(panel, px, py, x - px + 10, y - py + 5, 156, 30), 0.05) << "button " << i;
        EXPECT_GT(testsupport::MeanBrightness(x + 10, y + 5, 156, 30), 100.0) << "button " << i;
        const std::vector<Rgb> face = ReadBlock(x + 20, y + 12, 136, 16);
        int dark = 0;
        for (const Rgb& c : face)
        {
            dark += c.r + c.g + c.b < 150 ? 1 : 0;
        }
        EXPECT_GT(dark, 20) << "caption of button " << i;
    }
    SaveScreenshot("ingame-menu.png");
}

TEST_F(InGameMenuRenderTest, ObjectivesPageChecksWhatIsDone)
{
    Cursor cursor;
    ObjectivesScreen objectives(&cursor);
    objectives.AddObjective("Destroy the three raiders guarding the wreck.", 1);
    objectives.AddObjective("Scan the wreck of the Halcyon and recover its flight recorder before the pirates "
                            "return to claim it.",
                            2);
    objectives.AddObjective("Return to the gate.", 3);
    objectives.MarkDone(1);

    InGameMenu menu(&cursor, &objectives);
    menu.SetVisible(true);
    menu.ShowObjectives();
    for (int frame = 0; frame < 200; ++frame)
    {
        menu.Update(0.02f);
    }
    BeginFrame();
    menu.Render();
    EXPECT_LT(CountGreen(392, 240, 240, 288), 240 * 288 / 50) << "the panel of buttons is not drawn under the page";

    // A check mark 45 pixels left of the done objective's text, none beside the others.
    for (int32_t i = 0; i < 3; ++i)
    {
        const WrappedText* text = objectives.GetText(i);
        const int x = static_cast<int>(text->GetX()) - ObjectivesScreen::CHECK_OFFSET;
        const int y = static_cast<int>(text->GetY());
        const int green = CountGreen(x, y, 20, 20);
        if (i == 0)
        {
            EXPECT_GT(green, 12) << "check of objective " << i + 1;
        }
        else
        {
            EXPECT_EQ(0, green) << "objective " << i + 1;
        }
    }
    // The frame is a light panel; the texts are dark on it.
    const FramedBox& frame = objectives.GetFrame();
    const int fx = static_cast<int>(frame.GetX());
    const int fy = static_cast<int>(frame.GetY());
    EXPECT_LT(testsupport::MeanBrightness(static_cast<int>(objectives.GetText(1)->GetX()),
                                          static_cast<int>(objectives.GetText(1)->GetY()), 250,
                                          objectives.GetText(1)->GetHeight()),
              testsupport::MeanBrightness(fx + 30, fy + frame.GetHeight() - 12, 300, 6));
    SaveScreenshot("objectives.png");
}
