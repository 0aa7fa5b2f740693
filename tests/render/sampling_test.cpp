#include "render/sampling.h"

#include <gtest/gtest.h>

#include <string_view>

#include "plot_fixture.h"

namespace korvinth::render {
namespace {

struct BoundCase
{
    std::string_view behaviour, lower, upper;
    double first, last;  // of 100 samples from -10 to 10
};
constexpr BoundCase kBoundCases[] = {
    {"open ends are the view's", "", "", 0, 100},
    {"bounds inside the view", "-5", "5", 25, 75},
    {"indices are not rounded", "-9,95", "0,05", 0.25, 50.25},
    {"bounds outside are limited to the view", "-50", "70", 0, 100},
    {"both on one side leave a single sample", "20", "30", 100, 100},
    {"bounds in the wrong order are swapped", "5", "-5", 25, 75},
    {"terms with blanks", " 2 * 2 ", "2^3", 70, 90},
    {"an unknown name opens the end", "q", "q", 0, 100},
    {"a value that does not exist opens it too", "1/0", "sqrt(-1)", 0, 100},
    {"so does nonsense", "2+", ")", 0, 100},
};

TEST(Sampling, FindsTheSamplesOfAnInterval)
{
    for (const BoundCase& row : kBoundCases) {
        SCOPED_TRACE(row.behaviour);
        TestPlot plot;
        document::FunctionSlot slot;
        slot.lower_bound = row.lower;
        slot.upper_bound = row.upper;
        const Sampling sampling = checkdef(plot.document, slot, 100, plot.view, plot.parser);
        EXPECT_NEAR(sampling.first_index, row.first, 1e-9);
        EXPECT_NEAR(sampling.last_index, row.last, 1e-9);
        EXPECT_DOUBLE_EQ(sampling.first_x, -10 + sampling.first_index * 0.2);
        EXPECT_DOUBLE_EQ(sampling.last_x, -10 + sampling.last_index * 0.2);
        EXPECT_EQ(plot.parser.GetError(), term::Error::None);
    }
}

TEST(Sampling, TakesOneSampleAPixelColumnByDefaultWithinLimits)
{
    TestPlot plot;
    EXPECT_EQ(checkdef(plot.document, {}, 0, plot.view, plot.parser).sample_count, 2);
    EXPECT_EQ(checkdef(plot.document, {}, 99999, plot.view, plot.parser).sample_count, 20000);
    EXPECT_EQ(DefaultSampleCount(TestPlot(333, 10).view), 333);
    EXPECT_EQ(DefaultSampleCount(TestPlot(1, 1).view), 2);
}

}  // namespace
}  // namespace korvinth::render
