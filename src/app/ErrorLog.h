#pragma once

#include <cstdint>
#include <string>

// Start-up and display errors, kept until shutdown and shown then, one box each.
class ErrorLog
{
public:
    static constexpr int MAX_MESSAGES = 100;

    ErrorLog();

    // Stores a copy of p_message while fewer than 99 are stored (later ones are dropped, flag
    // and all). With p_closeWindow the application's window is destroyed afterwards.
    void Report(const char* p_message, bool p_closeWindow);
    // Shows every stored message in order in a box captioned "ERROR!" and frees it. The count
    // is left as it was.
    void ShowAll();

    uint8_t GetCount() const { return m_count; }
    // The stored message at p_index, or null (out of range, or already shown).
    const char* GetMessage(int p_index) const;

private:
    std::string m_messages[MAX_MESSAGES];
    bool m_used[MAX_MESSAGES];
    uint8_t m_count;
};

extern ErrorLog g_errorLog;
