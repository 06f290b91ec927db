#pragma once

#include "ui/InputObject.h"
#include "ui/ToggleButton.h"

#include <cstdint>
#include <memory>

// Toggle buttons of which exactly one is pressed: pressing another moves the selection,
// pressing the selected one leaves it selected.
class RadioGroup : public InputObject
{
public:
    explicit RadioGroup(Cursor* p_pCursor);
    ~RadioGroup() override;

    // A new toggle button with the group's cursor; the caller loads its pictures, sets its
    // text and places it. The first one added starts selected and has index 0, each later
    // one the index after the previous one.
    ToggleButton* AddButton();

    bool Update(float p_dt) override;
    bool Render() override;

    // Moves the selection to the button with that index; false (nothing changes) when there is none.
    bool Select(int32_t p_index);
    // The index of the selected button, -1 while the group is empty.
    int32_t GetSelectedIndex() const;
    ToggleButton* GetSelectedButton() const;

private:
    struct Entry
    {
        std::unique_ptr<ToggleButton> m_pButton;
        int32_t m_index = 0;
        std::unique_ptr<Entry> m_pNext;
    };

    std::unique_ptr<Entry> m_pButtons; // newest first
    Entry* m_pSelected;
};
