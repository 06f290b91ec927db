// Part pictures: the icons of the weapon and power-plant records of parts.yaml, 64 x 64.

#include "ArtSources.h"
#include "Pictures.h"
#include "ShipPainter.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace artgen
{

namespace
{

using kit::Hex;
using kit::Rgb;

constexpr int ICON = 64;
const Vec3 UP{0.0, 0.0, 1.0};
const Rgb GUNMETAL = Hex(0x4A4E56);
const Rgb STEEL = Hex(0x9AA4B0);

// A compact twin-barrel machine gun, seen from above, muzzles up.
void DrawMachineGun(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{3.0, -28}, {8.0, -28}, {8.0, -2}, {3.0, -2}}, 6.0);
        p.FillRound(GUNMETAL, 5.5, 2.5, -14.0, 6.0, 0.9, 0.7);
        // cooling rings along the barrel
        for (int i = 0; i < 4; ++i)
        {
            const double y = -24.0 + i * 5.0;
            p.Begin();
            p.Poly({{2.5, y}, {8.5, y}, {8.5, y + 1.6}, {2.5, y + 1.6}}, 6.5);
            p.FillRound(STEEL, 5.5, 3.0, y, 6.5, 0.9, 0.8);
        }
        p.Begin();
        p.Ellipse(5.5, -27.6, 7.0, 1.4, 0.7);
        kit::SetSource(p.Cr(), {0.02, 0.02, 0.02});
        cairo_fill(p.Cr());
        // ammunition feed
        p.Begin();
        p.Poly({{14, 0}, {24, 4}, {24, 22}, {14, 22}}, 3.0);
        p.FillFlat(Hex(0x6A5A3A), {0.2, 0.0, 1.0}, 0.4);
        for (int i = 0; i < 5; ++i)
            p.PanelLine({{14.0, 4.0 + i * 4.0}, {24.0, 6.0 + i * 4.0}}, 3.2, 0.5);
    }
    p.SetMirror(1.0);
    p.Begin();
    p.Poly({{-12, -4}, {12, -4}, {14, 20}, {10, 26}, {-10, 26}, {-14, 20}}, 5.0);
    p.FillRound(GUNMETAL, 0.0, 14.0, 10.0, 5.0, 0.7, 0.5);
    p.PanelLine({{-12, 6}, {12, 6}}, 5.0, 0.5);
    p.PanelLine({{0, 6}, {0, 26}}, 5.0, 0.4);
    p.Sphere(0.0, 14.0, 8.0, 4.0, STEEL, 0.6);
    p.Light(0.0, 0.5, 7.0, 1.2, Hex(0xFF4020), 0.8);
    p.Finish();
}

// A squat cylindrical fission cell with yellow-and-black warning stripes.
void DrawFissionCell(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    cairo_t* cr = p.Cr();
    // seen from above and a little in front: a cylinder with its lid
    p.Begin();
    p.Poly({{-20, -10}, {20, -10}, {20, 16}, {-20, 16}}, 4.0);
    p.FillRound(Hex(0x7A8088), 0.0, 20.0, 0.0, 4.0, 0.9, 0.5);
    p.Begin();
    p.Ellipse(0.0, 16.0, 4.0, 20.0, 7.0);
    p.FillRound(Hex(0x7A8088), 0.0, 20.0, 16.0, 4.0, 0.9, 0.5);
    // the warning band
    cairo_save(cr);
    p.Begin();
    p.Poly({{-20, 2}, {20, 2}, {20, 10}, {-20, 10}}, 4.2);
    cairo_clip(cr);
    p.Begin();
    p.Poly({{-20, 2}, {20, 2}, {20, 10}, {-20, 10}}, 4.2);
    p.FillRound(Hex(0xE8C020), 0.0, 20.0, 6.0, 4.2, 0.9, 0.4);
    for (int i = -6; i < 6; ++i)
    {
        p.Begin();
        p.Poly({{i * 6.0, 10}, {i * 6.0 + 3.0, 10}, {i * 6.0 + 11.0, 2}, {i * 6.0 + 8.0, 2}}, 4.3);
        p.FillRound(Hex(0x1A1A1A), 0.0, 20.0, 6.0, 4.3, 0.9, 0.3);
    }
    cairo_restore(cr);
    // the lid with its trefoil
    p.Begin();
    p.Ellipse(0.0, -10.0, 4.0, 20.0, 7.0);
    p.FillFlat(Hex(0xA8AEB6), {0.0, -0.4, 1.0}, 0.6);
    p.Begin();
    p.Ellipse(0.0, -10.0, 4.5, 14.0, 4.8);
    p.Stroke(Hex(0x30343A), 1.0, 0.8);
    p.BeginDecal(0.0, -10.0, 4.6);
    for (int i = 0; i < 3; ++i)
    {
        const double angle = -kit::PI / 2.0 + 2.0 * kit::PI * i / 3.0;
        cairo_move_to(cr, 0.0, 0.0);
        cairo_arc(cr, 0.0, 0.0, 4.2, angle - 0.5, angle + 0.5);
        cairo_close_path(cr);
    }
    kit::SetSource(cr, Hex(0xE8C020));
    cairo_fill(cr);
    p.EndDecal();
    p.Light(0.0, -10.0, 5.0, 1.0, Hex(0x9AFF60), 0.9);
    // terminals
    for (double side : {1.0, -1.0})
    {
        p.SetMirror(side);
        p.Begin();
        p.Poly({{20, -4}, {26, -4}, {26, 0}, {20, 0}}, 4.0);
        p.FillFlat(Hex(0xB08040), UP, 0.6);
    }
    p.SetMirror(1.0);
    p.Finish();
}

