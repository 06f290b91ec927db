#pragma once

#include <cstdint>

// The game's rand and srand: the classic 15-bit generator (results 0..32767) that the game's
// arithmetic was tuned for, identical on every machine.
constexpr int32_t GAME_RAND_MAX = 32767;

void GameSrand(uint32_t p_seed);
int32_t GameRand();
// Seeds from the clock, or from KORVATH_SEED when a developer set it.
void GameSrandFromTime();
