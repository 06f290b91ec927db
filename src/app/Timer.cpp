#include "app/Timer.h"

#include "platform/System.h"

Timer::Timer() : Timer(&platform::GetPerformanceCounter, &platform::GetPerformanceFrequency) {}

Timer::Timer(CounterFunction p_counter, CounterFunction p_frequency)
    : m_frequency(1), m_lastCount(0), m_currentCount(0), m_elapsed(0.0f), m_pCounter(p_counter),
      m_pFrequency(p_frequency)
{
}

bool Timer::Start()
{
    m_frequency = m_pFrequency();
    if (m_frequency <= 0)
    {
        m_frequency = 1;
    }
    m_currentCount = m_pCounter();
    m_lastCount = m_currentCount;
    return true;
}

float Timer::GetElapsed()
{
    m_lastCount = m_currentCount;
    m_currentCount = m_pCounter();
    long double counts = static_cast<long double>(m_currentCount - m_lastCount);
    m_elapsed = static_cast<float>(counts / static_cast<long double>(m_frequency));
    return m_elapsed;
}
