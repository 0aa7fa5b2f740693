#include "document/plot_undo.h"

#include <gtest/gtest.h>

#include "plot_fixture.h"

namespace korvinth::document {
namespace {

class PlotUndoTest : public PlotTest
{
protected:
    // One applied change.
    void Change(std::initializer_list<std::string_view> rows)
    {
        const PlotSnapshot before = TakeSnapshot(document);
        Apply(rows);
        undo.Push(before, TakeSnapshot(document));
    }
    void GoTo(const std::optional<PlotSnapshot>& snapshot)
    {
        ASSERT_TRUE(snapshot);
        RestoreSnapshot(document, *snapshot);
        Apply();
    }
    PlotUndo undo;
};

TEST_F(PlotUndoTest, BringsRowsIntervalsLooksAndParametersBack)
{
    Change({"f(x)=a*x"});
    Parameter* a = document.FindParameter("a");
    a->value = 4;
    a->lower = -7;
    document.slots[Slot(0)].lower_bound = "1";
    document.slots[Slot(0)].interval = "1 ; +oo";
    document.slots[Slot(0)].point_radius = 3;
    document.slots[Slot(0)].visible = false;
    document.attributes.slots[Slot(0)].width = 5;
    document.ranges.x_lower = "-a";
    document.points_text = "(a)(2)";
    const PlotSnapshot before = TakeSnapshot(document);
    document.slots[Slot(0)] = {};
    document.attributes.slots[Slot(0)].width = 1;
    document.ranges.x_lower = "-3";
    document.points_text.clear();
    Apply({"", "f(x)=b*x"});
    undo.Push(before, TakeSnapshot(document));
    document.dormant_parameters.clear();  // the step has their values itself

    GoTo(undo.Undo(TakeSnapshot(document)));
    EXPECT_EQ(document.rows[Slot(0)], "f(x) = a*x");
    EXPECT_EQ(document.rows[Slot(1)], "");
    const FunctionSlot& slot = document.slots[Slot(0)];
    EXPECT_EQ(slot.lower_bound, "1");
    EXPECT_EQ(slot.interval, "1 ; +oo");
    EXPECT_EQ(slot.point_radius, 3);
    EXPECT_FALSE(slot.visible);
    EXPECT_EQ(document.attributes.slots[Slot(0)].width, 5);
    EXPECT_EQ(document.ranges.x_lower, "-a");
    EXPECT_EQ(document.points_text, "(a)(2)");
    ASSERT_NE(document.FindParameter("a"), nullptr);
    EXPECT_EQ(document.FindParameter("a")->value, 4);
    EXPECT_EQ(document.FindParameter("a")->lower, -7);

    GoTo(undo.Redo(TakeSnapshot(document)));
    EXPECT_EQ(document.rows[Slot(1)], "f(x) = b*x");
    EXPECT_EQ(document.attributes.slots[Slot(0)].width, 1);
    EXPECT_FALSE(undo.CanRedo());
    EXPECT_TRUE(undo.CanUndo());
}

TEST_F(PlotUndoTest, LeavesTheViewAloneUnlessTheStepChangedIt)
{
    Change({"f(x)=x"});
    document.ranges.x_lower = "-3";  // by hand, after the step
    GoTo(undo.Undo(TakeSnapshot(document)));
    EXPECT_EQ(document.ranges.x_lower, "-3");
    document.ranges.x_lower = "-4";
    GoTo(undo.Redo(TakeSnapshot(document)));
    EXPECT_EQ(document.ranges.x_lower, "-4");
}

TEST_F(PlotUndoTest, KeepsFiftySteps)
{
    for (int k = 0; k < 60; ++k) Change({"f(x)=x+" + std::to_string(k)});
    int steps = 0;
    for (; undo.CanUndo(); ++steps) GoTo(undo.Undo(TakeSnapshot(document)));
    EXPECT_EQ(steps, 50);
    EXPECT_EQ(document.rows[Slot(0)], "f(x) = x+9");
}

TEST_F(PlotUndoTest, ApplyingTheSamePlotIsNoStepAndANewStepEndsRedoing)
{
    Change({"f(x)=x"});
    Change({"f(x)=x"});
    Change({"f(x)=x^2"});
    GoTo(undo.Undo(TakeSnapshot(document)));
    EXPECT_EQ(document.rows[Slot(0)], "f(x) = x");
    EXPECT_TRUE(undo.CanRedo());
    Change({"f(x)=x^3"});
    EXPECT_FALSE(undo.CanRedo());
    GoTo(undo.Undo(TakeSnapshot(document)));
    EXPECT_EQ(document.rows[Slot(0)], "f(x) = x") << "one step before, the repetition left out";
    GoTo(undo.Undo(TakeSnapshot(document)));
    EXPECT_EQ(document.rows[Slot(0)], "");
    EXPECT_FALSE(undo.Undo(TakeSnapshot(document)));
}

}  // namespace
}  // namespace korvinth::document
