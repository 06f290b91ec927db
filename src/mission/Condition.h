#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class Campaign;

// One line of the campaign's trigger language: a keyword naming a test of the running
// mission, its parameters and, for objectives and win conditions, a label.
//
//   killed COUNT|* WORD      computer ships destroyed (the word is required, never used)
//   touching NAME NAME       two named world objects touch
//   dead NAME                the named object is gone (or was never there)
//   timepassed SECONDS       mission time, not counting time the mission stood still
//   objectives MASK|*        the objectives of the mask's bits (bit 0 is objective 1) are done

enum ConditionKind : int32_t
{
    CONDITION_KILLED = 0,
    CONDITION_TOUCHING = 1,
    CONDITION_DEAD = 2,
    CONDITION_TIMEPASSED = 3,
    CONDITION_OBJECTIVES = 4,
};

enum ParamType : int32_t
{
    PARAM_INT = 0,
    PARAM_FLOAT = 1,
    PARAM_STRING = 2,
    PARAM_NONE = 3,
};

struct ConditionParam
{
    ParamType m_type = PARAM_NONE;
    int32_t m_int = 0;
    float m_float = 0.0f;
    std::string m_string;
};

// Every test takes the campaign it belongs to and the condition's two parameters.
using ConditionTest = bool (*)(Campaign& p_campaign, const ConditionParam& p_param1, const ConditionParam& p_param2);

struct Condition
{
    // Objectives 1, 2, 3 ... in the order they parsed; win and lose conditions 0.
    int32_t m_id = 0;
    ConditionKind m_kind = CONDITION_KILLED;
    ConditionTest m_test = nullptr;
    ConditionParam m_param1;
    ConditionParam m_param2;
    // Objectives: the prefix of their action keys ("-" for none). Win conditions: the next
    // mission's section, or "endgame". Lose conditions have none.
    std::optional<std::string> m_label;
    bool m_active = false; // objectives only
    bool m_done = false;   // objectives only

    bool Test(Campaign& p_campaign) const { return m_test != nullptr && m_test(p_campaign, m_param1, m_param2); }
};

// A new condition from one line, or null when the keyword is unknown or a word is missing
// (words beyond those read are ignored). With p_withLabel the word after the parameters is
// the label.
std::unique_ptr<Condition> ParseCondition(const char* p_text, bool p_withLabel);

// Splits a line at spaces (runs of spaces count as one, leading spaces are skipped) and hands
// out its words one at a time.
class WordReader
{
public:
    explicit WordReader(std::string_view p_line) : m_line(p_line) {}

    // The next word; false when the line has none left.
    bool Next(std::string& p_word);
    // Everything from the next word to the end of the line, the spaces between those words
    // as they stand; "" when no word is left.
    std::string Rest();

private:
    void SkipSpaces();

    std::string_view m_line;
    size_t m_position = 0;
};

// Keywords compare without regard to letter case.
bool EqualsNoCase(std::string_view p_a, std::string_view p_b);
// A word read as "%d" and "%f" read it: the leading number, whatever follows; false when the
// word does not start with one. Numbers beyond the 32-bit range stop at its ends.
bool ReadInt(const std::string& p_word, int32_t& p_value);
bool ReadFloat(const std::string& p_word, float& p_value);
