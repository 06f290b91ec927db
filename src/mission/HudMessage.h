#pragma once

#include "ui/StaticObjects.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// A text the mission sends to the HUD: it types out one character per typing interval, stays
// for its display time and fades out over the last 30 percent of that time. The whole text is
// wrapped once when the message is made, so a word never jumps to the next line while it is
// being typed and the message takes the same room from its first character to its last.
class HudMessage : public WrappedText
{
public:
    static constexpr int32_t WRAP_WIDTH = 512;
    // The share of the display time over which the message fades out.
    static constexpr float FADE_SHARE = 0.3f;

    // p_seconds and p_interval below 0, or not numbers at all, count as 0. The text wraps at
    // p_wrapWidth.
    HudMessage(const char* p_text, float p_seconds, float p_interval, int32_t p_wrapWidth = WRAP_WIDTH);
    ~HudMessage() override;

    // One frame of typing or, once every character shows, of its display time: false once the
    // time has run out (the message is to be removed).
    bool Update(float p_dt) override;
    // The characters typed so far, on the lines of the whole text.
    bool Render() override;

    const std::string& GetFullText() const { return m_fullText; }
    // The first GetNumShown() characters of the text.
    std::string GetShownText() const { return m_fullText.substr(0, m_numShown); }
    size_t GetNumShown() const { return m_numShown; }
    size_t GetLength() const { return m_length; }
    bool IsTyping() const { return m_numShown < m_length; }
    float GetRemaining() const { return m_remaining; }
    float GetTotal() const { return m_total; }
    double GetAlpha() const { return m_color[3]; }
    // The width of its widest line once the whole text shows.
    int32_t GetTextWidth() const { return m_textWidth; }

private:
    std::string m_fullText;
    float m_remaining;
    float m_total;
    float m_interval;
    size_t m_length;
    size_t m_numShown;
    float m_accumulator;
    // Where each wrapped line starts in m_fullText.
    std::vector<size_t> m_lineStarts;
    int32_t m_textWidth;
};
