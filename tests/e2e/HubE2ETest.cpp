// The hub and the shop in the real game, driven by the mouse of an input script: a pilot with
// money fits a new hull, sells the machine gun, buys bullets, leaves the shop and flies the new
// hull; a pilot without money is told so.
#include "app/DevOptions.h"
#include "e2e/GameProcess.h"
#include "e2e/PictureMatch.h"
#include "pilot/ForSalePanel.h"
#include "pilot/Inventory.h"
#include "pilot/PartCatalog.h"
#include "pilot/PartList.h"
#include "pilot/Pilot.h"
#include "platform/PngFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace
{
// Every position the script clicks, in screen pixels. The buttons and panels stand where the
// game's layout puts them; the list line is the second of the "Hulls" list.
constexpr int SHOP_BUTTON[2] = {705 + 40, 680 + 20};
constexpr int START_BUTTON[2] = {850 + 70, 680 + 20};
constexpr int DONE_BUTTON[2] = {788 + 70, 680 + 20};
constexpr int FOR_SALE[2] = {800, 115};
constexpr int SHIP[2] = {455, 130};
// The first kind button is "Hulls" (the shop sells hulls); the first ammunition pack is bullets.
constexpr int HULLS_BUTTON[2] = {FOR_SALE[0] + 100, FOR_SALE[1] + ForSalePanel::FIRST_KIND_Y + 16};
constexpr int BULLETS_BUTTON[2] = {FOR_SALE[0] + 100, FOR_SALE[1] + ForSalePanel::FIRST_AMMO_Y + 16};
constexpr int SCOUT_LINE[2] = {FOR_SALE[0] + ForSalePanel::LIST_X + 14,
                               FOR_SALE[1] + ForSalePanel::LIST_Y + PartList::ARROW_HEIGHT + PartList::ARROW_GAP +
                                   ForSalePanel::LINE_HEIGHT + 6};
// The front mount's name, where the machine gun is.
constexpr int FRONT_MOUNT[2] = {SHIP[0] + 90 + 8, SHIP[1] + 2 + 6};
// In the middle of the ship picture, and low in the for-sale panel (under "Ammo").
constexpr int ON_SHIP[2] = {SHIP[0] + 150, SHIP[1] + 120};
constexpr int ON_FOR_SALE[2] = {FOR_SALE[0] + 160, FOR_SALE[1] + 280};

constexpr int32_t START_MONEY = 20000;
constexpr int32_t SCOUT_PRICE = 7000;
constexpr int32_t MACHINE_GUN_PRICE = 5000;
constexpr int32_t PACK_PRICE = 500;
// Where the mission view shows the player's ship: its top-left corner 210 below the centre.
constexpr int SHIP_ON_SCREEN[2] = {512, 595};

// An input script of mouse moves and clicks, frame by frame: the game's cursor starts at the
// top-left corner and moves two pixels a count.
class MouseScript
{
public:
    void MoveTo(int p_frame, int p_x, int p_y)
    {
        m_text << p_frame << " mouse move " << (p_x - m_x) / 2 << " " << (p_y - m_y) / 2 << "\n";
        m_x += (p_x - m_x) / 2 * 2;
        m_y += (p_y - m_y) / 2 * 2;
    }
    void Button(int p_frame, bool p_down) { m_text << p_frame << " mouse button 0 " << (p_down ? "down" : "up") << "\n"; }
    // Moves there, presses and lets go in the next three frames; answers the frame after.
    int Click(int p_frame, const int p_at[2])
    {
        MoveTo(p_frame, p_at[0], p_at[1]);
        Button(p_frame + 1, true);
        Button(p_frame + 2, false);
        return p_frame + 3;
    }
    // Presses at p_from, moves to p_to in four steps with the button held and lets go there;
    // answers the frame of the last step, in which the drag is still under way.
    int Drag(int p_frame, const int p_from[2], const int p_to[2])
    {
        MoveTo(p_frame, p_from[0], p_from[1]);
        Button(p_frame + 1, true);
        for (int step = 1; step <= 4; ++step)
        {
            MoveTo(p_frame + 1 + step, p_from[0] + (p_to[0] - p_from[0]) * step / 4,
                   p_from[1] + (p_to[1] - p_from[1]) * step / 4);
        }
        Button(p_frame + 7, false);
        return p_frame + 5;
    }
    void Save(const std::string& p_path) const { std::ofstream(p_path) << m_text.str(); }

private:
    std::ostringstream m_text;
    int m_x = 0;
    int m_y = 0;
};

// The part catalogue of the working directory while it lives.
struct CatalogueOfGameDirectory
{
    CatalogueOfGameDirectory() { CreatePartCatalog(); }
    ~CatalogueOfGameDirectory() { DestroyPartCatalog(); }
    CatalogueOfGameDirectory(const CatalogueOfGameDirectory&) = delete;
    CatalogueOfGameDirectory& operator=(const CatalogueOfGameDirectory&) = delete;
};

class HubE2ETest : public e2e::GameDirTest
{
protected:
    HubE2ETest() : GameDirTest("korvath-e2e-hub") {}

    void SetUp() override
    {
        GameDirTest::SetUp();
        if (HasFatalFailure())
        {
            return;
        }
        e2e::BuildGameData(m_dir);
        if (HasFatalFailure())
        {
            return;
        }
        m_oldDir = fs::current_path();
        fs::current_path(m_dir);
    }
    void TearDown() override
    {
        std::error_code error;
        // KORVATH_TEST_SCREENSHOT_DIR keeps what the game showed, to look at.
        const char* keep = std::getenv("KORVATH_TEST_SCREENSHOT_DIR");
        for (const auto& entry : fs::directory_iterator(m_dir, error))
        {
            if (keep != nullptr && keep[0] != '\0' && entry.path().extension() == ".png")
            {
                fs::copy_file(entry.path(), fs::path(keep) / ("hub-e2e-" + entry.path().filename().string()),
                              fs::copy_options::overwrite_existing, error);
            }
        }
        fs::current_path(m_oldDir, error);
        GameDirTest::TearDown();
    }

    void WritePilot(const char* p_file, int32_t p_money)
    {
        Pilot pilot(p_file);
        pilot.SetPilotName("Ace");
        pilot.SetMoney(p_money);
        pilot.SetMissionName("Mission1");
        ASSERT_TRUE(pilot.Save(nullptr));
    }
    e2e::ProcessResult Play(const char* p_pilot, const MouseScript& p_script, const std::string& p_screenshots,
                            int p_frames)
    {
        p_script.Save(m_dir + "/script.txt");
        return e2e::RunGame(m_dir, {"--windowed", "--pilot", p_pilot},
                            e2e::GameEnv({{"KORVATH_FIXED_DT", "0.05"},
                                          {"KORVATH_INPUT_SCRIPT", "script.txt"},
                                          {"KORVATH_SCREENSHOT_AT", p_screenshots},
                                          {"KORVATH_EXIT_AFTER", std::to_string(p_frames)}}),
                            120);
    }
    std::string Screenshot(int p_frame) const { return m_dir + "/" + DevOptions::ScreenshotName(p_frame); }

    // The best match of a ship's still frames near where the mission view shows the ship.
    double ShipMatch(const std::string& p_screenshot, const std::string& p_base) const
    {
        double best = 0.0;
        for (const char* frame : {"_short_still0000.bmp", "_long_still0000.bmp"})
        {
            for (int dy = -3; dy <= 3; ++dy)
            {
                for (int dx = -3; dx <= 3; ++dx)
                {
                    best = std::max(best, e2e::PictureMatch(p_screenshot, m_dir + "/" + p_base + frame,
                                                            SHIP_ON_SCREEN[0] + dx, SHIP_ON_SCREEN[1] + dy));
                }
            }
        }
        return best;
    }

    fs::path m_oldDir;
};
} // namespace

