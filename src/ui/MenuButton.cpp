#include "ui/MenuButton.h"

#include "ui/Button.h"

namespace ui
{

std::unique_ptr<Button> MakeMenuButton(Cursor* p_pCursor, const char* p_upFile, const char* p_downFile,
                                       const char* p_caption, int32_t p_fontSize, int32_t p_x, int32_t p_y,
                                       int32_t p_width, int32_t p_height)
{
    auto button = std::make_unique<Button>(p_pCursor);
    button->LoadImages(p_upFile, p_downFile);
    button->SetSize(p_width, p_height);
    button->SetFont("Tahoma", p_fontSize, 0);
    button->SetText(p_caption, 0.0, 0.0, 0.0, 1.0);
    button->SetTextOffsets(0, 0, 1, 1);
    button->SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
    return button;
}

} // namespace ui
