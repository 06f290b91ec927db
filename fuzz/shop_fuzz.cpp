// Feeds arbitrary bytes to the shop-file reader. Nothing may crash or read out of range, and
// what it keeps must fit in the bytes it was given: no count can make it hold more names, or
// longer ones, than the file really has.
#include "FuzzScratch.h"
#include "pilot/ShopList.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    static const bool s_ready = fuzzscratch::EnterScratchDirectory("shop_fuzz");
    if (!s_ready)
    {
        std::abort();
    }
    fuzzscratch::WriteInput("fuzz.shp", p_data, p_size);

    ShopList list;
    const bool whole = list.Load("fuzz.shp");
    // Every byte kept came from the file: the characters of the title, and a length byte and
    // the characters of each name; a whole file also had the title's length, two values and a
    // count per kind.
    size_t used = list.GetTitle().size();
    for (int kind = 0; kind < NUM_PART_KINDS; ++kind)
    {
        if (static_cast<size_t>(list.GetCount(kind)) != list.GetNames(kind).size() || list.GetCount(kind) > 255)
        {
            std::abort();
        }
        for (const std::string& name : list.GetNames(kind))
        {
            used += 1 + name.size();
        }
    }
    if (whole)
    {
        used += 1 + 2 + NUM_PART_KINDS;
    }
    if (list.GetTitle().size() > 255 || used > p_size)
    {
        std::abort();
    }
    return 0;
}
