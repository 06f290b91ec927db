#pragma once

#include <string>

#include "pilot/Inventory.h"
#include "pilot/Pilot.h"
#include "sim/EntityShip.h"

// The player's ship, the one object that lives through the whole run: its parts come from the
// pilot's record and the part catalogue, its money and ammunition are the record's own.
class PlayerShip : public EntityShip
{
public:
    // On the player's team at (100, 500), standing still, heading 90.
    PlayerShip();

    bool IsEnemy() const override { return false; }
    // The hit as the difficulty in play makes it (ScaleDamage), then as any ship takes it.
    void TakeDamage(unsigned p_amount) override;
    // A hit of p_amount on the player's ship at a difficulty (Settings::Difficulty): Medium
    // leaves it as it is, Easy halves it, Hard makes it one and a half times; a half point
    // rounds up, so no hit drops to nothing. Unknown difficulties count as Medium.
    static unsigned ScaleDamage(unsigned p_amount, int32_t p_difficulty);
    // Loads a pilot (LoadPilot).
    bool Load(const char* p_fileName) override;

    // Reads the pilot file p_fileName into the record and the inventory, shows the portrait,
    // fits the hull, engine, shield and four weapons by name from the catalogue, and moves
    // the campaign to the pilot's mission (its first one when the record names none). A part
    // the catalogue does not know leaves its slot empty, and the ship keeps the limits that
    // part would have set. False only for a null name; a file that does not open keeps the
    // record as it was.
    bool LoadPilot(const char* p_fileName);
    // Replaces one part by catalogue name: kind 0 hull, 1 engine, 2 shield, 5 to 8 the weapon
    // of mount kind - 5 (a null name empties the mount); kinds 3 and 4 change nothing. With
    // p_oldName, the name of the part replaced is copied there first ("" for none).
    void SetPart(int p_kind, const char* p_name, std::string* p_oldName = nullptr);
    // Writes the current mission and the fitted parts' names into the record.
    void StoreParts();
    // StoreParts, then saves the record with the inventory; false when it cannot be written.
    bool SaveRecord();
    // Standing still, heading 90, not accelerating or turning; no longer counts as loaded.
    void Reset();

    Pilot& GetPilot() { return m_pilot; }
    const Pilot& GetPilot() const { return m_pilot; }
    Inventory& GetInventory() { return m_inventory; }
    bool IsLoaded() const { return m_loaded; }

protected:
    uint16_t* GetAmmoCounter(uint8_t p_ammoKind) override;

private:
    void FitHull(const char* p_name);
    void FitEngine(const char* p_name);
    void FitShield(const char* p_name);

    Pilot m_pilot;
    Inventory m_inventory;
    bool m_loaded = false;
};
