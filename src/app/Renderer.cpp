#include "app/Renderer.h"

#include "platform/Gl.h"
#include "platform/System.h"
#include "platform/Window.h"

#include <cassert>

namespace
{
constexpr double LOGICAL_WIDTH = 1024.0;
constexpr double LOGICAL_HEIGHT = 768.0;
} // namespace

Renderer::Renderer() : m_pWindow(nullptr), m_hasContext(false) {}

Renderer::~Renderer()
{
    m_pWindow = nullptr;
}

bool Renderer::SetupPixelFormat(platform::Window* p_window, uint8_t p_bitsPerPixel)
{
    m_pWindow = p_window;
    if (p_window == nullptr || !p_window->IsOpen() || !p_window->CreateContext(p_bitsPerPixel))
    {
        Release(p_window);
        return false;
    }
    m_hasContext = true;
    return true;
}

bool Renderer::Release(platform::Window* p_window)
{
    platform::Window* window = p_window != nullptr ? p_window : m_pWindow;
    if (m_hasContext && window != nullptr)
    {
        if (!window->DetachContext())
        {
            platform::ShowMessageBox("Unable to release HRC", "ERROR");
            assert(!"Renderer: unable to release HRC");
            return false;
        }
        window->DeleteContext();
    }
    m_hasContext = false;
    m_pWindow = nullptr;
    return true;
}

bool Renderer::InitGL()
{
    glEnable(GL_TEXTURE_2D);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glShadeModel(GL_SMOOTH);
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
    return true;
}

bool Renderer::Resize(uint16_t p_width, uint16_t p_height)
{
    if (p_height == 0)
    {
        p_height = 1;
    }
    if (m_pWindow != nullptr)
    {
        // The window may be larger than the display resolution (full screen on a desktop of
        // another size); the window places the picture.
        m_pWindow->ApplyViewport(p_width, p_height);
    }
    else
    {
        glViewport(0, 0, p_width, p_height);
    }
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0.0, LOGICAL_WIDTH, LOGICAL_HEIGHT, 0.0, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    return true;
}

bool Renderer::BeginFrame()
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    return true;
}

bool Renderer::EndFrame()
{
    glFlush();
    if (m_pWindow != nullptr)
    {
        m_pWindow->SwapBuffers();
    }
    return true;
}
