#include "soak/Soak.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include <malloc.h>
#include <unistd.h>

#include "SoakBot.h"
#include "app/DevOptions.h"
#include "app/Random.h"
#include "gfx/Animation.h"
#include "gfx/Image.h"
#include "mission/Campaign.h"
#include "mission/MissionLink.h"
#include "pilot/PartCatalog.h"
#include "pilot/Pilot.h"
#include "sim/AttackController.h"
#include "sim/Level.h"
#include "sim/MissionEvents.h"
#include "sim/PlayerShip.h"
#include "sim/QuadNode.h"

namespace soak
{

namespace
{
const char* const PILOT_FILE = "Saves\\Soak0.sav";
const char* const PILOT_PATH = "Saves/Soak0.sav";
const char* const PILOT_NAME = "Soak";
const char* const WEAPONS[Pilot::NUM_WEAPONS] = {"Machine Gun", "Laser", "Missile", "Bomb"};

// The mission as the campaign and the level see it. Messages and objective lines are only
// counted: keeping them would make the soak itself grow.
class SoakMission : public MissionLink, public MissionEvents
{
public:
    SoakMission(Level& p_level, PlayerShip& p_player) : m_level(p_level), m_player(p_player) {}

    Level* GetLevel() override { return &m_level; }
    PlayerShip* GetPlayer() override { return &m_player; }
    void AddMessage(const char*, float, float) override {}
    void AddObjective(const char*, int) override {}
    void MarkObjectiveDone(int) override {}

    // The bot repairs the ship; a defeat does not stop the battle.
    void SetDefeat(bool) override {}
    bool IsDefeated() const override { return false; }

private:
    Level& m_level;
    PlayerShip& m_player;
};

// The catalogue of the game directory, for as long as the soak runs, unless one is loaded.
class CatalogueForTheRun
{
public:
    CatalogueForTheRun() : m_own(g_pPartCatalog == nullptr)
    {
        if (m_own)
        {
            CreatePartCatalog();
        }
    }
    ~CatalogueForTheRun()
    {
        if (m_own)
        {
            DestroyPartCatalog();
        }
    }
    CatalogueForTheRun(const CatalogueForTheRun&) = delete;
    CatalogueForTheRun& operator=(const CatalogueForTheRun&) = delete;

private:
    bool m_own;
};

// A pilot with a machine gun, a laser, missiles and bombs, loaded into the ship through a
// file of its own, which goes again: the soak leaves the game directory as it found it.
bool FitPilot(PlayerShip& p_player)
{
    Pilot pilot(PILOT_FILE);
    pilot.SetPilotName(PILOT_NAME);
    for (int mount = 0; mount < Pilot::NUM_WEAPONS; ++mount)
    {
        pilot.SetWeaponName(mount, WEAPONS[mount]);
    }
    if (!pilot.Save(nullptr))
    {
        return false;
    }
    const bool loaded = p_player.LoadPilot(PILOT_FILE) && p_player.GetEngine() != nullptr;
    std::remove(PILOT_PATH);
    return loaded;
}

int CountWorldObjects(Level& p_level)
{
    int count = 0;
    std::vector<QuadNode*> leaves;
    p_level.GetRoot()->CollectLeaves(leaves);
    for (QuadNode* leaf : leaves)
    {
        for (int layer : {LAYER_SHIPS, LAYER_PROJECTILES, LAYER_SCENERY})
        {
            for (WorldObject* object = leaf->GetList(layer); object != nullptr; object = object->GetNextInList())
            {
                ++count;
            }
        }
    }
    return count;
}

Sample Count(Level& p_level, Campaign& p_campaign, PlayerShip& p_player, double p_seconds)
{
    Sample sample;
    sample.seconds = p_seconds;
    sample.residentBytes = ResidentBytes();
    sample.heapBytes = HeapBytes();
    std::vector<QuadNode*> leaves;
    p_level.GetRoot()->CollectLeaves(leaves);
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(LAYER_SHIPS); object != nullptr; object = object->GetNextInList())
        {
            if (dynamic_cast<Animation*>(object) != nullptr)
            {
                ++sample.explosions;
            }
            else if (object->IsEnemy())
            {
                ++sample.ships;
            }
        }
        for (WorldObject* object = leaf->GetList(LAYER_PROJECTILES); object != nullptr;
             object = object->GetNextInList())
        {
            ++sample.shots;
        }
        for (WorldObject* object = leaf->GetList(LAYER_SCENERY); object != nullptr; object = object->GetNextInList())
        {
            ++sample.scenery;
        }
    }
    sample.images = Image::GetRegisteredCount();
    sample.namedObjects = p_campaign.GetNamedObjects().GetCount();
    sample.kills = p_level.GetNumEnemies() - p_level.GetEnemiesLeft();
    sample.money = p_player.GetPilot().GetMoney();
    return sample;
}
} // namespace

size_t ResidentBytes()
{
    std::FILE* file = std::fopen("/proc/self/statm", "r");
    if (file == nullptr)
    {
        return 0;
    }
    unsigned long size = 0;
    unsigned long resident = 0;
    const int read = std::fscanf(file, "%lu %lu", &size, &resident);
    std::fclose(file);
    return read == 2 ? static_cast<size_t>(resident) * static_cast<size_t>(::sysconf(_SC_PAGESIZE)) : 0;
}

size_t HeapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

bool Run(const Options& p_options, const std::function<void(const Sample&)>& p_onSample, std::string& p_error)
{
    const DevOptions oldOptions = g_devOptions;
    g_devOptions.hasSeed = true;
    g_devOptions.seed = p_options.seed;
    GameSrand(p_options.seed);
    AttackController::ForgetBulletSpeed();

    bool ok = false;
    {
        CatalogueForTheRun catalogue;
        Campaign campaign(p_options.campaign.c_str());
        PlayerShip player;
        if (!FitPilot(player))
        {
            p_error = "cannot fit the pilot's ship (is this a game directory?)";
        }
        else
        {
            campaign.SetMission(p_options.mission.c_str());
            Level level;
            SoakMission mission(level, player);
            if (!level.Load(campaign.GetLevelFile(), nullptr, &player))
            {
                p_error = std::string("cannot load the level ") + campaign.GetLevelFile();
            }
            else
            {
                level.SetMission(&mission);
                campaign.SetMissionLink(&mission);
                SoakBot bot(level, player);
                double seconds = 0.0;
                double nextSample = 0.0;
                int32_t status = 0;
                int peak = 0;
                for (;;)
                {
                    peak = std::max(peak, CountWorldObjects(level));
                    if (seconds + 1e-9 >= nextSample)
                    {
                        Sample sample = Count(level, campaign, player, seconds);
                        sample.status = status;
                        sample.peakObjects = peak;
                        peak = 0;
                        p_onSample(sample);
                        nextSample += p_options.sampleEvery;
                    }
                    if (seconds + 1e-9 >= p_options.seconds)
                    {
                        break;
                    }
                    bot.Act(p_options.frameTime);
                    level.Update(p_options.frameTime);
                    status = campaign.GetStatus();
                    seconds += p_options.frameTime;
                }
                campaign.SetMissionLink(nullptr);
                ok = true;
            }
        }
    }
    g_devOptions = oldOptions;
    AttackController::ForgetBulletSpeed();
    return ok;
}

} // namespace soak
