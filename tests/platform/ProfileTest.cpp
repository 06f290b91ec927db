#include "mission/Campaign.h"
#include "platform/Profile.h"
#include "platform/ProfileCache.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

// Profile names are relative to the working directory, so each test runs in its own.
class ProfileTest : public testsupport::WorkDirTest
{
protected:
    static void Save(const std::string& p_path, const std::string& p_text)
    {
        std::ofstream file(p_path, std::ios::binary | std::ios::trunc);
        file << p_text;
    }

    static std::string Load(const std::string& p_path)
    {
        std::ifstream file(p_path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

    static std::string Get(const char* p_section, const char* p_key, const char* p_default,
                           const char* p_file = "test.ini")
    {
        char buffer[256];
        const uint32_t count = platform::GetPrivateProfileString(p_section, p_key, p_default, buffer,
                                                                 sizeof(buffer), p_file);
        return std::string(buffer, count);
    }

    // The raw bytes of a list call: the returned count plus the terminator after it.
    static std::string GetList(const char* p_section, uint32_t p_size, uint32_t& p_count,
                               const char* p_file = "test.ini")
    {
        std::string buffer(p_size, '#');
        p_count = platform::GetPrivateProfileString(p_section, nullptr, "", buffer.data(), p_size, p_file);
        return buffer;
    }

    // Names of the files in the test folder, so that no temporary file is left behind.
    static size_t EntryCount()
    {
        std::error_code ec;
        size_t count = 0;
        for (fs::directory_iterator it(".", ec), end; !ec && it != end; it.increment(ec))
        {
            ++count;
        }
        return count;
    }

};

const char* const SAMPLE = "; Korvath settings\n"
                           "Orphan=before any section\n"
                           "[ Display ]\n"
                           "  Width = 640  \n"
                           "height=480\n"
                           "Title = \"  Korvath  \"\n"
                           "Single='x'\n"
                           "Mixed=\"abc'\n"
                           "Quote=\"\n"
                           "Empty=\n"
                           "width=1\n"
                           "; Hidden=1\n"
                           "no equals here\n"
                           "\t[ Sound]  trailing text\n"
                           "Volume = 80\n"
                           "[display]\n"
                           "OnlyInSecond=1\n";

TEST_F(ProfileTest, ReadsValuesLikeWindows)
{
    Save("test.ini", SAMPLE);
    EXPECT_EQ(Get("Display", "Width", "d"), "640");
    EXPECT_EQ(Get("DISPLAY", "WIDTH", "d"), "640"); // the first key of a name wins
    EXPECT_EQ(Get(" display ", " width ", "d"), "640");
    EXPECT_EQ(Get("display", "Height", "d"), "480");
    EXPECT_EQ(Get("display", "title", "d"), "  Korvath  ");
    EXPECT_EQ(Get("display", "single", "d"), "x");
    EXPECT_EQ(Get("display", "mixed", "d"), "\"abc'");
    EXPECT_EQ(Get("display", "quote", "d"), "\"");
    EXPECT_EQ(Get("display", "empty", "d"), ""); // present but empty is not missing
    EXPECT_EQ(Get("sound", "volume", "d"), "80");
    // Comments, keys before any section and lines without '=' are not keys.
    EXPECT_EQ(Get("display", "; Hidden", "d"), "d");
    EXPECT_EQ(Get("display", "no equals here", "d"), "d");
    EXPECT_EQ(Get("", "Orphan", "d"), "d");
    // Only the first section of a name counts.
    EXPECT_EQ(Get("display", "OnlyInSecond", "d"), "d");
}

TEST_F(ProfileTest, DefaultsAndTruncation)
{
    Save("test.ini", "[A]\nLong=abcdef\n");
    EXPECT_EQ(Get("A", "Missing", "fallback  \t"), "fallback");
    EXPECT_EQ(Get("Nope", "Long", "  lead kept "), "  lead kept");
    EXPECT_EQ(Get("A", "Long", "d", "nofile.ini"), "d");
    EXPECT_EQ(Get("A", "Missing", nullptr), "");
    EXPECT_EQ(Get("A", "Long", "d", nullptr), "d");
    EXPECT_EQ(Get("A", "Long", "d", "../test.ini"), "d");

    char buffer[8];
    std::memset(buffer, '#', sizeof(buffer));
    EXPECT_EQ(platform::GetPrivateProfileString("A", "Long", "", buffer, 4, "test.ini"), 3u);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(buffer[4], '#');
    EXPECT_EQ(platform::GetPrivateProfileString("A", "Long", "", buffer, 7, "test.ini"), 6u);
    EXPECT_STREQ(buffer, "abcdef");
    EXPECT_EQ(platform::GetPrivateProfileString("A", "Missing", "123456789", buffer, 5, "test.ini"), 4u);
    EXPECT_STREQ(buffer, "1234");
    EXPECT_EQ(platform::GetPrivateProfileString("A", "Long", "", buffer, 1, "test.ini"), 0u);
    EXPECT_EQ(buffer[0], '\0');

    std::memset(buffer, '#', sizeof(buffer));
    EXPECT_EQ(platform::GetPrivateProfileString("A", "Long", "", buffer, 0, "test.ini"), 0u);
    EXPECT_EQ(buffer[0], '#');
    EXPECT_EQ(platform::GetPrivateProfileString("A", "Long", "", nullptr, 8, "test.ini"), 0u);
}

TEST_F(ProfileTest, ListsSectionsAndKeys)
{
    Save("test.ini", "[Alpha]\nx=1\n; c=2\nY = 2\nX=3\nbare\n[Beta]\n[alpha]\nz=1\n[Gamma]\n");
    uint32_t count = 0;

    std::string list = GetList(nullptr, 64, count);
    EXPECT_EQ(count, 17u);
    EXPECT_EQ(list.substr(0, 18), std::string("Alpha\0Beta\0Gamma\0\0", 18));

    list = GetList("ALPHA", 64, count);
    EXPECT_EQ(count, 4u);
    EXPECT_EQ(list.substr(0, 5), std::string("x\0Y\0\0", 5));

    // Too small: the last name is cut and the buffer ends in two terminators.
    list = GetList(nullptr, 9, count);
    EXPECT_EQ(count, 7u);
    EXPECT_EQ(list, std::string("Alpha\0B\0\0", 9));
    list = GetList(nullptr, 8, count);
    EXPECT_EQ(count, 6u);
    EXPECT_EQ(list, std::string("Alpha\0\0\0", 8));
    list = GetList(nullptr, 17, count);
    EXPECT_EQ(count, 15u);
    EXPECT_EQ(list, std::string("Alpha\0Beta\0Gamm\0\0", 17));
    list = GetList(nullptr, 2, count);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(list, std::string("\0\0", 2));
    list = GetList(nullptr, 1, count);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(list, std::string("\0", 1));
    // Exactly fitting is not truncated.
    list = GetList(nullptr, 18, count);
    EXPECT_EQ(count, 17u);

    // A section without keys, or none at all, gives the default.
    char buffer[16];
    EXPECT_EQ(platform::GetPrivateProfileString("Beta", nullptr, "none ", buffer, sizeof(buffer), "test.ini"), 4u);
    EXPECT_STREQ(buffer, "none");
    EXPECT_EQ(platform::GetPrivateProfileString("Delta", nullptr, nullptr, buffer, sizeof(buffer), "test.ini"), 0u);
    EXPECT_EQ(buffer[0], '\0');
    EXPECT_EQ(buffer[1], '\0');
    EXPECT_EQ(platform::GetPrivateProfileString(nullptr, nullptr, "", buffer, sizeof(buffer), "missing.ini"), 0u);
    EXPECT_EQ(buffer[0], '\0');
}

TEST_F(ProfileTest, ReadsIntegers)
{
    Save("test.ini", "[N]\na=12\nb=-7\nc=+3\nd=42abc\ne=abc\nf=  5  \ng=\nh=\"15\"\n"
                     "i=99999999999\nj=-99999999999\nk=-\nl=0x10\n");
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "a", 99, "test.ini"), 12);
    EXPECT_EQ(platform::GetPrivateProfileInt("n", "B", 99, "test.ini"), -7);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "c", 99, "test.ini"), 3);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "d", 99, "test.ini"), 42);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "e", 99, "test.ini"), 0);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "f", 99, "test.ini"), 5);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "g", 99, "test.ini"), 99); // empty reads as missing
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "h", 99, "test.ini"), 15);
    // Beyond 32 bits the digits wrap around, as on Windows: 99999999999 mod 2^32.
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "i", 99, "test.ini"), 1215752191);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "j", 99, "test.ini"), -1215752191);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "k", 99, "test.ini"), 0);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "l", 99, "test.ini"), 0);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "missing", -5, "test.ini"), -5);
    EXPECT_EQ(platform::GetPrivateProfileInt("Missing", "a", 7, "test.ini"), 7);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "a", 8, "nofile.ini"), 8);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", nullptr, 9, "test.ini"), 9);

    Save("test.ini", "[N]\na=4294967297\nb=-4294967297\nc=2147483648\nd=4294967295\ne=-2147483648\n"
                     "f=18446744073709551621\n");
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "a", 99, "test.ini"), 1);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "b", 99, "test.ini"), -1);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "c", 99, "test.ini"), INT32_MIN);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "d", 99, "test.ini"), -1);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "e", 99, "test.ini"), INT32_MIN);
    EXPECT_EQ(platform::GetPrivateProfileInt("N", "f", 99, "test.ini"), 5); // 2^64 + 5
}

