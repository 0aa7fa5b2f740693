#include "render/axis_marks.h"

#include <gtest/gtest.h>

#include <algorithm>
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
    {"pi alone", {1, 0, 2, kPiUnit}, 2, "\u03C0"},
    {"a half of pi", {1, 0, 2, kPiUnit}, 1, "\u03C0/2"},
    {"an odd number of halves", {1, 0, 2, kPiUnit}, -3, "\u22123\u03C0/2"},
    {"a fraction in its lowest terms", {1, 0, 4, kPiUnit}, 6, "3\u03C0/2"},
    {"minus pi", {1, 0, 1, kPiUnit}, -1, "\u2212\u03C0"},
    {"whole multiples", {2, 0, 1, kPiUnit}, 3, "6\u03C0"},
    {"decimal multiples", {5, -2, 1, kPiUnit}, 7, "0,35\u03C0"},
    {"a power of ten beside pi",
     {1, -10, 1, kPiUnit},
     2,
     "2\u00B710\u207B\u00B9\u2070\u00B7\u03C0"},
};

std::string Labels(const AxisMarks& marks)
{
    std::string labels;
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        labels += (labels.empty() ? "" : " ") + marks.Label(mark);
    }
    return labels;
}

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
        for (const StepLadder ladder :
             {StepLadder::Decimal, StepLadder::Degrees, StepLadder::Grads, StepLadder::Pi}) {
            ExpectUsefulMarks(CoarseMarks(lower, upper, ladder), lower, upper);
            ExpectUsefulMarks(FineMarks(lower, upper, ladder), lower, upper);
        }
        if (HasFailure()) return;
    }
}

TEST(AxisMarks, KeepTheirStepWhileTheViewMoves)
{
    const MarkStep step = CoarseMarks(0, 20).step;
    for (int shift = 0; shift < 100; ++shift) {
        EXPECT_EQ(CoarseMarks(shift * 0.37, shift * 0.37 + 20).step, step);
    }
}

struct LadderCase
{
    StepLadder ladder;
    double range;
    double step;  // of the widest marks
};
constexpr LadderCase kLadderCases[] = {
    {StepLadder::Degrees, 0.2, 0.02},  {StepLadder::Degrees, 20, 2},
    {StepLadder::Degrees, 90, 15},     {StepLadder::Degrees, 180, 30},
    {StepLadder::Degrees, 360, 45},    {StepLadder::Degrees, 720, 90},
    {StepLadder::Degrees, 1080, 180},  {StepLadder::Degrees, 2000, 360},
    {StepLadder::Degrees, 4000, 720},  {StepLadder::Degrees, 40000, 7200},
    {StepLadder::Grads, 30, 5},        {StepLadder::Grads, 400, 50},
    {StepLadder::Grads, 800, 100},     {StepLadder::Grads, 20000, 4000},
    {StepLadder::Pi, 2, kPiUnit / 8},  {StepLadder::Pi, 2 * kPiUnit, kPiUnit / 4},
    {StepLadder::Pi, 20, kPiUnit},     {StepLadder::Pi, 100, 5 * kPiUnit},
    {StepLadder::Pi, 1, kPiUnit / 20},
};

TEST(AxisMarks, ClimbTheLadderOfTheirUnit)
{
    for (const LadderCase& row : kLadderCases) {
        SCOPED_TRACE(testing::Message() << row.range);
        EXPECT_DOUBLE_EQ(CoarseMarks(0, row.range, row.ladder).step.Value(), row.step);
    }
}

struct FixedCase
{
    std::string_view behaviour;
    double step, lower, upper;
    std::string_view labels;
};
constexpr FixedCase kFixedCases[] = {
    {"a short decimal", 0.25, -0.3, 0.6, "\u22120,25 0 0,25 0,5"},
    {"a third, to a thousandth of it", 1.0 / 3, 0.1, 1.4, "0,3333 0,6667 1 1,3333"},
    {"a fraction of pi", kPiUnit / 3, 0.1, 5, "\u03C0/3 2\u03C0/3 \u03C0 4\u03C0/3"},
    {"twice the step where there would be too many", 1, 0, 11, "0 2 4 6 8 10"},
    {"a thousand times and more", 0.001, 0, 11, "0 2 4 6 8 10"},
    {"thinned fractions of pi", kPiUnit / 3, 0, 70,
     "0 10\u03C0/3 20\u03C0/3 10\u03C0 40\u03C0/3 "
     "50\u03C0/3 20\u03C0"},
    {"no mark in view", 10, 1, 9, ""},
};

