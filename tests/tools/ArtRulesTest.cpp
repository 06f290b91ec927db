#include "artgen/Canvas.h"
#include "artgen/InterfaceArt.h"
#include "artgen/Keying.h"
#include "artgen/Pictures.h"
#include "forge/Forge.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using namespace artgen;

const InterfacePicture& Picture(const char* p_name)
{
    const InterfacePicture* picture = FindInterfacePicture(p_name);
    EXPECT_NE(picture, nullptr) << p_name;
    static const InterfacePicture NONE = {"", 0, 0, false};
    return picture != nullptr ? *picture : NONE;
}

// The game's file name as a path in the game directory, the way the forge reports it.
std::string Shown(std::string p_name)
{
    for (char& c : p_name)
        c = c == '\\' ? '/' : c;
    return p_name;
}

} // namespace

// The sizes are chosen; these are the places and sizes the game's code fixes, which the
// pictures must fit.
TEST(ArtRules, InterfaceSizesFitTheLayout)
{
    const int screenWidth = 1024;
    const int screenHeight = 768;
    std::set<std::string> names;
    for (const InterfacePicture& picture : INTERFACE_PICTURES)
    {
        EXPECT_TRUE(names.insert(picture.gameName).second) << "listed twice: " << picture.gameName;
        EXPECT_EQ(FindInterfacePicture(picture.gameName), &picture);
    }
    EXPECT_EQ(FindInterfacePicture("art\\no_such_picture.bmp"), nullptr);
    EXPECT_EQ(FindInterfacePicture("art\\cursor.bm"), nullptr);

    // FramedBox asserts 32 x 32 for each of its eight pieces.
    for (const char* piece : {"art\\box_topleft.bmp", "art\\box_topright.bmp", "art\\box_bottomleft.bmp",
                              "art\\box_bottomright.bmp", "art\\box_top.bmp", "art\\box_left.bmp", "art\\box_right.bmp",
                              "art\\box_bottom.bmp"})
    {
        EXPECT_EQ(Picture(piece).width, 32) << piece;
        EXPECT_EQ(Picture(piece).height, 32) << piece;
    }
    for (const auto& pair : BUTTON_PAIRS)
    {
        EXPECT_EQ(Picture(pair[0]).width, Picture(pair[1]).width) << pair[0];
        EXPECT_EQ(Picture(pair[0]).height, Picture(pair[1]).height) << pair[0];
    }
    for (const char* slide : {"art\\menu\\corvel_logo.bmp", "art\\menu\\brask_productions.bmp",
                              "art\\credits\\credits1.bmp", "art\\credits\\credits2.bmp", "art\\credits\\credits3.bmp",
                              "art\\planets.bmp"})
    {
        EXPECT_EQ(Picture(slide).width, screenWidth) << slide;
        EXPECT_EQ(Picture(slide).height, screenHeight) << slide;
    }
    EXPECT_EQ(Picture("art\\title.bmp").width, 650);
    EXPECT_EQ(Picture("art\\title.bmp").height, 325);

    // Menu buttons rest 70 apart from y 210 at x 15; the hub's sit 145 apart from x 560, the
    // last ending on screen; the ribbon behind them is drawn at full screen height.
    EXPECT_LT(BUTTON_HEIGHT, 70);
    EXPECT_LT(BUTTON_WIDTH, 145);
    EXPECT_LE(850 + BUTTON_WIDTH, screenWidth);
    EXPECT_GT(RIBBON_WIDTH, 15 + BUTTON_WIDTH);
    EXPECT_EQ(RIBBON_HEIGHT, screenHeight);
    // The title plate, drawn at x -80, must end before the logo at x 260.
    EXPECT_LT(TITLE_PLATE_WIDTH - 80, 260);

    // The radar's blips reach 75 pixels (plus half a 4-pixel point) from its centre.
    EXPECT_GE(RADAR_CENTRE_X - RADAR_RIM - 2, 0);
    EXPECT_LE(RADAR_CENTRE_Y + RADAR_RIM + 2, Picture("art\\hudradar.bmp").height);
    EXPECT_EQ(Picture("art\\hudradar.bmp").width, RADAR_WIDTH);
    // The status panel goes to x = screen width - radar width + 96; its bars run from x + 59
    // for 98 pixels and from x + 62 for 95, the lowest 7 wide at y + 73.
    const int statusX = screenWidth - RADAR_WIDTH + 96;
    EXPECT_LE(statusX + Picture("art\\hudstats.bmp").width, screenWidth);
    EXPECT_LE(59 + 98, Picture("art\\hudstats.bmp").width);
    EXPECT_LE(62 + 95, Picture("art\\hudstats.bmp").width);
    EXPECT_LE(73 + 4, Picture("art\\hudstats.bmp").height);

    // Banners are placed at (300, 300); they should sit in the middle of the screen.
    EXPECT_EQ(300 + Picture("art\\victorybanner.bmp").width / 2, screenWidth / 2);
    EXPECT_EQ(300 + Picture("art\\victorybanner.bmp").height / 2, screenHeight / 2);

    // The portrait picker at x 275 draws its left arrow 0.6 of the picture wide and its 450-wide
    // frame 5 pixels right of it: centred over the 350-wide name field at x 365.
    const int arrowWidth = int(SIDE_ARROW_WIDTH * 0.6);
    EXPECT_EQ(275 + arrowWidth + 5 + 450 / 2, 365 + 350 / 2);
    // Its arrow, 0.8 of the picture high, fits the frame's 198 pixels; the right arrow ends on
    // screen.
    EXPECT_LT(int(SIDE_ARROW_HEIGHT * 0.8), 198);
    EXPECT_LE(275 + arrowWidth + 460 + arrowWidth, screenWidth);

    // The in-game menu: the panel is centred, "Menu" is printed at y 257 inside it, and its
    // four buttons at 1.5 button heights apart end inside it.
    const int panelY = screenHeight / 2 - GREEN_PANEL_HEIGHT / 2;
    EXPECT_GT(257, panelY);
    const double lastButtonBottom = panelY + 4 * BUTTON2_HEIGHT * 1.5 + BUTTON2_HEIGHT;
    EXPECT_LE(lastButtonBottom, panelY + GREEN_PANEL_HEIGHT);
    EXPECT_LT(BUTTON2_WIDTH, GREEN_PANEL_WIDTH);
}

