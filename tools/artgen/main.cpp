// korvath-artgen: draws the game's pictures and writes them as bitmaps into the game directory.
//
//   korvath-artgen GAME_DIR [--png PNG_DIR] [--force]
//
// Pictures already newer than this program are left alone unless --force is given, so a
// second `make data` costs nothing.

#include "Canvas.h"
#include "Logos.h"

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

namespace
{

namespace fs = std::filesystem;

struct Picture
{
    const char* gameName; // as the game asks for it
    int width;
    int height;
    bool alpha; // 32-bit with alpha, or 24-bit opaque
    void (*draw)(artgen::Canvas&);
};

const Picture PICTURES[] = {
    {"art\\menu\\corvel_logo.bmp", 1024, 768, false, artgen::DrawCorvelLogo},
    {"art\\menu\\brask_productions.bmp", 1024, 768, false, artgen::DrawBraskProductions},
};

// "art\Menu\logo.bmp" -> "art/menu/logo.bmp": folders in lower case, the file name as given.
fs::path GamePath(const std::string& p_gameName)
{
    std::string relative = p_gameName;
    const size_t lastSlash = relative.find_last_of('\\');
    for (size_t i = 0; i < relative.size(); ++i)
    {
        if (relative[i] == '\\')
            relative[i] = '/';
        else if (lastSlash != std::string::npos && i < lastSlash)
            relative[i] = char(std::tolower(static_cast<unsigned char>(relative[i])));
    }
    return fs::path(relative);
}

// When this program was built; pictures older than that may have been drawn differently.
bool GeneratorTime(fs::file_time_type& p_time)
{
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    if (error)
        return false;
    p_time = fs::last_write_time(self, error);
    return !error;
}

bool IsNewer(const fs::path& p_path, fs::file_time_type p_than)
{
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(p_path, error);
    return !error && time > p_than;
}

bool MakeParent(const fs::path& p_path)
{
    std::error_code error;
    fs::create_directories(p_path.parent_path(), error);
    return !error;
}

void PrintUsage()
{
    std::fprintf(stderr, "usage: korvath-artgen GAME_DIR [--png PNG_DIR] [--force]\n");
}

} // namespace

int main(int p_argc, char** p_argv)
{
    std::string gameDir;
    std::string pngDir;
    bool force = false;
    for (int i = 1; i < p_argc; ++i)
    {
        const std::string argument = p_argv[i];
        if (argument == "--png" && i + 1 < p_argc)
            pngDir = p_argv[++i];
        else if (argument == "--force")
            force = true;
        else if (argument == "--help" || argument == "-h")
        {
            PrintUsage();
            return 0;
        }
        else if (!argument.empty() && argument[0] != '-' && gameDir.empty())
            gameDir = argument;
        else
        {
            PrintUsage();
            return 2;
        }
    }
    if (gameDir.empty())
    {
        PrintUsage();
        return 2;
    }

    fs::file_time_type generatorTime;
    if (!GeneratorTime(generatorTime))
        force = true; // cannot tell what is stale, so redo everything

    int failures = 0;
    int upToDate = 0;
    for (const Picture& picture : PICTURES)
    {
        const fs::path relative = GamePath(picture.gameName);
        const fs::path bitmapPath = fs::path(gameDir) / relative;
        fs::path pngPath;
        if (!pngDir.empty())
            pngPath = (fs::path(pngDir) / relative).replace_extension(".png");

        if (!force && IsNewer(bitmapPath, generatorTime) &&
            (pngPath.empty() || IsNewer(pngPath, generatorTime)))
        {
            ++upToDate;
            continue;
        }

        artgen::Canvas canvas(picture.width, picture.height);
        if (!canvas.IsValid())
        {
            std::fprintf(stderr, "korvath-artgen: cannot make a %dx%d canvas for %s\n",
                         picture.width, picture.height, picture.gameName);
            ++failures;
            continue;
        }
        picture.draw(canvas);
        if (!canvas.IsHealthy())
        {
            std::fprintf(stderr, "korvath-artgen: drawing %s failed: %s\n", picture.gameName,
                         cairo_status_to_string(cairo_status(canvas.Get())));
            ++failures;
            continue;
        }

        if (!MakeParent(bitmapPath) || !canvas.SaveBitmap(bitmapPath.string(), picture.alpha))
        {
            std::fprintf(stderr, "korvath-artgen: cannot write %s\n", bitmapPath.c_str());
            ++failures;
            continue;
        }
        std::printf("%s\n", bitmapPath.c_str());

        if (!pngPath.empty())
        {
            if (!MakeParent(pngPath) || !canvas.SavePng(pngPath.string()))
            {
                std::fprintf(stderr, "korvath-artgen: cannot write %s\n", pngPath.c_str());
                ++failures;
                continue;
            }
            std::printf("%s\n", pngPath.c_str());
        }
    }

    if (upToDate > 0)
        std::printf("korvath-artgen: %d picture%s up to date\n", upToDate, upToDate == 1 ? "" : "s");
    if (failures > 0)
    {
        std::fprintf(stderr, "korvath-artgen: %d file%s not written\n", failures,
                     failures == 1 ? "" : "s");
        return 1;
    }
    return 0;
}
