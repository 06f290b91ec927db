#pragma once

#include "platform/BitmapFile.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// One bitmap file loaded into a texture. Nodes live as long as the manager; images keep
// plain pointers to them.
class TextureNode
{
public:
    int32_t m_width = 0;
    int32_t m_height = 0;
    uint32_t m_textureId = 0;
    std::string m_fileName;
    std::unique_ptr<TextureNode> m_pNext;
};

// Loads each bitmap file once into a texture, keyed by file name, with pure green made
// transparent. The list stays sorted by file name in byte order.
class TextureManager
{
public:
    static constexpr uint32_t DEFAULT_COLOR_KEY = 0x0000FF00;

    TextureManager();
    ~TextureManager();
    TextureManager(const TextureManager&) = delete;
    TextureManager& operator=(const TextureManager&) = delete;

    bool Reset();
    // The node of p_fileName, loading the file on first use. A file that cannot be loaded
    // still gets its node (no size, no texture) and is reported once on standard error.
    TextureNode* GetTexture(const char* p_fileName);
    void Bind(const TextureNode* p_node);
    // Loads every file again into the current OpenGL context.
    void ReloadAll();

    const TextureNode* GetHead() const { return m_pHead.get(); }
    size_t GetCount() const;
    uint32_t GetColorKey() const { return m_colorKey; }

    // Turns the rows a bitmap file gave into 32-bit B, G, R, A pixels, bottom-up and
    // unpadded: 24-bit pixels get alpha 255, 32-bit ones keep their fourth byte; then, with
    // p_useColorKey, every opaque pixel of exactly p_colorKey's colour becomes transparent and
    // takes the colour of an opaque neighbour where it has one.
    static void ExpandPixels(platform::DibPixels& p_pixels, bool p_useColorKey, uint32_t p_colorKey);

private:
    std::unique_ptr<TextureNode> MakeNode(const char* p_fileName);
    bool LoadNode(TextureNode& p_node, bool p_useColorKey);

    std::unique_ptr<TextureNode> m_pHead;
    uint32_t m_colorKey;
};

extern TextureManager* g_pTextureManager;
