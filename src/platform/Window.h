#pragma once

#include <cstdint>
#include <memory>

namespace platform
{

// The game's one window with its OpenGL 2.1 compatibility context (double-buffered, no depth
// buffer). Full screen covers the desktop and shows the game's display resolution scaled
// into the largest centred area of the same shape (black bars elsewhere), so the desktop's
// own mode is never touched; windowed mode opens a window of the display size, or of the
// largest size of its shape that the desktop holds, with the picture scaled into it.
class Window
{
public:
    Window();
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    // Brings the windowing system up (and down at the end). False when it cannot start.
    static bool InitVideo();
    static void QuitVideo();
    static bool IsVideoUp();

    // Full screen (the default) or a window; set from the command line before Init.
    static void SetFullscreenPreference(bool p_fullscreen);
    static bool GetFullscreenPreference();

    // Whether the display can show p_width x p_height at p_bitsPerPixel: the video system must
    // be up, the size sane (at least 320 x 200, at most 8192 on a side) and the depth 16, 24 or 32.
    static bool CheckDisplayMode(uint16_t p_width, uint16_t p_height, uint8_t p_bitsPerPixel);

    bool Create(const char* p_title, uint16_t p_width, uint16_t p_height);
    // False when the window could not be destroyed (it is forgotten anyway).
    bool Destroy();
    bool IsOpen() const;
    // Shows the window, raises it and gives it the keyboard focus.
    void Show();

    // Makes the OpenGL context and makes it current. False when that fails.
    bool CreateContext(uint8_t p_bitsPerPixel);
    bool HasContext() const;
    // Detaches and deletes the context; false (context forgotten) when detaching fails.
    bool DetachContext();
    void DeleteContext();
    void SwapBuffers();

    // Sets the GL viewport for a display resolution of p_width x p_height inside whatever the
    // window really measures now (the same size, or a full-screen desktop).
    void ApplyViewport(uint16_t p_width, uint16_t p_height);
    // The same for the display resolution last applied, after the window changed size.
    void RefreshViewport();
    // Pixel rectangle of the game picture inside the window.
    void GetViewport(int32_t& p_x, int32_t& p_y, int32_t& p_width, int32_t& p_height) const;

    // Alt+Enter: full screen <-> window, keeping the display resolution.
    void ToggleFullscreen();
    bool IsFullscreen() const;

    // Reads the picture just drawn (the back buffer, before the swap) as top-down RGBA and
    // writes it as a PNG file. False when there is nothing to read or the file cannot be written.
    bool SaveScreenshot(const char* p_fileName) const;

    // The window whose events the message queue reports (the newest one created).
    static Window* GetCurrent();
    void* GetNativeHandle() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_pImpl;
};

// Where a p_width x p_height picture goes inside a p_outerWidth x p_outerHeight drawable:
// the largest centred rectangle of the same shape.
void FitViewport(int32_t p_width, int32_t p_height, int32_t p_outerWidth, int32_t p_outerHeight,
                 int32_t& p_x, int32_t& p_y, int32_t& p_fitWidth, int32_t& p_fitHeight);

} // namespace platform
