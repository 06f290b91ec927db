#include "platform/Paths.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

// Paths are relative to the working directory, so each test gets its own and leaves it after.
class PathsTest : public testsupport::WorkDirTest
{
protected:
    static void Touch(const std::string& p_path)
    {
        std::ofstream file(p_path, std::ios::binary);
        file << "x";
    }

};

TEST_F(PathsTest, MatchesComponentsIgnoringCase)
{
    fs::create_directories("Campaign");
    fs::create_directories("Art/Ships");
    Touch("Campaign/korvath.ini");
    Touch("Art/Cursor.BMP");
    Touch("Art/Ships/Viper.bmp");

    EXPECT_EQ(platform::ResolvePath("Campaign/korvath.ini"), "Campaign/korvath.ini");
    EXPECT_EQ(platform::ResolvePath("campaign\\korvath.ini"), "Campaign/korvath.ini");
    EXPECT_EQ(platform::ResolvePath("CAMPAIGN\\KORVATH.INI"), "Campaign/korvath.ini");
    EXPECT_EQ(platform::ResolvePath("art\\cursor.bmp"), "Art/Cursor.BMP");
    EXPECT_EQ(platform::ResolvePath("aRT\\sHIPS\\viper.BMP"), "Art/Ships/Viper.bmp");
    EXPECT_EQ(platform::ResolvePath("art"), "Art");
}

TEST_F(PathsTest, UnmatchedComponentsKeepTheirSpelling)
{
    fs::create_directories("Saves");
    fs::create_directories("Campaign");

    // A file about to be created lands inside the folder that is there.
    EXPECT_EQ(platform::ResolvePath("saves\\Bob0.sav"), "Saves/Bob0.sav");
    // Everything after the first missing component stays as given.
    EXPECT_EQ(platform::ResolvePath("campaign\\NewDir\\saves\\x.INI"), "Campaign/NewDir/saves/x.INI");
    EXPECT_EQ(platform::ResolvePath("Nowhere\\At\\All.txt"), "Nowhere/At/All.txt");
    // A regular file cannot hold further components; they stay as given too.
    Touch("Saves/File");
    EXPECT_EQ(platform::ResolvePath("saves\\file\\inner"), "Saves/File/inner");
}

TEST_F(PathsTest, PrefersExactSpellingThenByteOrder)
{
    Touch("data.txt");
    Touch("DATA.txt");
    Touch("Data.txt");
    EXPECT_EQ(platform::ResolvePath("Data.txt"), "Data.txt");
    EXPECT_EQ(platform::ResolvePath("data.txt"), "data.txt");
    // No exact spelling: the first match in byte order, whatever order the disk lists them in.
    EXPECT_EQ(platform::ResolvePath("dATA.TXT"), "DATA.txt");

    fs::create_directories("maps");
    fs::create_directories("MAPS");
    Touch("maps/level1");
    // The whole path exists as written only under "maps".
    EXPECT_EQ(platform::ResolvePath("maps\\level1"), "maps/level1");
    // An exactly spelled folder wins even when the file in it does not exist yet.
    EXPECT_EQ(platform::ResolvePath("MAPS\\level1"), "MAPS/level1");
    EXPECT_EQ(platform::ResolvePath("maps\\level2"), "maps/level2");
    EXPECT_EQ(platform::ResolvePath("Maps\\level2"), "MAPS/level2");
}

TEST_F(PathsTest, CollapsesSeparatorsAndDots)
{
    fs::create_directories("Campaign");
    Touch("Campaign/korvath.ini");

    EXPECT_EQ(platform::ResolvePath(".\\campaign\\\\.\\korvath.ini"), "Campaign/korvath.ini");
    EXPECT_EQ(platform::ResolvePath("campaign//korvath.ini/"), "Campaign/korvath.ini");
    EXPECT_EQ(platform::ResolvePath("Campaign/./././korvath.ini"), "Campaign/korvath.ini");
    EXPECT_EQ(platform::ResolvePath("./"), ".");
}

TEST_F(PathsTest, NeverLeavesTheGameDirectory)
{
    fs::create_directories("Campaign");
    Touch("Campaign/korvath.ini");

    EXPECT_EQ(platform::ResolvePath(""), "");
    EXPECT_EQ(platform::ResolvePath("/etc/passwd"), "");
    EXPECT_EQ(platform::ResolvePath("\\Windows\\win.ini"), "");
    EXPECT_EQ(platform::ResolvePath("C:\\korvath\\config.ini"), "");
    EXPECT_EQ(platform::ResolvePath("c:config.ini"), "");
    EXPECT_EQ(platform::ResolvePath(".."), "");
    EXPECT_EQ(platform::ResolvePath("..\\config.ini"), "");
    EXPECT_EQ(platform::ResolvePath("Campaign\\..\\Campaign\\korvath.ini"), "");
    EXPECT_EQ(platform::ResolvePath("a/b/../../../etc"), "");
    EXPECT_EQ(platform::ResolvePath(std::string("Campaign\0/../../x", 18)), "");
    // Dots that are part of a name are fine.
    EXPECT_EQ(platform::ResolvePath("...\\..x"), ".../..x");
}

TEST_F(PathsTest, FileExistsOnlyForRegularFiles)
{
    fs::create_directories("Art");
    Touch("Art/Cursor.bmp");

    EXPECT_TRUE(platform::FileExists("art\\CURSOR.BMP"));
    EXPECT_TRUE(platform::FileExists("Art/Cursor.bmp"));
    EXPECT_FALSE(platform::FileExists("art"));
    EXPECT_FALSE(platform::FileExists("art\\missing.bmp"));
    EXPECT_FALSE(platform::FileExists(""));
    EXPECT_FALSE(platform::FileExists("art\\..\\art\\cursor.bmp"));
    EXPECT_FALSE(platform::FileExists((fs::path(m_dir) / "Art/Cursor.bmp").string()));
}

} // namespace
