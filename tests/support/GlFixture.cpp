#include "support/GlFixture.h"

#include "app/Renderer.h"
#include "platform/Gl.h"
#include "platform/Window.h"


#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#define KORVATH_LSAN 1
#endif

namespace testsupport
{

Rgb ReadPixel(int p_x, int p_y)
{
    GLint viewport[4] = {0, 0, 0, 0};
    glGetIntegerv(GL_VIEWPORT, viewport);
    uint8_t pixel[4] = {0, 0, 0, 0};
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadBuffer(GL_BACK);
    // GL rows count from the bottom of the viewport.
    glReadPixels(viewport[0] + p_x, viewport[1] + viewport[3] - 1 - p_y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    return Rgb{pixel[0], pixel[1], pixel[2]};
}

double MeanBrightness(int p_x, int p_y, int p_width, int p_height)
{
    double sum = 0.0;
    for (int y = p_y; y < p_y + p_height; ++y)
    {
        for (int x = p_x; x < p_x + p_width; ++x)
        {
            const Rgb c = ReadPixel(x, y);
            sum += (c.r + c.g + c.b) / 3.0;
        }
    }
    return sum / (static_cast<double>(p_width) * p_height);
}

void GlFixture::SetUp()
{
#if defined(KORVATH_LSAN)
    // The GL driver keeps allocations until it is unloaded at exit, where leak reports can no
    // longer name it; leaks of the game's own code are checked by the tests without a display.
    __lsan_disable();
#endif
    WorkDirTest::SetUp();
}

void GlFixture::TearDown()
{
    if (m_started)
    {
        m_app.SetMode(nullptr);
        m_app.Shutdown();
        m_started = false;
    }
    WorkDirTest::TearDown();
}

bool GlFixture::StartApplication(uint16_t p_width, uint16_t p_height)
{
    platform::Window::SetFullscreenPreference(false);
    m_started = m_app.Init(p_width, p_height, 32);
    return m_started;
}

} // namespace testsupport
