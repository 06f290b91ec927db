#include "mission/Campaign.h"
#include "mission/Condition.h"
#include "mission/MissionLink.h"
#include "platform/ProfileCache.h"
#include "sim/Level.h"
#include "sim/PlayerShip.h"
#include "sim/WorldDoubles.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

using worldtest::TestShip;

namespace
{

// A mission being played, as far as the campaign sees it: a level built in code, the
// player's ship, and a record of what the campaign told the HUD and the objectives screen.
class FakeMission : public MissionLink
{
public:
    FakeMission() { m_level.Create(80, 128, 128, nullptr); }

    Level* GetLevel() override { return &m_level; }
    PlayerShip* GetPlayer() override { return &m_player; }
    void AddMessage(const char* p_text, float p_seconds, float p_interval) override
    {
        m_messages.push_back(p_text);
        m_seconds.push_back(p_seconds);
        m_intervals.push_back(p_interval);
    }
    void AddObjective(const char* p_text, int p_id) override { m_shown.emplace_back(p_id, p_text); }
    void MarkObjectiveDone(int p_id) override { m_marked.push_back(p_id); }

    Level m_level;
    PlayerShip m_player;
    std::vector<std::string> m_messages;
    std::vector<float> m_seconds;
    std::vector<float> m_intervals;
    std::vector<std::pair<int, std::string>> m_shown;
    std::vector<int> m_marked;
};

class CampaignTest : public testsupport::WorkDirTest
{
protected:
    void WriteIni(const std::string& p_path, const std::string& p_text)
    {
        std::filesystem::create_directories(std::filesystem::path(p_path).parent_path());
        std::ofstream(p_path, std::ios::binary) << p_text;
    }

    // The ids of the objectives, in list order.
    static std::vector<int> Ids(const Campaign::ConditionList& p_list)
    {
        std::vector<int> ids;
        for (const auto& condition : p_list)
        {
            ids.push_back(condition->m_id);
        }
        return ids;
    }
};

} // namespace

TEST(ConditionTest, ParsesEachKeywordAndDropsLinesWithAMissingWord)
{
    auto killed = ParseCondition("  KILLED   *  raiders  next  extra", true);
    ASSERT_NE(nullptr, killed);
    EXPECT_EQ(CONDITION_KILLED, killed->m_kind);
    EXPECT_EQ(PARAM_INT, killed->m_param1.m_type);
    EXPECT_EQ(-1, killed->m_param1.m_int);
    EXPECT_EQ("raiders", killed->m_param2.m_string);
    EXPECT_EQ("next", killed->m_label.value_or("?"));

    auto touching = ParseCondition("touching player beacon", false);
    ASSERT_NE(nullptr, touching);
    EXPECT_EQ("player", touching->m_param1.m_string);
    EXPECT_EQ("beacon", touching->m_param2.m_string);
    EXPECT_FALSE(touching->m_label.has_value());

    auto time = ParseCondition("timepassed 2.5s", false);
    ASSERT_NE(nullptr, time);
    EXPECT_EQ(PARAM_FLOAT, time->m_param1.m_type);
    EXPECT_FLOAT_EQ(2.5f, time->m_param1.m_float);
    EXPECT_EQ(PARAM_NONE, time->m_param2.m_type);

    auto mask = ParseCondition("Objectives 5 label", true);
    ASSERT_NE(nullptr, mask);
    EXPECT_EQ(5, mask->m_param1.m_int);
    auto dead = ParseCondition("dead skarrow", false);
    ASSERT_NE(nullptr, dead);
    EXPECT_EQ(CONDITION_DEAD, dead->m_kind);

    // Missing words, unknown keywords: not a condition at all.
    EXPECT_EQ(nullptr, ParseCondition("killed 3", false));
    EXPECT_EQ(nullptr, ParseCondition("killed 3 raiders", true));
    EXPECT_EQ(nullptr, ParseCondition("touching player", false));
    EXPECT_EQ(nullptr, ParseCondition("dead skarrow", true));
    EXPECT_EQ(nullptr, ParseCondition("destroyed 3 raiders label", true));
    EXPECT_EQ(nullptr, ParseCondition("   ", false));
    EXPECT_EQ(nullptr, ParseCondition(nullptr, false));

    // The rest of a line keeps its inner spaces.
    WordReader words("  activate  2   Lead  the way ");
    std::string word;
    ASSERT_TRUE(words.Next(word));
    EXPECT_EQ("activate", word);
    ASSERT_TRUE(words.Next(word));
    EXPECT_EQ("2", word);
    EXPECT_EQ("Lead  the way ", words.Rest());
    int32_t value = 0;
    EXPECT_TRUE(ReadInt("99999999999", value));
    EXPECT_EQ(INT32_MAX, value);
    EXPECT_FALSE(ReadInt("x1", value));
}

