#pragma once

#include "ui/Draggable.h"
#include "ui/InputObject.h"

#include <cstdint>
#include <memory>

// A picture of the HUD (the background) with slots where the HUD's pieces may sit; the player
// drags a piece and, when it is let go, it snaps onto the nearest slot no other piece holds.
class HudLayoutEditor : public InputObject
{
public:
    explicit HudLayoutEditor(Cursor* p_pCursor);
    ~HudLayoutEditor() override;

    bool Update(float p_dt) override;
    bool Render() override;
    // The pieces move along with the editor.
    void SetPosition(float p_x, float p_y) override;
    void Move(double p_dx, double p_dy) override;

    // A slot at (p_x, p_y) from the editor's position; the first has index 0, each later one
    // the index after the newest.
    void AddSlot(int32_t p_x, int32_t p_y);
    // A new piece in the slot with that index (the newest slot when none has it); the caller
    // loads its picture.
    Draggable* AddPiece(int32_t p_slotIndex);
    // The slot the piece sits in; -1 for an unknown piece.
    int32_t GetPieceSlot(int32_t p_pieceIndex) const;
    // Tints every piece's picture.
    void SetColor(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha);

private:
    struct Slot
    {
        int32_t m_x = 0;
        int32_t m_y = 0;
        int32_t m_index = 0;
        std::unique_ptr<Slot> m_pNext;
    };
    struct Piece
    {
        std::unique_ptr<Draggable> m_pItem;
        int32_t m_index = 0;
        int32_t m_slot = -1;
        std::unique_ptr<Piece> m_pNext;
    };

    const Slot* FindSlot(int32_t p_index) const;
    // The slot for a piece let go at its position.
    const Slot* ChooseSlot(const Piece& p_piece) const;
    bool IsHeldByOther(const Slot& p_slot, const Piece& p_piece) const;
    void PlaceOnSlot(Piece& p_piece, const Slot& p_slot);

    std::unique_ptr<Slot> m_pSlots;   // newest first
    std::unique_ptr<Piece> m_pPieces; // newest first
};
