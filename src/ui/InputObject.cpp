#include "ui/InputObject.h"

#include <cassert>

InputObject::InputObject(Cursor* p_pCursor) : m_pCursor(p_pCursor)
{
    assert(p_pCursor && "p_pCursor");
    m_pPhysicalDesc = std::make_unique<PhysicalDesc>();
}

InputObject::~InputObject() = default;

void InputObject::Move(double p_dx, double p_dy)
{
    m_pPhysicalDesc->SetPosition(m_pPhysicalDesc->GetX() + p_dx, m_pPhysicalDesc->GetY() + p_dy);
}
