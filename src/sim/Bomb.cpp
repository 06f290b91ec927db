#include "sim/Bomb.h"

#include "gfx/Animation.h"
#include "sim/Explosion.h"
#include "sim/Layers.h"
#include "sim/Level.h"
#include "sound/Sound.h"

void Bomb::SetDamage(unsigned p_damage, uint8_t p_team)
{
    Projectile::SetDamage(p_damage, p_team);
    LoadImage("art\\bomb00.bmp");
    m_hitKind = HIT_KIND_BOMB;
}

void Bomb::Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY)
{
    Projectile::Launch(p_shooter, p_mountX, p_mountY);
    m_pPhysicalDesc->SetSpeed(p_shooter.GetSpeed() - SPEED_LOSS);
    m_pPhysicalDesc->SetHeading(p_shooter.GetHeading());
    const unsigned width = m_pImage ? static_cast<unsigned>(GetWidth()) : 0;
    const unsigned height = m_pImage ? static_cast<unsigned>(GetHeight()) : 0;
    m_pPhysicalDesc->SetBox(width, height, 0, 0);
    m_blastShape = MakeBlastShape();
}

std::vector<Triangle> Bomb::MakeBlastShape()
{
    std::vector<Triangle> shape;
    shape.reserve(BLAST_TRIANGLES);
    for (int i = 0; i < 2; ++i)
    {
        for (int j = 0; j < 2; ++j)
        {
            const double left = 32.0 * i;
            const double top = 32.0 * j;
            const double right = left + 32.0;
            const double bottom = top + 32.0;
            const double cx = left + 16.0;
            const double cy = top + 16.0;
            shape.push_back(Triangle{cx, cy, left, top, right, top});
            shape.push_back(Triangle{cx, cy, right, top, right, bottom});
            shape.push_back(Triangle{cx, cy, right, bottom, left, bottom});
            shape.push_back(Triangle{cx, cy, left, bottom, left, top});
        }
    }
    return shape;
}

bool Bomb::Update(float p_dt)
{
    ++m_updateCount;
    if (m_pPhysicalDesc)
    {
        m_pPhysicalDesc->Update(p_dt);
    }
    m_age += p_dt;
    if (m_age >= FUSE_TIME)
    {
        SetDead(true);
    }
    return true;
}

bool Bomb::Render()
{
    if (m_pImage && m_pPhysicalDesc)
    {
        m_pImage->Draw(m_pPhysicalDesc->GetX(), m_pPhysicalDesc->GetY(), m_pPhysicalDesc->GetHeading(), true);
    }
    return true;
}

void Bomb::SetDead(bool p_dead)
{
    const bool detonates = p_dead && !m_dead;
    Projectile::SetDead(p_dead);
    if (!detonates)
    {
        return;
    }
    const std::vector<Triangle> shape = m_blastShape.empty() ? MakeBlastShape() : m_blastShape;
    auto blast = std::make_unique<BombBlast>(GetX(), GetY(), GetHeading(), shape);
    blast->SetDamage(m_damage, m_team);
    if (Level* level = Level::GetCurrent())
    {
        level->Add(blast.release(), LAYER_PROJECTILES);
    }
    if (g_pSound != nullptr)
    {
        g_pSound->Play(Sound::SOUND_EXPLOSION);
    }
}

BombBlast::BombBlast(double p_x, double p_y, double p_heading, const std::vector<Triangle>& p_shape)
{
    m_pAnimation = explosion::Make(p_x, p_y, p_heading);
    m_pAnimation->GetPhysicalDesc()->SetTriangles(p_shape.data(), static_cast<int>(p_shape.size()));
    m_pPhysicalDesc = std::make_unique<PhysicalDesc>();
    m_pPhysicalDesc->SetPosition(p_x, p_y);
    m_pPhysicalDesc->SetHeading(p_heading);
    m_pPhysicalDesc->SetTriangles(p_shape.data(), static_cast<int>(p_shape.size()));
    // Placed at once, so that the blast can hurt in the frame of the detonation.
    m_pPhysicalDesc->Update(0.0f);
}

BombBlast::~BombBlast() = default;

void BombBlast::SetDamage(unsigned p_damage, uint8_t p_team)
{
    Projectile::SetDamage(p_damage, p_team);
    if (m_pPhysicalDesc)
    {
        m_pAnimation->SetPosition(static_cast<float>(m_pPhysicalDesc->GetX()), static_cast<float>(m_pPhysicalDesc->GetY()));
        m_pAnimation->GetPhysicalDesc()->SetHeading(m_pPhysicalDesc->GetHeading());
    }
}

bool BombBlast::Update(float p_dt)
{
    ++m_updateCount;
    m_pAnimation->Update(p_dt);
    // The blast stands still; advancing keeps its shape placed where it is.
    if (m_pPhysicalDesc)
    {
        m_pPhysicalDesc->Update(p_dt);
    }
    if (m_pAnimation->IsDead())
    {
        m_dead = true;
    }
    return true;
}

bool BombBlast::Render()
{
    return m_pAnimation->Render();
}
