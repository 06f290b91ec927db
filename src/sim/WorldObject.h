#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "sim/GameObject.h"
#include "sim/Layers.h"

class Controller;
class QuadNode;

// A game object that lives in the mission world: it belongs to a team, may be steered by a
// controller, may be named for the mission triggers, and sits in one list of one quadtree
// leaf while it is in the world.
class WorldObject : public GameObject
{
public:
    WorldObject();
    // Takes the object out of its leaf's list first, so destroying one object never takes
    // the rest of its list with it; then clears its entry in the name registry.
    ~WorldObject() override;

    // Counts the update, lets the controller think, then moves by the description.
    bool Update(float p_dt) override;
    // The image at the position truncated to whole units, angle 0, blended.
    bool Render() override;

    virtual double GetCenterX() const { return 0.0; }
    virtual double GetCenterY() const { return 0.0; }
    // Ships take damage; everything else ignores hits.
    virtual void TakeDamage(unsigned p_amount);

    // The description's position and heading (0 without a description).
    double GetX() const;
    double GetY() const;
    double GetHeading() const;

    // Replaces the name by a copy of p_name; null or "" leaves the object unnamed.
    void SetName(const char* p_name);
    const std::string& GetName() const { return m_name; }
    bool HasName() const { return !m_name.empty(); }

    // Forwards to the controller when one is attached.
    void SetTarget(WorldObject* p_target);
    void SetController(std::unique_ptr<Controller> p_controller);
    Controller* GetController() const { return m_pController.get(); }

    uint8_t GetTeam() const { return m_team; }
    void SetTeam(uint8_t p_team) { m_team = p_team; }
    int GetUpdateCount() const { return m_updateCount; }

    // The leaf and layer whose list holds the object; null and -1 outside the world.
    QuadNode* GetLeaf() const { return m_pLeaf; }
    int GetLayer() const { return m_layer; }
    WorldObject* GetNextInList() const { return static_cast<WorldObject*>(m_pNext); }

protected:
    std::unique_ptr<Controller> m_pController;
    int m_controllerState = 0;
    uint8_t m_team = TEAM_COMPUTER;
    int m_updateCount = 0;
    std::string m_name; // empty: unnamed

private:
    friend class QuadNode; // keeps m_pLeaf and m_layer with the lists

    QuadNode* m_pLeaf = nullptr;
    int m_layer = -1;
};
