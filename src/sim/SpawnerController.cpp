#include "sim/SpawnerController.h"

#include <memory>

#include "app/Random.h"
#include "sim/EntityShip.h"
#include "sim/Layers.h"
#include "sim/Level.h"

SpawnerController::SpawnerController(Ship* p_owner) : Controller(p_owner), m_pShip(p_owner)
{
    GameSrandFromTime();
}

int SpawnerController::Think(int p_state, float p_dt)
{
    (void)p_state;
    m_spawnTimer -= p_dt;
    if (m_spawnTimer < 0.0f)
    {
        m_spawnTimer = static_cast<float>(10 + GameRand() % 15);
        Level* level = Level::GetCurrent();
        if (level != nullptr)
        {
            auto child = std::make_unique<EntityShip>();
            child->Load(CHILD_FILE);
            child->SetPosition(static_cast<float>(m_pShip->GetX()), static_cast<float>(m_pShip->GetY()));
            child->SetTarget(level->GetPlayer());
            level->Add(child.release(), LAYER_SHIPS);
        }
    }
    // However much damage it takes, a spawner stays where it is and stays in the world.
    m_pShip->GetPhysicalDesc()->SetSpeed(0.0);
    m_pShip->SetDead(false);
    return 0;
}