TEST_F(ProfileTest, WritesKeepEveryOtherLine)
{
    Save("test.ini", "; Korvath settings\n"
                     "[Display]\n"
                     "Width = 640\n"
                     "garbage line\n"
                     "Height=480\n"
                     "\n"
                     "\n"
                     "[Sound]\n"
                     "; volume 0-100\n"
                     "Volume=\"80\"\n");
    EXPECT_TRUE(platform::WritePrivateProfileString("display", "WIDTH", "800", "test.ini"));
    EXPECT_TRUE(platform::WritePrivateProfileString("Display", "Depth", "16", "test.ini"));
    EXPECT_TRUE(platform::WritePrivateProfileString("SOUND", "volume", "55", "test.ini"));
    EXPECT_TRUE(platform::WritePrivateProfileString("Sound", "Music", "on", "test.ini"));
    EXPECT_EQ(Load("test.ini"), "; Korvath settings\n"
                                "[Display]\n"
                                "Width = 800\n"
                                "garbage line\n"
                                "Height=480\n"
                                "Depth=16\n"
                                "\n"
                                "\n"
                                "[Sound]\n"
                                "; volume 0-100\n"
                                "Volume=55\n"
                                "Music=on\n");
    EXPECT_EQ(Get("display", "width", "d"), "800");
    EXPECT_EQ(Get("sound", "volume", "d"), "55");

    // The new value is written as given and reads back the usual way.
    EXPECT_TRUE(platform::WritePrivateProfileString("Display", "Title", " \"A B\" ", "test.ini"));
    EXPECT_EQ(Get("display", "title", "d"), "A B");
    EXPECT_EQ(EntryCount(), 1u);
}

