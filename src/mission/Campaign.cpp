#include "mission/Campaign.h"

#include <cstdio>
#include <string_view>
#include <vector>

#include "menus/ObjectivesScreen.h"
#include "mission/MissionLink.h"
#include "platform/Profile.h"
#include "sim/PlayerShip.h"
#include "sound/Sound.h"

Campaign g_campaign(nullptr, Campaign::Start::WHEN_FIRST_NEEDED);

namespace
{
constexpr size_t FOLDER_LENGTH = std::string_view("Campaign/").size();
} // namespace

Campaign::Campaign(const char* p_fileName, Start p_start)
    : m_fileName(p_fileName != nullptr ? p_fileName : DEFAULT_FILE),
      m_pPreviousLink(g_pCampaignLink),
      m_pPreviousRegistry(g_pNameRegistry),
      m_firstMissionPending(p_start == Start::WHEN_FIRST_NEEDED)
{
    g_pCampaignLink = this;
    g_pNameRegistry = &m_namedObjects;
    if (!m_firstMissionPending)
    {
        Reset();
    }
}

void Campaign::ReadFirstMissionIfPending() const
{
    if (m_firstMissionPending)
    {
        // Only the game's own campaign starts pending, and it is not const: the mission read
        // now is the one it would have read at start, unless the file changed since.
        const_cast<Campaign*>(this)->Reset();
    }
}

Campaign::~Campaign()
{
    ClearMission();
    if (g_pCampaignLink == this)
    {
        g_pCampaignLink = m_pPreviousLink;
    }
    if (g_pNameRegistry == &m_namedObjects)
    {
        g_pNameRegistry = m_pPreviousRegistry;
    }
}

std::string Campaign::Read(const char* p_section, const char* p_key, const char* p_default, uint32_t p_size) const
{
    std::vector<char> buffer(p_size, '\0');
    platform::GetPrivateProfileString(p_section, p_key, p_default, buffer.data(), p_size, m_fileName.c_str());
    return std::string(buffer.data());
}

void Campaign::Reset()
{
    SetMission(GetFirstMissionName());
}

const char* Campaign::GetFirstMissionName()
{
    platform::GetPrivateProfileString("Entry", "FirstMission", DEFAULT_FIRST_MISSION, m_firstMission, NAME_BUFFER,
                                      m_fileName.c_str());
    return m_firstMission;
}

void Campaign::Reload(const char* p_fileName)
{
    if (p_fileName != nullptr)
    {
        m_fileName = p_fileName;
    }
    Reset();
}

void Campaign::ClearMission()
{
    m_objectiveTexts.clear();
    m_levelFile.clear();
    m_briefing.clear();
    m_shopFile.clear();
    m_winConditions.clear();
    m_loseConditions.clear();
    m_objectives.clear();
}

void Campaign::SetMission(const char* p_name)
{
    if (p_name == nullptr)
    {
        return;
    }
    // The name may be one of this campaign's own texts, which the clearing frees.
    const std::string name = p_name;
    m_firstMissionPending = false;
    ClearMission();
    m_missionName = name;
    const char* section = m_missionName.c_str();

    // The file name shares one buffer with the folder in front of it.
    m_levelFile = FOLDER + Read(section, "Level", DEFAULT_LEVEL, FILE_BUFFER - FOLDER_LENGTH);
    m_shopFile = FOLDER + Read(section, "Shop", DEFAULT_SHOP, FILE_BUFFER - FOLDER_LENGTH);
    m_briefing = Read(section, "Brief", DEFAULT_BRIEFING, BRIEF_BUFFER);

    int32_t lastId = 0;
    char key[32];
    for (int n = 1;; ++n)
    {
        std::snprintf(key, sizeof(key), "Obj%d", n);
        const std::string line = Read(section, key, "", OBJECTIVE_BUFFER);
        if (line.empty())
        {
            break;
        }
        std::unique_ptr<Condition> objective = ParseCondition(line.c_str(), true);
        // A label too long for its action keys ("label_1") could never run an action.
        if (!objective || objective->m_label->size() + 2 > MAX_ACTION_KEY)
        {
            continue;
        }
        objective->m_id = ++lastId;
        const std::string text = Read(section, (std::string(key) + "_text").c_str(), "", OBJECTIVE_TEXT_BUFFER);
        objective->m_active = !text.empty();
        objective->m_done = false;
        if (!text.empty() && text != "-")
        {
            AddObjectiveText(text.c_str(), objective->m_id, false);
        }
        m_objectives.push_front(std::move(objective));
    }

    const struct
    {
        const char* m_format;
        bool m_withLabel;
        ConditionList& m_list;
    } rules[] = {{"Win%d", true, m_winConditions}, {"Lose%d", false, m_loseConditions}};
    for (const auto& rule : rules)
    {
        for (int n = 1;; ++n)
        {
            std::snprintf(key, sizeof(key), rule.m_format, n);
            const std::string line = Read(section, key, "", RULE_BUFFER);
            if (line.empty())
            {
                break;
            }
            if (std::unique_ptr<Condition> condition = ParseCondition(line.c_str(), rule.m_withLabel))
            {
                condition->m_id = 0;
                rule.m_list.push_front(std::move(condition));
            }
        }
    }

    m_nextMission.reset();
}

