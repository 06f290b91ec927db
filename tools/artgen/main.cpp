// korvath-artgen: draws the game's pictures and writes them as bitmaps into the game directory.
//
//   korvath-artgen GAME_DIR [--data DATA_DIR] [--png PNG_DIR] [--force]
//
// Pictures already newer than this program are left alone unless --force is given, so a
// second `make data` costs nothing. The pictures are drawn on every core.

#include "Canvas.h"
#include "InterfaceArt.h"
#include "Pictures.h"

#include <atomic>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace
{

namespace fs = std::filesystem;

std::string Lower(std::string p_text)
{
    for (char& c : p_text)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return p_text;
}

// "art\Menu\logo.bmp" -> "art/menu/logo.bmp": folders in lower case, the file name as given,
// except the portrait folder, which keeps the name the game lists it by ("Portraits"), so
// that finding the portraits never depends on a lookup that ignores case. Any other folder
// that already exists in another case ("Campaign", made by the forge) is used as it is, since
// the game would find that one first.
fs::path GamePath(const fs::path& p_gameDir, const std::string& p_gameName)
{
    std::string relative = p_gameName;
    const size_t lastSlash = relative.find_last_of('\\');
    const size_t firstSlash = relative.find('\\');
    const bool portrait = firstSlash != std::string::npos &&
                          Lower(relative.substr(0, firstSlash)) == Lower(artgen::PORTRAIT_FOLDER);
    for (size_t i = 0; i < relative.size(); ++i)
    {
        if (relative[i] == '\\')
            relative[i] = '/';
        else if (lastSlash != std::string::npos && i < lastSlash)
            relative[i] = char(std::tolower(static_cast<unsigned char>(relative[i])));
    }
    if (portrait)
        relative.replace(0, firstSlash, artgen::PORTRAIT_FOLDER);
    fs::path resolved;
    const fs::path given(relative);
    for (auto part = given.begin(); part != given.end(); ++part)
    {
        fs::path name = *part;
        std::error_code error;
        if (std::next(part) != given.end() && !fs::is_directory(p_gameDir / resolved / name, error))
        {
            for (fs::directory_iterator it(p_gameDir / resolved, error), end; !error && it != end; it.increment(error))
            {
                if (Lower(it->path().filename().string()) == Lower(name.string()) && it->is_directory(error))
                {
                    name = it->path().filename();
                    break;
                }
            }
        }
        resolved /= name;
    }
    return resolved;
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

// A game directory made before the portrait folder kept its spelling has it in lower case:
// renamed, so that the portraits are where the game lists them.
void SpellPortraitFolder(const fs::path& p_gameDir)
{
    std::error_code error;
    if (fs::is_directory(p_gameDir / artgen::PORTRAIT_FOLDER, error))
        return;
    for (fs::directory_iterator it(p_gameDir, error), end; !error && it != end; it.increment(error))
    {
        if (Lower(it->path().filename().string()) == Lower(artgen::PORTRAIT_FOLDER) && it->is_directory(error))
        {
            std::error_code renameError;
            fs::rename(it->path(), p_gameDir / artgen::PORTRAIT_FOLDER, renameError);
            return;
        }
    }
}

bool MakeParent(const fs::path& p_path)
{
    std::error_code error;
    fs::create_directories(p_path.parent_path(), error);
    return !error;
}

void PrintUsage()
{
    std::fprintf(stderr, "usage: korvath-artgen GAME_DIR [--data DATA_DIR] [--png PNG_DIR] [--force]\n");
}

// Draws one picture and writes it (and its PNG copy); false when anything failed.
bool MakePicture(const artgen::PictureRecipe& p_picture, const fs::path& p_bitmapPath, const fs::path& p_pngPath,
                 std::mutex& p_output)
{
    artgen::Canvas canvas(p_picture.width, p_picture.height);
    if (!canvas.IsValid())
    {
        std::lock_guard<std::mutex> lock(p_output);
        std::fprintf(stderr, "korvath-artgen: cannot make a %dx%d canvas for %s\n", p_picture.width,
                     p_picture.height, p_picture.gameName.c_str());
        return false;
    }
    p_picture.draw(canvas);
    if (!canvas.IsHealthy())
    {
        std::lock_guard<std::mutex> lock(p_output);
        std::fprintf(stderr, "korvath-artgen: drawing %s failed: %s\n", p_picture.gameName.c_str(),
                     cairo_status_to_string(cairo_status(canvas.Get())));
        return false;
    }
    if (!MakeParent(p_bitmapPath) || !canvas.SaveBitmap(p_bitmapPath.string(), p_picture.alpha))
    {
        std::lock_guard<std::mutex> lock(p_output);
        std::fprintf(stderr, "korvath-artgen: cannot write %s\n", p_bitmapPath.c_str());
        return false;
    }
    if (!p_pngPath.empty() && (!MakeParent(p_pngPath) || !canvas.SavePng(p_pngPath.string())))
    {
        std::lock_guard<std::mutex> lock(p_output);
        std::fprintf(stderr, "korvath-artgen: cannot write %s\n", p_pngPath.c_str());
        return false;
    }
    return true;
}

} // namespace

int main(int p_argc, char** p_argv)
{
    std::string gameDir;
    std::string pngDir;
    artgen::ArtContext context;
    context.dataDir = "data";
    bool force = false;
    for (int i = 1; i < p_argc; ++i)
    {
        const std::string argument = p_argv[i];
        if (argument == "--png" && i + 1 < p_argc)
            pngDir = p_argv[++i];
        else if (argument == "--data" && i + 1 < p_argc)
            context.dataDir = p_argv[++i];
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

    SpellPortraitFolder(gameDir);
    std::vector<artgen::PictureRecipe> pictures;
    for (artgen::PictureLister lister : artgen::GetPictureListers())
        lister(context, pictures);

    struct Job
    {
        const artgen::PictureRecipe* picture;
        fs::path bitmapPath;
        fs::path pngPath;
    };
    std::vector<Job> jobs;
    int upToDate = 0;
    for (const artgen::PictureRecipe& picture : pictures)
    {
        const fs::path relative = GamePath(gameDir, picture.gameName);
        Job job{&picture, fs::path(gameDir) / relative, {}};
        if (!pngDir.empty())
            job.pngPath = (fs::path(pngDir) / relative).replace_extension(".png");
        if (!force && IsNewer(job.bitmapPath, generatorTime) &&
            (job.pngPath.empty() || IsNewer(job.pngPath, generatorTime)))
        {
            ++upToDate;
            continue;
        }
        jobs.push_back(std::move(job));
    }

    std::atomic<size_t> next{0};
    std::atomic<int> failures{0};
    std::atomic<int> written{0};
    std::mutex output;
    const unsigned workers = std::max(1u, std::min(std::thread::hardware_concurrency(), 8u));
    std::vector<std::thread> threads;
    for (unsigned w = 0; w < workers; ++w)
    {
        threads.emplace_back([&]() {
            for (size_t i = next++; i < jobs.size(); i = next++)
            {
                if (MakePicture(*jobs[i].picture, jobs[i].bitmapPath, jobs[i].pngPath, output))
                    ++written;
                else
                    ++failures;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    std::printf("korvath-artgen: %d picture%s drawn, %d up to date\n", written.load(), written == 1 ? "" : "s",
                upToDate);
    if (failures > 0)
    {
        std::fprintf(stderr, "korvath-artgen: %d picture%s not written\n", failures.load(),
                     failures == 1 ? "" : "s");
        return 1;
    }
    return 0;
}
