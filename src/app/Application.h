#pragma once

#include "platform/MessageQueue.h"

#include <cstdint>
#include <memory>

class InputSystem;
class Mode;
class Renderer;

namespace platform
{
class Window;
}

// Owns the game window, the display mode, the OpenGL renderer and the program-wide services,
// and re-creates the display when the resolution changes.
class Application
{
public:
    static constexpr int32_t SCREEN_WIDTH = 1024;
    static constexpr int32_t SCREEN_HEIGHT = 768;

    Application();
    virtual ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    bool Init(uint16_t p_width, uint16_t p_height, uint8_t p_bitsPerPixel);
    bool ChangeResolution(uint16_t p_width, uint16_t p_height);
    bool Shutdown();

    virtual Mode* GetCurrentMode() = 0;

    platform::Window* GetWindow() const { return m_pWindow.get(); }
    InputSystem* GetInput() const { return m_pInput.get(); }
    Renderer* GetRenderer() const { return m_pRenderer.get(); }
    // The real resolution in pixels.
    int32_t GetDisplayWidth() const { return m_clientRect.right; }
    int32_t GetDisplayHeight() const { return m_clientRect.bottom; }
    // The logical space every drawing uses, whatever the resolution.
    int32_t GetScreenWidth() const { return SCREEN_WIDTH; }
    int32_t GetScreenHeight() const { return SCREEN_HEIGHT; }

    // What the window does with a message the main loop took from the queue.
    void WindowProc(const platform::Message& p_message);
    void DestroyWindow();

protected:
    struct Rect
    {
        int32_t left;
        int32_t top;
        int32_t right;
        int32_t bottom;
    };

    bool CreateDisplay(uint16_t p_width, uint16_t p_height, const char* p_modeError,
                       const char* p_windowError, bool p_pixelFormatMatters);

    std::unique_ptr<platform::Window> m_pWindow;
    platform::Message m_msg;
    std::unique_ptr<InputSystem> m_pInput;
    std::unique_ptr<Renderer> m_pRenderer;
    Rect m_clientRect;
    uint8_t m_bitsPerPixel;
};

extern Application* g_pApplication;