TEST(ArtRules, KeyPixelMakesHardEdgesWithoutHidingDrawnColours)
{
    const uint32_t half = 128;
    // Transparent and faint pixels become the key; the game then hides them.
    EXPECT_EQ(KeyPixel(0x00000000u, half), KEY_WORD);
    EXPECT_EQ(KeyPixel(0x7F3F0000u, half), KEY_WORD);
    EXPECT_EQ(KeyPixel(0x00101010u, 0), KEY_WORD) << "fully transparent even with no threshold";
    EXPECT_EQ(KeyPixel(0x01000000u, 0), 0xFF000000u) << "anything else counts with no threshold";
    // Pixels at or over the threshold become opaque in their own, unpremultiplied colour.
    EXPECT_EQ(KeyPixel(0x80400020u, half), 0xFF800040u);
    EXPECT_EQ(KeyPixel(0xFF123456u, half), 0xFF123456u);
    // A colour above its alpha (a damaged surface) is clamped rather than wrapped.
    EXPECT_EQ(KeyPixel(0x80FF0000u, half), 0xFFFF0000u);
    // Pure green drawn on purpose would vanish in the game: it is nudged off the key.
    EXPECT_EQ(KeyPixel(0xFF00FF00u, half), NEAR_KEY_WORD);
    EXPECT_EQ(KeyPixel(0x8000FF00u, half), NEAR_KEY_WORD) << "a half-covered green pixel is still green";
    EXPECT_NE(NEAR_KEY_WORD, KEY_WORD);
}

