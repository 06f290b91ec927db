#include "ui/WidgetGalleryMode.h"

#include "app/ModeCode.h"
#include "gfx/Font.h"
#include "input/Action.h"
#include "ui/Button.h"
#include "ui/ControlRow.h"
#include "ui/Draggable.h"
#include "ui/FramedBox.h"
#include "ui/HudLayoutEditor.h"
#include "ui/RadioGroup.h"
#include "ui/SlideBar.h"
#include "ui/StaticObjects.h"
#include "ui/TextField.h"
#include "ui/ToggleButton.h"

#include <cstdio>
#include <string>

namespace
{
const char* const BUTTON_UP = "art\\button_up.bmp";
const char* const BUTTON_DOWN = "art\\button_down.bmp";
// Used when the button pictures are missing, so the buttons can still be clicked.
constexpr int32_t FALLBACK_BUTTON_WIDTH = 120;
constexpr int32_t FALLBACK_BUTTON_HEIGHT = 32;

constexpr int32_t LEFT = 50;
constexpr int32_t RIGHT = 560;

// The HUD layout editor as the options menu has it.
constexpr int32_t HUD_SLOTS[8][2] = {{0, 0}, {112, 0}, {225, 0}, {0, 84}, {225, 84}, {0, 169}, {112, 169}, {225, 169}};
} // namespace

// A panel that takes any item let go over it.
class WidgetGalleryMode::DropBox : public FramedBox, public DropTarget
{
public:
    bool TakesDrop(Draggable* p_item) override
    {
        int32_t x = 0;
        int32_t y = 0;
        Cursor* cursor = p_item != nullptr ? p_item->GetCursor() : nullptr;
        if (cursor == nullptr || !cursor->IsInitialized())
        {
            return false;
        }
        cursor->GetPosition(x, y);
        return GetX() <= x && x < GetX() + GetWidth() && GetY() <= y && y < GetY() + GetHeight();
    }
};

WidgetGalleryMode::WidgetGalleryMode()
    : m_pClickButton(nullptr), m_pQuitButton(nullptr), m_pToggle(nullptr), m_pRadio(nullptr), m_pSlideBar(nullptr),
      m_pTextField(nullptr), m_pControlRow(nullptr), m_pHudEditor(nullptr), m_pDragText(nullptr), m_pDropBox(nullptr),
      m_pClickStatus(nullptr), m_pToggleStatus(nullptr), m_pRadioStatus(nullptr), m_pSliderStatus(nullptr),
      m_pTextStatus(nullptr), m_pDropStatus(nullptr), m_clicks(0), m_doubleClicks(0)
{
    Initialize();
}

WidgetGalleryMode::~WidgetGalleryMode()
{
    WidgetGalleryMode::Shutdown();
}

template <class T>
T* WidgetGalleryMode::Add(std::unique_ptr<T> p_object)
{
    T* object = p_object.get();
    m_inputObjects.push_back(std::move(p_object));
    return object;
}

StaticText* WidgetGalleryMode::AddLabel(const char* p_text, int32_t p_x, int32_t p_y, int32_t p_size, int32_t p_style)
{
    auto label = std::make_unique<StaticText>();
    label->SetFont("Tahoma", p_size, p_style);
    label->SetText(p_text);
    label->SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
    return Add(std::move(label));
}

Button* WidgetGalleryMode::AddButton(std::unique_ptr<Button> p_button, const char* p_text, int32_t p_x, int32_t p_y)
{
    if (!p_button->LoadImages(BUTTON_UP, BUTTON_DOWN) || p_button->GetWidth() == 0)
    {
        p_button->SetSize(FALLBACK_BUTTON_WIDTH, FALLBACK_BUTTON_HEIGHT);
    }
    p_button->SetFont("Tahoma", 12, 0);
    p_button->SetText(p_text, 0.0, 0.0, 0.0, 1.0);
    p_button->SetTextOffsets(0, 0, 1, 1);
    p_button->SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
    return Add(std::move(p_button));
}

