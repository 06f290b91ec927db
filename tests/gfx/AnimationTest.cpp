#include "gfx/Animation.h"

#include <gtest/gtest.h>

#include <vector>

TEST(Animation, AdvancesOneFramePerUpdateLoopingOrDying)
{
    Animation looping;
    EXPECT_FALSE(looping.Render()); // no frames yet
    ASSERT_TRUE(looping.Init(3, 0.1f, true));
    EXPECT_TRUE(looping.AddImage("a.bmp"));
    EXPECT_EQ(0, looping.GetCurrentImage());
    EXPECT_TRUE(looping.AddImage("b.bmp"));
    EXPECT_TRUE(looping.AddImage("c.bmp"));
    EXPECT_FALSE(looping.AddImage("d.bmp")); // beyond the capacity
    // 0.25 s is two and a half frames, yet each update moves one frame on.
    std::vector<int> shown;
    for (int i = 0; i < 7; ++i)
    {
        looping.Update(0.25f);
        shown.push_back(looping.GetCurrentImage());
    }
    EXPECT_EQ((std::vector<int>{1, 2, 0, 1, 2, 0, 1}), shown);
    EXPECT_FALSE(looping.IsDead());
    looping.GetPhysicalDesc()->SetHeading(180.0); // and it moves like any world object
    looping.GetPhysicalDesc()->SetSpeed(10.0);
    looping.Update(1.0f);
    EXPECT_NEAR(10.0, looping.GetY(), 1e-3);
    ASSERT_TRUE(looping.Init(2, 0.5f, false)); // Init again discards the frames
    EXPECT_EQ(0, looping.GetNumImages());
    EXPECT_FALSE(looping.Render());

    Animation once;
    ASSERT_TRUE(once.Init(3, 0.1f, false));
    once.AddImage("a.bmp");
    once.AddImage("b.bmp");
    once.AddImage("c.bmp");
    once.Update(0.05f);
    EXPECT_EQ(0, once.GetCurrentImage());
    once.Update(0.05f);
    once.Update(0.1f);
    EXPECT_EQ(2, once.GetCurrentImage());
    EXPECT_FALSE(once.IsDead());
    once.Update(0.1f); // the third change: stays on the last frame, dead
    EXPECT_EQ(2, once.GetCurrentImage());
    EXPECT_TRUE(once.IsDead());

    // An animation whose frames never came draws nothing, however long it runs.
    Animation empty;
    ASSERT_TRUE(empty.Init(2, 0.1f, true));
    empty.Update(1.0f);
    EXPECT_FALSE(empty.Render());
}
