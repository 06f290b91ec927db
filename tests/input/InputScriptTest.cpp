#include "app/DevOptions.h"
#include "input/InputRecorder.h"
#include "input/InputScript.h"
#include "input/RecordingRawInput.h"
#include "input/InputSystem.h"
#include "platform/DikCodes.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace
{
struct Played
{
    InputScript script;
    std::unique_ptr<InputSystem> input;

    explicit Played(const std::string& p_text)
    {
        std::string error;
        EXPECT_TRUE(script.Parse(p_text, error)) << error;
        input = std::make_unique<InputSystem>(&script.GetDevices(), nullptr);
        input->SetBinding(INTERACT, DEVICE_KEYBOARD, DIK_SPACE);
    }
    // One frame of the main loop: the script's events, then the poll. True on a quit.
    bool Frame(int64_t p_frame)
    {
        const bool quit = script.BeginFrame(p_frame).quit;
        input->Poll();
        return quit;
    }
};

std::string ParseError(const std::string& p_text)
{
    InputScript script;
    std::string error;
    EXPECT_FALSE(script.Parse(p_text, error)) << p_text;
    EXPECT_FALSE(script.IsLoaded());
    return error;
}
} // namespace

TEST(InputScriptTest, EventsTakeEffectInTheFrameTheyName)
{
    Played run("# hold space for two frames\n"
               "\n"
               "2 key SPACE down\n"
               "4 KEY space UP   # case does not matter\n"
               "3 mouse move 5 -7\r\n"
               "3 mouse move 1 1\n"
               "3 mouse button 0 down\n"
               "5 mouse wheel -120\n"
               "6 joy 1 axis 1 65535\n"
               "6 joy 0 button 127 down\n"
               "7 joy 0 button 127 up\n"
               "8 quit\n");
    ASSERT_TRUE(run.script.IsLoaded());
    EXPECT_EQ(10u, run.script.GetEventCount());
    // Controllers up to the highest one named exist from the start.
    ASSERT_EQ(2, run.input->GetJoystick()->GetCount());

    EXPECT_FALSE(run.Frame(1));
    EXPECT_FALSE(run.input->AnyKeyDown());
    run.Frame(2);
    EXPECT_TRUE(run.input->WasPressed(INTERACT));
    run.Frame(3);
    EXPECT_TRUE(run.input->IsDown(INTERACT));
    int32_t dx = 0;
    int32_t dy = 0;
    run.input->GetMouse()->GetDelta(dx, dy);
    EXPECT_EQ(6, dx);
    EXPECT_EQ(-6, dy);
    EXPECT_TRUE(run.input->GetMouse()->ButtonPressed(0));
    run.Frame(4);
    EXPECT_TRUE(run.input->WasReleased(INTERACT));
    run.input->GetMouse()->GetDelta(dx, dy);
    EXPECT_EQ(0, dx);
    EXPECT_TRUE(run.input->GetMouse()->IsButtonDown(0));
    run.Frame(5);
    EXPECT_EQ(-120, run.input->GetMouse()->GetWheel());
    run.Frame(6);
    // "joy 1" is the game's controller 1 (JOY129.., AXIS17..), "joy 0" controller 0.
    EXPECT_EQ(32768, run.input->GetJoystick()->GetAxis((1 * 8 + 1) * 2 + 1, false));
    EXPECT_TRUE(run.input->GetJoystick()->ButtonPressed(127));
    run.Frame(7);
    EXPECT_TRUE(run.input->GetJoystick()->ButtonReleased(127));
    EXPECT_TRUE(run.Frame(8));
    EXPECT_FALSE(run.Frame(9));
}

TEST(InputScriptTest, LinesOfOneFrameKeepTheirOrderAndSkippedFramesStillApply)
{
    Played run("9 key W up\n"
               "3 key W down\n"
               "3 key W up\n"
               "3 key W down\n");
    run.Frame(1);
    EXPECT_FALSE(run.input->GetKeyboard()->IsKeyDown(DIK_W));
    // Frame 3 never ran on its own: its events come with the next frame that does.
    run.script.BeginFrame(5);
    run.input->Poll();
    EXPECT_TRUE(run.input->GetKeyboard()->IsKeyDown(DIK_W));
    run.Frame(9);
    EXPECT_FALSE(run.input->GetKeyboard()->IsKeyDown(DIK_W));
}