bool WidgetGalleryMode::Initialize()
{
    if (!m_inputObjects.empty())
    {
        return true;
    }
    Cursor* cursor = &s_cursor;

    auto leftPanel = std::make_unique<FramedBox>();
    leftPanel->SetScale(0.65f);
    leftPanel->SetSize(480, 680);
    leftPanel->SetColor(150, 150, 150, 200);
    leftPanel->SetPosition(30.0f, 64.0f);
    Add(std::move(leftPanel));
    auto rightPanel = std::make_unique<FramedBox>();
    rightPanel->SetScale(0.65f);
    rightPanel->SetSize(460, 680);
    rightPanel->SetColor(150, 150, 150, 200);
    rightPanel->SetPosition(535.0f, 64.0f);
    Add(std::move(rightPanel));

    AddLabel("Widget Gallery", 30, 16, 24, FONT_BOLD);

    // Buttons: a push button that counts its clicks and a toggle.
    AddLabel("Button", LEFT, 84, 14, FONT_BOLD);
    m_pClickButton = AddButton(std::make_unique<Button>(cursor), "Click Me", LEFT, 106);
    const int32_t buttonWidth = m_pClickButton->GetWidth();
    const int32_t buttonHeight = m_pClickButton->GetHeight();
    m_pClickStatus = AddLabel("", LEFT + buttonWidth + 16, 106 + buttonHeight / 2 - 9, 14, 0);

    int32_t y = 106 + buttonHeight + 14;
    AddLabel("Toggle button", LEFT, y, 14, FONT_BOLD);
    y += 22;
    m_pToggle = static_cast<ToggleButton*>(AddButton(std::make_unique<ToggleButton>(cursor), "Toggle", LEFT, y));
    m_pToggleStatus = AddLabel("", LEFT + buttonWidth + 16, y + buttonHeight / 2 - 9, 14, 0);

    y += buttonHeight + 14;
    AddLabel("Radio group", LEFT, y, 14, FONT_BOLD);
    y += 22;
    m_pRadio = Add(std::make_unique<RadioGroup>(cursor));
    const char* const choices[] = {"Easy", "Medium", "Hard"};
    for (int32_t i = 0; i < 3; ++i)
    {
        ToggleButton* choice = m_pRadio->AddButton();
        if (!choice->LoadImages(BUTTON_UP, BUTTON_DOWN) || choice->GetWidth() == 0)
        {
            choice->SetSize(FALLBACK_BUTTON_WIDTH, FALLBACK_BUTTON_HEIGHT);
        }
        choice->SetFont("Tahoma", 12, FONT_BOLD);
        choice->SetText(choices[i], 0.0, 0.0, 0.0, 1.0);
        choice->SetTextOffsets(0, 0, 2, 1);
        choice->SetPosition(static_cast<float>(LEFT + i * (choice->GetWidth() + 8)), static_cast<float>(y));
    }
    y += buttonHeight + 4;
    m_pRadioStatus = AddLabel("", LEFT, y, 14, 0);

    y += 30;
    AddLabel("Slide bar", LEFT, y, 14, FONT_BOLD);
    y += 30;
    m_pSlideBar = Add(std::make_unique<SlideBar>(cursor));
    m_pSlideBar->SetBarWidth(300);
    m_pSlideBar->SetValue(128);
    m_pSlideBar->SetPosition(static_cast<float>(LEFT + 8), static_cast<float>(y));
    m_pSliderStatus = AddLabel("", LEFT + 330, y - 6, 14, 0);

    y += 30;
    AddLabel("Text field", LEFT, y, 14, FONT_BOLD);
    y += 22;
    m_pTextField = Add(std::make_unique<TextField>(cursor));
    m_pTextField->SetPosition(static_cast<float>(LEFT), static_cast<float>(y));
    m_pTextField->SetText("Type here");
    y += m_pTextField->GetFrame().GetHeight() + 4;
    m_pTextStatus = AddLabel("", LEFT, y, 12, 0);

    y += 30;
    AddLabel("Control row (saves to config.ini)", LEFT, y, 14, FONT_BOLD);
    y += 24;
    m_pControlRow = Add(std::make_unique<ControlRow>(cursor));
    m_pControlRow->SetAction(SHOOT_FORWARD);
    m_pControlRow->SetPosition(static_cast<float>(LEFT), static_cast<float>(y));

    y += 44;
    AddLabel("Wrapped text", LEFT, y, 14, FONT_BOLD);
    y += 22;
    auto paragraph = std::make_unique<WrappedText>();
    paragraph->SetMaxWidth(420);
    paragraph->SetText("Briefings, objectives and messages are wrapped at the space after a word, "
                       "so a line never splits a word: supercalifragilisticexpialidocious stays whole. "
                       "A percent sign shows once: 100%% of the hull.");
    paragraph->SetColor(1.0, 1.0, 0.75, 1.0);
    paragraph->SetPosition(static_cast<float>(LEFT), static_cast<float>(y));
    Add(std::move(paragraph));

    m_pQuitButton = AddButton(std::make_unique<Button>(cursor), "Quit", LEFT, 768 - 24 - buttonHeight - 16);

    // Right column: the HUD layout editor, drag and drop, a picture.
    AddLabel("HUD layout editor", RIGHT, 84, 14, FONT_BOLD);
    m_pHudEditor = Add(std::make_unique<HudLayoutEditor>(cursor));
    m_pHudEditor->LoadImage("art\\hud_customize_screenshot.bmp");
    m_pHudEditor->SetSize(300, 225);
    m_pHudEditor->SetPosition(static_cast<float>(RIGHT + 40), 110.0f);
    for (const auto& slot : HUD_SLOTS)
    {
        m_pHudEditor->AddSlot(slot[0], slot[1]);
    }
    const struct
    {
        const char* picture;
        int32_t slot;
    } pieces[] = {{"art\\hud_customize_radar.bmp", 0},
                  {"art\\hud_customize_status.bmp", 2},
                  {"art\\hud_customize_comm.bmp", 7}};
    for (const auto& piece : pieces)
    {
        Draggable* item = m_pHudEditor->AddPiece(piece.slot);
        item->LoadImage(piece.picture);
        item->SetSize(75, 56);
    }

    AddLabel("Drag and drop", RIGHT, 360, 14, FONT_BOLD);
    auto dropBox = std::make_unique<DropBox>();
    dropBox->SetScale(0.4f);
    dropBox->SetSize(180, 110);
    dropBox->SetColor(120, 170, 255, 255);
    dropBox->SetPosition(static_cast<float>(RIGHT + 230), 388.0f);
    m_pDropBox = Add(std::move(dropBox));
    RegisterDropTarget(m_pDropBox);
    AddLabel("Drop here", RIGHT + 244, 398, 12, FONT_BOLD);
    m_pDragText = Add(std::make_unique<DraggableText>(cursor));
    m_pDragText->SetText("Drag this line");
    m_pDragText->SetPosition(static_cast<float>(RIGHT + 20), 420.0f);
    m_pDropStatus = AddLabel("", RIGHT + 20, 510, 12, 0);

    AddLabel("Picture", RIGHT, 545, 14, FONT_BOLD);
    auto picture = std::make_unique<StaticImage>();
    picture->LoadImage("Portraits\\Dax.bmp");
    picture->SetPosition(static_cast<float>(RIGHT + 20), 572.0f);
    Add(std::move(picture));

    ShowStatus();
    return true;
}

