#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "sim/MathTables.h"
#include "sim/PhysicalDesc.h"

namespace
{
void ExpectTriangle(const Triangle& p_actual, const Triangle& p_expected)
{
    EXPECT_DOUBLE_EQ(p_actual.x1, p_expected.x1);
    EXPECT_DOUBLE_EQ(p_actual.y1, p_expected.y1);
    EXPECT_DOUBLE_EQ(p_actual.x2, p_expected.x2);
    EXPECT_DOUBLE_EQ(p_actual.y2, p_expected.y2);
    EXPECT_DOUBLE_EQ(p_actual.x3, p_expected.x3);
    EXPECT_DOUBLE_EQ(p_actual.y3, p_expected.y3);
}

// Local shape turned by table entry p_index and moved to the description's position.
Triangle Placed(const Triangle& p_local, int p_index, double p_x, double p_y)
{
    const double c = g_cosTable[p_index];
    const double s = g_sinTable[p_index];
    return Triangle{p_local.x1 * c - p_local.y1 * s + p_x, p_local.x1 * s + p_local.y1 * c + p_y,
                    p_local.x2 * c - p_local.y2 * s + p_x, p_local.x2 * s + p_local.y2 * c + p_y,
                    p_local.x3 * c - p_local.y3 * s + p_x, p_local.x3 * s + p_local.y3 * c + p_y};
}

// Still object at p_heading: only the shape is recomputed.
int TableIndexUsedFor(double p_heading)
{
    PhysicalDesc desc;
    desc.SetPosition(100.0, 200.0);
    desc.SetHeading(p_heading);
    desc.Update(0.0f);
    const Triangle local = desc.GetLocalTriangles()[0];
    const Triangle world = desc.GetWorldTriangles()[0];
    for (int i = 0; i < 360; ++i)
    {
        const Triangle expected = Placed(local, i, 100.0, 200.0);
        if (expected.x1 == world.x1 && expected.y1 == world.y1 && expected.x2 == world.x2 &&
            expected.y2 == world.y2 && expected.x3 == world.x3 && expected.y3 == world.y3)
        {
            return i;
        }
    }
    return -1;
}
} // namespace

TEST(PhysicalDesc, HeadingWrapsIntoOneTurn)
{
    PhysicalDesc desc;
    desc.SetHeading(5.0);
    desc.SetRotationSpeed(-10.0);
    desc.Update(1.0f);
    EXPECT_NEAR(desc.GetHeading(), 355.0, 1e-9);

    desc.SetHeading(350.0);
    desc.SetRotationSpeed(10.0);
    desc.Update(1.0f);
    EXPECT_EQ(desc.GetHeading(), 0.0);

    // Several turns at once keep only the fraction.
    desc.SetHeading(10.0);
    desc.SetRotationSpeed(715.0);
    desc.Update(1.0f);
    EXPECT_NEAR(desc.GetHeading(), 5.0, 1e-9);
    desc.SetHeading(0.0);
    desc.SetRotationSpeed(-725.0);
    desc.Update(1.0f);
    EXPECT_NEAR(desc.GetHeading(), 355.0, 1e-9);

    // Whole negative turns land on 360, which must read 0.
    desc.SetHeading(10.0);
    desc.SetRotationSpeed(-370.0);
    desc.Update(1.0f);
    EXPECT_EQ(desc.GetHeading(), 0.0);
    // So does a negative heading too small to survive adding 360.
    desc.SetHeading(0.0);
    desc.SetRotationSpeed(-1e-14);
    desc.Update(1.0f);
    EXPECT_EQ(desc.GetHeading(), 0.0);
}

