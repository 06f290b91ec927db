// Feeds arbitrary bytes to DataFile and to the readers of every data format (part, entity,
// level, shop and pilot files), and prints each as the forge's inspect does. Nothing may crash,
// hang or allocate without bound, whatever counts and lengths the bytes claim.
#include "FuzzScratch.h"
#include "forge/Forge.h"
#include "forge/Formats.h"
#include "pilot/DataFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <system_error>

#include <unistd.h>

namespace
{

// Reads with the game's own calls in an order the input chooses, to reach every read-past-end
// path with every width.
void ReadMixed(size_t p_size)
{
    DataFile file;
    if (!file.Open("input.bin", "rb"))
    {
        std::abort();
    }
    uint8_t selector = file.ReadUInt8();
    for (int step = 0; step < 64 && !file.HasReadPastEnd(); ++step)
    {
        switch (selector % 11)
        {
        case 0: file.ReadInt8(); break;
        case 1: file.ReadUInt16(); break;
        case 2: file.ReadInt16(); break;
        case 3: file.ReadInt32(); break;
        case 4: file.ReadUInt32(); break;
        case 5: file.ReadLong(); break;
        case 6: file.ReadFloat(); break;
        case 7: file.ReadDouble(); break;
        case 8: file.ReadString(); break;
        case 9: file.ReadFixedString(selector % 7); break;
        default: file.Seek(DataFile::ORIGIN_START, int32_t(selector)); break;
        }
        const int64_t position = file.Tell();
        if (position < 0 || (!file.HasReadPastEnd() && uint64_t(position) > p_size + 255))
        {
            std::abort();
        }
        selector = static_cast<uint8_t>(selector * 31 + 7 + file.ReadUInt8());
    }
    // A string read past the end is empty.
    file.Seek(DataFile::ORIGIN_END, 0);
    if (file.ReadString()[0] != '\0')
    {
        std::abort();
    }
    file.Close();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    static const bool s_ready = fuzzscratch::EnterScratchDirectory("datafile_fuzz");
    if (!s_ready)
    {
        std::abort();
    }
    fuzzscratch::WriteInput("input.bin", p_data, p_size);
    ReadMixed(p_size);

    static const char* const EXTENSIONS[] = {".hul", ".eng", ".sgr", ".pwp", ".cop", ".wpn",
                                             ".nme", ".lvl", ".shp", ".sav"};
    std::ostringstream out;
    std::ostringstream err;
    for (const char* extension : EXTENSIONS)
    {
        const std::string name = std::string("record") + extension;
        fuzzscratch::WriteInput(name.c_str(), p_data, p_size);
        forge::Inspect(name, true, out, err);
        out.str("");
        err.str("");
    }

    // What reads back whole must write back to the same bytes.
    forge::LevelRecord level;
    std::string error;
    if (forge::ReadWholeFile("record.lvl", level, error) && forge::IsValidMapSize(level.mapSize))
    {
        if (!forge::WriteWholeFile("copy.lvl", level, error))
        {
            std::abort();
        }
        forge::LevelRecord again;
        if (!forge::ReadWholeFile("copy.lvl", again, error) || again.tiles != level.tiles ||
            again.ships.size() != level.ships.size())
        {
            std::abort();
        }
    }
    return 0;
}