namespace
{

// Every picture the generator lists, by game name, with how often each name was listed.
struct Listed
{
    std::map<std::string, PictureRecipe> byName;
    std::map<std::string, int> count;
};

const Listed& AllListed()
{
    static const Listed s_listed = [] {
        ArtContext context;
        context.dataDir = std::string(KORVATH_SOURCE_DIR) + "/data";
        std::vector<PictureRecipe> pictures;
        for (PictureLister lister : GetPictureListers())
            lister(context, pictures);
        Listed listed;
        for (const PictureRecipe& picture : pictures)
        {
            listed.byName.emplace(picture.gameName, picture);
            ++listed.count[picture.gameName];
        }
        return listed;
    }();
    return s_listed;
}

// A drawn picture as Cairo leaves it: premultiplied ARGB words, row by row.
struct Drawn
{
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;
    uint32_t At(int p_x, int p_y) const { return pixels[size_t(p_y) * size_t(width) + size_t(p_x)]; }
    double Alpha(int p_x, int p_y) const { return (At(p_x, p_y) >> 24) / 255.0; }
    // Straight brightness, 0..1.
    double Luminance(int p_x, int p_y) const
    {
        const uint32_t word = At(p_x, p_y);
        const double alpha = (word >> 24) / 255.0;
        if (alpha == 0.0)
            return 0.0;
        return (0.3 * ((word >> 16) & 0xFFu) + 0.59 * ((word >> 8) & 0xFFu) + 0.11 * (word & 0xFFu)) / 255.0 / alpha;
    }
};

const Drawn& DrawPicture(const std::string& p_name)
{
    static std::map<std::string, Drawn> s_drawn;
    const auto known = s_drawn.find(p_name);
    if (known != s_drawn.end())
        return known->second;
    Drawn& drawn = s_drawn[p_name];
    const auto drawing = AllListed().byName.find(p_name);
    if (drawing == AllListed().byName.end())
    {
        ADD_FAILURE() << p_name << " is not drawn";
        return drawn;
    }
    Canvas canvas(drawing->second.width, drawing->second.height);
    drawing->second.draw(canvas);
    EXPECT_TRUE(canvas.IsHealthy()) << p_name;
    cairo_surface_flush(canvas.Surface());
    const uint8_t* data = cairo_image_surface_get_data(canvas.Surface());
    const size_t stride = size_t(cairo_image_surface_get_stride(canvas.Surface()));
    drawn.width = canvas.Width();
    drawn.height = canvas.Height();
    drawn.pixels.resize(size_t(drawn.width) * size_t(drawn.height));
    for (int y = 0; y < drawn.height; ++y)
        std::memcpy(drawn.pixels.data() + size_t(y) * size_t(drawn.width), data + size_t(y) * stride,
                    size_t(drawn.width) * 4);
    return drawn;
}

} // namespace

TEST(ArtRules, EveryInterfacePictureIsDrawnOnceAtItsSize)
{
    for (const InterfacePicture& picture : INTERFACE_PICTURES)
    {
        const auto drawing = AllListed().byName.find(picture.gameName);
        ASSERT_NE(drawing, AllListed().byName.end()) << picture.gameName << " is never drawn";
        EXPECT_EQ(AllListed().count.at(picture.gameName), 1) << picture.gameName << " is drawn twice";
        EXPECT_EQ(drawing->second.width, picture.width) << picture.gameName;
        EXPECT_EQ(drawing->second.height, picture.height) << picture.gameName;
        EXPECT_EQ(drawing->second.alpha, picture.alpha) << picture.gameName;
        const Drawn& drawn = DrawPicture(picture.gameName);
        ASSERT_EQ(drawn.width, picture.width);
        // Nothing is drawn blank.
        bool visible = false;
        for (uint32_t word : drawn.pixels)
            visible = visible || ((word >> 24) > 0 && (word & 0xFFFFFFu) != 0);
        EXPECT_TRUE(visible) << picture.gameName;
        // A picture saved without alpha must not have lost any to the black it is laid on:
        // each pixel is opaque (the colour key included).
        if (!picture.alpha)
        {
            size_t seeThrough = 0;
            for (uint32_t word : drawn.pixels)
                seeThrough += (word >> 24) != 255u;
            EXPECT_EQ(seeThrough, 0u) << picture.gameName;
        }
    }
}

