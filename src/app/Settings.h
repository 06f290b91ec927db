#pragma once

#include <array>
#include <cstdint>
#include <string>

// The player's settings beside the key bindings: the volume, the display resolution, full
// screen or a window, the difficulty, where the HUD's pieces go and their tint. They are kept
// in config.ini, section "Options" (the bindings have "Keys"):
//
//   [Options]
//   Volume=99               the volume bar's position, 0 (silent) .. 99 (full)
//   Resolution=1024x768     one of the resolutions the options menu offers
//   FullScreen=1            1 full screen, 0 a window
//   Difficulty=Medium       Medium, Easy or Hard
//   HudLayout=0,2,1         the slots 0..7 of the radar, the status panel and the messages
//   HudTint=255,255,255,255 red, green, blue and opacity of the HUD's pictures, 0..255
//
// Load reads them all once, at start; each Set writes its own entry at once, through the
// profile calls (atomically, every other line of the file kept). A missing, unreadable or
// out-of-range entry reads as its default, and the next Set of that setting writes it
// correctly. The defaults are the game as it always was.
class Settings
{
public:
    static constexpr const char* SECTION = "Options";

    // In the order of the options menu's buttons.
    enum Difficulty : int32_t
    {
        DIFFICULTY_MEDIUM = 0,
        DIFFICULTY_EASY = 1,
        DIFFICULTY_HARD = 2,
        NUM_DIFFICULTIES = 3,
    };
    enum HudPiece : int32_t
    {
        HUD_RADAR = 0,
        HUD_STATUS = 1,
        HUD_MESSAGES = 2,
        NUM_HUD_PIECES = 3,
    };
    enum TintChannel : int32_t
    {
        TINT_RED = 0,
        TINT_GREEN = 1,
        TINT_BLUE = 2,
        TINT_ALPHA = 3,
        NUM_TINT_CHANNELS = 4,
    };
    static constexpr int32_t NUM_HUD_SLOTS = 8;
    // The slot of each HudPiece; no two pieces share one.
    using HudSlots = std::array<int32_t, NUM_HUD_PIECES>;
    // By TintChannel.
    using Tint = std::array<uint8_t, NUM_TINT_CHANNELS>;

    struct Resolution
    {
        const char* label;
        uint16_t width;
        uint16_t height;
    };
    // The resolutions the options menu offers, largest first.
    static constexpr int32_t NUM_RESOLUTIONS = 6;
    static constexpr Resolution RESOLUTIONS[NUM_RESOLUTIONS] = {
        {"1600x1200", 1600, 1200}, {"1400x1050", 1400, 1050}, {"1280x1024", 1280, 1024},
        {"1024x768", 1024, 768},   {"800x600", 800, 600},     {"640x480", 640, 480},
    };

    static constexpr int32_t VOLUME_MAX = 99;
    static constexpr int32_t DEFAULT_VOLUME = VOLUME_MAX;
    static constexpr uint16_t DEFAULT_WIDTH = 1024;
    static constexpr uint16_t DEFAULT_HEIGHT = 768;
    static constexpr bool DEFAULT_FULL_SCREEN = true;
    static constexpr int32_t DEFAULT_DIFFICULTY = DIFFICULTY_MEDIUM;
    // The radar in the top-left corner, the status panel in the top-right one, the messages
    // along the middle of the top edge.
    static constexpr HudSlots DEFAULT_HUD_SLOTS = {0, 2, 1};
    static constexpr Tint DEFAULT_TINT = {255, 255, 255, 255};

    // The defaults, kept in "./config.ini" (the game directory's).
    Settings();
    // Another file (tests); null selects "./config.ini".
    explicit Settings(const char* p_fileName);

    // Reads every setting from the file.
    void Load();
    // Every setting back to its default, in memory only.
    void Reset();

    int32_t GetVolume() const { return m_volume; }
    uint16_t GetWidth() const { return m_width; }
    uint16_t GetHeight() const { return m_height; }
    bool IsFullScreen() const { return m_fullScreen; }
    int32_t GetDifficulty() const { return m_difficulty; }
    const HudSlots& GetHudSlots() const { return m_hudSlots; }
    // -1 for no such piece.
    int32_t GetHudSlot(int32_t p_piece) const;
    const Tint& GetTint() const { return m_tint; }

    // Each takes the value and writes its entry at once. A value out of range is refused (the
    // setting stays as it was); a file that cannot be written loses the change silently
    // while the new value holds until the game ends. Both answer false.
    bool SetVolume(int32_t p_volume);
    // Only the resolutions in RESOLUTIONS.
    bool SetResolution(uint16_t p_width, uint16_t p_height);
    bool SetFullScreen(bool p_fullScreen);
    bool SetDifficulty(int32_t p_difficulty);
    bool SetHudSlots(const HudSlots& p_slots);
    bool SetTint(const Tint& p_tint);

    // "Medium", "Easy", "Hard"; "" for anything else.
    static const char* GetDifficultyName(int32_t p_difficulty);
    // Every slot 0..7 and no two the same.
    static bool IsValidHudSlots(const HudSlots& p_slots);
    static bool IsOfferedResolution(uint16_t p_width, uint16_t p_height);

    const std::string& GetFileName() const { return m_fileName; }

private:
    bool Write(const char* p_key, const std::string& p_value) const;
    // The entry's text; false when it is missing.
    bool Read(const char* p_key, std::string& p_value) const;

    std::string m_fileName;
    int32_t m_volume;
    uint16_t m_width;
    uint16_t m_height;
    bool m_fullScreen;
    int32_t m_difficulty;
    HudSlots m_hudSlots;
    Tint m_tint;
};

extern Settings g_settings;
