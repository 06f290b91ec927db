#include "menus/PreGameMenu.h"

#include "app/Application.h"
#include "gfx/Font.h"
#include "sim/GameObject.h"
#include "ui/Button.h"
#include "ui/UiDraw.h"

#include <cassert>

namespace
{
constexpr const char* RIBBON_FILE = "art\\ribbon.bmp";
constexpr const char* TITLE_FILE = "art\\menu_title_bg.bmp";
constexpr const char* BUTTON_UP_FILE = "art\\button_up.bmp";
constexpr const char* BUTTON_DOWN_FILE = "art\\button_down.bmp";
constexpr float TITLE_X = -80.0f;
constexpr float TITLE_Y = 110.0f;
constexpr int32_t TITLE_TEXT_X = 40;
constexpr int32_t TITLE_TEXT_Y = -6;
// What a step of the transition answers: the menu can be used, it is closing, it has closed.
constexpr int32_t STEP_INTERACTIVE = 7;
constexpr int32_t STEP_CLOSING = 6;
constexpr int32_t STEP_CLOSED = 8;

// The landing of a dropping button and its two hops: each segment rises by its amplitude at its
// middle and comes back down to the rest line.
struct BounceSegment
{
    double amplitude;
    double start;
    double end;
};

// Program-wide, fixed by the first button ever made: every menu drops from the same height.
struct Transition
{
    bool ready = false;
    double startHeight = 0.0;
    double distance = 0.0;
    BounceSegment segments[3] = {};
};
Transition s_transition;

// u = 0.9 / (2^3 - 1): the fall takes 4u, the first hop 2u, the second u.
void MakeTransition(double p_startHeight)
{
    const double u = PreGameMenu::BOUNCE_TIME / 7.0;
    const double distance = PreGameMenu::REST_Y - p_startHeight;
    s_transition.startHeight = p_startHeight;
    s_transition.distance = distance;
    s_transition.segments[0] = BounceSegment{distance, 0.0, 4.0 * u};
    s_transition.segments[1] = BounceSegment{distance / 14.0, 4.0 * u, 6.0 * u};
    s_transition.segments[2] = BounceSegment{distance / 196.0, 6.0 * u, 7.0 * u};
    s_transition.ready = true;
}

// Where the top button is p_time seconds into its drop.
double Bounce(double p_time)
{
    const Transition& t = s_transition;
    if (p_time < 0.0)
    {
        return t.startHeight;
    }
    if (p_time < t.segments[0].end)
    {
        const double part = p_time / t.segments[0].end;
        return t.startHeight + part * part * t.distance;
    }
    for (int segment = 1; segment < 3; ++segment)
    {
        const BounceSegment& hop = t.segments[segment];
        if (p_time < hop.end)
        {
            const double half = (hop.end - hop.start) / 2.0;
            const double part = (p_time - half - hop.start) / half;
            return PreGameMenu::REST_Y + part * part * hop.amplitude - hop.amplitude;
        }
    }
    return PreGameMenu::REST_Y;
}

// The top button's fall off the bottom of the screen.
double Exit(double p_time)
{
    const double height = Application::SCREEN_HEIGHT - 160.0;
    if (p_time < 0.0)
    {
        return PreGameMenu::REST_Y;
    }
    if (p_time < PreGameMenu::FALL_TIME)
    {
        const double part = p_time / PreGameMenu::FALL_TIME;
        return PreGameMenu::REST_Y + part * part * height;
    }
    return Application::SCREEN_HEIGHT + 50.0;
}
} // namespace

PreGameMenu::PreGameMenu(Cursor* p_cursor)
    : Menu(p_cursor), m_state(STATE_OPENING), m_numButtons(0), m_transitionTime(0.0f), m_numScreens(0),
      m_currentScreen(0)
{
    m_background.Load(RIBBON_FILE);
    m_background.SetHeight(Application::SCREEN_HEIGHT);
}

PreGameMenu::~PreGameMenu() = default;

bool PreGameMenu::Init()
{
    const bool created = Create();
    m_transitionTime = 0.0f;
    return created;
}

int32_t PreGameMenu::DropY(double p_time, int32_t p_button)
{
    const Transition& t = s_transition;
    if (t.distance == 0.0)
    {
        return static_cast<int32_t>(REST_Y + BUTTON_SPACING * p_button);
    }
    const double scale = (BUTTON_SPACING * p_button + t.distance) / t.distance;
    return static_cast<int32_t>(t.startHeight + (Bounce(p_time) - t.startHeight) * scale);
}

