#pragma once

// The four object lists of every quadtree leaf. Scenery is drawn first, then ships and
// explosions, then shots; layer 1 is never filled.
enum Layer : int
{
    LAYER_SHIPS = 0,       // ships and explosions: updated, dead removed, drawn second
    LAYER_UNUSED = 1,      // nothing is put here
    LAYER_PROJECTILES = 2, // shots: updated, dead removed, drawn third
    LAYER_SCENERY = 3,     // static scenery: updated, never moved or removed, drawn first
};

inline constexpr int NUM_LAYERS = 4;

// Teams (the byte m_team of a world object). Shots never hit their own team.
inline constexpr unsigned char TEAM_PLAYER = 0;
inline constexpr unsigned char TEAM_COMPUTER = 1;
