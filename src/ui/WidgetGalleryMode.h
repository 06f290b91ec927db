#pragma once

#include "app/Mode.h"

#include <cstdint>
#include <memory>
#include <vector>

class Button;
class ControlRow;
class DraggableText;
class FramedBox;
class HudLayoutEditor;
class InputObject;
class RadioGroup;
class SlideBar;
class StaticText;
class TextField;
class ToggleButton;

// A developer screen (--widgets) with one of each widget on the game's art, to click, drag
// and type into: it exists to check how the widgets look and feel. "Quit" ends the game.
class WidgetGalleryMode : public Mode
{
public:
    WidgetGalleryMode();
    ~WidgetGalleryMode() override;

    bool Initialize() override;
    bool Shutdown() override;
    int32_t Update(float p_dt) override;
    bool Render() override;
    bool HandleInput(InputSystem* p_input) override;

private:
    class DropBox;

    template <class T>
    T* Add(std::unique_ptr<T> p_object);
    StaticText* AddLabel(const char* p_text, int32_t p_x, int32_t p_y, int32_t p_size, int32_t p_style);
    Button* AddButton(std::unique_ptr<Button> p_button, const char* p_text, int32_t p_x, int32_t p_y);
    void ShowStatus();

    // Drawn and updated in this order.
    std::vector<std::unique_ptr<InputObject>> m_inputObjects;
    Button* m_pClickButton;
    Button* m_pQuitButton;
    ToggleButton* m_pToggle;
    RadioGroup* m_pRadio;
    SlideBar* m_pSlideBar;
    TextField* m_pTextField;
    ControlRow* m_pControlRow;
    HudLayoutEditor* m_pHudEditor;
    DraggableText* m_pDragText;
    DropBox* m_pDropBox;
    StaticText* m_pClickStatus;
    StaticText* m_pToggleStatus;
    StaticText* m_pRadioStatus;
    StaticText* m_pSliderStatus;
    StaticText* m_pTextStatus;
    StaticText* m_pDropStatus;
    int32_t m_clicks;
    int32_t m_doubleClicks;
};
