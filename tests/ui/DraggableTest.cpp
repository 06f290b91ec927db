#include "ui/Draggable.h"
#include "ui/HudLayoutEditor.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <utility>

using uitest::UiInput;

namespace
{
constexpr float DT = 0.02f;

// An item with a 40 x 20 picture-sized image (the picture itself is not there).
void Shape(Draggable& p_item, float p_x, float p_y)
{
    p_item.LoadImage(nullptr);
    p_item.SetSize(40, 20);
    p_item.SetPosition(p_x, p_y);
}

std::pair<double, double> Where(const InputObject& p_object)
{
    return {p_object.GetX(), p_object.GetY()};
}

// Takes anything let go while the cursor is inside its rectangle.
class RectTarget : public DropTarget
{
public:
    RectTarget(Cursor& p_cursor, int32_t p_x, int32_t p_y, int32_t p_w, int32_t p_h)
        : m_cursor(p_cursor), m_x(p_x), m_y(p_y), m_w(p_w), m_h(p_h)
    {
    }
    bool TakesDrop(Draggable* p_item) override
    {
        ++m_asked;
        int32_t x = 0;
        int32_t y = 0;
        m_cursor.GetPosition(x, y);
        return p_item != nullptr && m_x <= x && x < m_x + m_w && m_y <= y && y < m_y + m_h;
    }
    int m_asked = 0;

private:
    Cursor& m_cursor;
    int32_t m_x, m_y, m_w, m_h;
};
} // namespace

TEST(DraggableTest, FollowsTheCursorFromWhereItWasGrabbedUntilLetGo)
{
    UiInput ui;
    Draggable item(&ui.cursor);
    Shape(item, 100.0f, 100.0f);

    // A press beside it, then moving over it with the button held, does not pick it up.
    ui.Frame(150, 110, true);
    item.Update(DT);
    ui.Frame(110, 110, true);
    item.Update(DT);
    EXPECT_FALSE(item.IsDragging());
    ui.Frame(110, 110, false);
    item.Update(DT);
    EXPECT_FALSE(item.WasDropped());

    // Grabbed 10, 5 into it: it keeps that offset.
    ui.Frame(110, 105, true);
    item.Update(DT);
    EXPECT_TRUE(item.IsDragging());
    EXPECT_EQ(std::make_pair(100.0, 100.0), Where(item));
    ui.Frame(300, 405, true);
    item.Update(DT);
    EXPECT_EQ(std::make_pair(290.0, 400.0), Where(item));
    EXPECT_FALSE(item.WasDropped());

    // Let go: it stays where it was last moved, and reports the drop once.
    ui.Frame(500, 500, false);
    item.Update(DT);
    EXPECT_FALSE(item.IsDragging());
    EXPECT_EQ(std::make_pair(290.0, 400.0), Where(item));
    EXPECT_TRUE(item.WasDropped());
    EXPECT_FALSE(item.WasDropped());

    // The right and bottom edges are not the item's.
    EXPECT_TRUE(item.IsInside(290, 400));
    EXPECT_TRUE(item.IsInside(329, 419));
    EXPECT_FALSE(item.IsInside(330, 410));
    EXPECT_FALSE(item.IsInside(300, 420));
}

TEST(DraggableTest, StartDragPicksTheItemUpUnderTheCursor)
{
    UiInput ui;
    Draggable item(&ui.cursor);
    Shape(item, 50.0f, 60.0f);
    ui.Frame(70, 70, true);
    item.StartDrag();
    EXPECT_TRUE(item.IsDragging());
    ui.Frame(80, 90, true);
    item.Update(DT);
    EXPECT_EQ(std::make_pair(60.0, 80.0), Where(item));
    ui.Frame(80, 90, false);
    item.Update(DT);
    EXPECT_TRUE(item.WasDropped());

    // Without a picture nothing is inside.
    Draggable bare(&ui.cursor);
    bare.SetPosition(0.0f, 0.0f);
    EXPECT_FALSE(bare.IsInside(0, 0));
}

