#include "pilot/DataFile.h"
#include "pilot/Inventory.h"
#include "pilot/Pilot.h"
#include "pilot/ShipParts.h"
#include "sim/CombatSupport.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using combattest::ScopedCatalog;
using combattest::WriteGameFile;

namespace
{
class PilotTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        forge::HullRecord hull;
        hull.name = "Cargo Hull";
        WriteGameFile("GOB\\Parts\\hull000.hul", hull);
        WriteGameFile("GOB\\Parts\\engine000.eng", forge::EngineRecord{"Cargo Thrusters", 1500, 0, 260, 80});
        WriteGameFile("GOB\\Parts\\weapon000.wpn", combattest::MakeMachineGun());
        std::filesystem::create_directories("Saves");
    }
};
} // namespace

TEST_F(PilotTest, ANewRecordSavesAndReadsBackWithItsDefaults)
{
    Pilot pilot("Saves\\Ann0.sav");
    pilot.SetPilotName("Ann");
    pilot.SetPortrait("Portraits\\ann.bmp");
    ASSERT_TRUE(pilot.Save(nullptr));

    Pilot read(nullptr);
    read.SetMoney(77);
    read.SetFileName("Saves\\Ann0.sav");
    ASSERT_TRUE(read.Load(nullptr));
    EXPECT_EQ(0, read.GetMoney());
    EXPECT_EQ(500, read.GetBullets());
    EXPECT_EQ(0, read.GetEnergy());
    EXPECT_EQ("Ann", read.GetPilotName());
    EXPECT_EQ("Portraits\\ann.bmp", read.GetPortrait());
    EXPECT_EQ("", read.GetMissionName());
    EXPECT_EQ("Cargo Hull", read.GetHullName());
    EXPECT_EQ("Cargo Thrusters", read.GetEngineName());
    EXPECT_EQ("Tin-foil Plating", read.GetShieldName());
    EXPECT_EQ("Machine Gun", read.GetWeaponName(0));
    EXPECT_EQ("", read.GetWeaponName(3));
    EXPECT_EQ("", read.GetWeaponName(4));
    EXPECT_TRUE(read.IsWhole());

    // A cut inventory count leaves the record whole; a file that ends before the last
    // weapon's name is read, but not whole.
    const auto size = std::filesystem::file_size("Saves/Ann0.sav");
    std::filesystem::resize_file("Saves/Ann0.sav", size - 1);
    ASSERT_TRUE(read.Load(nullptr));
    EXPECT_TRUE(read.IsWhole());
    std::filesystem::resize_file("Saves/Ann0.sav", size - 3);
    ASSERT_TRUE(read.Load(nullptr));
    EXPECT_FALSE(read.IsWhole());

    // A file that does not open changes nothing; a null name keeps the old one.
    Pilot other("Saves\\Nobody0.sav");
    other.SetMoney(42);
    EXPECT_FALSE(other.Load(nullptr));
    EXPECT_EQ(42, other.GetMoney());
    other.SetFileName(nullptr);
    EXPECT_EQ("Saves\\Nobody0.sav", other.GetFileName());

    // Money stays within the 32-bit range; ammunition kinds map to their counters.
    other.AddMoney(INT64_C(5000000000));
    EXPECT_EQ(INT32_MAX, other.GetMoney());
    other.AddMoney(-INT64_C(10000000000));
    EXPECT_EQ(INT32_MIN, other.GetMoney());
    EXPECT_EQ(other.GetAmmoCounter(1), other.GetAmmoCounter(2));
    ASSERT_NE(nullptr, other.GetAmmoCounter(8));
    EXPECT_EQ(500, *other.GetAmmoCounter(8));
    EXPECT_EQ(nullptr, other.GetAmmoCounter(3));
}

