#pragma once

#include "platform/RawInput.h"

#include <memory>

class InputRecorder;

// Devices that pass on what other devices report and tell the recorder every change: keys
// and buttons going down or up, mouse motion and wheel, controller axes. The input system
// reads through them while a session is recorded.
class RecordingRawInput : public platform::RawInput
{
public:
    // p_input is not owned and must outlive the devices made here.
    RecordingRawInput(platform::RawInput* p_input, InputRecorder& p_recorder);

    std::unique_ptr<platform::RawKeyboard> CreateKeyboard() override;
    std::unique_ptr<platform::RawMouse> CreateMouse() override;
    int32_t GetJoystickCount() override;
    std::unique_ptr<platform::RawJoystick> CreateJoystick(int32_t p_index) override;

private:
    class KeyboardDevice;
    class MouseDevice;
    class JoystickDevice;

    platform::RawInput* m_pInput;
    InputRecorder& m_recorder;
};