TEST_F(CampaignTest, AMissingFileOrSectionGivesTheDefaults)
{
    Campaign campaign("Campaign\\none.ini");
    EXPECT_STREQ("Mission1", campaign.GetMissionName());
    EXPECT_STREQ("Campaign/test.lvl", campaign.GetLevelFile());
    EXPECT_STREQ("Campaign/default_shop.shp", campaign.GetShopFile());
    EXPECT_STREQ("Hey, you forgot to add a briefing.", campaign.GetBriefing());
    EXPECT_TRUE(campaign.GetObjectives().empty());
    EXPECT_TRUE(campaign.GetWinConditions().empty());
    EXPECT_TRUE(campaign.GetLoseConditions().empty());

    // Without a running mission nothing of the world holds and the mission goes on.
    EXPECT_EQ(0, campaign.GetStatus());
    EXPECT_FALSE(campaign.UpdateObjectives());

    // The campaign is what pilots and the level loader talk to while it lives.
    EXPECT_EQ(&campaign, g_pCampaignLink);
    EXPECT_EQ(&campaign.GetNamedObjects(), g_pNameRegistry);
    {
        Campaign inner("Campaign\\none.ini");
        EXPECT_EQ(&inner, g_pCampaignLink);
    }
    EXPECT_EQ(&campaign, g_pCampaignLink);
}

TEST_F(CampaignTest, ReadsAMissionWithTheFilesLimitsAndListOrders)
{
    const std::string level55(55, 'L');
    const std::string label125(125, 'a');
    const std::string label126(126, 'b');
    WriteIni("Campaign/korvath.ini",
             "[mission1]\n"
             "Level=" + level55 + "\n"
             "Brief=Fly.\n"
             "Obj1=killed 2 raiders first\n"
             "Obj1_text=Two raiders\n"
             "Obj2=killed 3\n"                     // dropped: no second word, takes no id
             "Obj2_text=Never shown\n"
             "Obj3=touching player beacon -\n"
             "Obj3_text=-\n"                       // active, no line
             "Obj4=dead boss " + label125 + "\n"   // inactive: no text
             "Obj5=dead boss " + label126 + "\n"   // its action keys would not fit
             "Obj6=timepassed 5 late\n"
             "Obj6_text=Wait\n"
             "Obj8=dead nobody gap\n"              // after the gap at 7: never read
             "Win1=killed * raiders Second\n"
             "Win2=dead boss\n"                    // no label: dropped
             "Win3=timepassed 10 Third\n"
             "Lose1=dead player\n"
             "Lose2=bogus\n"
             "Lose3=timepassed 60\n");
    Campaign campaign("campaign\\KORVATH.ini");
    // No "Entry" section: the first mission is "Mission1", found in any letter case.
    EXPECT_STREQ("Mission1", campaign.GetFirstMissionName());
    EXPECT_STREQ("Mission1", campaign.GetMissionName());
    EXPECT_EQ("Campaign/" + std::string(54, 'L'), campaign.GetLevelFile());
    EXPECT_STREQ("Fly.", campaign.GetBriefing());

    // Newest first: the objectives from the highest id down.
    EXPECT_EQ((std::vector<int>{4, 3, 2, 1}), Ids(campaign.GetObjectives()));
    std::vector<bool> active;
    std::vector<std::string> labels;
    for (const auto& objective : campaign.GetObjectives())
    {
        active.push_back(objective->m_active);
        labels.push_back(objective->m_label.value_or("?"));
        EXPECT_FALSE(objective->m_done);
    }
    EXPECT_EQ((std::vector<bool>{true, false, true, true}), active);
    EXPECT_EQ((std::vector<std::string>{"late", label125, "-", "first"}), labels);
    ASSERT_EQ(2u, campaign.GetObjectiveTexts().size());
    EXPECT_EQ(1, campaign.GetObjectiveTexts().front().m_id);
    EXPECT_EQ("Two raiders", campaign.GetObjectiveTexts().front().m_text);
    EXPECT_EQ(4, campaign.GetObjectiveTexts().back().m_id);

    ASSERT_EQ(2, std::distance(campaign.GetWinConditions().begin(), campaign.GetWinConditions().end()));
    EXPECT_EQ("Third", campaign.GetWinConditions().front()->m_label.value_or("?"));
    ASSERT_EQ(2, std::distance(campaign.GetLoseConditions().begin(), campaign.GetLoseConditions().end()));
    EXPECT_EQ(CONDITION_TIMEPASSED, campaign.GetLoseConditions().front()->m_kind);
    EXPECT_EQ(0, campaign.GetLoseConditions().front()->m_id);
}

