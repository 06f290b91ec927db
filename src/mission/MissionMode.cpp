#include "mission/MissionMode.h"

#include <string>

#include "gfx/Animation.h"
#include "input/Action.h"
#include "input/InputSystem.h"
#include "menus/InGameMenu.h"
#include "mission/Campaign.h"
#include "mission/Hud.h"
#include "mission/Scoreboard.h"
#include "sim/Layers.h"
#include "sim/Level.h"
#include "sim/PhysicalDesc.h"
#include "sim/PlayerShip.h"
#include "sound/Sound.h"

bool g_twoPlayer = false;
bool g_secondPlayerTurn = false;

bool MissionMode::s_defeat = false;
double MissionMode::s_bannerTime = 0.0;
bool MissionMode::s_bannerSoundPlayed = false;
bool MissionMode::s_autopilot = false;
double MissionMode::s_savedSpeed = 0.0;
double MissionMode::s_savedAcceleration = 0.0;

namespace
{
// Where the classification of a position says the ship is inside the play area.
constexpr int INSIDE_PLAY_AREA = 4;
// Turning back towards smaller headings.
constexpr int TURN_BACK_LEFT = 2;

std::unique_ptr<Animation> MakeBanner(const char* p_picture)
{
    auto banner = std::make_unique<Animation>();
    banner->Init(1, 0.5f, true);
    banner->AddImage(p_picture);
    banner->GetPhysicalDesc()->SetPosition(MissionMode::BANNER_X, MissionMode::BANNER_Y);
    banner->GetPhysicalDesc()->SetHeading(0.0);
    return banner;
}
} // namespace

MissionMode::MissionMode() : m_victory(false), m_objectivesScreen(&s_cursor) {}

MissionMode::~MissionMode()
{
    Shutdown();
}

bool MissionMode::Init(InputSystem* p_input)
{
    (void)p_input;
    g_campaign.FillObjectivesScreen(m_objectivesScreen);
    g_campaign.SetMissionLink(this);

    m_pLevel = std::make_unique<Level>();
    m_pLevel->SetMission(this);
    m_pLevel->Load(g_campaign.GetLevelFile(), &m_camera, s_pPlayer);

    m_pInGameMenu = std::make_unique<InGameMenu>(&s_cursor, &m_objectivesScreen);
    m_pHud = std::make_unique<Hud>(s_pPlayer);
    m_victory = false;

    m_pVictoryBanner = MakeBanner("art\\victorybanner.bmp");
    m_pDefeatBanner = MakeBanner("art\\defeatbanner.bmp");

    if (g_pSound != nullptr)
    {
        g_pSound->Load(Sound::SOUND_SHOOT);
        g_pSound->Load(Sound::SOUND_VICTORY);
        g_pSound->Load(Sound::SOUND_EXPLOSION);
        g_pSound->Load(Sound::SOUND_MISSION_MUSIC);
        g_pSound->Play(Sound::SOUND_MISSION_MUSIC);
        g_pSound->SetLooping(Sound::SOUND_MISSION_MUSIC);
    }
    return true;
}

bool MissionMode::Shutdown()
{
    if (g_campaign.GetMissionLink() == this)
    {
        g_campaign.SetMissionLink(nullptr);
    }
    m_pHud.reset();
    m_pInGameMenu.reset();
    if (m_pLevel)
    {
        m_pLevel.reset();
        // Every mission attempt, won or lost, hands the scoreboard to the other player.
        g_scoreboard.SwitchPlayer();
    }
    m_pVictoryBanner.reset();
    m_pDefeatBanner.reset();
    if (s_pPlayer != nullptr)
    {
        s_pPlayer->Repair();
    }
    s_defeat = false;
    return true;
}

void MissionMode::CountTwoPlayerKill()
{
    g_scoreboard.AddKill();
}

void MissionMode::AddMessage(const char* p_text, float p_seconds, float p_interval)
{
    if (m_pHud)
    {
        m_pHud->AddMessage(p_text, p_seconds, p_interval);
    }
}

