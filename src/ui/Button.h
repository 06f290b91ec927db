#pragma once

#include "ui/InputObject.h"

#include <cstdint>
#include <memory>
#include <string>

class Font;

// What GetClick reports.
enum ClickType : int32_t
{
    CLICK_NONE = 0,
    CLICK_SINGLE = 1,
    CLICK_DOUBLE = 2,
};

// A push button: a picture for the normal and one for the pressed state and a centred
// caption. A click needs the left button to go down on the button and come up on it; it is
// counted until the owner asks with GetClick, so a click is never lost between frames.
class Button : public InputObject
{
public:
    // A second click within this many seconds of the previous one is a double click.
    static constexpr float DOUBLE_CLICK_TIME = 0.5f;

    explicit Button(Cursor* p_pCursor);
    ~Button() override;

    bool Update(float p_dt) override;
    bool Render() override;
    bool SetSize(int p_width, int p_height) override;
    // The button's size, also when it has no pictures.
    int GetWidth() const override { return m_size.width; }
    int GetHeight() const override { return m_size.height; }

    // The normal picture and, when p_downFile is given, the pressed one (both the same size).
    // False when the pressed picture cannot be loaded (the normal one is then not loaded) or
    // the normal one cannot.
    virtual bool LoadImages(const char* p_upFile, const char* p_downFile);
    // LoadImages; when the pictures are missing the button keeps its caption and stays
    // clickable at p_width x p_height instead of shrinking to nothing.
    bool LoadImagesOrSize(const char* p_upFile, const char* p_downFile, int p_width, int p_height);

    void SetFont(const char* p_typeFace, int32_t p_size, int32_t p_style);
    // Without a font set before, the caption is in "Arial" 12.
    void SetText(const char* p_text, double p_red = 1.0, double p_green = 1.0, double p_blue = 1.0,
                 double p_alpha = 1.0);
    // Where the caption moves from its centred place, normal and pressed.
    void SetTextOffsets(int32_t p_upX, int32_t p_upY, int32_t p_downX, int32_t p_downY);
    void SetPressed(bool p_pressed) { m_pressed = p_pressed; }

    // Answers whether the button is drawn pressed. p_click (when given) gets CLICK_SINGLE when
    // there was a click since the last call, CLICK_DOUBLE when the last one was a double click,
    // else CLICK_NONE; the pending clicks are cleared either way.
    bool GetClick(int32_t* p_click = nullptr);

    bool IsInside(int32_t p_x, int32_t p_y) const;
    bool IsPressed() const { return m_pressed; }
    bool IsArmed() const { return m_armed; }
    const std::string& GetText() const { return m_text; }
    Font* GetFont() const { return m_pFont; }
    Image* GetPressedImage() const { return m_pPressedImage.get(); }

protected:
    // Reads the cursor into p_x, p_y and answers whether the left button is down.
    bool ReadCursor(int32_t& p_x, int32_t& p_y) const;

    std::unique_ptr<Image> m_pPressedImage;
    Font* m_pFont;
    std::string m_text;
    bool m_hasText;
    double m_textColor[4];
    int32_t m_textOffsetUp[2];
    int32_t m_textOffsetDown[2];
    struct Size
    {
        int32_t width = 0;
        int32_t height = 0;
    } m_size;
    float m_timeSinceClick;
    bool m_doubleClicked;
    int32_t m_clickCount;
    bool m_pressed;
    bool m_armed;
    bool m_lastButtonDown;
    int32_t m_lastX;
    int32_t m_lastY;
};
