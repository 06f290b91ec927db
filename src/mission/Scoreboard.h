#pragma once

// The kills of the two pilots of a two-player game; the hub shows them beside each pilot's
// money. Kills go to the pilot whose turn the scoreboard holds: the turn passes at the end of
// every mission attempt, won or lost.
class Scoreboard
{
public:
    Scoreboard() { Reset(); }
    Scoreboard(const Scoreboard&) = delete;
    Scoreboard& operator=(const Scoreboard&) = delete;

    // Both counts 0, the first player's turn.
    void Reset();
    // One more kill for the player whose turn it is.
    void AddKill() { ++*m_pCurrent; }
    // The other player's turn.
    void SwitchPlayer();
    // 0 for player 1, 1 for player 2; any other index answers 0.
    int GetKills(int p_index) const;
    // 0 or 1: whose kills AddKill counts.
    int GetCurrentPlayer() const { return m_pCurrent == &m_kills[0] ? 0 : 1; }

private:
    int m_kills[2] = {0, 0};
    int* m_pCurrent = &m_kills[0];
};

extern Scoreboard g_scoreboard;
