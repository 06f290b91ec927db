#pragma once

#include <array>
#include <memory>

#include "gfx/Image.h"
#include "ui/InputObject.h"

class FramedBox;
class Part;
class StaticText;

// The part the player last picked: its name, price, kind and what it does for the ship, with
// its picture where it has one.
class PartInfoPanel : public InputObject
{
public:
    static constexpr int32_t WIDTH = 550;
    static constexpr int32_t HEIGHT = 300;
    static constexpr int MAX_ROWS = 3;

    PartInfoPanel(Cursor* p_pCursor, float p_x, float p_y);
    ~PartInfoPanel() override;

    bool Update(float p_dt) override;
    bool Render() override;
    // Shows a part; null (a name the catalogue does not know) changes nothing. Power plants
    // and copilots set only the name and the price.
    void Show(Part* p_part);

    const StaticText& GetName() const { return *m_pName; }
    const StaticText& GetTypeLine() const { return *m_pType; }
    const StaticText& GetPrice() const { return *m_pPrice; }
    int GetRowCount() const { return m_rowCount; }
    const StaticText& GetLabel(int p_row) const { return *m_pLabels[p_row]; }
    const StaticText& GetValue(int p_row) const { return *m_pValues[p_row]; }

private:
    void SetRow(int p_row, const char* p_label, const char* p_value);

    std::unique_ptr<FramedBox> m_pBox;
    std::unique_ptr<StaticText> m_pName;
    std::unique_ptr<StaticText> m_pType;
    std::unique_ptr<StaticText> m_pPrice;
    std::array<std::unique_ptr<StaticText>, MAX_ROWS> m_pLabels;
    std::array<std::unique_ptr<StaticText>, MAX_ROWS> m_pValues;
    int m_rowCount;
    // The hull's own picture (its ship, flying straight), or the part's.
    Image m_hullPicture;
    Part* m_pShown;
};
