#pragma once

#include "sim/GameObject.h"

#include <cstdint>
#include <memory>

// A game object that just shows its image: at the current transform, or at a point.
class Picture : public GameObject
{
public:
    Picture() = default;
    ~Picture() override = default;

    bool Update(float p_dt) override;
    // Draws the image unblended at the current transform (its own position is ignored).
    bool Render() override;
    virtual bool DrawAt(uint16_t p_x, uint16_t p_y);
};

// A row of pictures loaded from numbered files ("...000.bmp", "...001.bmp", ...).
class PictureSequence
{
public:
    PictureSequence();
    ~PictureSequence();
    PictureSequence(const PictureSequence&) = delete;
    PictureSequence& operator=(const PictureSequence&) = delete;

    // p_firstFileName must end in three digits and a four-character extension; false otherwise.
    bool Load(const char* p_firstFileName, uint8_t p_count);
    bool Free();

    uint8_t GetCount() const { return m_count; }
    Picture* GetPicture(uint8_t p_index);

    // Steps the three digits before the extension on by one (..009 -> ..010, 999 -> 000).
    static void IncrementNumber(char* p_name, size_t p_length);

private:
    std::unique_ptr<Picture[]> m_pPictures;
    uint8_t m_count;
};
