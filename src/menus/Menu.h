#pragma once

#include <cstdint>
#include <memory>
#include <vector>

class Cursor;
class InputObject;
class InputSystem;

// What a menu's Update answers. 0 to 4 leave the menus and become the game's ModeCode (1 the
// hub); any value not listed here changes nothing.
enum MenuCode : int32_t
{
    // Codes 0 up to this one leave the menus as the game's ModeCode.
    MENUCODE_LAST_MODECODE = 4,
    MENUCODE_STAY = 6,
    MENUCODE_QUIT = 7,
    // The menu has finished closing: its owner removes and deletes it.
    MENUCODE_CLOSED = 8,
    MENUCODE_OPEN_TITLE = 9,
    MENUCODE_OPEN_SINGLE_PLAYER = 10,
    MENUCODE_OPEN_OPTIONS = 12,
};

// One page of interactive objects (buttons, slide bars, ...) that answers a menu code every
// frame. The menu owns its objects and updates and draws them in slot order; concrete menus
// build them in Init, place them in the slots and override Update to read the clicks.
class Menu
{
public:
    explicit Menu(Cursor* p_cursor);
    virtual ~Menu();
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;

    // Destroys every object and drops the slots; true.
    virtual bool ClearInputObjects();
    virtual bool Init() = 0;
    // Updates the objects in slot order until one answers false: 1 when all answered true,
    // else 0. Every concrete menu overrides it with its own codes.
    virtual int32_t Update(float p_dt);
    virtual bool HandleInput(InputSystem* p_input);
    // Draws the objects in slot order until one answers false; whether all answered true.
    virtual bool Render();

    // Replaces the slots by p_count empty ones; objects still in the old slots are destroyed.
    void SetNumInputObjects(int32_t p_count);
    // Puts p_object into slot p_index (destroying what was there) and answers it; out of
    // range, the object is destroyed and the answer is null.
    InputObject* SetInputObject(int32_t p_index, std::unique_ptr<InputObject> p_object);
    // Null for an empty slot or an index out of range.
    InputObject* GetInputObject(int32_t p_index) const;
    int32_t GetNumInputObjects() const { return static_cast<int32_t>(m_inputObjects.size()); }
    Cursor* GetCursor() const { return m_pCursor; }

protected:
    std::vector<std::unique_ptr<InputObject>> m_inputObjects;
    Cursor* m_pCursor; // not owned
};
