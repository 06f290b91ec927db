// The ships: for every hull of parts.yaml and entities.yaml, the frames a hull animation loads
// (straight with a short and a long flame, and four steps of banking each way).

#include "ArtSources.h"
#include "Pictures.h"
#include "ShipDesigns.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace artgen
{

namespace
{

constexpr int LEAN_STEPS = 4;
// Bank of each lean step: 10, 20, 30 and 40 degrees, the last at full turn.
constexpr double LEAN_STEP_RADIANS = 10.0 * kit::PI / 180.0;

int RoundUp(int p_value, int p_step)
{
    return (p_value + p_step - 1) / p_step * p_step;
}

void DrawShipFrame(Canvas& p_canvas, const ShipDesign* p_design, Faction p_faction, double p_roll, bool p_long)
{
    const bool banks = p_design == nullptr || p_design->banks;
    ShipPainter painter(p_canvas, p_faction, banks ? p_roll : 0.0, p_long);
    if (p_design != nullptr)
    {
        painter.SetLayout(p_design->scale, p_design->shiftY);
        p_design->draw(painter);
    }
    else
        DrawGenericShip(painter);
    painter.Finish();
}

void ListShipPictures(const ArtContext& p_context, std::vector<PictureRecipe>& p_pictures)
{
    std::vector<HullSource> hulls;
    if (!ReadHullSources(p_context.dataDir, hulls))
        std::fprintf(stderr, "korvath-artgen: ship pictures are drawn only for the hulls that could be read\n");

    for (const HullSource& hull : hulls)
    {
        const ShipDesign* design = FindShipDesign(LastComponent(hull.base));
        const Faction faction = hull.playerSide ? Faction::Player : Faction::Enemy;
        int width = 0;
        int height = 0;
        if (design != nullptr)
        {
            width = design->width;
            height = design->height;
        }
        else
        {
            // A hull nobody designed yet gets a plain fighter big enough for its box.
            width = std::max(32, RoundUp(std::max(2 * hull.boxX + hull.boxWidth, hull.mountRight + 2), 8));
            height = std::max(32, RoundUp(std::max(2 * hull.boxY + hull.boxHeight, hull.mountBottom + 2), 8));
            std::fprintf(stderr, "korvath-artgen: no design for the hull %s; drawing a plain %dx%d fighter\n",
                         hull.base.c_str(), width, height);
        }

        const auto add = [&](const std::string& p_suffix, double p_roll, bool p_long) {
            p_pictures.push_back({hull.base + p_suffix, width, height, true,
                                  [design, faction, p_roll, p_long](Canvas& p_canvas) {
                                      DrawShipFrame(p_canvas, design, faction, p_roll, p_long);
                                  }});
        };
        for (const bool longFlame : {false, true})
        {
            const std::string flame = longFlame ? "_long_" : "_short_";
            add(flame + "still0000.bmp", 0.0, longFlame);
            for (int step = 0; step < LEAN_STEPS; ++step)
            {
                char number[8];
                std::snprintf(number, sizeof(number), "%04d", step);
                const double roll = LEAN_STEP_RADIANS * double(step + 1);
                // Turning left banks the left wing down.
                add(flame + "left" + number + ".bmp", -roll, longFlame);
                add(flame + "right" + number + ".bmp", roll, longFlame);
            }
        }
    }
}

const PictureRegistrar s_ships(ListShipPictures);

} // namespace
} // namespace artgen
