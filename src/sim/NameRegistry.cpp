#include "sim/NameRegistry.h"

NameRegistry* g_pNameRegistry = nullptr;

void NameRegistry::Enter(const std::string& p_name, WorldObject* p_object)
{
    m_entries[p_name] = p_object;
}

WorldObject* NameRegistry::Find(const std::string& p_name)
{
    return m_entries[p_name];
}

void NameRegistry::Clear(const std::string& p_name)
{
    m_entries[p_name] = nullptr;
}

bool NameRegistry::Has(const std::string& p_name) const
{
    return m_entries.find(p_name) != m_entries.end();
}
