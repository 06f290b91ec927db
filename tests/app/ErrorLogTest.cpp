#include "app/ErrorLog.h"

#include <gtest/gtest.h>

#include <string>

TEST(ErrorLogTest, KeepsNinetyNineMessagesAndShowsThemInOrder)
{
    ErrorLog log;
    for (int i = 0; i < 120; ++i)
    {
        log.Report(("message " + std::to_string(i)).c_str(), false);
    }
    ASSERT_EQ(99, log.GetCount());
    EXPECT_STREQ("message 0", log.GetMessage(0));
    EXPECT_STREQ("message 98", log.GetMessage(98));
    EXPECT_EQ(nullptr, log.GetMessage(99));

    testing::internal::CaptureStderr();
    log.ShowAll();
    const std::string shown = testing::internal::GetCapturedStderr();
    EXPECT_NE(std::string::npos, shown.find("ERROR!: message 0\n"));
    EXPECT_NE(std::string::npos, shown.find("ERROR!: message 98\n"));
    EXPECT_EQ(std::string::npos, shown.find("message 99"));
    EXPECT_LT(shown.find("message 7\n"), shown.find("message 8\n"));

    // Shown messages are freed, but the count stays, so later reports cannot reuse the slots.
    EXPECT_EQ(99, log.GetCount());
    EXPECT_EQ(nullptr, log.GetMessage(0));
    testing::internal::CaptureStderr();
    log.ShowAll();
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST(ErrorLogTest, NullMessageIsStoredAsEmpty)
{
    ErrorLog log;
    log.Report(nullptr, false);
    ASSERT_EQ(1, log.GetCount());
    EXPECT_STREQ("", log.GetMessage(0));
}
