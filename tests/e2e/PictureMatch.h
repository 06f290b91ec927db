#pragma once

#include <string>

namespace e2e
{

// How much of a picture shows in a screenshot where the game draws it with its top-left
// corner at (p_x, p_y): the share of its bright, opaque pixels (of a large picture every other one each way) that
// the screenshot shows in nearly the same colour. Dark and see-through pixels are left out, as
// whatever lies below shows through them. -1 when either file cannot be read, 0 when too few
// pixels could be compared.
double PictureMatch(const std::string& p_screenshot, const std::string& p_bitmap, int p_x, int p_y);

} // namespace e2e
