#pragma once

#include <array>
#include <cstdint>
#include <string>

class Inventory;

// A pilot's career as one ".sav" file: money, ammunition, names (pilot, portrait, the mission
// reached, the fitted parts) and the inventory. The player's ship holds the record and uses
// its money and ammunition directly.
class Pilot
{
public:
    static constexpr int NUM_WEAPONS = 4;
    static constexpr const char* DEFAULT_HULL = "Cargo Hull";
    static constexpr const char* DEFAULT_ENGINE = "Cargo Thrusters";
    static constexpr const char* DEFAULT_SHIELD = "Tin-foil Plating";
    static constexpr const char* DEFAULT_WEAPON = "Machine Gun";
    static constexpr uint16_t DEFAULT_BULLETS = 500;

    // Longest part of a file name taken from a pilot's name.
    static constexpr size_t MAX_FILE_NAME_PART = 64;

    // A new pilot's record; p_fileName may be null.
    explicit Pilot(const char* p_fileName = nullptr);

    // The file of a new single-player pilot: "Saves\" + name + number + ".sav" with the first
    // number from 0 up whose file does not open yet. The name goes through SafeFileNamePart.
    static std::string NewPilotFileName(const std::string& p_pilotName);
    // The pilot's name as it may stand in a file name: path separators, characters Windows
    // refuses, control characters, dots that could climb or hide and every byte beyond ASCII
    // become '_', and the result is cut to MAX_FILE_NAME_PART characters. The record keeps the
    // name as typed; only the file name changes, so no name can reach outside "Saves".
    static std::string SafeFileNamePart(const std::string& p_pilotName);

    // A null name changes nothing.
    void SetFileName(const char* p_fileName);
    // Reads the file into the record and, when p_inventory is given, replaces its items by
    // those of the file (each added to the front, so the order comes back reversed). False,
    // with nothing changed, when the file does not open; a short file reads 0 and "" for
    // the rest.
    bool Load(Inventory* p_inventory);
    // Whether the last Load found every field of the record, up to the fourth weapon; a record
    // never loaded counts as whole.
    bool IsWhole() const { return m_whole; }
    // Writes the record and the inventory (count 0 without one); false when the file cannot
    // be written. The old file stays whole until the new one is complete.
    bool Save(const Inventory* p_inventory) const;

    // Adds p_amount (negative takes away), staying within the 32-bit range.
    void AddMoney(int64_t p_amount);
    // The counter a weapon of ammunition kind p_ammoKind uses (1 and 2 missiles and bombs,
    // 4 energy, 8 bullets); null for kinds that need none.
    uint16_t* GetAmmoCounter(uint8_t p_ammoKind);

    const std::string& GetFileName() const { return m_fileName; }
    int32_t GetMoney() const { return m_money; }
    void SetMoney(int32_t p_money) { m_money = p_money; }
    uint16_t GetBullets() const { return m_bullets; }
    uint16_t GetEnergy() const { return m_energy; }
    uint16_t GetMissiles() const { return m_missiles; }
    void SetBullets(uint16_t p_count) { m_bullets = p_count; }
    void SetEnergy(uint16_t p_count) { m_energy = p_count; }
    void SetMissiles(uint16_t p_count) { m_missiles = p_count; }
    const std::string& GetPilotName() const { return m_pilotName; }
    void SetPilotName(const std::string& p_name) { m_pilotName = p_name; }
    const std::string& GetPortrait() const { return m_portrait; }
    void SetPortrait(const std::string& p_portrait) { m_portrait = p_portrait; }
    const std::string& GetMissionName() const { return m_missionName; }
    void SetMissionName(const std::string& p_name) { m_missionName = p_name; }
    const std::string& GetHullName() const { return m_hullName; }
    void SetHullName(const std::string& p_name) { m_hullName = p_name; }
    const std::string& GetEngineName() const { return m_engineName; }
    void SetEngineName(const std::string& p_name) { m_engineName = p_name; }
    const std::string& GetReservedPartName() const { return m_reservedPartName; }
    void SetReservedPartName(const std::string& p_name) { m_reservedPartName = p_name; }
    const std::string& GetShieldName() const { return m_shieldName; }
    void SetShieldName(const std::string& p_name) { m_shieldName = p_name; }
    // Mount 0..3; "" for an empty mount or a number out of range.
    const std::string& GetWeaponName(int p_mount) const;
    void SetWeaponName(int p_mount, const std::string& p_name);

private:
    std::string m_fileName;
    int32_t m_money = 0;
    uint16_t m_bullets = DEFAULT_BULLETS;
    uint16_t m_energy = 0;
    uint16_t m_missiles = 0;
    uint16_t m_reserved = 0; // kept and saved, nothing uses it
    std::string m_pilotName;
    std::string m_portrait;
    std::string m_missionName;
    std::string m_hullName = DEFAULT_HULL;
    std::string m_engineName = DEFAULT_ENGINE;
    std::string m_reservedPartName; // always saved empty
    std::string m_shieldName = DEFAULT_SHIELD;
    std::array<std::string, NUM_WEAPONS> m_weaponNames{DEFAULT_WEAPON, "", "", ""};
    bool m_whole = true;
};
