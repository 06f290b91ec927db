// The generated ships, shots, explosions, tiles, scenery and part pictures, checked the way the
// game will use them: the names and sizes it asks for, and what the pictures look like.

#include "artgen/ArtKit.h"
#include "artgen/Pictures.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>
#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <system_error>

namespace
{

const std::string DATA_DIR = std::string(KORVATH_SOURCE_DIR) + "/data";

const std::map<std::string, artgen::PictureRecipe>& AllPictures()
{
    static const std::map<std::string, artgen::PictureRecipe> s_pictures = [] {
        artgen::ArtContext context;
        context.dataDir = DATA_DIR;
        std::vector<artgen::PictureRecipe> list;
        for (artgen::PictureLister lister : artgen::GetPictureListers())
            lister(context, list);
        std::map<std::string, artgen::PictureRecipe> byName;
        for (const artgen::PictureRecipe& picture : list)
            byName.emplace(picture.gameName, picture);
        return byName;
    }();
    return s_pictures;
}

const artgen::PictureRecipe* Find(const std::string& p_name)
{
    const auto found = AllPictures().find(p_name);
    return found == AllPictures().end() ? nullptr : &found->second;
}

// A drawn picture as straight RGBA in 0..1.
struct Image
{
    int width = 0;
    int height = 0;
    std::vector<double> rgba;
    double A(int p_x, int p_y) const { return rgba[(size_t(p_y) * size_t(width) + size_t(p_x)) * 4 + 3]; }
    double C(int p_x, int p_y, int p_channel) const
    {
        return rgba[(size_t(p_y) * size_t(width) + size_t(p_x)) * 4 + size_t(p_channel)];
    }
};

Image Draw(const std::string& p_name)
{
    Image image;
    const artgen::PictureRecipe* recipe = Find(p_name);
    if (recipe == nullptr)
    {
        ADD_FAILURE() << p_name << " is not drawn";
        return image;
    }
    artgen::Canvas canvas(recipe->width, recipe->height);
    recipe->draw(canvas);
    EXPECT_TRUE(canvas.IsHealthy()) << p_name;
    cairo_surface_flush(canvas.Surface());
    const uint8_t* data = cairo_image_surface_get_data(canvas.Surface());
    const int stride = cairo_image_surface_get_stride(canvas.Surface());
    image.width = recipe->width;
    image.height = recipe->height;
    image.rgba.resize(size_t(image.width) * size_t(image.height) * 4);
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
        {
            uint32_t word = 0;
            std::memcpy(&word, data + size_t(y) * size_t(stride) + size_t(x) * 4, 4);
            const double alpha = double(word >> 24) / 255.0;
            double* out = &image.rgba[(size_t(y) * size_t(image.width) + size_t(x)) * 4];
            for (int c = 0; c < 3; ++c)
            {
                const double premultiplied = double((word >> (16 - 8 * c)) & 0xFFu) / 255.0;
                out[c] = alpha > 0.0 ? premultiplied / alpha : 0.0;
            }
            out[3] = alpha;
            // A picture must never show the transparent key as an opaque pixel.
            EXPECT_NE(word, 0xFF00FF00u) << p_name << " at " << x << "," << y;
        }
    return image;
}

// Columns that hold any fairly opaque pixel.
int OpaqueWidth(const Image& p_image)
{
    int left = p_image.width;
    int right = -1;
    for (int y = 0; y < p_image.height; ++y)
        for (int x = 0; x < p_image.width; ++x)
            if (p_image.A(x, y) > 0.5)
            {
                left = std::min(left, x);
                right = std::max(right, x);
            }
    return right >= left ? right - left + 1 : 0;
}

// Mean difference of alpha between one picture and the other mirrored left to right.
double MirrorDifference(const Image& p_a, const Image& p_b)
{
    double sum = 0.0;
    for (int y = 0; y < p_a.height; ++y)
        for (int x = 0; x < p_a.width; ++x)
            sum += std::fabs(p_a.A(x, y) - p_b.A(p_a.width - 1 - x, y));
    return sum / double(p_a.width * p_a.height);
}

struct Hull
{
    std::string base;
    bool player;
    int boxRight;
    int boxBottom;
    int mountRight;
    int mountBottom;
};

std::vector<Hull> HullsOfTheData()
{
    std::vector<Hull> hulls;
    const YAML::Node parts = YAML::LoadFile(DATA_DIR + "/parts.yaml");
    for (const YAML::Node& hull : parts["hulls"])
    {
        Hull entry{hull["image"].as<std::string>(), true,
                   hull["box"]["x"].as<int>() + hull["box"]["width"].as<int>(),
                   hull["box"]["y"].as<int>() + hull["box"]["height"].as<int>(), 0, 0};
        for (const auto& mount : hull["mounts"])
        {
            entry.mountRight = std::max(entry.mountRight, mount.second[0].as<int>());
            entry.mountBottom = std::max(entry.mountBottom, mount.second[1].as<int>());
        }
        hulls.push_back(entry);
    }
    const YAML::Node entities = YAML::LoadFile(DATA_DIR + "/entities.yaml");
    for (const YAML::Node& entity : entities["entities"])
        hulls.push_back({entity["hull"].as<std::string>(), entity["team"].as<std::string>("computer") == "player",
                         entity["box"]["x"].as<int>() + entity["box"]["width"].as<int>(),
                         entity["box"]["y"].as<int>() + entity["box"]["height"].as<int>(), 0, 0});
    return hulls;
}

std::string Frame(const std::string& p_base, const char* p_flame, const char* p_kind, int p_index)
{
    char number[8];
    std::snprintf(number, sizeof(number), "%04d", p_index);
    return p_base + "_" + p_flame + "_" + p_kind + number + ".bmp";
}

} // namespace

