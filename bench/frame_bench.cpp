// Frame overhead: an empty frame (clear and swap) against a frame that draws 2,000 textured
// images and 200 lines of text through their display lists. Run under Xvfb by `make bench`;
// the figure to watch is the ratio printed at the end, which is stable across machines in a
// way that raw times are not.

#include "BenchReporter.h"
#include "app/Application.h"
#include "app/Renderer.h"
#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "gfx/Image.h"
#include "platform/BitmapFile.h"
#include "platform/Gl.h"
#include "platform/Window.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{
class BenchApplication : public Application
{
public:
    Mode* GetCurrentMode() override { return nullptr; }
};

BenchApplication* s_app = nullptr;

void Finish()
{
    glFinish();
}

void BM_EmptyFrame(benchmark::State& p_state)
{
    Renderer* renderer = s_app->GetRenderer();
    for (auto _ : p_state)
    {
        renderer->BeginFrame();
        renderer->EndFrame();
        Finish();
    }
}
BENCHMARK(BM_EmptyFrame)->Unit(benchmark::kMicrosecond)->MinTime(1.0);

void BM_Frame2000Images200Lines(benchmark::State& p_state)
{
    Renderer* renderer = s_app->GetRenderer();
    std::vector<std::unique_ptr<Image>> images;
    const char* names[] = {"sprite_a.bmp", "sprite_b.bmp", "sprite_c.bmp", "sprite_d.bmp"};
    for (int i = 0; i < 2000; ++i)
    {
        auto image = std::make_unique<Image>();
        image->Load(names[i % 4]);
        images.push_back(std::move(image));
    }
    Font* font = g_fontList.GetFont("Tahoma", 12, 0);
    for (auto _ : p_state)
    {
        renderer->BeginFrame();
        for (int i = 0; i < 2000; ++i)
        {
            images[i]->Draw((i * 37) % 992, (i * 53) % 736, (i * 7) % 360, (i & 1) != 0);
        }
        for (int line = 0; line < 200; ++line)
        {
            font->Print(1.0, 1.0, 1.0, 1.0, (line / 50) * 256, (line % 50) * 15, "Line %d: shields 100%% hull ok", line);
        }
        renderer->EndFrame();
        Finish();
    }
    g_fontList.ReleaseFont(font);
}
BENCHMARK(BM_Frame2000Images200Lines)->Unit(benchmark::kMicrosecond)->MinTime(2.0);

bool WriteSprite(const char* p_name, uint8_t p_red, uint8_t p_green, uint8_t p_blue)
{
    const int size = 32;
    std::vector<uint8_t> rgba(size * size * 4);
    for (int y = 0; y < size; ++y)
    {
        for (int x = 0; x < size; ++x)
        {
            uint8_t* p = &rgba[(y * size + x) * 4];
            const int dx = x - size / 2;
            const int dy = y - size / 2;
            const bool inside = dx * dx + dy * dy < (size / 2) * (size / 2);
            p[0] = inside ? p_red : 0;
            p[1] = inside ? p_green : 255;
            p[2] = inside ? p_blue : 0;
            p[3] = 255;
        }
    }
    return platform::WriteBitmapFile(p_name, size, size, rgba, false);
}
} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / ("korvath-bench-" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    if (chdir(dir.c_str()) != 0 || !WriteSprite("sprite_a.bmp", 255, 80, 40) || !WriteSprite("sprite_b.bmp", 40, 160, 255) ||
        !WriteSprite("sprite_c.bmp", 240, 240, 80) || !WriteSprite("sprite_d.bmp", 200, 60, 220))
    {
        std::fprintf(stderr, "frame_bench: cannot prepare %s\n", dir.c_str());
        return 1;
    }

    platform::Window::SetFullscreenPreference(false);
    BenchApplication app;
    if (!app.Init(1024, 768, 32))
    {
        std::fprintf(stderr, "frame_bench: no display (run it under xvfb-run)\n");
        app.Shutdown();
        return 1;
    }
    s_app = &app;
    bench::RecordingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    // Each benchmark's real time per frame.
    std::map<std::string, double> times;
    for (const benchmark::BenchmarkReporter::Run& run : reporter.GetRuns())
    {
        if (run.run_type == benchmark::BenchmarkReporter::Run::RT_Iteration && !run.error_occurred)
        {
            times[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
    }
    const double empty = times["BM_EmptyFrame"];
    const double busy = times["BM_Frame2000Images200Lines"];
    if (empty > 0.0 && busy > 0.0)
    {
        std::fprintf(stderr, "frame with 2,000 images and 200 lines of text costs %.1f empty frames\n", busy / empty);
    }
    app.Shutdown();
    std::error_code error;
    std::filesystem::remove_all(dir, error);
    return 0;
}
