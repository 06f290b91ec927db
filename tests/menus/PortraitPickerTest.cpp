#include "app/Renderer.h"
#include "gfx/Image.h"
#include "gfx/TextureManager.h"
#include "menus/PortraitPicker.h"
#include "pilot/Pilot.h"
#include "support/GlFixture.h"
#include "support/TestBitmaps.h"
#include "support/WorkDir.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using testsupport::ReadPixel;
using testsupport::Rgb;

namespace
{
namespace fs = std::filesystem;

// Placed as the pilot menu places the portraits: arrows 35 x 80 at x 275 and 770, y 259.
constexpr float STRIP_X = 275.0f;
constexpr float STRIP_Y = 200.0f;

void Touch(const std::string& p_path)
{
    fs::create_directories(fs::path(p_path).parent_path());
    std::ofstream(p_path) << "x";
}

// Clicks an arrow of a strip at (STRIP_X, STRIP_Y).
void Step(uitest::UiInput& p_ui, PortraitPicker& p_picker, bool p_right)
{
    const int32_t x = p_right ? 785 : 290;
    p_ui.Frame(x, 300, true);
    p_picker.Update(0.05f);
    p_ui.Frame(x, 300, false);
    p_picker.Update(0.05f);
}

std::vector<int32_t> Cells(const PortraitPicker& p_picker)
{
    return {p_picker.GetLeftEntry()->m_index, p_picker.GetIndex(), p_picker.GetRightEntry()->m_index};
}

class PortraitPickerTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        m_picker.SetPosition(STRIP_X, STRIP_Y);
    }
    uitest::UiInput m_ui;
    PortraitList m_picker{&m_ui.cursor};
};
} // namespace

TEST_F(PortraitPickerTest, ThreePortraitsMakeARingNewestFirst)
{
    // Listed whatever the case of their names; other files and folders are not portraits.
    for (const char* name : {"Portraits/c.bmp", "Portraits/B.bmp", "Portraits/a.bmp", "Portraits/notes.txt"})
    {
        Touch(name);
    }
    fs::create_directories("Portraits/old.bmp");
    m_picker.Scan();
    ASSERT_EQ(3, m_picker.GetNumEntries());
    EXPECT_EQ("Portraits\\a.bmp", m_picker.GetEntry(0)->m_file);
    EXPECT_EQ("Portraits\\B.bmp", m_picker.GetEntry(1)->m_file);
    EXPECT_EQ("Portraits\\c.bmp", m_picker.GetFile());
    EXPECT_EQ(2, m_picker.GetIndex());
    // Left of c shows what the left arrow gives: a, the oldest; right of it b.
    EXPECT_EQ((std::vector<int32_t>{0, 2, 1}), Cells(m_picker));

    Step(m_ui, m_picker, true);
    EXPECT_EQ(1, m_picker.GetIndex());
    Step(m_ui, m_picker, true);
    EXPECT_EQ(0, m_picker.GetIndex());
    Step(m_ui, m_picker, true);
    EXPECT_EQ(2, m_picker.GetIndex());
    Step(m_ui, m_picker, false);
    EXPECT_EQ(0, m_picker.GetIndex());
    Step(m_ui, m_picker, false);
    EXPECT_EQ(1, m_picker.GetIndex());

    // A second scan starts over from the folder.
    fs::remove("Portraits/c.bmp");
    m_picker.Scan();
    EXPECT_EQ(2, m_picker.GetNumEntries());
    EXPECT_EQ("Portraits\\B.bmp", m_picker.GetFile());
}

TEST_F(PortraitPickerTest, OneEntryFillsEveryCellAndNoneLeavesNothingToChoose)
{
    // No folder, then an empty one: nothing to choose, whatever is clicked.
    for (int attempt = 0; attempt < 2; ++attempt)
    {
        m_picker.Scan();
        EXPECT_FALSE(m_picker.HasEntries());
        EXPECT_EQ("", m_picker.GetFile());
        EXPECT_EQ(-1, m_picker.GetIndex());
        EXPECT_EQ(nullptr, m_picker.GetLeftEntry());
        Step(m_ui, m_picker, true);
        Step(m_ui, m_picker, false);
        EXPECT_EQ(-1, m_picker.GetIndex());
        fs::create_directories("Portraits");
    }

    Touch("Portraits/only.bmp");
    m_picker.Scan();
    EXPECT_EQ((std::vector<int32_t>{0, 0, 0}), Cells(m_picker));
    Step(m_ui, m_picker, true);
    Step(m_ui, m_picker, false);
    EXPECT_EQ("Portraits\\only.bmp", m_picker.GetFile());
}