int32_t PreGameMenu::FallY(double p_time, int32_t p_button)
{
    const double height = Application::SCREEN_HEIGHT - 160.0;
    const double scale = (BUTTON_SPACING * p_button + height) / height;
    return static_cast<int32_t>(REST_Y + (Exit(p_time) - REST_Y) * scale);
}

double PreGameMenu::GetStartHeight()
{
    return s_transition.startHeight;
}

void PreGameMenu::ForgetFirstButton()
{
    s_transition = Transition{};
}

int32_t PreGameMenu::StepTransition(float p_dt)
{
    if (m_state == STATE_OPEN)
    {
        return STEP_INTERACTIVE;
    }
    if (m_transitionTime == 0.0f)
    {
        m_transitionTime = FIRST_STEP;
    }
    else
    {
        m_transitionTime += p_dt;
    }

    const bool closing = m_state == STATE_CLOSING;
    for (int32_t i = 0; i < m_numButtons; ++i)
    {
        Button* button = GetButton(i);
        if (button == nullptr)
        {
            continue;
        }
        // The bottom button drops at once, each one above it a second later.
        const double y = closing ? FallY(m_transitionTime, i) + BUTTON_SPACING * i
                                 : DropY(m_transitionTime - (m_numButtons - 1 - i), i);
        button->SetPosition(static_cast<float>(BUTTON_X), static_cast<float>(y));
    }

    const double limit = closing ? FALL_TIME : m_numButtons + BOUNCE_TIME;
    if (m_transitionTime >= limit)
    {
        m_transitionTime = 0.0f;
        m_state = STATE_OPEN;
        if (closing)
        {
            return STEP_CLOSED;
        }
    }
    return closing ? STEP_CLOSING : STEP_INTERACTIVE;
}

int32_t PreGameMenu::Update(float p_dt)
{
    const int32_t step = StepTransition(p_dt);
    if (step == STEP_CLOSED)
    {
        return MENUCODE_CLOSED;
    }
    if (step != STEP_INTERACTIVE)
    {
        return MENUCODE_STAY;
    }
    Menu::Update(p_dt);
    if (const ObjectList* screen = CurrentScreen())
    {
        UpdateAll(*screen, p_dt);
    }
    UpdateAll(m_commonObjects, p_dt);
    const int32_t code = HandleButtons(p_dt);
    ResetButtons();
    return code;
}

bool PreGameMenu::Render()
{
    if (m_state != STATE_CLOSING)
    {
        if (ui::HasPicture(m_background))
        {
            m_background.Draw(false);
        }
        if (m_title)
        {
            m_title->Render();
        }
        if (const ObjectList* screen = CurrentScreen())
        {
            RenderAll(*screen);
        }
        RenderAll(m_commonObjects);
    }
    return Menu::Render();
}

bool PreGameMenu::SetNumScreens(int32_t p_count)
{
    m_screens.clear();
    if (p_count > 0)
    {
        m_screens.resize(static_cast<size_t>(p_count));
    }
    m_numScreens = p_count > 0 ? p_count : 0;
    return true;
}

bool PreGameMenu::AddObject(int32_t p_screen, std::unique_ptr<GameObject> p_object, int32_t p_id)
{
    assert(p_screen >= 0 && p_screen < m_numScreens && "p_screen >= 0 && p_screen < m_numScreens");
    assert(p_object && "p_object");
    if (p_screen < 0 || p_screen >= m_numScreens || !p_object)
    {
        return true;
    }
    m_screens[static_cast<size_t>(p_screen)].push_front(ScreenObject{std::move(p_object), p_id});
    return true;
}

bool PreGameMenu::AddCommonObject(std::unique_ptr<GameObject> p_object, int32_t p_id)
{
    assert(p_object && "p_object");
    if (p_object)
    {
        m_commonObjects.push_front(ScreenObject{std::move(p_object), p_id});
    }
    return true;
}

void PreGameMenu::SetScreen(int32_t p_screen)
{
    assert(p_screen >= 0 && p_screen < m_numScreens && "p_screen >= 0 && p_screen < m_numScreens");
    if (p_screen >= 0 && p_screen < m_numScreens)
    {
        m_currentScreen = p_screen;
    }
}

