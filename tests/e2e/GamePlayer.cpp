#include "e2e/GamePlayer.h"

#include "app/DevOptions.h"
#include "app/Game.h"
#include "app/Mode.h"
#include "input/InputRecorder.h"
#include "input/InputScript.h"
#include "menus/PreGameMenu.h"
#include "mission/Campaign.h"
#include "mission/Condition.h"
#include "mission/MissionMode.h"
#include "platform/Window.h"
#include "sim/Layers.h"
#include "sim/Level.h"
#include "sim/PhysicalDesc.h"
#include "sim/PlayerShip.h"
#include "sim/QuadNode.h"
#include "sim/Ship.h"
#include "sim/SpawnerController.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>

namespace e2e
{
namespace
{
constexpr uint8_t KEY_FIRE = 0x11;       // W
constexpr uint8_t KEY_ACCELERATE = 0x48; // NUMPAD8
constexpr uint8_t KEY_BRAKE = 0x4C;      // NUMPAD5
constexpr uint8_t KEY_LEFT = 0x47;       // NUMPAD7
constexpr uint8_t KEY_RIGHT = 0x49;      // NUMPAD9
constexpr uint8_t FLIGHT_KEYS[] = {KEY_FIRE, KEY_ACCELERATE, KEY_BRAKE, KEY_LEFT, KEY_RIGHT};
// Each mouse count moves the cursor two pixels.
constexpr int PIXELS_PER_COUNT = 2;
constexpr int DRAG_STEPS = 4;
// The bot fires only this close, and brings a followed ship along from no farther.
constexpr double FIRING_RANGE = 800.0;
constexpr double LEAD_DISTANCE = 600.0;

ScriptedRawInput& Devices()
{
    return g_inputScript.GetDevices();
}

// The heading (degrees, 0 up the map, 90 along +x) from one point towards another.
double HeadingTowards(double p_fromX, double p_fromY, double p_toX, double p_toY)
{
    return std::atan2(p_toX - p_fromX, -(p_toY - p_fromY)) * 180.0 / M_PI;
}

double AngleBetween(double p_from, double p_to)
{
    double difference = std::fmod(p_to - p_from, 360.0);
    if (difference > 180.0)
    {
        difference -= 360.0;
    }
    else if (difference < -180.0)
    {
        difference += 360.0;
    }
    return difference;
}

bool IsSpawner(const Ship* p_ship)
{
    return dynamic_cast<SpawnerController*>(p_ship->GetController()) != nullptr;
}

// The names of the ships whose death loses the mission.
std::set<std::string> ProtectedNames()
{
    std::set<std::string> names;
    for (const auto& lose : g_campaign.GetLoseConditions())
    {
        if (lose->m_kind == CONDITION_DEAD)
        {
            names.insert(lose->m_param1.m_string);
        }
    }
    return names;
}

// The campaign's open objectives from id 1 up (missions chain them in that order), those a win
// needs first: the conditions to work on, in order.
std::vector<const Condition*> Goals()
{
    std::vector<const Condition*> objectives;
    for (const auto& objective : g_campaign.GetObjectives())
    {
        objectives.insert(objectives.begin(), objective.get());
    }
    std::vector<const Condition*> goals;
    auto addOpen = [&goals](const Condition* p_objective) {
        if (p_objective->m_active && !p_objective->m_done &&
            std::find(goals.begin(), goals.end(), p_objective) == goals.end())
        {
            goals.push_back(p_objective);
        }
    };
    for (const auto& win : g_campaign.GetWinConditions())
    {
        if (win->m_kind != CONDITION_OBJECTIVES)
        {
            goals.push_back(win.get());
            continue;
        }
        const int32_t mask = win->m_param1.m_int;
        for (const Condition* objective : objectives)
        {
            const bool named = objective->m_id >= 1 && objective->m_id <= 32 &&
                               (static_cast<uint32_t>(mask) & (uint32_t{1} << (objective->m_id - 1))) != 0;
            if (mask == -1 || named)
            {
                addOpen(objective);
            }
        }
    }
    for (const Condition* objective : objectives)
    {
        addOpen(objective);
    }
    return goals;
}
} // namespace

void CentreOf(WorldObject* p_object, double& p_x, double& p_y)
{
    if (auto* ship = dynamic_cast<Ship*>(p_object))
    {
        p_x = ship->GetCenterX();
        p_y = ship->GetCenterY();
        return;
    }
    const PhysicalDesc* desc = p_object->GetPhysicalDesc();
    p_x = desc->GetX() + p_object->GetWidth() / 2.0;
    p_y = desc->GetY() + p_object->GetHeight() / 2.0;
}

std::vector<Ship*> EnemiesOf(MissionMode& p_mission)
{
    std::vector<Ship*> enemies;
    if (p_mission.GetLevel() == nullptr || p_mission.GetLevel()->GetRoot() == nullptr)
    {
        return enemies;
    }
    std::vector<QuadNode*> leaves;
    p_mission.GetLevel()->GetRoot()->CollectLeaves(leaves);
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(LAYER_SHIPS); object != nullptr; object = object->GetNextInList())
        {
            auto* ship = dynamic_cast<Ship*>(object);
            if (ship != nullptr && ship->GetTeam() == TEAM_COMPUTER && !ship->IsDead())
            {
                enemies.push_back(ship);
            }
        }
    }
    return enemies;
}

