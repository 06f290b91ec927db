#include "gfx/Animation.h"

#include <cassert>

#include "gfx/Image.h"

Animation::Animation()
{
    m_pPhysicalDesc = std::make_unique<PhysicalDesc>();
}

Animation::~Animation()
{
    FreeImages();
}

bool Animation::Init(int32_t p_maxImages, float p_frameTime, bool p_loop)
{
    FreeImages();
    m_CurrentImage = -1;
    const int32_t capacity = p_maxImages > 0 ? p_maxImages : 0;
    m_pImages = std::make_unique<std::unique_ptr<Image>[]>(static_cast<size_t>(capacity));
    m_frameTime = p_frameTime;
    m_loop = p_loop;
    m_maxImages = capacity;
    m_NumImages = 0;
    return true;
}

bool Animation::AddImage(const char* p_fileName)
{
    if (!m_pImages || m_NumImages >= m_maxImages)
    {
        return false;
    }
    auto image = std::make_unique<Image>();
    image->Load(p_fileName);
    m_pImages[m_NumImages] = std::move(image);
    if (m_CurrentImage == -1)
    {
        m_CurrentImage = 0;
    }
    ++m_NumImages;
    return true;
}

bool Animation::FreeImages()
{
    m_pImages.reset();
    m_NumImages = 0;
    return true;
}

bool Animation::SetFrameTime(float p_frameTime)
{
    m_frameTime = p_frameTime;
    return true;
}

bool Animation::SetLoop(bool p_loop)
{
    m_loop = p_loop;
    return true;
}

bool Animation::Update(float p_dt)
{
    m_timeInFrame += p_dt;
    if (!(m_timeInFrame < m_frameTime))
    {
        ++m_CurrentImage;
        if (!(m_CurrentImage < m_NumImages))
        {
            if (m_loop)
            {
                m_CurrentImage = 0;
            }
            else
            {
                --m_CurrentImage;
                m_dead = true;
            }
        }
        if (m_NumImages == 0)
        {
            // Without frames there is nothing to show, whichever index the count reached.
            m_CurrentImage = -1;
        }
        m_timeInFrame -= m_frameTime;
    }
    if (m_pPhysicalDesc)
    {
        m_pPhysicalDesc->Update(p_dt);
    }
    return true;
}

bool Animation::Render()
{
    if (!m_pPhysicalDesc)
    {
        return false;
    }
    return DrawAt(m_pPhysicalDesc->GetX(), m_pPhysicalDesc->GetY(), m_pPhysicalDesc->GetHeading());
}

bool Animation::DrawAt(double p_x, double p_y, double p_angle)
{
    if (!m_pImages || m_CurrentImage < 0)
    {
        return false;
    }
    assert(m_CurrentImage < m_NumImages && "m_CurrentImage < m_NumImages");
    if (m_CurrentImage >= m_NumImages)
    {
        return false;
    }
    m_pImages[m_CurrentImage]->Draw(p_x, p_y, p_angle, true);
    return true;
}

Image* Animation::GetFrame(int32_t p_index) const
{
    if (!m_pImages || p_index < 0 || p_index >= m_NumImages)
    {
        return nullptr;
    }
    return m_pImages[p_index].get();
}

int Animation::GetWidth() const
{
    const Image* first = GetFrame(0);
    return first != nullptr ? first->GetWidth() : 0;
}

int Animation::GetHeight() const
{
    const Image* first = GetFrame(0);
    return first != nullptr ? first->GetHeight() : 0;
}