TEST_F(ProfileTest, CreatesFileAndSection)
{
    EXPECT_TRUE(platform::WritePrivateProfileString("Pilot", "Name", "Bob", "test.ini"));
    EXPECT_EQ(Load("test.ini"), "[Pilot]\nName=Bob\n");
    EXPECT_TRUE(platform::WritePrivateProfileString(" Other ", " Kills ", "12", "test.ini"));
    EXPECT_EQ(Load("test.ini"), "[Pilot]\nName=Bob\n[Other]\nKills=12\n");
    EXPECT_EQ(platform::GetPrivateProfileInt("other", "kills", 0, "test.ini"), 12);

    // An unterminated last line gets its line end before anything is added after it.
    Save("b.ini", "[A]\na=1");
    EXPECT_TRUE(platform::WritePrivateProfileString("A", "b", "2", "b.ini"));
    EXPECT_EQ(Load("b.ini"), "[A]\na=1\nb=2\n");
    Save("c.ini", "[A]\na=1");
    EXPECT_TRUE(platform::WritePrivateProfileString("B", "c", "3", "c.ini"));
    EXPECT_EQ(Load("c.ini"), "[A]\na=1\n[B]\nc=3\n");
    Save("d.ini", "[A]");
    EXPECT_TRUE(platform::WritePrivateProfileString("a", "k", "v", "d.ini"));
    EXPECT_EQ(Load("d.ini"), "[A]\nk=v\n");
    Save("e.ini", "");
    EXPECT_TRUE(platform::WritePrivateProfileString("E", "k", "", "e.ini"));
    EXPECT_EQ(Load("e.ini"), "[E]\nk=\n");
    EXPECT_EQ(EntryCount(), 5u);
}