// ---- Hands

void Hands::Reset()
{
    m_queue.clear();
    m_cursor = Point{};
}

void Hands::BeforeFrame()
{
    if (!m_queue.empty())
    {
        const std::function<void()> event = std::move(m_queue.front());
        m_queue.pop_front();
        event();
    }
}

void Hands::Then(std::function<void()> p_event)
{
    m_queue.push_back(std::move(p_event));
}

void Hands::MoveTo(Point p_to)
{
    const int dx = (p_to.x - m_cursor.x) / PIXELS_PER_COUNT;
    const int dy = (p_to.y - m_cursor.y) / PIXELS_PER_COUNT;
    m_cursor.x += dx * PIXELS_PER_COUNT;
    m_cursor.y += dy * PIXELS_PER_COUNT;
    Then([dx, dy] { Devices().MoveMouse(dx, dy); });
}

void Hands::Click(Point p_at)
{
    MoveTo(p_at);
    Wait(1);
    Then([] { Devices().SetMouseButton(0, true); });
    Then([] { Devices().SetMouseButton(0, false); });
    // The frame after the release is the one whose update reads the click.
    Wait(2);
}

void Hands::Drag(Point p_from, Point p_to)
{
    MoveTo(p_from);
    Then([] { Devices().SetMouseButton(0, true); });
    for (int step = 1; step <= DRAG_STEPS; ++step)
    {
        MoveTo(Point{p_from.x + (p_to.x - p_from.x) * step / DRAG_STEPS, p_from.y + (p_to.y - p_from.y) * step / DRAG_STEPS});
    }
    Then([] { Devices().SetMouseButton(0, false); });
    Wait(1);
}

void Hands::Tap(uint8_t p_key)
{
    Then([p_key] { Devices().SetKey(p_key, true); });
    Then([p_key] { Devices().SetKey(p_key, false); });
}

void Hands::Wait(int p_frames)
{
    for (int i = 0; i < p_frames; ++i)
    {
        Then([] {});
    }
}

// ---- ScriptWriter

void ScriptWriter::Line(int64_t p_frame, const std::string& p_event)
{
    m_text += std::to_string(p_frame) + " " + p_event + "\n";
}

void ScriptWriter::MoveTo(int64_t p_frame, Point p_to)
{
    const int dx = (p_to.x - m_cursor.x) / PIXELS_PER_COUNT;
    const int dy = (p_to.y - m_cursor.y) / PIXELS_PER_COUNT;
    m_cursor.x += dx * PIXELS_PER_COUNT;
    m_cursor.y += dy * PIXELS_PER_COUNT;
    Line(p_frame, "mouse move " + std::to_string(dx) + " " + std::to_string(dy));
}

int64_t ScriptWriter::Click(int64_t p_frame, Point p_at)
{
    MoveTo(p_frame, p_at);
    Line(p_frame + 2, "mouse button 0 down");
    Line(p_frame + 3, "mouse button 0 up");
    return p_frame + 4;
}

int64_t ScriptWriter::Drag(int64_t p_frame, Point p_from, Point p_to)
{
    MoveTo(p_frame, p_from);
    Line(p_frame + 1, "mouse button 0 down");
    for (int step = 1; step <= DRAG_STEPS; ++step)
    {
        MoveTo(p_frame + 1 + step,
               Point{p_from.x + (p_to.x - p_from.x) * step / DRAG_STEPS, p_from.y + (p_to.y - p_from.y) * step / DRAG_STEPS});
    }
    Line(p_frame + 2 + DRAG_STEPS, "mouse button 0 up");
    return p_frame + 3 + DRAG_STEPS;
}

