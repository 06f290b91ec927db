#pragma once

#include <cstdint>
#include <forward_list>
#include <list>
#include <memory>
#include <optional>
#include <string>

#include "mission/Condition.h"
#include "pilot/CampaignLink.h"
#include "sim/NameRegistry.h"

class MissionLink;
class ObjectivesScreen;

// An objective's line for the objectives screen.
struct ObjectiveText
{
    int32_t m_id = 0;
    std::string m_text;
};

// The campaign INI file and its current mission: level, briefing and shop files, the
// objectives, win and lose conditions with their actions, and the registry of named world
// objects that the conditions refer to. Missions are sections of the file, chained by the
// labels of their win conditions; "endgame" ends the campaign.
//
// Every value is read through the private-profile calls with the buffer sizes of the file
// layout: a value too long for its buffer is cut, a missing file, section or key gives the
// documented default.
class Campaign : public CampaignLink
{
public:
    static constexpr const char* DEFAULT_FILE = "./Campaign/korvath.ini";
    static constexpr const char* DEFAULT_FIRST_MISSION = "Mission1";
    static constexpr const char* DEFAULT_LEVEL = "test.lvl";
    static constexpr const char* DEFAULT_BRIEFING = "Hey, you forgot to add a briefing.";
    static constexpr const char* DEFAULT_SHOP = "default_shop.shp";
    static constexpr const char* FOLDER = "Campaign/";
    static constexpr const char* END_OF_CAMPAIGN = "endgame";
    static constexpr const char* NO_OBJECTIVES = "You don't know what to do.";
    // Buffer sizes, terminator included.
    static constexpr uint32_t NAME_BUFFER = 64;       // FirstMission
    static constexpr uint32_t FILE_BUFFER = 64;       // "Campaign/" + Level or Shop
    static constexpr uint32_t BRIEF_BUFFER = 4096;
    static constexpr uint32_t OBJECTIVE_BUFFER = 1023;
    static constexpr uint32_t OBJECTIVE_TEXT_BUFFER = 1024;
    static constexpr uint32_t RULE_BUFFER = 127;      // Win and Lose lines
    static constexpr uint32_t ACTION_BUFFER = 511;
    // The longest action key (label, "_", number) that is read.
    static constexpr size_t MAX_ACTION_KEY = 127;

    // When the first mission is read: at once, or when something first asks for the current
    // mission (the game's own campaign is built before main, when no file may be read, and a
    // big campaign file must not hold up the window).
    enum class Start
    {
        NOW,
        WHEN_FIRST_NEEDED
    };

    // Reads p_fileName (null: DEFAULT_FILE) and sets its first mission. The campaign becomes
    // g_pCampaignLink and its registry g_pNameRegistry; destroying it gives both back to
    // what they were, if they are still its own.
    explicit Campaign(const char* p_fileName = nullptr, Start p_start = Start::NOW);
    ~Campaign() override;
    Campaign(const Campaign&) = delete;
    Campaign& operator=(const Campaign&) = delete;

    // Back to the mission that "FirstMission" of the section "Entry" names.
    void Reset() override;
    // The first mission's name, in a buffer the campaign owns and overwrites on each call.
    const char* GetFirstMissionName();
    // Loads the section p_name as the current mission; a null name does nothing.
    void SetMission(const char* p_name) override;
    // Another campaign file, from its first mission.
    void Reload(const char* p_fileName);
    // On to the mission the won mission's win label names; false, with nothing changed, when
    // that label is "endgame" (in any letter case).
    bool AdvanceMission();

    // 0 running, 1 won, 2 lost; runs UpdateObjectives first.
    int32_t GetStatus();
    // Completes every active objective whose test holds, highest id first, running its
    // actions; true when any completed. Only while a mission is being played.
    bool UpdateObjectives();
    // Runs the actions LABEL_1, LABEL_2 ... of the current mission up to the first missing one.
    void RunActions(const char* p_label);
    // "activate ID [TEXT]", "money AMOUNT" or "message SECONDS INTERVAL TEXT".
    void RunAction(const char* p_text);
    // Adds an objective's line; with p_showNow, during a mission, also to the screen.
    void AddObjectiveText(const char* p_text, int32_t p_id, bool p_showNow);
    // Every objective line, or "You don't know what to do." when the mission has none.
    void FillObjectivesScreen(ObjectivesScreen& p_screen) const;

    // The mission being played, attached by the mission play mode for its lifetime.
    void SetMissionLink(MissionLink* p_mission) { m_pMission = p_mission; }
    MissionLink* GetMissionLink() const { return m_pMission; }

    const char* GetLevelFile() const
    {
        ReadFirstMissionIfPending();
        return m_levelFile.c_str();
    }
    const char* GetBriefing() const
    {
        ReadFirstMissionIfPending();
        return m_briefing.c_str();
    }
    const char* GetShopFile() const
    {
        ReadFirstMissionIfPending();
        return m_shopFile.c_str();
    }
    const char* GetMissionName() const override
    {
        ReadFirstMissionIfPending();
        return m_missionName.c_str();
    }
    const std::string& GetFileName() const { return m_fileName; }
    // The label of the first win condition that held; null before a win.
    const char* GetNextMission() const { return m_nextMission ? m_nextMission->c_str() : nullptr; }
    NameRegistry& GetNamedObjects() { return m_namedObjects; }

    // Newest first: objectives from the highest id down, the rules in reverse file order.
    using ConditionList = std::forward_list<std::unique_ptr<Condition>>;
    const ConditionList& GetObjectives() const
    {
        ReadFirstMissionIfPending();
        return m_objectives;
    }
    const ConditionList& GetWinConditions() const
    {
        ReadFirstMissionIfPending();
        return m_winConditions;
    }
    const ConditionList& GetLoseConditions() const
    {
        ReadFirstMissionIfPending();
        return m_loseConditions;
    }
    // In file order.
    const std::list<ObjectiveText>& GetObjectiveTexts() const
    {
        ReadFirstMissionIfPending();
        return m_objectiveTexts;
    }
    // Whether the first mission is still to be read (Start::WHEN_FIRST_NEEDED).
    bool IsFirstMissionPending() const { return m_firstMissionPending; }

private:
    void ReadFirstMissionIfPending() const;
    void ClearMission();
    std::string Read(const char* p_section, const char* p_key, const char* p_default, uint32_t p_size) const;
    Condition* FindObjective(int32_t p_id);

    std::string m_fileName;
    std::string m_levelFile;
    std::string m_briefing;
    std::string m_shopFile;
    ConditionList m_winConditions;
    ConditionList m_loseConditions;
    ConditionList m_objectives;
    std::list<ObjectiveText> m_objectiveTexts;
    std::optional<std::string> m_nextMission;
    NameRegistry m_namedObjects;
    std::string m_missionName;

    MissionLink* m_pMission = nullptr;
    char m_firstMission[NAME_BUFFER] = {};
    CampaignLink* m_pPreviousLink = nullptr;
    NameRegistry* m_pPreviousRegistry = nullptr;
    bool m_firstMissionPending = false;
};

// The one campaign of the game; it reads its file when its mission is first needed.
extern Campaign g_campaign;
