#pragma once

#include <memory>

#include "gfx/Image.h"
#include "sim/PhysicalDesc.h"

// An entry of the hand-made object lists. An entry owns the rest of its list, so a list
// is destroyed by destroying its head; unlink an entry before destroying it alone.
class ObjectLink
{
public:
    ObjectLink() = default;
    ObjectLink(const ObjectLink&) = delete;
    ObjectLink& operator=(const ObjectLink&) = delete;
    // Destroys the entries after this one without recursing, so long lists are safe.
    virtual ~ObjectLink();

    virtual bool IsEnemy() const { return false; }

    ObjectLink* m_pNext = nullptr; // owned
    ObjectLink* m_pPrev = nullptr; // null for the head
    // Set when no leaf of the world's quadtree contains the object.
    bool m_outside = false;
};

// Something that is updated every frame and draws itself: it owns an image and a
// physical description, either of which may be missing.
class GameObject : public ObjectLink
{
public:
    GameObject();
    ~GameObject() override;

    virtual Image* GetImage();
    virtual PhysicalDesc* GetPhysicalDesc();
    // Creates a description if there is none, boxed to the image's size when there is an
    // image. An existing description is left exactly as it is.
    virtual void InitPhysicalDesc();
    virtual bool Update(float p_dt) = 0;
    virtual bool Render() = 0;
    virtual void SetPosition(float p_x, float p_y);
    // The first image loaded stays: a second call keeps it and answers true.
    virtual bool LoadImage(const char* p_fileName);
    virtual int GetWidth() const;
    virtual int GetHeight() const;
    // False when there is no image.
    virtual bool SetSize(int p_width, int p_height);
    virtual void SetDead(bool p_dead);

    bool IsDead() const { return m_dead; }

protected:
    std::unique_ptr<Image> m_pImage;
    std::unique_ptr<PhysicalDesc> m_pPhysicalDesc;
    bool m_dead = false;
};