TEST_F(HubE2ETest, APilotFitsTheShipInTheShopAndFliesTheNewHull)
{
    WritePilot("Saves\\Ace0.sav", START_MONEY);
    MouseScript script;
    int frame = script.Click(5, SHOP_BUTTON);
    frame = script.Click(frame + 2, HULLS_BUTTON);
    const int listOpen = frame + 1;
    // The Scout Frame onto the ship: the Cargo Hull goes to the inventory.
    const int dragging = script.Drag(frame + 2, SCOUT_LINE, ON_SHIP);
    frame = dragging + 5;
    // The machine gun off its mount, sold.
    frame = script.Drag(frame, FRONT_MOUNT, ON_FOR_SALE) + 5;
    frame = script.Click(frame, BULLETS_BUTTON);
    frame = script.Click(frame + 2, DONE_BUTTON);
    const int hubAgain = frame + 1;
    frame = script.Click(frame + 2, START_BUTTON);
    const int flying = frame + 4;
    const e2e::ProcessResult run =
        Play("Saves\\Ace0.sav", script,
             "3," + std::to_string(listOpen) + "," + std::to_string(dragging) + "," + std::to_string(hubAgain) + "," +
                 std::to_string(flying),
             flying);
    ASSERT_TRUE(run.exited) << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;

    // The hub came first, and came back after "Done".
    EXPECT_GT(e2e::PictureMatch(Screenshot(3), m_dir + "/art/planets.bmp", 0, 0), 0.8);
    EXPECT_GT(e2e::PictureMatch(Screenshot(hubAgain), m_dir + "/art/planets.bmp", 0, 0), 0.8);

    // The inventory is read by part names, which the catalogue of the game directory knows.
    const CatalogueOfGameDirectory catalogue;
    Pilot pilot("Saves\\Ace0.sav");
    Inventory items;
    ASSERT_TRUE(pilot.Load(&items));
    EXPECT_EQ("Scout Frame", pilot.GetHullName());
    EXPECT_EQ("", pilot.GetWeaponName(0));
    EXPECT_EQ(1, items.GetQuantity("Cargo Hull"));
    EXPECT_EQ(1, items.GetCount());
    EXPECT_EQ(START_MONEY - SCOUT_PRICE + MACHINE_GUN_PRICE / 3 - PACK_PRICE, pilot.GetMoney());
    EXPECT_EQ(Pilot::DEFAULT_BULLETS + 100, pilot.GetBullets());
    EXPECT_EQ("Mission1", pilot.GetMissionName());

    // "Start Mission" flies the Scout Frame.
    const double scout = ShipMatch(Screenshot(flying), "art/hulls/scout/scout");
    const double cargo = ShipMatch(Screenshot(flying), "art/hulls/cargo/cargo");
    EXPECT_GT(scout, 0.7);
    EXPECT_GT(scout, cargo + 0.2);
}

