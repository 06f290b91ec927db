#include "mission/Scoreboard.h"

Scoreboard g_scoreboard;

void Scoreboard::Reset()
{
    m_kills[0] = 0;
    m_kills[1] = 0;
    m_pCurrent = &m_kills[0];
}

void Scoreboard::SwitchPlayer()
{
    m_pCurrent = m_pCurrent == &m_kills[0] ? &m_kills[1] : &m_kills[0];
}

int Scoreboard::GetKills(int p_index) const
{
    return p_index == 0 || p_index == 1 ? m_kills[p_index] : 0;
}
