#pragma once

#include "sim/GameObject.h"

#include <cstdint>

class PlayerShip;

// The HUD's panel of the ship's state: armour and shield bars, and bars of the bullets,
// missiles and energy left, each measured against what the ship carried when the panel was
// made (the start of the mission).
class StatusPanel : public GameObject
{
public:
    static constexpr int32_t FULL_BAR_LENGTH = 98;
    static constexpr int32_t BAR_X = 59;
    static constexpr int32_t ARMOUR_Y = 11;
    static constexpr int32_t SHIELD_Y = 26;
    static constexpr int32_t BAR_WIDTH = 10;
    static constexpr int32_t AMMO_BAR_LENGTH = 95;
    static constexpr int32_t AMMO_BAR_X = 62;
    static constexpr int32_t BULLET_Y = 48;
    static constexpr int32_t MISSILE_Y = 60;
    static constexpr int32_t ENERGY_Y = 73;
    static constexpr int32_t AMMO_BAR_WIDTH = 7;

    // The bars' lengths in pixels.
    struct Bars
    {
        double armour = 0.0;
        double shield = 0.0;
        double bullets = 0.0;
        double missiles = 0.0;
        double energy = 0.0;
    };

    // Takes the ammunition p_ship has now as the full length of the ammunition bars; without
    // a ship the bars stay empty until SetStartCounts.
    explicit StatusPanel(const PlayerShip* p_ship);
    ~StatusPanel() override;

    bool Update(float p_dt) override;
    // The picture alone, at the panel's position.
    bool Render() override;
    // The picture at (p_x, p_y) with the bars of p_ship over it.
    void Draw(int32_t p_x, int32_t p_y, const PlayerShip& p_ship);

    Bars Measure(const PlayerShip& p_ship) const;
    void SetStartCounts(const PlayerShip& p_ship);
    bool HasStartCounts() const { return m_hasStartCounts; }
    uint16_t GetStartBullets() const { return m_bullets; }
    uint16_t GetStartMissiles() const { return m_missiles; }
    uint16_t GetStartEnergy() const { return m_energy; }

    // p_length x p_current / p_full within 0..p_length; 0 when p_full is 0.
    static double BarLength(int32_t p_length, double p_current, double p_full);

private:
    uint16_t m_energy;
    uint16_t m_bullets;
    uint16_t m_missiles;
    bool m_hasStartCounts;
};
