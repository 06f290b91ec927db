#pragma once

#include "gfx/Image.h"
#include "ui/StaticObjects.h"

#include <array>
#include <cstdint>

// A panel: four corner pictures, four edge pictures stretched between them, and a grey
// centre. The border pieces are drawn at the corner size, which SetScale chooses.
class FramedBox : public StaticObject
{
public:
    // The size of every box picture.
    static constexpr int32_t BOX_IMAGE_SIZE = 32;

    // Indices of m_boxImages.
    enum Piece : int32_t
    {
        TOP_LEFT = 0,
        TOP_RIGHT = 1,
        BOTTOM_LEFT = 2,
        BOTTOM_RIGHT = 3,
        TOP = 4,
        LEFT = 5,
        RIGHT = 6,
        BOTTOM = 7,
        PIECE_COUNT = 8,
    };

    FramedBox();
    ~FramedBox() override;

    bool Render() override;
    // The box has its own pictures.
    bool LoadImage(const char* p_fileName) override;
    int GetWidth() const override { return m_width; }
    int GetHeight() const override { return m_height; }
    // Never smaller than two corners each way.
    bool SetSize(int p_width, int p_height) override;

    // The corner size becomes the whole part of 32.5 x p_scale, p_scale 0..1.
    void SetScale(float p_scale);
    // The border gets the colour; the centre the same darkened to 150/255.
    void SetColor(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha);

    int32_t GetCornerSize() const { return m_cornerSize; }
    bool HasMiddleX() const { return m_hasMiddleX; }
    bool HasMiddleY() const { return m_hasMiddleY; }
    const Image& GetPiece(int32_t p_piece) const { return m_boxImages[p_piece]; }
    Image* GetCentre() const { return m_pImage.get(); }

private:
    void DrawPiece(Image& p_image, int32_t p_x, int32_t p_y);

    std::array<Image, PIECE_COUNT> m_boxImages;
    int32_t m_cornerSize;
    int32_t m_width;
    int32_t m_height;
    bool m_hasMiddleX;
    bool m_hasMiddleY;
};
