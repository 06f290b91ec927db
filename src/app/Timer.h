#pragma once

#include <cstdint>

// Frame timer on the high-resolution counter.
class Timer
{
public:
    using CounterFunction = int64_t (*)();

    Timer();
    // Reads its counts from the given functions instead of the system's counter.
    Timer(CounterFunction p_counter, CounterFunction p_frequency);

    bool Start();
    // Seconds since the previous reading.
    float GetElapsed();

private:
    int64_t m_frequency;
    int64_t m_lastCount;
    int64_t m_currentCount;
    float m_elapsed;
    CounterFunction m_pCounter;
    CounterFunction m_pFrequency;
};
