// The shop played the way a player uses it: the scripted mouse presses, drags and lets go at
// the panels' places, and the pilot's money, ammunition, inventory and ship show the result.
#include "forge/Formats.h"
#include "pilot/ForSalePanel.h"
#include "pilot/InventoryPanel.h"
#include "pilot/PartInfoPanel.h"
#include "pilot/PartList.h"
#include "pilot/ShipPanel.h"
#include "pilot/ShipParts.h"
#include "pilot/Shop.h"
#include "pilot/ShopList.h"
#include "sim/CombatSupport.h"
#include "sim/PlayerShip.h"
#include "sim/Weapon.h"
#include "support/WorkDir.h"
#include "ui/Button.h"
#include "ui/StaticObjects.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

using combattest::ScopedCatalog;
using combattest::WriteGameFile;

namespace
{
constexpr float DT = 0.05f;
constexpr const char* SHOP_FILE = "Campaign\\test.shp";
// Where the panels are, on the screen.
constexpr int32_t INVENTORY_X = 20;
constexpr int32_t INVENTORY_Y = 115;
constexpr int32_t FOR_SALE_X = 800;
constexpr int32_t FOR_SALE_Y = 115;
constexpr int32_t SHIP_X = 455;
constexpr int32_t SHIP_Y = 130;
// The fixed mount markers: front, left, right, back.
constexpr int32_t MOUNTS[4][2] = {{SHIP_X + 90, SHIP_Y + 2},
                                  {SHIP_X + 2, SHIP_Y + 100},
                                  {SHIP_X + 220, SHIP_Y + 100},
                                  {SHIP_X + 90, SHIP_Y + 200}};
// Lines are grabbed this far into them, so the dragged copy sits this far up and left of the
// cursor.
constexpr int32_t GRAB = 3;

forge::HullRecord Hull(const std::string& p_name, int32_t p_price, uint16_t p_turnRate, int32_t p_armour)
{
    forge::HullRecord hull;
    hull.name = p_name;
    hull.image = "art\\hulls\\cargo\\cargo";
    hull.price = p_price;
    hull.armour = p_armour;
    hull.turnRate = p_turnRate;
    hull.mounts = {forge::Mount{32, 2}, forge::Mount{8, 34}, forge::Mount{56, 34}, forge::Mount{32, 62}};
    hull.box = forge::CollisionBox{10, 6, 44, 54};
    return hull;
}

class ShopTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        WriteGameFile("GOB\\Parts\\hull000.hul", Hull("Cargo Hull", 2000, 110, 450));
        WriteGameFile("GOB\\Parts\\hull001.hul", Hull("Scout Frame", 7000, 160, 550));
        WriteGameFile("GOB\\Parts\\engine000.eng", forge::EngineRecord{"Cargo Thrusters", 1500, 20, 260, 80});
        WriteGameFile("GOB\\Parts\\shield000.sgr", forge::ShieldRecord{"Tin-foil Plating", 1000, 60, 3});
        WriteGameFile("GOB\\Parts\\shield001.sgr", forge::ShieldRecord{"Cheap Shield", 100, 10, 1});
        forge::PowerPlantRecord plant;
        plant.header = forge::PartHeader{"", "Fission Cell", 100, 3000};
        WriteGameFile("GOB\\Parts\\powerplant000.pwp", plant);
        WriteGameFile("GOB\\Parts\\weapon000.wpn", combattest::MakeMachineGun());
        // No engines for sale; an unknown weapon among the known ones.
        forge::ShopRecord shop;
        shop.title = "Test Depot";
        shop.names[forge::KIND_HULL] = {"Cargo Hull", "Scout Frame"};
        shop.names[forge::KIND_SHIELD] = {"Cheap Shield"};
        shop.names[forge::KIND_POWER_PLANT] = {"Fission Cell"};
        shop.names[forge::KIND_WEAPON] = {"Machine Gun", "Laser", "Plasma Lance"};
        WriteGameFile(SHOP_FILE, shop);
        std::filesystem::create_directories("Saves");