// FramedBox stretches the middle pieces and fills the middle with a flat (150, 150, 150): the
// pieces must join each other and the fill without a seam.
TEST(ArtRules, BoxPiecesJoinSeamlesslyAroundAFlatMiddle)
{
    const Drawn& topLeft = DrawPicture("art\\box_topleft.bmp");
    const Drawn& top = DrawPicture("art\\box_top.bmp");
    const Drawn& topRight = DrawPicture("art\\box_topright.bmp");
    const Drawn& left = DrawPicture("art\\box_left.bmp");
    const Drawn& right = DrawPicture("art\\box_right.bmp");
    const Drawn& bottomLeft = DrawPicture("art\\box_bottomleft.bmp");
    const Drawn& bottom = DrawPicture("art\\box_bottom.bmp");
    const Drawn& bottomRight = DrawPicture("art\\box_bottomright.bmp");
    const int last = BOX_PIECE_SIZE - 1;
    ASSERT_EQ(topLeft.width, BOX_PIECE_SIZE);
    const uint32_t middle = 0xFF969696u;
    for (int i = 0; i < BOX_PIECE_SIZE; ++i)
    {
        // Across each joint the pixels continue.
        EXPECT_EQ(topLeft.At(last, i), top.At(0, i)) << i;
        EXPECT_EQ(top.At(last, i), topRight.At(0, i)) << i;
        EXPECT_EQ(bottomLeft.At(last, i), bottom.At(0, i)) << i;
        EXPECT_EQ(bottom.At(last, i), bottomRight.At(0, i)) << i;
        EXPECT_EQ(topLeft.At(i, last), left.At(i, 0)) << i;
        EXPECT_EQ(left.At(i, last), bottomLeft.At(i, 0)) << i;
        EXPECT_EQ(topRight.At(i, last), right.At(i, 0)) << i;
        EXPECT_EQ(right.At(i, last), bottomRight.At(i, 0)) << i;
        // The stretched pieces are the same all along, and end in the middle's flat grey.
        for (int j = 0; j < BOX_PIECE_SIZE; ++j)
        {
            EXPECT_EQ(top.At(j, i), top.At(0, i));
            EXPECT_EQ(bottom.At(j, i), bottom.At(0, i));
            EXPECT_EQ(left.At(i, j), left.At(i, 0));
            EXPECT_EQ(right.At(i, j), right.At(i, 0));
        }
    }
    EXPECT_EQ(top.At(0, last), middle);
    EXPECT_EQ(bottom.At(0, 0), middle);
    EXPECT_EQ(left.At(last, 0), middle);
    EXPECT_EQ(right.At(0, 0), middle);
    EXPECT_EQ(topLeft.At(last, last), middle);
    EXPECT_EQ(bottomRight.At(0, 0), middle);
    // The outer corners are rounded off: see-through.
    EXPECT_EQ(topLeft.Alpha(0, 0), 0.0);
    EXPECT_EQ(bottomRight.Alpha(last, last), 0.0);
}

TEST(ArtRules, TheGameDrawsOnThesePicturesWhereTheyAreMadeForIt)
{
    // Radar blips (red, white and yellow points) land anywhere within the rim: the glass
    // there is solid and dark.
    const Drawn& radar = DrawPicture("art\\hudradar.bmp");
    for (int y = RADAR_CENTRE_Y - RADAR_RIM - 2; y <= RADAR_CENTRE_Y + RADAR_RIM + 2; y += 3)
        for (int x = RADAR_CENTRE_X - RADAR_RIM - 2; x <= RADAR_CENTRE_X + RADAR_RIM + 2; x += 3)
            if (std::hypot(x - RADAR_CENTRE_X, y - RADAR_CENTRE_Y) <= RADAR_RIM + 2)
            {
                ASSERT_GT(radar.Alpha(x, y), 0.9) << x << ", " << y;
                ASSERT_LT(radar.Luminance(x, y), 0.35) << x << ", " << y;
            }
    // The status bars are drawn over dark troughs.
    const Drawn& status = DrawPicture("art\\hudstats.bmp");
    const int rows[][2] = {{11, 59}, {26, 59}, {48, 62}, {60, 62}, {73, 62}};
    for (const auto& row : rows)
        for (int x = row[1]; x < STATUS_WIDTH - 3; x += 2)
        {
            ASSERT_GT(status.Alpha(x, row[0]), 0.9) << x << ", " << row[0];
            ASSERT_LT(status.Luminance(x, row[0]), 0.25) << x << ", " << row[0];
        }
    // The logo is drawn alpha-tested on the menu's black screen: its edges are black.
    const Drawn& title = DrawPicture("art\\title.bmp");
    for (int x = 0; x < title.width; x += 5)
    {
        EXPECT_EQ(title.At(x, 0), 0xFF000000u) << x;
        EXPECT_EQ(title.At(x, title.height - 1), 0xFF000000u) << x;
    }
    // Buttons carry black captions: their faces are light.
    for (const char* button : {"art\\button_up.bmp", "art\\button_up2.bmp"})
    {
        const Drawn& drawn = DrawPicture(button);
        EXPECT_GT(drawn.Luminance(drawn.width / 2, drawn.height / 2), 0.6) << button;
    }
    // The slide bar's knob is keyed: every pixel is the key or solid.
    const Drawn& knob = DrawPicture("art\\slider.bmp");
    size_t keyed = 0;
    for (uint32_t word : knob.pixels)
        keyed += word == KEY_WORD;
    EXPECT_GT(keyed, 0u) << "its cut corners are transparent";
    EXPECT_LT(keyed, knob.pixels.size() / 4);
}

