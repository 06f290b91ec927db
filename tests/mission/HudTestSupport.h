#pragma once

// Shared by the HUD and in-game menu tests: a player's ship whose state a test sets, a marker
// object for the radar, and the game's own pictures drawn by the art generator into the
// test's game directory.

#include "artgen/Pictures.h"
#include "sim/PlayerShip.h"
#include "sim/WorldObject.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <string>
#include <system_error>
#include <vector>

namespace hudtest
{

inline std::string FoldCase(std::string p_name)
{
    for (char& c : p_name)
    {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return p_name;
}

// A player's ship placed and damaged directly.
class TestPlayer : public PlayerShip
{
public:
    void SetDefences(unsigned p_armour, unsigned p_maxArmour, unsigned p_shield, unsigned p_maxShield)
    {
        m_armour = p_armour;
        m_maxArmour = p_maxArmour;
        m_shield = p_shield;
        m_maxShield = p_maxShield;
    }
    void Place(double p_x, double p_y, double p_heading)
    {
        m_pPhysicalDesc->SetPosition(p_x, p_y);
        m_pPhysicalDesc->SetHeading(p_heading);
        m_pPhysicalDesc->SetSpeed(0.0);
    }
    void SetAmmunition(uint16_t p_bullets, uint16_t p_missiles, uint16_t p_energy)
    {
        GetPilot().SetBullets(p_bullets);
        GetPilot().SetMissiles(p_missiles);
        GetPilot().SetEnergy(p_energy);
    }
};

// Something in the world at a place, optionally with a picture.
inline WorldObject* MakeMarker(double p_x, double p_y, const char* p_picture = nullptr)
{
    auto* marker = new WorldObject();
    if (p_picture != nullptr)
    {
        marker->LoadImage(p_picture);
    }
    marker->InitPhysicalDesc();
    marker->SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
    return marker;
}

// Draws the named pictures as the art generator does and writes them under the working
// directory, where the game looks for them.
inline void WriteGamePictures(std::initializer_list<const char*> p_names)
{
    static const std::map<std::string, artgen::PictureRecipe> s_pictures = [] {
        artgen::ArtContext context;
        context.dataDir = std::string(KORVATH_SOURCE_DIR) + "/data";
        std::vector<artgen::PictureRecipe> list;
        for (artgen::PictureLister lister : artgen::GetPictureListers())
        {
            lister(context, list);
        }
        std::map<std::string, artgen::PictureRecipe> byName;
        for (const artgen::PictureRecipe& picture : list)
        {
            byName.emplace(FoldCase(picture.gameName), picture);
        }
        return byName;
    }();
    for (const char* name : p_names)
    {
        // The game spells its names in any case ("Art\check.bmp", "entity\asteroid_medium.bmp")
        // and finds them whatever case the generator used.
        const auto found = s_pictures.find(FoldCase(name));
        ASSERT_NE(s_pictures.end(), found) << name << " is not drawn by the art generator";
        const artgen::PictureRecipe& recipe = found->second;
        artgen::Canvas canvas(recipe.width, recipe.height);
        recipe.draw(canvas);
        // Folders in lower case and the file name as given, as the generator writes them, so
        // that every test's pictures share one folder of each name.
        std::string path = name;
        const size_t lastSlash = path.find_last_of('\\');
        for (size_t i = 0; i < path.size(); ++i)
        {
            if (path[i] == '\\')
            {
                path[i] = '/';
            }
            else if (lastSlash != std::string::npos && i < lastSlash)
            {
                path[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(path[i])));
            }
        }
        std::error_code error;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
        ASSERT_TRUE(canvas.SaveBitmap(path, recipe.alpha)) << path;
    }
}

} // namespace hudtest
