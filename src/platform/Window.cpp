#include "platform/Window.h"

#include "platform/Gl.h"
#include "platform/PngFile.h"

#include <SDL2/SDL.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace platform
{

namespace
{
bool s_videoUp = false;
bool s_fullscreenPreference = true;
Window* s_pCurrent = nullptr;

// The size of a window showing a p_width x p_height display: that size, or, when the desktop
// cannot hold it, the largest of the same shape it can (the picture is then scaled into it).
void WindowedSize(uint16_t p_width, uint16_t p_height, int& p_windowWidth, int& p_windowHeight)
{
    p_windowWidth = p_width;
    p_windowHeight = p_height;
    SDL_Rect usable;
    if (SDL_GetDisplayUsableBounds(0, &usable) != 0 || usable.w <= 0 || usable.h <= 0 ||
        (p_width <= usable.w && p_height <= usable.h))
    {
        return;
    }
    int32_t x = 0;
    int32_t y = 0;
    int32_t fitWidth = 0;
    int32_t fitHeight = 0;
    FitViewport(p_width, p_height, usable.w, usable.h, x, y, fitWidth, fitHeight);
    p_windowWidth = fitWidth;
    p_windowHeight = fitHeight;
}
} // namespace

struct Window::Impl
{
    SDL_Window* pWindow = nullptr;
    SDL_GLContext context = nullptr;
    uint16_t displayWidth = 0;
    uint16_t displayHeight = 0;
    int32_t viewport[4] = {0, 0, 0, 0};
};

Window::Window() : m_pImpl(std::make_unique<Impl>()) {}

Window::~Window()
{
    DeleteContext();
    Destroy();
}

bool Window::InitVideo()
{
    if (s_videoUp)
    {
        return true;
    }
    SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0)
    {
        std::fprintf(stderr, "Korvath: the display could not be opened: %s\n", SDL_GetError());
        return false;
    }
    s_videoUp = true;
    return true;
}

void Window::QuitVideo()
{
    if (s_videoUp)
    {
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        s_videoUp = false;
    }
}

bool Window::IsVideoUp()
{
    return s_videoUp;
}

void Window::SetFullscreenPreference(bool p_fullscreen)
{
    s_fullscreenPreference = p_fullscreen;
}

bool Window::GetFullscreenPreference()
{
    return s_fullscreenPreference;
}

bool Window::CheckDisplayMode(uint16_t p_width, uint16_t p_height, uint8_t p_bitsPerPixel)
{
    if (!s_videoUp || SDL_GetNumVideoDisplays() < 1)
    {
        return false;
    }
    if (p_width < 320 || p_height < 200 || p_width > 8192 || p_height > 8192)
    {
        return false;
    }
    return p_bitsPerPixel == 16 || p_bitsPerPixel == 24 || p_bitsPerPixel == 32;
}

bool Window::Create(const char* p_title, uint16_t p_width, uint16_t p_height)
{
    if (!s_videoUp || m_pImpl->pWindow != nullptr)
    {
        return false;
    }
    // The pixel format is chosen with the window on X11, so the attributes go first.
    SDL_GL_ResetAttributes();
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 0);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 0);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 0);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 1);

    Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN;
    int x = SDL_WINDOWPOS_CENTERED;
    int y = SDL_WINDOWPOS_CENTERED;
    int width = 0;
    int height = 0;
    WindowedSize(p_width, p_height, width, height);
    SDL_DisplayMode desktop;
    if (s_fullscreenPreference && SDL_GetDesktopDisplayMode(0, &desktop) == 0)
    {
        // Made at the desktop's size from the start, so the picture fills the screen even where
        // no window manager carries out the switch to full screen.
        flags |= SDL_WINDOW_FULLSCREEN_DESKTOP | SDL_WINDOW_BORDERLESS;
        x = 0;
        y = 0;
        width = desktop.w;
        height = desktop.h;
    }
    m_pImpl->pWindow = SDL_CreateWindow(p_title, x, y, width, height, flags);
    if (m_pImpl->pWindow == nullptr)
    {
        std::fprintf(stderr, "Korvath: the window could not be created: %s\n", SDL_GetError());
        return false;
    }
    m_pImpl->displayWidth = p_width;
    m_pImpl->displayHeight = p_height;
    s_pCurrent = this;
    return true;
}