TEST_F(CampaignTest, ObjectivesCompleteHighestIdFirstAndRunTheirActions)
{
    WriteIni("Campaign/korvath.ini",
             "[Entry]\nFirstMission=Strike\n"
             "[Strike]\n"
             "Obj1=dead ghost one\n"
             "Obj1_text=Find out about the ghost\n"
             "one_1=message 8 0.03   Ghost   gone.\n"
             "one_2=money 300\n"
             "one_3=activate 3 Meet the boss\n"     // later in the pass: tested next frame
             "one_4=money -50\n"
             "one_6=money 100000\n"                 // after the gap: never run
             "Obj2=dead phantom two\n"
             "Obj2_text=-\n"
             "two_1=message 5\n"                    // missing words: nothing
             "two_2=Message 4 0.1 Phantom gone.\n"
             "two_3=activate 9 No such objective\n"
             "two_4=teleport 3\n"
             "two_5=activate 1\n"
             "Obj3=dead boss three\n"
             "three_1=money 1000\n"
             "Obj4=objectives 5 mask\n"
             "Obj4_text=-\n"
             "mask_1=money 7\n");
    Campaign campaign;
    FakeMission mission;
    TestShip boss(3000.0, 3000.0);
    campaign.GetNamedObjects().Enter("boss", &boss);

    // Nothing holds until a mission is being played.
    EXPECT_FALSE(campaign.UpdateObjectives());
    campaign.SetMissionLink(&mission);

    // "dead" on names that no object ever carried holds at once: objective 2 first.
    EXPECT_TRUE(campaign.UpdateObjectives());
    EXPECT_EQ((std::vector<int>{2, 1}), mission.m_marked);
    EXPECT_EQ((std::vector<std::string>{"Phantom gone.", "Ghost   gone."}), mission.m_messages);
    EXPECT_FLOAT_EQ(8.0f, mission.m_seconds[1]);
    EXPECT_FLOAT_EQ(0.03f, mission.m_intervals[1]);
    EXPECT_EQ(250, mission.m_player.GetPilot().GetMoney());
    ASSERT_EQ(1u, mission.m_shown.size());
    EXPECT_EQ(3, mission.m_shown[0].first);
    EXPECT_EQ("Meet the boss", mission.m_shown[0].second);
    EXPECT_EQ("Meet the boss", campaign.GetObjectiveTexts().back().m_text);

    // Objective 3 was activated behind the pass; the mask 5 needs 1 and 3, whatever 2 is.
    campaign.GetNamedObjects().Clear("boss");
    EXPECT_TRUE(campaign.UpdateObjectives());
    EXPECT_EQ((std::vector<int>{2, 1, 3}), mission.m_marked);
    EXPECT_EQ(1250, mission.m_player.GetPilot().GetMoney());
    EXPECT_TRUE(campaign.UpdateObjectives());
    EXPECT_EQ((std::vector<int>{2, 1, 3, 4}), mission.m_marked);
    EXPECT_EQ(1257, mission.m_player.GetPilot().GetMoney());
    EXPECT_FALSE(campaign.UpdateObjectives());

    // An objective done stays done; a new mission starts it again.
    campaign.SetMission("Strike");
    for (const auto& objective : campaign.GetObjectives())
    {
        EXPECT_FALSE(objective->m_done);
    }
}

