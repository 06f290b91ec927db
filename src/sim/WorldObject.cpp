#include "sim/WorldObject.h"

#include <cmath>

#include "sim/Controller.h"
#include "sim/NameRegistry.h"
#include "sim/QuadNode.h"

WorldObject::WorldObject() = default;

WorldObject::~WorldObject()
{
    QuadNode::Unlink(this);
    m_pController.reset();
    if (!m_name.empty() && g_pNameRegistry != nullptr)
    {
        g_pNameRegistry->Clear(m_name);
    }
}

bool WorldObject::Update(float p_dt)
{
    ++m_updateCount;
    if (m_pController)
    {
        m_pController->Think(m_controllerState, p_dt);
    }
    if (m_pPhysicalDesc)
    {
        m_pPhysicalDesc->Update(p_dt);
    }
    return true;
}

bool WorldObject::Render()
{
    if (m_pImage && m_pPhysicalDesc)
    {
        m_pImage->Draw(std::trunc(m_pPhysicalDesc->GetX()), std::trunc(m_pPhysicalDesc->GetY()), 0.0, true);
    }
    return true;
}

void WorldObject::TakeDamage(unsigned p_amount)
{
    (void)p_amount;
}

double WorldObject::GetX() const
{
    return m_pPhysicalDesc ? m_pPhysicalDesc->GetX() : 0.0;
}

double WorldObject::GetY() const
{
    return m_pPhysicalDesc ? m_pPhysicalDesc->GetY() : 0.0;
}

double WorldObject::GetHeading() const
{
    return m_pPhysicalDesc ? m_pPhysicalDesc->GetHeading() : 0.0;
}

void WorldObject::SetName(const char* p_name)
{
    m_name = p_name != nullptr ? p_name : "";
}

void WorldObject::SetTarget(WorldObject* p_target)
{
    if (m_pController)
    {
        m_pController->SetTarget(p_target);
    }
}

void WorldObject::SetController(std::unique_ptr<Controller> p_controller)
{
    m_pController = std::move(p_controller);
}