bool Campaign::AdvanceMission()
{
    ReadFirstMissionIfPending();
    if (m_nextMission && EqualsNoCase(*m_nextMission, END_OF_CAMPAIGN))
    {
        return false;
    }
    if (m_nextMission)
    {
        const std::string next = *m_nextMission;
        SetMission(next.c_str());
    }
    return true;
}

Condition* Campaign::FindObjective(int32_t p_id)
{
    for (const auto& objective : m_objectives)
    {
        if (objective->m_id == p_id)
        {
            return objective.get();
        }
    }
    return nullptr;
}

bool Campaign::UpdateObjectives()
{
    ReadFirstMissionIfPending();
    if (m_pMission == nullptr)
    {
        return false;
    }
    bool completed = false;
    for (const auto& objective : m_objectives)
    {
        if (!objective->m_active || objective->m_done || !objective->Test(*this))
        {
            continue;
        }
        objective->m_done = true;
        completed = true;
        m_pMission->MarkObjectiveDone(objective->m_id);
        RunActions(objective->m_label ? objective->m_label->c_str() : nullptr);
        if (g_pSound != nullptr)
        {
            g_pSound->SetTempoParam();
        }
    }
    return completed;
}

int32_t Campaign::GetStatus()
{
    ReadFirstMissionIfPending();
    UpdateObjectives();
    for (const auto& condition : m_winConditions)
    {
        if (condition->Test(*this))
        {
            if (!m_nextMission)
            {
                m_nextMission = condition->m_label.value_or(std::string());
            }
            return 1;
        }
    }
    for (const auto& condition : m_loseConditions)
    {
        if (condition->Test(*this))
        {
            return 2;
        }
    }
    return 0;
}

void Campaign::RunActions(const char* p_label)
{
    ReadFirstMissionIfPending();
    if (p_label == nullptr || std::string_view(p_label) == "-")
    {
        return;
    }
    for (int n = 1;; ++n)
    {
        const std::string key = std::string(p_label) + "_" + std::to_string(n);
        if (key.size() > MAX_ACTION_KEY)
        {
            return;
        }
        const std::string action = Read(m_missionName.c_str(), key.c_str(), "", ACTION_BUFFER);
        if (action.empty())
        {
            return;
        }
        RunAction(action.c_str());
    }
}

void Campaign::RunAction(const char* p_text)
{
    ReadFirstMissionIfPending();
    if (p_text == nullptr)
    {
        return;
    }
    // The work buffer holds 511 characters.
    std::string_view text(p_text);
    text = text.substr(0, ACTION_BUFFER);
    WordReader words(text);
    std::string keyword;
    std::string word;
    if (!words.Next(keyword))
    {
        return;
    }
    if (EqualsNoCase(keyword, "activate"))
    {
        int32_t id = 0;
        if (!words.Next(word) || !ReadInt(word, id))
        {
            return;
        }
        Condition* objective = FindObjective(id);
        if (objective == nullptr)
        {
            return;
        }
        objective->m_active = true;
        const std::string line = words.Rest();
        if (!line.empty())
        {
            AddObjectiveText(line.c_str(), id, true);
        }
    }
    else if (EqualsNoCase(keyword, "message"))
    {
        float seconds = 0.0f;
        float interval = 0.0f;
        if (!words.Next(word) || !ReadFloat(word, seconds) || !words.Next(word) || !ReadFloat(word, interval))
        {
            return;
        }
        const std::string message = words.Rest();
        if (!message.empty() && m_pMission != nullptr)
        {
            m_pMission->AddMessage(message.c_str(), seconds, interval);
        }
    }
    else if (EqualsNoCase(keyword, "money"))
    {
        int32_t amount = 0;
        if (!words.Next(word) || !ReadInt(word, amount))
        {
            return;
        }
        PlayerShip* player = m_pMission != nullptr ? m_pMission->GetPlayer() : nullptr;
        if (player != nullptr)
        {
            player->GetPilot().AddMoney(amount);
        }
    }
}

void Campaign::AddObjectiveText(const char* p_text, int32_t p_id, bool p_showNow)
{
    ReadFirstMissionIfPending();
    if (p_text == nullptr)
    {
        return;
    }
    m_objectiveTexts.push_back(ObjectiveText{p_id, p_text});
    if (p_showNow && m_pMission != nullptr)
    {
        m_pMission->AddObjective(p_text, p_id);
    }
}

void Campaign::FillObjectivesScreen(ObjectivesScreen& p_screen) const
{
    ReadFirstMissionIfPending();
    if (m_objectiveTexts.empty())
    {
        p_screen.AddObjective(NO_OBJECTIVES, 0);
        return;
    }
    for (const ObjectiveText& text : m_objectiveTexts)
    {
        p_screen.AddObjective(text.m_text.c_str(), text.m_id);
    }
}
