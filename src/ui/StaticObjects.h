#pragma once

#include "ui/InputObject.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class Font;

// A widget that never reads the cursor: labels, paragraphs, panels and pictures kept in the
// same lists as the buttons.
class StaticObject : public InputObject
{
public:
    StaticObject();
    ~StaticObject() override;

    bool Update(float p_dt) override;
};

// One line of text; without text it draws nothing.
class StaticText : public StaticObject
{
public:
    StaticText();
    ~StaticText() override;

    bool Render() override;
    // The text's width in the font, in whole pixels.
    int GetWidth() const override;
    // The font's height.
    int GetHeight() const override;
    // The text is printed as finished text: callers format it first.
    virtual void SetText(const char* p_text);

    void SetColor(double p_red, double p_green, double p_blue, double p_alpha);
    void SetFont(const char* p_typeFace, int32_t p_size, int32_t p_style);

    const std::string& GetText() const { return m_text; }
    bool HasText() const { return m_hasText; }
    Font* GetFont() const { return m_pFont; }
    const double* GetColor() const { return m_color; }

protected:
    std::string m_text;
    bool m_hasText;
    Font* m_pFont;
    double m_color[4];
};

// A paragraph broken into lines no wider than the wrap width, at spaces that follow a word;
// a word is never split, so a word wider than the wrap width gets a line of its own.
class WrappedText : public StaticText
{
public:
    WrappedText();
    ~WrappedText() override;

    bool Render() override;
    // The wrap width.
    int GetWidth() const override;
    // Lines times the font height.
    int GetHeight() const override;
    void SetText(const char* p_text) override;

    // Takes effect with the next SetText.
    void SetMaxWidth(int32_t p_maxWidth) { m_maxWidth = p_maxWidth; }
    int32_t GetMaxWidth() const { return m_maxWidth; }
    size_t GetNumLines() const { return m_lines.size(); }
    // Line p_line (from 0) as it is drawn; empty outside the lines.
    std::string GetLine(size_t p_line) const;

private:
    int32_t m_maxWidth;
    // Where each line starts in m_text, first to last; the breaking spaces were overwritten by
    // terminators, so each line is a text of its own.
    std::vector<size_t> m_lines;
};

// A picture drawn at its place, alpha-tested.
class StaticImage : public StaticObject
{
public:
    StaticImage();
    ~StaticImage() override;

    bool Render() override;
};
