// Every mission of the shipped campaigns can be won: a scripted bot plays each one in the
// headless simulation, on the levels, entities and parts the forge builds from data/ and with
// the scenery pictures the art generator draws (their size is what "touching" tests), until
// the campaign reports a victory. The bot works only through the world's own rules: it flies
// at its engine's speed inside the play area, destroys ships through their damage path (so
// the level counts the kills) and leads other objects at their own top speed. It keeps the
// player's ship, and any ship whose death loses the mission, repaired: the test shows that
// the rules can be met, not that the bot flies well.

#include "artgen/Pictures.h"
#include "forge/Forge.h"
#include "forge/Formats.h"
#include "gfx/TextureManager.h"
#include "mission/Campaign.h"
#include "mission/Condition.h"
#include "mission/MissionLink.h"
#include "platform/Profile.h"
#include "sim/CombatSupport.h"
#include "sim/Layers.h"
#include "sim/Level.h"
#include "sim/PlayerShip.h"
#include "sim/QuadNode.h"
#include "sim/SpawnerController.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

using combattest::FixedSeed;
using combattest::RecordingMission;
using combattest::ScopedCatalog;
using combattest::WriteGameFile;

namespace
{

const float FRAME_TIME = 0.05f;
// Longer than any mission's own time limit.
const double MAX_MISSION_SECONDS = 900.0;
// About the reach of the starting machine gun: the bot destroys a ship only this close.
const double KILL_RANGE = 400.0;
// The bot keeps the player's ship this far inside the play area's border.
const double BORDER_MARGIN = 40.0;

Vector2 Centre(WorldObject& p_object)
{
    PhysicalDesc* desc = p_object.GetPhysicalDesc();
    if (desc == nullptr)
    {
        return {p_object.GetX(), p_object.GetY()};
    }
    return {(desc->GetWorldMin().x + desc->GetWorldMax().x) / 2.0, (desc->GetWorldMin().y + desc->GetWorldMax().y) / 2.0};
}

double Distance(const Vector2& p_a, const Vector2& p_b)
{
    return std::hypot(p_b.x - p_a.x, p_b.y - p_a.y);
}

bool IsSpawner(const Ship& p_ship)
{
    return dynamic_cast<SpawnerController*>(p_ship.GetController()) != nullptr;
}

std::string Describe(const Condition& p_condition)
{
    static const char* const KEYWORDS[] = {"killed", "touching", "dead", "timepassed", "objectives"};
    std::ostringstream text;
    text << KEYWORDS[p_condition.m_kind];
    for (const ConditionParam* param : {&p_condition.m_param1, &p_condition.m_param2})
    {
        switch (param->m_type)
        {
        case PARAM_INT:
            text << ' ' << param->m_int;
            break;
        case PARAM_FLOAT:
            text << ' ' << param->m_float;
            break;
        case PARAM_STRING:
            text << ' ' << param->m_string;
            break;
        case PARAM_NONE:
            break;
        }
    }
    if (p_condition.m_label)
    {
        text << " -> " << *p_condition.m_label;
    }
    return text.str();
}

// The mission being played, as the campaign sees it.
class BotMission : public MissionLink
{
public:
    BotMission(Level& p_level, PlayerShip& p_player) : m_level(p_level), m_player(p_player) {}

    Level* GetLevel() override { return &m_level; }
    PlayerShip* GetPlayer() override { return &m_player; }
    void AddMessage(const char* p_text, float, float) override { m_messages.push_back(p_text); }
    void AddObjective(const char* p_text, int p_id) override { m_shown.emplace_back(p_id, p_text); }
    void MarkObjectiveDone(int p_id) override { m_marked.push_back(p_id); }

    Level& m_level;
    PlayerShip& m_player;
    std::vector<std::string> m_messages;
    std::vector<std::pair<int, std::string>> m_shown;
    std::vector<int> m_marked;
};

// Works, each frame, on the first condition it can do something about: first what the win
// conditions need (a win's own test, or the objectives its mask names), then every other open
// objective, whose actions may switch on what a win needs.
class MissionBot
{
public:
    MissionBot(Campaign& p_campaign, Level& p_level, PlayerShip& p_player)
        : m_campaign(p_campaign), m_level(p_level), m_player(p_player)
    {
        for (const auto& lose : m_campaign.GetLoseConditions())
        {
            if (lose->m_kind == CONDITION_DEAD)
            {
                m_protected.insert(lose->m_param1.m_string);
            }
        }
    }

