#include "ui/FramedBox.h"

#include "ui/UiDraw.h"

#include <algorithm>
#include <cassert>
#include <cstdio>

namespace
{
const char* const BOX_PICTURES[FramedBox::PIECE_COUNT] = {
    "art\\box_topleft.bmp", "art\\box_topright.bmp", "art\\box_bottomleft.bmp", "art\\box_bottomright.bmp",
    "art\\box_top.bmp",     "art\\box_left.bmp",     "art\\box_right.bmp",      "art\\box_bottom.bmp",
};

constexpr uint8_t CENTRE_GREY = 150;

uint8_t Darken(uint8_t p_value)
{
    return static_cast<uint8_t>((p_value * CENTRE_GREY + 127) / 255);
}
} // namespace

FramedBox::FramedBox()
    : m_cornerSize(BOX_IMAGE_SIZE), m_width(3 * BOX_IMAGE_SIZE), m_height(3 * BOX_IMAGE_SIZE), m_hasMiddleX(true),
      m_hasMiddleY(true)
{
    for (int32_t i = 0; i < PIECE_COUNT; ++i)
    {
        Image& piece = m_boxImages[i];
        piece.Load(BOX_PICTURES[i]);
        if (ui::HasPicture(piece) &&
            (piece.GetWidth() != BOX_IMAGE_SIZE || piece.GetHeight() != BOX_IMAGE_SIZE))
        {
            // Drawn to the corner size anyway; a wrong picture shows as a stretched one.
            std::fprintf(stderr, "Korvath: %s is %dx%d, box pictures are %dx%d\n", BOX_PICTURES[i],
                         piece.GetWidth(), piece.GetHeight(), BOX_IMAGE_SIZE, BOX_IMAGE_SIZE);
            piece.SetSize(BOX_IMAGE_SIZE, BOX_IMAGE_SIZE);
        }
    }
    m_pImage = std::make_unique<Image>();
    assert(m_pImage && "m_pImage");
    m_pImage->Load(CENTRE_GREY, CENTRE_GREY, CENTRE_GREY, 255, nullptr);
    m_pImage->SetSize(BOX_IMAGE_SIZE, BOX_IMAGE_SIZE);
}

FramedBox::~FramedBox() = default;

bool FramedBox::LoadImage(const char* p_fileName)
{
    (void)p_fileName;
    return true;
}

bool FramedBox::SetSize(int p_width, int p_height)
{
    const int32_t c = m_cornerSize;
    const int32_t w = std::max(p_width, 2 * c);
    const int32_t h = std::max(p_height, 2 * c);
    m_hasMiddleX = w - 2 * c > 0;
    m_hasMiddleY = h - 2 * c > 0;
    if (m_hasMiddleX)
    {
        m_boxImages[TOP].SetWidth(w - 2 * c);
        m_boxImages[BOTTOM].SetWidth(w - 2 * c);
    }
    if (m_hasMiddleY)
    {
        m_boxImages[LEFT].SetHeight(h - 2 * c);
        m_boxImages[RIGHT].SetHeight(h - 2 * c);
    }
    if (m_hasMiddleX && m_hasMiddleY)
    {
        m_pImage->SetSize(w - 2 * c, h - 2 * c);
    }
    m_width = w;
    m_height = h;
    return true;
}

void FramedBox::SetScale(float p_scale)
{
    assert(p_scale >= 0.0f && p_scale <= 1.0f && "p_scale >= 0.0f && p_scale <= 1.0f");
    p_scale = std::clamp(p_scale, 0.0f, 1.0f);
    m_cornerSize = static_cast<int32_t>(32.5 * static_cast<double>(p_scale));
    SetSize(m_width, m_height);
    const int32_t c = m_cornerSize;
    for (Image& piece : m_boxImages)
    {
        piece.SetSize(c, c);
    }
    m_boxImages[TOP].SetWidth(m_width - 2 * c);
    m_boxImages[BOTTOM].SetWidth(m_width - 2 * c);
    m_boxImages[LEFT].SetHeight(m_height - 2 * c);
    m_boxImages[RIGHT].SetHeight(m_height - 2 * c);
    m_pImage->SetSize(m_width - 2 * c, m_height - 2 * c);
}

void FramedBox::SetColor(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha)
{
    for (Image& piece : m_boxImages)
    {
        piece.SetColor(p_red, p_green, p_blue, p_alpha);
    }
    m_pImage->SetColor(Darken(p_red), Darken(p_green), Darken(p_blue), p_alpha);
}

void FramedBox::DrawPiece(Image& p_image, int32_t p_x, int32_t p_y)
{
    if (ui::HasPicture(p_image))
    {
        p_image.Draw(p_x, p_y, 0.0, true);
    }
}

bool FramedBox::Render()
{
    const int32_t x = ui::Whole(GetX());
    const int32_t y = ui::Whole(GetY());
    const int32_t c = m_cornerSize;
    const int32_t w = m_width;
    const int32_t h = m_height;

    DrawPiece(m_boxImages[TOP_LEFT], x, y);
    if (m_hasMiddleX)
    {
        DrawPiece(m_boxImages[TOP], x + c, y);
    }
    DrawPiece(m_boxImages[TOP_RIGHT], x + w - c, y);

    if (m_hasMiddleY)
    {
        DrawPiece(m_boxImages[LEFT], x, y + c);
        if (m_hasMiddleX)
        {
            DrawPiece(*m_pImage, x + c, y + c);
        }
        DrawPiece(m_boxImages[RIGHT], x + w - c, y + c);
    }

    const int32_t bottom = y + c + (h - 2 * c);
    DrawPiece(m_boxImages[BOTTOM_LEFT], x, bottom);
    if (m_hasMiddleX)
    {
        DrawPiece(m_boxImages[BOTTOM], x + c, bottom);
    }
    DrawPiece(m_boxImages[BOTTOM_RIGHT], x + w - c, bottom);
    return true;
}
