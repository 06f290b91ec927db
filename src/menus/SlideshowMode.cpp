#include "menus/SlideshowMode.h"

#include "app/ModeCode.h"
#include "gfx/Image.h"
#include "gfx/Picture.h"
#include "input/InputSystem.h"

#include <cstring>

namespace
{
const char* const CREDITS_SLIDES[] = {
    "art\\credits\\credits1.bmp",
    "art\\credits\\credits2.bmp",
    "art\\credits\\credits3.bmp",
};
const char* const LOGO_SLIDES[] = {
    "art\\menu\\corvel_logo.bmp",
    "art\\menu\\brask_productions.bmp",
};
} // namespace

float SlideshowMode::s_slideTimer = 0.0f;

Image& SlideshowMode::GetFade()
{
    static Image s_fade;
    return s_fade;
}

SlideshowMode::SlideshowMode() : m_numSlides(0), m_currentSlide(0), m_slideTime(5), m_skip(false) {}

SlideshowMode::~SlideshowMode()
{
    SlideshowMode::Shutdown();
}

bool SlideshowMode::Load(const char* p_text)
{
    Image& fade = GetFade();
    fade.SetColor(0, 0, 0, 0);
    fade.SetSize(1024, 768);

    if (p_text != nullptr && std::strcmp(p_text, CREDITS_TEXT) == 0)
    {
        m_pSlides = std::make_unique<Picture[]>(3);
        for (int i = 0; i < 3; ++i)
        {
            m_pSlides[i].LoadImage(CREDITS_SLIDES[i]);
        }
        m_numSlides = 3;
        m_slideTime = 10;
    }
    else
    {
        m_pSlides = std::make_unique<Picture[]>(2);
        m_pSlides[1].LoadImage(LOGO_SLIDES[1]);
        m_pSlides[0].LoadImage(LOGO_SLIDES[0]);
        m_numSlides = 2;
        m_slideTime = 5;
    }
    return true;
}

bool SlideshowMode::Initialize()
{
    return true;
}

bool SlideshowMode::Shutdown()
{
    m_pSlides.reset();
    return true;
}

int32_t SlideshowMode::Update(float p_dt)
{
    const float slideTime = static_cast<float>(m_slideTime);
    const float quarter = slideTime / 4.0f;
    s_slideTimer += p_dt;
    if (s_slideTimer > slideTime)
    {
        ++m_currentSlide;
        s_slideTimer = 0.0f;
    }
    else if (s_slideTimer < quarter)
    {
        const int faded = static_cast<int>(s_slideTimer / quarter * 255.0f);
        GetFade().SetAlpha(static_cast<uint8_t>(255 - faded));
    }
    else if (s_slideTimer > 3.0f * quarter)
    {
        const int faded = static_cast<int>((s_slideTimer - 3.0f * quarter) / quarter * 255.0f);
        GetFade().SetAlpha(static_cast<uint8_t>(faded));
    }

    if (m_currentSlide == m_numSlides || m_skip)
    {
        return MODECODE_MENUS;
    }
    return MODECODE_STAY;
}

bool SlideshowMode::Render()
{
    if (m_currentSlide < m_numSlides)
    {
        m_pSlides[m_currentSlide].Render();
    }
    GetFade().Draw(0.0, 0.0, 0.0, true);
    return true;
}

bool SlideshowMode::HandleInput(InputSystem* p_input)
{
    if (p_input != nullptr && p_input->AnyKeyDown())
    {
        m_skip = true;
    }
    return m_skip;
}

Picture* SlideshowMode::GetSlide(uint8_t p_index)
{
    if (p_index >= m_numSlides || !m_pSlides)
    {
        return nullptr;
    }
    return &m_pSlides[p_index];
}

float SlideshowMode::GetSlideTimer()
{
    return s_slideTimer;
}

void SlideshowMode::SetSlideTimer(float p_seconds)
{
    s_slideTimer = p_seconds;
}