TEST_F(PortraitPickerTest, ArrowsFlankTheFrame)
{
    // 0.6 x 0.8 of their 59 x 100 pictures, centred on the 198-high frame, 5 pixels from it.
    const Button& left = m_picker.GetLeftArrow();
    const Button& right = m_picker.GetRightArrow();
    EXPECT_EQ((std::vector<double>{35, 80, 275, 259}), (std::vector<double>{double(left.GetWidth()),
                                                        double(left.GetHeight()), left.GetX(), left.GetY()}));
    EXPECT_EQ((std::vector<double>{35, 80, 770, 259}), (std::vector<double>{double(right.GetWidth()),
                                                         double(right.GetHeight()), right.GetX(), right.GetY()}));
    EXPECT_EQ(315.0, m_picker.GetFrame().GetX());
    EXPECT_EQ(24, m_picker.GetFrame().GetCornerSize());
}

namespace
{
constexpr int CELL_CENTRE_Y = 200 + 21 + 78;
constexpr int LEFT_CELL_X = 333 + 62;
constexpr int MIDDLE_CELL_X = LEFT_CELL_X + 143;
constexpr int RIGHT_CELL_X = MIDDLE_CELL_X + 143;
// The frame's centre: its grey 220 darkened to 150/255.
constexpr int FRAME_CENTRE = 129;

bool Near(const Rgb& p_colour, int p_r, int p_g, int p_b)
{
    return std::abs(p_colour.r - p_r) <= 3 && std::abs(p_colour.g - p_g) <= 3 && std::abs(p_colour.b - p_b) <= 3;
}

// With the real texture manager: which files give pictures, and how the cells show them.
class PortraitPickerRenderTest : public testsupport::GlFixture
{
protected:
    void SetUp() override
    {
        GlFixture::SetUp();
        if (!StartApplication())
        {
            GTEST_SKIP() << "no display";
        }
        fs::create_directories("Portraits");
        fs::create_directories("Saves");
        ASSERT_TRUE(testsupport::WriteSolidBitmap("Portraits/red.bmp", 125, 156, 255, 0, 0, 24));
        ASSERT_TRUE(testsupport::WriteSolidBitmap("Portraits/blue.bmp", 125, 156, 0, 0, 255, 24));
        ASSERT_TRUE(testsupport::WriteFileBytes("Portraits/damaged.bmp", {'B', 'M', 1, 2, 3}));
    }

    void Render(PortraitPicker& p_picker)
    {
        m_app.GetRenderer()->BeginFrame();
        p_picker.Render();
    }

    uitest::UiInput m_ui;
};

void WriteSave(const char* p_file, const std::string& p_portrait)
{
    Pilot record(p_file);
    record.SetPortrait(p_portrait);
    ASSERT_TRUE(record.Save(nullptr));
}
} // namespace

TEST_F(PortraitPickerRenderTest, MiddleCellBrightSideCellsDimDamagedOnesEmpty)
{
    PortraitList portraits(&m_ui.cursor);
    portraits.SetPosition(STRIP_X, STRIP_Y);
    portraits.Scan();
    // blue, damaged, red: red is chosen; the damaged file is listed without a picture.
    ASSERT_EQ(3, portraits.GetNumEntries());
    EXPECT_EQ("Portraits\\red.bmp", portraits.GetFile());
    EXPECT_EQ(nullptr, portraits.GetEntry(1)->m_pImage);

    Render(portraits);
    EXPECT_TRUE(Near(ReadPixel(MIDDLE_CELL_X, CELL_CENTRE_Y), 255, 0, 0));
    // Blue at 75/255 over the frame's grey, and the same picture drawn opaque again later.
    const int dimmed = FRAME_CENTRE * 180 / 255;
    EXPECT_TRUE(Near(ReadPixel(LEFT_CELL_X, CELL_CENTRE_Y), dimmed, dimmed, 75 + dimmed));
    EXPECT_TRUE(Near(ReadPixel(RIGHT_CELL_X, CELL_CENTRE_Y), FRAME_CENTRE, FRAME_CENTRE, FRAME_CENTRE));
    EXPECT_EQ(255, portraits.GetEntry(0)->m_pImage->GetColor()[3]);

    Step(m_ui, portraits, false); // to blue, the oldest
    Render(portraits);
    EXPECT_TRUE(Near(ReadPixel(MIDDLE_CELL_X, CELL_CENTRE_Y), 0, 0, 255));

    // Without portraits the frame stays empty.
    fs::remove_all("Portraits");
    portraits.Scan();
    Render(portraits);
    for (int x : {LEFT_CELL_X, MIDDLE_CELL_X, RIGHT_CELL_X})
    {
        EXPECT_TRUE(Near(ReadPixel(x, CELL_CENTRE_Y), FRAME_CENTRE, FRAME_CENTRE, FRAME_CENTRE)) << x;
    }
}