        m_pCatalog = std::make_unique<ScopedCatalog>();
        m_pShip = std::make_unique<PlayerShip>();
        m_pShip->GetPilot().SetFileName("Saves\\Tester0.sav");
        m_pShip->SetPart(PART_HULL, "Cargo Hull");
        m_pShip->SetPart(PART_ENGINE, "Cargo Thrusters");
        m_pShip->SetPart(PART_SHIELD, "Tin-foil Plating");
        m_pShip->SetPart(PART_WEAPON, "Machine Gun");
    }
    void TearDown() override
    {
        m_pShop.reset();
        m_pShip.reset();
        m_pCatalog.reset();
        WorkDirTest::TearDown();
    }

    Shop& Open(const char* p_file = SHOP_FILE)
    {
        m_pShop = std::make_unique<Shop>(p_file, nullptr, m_pShip.get(), &m_ui.cursor);
        // The notice outlives a shop: let one from an earlier test run out.
        for (float t = 0.0f; t <= Shop::NOTICE_SECONDS; t += DT)
        {
            Frame(0, 0, false);
        }
        return *m_pShop;
    }
    // One frame with the mouse at (p_x, p_y); answers whether "Done" finished the shop.
    bool Frame(int32_t p_x, int32_t p_y, bool p_down)
    {
        m_ui.Frame(p_x, p_y, p_down);
        return m_pShop->Update(DT);
    }
    bool Click(int32_t p_x, int32_t p_y)
    {
        Frame(p_x, p_y, false);
        Frame(p_x, p_y, true);
        return Frame(p_x, p_y, false);
    }
    bool ClickButton(const Button* p_button)
    {
        EXPECT_NE(nullptr, p_button);
        return p_button != nullptr && Click(static_cast<int32_t>(p_button->GetX()) + 10, static_cast<int32_t>(p_button->GetY()) + 8);
    }
    // Presses at (p_x, p_y), moves with the button held and lets go at (p_toX, p_toY).
    void Drag(int32_t p_x, int32_t p_y, int32_t p_toX, int32_t p_toY)
    {
        Frame(p_x, p_y, false);
        Frame(p_x, p_y, true);
        Frame((p_x + p_toX) / 2, (p_y + p_toY) / 2, true);
        Frame(p_toX, p_toY, true);
        Frame(p_toX, p_toY, false);
    }
    // Grabs a line near its top-left corner and lets go so that its copy lies at (p_x, p_y).
    void DragLineTo(const PartEntry& p_line, int32_t p_x, int32_t p_y)
    {
        Drag(static_cast<int32_t>(p_line.GetX()) + GRAB, static_cast<int32_t>(p_line.GetY()) + GRAB, p_x + GRAB,
             p_y + GRAB);
    }
    // The for-sale line of a name, after opening its kind's list.
    const PartEntry& ForSale(int p_kind, int p_index)
    {
        ForSalePanel& panel = m_pShop->GetForSalePanel();
        if (panel.GetOpenKind() != p_kind)
        {
            if (panel.GetOpenKind() != ForSalePanel::NO_LIST)
            {
                ClickButton(panel.GetBackButton());
            }
            ClickButton(panel.GetKindButton(p_kind));
        }
        const PartEntry* line = panel.GetList().GetEntry(p_index);
        EXPECT_NE(nullptr, line);
        return *line;
    }
    const PartEntry& InventoryLine(int p_index)
    {
        const PartEntry* line = m_pShop->GetInventoryPanel().GetList().GetEntry(p_index);
        EXPECT_NE(nullptr, line);
        return *line;
    }
    std::string MountName(int p_mount) const
    {
        const Weapon* weapon = m_pShip->GetWeapon(p_mount);
        return weapon != nullptr ? weapon->GetTableName() : "";
    }
    std::string ShipLine(int p_line) const { return m_pShop->GetShipPanel().GetLine(p_line).GetText(); }
    int32_t Money() const { return m_pShip->GetPilot().GetMoney(); }
    void SetMoney(int32_t p_money) { m_pShip->GetPilot().SetMoney(p_money); }
    Inventory& Items() { return m_pShip->GetInventory(); }

    uitest::UiInput m_ui;
    std::unique_ptr<ScopedCatalog> m_pCatalog;
    std::unique_ptr<PlayerShip> m_pShip;
    std::unique_ptr<Shop> m_pShop;
};
} // namespace

