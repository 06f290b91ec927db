#include "gfx/Image.h"

#include "gfx/TextureManager.h"
#include "platform/Gl.h"

#include <algorithm>
#include <forward_list>

namespace
{
// Every image alive, newest first.
std::forward_list<Image*>& Registry()
{
    static std::forward_list<Image*> s_registry;
    return s_registry;
}
} // namespace

Image::Image() : m_color{255, 255, 255, 255}, m_width(0), m_height(0), m_pTexture(nullptr), m_displayList(0)
{
    Registry().push_front(this);
}

Image::~Image()
{
    m_fileName.clear();
    Registry().remove(this);
    Release();
}

bool Image::Load(const char* p_fileName)
{
    return Load(255, 255, 255, 255, p_fileName);
}

bool Image::Load(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha, const char* p_fileName)
{
    SetColor(p_red, p_green, p_blue, p_alpha);
    if (p_fileName == nullptr || p_fileName[0] == '\0')
    {
        // No picture: an untextured rectangle of the size the image already had.
        m_pTexture = nullptr;
        m_fileName.clear();
        BuildDisplayList();
        return true;
    }
    m_pTexture = g_pTextureManager != nullptr ? g_pTextureManager->GetTexture(p_fileName) : nullptr;
    m_fileName = p_fileName;
    m_width = m_pTexture != nullptr ? m_pTexture->m_width : 0;
    m_height = m_pTexture != nullptr ? m_pTexture->m_height : 0;
    BuildDisplayList();
    return true;
}

bool Image::Reset()
{
    SetColor(255, 255, 255, 255);
    m_width = 100;
    m_height = 100;
    m_pTexture = nullptr;
    m_fileName.clear();
    BuildDisplayList();
    return true;
}

bool Image::Release()
{
    m_pTexture = nullptr;
    DeleteDisplayList();
    return true;
}

bool Image::SetSize(int32_t p_width, int32_t p_height)
{
    m_width = p_width;
    m_height = p_height;
    BuildDisplayList();
    return true;
}

bool Image::SetWidth(int32_t p_width)
{
    return SetSize(p_width, m_height);
}

bool Image::SetHeight(int32_t p_height)
{
    return SetSize(m_width, p_height);
}

bool Image::ResetSize()
{
    if (m_pTexture != nullptr)
    {
        return SetSize(m_pTexture->m_width, m_pTexture->m_height);
    }
    BuildDisplayList();
    return true;
}

bool Image::SetColor(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha)
{
    m_color[0] = p_red;
    m_color[1] = p_green;
    m_color[2] = p_blue;
    m_color[3] = p_alpha;
    return true;
}

bool Image::SetRed(uint8_t p_red)
{
    m_color[0] = p_red;
    return true;
}

bool Image::SetGreen(uint8_t p_green)
{
    m_color[1] = p_green;
    return true;
}

bool Image::SetBlue(uint8_t p_blue)
{
    m_color[2] = p_blue;
    return true;
}

bool Image::SetAlpha(uint8_t p_alpha)
{
    m_color[3] = p_alpha;
    return true;
}

void Image::DeleteDisplayList()
{
    if (m_displayList != 0)
    {
        glDeleteLists(m_displayList, 1);
        m_displayList = 0;
    }
}

void Image::BuildDisplayList()
{
    DeleteDisplayList();
    m_displayList = glGenLists(1);
    if (m_displayList == 0)
    {
        return;
    }
    const GLfloat w = static_cast<GLfloat>(m_width);
    const GLfloat h = static_cast<GLfloat>(m_height);
    glNewList(m_displayList, GL_COMPILE);
    if (m_pTexture != nullptr)
    {
        // Texture rows are bottom-up, so texture row 0 goes at the bottom edge. Edges clamp to
        // the picture's own pixels: plain clamping would blend in the black border colour and
        // give every scaled sprite a dark fringe.
        glBindTexture(GL_TEXTURE_2D, m_pTexture->m_textureId);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glBegin(GL_QUADS);
        glTexCoord2f(0.0f, 1.0f);
        glVertex2f(0.0f, 0.0f);
        glTexCoord2f(0.0f, 0.0f);
        glVertex2f(0.0f, h);
        glTexCoord2f(1.0f, 0.0f);
        glVertex2f(w, h);
        glTexCoord2f(1.0f, 1.0f);
        glVertex2f(w, 0.0f);
        glEnd();
    }
    else
    {
        glDisable(GL_TEXTURE_2D);
        glBegin(GL_QUADS);
        glVertex2f(0.0f, 0.0f);
        glVertex2f(0.0f, h);
        glVertex2f(w, h);
        glVertex2f(w, 0.0f);
        glEnd();
        glEnable(GL_TEXTURE_2D);
    }
    glEndList();
}

bool Image::Draw(bool p_blend)
{
    if (p_blend)
    {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glColor4ubv(m_color);
        glCallList(m_displayList);
        glBlendFunc(GL_ONE, GL_ZERO);
        glDisable(GL_BLEND);
    }
    else
    {
        glEnable(GL_ALPHA_TEST);
        glAlphaFunc(GL_GREATER, 0.07f);
        glColor4ubv(m_color);
        glCallList(m_displayList);
        glDisable(GL_ALPHA_TEST);
    }
    return true;
}

bool Image::Draw(double p_x, double p_y, double p_angle, bool p_blend)
{
    glPushMatrix();
    glTranslated(p_x, p_y, 0.0);
    glRotated(p_angle, 0.0, 0.0, 1.0);
    if (p_blend)
    {
        Draw(true);
    }
    else
    {
        glEnable(GL_ALPHA_TEST);
        glAlphaFunc(GL_GREATER, 0.7f);
        glColor4ubv(m_color);
        glCallList(m_displayList);
        glDisable(GL_ALPHA_TEST);
    }
    glPopMatrix();
    return true;
}

void Image::ReleaseAll()
{
    for (Image* image : Registry())
    {
        image->DeleteDisplayList();
    }
}

void Image::RebuildAll()
{
    for (Image* image : Registry())
    {
        if (image->m_pTexture != nullptr && g_pTextureManager != nullptr)
        {
            image->m_pTexture = g_pTextureManager->GetTexture(image->m_fileName.c_str());
        }
        image->BuildDisplayList();
    }
}

size_t Image::GetRegisteredCount()
{
    size_t count = 0;
    for (Image* image : Registry())
    {
        (void)image;
        ++count;
    }
    return count;
}
