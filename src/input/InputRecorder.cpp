#include "input/InputRecorder.h"

#include "input/KeyNameTable.h"

#include <cstdio>

InputRecorder g_inputRecorder;

bool InputRecorder::Open(const std::string& p_fileName, uint32_t p_seed, std::string& p_error)
{
    Close();
    m_file.open(p_fileName, std::ios::binary | std::ios::trunc);
    if (!m_file)
    {
        p_error = p_fileName + ": cannot be written";
        return false;
    }
    m_frame = 0;
    m_file << "# Korvath input recording: replay it with KORVATH_INPUT_SCRIPT\n";
    m_file << "seed " << p_seed << "\n";
    m_file.flush();
    return true;
}

void InputRecorder::Close()
{
    if (m_file.is_open())
    {
        m_file.close();
    }
}

void InputRecorder::BeginFrame(int64_t p_frame)
{
    if (IsOpen())
    {
        m_file.flush();
    }
    m_frame = p_frame;
}

void InputRecorder::FrameTime(float p_seconds)
{
    // Nine significant digits bring a float back bit for bit.
    char text[48];
    std::snprintf(text, sizeof(text), "dt %.9g", static_cast<double>(p_seconds));
    Line(text);
}

void InputRecorder::Key(uint8_t p_code, bool p_down)
{
    const char* name = g_keyNames.GetKeyName(p_code);
    if (name != nullptr && name[0] != '\0')
    {
        Line(std::string("key ") + name + (p_down ? " down" : " up"));
    }
}

void InputRecorder::MouseMove(int32_t p_dx, int32_t p_dy)
{
    Line("mouse move " + std::to_string(p_dx) + " " + std::to_string(p_dy));
}

void InputRecorder::MouseButton(int32_t p_button, bool p_down)
{
    Line("mouse button " + std::to_string(p_button) + (p_down ? " down" : " up"));
}

void InputRecorder::MouseWheel(int32_t p_amount)
{
    Line("mouse wheel " + std::to_string(p_amount));
}

void InputRecorder::JoyAxis(int32_t p_joystick, int32_t p_axis, int32_t p_value)
{
    Line("joy " + std::to_string(p_joystick) + " axis " + std::to_string(p_axis) + " " + std::to_string(p_value));
}

void InputRecorder::JoyButton(int32_t p_joystick, int32_t p_button, bool p_down)
{
    Line("joy " + std::to_string(p_joystick) + " button " + std::to_string(p_button) + (p_down ? " down" : " up"));
}

void InputRecorder::Quit()
{
    Line("quit");
}

void InputRecorder::Line(const std::string& p_event)
{
    if (IsOpen())
    {
        m_file << m_frame << ' ' << p_event << '\n';
    }
}
