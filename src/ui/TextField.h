#pragma once

#include "ui/FramedBox.h"
#include "ui/InputObject.h"

#include <cstdint>

class Font;
class InputSystem;

// A one-line text entry in a framed box with a blinking caret. It reads the keyboard itself,
// turns keys into characters with a US layout (caps lock acts as shift, on every key), repeats
// held keys, and takes characters while the text stays narrower than the box.
class TextField : public InputObject
{
public:
    static constexpr int32_t MAX_LENGTH = 128;
    // A held key types again after this many seconds, then every REPEAT_DELAY - REPEAT_RESTART.
    static constexpr float REPEAT_DELAY = 0.63f;
    static constexpr float REPEAT_RESTART = 0.6f;
    static constexpr float BLINK_TIME = 0.5f;
    // Characters typed for no key.
    static constexpr char BACKSPACE_CHAR = 8;
    static constexpr char DELETE_CHAR = 127;

    // Reads the keyboard of p_input, or of the application's input system when it is null.
    explicit TextField(Cursor* p_pCursor, InputSystem* p_input = nullptr);
    ~TextField() override;

    bool Update(float p_dt) override;
    bool Render() override;
    void SetPosition(float p_x, float p_y) override;
    void Move(double p_dx, double p_dy) override;

    void SetFont(const char* p_typeFace, int32_t p_size, int32_t p_style);
    void SetWidth(int32_t p_width);
    void SetColor(double p_red, double p_green, double p_blue, double p_alpha);
    // Replaces the text with as much of p_text as fits.
    void SetText(const char* p_text);
    // The stored text: a percent sign the player typed is stored twice, as the font's
    // formatted print needs it.
    const char* GetText() const { return m_buffer; }

    // The character of a DIK code, 0 for keys without one.
    static char KeyToChar(int32_t p_code, bool p_shifted);

    int32_t GetLength() const { return m_length; }
    float GetTextWidth() const { return m_textWidth; }
    int32_t GetPercentCount() const { return m_percentCount; }
    bool IsCapsLock() const { return m_capsLock; }
    bool IsCaretVisible() const { return m_caretVisible; }
    const FramedBox& GetFrame() const { return m_frame; }
    Font* GetFont() const { return m_pFont; }

private:
    void InsertChar(char p_char);
    void Backspace();
    // Frame width minus the margins: the text stays narrower than this.
    float GetTextLimit() const;

    InputSystem* m_pInput; // not owned; null: the application's
    FramedBox m_frame;
    Font* m_pFont;
    double m_color[4];
    char m_buffer[MAX_LENGTH + 1];
    int32_t m_length;
    float m_textWidth;
    int32_t m_percentCount;
    bool m_capsLock;
    float m_repeatTime[256];
    float m_blinkTime;
    bool m_caretVisible;
};
