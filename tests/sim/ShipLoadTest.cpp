#include "pilot/CampaignLink.h"
#include "pilot/ShipParts.h"
#include "sim/AttackController.h"
#include "sim/CombatSupport.h"
#include "sim/EntityShip.h"
#include "sim/PlayerShip.h"
#include "sim/SpawnerController.h"
#include "sim/Weapon.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using combattest::FixedSeed;
using combattest::MakeEntity;
using combattest::ScopedCatalog;
using combattest::WriteGameFile;

namespace
{
class RecordingCampaign : public CampaignLink
{
public:
    void SetMission(const char* p_name) override
    {
        m_mission = p_name;
        m_calls.push_back("SetMission " + m_mission);
    }
    void Reset() override
    {
        m_mission = "Mission1";
        m_calls.push_back("Reset");
    }
    const char* GetMissionName() const override { return m_mission.c_str(); }

    std::string m_mission = "Mission1";
    std::vector<std::string> m_calls;
};

class ShipLoadTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        forge::HullRecord cargo;
        cargo.name = "Cargo Hull";
        cargo.image = "art\\hulls\\cargo\\cargo";
        cargo.armour = 450;
        cargo.turnRate = 110;
        cargo.mounts = {forge::Mount{32, 2}, forge::Mount{8, 34}, forge::Mount{56, 34}, forge::Mount{32, 62}};
        cargo.box = forge::CollisionBox{10, 6, 44, 54};
        WriteGameFile("GOB\\Parts\\hull000.hul", cargo);
        forge::HullRecord scout = cargo;
        scout.name = "Scout Frame";
        scout.armour = 550;
        scout.turnRate = 160;
        scout.box = forge::CollisionBox{12, 4, 32, 48};
        WriteGameFile("GOB\\Parts\\hull001.hul", scout);
        WriteGameFile("GOB\\Parts\\engine000.eng", forge::EngineRecord{"Cargo Thrusters", 1500, 20, 260, 80});
        WriteGameFile("GOB\\Parts\\shield000.sgr", forge::ShieldRecord{"Tin-foil Plating", 1000, 60, 3});
        WriteGameFile("GOB\\Parts\\weapon000.wpn", combattest::MakeMachineGun());
        std::filesystem::create_directories("Saves");
        m_previousCampaign = g_pCampaignLink;
        g_pCampaignLink = &m_campaign;
    }

    void TearDown() override
    {
        g_pCampaignLink = m_previousCampaign;
        WorkDirTest::TearDown();
    }

    RecordingCampaign m_campaign;
    CampaignLink* m_previousCampaign = nullptr;
};
} // namespace

TEST_F(ShipLoadTest, APilotFitsItsPartsAndMovesTheCampaign)
{
    ScopedCatalog catalog;
    Pilot record("Saves\\Cy0.sav");
    record.SetMissionName("Mission3");
    record.SetMoney(900);
    record.SetWeaponName(1, "Laser");
    record.SetWeaponName(3, "BFG");
    ASSERT_TRUE(record.Save(nullptr));

    PlayerShip ship;
    EXPECT_FALSE(ship.LoadPilot(nullptr));
    ASSERT_TRUE(ship.Load("Saves\\Cy0.sav"));
    EXPECT_TRUE(ship.IsLoaded());
    EXPECT_EQ(900, ship.GetPilot().GetMoney());
    ASSERT_NE(nullptr, ship.GetHull());
    EXPECT_EQ("Cargo Hull", ship.GetHull()->GetName());
    EXPECT_EQ(450u, ship.GetArmour());
    EXPECT_EQ(110, ship.GetTurnRate());
    EXPECT_EQ(260, ship.GetMaxSpeed());
    EXPECT_EQ(20, ship.GetMinSpeed());
    EXPECT_EQ(80, ship.GetThrust());
    EXPECT_EQ(60u, ship.GetShield());
    EXPECT_EQ(3u, ship.GetAbsorption());
    EXPECT_EQ(44u, ship.GetPhysicalDesc()->GetBoxWidth());
    EXPECT_EQ(6, ship.GetPhysicalDesc()->GetBoxY());
    EXPECT_EQ(g_pPartCatalog->Find("Machine Gun", PART_WEAPON), ship.GetWeapon(0));
    EXPECT_EQ(g_pPartCatalog->Find("Laser", PART_WEAPON), ship.GetWeapon(1));
    EXPECT_EQ(nullptr, ship.GetWeapon(2));
    EXPECT_EQ(g_pPartCatalog->Find("BFG", PART_WEAPON), ship.GetWeapon(3));
    EXPECT_EQ(TEAM_PLAYER, ship.GetTeam());
    EXPECT_FALSE(ship.IsEnemy());
    EXPECT_EQ(std::vector<std::string>{"SetMission Mission3"}, m_campaign.m_calls);

    // A record without a mission starts the campaign over; a shield nobody sells is none.
    record.SetMissionName("");
    record.SetShieldName("Paper Shield");
    record.Save(nullptr);
    ship.LoadPilot("Saves\\Cy0.sav");
    EXPECT_EQ("Reset", m_campaign.m_calls.back());
    EXPECT_EQ(nullptr, ship.GetShieldGenerator());
    EXPECT_EQ(0u, ship.GetShield());

    // Reset stands the ship still, heading east, and it no longer counts as loaded.
    ship.GetPhysicalDesc()->SetSpeed(120.0);
    ship.GetPhysicalDesc()->SetHeading(10.0);
    ship.Reset();
    EXPECT_EQ(0.0, ship.GetPhysicalDesc()->GetSpeed());
    EXPECT_EQ(90.0, ship.GetPhysicalDesc()->GetHeading());
    EXPECT_FALSE(ship.IsLoaded());
}

