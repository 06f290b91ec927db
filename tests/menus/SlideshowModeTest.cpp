#include "app/ModeCode.h"
#include "gfx/Image.h"
#include "menus/SlideshowMode.h"

#include <gtest/gtest.h>

namespace
{
int FadeAlpha()
{
    return SlideshowMode::GetFade().GetColor()[3];
}
} // namespace

TEST(SlideshowModeTest, FadesInHoldsAndFadesOut)
{
    SlideshowMode::SetSlideTimer(0.0f);
    SlideshowMode show;
    show.Load("Mode\\intro.ssf");
    EXPECT_EQ(1024, SlideshowMode::GetFade().GetWidth());
    EXPECT_EQ(768, SlideshowMode::GetFade().GetHeight());
    EXPECT_EQ(0, FadeAlpha());

    EXPECT_EQ(MODECODE_STAY, show.Update(0.625f));
    EXPECT_EQ(128, FadeAlpha()); // 255 - 127
    EXPECT_EQ(MODECODE_STAY, show.Update(0.6f));
    EXPECT_EQ(6, FadeAlpha()); // 1.225 s: 255 - 249
    // The middle half leaves the overlay as the last fade left it.
    EXPECT_EQ(MODECODE_STAY, show.Update(0.025f));
    EXPECT_EQ(6, FadeAlpha());
    show.GetFade().SetAlpha(42);
    EXPECT_EQ(MODECODE_STAY, show.Update(2.0f));
    EXPECT_EQ(42, FadeAlpha());
    EXPECT_EQ(MODECODE_STAY, show.Update(1.125f)); // 4.375 s
    EXPECT_EQ(127, FadeAlpha());
    EXPECT_EQ(0, show.GetCurrentSlide());

    // Past the slide time the next slide starts and the timer restarts.
    EXPECT_EQ(MODECODE_STAY, show.Update(0.7f));
    EXPECT_EQ(1, show.GetCurrentSlide());
    EXPECT_FLOAT_EQ(0.0f, SlideshowMode::GetSlideTimer());

    // Exactly the slide time is not yet over.
    EXPECT_EQ(MODECODE_STAY, show.Update(5.0f));
    EXPECT_EQ(1, show.GetCurrentSlide());
    EXPECT_EQ(MODECODE_MENUS, show.Update(0.01f));
    EXPECT_EQ(2, show.GetCurrentSlide());
}

TEST(SlideshowModeTest, IntroLastsAboutTenSecondsAndCreditsThirty)
{
    for (const char* text : {static_cast<const char*>(nullptr), "anything", SlideshowMode::CREDITS_TEXT})
    {
        SlideshowMode::SetSlideTimer(0.0f);
        SlideshowMode show;
        show.Load(text);
        int frames = 0;
        while (show.Update(0.05f) == MODECODE_STAY && frames < 100000)
        {
            ++frames;
        }
        const bool credits = text != nullptr && std::string(text) == SlideshowMode::CREDITS_TEXT;
        const double seconds = (frames + 1) * 0.05;
        // Each slide lasts its time plus one frame.
        EXPECT_NEAR(credits ? 30.0 : 10.0, seconds, 0.2) << (text ? text : "(none)");
    }
    // The comparison is exact and case-sensitive.
    SlideshowMode almost;
    almost.Load("Yay, we suck");
    EXPECT_EQ(2, almost.GetNumSlides());
}

TEST(SlideshowModeTest, TimerCarriesOverFromASkippedShow)
{
    SlideshowMode::SetSlideTimer(0.0f);
    {
        SlideshowMode logos;
        logos.Load(nullptr);
        logos.Update(2.0f);
    }
    SlideshowMode credits;
    credits.Load(SlideshowMode::CREDITS_TEXT);
    EXPECT_FLOAT_EQ(2.0f, SlideshowMode::GetSlideTimer());
    credits.Update(0.25f);
    // 2.25 s into the first 10 s credits slide: 255 - int(2.25 / 2.5 * 255).
    EXPECT_EQ(26, FadeAlpha());
    EXPECT_EQ(0, credits.GetCurrentSlide());
}
