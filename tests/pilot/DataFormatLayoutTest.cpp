// Each data format written through DataFile by the forge's writers, compared byte for byte with
// a layout spelled out here field by field, and read back. The expected bytes are written by
// hand so that the same field-order mistake in writer and reader cannot cancel out.
#include "forge/Formats.h"
#include "pilot/DataFile.h"
#include "sim/QuadNode.h"
#include "support/TestBitmaps.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

namespace
{

namespace fs = std::filesystem;

// Hand-built little-endian layouts.
class Layout
{
public:
    Layout& U8(uint32_t p_value)
    {
        m_bytes.push_back(uint8_t(p_value));
        return *this;
    }
    Layout& U16(uint32_t p_value) { return U8(p_value & 0xFF).U8((p_value >> 8) & 0xFF); }
    Layout& I16(int32_t p_value) { return U16(uint32_t(p_value) & 0xFFFF); }
    Layout& I32(int32_t p_value)
    {
        const uint32_t bits = uint32_t(p_value);
        return U8(bits).U8(bits >> 8).U8(bits >> 16).U8(bits >> 24);
    }
    Layout& Str(const std::string& p_text)
    {
        U8(uint32_t(p_text.size()));
        m_bytes.insert(m_bytes.end(), p_text.begin(), p_text.end());
        return *this;
    }
    Layout& Chars(const std::string& p_text)
    {
        m_bytes.insert(m_bytes.end(), p_text.begin(), p_text.end());
        return *this;
    }
    const std::vector<uint8_t>& Bytes() const { return m_bytes; }

private:
    std::vector<uint8_t> m_bytes;
};

class DataFormatLayoutTest : public testsupport::WorkDirTest
{
protected:
    // Writes the record, checks the bytes, and answers the record read back from the file.
    template <typename Record>
    Record RoundTrip(const Record& p_record, const Layout& p_expected)
    {
        std::string error;
        EXPECT_TRUE(forge::WriteWholeFile("record.bin", p_record, error)) << error;
        std::ifstream file("record.bin", std::ios::binary);
        const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        EXPECT_EQ(bytes, p_expected.Bytes());
        Record back;
        EXPECT_TRUE(forge::ReadWholeFile("record.bin", back, error)) << error;
        return back;
    }

};

TEST_F(DataFormatLayoutTest, Hull)
{
    forge::HullRecord hull;
    hull.name = "Cargo Hull";
    hull.image = "art\\hulls\\cargo\\cargo";
    hull.price = 2000;
    hull.armour = 200;
    hull.turnRate = 110;
    hull.mounts = {{{32, 2}, {8, 34}, {56, 34}, {32, 62}}};
    hull.box = {-10, 6, 44, 54};
    Layout layout;
    layout.Str("Cargo Hull").Str("art\\hulls\\cargo\\cargo").I32(2000).I32(200).U16(110);
    layout.U16(32).U16(2).U16(8).U16(34).U16(56).U16(34).U16(32).U16(62);
    layout.I16(-10).I16(6).U16(44).U16(54);
    EXPECT_EQ(layout.Bytes().size(), 1 + 10 + 1 + 21 + 34u); // two strings and 34 bytes of numbers

    const forge::HullRecord back = RoundTrip(hull, layout);
    EXPECT_EQ(back.name, "Cargo Hull");
    EXPECT_EQ(back.image, "art\\hulls\\cargo\\cargo");
    EXPECT_EQ(back.price, 2000);
    EXPECT_EQ(back.armour, 200);
    EXPECT_EQ(back.turnRate, 110);
    EXPECT_EQ(back.mounts[1].x, 8);
    EXPECT_EQ(back.mounts[3].y, 62);
    EXPECT_EQ(back.box.x, -10);
    EXPECT_EQ(back.box.height, 54);
}

TEST_F(DataFormatLayoutTest, EngineShieldPowerPlantAndCopilot)
{
    forge::EngineRecord engine{"Cargo Thrusters", 1500, 10, 260, 80};
    Layout engineLayout;
    engineLayout.Str("Cargo Thrusters").I32(1500).U16(10).U16(260).U16(80);
    const forge::EngineRecord engineBack = RoundTrip(engine, engineLayout);
    EXPECT_EQ(engineBack.reverseSpeed, 10);
    EXPECT_EQ(engineBack.forwardSpeed, 260);
    EXPECT_EQ(engineBack.acceleration, 80);

    forge::ShieldRecord shield{"Tin-foil Plating", 1000, 40, 3};
    Layout shieldLayout;
    shieldLayout.Str("Tin-foil Plating").I32(1000).I32(40).U16(3);
    const forge::ShieldRecord shieldBack = RoundTrip(shield, shieldLayout);
    EXPECT_EQ(shieldBack.capacity, 40);
    EXPECT_EQ(shieldBack.perHit, 3);

    forge::PowerPlantRecord plant;
    plant.header = {"art\\parts\\cell.bmp", "Fission Cell", 100, 3000};
    plant.value2 = -5;
    plant.flag1 = 1;
    plant.flag2 = 0;
    Layout plantLayout;
    plantLayout.Str("art\\parts\\cell.bmp").Str("Fission Cell").I32(100).I32(3000).I32(-5).U8(1).U8(0);
    const forge::PowerPlantRecord plantBack = RoundTrip(plant, plantLayout);
    EXPECT_EQ(plantBack.header.picture, "art\\parts\\cell.bmp");
    EXPECT_EQ(plantBack.header.value, 100);
    EXPECT_EQ(plantBack.value2, -5);
    EXPECT_EQ(plantBack.flag1, 1);

    forge::CopilotRecord copilot{"Rook Mercer", 2500};
    Layout copilotLayout;
    copilotLayout.Str("Rook Mercer").I32(2500);
    EXPECT_EQ(RoundTrip(copilot, copilotLayout).price, 2500);
}

TEST_F(DataFormatLayoutTest, MachineGun)
{
    forge::WeaponRecord gun;
    gun.header = {"", "Machine Gun", 0, 5000}; // a picture of length 0: no picture
    gun.minDamage = 6;
    gun.maxDamage = 13;
    gun.extraValue = 1200;
    gun.extraByte = 8;
    Layout layout;
    layout.Str("").Str("Machine Gun").I32(0).I32(5000);
    layout.U8(13).U8(13).U16(0).I32(6).I32(13); // the two bytes and the 16-bit value, then damage
    layout.I32(1200).U8(8);                      // the machine gun's own two values
    const forge::WeaponRecord back = RoundTrip(gun, layout);
    EXPECT_EQ(back.header.name, "Machine Gun");
    EXPECT_EQ(back.byte1, 13);
    EXPECT_EQ(back.minDamage, 6);
    EXPECT_EQ(back.maxDamage, 13);
    EXPECT_EQ(back.extraValue, 1200);
    EXPECT_EQ(back.extraByte, 8);
}

TEST_F(DataFormatLayoutTest, Entity)
{
    forge::EntityRecord entity;
    entity.hullPicture = "art\\hulls\\dart\\dart";
    entity.minSpeed = 120;
    entity.maxSpeed = 320;
    entity.acceleration = 110;
    entity.turnRate = 160;
    entity.weapon = "Machine Gun";
    entity.armour = 45;
    entity.shield = 20;
    entity.behaviour = 1;
    entity.team = 0;
    entity.box = {8, -6, 32, 38};
    Layout layout;
    layout.Str("art\\hulls\\dart\\dart").U16(120).U16(320).U16(110).U16(160).Str("Machine Gun");
    layout.I32(45).I32(20).U8(1).U8(0).I16(8).I16(-6).U16(32).U16(38);
    const forge::EntityRecord back = RoundTrip(entity, layout);
    EXPECT_EQ(back.hullPicture, entity.hullPicture);
    EXPECT_EQ(back.maxSpeed, 320);
    EXPECT_EQ(back.turnRate, 160);
    EXPECT_EQ(back.weapon, "Machine Gun");
    EXPECT_EQ(back.shield, 20);
    EXPECT_EQ(back.behaviour, 1);
    EXPECT_EQ(back.team, 0);
    EXPECT_EQ(back.box.y, -6);
}

TEST_F(DataFormatLayoutTest, LevelWithTilesInQuadtreeOrder)
{
    // A 10 x 10 map: four 5 x 5 leaves, top-left, top-right, bottom-left, bottom-right, each
    // column by column. Tile (x, y) carries the number 100 + 10 y + x.
    std::vector<uint16_t> grid;
    for (uint16_t y = 0; y < 10; ++y)
        for (uint16_t x = 0; x < 10; ++x)
            grid.push_back(uint16_t(100 + 10 * y + x));
    forge::LevelRecord level;
    level.tileSet = "art\\tiles\\space000.bmp";
    level.mapSize = 10;
    level.tiles = forge::GridToFileOrder(grid, 10);
    level.scenery = {{"beacon_alpha", "beacon.bmp", 4200, -1}, {"", "rock.bmp", 1, 2}};
    level.reserved = 0;
    level.ships = {{"001", "", 7200, 5600}, {"00a", "boss", -3, 4}};

    Layout layout;
    layout.Str("art\\tiles\\space000.bmp").U16(10);
    const int leafX[4] = {0, 5, 0, 5};
    const int leafY[4] = {0, 0, 5, 5};
    for (int leaf = 0; leaf < 4; ++leaf)
        for (int column = 0; column < 5; ++column)
            for (int row = 0; row < 5; ++row)
                layout.U16(uint32_t(100 + 10 * (leafY[leaf] + row) + leafX[leaf] + column));
    layout.I32(2).Str("beacon_alpha").Str("beacon.bmp").I32(4200).I32(-1).Str("").Str("rock.bmp").I32(1).I32(2);
    layout.U8(0);
    layout.I32(2).Chars("001").Str("").I32(7200).I32(5600).Chars("00a").Str("boss").I32(-3).I32(4);

    const forge::LevelRecord back = RoundTrip(level, layout);
    EXPECT_EQ(back.tileSet, level.tileSet);
    EXPECT_EQ(back.mapSize, 10);
    EXPECT_EQ(forge::FileOrderToGrid(back.tiles, 10), grid);
    ASSERT_EQ(back.scenery.size(), 2u);
    EXPECT_EQ(back.scenery[0].name, "beacon_alpha");
    EXPECT_EQ(back.scenery[0].y, -1);
    EXPECT_EQ(back.scenery[1].picture, "rock.bmp");
    ASSERT_EQ(back.ships.size(), 2u);
    EXPECT_EQ(back.ships[0].kind, "001");
    EXPECT_EQ(back.ships[1].kind, "00a");
    EXPECT_EQ(back.ships[1].name, "boss");
    EXPECT_EQ(back.ships[1].x, -3);
}

TEST(DataFormatTileOrder, QuartersNestDownToFiveByFiveLeaves)
{
    EXPECT_TRUE(forge::IsValidMapSize(5));
    EXPECT_TRUE(forge::IsValidMapSize(80));
    EXPECT_TRUE(forge::IsValidMapSize(160));
    EXPECT_FALSE(forge::IsValidMapSize(0));
    EXPECT_FALSE(forge::IsValidMapSize(15)); // 5 x 3: quarters would not be whole leaves
    EXPECT_FALSE(forge::IsValidMapSize(60));
    EXPECT_FALSE(forge::IsValidMapSize(81));

    // On a 20 x 20 map the first 100 numbers are the top-left 10 x 10 quarter, itself four
    // leaves; number 25 starts that quarter's top-right leaf, 100 the top-right quarter.
    std::vector<uint16_t> grid(400);
    for (size_t i = 0; i < grid.size(); ++i)
        grid[i] = uint16_t(i); // y * 20 + x
    const std::vector<uint16_t> order = forge::GridToFileOrder(grid, 20);
    ASSERT_EQ(order.size(), 400u);
    EXPECT_EQ(order[0], 0);          // (0, 0)
    EXPECT_EQ(order[4], 4 * 20);     // (0, 4)
    EXPECT_EQ(order[5], 1);          // (1, 0): a leaf goes column by column
    EXPECT_EQ(order[25], 5);         // (5, 0)
    EXPECT_EQ(order[50], 5 * 20);    // (0, 5)
    EXPECT_EQ(order[100], 10);       // (10, 0)
    EXPECT_EQ(order[200], 10 * 20);  // (0, 10)
    EXPECT_EQ(order[399], 399);      // (19, 19)
    EXPECT_EQ(forge::FileOrderToGrid(order, 20), grid);

    // The order is the one the game's leaves draw in: entry TileIndex(column, row) of the
    // top-left leaf is the tile at that column and row.
    for (int column = 0; column < 5; ++column)
        for (int row = 0; row < 5; ++row)
            EXPECT_EQ(order[QuadNode::TileIndex(column, row)], grid[row * 20 + column]);
}

TEST_F(DataFormatLayoutTest, Shop)
{
    forge::ShopRecord shop;
    shop.title = "Kestrel";
    shop.value1 = 3;
    shop.value2 = 4;
    shop.names[forge::KIND_HULL] = {"Cargo Hull", "Scout Frame"};
    shop.names[forge::KIND_SHIELD] = {"Deflector Mk I"};
    shop.names[forge::KIND_WEAPON] = {"Laser"};
    Layout layout;
    layout.Str("Kestrel").U8(3).U8(4);
    layout.U8(2).Str("Cargo Hull").Str("Scout Frame"); // hulls
    layout.U8(0);                                      // engines
    layout.U8(1).Str("Deflector Mk I");                // shields
    layout.U8(0).U8(0);                                // power plants, copilots
    layout.U8(1).Str("Laser");                         // weapons
    const forge::ShopRecord back = RoundTrip(shop, layout);
    EXPECT_EQ(back.title, "Kestrel");
    EXPECT_EQ(back.value2, 4);
    EXPECT_EQ(back.names[forge::KIND_HULL], shop.names[forge::KIND_HULL]);
    EXPECT_TRUE(back.names[forge::KIND_ENGINE].empty());
    EXPECT_EQ(back.names[forge::KIND_WEAPON], std::vector<std::string>{"Laser"});
}

TEST_F(DataFormatLayoutTest, PilotWithDefaultsAndInventory)
{
    forge::PilotRecord pilot; // a new pilot's defaults
    pilot.pilotName = "Ada";
    pilot.portrait = "Portraits\\ada.bmp";
    pilot.inventory = {{2, 0, "Scout Frame"}, {1, 5, "Laser"}};
    Layout layout;
    layout.I32(0).U16(500).U16(0).U16(0).U16(0);
    layout.Str("Ada").Str("Portraits\\ada.bmp").Str("");
    layout.Str("Cargo Hull").Str("Cargo Thrusters").Str("").Str("Tin-foil Plating");
    layout.Str("Machine Gun").Str("").Str("").Str("");
    layout.U16(2).U16(2).U8(0).Str("Scout Frame").U16(1).U8(5).Str("Laser");
    const forge::PilotRecord back = RoundTrip(pilot, layout);
    EXPECT_EQ(back.money, 0);
    EXPECT_EQ(back.bullets, 500);
    EXPECT_EQ(back.pilotName, "Ada");
    EXPECT_EQ(back.missionName, "");
    EXPECT_EQ(back.hullName, "Cargo Hull");
    EXPECT_EQ(back.shieldName, "Tin-foil Plating");
    EXPECT_EQ(back.weaponNames[0], "Machine Gun");
    EXPECT_EQ(back.weaponNames[3], "");
    ASSERT_EQ(back.inventory.size(), 2u);
    EXPECT_EQ(back.inventory[1].kind, 5);
    EXPECT_EQ(back.inventory[1].name, "Laser");
}

TEST_F(DataFormatLayoutTest, StrictReadsTellShortAndOverlongFilesApart)
{
    forge::EngineRecord engine{"E", 1, 2, 3, 4};
    std::string error;
    ASSERT_TRUE(forge::WriteWholeFile("e.eng", engine, error));

    ASSERT_TRUE(testsupport::WriteFileBytes("short.eng", {1, 'E', 1, 0, 0, 0, 2, 0, 3, 0, 4})); // 1 byte short
    forge::EngineRecord back;
    EXPECT_FALSE(forge::ReadWholeFile("short.eng", back, error));
    EXPECT_NE(error.find("ends before"), std::string::npos) << error;
    EXPECT_EQ(back.forwardSpeed, 3);
    EXPECT_EQ(back.acceleration, 0); // read past the end as the game reads it

    ASSERT_TRUE(testsupport::WriteFileBytes("long.eng", {1, 'E', 1, 0, 0, 0, 2, 0, 3, 0, 4, 0, 99}));
    EXPECT_FALSE(forge::ReadWholeFile("long.eng", back, error));
    EXPECT_NE(error.find("1 bytes after"), std::string::npos) << error;

    EXPECT_FALSE(forge::ReadWholeFile("none.eng", back, error));

    // A level whose counts promise far more than the file holds stops at its end.
    ASSERT_TRUE(testsupport::WriteFileBytes("huge.lvl", {0, 0xFF, 0xFF, 1, 0}));
    forge::LevelRecord level;
    EXPECT_FALSE(forge::ReadWholeFile("huge.lvl", level, error));
    EXPECT_LE(level.tiles.size(), 2u);

    // A text too long for a length byte is refused and leaves no file.
    forge::ShopRecord shop;
    shop.title = std::string(300, 't');
    EXPECT_FALSE(forge::WriteWholeFile("bad.shp", shop, error));
    EXPECT_FALSE(fs::exists("bad.shp"));
}

} // namespace
