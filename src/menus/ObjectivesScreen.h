#pragma once

#include "gfx/Image.h"
#include "ui/Button.h"
#include "ui/FramedBox.h"
#include "ui/StaticObjects.h"

#include <cstdint>
#include <memory>
#include <vector>

// The in-game menu's page of the mission's objectives: a translucent panel centred on the
// screen with a title, one line per objective (a check mark beside those done) and an OK
// button. The campaign fills it once per mission and marks objectives done as they are met.
class ObjectivesScreen : public InputObject
{
public:
    // The panel's width; its height grows with the objectives.
    static constexpr int32_t PANEL_WIDTH = 375;
    // The text of every objective wraps at this width.
    static constexpr int32_t TEXT_WIDTH = 300;
    // The check mark sits this far left of its objective's text.
    static constexpr int32_t CHECK_OFFSET = 45;

    explicit ObjectivesScreen(Cursor* p_pCursor);
    ~ObjectivesScreen() override;

    // Appends an objective, not done yet, and lays the panel out again. A null text is an
    // empty line.
    void AddObjective(const char* p_text, int32_t p_id);
    // Every objective with this id that is not done yet becomes done.
    void MarkDone(int32_t p_id);
    bool AllDone() const { return m_remaining < 1; }
    // Whether the done objectives cover every bit of p_mask (bit 0 is objective 1).
    bool AreDone(int32_t p_mask) const;

    // Updates the OK button: false once it was clicked (the page is to be closed).
    bool Update(float p_dt) override;
    bool Render() override;

    int32_t GetNumObjectives() const { return static_cast<int32_t>(m_entries.size()); }
    int32_t GetRemaining() const { return m_remaining; }
    bool IsDone(int32_t p_index) const;
    const WrappedText* GetText(int32_t p_index) const;
    const StaticText* GetBullet(int32_t p_index) const;
    const FramedBox& GetFrame() const { return m_frame; }
    const StaticText& GetTitle() const { return m_title; }
    Button& GetOkButton() { return m_okButton; }

private:
    struct Entry
    {
        int32_t id = 0;
        bool done = false;
        std::unique_ptr<StaticText> pBullet;
        std::unique_ptr<WrappedText> pText;
    };

    void Layout();

    FramedBox m_frame;
    StaticText m_title;
    Button m_okButton;
    Image m_check;
    std::vector<Entry> m_entries; // in the order added
    int32_t m_remaining;
};
