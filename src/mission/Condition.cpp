#include "mission/Condition.h"

#include <cctype>
#include <climits>
#include <cmath>
#include <cstdlib>

#include "mission/Campaign.h"
#include "mission/MissionLink.h"
#include "sim/Collide.h"
#include "sim/Level.h"

namespace
{

Level* RunningLevel(Campaign& p_campaign)
{
    MissionLink* mission = p_campaign.GetMissionLink();
    return mission != nullptr ? mission->GetLevel() : nullptr;
}

bool TestKilled(Campaign& p_campaign, const ConditionParam& p_count, const ConditionParam&)
{
    const Level* level = RunningLevel(p_campaign);
    if (level == nullptr)
    {
        return false;
    }
    if (p_count.m_int == -1)
    {
        return level->GetEnemiesLeft() == 0;
    }
    return level->GetNumEnemies() - level->GetEnemiesLeft() >= p_count.m_int;
}

bool TestTouching(Campaign& p_campaign, const ConditionParam& p_first, const ConditionParam& p_second)
{
    if (p_campaign.GetMissionLink() == nullptr)
    {
        return false;
    }
    NameRegistry& registry = p_campaign.GetNamedObjects();
    WorldObject* first = registry.Find(p_first.m_string);
    WorldObject* second = registry.Find(p_second.m_string);
    return first != nullptr && second != nullptr && Touching(first, second);
}

bool TestDead(Campaign& p_campaign, const ConditionParam& p_name, const ConditionParam&)
{
    return p_campaign.GetMissionLink() != nullptr && p_campaign.GetNamedObjects().Find(p_name.m_string) == nullptr;
}

bool TestTimePassed(Campaign& p_campaign, const ConditionParam& p_seconds, const ConditionParam&)
{
    const Level* level = RunningLevel(p_campaign);
    return level != nullptr && level->GetElapsed() >= p_seconds.m_float;
}

// Needs no running mission: it only looks at the objectives.
bool TestObjectives(Campaign& p_campaign, const ConditionParam& p_mask, const ConditionParam&)
{
    if (p_mask.m_int == -1)
    {
        for (const auto& objective : p_campaign.GetObjectives())
        {
            if (!objective->m_done)
            {
                return false;
            }
        }
        return true;
    }
    uint32_t mask = static_cast<uint32_t>(p_mask.m_int);
    for (const auto& objective : p_campaign.GetObjectives())
    {
        if (objective->m_done && objective->m_id >= 1 && objective->m_id <= 32)
        {
            mask &= ~(uint32_t{1} << (objective->m_id - 1));
        }
    }
    return mask == 0;
}

struct Keyword
{
    const char* m_word;
    ConditionKind m_kind;
    ConditionTest m_test;
};

const Keyword KEYWORDS[] = {
    {"killed", CONDITION_KILLED, &TestKilled},
    {"touching", CONDITION_TOUCHING, &TestTouching},
    {"dead", CONDITION_DEAD, &TestDead},
    {"timepassed", CONDITION_TIMEPASSED, &TestTimePassed},
    {"objectives", CONDITION_OBJECTIVES, &TestObjectives},
};

ConditionParam IntOrAll(const std::string& p_word)
{
    ConditionParam param;
    param.m_type = PARAM_INT;
    if (p_word == "*")
    {
        param.m_int = -1;
    }
    else
    {
        ReadInt(p_word, param.m_int);
    }
    return param;
}

ConditionParam Text(const std::string& p_word)
{
    ConditionParam param;
    param.m_type = PARAM_STRING;
    param.m_string = p_word;
    return param;
}

} // namespace

bool EqualsNoCase(std::string_view p_a, std::string_view p_b)
{
    if (p_a.size() != p_b.size())
    {
        return false;
    }
    for (size_t i = 0; i < p_a.size(); ++i)
    {
        if (std::tolower(static_cast<unsigned char>(p_a[i])) != std::tolower(static_cast<unsigned char>(p_b[i])))
        {
            return false;
        }
    }
    return true;
}

bool ReadInt(const std::string& p_word, int32_t& p_value)
{
    char* end = nullptr;
    // strtoll stops at its own range's ends, far beyond 32 bits.
    const long long value = std::strtoll(p_word.c_str(), &end, 10);
    if (end == p_word.c_str())
    {
        return false;
    }
    p_value = static_cast<int32_t>(value > INT32_MAX ? INT32_MAX : (value < INT32_MIN ? INT32_MIN : value));
    return true;
}

bool ReadFloat(const std::string& p_word, float& p_value)
{
    char* end = nullptr;
    const float value = std::strtof(p_word.c_str(), &end);
    if (end == p_word.c_str())
    {
        return false;
    }
    p_value = value;
    return true;
}

void WordReader::SkipSpaces()
{
    while (m_position < m_line.size() && m_line[m_position] == ' ')
    {
        ++m_position;
    }
}

bool WordReader::Next(std::string& p_word)
{
    SkipSpaces();
    if (m_position >= m_line.size())
    {
        return false;
    }
    const size_t start = m_position;
    while (m_position < m_line.size() && m_line[m_position] != ' ')
    {
        ++m_position;
    }
    p_word.assign(m_line.substr(start, m_position - start));
    return true;
}

std::string WordReader::Rest()
{
    SkipSpaces();
    return std::string(m_line.substr(m_position));
}

std::unique_ptr<Condition> ParseCondition(const char* p_text, bool p_withLabel)
{
    if (p_text == nullptr)
    {
        return nullptr;
    }
    WordReader words(p_text);
    std::string word;
    if (!words.Next(word))
    {
        return nullptr;
    }
    const Keyword* keyword = nullptr;
    for (const Keyword& candidate : KEYWORDS)
    {
        if (EqualsNoCase(word, candidate.m_word))
        {
            keyword = &candidate;
            break;
        }
    }
    if (keyword == nullptr || !words.Next(word))
    {
        return nullptr;
    }

    auto condition = std::make_unique<Condition>();
    condition->m_kind = keyword->m_kind;
    condition->m_test = keyword->m_test;
    switch (keyword->m_kind)
    {
    case CONDITION_KILLED:
    case CONDITION_OBJECTIVES:
        condition->m_param1 = IntOrAll(word);
        break;
    case CONDITION_TOUCHING:
    case CONDITION_DEAD:
        condition->m_param1 = Text(word);
        break;
    case CONDITION_TIMEPASSED:
        condition->m_param1.m_type = PARAM_FLOAT;
        ReadFloat(word, condition->m_param1.m_float);
        break;
    }
    if (keyword->m_kind == CONDITION_KILLED || keyword->m_kind == CONDITION_TOUCHING)
    {
        if (!words.Next(word))
        {
            return nullptr;
        }
        condition->m_param2 = Text(word);
    }
    if (p_withLabel)
    {
        if (!words.Next(word))
        {
            return nullptr;
        }
        condition->m_label = word;
    }
    return condition;
}