TEST_F(CampaignTest, TheWorldsTestsAskTheLevelAndTheRegistry)
{
    WriteIni("Campaign/korvath.ini",
             "[Mission1]\n"
             "Obj1=killed * raiders all\n"
             "Obj1_text=All\n"
             "Obj2=killed 2 raiders two\n"
             "Obj2_text=Two\n"
             "Obj3=touching player beacon touch\n"
             "Obj3_text=Touch\n"
             "Obj4=timepassed 30 late\n"
             "Obj4_text=Late\n");
    Campaign campaign;
    FakeMission mission;
    campaign.SetMissionLink(&mission);
    auto done = [&campaign](int p_id) {
        for (const auto& objective : campaign.GetObjectives())
        {
            if (objective->m_id == p_id)
            {
                return objective->m_done;
            }
        }
        return false;
    };

    // "killed *" holds on a level that never had a computer ship.
    campaign.UpdateObjectives();
    EXPECT_TRUE(done(1));
    EXPECT_FALSE(done(2));

    mission.m_level.SetEnemyCount(3);
    campaign.SetMission("Mission1");
    mission.m_level.OnEnemyRemoved();
    campaign.UpdateObjectives();
    EXPECT_FALSE(done(1));
    EXPECT_FALSE(done(2));
    mission.m_level.OnEnemyRemoved();
    campaign.UpdateObjectives();
    EXPECT_TRUE(done(2));
    EXPECT_FALSE(done(1));

    // Touching: both names must be there and their shapes overlap.
    TestShip player(1000.0, 1000.0);
    TestShip beacon(1020.0, 1020.0);
    campaign.GetNamedObjects().Enter("player", &player);
    campaign.UpdateObjectives();
    EXPECT_FALSE(done(3));
    campaign.GetNamedObjects().Enter("beacon", &beacon);
    beacon.Place(2000.0, 2000.0);
    campaign.UpdateObjectives();
    EXPECT_FALSE(done(3));
    beacon.Place(1020.0, 1020.0);
    campaign.UpdateObjectives();
    EXPECT_TRUE(done(3));

    // Time passed is the level's own clock: it holds at 30.0 seconds, not before, and frames
    // in which the level stands still (menu, banner) do not count.
    for (int i = 0; i < 299; ++i)
    {
        mission.m_level.Update(0.1f);
    }
    for (int i = 0; i < 100; ++i)
    {
        campaign.GetStatus();
    }
    EXPECT_FALSE(done(4)) << mission.m_level.GetElapsed();
    mission.m_level.Update(0.2f);
    campaign.UpdateObjectives();
    EXPECT_TRUE(done(4));
    campaign.GetNamedObjects().Clear("player");
    campaign.GetNamedObjects().Clear("beacon");
}

TEST_F(CampaignTest, TheLastWrittenWinHoldsFirstAndEndgameEndsTheCampaign)
{
    WriteIni("Campaign/korvath.ini",
             "[Entry]\nFirstMission=One\n"
             "[One]\n"
             "Level=one.lvl\n"
             "Win1=timepassed 0 Two\n"
             "Win2=timepassed 0 Three\n"
             "Lose1=timepassed 0\n"
             "[Three]\n"
             "Level=three.lvl\n"
             "Obj1=dead nobody x\n"
             "Win1=objectives * EndGame\n"
             "Lose1=timepassed 0\n");
    Campaign campaign;
    FakeMission mission;
    campaign.SetMissionLink(&mission);
    EXPECT_EQ(nullptr, campaign.GetNextMission());
    // A win and a lose in the same frame: the win.
    EXPECT_EQ(1, campaign.GetStatus());
    EXPECT_STREQ("Three", campaign.GetNextMission());
    EXPECT_TRUE(campaign.AdvanceMission());
    EXPECT_STREQ("Three", campaign.GetMissionName());
    EXPECT_STREQ("Campaign/three.lvl", campaign.GetLevelFile());
    EXPECT_EQ(nullptr, campaign.GetNextMission());

    // The objective is inactive (no text), so only the lose line holds.
    EXPECT_EQ(2, campaign.GetStatus());
    campaign.RunAction("activate 1");
    EXPECT_EQ(1, campaign.GetStatus());
    EXPECT_STREQ("EndGame", campaign.GetNextMission());
    EXPECT_FALSE(campaign.AdvanceMission());
    EXPECT_STREQ("Three", campaign.GetMissionName());

    // Reset and Reload go back to a first mission.
    campaign.Reset();
    EXPECT_STREQ("One", campaign.GetMissionName());
    WriteIni("multiplayer/multiplayer.ini", "[Entry]\nFirstMission=Duel\n[Duel]\nLevel=duel.lvl\n");
    campaign.Reload("multiplayer\\multiplayer.ini");
    EXPECT_STREQ("Duel", campaign.GetMissionName());
    EXPECT_STREQ("Campaign/duel.lvl", campaign.GetLevelFile());
    // A win label naming no section gives a mission of defaults.
    campaign.SetMission("Nowhere");
    EXPECT_STREQ("Campaign/test.lvl", campaign.GetLevelFile());
    campaign.SetMission(nullptr);
    EXPECT_STREQ("Nowhere", campaign.GetMissionName());
}