TEST(PhysicalDesc, ShapeTurnsByTheNearestWholeDegree)
{
    EXPECT_EQ(TableIndexUsedFor(359.6), 0);
    EXPECT_EQ(TableIndexUsedFor(359.4), 359);
    EXPECT_EQ(TableIndexUsedFor(44.5), 45);
    EXPECT_EQ(TableIndexUsedFor(44.49), 44);
    EXPECT_EQ(TableIndexUsedFor(90.0), 90);

    // At 90 degrees the table's cos is not 0, so the box is slightly sheared off the axis.
    PhysicalDesc desc;
    desc.SetPosition(10.0, 20.0);
    desc.SetHeading(90.0);
    desc.Update(0.0f);
    const Triangle& a = desc.GetWorldTriangles()[0];
    EXPECT_DOUBLE_EQ(a.x1, 10.0);
    EXPECT_DOUBLE_EQ(a.y1, 20.0);
    EXPECT_DOUBLE_EQ(a.x2, -32.0 + 10.0); // (0, 32) turns to the left
    EXPECT_DOUBLE_EQ(a.y2, 32.0 * -0.000632245 + 20.0);
    EXPECT_DOUBLE_EQ(a.x3, 32.0 * -0.000632245 + 10.0); // (32, 0) turns downwards
    EXPECT_DOUBLE_EQ(a.y3, 32.0 + 20.0);

    // A huge heading has no fraction of a turn left: it wraps to 0.
    desc.SetHeading(1e300);
    desc.Update(0.0f);
    EXPECT_EQ(desc.GetHeading(), 0.0);
    ExpectTriangle(desc.GetWorldTriangles()[0], Triangle{10, 20, 10, 52, 42, 20});
}

TEST(PhysicalDesc, StraightMotionAndDoubledAcceleration)
{
    PhysicalDesc desc;
    desc.SetPosition(10.0, 20.0);
    desc.SetHeading(90.0);
    desc.SetSpeed(100.0);
    desc.Update(0.5f);
    // sin and cos of the heading use PI = 22/7, so "sideways" is not exactly zero.
    const double r = 90.0 * DEG2RAD;
    EXPECT_NEAR(desc.GetX(), 60.0, 1e-4);
    EXPECT_NEAR(desc.GetY(), 20.0, 0.05);
    EXPECT_DOUBLE_EQ(desc.GetX(), 10.0 + std::sin(r) * 100.0 * 0.5);
    EXPECT_DOUBLE_EQ(desc.GetY(), 20.0 - std::cos(r) * 100.0 * 0.5);
    EXPECT_DOUBLE_EQ(desc.GetVelocity().x, std::sin(r) * 100.0);
    EXPECT_DOUBLE_EQ(desc.GetVelocity().y, -std::cos(r) * 100.0);

    // Heading 0 moves up the screen.
    PhysicalDesc up;
    up.SetSpeed(40.0);
    up.Update(0.25f);
    EXPECT_DOUBLE_EQ(up.GetX(), 0.0);
    EXPECT_DOUBLE_EQ(up.GetY(), -10.0);
    // And the shape follows the position.
    ExpectTriangle(up.GetWorldTriangles()[1], Triangle{32, 22, 0, 22, 32, -10});

    // Acceleration 10 over 0.5 s adds 10, not 5, and the step already moves at the new speed.
    PhysicalDesc fast;
    fast.SetSpeed(100.0);
    fast.SetAcceleration(10.0);
    fast.Update(0.5f);
    EXPECT_DOUBLE_EQ(fast.GetSpeed(), 110.0);
    EXPECT_DOUBLE_EQ(fast.GetY(), -55.0);
    fast.SetAcceleration(-30.0);
    fast.Update(1.0f);
    EXPECT_DOUBLE_EQ(fast.GetSpeed(), 50.0);
}