void ScriptWriter::Hold(int64_t p_frame, const char* p_key, int64_t p_frames)
{
    Line(p_frame, std::string("key ") + p_key + " down");
    Line(p_frame + p_frames, std::string("key ") + p_key + " up");
}

bool ScriptWriter::Save(const std::string& p_path) const
{
    std::ofstream file(p_path, std::ios::binary);
    file << m_text;
    return static_cast<bool>(file);
}

// ---- FlightBot

void FlightBot::RepairProtected()
{
    Mode::s_pPlayer->Repair();
    for (const std::string& name : ProtectedNames())
    {
        if (auto* ship = dynamic_cast<Ship*>(g_campaign.GetNamedObjects().Find(name)))
        {
            ship->Repair();
        }
    }
}

bool FlightBot::FindTarget(MissionMode& p_mission, Target& p_target)
{
    PlayerShip* player = Mode::s_pPlayer;
    const std::vector<Ship*> enemies = EnemiesOf(p_mission);
    const std::set<std::string> spared = ProtectedNames();
    auto nearest = [&](bool p_killableOnly) -> Ship* {
        Ship* best = nullptr;
        double bestDistance = 0.0;
        for (Ship* enemy : enemies)
        {
            if (p_killableOnly && (IsSpawner(enemy) || spared.count(enemy->GetName()) != 0))
            {
                continue;
            }
            const double distance = std::hypot(enemy->GetCenterX() - player->GetCenterX(), enemy->GetCenterY() - player->GetCenterY());
            if (best == nullptr || distance < bestDistance)
            {
                best = enemy;
                bestDistance = distance;
            }
        }
        return best;
    };
    auto aimAt = [&](Ship* p_ship, bool p_fire) {
        p_target = Target{p_ship->GetCenterX(), p_ship->GetCenterY(), p_fire, false};
    };

    if (m_goal == Goal::FlyIntoFire)
    {
        Ship* enemy = nearest(false);
        if (enemy != nullptr)
        {
            aimAt(enemy, false);
            m_doing = "flying into " + enemy->GetName();
        }
        return enemy != nullptr;
    }

    NameRegistry& names = g_campaign.GetNamedObjects();
    Level* level = p_mission.GetLevel();
    for (const Condition* goal : Goals())
    {
        switch (goal->m_kind)
        {
        case CONDITION_TOUCHING:
        {
            WorldObject* mover = names.Find(goal->m_param1.m_string);
            WorldObject* place = names.Find(goal->m_param2.m_string);
            if (mover == nullptr || place == nullptr)
            {
                break;
            }
            if (place == player)
            {
                std::swap(mover, place);
            }
            double x = 0.0;
            double y = 0.0;
            CentreOf(place, x, y);
            if (mover != player)
            {
                // A ship that follows the player is led there, never left behind.
                double mx = 0.0;
                double my = 0.0;
                CentreOf(mover, mx, my);
                if (std::hypot(mx - player->GetCenterX(), my - player->GetCenterY()) > LEAD_DISTANCE)
                {
                    x = mx;
                    y = my;
                }
            }
            p_target = Target{x, y, false, true};
            m_doing = "touching " + goal->m_param1.m_string + " " + goal->m_param2.m_string;
            return true;
        }
        case CONDITION_KILLED:
        {
            const int32_t count = goal->m_param1.m_int;
            if (level == nullptr || (count != -1 && level->GetNumEnemies() - level->GetEnemiesLeft() >= count))
            {
                break;
            }
            if (Ship* enemy = nearest(true))
            {
                aimAt(enemy, true);
                m_doing = "hunting " + enemy->GetName();
                return true;
            }
            break;
        }
        case CONDITION_DEAD:
        {
            auto* ship = dynamic_cast<Ship*>(names.Find(goal->m_param1.m_string));
            if (ship != nullptr && !ship->IsDead() && ship != player && !IsSpawner(ship))
            {
                aimAt(ship, true);
                m_doing = "destroying " + ship->GetName();
                return true;
            }
            break;
        }
        case CONDITION_TIMEPASSED:
        case CONDITION_OBJECTIVES:
            break;
        }
    }
    // Nothing to reach: the enemies around are fought while the time passes.
    if (Ship* enemy = nearest(true))
    {
        aimAt(enemy, true);
        m_doing = "fighting " + enemy->GetName();
        return true;
    }
    m_doing = "waiting";
    return false;
}