TEST(ShipArt, EveryHullHasItsStillAndLeanFramesAtOneSize)
{
    const std::vector<Hull> hulls = HullsOfTheData();
    ASSERT_GE(hulls.size(), 16u);
    for (const Hull& hull : hulls)
    {
        SCOPED_TRACE(hull.base);
        const artgen::PictureRecipe* still = Find(hull.base + "_short_still0000.bmp");
        ASSERT_NE(still, nullptr);
        std::vector<std::string> frames = {hull.base + "_long_still0000.bmp"};
        for (int i = 0; i < 4; ++i)
            for (const char* flame : {"short", "long"})
                for (const char* kind : {"left", "right"})
                    frames.push_back(Frame(hull.base, flame, kind, i));
        for (const std::string& name : frames)
        {
            const artgen::PictureRecipe* frame = Find(name);
            ASSERT_NE(frame, nullptr) << name;
            EXPECT_TRUE(frame->alpha) << name;
            EXPECT_EQ(frame->width, still->width) << name;
            EXPECT_EQ(frame->height, still->height) << name;
        }
        // The collision box and the weapon mounts lie on the picture.
        EXPECT_LE(hull.boxRight, still->width);
        EXPECT_LE(hull.boxBottom, still->height);
        EXPECT_LE(hull.mountRight, still->width);
        EXPECT_LE(hull.mountBottom, still->height);
    }
}

TEST(ShipArt, ShipsFaceUpBankBothWaysAndFlickerTheirFlames)
{
    for (const Hull& hull : HullsOfTheData())
    {
        if (hull.base.find("hive") != std::string::npos)
            continue; // a rock that never turns or flies
        SCOPED_TRACE(hull.base);
        const Image still = Draw(hull.base + "_short_still0000.bmp");
        const Image flaring = Draw(hull.base + "_long_still0000.bmp");
        const Image left = Draw(Frame(hull.base, "short", "left", 3));
        const Image right = Draw(Frame(hull.base, "short", "right", 3));
        const Image slight = Draw(Frame(hull.base, "short", "left", 0));
        ASSERT_GT(still.width, 0);

        // Symmetric when flying straight; banked frames mirror each other and look narrower.
        EXPECT_LT(MirrorDifference(still, still), 0.02);
        EXPECT_LT(MirrorDifference(left, right), 0.03);
        EXPECT_GT(MirrorDifference(left, left), MirrorDifference(slight, slight));
        EXPECT_LT(OpaqueWidth(left), OpaqueWidth(still));

        // Nose up: the topmost solid row is near the top edge, the engines at the bottom.
        int top = still.height;
        for (int y = 0; y < still.height && top == still.height; ++y)
            for (int x = 0; x < still.width; ++x)
                if (still.A(x, y) > 0.5)
                {
                    top = y;
                    break;
                }
        EXPECT_LT(top, still.height / 6);

        // The long flame adds light below the ship only, in the family's colour: blue for the
        // player's side, orange for everyone else.
        double upper = 0.0;
        double lower = 0.0;
        double red = 0.0;
        double blue = 0.0;
        for (int y = 0; y < still.height; ++y)
            for (int x = 0; x < still.width; ++x)
            {
                const double gain = flaring.A(x, y) - still.A(x, y);
                if (gain <= 0.05)
                    continue;
                (y < still.height / 2 ? upper : lower) += gain;
                red += flaring.C(x, y, 0) * gain;
                blue += flaring.C(x, y, 2) * gain;
            }
        EXPECT_GT(lower, 2.0);
        EXPECT_LT(upper, lower * 0.05);
        if (hull.player)
        {
            EXPECT_GT(blue, red);
        }
        else
        {
            EXPECT_GT(red, blue);
        }
    }
}

