#include "platform/FileSearch.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

class FileSearchTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        fs::create_directories("Portraits/Old.bmp"); // a folder whose name fits the mask
        for (const char* name : {"Portraits/b.BMP", "Portraits/A.bmp", "Portraits/a2.bmp", "Portraits/x.bmp",
                                 "Portraits/X.bmp", "Portraits/notes.txt", "Portraits/README",
                                 "Portraits/Old.bmp/inner.bmp"})
        {
            std::ofstream file(name, std::ios::binary);
            file << "x";
        }
    }

    // Every name one search yields, in order.
    static std::vector<std::string> All(const std::string& p_pattern)
    {
        std::vector<std::string> names;
        platform::FileSearch search;
        std::string name;
        if (search.First(p_pattern, name))
        {
            do
            {
                names.push_back(name);
            } while (search.Next(name));
        }
        return names;
    }

};

TEST_F(FileSearchTest, MasksMatchLikeWindows)
{
    using platform::FileSearch;
    EXPECT_TRUE(FileSearch::MatchMask("*.bmp", "SHIP.BMP"));
    EXPECT_TRUE(FileSearch::MatchMask("*.BMP", "ship.bmp"));
    EXPECT_FALSE(FileSearch::MatchMask("*.bmp", "ship.bmpx"));
    EXPECT_FALSE(FileSearch::MatchMask("*.bmp", "ship.bm"));
    EXPECT_TRUE(FileSearch::MatchMask("*", ""));
    EXPECT_TRUE(FileSearch::MatchMask("*", "anything at all"));
    EXPECT_FALSE(FileSearch::MatchMask("", "x"));
    EXPECT_TRUE(FileSearch::MatchMask("Bob?.sav", "bob0.SAV"));
    EXPECT_FALSE(FileSearch::MatchMask("Bob?.sav", "bob.sav"));
    EXPECT_FALSE(FileSearch::MatchMask("Bob?.sav", "bob10.sav"));
    EXPECT_TRUE(FileSearch::MatchMask("a*b*c", "aXXbYYc"));
    EXPECT_TRUE(FileSearch::MatchMask("a*b*c", "abc"));
    EXPECT_FALSE(FileSearch::MatchMask("a*b*c", "aXXbYYcd"));
    EXPECT_TRUE(FileSearch::MatchMask("*ab", "aab"));
    EXPECT_FALSE(FileSearch::MatchMask("*ab", "aba"));
    // "*.*" is every file, dot or not, and a trailing ".*" may match nothing.
    EXPECT_TRUE(FileSearch::MatchMask("*.*", "README"));
    EXPECT_TRUE(FileSearch::MatchMask("*.*", "a.b.c"));
    EXPECT_TRUE(FileSearch::MatchMask("readme.*", "README"));
    EXPECT_FALSE(FileSearch::MatchMask("readme.*", "READMEX"));

    // Many stars against a long name that fails at the very end must still finish quickly.
    const std::string name(5000, 'a');
    EXPECT_FALSE(FileSearch::MatchMask("*a*a*a*a*a*a*a*a*b", name));
    EXPECT_TRUE(FileSearch::MatchMask("*a*a*a*a*a*a*a*a*", name));
}

TEST_F(FileSearchTest, ListsMatchingFilesInCaseInsensitiveOrder)
{
    // Folders are skipped even when their name fits; ties in case go by byte order.
    const std::vector<std::string> expected = {"A.bmp", "a2.bmp", "b.BMP", "X.bmp", "x.bmp"};
    EXPECT_EQ(All("portraits\\*.bmp"), expected);
    EXPECT_EQ(All("PORTRAITS/*.BMP"), expected);
    EXPECT_EQ(All("Portraits\\?.bmp"), (std::vector<std::string>{"A.bmp", "b.BMP", "X.bmp", "x.bmp"}));

    const std::vector<std::string> everything = {"A.bmp", "a2.bmp", "b.BMP", "notes.txt", "README", "X.bmp",
                                                 "x.bmp"};
    EXPECT_EQ(All("Portraits\\*.*"), everything);
    EXPECT_EQ(All("Portraits\\*"), everything);
    EXPECT_EQ(All("portraits\\readme"), (std::vector<std::string>{"README"}));
    EXPECT_EQ(All("Portraits\\old.bmp\\*"), (std::vector<std::string>{"inner.bmp"}));
}

TEST_F(FileSearchTest, FolderlessPatternSearchesTheWorkingDirectory)
{
    std::ofstream("Config.ini") << "x";
    EXPECT_EQ(All("*.ini"), (std::vector<std::string>{"Config.ini"}));
    EXPECT_EQ(All("*.*"), (std::vector<std::string>{"Config.ini"})); // Portraits is a folder
}

TEST_F(FileSearchTest, FailsCleanlyAndRestarts)
{
    EXPECT_TRUE(All("Portraits\\*.pcx").empty());
    EXPECT_TRUE(All("Missing\\*.bmp").empty());
    EXPECT_TRUE(All("Portraits\\").empty());
    EXPECT_TRUE(All("..\\*").empty());
    EXPECT_TRUE(All("Portraits\\..\\..\\*").empty());
    EXPECT_TRUE(All("\\*").empty());
    EXPECT_TRUE(All("/tmp/*").empty());
    EXPECT_TRUE(All("").empty());

    platform::FileSearch search;
    std::string name;
    ASSERT_TRUE(search.First("Portraits\\*.bmp", name));
    EXPECT_EQ(name, "A.bmp");
    ASSERT_TRUE(search.Next(name));
    EXPECT_EQ(name, "a2.bmp");

    // A new search starts over, and a failed one leaves nothing from the previous one.
    ASSERT_TRUE(search.First("Portraits\\*.txt", name));
    EXPECT_EQ(name, "notes.txt");
    EXPECT_FALSE(search.Next(name));
    EXPECT_EQ(name, "notes.txt");
    ASSERT_TRUE(search.First("Portraits\\*.bmp", name));
    EXPECT_FALSE(search.First("Portraits\\*.pcx", name));
    EXPECT_FALSE(search.Next(name));

    ASSERT_TRUE(search.First("Portraits\\*.bmp", name));
    search.Close();
    EXPECT_FALSE(search.Next(name));
}

} // namespace