TEST(PhysicalDesc, StrafeScalesWithForwardSpeed)
{
    PhysicalDesc still;
    still.SetStrafe(1.0);
    still.Update(1.0f);
    EXPECT_EQ(still.GetX(), 0.0);
    EXPECT_EQ(still.GetY(), 0.0);
    EXPECT_EQ(still.GetStrafeVelocity().x, 0.0);

    PhysicalDesc right;
    right.SetSpeed(100.0);
    right.SetStrafe(1.0);
    right.Update(1.0f);
    EXPECT_DOUBLE_EQ(right.GetStrafeVelocity().x, 100.0);
    EXPECT_DOUBLE_EQ(right.GetStrafeVelocity().y, 0.0);
    EXPECT_DOUBLE_EQ(right.GetX(), 100.0);
    EXPECT_DOUBLE_EQ(right.GetY(), -100.0);

    // Facing right, strafing right goes down the screen.
    PhysicalDesc east;
    east.SetHeading(90.0);
    east.SetSpeed(10.0);
    east.SetStrafe(1.0);
    east.Update(1.0f);
    EXPECT_NEAR(east.GetX(), 10.0, 0.01);
    EXPECT_NEAR(east.GetY(), 10.0, 0.01);
}

TEST(PhysicalDesc, TurningObjectFollowsAnArc)
{
    const double x0 = 300.0;
    const double y0 = 400.0;
    PhysicalDesc desc;
    desc.SetPosition(x0, y0);
    desc.SetSpeed(100.0);
    desc.SetRotationSpeed(90.0);
    desc.Update(1.0f);
    EXPECT_DOUBLE_EQ(desc.GetHeading(), 90.0);

    // Worked out in polar form: the velocity comes from the turned heading, the centre lies
    // a radius of |v| / w off the start across the velocity, and the position sweeps the
    // angle w * dt around it.
    const double w = 90.0 * DEG2RAD;
    const double vx = std::sin(90.0 * DEG2RAD) * 100.0;
    const double vy = -std::cos(90.0 * DEG2RAD) * 100.0;
    const double radius = std::hypot(vx, vy) / w;
    EXPECT_NEAR(radius, 100.0 / (90.0 * DEG2RAD), 1e-9);
    EXPECT_NEAR(radius, 63.6, 0.05);
    const double cx = x0 + vy / w;
    const double cy = y0 - vx / w;
    const double startAngle = std::atan2(y0 - cy, x0 - cx);
    const double endAngle = startAngle - w * 1.0;
    EXPECT_NEAR(desc.GetX(), cx + radius * std::cos(endAngle), 1e-9);
    EXPECT_NEAR(desc.GetY(), cy + radius * std::sin(endAngle), 1e-9);
    EXPECT_NEAR(std::hypot(desc.GetX() - cx, desc.GetY() - cy), radius, 1e-9);

    // Roughly a radius across and a radius up, nowhere near the straight-line end (400, 400).
    EXPECT_NEAR(desc.GetX(), x0 + 63.6, 0.2);
    EXPECT_NEAR(desc.GetY(), y0 - 63.6, 0.2);

}

