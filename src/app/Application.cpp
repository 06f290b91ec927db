#include "app/Application.h"

#include "app/ErrorLog.h"
#include "app/Mode.h"
#include "app/Renderer.h"
#include "app/Settings.h"
#include "gfx/FontList.h"
#include "gfx/Image.h"
#include "gfx/TextureManager.h"
#include "input/InputSystem.h"
#include "platform/Gl.h"
#include "platform/System.h"
#include "platform/Window.h"
#include "sound/Sound.h"

Application* g_pApplication = nullptr;

namespace
{
const char* WINDOW_TITLE = "Korvath";
}

Application::Application() : m_msg(), m_clientRect{0, 0, 0, 0}, m_bitsPerPixel(0) {}

Application::~Application()
{
    if (g_pApplication == this)
    {
        g_pApplication = nullptr;
    }
}

// Switches the display, opens the window and binds OpenGL to it (the steps Init and
// ChangeResolution share). Reports the failing step's text.
bool Application::CreateDisplay(uint16_t p_width, uint16_t p_height, const char* p_modeError,
                                const char* p_windowError, bool p_pixelFormatMatters)
{
    if (!platform::Window::InitVideo() ||
        !platform::Window::CheckDisplayMode(p_width, p_height, m_bitsPerPixel))
    {
        g_errorLog.Report(p_modeError, false);
        return false;
    }
    platform::ShowSystemCursor(false);

    m_pWindow = std::make_unique<platform::Window>();
    if (!m_pWindow->Create(WINDOW_TITLE, p_width, p_height))
    {
        m_pWindow.reset();
        g_errorLog.Report(p_windowError, false);
        return false;
    }
    if (!m_pRenderer->SetupPixelFormat(m_pWindow.get(), m_bitsPerPixel) && p_pixelFormatMatters)
    {
        g_errorLog.Report("Unable to handle the Pixel Format", false);
        return false;
    }
    m_pWindow->Show();
    return true;
}

bool Application::Init(uint16_t p_width, uint16_t p_height, uint8_t p_bitsPerPixel)
{
    m_clientRect = Rect{0, 0, p_width, p_height};
    m_bitsPerPixel = p_bitsPerPixel;
    m_pRenderer = std::make_unique<Renderer>();

    // There is no window class to register here: the display comes up with the first mode switch.
    if (!CreateDisplay(p_width, p_height, "Unable to switch into full screen mode.", "Unable to Create Window", true))
    {
        return false;
    }
    m_pRenderer->Resize(p_width, p_height);
    m_pRenderer->InitGL();
    if (glGetString(GL_VERSION) == nullptr)
    {
        g_errorLog.Report("Unable to Initialize OpenGL", false);
        return false;
    }
    g_pApplication = this;
    m_pInput = std::make_unique<InputSystem>(m_pWindow.get());

    g_pTextureManager = new TextureManager();
    g_pTextureManager->Reset();
    // Fonts that outlived an earlier display (a second start in one process) get their
    // glyphs in this context; at the first start there are none.
    g_fontList.RecreateAll();

    g_pSound = new Sound();
    g_pSound->Init();
    g_pSound->SetVolume(Sound::VolumeFromSlider(g_settings.GetVolume()));
    return true;
}

bool Application::ChangeResolution(uint16_t p_width, uint16_t p_height)
{
    const uint16_t oldWidth = static_cast<uint16_t>(m_clientRect.right);
    const uint16_t oldHeight = static_cast<uint16_t>(m_clientRect.bottom);

    Image::ReleaseAll();
    g_fontList.DeleteAllLists();
    m_pRenderer->Release(m_pWindow.get());
    DestroyWindow();

    uint16_t width = p_width;
    uint16_t height = p_height;
    if (!CreateDisplay(width, height, "Unable to set new resolution", "Unable to re-create window", false))
    {
        // Rather than leave the player without a window, go back to the resolution that
        // worked; if even that fails the game ends and shows why.
        m_pRenderer->Release(m_pWindow.get());
        DestroyWindow();
        width = oldWidth;
        height = oldHeight;
        if (!CreateDisplay(width, height, "Unable to set new resolution", "Unable to re-create window", false))
        {
            platform::MessageQueue::PostQuit(0);
            return false;
        }
    }
    m_pRenderer->Resize(width, height);
    m_pRenderer->InitGL();
    m_clientRect = Rect{0, 0, width, height};
    if (m_pInput)
    {
        m_pInput->Reset(m_pWindow.get());
    }

    if (g_pTextureManager != nullptr)
    {
        g_pTextureManager->ReloadAll();
    }
    Image::RebuildAll();
    if (Mode* mode = GetCurrentMode())
    {
        mode->OnDisplayReset();
    }
    g_fontList.RecreateAll();
    return width == p_width && height == p_height;
}

bool Application::Shutdown()
{
    delete g_pSound;
    g_pSound = nullptr;

    m_pInput.reset();
    // The shared cursor outlives the application; it must not keep reading a deleted mouse.
    Mode::s_cursor.Rebind(nullptr);

    delete g_pTextureManager;
    g_pTextureManager = nullptr;

    // Display lists end with the context; forget them now so nothing deletes them later.
    Image::ReleaseAll();
    g_fontList.DeleteAllLists();
    if (m_pRenderer)
    {
        m_pRenderer->Release(m_pWindow.get());
        m_pRenderer.reset();
    }
    if (m_pWindow && !m_pWindow->Destroy())
    {
        g_errorLog.Report("Unable to destroy window.", false);
    }
    m_pWindow.reset();
    platform::ShowSystemCursor(true);
    platform::Window::QuitVideo();
    g_errorLog.ShowAll();
    return true;
}

void Application::WindowProc(const platform::Message& p_message)
{
    if (p_message.type == platform::MessageType::Close)
    {
        platform::MessageQueue::PostQuit(0);
    }
    else if (p_message.type == platform::MessageType::ToggleFullScreen && m_pWindow)
    {
        m_pWindow->ToggleFullscreen();
        g_settings.SetFullScreen(m_pWindow->IsFullscreen());
    }
}

void Application::DestroyWindow()
{
    if (m_pWindow)
    {
        m_pWindow->DeleteContext();
        m_pWindow->Destroy();
        m_pWindow.reset();
    }
}