TEST_F(ProfileTest, DeletesKeysAndSections)
{
    const std::string original = "[A]\n"
                                 "a=1\n"
                                 "b=2\n"
                                 "; about B\n"
                                 "[B]\n"
                                 "c=3\n"
                                 "[a]\n"
                                 "a=9\n";
    Save("test.ini", original);
    // Deleting what is not there succeeds and leaves the file alone.
    EXPECT_TRUE(platform::WritePrivateProfileString("A", "zz", nullptr, "test.ini"));
    EXPECT_TRUE(platform::WritePrivateProfileString("Z", nullptr, nullptr, "test.ini"));
    EXPECT_EQ(Load("test.ini"), original);
    EXPECT_TRUE(platform::WritePrivateProfileString("Z", nullptr, nullptr, "none.ini"));
    EXPECT_FALSE(fs::exists("none.ini"));

    EXPECT_TRUE(platform::WritePrivateProfileString("a", "A", nullptr, "test.ini"));
    EXPECT_EQ(Load("test.ini"), "[A]\nb=2\n; about B\n[B]\nc=3\n[a]\na=9\n");
    EXPECT_EQ(Get("A", "a", "gone"), "gone");

    EXPECT_TRUE(platform::WritePrivateProfileString("A", nullptr, "ignored", "test.ini"));
    EXPECT_EQ(Load("test.ini"), "[B]\nc=3\n");
    EXPECT_EQ(Get("B", "c", "d"), "3");

    EXPECT_FALSE(platform::WritePrivateProfileString(nullptr, "c", "1", "test.ini"));
    EXPECT_FALSE(platform::WritePrivateProfileString(nullptr, nullptr, nullptr, "test.ini"));
    EXPECT_EQ(Load("test.ini"), "[B]\nc=3\n");
}

TEST_F(ProfileTest, KeepsCrlfAndByteOrderMark)
{
    Save("test.ini", "\xEF\xBB\xBF[Main]\r\nName = Vega\r\n; note\r\n\r\n[Next]\r\nx=1\r\n");
    EXPECT_EQ(Get("main", "name", "d"), "Vega");
    EXPECT_EQ(Get("next", "x", "d"), "1");

    EXPECT_TRUE(platform::WritePrivateProfileString("Main", "Name", "Sirius", "test.ini"));
    EXPECT_TRUE(platform::WritePrivateProfileString("Main", "Rank", "3", "test.ini"));
    EXPECT_TRUE(platform::WritePrivateProfileString("New", "k", "v", "test.ini"));
    EXPECT_EQ(Load("test.ini"), "\xEF\xBB\xBF[Main]\r\nName = Sirius\r\nRank=3\r\n; note\r\n\r\n"
                                "[Next]\r\nx=1\r\n[New]\r\nk=v\r\n");
    EXPECT_TRUE(platform::WritePrivateProfileString("main", nullptr, nullptr, "test.ini"));
    EXPECT_EQ(Load("test.ini"), "\xEF\xBB\xBF[Next]\r\nx=1\r\n[New]\r\nk=v\r\n");

    uint32_t count = 0;
    EXPECT_EQ(GetList(nullptr, 32, count).substr(0, 10), std::string("Next\0New\0\0", 10));
}

