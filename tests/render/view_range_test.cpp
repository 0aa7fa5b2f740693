#include "render/view_range.h"

#include <gtest/gtest.h>

#include "plot_fixture.h"

namespace korvinth::render {
namespace {

TEST(ViewRange, MapsTheCornersOfTheWorldToTheCornersOfTheArea)
{
    TestPlot plot(200, 100);
    plot.Show(-2, 6, 1, 3);
    EXPECT_DOUBLE_EQ(plot.view.AreaX(-2), 0);
    EXPECT_DOUBLE_EQ(plot.view.AreaX(6), 3000);
    EXPECT_DOUBLE_EQ(plot.view.AreaY(1), 1500);
    EXPECT_DOUBLE_EQ(plot.view.AreaY(3), 0);
    EXPECT_DOUBLE_EQ(plot.view.WorldX(plot.view.AreaX(0.7)), 0.7);
    EXPECT_DOUBLE_EQ(plot.view.WorldY(plot.view.AreaY(1.7)), 1.7);
}

TEST(ViewRange, TellsTheParserTheMapping)
{
    TestPlot plot(200, 100);
    plot.Show(-2, 6, 1, 3);
    EXPECT_DOUBLE_EQ(plot.parser.EvalText("xmu"), 375);
    EXPECT_DOUBLE_EQ(plot.parser.EvalText("xmi"), -2);
    EXPECT_DOUBLE_EQ(plot.parser.EvalText("ymu"), 750);
    EXPECT_DOUBLE_EQ(plot.parser.EvalText("ymi"), 1);
}

TEST(ViewRange, WrapsTermsForTheParser)
{
    EXPECT_EQ(makemx("(_x+1)"), "xmu*((_x+1)-xmi)");
    EXPECT_EQ(makemy("(_x>0)"), "ymu*((_x>0)-ymi)");
}

TEST(ViewRange, WrappedTermsGiveAreaUnits)
{
    TestPlot plot(200, 100);
    plot.Show(-2, 6, 1, 3);
    EXPECT_DOUBLE_EQ(plot.parser.EvalText(makemx("(2)")), plot.view.AreaX(2));
    EXPECT_DOUBLE_EQ(plot.view.area_height - plot.parser.EvalText(makemy("(2)")),
                     plot.view.AreaY(2));
}

TEST(ViewRange, StandardRangeHasTheScaleOneToOne)
{
    ViewRange view;
    view.area_width = 800 * 15;
    view.area_height = 600 * 15;
    SetStandardRange(view);
    EXPECT_DOUBLE_EQ(view.x_min, -10);
    EXPECT_DOUBLE_EQ(view.x_max, 10);
    EXPECT_DOUBLE_EQ(view.y_min, -7.5);
    EXPECT_DOUBLE_EQ(view.xmu, view.ymu);
}

struct ScrollCase
{
    std::string_view behaviour;
    std::int16_t percent;
    double shift;  // of a range of 20
};
constexpr ScrollCase kScrollCases[] = {
    {"a positive percentage raises both bounds", 10, 2},
    {"a negative one lowers them", -25, -5},
    {"zero changes nothing", 0, 0},
};

TEST(ViewRange, ScrollsByAPercentageOfTheRange)
{
    for (const ScrollCase& row : kScrollCases) {
        SCOPED_TRACE(row.behaviour);
        ViewRange sideways;
        EXPECT_EQ(scrlr(sideways, row.percent), row.percent != 0);
        EXPECT_DOUBLE_EQ(sideways.x_min, -10 + row.shift);
        EXPECT_DOUBLE_EQ(sideways.x_max, 10 + row.shift);
        EXPECT_DOUBLE_EQ(sideways.y_min, -10);
        ViewRange upwards;
        EXPECT_EQ(scrud(upwards, row.percent), row.percent != 0);
        EXPECT_DOUBLE_EQ(upwards.y_min, -10 + row.shift);
        EXPECT_DOUBLE_EQ(upwards.y_max, 10 + row.shift);
        EXPECT_DOUBLE_EQ(upwards.x_max, 10);
    }
}

}  // namespace
}  // namespace korvinth::render
