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
