#include "Conditions.h"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdlib>

namespace forge
{

namespace
{

bool EqualsNoCase(const std::string& p_a, const char* p_b)
{
    size_t i = 0;
    for (; i < p_a.size() && p_b[i] != '\0'; ++i)
    {
        if (std::tolower(static_cast<unsigned char>(p_a[i])) != std::tolower(static_cast<unsigned char>(p_b[i])))
        {
            return false;
        }
    }
    return i == p_a.size() && p_b[i] == '\0';
}

// The game reads numbers with "%d" and "%f", which take a leading number and ignore what
// follows; the forge asks for the whole word, since anything after it is surely a mistake.
bool WholeInt(const std::string& p_word, int& p_value)
{
    if (p_word.empty())
    {
        return false;
    }
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(p_word.c_str(), &end, 10);
    if (errno == ERANGE || *end != '\0' || value < INT_MIN || value > INT_MAX)
    {
        return false;
    }
    p_value = static_cast<int>(value);
    return true;
}

bool WholeFloat(const std::string& p_word, float& p_value)
{
    if (p_word.empty())
    {
        return false;
    }
    char* end = nullptr;
    errno = 0;
    const float value = std::strtof(p_word.c_str(), &end);
    if (errno == ERANGE || *end != '\0' || !std::isfinite(value))
    {
        return false;
    }
    p_value = value;
    return true;
}

} // namespace

std::vector<std::string> SplitWords(const std::string& p_line)
{
    std::vector<std::string> words;
    size_t i = 0;
    while (i < p_line.size())
    {
        while (i < p_line.size() && p_line[i] == ' ')
        {
            ++i;
        }
        const size_t start = i;
        while (i < p_line.size() && p_line[i] != ' ')
        {
            ++i;
        }
        if (i > start)
        {
            words.push_back(p_line.substr(start, i - start));
        }
    }
    return words;
}

std::string RestOfLine(const std::string& p_line, size_t p_index)
{
    size_t i = 0;
    for (size_t word = 0;; ++word)
    {
        while (i < p_line.size() && p_line[i] == ' ')
        {
            ++i;
        }
        if (i >= p_line.size())
        {
            return {};
        }
        if (word == p_index)
        {
            return p_line.substr(i);
        }
        while (i < p_line.size() && p_line[i] != ' ')
        {
            ++i;
        }
    }
}

bool ParseCondition(const std::string& p_line, bool p_withLabel, ParsedCondition& p_out, std::string& p_why)
{
    const std::vector<std::string> words = SplitWords(p_line);
    if (words.empty())
    {
        p_why = "the line is empty";
        return false;
    }
    static const char* const KEYWORDS[] = {"killed", "touching", "dead", "timepassed", "objectives"};
    int kind = -1;
    for (int i = 0; i < 5 && kind < 0; ++i)
    {
        if (EqualsNoCase(words[0], KEYWORDS[i]))
        {
            kind = i;
        }
    }
    if (kind < 0)
    {
        p_why = "\"" + words[0] + "\" is not a condition (killed, touching, dead, timepassed, objectives)";
        return false;
    }
    p_out = ParsedCondition();
    p_out.kind = static_cast<ConditionKind>(kind);
    const size_t params = (kind == CONDITION_KILLED || kind == CONDITION_TOUCHING) ? 2 : 1;
    const size_t needed = 1 + params + (p_withLabel ? 1 : 0);
    if (words.size() < needed)
    {
        static const char* const USAGE[] = {"killed COUNT|* WORD", "touching NAME NAME", "dead NAME",
                                            "timepassed SECONDS", "objectives MASK|*"};
        p_why = std::string("too few words: it reads ") + USAGE[kind] + (p_withLabel ? " LABEL" : "");
        return false;
    }
    if (words.size() > needed)
    {
        p_why = "the words after \"" + words[needed - 1] + "\" would be ignored";
        return false;
    }
    const std::string& first = words[1];
    switch (p_out.kind)
    {
    case CONDITION_KILLED:
    case CONDITION_OBJECTIVES:
        if (first == "*")
        {
            p_out.count = -1;
        }
        else if (!WholeInt(first, p_out.count) || p_out.count < 0)
        {
            p_why = "\"" + first + "\" is neither a count nor \"*\"";
            return false;
        }
        if (p_out.kind == CONDITION_KILLED)
        {
            p_out.name2 = words[2];
        }
        break;
    case CONDITION_TOUCHING:
        p_out.name1 = first;
        p_out.name2 = words[2];
        break;
    case CONDITION_DEAD:
        p_out.name1 = first;
        break;
    case CONDITION_TIMEPASSED:
        if (!WholeFloat(first, p_out.seconds) || p_out.seconds < 0.0f)
        {
            p_why = "\"" + first + "\" is not a number of seconds";
            return false;
        }
        break;
    }
    if (p_withLabel)
    {
        p_out.label = words[needed - 1];
    }
    return true;
}

bool ParseAction(const std::string& p_line, ParsedAction& p_out, std::string& p_why)
{
    const std::vector<std::string> words = SplitWords(p_line);
    if (words.empty())
    {
        p_why = "the action is empty";
        return false;
    }
    p_out = ParsedAction();
    if (EqualsNoCase(words[0], "activate"))
    {
        p_out.kind = ACTION_ACTIVATE;
        if (words.size() < 2 || !WholeInt(words[1], p_out.number))
        {
            p_why = "it reads: activate OBJECTIVE-NUMBER [text of the objective]";
            return false;
        }
        p_out.text = RestOfLine(p_line, 2);
        return true;
    }
    if (EqualsNoCase(words[0], "message"))
    {
        p_out.kind = ACTION_MESSAGE;
        if (words.size() < 4 || !WholeFloat(words[1], p_out.seconds) || !WholeFloat(words[2], p_out.interval))
        {
            p_why = "it reads: message SECONDS SECONDS-PER-CHARACTER text";
            return false;
        }
        if (p_out.seconds <= 0.0f || p_out.interval < 0.0f)
        {
            p_why = "a message needs a display time above 0 and a typing interval of 0 or more";
            return false;
        }
        p_out.text = RestOfLine(p_line, 3);
        return true;
    }
    if (EqualsNoCase(words[0], "money"))
    {
        p_out.kind = ACTION_MONEY;
        if (words.size() != 2 || !WholeInt(words[1], p_out.number))
        {
            p_why = "it reads: money AMOUNT";
            return false;
        }
        return true;
    }
    p_why = "\"" + words[0] + "\" is not an action (activate, message, money)";
    return false;
}

} // namespace forge