TEST_F(PilotTest, TheInventoryComesBackReversedAndCountsByName)
{
    ScopedCatalog catalog;
    Inventory inventory;
    inventory.Add("Cargo Hull", PART_HULL, 1);
    inventory.Add("Machine Gun", PART_WEAPON, 2);
    inventory.Add("Warp Coil", PART_ENGINE, 5); // the catalogue does not know it
    // The same name under another kind adds to the item already held.
    inventory.Add("Cargo Hull", PART_ENGINE, 3);
    ASSERT_EQ(2, inventory.GetCount());
    EXPECT_EQ(4, inventory.GetQuantity("Cargo Hull"));
    EXPECT_EQ(0, inventory.GetQuantity("Warp Coil"));
    EXPECT_EQ("Machine Gun", inventory.GetItems().front().m_pPart->GetName());

    Pilot pilot("Saves\\Bo0.sav");
    pilot.SetMoney(1234);
    pilot.SetWeaponName(2, "Laser");
    ASSERT_TRUE(pilot.Save(&inventory));

    Inventory read;
    read.Add("Cargo Thrusters", PART_ENGINE, 1); // replaced by the file's items
    Pilot loaded("Saves\\Bo0.sav");
    ASSERT_TRUE(loaded.Load(&read));
    EXPECT_EQ(1234, loaded.GetMoney());
    EXPECT_EQ("Laser", loaded.GetWeaponName(2));
    ASSERT_EQ(2, read.GetCount());
    EXPECT_EQ("Cargo Hull", read.GetItems().front().m_pPart->GetName());
    EXPECT_EQ(PART_HULL, read.GetItems().front().m_kind);
    EXPECT_EQ(2, read.GetQuantity("Machine Gun"));
    EXPECT_EQ(0, read.GetQuantity("Cargo Thrusters"));

    read.Remove("Cargo Hull", PART_WEAPON, 3);
    EXPECT_EQ(1, read.GetQuantity("Cargo Hull"));
    read.Remove("Cargo Hull", PART_HULL, 1);
    EXPECT_EQ(1, read.GetCount());
    read.Remove("Nothing", PART_HULL, 1);
    EXPECT_EQ(1, read.GetCount());

    // A file cut inside its item list keeps the items that are whole.
    const auto size = std::filesystem::file_size("Saves/Bo0.sav");
    std::filesystem::resize_file("Saves/Bo0.sav", size - 3);
    Inventory cut;
    ASSERT_TRUE(loaded.Load(&cut));
    EXPECT_EQ(1, cut.GetCount());
    EXPECT_EQ(2, cut.GetQuantity("Machine Gun"));
}

TEST_F(PilotTest, ADamagedFileCannotOverflowAQuantity)
{
    ScopedCatalog catalog;
    // The largest item list a file can hold, every item the same part at the largest quantity.
    {
        DataFile file;
        ASSERT_TRUE(file.Open("Saves\\Big0.sav", "wb"));
        file.WriteInt32(5);
        for (int i = 0; i < 4; ++i)
        {
            file.WriteUInt16(0);
        }
        for (int i = 0; i < 11; ++i)
        {
            file.WriteString("");
        }
        file.WriteUInt16(65535);
        for (int i = 0; i < 65535; ++i)
        {
            file.WriteUInt16(65535);
            file.WriteUInt8(PART_WEAPON);
            file.WriteString("Machine Gun");
        }
        file.Close();
    }
    Inventory inventory;
    Pilot pilot("Saves\\Big0.sav");
    ASSERT_TRUE(pilot.Load(&inventory));
    EXPECT_EQ(5, pilot.GetMoney());
    ASSERT_EQ(1, inventory.GetCount());
    EXPECT_EQ(INT32_MAX, inventory.GetQuantity("Machine Gun"));
    // Saved, it is written as the most a file can hold.
    ASSERT_TRUE(pilot.Save(&inventory));
    Inventory again;
    ASSERT_TRUE(pilot.Load(&again));
    EXPECT_EQ(65535, again.GetQuantity("Machine Gun"));

    // Taking away stops at the bottom of the range too (the item then goes).
    inventory.Add("Machine Gun", PART_WEAPON, INT32_MIN);
    inventory.Add("Machine Gun", PART_WEAPON, INT32_MIN);
    EXPECT_EQ(INT32_MIN, inventory.GetQuantity("Machine Gun"));
    inventory.Remove("Machine Gun", PART_WEAPON, INT32_MAX);
    EXPECT_EQ(0, inventory.GetCount());
}
