#pragma once

#include "ui/InputObject.h"

#include <cstdint>
#include <memory>

// A bar with a knob that the player drags along it to choose one of m_numValues positions:
// 0 at the left end, m_numValues - 1 at the right end. Only a press that starts on the bar
// moves the knob; it then follows the cursor, clamped to the ends, until the button is let go.
class SlideBar : public InputObject
{
public:
    static constexpr int32_t DEFAULT_BAR_WIDTH = 200;
    static constexpr int32_t DEFAULT_NUM_VALUES = 256;

    explicit SlideBar(Cursor* p_pCursor);
    ~SlideBar() override;

    bool Update(float p_dt) override;
    bool Render() override;
    // The bar keeps its size; SetBarWidth changes its width.
    bool SetSize(int p_width, int p_height) override;

    // No more than m_numValues - 1.
    void SetValue(int32_t p_value);
    int32_t GetValue() const { return m_value; }
    // Rescales the value to the new range (at least 2 values).
    void SetNumValues(int32_t p_numValues);
    int32_t GetNumValues() const { return m_numValues; }
    // At least 2 pixels.
    void SetBarWidth(int32_t p_width);
    bool IsDragging() const { return m_dragging; }
    Image* GetKnobImage() const { return m_pKnobImage.get(); }

private:
    std::unique_ptr<Image> m_pKnobImage;
    int32_t m_numValues;
    int32_t m_value;
    bool m_dragging;
    bool m_lastButtonDown;
};
