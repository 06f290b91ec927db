#include "input/Cursor.h"
#include "menus/Menu.h"
#include "ui/InputObject.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{
// Records what the menu asks of it into a shared log, and answers as told.
class Probe : public InputObject
{
public:
    Probe(Cursor* p_cursor, std::string p_name, std::vector<std::string>& p_log, bool p_answer = true)
        : InputObject(p_cursor), m_name(std::move(p_name)), m_log(p_log), m_answer(p_answer)
    {
    }
    ~Probe() override { m_log.push_back("~" + m_name); }
    bool Update(float p_dt) override
    {
        m_log.push_back("update " + m_name + " " + std::to_string(p_dt));
        return m_answer;
    }
    bool Render() override
    {
        m_log.push_back("render " + m_name);
        return m_answer;
    }

private:
    std::string m_name;
    std::vector<std::string>& m_log;
    bool m_answer;
};

class TestMenu : public Menu
{
public:
    using Menu::Menu;
    bool Init() override { return true; }
};
} // namespace

TEST(MenuTest, UpdatesAndDrawsItsObjectsInSlotOrderUntilOneFails)
{
    Cursor cursor;
    std::vector<std::string> log;
    {
        TestMenu menu(&cursor);
        EXPECT_EQ(&cursor, menu.GetCursor());
        EXPECT_EQ(0, menu.GetNumInputObjects());
        EXPECT_EQ(1, menu.Update(0.5f)); // nothing to update
        menu.SetNumInputObjects(4);
        EXPECT_EQ(4, menu.GetNumInputObjects());
        EXPECT_EQ(nullptr, menu.GetInputObject(0));
        menu.SetInputObject(0, std::make_unique<Probe>(&cursor, "a", log));
        menu.SetInputObject(2, std::make_unique<Probe>(&cursor, "c", log)); // slot 1 stays empty
        menu.SetInputObject(3, std::make_unique<Probe>(&cursor, "d", log));

        EXPECT_EQ(1, menu.Update(0.25f));
        EXPECT_TRUE(menu.Render());
        EXPECT_EQ((std::vector<std::string>{"update a 0.250000", "update c 0.250000", "update d 0.250000",
                                            "render a", "render c", "render d"}),
                  log);

        // "c" fails: "d" is neither updated nor drawn, and the answers say so.
        log.clear();
        menu.SetInputObject(2, std::make_unique<Probe>(&cursor, "C", log, false));
        EXPECT_EQ((std::vector<std::string>{"~c"}), log);
        log.clear();
        EXPECT_EQ(0, menu.Update(0.1f));
        EXPECT_FALSE(menu.Render());
        EXPECT_EQ((std::vector<std::string>{"update a 0.100000", "update C 0.100000", "render a", "render C"}), log);
        EXPECT_TRUE(menu.HandleInput(nullptr));

        // Out of range the object is refused (and destroyed), the slots untouched.
        log.clear();
        EXPECT_EQ(nullptr, menu.SetInputObject(4, std::make_unique<Probe>(&cursor, "x", log)));
        EXPECT_EQ(nullptr, menu.SetInputObject(-1, std::make_unique<Probe>(&cursor, "y", log)));
        EXPECT_EQ(nullptr, menu.GetInputObject(-1));
        EXPECT_EQ((std::vector<std::string>{"~x", "~y"}), log);

        // New slots: whatever the old ones held is destroyed, nothing leaks.
        log.clear();
        menu.SetNumInputObjects(1);
        EXPECT_EQ((std::vector<std::string>{"~a", "~C", "~d"}), log);
        EXPECT_EQ(1, menu.GetNumInputObjects());
        EXPECT_EQ(nullptr, menu.GetInputObject(0));
        menu.SetInputObject(0, std::make_unique<Probe>(&cursor, "e", log));
        EXPECT_TRUE(menu.ClearInputObjects());
        EXPECT_EQ(0, menu.GetNumInputObjects());
        menu.SetNumInputObjects(1);
        menu.SetInputObject(0, std::make_unique<Probe>(&cursor, "f", log));
        log.clear();
    }
    // The destructor clears what is left.
    EXPECT_EQ((std::vector<std::string>{"~f"}), log);
}
