#include "forge/Conditions.h"
#include "forge/Forge.h"
#include "forge/Formats.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

namespace
{

namespace fs = std::filesystem;

class ForgeTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_dir = testsupport::MakeTempDir("korvath_forge");
        ASSERT_FALSE(m_dir.empty());
        m_game = m_dir + "/game";
    }

    void TearDown() override
    {
        std::error_code ec;
        fs::remove_all(m_dir, ec);
    }

    // Builds the shipped sources into m_game; answers the exit code.
    int BuildShipped()
    {
        std::ostringstream out;
        std::ostringstream err;
        const int code = forge::Build(std::string(KORVATH_SOURCE_DIR) + "/data", m_game, out, err);
        EXPECT_EQ(err.str(), "");
        return code;
    }

    int RunCheck(std::string& p_errors)
    {
        std::ostringstream out;
        std::ostringstream err;
        forge::CheckOptions options;
        options.noArt = true;
        const int code = forge::Check(m_game, options, out, err);
        p_errors = err.str();
        return code;
    }

    // Writes a record into the game directory under a game name.
    template <typename Record>
    void WriteGameFile(const std::string& p_name, const Record& p_record)
    {
        const fs::path previous = fs::current_path();
        fs::current_path(m_game);
        std::string error;
        EXPECT_TRUE(forge::WriteWholeFile(p_name, p_record, error)) << error;
        fs::current_path(previous);
    }

    static void WriteText(const std::string& p_path, const std::string& p_text)
    {
        std::error_code ec;
        fs::create_directories(fs::path(p_path).parent_path(), ec);
        std::ofstream file(p_path, std::ios::binary | std::ios::trunc);
        file << p_text;
    }

    static bool Has(const std::string& p_text, const std::string& p_part)
    {
        return p_text.find(p_part) != std::string::npos;
    }

    std::string m_dir;
    std::string m_game;
};

TEST_F(ForgeTest, TheShippedDataBuildsAndPassesTheCheck)
{
    ASSERT_EQ(BuildShipped(), 0);
    for (const char* folder : {"GOB/Parts", "entity", "Campaign", "multiplayer", "Saves", "Portraits"})
    {
        EXPECT_TRUE(fs::is_directory(m_game + "/" + folder)) << folder;
    }
    EXPECT_TRUE(fs::exists(m_game + "/Campaign/korvath.ini"));
    EXPECT_TRUE(fs::exists(m_game + "/multiplayer/multiplayer.ini"));
    EXPECT_TRUE(fs::exists(m_game + "/Campaign/default_shop.shp"));
    EXPECT_TRUE(fs::exists(m_game + "/entity/air000.nme"));
    EXPECT_FALSE(fs::exists(m_game + "/config.ini"));

    std::string errors;
    EXPECT_EQ(RunCheck(errors), 0) << errors;

    // The first hull is what a new pilot flies; the hull file reads back whole.
    const fs::path previous = fs::current_path();
    fs::current_path(m_game);
    forge::HullRecord hull;
    std::string error;
    EXPECT_TRUE(forge::ReadWholeFile("GOB\\Parts\\hull000.hul", hull, error)) << error;
    fs::current_path(previous);
    EXPECT_EQ(hull.name, forge::DEFAULT_HULL);

    // Building again replaces everything the forge owns and drops what the sources no longer
    // have: a stray hull would otherwise stay in the game's catalogue.
    WriteText(m_game + "/GOB/Parts/hull042.hul", "junk");
    WriteText(m_game + "/Saves/Ada0.sav", "a player's save");
    ASSERT_EQ(BuildShipped(), 0);
    EXPECT_FALSE(fs::exists(m_game + "/GOB/Parts/hull042.hul"));
    EXPECT_TRUE(fs::exists(m_game + "/Saves/Ada0.sav"));
}

TEST_F(ForgeTest, CheckFailsWhenALevelNamesAMissingEntity)
{
    ASSERT_EQ(BuildShipped(), 0);
    fs::remove(m_game + "/entity/air001.nme"); // the raiders of the first mission
    std::string errors;
    EXPECT_EQ(RunCheck(errors), 1);
    EXPECT_TRUE(Has(errors, "Campaign/m01_dust_run.lvl: the ship of kind \"001\" needs entity/air001.nme, which does not exist"))
        << errors;
}

