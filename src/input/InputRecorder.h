#pragma once

#include <cstdint>
#include <fstream>
#include <string>

// Writes a session's input as an input script (KORVATH_RECORD), so that the session replays
// exactly through KORVATH_INPUT_SCRIPT: the seed first, then each frame's time step and every
// change the devices reported in that frame, stamped with the frame's number. Each frame is
// flushed as it begins, so a session that crashes still leaves its file.
class InputRecorder
{
public:
    InputRecorder() = default;
    InputRecorder(const InputRecorder&) = delete;
    InputRecorder& operator=(const InputRecorder&) = delete;

    // Starts a new file; false, with p_error, when it cannot be written.
    bool Open(const std::string& p_fileName, uint32_t p_seed, std::string& p_error);
    void Close();
    bool IsOpen() const { return m_file.is_open(); }

    // Events recorded from now on belong to frame p_frame.
    void BeginFrame(int64_t p_frame);
    void FrameTime(float p_seconds);
    // p_code is a DIK_ code; a key without a name cannot be written and is left out.
    void Key(uint8_t p_code, bool p_down);
    void MouseMove(int32_t p_dx, int32_t p_dy);
    void MouseButton(int32_t p_button, bool p_down);
    void MouseWheel(int32_t p_amount);
    // p_joystick is the game's controller number.
    void JoyAxis(int32_t p_joystick, int32_t p_axis, int32_t p_value);
    void JoyButton(int32_t p_joystick, int32_t p_button, bool p_down);
    void Quit();

private:
    void Line(const std::string& p_event);

    std::ofstream m_file;
    int64_t m_frame = 0;
};

extern InputRecorder g_inputRecorder;