TEST(AxisMarks, FollowAFixedStep)
{
    constexpr int kMost = 8;
    for (const FixedCase& row : kFixedCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(Labels(FixedMarks(row.step, row.lower, row.upper, kMost)), row.labels);
    }
}

TEST(AxisMarks, OfAFixedStepAreNeverMany)
{
    constexpr unsigned kSeed = 4711;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> exponent(-320, 308);
    constexpr int kMost = 100;
    int seen = 0;
    for (int i = 0; i < 20000; ++i) {
        const double step = std::pow(10, exponent(random));
        const double range = std::pow(10, exponent(random) / 25);
        const AxisMarks marks = FixedMarks(step, -range / 3, range, kMost);
        ASSERT_LE(marks.Count(), 4 * kMost / 3 + 2) << step << " in " << range;
        if (marks.Count() > 0) {
            ++seen;
            ASSERT_LE(marks.Position(marks.last), range);
            ASSERT_FALSE(marks.Label(marks.last).empty());
        }
    }
    EXPECT_GT(seen, 5000);
    for (const double none : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
        EXPECT_EQ(FixedMarks(none, 0, 1, kMost).Count(), 0);
    }
}

struct CommonPartCase
{
    std::string_view behaviour;
    double lower, upper;
    std::string_view labels;
};
constexpr CommonPartCase kCommonPartCases[] = {
    {"beside one", 1 - 5.5e-11, 1 + 5.5e-11,
     "\u22124\u00B710\u207B\u00B9\u00B9 \u22122\u00B710\u207B\u00B9\u00B9 1 "
     "+2\u00B710\u207B\u00B9\u00B9 +4\u00B710\u207B\u00B9\u00B9"},
    {"the shortest number is written in full", 3.1415922, 3.1415933,
     "\u22128\u00B710\u207B\u2077 \u22126\u00B710\u207B\u2077 \u22124\u00B710\u207B\u2077 "
     "\u22122\u00B710\u207B\u2077 3,141593 +2\u00B710\u207B\u2077"},
    {"large numbers", 1e7 - 2.5, 1e7 + 3.5, "\u22122 \u22121 1\u00B710\u2077 +1 +2 +3"},
    {"years are short enough", 2019.5, 2024.5,
     "2\u2009020 2\u2009021 2\u2009022 2\u2009023 "
     "2\u2009024"},
};

TEST(AxisMarks, WriteTheCommonPartOnceAtADeepZoom)
{
    for (const CommonPartCase& row : kCommonPartCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(Labels(CoarseMarks(row.lower, row.upper)), row.labels);
    }
}

TEST(AxisMarks, HaveDifferentLabelsAtEveryZoomAndPlace)
{
    constexpr unsigned kSeed = 1618;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> exponent(-12, 12);
    std::uniform_real_distribution<double> distance(-2, 10);
    for (int i = 0; i < 5000; ++i) {
        const double range = std::pow(10, exponent(random));
        const double lower = (i % 2 == 0 ? 1 : -1) * range * std::pow(10, distance(random));
        for (const StepLadder ladder : {StepLadder::Decimal, StepLadder::Degrees, StepLadder::Pi}) {
            const AxisMarks marks = FineMarks(lower, lower + range, ladder);
            std::set<std::string> labels;
            std::size_t longest = 0;
            for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
                const std::string label = marks.Label(mark);
                if (mark != marks.base || mark == 0) longest = std::max(longest, label.size());
                labels.insert(label);
            }
            ASSERT_EQ(static_cast<std::int64_t>(labels.size()), marks.Count())
                << lower << " width " << range;
            ASSERT_LE(longest, 30U) << lower << " width " << range;  // bytes
        }
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
