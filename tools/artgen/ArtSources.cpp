#include "ArtSources.h"

#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <set>
#include <system_error>

namespace artgen
{

namespace
{

namespace fs = std::filesystem;

// yaml-cpp reports a missing file or a node of an unexpected shape by throwing; each reader
// runs inside this so that a broken source costs only its own pictures.
template <typename Reader>
bool Guarded(const fs::path& p_file, Reader p_reader)
{
    try
    {
        p_reader(YAML::LoadFile(p_file.string()));
        return true;
    }
    catch (const YAML::Exception& e)
    {
        std::fprintf(stderr, "korvath-artgen: %s:%d: %s\n", p_file.c_str(), e.mark.line + 1, e.msg.c_str());
    }
    catch (const std::exception& e)
    {
        std::fprintf(stderr, "korvath-artgen: %s: %s\n", p_file.c_str(), e.what());
    }
    return false;
}

void AddHull(std::vector<HullSource>& p_hulls, const HullSource& p_hull)
{
    if (p_hull.base.empty())
        return;
    for (HullSource& known : p_hulls)
    {
        if (known.base == p_hull.base)
        {
            // One picture serves every user: it must hold the largest box.
            const int right = std::max(known.boxX + known.boxWidth, p_hull.boxX + p_hull.boxWidth);
            const int bottom = std::max(known.boxY + known.boxHeight, p_hull.boxY + p_hull.boxHeight);
            known.boxX = std::min(known.boxX, p_hull.boxX);
            known.boxY = std::min(known.boxY, p_hull.boxY);
            known.boxWidth = right - known.boxX;
            known.boxHeight = bottom - known.boxY;
            known.mountRight = std::max(known.mountRight, p_hull.mountRight);
            known.mountBottom = std::max(known.mountBottom, p_hull.mountBottom);
            known.playerSide = known.playerSide || p_hull.playerSide;
            return;
        }
    }
    p_hulls.push_back(p_hull);
}

void ReadBox(const YAML::Node& p_box, HullSource& p_hull)
{
    if (!p_box.IsMap())
        return;
    p_hull.boxX = p_box["x"].as<int>(0);
    p_hull.boxY = p_box["y"].as<int>(0);
    p_hull.boxWidth = p_box["width"].as<int>(0);
    p_hull.boxHeight = p_box["height"].as<int>(0);
}

std::vector<fs::path> LevelFiles(const fs::path& p_dir)
{
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator it(p_dir, error), end; !error && it != end; it.increment(error))
        if (it->path().extension() == ".yaml")
            files.push_back(it->path());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

std::string LastComponent(const std::string& p_gamePath)
{
    const size_t slash = p_gamePath.find_last_of("\\/");
    return slash == std::string::npos ? p_gamePath : p_gamePath.substr(slash + 1);
}

bool ReadHullSources(const std::string& p_dataDir, std::vector<HullSource>& p_hulls)
{
    const fs::path dir(p_dataDir);
    const bool parts = Guarded(dir / "parts.yaml", [&](const YAML::Node& p_root) {
        for (const YAML::Node& hull : p_root["hulls"])
        {
            HullSource source;
            source.base = hull["image"].as<std::string>("");
            source.playerSide = true;
            ReadBox(hull["box"], source);
            const YAML::Node mounts = hull["mounts"];
            if (mounts.IsMap())
                for (const auto& mount : mounts)
                    if (mount.second.IsSequence() && mount.second.size() == 2)
                    {
                        source.mountRight = std::max(source.mountRight, mount.second[0].as<int>(0));
                        source.mountBottom = std::max(source.mountBottom, mount.second[1].as<int>(0));
                    }
            AddHull(p_hulls, source);
        }
    });
    const bool entities = Guarded(dir / "entities.yaml", [&](const YAML::Node& p_root) {
        for (const YAML::Node& entity : p_root["entities"])
        {
            HullSource source;
            source.base = entity["hull"].as<std::string>("");
            source.playerSide = entity["team"].as<std::string>("computer") == "player";
            ReadBox(entity["box"], source);
            AddHull(p_hulls, source);
        }
    });
    return parts && entities;
}

bool ReadTileSets(const std::string& p_dataDir, std::vector<TileSetSource>& p_sets)
{
    return Guarded(fs::path(p_dataDir) / "tilesets.yaml", [&](const YAML::Node& p_root) {
        for (const auto& set : p_root["tilesets"])
        {
            TileSetSource source;
            source.name = set.first.as<std::string>("");
            source.first = set.second["first"].as<std::string>("");
            if (!source.first.empty())
                p_sets.push_back(source);
        }
    });
}

bool ReadSceneryPictures(const std::string& p_dataDir, std::vector<std::string>& p_pictures)
{
    std::set<std::string> pictures;
    bool all = true;
    for (const fs::path& level : LevelFiles(fs::path(p_dataDir) / "levels"))
    {
        all = Guarded(level, [&](const YAML::Node& p_root) {
                  for (const YAML::Node& scenery : p_root["scenery"])
                  {
                      const std::string picture = scenery["picture"].as<std::string>("");
                      if (!picture.empty())
                          pictures.insert(picture);
                  }
              }) && all;
    }
    p_pictures.assign(pictures.begin(), pictures.end());
    return all;
}

bool ReadPartPictures(const std::string& p_dataDir, std::vector<std::string>& p_pictures)
{
    return Guarded(fs::path(p_dataDir) / "parts.yaml", [&](const YAML::Node& p_root) {
        for (const char* list : {"power_plants", "weapons"})
            for (const YAML::Node& part : p_root[list])
            {
                const std::string picture = part["picture"].as<std::string>("");
                if (!picture.empty() && std::find(p_pictures.begin(), p_pictures.end(), picture) == p_pictures.end())
                    p_pictures.push_back(picture);
            }
    });
}

} // namespace artgen
