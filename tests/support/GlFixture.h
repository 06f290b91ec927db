#pragma once

#include "app/Application.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

class Mode;

namespace testsupport
{

// An application with a real window and OpenGL context (under Xvfb in `make test`), running
// in a fresh temporary game directory.
class TestApplication : public Application
{
public:
    Mode* GetCurrentMode() override { return m_pMode; }
    void SetMode(Mode* p_mode) { m_pMode = p_mode; }

private:
    Mode* m_pMode = nullptr;
};

struct Rgb
{
    int r;
    int g;
    int b;
};

// Reads the pixel at display coordinates (x right, y down from the top-left) of the back
// buffer, i.e. of what was drawn since the last BeginFrame.
Rgb ReadPixel(int p_x, int p_y);
// Mean brightness (0..255) over a display rectangle.
double MeanBrightness(int p_x, int p_y, int p_width, int p_height);

class GlFixture : public WorkDirTest
{
protected:
    void SetUp() override;
    void TearDown() override;

    // Starts the application at the given display size; false (and the test skips) when no
    // display is available.
    bool StartApplication(uint16_t p_width = 1024, uint16_t p_height = 768);

    TestApplication m_app;
    bool m_started = false;
};

} // namespace testsupport
