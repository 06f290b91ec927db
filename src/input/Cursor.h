#pragma once

#include "sim/GameObject.h"

#include <cstdint>

class Mouse;

// The game's own mouse pointer, shared by every mode (Mode::s_cursor). It moves at twice the
// mouse's relative counts, stays on the 1024 x 768 logical screen, and tells the widgets where
// the mouse is and whether its left button is down.
class Cursor : public GameObject
{
public:
    Cursor();
    ~Cursor() override;

    // Loads "art\cursor.bmp" (p_fileName is not used), places the cursor at (p_x, p_y) with
    // that offset and binds it to p_mouse. False, doing nothing, when already initialised.
    bool Init(const char* p_fileName, double p_x, double p_y, Mouse* p_mouse);
    bool IsInitialized() const { return m_initialized; }

    // Moves by the mouse's motion of the current poll; p_dt is not used.
    bool Update(float p_dt) override;
    // The picture with its top-left corner at the position, blended.
    bool Render() override;
    // The position plus the offset, in whole pixels; answers whether the left button is down.
    bool GetPosition(int32_t& p_x, int32_t& p_y) const;

    Mouse* GetMouse() const { return m_pMouse; }
    // For an application that replaced its input system and textures (tests run several in
    // one process): binds the new mouse and loads the picture again. Null only forgets the mouse.
    void Rebind(Mouse* p_mouse);

private:
    double m_offsetX;
    double m_offsetY;
    Mouse* m_pMouse; // not owned
    bool m_initialized;
};
