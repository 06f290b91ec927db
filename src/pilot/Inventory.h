#pragma once

#include <list>
#include <string>

class Part;

// The spare parts a pilot owns, newest first: each item a catalogue part, its kind and a
// quantity. Items are found by the part's name; the kind only matters when a new item is
// looked up in the catalogue.
class Inventory
{
public:
    struct Item
    {
        Part* m_pPart = nullptr; // in the catalogue, not owned
        int m_kind = 0;
        int m_quantity = 0;
    };

    // Adds to the item of that name, or puts a new item at the front when the catalogue
    // (g_pPartCatalog) knows the name as that kind; an unknown name is ignored. Quantities
    // stop at the ends of the int range instead of overflowing.
    void Add(const char* p_name, int p_kind, int p_quantity);
    // Takes from the item of that name; an item that drops to 0 or below goes.
    void Remove(const char* p_name, int p_kind, int p_quantity);
    // The item's quantity, or 0.
    int GetQuantity(const char* p_name) const;
    int GetCount() const { return static_cast<int>(m_items.size()); }
    void Clear() { m_items.clear(); }

    // Front (newest) to back.
    const std::list<Item>& GetItems() const { return m_items; }

private:
    std::list<Item>::iterator FindItem(const char* p_name);

    std::list<Item> m_items;
};
