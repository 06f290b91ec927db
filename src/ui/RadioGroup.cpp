#include "ui/RadioGroup.h"

RadioGroup::RadioGroup(Cursor* p_pCursor) : InputObject(p_pCursor), m_pSelected(nullptr) {}

RadioGroup::~RadioGroup()
{
    // Entries one by one, so a long list never recurses.
    while (m_pButtons)
    {
        m_pButtons = std::move(m_pButtons->m_pNext);
    }
}

ToggleButton* RadioGroup::AddButton()
{
    auto entry = std::make_unique<Entry>();
    entry->m_pButton = std::make_unique<ToggleButton>(m_pCursor);
    if (!m_pButtons)
    {
        entry->m_index = 0;
        entry->m_pButton->SetPressed(true);
        m_pSelected = entry.get();
    }
    else
    {
        entry->m_index = m_pButtons->m_index + 1;
    }
    entry->m_pNext = std::move(m_pButtons);
    m_pButtons = std::move(entry);
    return m_pButtons->m_pButton.get();
}

bool RadioGroup::Update(float p_dt)
{
    for (Entry* entry = m_pButtons.get(); entry != nullptr; entry = entry->m_pNext.get())
    {
        ToggleButton& button = *entry->m_pButton;
        button.Update(p_dt);
        if (button.IsPressed() && entry != m_pSelected)
        {
            if (m_pSelected != nullptr)
            {
                m_pSelected->m_pButton->SetPressed(false);
            }
            m_pSelected = entry;
        }
        else if (!button.IsPressed() && entry == m_pSelected)
        {
            // The selection can only move, never vanish.
            button.SetPressed(true);
        }
    }
    return true;
}

bool RadioGroup::Render()
{
    for (Entry* entry = m_pButtons.get(); entry != nullptr; entry = entry->m_pNext.get())
    {
        entry->m_pButton->Render();
    }
    return true;
}

bool RadioGroup::Select(int32_t p_index)
{
    for (Entry* entry = m_pButtons.get(); entry != nullptr; entry = entry->m_pNext.get())
    {
        if (entry->m_index == p_index)
        {
            if (m_pSelected != nullptr)
            {
                m_pSelected->m_pButton->SetPressed(false);
            }
            entry->m_pButton->SetPressed(true);
            m_pSelected = entry;
            return true;
        }
    }
    return false;
}

int32_t RadioGroup::GetSelectedIndex() const
{
    return m_pSelected != nullptr ? m_pSelected->m_index : -1;
}

ToggleButton* RadioGroup::GetSelectedButton() const
{
    return m_pSelected != nullptr ? m_pSelected->m_pButton.get() : nullptr;
}
