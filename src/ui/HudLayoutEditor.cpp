#include "ui/HudLayoutEditor.h"

#include "gfx/Image.h"
#include "ui/UiDraw.h"

HudLayoutEditor::HudLayoutEditor(Cursor* p_pCursor) : InputObject(p_pCursor) {}

HudLayoutEditor::~HudLayoutEditor()
{
    while (m_pPieces)
    {
        m_pPieces = std::move(m_pPieces->m_pNext);
    }
    while (m_pSlots)
    {
        m_pSlots = std::move(m_pSlots->m_pNext);
    }
}

void HudLayoutEditor::SetPosition(float p_x, float p_y)
{
    Move(p_x - GetX(), p_y - GetY());
}

void HudLayoutEditor::Move(double p_dx, double p_dy)
{
    InputObject::Move(p_dx, p_dy);
    for (Piece* piece = m_pPieces.get(); piece != nullptr; piece = piece->m_pNext.get())
    {
        piece->m_pItem->Move(p_dx, p_dy);
    }
}

void HudLayoutEditor::AddSlot(int32_t p_x, int32_t p_y)
{
    auto slot = std::make_unique<Slot>();
    slot->m_x = p_x;
    slot->m_y = p_y;
    slot->m_index = m_pSlots ? m_pSlots->m_index + 1 : 0;
    slot->m_pNext = std::move(m_pSlots);
    m_pSlots = std::move(slot);
}

const HudLayoutEditor::Slot* HudLayoutEditor::FindSlot(int32_t p_index) const
{
    for (const Slot* slot = m_pSlots.get(); slot != nullptr; slot = slot->m_pNext.get())
    {
        if (slot->m_index == p_index)
        {
            return slot;
        }
    }
    return m_pSlots.get();
}

void HudLayoutEditor::PlaceOnSlot(Piece& p_piece, const Slot& p_slot)
{
    p_piece.m_slot = p_slot.m_index;
    p_piece.m_pItem->SetPosition(static_cast<float>(GetX() + p_slot.m_x), static_cast<float>(GetY() + p_slot.m_y));
}

Draggable* HudLayoutEditor::AddPiece(int32_t p_slotIndex)
{
    auto piece = std::make_unique<Piece>();
    piece->m_pItem = std::make_unique<Draggable>(m_pCursor);
    piece->m_index = m_pPieces ? m_pPieces->m_index + 1 : 0;
    if (const Slot* slot = FindSlot(p_slotIndex))
    {
        PlaceOnSlot(*piece, *slot);
    }
    else
    {
        piece->m_pItem->SetPosition(static_cast<float>(GetX()), static_cast<float>(GetY()));
    }
    piece->m_pNext = std::move(m_pPieces);
    m_pPieces = std::move(piece);
    return m_pPieces->m_pItem.get();
}

int32_t HudLayoutEditor::GetPieceSlot(int32_t p_pieceIndex) const
{
    for (const Piece* piece = m_pPieces.get(); piece != nullptr; piece = piece->m_pNext.get())
    {
        if (piece->m_index == p_pieceIndex)
        {
            return piece->m_slot;
        }
    }
    return -1;
}

void HudLayoutEditor::SetColor(uint8_t p_red, uint8_t p_green, uint8_t p_blue, uint8_t p_alpha)
{
    for (Piece* piece = m_pPieces.get(); piece != nullptr; piece = piece->m_pNext.get())
    {
        if (Image* image = piece->m_pItem->GetImage())
        {
            image->SetColor(p_red, p_green, p_blue, p_alpha);
        }
    }
}

bool HudLayoutEditor::IsHeldByOther(const Slot& p_slot, const Piece& p_piece) const
{
    for (const Piece* other = m_pPieces.get(); other != nullptr; other = other->m_pNext.get())
    {
        if (other != &p_piece && other->m_slot == p_slot.m_index)
        {
            return true;
        }
    }
    return false;
}

const HudLayoutEditor::Slot* HudLayoutEditor::ChooseSlot(const Piece& p_piece) const
{
    const double pieceX = p_piece.m_pItem->GetX();
    const double pieceY = p_piece.m_pItem->GetY();
    const Slot* best = nullptr;
    uint32_t bestDistance = 0;
    for (const Slot* slot = m_pSlots.get(); slot != nullptr; slot = slot->m_pNext.get())
    {
        if (IsHeldByOther(*slot, p_piece))
        {
            continue;
        }
        const double dx = pieceX - (GetX() + slot->m_x);
        const double dy = pieceY - (GetY() + slot->m_y);
        const uint32_t distance = static_cast<uint32_t>(dx * dx) + static_cast<uint32_t>(dy * dy);
        // Strictly nearer only: of equal distances the earlier slot in the list stays.
        if (best == nullptr || distance < bestDistance)
        {
            best = slot;
            bestDistance = distance;
        }
    }
    return best != nullptr ? best : m_pSlots.get();
}

bool HudLayoutEditor::Update(float p_dt)
{
    for (Piece* piece = m_pPieces.get(); piece != nullptr; piece = piece->m_pNext.get())
    {
        piece->m_pItem->Update(p_dt);
        if (piece->m_pItem->WasDropped())
        {
            if (const Slot* slot = ChooseSlot(*piece))
            {
                PlaceOnSlot(*piece, *slot);
            }
        }
    }
    return true;
}

bool HudLayoutEditor::Render()
{
    if (m_pImage && ui::HasPicture(*m_pImage))
    {
        m_pImage->Draw(ui::Whole(GetX()), ui::Whole(GetY()), 0.0, false);
    }
    for (Piece* piece = m_pPieces.get(); piece != nullptr; piece = piece->m_pNext.get())
    {
        piece->m_pItem->Render();
    }
    return true;
}
