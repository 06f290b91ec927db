#pragma once

// korvath-forge: builds the game directory from the sources in data/, prints any binary data
// file as text, and checks a game directory for everything the game would trip over.

#include <iosfwd>
#include <string>

namespace forge
{

// Writes every binary data file and copies the INI files into p_gameDir, creating its folders
// (and empty "Saves" and "Portraits"). Nothing is written when a source has an error. Answers
// the process exit code: 0 done, 1 errors (printed to p_err).
int Build(const std::string& p_dataDir, const std::string& p_gameDir, std::ostream& p_out, std::ostream& p_err);

// Prints one data file (part, entity, level, shop or pilot; the kind comes from the
// extension) as text. p_showMap prints a level's tiles as a grid. Exit code as Build.
int Inspect(const std::string& p_path, bool p_showMap, std::ostream& p_out, std::ostream& p_err);

struct CheckOptions
{
    // Skips every test that needs the pictures (before the art exists).
    bool noArt = false;
};

// Validates a built game directory; every problem is one line on p_err. Exit code as Build.
int Check(const std::string& p_gameDir, const CheckOptions& p_options, std::ostream& p_out, std::ostream& p_err);

// The command line: build SRC_DIR GAME_DIR | inspect FILE [--map] | check GAME_DIR [--no-art].
int Main(int p_argc, const char* const* p_argv, std::ostream& p_out, std::ostream& p_err);

} // namespace forge
