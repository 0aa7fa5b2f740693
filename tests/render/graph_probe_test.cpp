#include "render/graph_probe.h"

#include <gtest/gtest.h>

#include <string_view>

#include "plot_fixture.h"
#include "render/pointer_text.h"

namespace korvinth::render {
namespace {

struct ProbeCase
{
    std::string_view behaviour, term;
    double pixel_x, pixel_y;
    std::string_view found;  // "" for none
};
// 200 x 100 pixels show -10..10 and -5..5: ten pixels a unit.
constexpr ProbeCase kProbeCases[] = {
    {"on the graph", "_x/2", 120, 40, "f(2) = 1"},
    {"six pixels above", "0*_x", 120, 44, "f(2) = 0"},
    {"seven pixels above", "0*_x", 120, 43, ""},
    {"beside a steep graph the distance is not the vertical one", "20*_x", 103, 50, ""},
    {"beside a steep graph, the mark inside", "8*_x", 105, 50, "f(0,5) = 4"},
    {"no value there", "sqrt(_x)", 99, 50, ""},
    {"a value of few digits", "sin(_x)", 112, 40, "f(1,2) = 0,93"},
};

TEST(GraphProbe, FindsTheGraphWithinSixPixels)
{
    for (const ProbeCase& row : kProbeCases) {
        SCOPED_TRACE(row.behaviour);
        TestPlot plot;
        plot.Define(0, "f", row.term);
        const auto point =
            ProbeGraphs(plot.document, plot.parser, plot.view, 15 * row.pixel_x, 15 * row.pixel_y);
        const std::string text = point ? ValueText(plot.view, *point) : "";
        EXPECT_EQ(text, row.found);
        EXPECT_EQ(plot.parser.GetError(), term::Error::None);
    }
}

TEST(GraphProbe, ChoosesTheNearestVisibleGraphAndLeavesTheParserAlone)
{
    TestPlot plot;
    plot.Define(0, "f", "0*_x").visible = false;
    plot.Define(1, "g", "0.1+0*_x");
    plot.Define(2, "h", "-0.3+0*_x");
    document::FunctionSlot& far = plot.Define(3, "k", "0*_x");
    far.lower_bound = "5";
    plot.parser.SetVariableValue(plot.document.variables.x, 7);
    plot.parser.SetVariableValue(plot.document.variables.sw, 0.5);
    const std::size_t programs = plot.parser.LivePrograms();
    const auto point = ProbeGraphs(plot.document, plot.parser, plot.view, 1500, 750);
    ASSERT_TRUE(point);
    EXPECT_EQ(point->function, "g");
    EXPECT_EQ(plot.parser.VariableValue(plot.document.variables.x), 7);
    EXPECT_EQ(plot.parser.VariableValue(plot.document.variables.sw), 0.5);
    EXPECT_EQ(plot.parser.LivePrograms(), programs);
}

TEST(GraphProbe, FindsIntegralFunctionsAndCurves)
{
    TestPlot plot;
    const auto text_at = [&](double pixel_x, double pixel_y) {
        const auto point =
            ProbeGraphs(plot.document, plot.parser, plot.view, 15 * pixel_x, 15 * pixel_y);
        return point ? ValueText(plot.view, *point) : "";
    };
    plot.Define(0, "g", "integral(1)").integral_term = "(1)";
    plot.document.parameters[document::LowerBoundParameter(document::SlotIndex{0})].value = 0;
    EXPECT_EQ(text_at(120, 30), "g(2) = 2");
    plot.Define(0, "x", "4*cos(_x)").integral_term.clear();
    plot.document.slots[document::SlotIndex{0}].curve_link = 1;
    plot.Define(1, "y", "4*sin(_x)").curve_link = document::kCurveYPart;
    EXPECT_EQ(text_at(100, 12), "x(1,57) = 0   y(1,57) = 4");
    EXPECT_EQ(text_at(100, 50), "");
}

TEST(PointerText, TellsPlacesToThePrecisionOfAPixel)
{
    struct Case
    {
        double x_min, x_max, y_min, y_max, pixel_x, pixel_y;
        std::string_view text;
    };
    constexpr Case kCases[] = {
        {-10, 10, -5, 5, 112, 55, "x = 1,2   y = −0,5"},
        {-10, 10, -5, 5, 100, 50, "x = 0   y = 0"},
        {0, 1, -1, 1, 1, 99, "x = 0,005   y = −0,98"},
        {0, 4000, 0, 1e9, 3, 1, "x = 60   y = 990000000"},
        {0, 1e-6, 0, 1e20, 3, 1, "x = 1,5·10⁻⁸   y = 9,9·10¹⁹"},
        {1, 1.0000000002, 0, 1, 1, 100, ""},
        {1, 1.0000000002, 0, 1, 1, 99, "x = 1,000000000001   y = 0,01"},
        {-10, 10, -5, 5, -0.1, 5, ""},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.text);
        TestPlot plot;
        plot.Show(row.x_min, row.x_max, row.y_min, row.y_max);
        EXPECT_EQ(PointerText(plot.view, 15 * row.pixel_x, 15 * row.pixel_y), row.text);
    }
}

}  // namespace
}  // namespace korvinth::render