TEST(ShipArt, ShotsAndTheFireballAreDrawnForHowTheGameShowsThem)
{
    // The tracer is drawn alpha-tested at 70 %: every visible pixel must pass the test.
    const Image bullet = Draw("art\\bullet00.bmp");
    int visible = 0;
    for (int y = 0; y < bullet.height; ++y)
        for (int x = 0; x < bullet.width; ++x)
            if (bullet.A(x, y) > 0.0)
            {
                EXPECT_GT(bullet.A(x, y), 0.7);
                ++visible;
            }
    EXPECT_GT(visible, 8);
    // The missile fits its 8 x 16 collision box; the bomb is square (its box is its picture).
    ASSERT_NE(Find("art\\missile00.bmp"), nullptr);
    EXPECT_EQ(Find("art\\missile00.bmp")->width, 8);
    EXPECT_EQ(Find("art\\missile00.bmp")->height, 16);
    ASSERT_NE(Find("art\\bomb00.bmp"), nullptr);
    EXPECT_EQ(Find("art\\bomb00.bmp")->width, Find("art\\bomb00.bmp")->height);

    // Eight frames: the ball grows to its largest, then fades out.
    std::vector<double> reach;
    std::vector<double> cover;
    for (int frame = 0; frame < 8; ++frame)
    {
        char name[40];
        std::snprintf(name, sizeof(name), "art\\explosion\\exp%02d.bmp", frame);
        const Image image = Draw(name);
        ASSERT_EQ(image.width, 64) << name;
        double farthest = 0.0;
        double total = 0.0;
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x)
            {
                total += image.A(x, y);
                if (image.A(x, y) > 0.3)
                    farthest = std::max(farthest, std::hypot(x + 0.5 - 32.0, y + 0.5 - 32.0));
            }
        reach.push_back(farthest);
        cover.push_back(total);
    }
    EXPECT_LT(reach[0], reach[2]);
    EXPECT_LT(reach[2], reach[4]);
    EXPECT_LT(cover[7], cover[4] * 0.4);
    EXPECT_GT(cover[7], 0.0);
    EXPECT_FALSE(Find("art\\explosion\\exp08.bmp"));
}

