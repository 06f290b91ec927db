#pragma once

#include <cstdint>

namespace platform
{
class Window;
}

// Binds OpenGL to the game window: context, initial state, the fixed 1024 x 768 logical
// projection, and the frame brackets.
class Renderer
{
public:
    Renderer();
    ~Renderer();

    bool SetupPixelFormat(platform::Window* p_window, uint8_t p_bitsPerPixel);
    bool Release(platform::Window* p_window);
    bool InitGL();
    bool Resize(uint16_t p_width, uint16_t p_height);
    bool BeginFrame();
    bool EndFrame();

    bool HasContext() const { return m_hasContext; }
    platform::Window* GetWindow() const { return m_pWindow; }

private:
    platform::Window* m_pWindow; // the window the context was made for
    bool m_hasContext;
};
