#include "ui/UiDraw.h"

#include "app/Application.h"
#include "gfx/Font.h"
#include "gfx/Image.h"
#include "gfx/TextureManager.h"
#include "input/Cursor.h"

#include <string>

namespace ui
{

bool HasPicture(const Image& p_image)
{
    if (p_image.GetFileName().empty())
    {
        return true;
    }
    const TextureNode* texture = p_image.GetTexture();
    return texture != nullptr && texture->m_textureId != 0;
}

bool PrintText(Font* p_font, double p_red, double p_green, double p_blue, double p_alpha, int32_t p_x,
               int32_t p_y, const char* p_text)
{
    if (p_font == nullptr || p_text == nullptr)
    {
        return false;
    }
    std::string shown;
    for (const char* c = p_text; *c != '\0'; ++c)
    {
        shown += *c;
        if (c[0] == '%' && c[1] == '%')
        {
            ++c;
        }
    }
    return p_font->Print(p_red, p_green, p_blue, p_alpha, p_x, p_y, "%s", shown.c_str());
}

bool ReadCursor(const Cursor* p_pCursor, int32_t& p_x, int32_t& p_y)
{
    p_x = 0;
    p_y = 0;
    if (p_pCursor == nullptr || !p_pCursor->IsInitialized() || p_pCursor->GetMouse() == nullptr)
    {
        return false;
    }
    return p_pCursor->GetPosition(p_x, p_y);
}

InputSystem* InputOrApplication(InputSystem* p_input)
{
    if (p_input != nullptr)
    {
        return p_input;
    }
    return g_pApplication != nullptr ? g_pApplication->GetInput() : nullptr;
}

} // namespace ui
