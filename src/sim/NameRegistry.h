#pragma once

#include <map>
#include <string>

class WorldObject;

// The world objects that mission triggers refer to by name ("player", names from the level
// file). An entry whose object was destroyed holds null; looking up a name that was never
// entered creates such an entry. The campaign owns the registry and installs it as
// g_pNameRegistry; with none installed, naming and lookups of world objects do nothing.
class NameRegistry
{
public:
    void Enter(const std::string& p_name, WorldObject* p_object);
    // The object entered under p_name, or null (a new entry holding null when absent).
    WorldObject* Find(const std::string& p_name);
    // The entry of p_name holds null from now on.
    void Clear(const std::string& p_name);
    bool Has(const std::string& p_name) const;
    size_t GetCount() const { return m_entries.size(); }

private:
    std::map<std::string, WorldObject*> m_entries;
};

extern NameRegistry* g_pNameRegistry;
