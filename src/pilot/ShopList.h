#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "pilot/Part.h"

// What a shop sells: the contents of a ".shp" file, a title and the part names for sale per
// part kind. The file is bytes throughout: the title's length and the title, two values, then
// for each kind in kind order a count and that many names, each a length and its characters.
class ShopList
{
public:
    ShopList() = default;

    // Reads the file (a game path). False when it does not open or ends early; whatever was
    // read before the end stays, so a cut file still sells the names it holds.
    bool Load(const char* p_fileName);

    const std::string& GetTitle() const { return m_title; }
    uint8_t GetValue1() const { return m_value1; }
    uint8_t GetValue2() const { return m_value2; }
    // The names read for a kind; none for a kind out of range.
    int GetCount(int p_kind) const;
    const std::vector<std::string>& GetNames(int p_kind) const;

private:
    std::string m_title;
    // Kept as read; nothing uses them.
    uint8_t m_value1 = 0;
    uint8_t m_value2 = 0;
    // How many names of each kind were read (a short file can hold fewer than it announces).
    std::array<int, NUM_PART_KINDS> m_counts{};
    std::array<std::vector<std::string>, NUM_PART_KINDS> m_names;
};