void MissionMode::AddObjective(const char* p_text, int p_id)
{
    m_objectivesScreen.AddObjective(p_text, p_id);
}

void MissionMode::MarkObjectiveDone(int p_id)
{
    m_objectivesScreen.MarkDone(p_id);
}

int32_t MissionMode::Update(float p_dt)
{
    if (m_pHud)
    {
        m_pHud->Update(p_dt);
    }
    if (!m_victory && !s_defeat)
    {
        if (m_pInGameMenu && m_pInGameMenu->IsVisible())
        {
            return m_pInGameMenu->Update(p_dt);
        }
        if (m_pLevel)
        {
            m_pLevel->Update(p_dt);
        }
        if (s_pPlayer != nullptr)
        {
            m_camera.Follow(s_pPlayer);
            m_camera.SetAngle(s_pPlayer->GetHeading());
        }
    }

    const int32_t status = g_campaign.GetStatus();
    if (status == 1)
    {
        m_victory = true;
    }
    else if (status == 2 && !m_victory)
    {
        s_defeat = true;
    }
    if (!m_victory && !s_defeat)
    {
        return 6;
    }

    s_bannerTime += p_dt;
    if (s_bannerTime <= BANNER_SECONDS)
    {
        if (!s_bannerSoundPlayed)
        {
            if (g_pSound != nullptr)
            {
                g_pSound->Stop(Sound::SOUND_MISSION_MUSIC);
                g_pSound->Play(Sound::SOUND_VICTORY);
            }
            s_bannerSoundPlayed = true;
        }
        return 6;
    }
    s_bannerTime = 0.0;
    s_bannerSoundPlayed = false;
    return LeaveAfterBanner();
}

int32_t MissionMode::LeaveAfterBanner()
{
    if (!m_victory)
    {
        // Lost: the campaign stays on this mission and the hub offers it again.
        return 1;
    }
    if (!g_twoPlayer)
    {
        if (!g_campaign.AdvanceMission())
        {
            g_campaign.Reset();
            return 255;
        }
        if (s_pPlayer != nullptr)
        {
            s_pPlayer->SaveRecord();
        }
        return 1;
    }
    if (g_secondPlayerTurn && !g_campaign.AdvanceMission())
    {
        g_campaign.Reload(CAMPAIGN_FILE);
        g_twoPlayer = false;
        g_secondPlayerTurn = false;
        return 0;
    }
    // Both players fly every mission, the first player first: the campaign has advanced only
    // if the second player just won. Loading the other pilot would move the campaign to that
    // pilot's saved mission, so the mission is put back afterwards.
    const std::string mission = g_campaign.GetMissionName();
    if (s_pPlayer != nullptr)
    {
        s_pPlayer->SaveRecord();
        if (g_secondPlayerTurn)
        {
            g_secondPlayerTurn = false;
            s_pPlayer->LoadPilot(PLAYER1_FILE);
        }
        else
        {
            g_secondPlayerTurn = true;
            s_pPlayer->LoadPilot(PLAYER2_FILE);
        }
    }
    g_campaign.SetMission(mission.c_str());
    return 1;
}

bool MissionMode::Render()
{
    m_camera.Apply();
    if (m_pLevel)
    {
        m_pLevel->Render();
    }
    if (m_pHud)
    {
        m_pHud->Render();
    }
    if (m_pInGameMenu && m_pInGameMenu->IsVisible())
    {
        m_pInGameMenu->Render();
    }
    if (m_victory)
    {
        m_pVictoryBanner->Render();
    }
    else if (s_defeat && m_pDefeatBanner)
    {
        m_pDefeatBanner->Render();
    }
    return true;
}

void MissionMode::PassUndrawnFrame()
{
    if (m_pLevel)
    {
        Level::StepBorderColor();
    }
}

