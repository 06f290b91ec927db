#pragma once

// The word language of mission objectives, win and lose conditions and their actions, parsed
// the way the game's campaign parses it, so that the forge can find lines the game would drop
// without a word.

#include <string>
#include <vector>

namespace forge
{

enum ConditionKind
{
    CONDITION_KILLED = 0,
    CONDITION_TOUCHING = 1,
    CONDITION_DEAD = 2,
    CONDITION_TIMEPASSED = 3,
    CONDITION_OBJECTIVES = 4
};

struct ParsedCondition
{
    ConditionKind kind = CONDITION_KILLED;
    int count = 0;       // killed: count, objectives: mask; -1 for "*"
    float seconds = 0.0f; // timepassed
    std::string name1;   // touching, dead
    std::string name2;   // touching; the unused word of killed
    std::string label;
};

// Splits at single spaces; runs of spaces count as one and leading spaces are skipped.
std::vector<std::string> SplitWords(const std::string& p_line);
// Everything from word p_index to the end of the line, with the spaces between those words
// as they stand.
std::string RestOfLine(const std::string& p_line, size_t p_index);

// False with the reason when the game would not take the line as a condition, or when it
// holds words the game would ignore.
bool ParseCondition(const std::string& p_line, bool p_withLabel, ParsedCondition& p_out, std::string& p_why);

enum ActionKind
{
    ACTION_ACTIVATE,
    ACTION_MESSAGE,
    ACTION_MONEY
};

struct ParsedAction
{
    ActionKind kind = ACTION_MONEY;
    int number = 0;         // activate: objective id; money: amount
    float seconds = 0.0f;   // message: display time
    float interval = 0.0f;  // message: seconds per typed character
    std::string text;       // activate: the objective's line (may be empty); message: the text
};

bool ParseAction(const std::string& p_line, ParsedAction& p_out, std::string& p_why);

} // namespace forge
