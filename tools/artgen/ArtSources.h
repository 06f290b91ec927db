#pragma once

// What the pictures of ships, tiles, scenery and parts need to know from the data sources in
// data/: which base names, tile sets and scenery pictures exist, and the collision boxes the
// ship pictures must hold. Read with yaml-cpp; a source that cannot be read is reported on
// stderr and gives nothing.

#include <string>
#include <vector>

namespace artgen
{

struct HullSource
{
    std::string base; // e.g. "art\hulls\cargo\cargo"
    bool playerSide = false;
    int boxX = 0;
    int boxY = 0;
    int boxWidth = 0;
    int boxHeight = 0;
    int mountRight = 0;  // the furthest weapon mount, right and down (0 for computer ships)
    int mountBottom = 0;
};

struct TileSetSource
{
    std::string name;  // the set's key in tilesets.yaml
    std::string first; // e.g. "art\tiles\space000.bmp"
};

// Every distinct hull base name of parts.yaml and entities.yaml, player hulls first, with the
// largest box seen for it. False (with a message) when a file cannot be read.
bool ReadHullSources(const std::string& p_dataDir, std::vector<HullSource>& p_hulls);
bool ReadTileSets(const std::string& p_dataDir, std::vector<TileSetSource>& p_sets);
// The picture names of every scenery object in data/levels/*.yaml, sorted and distinct.
bool ReadSceneryPictures(const std::string& p_dataDir, std::vector<std::string>& p_pictures);
// The power-plant and weapon pictures of parts.yaml, distinct, in file order.
bool ReadPartPictures(const std::string& p_dataDir, std::vector<std::string>& p_pictures);

// "art\hulls\cargo\cargo" -> "cargo": the last component of a game path.
std::string LastComponent(const std::string& p_gamePath);

} // namespace artgen
