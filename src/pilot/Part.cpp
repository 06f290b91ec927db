#include "pilot/Part.h"

#include "pilot/DataFile.h"

bool Part::Update(float p_dt)
{
    (void)p_dt;
    return true;
}

bool Part::Render()
{
    const double x = m_pPhysicalDesc ? m_pPhysicalDesc->GetX() : 0.0;
    const double y = m_pPhysicalDesc ? m_pPhysicalDesc->GetY() : 0.0;
    return DrawAt(x, y, 0.0);
}

bool Part::DrawAt(double p_x, double p_y, double p_angle)
{
    if (m_pImage)
    {
        m_pImage->Draw(p_x, p_y, p_angle, false);
    }
    return true;
}

void Part::ReadHeader(DataFile& p_file)
{
    const std::string picture = p_file.ReadString();
    if (!picture.empty())
    {
        LoadImage(picture.c_str());
    }
    m_name = p_file.ReadString();
    m_value = p_file.ReadInt32();
    m_price = p_file.ReadInt32();
}
