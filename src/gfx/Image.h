#pragma once

#include <cstdint>
#include <string>

class TextureNode;

// One drawable rectangle in the logical 1024 x 768 space: a colour and an optional texture,
// compiled into a display list. Every Image registers itself so that all of them can be
// rebuilt after the OpenGL context was replaced.
class Image
{
public:
    Image();
    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    // White, opaque, textured with the bitmap p_fileName (shared through the texture manager);
    // the size becomes the bitmap's. A null or empty name clears the texture and keeps the size.
    bool Load(const char* p_fileName);
    bool Load(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha, const char* p_fileName);
    // A plain white 100 x 100 square.
    bool Reset();
    bool Release();

    bool SetSize(int32_t p_width, int32_t p_height);
    bool SetWidth(int32_t p_width);
    bool SetHeight(int32_t p_height);
    bool ResetSize();
    int32_t GetWidth() const { return m_width; }
    int32_t GetHeight() const { return m_height; }

    bool SetColor(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha);
    bool SetRed(uint8_t p_red);
    bool SetGreen(uint8_t p_green);
    bool SetBlue(uint8_t p_blue);
    bool SetAlpha(uint8_t p_alpha);
    const uint8_t* GetColor() const { return m_color; }

    // Draws at the current transform: blended, or alpha-tested at 0.07.
    bool Draw(bool p_blend);
    // Translated to (x, y) and turned by p_angle degrees about the top-left corner: blended,
    // or alpha-tested at 0.7.
    bool Draw(double p_x, double p_y, double p_angle, bool p_blend);

    const TextureNode* GetTexture() const { return m_pTexture; }
    const std::string& GetFileName() const { return m_fileName; }
    uint32_t GetDisplayList() const { return m_displayList; }

    // Before the OpenGL context goes: drops every image's display list.
    static void ReleaseAll();
    // In the new context (after the textures were reloaded): looks every texture up again
    // and rebuilds every display list.
    static void RebuildAll();
    // Number of images alive (the registry's length).
    static size_t GetRegisteredCount();

private:
    void BuildDisplayList();
    void DeleteDisplayList();

    uint8_t m_color[4];
    int32_t m_width;
    int32_t m_height;
    TextureNode* m_pTexture;
    uint32_t m_displayList;
    std::string m_fileName; // empty when the image has no file
};