TEST_F(ForgeTest, CheckFailsWhenAShopNamesAnUnknownPart)
{
    ASSERT_EQ(BuildShipped(), 0);
    forge::ShopRecord shop;
    shop.title = "Bad Shop";
    shop.names[forge::KIND_HULL] = {"Cargo Hull", "Golden Hull"};
    shop.names[forge::KIND_WEAPON] = {"Plasma Cannon", "Laser"};
    shop.names[forge::KIND_COPILOT] = {"Rook Mercer"};
    WriteGameFile("Campaign\\default_shop.shp", shop);
    std::string errors;
    EXPECT_EQ(RunCheck(errors), 1);
    EXPECT_TRUE(Has(errors, "Campaign/default_shop.shp: sells the hull \"Golden Hull\", which no part file of that kind carries"))
        << errors;
    EXPECT_TRUE(Has(errors, "sells the weapon \"Plasma Cannon\"")) << errors;
    EXPECT_TRUE(Has(errors, "sells the copilot \"Rook Mercer\", but the game does not load copilots")) << errors;
    EXPECT_FALSE(Has(errors, "\"Laser\"")) << errors;
}

TEST_F(ForgeTest, CheckFailsWhenAPartFileNumberIsSkipped)
{
    ASSERT_EQ(BuildShipped(), 0);
    fs::remove(m_game + "/GOB/Parts/engine001.eng");
    std::string errors;
    EXPECT_EQ(RunCheck(errors), 1);
    EXPECT_TRUE(Has(errors, "GOB/Parts/engine002.eng: is never read: the game stops counting engine files at the missing "
                            "GOB/Parts/engine001.eng"))
        << errors;
    EXPECT_TRUE(Has(errors, "GOB/Parts/engine004.eng: is never read")) << errors;
    // Shops that sell the engines now out of reach are reported too.
    EXPECT_TRUE(Has(errors, "sells the engine \"Sparrow Drive\"")) << errors;
}

TEST_F(ForgeTest, CheckFindsCampaignLinesTheGameWouldDropOrNeverFulfil)
{
    ASSERT_EQ(BuildShipped(), 0);
    WriteText(m_game + "/Campaign/korvath.ini",
              "[Entry]\nFirstMission=First\n"
              "[First]\nLevel=m01_dust_run.lvl\nBrief=Go.\n"
              "Obj1=touching player beacon_gamma reached\nObj1_text=Find Gamma\n"
              "reached_1=activate 7 nothing there\nreached_2=mony 500\n"
              "Obj2=killed 3\nObj2_text=A killed line without its word\n"
              "Obj3=dead beacon_alpha x\n"
              "Obj4=killed 9 raiders y\nObj4_text=More kills than ships\n"
              "Win1=objectives 8 Second\nWin2=timepassed soon Second\n"
              "Lose1=dead nobody\n"
              "[Second]\nLevel=missing.lvl\nShop=nowhere.shp\nBrief=Then this.\nWin1=killed * x endgame\n"
              "[Orphan]\nLevel=m01_dust_run.lvl\n");
    std::string errors;
    EXPECT_EQ(RunCheck(errors), 1);
    const std::string first = "Campaign/korvath.ini [First]: ";
    EXPECT_TRUE(Has(errors, first + "Obj1 names \"beacon_gamma\", which nothing in the level is called")) << errors;
    EXPECT_TRUE(Has(errors, first + "reached_1 activates objective 7, which the mission does not have")) << errors;
    EXPECT_TRUE(Has(errors, first + "reached_2 does nothing: \"mony\" is not an action")) << errors;
    EXPECT_TRUE(Has(errors, first + "Obj2 is dropped by the game: too few words")) << errors;
    EXPECT_TRUE(Has(errors, first + "Obj3 has no text and no action activates it, so it can never be done")) << errors;
    EXPECT_TRUE(Has(errors, first + "Obj3 waits for \"beacon_alpha\" to die, but scenery is never removed")) << errors;
    EXPECT_TRUE(Has(errors, first + "Obj4 waits for 9 kills but the level has only 3 computer ships")) << errors;
    EXPECT_TRUE(Has(errors, first + "Win1: the mask 8 names objectives the mission does not have (3 objectives)")) << errors;
    EXPECT_TRUE(Has(errors, first + "Win2 is dropped by the game: \"soon\" is not a number of seconds")) << errors;
    EXPECT_TRUE(Has(errors, first + "Lose1 names \"nobody\", which nothing in the level is called (so it would hold at once)"))
        << errors;
    EXPECT_TRUE(Has(errors, "[Second]: the level Campaign/missing.lvl is missing")) << errors;
    EXPECT_TRUE(Has(errors, "[Second]: the shop Campaign/nowhere.shp is missing")) << errors;
    EXPECT_TRUE(Has(errors, "warning: the mission [Orphan] is never reached")) << errors;
}