TEST(ShipArt, TileSetsHoldTwoHundredTilesAndFamiliesJoinWithoutSeams)
{
    const YAML::Node sets = YAML::LoadFile(DATA_DIR + "/tilesets.yaml")["tilesets"];
    for (const auto& set : sets)
    {
        const std::string first = set.second["first"].as<std::string>();
        SCOPED_TRACE(first);
        if (first == "Art\\startile000.bmp")
        {
            // The moving starfield is drawn under the tiles: the star tile is all colour key.
            const artgen::PictureRecipe* recipe = Find(first);
            ASSERT_NE(recipe, nullptr);
            EXPECT_EQ(recipe->width, 128);
            artgen::Canvas canvas(recipe->width, recipe->height);
            recipe->draw(canvas);
            cairo_surface_flush(canvas.Surface());
            const uint8_t* data = cairo_image_surface_get_data(canvas.Surface());
            const int stride = cairo_image_surface_get_stride(canvas.Surface());
            int keyed = 0;
            for (int y = 0; y < recipe->height; ++y)
                for (int x = 0; x < recipe->width; ++x)
                {
                    uint32_t word = 0;
                    std::memcpy(&word, data + size_t(y) * size_t(stride) + size_t(x) * 4, 4);
                    keyed += word == 0xFF00FF00u ? 1 : 0;
                }
            EXPECT_EQ(keyed, recipe->width * recipe->height);
            continue;
        }
        const std::string stem = first.substr(0, first.size() - 7);
        for (int i = 0; i < 200; ++i)
        {
            char name[16];
            std::snprintf(name, sizeof(name), "%03d.bmp", i);
            const artgen::PictureRecipe* tile = Find(stem + name);
            ASSERT_NE(tile, nullptr) << stem + name;
            EXPECT_EQ(tile->width, 128);
            EXPECT_EQ(tile->height, 128);
            EXPECT_FALSE(tile->alpha);
        }
        EXPECT_EQ(Find(stem + "200.bmp"), nullptr);
    }

    // Families as tilesets.yaml names them (12 onwards repeat the first twelve): deep space,
    // the three nebulae thin and dense, dust thin and thick, the ion storm.
    const std::vector<std::vector<int>> families = {{0, 1, 2, 12, 13}, {3, 4, 15, 16}, {5, 6}, {7, 8}, {9, 10, 21}, {11, 23}};
    std::map<int, Image> tiles;
    for (const std::vector<int>& family : families)
        for (int index : family)
        {
            char name[40];
            std::snprintf(name, sizeof(name), "art\\tiles\\space%03d.bmp", index);
            tiles[index] = Draw(name);
        }
    const auto brightness = [](const Image& p_tile, int p_x, int p_y) {
        return (p_tile.C(p_x, p_y, 0) + p_tile.C(p_x, p_y, 1) + p_tile.C(p_x, p_y, 2)) / 3.0;
    };
    for (const std::vector<int>& family : families)
        for (int a : family)
            for (int b : family)
            {
                SCOPED_TRACE("tiles " + std::to_string(a) + " and " + std::to_string(b));
                // Across the seam (a's last column against b's first) the picture changes no
                // more than it does between two columns inside a tile.
                double seam = 0.0;
                double inside = 0.0;
                double seamDown = 0.0;
                for (int i = 0; i < 128; ++i)
                {
                    seam += std::fabs(brightness(tiles[a], 127, i) - brightness(tiles[b], 0, i));
                    inside += std::fabs(brightness(tiles[a], 126, i) - brightness(tiles[a], 127, i));
                    seamDown += std::fabs(brightness(tiles[a], i, 127) - brightness(tiles[b], i, 0));
                }
                EXPECT_LE(seam, inside * 1.5 + 128 * 0.002);
                EXPECT_LE(seamDown, inside * 1.5 + 128 * 0.002);
            }
    // Not blank: a dense nebula is brighter than deep space.
    double space = 0.0;
    double nebula = 0.0;
    for (int y = 0; y < 128; ++y)
        for (int x = 0; x < 128; ++x)
        {
            space += brightness(tiles[0], x, y);
            nebula += brightness(tiles[4], x, y);
        }
    EXPECT_GT(nebula, space * 1.5);
}

TEST(ShipArt, SceneryAndPartPicturesExistForEveryNameTheDataUses)
{
    std::set<std::string> scenery;
    for (const auto& entry : std::filesystem::directory_iterator(DATA_DIR + "/levels"))
        for (const YAML::Node& item : YAML::LoadFile(entry.path().string())["scenery"])
            scenery.insert(item["picture"].as<std::string>());
    ASSERT_FALSE(scenery.empty());
    for (const std::string& picture : scenery)
    {
        const artgen::PictureRecipe* recipe = Find("Entity\\" + picture);
        ASSERT_NE(recipe, nullptr) << picture;
        EXPECT_TRUE(recipe->alpha) << picture;
    }
    // Something is drawn in each, and it is lit rock or metal, not an empty square.
    for (const char* picture : {"Entity\\beacon.bmp", "Entity\\asteroid_small.bmp", "Entity\\relay.bmp"})
    {
        const Image image = Draw(picture);
        double cover = 0.0;
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x)
                cover += image.A(x, y);
        EXPECT_GT(cover, image.width * image.height * 0.05) << picture;
        EXPECT_LT(cover, image.width * image.height * 0.95) << picture;
    }

    const YAML::Node parts = YAML::LoadFile(DATA_DIR + "/parts.yaml");
    for (const char* list : {"power_plants", "weapons"})
        for (const YAML::Node& part : parts[list])
        {
            const std::string picture = part["picture"].as<std::string>("");
            if (picture.empty())
                continue;
            const artgen::PictureRecipe* recipe = Find(picture);
            ASSERT_NE(recipe, nullptr) << picture;
            EXPECT_EQ(recipe->width, 64);
            EXPECT_EQ(recipe->height, 64);
            EXPECT_TRUE(recipe->alpha);
        }
}