TEST(DraggableTest, DropTargetsAreAskedNewestFirst)
{
    UiInput ui;
    ClearDropTargets();
    RectTarget left(ui.cursor, 0, 0, 500, 768);
    RectTarget whole(ui.cursor, 0, 0, 1024, 768);
    RectTarget right(ui.cursor, 500, 0, 524, 768);
    RegisterDropTarget(&left);
    RegisterDropTarget(&whole);
    RegisterDropTarget(&right);
    ASSERT_EQ(3u, g_dropTargets.size());
    EXPECT_EQ(&right, g_dropTargets.front());

    Draggable item(&ui.cursor);
    Shape(item, 100.0f, 100.0f);
    DropTarget* target = &left;
    // Not dropped: false, and no target.
    EXPECT_FALSE(item.FindDropTarget(target));
    EXPECT_EQ(nullptr, target);
    EXPECT_EQ(0, right.m_asked);

    auto dragTo = [&](int32_t p_x, int32_t p_y) {
        ui.Frame(110, 110, true);
        item.Update(DT);
        ui.Frame(p_x, p_y, true);
        item.Update(DT);
        ui.Frame(p_x, p_y, false);
        item.Update(DT);
        item.SetPosition(100.0f, 100.0f);
    };
    // On the right: the newest target takes it before the whole-screen one is asked.
    dragTo(700, 300);
    EXPECT_TRUE(item.FindDropTarget(target));
    EXPECT_EQ(&right, target);
    EXPECT_EQ(0, whole.m_asked);
    // The drop is consumed.
    EXPECT_FALSE(item.FindDropTarget(target));
    EXPECT_FALSE(item.WasDropped());
    // On the left: the right one refuses, the whole-screen one registered next takes it.
    dragTo(200, 300);
    EXPECT_TRUE(item.FindDropTarget(target));
    EXPECT_EQ(&whole, target);
    EXPECT_EQ(0, left.m_asked);

    // Nobody takes it: dropped, with no target.
    ClearDropTargets();
    EXPECT_TRUE(g_dropTargets.empty());
    dragTo(200, 300);
    target = &left;
    EXPECT_TRUE(item.FindDropTarget(target));
    EXPECT_EQ(nullptr, target);
}

TEST(DraggableTextTest, IsAsLargeAsItsText)
{
    UiInput ui;
    DraggableText text(&ui.cursor);
    text.SetPosition(100.0f, 100.0f);
    // Without text: never inside, never picked up.
    EXPECT_FALSE(text.IsInside(100, 100));
    ui.Frame(100, 100, true);
    text.Update(DT);
    EXPECT_FALSE(text.IsDragging());
    ui.Frame(100, 100, false);
    text.Update(DT);

    text.SetText("Plasma Cannon");
    const int width = text.GetWidth();
    ASSERT_GT(width, 40);
    EXPECT_EQ(16, text.GetHeight()); // "Tahoma" 12 bold
    EXPECT_TRUE(text.IsInside(100, 100));
    EXPECT_TRUE(text.IsInside(100 + width - 1, 115));
    EXPECT_FALSE(text.IsInside(100 + width, 110));
    EXPECT_FALSE(text.IsInside(110, 116));
    ui.Frame(105, 105, true);
    text.Update(DT);
    EXPECT_TRUE(text.IsDragging());
}

namespace
{
// The options menu's editor: slots 0..7 around a 300 x 225 picture at (410, 280), the radar
// in slot 0, the status panel in slot 2, the messages in slot 7.
class HudLayoutEditorTest : public ::testing::Test
{
protected:
    static constexpr int32_t SLOTS[8][2] = {{0, 0},    {112, 0}, {225, 0},   {0, 84},
                                            {225, 84}, {0, 169}, {112, 169}, {225, 169}};

    HudLayoutEditorTest() : m_editor(&m_ui.cursor)
    {
        m_editor.SetPosition(410.0f, 280.0f);
        for (const auto& slot : SLOTS)
        {
            m_editor.AddSlot(slot[0], slot[1]);
        }
        for (int32_t slot : {0, 2, 7})
        {
            m_pieces.push_back(m_editor.AddPiece(slot));
            m_pieces.back()->LoadImage(nullptr);
            m_pieces.back()->SetSize(75, 56);
        }
    }

    // Grabs piece p_piece at its top-left corner and lets go with that corner at (p_x, p_y).
    void Drop(int32_t p_piece, int32_t p_x, int32_t p_y)
    {
        Draggable* piece = m_pieces[p_piece];
        const int32_t x = static_cast<int32_t>(piece->GetX());
        const int32_t y = static_cast<int32_t>(piece->GetY());
        m_ui.Frame(x, y, false);
        m_editor.Update(DT);
        m_ui.Frame(x, y, true);
        m_editor.Update(DT);
        m_ui.Frame(p_x, p_y, true);
        m_editor.Update(DT);
        m_ui.Frame(p_x, p_y, false);
        m_editor.Update(DT);
    }

    UiInput m_ui;
    HudLayoutEditor m_editor;
    std::vector<Draggable*> m_pieces;
};
} // namespace

