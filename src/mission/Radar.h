#pragma once

#include "mission/HudLayout.h"
#include "sim/GameObject.h"

#include <cstdint>
#include <vector>

class CollisionGrid;
class WorldObject;

// The HUD's round radar: every ship and explosion of the level as a red blip, the scenery in
// white, turned with the player's ship so that what lies ahead shows above the centre. What
// lies beyond the radar's reach is pinned to its rim in yellow. Shots do not show.
//
// Its picture is made for the top-left corner: a plate flush with the left and top edges,
// round beyond the dial. Elsewhere the plate is turned over so that its flush sides meet the
// screen edges the radar keeps to (and in the middle of an edge it is round on both sides),
// while the dial itself is always drawn the right way round, forward pointing up.
class Radar : public GameObject
{
public:
    // The radar's centre within its picture.
    static constexpr int32_t CENTRE_X = 80;
    static constexpr int32_t CENTRE_Y = 82;
    // How far the picture's plate reaches beyond the dial's centre on its round sides.
    static constexpr int32_t PLATE_REACH = 96;
    // The dial: the glass, its bezel and the forward mark, drawn the right way round.
    static constexpr double DIAL_RADIUS = 81.5;
    // Blips further from the centre than this are pinned to the rim.
    static constexpr double RIM = 75.0;
    // The side of a blip's square.
    static constexpr double BLIP_SIZE = 4.0;
    // World units per radar pixel at zoom 1, times 80; zoom 5 gives 40.
    static constexpr int32_t ZOOM_SCALE = 640;
    static constexpr int32_t DEFAULT_ZOOM = 5;

    struct Blip
    {
        double x = 0.0; // from the radar's centre, in pixels
        double y = 0.0;
        uint8_t red = 0;
        uint8_t green = 0;
        uint8_t blue = 0;
        bool onRim = false;
    };

    Radar();
    ~Radar() override;

    bool Update(float p_dt) override;
    // The picture alone, at the radar's position.
    bool Render() override;
    // The picture at its place (in the top-left corner as it is, elsewhere with its plate
    // turned to the edges) in the picture's colour, and around the dial's centre the blips of
    // the current level as p_player sees them. Without a level or a player only the picture
    // is drawn.
    void Draw(const HudLayout::RadarPlace& p_place, const WorldObject* p_player);

    // Where an object at (p_objectX, p_objectY) shows for a player at (p_playerX, p_playerY)
    // heading p_heading degrees, at zoom p_zoom, in the colour given (yellow on the rim).
    static Blip PlaceBlip(double p_playerX, double p_playerY, double p_heading, int32_t p_zoom, double p_objectX,
                          double p_objectY, uint8_t p_red, uint8_t p_green, uint8_t p_blue);
    // The blips of every cell of p_grid: each cell's ships and explosions, then its scenery.
    void CollectBlips(const CollisionGrid& p_grid, const WorldObject& p_player, std::vector<Blip>& p_blips) const;

    int32_t GetZoom() const { return m_zoom; }
    // Never below 1.
    void SetZoom(int32_t p_zoom) { m_zoom = p_zoom < 1 ? 1 : p_zoom; }

private:
    // The picture with its plate turned to meet the edges of p_place, the dial unturned.
    void DrawTurned(const HudLayout::RadarPlace& p_place);

    int32_t m_zoom;
    std::vector<Blip> m_blips; // kept between frames to spare the allocations
};
