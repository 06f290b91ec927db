#include "sim/HullAnimation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "platform/Paths.h"

namespace
{
// Lean steps are numbered with four digits.
const int MAX_TURN_FRAMES = 10000;
// The frame time every hull animation starts with; Draw sets the real one.
const float START_FRAME_TIME = 57.6f;

bool CanOpen(const std::string& p_gameName)
{
    const std::string path = platform::ResolvePath(p_gameName);
    if (path.empty())
    {
        return false;
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
    {
        return false;
    }
    std::fclose(file);
    return true;
}

std::string Numbered(const std::string& p_base, const char* p_part, int p_index)
{
    char suffix[48];
    std::snprintf(suffix, sizeof(suffix), "%s%04d.bmp", p_part, p_index);
    return p_base + suffix;
}

std::unique_ptr<Animation> MakePair(const std::string& p_short, const std::string& p_long)
{
    auto animation = std::make_unique<Animation>();
    animation->Init(2, START_FRAME_TIME, true);
    animation->AddImage(p_short.c_str());
    animation->AddImage(p_long.c_str());
    return animation;
}
} // namespace

HullAnimation::HullAnimation() = default;

HullAnimation::~HullAnimation() = default;

bool HullAnimation::LoadHull(const std::string& p_baseName)
{
    m_pLeftTurn.clear();
    m_pRightTurn.clear();
    m_numTurnFrames = 0;
    m_lastTurn = 0.0;

    const std::string shortStill = p_baseName + "_short_still0000.bmp";
    const std::string longStill = p_baseName + "_long_still0000.bmp";
    if (CanOpen(shortStill))
    {
        const bool hasLong = CanOpen(longStill);
        Init(hasLong ? 2 : 1, START_FRAME_TIME, true);
        AddImage(shortStill.c_str());
        if (hasLong)
        {
            AddImage(longStill.c_str());
        }
    }
    else
    {
        Init(1, START_FRAME_TIME, true);
        AddImage(p_baseName.c_str());
    }

    int count = 0;
    while (count < MAX_TURN_FRAMES && CanOpen(Numbered(p_baseName, "_short_left", count)) &&
           CanOpen(Numbered(p_baseName, "_long_left", count)) && CanOpen(Numbered(p_baseName, "_short_right", count)) &&
           CanOpen(Numbered(p_baseName, "_long_right", count)))
    {
        ++count;
    }
    for (int i = 0; i < count; ++i)
    {
        m_pLeftTurn.push_back(MakePair(Numbered(p_baseName, "_short_left", i), Numbered(p_baseName, "_long_left", i)));
        m_pRightTurn.push_back(MakePair(Numbered(p_baseName, "_short_right", i), Numbered(p_baseName, "_long_right", i)));
    }
    m_numTurnFrames = count;
    return true;
}

bool HullAnimation::Update(float p_dt)
{
    Animation::Update(p_dt);
    for (std::unique_ptr<Animation>& animation : m_pLeftTurn)
    {
        animation->Update(p_dt);
    }
    for (std::unique_ptr<Animation>& animation : m_pRightTurn)
    {
        animation->Update(p_dt);
    }
    return true;
}

Animation* HullAnimation::SelectAnimation(double p_turn, double p_speed)
{
    const float frameTime = static_cast<float>(FLAME_SPEED / std::max(p_speed, FLAME_SPEED));
    double turn = p_turn;
    const double change = turn - m_lastTurn;
    if (change > 0.1 || change < -0.1)
    {
        turn = m_lastTurn + change / 3.5;
    }
    m_lastTurn = turn;

    Animation* chosen = this;
    if (turn != 0.0 && m_numTurnFrames > 0)
    {
        const std::vector<std::unique_ptr<Animation>>& side = turn < 0.0 ? m_pLeftTurn : m_pRightTurn;
        const double lean = std::fabs(turn);
        int index = m_numTurnFrames - 1;
        const double scaled = std::trunc(m_numTurnFrames * lean);
        if (scaled < index)
        {
            index = static_cast<int>(scaled);
        }
        chosen = side[static_cast<size_t>(index)].get();
    }
    chosen->SetFrameTime(frameTime);
    return chosen;
}

void HullAnimation::Draw(double p_x, double p_y, double p_heading, double p_turn, double p_speed)
{
    Animation* animation = SelectAnimation(p_turn, p_speed);
    animation->DrawAt(p_x, p_y, p_heading);
}

Animation* HullAnimation::GetLeftTurn(int p_index) const
{
    return p_index >= 0 && p_index < m_numTurnFrames ? m_pLeftTurn[static_cast<size_t>(p_index)].get() : nullptr;
}

Animation* HullAnimation::GetRightTurn(int p_index) const
{
    return p_index >= 0 && p_index < m_numTurnFrames ? m_pRightTurn[static_cast<size_t>(p_index)].get() : nullptr;
}
