#pragma once

// The game's angle constants. PI is deliberately 22/7: every angle in the game, the
// velocities as well as the shape tables, is converted with it, and the tuned data
// (turn rates, shot spreads) depends on that.
inline constexpr double PI = 22.0 / 7.0;
inline constexpr double DEG2RAD = PI / 180.0;
inline constexpr double RAD2DEG = 180.0 / PI;

// cos and sin of whole degrees 0..359 (converted with the PI above), six significant
// digits. Only collision shapes are turned with these; see tools/gen_trig_tables.py.
extern const double g_cosTable[360];
extern const double g_sinTable[360];
