// korvath-forge: builds, prints and checks the game's data files. See Forge.h.
#include "Forge.h"

#include <iostream>

int main(int p_argc, char** p_argv)
{
    return forge::Main(p_argc, p_argv, std::cout, std::cerr);
}
