#include "Forge.h"
#include "Sources.h"
#include "WorkingDirectory.h"

#include "platform/FileSearch.h"
#include "platform/Paths.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <system_error>

namespace forge
{

namespace
{

namespace fs = std::filesystem;

// Folders of the game directory; those the forge does not fill are still made so that the game
// finds them (pilots are saved into "Saves", the art issue fills "Portraits").
const char* const GAME_FOLDERS[] = {"GOB/Parts", "entity", "Campaign", "multiplayer", "Saves", "Portraits"};

// Files only the forge makes. Removed before a build so that a part or level taken out of the
// sources does not linger (a left-over hull005.hul would still be in the catalogue).
struct OwnedFiles
{
    const char* folder;
    const char* mask;
};
const OwnedFiles OWNED_FILES[] = {
    {"GOB/Parts", "hull???.hul"},      {"GOB/Parts", "engine???.eng"},  {"GOB/Parts", "shield???.sgr"},
    {"GOB/Parts", "powerplant???.pwp"}, {"GOB/Parts", "copilot???.cop"}, {"GOB/Parts", "weapon???.wpn"},
    {"entity", "air???.nme"},           {"Campaign", "*.lvl"},           {"Campaign", "*.shp"},
    {"Campaign", "*.ini"},              {"multiplayer", "*.ini"},
};

void RemoveOwnedFiles()
{
    for (const OwnedFiles& owned : OWNED_FILES)
    {
        platform::FileSearch search;
        std::string name;
        std::vector<std::string> names;
        for (bool more = search.First(std::string(owned.folder) + "/" + owned.mask, name); more; more = search.Next(name))
        {
            names.push_back(name);
        }
        search.Close();
        for (const std::string& file : names)
        {
            const std::string path = platform::ResolvePath(std::string(owned.folder) + "/" + file);
            std::error_code ec;
            if (!path.empty())
            {
                fs::remove(path, ec);
            }
        }
    }
}

template <typename Record>
bool WritePart(int p_kind, const std::vector<Record>& p_records, int& p_written, std::ostream& p_err)
{
    if (p_records.size() > 1000)
    {
        p_err << "korvath-forge: more than 1000 " << GetKindInfo(p_kind).singular << " parts; files go up to 999\n";
        return false;
    }
    bool ok = true;
    for (size_t i = 0; i < p_records.size(); ++i)
    {
        const std::string name = PartFileName(p_kind, int(i));
        std::string error;
        if (!WriteWholeFile(name, p_records[i], error))
        {
            p_err << "korvath-forge: " << name << ": " << error << "\n";
            ok = false;
        }
        ++p_written;
    }
    return ok;
}

bool CopyText(const std::string& p_source, const std::string& p_target, std::ostream& p_err)
{
    std::ifstream in(p_source, std::ios::binary);
    if (!in)
    {
        p_err << "korvath-forge: " << p_source << ": cannot be read\n";
        return false;
    }
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const std::string temp = p_target + ".tmp";
    {
        std::ofstream out(temp, std::ios::binary | std::ios::trunc);
        out << text;
        if (!out.flush())
        {
            p_err << "korvath-forge: " << p_target << ": cannot be written\n";
            std::error_code ec;
            fs::remove(temp, ec);
            return false;
        }
    }
    std::error_code ec;
    fs::rename(temp, p_target, ec);
    if (ec)
    {
        p_err << "korvath-forge: " << p_target << ": " << ec.message() << "\n";
        return false;
    }
    return true;
}

} // namespace

int Build(const std::string& p_dataDir, const std::string& p_gameDir, std::ostream& p_out, std::ostream& p_err)
{
    GameData data;
    std::vector<std::string> errors;
    if (!LoadSources(p_dataDir, data, errors))
    {
        for (const std::string& error : errors)
        {
            p_err << error << "\n";
        }
        p_err << "korvath-forge: " << errors.size() << " error" << (errors.size() == 1 ? "" : "s")
              << " in the sources; nothing was written\n";
        return 1;
    }
    // INI files are copied after the working directory changed.
    std::error_code ec;
    for (CopiedFile& copy : data.copies)
    {
        copy.sourcePath = fs::absolute(copy.sourcePath, ec).string();
    }

    fs::create_directories(p_gameDir, ec);
    if (ec || !fs::is_directory(p_gameDir, ec))
    {
        p_err << "korvath-forge: cannot make the game directory " << p_gameDir << "\n";
        return 1;
    }
    WorkingDirectory inGame(p_gameDir);
    if (!inGame.Entered())
    {
        p_err << "korvath-forge: cannot enter " << p_gameDir << "\n";
        return 1;
    }
    for (const char* folder : GAME_FOLDERS)
    {
        // A folder that exists in another case ("campaign") is the same folder to the game;
        // making a second one would hide the first.
        fs::create_directories(platform::ResolvePath(folder), ec);
        if (ec)
        {
            p_err << "korvath-forge: cannot make " << p_gameDir << "/" << folder << ": " << ec.message() << "\n";
            return 1;
        }
    }
    RemoveOwnedFiles();

    bool ok = true;
    int parts = 0;
    ok = WritePart(KIND_HULL, data.hulls, parts, p_err) && ok;
    ok = WritePart(KIND_ENGINE, data.engines, parts, p_err) && ok;
    ok = WritePart(KIND_SHIELD, data.shields, parts, p_err) && ok;
    ok = WritePart(KIND_POWER_PLANT, data.powerPlants, parts, p_err) && ok;
    ok = WritePart(KIND_COPILOT, data.copilots, parts, p_err) && ok;
    ok = WritePart(KIND_WEAPON, data.weapons, parts, p_err) && ok;

    for (const EntitySource& entity : data.entities)
    {
        const std::string name = "entity\\air" + entity.id + ".nme";
        std::string error;
        if (!WriteWholeFile(name, entity.record, error))
        {
            p_err << "korvath-forge: " << name << ": " << error << "\n";
            ok = false;
        }
    }
    for (const LevelSource& level : data.levels)
    {
        const std::string name = "Campaign\\" + level.file;
        std::string error;
        if (!WriteWholeFile(name, level.record, error))
        {
            p_err << "korvath-forge: " << name << " (from " << level.source << "): " << error << "\n";
            ok = false;
        }
    }
    for (const ShopSource& shop : data.shops)
    {
        const std::string name = "Campaign\\" + shop.file;
        std::string error;
        if (!WriteWholeFile(name, shop.record, error))
        {
            p_err << "korvath-forge: " << name << ": " << error << "\n";
            ok = false;
        }
    }
    for (const CopiedFile& copy : data.copies)
    {
        ok = CopyText(copy.sourcePath, copy.gameName, p_err) && ok;
    }
    if (!ok)
    {
        return 1;
    }
    p_out << "korvath-forge: built " << p_gameDir << ": " << parts << " part files, " << data.entities.size()
          << " entities, " << data.levels.size() << " levels, " << data.shops.size() << " shops, "
          << data.copies.size() << " campaign files\n";
    return 0;
}

} // namespace forge
