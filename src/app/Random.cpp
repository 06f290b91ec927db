#include "app/Random.h"

#include "app/DevOptions.h"

#include <ctime>

namespace
{
uint32_t s_state = 1;
}

void GameSrand(uint32_t p_seed)
{
    s_state = p_seed;
}

int32_t GameRand()
{
    s_state = s_state * 214013u + 2531011u;
    return static_cast<int32_t>((s_state >> 16) & 0x7FFF);
}

void GameSrandFromTime()
{
    if (g_devOptions.hasSeed)
    {
        GameSrand(g_devOptions.seed);
        return;
    }
    GameSrand(static_cast<uint32_t>(std::time(nullptr)));
}
