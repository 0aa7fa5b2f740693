#include "document/editor_rows.h"

#include "document/interval_text.h"
#include "plot_fixture.h"

namespace korvinth::document {
namespace {

struct IntervalCase
{
    std::string_view behaviour, row;
    bool empty, has_semicolon;
    std::string_view lower, upper;
};

constexpr IntervalCase kIntervalCases[] = {
    {"the form that is shown", "f: ] 0 ; 2*pi [", false, true, "0", "2*pi"},
    {"the x-part of a curve", "Param. für xa: ] -oo ; a [", false, true, "", "a"},
    {"infinity without a sign", "f: ] 0 ; oo [", false, true, "0", ""},
    {"a colon in a bound, behind the name's", "f: ] 0 ; 2:3 [", false, true, "0", "2:3"},
    {"Deliberate: oo inside a word goes as well", "f: ] foo ; boot [", false, true, "f", "bt"},
    {"Deliberate: -oo is no upper bound", "f: ] 0 ; -oo [", false, true, "0", "-"},
    {"no semicolon", "f: ] 0 , 1 [", false, false, "", ""},
    {"nothing but the name", "f: ] [", true, false, "", ""},
};

TEST(IntervalText, ReadsRows)
{
    for (const IntervalCase& row : kIntervalCases) {
        SCOPED_TRACE(row.behaviour);
        const IntervalReading reading = ReadIntervalRow(row.row);
        EXPECT_EQ(reading.empty, row.empty);
        EXPECT_EQ(reading.has_semicolon, row.has_semicolon);
        EXPECT_EQ(reading.lower, row.lower);
        EXPECT_EQ(reading.upper, row.upper);
    }
}

class EditorRowsTest : public PlotTest
{
protected:
    void Plot(std::initializer_list<std::string_view> texts)
    {
        Apply(texts);
        rows.Fill(document);
    }
    void ApplyRows()
    {
        rows.StoreRows(document);
        Apply();
        rows.Refresh(document);
    }
    const std::string& Term(int row) { return rows.Text(EditorState::Terms, Slot(row)); }
    const std::string& Interval(int row) { return rows.Text(EditorState::Intervals, Slot(row)); }
    void Type(int row, std::string_view text) { rows.SetText(EditorState::Terms, Slot(row), text); }

