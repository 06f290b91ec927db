#include "input/Action.h"
#include "input/ControlsConfig.h"
#include "platform/DikCodes.h"
#include "support/WorkDir.h"
#include "ui/ControlRow.h"
#include "ui/KeyCaptureBox.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

using uitest::UiInput;

namespace
{
constexpr float DT = 0.02f;

// A 200 x 30 box at (400, 200).
void Place(KeyCaptureBox& p_box)
{
    p_box.SetSize(200, 30);
    p_box.SetPosition(400.0f, 200.0f);
}

// Clicks the box: the press starts the capture and the release must not end it.
void StartCapture(UiInput& p_ui, KeyCaptureBox& p_box)
{
    p_ui.Frame(500, 215, false);
    p_box.Update(DT);
    p_ui.Frame(500, 215, true);
    p_box.Update(DT);
    ASSERT_TRUE(p_box.IsCapturing());
    p_ui.Frame(500, 215, true);
    p_box.Update(DT);
    p_ui.Frame(500, 215, false);
    p_box.Update(DT);
    ASSERT_TRUE(p_box.IsCapturing());
}

std::string Captured(const KeyCaptureBox& p_box)
{
    Binding binding;
    if (!p_box.GetBinding(binding))
    {
        return "(none)";
    }
    return ControlsConfig::GetKeyName(binding);
}
} // namespace

TEST(KeyCaptureBoxTest, AClickStartsTheCaptureAndIsNotCaptured)
{
    UiInput ui;
    KeyCaptureBox box(&ui.cursor, &ui.input.GetInput());
    Place(box);
    EXPECT_STREQ("No Key", box.GetShownText());
    EXPECT_EQ("(none)", Captured(box));

    // Keys pressed while the box is not capturing are ignored; so is a press beside it.
    ui.input.KeyDown(DIK_Q);
    ui.Frame(399, 215, true);
    box.Update(DT);
    EXPECT_FALSE(box.IsCapturing());
    ui.input.KeyUp(DIK_Q);

    StartCapture(ui, box);
    EXPECT_STREQ("Hit Any Key", box.GetShownText());
    EXPECT_EQ("(none)", Captured(box));
    ui.Frame(500, 215, false);
    box.Update(DT);
    EXPECT_TRUE(box.IsCapturing());

    ui.input.KeyDown(DIK_Q);
    ui.Frame(10, 10, false);
    box.Update(DT);
    EXPECT_FALSE(box.IsCapturing());
    EXPECT_TRUE(box.JustCaptured());
    EXPECT_EQ("Q", Captured(box));
    EXPECT_STREQ("Q", box.GetShownText());
    ui.Frame(10, 10, false);
    box.Update(DT);
    EXPECT_FALSE(box.JustCaptured());

    // A left click while capturing binds the left mouse button.
    ui.input.KeyUp(DIK_Q);
    StartCapture(ui, box);
    ui.Frame(20, 20, true);
    box.Update(DT);
    EXPECT_EQ("LEFT_MOUSE", Captured(box));
}