TEST_F(PortraitPickerRenderTest, EachSaveShowsItsOwnPortraitOrNoneAndNothingOutsideIsOpened)
{
    // A bitmap beside the game directory, which a hostile save points at.
    const fs::path outsideDir = testsupport::MakeTempDir("korvath-outside");
    ASSERT_TRUE(testsupport::WriteSolidBitmap((outsideDir / "face.bmp").string(), 125, 156, 255, 0, 0, 24));
    const std::string climbing = "..\\" + outsideDir.filename().string() + "\\face.bmp";

    WriteSave("Saves\\Ann0.sav", "Portraits\\red.bmp");
    WriteSave("Saves\\Bob0.sav", "portraits\\BLUE.bmp");
    WriteSave("Saves\\Cal0.sav", climbing);
    WriteSave("Saves\\Dee0.sav", (outsideDir / "face.bmp").string());
    WriteSave("Saves\\Eve0.sav", "Portraits\\damaged.bmp");
    WriteSave("Saves\\Fay0.sav", "Portraits\\missing.bmp");
    WriteSave("Saves\\Gil0.sav", "");
    ASSERT_TRUE(testsupport::WriteFileBytes("Saves/Hal0.sav", {1, 2, 3}));
    WriteSave("Saves\\Ivy0.sav", "Portraits\\red.bmp");

    SaveList saves(&m_ui.cursor);
    saves.SetPosition(STRIP_X, STRIP_Y);
    saves.Scan();
    ASSERT_EQ(9, saves.GetNumEntries());
    ASSERT_NE(nullptr, saves.GetEntry(0)->m_pImage);
    EXPECT_EQ("Portraits\\red.bmp", saves.GetEntry(0)->m_pImage->GetFileName());
    ASSERT_NE(nullptr, saves.GetEntry(1)->m_pImage);
    EXPECT_EQ("portraits\\BLUE.bmp", saves.GetEntry(1)->m_pImage->GetFileName());
    for (int32_t i = 2; i < 8; ++i)
    {
        EXPECT_EQ(nullptr, saves.GetEntry(i)->m_pImage) << saves.GetEntry(i)->m_file;
    }
    for (const TextureNode* node = g_pTextureManager->GetHead(); node != nullptr; node = node->m_pNext.get())
    {
        EXPECT_EQ(std::string::npos, node->m_fileName.find("face.bmp")) << node->m_fileName;
    }

    // Ivy (red) chosen, Hal (unreadable) to the right, Ann (red) to the left.
    Render(saves);
    EXPECT_TRUE(Near(ReadPixel(MIDDLE_CELL_X, CELL_CENTRE_Y), 255, 0, 0));
    EXPECT_TRUE(Near(ReadPixel(RIGHT_CELL_X, CELL_CENTRE_Y), FRAME_CENTRE, FRAME_CENTRE, FRAME_CENTRE));
    // Left from Ivy, the newest, goes round to Ann, the oldest, then to Bob.
    Step(m_ui, saves, false);
    Step(m_ui, saves, false);
    Render(saves);
    EXPECT_EQ("Saves\\Bob0.sav", saves.GetFile());
    EXPECT_TRUE(Near(ReadPixel(MIDDLE_CELL_X, CELL_CENTRE_Y), 0, 0, 255));
    fs::remove_all(outsideDir);
}
