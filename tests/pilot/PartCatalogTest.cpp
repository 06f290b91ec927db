#include "pilot/PartCatalog.h"
#include "pilot/ShipParts.h"
#include "sim/CombatSupport.h"
#include "sim/Weapon.h"
#include "support/TestBitmaps.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using combattest::WriteGameFile;

namespace
{
class PartCatalogTest : public testsupport::WorkDirTest
{
protected:
    static forge::HullRecord Hull(const std::string& p_name, int32_t p_armour)
    {
        forge::HullRecord hull;
        hull.name = p_name;
        hull.image = "art\\hulls\\cargo\\cargo";
        hull.price = 2000;
        hull.armour = p_armour;
        hull.turnRate = 110;
        hull.mounts = {forge::Mount{32, 2}, forge::Mount{8, 34}, forge::Mount{56, 34}, forge::Mount{32, 62}};
        hull.box = forge::CollisionBox{-10, 6, 44, 54};
        return hull;
    }

    static forge::EngineRecord Engine(const std::string& p_name)
    {
        return forge::EngineRecord{p_name, 1500, 20, 260, 80};
    }
};
} // namespace

TEST_F(PartCatalogTest, CountsNumberedFilesUpToTheFirstGapCarryingTheDigits)
{
    std::string name = "GOB\\Parts\\hull009.hul";
    PartCatalog::AdvanceNumber(name);
    EXPECT_EQ("GOB\\Parts\\hull010.hul", name);
    name = "GOB\\Parts\\hull099.hul";
    PartCatalog::AdvanceNumber(name);
    EXPECT_EQ("GOB\\Parts\\hull100.hul", name);
    name = "GOB\\Parts\\hull999.hul";
    PartCatalog::AdvanceNumber(name);
    EXPECT_EQ("GOB\\Parts\\hull000.hul", name);

    // hull000 and hull002 without hull001: one hull. Engines 000 .. 010: eleven, across the
    // carry from 009 to 010.
    WriteGameFile("GOB\\Parts\\hull000.hul", Hull("Cargo Hull", 450));
    WriteGameFile("GOB\\Parts\\hull002.hul", Hull("Lost Hull", 999));
    for (int i = 0; i <= 10; ++i)
    {
        WriteGameFile(forge::PartFileName(forge::KIND_ENGINE, i), Engine("Engine " + std::to_string(i)));
    }
    // Copilot files exist but are never read.
    WriteGameFile("GOB\\Parts\\copilot000.cop", forge::CopilotRecord{"Rook Mercer", 2500});

    PartCatalog catalog;
    ASSERT_TRUE(catalog.Init());
    EXPECT_EQ(1, catalog.GetCount(PART_HULL));
    EXPECT_EQ(nullptr, catalog.Find("Lost Hull", PART_HULL));
    EXPECT_EQ(11, catalog.GetCount(PART_ENGINE));
    ASSERT_NE(nullptr, catalog.GetPart(PART_ENGINE, 10));
    EXPECT_EQ("Engine 10", catalog.GetPart(PART_ENGINE, 10)->GetName());
    EXPECT_EQ(nullptr, catalog.GetPart(PART_ENGINE, 11));
    EXPECT_EQ(nullptr, catalog.GetPart(PART_ENGINE, -1));
    EXPECT_EQ(0, catalog.GetCount(PART_COPILOT));
    EXPECT_EQ(0, catalog.GetCount(PART_SHIELD));
    EXPECT_EQ(nullptr, catalog.Find("Tin-foil Plating", PART_SHIELD));
    EXPECT_EQ(0, catalog.GetCount(17));
    EXPECT_EQ(nullptr, catalog.GetPart(17, 0));
}

TEST_F(PartCatalogTest, ReadsEveryFieldAndShortFilesGiveZeros)
{
    WriteGameFile("GOB\\Parts\\hull000.hul", Hull("Cargo Hull", 450));
    WriteGameFile("GOB\\Parts\\shield000.sgr", forge::ShieldRecord{"Tin-foil Plating", 1000, 60, 3});
    forge::PowerPlantRecord plant;
    plant.header = forge::PartHeader{"", "Fission Cell", 100, 3000};
    plant.value2 = -7;
    plant.flag1 = 1;
    plant.flag2 = 2;
    WriteGameFile("GOB\\Parts\\powerplant000.pwp", plant);
    // An engine file cut after its price: the speeds read as 0.
    WriteGameFile("GOB\\Parts\\engine000.eng", Engine("Cargo Thrusters"));
    std::filesystem::resize_file("GOB/Parts/engine000.eng", 1 + 15 + 4 + 2);

    PartCatalog catalog;
    catalog.Init();
    const auto* hull = dynamic_cast<const HullPart*>(catalog.Find("Cargo Hull", PART_HULL));
    ASSERT_NE(nullptr, hull);
    EXPECT_EQ(PART_HULL, hull->GetKind());
    EXPECT_EQ("art\\hulls\\cargo\\cargo", hull->GetImageName());
    EXPECT_EQ(2000, hull->GetPrice());
    EXPECT_EQ(450, hull->GetArmour());
    EXPECT_EQ(110, hull->GetTurnRate());
    EXPECT_EQ(8, hull->GetMount(1).x);
    EXPECT_EQ(62, hull->GetMount(3).y);
    EXPECT_EQ(0, hull->GetMount(4).x);
    EXPECT_EQ(-10, hull->GetBoxX());
    EXPECT_EQ(54, hull->GetBoxHeight());

    const auto* shield = dynamic_cast<const ShieldPart*>(catalog.Find("Tin-foil Plating", PART_SHIELD));
    ASSERT_NE(nullptr, shield);
    EXPECT_EQ(60, shield->GetCapacity());
    EXPECT_EQ(3, shield->GetAbsorption());

    auto* power = dynamic_cast<PowerPlantPart*>(catalog.Find("Fission Cell", PART_POWER_PLANT));
    ASSERT_NE(nullptr, power);
    EXPECT_EQ(100, power->GetValue());
    EXPECT_EQ(-7, power->GetValue2());
    EXPECT_EQ(2, power->GetFlag2());
    EXPECT_EQ(nullptr, power->GetImage()); // a picture name of length 0: no picture

    const auto* engine = dynamic_cast<const EnginePart*>(catalog.Find("Cargo Thrusters", PART_ENGINE));
    ASSERT_NE(nullptr, engine);
    EXPECT_EQ(1500, engine->GetPrice());
    EXPECT_EQ(20, engine->GetReverseSpeed());
    EXPECT_EQ(0, engine->GetForwardSpeed());
    EXPECT_EQ(0, engine->GetAcceleration());

    // A part whose file does not open stays empty.
    HullPart missing;
    EXPECT_FALSE(missing.Load("GOB\\Parts\\hull123.hul"));
    EXPECT_FALSE(missing.Load(nullptr));
    EXPECT_EQ("", missing.GetName());
    EXPECT_EQ(0, missing.GetArmour());
}