TEST(ShipArt, TileNoiseRepeatsExactlyAcrossTheTile)
{
    // Seamless tiles rest on this: the field at x and at x + 128 is the same.
    const artgen::kit::TileableFbm field(128.0, 2, 5, 0.55, 13u);
    double spread = 0.0;
    for (double y = 0.5; y < 128.0; y += 9.7)
        for (double x = 0.5; x < 128.0; x += 7.3)
        {
            const double value = field.At(x, y);
            EXPECT_NEAR(value, field.At(x + 128.0, y), 1e-9);
            EXPECT_NEAR(value, field.At(x, y + 128.0), 1e-9);
            EXPECT_NEAR(value, field.At(x - 128.0, y - 128.0), 1e-9);
            spread = std::max(spread, std::fabs(value));
        }
    EXPECT_GT(spread, 0.2); // and it is not flat
    // Continuous across the wrap: neighbours either side of the edge differ little.
    for (double y = 0.5; y < 128.0; y += 3.0)
        EXPECT_LT(std::fabs(field.At(127.99, y) - field.At(128.01, y)), 0.01);
}

TEST(ShipArt, OddOrBrokenSourcesCostOnlyTheirOwnPictures)
{
    const std::string dir = testsupport::MakeTempDir("korvath-shipart");
    ASSERT_FALSE(dir.empty());
    const auto write = [&](const std::string& p_name, const std::string& p_text) {
        ASSERT_TRUE(testsupport::WriteFileBytes(dir + "/" + p_name, std::vector<uint8_t>(p_text.begin(), p_text.end())));
    };
    // A hull nobody has designed, with a large box; entities.yaml is damaged; no tile sets,
    // no levels.
    write("parts.yaml", "hulls:\n  - {name: Mystery, image: art\\hulls\\mystery\\mystery, box: {x: 10, y: 12, width: 70, height: 90},"
                        " mounts: {front: [45, 0], left: [0, 50], right: [90, 50], back: [45, 110]}}\n");
    write("entities.yaml", "entities: [ {hull: oops\n");
    artgen::ArtContext context;
    context.dataDir = dir;
    std::vector<artgen::PictureRecipe> pictures;
    for (artgen::PictureLister lister : artgen::GetPictureListers())
        lister(context, pictures);
    std::map<std::string, const artgen::PictureRecipe*> byName;
    for (const artgen::PictureRecipe& picture : pictures)
        byName[picture.gameName] = &picture;

    const auto still = byName.find("art\\hulls\\mystery\\mystery_short_still0000.bmp");
    ASSERT_NE(still, byName.end());
    const artgen::PictureRecipe& recipe = *still->second;
    EXPECT_GE(recipe.width, 10 + 70);
    EXPECT_GE(recipe.height, 12 + 90);
    EXPECT_GE(recipe.height, 110);
    EXPECT_EQ(recipe.width % 8, 0);
    EXPECT_NE(byName.find("art\\hulls\\mystery\\mystery_long_right0003.bmp"), byName.end());
    artgen::Canvas canvas(recipe.width, recipe.height);
    recipe.draw(canvas);
    EXPECT_TRUE(canvas.IsHealthy());
    // Without tile sets only the starfield's tile is drawn; without levels, no scenery.
    EXPECT_NE(byName.find("Art\\startile000.bmp"), byName.end());
    for (const auto& [name, picture] : byName)
    {
        EXPECT_EQ(name.rfind("art\\tiles\\", 0), std::string::npos) << name;
        EXPECT_EQ(name.rfind("Entity\\", 0), std::string::npos) << name;
    }
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
}