    EditorRows rows;
};

TEST_F(EditorRowsTest, WhatBelongsToARowMovesWithIt)
{
    Plot({"f(x)=x", "g(x)=2*x"});
    document.slots[Slot(1)].visible = false;
    document.slots[Slot(1)].family_allowed = true;
    document.slots[Slot(1)].point_radius = 4;
    document.attributes.slots[Slot(1)].type = LineType::Dot;
    document.attributes.slots[Slot(1)].width = 5;
    rows.Refresh(document);

    ASSERT_TRUE(rows.AddBefore(Slot(0), true));
    EXPECT_EQ(Term(1), "");
    EXPECT_EQ(Term(2), "g(x) = 2*x");
    EXPECT_EQ(rows.SlotOf(Slot(2)), Slot(1)) << "nothing is applied yet";
    EXPECT_EQ(rows.RowOf(Slot(1)), Slot(2));
    EXPECT_EQ(document.slots[Slot(1)].name, "g");
    rows.Refresh(document);  // another window has applied
    EXPECT_EQ(Term(2), "g(x) = 2*x");
    rows.SetText(EditorState::Intervals, Slot(2), "g: ] 0 ; oo [");
    rows.StoreIntervals(document);
    EXPECT_EQ(document.slots[Slot(1)].lower_bound, "0");
    EXPECT_EQ(Interval(2), "g: ] 0 ; +oo [");

    Type(1, "h(x)=3");
    ApplyRows();
    const FunctionSlot& g = document.slots[Slot(2)];
    EXPECT_EQ(g.name, "g");
    EXPECT_EQ(g.interval, "0 ; +oo");
    EXPECT_FALSE(g.visible);
    EXPECT_TRUE(g.family_allowed);
    EXPECT_EQ(g.point_radius, 4);
    EXPECT_EQ(g.colour_index, 1) << "it keeps its colour";
    EXPECT_EQ(document.attributes.slots[Slot(2)].type, LineType::Dot);
    EXPECT_EQ(document.attributes.slots[Slot(2)].width, 5);
    EXPECT_EQ(document.slots[Slot(1)].colour_index, 2) << "the new row took the next free one";
    EXPECT_TRUE(document.slots[Slot(1)].visible);

    rows.Clear(Slot(0));
    ApplyRows();
    EXPECT_EQ(document.rows[Slot(0)], "h(x) = 3");
    EXPECT_EQ(document.slots[Slot(1)].interval, "0 ; +oo");
    EXPECT_EQ(document.slots[Slot(2)].name, "");
    EXPECT_EQ(document.slots[Slot(2)].colour_index, 0) << "free again";
    EXPECT_EQ(document.slots[Slot(12)].colour_index, 12);
}

TEST_F(EditorRowsTest, DeliberateNewRowsHaveNoBlankBeforeTheSemicolon)
{
    Plot({"x"});
    rows.ClearAll();
    EXPECT_EQ(rows.Function(Slot(0)).interval, "-oo; +oo");
    EXPECT_EQ(rows.LastRowWithTerm(), std::nullopt);
    EXPECT_EQ(document.rows[Slot(0)], "f(x) = x");
}

TEST_F(EditorRowsTest, DeliberateTheNameOfADeletedRowIsTakenUntilTheRowsAreChecked)
{
    Plot({"f(x)=x"});
    document.slots[Slot(0)].visible = false;
    rows.Clear(Slot(0));
    Type(0, "x^2");
    ApplyRows();
    EXPECT_EQ(Term(0), "g(x) = x^2");
    EXPECT_TRUE(document.slots[Slot(0)].visible) << "but nothing else of it is left";
    Type(1, "x^3");
    ApplyRows();
    EXPECT_EQ(Term(1), "f(x) = x^3");
}

TEST_F(EditorRowsTest, NoTextFallsOutAtTheEnd)
{
    Type(12, "x");
    EXPECT_FALSE(rows.AddBefore(Slot(0), false));
    EXPECT_EQ(Term(12), "x");
    Type(12, "");
    EXPECT_FALSE(rows.AddBefore(Slot(12), true)) << "nothing comes after the last row";
    EXPECT_TRUE(rows.AddBefore(Slot(12), false));
}

TEST_F(EditorRowsTest, TypedTextStaysUntilItIsApplied)
{
    Plot({"f(x)=x", "g(x)=1"});
    Type(0, "f(x)=sin(");
    rows.SetText(EditorState::Intervals, Slot(1), "0;1");
    document.rows[Slot(1)] = "g(x) = 2";
    rows.Refresh(document);
    EXPECT_EQ(Term(0), "f(x)=sin(");
    EXPECT_EQ(Term(1), "g(x) = 2");
    EXPECT_EQ(Interval(1), "0;1");
    rows.StoreRows(document);
    EXPECT_EQ(document.slots[Slot(1)].upper_bound, "") << "applying terms applies no interval";
}

TEST_F(EditorRowsTest, DeliberateNoIntervalIsStoredFromTheFirstRowWithoutSemicolonOn)
{
    Plot({"f(x)=x", "g(x)=x", "h(x)=x"});
    const std::string_view typed[] = {"0;1", "0,5", "2;3"};
    for (const int row : {0, 1, 2}) {
        rows.SetText(EditorState::Intervals, Slot(row), typed[row]);
    }
    rows.StoreIntervals(document);
    EXPECT_EQ(document.slots[Slot(0)].interval, "0 ; 1");
    EXPECT_EQ(document.slots[Slot(1)].interval, "-oo ; +oo");
    EXPECT_EQ(document.slots[Slot(2)].lower_bound, "");
    EXPECT_EQ(Interval(2), "2;3") << "what is typed stays";
}

}  // namespace
}  // namespace korvinth::document