TEST_F(PartCatalogTest, FindsTheFirstOfANameAndWeaponsByTheTable)
{
    WriteGameFile("GOB\\Parts\\hull000.hul", Hull("Cargo Hull", 450));
    WriteGameFile("GOB\\Parts\\hull001.hul", Hull("Cargo Hull", 900));
    WriteGameFile("GOB\\Parts\\weapon000.wpn", combattest::MakeMachineGun(6, 13));
    forge::WeaponRecord second = combattest::MakeMachineGun(50, 60);
    second.header.name = "Vulcan";
    WriteGameFile("GOB\\Parts\\weapon001.wpn", second);

    PartCatalog catalog;
    catalog.Init();
    const auto* hull = dynamic_cast<const HullPart*>(catalog.Find("Cargo Hull", PART_HULL));
    ASSERT_NE(nullptr, hull);
    EXPECT_EQ(450, hull->GetArmour());
    EXPECT_EQ(nullptr, catalog.Find("Cargo Hull", PART_ENGINE));
    EXPECT_EQ(nullptr, catalog.Find("", PART_HULL));
    EXPECT_EQ(nullptr, catalog.Find(nullptr, PART_HULL));
    EXPECT_EQ(nullptr, catalog.Find("cargo hull", PART_HULL));

    // "Machine Gun" is the first machine gun read; the name in a weapon file finds nothing.
    auto* gun = dynamic_cast<MachineGun*>(catalog.Find("Machine Gun", PART_WEAPON));
    ASSERT_NE(nullptr, gun);
    EXPECT_EQ(6, gun->GetMinDamage());
    EXPECT_EQ(13, gun->GetMaxDamage());
    EXPECT_EQ(5000, gun->GetPrice()); // whatever the file says
    EXPECT_EQ(Weapon::AMMO_BULLETS, gun->GetAmmoKind());
    EXPECT_EQ(1200.0, gun->GetExtraValue());
    EXPECT_EQ(8, gun->GetExtraByte());
    EXPECT_NE(nullptr, gun->GetImage());
    EXPECT_EQ(nullptr, catalog.Find("Vulcan", PART_WEAPON));

    auto* missile = dynamic_cast<Weapon*>(catalog.Find("Missile", PART_WEAPON));
    ASSERT_NE(nullptr, missile);
    EXPECT_NE(nullptr, dynamic_cast<MissileLauncher*>(missile));
    EXPECT_EQ("Missile", missile->GetName());
    EXPECT_EQ(35000, missile->GetPrice());
    EXPECT_EQ(nullptr, catalog.Find("Missile", PART_HULL));
    EXPECT_EQ(nullptr, catalog.Find("Rail Gun", PART_WEAPON));

    // The shop's list: machine guns in file order, then the five built-in weapons.
    ASSERT_EQ(7, catalog.GetCount(PART_WEAPON));
    EXPECT_EQ(gun, catalog.GetPart(PART_WEAPON, 0));
    EXPECT_EQ("Vulcan", catalog.GetPart(PART_WEAPON, 1)->GetName());
    const char* const builtIn[] = {"Laser", "Multi-Laser", "Bomb", "Missile", "BFG"};
    for (int i = 0; i < 5; ++i)
    {
        ASSERT_NE(nullptr, catalog.GetPart(PART_WEAPON, 2 + i));
        EXPECT_EQ(builtIn[i], catalog.GetPart(PART_WEAPON, 2 + i)->GetName());
        EXPECT_EQ(catalog.GetPart(PART_WEAPON, 2 + i), catalog.Find(builtIn[i], PART_WEAPON));
    }
    EXPECT_EQ(nullptr, catalog.GetPart(PART_WEAPON, 7));
}

TEST_F(PartCatalogTest, WithoutWeaponFilesThereIsNoMachineGun)
{
    PartCatalog catalog;
    catalog.Init();
    EXPECT_EQ(nullptr, catalog.Find("Machine Gun", PART_WEAPON));
    EXPECT_EQ(5, catalog.GetCount(PART_WEAPON));
    EXPECT_NE(nullptr, catalog.Find("BFG", PART_WEAPON));
    EXPECT_EQ(0, catalog.GetCount(PART_HULL));
}
