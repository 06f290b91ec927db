#pragma once

#include "ui/InputObject.h"
#include "ui/KeyCaptureBox.h"

#include <cstdint>

class ControlsConfig;
class Font;
class InputSystem;

// One line of the controls screen: an action's name and a key-capture box ending 400 pixels
// to the right of the row's left edge. A binding captured in the box is applied to the input
// system and written to config.ini in the same frame; there is no undo.
class ControlRow : public InputObject
{
public:
    static constexpr int32_t BOX_WIDTH = 200;
    static constexpr int32_t BOX_HEIGHT = 30;

    // Binds through p_input (null: the application's input system) and stores in p_config
    // (null: g_controlsConfig).
    explicit ControlRow(Cursor* p_pCursor, InputSystem* p_input = nullptr, const ControlsConfig* p_config = nullptr);
    ~ControlRow() override;

    bool Update(float p_dt) override;
    bool Render() override;
    void SetPosition(float p_x, float p_y) override;
    void Move(double p_dx, double p_dy) override;

    // Shows the action and the input system's current binding of it.
    void SetAction(int32_t p_action);
    int32_t GetAction() const { return m_action; }
    KeyCaptureBox& GetKeyBox() { return m_keyBox; }

private:
    InputSystem* m_pInput; // not owned
    const ControlsConfig* m_pConfig; // not owned
    int32_t m_action;
    KeyCaptureBox m_keyBox;
    int32_t m_boxRight;
    Font* m_pFont;
};
