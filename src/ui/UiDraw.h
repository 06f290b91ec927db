#pragma once

#include <cstdint>

class Cursor;
class Font;
class Image;
class InputSystem;

namespace ui
{

// Whether an image is worth drawing: a plain rectangle (no file) always is, a picture only
// when its file was loaded. A missing picture draws nothing instead of a white block.
bool HasPicture(const Image& p_image);

// Prints finished text the way the font's formatted print shows it ("%%" as one percent sign)
// without ever treating it as a format: a stray conversion in a player's text is shown as it
// is instead of reading arguments that are not there.
bool PrintText(Font* p_font, double p_red, double p_green, double p_blue, double p_alpha, int32_t p_x,
               int32_t p_y, const char* p_text);

// The cursor's position in p_x, p_y; answers whether the left mouse button is down. A cursor
// that was never set up is at (0, 0) with the button up.
bool ReadCursor(const Cursor* p_pCursor, int32_t& p_x, int32_t& p_y);

// p_input, or the application's input system when p_input is null (null too when there is
// no application).
InputSystem* InputOrApplication(InputSystem* p_input);

// The position truncated to whole pixels.
inline int32_t Whole(double p_value)
{
    return static_cast<int32_t>(p_value);
}

} // namespace ui
