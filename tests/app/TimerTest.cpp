#include "app/Game.h"
#include "app/Timer.h"

#include <gtest/gtest.h>

namespace
{
int64_t s_counts = 0;
int64_t s_frequency = 1000;
int64_t FakeCounter()
{
    return s_counts;
}
int64_t FakeFrequency()
{
    return s_frequency;
}
} // namespace

TEST(TimerTest, MeasuresSecondsBetweenReadings)
{
    s_frequency = 1000;
    s_counts = 5000;
    Timer timer(&FakeCounter, &FakeFrequency);
    ASSERT_TRUE(timer.Start());
    s_counts = 5016;
    EXPECT_FLOAT_EQ(0.016f, timer.GetElapsed());
    // Each reading is measured from the previous one, not from the start.
    s_counts = 5020;
    EXPECT_FLOAT_EQ(0.004f, timer.GetElapsed());
    EXPECT_FLOAT_EQ(0.0f, timer.GetElapsed());

    // A huge count difference at a high frequency keeps its precision.
    s_frequency = 3000000000LL;
    s_counts = 0;
    Timer precise(&FakeCounter, &FakeFrequency);
    precise.Start();
    s_counts = 1000000001LL;
    EXPECT_FLOAT_EQ(static_cast<float>(1000000001.0L / 3000000000.0L), precise.GetElapsed());
}

TEST(TimerTest, FrameTimeIsCappedAtFiveSeconds)
{
    EXPECT_FLOAT_EQ(0.016f, Game::ClampFrameTime(0.016f));
    EXPECT_FLOAT_EQ(4.999f, Game::ClampFrameTime(4.999f));
    EXPECT_FLOAT_EQ(5.0f, Game::ClampFrameTime(5.0f));
    EXPECT_FLOAT_EQ(5.0f, Game::ClampFrameTime(12.5f));
    EXPECT_FLOAT_EQ(5.0f, Game::ClampFrameTime(1.0e9f));
}

TEST(TimerTest, RealCounterMovesForward)
{
    Timer timer;
    timer.Start();
    float total = 0.0f;
    for (int i = 0; i < 1000 && total <= 0.0f; ++i)
    {
        const float dt = timer.GetElapsed();
        EXPECT_GE(dt, 0.0f);
        total += dt;
    }
    EXPECT_GT(total, 0.0f);
}