void MissionMode::Steer(InputSystem* p_input)
{
    PhysicalDesc* desc = s_pPlayer->GetPhysicalDesc();
    const int where = m_pLevel ? m_pLevel->Classify(desc->GetX(), desc->GetY()) : INSIDE_PLAY_AREA;
    if (where != INSIDE_PLAY_AREA)
    {
        if (!s_autopilot)
        {
            s_savedSpeed = desc->GetSpeed();
            s_savedAcceleration = desc->GetAcceleration();
            desc->SetSpeed(AUTOPILOT_SPEED);
            desc->SetAcceleration(AUTOPILOT_ACCELERATION);
            s_pPlayer->SetStrafe(Ship::DIRECTION_NONE);
            s_pPlayer->SetRotationSpeed(where == TURN_BACK_LEFT ? -AUTOPILOT_TURN_RATE : AUTOPILOT_TURN_RATE);
            s_autopilot = true;
        }
        return;
    }
    if (s_autopilot)
    {
        desc->SetSpeed(s_savedSpeed);
        desc->SetAcceleration(s_savedAcceleration);
        s_autopilot = false;
    }
    if (p_input == nullptr)
    {
        return;
    }

    const double turnRate = s_pPlayer->GetTurnRate();
    const int32_t leftAxis = p_input->GetAxis(ROTATE_LEFT);
    const int32_t rightAxis = p_input->GetAxis(ROTATE_RIGHT);
    if (leftAxis > AXIS_DEAD_ZONE)
    {
        s_pPlayer->SetRotationSpeed(static_cast<float>(-(turnRate * (leftAxis - AXIS_DEAD_ZONE)) / AXIS_RANGE));
    }
    else if (p_input->IsDown(ROTATE_LEFT))
    {
        s_pPlayer->SetRotation(Ship::DIRECTION_LEFT);
    }
    else if (rightAxis > AXIS_DEAD_ZONE)
    {
        s_pPlayer->SetRotationSpeed(static_cast<float>(turnRate * (rightAxis - AXIS_DEAD_ZONE) / AXIS_RANGE));
    }
    else if (p_input->IsDown(ROTATE_RIGHT))
    {
        s_pPlayer->SetRotation(Ship::DIRECTION_RIGHT);
    }
    else
    {
        s_pPlayer->SetRotation(Ship::DIRECTION_NONE);
    }

    if (p_input->IsDown(STRAFE_LEFT))
    {
        s_pPlayer->SetStrafe(Ship::DIRECTION_LEFT);
    }
    else if (p_input->IsDown(STRAFE_RIGHT))
    {
        s_pPlayer->SetStrafe(Ship::DIRECTION_RIGHT);
    }
    else
    {
        s_pPlayer->SetStrafe(Ship::DIRECTION_NONE);
    }

    if (p_input->IsDown(ACCELERATE))
    {
        s_pPlayer->SetThrust(Ship::DIRECTION_FORWARD);
    }
    else if (p_input->IsDown(DECELERATE))
    {
        s_pPlayer->SetThrust(Ship::DIRECTION_BACKWARD);
    }
    else
    {
        s_pPlayer->SetThrust(Ship::DIRECTION_NONE);
    }
}

bool MissionMode::HandleInput(InputSystem* p_input)
{
    const bool menuOpen = m_pInGameMenu && m_pInGameMenu->IsVisible();
    if (!menuOpen && s_pPlayer != nullptr)
    {
        Steer(p_input);
        if (!m_victory && !s_defeat && p_input != nullptr)
        {
            static constexpr int32_t SHOOT_ACTIONS[Ship::NUM_MOUNTS] = {SHOOT_FORWARD, SHOOT_LEFT, SHOOT_RIGHT, SHOOT_BACK};
            for (int mount = 0; mount < Ship::NUM_MOUNTS; ++mount)
            {
                if (p_input->WasPressed(SHOOT_ACTIONS[mount]) && m_pLevel)
                {
                    m_pLevel->Add(s_pPlayer->Fire(mount, true).release(), LAYER_PROJECTILES);
                }
            }
        }
    }
    if (!m_victory && !s_defeat && m_pInGameMenu && p_input != nullptr)
    {
        m_pInGameMenu->HandleInput(p_input);
    }
    return true;
}

void MissionMode::OnDisplayReset()
{
    if (m_pLevel)
    {
        m_pLevel->RebuildDisplayLists();
    }
}