TEST_F(ShipLoadTest, SetPartSwapsOnePartAndStorePartsWritesTheNames)
{
    ScopedCatalog catalog;
    Pilot("Saves\\Di0.sav").Save(nullptr);
    PlayerShip ship;
    ship.LoadPilot("Saves\\Di0.sav");

    std::string old;
    ship.SetPart(PART_HULL, "Scout Frame", &old);
    EXPECT_EQ("Cargo Hull", old);
    EXPECT_EQ(550u, ship.GetArmour());
    EXPECT_EQ(160, ship.GetTurnRate());
    EXPECT_EQ(32u, ship.GetPhysicalDesc()->GetBoxWidth());
    ship.SetPart(PART_WEAPON + 2, "Missile", &old);
    EXPECT_EQ("", old);
    EXPECT_EQ(g_pPartCatalog->Find("Missile", PART_WEAPON), ship.GetWeapon(2));
    ship.SetPart(PART_WEAPON, nullptr, &old);
    EXPECT_EQ("Machine Gun", old);
    EXPECT_EQ(nullptr, ship.GetWeapon(0));
    ship.SetPart(PART_WEAPON + 4, "Laser"); // no fifth mount
    ship.SetPart(PART_POWER_PLANT, "Fusion Core", &old);
    EXPECT_EQ("", old);
    ship.SetPart(PART_SHIELD, nullptr, &old);
    EXPECT_EQ("Tin-foil Plating", old);
    EXPECT_EQ(0u, ship.GetShield());

    m_campaign.m_mission = "Mission4";
    ASSERT_TRUE(ship.SaveRecord());
    Pilot saved("Saves\\Di0.sav");
    ASSERT_TRUE(saved.Load(nullptr));
    EXPECT_EQ("Mission4", saved.GetMissionName());
    EXPECT_EQ("Scout Frame", saved.GetHullName());
    EXPECT_EQ("Cargo Thrusters", saved.GetEngineName());
    EXPECT_EQ("", saved.GetShieldName());
    EXPECT_EQ("", saved.GetWeaponName(0));
    EXPECT_EQ("Missile", saved.GetWeaponName(2));
}

TEST_F(ShipLoadTest, AnEntityFileGivesAComputerShipItsValues)
{
    FixedSeed seed(3);
    ScopedCatalog catalog;
    WriteGameFile("entity\\air003.nme", MakeEntity("Laser", 90, 60));
    WriteGameFile("entity\\air006.nme", MakeEntity("", 1, 2000000000, 1));
    WriteGameFile("entity\\air010.nme", MakeEntity("Rail Gun"));

    EntityShip viper;
    ASSERT_TRUE(viper.Load("entity\\air003.nme"));
    EXPECT_TRUE(viper.IsEnemy());
    EXPECT_EQ(100, viper.GetMinSpeed());
    EXPECT_EQ(300, viper.GetMaxSpeed());
    EXPECT_EQ(100, viper.GetThrust());
    EXPECT_EQ(150, viper.GetTurnRate());
    EXPECT_EQ(g_pPartCatalog->Find("Laser", PART_WEAPON), viper.GetWeapon(0));
    EXPECT_EQ(nullptr, viper.GetWeapon(1));
    EXPECT_EQ(90u, viper.GetArmour());
    EXPECT_EQ(90u, viper.GetMaxArmour());
    EXPECT_EQ(60u, viper.GetShield());
    EXPECT_EQ(10u, viper.GetAbsorption()); // not in the file
    EXPECT_EQ(TEAM_COMPUTER, viper.GetTeam());
    EXPECT_NE(nullptr, dynamic_cast<AttackController*>(viper.GetController()));
    EXPECT_EQ(28u, viper.GetPhysicalDesc()->GetBoxWidth());
    // The shield picture is 1.7 times the box.
    ASSERT_NE(nullptr, viper.GetShieldSprite()->GetImage());
    EXPECT_EQ(47, viper.GetShieldSprite()->GetImage()->GetWidth());

    EntityShip hive;
    ASSERT_TRUE(hive.Load("entity\\air006.nme"));
    EXPECT_NE(nullptr, dynamic_cast<SpawnerController*>(hive.GetController()));
    EXPECT_EQ(nullptr, hive.GetWeapon(0));
    EXPECT_EQ(2000000000u, hive.GetShield());

    EntityShip unknownWeapon;
    ASSERT_TRUE(unknownWeapon.Load("entity\\air010.nme"));
    EXPECT_EQ(nullptr, unknownWeapon.GetWeapon(0));

    // Missing files keep the constructor's values: flying east at 500.
    EntityShip missing;
    EXPECT_FALSE(missing.Load("entity\\air999.nme"));
    EXPECT_FALSE(missing.Load(nullptr));
    EXPECT_EQ(500.0, missing.GetPhysicalDesc()->GetSpeed());
    EXPECT_EQ(90.0, missing.GetPhysicalDesc()->GetHeading());
    EXPECT_EQ(nullptr, missing.GetController());

    // A file cut after its speeds reads zeros for the rest.
    std::filesystem::resize_file("entity/air003.nme", 1 + 21 + 4);
    EntityShip cut;
    ASSERT_TRUE(cut.Load("entity\\air003.nme"));
    EXPECT_EQ(300, cut.GetMaxSpeed());
    EXPECT_EQ(0, cut.GetThrust());
    EXPECT_EQ(nullptr, cut.GetWeapon(0));
    EXPECT_EQ(0u, cut.GetArmour());
    EXPECT_EQ(TEAM_PLAYER, cut.GetTeam());
    EXPECT_NE(nullptr, dynamic_cast<AttackController*>(cut.GetController()));
}
