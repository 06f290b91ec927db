#pragma once

// A player for whole-game tests, in the test's own process: the game runs frame by frame on
// scripted devices, and the player works them as a person would, from what the screen shows.
// The hands move the mouse to the places the menus, the hub and the shop put their buttons and
// click; the flight bot steers and fires the ship from the keyboard towards what the mission's
// objectives name. Both only press keys and buttons: the game does the rest.

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

class Game;
class MissionMode;
class Ship;
class WorldObject;

namespace e2e
{

struct Point
{
    int x = 0;
    int y = 0;
};

// Where the player clicks, in screen pixels: the buttons stand where the game's layout puts
// them, so a test fails when one moves.
namespace place
{
// The menu buttons rest at (15, 210 + 70 i), 140 x 40.
constexpr Point MenuButton(int p_index)
{
    return Point{80, 230 + 70 * p_index};
}
constexpr Point TITLE_SINGLE = MenuButton(0);
constexpr Point TITLE_MULTIPLAYER = MenuButton(1);
constexpr Point TITLE_OPTIONS = MenuButton(2);
constexpr Point PILOT_NEW_RECRUIT = MenuButton(0);
constexpr Point PILOT_RETURNING = MenuButton(1);
// 6 pixels in from the bottom right corner.
constexpr Point PILOT_EXECUTE{948, 744};
// The hub's buttons at y 680: "Quit" at x 560, "Shop" at 705, "Start Mission" at 850.
constexpr Point HUB_QUIT{630, 700};
constexpr Point HUB_SHOP{745, 700};
constexpr Point HUB_START{920, 700};
constexpr Point SHOP_DONE{858, 700};
// The for-sale panel's corner, and the ship panel's.
constexpr Point FOR_SALE{800, 115};
constexpr Point SHIP{455, 130};
// On the ship picture: a hull, engine or shield let go here is fitted.
constexpr Point ON_SHIP{605, 250};
// The front mount's line of the ship panel.
constexpr Point FRONT_MOUNT{SHIP.x + 98, SHIP.y + 8};
} // namespace place

// The scripted mouse and keyboard, worked one frame at a time: what is asked is queued and
// happens in the frames that follow, each event in its own frame as a hand would do it.
class Hands
{
public:
    // The cursor starts where the game puts it, at the top-left corner.
    void Reset();
    // Events due in the coming frame go to the devices; call before each frame.
    void BeforeFrame();
    bool IsBusy() const { return !m_queue.empty(); }

    void MoveTo(Point p_to);
    // Moves there, presses, lets go, and waits for the game to have read the click.
    void Click(Point p_at);
    // Presses at p_from, moves in steps with the button held, lets go at p_to.
    void Drag(Point p_from, Point p_to);
    // Down in one frame, up in the next.
    void Tap(uint8_t p_key);
    // Nothing for p_frames frames.
    void Wait(int p_frames);

private:
    void Then(std::function<void()> p_event);

    std::deque<std::function<void()>> m_queue;
    Point m_cursor;
};

// The same hands for the real binary: an input script written frame by frame, the cursor
// followed from the top-left corner.
class ScriptWriter
{
public:
    void Line(int64_t p_frame, const std::string& p_event);
    // Moves in p_frame, presses two frames later, lets go in the next; answers the frame in
    // which the game has read the click.
    int64_t Click(int64_t p_frame, Point p_at);
    // Presses at p_from, moves there in four steps with the button held and lets go; answers
    // the frame after.
    int64_t Drag(int64_t p_frame, Point p_from, Point p_to);
    // p_key by its name in config.ini, held from p_frame for p_frames frames.
    void Hold(int64_t p_frame, const char* p_key, int64_t p_frames);
    std::string Text() const { return m_text; }
    bool Save(const std::string& p_path) const;

private:
    void MoveTo(int64_t p_frame, Point p_to);

    std::string m_text;
    Point m_cursor;
};

// Flies the ship of a running mission from the keyboard: the heading and speed keys towards
// the objective the mission needs next, the fire key when an enemy is in front. It sees what a
// player sees: its ship, the objects the objectives name, the enemies around.
class FlightBot
{
public:
    enum class Goal
    {
        Win,         // the open objectives in order, hunting what they ask to destroy
        FlyIntoFire, // straight at the nearest enemy, never firing
    };

    explicit FlightBot(Goal p_goal = Goal::Win) : m_goal(p_goal) {}

    // Sets the keys for the coming frame of p_mission, which lasts p_seconds.
    void Think(MissionMode& p_mission, double p_seconds, int64_t p_frame);
    // Lets every key go.
    void Release();
    // What the bot works on, for a failure's message.
    const std::string& GetDoing() const { return m_doing; }

    // The player's ship and every ship whose death loses the mission made whole again, as the
    // campaign's winnability test does: the bot proves the campaign can be played through, not
    // that it flies well.
    static void RepairProtected();

private:
    struct Target
    {
        double x = 0.0;
        double y = 0.0;
        bool enemy = false;  // fire at it
        bool arrive = false; // slow down to touch it
    };

    bool FindTarget(MissionMode& p_mission, Target& p_target);
    void Hold(const std::vector<uint8_t>& p_keys);

    Goal m_goal;
    bool m_down[256] = {};
    std::string m_doing;
};

// The middle of an object as the screen shows it.
void CentreOf(WorldObject* p_object, double& p_x, double& p_y);
// Every live computer ship of the running mission.
std::vector<Ship*> EnemiesOf(MissionMode& p_mission);

// The game in this process on scripted devices, at a fixed frame time, with the random
// numbers seeded: what a whole-game test runs frame by frame. Undrawn frames cost nothing
// (KORVATH_DRAW_ONLY_SCREENSHOTS); the frames a test asks for are drawn and saved.
class InProcessGame
{
public:
    static constexpr double FRAME_SECONDS = 0.05;

    // Starts the game with these options already in g_devOptions (the working directory is
    // the game directory); p_record, when not empty, is recorded there.
    InProcessGame(uint32_t p_seed, const std::string& p_record);
    ~InProcessGame();
    InProcessGame(const InProcessGame&) = delete;
    InProcessGame& operator=(const InProcessGame&) = delete;

    bool IsStarted() const { return m_started; }
    Game& GetGame() { return *m_pGame; }
    // One frame, the hands' events first; false once the game has ended.
    bool Frame();
    int64_t GetFrame() const;
    // Saves the coming frame as a screenshot (screenshot-NNNNNN.png); answers its number.
    int64_t ScreenshotNextFrame();
    Hands& GetHands() { return m_hands; }

private:
    Game* m_pGame;
    Hands m_hands;
    bool m_started;
    bool m_running;
};

} // namespace e2e
