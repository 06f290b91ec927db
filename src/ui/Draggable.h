#pragma once

#include "ui/InputObject.h"

#include <cstdint>
#include <list>
#include <string>

class Draggable;
class Font;

// Something a dragged item can be dropped on (the shop's panels).
class DropTarget
{
public:
    virtual ~DropTarget() = default;
    // Whether the dropped item lands on this target.
    virtual bool TakesDrop(Draggable* p_item) = 0;
};

// An item the player drags with the left mouse button: pressed on, it follows the cursor
// (keeping where it was grabbed) until the button is let go, and then counts as dropped.
class Draggable : public InputObject
{
public:
    explicit Draggable(Cursor* p_pCursor);
    ~Draggable() override;

    bool Update(float p_dt) override;
    bool Render() override;
    // On the picture; never without one.
    virtual bool IsInside(int32_t p_x, int32_t p_y) const;
    // Whether the item was let go since the last call; clears it.
    virtual bool WasDropped();

    // Begins a drag from where the cursor is now, as if the item had been pressed there.
    void StartDrag();
    // When the item was dropped: true, with p_target the first registered target that takes
    // it or null. Consumes the drop as WasDropped does. False when it was not dropped.
    bool FindDropTarget(DropTarget*& p_target);

    bool IsDragging() const { return m_dragging; }

protected:
    bool m_dragging;
    bool m_dropped;
    bool m_lastButtonDown;
    int32_t m_dragOffsetX;
    int32_t m_dragOffsetY;
};

// A draggable line of text in "Tahoma" 12 bold, white; without text it is never inside and
// draws nothing.
class DraggableText : public Draggable
{
public:
    explicit DraggableText(Cursor* p_pCursor);
    ~DraggableText() override;

    bool Render() override;
    bool IsInside(int32_t p_x, int32_t p_y) const override;
    int GetWidth() const override;
    int GetHeight() const override;

    void SetText(const char* p_text);
    const std::string& GetText() const { return m_text; }
    void SetColor(double p_red, double p_green, double p_blue, double p_alpha);
    // With a shadow the text is first drawn dark a pixel down and right, so that light text
    // still reads over a light background.
    void SetShadow(bool p_shadow) { m_shadow = p_shadow; }

private:
    std::string m_text;
    bool m_hasText;
    bool m_shadow = false;
    Font* m_pFont;
    double m_color[4];
};

// Every object that can take a dropped item, newest first; not owned.
extern std::list<DropTarget*> g_dropTargets;
// Adds p_target first, so it is asked before those registered earlier.
void RegisterDropTarget(DropTarget* p_target);
void ClearDropTargets();