void FlightBot::Think(MissionMode& p_mission, double p_seconds, int64_t p_frame)
{
    PlayerShip* ship = Mode::s_pPlayer;
    const PhysicalDesc* desc = ship->GetPhysicalDesc();
    Target target;
    if (p_mission.IsVictory() || p_mission.IsDefeated() || !FindTarget(p_mission, target))
    {
        Hold({});
        return;
    }
    const double x = ship->GetCenterX();
    const double y = ship->GetCenterY();
    const double distance = std::hypot(target.x - x, target.y - y);
    const double turn = AngleBetween(desc->GetHeading(), HeadingTowards(x, y, target.x, target.y));
    const double turnStep = ship->GetTurnRate() * p_seconds;
    const double speed = desc->GetSpeed();

    std::vector<uint8_t> keys;
    if (turn > turnStep * 0.6)
    {
        keys.push_back(KEY_RIGHT);
    }
    else if (turn < -turnStep * 0.6)
    {
        keys.push_back(KEY_LEFT);
    }
    const bool aligned = std::fabs(turn) < 35.0;
    if (!target.arrive)
    {
        keys.push_back(aligned ? KEY_ACCELERATE : KEY_BRAKE);
    }
    else
    {
        // Close in slowly enough to touch it.
        const double stopDistance = speed * speed / (2.0 * std::max<double>(1.0, ship->GetThrust())) + 40.0;
        if (aligned && distance > stopDistance)
        {
            keys.push_back(KEY_ACCELERATE);
        }
        else if (speed > 60.0 || !aligned)
        {
            keys.push_back(KEY_BRAKE);
        }
    }
    // Fire is taken on the press, so the trigger is pulled on every other frame.
    const double aim = std::max(6.0, std::atan2(30.0, distance) * 180.0 / M_PI);
    if (target.enemy && std::fabs(turn) < aim && distance < FIRING_RANGE && p_frame % 2 == 0)
    {
        keys.push_back(KEY_FIRE);
    }
    Hold(keys);
    // KORVATH_BOT_LOG=1 shows how the flight goes, for whoever changes a mission.
    if (std::getenv("KORVATH_BOT_LOG") != nullptr && p_frame % 100 == 0)
    {
        std::fprintf(stderr, "%s %lld at %.0f %.0f speed %.0f: %s (%.0f away) armour %u\n", g_campaign.GetMissionName(),
                     static_cast<long long>(p_frame), x, y, speed, m_doing.c_str(), distance, ship->GetArmour());
    }
}

void FlightBot::Release()
{
    Hold({});
}

void FlightBot::Hold(const std::vector<uint8_t>& p_keys)
{
    for (uint8_t key : FLIGHT_KEYS)
    {
        const bool down = std::find(p_keys.begin(), p_keys.end(), key) != p_keys.end();
        if (down != m_down[key])
        {
            m_down[key] = down;
            Devices().SetKey(key, down);
        }
    }
}

// ---- InProcessGame

InProcessGame::InProcessGame(uint32_t p_seed, const std::string& p_record)
    : m_pGame(nullptr), m_started(false), m_running(false)
{
    g_devOptions.windowed = true;
    g_devOptions.fixedDt = FRAME_SECONDS;
    g_devOptions.hasSeed = true;
    g_devOptions.seed = p_seed;
    g_devOptions.drawOnlyScreenshots = true;
    std::string error;
    g_inputScript.Parse("", error);
    if (!p_record.empty())
    {
        g_inputRecorder.Open(p_record, p_seed, error);
    }
    platform::Window::SetFullscreenPreference(false);
    // As at the start of the program: the cursor in the corner, no menu button made yet.
    if (Mode::s_cursor.IsInitialized())
    {
        Mode::s_cursor.SetPosition(0.0f, 0.0f);
    }
    PreGameMenu::ForgetFirstButton();
    m_hands.Reset();

    m_pGame = new Game();
    m_started = m_pGame->Init(1024, 768, 32);
    m_running = m_started;
}

InProcessGame::~InProcessGame()
{
    m_pGame->Shutdown();
    delete m_pGame;
    g_inputRecorder.Close();
    g_inputScript.Clear();
    g_devOptions = DevOptions{};
}

bool InProcessGame::Frame()
{
    if (!m_running)
    {
        return false;
    }
    m_hands.BeforeFrame();
    m_running = m_pGame->RunFrame();
    return m_running;
}

int64_t InProcessGame::GetFrame() const
{
    return m_pGame->GetFrameCount();
}

int64_t InProcessGame::ScreenshotNextFrame()
{
    const int64_t frame = GetFrame() + 1;
    g_devOptions.screenshotFrames.push_back(frame);
    std::sort(g_devOptions.screenshotFrames.begin(), g_devOptions.screenshotFrames.end());
    return frame;
}

} // namespace e2e