TEST_F(ShopTest, TheShopFileIsReadByteByByteAndACutFileKeepsWhatWasRead)
{
    ShopList list;
    ASSERT_TRUE(list.Load(SHOP_FILE));
    EXPECT_EQ("Test Depot", list.GetTitle());
    EXPECT_EQ(2, list.GetCount(PART_HULL));
    EXPECT_EQ(0, list.GetCount(PART_ENGINE));
    EXPECT_EQ("Plasma Lance", list.GetNames(PART_WEAPON)[2]);
    EXPECT_EQ(0, list.GetCount(NUM_PART_KINDS));
    EXPECT_TRUE(list.GetNames(-1).empty());

    // Title "Ab", the two values, two hulls, then a count of 200 shields of which one is there,
    // and that one cut short.
    const std::string bytes = std::string("\x02" "Ab" "\x07\x09" "\x02" "\x01X" "\x02YZ" "\x00" "\xC8" "\x03" "Sh", 15);
    std::ofstream("Campaign/cut.shp", std::ios::binary) << bytes;
    ShopList cut;
    EXPECT_FALSE(cut.Load("Campaign\\cut.shp"));
    EXPECT_EQ("Ab", cut.GetTitle());
    EXPECT_EQ(7, cut.GetValue1());
    EXPECT_EQ(9, cut.GetValue2());
    EXPECT_EQ((std::vector<std::string>{"X", "YZ"}), cut.GetNames(PART_HULL));
    EXPECT_EQ(0, cut.GetCount(PART_SHIELD));

    // A title longer than the file.
    std::ofstream("Campaign/short.shp", std::ios::binary) << std::string("\xFF" "abc");
    ShopList shortTitle;
    EXPECT_FALSE(shortTitle.Load("Campaign\\short.shp"));
    EXPECT_EQ("", shortTitle.GetTitle());
    EXPECT_FALSE(shortTitle.Load("Campaign\\missing.shp"));
    EXPECT_FALSE(shortTitle.Load(nullptr));
}

TEST_F(ShopTest, KindsWithoutNamesHaveNoButtonAndTheOthersStackInKindOrder)
{
    Shop& shop = Open();
    EXPECT_EQ("Test Depot", shop.GetTitle().GetText());
    ForSalePanel& panel = shop.GetForSalePanel();
    EXPECT_EQ(nullptr, panel.GetKindButton(PART_ENGINE));
    EXPECT_EQ(nullptr, panel.GetKindButton(PART_COPILOT));
    const int kinds[] = {PART_HULL, PART_SHIELD, PART_POWER_PLANT, PART_WEAPON};
    const char* const captions[] = {"Hulls", "Shields", "Power Plants", "Weapons"};
    for (int i = 0; i < 4; ++i)
    {
        const Button* button = panel.GetKindButton(kinds[i]);
        ASSERT_NE(nullptr, button) << captions[i];
        EXPECT_EQ(captions[i], button->GetText());
        EXPECT_EQ(FOR_SALE_Y + ForSalePanel::FIRST_KIND_Y + ForSalePanel::BUTTON_SPACING * i, button->GetY());
        EXPECT_EQ(120, button->GetWidth());
        EXPECT_EQ(33, button->GetHeight());
    }

    // A kind's list replaces the buttons and the heading; while it is open the kind buttons do
    // not react, and "Back" brings them back.
    ClickButton(panel.GetKindButton(PART_WEAPON));
    EXPECT_EQ(PART_WEAPON, panel.GetOpenKind());
    EXPECT_EQ("Weapons", panel.GetHeading().GetText());
    EXPECT_EQ(3, panel.GetList().GetCount());
    const Button* hulls = panel.GetKindButton(PART_HULL);
    Click(static_cast<int32_t>(hulls->GetX()) + 60, static_cast<int32_t>(hulls->GetY()) + 30);
    EXPECT_EQ(PART_WEAPON, panel.GetOpenKind());
    ClickButton(panel.GetBackButton());
    EXPECT_EQ(ForSalePanel::NO_LIST, panel.GetOpenKind());
    EXPECT_EQ("Parts For Sale", panel.GetHeading().GetText());
}

