#include "sim/GameObject.h"

#include <cassert>

ObjectLink::~ObjectLink()
{
    // Take the entries one by one; each is cut from its successor before it is deleted,
    // so no destructor below this one has anything left to destroy.
    ObjectLink* pNext = m_pNext;
    m_pNext = nullptr;
    while (pNext != nullptr)
    {
        ObjectLink* pAfter = pNext->m_pNext;
        pNext->m_pNext = nullptr;
        delete pNext;
        pNext = pAfter;
    }
}

GameObject::GameObject() = default;

GameObject::~GameObject() = default;

Image* GameObject::GetImage()
{
    return m_pImage.get();
}

PhysicalDesc* GameObject::GetPhysicalDesc()
{
    return m_pPhysicalDesc.get();
}

void GameObject::InitPhysicalDesc()
{
    if (m_pPhysicalDesc)
    {
        return;
    }
    m_pPhysicalDesc = std::make_unique<PhysicalDesc>();
    if (m_pImage)
    {
        m_pPhysicalDesc->SetBox(static_cast<unsigned>(GetWidth()), static_cast<unsigned>(GetHeight()), 0, 0);
    }
}

void GameObject::SetPosition(float p_x, float p_y)
{
    assert(m_pPhysicalDesc && "m_pPhysicalDesc");
    if (m_pPhysicalDesc)
    {
        m_pPhysicalDesc->SetPosition(p_x, p_y);
    }
}

bool GameObject::LoadImage(const char* p_fileName)
{
    if (m_pImage)
    {
        return true;
    }
    m_pImage = std::make_unique<Image>();
    assert(m_pImage && "m_pImage");
    return m_pImage->Load(p_fileName);
}

int GameObject::GetWidth() const
{
    assert(m_pImage && "m_pImage");
    return m_pImage ? m_pImage->GetWidth() : 0;
}

int GameObject::GetHeight() const
{
    assert(m_pImage && "m_pImage");
    return m_pImage ? m_pImage->GetHeight() : 0;
}

bool GameObject::SetSize(int p_width, int p_height)
{
    return m_pImage ? m_pImage->SetSize(p_width, p_height) : false;
}

void GameObject::SetDead(bool p_dead)
{
    m_dead = p_dead;
}