TEST_F(ForgeTest, SourceErrorsNameTheFileAndLineAndWriteNothing)
{
    const std::string data = m_dir + "/data";
    fs::copy(std::string(KORVATH_SOURCE_DIR) + "/data", data, fs::copy_options::recursive);
    std::ifstream in(data + "/parts.yaml");
    std::stringstream parts;
    parts << in.rdbuf();
    std::string text = parts.str();
    const size_t armour = text.find("armour: ", text.find("name: Cargo Hull"));
    ASSERT_NE(armour, std::string::npos);
    text.replace(armour, text.find('\n', armour) - armour, "armour: lots");
    const size_t line = size_t(std::count(text.begin(), text.begin() + std::ptrdiff_t(armour), '\n')) + 1;
    WriteText(data + "/parts.yaml", text);
    const std::string rows = "  ..........\n  ..........\n  ..........\n  ..........\n  ..........\n"
                             "  ..........\n  ..........\n  ..........\n  ..........\n";
    WriteText(data + "/levels/zz_grid.yaml", "file: zz_grid.lvl\ntileset: space\nmap: |\n  ..........\n  .....X....\n"
                                              "  ..........\n  ..........\n");
    WriteText(data + "/levels/zz_ships.yaml", "file: zz_ships.lvl\ntileset: space\nmap: |\n  ..........\n  .....X....\n" +
                                               rows.substr(13) +
                                               "ships:\n  - {entity: battlestar, x: 100, y: 100}\n"
                                               "  - {entity: dart, x: 99999, y: 5}\n  - {entity: dart, name: player, x: 1, y: 1}\n");

    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(forge::Build(data, m_game, out, err), 1);
    const std::string errors = err.str();
    EXPECT_TRUE(Has(errors, data + "/parts.yaml:" + std::to_string(line) + ": \"armour\" must be a whole number")) << errors;
    EXPECT_TRUE(Has(errors, data + "/levels/zz_grid.yaml:3: the map has 4 rows")) << errors;
    EXPECT_TRUE(Has(errors, data + "/levels/zz_ships.yaml:5: the character 'X' in column 6 is not in the tile set's legend"))
        << errors;
    EXPECT_TRUE(Has(errors, data + "/levels/zz_ships.yaml:15: no entity \"battlestar\"")) << errors;
    EXPECT_TRUE(Has(errors, data + "/levels/zz_ships.yaml:16: (99999, 5) lies outside the map (0..1279)")) << errors;
    EXPECT_TRUE(Has(errors, data + "/levels/zz_ships.yaml:17: \"player\" is the name the game gives")) << errors;
    EXPECT_TRUE(Has(errors, "nothing was written")) << errors;
    EXPECT_FALSE(fs::exists(m_game));
}

