// Feeds arbitrary bytes to the pilot reader as a ".sav" file, then loads them into the player's
// ship the way the game does (parts fitted from the catalogue, the campaign moved to the
// pilot's mission). Nothing may crash or allocate without bound, whatever counts and lengths
// the bytes claim; the record reads what the file holds and 0 or "" past its end; quantities
// never overflow; and a record saved again reads back the same.
#include "FuzzScratch.h"
#include "app/DevOptions.h"
#include "pilot/Inventory.h"
#include "pilot/PartCatalog.h"
#include "pilot/Pilot.h"
#include "sim/PlayerShip.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace
{
constexpr const char* FILE_NAME = "Saves\\fuzz.sav";
constexpr const char* COPY_NAME = "Saves\\copy.sav";
constexpr size_t MAX_STRING = 255;

// The built-in weapons need no files; a catalogue of them names parts the items can be.
void MakeCatalogue()
{
    g_devOptions.hasSeed = true;
    g_devOptions.seed = 1;
    std::error_code ec;
    std::filesystem::create_directories("Saves", ec);
    CreatePartCatalog();
}

void Check(bool p_condition)
{
    if (!p_condition)
    {
        std::abort();
    }
}

void CheckRecord(const Pilot& p_pilot)
{
    for (const std::string* text : {&p_pilot.GetPilotName(), &p_pilot.GetPortrait(), &p_pilot.GetMissionName(),
                                    &p_pilot.GetHullName(), &p_pilot.GetEngineName(), &p_pilot.GetShieldName()})
    {
        Check(text->size() <= MAX_STRING);
    }
}

struct ItemCopy
{
    std::string name;
    int kind;
    int quantity;
};

std::vector<ItemCopy> Items(const Inventory& p_inventory)
{
    std::vector<ItemCopy> items;
    for (const Inventory::Item& item : p_inventory.GetItems())
    {
        items.push_back({item.m_pPart->GetName(), item.m_kind, item.m_quantity});
    }
    return items;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    static const bool s_ready = fuzzscratch::EnterScratchDirectory("pilot_fuzz");
    Check(s_ready);
    static const bool s_catalogue = (MakeCatalogue(), true);
    (void)s_catalogue;
    fuzzscratch::WriteInput("Saves/fuzz.sav", p_data, p_size);

    // Without an inventory the item list is not read at all.
    Pilot bare(FILE_NAME);
    Check(bare.Load(nullptr));
    CheckRecord(bare);

    Pilot pilot(FILE_NAME);
    Inventory inventory;
    Check(pilot.Load(&inventory));
    CheckRecord(pilot);
    Check(pilot.GetMoney() == bare.GetMoney() && pilot.GetMissionName() == bare.GetMissionName());
    // Only parts the catalogue knows, each once, none with a negative count.
    Check(inventory.GetCount() <= 65535);
    for (const Inventory::Item& item : inventory.GetItems())
    {
        Check(item.m_pPart != nullptr && item.m_quantity >= 0);
        Check(inventory.GetQuantity(item.m_pPart->GetName().c_str()) == item.m_quantity);
    }

    // Saved and read back: the same record, the items in the opposite order, each quantity
    // at most what the file can hold.
    pilot.SetFileName(COPY_NAME);
    Check(pilot.Save(&inventory));
    Pilot copy(COPY_NAME);
    Inventory copied;
    Check(copy.Load(&copied));
    Check(copy.GetMoney() == pilot.GetMoney() && copy.GetBullets() == pilot.GetBullets() &&
          copy.GetEnergy() == pilot.GetEnergy() && copy.GetMissiles() == pilot.GetMissiles() &&
          copy.GetPilotName() == pilot.GetPilotName() && copy.GetPortrait() == pilot.GetPortrait() &&
          copy.GetMissionName() == pilot.GetMissionName() && copy.GetHullName() == pilot.GetHullName() &&
          copy.GetEngineName() == pilot.GetEngineName() && copy.GetShieldName() == pilot.GetShieldName());
    for (int mount = 0; mount < Pilot::NUM_WEAPONS; ++mount)
    {
        Check(copy.GetWeaponName(mount) == pilot.GetWeaponName(mount));
    }
    std::vector<ItemCopy> before = Items(inventory);
    const std::vector<ItemCopy> after = Items(copied);
    Check(before.size() == after.size());
    for (size_t i = 0; i < before.size(); ++i)
    {
        const ItemCopy& original = before[before.size() - 1 - i];
        Check(after[i].name == original.name && after[i].kind == (original.kind & 0xFF) &&
              after[i].quantity == (original.quantity > 65535 ? 65535 : original.quantity));
    }

    // Into the player's ship, as the pilot menu does.
    PlayerShip ship;
    Check(ship.LoadPilot(FILE_NAME));
    return 0;
}
