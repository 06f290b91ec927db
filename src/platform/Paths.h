#pragma once

#include <string>

namespace platform
{

// Turns one of the game's file names ("art\cursor.bmp", "campaign\korvath.ini") into a path
// that opens on this system: backslashes become slashes and, where the exact path does not
// exist, every component is matched case-insensitively against what is on disk, as Windows
// would. A component that matches nothing keeps its given spelling, so a file about to be
// created gets the name it was given inside the resolved directory.
//
// Paths are relative to the working directory (the game directory). An absolute path, an
// empty path or one that climbs out with ".." resolves to "" so that no data file or player
// input can reach a file outside the game directory; opening "" fails.
std::string ResolvePath(const std::string& p_path);

// True when p_path names an existing regular file once resolved.
bool FileExists(const std::string& p_path);

} // namespace platform
