#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "gfx/Image.h"
#include "pilot/ShopPanel.h"

class PartEntry;

// The player's ship as the shop shows it: a picture with the names of the fitted hull, shield
// and engine and of the weapon on each of the four mounts, and the ammunition counts beside
// it. Parts dropped here are fitted; weapons can be dragged off the mounts or between them.
class ShipPanel : public ShopPanel
{
public:
    static constexpr int NUM_MOUNTS = 4;
    static constexpr int32_t WIDTH = 340;
    static constexpr int32_t HEIGHT = 240;
    static constexpr const char* NO_WEAPON = "No Weapon";

    // The lines of the panel, in the order of ShipLine.
    enum ShipLine : int
    {
        LINE_FRONT = 0,
        LINE_LEFT = 1,
        LINE_RIGHT = 2,
        LINE_BACK = 3,
        LINE_HULL = 4,
        LINE_SHIELD = 5,
        LINE_ENGINE = 6,
        NUM_LINES = 7,
    };

    ShipPanel(Shop& p_shop, float p_x, float p_y);
    ~ShipPanel() override;

    bool Update(float p_dt) override;
    bool Render() override;
    // Hulls, engines, shields and weapons the catalogue knows; never power plants or copilots,
    // which the ship has no place for.
    bool CanAccept(const PartEntry& p_item) const override;
    // Fits the part: a hull, engine or shield in its slot, a weapon on the mount nearest to
    // where it was let go. What was there goes to the inventory.
    bool Accept(const PartEntry& p_item) override;

    // A weapon dragged off mount p_item.GetMount() was let go over p_target (null: nowhere):
    // over the ship or nowhere it changes places with the weapon of the nearest mount, over
    // another panel it goes there if that panel takes it.
    void DropWeapon(const PartEntry& p_item, ShopPanel* p_target);
    // The mount whose marker is nearest to (p_x, p_y); the first of equal distances.
    int NearestMount(int32_t p_x, int32_t p_y) const;
    // The names and counts again from the ship.
    void Refresh();

    // Where a line's name is written, on the screen.
    void GetLinePosition(int p_line, int32_t& p_x, int32_t& p_y) const;
    const PartEntry& GetLine(int p_line) const { return *m_pLines[p_line]; }
    const StaticText& GetAmmoCount(int p_ammo) const { return *m_pAmmoCounts[p_ammo]; }

private:
    static constexpr int NUM_AMMO = 3;

    std::string FittedName(int p_line) const;
    // Weapon mount p_mount gets the weapon named p_name ("" empties it).
    void FitWeapon(int p_mount, const std::string& p_name);

    Image m_picture;
    std::unique_ptr<StaticText> m_pHeading;
    std::array<std::unique_ptr<PartEntry>, NUM_LINES> m_pLines;
    std::array<std::unique_ptr<StaticText>, NUM_AMMO> m_pAmmoLabels;
    std::array<std::unique_ptr<StaticText>, NUM_AMMO> m_pAmmoCounts;
};
