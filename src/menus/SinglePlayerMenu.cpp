#include "menus/SinglePlayerMenu.h"

#include "app/Application.h"
#include "app/Mode.h"
#include "app/ModeCode.h"
#include "gfx/Font.h"
#include "menus/PortraitPicker.h"
#include "mission/Campaign.h"
#include "pilot/Pilot.h"
#include "platform/System.h"
#include "sim/PlayerShip.h"
#include "ui/Button.h"
#include "ui/StaticObjects.h"
#include "ui/TextField.h"

#include <memory>

namespace
{
const char* const LABELS[SinglePlayerMenu::NUM_BUTTONS] = {"New Recruit", "Returning Pilot", "Cancel"};
constexpr const char* BUTTON_UP_FILE = "art\\button_up.bmp";
constexpr const char* BUTTON_DOWN_FILE = "art\\button_down.bmp";
constexpr const char* FONT_FACE = "Tahoma";
constexpr int32_t BUTTON_FONT_SIZE = 12;
constexpr int32_t PILOT_NAME_SIZE = 24;
constexpr int32_t HEADING_SIZE = 13;
constexpr int32_t STATUS_SIZE = 11;
constexpr int32_t NO_VALUE = -1;

// A label of the pilot's status and the value beside it (NO_VALUE for the headings of a group).
struct StatusLine
{
    int32_t labelId;
    const char* label;
    float x;
    float y;
    bool heading;
    int32_t valueId;
    float valueX;
    float valueY;
};

const StatusLine STATUS_LINES[] = {
    {21, "Mission:", 325, 399, true, SinglePlayerMenu::ID_MISSION, 407, 400},
    {11, "Funds:", 325, 431, true, SinglePlayerMenu::ID_FUNDS, 393, 432},
    {SinglePlayerMenu::ID_AMMO, "Ammo:", 325, 463, true, NO_VALUE, 0, 0},
    {13, "Bullets:", 335, 488, false, SinglePlayerMenu::ID_BULLETS, 405, 488},
    {15, "Energy:", 335, 504, false, SinglePlayerMenu::ID_ENERGY, 405, 504},
    {17, "Missiles:", 335, 520, false, SinglePlayerMenu::ID_MISSILES, 405, 520},
    {19, "Bombs:", 335, 536, false, SinglePlayerMenu::ID_BOMBS, 405, 536},
    {SinglePlayerMenu::ID_SHIP_STATUS, "Ship Status:", 565, 415, true, NO_VALUE, 0, 0},
    {23, "Hull:", 575, 440, false, SinglePlayerMenu::ID_HULL, 670, 440},
    {25, "Engine:", 575, 456, false, SinglePlayerMenu::ID_ENGINE, 670, 456},
    {27, "Shield:", 575, 472, false, SinglePlayerMenu::ID_SHIELD, 670, 472},
    {29, "Weapon 1:", 575, 488, false, SinglePlayerMenu::ID_WEAPON, 670, 488},
    {31, "Weapon 2:", 575, 504, false, SinglePlayerMenu::ID_WEAPON + 2, 670, 504},
    {33, "Weapon 3:", 575, 520, false, SinglePlayerMenu::ID_WEAPON + 4, 670, 520},
    {35, "Weapon 4:", 575, 536, false, SinglePlayerMenu::ID_WEAPON + 6, 670, 536},
};

std::unique_ptr<StaticText> MakeText(const char* p_text, int32_t p_size, int32_t p_style, float p_x, float p_y)
{
    auto text = std::make_unique<StaticText>();
    text->SetFont(FONT_FACE, p_size, p_style);
    text->SetText(p_text);
    text->SetPosition(p_x, p_y);
    return text;
}
} // namespace

SinglePlayerMenu::SinglePlayerMenu(Cursor* p_cursor, InputSystem* p_input)
    : PreGameMenu(p_cursor), m_pInput(p_input), m_portraitIndex(0), m_saveIndex(0), m_hasSaves(false)
{
}

SinglePlayerMenu::~SinglePlayerMenu() = default;

std::string SinglePlayerMenu::FileName(const std::string& p_file)
{
    const size_t separator = p_file.find_last_of("\\/");
    return separator == std::string::npos ? p_file : p_file.substr(separator + 1);
}

std::string SinglePlayerMenu::FileStem(const std::string& p_file)
{
    std::string name = FileName(p_file);
    const size_t dot = name.find_last_of('.');
    if (dot != std::string::npos)
    {
        name.erase(dot);
    }
    return name;
}

