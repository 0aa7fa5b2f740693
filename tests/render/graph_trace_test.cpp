#include "render/graph_trace.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "plot_fixture.h"
#include "render/pointer_text.h"

namespace korvinth::render {
namespace {

// 200 x 100 pixels show -10..10 and -5..5: ten pixels a unit.
class GraphTraceTest : public testing::Test
{
protected:
    std::string Text() const
    {
        const auto point = trace.Point();
        return point ? ValueText(plot.view, *point) : "";
    }

    TestPlot plot;
    GraphTrace trace{plot.document, plot.parser, plot.view};
};

TEST_F(GraphTraceTest, MovesByPixelsWithinTheInterval)
{
    EXPECT_FALSE(trace.Begin()) << "there is no graph";
    document::FunctionSlot& f = plot.Define(0, "f", "sqrt(2.25-_x*_x)");
    ASSERT_TRUE(trace.Begin());
    trace.Move(3);
    EXPECT_EQ(Text(), "f(0,3) = 1,47");
    trace.Move(-20);
    EXPECT_EQ(Text(), "f(−1,7) ist nicht definiert");
    trace.MoveToLast();
    EXPECT_EQ(Text(), "f(9,9) ist nicht definiert") << "an open interval ends with the view";
    trace.Move(2);
    EXPECT_EQ(trace.Point()->x, 10.1) << "and goes on beyond it";
    f.lower_bound = "sqrt(2)";
    f.upper_bound = "-sqrt(2)";
    EXPECT_NEAR(trace.Point()->x, 1.41421, 1e-5) << "exactly the end, which is no whole pixel";
    trace.MoveToFirst();
    trace.Move(-1);
    EXPECT_EQ(Text(), "f(−1,4) = 0,5");
    trace.Move(1);
    EXPECT_EQ(Text(), "f(−1,3) = 0,75");
    f.visible = false;
    EXPECT_EQ(Text(), "");
}

TEST_F(GraphTraceTest, GoesRoundAllKindsOfGraphs)
{
    plot.Define(0, "f", "2*_x");
    plot.Define(1, "g", "_x").visible = false;
    plot.Define(2, "h", "integral(1)").integral_term = "(1)";
    plot.document.parameters[document::LowerBoundParameter(document::SlotIndex{2})].value = -1;
    plot.Define(3, "x", "4*cos(_x)").curve_link = 4;
    plot.Define(4, "y", "1/(_x-4)").curve_link = document::kCurveYPart;
    plot.document.slots[document::SlotIndex{3}].lower_bound = "0";
    plot.document.slots[document::SlotIndex{3}].upper_bound = "8";
    plot.parser.SetVariableValue(plot.document.variables.x, 7);
    const std::size_t programs = plot.parser.LivePrograms();
    ASSERT_TRUE(trace.Begin());
    trace.Move(10);
    EXPECT_EQ(Text(), "f(1) = 2");
    trace.ChangeGraph(1);
    EXPECT_EQ(Text(), "h(1) = 2") << "past the hidden one, at the same x";
    trace.ChangeGraph(1);
    EXPECT_EQ(Text(), "x(4) = −2,61   y(4) ist nicht definiert");
    trace.Move(-25);
    EXPECT_EQ(Text(), "x(3) = −3,96   y(3) = −1");
    trace.MoveToFirst();
    EXPECT_EQ(Text(), "x(0) = 4   y(0) = −0,25");
    trace.ChangeGraph(1);
    EXPECT_EQ(Text(), "f(0) = 0");
    trace.ChangeGraph(-1);
    EXPECT_EQ(trace.Point()->t, 4);
    EXPECT_EQ(plot.parser.VariableValue(plot.document.variables.x), 7);
    EXPECT_EQ(plot.parser.LivePrograms(), programs);
    EXPECT_EQ(plot.parser.GetError(), term::Error::None);
}

}  // namespace
}  // namespace korvinth::render