GameObject* PreGameMenu::FindObject(int32_t p_id) const
{
    if (GameObject* common = FindIn(m_commonObjects, p_id))
    {
        return common;
    }
    const ObjectList* screen = CurrentScreen();
    return screen != nullptr ? FindIn(*screen, p_id) : nullptr;
}

GameObject* PreGameMenu::FindObjectOn(int32_t p_screen, int32_t p_id) const
{
    if (p_screen < 0 || p_screen >= m_numScreens)
    {
        return nullptr;
    }
    return FindIn(m_screens[static_cast<size_t>(p_screen)], p_id);
}

bool PreGameMenu::SetTitle(const char* p_text)
{
    assert(p_text && "p_title");
    m_title = std::make_unique<Button>(m_pCursor);
    m_title->LoadImages(TITLE_FILE, nullptr);
    m_title->SetFont("Tahoma", 24, FONT_BOLD);
    m_title->SetText(p_text != nullptr ? p_text : "", 0.0, 1.0, 0.0, 1.0);
    m_title->SetTextOffsets(TITLE_TEXT_X, TITLE_TEXT_Y, 0, 0);
    m_title->SetPosition(TITLE_X, TITLE_Y);
    return true;
}

bool PreGameMenu::CreateButtons(const char* const* p_labels, int32_t p_count)
{
    assert(p_labels && p_count && "p_strings && p_numButtons");
    if (p_labels == nullptr || p_count <= 0)
    {
        return true;
    }
    SetNumInputObjects(p_count);
    for (int32_t i = 0; i < p_count; ++i)
    {
        auto button = std::make_unique<Button>(m_pCursor);
        button->LoadImagesOrSize(BUTTON_UP_FILE, BUTTON_DOWN_FILE, FALLBACK_BUTTON_WIDTH, FALLBACK_BUTTON_HEIGHT);
        button->SetFont("Tahoma", 12, 0);
        button->SetText(p_labels[i] != nullptr ? p_labels[i] : "", 0.0, 0.0, 0.0, 1.0);
        button->SetTextOffsets(0, 0, 1, 1);
        if (!s_transition.ready)
        {
            MakeTransition(-static_cast<double>(button->GetHeight()));
        }
        button->SetPosition(static_cast<float>(BUTTON_X), static_cast<float>(s_transition.startHeight));
        SetInputObject(i, std::move(button));
    }
    m_numButtons = p_count;
    return true;
}

Button* PreGameMenu::GetButton(int32_t p_button) const
{
    return static_cast<Button*>(GetInputObject(p_button));
}

bool PreGameMenu::WasButtonClicked(int32_t p_button)
{
    assert(p_button >= 0 && p_button < m_numButtons && "p_button >=0 && p_button < m_numButtons");
    Button* button = p_button < m_numButtons ? GetButton(p_button) : nullptr;
    if (button == nullptr)
    {
        return false;
    }
    int32_t click = CLICK_NONE;
    button->GetClick(&click);
    return click != CLICK_NONE;
}

void PreGameMenu::ResetButtons()
{
    for (int32_t i = 0; i < m_numButtons; ++i)
    {
        if (Button* button = GetButton(i))
        {
            button->GetClick();
        }
    }
}

void PreGameMenu::Close()
{
    m_state = STATE_CLOSING;
    m_transitionTime = 0.0f;
}

const PreGameMenu::ObjectList* PreGameMenu::CurrentScreen() const
{
    if (m_currentScreen < 0 || m_currentScreen >= m_numScreens)
    {
        return nullptr;
    }
    return &m_screens[static_cast<size_t>(m_currentScreen)];
}

GameObject* PreGameMenu::FindIn(const ObjectList& p_list, int32_t p_id)
{
    for (const ScreenObject& entry : p_list)
    {
        if (entry.m_id == p_id)
        {
            return entry.m_pObject.get();
        }
    }
    return nullptr;
}

void PreGameMenu::UpdateAll(const ObjectList& p_list, float p_dt)
{
    for (const ScreenObject& entry : p_list)
    {
        entry.m_pObject->Update(p_dt);
    }
}

void PreGameMenu::RenderAll(const ObjectList& p_list)
{
    for (const ScreenObject& entry : p_list)
    {
        entry.m_pObject->Render();
    }
}
