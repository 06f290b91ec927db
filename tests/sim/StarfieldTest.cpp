#include "app/Random.h"
#include "sim/Starfield.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

TEST(Starfield, SetsUpItsStarsInsideTheBoundWithVisibleColours)
{
    GameSrand(4);
    Starfield field(5000, 2000, 0);
    field.SetScreen(1024, 768, 512, 610);
    EXPECT_EQ(5000, field.GetCapacity());
    EXPECT_EQ(2000, field.GetInUse());
    EXPECT_EQ(796, field.GetBound()); // the farthest corner from (512, 610): sqrt(512^2 + 610^2)
    bool sawWarm = false;
    bool sawViolet = false;
    for (int i = 0; i < field.GetCapacity(); ++i)
    {
        const Starfield::Star& star = field.GetStar(i);
        ASSERT_GE(star.z, 25.0f);
        ASSERT_LE(star.z, 254.0f);
        ASSERT_LE(std::abs(star.currentX), 796);
        ASSERT_LE(std::abs(star.currentY), 796);
        ASSERT_EQ(star.currentX, star.previousX);
        for (int shift : {16, 8, 0})
        {
            ASSERT_NE(0u, (star.color >> shift) & 64u) << "no star darker than (64, 64, 64)";
        }
        const unsigned red = (star.color >> 16) & 0xFF;
        const unsigned blue = star.color & 0xFF;
        sawWarm = sawWarm || blue < red / 2;
        sawViolet = sawViolet || blue > red;
    }
    EXPECT_TRUE(sawWarm);
    EXPECT_TRUE(sawViolet);

    // Requests out of range take the whole capacity; no centre means the middle.
    Starfield all(0, 0, 7);
    EXPECT_EQ(Starfield::DEFAULT_CAPACITY, all.GetCapacity());
    EXPECT_EQ(Starfield::DEFAULT_CAPACITY, all.GetInUse());
    Starfield few(10, 10, 1);
    EXPECT_EQ(10, few.GetInUse());
    few.SetScreen(1024, 768, 0, 0);
    EXPECT_EQ(512, few.GetCenterX());
    EXPECT_EQ(640, few.GetBound());
}

TEST(Starfield, DriftsAgainstTheFlightAndTurnsWithTheShip)
{
    GameSrand(9);
    Starfield field(100, 50, 0);
    field.SetScreen(1024, 768, 512, 610);
    field.Move(0.0, 0.0, 0.0); // the first frame only takes the heading
    const Starfield::Star before = field.GetStar(3);
    const Starfield::Star idle = field.GetStar(60);

    // Flying up the screen at 100: every star drifts down by 0.425 x 100 a frame.
    field.Move(0.0, 100.0, 0.0);
    EXPECT_FLOAT_EQ(before.x, field.GetStar(3).x);
    EXPECT_FLOAT_EQ(before.y + 42.5f, field.GetStar(3).y);
    EXPECT_EQ(idle.y, field.GetStar(60).y); // beyond the stars in use nothing moves
    // Heading east at 100 (velocity (100, 0) with y up) is the same flight seen from the
    // ship, and sliding right sends the stars left.
    const double heading = 3.14159265358979 / 2.0;
    field.Move(100.0, 0.0, heading); // turns the field a quarter turn
    const Starfield::Star east = field.GetStar(3);
    field.Move(100.0, 0.0, heading);
    EXPECT_NEAR(east.y + 42.5, field.GetStar(3).y, 1e-3);
    EXPECT_NEAR(east.x, field.GetStar(3).x, 1e-3);
    const Starfield::Star slide = field.GetStar(3);
    field.Move(0.0, -100.0, heading); // moving down the world: to the ship's right
    EXPECT_NEAR(slide.x - 42.5, field.GetStar(3).x, 1e-3);

    // Turning right by 0.1 turns the field the other way about the centre.
    GameSrand(9);
    Starfield turning(10, 10, 0);
    turning.SetScreen(1024, 768, 512, 610);
    turning.Move(0.0, 0.0, 0.0);
    const Starfield::Star start = turning.GetStar(0);
    turning.Move(0.0, 0.0, 0.1);
    const Starfield::Star turned = turning.GetStar(0);
    EXPECT_NEAR(std::hypot(start.x, start.y), std::hypot(turned.x, turned.y), 0.05);
    EXPECT_NEAR(std::atan2(start.y, start.x) - 0.1, std::atan2(turned.y, turned.x), 1e-4);
    EXPECT_EQ(static_cast<int>(std::trunc(turned.x / turned.z)), turned.currentX); // drawn where it now is
}

TEST(Starfield, AStarThatLeavesComesBackOnTheOtherSideWithoutAStreak)
{
    GameSrand(2);
    Starfield field(1, 1, 0);
    field.SetScreen(200, 200, 0, 0); // bound trunc(sqrt(100^2 + 100^2)) = 141
    field.Move(0.0, 0.0, 0.0);
    // Fly up fast until the star is drawn beyond the bound.
    int frames = 0;
    while (std::abs(field.GetStar(0).currentY) <= field.GetBound() && frames < 100000)
    {
        field.Move(0.0, 5000.0, 0.0);
        ++frames;
    }
    ASSERT_GT(field.GetStar(0).currentY, field.GetBound());
    const Starfield::Star out = field.GetStar(0);
    field.Move(0.0, 0.0, 0.0);
    const Starfield::Star back = field.GetStar(0);
    EXPECT_FLOAT_EQ(-out.x, back.x);
    EXPECT_FLOAT_EQ(-out.y, back.y);
    EXPECT_LT(back.currentY, 0);
    EXPECT_EQ(back.previousY, back.currentY);
}