bool Window::Destroy()
{
    if (m_pImpl->pWindow == nullptr)
    {
        return true;
    }
    SDL_DestroyWindow(m_pImpl->pWindow);
    m_pImpl->pWindow = nullptr;
    if (s_pCurrent == this)
    {
        s_pCurrent = nullptr;
    }
    return true;
}

bool Window::IsOpen() const
{
    return m_pImpl->pWindow != nullptr;
}

void Window::Show()
{
    if (m_pImpl->pWindow == nullptr)
    {
        return;
    }
    SDL_ShowWindow(m_pImpl->pWindow);
    SDL_RaiseWindow(m_pImpl->pWindow);
}

bool Window::CreateContext(uint8_t p_bitsPerPixel)
{
    if (m_pImpl->pWindow == nullptr || p_bitsPerPixel == 0)
    {
        return false;
    }
    DeleteContext();
    m_pImpl->context = SDL_GL_CreateContext(m_pImpl->pWindow);
    if (m_pImpl->context == nullptr)
    {
        std::fprintf(stderr, "Korvath: no OpenGL context: %s\n", SDL_GetError());
        return false;
    }
    if (SDL_GL_MakeCurrent(m_pImpl->pWindow, m_pImpl->context) != 0)
    {
        SDL_GL_DeleteContext(m_pImpl->context);
        m_pImpl->context = nullptr;
        return false;
    }
    // Wait for the display's refresh where the driver allows it; never required.
    SDL_GL_SetSwapInterval(1);
    return true;
}

bool Window::HasContext() const
{
    return m_pImpl->context != nullptr;
}

bool Window::DetachContext()
{
    if (m_pImpl->context == nullptr)
    {
        return true;
    }
    if (SDL_GL_MakeCurrent(m_pImpl->pWindow, nullptr) != 0)
    {
        return false;
    }
    return true;
}

void Window::DeleteContext()
{
    if (m_pImpl->context != nullptr)
    {
        SDL_GL_MakeCurrent(m_pImpl->pWindow, nullptr);
        SDL_GL_DeleteContext(m_pImpl->context);
        m_pImpl->context = nullptr;
    }
}

void Window::SwapBuffers()
{
    if (m_pImpl->pWindow != nullptr && m_pImpl->context != nullptr)
    {
        SDL_GL_SwapWindow(m_pImpl->pWindow);
    }
}

void FitViewport(int32_t p_width, int32_t p_height, int32_t p_outerWidth, int32_t p_outerHeight,
                 int32_t& p_x, int32_t& p_y, int32_t& p_fitWidth, int32_t& p_fitHeight)
{
    p_width = std::max(p_width, 1);
    p_height = std::max(p_height, 1);
    p_outerWidth = std::max(p_outerWidth, 1);
    p_outerHeight = std::max(p_outerHeight, 1);
    // Compare p_outerWidth / p_width with p_outerHeight / p_height without rounding.
    if (static_cast<int64_t>(p_outerWidth) * p_height <= static_cast<int64_t>(p_outerHeight) * p_width)
    {
        p_fitWidth = p_outerWidth;
        p_fitHeight = static_cast<int32_t>((static_cast<int64_t>(p_outerWidth) * p_height + p_width / 2) / p_width);
    }
    else
    {
        p_fitHeight = p_outerHeight;
        p_fitWidth = static_cast<int32_t>((static_cast<int64_t>(p_outerHeight) * p_width + p_height / 2) / p_height);
    }
    p_x = (p_outerWidth - p_fitWidth) / 2;
    p_y = (p_outerHeight - p_fitHeight) / 2;
}