TEST_F(HubE2ETest, APilotWithoutMoneyIsToldInsufficientFunds)
{
    WritePilot("Saves\\Poor0.sav", PACK_PRICE - 1);
    MouseScript script;
    int frame = script.Click(5, SHOP_BUTTON);
    frame = script.Click(frame + 2, BULLETS_BUTTON);
    const int told = frame + 2;
    const e2e::ProcessResult run = Play("Saves\\Poor0.sav", script, std::to_string(told), told);
    ASSERT_TRUE(run.exited) << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;

    // The red notice between the ship and the part information, over dark space.
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> shot;
    ASSERT_TRUE(platform::ReadPng(Screenshot(told), width, height, shot));
    int red = 0;
    for (int y = 390; y < 420; ++y)
    {
        for (int x = 380; x < 640; ++x)
        {
            const uint8_t* pixel = &shot[(static_cast<size_t>(y) * width + x) * 4];
            red += pixel[0] > 200 && pixel[1] < 140 && pixel[2] < 140 ? 1 : 0;
        }
    }
    EXPECT_GT(red, 300);
    // Nothing was bought, and nothing saved.
    Pilot pilot("Saves\\Poor0.sav");
    ASSERT_TRUE(pilot.Load(nullptr));
    EXPECT_EQ(PACK_PRICE - 1, pilot.GetMoney());
    EXPECT_EQ(Pilot::DEFAULT_BULLETS, pilot.GetBullets());
}