TEST_F(ProfileTest, ACarriageReturnAloneEndsALine)
{
    // Saved by an old Mac editor: CR only, a comment, blanks, quotes and a duplicate section.
    Save("test.ini", "; old\r[Main]\r Name = \"Vega\" \r\r; Rank=9\rRank=3\r[Next]\rx=1\r[main]\rLate=1\r");
    EXPECT_EQ(Get("main", "name", "d"), "Vega");
    EXPECT_EQ(Get("main", "rank", "d"), "3");
    EXPECT_EQ(Get("next", "x", "d"), "1");
    EXPECT_EQ(Get("main", "late", "d"), "d");
    uint32_t count = 0;
    EXPECT_EQ(GetList(nullptr, 32, count).substr(0, count + 1), std::string("Main\0Next\0\0", 11));
    EXPECT_EQ(GetList("MAIN", 32, count).substr(0, count + 1), std::string("Name\0Rank\0\0", 11));

    // Writes keep CR line ends, and new lines get them too.
    EXPECT_TRUE(platform::WritePrivateProfileString("Main", "Rank", "4", "test.ini"));
    EXPECT_TRUE(platform::WritePrivateProfileString("Main", "Ship", "Dart", "test.ini"));
    EXPECT_TRUE(platform::WritePrivateProfileString("Third", "k", "v", "test.ini"));
    EXPECT_TRUE(platform::WritePrivateProfileString("Next", "x", nullptr, "test.ini"));
    EXPECT_EQ(Load("test.ini"), "; old\r[Main]\r Name = \"Vega\" \r\r; Rank=9\rRank=4\rShip=Dart\r[Next]\r"
                                "[main]\rLate=1\r[Third]\rk=v\r");
    EXPECT_TRUE(platform::WritePrivateProfileString("main", nullptr, nullptr, "test.ini"));
    EXPECT_EQ(Load("test.ini"), "; old\r[Next]\r[Third]\rk=v\r");

    // Every kind of line end in one file, the last line unterminated; LF then CR is two ends.
    Save("mixed.ini", "[A]\r\na=1\rb=2\nc=3\n\rd=4");
    EXPECT_EQ(Get("A", "a", "x", "mixed.ini") + Get("A", "b", "x", "mixed.ini") + Get("A", "c", "x", "mixed.ini") +
                  Get("A", "d", "x", "mixed.ini"),
              "1234");
    EXPECT_TRUE(platform::WritePrivateProfileString("A", "e", "5", "mixed.ini"));
    EXPECT_EQ(Load("mixed.ini"), "[A]\r\na=1\rb=2\nc=3\n\rd=4\r\ne=5\r\n");
}

