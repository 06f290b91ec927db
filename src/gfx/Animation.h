#pragma once

#include <cstdint>
#include <memory>

#include "sim/WorldObject.h"

class Image;

// A world object that shows a row of pictures one after another at a fixed frame time,
// looping, or stopping on the last frame and marking itself dead so that the world removes
// it (explosions, effects, the mission banners). It moves like any world object.
class Animation : public WorldObject
{
public:
    Animation();
    ~Animation() override;

    // Discards the frames and makes room for p_maxImages (none when negative).
    bool Init(int32_t p_maxImages, float p_frameTime, bool p_loop);
    // Loads the next frame (white, opaque); false when there is no room or no Init.
    bool AddImage(const char* p_fileName);
    bool FreeImages();
    bool SetFrameTime(float p_frameTime);
    bool SetLoop(bool p_loop);

    // Advances at most one frame per call, however large p_dt: the surplus carries over.
    bool Update(float p_dt) override;
    // The current frame at the position and heading; false when there is none.
    bool Render() override;
    // The current frame at (p_x, p_y) turned by p_angle degrees about its top-left corner,
    // blended; false when there is none.
    bool DrawAt(double p_x, double p_y, double p_angle);

    // The first frame's size; 0 without frames.
    int GetWidth() const override;
    int GetHeight() const override;

    int32_t GetCurrentImage() const { return m_CurrentImage; }
    int32_t GetNumImages() const { return m_NumImages; }
    int32_t GetMaxImages() const { return m_maxImages; }
    float GetFrameTime() const { return m_frameTime; }
    bool GetLoop() const { return m_loop; }
    Image* GetFrame(int32_t p_index) const;

private:
    std::unique_ptr<std::unique_ptr<Image>[]> m_pImages; // null until Init
    int32_t m_maxImages = 0;
    int32_t m_NumImages = 0;
    int32_t m_CurrentImage = -1;
    float m_frameTime = 1.0f;
    bool m_loop = true;
    float m_timeInFrame = 0.0f;
};
