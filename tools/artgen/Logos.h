#pragma once

#include "Canvas.h"

namespace artgen
{

// The full-screen slides shown at start-up; each fades in from black and out again, so both
// sit on a near-black background.
void DrawCorvelLogo(Canvas& p_canvas);
void DrawBraskProductions(Canvas& p_canvas);

} // namespace artgen