// The pilot menu suggests the chosen portrait's file name as the pilot's name.
TEST(ArtRules, PortraitsAreDistinctPilotsNamedForThem)
{
    std::vector<std::string> names;
    std::set<std::string> lowerNames;
    const std::string prefix = std::string(PORTRAIT_FOLDER) + "\\";
    for (const auto& [name, drawing] : AllListed().byName)
    {
        if (name.compare(0, prefix.size(), prefix) != 0)
            continue;
        names.push_back(name);
        EXPECT_EQ(drawing.width, PORTRAIT_WIDTH) << name;
        EXPECT_EQ(drawing.height, PORTRAIT_HEIGHT) << name;
        const std::string stem = name.substr(prefix.size(), name.size() - prefix.size() - 4);
        EXPECT_EQ(name.substr(name.size() - 4), ".bmp") << name;
        EXPECT_FALSE(stem.empty());
        for (char c : stem)
            EXPECT_TRUE(std::isalnum(static_cast<unsigned char>(c))) << name << " is not a plain name";
        std::string lower = stem;
        for (char& c : lower)
            c = char(std::tolower(static_cast<unsigned char>(c)));
        EXPECT_TRUE(lowerNames.insert(lower).second) << name << " differs from another only in case";
    }
    ASSERT_GE(names.size(), MIN_PORTRAITS);
    // No two look alike: they differ clearly on average.
    std::vector<const Drawn*> drawn;
    for (const std::string& name : names)
        drawn.push_back(&DrawPicture(name));
    for (size_t a = 0; a < drawn.size(); ++a)
        for (size_t b = a + 1; b < drawn.size(); ++b)
        {
            double difference = 0.0;
            for (int y = 0; y < PORTRAIT_HEIGHT; y += 2)
                for (int x = 0; x < PORTRAIT_WIDTH; x += 2)
                    difference += std::abs(drawn[a]->Luminance(x, y) - drawn[b]->Luminance(x, y));
            difference /= (PORTRAIT_WIDTH / 2.0) * (PORTRAIT_HEIGHT / 2.0);
            EXPECT_GT(difference, 0.04) << names[a] << " and " << names[b] << " look alike";
        }
}

namespace
{

class ArtCheckTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_dir = testsupport::MakeTempDir("korvath_artcheck");
        ASSERT_FALSE(m_dir.empty());
        m_game = m_dir + "/game";
        // Every interface picture, as the generator writes them: folders in lower case.
        for (const InterfacePicture& picture : INTERFACE_PICTURES)
            ASSERT_TRUE(Write(picture.gameName, picture.width, picture.height, picture.alpha ? 32 : 24));
        for (int i = 0; i < int(MIN_PORTRAITS); ++i)
            ASSERT_TRUE(Write("portraits\\Pilot" + std::to_string(i) + ".bmp", PORTRAIT_WIDTH, PORTRAIT_HEIGHT, 24));
    }

    void TearDown() override
    {
        std::error_code ec;
        fs::remove_all(m_dir, ec);
    }

    std::string PathOf(std::string p_gameName) const
    {
        std::string relative = Shown(p_gameName);
        const size_t slash = relative.find_last_of('/');
        for (size_t i = 0; slash != std::string::npos && i < slash; ++i)
            relative[i] = char(std::tolower(static_cast<unsigned char>(relative[i])));
        return m_game + "/" + relative;
    }

    bool Write(const std::string& p_gameName, int p_width, int p_height, int p_bits)
    {
        const std::string path = PathOf(p_gameName);
        std::error_code ec;
        fs::create_directories(fs::path(path).parent_path(), ec);
        return testsupport::WriteSolidBitmap(path, p_width, p_height, 40, 60, 90, p_bits, 255);
    }

    // The check's complaints; the game directory has no campaign, so it fails anyway.
    std::string Check()
    {
        std::ostringstream out;
        std::ostringstream err;
        forge::CheckOptions options;
        EXPECT_EQ(forge::Check(m_game, options, out, err), 1);
        return err.str();
    }

    static bool Has(const std::string& p_text, const std::string& p_part)
    {
        return p_text.find(p_part) != std::string::npos;
    }

    std::string m_dir;
    std::string m_game;
};

} // namespace