bool SinglePlayerMenu::Create()
{
    SetNumScreens(NUM_SCREENS);
    CreateNewRecruitScreen();
    CreateReturningPilotScreen();

    auto execute = std::make_unique<Button>(m_pCursor);
    execute->LoadImagesOrSize(BUTTON_UP_FILE, BUTTON_DOWN_FILE, FALLBACK_BUTTON_WIDTH, FALLBACK_BUTTON_HEIGHT);
    execute->SetFont(FONT_FACE, BUTTON_FONT_SIZE, 0);
    execute->SetText("Execute", 0.0, 0.0, 0.0, 1.0);
    execute->SetTextOffsets(0, 0, 1, 1);
    execute->SetPosition(static_cast<float>(Application::SCREEN_WIDTH - execute->GetWidth() - EXECUTE_MARGIN),
                         static_cast<float>(Application::SCREEN_HEIGHT - execute->GetHeight() - EXECUTE_MARGIN));
    AddCommonObject(std::move(execute), ID_EXECUTE);

    CreateButtons(LABELS, NUM_BUTTONS);
    SetTitle("Single");
    return true;
}

void SinglePlayerMenu::CreateNewRecruitScreen()
{
    auto portraits = std::make_unique<PortraitList>(m_pCursor);
    portraits->Scan();
    portraits->SetPosition(PORTRAITS_X, PORTRAITS_Y);
    m_portraitIndex = portraits->GetIndex();
    m_portraitFile = portraits->GetFile();
    AddObject(SCREEN_NEW_RECRUIT, std::move(portraits), ID_PORTRAITS);

    auto field = std::make_unique<TextField>(m_pCursor, m_pInput);
    field->SetPosition(NAME_FIELD_X, NAME_FIELD_Y);
    field->SetWidth(NAME_FIELD_WIDTH);
    field->SetText(FileStem(m_portraitFile).c_str());
    m_portraitName = field->GetText();
    AddObject(SCREEN_NEW_RECRUIT, std::move(field), ID_NAME_FIELD);
}

void SinglePlayerMenu::CreateReturningPilotScreen()
{
    auto saves = std::make_unique<SaveList>(m_pCursor);
    saves->Scan();
    m_hasSaves = saves->HasEntries();
    if (!m_hasSaves)
    {
        AddObject(SCREEN_RETURNING_PILOT, MakeText(NO_SAVES_TEXT, PILOT_NAME_SIZE, 0, NO_SAVES_X, NO_SAVES_Y),
                  ID_PILOT_NAME);
        return;
    }
    saves->SetPosition(SAVES_X, SAVES_Y);
    m_saveIndex = saves->GetIndex();
    const std::string file = saves->GetFile();
    AddObject(SCREEN_RETURNING_PILOT, std::move(saves), ID_SAVES);
    AddObject(SCREEN_RETURNING_PILOT, MakeText("", PILOT_NAME_SIZE, 0, PILOT_NAME_X, PILOT_NAME_Y), ID_PILOT_NAME);
    CreateStatus();

    const int32_t shown = GetCurrentScreen();
    SetScreen(SCREEN_RETURNING_PILOT);
    FillStatus(file);
    SetScreen(shown);
}

void SinglePlayerMenu::CreateStatus()
{
    for (const StatusLine& line : STATUS_LINES)
    {
        const int32_t size = line.heading ? HEADING_SIZE : STATUS_SIZE;
        const int32_t style = line.heading ? FONT_BOLD : 0;
        AddObject(SCREEN_RETURNING_PILOT, MakeText(line.label, size, style, line.x, line.y), line.labelId);
        if (line.valueId != NO_VALUE)
        {
            AddObject(SCREEN_RETURNING_PILOT,
                      MakeText(UNFILLED_TEXT, STATUS_SIZE, 0, line.valueX, line.valueY), line.valueId);
        }
    }
}

void SinglePlayerMenu::SetValue(int32_t p_id, const std::string& p_text)
{
    if (auto* text = dynamic_cast<StaticText*>(FindObject(p_id)))
    {
        text->SetText(p_text.c_str());
    }
}

