#pragma once

#include "sim/GameObject.h"

class Cursor;

// Base of every widget: a game object placed by the top-left corner of what it draws, in
// pixels of the 1024 x 768 logical screen, that reads the shared cursor for the mouse.
// Its owner calls Update(dt) and Render() every frame.
class InputObject : public GameObject
{
public:
    explicit InputObject(Cursor* p_pCursor);
    ~InputObject() override;

    virtual void Move(double p_dx, double p_dy);

    double GetX() const { return m_pPhysicalDesc->GetX(); }
    double GetY() const { return m_pPhysicalDesc->GetY(); }
    Cursor* GetCursor() const { return m_pCursor; }

protected:
    Cursor* m_pCursor; // not owned
};