TEST_F(HudLayoutEditorTest, PiecesStartInTheirSlots)
{
    EXPECT_EQ(0, m_editor.GetPieceSlot(0));
    EXPECT_EQ(2, m_editor.GetPieceSlot(1));
    EXPECT_EQ(7, m_editor.GetPieceSlot(2));
    EXPECT_EQ(-1, m_editor.GetPieceSlot(3));
    EXPECT_EQ(std::make_pair(410.0, 280.0), Where(*m_pieces[0]));
    EXPECT_EQ(std::make_pair(635.0, 280.0), Where(*m_pieces[1]));
    EXPECT_EQ(std::make_pair(635.0, 449.0), Where(*m_pieces[2]));

    // A piece for a slot index that does not exist goes to the newest slot.
    Draggable* extra = m_editor.AddPiece(42);
    EXPECT_EQ(7, m_editor.GetPieceSlot(3));
    EXPECT_EQ(std::make_pair(635.0, 449.0), Where(*extra));

    // The pieces move with the editor.
    m_editor.Move(10.0, 20.0);
    EXPECT_EQ(std::make_pair(420.0, 300.0), Where(*m_pieces[0]));
    m_editor.SetPosition(410.0f, 280.0f);
    EXPECT_EQ(std::make_pair(635.0, 280.0), Where(*m_pieces[1]));
}

TEST_F(HudLayoutEditorTest, ADroppedPieceSnapsToTheNearestFreeSlot)
{
    // Between slots 3 (0, 84) and 5 (0, 169), nearer 5: the radar goes to 5.
    Drop(0, 415, 280 + 140);
    EXPECT_EQ(5, m_editor.GetPieceSlot(0));
    EXPECT_EQ(std::make_pair(410.0, 449.0), Where(*m_pieces[0]));

    // Onto slot 2, held by the status panel: the nearest free one instead, slot 4 (225, 84)
    // at 85 rather than slot 1 (112, 0) at 113.
    Drop(0, 635, 280);
    EXPECT_EQ(4, m_editor.GetPieceSlot(0));
    EXPECT_EQ(2, m_editor.GetPieceSlot(1));

    // Dropping a piece on its own slot leaves it there.
    Drop(1, 640, 284);
    EXPECT_EQ(2, m_editor.GetPieceSlot(1));
    EXPECT_EQ(std::make_pair(635.0, 280.0), Where(*m_pieces[1]));

    // Exactly between slots 0 (0, 0) and 1 (112, 0): the newer slot, 1, comes first in the list.
    Drop(2, 410 + 56, 280);
    EXPECT_EQ(1, m_editor.GetPieceSlot(2));

    // Far off the picture: the nearest free slot still.
    Drop(2, 1000, 760);
    EXPECT_EQ(7, m_editor.GetPieceSlot(2));

    // The three pieces never share a slot.
    for (int32_t target : {0, 1, 2, 3, 4, 5, 6, 7})
    {
        Drop(target % 3, 410 + SLOTS[target][0], 280 + SLOTS[target][1]);
        const int32_t a = m_editor.GetPieceSlot(0);
        const int32_t b = m_editor.GetPieceSlot(1);
        const int32_t c = m_editor.GetPieceSlot(2);
        EXPECT_TRUE(a != b && b != c && a != c) << a << " " << b << " " << c;
    }
}

TEST_F(HudLayoutEditorTest, WhenEverySlotIsHeldThePieceGoesToTheNewest)
{
    HudLayoutEditor editor(&m_ui.cursor);
    editor.AddSlot(0, 0);
    editor.AddSlot(100, 0);
    Draggable* a = editor.AddPiece(0);
    Draggable* b = editor.AddPiece(1);
    Draggable* c = editor.AddPiece(0);
    for (Draggable* piece : {a, b, c})
    {
        piece->LoadImage(nullptr);
        piece->SetSize(20, 20);
    }
    // c shares slot 0 with a from the start.
    m_ui.Frame(5, 5, false);
    editor.Update(DT);
    m_ui.Frame(5, 5, true);
    editor.Update(DT);
    m_ui.Frame(8, 8, false);
    editor.Update(DT);
    // Both a and c were under the cursor. c, updated first, finds slot 0 held by a and slot 1
    // by b, and goes to the newest slot; then a finds its own slot free.
    EXPECT_EQ(1, editor.GetPieceSlot(2));
    EXPECT_EQ(std::make_pair(100.0, 0.0), Where(*c));
    EXPECT_EQ(0, editor.GetPieceSlot(0));
    EXPECT_EQ(1, editor.GetPieceSlot(1));

    // Tinting reaches every piece.
    editor.SetColor(10, 20, 30, 40);
    EXPECT_EQ(30, b->GetImage()->GetColor()[2]);
    EXPECT_EQ(40, c->GetImage()->GetColor()[3]);
}
