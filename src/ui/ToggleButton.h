#pragma once

#include "ui/Button.h"

// A button that stays pressed: each press of the left button on it flips it. It counts no
// clicks; its owner reads IsPressed (or GetClick's answer).
class ToggleButton : public Button
{
public:
    explicit ToggleButton(Cursor* p_pCursor);
    ~ToggleButton() override;

    bool Update(float p_dt) override;
};
