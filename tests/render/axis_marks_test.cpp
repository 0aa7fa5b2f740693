#include "render/axis_marks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace korvinth::render {
namespace {

struct LabelCase
{
    std::string_view behaviour;
    MarkStep step;
    std::int64_t mark;
    std::string_view label;
};
constexpr LabelCase kLabelCases[] = {
    {"zero is plain at every step", {5, -7}, 0, "0"},
    {"whole numbers", {2, 0}, 3, "6"},
    {"a real minus sign", {5, 0}, -1, "\u22125"},
    {"a decimal comma", {5, -1}, 3, "1,5"},
    {"no zeros at the end", {5, -1}, 4, "2"},
    {"zeros after the comma", {1, -3}, 4, "0,004"},
    {"a thin space between thousands", {5, 2}, 3, "1\u2009500"},
    {"the largest number that is written out", {1, 0}, 999999, "999\u2009999"},
    {"a million is a power of ten", {2, 5}, 5, "1\u00B710\u2076"},
    {"a factor and a power", {5, 6}, 3, "1,5\u00B710\u2077"},
    {"a negative one", {1, 7}, -2, "\u22122\u00B710\u2077"},
    {"exponents of two digits", {2, 11}, 1, "2\u00B710\u00B9\u00B9"},
    {"the smallest number that is written out", {1, -4}, 1, "0,0001"},
    {"below it, a negative exponent", {5, -5}, 1, "5\u00B710\u207B\u2075"},
    {"all digits of a number beside 1", {2, -11}, 50000000003, "1,00000000006"},
};

TEST(AxisMarks, WritesLabelsInTheGermanWay)
{
    for (const LabelCase& row : kLabelCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(AxisMarks{row.step}.Label(row.mark), row.label);
    }
}

void ExpectUsefulMarks(const AxisMarks& marks, double lower, double upper)
{
    EXPECT_GE(marks.Count(), kFewestMarks);
    EXPECT_LE(marks.Count(), kMostMarks);
    EXPECT_GE(marks.Position(marks.first), lower);
    EXPECT_LE(marks.Position(marks.last), upper);
    EXPECT_LT(marks.Position(marks.first - 1), lower);
    EXPECT_GT(marks.Position(marks.last + 1), upper);
    EXPECT_TRUE(marks.step.digit == 1 || marks.step.digit == 2 || marks.step.digit == 5);
}

TEST(AxisMarks, AreFiveToTwelveAtEveryZoomAndPlace)
{
    constexpr unsigned kSeed = 20240611;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> exponent(-12, 12);
    std::uniform_real_distribution<double> place(-30, 30);
    for (int i = 0; i < 20000; ++i) {
        const double range = std::pow(10, exponent(random));
        const double lower = place(random) * range;
        const double upper = lower + range;
        SCOPED_TRACE(testing::Message() << lower << " to " << upper);
        ExpectUsefulMarks(CoarseMarks(lower, upper), lower, upper);
        ExpectUsefulMarks(FineMarks(lower, upper), lower, upper);
        if (HasFailure()) return;
    }
}

TEST(AxisMarks, AreNeverThirteenInStepsOfTwo)
{
    for (int shift = 0; shift < 1000; ++shift) {
        const double lower = -12.5 + shift * 0.01;
        for (const double range : {24.0, 24.5, 24.99}) {
            SCOPED_TRACE(testing::Message() << lower << " width " << range);
            ExpectUsefulMarks(CoarseMarks(lower, lower + range), lower, lower + range);
        }
    }
}

TEST(AxisMarks, KeepTheirStepWhileTheViewMoves)
{
    const MarkStep step = CoarseMarks(0, 20).step;
    for (int shift = 0; shift < 100; ++shift) {
        EXPECT_EQ(CoarseMarks(shift * 0.37, shift * 0.37 + 20).step, step);
    }
}

TEST(AxisMarks, StayApartAtADeepZoomBesideOne)
{
    for (const double half : {1e-10, 1e-12}) {
        const AxisMarks marks = CoarseMarks(1 - half, 1 + half);
        std::set<std::string> labels;
        for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
            labels.insert(marks.Label(mark));
        }
        EXPECT_GE(marks.Count(), kFewestMarks);
        EXPECT_EQ(static_cast<std::int64_t>(labels.size()), marks.Count());
    }
}

TEST(AxisMarks, AreNoneWhereARangeHasNone)
{
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::pair<double, double> ranges[] = {
        {kNan, 1}, {0, kNan},         {-kInfinity, 1}, {0, kInfinity}, {1, 1},
        {2, 1},    {-1e308, 1.7e308}, {1, 1 + 1e-15},  {0, 1e-310},    {1e17, 1e17 + 32},
    };
    for (const auto& [lower, upper] : ranges) {
        SCOPED_TRACE(testing::Message() << lower << " to " << upper);
        EXPECT_EQ(CoarseMarks(lower, upper).Count(), 0);
        EXPECT_EQ(FineMarks(lower, upper).Count(), 0);
    }
}

TEST(AxisMarks, ReachTheEdgesOfDoublePrecision)
{
    ExpectUsefulMarks(CoarseMarks(-1e300, 1e300), -1e300, 1e300);
    ExpectUsefulMarks(CoarseMarks(0, 1e-290), 0, 1e-290);
}

}  // namespace
}  // namespace korvinth::render
