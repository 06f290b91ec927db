#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "pilot/Part.h"

class EnginePart;
class HullPart;
class PowerPlantPart;
class ShieldPart;
class CopilotPart;
class Weapon;

// Every ship part of the game, read once at start-up from the numbered files under
// "GOB\Parts" ("hull000.hul", "hull001.hul", ... up to the first missing number) and kept
// until shutdown. Ships, pilots and the shop hold parts by pointer into the catalogue.
class PartCatalog
{
public:
    PartCatalog();
    ~PartCatalog();
    PartCatalog(const PartCatalog&) = delete;
    PartCatalog& operator=(const PartCatalog&) = delete;

    // Loads hulls, engines, power plants and shields, then the weapon table: the machine guns
    // of the weapon files and the five built-in weapons. Copilot files are not read.
    bool Init();

    // The part of kind p_kind named exactly p_name, the first one read when several share it;
    // null for a null or empty name or one nobody carries. Weapons are found by the weapon
    // table's names only ("Machine Gun" answers the first machine gun read).
    Part* Find(const char* p_name, int p_kind) const;
    // Parts of a kind in file order, for the shop. Weapons: the machine guns, then Laser,
    // Multi-Laser, Bomb, Missile and BFG.
    uint16_t GetCount(int p_kind) const;
    Part* GetPart(int p_kind, int p_index) const;

    // The file name template of a kind ("GOB\Parts\hull000.hul"); "" for an unknown kind.
    static const char* GetFileTemplate(int p_kind);
    // Counts the three digits before the four-character extension up by one, carrying
    // (009 -> 010, 099 -> 100, 999 -> 000). Names too short to hold them stay as they are.
    static void AdvanceNumber(std::string& p_fileName);
    // How many files exist from p_firstFile on, numbered without a gap; never more than the
    // thousand numbers three digits can hold.
    static int CountFiles(const std::string& p_firstFile);

private:
    template <typename PartType>
    void LoadParts(int p_kind, std::vector<std::unique_ptr<PartType>>& p_parts);
    void LoadWeapons();

    std::vector<std::unique_ptr<HullPart>> m_hulls;
    std::vector<std::unique_ptr<EnginePart>> m_engines;
    std::vector<std::unique_ptr<ShieldPart>> m_shields;
    // Entry 0 of the weapon table: the machine guns, in file order.
    std::vector<std::unique_ptr<Weapon>> m_machineGuns;
    // Entries 1..5: Laser, Multi-Laser, Bomb, Missile, BFG.
    std::array<std::unique_ptr<Weapon>, 5> m_builtInWeapons;
    std::vector<std::unique_ptr<PowerPlantPart>> m_powerPlants;
    std::vector<std::unique_ptr<CopilotPart>> m_copilots;
};

// The game's catalogue, made by Game::Init and deleted by Game::Shutdown; null otherwise.
extern PartCatalog* g_pPartCatalog;

// Makes g_pPartCatalog and loads it (an existing one is replaced).
void CreatePartCatalog();
void DestroyPartCatalog();