void Window::ApplyViewport(uint16_t p_width, uint16_t p_height)
{
    int32_t width = p_width;
    int32_t height = p_height == 0 ? 1 : p_height;
    m_pImpl->displayWidth = static_cast<uint16_t>(width);
    m_pImpl->displayHeight = static_cast<uint16_t>(height);
    int drawableWidth = width;
    int drawableHeight = height;
    if (m_pImpl->pWindow != nullptr)
    {
        SDL_GL_GetDrawableSize(m_pImpl->pWindow, &drawableWidth, &drawableHeight);
    }
    int32_t* v = m_pImpl->viewport;
    if (drawableWidth == width && drawableHeight == height)
    {
        v[0] = 0;
        v[1] = 0;
        v[2] = width;
        v[3] = height;
    }
    else
    {
        FitViewport(width, height, drawableWidth, drawableHeight, v[0], v[1], v[2], v[3]);
    }
    if (m_pImpl->context != nullptr)
    {
        glViewport(v[0], v[1], v[2], v[3]);
    }
}

void Window::RefreshViewport()
{
    if (m_pImpl->displayWidth != 0)
    {
        ApplyViewport(m_pImpl->displayWidth, m_pImpl->displayHeight);
    }
}

void Window::GetViewport(int32_t& p_x, int32_t& p_y, int32_t& p_width, int32_t& p_height) const
{
    p_x = m_pImpl->viewport[0];
    p_y = m_pImpl->viewport[1];
    p_width = m_pImpl->viewport[2];
    p_height = m_pImpl->viewport[3];
}

void Window::ToggleFullscreen()
{
    if (m_pImpl->pWindow == nullptr)
    {
        return;
    }
    const bool goFullscreen = !IsFullscreen();
    SDL_DisplayMode desktop;
    if (goFullscreen && SDL_GetDesktopDisplayMode(0, &desktop) == 0)
    {
        SDL_SetWindowBordered(m_pImpl->pWindow, SDL_FALSE);
        SDL_SetWindowPosition(m_pImpl->pWindow, 0, 0);
        SDL_SetWindowSize(m_pImpl->pWindow, desktop.w, desktop.h);
    }
    if (SDL_SetWindowFullscreen(m_pImpl->pWindow, goFullscreen ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0) != 0)
    {
        return;
    }
    if (!goFullscreen)
    {
        SDL_SetWindowBordered(m_pImpl->pWindow, SDL_TRUE);
        int width = 0;
        int height = 0;
        WindowedSize(m_pImpl->displayWidth, m_pImpl->displayHeight, width, height);
        SDL_SetWindowSize(m_pImpl->pWindow, width, height);
        SDL_SetWindowPosition(m_pImpl->pWindow, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
    }
    s_fullscreenPreference = goFullscreen;
    ApplyViewport(m_pImpl->displayWidth, m_pImpl->displayHeight);
}

bool Window::IsFullscreen() const
{
    if (m_pImpl->pWindow == nullptr)
    {
        return false;
    }
    return (SDL_GetWindowFlags(m_pImpl->pWindow) & SDL_WINDOW_FULLSCREEN) != 0;
}

bool Window::SaveScreenshot(const char* p_fileName) const
{
    if (m_pImpl->pWindow == nullptr || m_pImpl->context == nullptr || p_fileName == nullptr)
    {
        return false;
    }
    int width = 0;
    int height = 0;
    SDL_GL_GetDrawableSize(m_pImpl->pWindow, &width, &height);
    if (width <= 0 || height <= 0)
    {
        return false;
    }
    std::vector<uint8_t> bottomUp(static_cast<size_t>(width) * height * 4);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadBuffer(GL_BACK);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, bottomUp.data());
    std::vector<uint8_t> topDown(bottomUp.size());
    size_t stride = static_cast<size_t>(width) * 4;
    for (int row = 0; row < height; ++row)
    {
        const uint8_t* src = bottomUp.data() + static_cast<size_t>(height - 1 - row) * stride;
        uint8_t* dst = topDown.data() + static_cast<size_t>(row) * stride;
        for (size_t i = 0; i < stride; i += 4)
        {
            dst[i] = src[i];
            dst[i + 1] = src[i + 1];
            dst[i + 2] = src[i + 2];
            dst[i + 3] = 255; // the frame buffer has no alpha of its own
        }
    }
    return WritePng(p_fileName, width, height, topDown);
}

Window* Window::GetCurrent()
{
    return s_pCurrent;
}

void* Window::GetNativeHandle() const
{
    return m_pImpl->pWindow;
}

} // namespace platform