TEST(PhysicalDesc, ShapeIsABoxUntilReplaced)
{
    PhysicalDesc desc;
    ASSERT_EQ(desc.GetNumTriangles(), 2);
    ExpectTriangle(desc.GetLocalTriangles()[0], Triangle{0, 0, 0, 32, 32, 0});
    ExpectTriangle(desc.GetLocalTriangles()[1], Triangle{32, 32, 0, 32, 32, 0});

    desc.SetBox(40, 0, -20, -20);
    EXPECT_EQ(desc.GetBoxWidth(), 40u);
    EXPECT_EQ(desc.GetBoxHeight(), 0u);
    EXPECT_EQ(desc.GetBoxX(), -20);
    EXPECT_EQ(desc.GetBoxY(), -20);
    ASSERT_EQ(desc.GetNumTriangles(), 2);
    ExpectTriangle(desc.GetLocalTriangles()[0], Triangle{-20, -20, -20, 20, 20, -20});
    ExpectTriangle(desc.GetLocalTriangles()[1], Triangle{20, 20, -20, 20, 20, -20});
    ExpectTriangle(desc.GetWorldTriangles()[0], Triangle{-20, -20, -20, 20, 20, -20});

    // Centred on the position, turned with it.
    desc.SetPosition(500.0, 300.0);
    desc.SetHeading(180.0);
    desc.Update(0.0f);
    for (int k = 0; k < 2; ++k)
    {
        ExpectTriangle(desc.GetWorldTriangles()[k], Placed(desc.GetLocalTriangles()[k], 180, 500.0, 300.0));
    }
    EXPECT_NEAR(desc.GetWorldTriangles()[0].x1, 520.0, 0.05);
    EXPECT_NEAR(desc.GetWorldTriangles()[0].y1, 320.0, 0.05);

    desc.SetBox(10, 6, 3, -4);
    ExpectTriangle(desc.GetLocalTriangles()[0], Triangle{3, -4, 3, 2, 13, -4});
    ExpectTriangle(desc.GetLocalTriangles()[1], Triangle{13, 2, 3, 2, 13, -4});

    const std::vector<Triangle> shot = {Triangle{0, -8, -3, 4, 3, 4}, Triangle{1, 2, 3, 4, 5, 6},
                                        Triangle{-1, -2, -3, -4, -5, -6}};
    ASSERT_TRUE(desc.SetTriangles(shot.data(), 3));
    ASSERT_EQ(desc.GetNumTriangles(), 3);
    desc.SetPosition(1.0, 2.0);
    desc.SetHeading(0.0);
    desc.Update(0.0f);
    for (int k = 0; k < 3; ++k)
    {
        ExpectTriangle(desc.GetLocalTriangles()[k], shot[k]);
        ExpectTriangle(desc.GetWorldTriangles()[k], Placed(shot[k], 0, 1.0, 2.0));
    }

    // Bad requests keep the shape; an empty shape is allowed.
    EXPECT_FALSE(desc.SetTriangles(nullptr, 4));
    EXPECT_FALSE(desc.SetTriangles(shot.data(), -1));
    EXPECT_EQ(desc.GetNumTriangles(), 3);
    ExpectTriangle(desc.GetLocalTriangles()[2], shot[2]);
    EXPECT_TRUE(desc.SetTriangles(nullptr, 0));
    EXPECT_EQ(desc.GetNumTriangles(), 0);
    desc.Update(0.1f);

    // Back to a box after a longer shape.
    ASSERT_TRUE(desc.SetTriangles(shot.data(), 3));
    desc.SetBox(8, 8, 0, 0);
    EXPECT_EQ(desc.GetNumTriangles(), 2);
    desc.Update(0.0f);
    ExpectTriangle(desc.GetWorldTriangles()[1], Triangle{9, 10, 1, 10, 9, 2});
}

TEST(PhysicalDesc, WorldBoundsFollowTheWorldShape)
{
    PhysicalDesc desc;
    desc.SetBox(10, 20, -5, 0);
    EXPECT_DOUBLE_EQ(desc.GetWorldMin().x, -5.0); // the local box until the first Update
    EXPECT_DOUBLE_EQ(desc.GetWorldMax().y, 20.0);
    desc.SetPosition(100.0, 50.0);
    desc.SetHeading(90.0);
    desc.Update(0.0f);
    double minX = 1e9;
    double maxY = -1e9;
    for (int k = 0; k < desc.GetNumTriangles(); ++k)
    {
        const Triangle& t = desc.GetWorldTriangles()[k];
        minX = std::min({minX, t.x1, t.x2, t.x3});
        maxY = std::max({maxY, t.y1, t.y2, t.y3});
    }
    EXPECT_DOUBLE_EQ(minX, desc.GetWorldMin().x);
    EXPECT_DOUBLE_EQ(maxY, desc.GetWorldMax().y);
    EXPECT_NEAR(desc.GetWorldMin().x, 80.0, 0.05); // turned a quarter: 20 tall becomes 20 wide, leftwards
    EXPECT_NEAR(desc.GetWorldMax().y, 55.0, 0.05);

    // No triangles: a rectangle that meets nothing.
    desc.SetTriangles(nullptr, 0);
    EXPECT_GT(desc.GetWorldMin().x, desc.GetWorldMax().x);
}