TEST_F(CampaignTest, AGapEndsTheObjectivesAndAMaskLooksOnlyAtItsOwnBits)
{
    WriteIni("Campaign/korvath.ini",
             "[Gap]\n"
             "Obj1=dead nobody first\n"
             "Obj1_text=\n"                    // empty: inactive
             "Obj3=dead nobody third\n"        // after the missing Obj2: never read
             "Obj3_text=Never read\n"
             "[Mask]\n"
             "Obj1=dead nobody one\n"
             "Obj1_text=-\n"
             "Obj2=dead boss two\n"
             "Obj2_text=Bring down the boss\n"
             "Obj3=dead nobody three\n"        // no text: waits for "activate"
             "Win1=objectives 5 Next\n");
    Campaign campaign;
    campaign.SetMission("Gap");
    ASSERT_EQ((std::vector<int>{1}), Ids(campaign.GetObjectives()));
    EXPECT_FALSE(campaign.GetObjectives().front()->m_active);
    EXPECT_TRUE(campaign.GetObjectiveTexts().empty());
    FakeMission mission;
    campaign.SetMissionLink(&mission);
    EXPECT_FALSE(campaign.UpdateObjectives());
    EXPECT_FALSE(campaign.GetObjectives().front()->m_done);

    campaign.SetMission("Mask");
    TestShip boss(3000.0, 3000.0);
    campaign.GetNamedObjects().Enter("boss", &boss);
    auto done = [&campaign](int p_id) {
        for (const auto& objective : campaign.GetObjectives())
        {
            if (objective->m_id == p_id)
            {
                return objective->m_done;
            }
        }
        return false;
    };
    // Objective 1 is done, 3 is not active yet: the mask 5 still waits for 3.
    EXPECT_EQ(0, campaign.GetStatus());
    EXPECT_TRUE(done(1));
    EXPECT_FALSE(done(3));
    campaign.RunAction("activate 3");
    // 1 and 3 done with 2 still open: the mask 5 holds.
    EXPECT_EQ(1, campaign.GetStatus());
    EXPECT_TRUE(done(3));
    EXPECT_FALSE(done(2));
    EXPECT_STREQ("Next", campaign.GetNextMission());
    ASSERT_EQ(1u, campaign.GetObjectiveTexts().size());
    EXPECT_EQ(2, campaign.GetObjectiveTexts().front().m_id);
    campaign.GetNamedObjects().Clear("boss");
}

namespace
{

// The game's own campaign is built before main and reads nothing then: its first mission is
// read when something first asks for the current mission, from the file as it is by then.
TEST_F(CampaignTest, AStartWhenFirstNeededReadsTheFileOnlyThen)
{
    WriteIni("Campaign/late.ini", "[Entry]\nFirstMission=One\n[One]\nBrief=first\n[Two]\nBrief=second\n");
    const uint64_t reads = platform::ProfileCache::GetReadCount();
    Campaign campaign("Campaign/late.ini", Campaign::Start::WHEN_FIRST_NEEDED);
    EXPECT_TRUE(campaign.IsFirstMissionPending());
    EXPECT_EQ(platform::ProfileCache::GetReadCount(), reads);
    EXPECT_EQ(g_pCampaignLink, &campaign);

    WriteIni("Campaign/late.ini", "[Entry]\nFirstMission=Two\n[One]\nBrief=first\n[Two]\nBrief=second\n"
                                  "Obj1=timepassed 5 soon\nObj1_text=Wait\n");
    EXPECT_STREQ(campaign.GetMissionName(), "Two");
    EXPECT_FALSE(campaign.IsFirstMissionPending());
    EXPECT_STREQ(campaign.GetBriefing(), "second");
    EXPECT_EQ(campaign.GetObjectiveTexts().size(), 1u);

    // A mission set, or a text added, before anything was read is not overwritten later.
    Campaign chosen("Campaign/late.ini", Campaign::Start::WHEN_FIRST_NEEDED);
    chosen.SetMission("One");
    EXPECT_STREQ(chosen.GetBriefing(), "first");
    Campaign added("Campaign/late.ini", Campaign::Start::WHEN_FIRST_NEEDED);
    added.AddObjectiveText("Extra", 9, false);
    EXPECT_STREQ(added.GetMissionName(), "Two");
    ASSERT_EQ(added.GetObjectiveTexts().size(), 2u);
    EXPECT_EQ(added.GetObjectiveTexts().back().m_text, "Extra");
    // Asked for its status first, it plays its first mission's rules.
    Campaign asked("Campaign/late.ini", Campaign::Start::WHEN_FIRST_NEEDED);
    EXPECT_EQ(asked.GetStatus(), 0);
    EXPECT_EQ(std::distance(asked.GetObjectives().begin(), asked.GetObjectives().end()), 1);
}

} // namespace
