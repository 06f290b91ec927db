#include "ui/ControlRow.h"

#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "input/ControlsConfig.h"
#include "input/InputSystem.h"
#include "input/KeyNameTable.h"
#include "ui/UiDraw.h"

ControlRow::ControlRow(Cursor* p_pCursor, InputSystem* p_input, const ControlsConfig* p_config)
    : InputObject(p_pCursor), m_pInput(p_input), m_pConfig(p_config), m_action(0), m_keyBox(p_pCursor, p_input),
      m_boxRight(400), m_pFont(nullptr)
{
    m_keyBox.SetSize(BOX_WIDTH, BOX_HEIGHT);
    m_keyBox.SetColor(128, 128, 128, 255);
    m_pFont = g_fontList.GetFont("Tahoma", 14, 0);
    SetPosition(0.0f, 0.0f);
}

ControlRow::~ControlRow()
{
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
}

void ControlRow::SetPosition(float p_x, float p_y)
{
    InputObject::SetPosition(p_x, p_y);
    m_keyBox.SetPosition(p_x + static_cast<float>(m_boxRight - m_keyBox.GetWidth()), p_y);
}

void ControlRow::Move(double p_dx, double p_dy)
{
    InputObject::Move(p_dx, p_dy);
    m_keyBox.Move(p_dx, p_dy);
}

void ControlRow::SetAction(int32_t p_action)
{
    m_action = p_action;
    if (InputSystem* input = ui::InputOrApplication(m_pInput))
    {
        const Binding binding = input->GetBinding(p_action);
        m_keyBox.SetBinding(binding.device, binding.code);
    }
}

bool ControlRow::Update(float p_dt)
{
    m_keyBox.Update(p_dt);
    Binding binding;
    // Applied and stored when the capture ends rather than again every frame: the same effect,
    // without rewriting config.ini sixty times a second.
    if (m_keyBox.JustCaptured() && m_keyBox.GetBinding(binding))
    {
        if (InputSystem* input = ui::InputOrApplication(m_pInput))
        {
            input->SetBinding(m_action, binding.device, binding.code);
        }
        (m_pConfig != nullptr ? *m_pConfig : g_controlsConfig).SaveBinding(m_action, binding);
    }
    return true;
}

bool ControlRow::Render()
{
    if (m_pFont != nullptr)
    {
        ui::PrintText(m_pFont, 1.0, 1.0, 1.0, 1.0, ui::Whole(GetX()), ui::Whole(GetY()),
                      g_keyNames.GetActionName(m_action));
    }
    m_keyBox.Render();
    return true;
}