TEST_F(ShopTest, ExactlyThePriceBuysAndLeavesNothingAndOneDollarLessShowsTheNotice)
{
    SetMoney(7000);
    Open();
    DragLineTo(ForSale(PART_HULL, 1), INVENTORY_X + 40, INVENTORY_Y + 200);
    EXPECT_EQ(0, Money());
    EXPECT_EQ(1, Items().GetQuantity("Scout Frame"));
    EXPECT_EQ("(1) Scout Frame", InventoryLine(0).GetText());
    EXPECT_EQ("$0", m_pShop->GetFundsPanel().GetValue().GetText());
    EXPECT_EQ(nullptr, m_pShop->GetDragged());

    // $6999 is short of $7000: the notice shows for two seconds and nothing is bought.
    SetMoney(6999);
    DragLineTo(ForSale(PART_HULL, 1), INVENTORY_X + 40, INVENTORY_Y + 200);
    EXPECT_EQ(6999, Money());
    EXPECT_EQ(1, Items().GetQuantity("Scout Frame"));
    EXPECT_GT(Shop::GetNoticeTime(), Shop::NOTICE_SECONDS - 2 * DT);
    for (int frame = 0; frame < 40; ++frame)
    {
        Frame(0, 0, false);
    }
    EXPECT_EQ(0.0f, Shop::GetNoticeTime());

    // Let go over the stock itself or beside every panel: nothing happens.
    SetMoney(50000);
    DragLineTo(ForSale(PART_HULL, 1), FOR_SALE_X + 20, FOR_SALE_Y + 400);
    DragLineTo(ForSale(PART_HULL, 1), 300, 400);
    EXPECT_EQ(50000, Money());
    EXPECT_EQ(1, Items().GetCount());
}

TEST_F(ShopTest, SellingGivesAThirdOfThePriceRoundedDown)
{
    Items().Add("Cheap Shield", PART_SHIELD, 2);
    SetMoney(10);
    Open();
    ASSERT_EQ("(2) Cheap Shield", InventoryLine(0).GetText());
    DragLineTo(InventoryLine(0), FOR_SALE_X + 30, FOR_SALE_Y + 300);
    EXPECT_EQ(10 + 33, Money());
    EXPECT_EQ("(1) Cheap Shield", InventoryLine(0).GetText());
    DragLineTo(InventoryLine(0), FOR_SALE_X + 30, FOR_SALE_Y + 300);
    EXPECT_EQ(10 + 66, Money());
    EXPECT_EQ(0, Items().GetCount());
    EXPECT_EQ(0, m_pShop->GetInventoryPanel().GetList().GetCount());

    // A fitted weapon sold off its mount: $5000 / 3, and the mount is empty.
    DragLineTo(m_pShop->GetShipPanel().GetLine(ShipPanel::LINE_FRONT), FOR_SALE_X + 30, FOR_SALE_Y + 300);
    EXPECT_EQ(10 + 66 + 1666, Money());
    EXPECT_EQ("", MountName(0));
    EXPECT_EQ("No Weapon", ShipLine(ShipPanel::LINE_FRONT));
}