TEST_F(ArtCheckTest, CheckInsistsOnEveryInterfacePictureAtItsSize)
{
    std::string errors = Check();
    for (const InterfacePicture& picture : INTERFACE_PICTURES)
        EXPECT_FALSE(Has(errors, Shown(picture.gameName) + ":")) << errors;
    EXPECT_FALSE(Has(errors, "Portraits")) << errors;

    // A missing picture, a button whose pressed picture is off by a few pixels, an 8-bit
    // picture and a truncated one.
    fs::remove(PathOf("art\\cursor.bmp"));
    ASSERT_TRUE(Write("art\\button_down.bmp", BUTTON_WIDTH - 4, BUTTON_HEIGHT, 32));
    {
        // 2 x 2, 8 bits with a two-colour palette: a legal bitmap the game cannot load.
        std::vector<uint8_t> bytes(14 + 40 + 8 + 8, 0);
        bytes[0] = 'B';
        bytes[1] = 'M';
        bytes[2] = uint8_t(bytes.size());
        bytes[10] = 14 + 40 + 8;
        bytes[14] = 40;
        bytes[18] = 2;
        bytes[22] = 2;
        bytes[26] = 1;
        bytes[28] = 8;
        bytes[46] = 2; // colours used
        bytes[54 + 4] = 0xFF;
        bytes[54 + 5] = 0xFF;
        bytes[54 + 6] = 0xFF;
        ASSERT_TRUE(testsupport::WriteFileBytes(PathOf("art\\slider.bmp"), bytes));
    }
    std::vector<uint8_t> truncated =
        testsupport::MakeBitmapBytes(20, 20, 32, std::vector<uint8_t>(20 * 20 * 4, 200));
    truncated.resize(truncated.size() / 2);
    ASSERT_TRUE(testsupport::WriteFileBytes(PathOf("Art\\check.bmp"), truncated));

    errors = Check();
    EXPECT_TRUE(Has(errors, "art/cursor.bmp: is missing")) << errors;
    EXPECT_TRUE(Has(errors, "art/button_down.bmp: is 136x40; the game's layout needs 140x40")) << errors;
    EXPECT_TRUE(Has(errors, "art/button_down.bmp: is 136x40 but art/button_up.bmp is 140x40; a button's two pictures "
                            "must be the same size"))
        << errors;
    EXPECT_TRUE(Has(errors, "art/slider.bmp: is a 8-bit bitmap")) << errors;
    EXPECT_TRUE(Has(errors, "Art/check.bmp: is not a readable bitmap")) << errors;
    // Pictures that are fine stay quiet.
    EXPECT_FALSE(Has(errors, "art/button_up.bmp:")) << errors;
    EXPECT_FALSE(Has(errors, "art/hudradar.bmp:")) << errors;
}

TEST_F(ArtCheckTest, PortraitsAreCountedAndAnOddSizeIsReported)
{
    for (int i = 3; i < int(MIN_PORTRAITS); ++i)
        fs::remove(PathOf("Portraits\\Pilot" + std::to_string(i) + ".bmp"));
    ASSERT_TRUE(Write("Portraits\\Wide.bmp", 200, 100, 32));
    const std::string errors = Check();
    EXPECT_TRUE(Has(errors, "Portraits: holds 4 portraits; a new pilot should have at least " +
                                std::to_string(MIN_PORTRAITS)))
        << errors;
    EXPECT_TRUE(Has(errors, "Portraits/Wide.bmp: warning: is 200x100; the picker stretches it to 125x156")) << errors;
    EXPECT_FALSE(Has(errors, "Pilot0.bmp")) << errors;
}

// The generator writes "portraits"; the forge must not make a second, empty "Portraits" that
// the game would find first.
TEST_F(ArtCheckTest, TheForgeReusesTheArtFoldersOfAnotherCase)
{
    std::ostringstream out;
    std::ostringstream err;
    ASSERT_EQ(forge::Build(std::string(KORVATH_SOURCE_DIR) + "/data", m_game, out, err), 0) << err.str();
    EXPECT_TRUE(fs::is_directory(m_game + "/portraits"));
    EXPECT_FALSE(fs::exists(m_game + "/Portraits"));
    EXPECT_TRUE(fs::exists(m_game + "/portraits/Pilot0.bmp"));
}
