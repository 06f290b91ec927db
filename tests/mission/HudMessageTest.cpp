#include "gfx/Font.h"
#include "mission/HudMessage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace
{
// Plays p_frames frames of p_dt seconds; answers what the last one answered.
bool RunFrames(HudMessage& p_message, int p_frames, float p_dt)
{
    bool alive = true;
    for (int i = 0; i < p_frames; ++i)
    {
        alive = p_message.Update(p_dt);
    }
    return alive;
}
} // namespace

TEST(HudMessageTest, TypesOneCharacterEachTimeTheIntervalIsReached)
{
    HudMessage message("Hello", 4.0f, 0.1f);
    EXPECT_EQ("", message.GetShownText());
    EXPECT_EQ(5u, message.GetLength());

    // 0.07 s frames: the accumulator starts again from 0 when it reaches the interval, so a
    // character shows every second frame, not every 1.43 frames.
    EXPECT_TRUE(message.Update(0.07f));
    EXPECT_EQ("", message.GetShownText());
    EXPECT_TRUE(message.Update(0.07f));
    EXPECT_EQ("H", message.GetShownText());
    EXPECT_TRUE(RunFrames(message, 6, 0.07f));
    EXPECT_EQ("Hell", message.GetShownText());
    // Nothing of the display time passes while it types.
    EXPECT_FLOAT_EQ(4.0f, message.GetRemaining());
    EXPECT_TRUE(RunFrames(message, 2, 0.07f));
    EXPECT_EQ("Hello", message.GetShownText());
    EXPECT_FALSE(message.IsTyping());
    EXPECT_FLOAT_EQ(4.0f, message.GetRemaining());
    EXPECT_TRUE(message.Update(0.5f));
    EXPECT_FLOAT_EQ(3.5f, message.GetRemaining());

    // A typing interval of 0 shows one more character every frame, however short.
    HudMessage quick("abc", 1.0f, 0.0f);
    EXPECT_TRUE(quick.Update(0.0f));
    EXPECT_EQ("a", quick.GetShownText());
    EXPECT_TRUE(RunFrames(quick, 2, 0.0f));
    EXPECT_EQ("abc", quick.GetShownText());
}

TEST(HudMessageTest, FadesOverTheLastThirtyPercentThenEnds)
{
    // Ten seconds: full white until 3 seconds remain, then fading to nothing.
    HudMessage message("", 10.0f, 0.5f);
    EXPECT_TRUE(RunFrames(message, 6, 1.0f));
    EXPECT_FLOAT_EQ(4.0f, message.GetRemaining());
    EXPECT_DOUBLE_EQ(1.0, message.GetAlpha());
    EXPECT_TRUE(message.Update(0.5f));
    EXPECT_DOUBLE_EQ(1.0, message.GetAlpha()); // 3.5 left
    EXPECT_TRUE(message.Update(0.5f));
    EXPECT_NEAR(1.0, message.GetAlpha(), 1e-6); // 3.0 left: the fade starts here
    EXPECT_TRUE(message.Update(1.5f));
    EXPECT_NEAR(0.5, message.GetAlpha(), 1e-6);
    EXPECT_TRUE(message.Update(1.0f));
    EXPECT_NEAR(1.0 / 6.0, message.GetAlpha(), 1e-6);
    EXPECT_FALSE(message.Update(0.5f)); // 0 left: gone
}

TEST(HudMessageTest, NonsenseTimesNeverKeepAMessageForever)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    // An interval that is not a number types a character every frame; a display time that
    // is not a number, or negative, ends the message once it is typed.
    HudMessage broken("ab", nan, nan);
    EXPECT_TRUE(RunFrames(broken, 2, 0.01f));
    EXPECT_EQ("ab", broken.GetShownText());
    EXPECT_FALSE(broken.Update(0.01f));

    HudMessage negative("x", -5.0f, -1.0f);
    EXPECT_TRUE(negative.Update(0.01f));
    EXPECT_FALSE(negative.Update(0.01f));

    HudMessage none(nullptr, 1.0f, 0.1f);
    EXPECT_EQ("", none.GetFullText());
    EXPECT_TRUE(none.Update(0.5f));
    EXPECT_FALSE(none.Update(0.6f));
}

TEST(HudMessageTest, TakesTheRoomOfItsWholeTextFromTheStart)
{
    const std::string text = "Incoming transmission: the convoy has left the gate early, escort it to the "
                             "relay beacon before the raiders close in on it.";
    HudMessage message(text.c_str(), 5.0f, 0.05f);
    ASSERT_NE(nullptr, message.GetFont());
    const int lineHeight = message.GetFont()->GetHeight();
    ASSERT_GT(lineHeight, 0);
    ASSERT_GE(message.GetNumLines(), 2u) << "the text should wrap at 512 pixels";
    EXPECT_EQ(static_cast<int>(message.GetNumLines()) * lineHeight, message.GetHeight());
    EXPECT_EQ(HudMessage::WRAP_WIDTH, message.GetWidth());
    // The lines, put back together, are the text: nothing lost at the breaks.
    std::string joined;
    for (size_t line = 0; line < message.GetNumLines(); ++line)
    {
        joined += (line == 0 ? "" : " ") + message.GetLine(line);
    }
    EXPECT_EQ(text, joined);
    const int before = message.GetHeight();
    RunFrames(message, 10, 0.05f);
    EXPECT_EQ(before, message.GetHeight());
    EXPECT_EQ(text.substr(0, 10), message.GetShownText());
}