TEST(InputScriptTest, MalformedLinesAreNamed)
{
    EXPECT_EQ("line 2: unknown key name \"BANANA\"", ParseError("1 key W down\n5 key BANANA down\n"));
    EXPECT_EQ("line 1: the frame must be a number from 1, not \"0\"", ParseError("0 key W down"));
    EXPECT_EQ("line 1: an event must follow the frame", ParseError("7"));
    EXPECT_EQ("line 3: expected down or up, not \"pressed\"", ParseError("\n# c\n1 key W pressed"));
    EXPECT_EQ("line 1: unknown key name \"JOY1\"", ParseError("1 key JOY1 down"));
    EXPECT_EQ("line 1: the mouse button must be 0 to 3, not \"4\"", ParseError("1 mouse button 4 down"));
    EXPECT_EQ("line 1: mouse move needs two whole numbers of counts", ParseError("1 mouse move 1.5 2"));
    EXPECT_EQ("line 1: the controller must be 0 to 15, not \"16\"", ParseError("1 joy 16 button 0 down"));
    EXPECT_EQ("line 1: the axis value must be 0 to 65535, not \"65536\"", ParseError("1 joy 0 axis 0 65536"));
    EXPECT_EQ("line 1: not an event: \"quit ...\"", ParseError("1 quit now"));
    EXPECT_EQ("line 1: not an event: \"fly ...\"", ParseError("1 fly to the moon"));
    EXPECT_EQ("line 1: the frame must be a number from 1, not \"99999999999999999999999\"",
              ParseError("99999999999999999999999 quit"));

    // A failed parse leaves nothing loaded, even after a good one.
    InputScript script;
    std::string error;
    ASSERT_TRUE(script.Parse("1 quit", error));
    EXPECT_FALSE(script.Parse("1 quit\n2 jump", error));
    EXPECT_FALSE(script.IsLoaded());
    EXPECT_FALSE(script.BeginFrame(1).quit);
    // An empty script is a valid one that does nothing.
    ASSERT_TRUE(script.Parse("# nothing\n\n", error));
    EXPECT_TRUE(script.IsLoaded());
    EXPECT_FALSE(script.BeginFrame(1).quit);
}

TEST(InputScriptTest, LoadNamesTheFile)
{
    const std::string dir = testsupport::MakeTempDir("korvath-script");
    ASSERT_FALSE(dir.empty());
    const std::string path = dir + "/run.txt";
    {
        std::ofstream file(path);
        file << "1 key W down\n2 key W sideways\n";
    }
    InputScript script;
    std::string error;
    EXPECT_FALSE(script.Load(path, error));
    EXPECT_EQ(path + " line 2: expected down or up, not \"sideways\"", error);
    EXPECT_FALSE(script.Load(dir + "/missing.txt", error));
    EXPECT_EQ(dir + "/missing.txt: cannot be read", error);
    {
        std::ofstream file(path);
        file << "1 key W down\n";
    }
    EXPECT_TRUE(script.Load(path, error));
    EXPECT_EQ(1u, script.GetEventCount());
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
}

TEST(InputScriptTest, DevOptionsTakeTheScriptFromTheEnvironment)
{
    static std::map<std::string, std::string> s_env;
    auto getenv = [](const char* p_name) -> const char* {
        auto it = s_env.find(p_name);
        return it == s_env.end() ? nullptr : it->second.c_str();
    };
    const char* argv[] = {"korvath"};
    DevOptions unset;
    unset.Parse(1, argv, getenv);
    EXPECT_TRUE(unset.inputScript.empty());

    s_env["KORVATH_INPUT_SCRIPT"] = "tests/skip.txt";
    DevOptions options;
    options.Parse(1, argv, getenv);
    EXPECT_EQ("tests/skip.txt", options.inputScript);
    EXPECT_TRUE(options.errors.empty());
}

