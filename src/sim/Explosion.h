#pragma once

#include <memory>

class Animation;
class WorldObject;

// The explosion every destroyed ship, missile and bomb leaves: the eight frames
// "art\explosion\exp00.bmp" .. "exp07.bmp", 0.1 s each, not looping, so it lasts about 0.8 s
// and then marks itself dead. It belongs to the player's team: the player's shots pass
// through it, while a computer ship's shot that touches it is used up for nothing.
namespace explosion
{
inline constexpr int NUM_FRAMES = 8;
inline constexpr float FRAME_TIME = 0.1f;

// An explosion at (p_x, p_y) turned by p_heading degrees, not yet in any level.
std::unique_ptr<Animation> Make(double p_x, double p_y, double p_heading);
// An explosion at p_object's position and heading, added to the current level in layer 0,
// with the explosion sound.
void AddAt(const WorldObject& p_object);
} // namespace explosion