TEST_F(ShopTest, AHullBoughtOntoTheShipSendsTheOldHullToTheInventory)
{
    SetMoney(20000);
    Open();
    DragLineTo(ForSale(PART_HULL, 1), SHIP_X + 100, SHIP_Y + 100);
    EXPECT_EQ(13000, Money());
    ASSERT_NE(nullptr, m_pShip->GetHull());
    EXPECT_EQ("Scout Frame", m_pShip->GetHull()->GetName());
    EXPECT_EQ(160, m_pShip->GetTurnRate());
    EXPECT_EQ("Scout Frame", ShipLine(ShipPanel::LINE_HULL));
    EXPECT_EQ(1, Items().GetQuantity("Cargo Hull"));
    EXPECT_EQ("(1) Cargo Hull", InventoryLine(0).GetText());

    // The spare hull fitted from the inventory: the two hulls change places.
    DragLineTo(InventoryLine(0), SHIP_X + 100, SHIP_Y + 100);
    EXPECT_EQ("Cargo Hull", m_pShip->GetHull()->GetName());
    EXPECT_EQ(1, Items().GetQuantity("Scout Frame"));
    EXPECT_EQ(0, Items().GetQuantity("Cargo Hull"));
    EXPECT_EQ(13000, Money());

    // With a Cargo Hull already kept, the one replaced makes it two.
    Items().Add("Cargo Hull", PART_HULL, 1);
    DragLineTo(ForSale(PART_HULL, 1), SHIP_X + 100, SHIP_Y + 100);
    EXPECT_EQ(2, Items().GetQuantity("Cargo Hull"));
    EXPECT_EQ(6000, Money());

    // Hull, engine and shield never come off the ship: pressing one only shows it.
    for (int line : {ShipPanel::LINE_HULL, ShipPanel::LINE_ENGINE, ShipPanel::LINE_SHIELD})
    {
        const int before = Items().GetCount();
        const PartEntry& entry = m_pShop->GetShipPanel().GetLine(line);
        Frame(static_cast<int32_t>(entry.GetX()) + GRAB, static_cast<int32_t>(entry.GetY()) + GRAB, false);
        Frame(static_cast<int32_t>(entry.GetX()) + GRAB, static_cast<int32_t>(entry.GetY()) + GRAB, true);
        EXPECT_EQ(nullptr, m_pShop->GetDragged());
        EXPECT_EQ(entry.GetPartName(), m_pShop->GetInfoPanel().GetName().GetText());
        Frame(INVENTORY_X + 50, INVENTORY_Y + 300, true);
        Frame(INVENTORY_X + 50, INVENTORY_Y + 300, false);
        EXPECT_EQ(before, Items().GetCount());
    }
    EXPECT_EQ("Scout Frame", m_pShip->GetHull()->GetName());
    EXPECT_EQ("Cargo Thrusters", m_pShip->GetEngine()->GetName());
    EXPECT_EQ("Tin-foil Plating", m_pShip->GetShieldGenerator()->GetName());
}

