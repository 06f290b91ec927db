#include "sim/Controller.h"

int Controller::Think(int p_state, float p_dt)
{
    (void)p_state;
    (void)p_dt;
    return -1;
}
