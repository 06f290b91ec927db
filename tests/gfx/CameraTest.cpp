#include "gfx/Camera.h"

#include "sim/WorldObject.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace
{
void ExpectPoint(double p_x, double p_y, const Vector2& p_actual, double p_tolerance)
{
    EXPECT_NEAR(p_x, p_actual.x, p_tolerance);
    EXPECT_NEAR(p_y, p_actual.y, p_tolerance);
}
} // namespace

TEST(Camera, FollowsOneUnitAheadAndTurnsTheHeadingUp)
{
    Camera camera;
    EXPECT_EQ(1024, camera.GetView().right); // before the first Apply
    EXPECT_EQ(768, camera.GetView().bottom);
    WorldObject target;
    target.InitPhysicalDesc();
    target.GetPhysicalDesc()->SetPosition(1000.0, 1001.0);
    camera.Follow(&target); // standing still, facing up
    EXPECT_DOUBLE_EQ(1000.0, camera.GetX());
    EXPECT_DOUBLE_EQ(1000.0, camera.GetY());
    camera.SetAngle(30.0);
    EXPECT_EQ(330.0, camera.GetAngle());
    camera.SetAngle(-30.0);
    EXPECT_EQ(30.0, camera.GetAngle());
    camera.SetAngle(0.0);
    EXPECT_EQ(0.0, camera.GetAngle());

    ExpectPoint(512.0, 384.0, camera.WorldToScreen(1000.0, 790.0), 1e-9);
    ExpectPoint(512.0, 594.0, camera.WorldToScreen(1000.0, 1000.0), 1e-9);
    camera.RefreshView();
    EXPECT_EQ(232, camera.GetView().left);
    EXPECT_EQ(232, camera.GetView().top);
    EXPECT_EQ(1768, camera.GetView().right);
    EXPECT_EQ(1768, camera.GetView().bottom);

    // At every whole heading, 90 and 270 included, the followed point sits below the centre
    // and the heading points straight up. The translation uses the game's 22/7 degrees while
    // the view turns by true ones, which shifts the picture by under two units.
    for (int heading = 0; heading < 360; ++heading)
    {
        camera.SetAngle(heading);
        const Vector2 followed = camera.WorldToScreen(1000.0, 1000.0);
        ExpectPoint(512.0, 594.0, followed, 2.0);
        const double a = heading * std::acos(-1.0) / 180.0;
        const Vector2 ahead = camera.WorldToScreen(1000.0 + 100.0 * std::sin(a), 1000.0 - 100.0 * std::cos(a));
        ExpectPoint(followed.x, followed.y - 100.0, ahead, 1e-6);
    }

    // A moving target is followed along its motion; a far one clamps the view, not overflows.
    target.GetPhysicalDesc()->SetVelocity(Vector2{30.0, -40.0});
    camera.Follow(&target);
    EXPECT_DOUBLE_EQ(1000.6, camera.GetX());
    EXPECT_DOUBLE_EQ(1000.2, camera.GetY());
    target.GetPhysicalDesc()->SetPosition(1e300, -1e300);
    camera.Follow(&target);
    camera.RefreshView();
    EXPECT_EQ(std::numeric_limits<int32_t>::max(), camera.GetView().right);
    EXPECT_EQ(std::numeric_limits<int32_t>::min(), camera.GetView().top);
}
