#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ui/Draggable.h"

class Button;

// A line of a shop list: a part's name (and kind) the player can pick up and drag. What the
// line shows may say more (the inventory's quantity) or less (a name cut to fit its panel);
// the part it stands for is kept apart from the text.
class PartEntry : public DraggableText
{
public:
    // A line that is not a weapon mount of the ship.
    static constexpr int NO_MOUNT = -1;

    PartEntry(Cursor* p_pCursor, const std::string& p_partName, int p_kind, int p_mount = NO_MOUNT);

    // Shows p_text in the kind's colour, cut with "..." where it would be wider than p_maxWidth.
    void SetLine(const std::string& p_text, int p_maxWidth);
    // A copy of this line for dragging: same part, text, colour and place.
    std::unique_ptr<PartEntry> Copy() const;

    const std::string& GetPartName() const { return m_partName; }
    int GetPartKind() const { return m_partKind; }
    int GetMount() const { return m_mount; }

    // Hulls light green, engines light yellow, shields light cyan, weapons light red, any other
    // kind light violet.
    static void GetKindColour(int p_kind, double p_rgb[3]);

private:
    std::string m_partName;
    int m_partKind;
    int m_mount;
};

// A scrolling column of part lines between an up and a down arrow button: a fixed number of
// lines shows at a time, and the arrows move the view one line.
class PartList : public InputObject
{
public:
    // The arrows' pictures are this size.
    static constexpr int32_t ARROW_WIDTH = 80;
    static constexpr int32_t ARROW_HEIGHT = 15;
    // Between an arrow and the lines.
    static constexpr int32_t ARROW_GAP = 3;

    // p_width: the column's width (the arrows are centred in it, lines are cut to it).
    PartList(Cursor* p_pCursor, int p_visibleLines, int32_t p_lineHeight, int32_t p_width);
    ~PartList() override;

    // The top-left corner of the up arrow's row; the lines follow below it.
    void SetPosition(float p_x, float p_y) override;
    bool Update(float p_dt) override;
    bool Render() override;
    int GetWidth() const override { return m_width; }
    // Both arrows and the lines between them.
    int GetHeight() const override;

    // Clearing keeps the view where it is, so a list filled again shows the same lines; after
    // filling, Scroll(0) brings the view back within the lines when the list got shorter.
    void Clear();
    PartEntry* Add(const std::string& p_partName, int p_kind, const std::string& p_text);
    // Moves the view by p_lines (negative: up), never past either end.
    void Scroll(int p_lines);
    // The line shown under (p_x, p_y), or null.
    PartEntry* EntryAt(int32_t p_x, int32_t p_y) const;

    int GetCount() const { return static_cast<int>(m_entries.size()); }
    PartEntry* GetEntry(int p_index) const;
    int GetFirstVisible() const { return m_first; }
    int GetVisibleLines() const { return m_visibleLines; }
    int32_t GetLineHeight() const { return m_lineHeight; }
    // Where line p_index of the view (0 = the top line shown) is drawn.
    int32_t GetLineY(int p_row) const;
    Button* GetUpArrow() const { return m_pUp.get(); }
    Button* GetDownArrow() const { return m_pDown.get(); }

private:
    void PlaceLines();

    std::vector<std::unique_ptr<PartEntry>> m_entries;
    std::unique_ptr<Button> m_pUp;
    std::unique_ptr<Button> m_pDown;
    int m_visibleLines;
    int32_t m_lineHeight;
    int32_t m_width;
    int m_first;
};
