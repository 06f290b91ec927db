#pragma once

#include "input/Binding.h"
#include "ui/InputObject.h"

#include <cstdint>
#include <string>

class Font;
class InputSystem;

// A box that shows a binding's name. Clicking it makes it wait ("Hit Any Key") for the next
// key, controller button, controller axis, mouse button or wheel turn, which becomes its
// binding. Its owner sizes and colours the box.
class KeyCaptureBox : public InputObject
{
public:
    // Reads the devices of p_input, or of the application's input system when it is null.
    explicit KeyCaptureBox(Cursor* p_pCursor, InputSystem* p_input = nullptr);
    ~KeyCaptureBox() override;

    bool Update(float p_dt) override;
    bool Render() override;

    // The binding; false (and p_binding untouched) when the box holds none.
    bool GetBinding(Binding& p_binding) const;
    void SetBinding(uint8_t p_device, int32_t p_code);
    void SetColor(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha);

    bool IsCapturing() const { return m_capturing; }
    // Whether a capture ended in the last update; cleared by the next one.
    bool JustCaptured() const { return m_justCaptured; }
    // The text the box shows now.
    const char* GetShownText() const;

private:
    InputSystem* m_pInput; // not owned; null: the application's
    bool m_capturing;
    bool m_hasKey;
    bool m_justCaptured;
    Binding m_binding;
    bool m_lastButtonDown;
    Font* m_pFont;
    mutable std::string m_shownName;
};