bool WidgetGalleryMode::Shutdown()
{
    ClearDropTargets();
    m_inputObjects.clear();
    return true;
}

void WidgetGalleryMode::ShowStatus()
{
    char text[160];
    std::snprintf(text, sizeof(text), "Clicks: %d   double clicks: %d", m_clicks, m_doubleClicks);
    m_pClickStatus->SetText(text);
    m_pToggleStatus->SetText(m_pToggle->IsPressed() ? "On" : "Off");
    const ToggleButton* selected = m_pRadio->GetSelectedButton();
    std::snprintf(text, sizeof(text), "Selected: %s", selected != nullptr ? selected->GetText().c_str() : "none");
    m_pRadioStatus->SetText(text);
    std::snprintf(text, sizeof(text), "%d of %d", m_pSlideBar->GetValue(), m_pSlideBar->GetNumValues() - 1);
    m_pSliderStatus->SetText(text);
    // The field stores a typed percent sign twice; the label shows what the field holds.
    std::snprintf(text, sizeof(text), "%d characters, %d percent signs%s", m_pTextField->GetLength(),
                  m_pTextField->GetPercentCount(), m_pTextField->IsCapsLock() ? ", caps lock" : "");
    m_pTextStatus->SetText(text);
}

int32_t WidgetGalleryMode::Update(float p_dt)
{
    s_cursor.Update(p_dt);
    for (const auto& object : m_inputObjects)
    {
        object->Update(p_dt);
    }

    int32_t click = CLICK_NONE;
    m_pClickButton->GetClick(&click);
    if (click == CLICK_DOUBLE)
    {
        ++m_clicks;
        ++m_doubleClicks;
    }
    else if (click == CLICK_SINGLE)
    {
        ++m_clicks;
    }

    DropTarget* target = nullptr;
    if (m_pDragText->FindDropTarget(target))
    {
        if (target == m_pDropBox)
        {
            m_pDropStatus->SetText("Dropped on the box.");
            m_pDragText->SetPosition(static_cast<float>(RIGHT + 250), 440.0f);
        }
        else
        {
            // Let go elsewhere: the line goes back to where it was.
            m_pDropStatus->SetText("Dropped outside the box: back to its place.");
            m_pDragText->SetPosition(static_cast<float>(RIGHT + 20), 420.0f);
        }
    }

    ShowStatus();
    m_pQuitButton->GetClick(&click);
    return click != CLICK_NONE ? MODECODE_QUIT : MODECODE_STAY;
}

bool WidgetGalleryMode::Render()
{
    for (const auto& object : m_inputObjects)
    {
        object->Render();
    }
    s_cursor.Render();
    return true;
}

bool WidgetGalleryMode::HandleInput(InputSystem* p_input)
{
    (void)p_input;
    return true;
}
