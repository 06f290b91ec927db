// Feeds arbitrary bytes to the level loader and the entity loader (the same bytes are both the
// level file and the entity file its ships name), then plays a few frames of the world they
// make. Nothing may crash, hang, read out of range or allocate without bound, whatever sizes
// and counts the bytes claim.
#include "FuzzScratch.h"
#include "app/DevOptions.h"
#include "pilot/PartCatalog.h"
#include "sim/EntityShip.h"
#include "sim/Level.h"
#include "sim/PlayerShip.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace
{
// Weapons by name need a catalogue; the built-in ones need no files.
void MakeCatalogue()
{
    g_devOptions.hasSeed = true; // repeatable runs: the clock seeds take a fixed value
    g_devOptions.seed = 1;
    std::error_code ec;
    std::filesystem::create_directories("Campaign", ec);
    std::filesystem::create_directories("entity", ec);
    CreatePartCatalog();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    static const bool s_ready = fuzzscratch::EnterScratchDirectory("level_fuzz");
    if (!s_ready)
    {
        std::abort();
    }
    static const bool s_catalogue = (MakeCatalogue(), true);
    (void)s_catalogue;
    fuzzscratch::WriteInput("Campaign/fuzz.lvl", p_data, p_size);
    fuzzscratch::WriteInput("entity/air000.nme", p_data, p_size);

    {
        EntityShip ship;
        ship.Load("entity\\air000.nme");
        ship.SetPosition(100.0f, 100.0f);
        ship.Update(0.1f);
        ship.TakeDamage(static_cast<unsigned>(p_size));
    }

    PlayerShip player;
    {
        Level level;
        level.Load("Campaign\\fuzz.lvl", nullptr, &player);
        for (int i = 0; i < 4; ++i)
        {
            level.Update(0.25f);
            level.Classify(player.GetX(), player.GetY());
        }
    }
    return 0;
}
