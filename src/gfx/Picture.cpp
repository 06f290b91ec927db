#include "gfx/Picture.h"

#include "gfx/Image.h"

#include <cctype>
#include <cstring>
#include <string>

bool Picture::Update(float p_dt)
{
    (void)p_dt;
    return true;
}

bool Picture::Render()
{
    Image* image = GetImage();
    if (image == nullptr)
    {
        return false;
    }
    return image->Draw(false);
}

bool Picture::DrawAt(uint16_t p_x, uint16_t p_y)
{
    Image* image = GetImage();
    if (image == nullptr)
    {
        return false;
    }
    return image->Draw(static_cast<double>(p_x), static_cast<double>(p_y), 0.0, false);
}

PictureSequence::PictureSequence() : m_count(0) {}

PictureSequence::~PictureSequence()
{
    Free();
}

void PictureSequence::IncrementNumber(char* p_name, size_t p_length)
{
    // The digits sit right before the four-character extension.
    char* units = p_name + p_length - 5;
    char* tens = units - 1;
    char* hundreds = units - 2;
    if (++*units <= '9')
    {
        return;
    }
    *units = '0';
    if (++*tens <= '9')
    {
        return;
    }
    *tens = '0';
    if (++*hundreds > '9')
    {
        *hundreds = '0';
    }
}

bool PictureSequence::Load(const char* p_firstFileName, uint8_t p_count)
{
    if (p_firstFileName == nullptr)
    {
        return false;
    }
    std::string name = p_firstFileName;
    const size_t length = name.size();
    if (length < 7 || !std::isdigit(static_cast<unsigned char>(name[length - 5])) ||
        !std::isdigit(static_cast<unsigned char>(name[length - 6])) ||
        !std::isdigit(static_cast<unsigned char>(name[length - 7])))
    {
        return false;
    }
    Free();
    m_pPictures = std::make_unique<Picture[]>(p_count);
    m_count = p_count;
    for (uint8_t i = 0; i < p_count; ++i)
    {
        m_pPictures[i].LoadImage(name.c_str());
        IncrementNumber(name.data(), length);
    }
    return true;
}

bool PictureSequence::Free()
{
    m_pPictures.reset();
    m_count = 0;
    return true;
}

Picture* PictureSequence::GetPicture(uint8_t p_index)
{
    if (p_index >= m_count)
    {
        return nullptr;
    }
    return &m_pPictures[p_index];
}