TEST_F(ShopTest, AWeaponGoesToTheNearestMountAndMountsSwapTheirWeapons)
{
    SetMoney(100000);
    Open();
    ShipPanel& ship = m_pShop->GetShipPanel();
    // Between the front and the left mount, a little nearer the left one.
    DragLineTo(ForSale(PART_WEAPON, 1), 495, 190);
    EXPECT_EQ("Laser", MountName(1));
    EXPECT_EQ("Machine Gun", MountName(0));
    EXPECT_EQ("Laser", ShipLine(ShipPanel::LINE_LEFT));
    EXPECT_EQ(90000, Money());
    // A little nearer the front one: the machine gun there goes to the inventory.
    DragLineTo(ForSale(PART_WEAPON, 1), 510, 170);
    EXPECT_EQ("Laser", MountName(0));
    EXPECT_EQ(1, Items().GetQuantity("Machine Gun"));
    EXPECT_EQ(80000, Money());
    // Equal distances: the first mount in the order front, left, right, back.
    EXPECT_EQ(0, ship.NearestMount(560, 231));
    EXPECT_EQ(3, ship.NearestMount(MOUNTS[3][0], MOUNTS[3][1] + 50));

    // The front laser dragged onto the right mount: they change places, names and weapons.
    m_pShip->SetPart(PART_WEAPON + 2, "Machine Gun");
    ship.Refresh();
    DragLineTo(ship.GetLine(ShipPanel::LINE_FRONT), MOUNTS[2][0], MOUNTS[2][1]);
    EXPECT_EQ("Machine Gun", MountName(0));
    EXPECT_EQ("Laser", MountName(2));
    EXPECT_EQ("Machine Gun", ShipLine(ShipPanel::LINE_FRONT));
    EXPECT_EQ("Laser", ShipLine(ShipPanel::LINE_RIGHT));
    // Let go beside every panel, nearest the empty back mount: it moves there.
    DragLineTo(ship.GetLine(ShipPanel::LINE_RIGHT), MOUNTS[3][0], 420);
    EXPECT_EQ("", MountName(2));
    EXPECT_EQ("Laser", MountName(3));
    EXPECT_EQ("No Weapon", ShipLine(ShipPanel::LINE_RIGHT));
    // Onto the inventory: kept, and the mount empties. An empty mount cannot be picked up.
    DragLineTo(ship.GetLine(ShipPanel::LINE_BACK), INVENTORY_X + 30, INVENTORY_Y + 100);
    EXPECT_EQ("", MountName(3));
    EXPECT_EQ(1, Items().GetQuantity("Laser"));
    DragLineTo(ship.GetLine(ShipPanel::LINE_BACK), INVENTORY_X + 30, INVENTORY_Y + 100);
    EXPECT_EQ(1, Items().GetQuantity("Laser"));
    EXPECT_EQ(80000, Money());
}

TEST_F(ShopTest, PowerPlantsAndUnknownNamesNeverCostAnything)
{
    SetMoney(5000);
    Open();
    PartInfoPanel& info = m_pShop->GetInfoPanel();
    // Dropped on the ship, a power plant is refused before it is paid for.
    DragLineTo(ForSale(PART_POWER_PLANT, 0), SHIP_X + 100, SHIP_Y + 100);
    EXPECT_EQ(5000, Money());
    EXPECT_EQ(0, Items().GetCount());
    EXPECT_EQ(0.0f, Shop::GetNoticeTime());
    // Only name and price change for it: the type line stays the previous part's.
    EXPECT_EQ("Fission Cell", info.GetName().GetText());
    EXPECT_EQ("Price: $3000", info.GetPrice().GetText());
    EXPECT_EQ("Type: Hull", info.GetTypeLine().GetText());
    EXPECT_EQ(0, info.GetRowCount());
    // Kept in the inventory it is bought; from there the ship refuses it too and it stays.
    DragLineTo(ForSale(PART_POWER_PLANT, 0), INVENTORY_X + 30, INVENTORY_Y + 100);
    EXPECT_EQ(2000, Money());
    DragLineTo(InventoryLine(0), SHIP_X + 100, SHIP_Y + 100);
    EXPECT_EQ(1, Items().GetQuantity("Fission Cell"));

    // A name the catalogue does not know: no information, and nowhere does it buy or fit.
    DragLineTo(ForSale(PART_WEAPON, 2), INVENTORY_X + 30, INVENTORY_Y + 100);
    EXPECT_EQ("Fission Cell", info.GetName().GetText());
    DragLineTo(ForSale(PART_WEAPON, 2), MOUNTS[0][0], MOUNTS[0][1]);
    EXPECT_EQ(2000, Money());
    EXPECT_EQ(1, Items().GetCount());
    EXPECT_EQ("Machine Gun", MountName(0));
}