    // The player's ship and every ship whose death loses the mission are made whole again.
    void RepairProtected()
    {
        m_player.Repair();
        for (const std::string& name : m_protected)
        {
            if (auto* ship = dynamic_cast<Ship*>(m_campaign.GetNamedObjects().Find(name)))
            {
                ship->Repair();
            }
        }
    }

    void Act(float p_dt)
    {
        for (const Condition* goal : Goals())
        {
            if (Work(*goal, p_dt))
            {
                m_doing = Describe(*goal);
                return;
            }
        }
        m_doing = "waiting";
    }

    const std::string& GetDoing() const { return m_doing; }
    const std::set<std::string>& GetProtected() const { return m_protected; }

private:
    std::vector<const Condition*> Goals() const
    {
        // The objectives from id 1 up: missions chain them in that order.
        std::vector<const Condition*> objectives;
        for (const auto& objective : m_campaign.GetObjectives())
        {
            objectives.insert(objectives.begin(), objective.get());
        }
        std::vector<const Condition*> goals;
        auto addOpen = [&goals](const Condition* p_objective) {
            if (p_objective->m_active && !p_objective->m_done &&
                std::find(goals.begin(), goals.end(), p_objective) == goals.end())
            {
                goals.push_back(p_objective);
            }
        };
        for (const auto& win : m_campaign.GetWinConditions())
        {
            if (win->m_kind != CONDITION_OBJECTIVES)
            {
                goals.push_back(win.get());
                continue;
            }
            const int32_t mask = win->m_param1.m_int;
            for (const Condition* objective : objectives)
            {
                const bool named = objective->m_id >= 1 && objective->m_id <= 32 &&
                                   (static_cast<uint32_t>(mask) & (uint32_t{1} << (objective->m_id - 1))) != 0;
                if (mask == -1 || named)
                {
                    addOpen(objective);
                }
            }
        }
        for (const Condition* objective : objectives)
        {
            addOpen(objective);
        }
        return goals;
    }

    // One frame of work on p_goal; false when there is nothing the bot can do for it.
    bool Work(const Condition& p_goal, float p_dt)
    {
        NameRegistry& names = m_campaign.GetNamedObjects();
        switch (p_goal.m_kind)
        {
        case CONDITION_KILLED:
        {
            const int32_t count = p_goal.m_param1.m_int;
            if (count != -1 && m_level.GetNumEnemies() - m_level.GetEnemiesLeft() >= count)
            {
                return false;
            }
            Ship* target = NearestKillable();
            if (target == nullptr)
            {
                return false;
            }
            Hunt(*target, p_dt);
            return true;
        }
        case CONDITION_TOUCHING:
        {
            WorldObject* mover = names.Find(p_goal.m_param1.m_string);
            WorldObject* goal = names.Find(p_goal.m_param2.m_string);
            if (mover == nullptr || goal == nullptr)
            {
                return false;
            }
            if (goal == &m_player)
            {
                std::swap(mover, goal);
            }
            if (mover == &m_player)
            {
                FlyToward(Centre(*goal), p_dt);
                return true;
            }
            // Another object is led there at its own top speed, the player alongside.
            const auto* ship = dynamic_cast<Ship*>(mover);
            const double speed = ship != nullptr ? ship->GetMaxSpeed() : m_player.GetMaxSpeed();
            MoveToward(*mover, Centre(*goal), speed * p_dt);
            FlyToward(Centre(*mover), p_dt);
            return true;
        }
        case CONDITION_DEAD:
        {
            auto* ship = dynamic_cast<Ship*>(names.Find(p_goal.m_param1.m_string));
            if (ship == nullptr || ship->IsDead() || IsSpawner(*ship) || ship == &m_player)
            {
                return false;
            }
            Hunt(*ship, p_dt);
            return true;
        }
        case CONDITION_TIMEPASSED:
        case CONDITION_OBJECTIVES:
            return false;
        }
        return false;
    }