void SinglePlayerMenu::FillStatus(const std::string& p_file)
{
    Pilot record;
    if (!SaveList::ReadPilot(p_file, record))
    {
        // Nothing to show but that the file is there: what was read of it would lie.
        SetValue(ID_PILOT_NAME, FileName(p_file) + UNREADABLE_TEXT);
        for (const StatusLine& line : STATUS_LINES)
        {
            if (line.valueId != NO_VALUE)
            {
                SetValue(line.valueId, "");
            }
        }
        return;
    }
    const std::string& mission = record.GetMissionName();
    SetValue(ID_MISSION, mission.empty() ? std::string(g_campaign.GetFirstMissionName()) : mission);
    SetValue(ID_FUNDS, "$" + std::to_string(record.GetMoney()));
    SetValue(ID_BULLETS, std::to_string(record.GetBullets()));
    SetValue(ID_ENERGY, std::to_string(record.GetEnergy()));
    SetValue(ID_MISSILES, std::to_string(record.GetMissiles()));
    // Bombs are dropped from the missile stock.
    SetValue(ID_BOMBS, std::to_string(record.GetMissiles()));
    SetValue(ID_HULL, record.GetHullName());
    SetValue(ID_ENGINE, record.GetEngineName());
    SetValue(ID_SHIELD, record.GetShieldName());
    for (int mount = 0; mount < Pilot::NUM_WEAPONS; ++mount)
    {
        SetValue(ID_WEAPON + 2 * mount, record.GetWeaponName(mount));
    }
    SetValue(ID_PILOT_NAME, record.GetPilotName());
}

void SinglePlayerMenu::FollowPortrait(PortraitPicker& p_picker)
{
    m_portraitIndex = p_picker.GetIndex();
    auto* field = dynamic_cast<TextField*>(FindObject(ID_NAME_FIELD));
    if (field != nullptr && m_portraitName == field->GetText())
    {
        field->SetText(FileStem(p_picker.GetFile()).c_str());
        m_portraitName = field->GetText();
    }
    m_portraitFile = p_picker.GetFile();
}

bool SinglePlayerMenu::CanExecute()
{
    if (GetCurrentScreen() == SCREEN_RETURNING_PILOT)
    {
        return m_hasSaves;
    }
    const auto* field = dynamic_cast<const TextField*>(FindObject(ID_NAME_FIELD));
    return field != nullptr && field->GetText()[0] != '\0';
}

std::string SinglePlayerMenu::CreatePilot()
{
    const auto* field = dynamic_cast<const TextField*>(FindObject(ID_NAME_FIELD));
    const std::string name = field != nullptr ? field->GetText() : "";
    const std::string file = Pilot::NewPilotFileName(name);
    Pilot record(file.c_str());
    record.SetPilotName(name);
    record.SetPortrait(m_portraitFile);
    if (!record.Save(nullptr))
    {
        platform::ShowMessageBox(("The pilot cannot be saved as " + file + ".").c_str(), SAVE_FAILED_CAPTION);
        return {};
    }
    return file;
}

int32_t SinglePlayerMenu::HandleButtons(float p_dt)
{
    (void)p_dt;
    if (auto* portraits = dynamic_cast<PortraitPicker*>(FindObject(ID_PORTRAITS)))
    {
        if (portraits->GetIndex() != m_portraitIndex)
        {
            FollowPortrait(*portraits);
        }
    }
    if (auto* saves = dynamic_cast<PortraitPicker*>(FindObject(ID_SAVES)))
    {
        if (saves->GetIndex() != m_saveIndex)
        {
            m_saveIndex = saves->GetIndex();
            FillStatus(saves->GetFile());
        }
    }

    if (WasButtonClicked(BUTTON_NEW_RECRUIT))
    {
        SetScreen(SCREEN_NEW_RECRUIT);
    }
    if (WasButtonClicked(BUTTON_RETURNING_PILOT))
    {
        SetScreen(SCREEN_RETURNING_PILOT);
    }
    if (WasButtonClicked(BUTTON_CANCEL))
    {
        Close();
        return MENUCODE_OPEN_TITLE;
    }

    auto* execute = dynamic_cast<Button*>(FindObject(ID_EXECUTE));
    int32_t click = CLICK_NONE;
    if (execute != nullptr)
    {
        execute->GetClick(&click);
    }
    if (click == CLICK_NONE || !CanExecute())
    {
        return MENUCODE_STAY;
    }

    std::string file;
    if (GetCurrentScreen() == SCREEN_NEW_RECRUIT)
    {
        file = CreatePilot();
    }
    else if (auto* saves = dynamic_cast<PortraitPicker*>(FindObject(ID_SAVES)))
    {
        // A file that no longer opens would leave the ship with another pilot's record under
        // this file's name, to be saved over it later.
        Pilot record;
        if (SaveList::ReadPilot(saves->GetFile(), record))
        {
            file = saves->GetFile();
        }
    }
    if (file.empty())
    {
        return MENUCODE_STAY;
    }
    if (Mode::s_pPlayer != nullptr)
    {
        Mode::s_pPlayer->LoadPilot(file.c_str());
    }
    Close();
    return MODECODE_HUB;
}
