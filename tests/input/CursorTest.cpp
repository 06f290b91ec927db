#include "app/Mode.h"
#include "app/Renderer.h"
#include "input/Cursor.h"
#include "input/InputSystem.h"
#include "menus/SlideshowMode.h"
#include "support/GlFixture.h"
#include "support/ScriptedInput.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <filesystem>

using testsupport::ScriptedInput;

namespace
{
void Move(ScriptedInput& p_input, Cursor& p_cursor, int32_t p_dx, int32_t p_dy)
{
    p_input.MoveMouse(p_dx, p_dy);
    p_input.Poll();
    p_cursor.Update(0.016f);
}

std::pair<int32_t, int32_t> Position(const Cursor& p_cursor)
{
    int32_t x = -1;
    int32_t y = -1;
    p_cursor.GetPosition(x, y);
    return {x, y};
}
} // namespace

TEST(CursorTest, MovesAtTwiceTheMouseCountsAndStaysOnTheScreen)
{
    ScriptedInput input;
    Cursor cursor;
    EXPECT_FALSE(cursor.IsInitialized());
    ASSERT_TRUE(cursor.Init("art\\cursor.bmp", 0.0, 0.0, input.GetMouse()));
    EXPECT_TRUE(cursor.IsInitialized());
    EXPECT_EQ(std::make_pair(0, 0), Position(cursor));

    Move(input, cursor, 5, 3);
    EXPECT_EQ(std::make_pair(10, 6), Position(cursor));
    Move(input, cursor, -1, 2);
    EXPECT_EQ(std::make_pair(8, 10), Position(cursor));
    EXPECT_EQ(8.0, cursor.GetPhysicalDesc()->GetX());

    // A large left motion from x = 8 stops at 0, a large right one at exactly 1023.
    Move(input, cursor, -1000, -1000);
    EXPECT_EQ(std::make_pair(0, 0), Position(cursor));
    Move(input, cursor, 100000, 100000);
    EXPECT_EQ(std::make_pair(1023, 767), Position(cursor));
    EXPECT_EQ(1023.0, cursor.GetPhysicalDesc()->GetX());
    EXPECT_EQ(767.0, cursor.GetPhysicalDesc()->GetY());
    // Exactly onto the edge is clamped too; one short of it is not.
    Move(input, cursor, -1, -1);
    EXPECT_EQ(std::make_pair(1021, 765), Position(cursor));
    Move(input, cursor, 1, 1);
    EXPECT_EQ(std::make_pair(1023, 767), Position(cursor));
    // No motion, no change.
    Move(input, cursor, 0, 0);
    EXPECT_EQ(std::make_pair(1023, 767), Position(cursor));
}

TEST(CursorTest, ReportsTheLeftButtonEveryFrameItIsHeld)
{
    ScriptedInput input;
    Cursor cursor;
    ASSERT_TRUE(cursor.Init(nullptr, 0.0, 0.0, input.GetMouse()));
    int32_t x = 0;
    int32_t y = 0;
    input.Poll();
    EXPECT_FALSE(cursor.GetPosition(x, y));
    input.MouseButton(0, true);
    for (int frame = 0; frame < 3; ++frame)
    {
        input.Poll();
        EXPECT_TRUE(cursor.GetPosition(x, y)) << frame;
    }
    input.MouseButton(0, false);
    input.MouseButton(1, true);
    input.Poll();
    EXPECT_FALSE(cursor.GetPosition(x, y));
}

