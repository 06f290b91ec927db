#pragma once

#include <cstdint>
#include <string>

#include "pilot/Part.h"

// The part kinds that only carry numbers for the ship: hull, engine, shield, power plant and
// copilot. Each Load reads its file's fields in order; a file shorter than its format leaves
// the missing fields 0.

struct WeaponMount
{
    uint16_t x = 0;
    uint16_t y = 0;
};

class HullPart : public Part
{
public:
    static constexpr int NUM_MOUNTS = 4;

    int GetKind() const override { return PART_HULL; }
    // Name, image base name, price, armour, turn rate, four mounts, collision box.
    bool Load(const char* p_fileName) override;

    // Base name of the ship's animation frames ("art\hulls\cargo\cargo").
    const std::string& GetImageName() const { return m_imageName; }
    int32_t GetArmour() const { return m_armour; }
    uint16_t GetTurnRate() const { return m_turnRate; }
    // Mount 0..3: front, left, right, back. Out of range answers (0, 0).
    WeaponMount GetMount(int p_mount) const;
    int16_t GetBoxX() const { return m_boxX; }
    int16_t GetBoxY() const { return m_boxY; }
    uint16_t GetBoxWidth() const { return m_boxWidth; }
    uint16_t GetBoxHeight() const { return m_boxHeight; }

private:
    std::string m_imageName;
    int32_t m_armour = 0;
    uint16_t m_turnRate = 0;
    WeaponMount m_mounts[NUM_MOUNTS];
    int16_t m_boxX = 0;
    int16_t m_boxY = 0;
    uint16_t m_boxWidth = 0;
    uint16_t m_boxHeight = 0;
};

class EnginePart : public Part
{
public:
    int GetKind() const override { return PART_ENGINE; }
    // Name, price, reverse speed, forward speed, acceleration.
    bool Load(const char* p_fileName) override;

    // The lowest speed the ship keeps.
    uint16_t GetReverseSpeed() const { return m_reverseSpeed; }
    uint16_t GetForwardSpeed() const { return m_forwardSpeed; }
    uint16_t GetAcceleration() const { return m_acceleration; }

private:
    uint16_t m_reverseSpeed = 0;
    uint16_t m_forwardSpeed = 0;
    uint16_t m_acceleration = 0;
};

class ShieldPart : public Part
{
public:
    int GetKind() const override { return PART_SHIELD; }
    // Name, price, capacity, absorption per hit.
    bool Load(const char* p_fileName) override;

    int32_t GetCapacity() const { return m_capacity; }
    // The most of one hit the shield takes.
    uint16_t GetAbsorption() const { return m_absorption; }

private:
    int32_t m_capacity = 0;
    uint16_t m_absorption = 0;
};

// Has a file and a shop category, but nothing in the game reads its values.
class PowerPlantPart : public Part
{
public:
    int GetKind() const override { return PART_POWER_PLANT; }
    // The common header, a further 32-bit value and two bytes.
    bool Load(const char* p_fileName) override;

    int32_t GetValue2() const { return m_value2; }
    uint8_t GetFlag1() const { return m_flag1; }
    uint8_t GetFlag2() const { return m_flag2; }

private:
    int32_t m_value2 = 0;
    uint8_t m_flag1 = 0;
    uint8_t m_flag2 = 0;
};

// A copilot has a name and a price only, and no file is read for it.
class CopilotPart : public Part
{
public:
    int GetKind() const override { return PART_COPILOT; }
    bool Load(const char* p_fileName) override;
};