TEST_F(ForgeTest, InspectPrintsEachKindAndReportsDamage)
{
    ASSERT_EQ(BuildShipped(), 0);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(forge::Inspect(m_game + "/GOB/Parts/hull000.hul", false, out, err), 0);
    EXPECT_TRUE(Has(out.str(), "name: 'Cargo Hull'\n")) << out.str();
    EXPECT_TRUE(Has(out.str(), "box: {x: 10, y: 6, width: 44, height: 54}")) << out.str();

    out.str("");
    EXPECT_EQ(forge::Inspect(m_game + "/Campaign/m05_cinder_reef.lvl", true, out, err), 0);
    EXPECT_TRUE(Has(out.str(), "tileset: 'Art\\startile000.bmp'")) << out.str();
    EXPECT_TRUE(Has(out.str(), "tiles_used: {0: 6400}")) << out.str();
    EXPECT_TRUE(Has(out.str(), "\n  " + std::string(80, '0') + "\n")) << out.str();

    out.str("");
    EXPECT_EQ(forge::Inspect(m_game + "/Campaign/default_shop.shp", false, out, err), 0);
    EXPECT_TRUE(Has(out.str(), "title: 'Tessaly Co-op Depot'")) << out.str();
    EXPECT_EQ(err.str(), "");

    // A truncated entity prints what it holds and says it is damaged.
    const std::string entity = m_game + "/entity/air001.nme";
    fs::resize_file(entity, fs::file_size(entity) - 3);
    out.str("");
    EXPECT_EQ(forge::Inspect(entity, false, out, err), 1);
    EXPECT_TRUE(Has(out.str(), "hull: 'art\\hulls\\dart\\dart'")) << out.str();
    EXPECT_TRUE(Has(err.str(), "damaged: ends before its last field")) << err.str();

    err.str("");
    EXPECT_EQ(forge::Inspect(m_game + "/Campaign/korvath.ini", false, out, err), 1);
    EXPECT_TRUE(Has(err.str(), "unknown kind of file")) << err.str();

    // The command line hands the same work out.
    const char* args[] = {"korvath-forge", "inspect", nullptr};
    const std::string path = m_game + "/GOB/Parts/engine000.eng";
    args[2] = path.c_str();
    out.str("");
    EXPECT_EQ(forge::Main(3, args, out, err), 0);
    EXPECT_TRUE(Has(out.str(), "forward_speed: 260")) << out.str();
    const char* bad[] = {"korvath-forge", "frobnicate"};
    EXPECT_EQ(forge::Main(2, bad, out, err), 2);
}

TEST(ForgeConditions, ParsesTheWordLanguageAsTheGameDoes)
{
    EXPECT_EQ(forge::SplitWords("  killed   3 raiders  done "),
              (std::vector<std::string>{"killed", "3", "raiders", "done"}));
    EXPECT_EQ(forge::RestOfLine("message 8  0.03 Two  spaces kept", 3), "Two  spaces kept");
    EXPECT_EQ(forge::RestOfLine("activate 2", 2), "");

    forge::ParsedCondition condition;
    std::string why;
    ASSERT_TRUE(forge::ParseCondition("KILLED * raiders cleared", true, condition, why)) << why;
    EXPECT_EQ(condition.kind, forge::CONDITION_KILLED);
    EXPECT_EQ(condition.count, -1);
    EXPECT_EQ(condition.label, "cleared");
    ASSERT_TRUE(forge::ParseCondition("touching player beacon next", true, condition, why));
    EXPECT_EQ(condition.name1, "player");
    EXPECT_EQ(condition.name2, "beacon");
    ASSERT_TRUE(forge::ParseCondition("timepassed 30.5", false, condition, why));
    EXPECT_FLOAT_EQ(condition.seconds, 30.5f);
    EXPECT_EQ(condition.label, "");
    ASSERT_TRUE(forge::ParseCondition("objectives 5 Mission2", true, condition, why));
    EXPECT_EQ(condition.count, 5);
    EXPECT_FALSE(forge::ParseCondition("killed 3 Mission2", true, condition, why)); // the unused word is required
    EXPECT_FALSE(forge::ParseCondition("dead", false, condition, why));
    EXPECT_FALSE(forge::ParseCondition("exploded ship x", true, condition, why));
    EXPECT_FALSE(forge::ParseCondition("dead ship label extra", true, condition, why));
    EXPECT_FALSE(forge::ParseCondition("killed 3x raiders l", true, condition, why));

    forge::ParsedAction action;
    ASSERT_TRUE(forge::ParseAction("activate 2 Fly to  Bravo", action, why));
    EXPECT_EQ(action.kind, forge::ACTION_ACTIVATE);
    EXPECT_EQ(action.number, 2);
    EXPECT_EQ(action.text, "Fly to  Bravo");
    ASSERT_TRUE(forge::ParseAction("Message 8 0.03 Hello there", action, why));
    EXPECT_EQ(action.kind, forge::ACTION_MESSAGE);
    EXPECT_FLOAT_EQ(action.interval, 0.03f);
    EXPECT_EQ(action.text, "Hello there");
    ASSERT_TRUE(forge::ParseAction("money -250", action, why));
    EXPECT_EQ(action.number, -250);
    EXPECT_FALSE(forge::ParseAction("message 8 0.03", action, why)); // no text: nothing happens
    EXPECT_FALSE(forge::ParseAction("money lots", action, why));
    EXPECT_FALSE(forge::ParseAction("explode 3", action, why));
}

} // namespace