// A glowing blue spherical core held in a frame.
void DrawFusionCore(Canvas& p_canvas)
{
    ShipPainter p(p_canvas, Faction::Player, 0.0, false);
    cairo_t* cr = p.Cr();
    // the frame: a square with cut corners and four clamps
    p.Begin();
    p.Poly({{-18, -26}, {18, -26}, {26, -18}, {26, 18}, {18, 26}, {-18, 26}, {-26, 18}, {-26, -18}}, 2.0);
    p.FillFlat(Hex(0x3A4048), UP, 0.4);
    p.Begin();
    p.Ellipse(0.0, 0.0, 2.5, 20.0, 20.0);
    kit::SetSource(cr, Hex(0x101418));
    cairo_fill(cr);
    for (int i = 0; i < 4; ++i)
    {
        const double angle = kit::PI / 4.0 + kit::PI / 2.0 * i;
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        p.Begin();
        p.Poly({{c * 15.0 - s * 3.0, s * 15.0 + c * 3.0}, {c * 27.0 - s * 3.0, s * 27.0 + c * 3.0},
                {c * 27.0 + s * 3.0, s * 27.0 - c * 3.0}, {c * 15.0 + s * 3.0, s * 15.0 - c * 3.0}},
               5.0);
        p.FillFlat(STEEL, {c * 0.3, s * 0.3, 1.0}, 0.6);
    }
    // the core
    p.Light(0.0, 0.0, 6.0, 16.0, Hex(0x2A7AFF), 0.55);
    p.Sphere(0.0, 0.0, 6.0, 12.0, Hex(0x3A8AFF), 0.9);
    p.Light(0.0, 0.0, 8.0, 6.0, Hex(0xBFE8FF), 0.9);
    cairo_set_line_width(cr, 1.0);
    for (int i = 0; i < 3; ++i)
    {
        p.Begin();
        p.Ellipse(0.0, 0.0, 7.0, 12.5, 4.5 + i * 3.5);
        p.Stroke(Hex(0xA8D8FF), 0.8, 0.5);
    }
    p.Finish();
}

struct PartDesign
{
    const char* picture;
    void (*draw)(Canvas& p_canvas);
};

const PartDesign PARTS[] = {
    {"art\\parts\\machine_gun.bmp", DrawMachineGun},
    {"art\\parts\\fission_cell.bmp", DrawFissionCell},
    {"art\\parts\\fusion_core.bmp", DrawFusionCore},
};

void ListPartPictures(const ArtContext& p_context, std::vector<PictureRecipe>& p_pictures)
{
    std::vector<std::string> wanted;
    ReadPartPictures(p_context.dataDir, wanted);
    for (const std::string& picture : wanted)
    {
        const PartDesign* design = nullptr;
        for (const PartDesign& candidate : PARTS)
            if (picture == candidate.picture)
                design = &candidate;
        if (design == nullptr)
        {
            std::fprintf(stderr, "korvath-artgen: no drawing for the part picture %s\n", picture.c_str());
            continue;
        }
        p_pictures.push_back({picture, ICON, ICON, true, design->draw});
    }
}

const PictureRegistrar s_parts(ListPartPictures);

} // namespace
} // namespace artgen
