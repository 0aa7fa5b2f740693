#include "document/parameter_values.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/document/plot_fixture.h"

namespace korvinth::document {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

TEST(AcceptedValue, FollowsTheStateOfTheParameter)
{
    struct Row
    {
        unsigned state;
        double value, accepted;
    };
    constexpr Row kRows[] = {
        {0, 1.7, 1.7},
        {kSampleCountState, 1.7, 2},
        {kSampleCountState, 25000, 20000},
        {kSampleCountState, 99.9, 99},
        {kIntegerState, 2.9, 2},
        {kIntegerState, -2.9, -2},
        {kIntegerState | kInXRange, 2.9, 2},
        {kInXRange | kInYRange | kInTRange | kIntegralBoundState, 2.9, 2.9},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(AcceptedValue(row.value, row.state), row.accepted)
            << row.value << " in state " << row.state;
    }
}

TEST(Slider, EveryPositionIsWhereItsValuePutsTheSlider)
{
    constexpr Bounds kBounds[] = {{-10, 10}, {0, 1e-9}, {2, 20000}, {-kLargest, kLargest}};
    for (const Bounds& bounds : kBounds) {
        for (int position = 0; position <= kSliderSteps; ++position) {
            EXPECT_EQ(SliderPosition(SliderValue(position, bounds), bounds), position)
                << bounds.lower << " to " << bounds.upper;
        }
        EXPECT_EQ(SliderValue(0, bounds), bounds.lower);
        EXPECT_EQ(SliderValue(kSliderSteps, bounds), bounds.upper);
    }
    EXPECT_EQ(SliderValue(350, {-10, 10}), -3) << "whole numbers stay whole";
    EXPECT_EQ(SliderPosition(50, {-10, 10}), kSliderSteps) << "rests at its end";
    EXPECT_EQ(SliderPosition(-50, {-10, 10}), 0);
    EXPECT_EQ(SliderPosition(1, {1, 1}), 0);
}

TEST(ParameterChecks, RefuseBoundsAndStepsInTheProgramsWords)
{
    Parameter a;
    a.name = "a";
    Parameter count;
    count.name = "ganz";
    count.state = kSampleCountState;
    const std::string invalid_a = "Ungültige Parametergrenzen von a:";
    struct Row
    {
        const Parameter& parameter;
        Bounds bounds;
        std::string title;  // "" when accepted
    };
    const Row rows[] = {
        {a, {-1, 1}, ""},
        {a, {1, 1}, invalid_a},
        {a, {2, 1}, invalid_a},
        {a, {1, 30000}, ""},
        {count, {2, 20000}, ""},
        {count, {1, 100}, "Fehlerhafte Eingabe"},
        {count, {2, 20001}, "Fehlerhafte Eingabe"},
        {count, {5, 5}, "Ungültige Parametergrenzen von ganz:"},
    };
    for (const Row& row : rows) {
        const auto refusal = CheckBounds(row.parameter, row.bounds);
        EXPECT_EQ(refusal ? refusal->title : "", row.title);
    }
    EXPECT_EQ(CheckBounds(a, {1, 1})->text, "Untere Grenze muss kleiner sein als obere Grenze!");
    EXPECT_EQ(CheckBounds(count, {1, 9})->text,
              "Stützstellenanzahl muss im Bereich [2; 20000] liegen!");

    EXPECT_FALSE(CheckStep(10, {0, 10}));
    EXPECT_FALSE(CheckStep(-10, {0, 10}));
    ASSERT_TRUE(CheckStep(-12, {0, 10}));
    EXPECT_EQ(CheckStep(12, {0, 10})->title, "Inakzeptable Schrittweite");
    EXPECT_EQ(CheckStep(12, {0, 10})->text, "Schrittweite ist größer als das Intervall!");
}

using ParameterValues = PlotTest;

TEST_F(ParameterValues, FieldsTakeTermsAndShowTwelveDigits)
{
    Apply({"f(x) = a*x"});
    struct Row
    {
        std::string_view typed;
        double value;
    };
    constexpr Row kRows[] = {{"1,5", 1.5},    {"2*pi", 6.283185307179586},
                             {"3*a", 3},      {"-1,5e-07", -1.5e-7},
                             {"1e+15", 1e15}, {"Unsinn", 0},
                             {"", 0},         {"1/0", 0},
                             {"2+", 0},       {"1e300*1e300", 0}};
    for (const Row& row : kRows) {
        EXPECT_DOUBLE_EQ(FieldValue(parser, row.typed), row.value) << row.typed;
        EXPECT_EQ(parser.GetError(), term::Error::None);
    }
    constexpr Row kShown[] = {
        {"0,3", 0.1 + 0.2}, {"0", -0.0}, {"-0,5", -0.5}, {"0,333333333333", 1.0 / 3}};
    for (const Row& row : kShown) {
        EXPECT_EQ(FieldText(row.value), row.typed);
        EXPECT_EQ(FieldValue(parser, row.typed, row.value), row.value) << "no digit is lost";
    }
}

TEST_F(ParameterValues, IntegralBoundsFollowTheIntervalOfTheirFunction)
{
    struct Row
    {
        std::string_view lower, upper;
        Bounds bounds;
    };
    const Row rows[] = {
        {"", "", {-5, 5}},  {"0", "2*a", {0, 2}},  {"1", "", {1, 5}},   {"7", "", {7, 17}},
        {"", "2", {-5, 2}}, {"", "-8", {-18, -8}}, {"3", "1", {-5, 5}}, {"Unsinn", "2", {-5, 2}},
    };
    Apply({"f(x) = a*x"});
    for (const Row& row : rows) {
        document.slots[Slot(0)].lower_bound = row.lower;
        document.slots[Slot(0)].upper_bound = row.upper;
        EXPECT_EQ(IntegralBoundRange(parser, document, Slot(0), {-5, 5}), row.bounds)
            << row.lower << ";" << row.upper;
    }
}

}  // namespace
}  // namespace korvinth::document
