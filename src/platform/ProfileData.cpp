#include "platform/ProfileData.h"

#include <cassert>
#include <limits>

#include "platform/ProfileText.h"

namespace platform
{

using namespace profile;

namespace
{
// The offset of p_part within p_text; an empty part may point nowhere and counts as 0.
uint32_t OffsetIn(const std::string& p_text, std::string_view p_part)
{
    return p_part.empty() ? 0u : static_cast<uint32_t>(p_part.data() - p_text.data());
}
} // namespace

template <typename NameOf>
void ProfileData::NameTable::Build(uint32_t p_count, NameOf p_nameOf)
{
    size_t size = 8;
    while (size < 2 * static_cast<size_t>(p_count))
    {
        size *= 2;
    }
    m_slots.assign(size, 0);
    const size_t mask = size - 1;
    for (uint32_t item = 0; item < p_count; ++item)
    {
        const std::string_view name = p_nameOf(item);
        for (size_t slot = HashNoCase(name) & mask;; slot = (slot + 1) & mask)
        {
            if (m_slots[slot] == 0)
            {
                m_slots[slot] = item + 1;
                break;
            }
            if (EqualsNoCase(p_nameOf(m_slots[slot] - 1), name))
            {
                break; // a later item of a name already listed
            }
        }
    }
}

template <typename NameOf>
int64_t ProfileData::NameTable::Find(std::string_view p_name, NameOf p_nameOf) const
{
    if (m_slots.empty())
    {
        return -1;
    }
    const size_t mask = m_slots.size() - 1;
    for (size_t slot = HashNoCase(p_name) & mask; m_slots[slot] != 0; slot = (slot + 1) & mask)
    {
        if (EqualsNoCase(p_nameOf(m_slots[slot] - 1), p_name))
        {
            return static_cast<int64_t>(m_slots[slot] - 1);
        }
    }
    return -1;
}

ProfileData::ProfileData(std::string p_text) : m_text(std::move(p_text))
{
    assert(m_text.size() <= std::numeric_limits<uint32_t>::max());
    LineWalker walker(m_text);
    Line line;
    while (walker.Next(line))
    {
        const ParsedLine parsed = ParseLine(walker.Text(line));
        if (parsed.m_kind == LineKind::SECTION)
        {
            const uint32_t keys = static_cast<uint32_t>(m_keys.size());
            m_sections.push_back(
                Section{OffsetIn(m_text, parsed.m_name), static_cast<uint32_t>(parsed.m_name.size()), keys, keys});
        }
        else if (parsed.m_kind == LineKind::KEY && !m_sections.empty())
        {
            // Keys before the first section belong to none and are never found.
            m_keys.push_back(Key{OffsetIn(m_text, parsed.m_name), static_cast<uint32_t>(parsed.m_name.size()),
                                 OffsetIn(m_text, parsed.m_value), static_cast<uint32_t>(parsed.m_value.size())});
            m_sections.back().m_endKey = static_cast<uint32_t>(m_keys.size());
        }
    }
    m_sectionTable.Build(static_cast<uint32_t>(m_sections.size()),
                         [this](uint32_t p_item) { return Name(m_sections[p_item]); });
}

std::string_view ProfileData::Name(const Section& p_section) const
{
    return std::string_view(m_text).substr(p_section.m_nameBegin, p_section.m_nameLength);
}

std::string_view ProfileData::Name(const Key& p_key) const
{
    return std::string_view(m_text).substr(p_key.m_nameBegin, p_key.m_nameLength);
}

int64_t ProfileData::FindSection(std::string_view p_section) const
{
    return m_sectionTable.Find(p_section, [this](uint32_t p_item) { return Name(m_sections[p_item]); });
}

const ProfileData::NameTable& ProfileData::KeyTable(uint32_t p_index)
{
    auto found = m_keyTables.find(p_index);
    if (found != m_keyTables.end())
    {
        return found->second;
    }
    const Section& section = m_sections[p_index];
    NameTable& table = m_keyTables[p_index];
    table.Build(section.m_endKey - section.m_firstKey,
                [this, &section](uint32_t p_item) { return Name(m_keys[section.m_firstKey + p_item]); });
    return table;
}

bool ProfileData::FindValue(std::string_view p_section, std::string_view p_key, std::string_view& p_value)
{
    const int64_t index = FindSection(p_section);
    if (index < 0)
    {
        return false;
    }
    const Section& section = m_sections[static_cast<size_t>(index)];
    int64_t key = -1;
    if (section.m_endKey - section.m_firstKey < TABLE_FROM_KEYS)
    {
        for (uint32_t k = section.m_firstKey; k < section.m_endKey && key < 0; ++k)
        {
            if (EqualsNoCase(Name(m_keys[k]), p_key))
            {
                key = k;
            }
        }
    }
    else
    {
        const int64_t item = KeyTable(static_cast<uint32_t>(index)).Find(p_key, [this, &section](uint32_t p_item) {
            return Name(m_keys[section.m_firstKey + p_item]);
        });
        key = item < 0 ? -1 : section.m_firstKey + item;
    }
    if (key < 0)
    {
        return false;
    }
    const Key& found = m_keys[static_cast<size_t>(key)];
    p_value = std::string_view(m_text).substr(found.m_valueBegin, found.m_valueLength);
    return true;
}

void ProfileData::ListSections(std::vector<std::string_view>& p_names) const
{
    for (uint32_t i = 0; i < m_sections.size(); ++i)
    {
        if (FindSection(Name(m_sections[i])) == i)
        {
            p_names.push_back(Name(m_sections[i]));
        }
    }
}

void ProfileData::ListKeys(std::string_view p_section, std::vector<std::string_view>& p_names)
{
    const int64_t index = FindSection(p_section);
    if (index < 0)
    {
        return;
    }
    const Section& section = m_sections[static_cast<size_t>(index)];
    const uint32_t count = section.m_endKey - section.m_firstKey;
    auto nameOf = [this, &section](uint32_t p_item) { return Name(m_keys[section.m_firstKey + p_item]); };
    if (count < TABLE_FROM_KEYS)
    {
        for (uint32_t i = 0; i < count; ++i)
        {
            bool seen = false;
            for (uint32_t j = 0; j < i && !seen; ++j)
            {
                seen = EqualsNoCase(nameOf(j), nameOf(i));
            }
            if (!seen)
            {
                p_names.push_back(nameOf(i));
            }
        }
        return;
    }
    const NameTable& table = KeyTable(static_cast<uint32_t>(index));
    for (uint32_t i = 0; i < count; ++i)
    {
        if (table.Find(nameOf(i), nameOf) == i)
        {
            p_names.push_back(nameOf(i));
        }
    }
}

} // namespace platform
