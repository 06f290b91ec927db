#pragma once

#include "app/Application.h"
#include "app/Timer.h"

#include <cstdint>
#include <memory>

class Font;
class Mode;

// The application object of the game: the main loop and the switching between modes.
class Game : public Application
{
public:
    // Frames never advance the game by more than this many seconds.
    static constexpr float MAX_FRAME_TIME = 5.0f;
    // The name of the pilot --mission makes when no --pilot is given.
    static constexpr const char* DEVELOPER_PILOT = "Developer";

    Game();
    ~Game() override;

    bool Init(uint16_t p_width, uint16_t p_height, uint8_t p_bitsPerPixel);
    bool Run();
    // One pass of the main loop; false once the loop must end.
    bool RunFrame();
    // Returns the exit code: what the last message taken from the queue carried.
    int Shutdown();

    Mode* GetCurrentMode() override;
    int32_t GetModeCode() const { return m_modeCode; }
    int64_t GetFrameCount() const { return m_frame; }

    static float ClampFrameTime(float p_dt);
    // Acts on what the current mode's Update returned; false when the game must end.
    bool ApplyModeCode(int32_t p_code);

protected:
    // Constructs the mode for p_code (0, 1, 2, 3 or 255); it is initialised by StartMode once current.
    virtual std::unique_ptr<Mode> NewMode(int32_t p_code);
    // Initialises or loads the just-created current mode.
    virtual void StartMode(int32_t p_code);
    void SetCurrentMode(std::unique_ptr<Mode> p_mode, int32_t p_modeCode);
    // --mission (with or without --pilot): straight into mission play; --pilot alone: the hub.
    void StartDeveloperMission();

private:
    // This frame's time step: measured, fixed by KORVATH_FIXED_DT or given by the input script.
    float FrameTime();
    // The current mode drawn and shown, and saved when the frame is a screenshot frame.
    void DrawFrame();

    int32_t m_modeCode;
    std::unique_ptr<Mode> m_pMode;
    Timer m_timer;
    Font* m_pFont;
    int64_t m_frame;
};
