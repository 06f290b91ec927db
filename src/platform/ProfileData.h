#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform
{

// One INI file, parsed once: its sections and key lines in file order, found by name without
// walking the file again. Only the first section of a name counts for its keys, and within it
// the first key of a name; names compare case-insensitively. A section's keys are hashed the
// first time one is looked up there, so a file of many sections pays only for those it is
// asked about.
class ProfileData
{
public:
    explicit ProfileData(std::string p_text);
    ProfileData(const ProfileData&) = delete;
    ProfileData& operator=(const ProfileData&) = delete;

    const std::string& GetText() const { return m_text; }

    // The value of p_key in the first section named p_section (both trimmed by the caller).
    bool FindValue(std::string_view p_section, std::string_view p_key, std::string_view& p_value);
    // Every section name, the first spelling of each, in file order.
    void ListSections(std::vector<std::string_view>& p_names) const;
    // Every key name of the first section named p_section, the first spelling of each.
    void ListKeys(std::string_view p_section, std::vector<std::string_view>& p_names);

private:
    // Offsets into m_text: the files are at most a few megabytes.
    struct Key
    {
        uint32_t m_nameBegin;
        uint32_t m_nameLength;
        uint32_t m_valueBegin;
        uint32_t m_valueLength;
    };
    struct Section
    {
        uint32_t m_nameBegin;
        uint32_t m_nameLength;
        uint32_t m_firstKey; // the section's keys are m_keys[m_firstKey, m_endKey)
        uint32_t m_endKey;
    };

    // An open-addressing table of item numbers by name, keeping the first item of each name.
    class NameTable
    {
    public:
        template <typename NameOf>
        void Build(uint32_t p_count, NameOf p_nameOf);
        // The first item named p_name, or -1.
        template <typename NameOf>
        int64_t Find(std::string_view p_name, NameOf p_nameOf) const;

    private:
        std::vector<uint32_t> m_slots; // item number + 1; 0 is empty
    };

    // Sections with more keys than this get a table; fewer are searched in order.
    static constexpr uint32_t TABLE_FROM_KEYS = 8;

    std::string_view Name(const Section& p_section) const;
    std::string_view Name(const Key& p_key) const;
    // The first section named p_section, or -1.
    int64_t FindSection(std::string_view p_section) const;
    // The table of the keys of section p_index, built when first needed.
    const NameTable& KeyTable(uint32_t p_index);

    std::string m_text;
    std::vector<Key> m_keys;         // every key line inside a section, in file order
    std::vector<Section> m_sections; // every section header, in file order
    NameTable m_sectionTable;
    std::unordered_map<uint32_t, NameTable> m_keyTables; // by section number
};

} // namespace platform
