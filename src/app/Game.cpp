#include "app/Game.h"

#include "app/DevOptions.h"
#include "app/Mode.h"
#include "app/ModeCode.h"
#include "app/Renderer.h"
#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "input/InputRecorder.h"
#include "input/InputScript.h"
#include "input/InputSystem.h"
#include "menus/Menu.h"
#include "menus/MenuMode.h"
#include "menus/SlideshowMode.h"
#include "mission/Campaign.h"
#include "mission/HubMode.h"
#include "mission/MissionMode.h"
#include "pilot/PartCatalog.h"
#include "platform/MessageQueue.h"
#include "platform/Window.h"
#include "sim/PlayerShip.h"
#include "ui/WidgetGalleryMode.h"

#include <cstdio>

Game::Game() : m_modeCode(0), m_pFont(nullptr), m_frame(0) {}

Game::~Game()
{
    m_pMode.reset();
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
}

bool Game::Init(uint16_t p_width, uint16_t p_height, uint8_t p_bitsPerPixel)
{
    if (!Application::Init(p_width, p_height, p_bitsPerPixel))
    {
        return false;
    }
    // Pilots fit their parts from the catalogue, so it comes before any mode.
    CreatePartCatalog();
    if (g_devOptions.widgets)
    {
        // The developer's widget gallery instead of the game; its "Quit" returns ModeCode 7.
        m_modeCode = MODECODE_MENUS;
        m_pMode = std::make_unique<WidgetGalleryMode>();
    }
    else if (!g_devOptions.mission.empty() || !g_devOptions.pilot.empty())
    {
        StartDeveloperMission();
    }
    else
    {
        m_modeCode = MODECODE_SLIDESHOW;
        auto slideshow = std::make_unique<SlideshowMode>();
        SlideshowMode* intro = slideshow.get();
        m_pMode = std::move(slideshow);
        intro->Load("Mode\\intro.ssf");
    }

    m_pFont = g_fontList.GetFont("Arial", 12, 0);
    g_fontList.GetFont("Tahoma", 12, 0);
    g_fontList.GetFont("Tahoma", 24, FONT_BOLD);
    return true;
}

void Game::StartDeveloperMission()
{
    // --pilot alone opens the hub for that pilot; --mission flies at once.
    const int32_t code = g_devOptions.mission.empty() ? MODECODE_HUB : MODECODE_MISSION;
    std::unique_ptr<Mode> mode = NewMode(code);
    // The first mode made the player's ship: now it can take its pilot. Without --pilot a
    // new pilot starts, the way the pilot menu makes one.
    if (!g_devOptions.pilot.empty())
    {
        Mode::s_pPlayer->LoadPilot(g_devOptions.pilot.c_str());
    }
    else
    {
        Mode::s_pPlayer->GetPilot().SetPilotName(DEVELOPER_PILOT);
        Mode::s_pPlayer->LoadPilot(Pilot::NewPilotFileName(DEVELOPER_PILOT).c_str());
    }
    if (!g_devOptions.mission.empty())
    {
        g_campaign.SetMission(g_devOptions.mission.c_str());
    }
    SetCurrentMode(std::move(mode), code);
    StartMode(code);
}

float Game::ClampFrameTime(float p_dt)
{
    return p_dt < MAX_FRAME_TIME ? p_dt : MAX_FRAME_TIME;
}

std::unique_ptr<Mode> Game::NewMode(int32_t p_code)
{
    if (p_code == MODECODE_SLIDESHOW || p_code == MODECODE_CREDITS)
    {
        return std::make_unique<SlideshowMode>();
    }
    if (p_code == MODECODE_MISSION)
    {
        return std::make_unique<MissionMode>();
    }
    if (p_code == MODECODE_HUB)
    {
        return std::make_unique<HubMode>();
    }
    if (p_code == MODECODE_MENUS)
    {
        return std::make_unique<MenuMode>();
    }
    return nullptr;
}

void Game::StartMode(int32_t p_code)
{
    if (p_code == MODECODE_SLIDESHOW || p_code == MODECODE_CREDITS)
    {
        static_cast<SlideshowMode*>(m_pMode.get())->Load(p_code == MODECODE_CREDITS ? SlideshowMode::CREDITS_TEXT : nullptr);
    }
    else if (p_code == MODECODE_MISSION)
    {
        static_cast<MissionMode*>(m_pMode.get())->Init(m_pInput.get());
    }
    else if (p_code == MODECODE_HUB)
    {
        static_cast<HubMode*>(m_pMode.get())->Init(m_pInput.get());
    }
    else if (p_code == MODECODE_MENUS)
    {
        static_cast<MenuMode*>(m_pMode.get())->Init(m_pInput ? m_pInput->GetMouse() : nullptr, MENUCODE_OPEN_TITLE);
    }
}

