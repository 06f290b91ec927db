#include "gfx/TextureManager.h"

#include "platform/Gl.h"
#include "platform/Paths.h"

#include <cstdio>
#include <cstring>

TextureManager* g_pTextureManager = nullptr;

TextureManager::TextureManager() : m_colorKey(DEFAULT_COLOR_KEY)
{
    Reset();
}

TextureManager::~TextureManager()
{
    // Unlink one by one: a long chain of owning pointers must not recurse.
    while (m_pHead)
    {
        m_pHead = std::move(m_pHead->m_pNext);
    }
}

bool TextureManager::Reset()
{
    while (m_pHead)
    {
        m_pHead = std::move(m_pHead->m_pNext);
    }
    m_colorKey = DEFAULT_COLOR_KEY;
    return true;
}

std::unique_ptr<TextureNode> TextureManager::MakeNode(const char* p_fileName)
{
    auto node = std::make_unique<TextureNode>();
    node->m_fileName = p_fileName;
    LoadNode(*node, true);
    return node;
}

TextureNode* TextureManager::GetTexture(const char* p_fileName)
{
    if (p_fileName == nullptr)
    {
        return nullptr;
    }
    if (!m_pHead || std::strcmp(p_fileName, m_pHead->m_fileName.c_str()) < 0)
    {
        auto node = MakeNode(p_fileName);
        node->m_pNext = std::move(m_pHead);
        m_pHead = std::move(node);
        return m_pHead.get();
    }
    TextureNode* current = m_pHead.get();
    for (;;)
    {
        if (std::strcmp(p_fileName, current->m_fileName.c_str()) == 0)
        {
            return current;
        }
        if (!current->m_pNext || std::strcmp(p_fileName, current->m_pNext->m_fileName.c_str()) < 0)
        {
            auto node = MakeNode(p_fileName);
            node->m_pNext = std::move(current->m_pNext);
            current->m_pNext = std::move(node);
            return current->m_pNext.get();
        }
        current = current->m_pNext.get();
    }
}

void TextureManager::Bind(const TextureNode* p_node)
{
    glBindTexture(GL_TEXTURE_2D, p_node != nullptr ? p_node->m_textureId : 0);
}

void TextureManager::ReloadAll()
{
    for (TextureNode* node = m_pHead.get(); node != nullptr; node = node->m_pNext.get())
    {
        LoadNode(*node, true);
    }
}

size_t TextureManager::GetCount() const
{
    size_t count = 0;
    for (const TextureNode* node = m_pHead.get(); node != nullptr; node = node->m_pNext.get())
    {
        ++count;
    }
    return count;
}

void TextureManager::ExpandPixels(platform::DibPixels& p_pixels, bool p_useColorKey, uint32_t p_colorKey)
{
    const size_t width = static_cast<size_t>(p_pixels.width);
    const size_t height = static_cast<size_t>(p_pixels.height);
    uint8_t* bits = p_pixels.bits.data();
    if (p_pixels.bitCount == 24)
    {
        // Widen in place from the last pixel to the first, so that no source byte is
        // overwritten before it is read; source rows carry padding to four bytes.
        const size_t stride = (width * 3 + 3) & ~static_cast<size_t>(3);
        for (size_t row = height; row-- > 0;)
        {
            for (size_t col = width; col-- > 0;)
            {
                const size_t src = row * stride + col * 3;
                const size_t dst = (row * width + col) * 4;
                const uint8_t blue = bits[src];
                const uint8_t green = bits[src + 1];
                const uint8_t red = bits[src + 2];
                bits[dst] = blue;
                bits[dst + 1] = green;
                bits[dst + 2] = red;
                bits[dst + 3] = 255;
            }
        }
        p_pixels.bitCount = 32;
    }
    if (!p_useColorKey)
    {
        return;
    }
    const uint8_t keyBlue = static_cast<uint8_t>(p_colorKey & 0xFF);
    const uint8_t keyGreen = static_cast<uint8_t>((p_colorKey >> 8) & 0xFF);
    const uint8_t keyRed = static_cast<uint8_t>((p_colorKey >> 16) & 0xFF);
    const size_t count = width * height;
    for (size_t i = 0; i < count; ++i)
    {
        uint8_t* pixel = bits + i * 4;
        if (pixel[0] == keyBlue && pixel[1] == keyGreen && pixel[2] == keyRed && pixel[3] == 255)
        {
            pixel[3] = 0;
        }
    }
    // A keyed pixel takes the colour of an opaque neighbour (staying transparent), so that
    // filtering a scaled picture never blends the key's green into its edges.
    for (size_t row = 0; row < height; ++row)
    {
        for (size_t col = 0; col < width; ++col)
        {
            uint8_t* pixel = bits + (row * width + col) * 4;
            if (pixel[3] != 0 || pixel[0] != keyBlue || pixel[1] != keyGreen || pixel[2] != keyRed)
            {
                continue;
            }
            const uint8_t* neighbours[4] = {
                col > 0 ? pixel - 4 : nullptr,
                col + 1 < width ? pixel + 4 : nullptr,
                row > 0 ? pixel - width * 4 : nullptr,
                row + 1 < height ? pixel + width * 4 : nullptr,
            };
            for (const uint8_t* neighbour : neighbours)
            {
                if (neighbour != nullptr && neighbour[3] == 255)
                {
                    pixel[0] = neighbour[0];
                    pixel[1] = neighbour[1];
                    pixel[2] = neighbour[2];
                    break;
                }
            }
        }
    }
}

bool TextureManager::LoadNode(TextureNode& p_node, bool p_useColorKey)
{
    platform::DibPixels pixels;
    const std::string path = platform::ResolvePath(p_node.m_fileName);
    if (path.empty() || !platform::ReadBitmapFile(path, pixels))
    {
        std::fprintf(stderr, "Korvath: cannot load picture \"%s\"\n", p_node.m_fileName.c_str());
        p_node.m_textureId = 0; // any older name belonged to a context that is gone
        return false;
    }
    ExpandPixels(pixels, p_useColorKey, m_colorKey);

    p_node.m_width = pixels.width;
    p_node.m_height = pixels.height;
    GLuint id = 0;
    glGenTextures(1, &id);
    p_node.m_textureId = id;
    glBindTexture(GL_TEXTURE_2D, id);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexImage2D(GL_TEXTURE_2D, 0, 4, pixels.width, pixels.height, 0, GL_BGRA_EXT, GL_UNSIGNED_BYTE,
                 pixels.bits.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    return true;
}
