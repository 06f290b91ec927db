#include <gtest/gtest.h>

#include "gfx/Image.h"
#include "sim/GameObject.h"

namespace
{
// The smallest concrete object: moves by its description, draws nothing.
class Probe : public GameObject
{
public:
    bool Update(float p_dt) override
    {
        if (m_pPhysicalDesc)
        {
            m_pPhysicalDesc->Update(p_dt);
        }
        return true;
    }
    bool Render() override { return true; }
};

// A list entry that counts its destructions.
class CountedLink : public ObjectLink
{
public:
    explicit CountedLink(int* p_destroyed) : m_pDestroyed(p_destroyed) {}
    ~CountedLink() override { ++*m_pDestroyed; }

private:
    int* m_pDestroyed;
};

class Enemy : public ObjectLink
{
public:
    bool IsEnemy() const override { return true; }
};
} // namespace

TEST(ObjectLink, DestroyingAnEntryDestroysTheRestOfItsList)
{
    ObjectLink plain;
    EXPECT_EQ(plain.m_pNext, nullptr);
    EXPECT_EQ(plain.m_pPrev, nullptr);
    EXPECT_FALSE(plain.m_outside);
    EXPECT_FALSE(plain.IsEnemy());
    Enemy enemy;
    const ObjectLink& asLink = enemy;
    EXPECT_TRUE(asLink.IsEnemy());

    // Long enough that a recursive destructor would overflow the stack.
    const int LENGTH = 1000000;
    int destroyed = 0;
    ObjectLink* pHead = new CountedLink(&destroyed);
    ObjectLink* pTail = pHead;
    for (int i = 1; i < LENGTH; ++i)
    {
        ObjectLink* pEntry = new CountedLink(&destroyed);
        pEntry->m_pPrev = pTail;
        pTail->m_pNext = pEntry;
        pTail = pEntry;
    }

    // An entry taken out of the middle goes alone.
    ObjectLink* pMiddle = pHead->m_pNext->m_pNext;
    pMiddle->m_pPrev->m_pNext = pMiddle->m_pNext;
    pMiddle->m_pNext->m_pPrev = pMiddle->m_pPrev;
    pMiddle->m_pNext = nullptr;
    delete pMiddle;
    EXPECT_EQ(destroyed, 1);

    delete pHead;
    EXPECT_EQ(destroyed, LENGTH);
}

TEST(GameObject, OwnsItsImageAndDescription)
{
    const size_t imagesBefore = Image::GetRegisteredCount();
    {
        Probe probe;
        EXPECT_EQ(probe.GetImage(), nullptr);
        EXPECT_EQ(probe.GetPhysicalDesc(), nullptr);
        EXPECT_FALSE(probe.IsDead());
        EXPECT_FALSE(probe.IsEnemy());
        EXPECT_FALSE(probe.SetSize(5, 5));

        probe.LoadImage("art/missing_probe.bmp");
        Image* pFirst = probe.GetImage();
        ASSERT_NE(pFirst, nullptr);
        EXPECT_EQ(Image::GetRegisteredCount(), imagesBefore + 1);
        ASSERT_TRUE(probe.SetSize(48, 20));
        EXPECT_EQ(probe.GetWidth(), 48);
        EXPECT_EQ(probe.GetHeight(), 20);

        // The first image stays, whatever the second call names.
        EXPECT_TRUE(probe.LoadImage("art/other_probe.bmp"));
        EXPECT_EQ(probe.GetImage(), pFirst);
        EXPECT_EQ(probe.GetWidth(), 48);
        EXPECT_EQ(Image::GetRegisteredCount(), imagesBefore + 1);

        probe.SetDead(true);
        EXPECT_TRUE(probe.IsDead());
        probe.SetDead(false);
        EXPECT_FALSE(probe.IsDead());
    }
    EXPECT_EQ(Image::GetRegisteredCount(), imagesBefore);

    // Destroyed through the list root, as lists do.
    ObjectLink* pLink = new Probe;
    static_cast<Probe*>(pLink)->LoadImage(nullptr);
    EXPECT_EQ(Image::GetRegisteredCount(), imagesBefore + 1);
    delete pLink;
    EXPECT_EQ(Image::GetRegisteredCount(), imagesBefore);
}

TEST(GameObject, InitPhysicalDescBoxesTheImageOnce)
{
    // Without an image: the default square.
    Probe bare;
    bare.InitPhysicalDesc();
    ASSERT_NE(bare.GetPhysicalDesc(), nullptr);
    EXPECT_EQ(bare.GetPhysicalDesc()->GetNumTriangles(), 2);
    EXPECT_EQ(bare.GetPhysicalDesc()->GetLocalTriangles()[1].x1, 32.0);
    EXPECT_EQ(bare.GetPhysicalDesc()->GetLocalTriangles()[1].y1, 32.0);

    // With an image: a box of its size at the origin.
    Probe sized;
    sized.LoadImage(nullptr);
    ASSERT_TRUE(sized.SetSize(40, 24));
    sized.InitPhysicalDesc();
    PhysicalDesc* pDesc = sized.GetPhysicalDesc();
    ASSERT_NE(pDesc, nullptr);
    EXPECT_EQ(pDesc->GetBoxWidth(), 40u);
    EXPECT_EQ(pDesc->GetBoxHeight(), 24u);
    EXPECT_EQ(pDesc->GetBoxX(), 0);
    EXPECT_EQ(pDesc->GetBoxY(), 0);
    EXPECT_EQ(pDesc->GetLocalTriangles()[1].x1, 40.0);
    EXPECT_EQ(pDesc->GetLocalTriangles()[1].y1, 24.0);

    // A second call leaves the description exactly as it is, box included.
    pDesc->SetBox(10, 10, -5, -5);
    pDesc->SetSpeed(7.0);
    ASSERT_TRUE(sized.SetSize(100, 100));
    sized.InitPhysicalDesc();
    EXPECT_EQ(sized.GetPhysicalDesc(), pDesc);
    EXPECT_EQ(pDesc->GetBoxWidth(), 10u);
    EXPECT_EQ(pDesc->GetBoxX(), -5);
    EXPECT_EQ(pDesc->GetLocalTriangles()[0].x1, -5.0);
    EXPECT_EQ(pDesc->GetSpeed(), 7.0);

    // SetPosition places the description; Update moves it from there.
    sized.SetPosition(12.5f, -3.0f);
    EXPECT_EQ(pDesc->GetX(), 12.5);
    EXPECT_EQ(pDesc->GetY(), -3.0);
    pDesc->SetSpeed(10.0);
    EXPECT_TRUE(sized.Update(0.5f));
    EXPECT_DOUBLE_EQ(pDesc->GetY(), -8.0);
    EXPECT_DOUBLE_EQ(pDesc->GetWorldTriangles()[0].x1, 7.5);
    EXPECT_DOUBLE_EQ(pDesc->GetWorldTriangles()[0].y1, -13.0);
}