TEST(InputScriptTest, FrameTimesAndTheSeedAreReadAndBadOnesNamed)
{
    InputScript script;
    std::string error;
    ASSERT_TRUE(script.Parse("seed 4000000000\n3 dt 0.016666668\n5 DT 5\n", error)) << error;
    EXPECT_TRUE(script.HasSeed());
    EXPECT_EQ(4000000000u, script.GetSeed());
    float seconds = 0.0f;
    ASSERT_TRUE(script.GetFrameTime(3, seconds));
    EXPECT_EQ(0.016666668f, seconds);
    ASSERT_TRUE(script.GetFrameTime(5, seconds));
    EXPECT_EQ(5.0f, seconds);
    EXPECT_FALSE(script.GetFrameTime(4, seconds));
    EXPECT_EQ(0u, script.GetEventCount());

    for (const char* bad : {"1 dt 0", "1 dt -0.5", "1 dt 5.5", "1 dt fast", "1 dt", "seed", "seed -1", "seed 1 2"})
    {
        EXPECT_FALSE(script.Parse(bad, error)) << bad;
        EXPECT_EQ(0u, error.find("line 1: ")) << error;
        EXPECT_FALSE(script.HasSeed()) << bad;
    }
}

// What the recorder writes while devices change, read back as a script, drives the devices
// the same way: keys, mouse motion, wheel and buttons, a controller's axis and button.
TEST(InputScriptTest, ARecordingReplaysTheDeviceChangesItSaw)
{
    const std::string file = ::testing::TempDir() + "korvath-input-recording.txt";
    const std::string original = "2 key W down\n2 mouse move 5 -3\n3 mouse button 1 down\n4 mouse wheel -120\n"
                                 "4 key W up\n5 joy 0 axis 1 100\n5 joy 0 button 7 down\n6 mouse button 1 up\n";
    {
        Played played(original);
        std::string error;
        ASSERT_TRUE(g_inputRecorder.Open(file, 77, error)) << error;
        RecordingRawInput recording(&played.script.GetDevices(), g_inputRecorder);
        InputSystem input(&recording, nullptr);
        for (int64_t frame = 1; frame <= 7; ++frame)
        {
            g_inputRecorder.BeginFrame(frame);
            g_inputRecorder.FrameTime(0.05f);
            played.script.BeginFrame(frame);
            input.Poll();
        }
        g_inputRecorder.Close();
    }
    std::ifstream in(file);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    InputScript replay;
    std::string error;
    ASSERT_TRUE(replay.Parse(text, error)) << error << "\n" << text;
    EXPECT_EQ(77u, replay.GetSeed());
    float seconds = 0.0f;
    EXPECT_TRUE(replay.GetFrameTime(7, seconds));
    EXPECT_EQ(0.05f, seconds);
    for (const char* line : {"2 key W down", "2 mouse move 5 -3", "3 mouse button 1 down", "4 mouse wheel -120",
                             "4 key W up", "5 joy 0 axis 1 100", "5 joy 0 button 7 down", "6 mouse button 1 up"})
    {
        EXPECT_NE(std::string::npos, text.find(std::string(line) + "\n")) << line << " missing from\n" << text;
    }
    EXPECT_EQ(8u, replay.GetEventCount());
}

TEST(InputScriptTest, EnterGoingDownWhileAltIsHeldIsAltEnter)
{
    Played run("1 key ENTER down\n"
               "2 key ENTER up\n"
               "2 key LALT down\n"
               "3 key ENTER down\n"
               "4 key ENTER up\n"
               "5 key LALT up\n"
               "6 key ENTER down\n"
               "7 key RALT down\n"
               "8 key ENTER up\n"
               "8 key NUMPADENTER down\n"
               "9 key RALT up\n"
               "9 key NUMPADENTER up\n"
               "9 quit\n");
    std::vector<int64_t> switches;
    for (int64_t frame = 1; frame <= 9; ++frame)
    {
        const InputScript::Requests requests = run.script.BeginFrame(frame);
        run.input->Poll();
        if (requests.toggleFullScreen)
        {
            switches.push_back(frame);
            // The keys still reach the game as keys.
            EXPECT_TRUE(run.input->GetKeyboard()->IsKeyDown(frame == 3 ? DIK_LALT : DIK_RALT));
        }
        EXPECT_EQ(frame == 9, requests.quit) << frame;
    }
    // Enter alone, Alt pressed after Enter: nothing; Alt then Enter on either side: a switch.
    EXPECT_EQ((std::vector<int64_t>{3, 8}), switches);
}
