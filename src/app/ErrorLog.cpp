#include "app/ErrorLog.h"

#include "app/Application.h"
#include "platform/System.h"

ErrorLog g_errorLog;

ErrorLog::ErrorLog() : m_used(), m_count(0) {}

void ErrorLog::Report(const char* p_message, bool p_closeWindow)
{
    if (m_count + 1 >= MAX_MESSAGES)
    {
        return;
    }
    m_messages[m_count] = p_message != nullptr ? p_message : "";
    m_used[m_count] = true;
    ++m_count;
    if (p_closeWindow && g_pApplication != nullptr)
    {
        g_pApplication->DestroyWindow();
    }
}

void ErrorLog::ShowAll()
{
    for (int i = 0; i < m_count; ++i)
    {
        if (!m_used[i])
        {
            continue;
        }
        platform::ShowMessageBox(m_messages[i].c_str(), "ERROR!");
        m_messages[i].clear();
        m_messages[i].shrink_to_fit();
        m_used[i] = false;
    }
}

const char* ErrorLog::GetMessage(int p_index) const
{
    if (p_index < 0 || p_index >= m_count || !m_used[p_index])
    {
        return nullptr;
    }
    return m_messages[p_index].c_str();
}
