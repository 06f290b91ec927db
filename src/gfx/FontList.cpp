#include "gfx/FontList.h"

#include "gfx/Font.h"

#include <cassert>
#include <strings.h>

FontList g_fontList;

FontList::FontList() : m_pHead(nullptr) {}

FontList::~FontList()
{
    while (m_pHead != nullptr)
    {
        FontNode* next = m_pHead->m_pNext;
        delete m_pHead;
        m_pHead = next;
    }
}

Font* FontList::GetFont(const char* p_typeFace, int32_t p_size, int32_t p_flags)
{
    assert(p_typeFace && "p_typeFace");
    if (p_typeFace == nullptr)
    {
        return nullptr;
    }
    for (FontNode* node = m_pHead; node != nullptr; node = node->m_pNext)
    {
        if (strcasecmp(node->m_typeFace.c_str(), p_typeFace) == 0 && node->m_size == p_size &&
            node->m_flags == p_flags)
        {
            ++node->m_refCount;
            return node->m_pFont.get();
        }
    }
    FontNode* node = new FontNode();
    node->m_pFont = std::make_unique<Font>(p_typeFace, p_size, p_flags);
    node->m_typeFace = p_typeFace;
    node->m_size = p_size;
    node->m_flags = p_flags;
    node->m_refCount = 1;
    node->m_pNext = m_pHead;
    if (m_pHead != nullptr)
    {
        m_pHead->m_pPrev = node;
    }
    m_pHead = node;
    return node->m_pFont.get();
}

void FontList::ReleaseFont(Font* p_font)
{
    for (FontNode* node = m_pHead; node != nullptr; node = node->m_pNext)
    {
        if (node->m_pFont.get() == p_font && node->m_refCount > 0)
        {
            --node->m_refCount;
        }
    }
}

void FontList::DeleteAllLists()
{
    for (FontNode* node = m_pHead; node != nullptr; node = node->m_pNext)
    {
        node->m_pFont->DeleteLists();
    }
}

void FontList::RecreateAll()
{
    for (FontNode* node = m_pHead; node != nullptr; node = node->m_pNext)
    {
        node->m_pFont->Create(node->m_typeFace.c_str(), node->m_size, node->m_flags);
    }
}

int32_t FontList::GetRefCount(const Font* p_font) const
{
    for (const FontNode* node = m_pHead; node != nullptr; node = node->m_pNext)
    {
        if (node->m_pFont.get() == p_font)
        {
            return node->m_refCount;
        }
    }
    return -1;
}

size_t FontList::GetCount() const
{
    size_t count = 0;
    for (const FontNode* node = m_pHead; node != nullptr; node = node->m_pNext)
    {
        ++count;
    }
    return count;
}
