#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Developer options from the command line and the environment. None of them changes
// anything when unset.
struct DevOptions
{
    bool windowed = false;              // --windowed
    bool widgets = false;               // --widgets: the widget gallery instead of the game
    std::string mission;                // --mission NAME: straight into that campaign section
    std::string pilot;                  // --pilot FILE: that pilot file loaded first
    double fixedDt = 0.0;               // KORVATH_FIXED_DT: seconds per frame, 0 = real time
    bool hasSeed = false;               // KORVATH_SEED replaces the time seed of rand
    uint32_t seed = 0;
    std::vector<int64_t> screenshotFrames; // KORVATH_SCREENSHOT_AT: frames (from 1) to save
    int64_t exitAfter = 0;              // KORVATH_EXIT_AFTER: frames, 0 = never
    std::string inputScript;            // KORVATH_INPUT_SCRIPT: a file of input events to replay
    std::string record;                 // KORVATH_RECORD: the file the session's input is written to
    // KORVATH_DRAW_ONLY_SCREENSHOTS: frames not saved as screenshots are played but not drawn,
    // for long scripted runs; the game goes exactly as it would drawn.
    bool drawOnlyScreenshots = false;
    std::vector<std::string> errors;    // what could not be understood

    // Reads argv and the environment. Unknown or malformed values are listed in `errors`.
    void Parse(int p_argc, const char* const* p_argv);
    // As Parse, with the environment given by p_getenv (for tests).
    void Parse(int p_argc, const char* const* p_argv, const char* (*p_getenv)(const char*));

    bool IsScreenshotFrame(int64_t p_frame) const;
    // Whether frame p_frame is drawn at all.
    bool IsDrawnFrame(int64_t p_frame) const;
    // "screenshot-000042.png"
    static std::string ScreenshotName(int64_t p_frame);
};

extern DevOptions g_devOptions;