TEST(KeyCaptureBoxTest, LaterSourcesWinWithinAFrame)
{
    UiInput ui(1);
    KeyCaptureBox box(&ui.cursor, &ui.input.GetInput());
    Place(box);

    // NUMPAD7 and a joystick axis in the same frame bind the axis.
    StartCapture(ui, box);
    ui.input.KeyDown(DIK_NUMPAD7);
    ui.input.JoyAxis(0, 0, 0);
    ui.Frame(500, 215, false);
    box.Update(DT);
    EXPECT_EQ("AXIS1", Captured(box));
    ui.input.KeyUp(DIK_NUMPAD7);
    ui.input.JoyAxis(0, 0, 32767);
    ui.Frame(500, 215, false);
    box.Update(DT);

    // A controller button beats a key; an axis beats the button; a mouse button beats all.
    StartCapture(ui, box);
    ui.input.KeyDown(DIK_W);
    ui.input.JoyButton(0, 2, true);
    ui.Frame(500, 215, false);
    box.Update(DT);
    EXPECT_EQ("JOY3", Captured(box));
    ui.input.KeyUp(DIK_W);
    ui.input.JoyButton(0, 2, false);

    StartCapture(ui, box);
    ui.input.KeyDown(DIK_W);
    ui.input.JoyAxis(0, 1, 65535);
    ui.input.MouseButton(1, true);
    ui.Frame(500, 215, false);
    box.Update(DT);
    EXPECT_EQ("RIGHT_MOUSE", Captured(box));
    ui.input.KeyUp(DIK_W);
    ui.input.MouseButton(1, false);
    ui.input.JoyAxis(0, 1, 32767);
    ui.Frame(500, 215, false);
    box.Update(DT);

    // The lowest key code wins among keys pressed together.
    StartCapture(ui, box);
    ui.input.KeyDown(DIK_SPACE);
    ui.input.KeyDown(DIK_A);
    ui.Frame(500, 215, false);
    box.Update(DT);
    EXPECT_EQ("A", Captured(box));
}

TEST(KeyCaptureBoxTest, TheWheelCountsOnlyWhenNothingElseCame)
{
    UiInput ui;
    KeyCaptureBox box(&ui.cursor, &ui.input.GetInput());
    Place(box);

    StartCapture(ui, box);
    ui.input.TurnWheel(1);
    ui.Frame(500, 215, false);
    box.Update(DT);
    EXPECT_EQ("MWHEEL_UP", Captured(box));

    StartCapture(ui, box);
    ui.input.TurnWheel(-2);
    ui.Frame(500, 215, false);
    box.Update(DT);
    EXPECT_EQ("MWHEEL_DOWN", Captured(box));

    StartCapture(ui, box);
    ui.input.TurnWheel(1);
    ui.input.KeyDown(DIK_E);
    ui.Frame(500, 215, false);
    box.Update(DT);
    EXPECT_EQ("E", Captured(box));
}

namespace
{
class ControlRowTest : public testsupport::WorkDirTest
{
protected:
    static std::string ReadConfig()
    {
        std::ifstream file("config.ini", std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
};
} // namespace

TEST_F(ControlRowTest, ACapturedBindingIsLiveAndSavedAtOnce)
{
    UiInput ui;
    ControlsConfig config("config.ini");
    ControlRow row(&ui.cursor, &ui.input.GetInput(), &config);
    row.SetPosition(350.0f, 150.0f);
    row.SetAction(SHOOT_FORWARD);
    KeyCaptureBox& box = row.GetKeyBox();
    EXPECT_EQ(550.0, box.GetX());
    EXPECT_EQ(150.0, box.GetY());
    EXPECT_EQ(200, box.GetWidth());
    EXPECT_EQ(30, box.GetHeight());
    EXPECT_STREQ("W", box.GetShownText());

    // Nothing is written while no capture ends.
    auto frame = [&](int32_t p_x, int32_t p_y, bool p_down) {
        ui.Frame(p_x, p_y, p_down);
        row.Update(DT);
    };
    frame(600, 160, false);
    frame(600, 160, true);
    frame(600, 160, false);
    EXPECT_TRUE(box.IsCapturing());
    EXPECT_FALSE(std::filesystem::exists("config.ini"));

    ui.input.KeyDown(DIK_Q);
    frame(600, 160, false);
    EXPECT_EQ((Binding{DIK_Q, DEVICE_KEYBOARD}), ui.input->GetBinding(SHOOT_FORWARD));
    EXPECT_NE(std::string::npos, ReadConfig().find("SHOOT_FORWARD=Q"));
    EXPECT_EQ((Binding{DIK_Q, DEVICE_KEYBOARD}), config.GetBinding(SHOOT_FORWARD));
    ui.input.Poll();
    EXPECT_TRUE(ui.input->IsDown(SHOOT_FORWARD));

    // Moving the row carries the box along.
    row.Move(10.0, -5.0);
    EXPECT_EQ(560.0, box.GetX());
    EXPECT_EQ(145.0, box.GetY());
}
