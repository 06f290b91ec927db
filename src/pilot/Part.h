#pragma once

#include <cstdint>
#include <string>

#include "sim/GameObject.h"

class DataFile;

// The kinds of ship part, as catalogue lookups, pilot records and the shop number them.
enum PartKind : int
{
    PART_HULL = 0,
    PART_ENGINE = 1,
    PART_SHIELD = 2,
    PART_POWER_PLANT = 3,
    PART_COPILOT = 4,
    PART_WEAPON = 5,
};

inline constexpr int NUM_PART_KINDS = 6;

// One ship part of the catalogue: a name, a price and, for some kinds, a picture the shop
// and the HUD show. Every kind reads its own file.
class Part : public GameObject
{
public:
    Part() = default;
    ~Part() override = default;

    // Parts do not move; Render draws the picture where the part was placed.
    bool Update(float p_dt) override;
    bool Render() override;

    // The picture, if there is one, at (p_x, p_y) turned by p_angle degrees, unblended.
    virtual bool DrawAt(double p_x, double p_y, double p_angle);
    virtual int GetKind() const = 0;
    // Reads the part's file; false when it does not open (the part then stays empty).
    virtual bool Load(const char* p_fileName) = 0;

    const std::string& GetName() const { return m_name; }
    int32_t GetPrice() const { return m_price; }
    int32_t GetValue() const { return m_value; }

protected:
    // The header that power-plant and weapon records start with: picture, name, value,
    // price. A picture name of length 0 means no picture.
    void ReadHeader(DataFile& p_file);

    std::string m_name;
    int32_t m_value = 0;
    int32_t m_price = 0;
};
