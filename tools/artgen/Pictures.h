#pragma once

#include "Canvas.h"

#include <functional>
#include <string>
#include <vector>

namespace artgen
{

// What the drawing functions may read: the data sources (ship names, sizes and so on).
struct ArtContext
{
    std::string dataDir; // the repository's data/ folder
};

// One picture of the game directory and how to draw it.
struct PictureRecipe
{
    std::string gameName; // as the game asks for it, e.g. "art\menu\corvel_logo.bmp"
    int width = 0;
    int height = 0;
    bool alpha = false; // 32-bit with alpha, or 24-bit opaque
    std::function<void(Canvas&)> draw;
};

using PictureLister = void (*)(const ArtContext& p_context, std::vector<PictureRecipe>& p_pictures);

// Each topic file registers its lister once, with a static PictureRegistrar; the generator
// asks every lister for its pictures. A lister that cannot read what it needs says so on
// stderr and adds nothing, so the missing pictures show up in the game's checks.
struct PictureRegistrar
{
    explicit PictureRegistrar(PictureLister p_lister);
};

const std::vector<PictureLister>& GetPictureListers();

} // namespace artgen
