#pragma once

class WorldObject;

// What steers a world object: asked once per update for the next step. The behaviours
// (attack, spawner) derive from it.
class Controller
{
public:
    explicit Controller(WorldObject* p_owner = nullptr) : m_pOwner(p_owner) {}
    virtual ~Controller() = default;
    Controller(const Controller&) = delete;
    Controller& operator=(const Controller&) = delete;

    // Runs one step from p_state and answers the next state; the base has no behaviour.
    virtual int Think(int p_state, float p_dt);

    void SetTarget(WorldObject* p_target) { m_pTarget = p_target; }
    WorldObject* GetTarget() const { return m_pTarget; }
    WorldObject* GetOwner() const { return m_pOwner; }

protected:
    WorldObject* m_pTarget = nullptr; // not owned
    WorldObject* m_pOwner = nullptr;  // not owned: the owner owns the controller
};
