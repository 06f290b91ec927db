#include "menus/Menu.h"

#include "ui/InputObject.h"

#include <cassert>

Menu::Menu(Cursor* p_cursor) : m_pCursor(p_cursor)
{
    assert(p_cursor && "p_cursor");
}

Menu::~Menu()
{
    Menu::ClearInputObjects();
}

bool Menu::ClearInputObjects()
{
    m_inputObjects.clear();
    return true;
}

int32_t Menu::Update(float p_dt)
{
    for (const std::unique_ptr<InputObject>& object : m_inputObjects)
    {
        if (object && !object->Update(p_dt))
        {
            return 0;
        }
    }
    return 1;
}

bool Menu::HandleInput(InputSystem* p_input)
{
    (void)p_input;
    return true;
}

bool Menu::Render()
{
    for (const std::unique_ptr<InputObject>& object : m_inputObjects)
    {
        if (object && !object->Render())
        {
            return false;
        }
    }
    return true;
}

void Menu::SetNumInputObjects(int32_t p_count)
{
    m_inputObjects.clear();
    if (p_count > 0)
    {
        m_inputObjects.resize(static_cast<size_t>(p_count));
    }
}

InputObject* Menu::SetInputObject(int32_t p_index, std::unique_ptr<InputObject> p_object)
{
    if (p_index < 0 || p_index >= GetNumInputObjects())
    {
        return nullptr;
    }
    m_inputObjects[static_cast<size_t>(p_index)] = std::move(p_object);
    return m_inputObjects[static_cast<size_t>(p_index)].get();
}

InputObject* Menu::GetInputObject(int32_t p_index) const
{
    if (p_index < 0 || p_index >= GetNumInputObjects())
    {
        return nullptr;
    }
    return m_inputObjects[static_cast<size_t>(p_index)].get();
}
