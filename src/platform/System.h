#pragma once

#include <cstdint>

namespace platform
{

// High-resolution counter (QueryPerformanceCounter / QueryPerformanceFrequency).
int64_t GetPerformanceCounter();
int64_t GetPerformanceFrequency();

// A message box with an OK button. When nobody can answer one (KORVATH_HEADLESS set,
// CI=true, no display) the text goes to standard error only; otherwise it goes there too.
void ShowMessageBox(const char* p_text, const char* p_caption);
bool IsHeadless();

// Hides or shows the desktop's mouse pointer over the game window (the game draws its own).
void ShowSystemCursor(bool p_show);

} // namespace platform