    // The nearest computer ship that can be removed and whose death loses nothing.
    Ship* NearestKillable()
    {
        std::set<WorldObject*> spared;
        for (const std::string& name : m_protected)
        {
            spared.insert(m_campaign.GetNamedObjects().Find(name));
        }
        std::vector<QuadNode*> leaves;
        m_level.GetRoot()->CollectLeaves(leaves);
        Ship* nearest = nullptr;
        double best = 0.0;
        const Vector2 from = Centre(m_player);
        for (QuadNode* leaf : leaves)
        {
            for (WorldObject* object = leaf->GetList(LAYER_SHIPS); object != nullptr; object = object->GetNextInList())
            {
                auto* ship = dynamic_cast<Ship*>(object);
                if (ship == nullptr || !ship->IsEnemy() || ship->IsDead() || IsSpawner(*ship) || spared.count(ship) != 0)
                {
                    continue;
                }
                const double distance = Distance(from, Centre(*ship));
                if (nearest == nullptr || distance < best)
                {
                    nearest = ship;
                    best = distance;
                }
            }
        }
        return nearest;
    }

    // Closes in and, once in range, destroys the ship with one hit through its damage path.
    void Hunt(Ship& p_ship, float p_dt)
    {
        FlyToward(Centre(p_ship), p_dt);
        if (Distance(Centre(m_player), Centre(p_ship)) <= KILL_RANGE)
        {
            p_ship.TakeDamage(p_ship.GetArmour() + p_ship.GetShield() + p_ship.GetAbsorption() + 1);
        }
    }

    // The player's ship at its engine's top speed, never leaving the play area.
    void FlyToward(const Vector2& p_target, float p_dt)
    {
        MoveToward(m_player, p_target, m_player.GetMaxSpeed() * p_dt);
        const double x = std::clamp(m_player.GetX(), m_level.GetLeft() + BORDER_MARGIN, m_level.GetRight() - BORDER_MARGIN);
        const double y = std::clamp(m_player.GetY(), m_level.GetTop() + BORDER_MARGIN, m_level.GetBottom() - BORDER_MARGIN);
        m_player.SetPosition(static_cast<float>(x), static_cast<float>(y));
    }

    // Moves p_object's centre at most p_step units toward p_target; its own speed is taken
    // away so that the world's update adds nothing.
    static void MoveToward(WorldObject& p_object, const Vector2& p_target, double p_step)
    {
        const Vector2 centre = Centre(p_object);
        const double distance = Distance(centre, p_target);
        const double fraction = distance > p_step ? p_step / distance : 1.0;
        const double x = p_object.GetX() + (p_target.x - centre.x) * fraction;
        const double y = p_object.GetY() + (p_target.y - centre.y) * fraction;
        p_object.SetPosition(static_cast<float>(x), static_cast<float>(y));
        if (PhysicalDesc* desc = p_object.GetPhysicalDesc())
        {
            desc->SetSpeed(0.0);
            desc->SetAcceleration(0.0);
            desc->Update(0.0f);
        }
    }

    Campaign& m_campaign;
    Level& m_level;
    PlayerShip& m_player;
    std::set<std::string> m_protected;
    std::string m_doing;
};

struct MissionResult
{
    int32_t status = 0;
    double seconds = 0.0;
    std::string held;    // the label of the win that held
    std::string trouble; // what was still open when the mission did not end in a win
};

class CampaignWinnableTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        std::ostringstream out;
        std::ostringstream err;
        ASSERT_EQ(0, forge::Build(std::string(KORVATH_SOURCE_DIR) + "/data", m_dir, out, err)) << err.str();
        WriteSceneryPictures();