TEST(CursorTest, OffsetAndSecondInit)
{
    ScriptedInput input;
    ScriptedInput other;
    Cursor cursor;
    ASSERT_TRUE(cursor.Init("art\\cursor.bmp", 5.0, 7.0, input.GetMouse()));
    // Placed at the offset, which is added again when the position is reported.
    EXPECT_EQ(std::make_pair(10, 14), Position(cursor));

    EXPECT_FALSE(cursor.Init("art\\cursor.bmp", 100.0, 100.0, other.GetMouse()));
    EXPECT_EQ(input.GetMouse(), cursor.GetMouse());
    EXPECT_EQ(std::make_pair(10, 14), Position(cursor));
    other.MoveMouse(50, 50);
    other.Poll();
    cursor.Update(0.0f);
    EXPECT_EQ(std::make_pair(10, 14), Position(cursor));

    // Without a mouse it stays where it is.
    cursor.Rebind(nullptr);
    EXPECT_FALSE(cursor.Update(0.0f));
    EXPECT_EQ(5.0, cursor.GetPhysicalDesc()->GetX());
}

class CursorDrawTest : public testsupport::GlFixture
{
};

TEST_F(CursorDrawTest, DrawsItsPictureAtThePositionAndNothingWithoutOne)
{
    std::filesystem::create_directories("art");
    // A 12 x 12 arrow-ish block: red, with a pure green (transparent) lower-right quarter.
    std::vector<uint8_t> pixels;
    for (int y = 0; y < 12; ++y)
    {
        for (int x = 0; x < 12; ++x)
        {
            const bool transparent = x >= 6 && y >= 6;
            pixels.insert(pixels.end(), {static_cast<uint8_t>(transparent ? 0 : 255),
                                         static_cast<uint8_t>(transparent ? 255 : 0), 0});
        }
    }
    ASSERT_TRUE(testsupport::WriteBitmap24("art/cursor.bmp", 12, 12, pixels));
    if (!StartApplication())
    {
        GTEST_SKIP() << "no display";
    }
    ScriptedInput input;
    Cursor cursor;
    ASSERT_TRUE(cursor.Init("ignored.bmp", 0.0, 0.0, input.GetMouse()));
    ASSERT_EQ(12, cursor.GetWidth());
    Move(input, cursor, 150, 100);

    m_app.GetRenderer()->BeginFrame();
    cursor.Render();
    EXPECT_EQ(255, testsupport::ReadPixel(300, 200).r);
    EXPECT_EQ(255, testsupport::ReadPixel(311, 205).r);
    EXPECT_EQ(0, testsupport::ReadPixel(299, 200).r);
    EXPECT_EQ(0, testsupport::ReadPixel(300, 212).r);
    // The colour key leaves the background showing.
    const testsupport::Rgb keyed = testsupport::ReadPixel(308, 208);
    EXPECT_EQ(0, keyed.r + keyed.g + keyed.b);
}

TEST_F(CursorDrawTest, MissingPictureDrawsNothing)
{
    if (!StartApplication())
    {
        GTEST_SKIP() << "no display";
    }
    ScriptedInput input;
    Cursor cursor;
    ASSERT_TRUE(cursor.Init("art\\cursor.bmp", 0.0, 0.0, input.GetMouse()));
    Move(input, cursor, 20, 20);
    m_app.GetRenderer()->BeginFrame();
    EXPECT_TRUE(cursor.Render());
    EXPECT_LT(testsupport::MeanBrightness(30, 30, 40, 40), 1.0);
    int32_t x = 0;
    int32_t y = 0;
    cursor.GetPosition(x, y);
    EXPECT_EQ(40, x);
}

TEST_F(CursorDrawTest, ModesShareOneCursorOnTheApplicationsMouse)
{
    if (!StartApplication())
    {
        GTEST_SKIP() << "no display";
    }
    InputSystem* input = m_app.GetInput();
    ASSERT_NE(nullptr, input);
    {
        SlideshowMode first;
        EXPECT_TRUE(Mode::s_cursor.IsInitialized());
        EXPECT_EQ(input->GetMouse(), Mode::s_cursor.GetMouse());
        SlideshowMode second;
        EXPECT_EQ(input->GetMouse(), Mode::s_cursor.GetMouse());
    }
    m_app.Shutdown();
    m_started = false;
    // The application's mouse is gone with it.
    EXPECT_EQ(nullptr, Mode::s_cursor.GetMouse());
}
