#include "menus/ObjectivesScreen.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <string>

using uitest::UiInput;

namespace
{
// The panel's height for the objectives' text heights, as the screen lays it out.
int PanelHeight(const ObjectivesScreen& p_screen)
{
    int height = 20 + p_screen.GetTitle().GetHeight() + 25;
    for (int32_t i = 0; i < p_screen.GetNumObjectives(); ++i)
    {
        height += p_screen.GetText(i)->GetHeight() + 20;
    }
    return height + 15 + 30 + 20;
}

const char* const LONG_OBJECTIVE = "Escort the freighter Halcyon through the asteroid belt to the relay station, and "
                                   "keep her armour above half all the way there.";
} // namespace

TEST(ObjectivesScreenTest, PanelIsLaidOutTopDownAndCentredOnTheScreen)
{
    UiInput ui;
    ObjectivesScreen screen(&ui.cursor);
    screen.AddObjective("Destroy the raiders.", 1);
    ASSERT_GT(screen.GetTitle().GetHeight(), 0);

    const FramedBox& frame = screen.GetFrame();
    EXPECT_EQ(ObjectivesScreen::PANEL_WIDTH, frame.GetWidth());
    const int oneHeight = PanelHeight(screen);
    EXPECT_EQ(oneHeight, frame.GetHeight());
    EXPECT_EQ(324, frame.GetX());
    EXPECT_EQ(static_cast<int>(384 - oneHeight / 2.0), frame.GetY());
    // Title centred on the panel, 20 from its top; the objective 25 below the title.
    EXPECT_NEAR(511.5, screen.GetTitle().GetX() + screen.GetTitle().GetWidth() / 2.0, 0.01);
    EXPECT_EQ(frame.GetY() + 20, screen.GetTitle().GetY());
    const double firstRow = frame.GetY() + 20 + screen.GetTitle().GetHeight() + 25;
    EXPECT_EQ(324 + 35, screen.GetBullet(0)->GetX());
    EXPECT_EQ(324 + 60, screen.GetText(0)->GetX());
    EXPECT_EQ(firstRow, screen.GetBullet(0)->GetY());
    EXPECT_EQ(firstRow, screen.GetText(0)->GetY());
    EXPECT_EQ("-", screen.GetBullet(0)->GetText());

    // Four more, one of them two lines long: taller, still centred, each below the last, and
    // the OK button centred 35 below the last objective.
    screen.AddObjective(LONG_OBJECTIVE, 2);
    screen.AddObjective("Find the beacon.", 3);
    screen.AddObjective("Return to the gate.", 4);
    screen.AddObjective("Stay alive.", 5);
    ASSERT_EQ(5, screen.GetNumObjectives());
    ASSERT_GE(screen.GetText(1)->GetNumLines(), 2u);
    const int fiveHeight = PanelHeight(screen);
    EXPECT_GT(fiveHeight, oneHeight);
    EXPECT_EQ(fiveHeight, frame.GetHeight());
    EXPECT_EQ(static_cast<int>(384 - fiveHeight / 2.0), frame.GetY());
    EXPECT_EQ(324, frame.GetX());
    for (int32_t i = 1; i < 5; ++i)
    {
        const WrappedText* above = screen.GetText(i - 1);
        EXPECT_EQ(above->GetY() + above->GetHeight() + 20, screen.GetText(i)->GetY()) << i;
        EXPECT_EQ(screen.GetText(i)->GetY(), screen.GetBullet(i)->GetY());
    }
    Button& ok = screen.GetOkButton();
    EXPECT_EQ(75, ok.GetWidth());
    EXPECT_EQ(30, ok.GetHeight());
    EXPECT_EQ("OK", ok.GetText());
    EXPECT_NEAR(511.5, ok.GetX() + ok.GetWidth() / 2.0, 0.01);
    EXPECT_EQ(screen.GetText(4)->GetY() + screen.GetText(4)->GetHeight() + 35, ok.GetY());
    EXPECT_EQ(frame.GetY() + frame.GetHeight() - 20, ok.GetY() + ok.GetHeight());
}

TEST(ObjectivesScreenTest, MarksAndMasksCountEachObjectiveOnce)
{
    UiInput ui;
    ObjectivesScreen screen(&ui.cursor);
    EXPECT_TRUE(screen.AllDone()); // nothing to do
    screen.AddObjective("one", 1);
    screen.AddObjective("two", 2);
    screen.AddObjective("three", 3);
    EXPECT_EQ(3, screen.GetRemaining());
    EXPECT_FALSE(screen.AllDone());

    screen.MarkDone(1);
    screen.MarkDone(1); // done twice counts once
    screen.MarkDone(9); // no such objective
    EXPECT_EQ(2, screen.GetRemaining());
    EXPECT_TRUE(screen.IsDone(0));
    EXPECT_FALSE(screen.IsDone(1));

    // Mask 5 is objectives 1 and 3, whatever becomes of 2.
    EXPECT_FALSE(screen.AreDone(5));
    EXPECT_TRUE(screen.AreDone(1));
    screen.MarkDone(3);
    EXPECT_TRUE(screen.AreDone(5));
    EXPECT_FALSE(screen.AreDone(7));
    EXPECT_TRUE(screen.AreDone(0));
    screen.MarkDone(2);
    EXPECT_TRUE(screen.AreDone(7));
    EXPECT_FALSE(screen.AreDone(8)); // an objective 4 that does not exist is never done
    EXPECT_TRUE(screen.AllDone());

    // Two lines under one id are done together; an id without a bit clears nothing.
    ObjectivesScreen shared(&ui.cursor);
    shared.AddObjective("You don't know what to do.", 0);
    shared.AddObjective("part a", 2);
    shared.AddObjective("part b", 2);
    shared.AddObjective(nullptr, 40);
    EXPECT_EQ(4, shared.GetRemaining());
    shared.MarkDone(2);
    EXPECT_EQ(2, shared.GetRemaining());
    shared.MarkDone(0);
    shared.MarkDone(40);
    EXPECT_TRUE(shared.AllDone());
    EXPECT_TRUE(shared.AreDone(2));
    EXPECT_FALSE(shared.AreDone(1));
    EXPECT_FALSE(shared.AreDone(-1));
}

TEST(ObjectivesScreenTest, OkClosesThePage)
{
    UiInput ui;
    ObjectivesScreen screen(&ui.cursor);
    screen.AddObjective("Destroy the raiders.", 1);
    Button& ok = screen.GetOkButton();
    const int32_t x = static_cast<int32_t>(ok.GetX()) + 10;
    const int32_t y = static_cast<int32_t>(ok.GetY()) + 10;

    ui.Frame(x, y, false);
    EXPECT_TRUE(screen.Update(0.02f));
    ui.Frame(x, y, true);
    EXPECT_TRUE(screen.Update(0.02f));
    ui.Frame(x, y, false);
    EXPECT_FALSE(screen.Update(0.02f));
    // Shown again later, it stays open until the next click.
    ui.Frame(x, y, false);
    EXPECT_TRUE(screen.Update(0.02f));
    // A click elsewhere does not close it.
    ui.Frame(10, 10, true);
    EXPECT_TRUE(screen.Update(0.02f));
    ui.Frame(10, 10, false);
    EXPECT_TRUE(screen.Update(0.02f));
}
