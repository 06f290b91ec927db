#include "pilot/Inventory.h"

#include <cstdint>
#include <limits>

#include "pilot/PartCatalog.h"

namespace
{
// A quantity plus p_change, held within the int range: a damaged pilot file may add 65535 of
// an item 65535 times.
int Saturated(int p_quantity, int64_t p_change)
{
    const int64_t sum = static_cast<int64_t>(p_quantity) + p_change;
    if (sum > std::numeric_limits<int>::max())
    {
        return std::numeric_limits<int>::max();
    }
    if (sum < std::numeric_limits<int>::min())
    {
        return std::numeric_limits<int>::min();
    }
    return static_cast<int>(sum);
}
} // namespace

std::list<Inventory::Item>::iterator Inventory::FindItem(const char* p_name)
{
    if (p_name == nullptr)
    {
        return m_items.end();
    }
    for (auto it = m_items.begin(); it != m_items.end(); ++it)
    {
        if (it->m_pPart != nullptr && it->m_pPart->GetName() == p_name)
        {
            return it;
        }
    }
    return m_items.end();
}

void Inventory::Add(const char* p_name, int p_kind, int p_quantity)
{
    auto it = FindItem(p_name);
    if (it != m_items.end())
    {
        it->m_quantity = Saturated(it->m_quantity, p_quantity);
        return;
    }
    Part* part = g_pPartCatalog != nullptr ? g_pPartCatalog->Find(p_name, p_kind) : nullptr;
    if (part != nullptr)
    {
        m_items.push_front(Item{part, p_kind, p_quantity});
    }
}

void Inventory::Remove(const char* p_name, int p_kind, int p_quantity)
{
    (void)p_kind;
    auto it = FindItem(p_name);
    if (it == m_items.end())
    {
        return;
    }
    it->m_quantity = Saturated(it->m_quantity, -static_cast<int64_t>(p_quantity));
    if (it->m_quantity <= 0)
    {
        m_items.erase(it);
    }
}

int Inventory::GetQuantity(const char* p_name) const
{
    for (const Item& item : m_items)
    {
        if (p_name != nullptr && item.m_pPart != nullptr && item.m_pPart->GetName() == p_name)
        {
            return item.m_quantity;
        }
    }
    return 0;
}
