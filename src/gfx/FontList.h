#pragma once

#include <cstdint>
#include <memory>
#include <string>

class Font;

// Shares fonts: the same typeface (compared without case), size and style give the same
// Font. Fonts stay until the list is destroyed, even when nobody uses them any more.
class FontList
{
public:
    FontList();
    ~FontList();
    FontList(const FontList&) = delete;
    FontList& operator=(const FontList&) = delete;

    Font* GetFont(const char* p_typeFace, int32_t p_size, int32_t p_flags);
    void ReleaseFont(Font* p_font);
    // Before the OpenGL context goes, and after the new one exists.
    void DeleteAllLists();
    void RecreateAll();

    // Users of p_font who have not handed it back (-1 when the list does not hold it).
    int32_t GetRefCount(const Font* p_font) const;
    size_t GetCount() const;

private:
    struct FontNode
    {
        std::unique_ptr<Font> m_pFont;
        int32_t m_refCount = 0;
        std::string m_typeFace;
        int32_t m_size = 0;
        int32_t m_flags = 0;
        FontNode* m_pPrev = nullptr;
        FontNode* m_pNext = nullptr;
    };

    FontNode* m_pHead;
};

extern FontList g_fontList;