void Game::SetCurrentMode(std::unique_ptr<Mode> p_mode, int32_t p_modeCode)
{
    m_pMode = std::move(p_mode);
    m_modeCode = p_modeCode;
}

bool Game::ApplyModeCode(int32_t p_code)
{
    switch (p_code)
    {
    case MODECODE_QUIT:
        return false;
    case MODECODE_MENUS:
    case MODECODE_HUB:
    case MODECODE_MISSION:
    case MODECODE_SLIDESHOW:
    case MODECODE_CREDITS:
        // The old mode goes before the new one is made: its destructor silences its sounds.
        m_pMode.reset();
        m_modeCode = p_code == MODECODE_CREDITS ? MODECODE_SLIDESHOW : p_code;
        m_pMode = NewMode(p_code);
        StartMode(p_code);
        return true;
    default:
        return true;
    }
}

bool Game::RunFrame()
{
    ++m_frame;
    bool quit = false;
    g_inputRecorder.BeginFrame(m_frame);
    // A replayed run's events of this frame; its "quit" is a click on the close button, its
    // Alt+Enter the same as the keyboard's.
    const InputScript::Requests requests = g_inputScript.BeginFrame(m_frame);
    if (requests.quit)
    {
        platform::MessageQueue::Post(platform::Message{platform::MessageType::Close, 0});
    }
    if (requests.toggleFullScreen)
    {
        platform::MessageQueue::Post(platform::Message{platform::MessageType::ToggleFullScreen, 0});
    }
    if (platform::MessageQueue::Peek(m_msg))
    {
        if (m_msg.type == platform::MessageType::Quit)
        {
            quit = true;
        }
        else
        {
            if (m_msg.type == platform::MessageType::Close)
            {
                g_inputRecorder.Quit();
            }
            WindowProc(m_msg);
        }
    }

    const float dt = FrameTime();
    g_inputRecorder.FrameTime(dt);

    const int32_t code = m_pMode ? m_pMode->Update(dt) : MODECODE_STAY;
    if (!ApplyModeCode(code))
    {
        quit = true;
    }

    if (g_devOptions.IsDrawnFrame(m_frame))
    {
        DrawFrame();
    }
    else if (m_pMode)
    {
        m_pMode->PassUndrawnFrame();
    }

    if (m_pInput)
    {
        m_pInput->Poll();
    }
    if (m_pMode)
    {
        m_pMode->HandleInput(m_pInput.get());
    }
    if (g_devOptions.exitAfter > 0 && m_frame >= g_devOptions.exitAfter)
    {
        quit = true;
    }
    return !quit;
}

float Game::FrameTime()
{
    // The timer is read every frame, so that real time goes on counting from the last frame.
    float dt = m_timer.GetElapsed();
    if (g_devOptions.fixedDt > 0.0)
    {
        dt = static_cast<float>(g_devOptions.fixedDt);
    }
    // A replayed recording gives each frame the time it had.
    float scripted = 0.0f;
    if (g_inputScript.GetFrameTime(m_frame, scripted))
    {
        dt = scripted;
    }
    return ClampFrameTime(dt);
}

void Game::DrawFrame()
{
    m_pRenderer->BeginFrame();
    if (m_pMode)
    {
        m_pMode->Render();
    }
    if (g_devOptions.IsScreenshotFrame(m_frame) && m_pWindow)
    {
        const std::string name = DevOptions::ScreenshotName(m_frame);
        if (!m_pWindow->SaveScreenshot(name.c_str()))
        {
            std::fprintf(stderr, "Korvath: could not save %s\n", name.c_str());
        }
    }
    m_pRenderer->EndFrame();
}

bool Game::Run()
{
    m_timer.Start();
    while (RunFrame())
    {
    }
    return true;
}

int Game::Shutdown()
{
    m_pMode.reset();
    DestroyPartCatalog();
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
    Application::Shutdown();
    return static_cast<int>(m_msg.wParam);
}

Mode* Game::GetCurrentMode()
{
    return m_pMode.get();
}