// A file that changes shows at once, whoever changed it and however quickly: the parse of a
// file is kept, but never past a change.
TEST_F(ProfileTest, AChangedFileIsNoticedAtOnce)
{
    // The game's own writes, one after another.
    for (int i = 0; i < 20; ++i)
    {
        ASSERT_TRUE(platform::WritePrivateProfileString("S", "k", std::to_string(i % 10).c_str(), "test.ini"));
        ASSERT_EQ(Get("S", "k", "d"), std::to_string(i % 10));
    }
    // Another program rewriting the file in place, at once, to the same size.
    for (int i = 0; i < 20; ++i)
    {
        Save("test.ini", "[S]\nk=" + std::to_string(i % 10) + "\n");
        ASSERT_EQ(Get("S", "k", "d"), std::to_string(i % 10));
    }
    // The same size and the same modification time, set back by the other program.
    struct stat before = {};
    ASSERT_EQ(::stat("test.ini", &before), 0);
    Save("test.ini", "[S]\nk=X\n");
    const struct timespec times[2] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, "test.ini", times, 0), 0);
    EXPECT_EQ(Get("S", "k", "d"), "X");
    // Replaced by renaming another file over it, and taken away.
    Save("other.ini", "[S]\nk=Y\n");
    fs::rename("other.ini", "test.ini");
    EXPECT_EQ(Get("S", "k", "d"), "Y");
    fs::remove("test.ini");
    EXPECT_EQ(Get("S", "k", "d"), "d");
    EXPECT_EQ(platform::GetPrivateProfileInt("S", "k", 7, "test.ini"), 7);

    // A file that stood still a tick of its file system's clock is neither read nor parsed
    // again until it changes.
    Save("test.ini", "[S]\nk=Z\n");
    ::usleep(static_cast<useconds_t>(platform::ProfileCache::ClockTick("test.ini") / 1000 + 20'000));
    EXPECT_EQ(Get("S", "k", "d"), "Z");
    const uint64_t reads = platform::ProfileCache::GetReadCount();
    const uint64_t parses = platform::ProfileCache::GetParseCount();
    for (int i = 0; i < 100; ++i)
    {
        EXPECT_EQ(Get("S", "k", "d"), "Z");
    }
    EXPECT_EQ(platform::ProfileCache::GetReadCount(), reads);
    EXPECT_EQ(platform::ProfileCache::GetParseCount(), parses);
    Save("test.ini", "[S]\nk=W\n");
    EXPECT_EQ(Get("S", "k", "d"), "W");
    EXPECT_EQ(platform::ProfileCache::GetParseCount(), parses + 1);

    // Where the file system's clock is coarse, two writes a tick apart can leave the same
    // times: until its status has not changed for a tick, a file is compared on every call.
    using platform::ProfileCache;
    const int64_t tick = ProfileCache::FINE_TICK_NANOSECONDS;
    const int64_t changed = 1'700'000'000'000'000'000;
    EXPECT_FALSE(ProfileCache::IsSettled(changed, tick, changed));
    EXPECT_FALSE(ProfileCache::IsSettled(changed, tick, changed + tick - 1));
    EXPECT_TRUE(ProfileCache::IsSettled(changed, tick, changed + tick));
    EXPECT_FALSE(ProfileCache::IsSettled(changed, tick, changed - 5 * tick)); // a clock set back
    EXPECT_EQ(ProfileCache::ClockTick("no such folder/x.ini"), ProfileCache::COARSE_TICK_NANOSECONDS);
}

// A campaign of 10,000 lines: loading a mission reads some 130 values, and the file is
// parsed once for all of them, whether it changed a moment ago or long before.
TEST_F(ProfileTest, AMissionOfABigCampaignParsesTheFileOnce)
{
    const int missions = 50;
    std::string text = "[Entry]\nFirstMission=M1\n";
    for (int m = 1; m <= missions; ++m)
    {
        text += "[M" + std::to_string(m) + "]\nLevel=l" + std::to_string(m) + ".lvl\nBrief=Mission " + std::to_string(m) +
                "\n";
        for (int o = 1; o <= 60; ++o)
        {
            const std::string n = std::to_string(o);
            text += "Obj" + n + "=killed " + n + " raiders goal" + n + "\nObj" + n + "_text=Destroy " + n +
                    "\ngoal" + n + "_1=money " + n + "\n";
        }
        text += "Win1=killed * raiders M" + std::to_string(m + 1) + "\nLose1=timepassed 600\n";
        text += std::string(15, '\n'); // blank lines between the missions
    }
    ASSERT_GE(std::count(text.begin(), text.end(), '\n'), 10000);
    fs::create_directories("Campaign");
    Save("Campaign/big.ini", text);

    uint64_t parses = platform::ProfileCache::GetParseCount();
    Campaign campaign("Campaign/big.ini");
    EXPECT_EQ(platform::ProfileCache::GetParseCount(), parses + 1);
    campaign.SetMission("M50");
    EXPECT_EQ(platform::ProfileCache::GetParseCount(), parses + 1);
    EXPECT_EQ(campaign.GetObjectiveTexts().size(), 60u);
    EXPECT_STREQ(campaign.GetBriefing(), "Mission 50");
    EXPECT_STREQ(campaign.GetLevelFile(), "Campaign/l50.lvl");

    // Changed by a line in the middle: noticed, and parsed once more.
    text.replace(text.find("Brief=Mission 50"), 16, "Brief=Mission L");
    Save("Campaign/big.ini", text);
    parses = platform::ProfileCache::GetParseCount();
    campaign.SetMission("M50");
    EXPECT_STREQ(campaign.GetBriefing(), "Mission L");
    EXPECT_EQ(platform::ProfileCache::GetParseCount(), parses + 1);

    // Once settled, the file is not even read again.
    ::usleep(static_cast<useconds_t>(platform::ProfileCache::ClockTick("Campaign/big.ini") / 1000 + 20'000));
    campaign.SetMission("M49");
    const uint64_t reads = platform::ProfileCache::GetReadCount();
    campaign.SetMission("M1");
    campaign.SetMission("M50");
    EXPECT_EQ(platform::ProfileCache::GetReadCount(), reads);
    EXPECT_EQ(std::distance(campaign.GetWinConditions().begin(), campaign.GetWinConditions().end()), 1);
}

// Sections with many keys are searched through a table: the first key of a name still wins,
// and the key list still names each key once, in its first spelling.
TEST_F(ProfileTest, ManyKeysKeepTheFirstOfEachName)
{
    std::string text = "[Big]\n";
    for (int i = 0; i < 40; ++i)
    {
        text += "Key" + std::to_string(i) + "=" + std::to_string(i) + "\n";
    }
    text += "KEY7=late\nkey39 = later\n[Small]\nA=1\na=2\n[big]\nKey1=ignored\n";
    Save("test.ini", text);
    EXPECT_EQ(Get("big", "key7", "d"), "7");
    EXPECT_EQ(Get("BIG", "Key39", "d"), "39");
    EXPECT_EQ(Get("Big", "Key40", "d"), "d");
    EXPECT_EQ(Get("small", "A", "d"), "1");
    uint32_t count = 0;
    const std::string list = GetList("big", 1024, count);
    std::string expected;
    for (int i = 0; i < 40; ++i)
    {
        expected += "Key" + std::to_string(i) + std::string(1, '\0');
    }
    EXPECT_EQ(list.substr(0, count + 1), expected + std::string(1, '\0'));
    EXPECT_EQ(GetList("small", 16, count).substr(0, count + 1), std::string("A\0\0", 3));
}

TEST_F(ProfileTest, ResolvesFileNamesCaseInsensitively)
{
    fs::create_directories("Campaign");
    fs::create_directories("Saves");
    Save("Campaign/korvath.ini", "[Campaign]\nStart=1\n");

    EXPECT_EQ(Get("campaign", "start", "d", "campaign\\KORVATH.INI"), "1");
    EXPECT_TRUE(platform::WritePrivateProfileString("Campaign", "Start", "2", "CAMPAIGN\\korvath.ini"));
    EXPECT_EQ(Load("Campaign/korvath.ini"), "[Campaign]\nStart=2\n");

    EXPECT_TRUE(platform::WritePrivateProfileString("Pilot", "Name", "Bob", "saves\\Bob0.sav"));
    EXPECT_EQ(Load("Saves/Bob0.sav"), "[Pilot]\nName=Bob\n");

    // Outside the game directory, into a missing folder, or over a folder: refused.
    EXPECT_FALSE(platform::WritePrivateProfileString("A", "b", "c", "..\\escape.ini"));
    EXPECT_FALSE(platform::WritePrivateProfileString("A", "b", "c", (fs::path(m_dir) / "abs.ini").c_str()));
    EXPECT_FALSE(platform::WritePrivateProfileString("A", "b", "c", "NoFolder\\x.ini"));
    EXPECT_FALSE(platform::WritePrivateProfileString("A", "b", "c", "saves"));
    EXPECT_FALSE(platform::WritePrivateProfileString("A", "b", "c", ""));
    EXPECT_FALSE(platform::WritePrivateProfileString("A", "b", "c", nullptr));
    EXPECT_FALSE(fs::exists(fs::path(m_dir).parent_path() / "escape.ini"));
    EXPECT_FALSE(fs::exists("NoFolder"));
    EXPECT_FALSE(fs::exists("abs.ini"));
    EXPECT_EQ(Get("A", "b", "d", "saves"), "d");

    std::error_code ec;
    EXPECT_EQ(std::distance(fs::directory_iterator("Saves", ec), fs::directory_iterator()), 1);
    EXPECT_EQ(std::distance(fs::directory_iterator("Campaign", ec), fs::directory_iterator()), 1);
}

TEST_F(ProfileTest, SurvivesHostileContent)
{
    // NUL bytes, an unclosed header, stray '=' lines, a CR alone and no final line end.
    const std::string garbage("\0\0[S]\0x\n[\n=\n==\n[Bin]\nk=v\0w\r\n\r\n[T]\rz=1", 37);
    Save("test.ini", garbage);
    char buffer[16];
    EXPECT_EQ(platform::GetPrivateProfileString("Bin", "k", "", buffer, sizeof(buffer), "test.ini"), 3u);
    EXPECT_EQ(std::string(buffer, 3), std::string("v\0w", 3));
    EXPECT_EQ(Get("T", "z", "d"), "1"); // a CR alone ends a line
    uint32_t count = 0;
    EXPECT_EQ(GetList(nullptr, 32, count).substr(0, count + 1), std::string("Bin\0T\0\0", 7));

    // A write keeps the garbage it does not touch.
    EXPECT_TRUE(platform::WritePrivateProfileString("Bin", "k", "ok", "test.ini"));
    EXPECT_EQ(Load("test.ini"), std::string("\0\0[S]\0x\n[\n=\n==\n[Bin]\nk=ok\r\n\r\n[T]\rz=1", 36));

    // Names and values that would break the file's structure are refused.
    const std::string before = Load("test.ini");
    EXPECT_FALSE(platform::WritePrivateProfileString("Bin", "a=b", "1", "test.ini"));
    EXPECT_FALSE(platform::WritePrivateProfileString("Bin", "a", "1\n[Evil]", "test.ini"));
    EXPECT_FALSE(platform::WritePrivateProfileString("Bin]", "a", "1", "test.ini"));
    EXPECT_FALSE(platform::WritePrivateProfileString("Bin", ";a", "1", "test.ini"));
    EXPECT_FALSE(platform::WritePrivateProfileString("Bin", "  ", "1", "test.ini"));
    EXPECT_EQ(Load("test.ini"), before);

    // A very long line reads cut to the buffer and survives a rewrite.
    const std::string longValue(1 << 20, 'q');
    Save("long.ini", "[L]\nv=" + longValue + "\nw=2");
    EXPECT_EQ(Get("L", "v", "d", "long.ini"), std::string(255, 'q'));
    EXPECT_TRUE(platform::WritePrivateProfileString("L", "w", "3", "long.ini"));
    EXPECT_EQ(Load("long.ini"), "[L]\nv=" + longValue + "\nw=3");
}

TEST_F(ProfileTest, RefusesOversizedFiles)
{
    // Far beyond any profile: read as missing, and never rewritten (which would cut it).
    std::string huge = "[A]\nk=1\n";
    huge.resize(17u * 1024u * 1024u, ';');
    Save("huge.ini", huge);
    EXPECT_EQ(Get("A", "k", "d", "huge.ini"), "d");
    EXPECT_FALSE(platform::WritePrivateProfileString("A", "k", "2", "huge.ini"));
    EXPECT_EQ(fs::file_size("huge.ini"), huge.size());
}

} // namespace
