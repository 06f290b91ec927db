#pragma once

#include "app/Mode.h"

#include <cstdint>
#include <memory>

class Image;
class Picture;

// Full-screen pictures, each fading in from black and out again: the logos at start-up and
// the credits after the last mission.
class SlideshowMode : public Mode
{
public:
    // The text that selects the credits instead of the logos.
    static constexpr const char* CREDITS_TEXT = "yay, we suck";

    SlideshowMode();
    ~SlideshowMode() override;

    bool Load(const char* p_text);
    bool Initialize() override;
    bool Shutdown() override;
    int32_t Update(float p_dt) override;
    bool Render() override;
    bool HandleInput(InputSystem* p_input) override;

    uint8_t GetNumSlides() const { return m_numSlides; }
    uint8_t GetCurrentSlide() const { return m_currentSlide; }
    int32_t GetSlideTime() const { return m_slideTime; }
    Picture* GetSlide(uint8_t p_index);

    // The black overlay shared by every slideshow, and the time spent on the current slide.
    static Image& GetFade();
    static float GetSlideTimer();
    static void SetSlideTimer(float p_seconds);

private:
    std::unique_ptr<Picture[]> m_pSlides;
    uint8_t m_numSlides;
    uint8_t m_currentSlide;
    int32_t m_slideTime;
    bool m_skip;

    static float s_slideTimer;
};