TEST_F(ShopTest, AmmunitionPacksStopAt65535AndNeedFiveHundredDollars)
{
    m_pShip->GetPilot().SetBullets(65500);
    m_pShip->GetPilot().SetMissiles(65535 - 10);
    SetMoney(1500);
    Open();
    ForSalePanel& panel = m_pShop->GetForSalePanel();
    ClickButton(panel.GetAmmoButton(0));
    EXPECT_EQ(65535, m_pShip->GetPilot().GetBullets());
    EXPECT_EQ(1000, Money());
    EXPECT_EQ("65535", m_pShop->GetShipPanel().GetAmmoCount(0).GetText());
    ClickButton(panel.GetAmmoButton(1));
    EXPECT_EQ(50, m_pShip->GetPilot().GetEnergy());
    ClickButton(panel.GetAmmoButton(2));
    EXPECT_EQ(65535, m_pShip->GetPilot().GetMissiles());
    EXPECT_EQ(0, Money());
    // Too little money: the notice, and no ammunition.
    EXPECT_EQ(0.0f, Shop::GetNoticeTime());
    ClickButton(panel.GetAmmoButton(1));
    EXPECT_EQ(50, m_pShip->GetPilot().GetEnergy());
    EXPECT_EQ(0, Money());
    EXPECT_GT(Shop::GetNoticeTime(), 0.0f);
}

TEST_F(ShopTest, AnUnreadableShopFileGivesAnEmptyShopThatStillSellsAmmunition)
{
    SetMoney(600);
    Shop& shop = Open("Campaign\\nothing_here.shp");
    EXPECT_EQ("", shop.GetTitle().GetText());
    for (int kind = 0; kind < NUM_PART_KINDS; ++kind)
    {
        EXPECT_EQ(nullptr, shop.GetForSalePanel().GetKindButton(kind)) << kind;
    }
    ClickButton(shop.GetForSalePanel().GetAmmoButton(0));
    EXPECT_EQ(600, m_pShip->GetPilot().GetBullets());
    EXPECT_EQ(100, Money());
}

TEST_F(ShopTest, PartInformationShowsEachKindWithItsLabels)
{
    Open();
    PartInfoPanel& info = m_pShop->GetInfoPanel();
    // The shop opens on the Cargo Hull.
    EXPECT_EQ("Cargo Hull", info.GetName().GetText());
    EXPECT_EQ("Type: Hull", info.GetTypeLine().GetText());
    EXPECT_EQ("Price: $2000", info.GetPrice().GetText());
    ASSERT_EQ(2, info.GetRowCount());
    EXPECT_EQ("Max Rotation:", info.GetLabel(0).GetText());
    EXPECT_EQ("110 degrees/sec", info.GetValue(0).GetText());
    EXPECT_EQ("Armor Strength:", info.GetLabel(1).GetText());
    EXPECT_EQ("450", info.GetValue(1).GetText());

    info.Show(g_pPartCatalog->Find("Cargo Thrusters", PART_ENGINE));
    EXPECT_EQ("Type: Engine", info.GetTypeLine().GetText());
    ASSERT_EQ(3, info.GetRowCount());
    EXPECT_EQ("260 meters/sec", info.GetValue(0).GetText());
    EXPECT_EQ("Min Speed:", info.GetLabel(1).GetText());
    EXPECT_EQ("20 meters/sec", info.GetValue(1).GetText());
    EXPECT_EQ("80 meters/sec^2", info.GetValue(2).GetText());

    // Pressing a line shows its part: the shield on the ship, a weapon for sale.
    const PartEntry& shield = m_pShop->GetShipPanel().GetLine(ShipPanel::LINE_SHIELD);
    Click(static_cast<int32_t>(shield.GetX()) + GRAB, static_cast<int32_t>(shield.GetY()) + GRAB);
    EXPECT_EQ("Type: Shield", info.GetTypeLine().GetText());
    EXPECT_EQ("Shield Strength:", info.GetLabel(0).GetText());
    EXPECT_EQ("60", info.GetValue(0).GetText());
    EXPECT_EQ("Absorbtion Rate:", info.GetLabel(1).GetText());
    EXPECT_EQ("3 per hit", info.GetValue(1).GetText());
    const PartEntry& laser = ForSale(PART_WEAPON, 1);
    Click(static_cast<int32_t>(laser.GetX()) + GRAB, static_cast<int32_t>(laser.GetY()) + GRAB);
    EXPECT_EQ("Laser", info.GetName().GetText());
    EXPECT_EQ("Type: Weapon", info.GetTypeLine().GetText());
    EXPECT_EQ("Firing Rate:", info.GetLabel(0).GetText());
    EXPECT_EQ("2.00 shots/sec", info.GetValue(0).GetText());
    EXPECT_EQ("Damage:", info.GetLabel(1).GetText());
}

