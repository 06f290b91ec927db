#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "app/Mode.h"
#include "gfx/Image.h"
#include "ui/StaticObjects.h"

class Button;
class FramedBox;
class InputSystem;
class Shop;

// The screen between missions: the next mission's briefing with the difficulty in play over
// a planet, "Start Mission", "Shop" and "Quit", and in a two-player game the scoreboard of
// kills and money. The shop opens over it and takes the whole screen until "Done".
class HubMode : public GameplayMode
{
public:
    static constexpr const char* BACKGROUND = "art\\planets.bmp";
    static constexpr int32_t BUTTON_Y = 680;
    static constexpr int32_t START_X = 850;
    static constexpr int32_t SHOP_X = 705;
    static constexpr int32_t QUIT_X = 560;
    static constexpr int32_t BUTTON_WIDTH = 140;
    static constexpr int32_t BUTTON_HEIGHT = 40;
    static constexpr int32_t BRIEFING_X = 250;
    static constexpr int32_t BRIEFING_Y = 300;
    static constexpr int32_t BRIEFING_WIDTH = 600;
    // The difficulty in play, on a line of its own above the briefing.
    static constexpr int32_t DIFFICULTY_Y = 265;

    // Builds the scoreboard from the two-player pilot files as they are now.
    HubMode();
    ~HubMode() override;

    bool Initialize() override { return true; }
    // The picture, the buttons and the campaign's briefing.
    bool Init(InputSystem* p_input);
    bool Shutdown() override;
    // 6 to stay, 2 to fly the mission, 0 after "Quit" (the campaign back at its first mission).
    int32_t Update(float p_dt) override;
    bool Render() override;
    // The buttons read the cursor in Update.
    bool HandleInput(InputSystem* p_input) override;

    Shop* GetShop() const { return m_pShop.get(); }
    Button* GetStartButton() const { return m_pStartButton.get(); }
    Button* GetShopButton() const { return m_pShopButton.get(); }
    Button* GetQuitButton() const { return m_pQuitButton.get(); }
    const WrappedText& GetBriefing() const { return m_briefing; }
    const StaticText& GetDifficultyText() const { return m_difficulty; }
    // The scoreboard's texts: the title, then per player its name, "Kills:", the kills,
    // "Money:" and the money.
    const std::vector<std::unique_ptr<StaticText>>& GetScoreboard() const { return m_scoreboard; }

private:
    void BuildScoreboard();
    StaticText& AddScoreText(const char* p_text, int32_t p_size, int32_t p_style, int32_t p_x, int32_t p_y);

    WrappedText m_briefing;
    StaticText m_difficulty;
    Image m_background;
    std::vector<std::unique_ptr<StaticText>> m_scoreboard;
    // Under the scoreboard, so that it reads over the planet.
    std::unique_ptr<FramedBox> m_pScorePanel;
    std::unique_ptr<Button> m_pStartButton;
    std::unique_ptr<Button> m_pShopButton;
    std::unique_ptr<Button> m_pQuitButton;
    std::unique_ptr<Shop> m_pShop;
};