        m_pPreviousTextures = g_pTextureManager;
        g_pTextureManager = &m_textures;
        forge::PilotRecord pilot;
        pilot.pilotName = "Bot";
        WriteGameFile("Saves\\Bot0.sav", pilot);
    }

    void TearDown() override
    {
        g_pTextureManager = m_pPreviousTextures;
        WorkDirTest::TearDown();
    }

    // The pictures of every scenery object the levels place, drawn as the art generator
    // draws them; the game takes a scenery object's shape from its picture's size.
    void WriteSceneryPictures()
    {
        std::set<std::string> wanted;
        for (const auto& entry : std::filesystem::directory_iterator(m_dir + "/Campaign"))
        {
            if (entry.path().extension() != ".lvl")
            {
                continue;
            }
            forge::LevelRecord level;
            std::string error;
            ASSERT_TRUE(forge::ReadWholeFile("Campaign\\" + entry.path().filename().string(), level, error)) << error;
            for (const forge::SceneryRecord& scenery : level.scenery)
            {
                wanted.insert(Lower("Entity\\" + scenery.picture));
            }
        }
        artgen::ArtContext context;
        context.dataDir = std::string(KORVATH_SOURCE_DIR) + "/data";
        std::vector<artgen::PictureRecipe> pictures;
        for (artgen::PictureLister lister : artgen::GetPictureListers())
        {
            lister(context, pictures);
        }
        for (const artgen::PictureRecipe& recipe : pictures)
        {
            if (wanted.erase(Lower(recipe.gameName)) == 0)
            {
                continue;
            }
            artgen::Canvas canvas(recipe.width, recipe.height);
            recipe.draw(canvas);
            std::string path = recipe.gameName;
            std::replace(path.begin(), path.end(), '\\', '/');
            std::error_code error;
            std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
            ASSERT_TRUE(canvas.SaveBitmap(path, recipe.alpha)) << path;
        }
        EXPECT_TRUE(wanted.empty()) << "scenery without a picture: " << *wanted.begin();
    }

    static std::string Lower(std::string p_text)
    {
        std::transform(p_text.begin(), p_text.end(), p_text.begin(),
                       [](unsigned char p_c) { return static_cast<char>(std::tolower(p_c)); });
        return p_text;
    }

    // The sections of a campaign file, "Entry" left out.
    static std::vector<std::string> Missions(const std::string& p_file)
    {
        std::vector<char> buffer(65536, '\0');
        platform::GetPrivateProfileString(nullptr, nullptr, "", buffer.data(), static_cast<uint32_t>(buffer.size()),
                                          p_file.c_str());
        std::vector<std::string> sections;
        for (const char* name = buffer.data(); *name != '\0'; name += std::strlen(name) + 1)
        {
            if (!EqualsNoCase(name, "Entry"))
            {
                sections.emplace_back(name);
            }
        }
        return sections;
    }

    // Plays the campaign's current mission with the bot until it ends or time runs out.
    MissionResult Play(Campaign& p_campaign, PlayerShip& p_player)
    {
        MissionResult result;
        RecordingMission events;
        Level level;
        if (!level.Load(p_campaign.GetLevelFile(), nullptr, &p_player))
        {
            result.trouble = std::string("the level ") + p_campaign.GetLevelFile() + " does not load";
            return result;
        }
        level.SetMission(&events);
        BotMission mission(level, p_player);
        p_campaign.SetMissionLink(&mission);
        MissionBot bot(p_campaign, level, p_player);

        const int frames = static_cast<int>(MAX_MISSION_SECONDS / FRAME_TIME);
        for (int frame = 0; frame < frames && result.status == 0; ++frame)
        {
            bot.RepairProtected();
            bot.Act(FRAME_TIME);
            level.Update(FRAME_TIME);
            result.status = p_campaign.GetStatus();
        }
        result.seconds = level.GetElapsed();
        if (result.status == 1)
        {
            result.held = p_campaign.GetNextMission() != nullptr ? p_campaign.GetNextMission() : "";
        }
        else
        {
            std::ostringstream trouble;
            trouble << (result.status == 2 ? "lost" : "still running") << " after " << result.seconds << " s"
                    << (events.m_defeat ? " (the player's ship was destroyed)" : "") << "; enemies "
                    << level.GetEnemiesLeft() << " of " << level.GetNumEnemies() << " left; the bot was at "
                    << p_player.GetX() << ", " << p_player.GetY() << " working on: " << bot.GetDoing();
            for (const auto& objective : p_campaign.GetObjectives())
            {
                trouble << "\n  Obj" << objective->m_id << " " << Describe(*objective)
                        << (objective->m_active ? "" : " [inactive]") << (objective->m_done ? " [done]" : "");
            }
            for (const auto& win : p_campaign.GetWinConditions())
            {
                trouble << "\n  Win " << Describe(*win);
            }
            for (const auto& lose : p_campaign.GetLoseConditions())
            {
                trouble << "\n  Lose " << Describe(*lose) << (lose->Test(p_campaign) ? " [holds]" : "");
            }
            result.trouble = trouble.str();
        }
        p_campaign.SetMissionLink(nullptr);
        return result;
    }

    // Plays every mission the campaign file can reach and follows the won missions' labels
    // from the first mission to "endgame".
    void PlayWholeCampaign(const std::string& p_file)
    {
        SCOPED_TRACE(p_file);
        FixedSeed seed(77);
        ScopedCatalog catalog;
        Campaign campaign(p_file.c_str());
        PlayerShip player;
        ASSERT_TRUE(player.LoadPilot("Saves\\Bot0.sav"));
        ASSERT_NE(nullptr, player.GetEngine());
        const std::vector<std::string> sections = Missions(p_file);
        auto section = [&sections](const std::string& p_name) -> const std::string* {
            for (const std::string& candidate : sections)
            {
                if (EqualsNoCase(candidate, p_name))
                {
                    return &candidate;
                }
            }
            return nullptr;
        };

        const std::string first = campaign.GetFirstMissionName();
        ASSERT_NE(nullptr, section(first)) << "FirstMission names no section: " << first;
        std::vector<std::string> queue{*section(first)};
        std::set<std::string> reached{*section(first)};
        std::map<std::string, std::string> wonTo; // mission -> the label its victory followed
        for (size_t next = 0; next < queue.size(); ++next)
        {
            const std::string name = queue[next];
            SCOPED_TRACE(name);
            campaign.SetMission(name.c_str());
            EXPECT_FALSE(campaign.GetWinConditions().empty()) << name << " has no win condition";
            for (const auto& win : campaign.GetWinConditions())
            {
                const std::string label = win->m_label.value_or("");
                if (EqualsNoCase(label, Campaign::END_OF_CAMPAIGN))
                {
                    continue;
                }
                const std::string* target = section(label);
                EXPECT_NE(nullptr, target) << name << ": the win label \"" << label << "\" names no mission";
                if (target != nullptr && reached.insert(*target).second)
                {
                    queue.push_back(*target);
                }
            }

            const MissionResult result = Play(campaign, player);
            EXPECT_EQ(1, result.status) << name << " was not won: " << result.trouble;
            if (result.status != 1)
            {
                continue;
            }
            wonTo[name] = result.held;
            if (EqualsNoCase(result.held, Campaign::END_OF_CAMPAIGN))
            {
                EXPECT_FALSE(campaign.AdvanceMission());
                EXPECT_EQ(name, campaign.GetMissionName());
            }
            else
            {
                EXPECT_TRUE(campaign.AdvanceMission());
                EXPECT_TRUE(EqualsNoCase(result.held, campaign.GetMissionName())) << campaign.GetMissionName();
                EXPECT_NE(nullptr, section(campaign.GetMissionName()));
            }
        }

        // No mission is left out of the chain.
        for (const std::string& name : sections)
        {
            EXPECT_EQ(1u, reached.count(name)) << name << " cannot be reached from " << first;
        }

        // The victories lead from the first mission to the end of the campaign.
        std::string at = *section(first);
        std::set<std::string> played;
        while (!EqualsNoCase(at, Campaign::END_OF_CAMPAIGN))
        {
            ASSERT_TRUE(played.insert(at).second) << "the victories run in a circle through " << at;
            const auto won = wonTo.find(at);
            ASSERT_TRUE(won != wonTo.end()) << at << " was not won";
            const std::string* target = section(won->second);
            ASSERT_TRUE(target != nullptr || EqualsNoCase(won->second, Campaign::END_OF_CAMPAIGN)) << won->second;
            at = target != nullptr ? *target : won->second;
        }
        EXPECT_GT(player.GetPilot().GetMoney(), 0) << "the missions' money actions paid nothing";
    }

    TextureManager m_textures;
    TextureManager* m_pPreviousTextures = nullptr;
};

} // namespace

TEST_F(CampaignWinnableTest, EveryMissionOfTheOnePlayerCampaignCanBeWon)
{
    PlayWholeCampaign("Campaign\\korvath.ini");
}

TEST_F(CampaignWinnableTest, EveryMissionOfTheTwoPlayerCampaignCanBeWon)
{
    PlayWholeCampaign("multiplayer\\multiplayer.ini");
}
