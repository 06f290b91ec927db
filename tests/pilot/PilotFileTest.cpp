#include "mission/Campaign.h"
#include "pilot/Inventory.h"
#include "pilot/Pilot.h"
#include "pilot/ShipParts.h"
#include "sim/CombatSupport.h"
#include "sim/PlayerShip.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

using combattest::ScopedCatalog;
using combattest::WriteGameFile;

namespace
{
class PilotFileTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        std::filesystem::create_directories("Saves");
    }

    // Every file below the test's directory, relative to it.
    std::set<std::string> Files() const
    {
        std::set<std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(m_dir))
        {
            if (entry.is_regular_file())
            {
                files.insert(std::filesystem::relative(entry.path(), m_dir).generic_string());
            }
        }
        return files;
    }
};
} // namespace

TEST_F(PilotFileTest, NewPilotsTakeTheFirstFreeNumberAndStayInSaves)
{
    EXPECT_EQ("Saves\\Ann0.sav", Pilot::NewPilotFileName("Ann"));
    Pilot first(Pilot::NewPilotFileName("Ann").c_str());
    first.SetPilotName("Ann");
    ASSERT_TRUE(first.Save(nullptr));
    // The second pilot of the same name, in any letter case, gets the next number.
    EXPECT_EQ("Saves\\ann1.sav", Pilot::NewPilotFileName("ann"));
    EXPECT_EQ("Saves\\Ann1.sav", Pilot::NewPilotFileName("Ann"));

    // Hostile names: the record keeps them, the file stays inside "Saves". The longest name
    // is the most the name field takes (128 characters); the file name uses only its start.
    const std::string hostile[] = {"../../x", "..\\..\\x", "/etc/passwd", "C:\\boot", ".hidden", "a\nb\tc",
                                   "Zo\xEB", "", std::string(128, 'n')};
    for (const std::string& name : hostile)
    {
        const std::string fileName = Pilot::NewPilotFileName(name);
        Pilot pilot(fileName.c_str());
        pilot.SetPilotName(name);
        ASSERT_TRUE(pilot.Save(nullptr)) << fileName;
        Pilot read(fileName.c_str());
        ASSERT_TRUE(read.Load(nullptr)) << fileName;
        EXPECT_EQ(name, read.GetPilotName());
    }
    EXPECT_EQ("______x", Pilot::SafeFileNamePart("../../x"));
    EXPECT_EQ("J.R._x", Pilot::SafeFileNamePart("J.R.|x"));
    const std::set<std::string> files = Files();
    for (const std::string& file : files)
    {
        EXPECT_EQ(0u, file.rfind("Saves/", 0)) << file;
        EXPECT_EQ(std::string::npos, file.find("..")) << file;
        EXPECT_LE(file.size(), std::string("Saves/").size() + Pilot::MAX_FILE_NAME_PART + std::string("0.sav").size());
    }
    EXPECT_EQ(10u, files.size());
    EXPECT_TRUE(files.count("Saves/______x1.sav"));
    EXPECT_TRUE(files.count("Saves/Zo_0.sav"));
    EXPECT_TRUE(files.count("Saves/0.sav"));
    EXPECT_TRUE(files.count("Saves/a_b_c0.sav"));
    EXPECT_TRUE(files.count("Saves/" + std::string(Pilot::MAX_FILE_NAME_PART, 'n') + "0.sav"));
}

TEST_F(PilotFileTest, AFailedSaveKeepsTheOldFileWhole)
{
    Pilot pilot("Saves\\Bo0.sav");
    pilot.SetMoney(900);
    ASSERT_TRUE(pilot.Save(nullptr));
    const auto size = std::filesystem::file_size("Saves/Bo0.sav");

    // A name too long for the format fails the write part-way: the old file stays as it was
    // and no temporary file is left behind.
    pilot.SetMoney(5);
    pilot.SetWeaponName(1, std::string(300, 'w'));
    EXPECT_FALSE(pilot.Save(nullptr));
    EXPECT_EQ(size, std::filesystem::file_size("Saves/Bo0.sav"));
    Pilot read("Saves\\Bo0.sav");
    ASSERT_TRUE(read.Load(nullptr));
    EXPECT_EQ(900, read.GetMoney());
    EXPECT_EQ((std::set<std::string>{"Saves/Bo0.sav"}), Files());

    // Nor can a record be written where there is no folder for it.
    Pilot lost("Nowhere\\Bo0.sav");
    EXPECT_FALSE(lost.Save(nullptr));
}

TEST_F(PilotFileTest, TheShipsRecordUpdateStoresTheMissionAndParts)
{
    forge::HullRecord hull;
    hull.name = "Cargo Hull";
    WriteGameFile("GOB\\Parts\\hull000.hul", hull);
    WriteGameFile("GOB\\Parts\\engine000.eng", forge::EngineRecord{"Cargo Thrusters", 1500, 0, 260, 80});
    WriteGameFile("GOB\\Parts\\weapon000.wpn", combattest::MakeMachineGun());
    {
        std::filesystem::create_directories("Campaign");
        std::ofstream("Campaign/korvath.ini") << "[Entry]\nFirstMission=Start\n[Start]\n[Later]\n";
    }
    ScopedCatalog catalog;
    Campaign campaign;

    // A new pilot: the default record, saved without inventory, then loaded into the ship.
    Pilot record(Pilot::NewPilotFileName("Cy").c_str());
    record.SetPilotName("Cy");
    ASSERT_TRUE(record.Save(nullptr));
    campaign.SetMission("Later");
    PlayerShip ship;
    ASSERT_TRUE(ship.LoadPilot("Saves\\Cy0.sav"));
    // An empty mission name starts the campaign at its first mission.
    EXPECT_STREQ("Start", campaign.GetMissionName());
    ASSERT_NE(nullptr, ship.GetHull());
    ASSERT_NE(nullptr, ship.GetWeapon(0));
    EXPECT_EQ(nullptr, ship.GetShieldGenerator()); // no such part in this catalogue

    campaign.SetMission("Later");
    ship.GetPilot().AddMoney(1500);
    ship.GetInventory().Add("Machine Gun", PART_WEAPON, 2);
    ASSERT_TRUE(ship.SaveRecord());

    Pilot read("Saves\\Cy0.sav");
    Inventory items;
    ASSERT_TRUE(read.Load(&items));
    EXPECT_EQ("Cy", read.GetPilotName());
    EXPECT_EQ(1500, read.GetMoney());
    EXPECT_EQ("Later", read.GetMissionName());
    EXPECT_EQ("Cargo Hull", read.GetHullName());
    EXPECT_EQ("Cargo Thrusters", read.GetEngineName());
    EXPECT_EQ("", read.GetShieldName());
    EXPECT_EQ("Machine Gun", read.GetWeaponName(0));
    EXPECT_EQ(2, items.GetQuantity("Machine Gun"));

    // Loading the saved pilot moves the campaign to the mission it reached.
    campaign.Reset();
    PlayerShip again;
    ASSERT_TRUE(again.LoadPilot("Saves\\Cy0.sav"));
    EXPECT_STREQ("Later", campaign.GetMissionName());
    EXPECT_EQ(1500, again.GetPilot().GetMoney());
}
