#include "Forge.h"

#include <ostream>
#include <string>

namespace forge
{

namespace
{

void PrintUsage(std::ostream& p_out)
{
    p_out << "usage: korvath-forge build SRC_DIR GAME_DIR   write the game data built from the sources\n"
             "       korvath-forge inspect FILE [--map]     print a part, entity, level, shop or pilot file\n"
             "       korvath-forge check GAME_DIR [--no-art] validate a game directory\n";
}

} // namespace

int Main(int p_argc, const char* const* p_argv, std::ostream& p_out, std::ostream& p_err)
{
    const std::string command = p_argc > 1 ? p_argv[1] : "";
    if (command == "--help" || command == "-h" || command == "help")
    {
        PrintUsage(p_out);
        return 0;
    }
    if (command == "build" && p_argc == 4)
    {
        return Build(p_argv[2], p_argv[3], p_out, p_err);
    }
    if (command == "inspect" && (p_argc == 3 || (p_argc == 4 && std::string(p_argv[3]) == "--map")))
    {
        return Inspect(p_argv[2], p_argc == 4, p_out, p_err);
    }
    if (command == "check" && (p_argc == 3 || (p_argc == 4 && std::string(p_argv[3]) == "--no-art")))
    {
        CheckOptions options;
        options.noArt = p_argc == 4;
        return Check(p_argv[2], options, p_out, p_err);
    }
    PrintUsage(p_err);
    return 2;
}

} // namespace forge
