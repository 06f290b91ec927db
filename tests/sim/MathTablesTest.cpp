#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "sim/MathTables.h"

namespace
{
// The value kept in the tables: six significant digits, parsed back as the compiler would.
double SixDigits(double p_value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%.5e", p_value);
    return std::strtod(text, nullptr);
}
} // namespace

TEST(MathTables, ConstantsUseTwentyTwoSevenths)
{
    EXPECT_EQ(PI, 22.0 / 7.0);
    EXPECT_NE(PI, std::acos(-1.0));
    EXPECT_EQ(DEG2RAD, PI / 180.0);
    EXPECT_EQ(RAD2DEG, 180.0 / PI);
    EXPECT_NEAR(90.0 * DEG2RAD * RAD2DEG, 90.0, 1e-12);
}

TEST(MathTables, EveryEntryIsTheRoundedFunctionOfWholeDegrees)
{
    for (int i = 0; i < 360; ++i)
    {
        const double angle = i * PI / 180.0;
        EXPECT_EQ(g_cosTable[i], SixDigits(std::cos(angle))) << "cos entry " << i;
        EXPECT_EQ(g_sinTable[i], SixDigits(std::sin(angle))) << "sin entry " << i;
    }

    // Because PI is not pi, the quarter turns are slightly off.
    EXPECT_EQ(g_cosTable[90], -0.000632245);
    EXPECT_EQ(g_sinTable[1], 0.0174594);
    EXPECT_EQ(g_cosTable[0], 1.0);
    EXPECT_EQ(g_sinTable[0], 0.0);
    EXPECT_EQ(g_sinTable[90], 1.0);
    EXPECT_NE(g_sinTable[180], 0.0);
}
