#include "sim/Explosion.h"

#include <cstdio>

#include "gfx/Animation.h"
#include "sim/Layers.h"
#include "sim/Level.h"
#include "sound/Sound.h"

namespace explosion
{

std::unique_ptr<Animation> Make(double p_x, double p_y, double p_heading)
{
    auto animation = std::make_unique<Animation>();
    animation->Init(NUM_FRAMES, FRAME_TIME, false);
    for (int i = 0; i < NUM_FRAMES; ++i)
    {
        char name[32];
        std::snprintf(name, sizeof(name), "art\\explosion\\exp%02d.bmp", i);
        animation->AddImage(name);
    }
    animation->SetTeam(TEAM_PLAYER);
    animation->SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
    animation->GetPhysicalDesc()->SetHeading(p_heading);
    return animation;
}

void AddAt(const WorldObject& p_object)
{
    std::unique_ptr<Animation> animation = Make(p_object.GetX(), p_object.GetY(), p_object.GetHeading());
    if (Level* level = Level::GetCurrent())
    {
        level->Add(animation.release(), LAYER_SHIPS);
    }
    if (g_pSound != nullptr)
    {
        g_pSound->Play(Sound::SOUND_EXPLOSION);
    }
}

} // namespace explosion
