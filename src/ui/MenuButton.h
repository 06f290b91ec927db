#pragma once

#include <cstdint>
#include <memory>

class Button;
class Cursor;

namespace ui
{

// A push button on the given pictures, stretched to p_width x p_height, with a black
// "Tahoma" caption of p_fontSize points that shifts a pixel down and right while pressed.
// Without its pictures it keeps that size, so it can still be seen by its caption and clicked.
std::unique_ptr<Button> MakeMenuButton(Cursor* p_pCursor, const char* p_upFile, const char* p_downFile,
                                       const char* p_caption, int32_t p_fontSize, int32_t p_x, int32_t p_y,
                                       int32_t p_width, int32_t p_height);

} // namespace ui