TEST_F(ShopTest, ListsScrollALineAtATimeWithinTheirEnds)
{
    forge::ShopRecord big;
    for (int i = 0; i < 11; ++i)
    {
        big.names[forge::KIND_HULL].push_back("Hull " + std::to_string(i));
    }
    WriteGameFile("Campaign\\big.shp", big);
    Open("Campaign\\big.shp");
    ForSalePanel& panel = m_pShop->GetForSalePanel();
    ClickButton(panel.GetKindButton(PART_HULL));
    PartList& list = panel.GetList();
    ASSERT_EQ(11, list.GetCount());
    EXPECT_EQ(8, list.GetVisibleLines());
    EXPECT_EQ(list.GetEntry(0), list.EntryAt(static_cast<int32_t>(list.GetX()) + GRAB, list.GetLineY(0) + GRAB));
    EXPECT_EQ(nullptr, list.EntryAt(static_cast<int32_t>(list.GetX()) + GRAB, list.GetLineY(8) + GRAB));

    ClickButton(list.GetUpArrow());
    EXPECT_EQ(0, list.GetFirstVisible());
    for (int i = 0; i < 5; ++i)
    {
        ClickButton(list.GetDownArrow());
    }
    EXPECT_EQ(3, list.GetFirstVisible());
    // The top line shown is now "Hull 3", where "Hull 0" was.
    EXPECT_EQ(list.GetEntry(3), list.EntryAt(static_cast<int32_t>(list.GetX()) + GRAB, list.GetLineY(0) + GRAB));
    ClickButton(list.GetUpArrow());
    EXPECT_EQ(2, list.GetFirstVisible());
    // Opened again, a list starts at its top.
    ClickButton(panel.GetBackButton());
    ClickButton(panel.GetKindButton(PART_HULL));
    EXPECT_EQ(0, list.GetFirstVisible());
}

TEST_F(ShopTest, DoneSavesThePilotWithEverythingBoughtAndSold)
{
    SetMoney(9000);
    Open();
    DragLineTo(ForSale(PART_HULL, 1), SHIP_X + 100, SHIP_Y + 100);
    ClickButton(m_pShop->GetForSalePanel().GetAmmoButton(0));
    EXPECT_FALSE(Click(900, 600));
    ASSERT_TRUE(ClickButton(m_pShop->GetDoneButton()));

    Pilot saved("Saves\\Tester0.sav");
    Inventory items;
    ASSERT_TRUE(saved.Load(&items));
    EXPECT_EQ(1500, saved.GetMoney());
    EXPECT_EQ(600, saved.GetBullets());
    EXPECT_EQ("Scout Frame", saved.GetHullName());
    EXPECT_EQ("Machine Gun", saved.GetWeaponName(0));
    EXPECT_EQ(1, items.GetQuantity("Cargo Hull"));
    EXPECT_FALSE(std::filesystem::exists("Saves/Tester0.sav.tmp"));
}
