#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "document/parameter_use.h"
#include "plot_fixture.h"
#include "render/curve_graph.h"
#include "render/integral_graph.h"

namespace korvinth::render {
namespace {

struct IntegralAndCurveTest : RenderedPlot
{
    void DefineIntegral(int index, const std::string& integrand, double lower_bound)
    {
        plot.Define(index, "g", "integral" + integrand).integral_term = integrand;
        SetLowerBound(index, lower_bound);
    }
    document::Parameter& SetLowerBound(int index, double value)
    {
        const document::ParameterIndex bound = document::LowerBoundParameter(Slot(index));
        document::Parameter& parameter = plot.document.parameters[bound];
        parameter.name = "bound" + std::to_string(index);
        parameter.handle = plot.parser.DefineVariable(parameter.name);
        document::SetParameterValue(plot.document, plot.parser, bound, value);
        return parameter;
    }
    // Height of the drawn sum above the x-axis at a column of pixels, in units; NaN where nothing
    // is.
    double HeightAt(int column)
    {
        for (const StrokeCommand& stroke : Redraw()) {
            for (const GridPoint& point : stroke.points) {
                if (point.x == column) return (50 - point.y) / 10.0;
            }
        }
        return std::nan("");
    }
};

TEST_F(IntegralAndCurveTest, AConstantGivesALineThroughItsLowerBound)
{
    DefineIntegral(0, "(1)", 2);
    EXPECT_DOUBLE_EQ(HeightAt(120), 0);
    EXPECT_DOUBLE_EQ(HeightAt(150), 3);
    EXPECT_DOUBLE_EQ(HeightAt(90), -3);
    ASSERT_EQ(Redraw().size(), 2U) << "one stroke in each direction";
}

TEST_F(IntegralAndCurveTest, SumsByTheRectangleRuleOnBothSides)
{
    // dx = 0.1: F(1) = 0.1 * (0 + 0.1 + ... + 0.9) to the right, and as many of the other heights
    // to the left.
    DefineIntegral(0, "(10*_x)", 0);
    EXPECT_DOUBLE_EQ(HeightAt(110), 4.5);
    EXPECT_DOUBLE_EQ(HeightAt(90), 4.5);
    // A lower bound between two samples shifts the grid.
    DefineIntegral(0, "(1)", 0.05);
    EXPECT_DOUBLE_EQ(HeightAt(110), 0.9);
}

TEST_F(IntegralAndCurveTest, TheErrorShrinksInProportionToTheStep)
{
    struct Antiderivative
    {
        const char* integrand;
        double (*value)(double);
    };
    const Antiderivative cases[] = {
        {"(_x^2/10)", [](double x) { return x * x * x / 30; }},
        {"(cos(_x))", [](double x) { return std::sin(x); }},
        {"(exp(_x/3))", [](double x) { return 3 * (std::exp(x / 3) - 1); }},
    };
    for (const Antiderivative& row : cases) {
        SCOPED_TRACE(row.integrand);
        double former = 0;
        for (const int steps_per_row : {10, 20, 40, 80}) {
            const std::vector<double> sums =
                document::SumIntegral(plot.parser, plot.document.variables.x, row.integrand, 0,
                                      {1, 1, 2}, {steps_per_row});
            const double error = std::abs(sums[1] - row.value(2));
            if (former > 0) {
                EXPECT_NEAR(error / former, 0.5, 0.03);
            }
            former = error;
        }
    }
}

TEST_F(IntegralAndCurveTest, ADirectionEndsWhereTheIntegrandDoes)
{
    DefineIntegral(0, "(1/_x)", 1);
    EXPECT_NEAR(HeightAt(190), std::log(9.0), 0.15);
    EXPECT_TRUE(std::isnan(HeightAt(95)));
    DefineIntegral(0, "(1/_x)", 0);
    EXPECT_TRUE(Redraw().empty()) << "a sum that cannot start draws nothing";
    plot.document.attributes.integrand_limit = "0.2";  // |g| above 4 counts as infinite
    DefineIntegral(0, "(_x)", 0);
    EXPECT_FALSE(std::isnan(HeightAt(141))) << "the sum up to the gap";
    EXPECT_TRUE(std::isnan(HeightAt(142)));
    DefineIntegral(0, "(1)", 1e9);
    EXPECT_TRUE(Redraw().empty()) << "too long a way to the view";
    DefineIntegral(0, "(1)", std::nan(""));
    EXPECT_TRUE(Redraw().empty());
}

TEST_F(IntegralAndCurveTest, OnlyTheSlotsIntervalIsDrawnButAllIsSummed)
{
    DefineIntegral(0, "(1)", -4);
    plot.document.slots[Slot(0)].lower_bound = "-2";
    plot.document.slots[Slot(0)].upper_bound = "0";
    EXPECT_TRUE(std::isnan(HeightAt(70)));
    EXPECT_DOUBLE_EQ(HeightAt(90), 3);
    EXPECT_TRUE(std::isnan(HeightAt(110)));
}

TEST_F(IntegralAndCurveTest, AnIntegrandMayLookAtTheRunningSum)
{
    // F' = 1 - F with F(0) = 0, stepped by 0.1.
    DefineIntegral(0, "(1-qq)", 0);
    EXPECT_NEAR(HeightAt(110), 1 - std::pow(0.9, 10), 0.051);
    EXPECT_EQ(plot.parser.VariableValue(plot.document.variables.qq), 0);
}

TEST_F(IntegralAndCurveTest, SupportPointsSetTheSampleCountOfTheirIntegral)
{
    DefineIntegral(0, "(10*_x)", 0);
    document::Parameter& points = plot.document.parameters[SampleCountParameter(Slot(0))];
    points.name = "ganz";
    points.value = 21;
    EXPECT_DOUBLE_EQ(HeightAt(110), 0) << "a step of one unit";
    EXPECT_EQ(renderer.SampleCount(Slot(1)), 200);

    // Of a curve, those of its only integral.
    document::FunctionSlot& y_part = plot.Define(0, "y", "integral(1)");
    y_part.curve_link = document::kCurveYPart;
    y_part.integral_term = "(1)";
    plot.Define(1, "x", "_x").curve_link = 0;
    points.value = 5;
    ASSERT_EQ(Redraw().size(), 1U);
    EXPECT_EQ(Redraw()[0].points.size(), 5U);

    points.name.clear();
    EXPECT_EQ(renderer.SampleCount(Slot(0)), 200) << "the usual count again";
}

TEST_F(IntegralAndCurveTest, ACircleClosesInEveryAngleMode)
{
    plot.Define(0, "x", "4*cos(_x)").curve_link = 1;
    plot.Define(1, "y", "4*sin(_x)").curve_link = document::kCurveYPart;
    plot.document.slots[Slot(0)].upper_bound = "360";
    plot.parser.SetTrigMode(term::TrigMode::Degrees);
    const std::vector<StrokeCommand> strokes = Redraw();
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].points.front(), strokes[0].points.back());
    for (const GridPoint& point : strokes[0].points) {
        EXPECT_NEAR(std::hypot(point.x - 100, point.y - 50), 40, 0.8);
    }
}

TEST_F(IntegralAndCurveTest, CurvesBreakAtGapsAndDrawTheirIntegrals)
{
    plot.Define(0, "x", "_x").curve_link = 1;
    plot.Define(1, "y", "sqrt(_x^2-1)").curve_link = document::kCurveYPart;
    plot.document.slots[Slot(0)].lower_bound = "-3";
    plot.document.slots[Slot(0)].upper_bound = "3";
    ASSERT_EQ(Redraw().size(), 2U);
    EXPECT_GE(Redraw()[1].points.front().x, 110) << "nothing joins both sides of the gap";

    // x = t, y = integral of 1 from 1: a line, drawn once in one stroke.
    document::FunctionSlot& y_part = plot.Define(1, "y", "integral(1)");
    y_part.integral_term = "(1)";
    SetLowerBound(1, 1);
    const std::vector<StrokeCommand> strokes = Redraw();
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].points.front(), (GridPoint{70, 90}));
    EXPECT_EQ(strokes[0].points.back(), (GridPoint{130, 30}));
    EXPECT_TRUE(renderer.Problems().empty());
}

TEST_F(IntegralAndCurveTest, AFamilyOfLowerBounds)
{
    DefineIntegral(0, "(1)", 1);
    document::Parameter& bound = SetLowerBound(0, 1);
    bound.family = true;
    plot.document.slots[Slot(0)].family_allowed = true;
    plot.document.attributes.family_count = 1;
    plot.document.attributes.family_step = -2;
    const auto crosses_the_axis_at = [this](int column) {
        for (const StrokeCommand& stroke : Redraw()) {
            for (const GridPoint& point : stroke.points) {
                if (point == GridPoint{column, 50}) return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(crosses_the_axis_at(110));
    EXPECT_TRUE(crosses_the_axis_at(90));
    // The same as the y-part of a curve.
    plot.document.slots[Slot(0)].curve_link = document::kCurveYPart;
    document::FunctionSlot& x_part = plot.Define(1, "x", "_x");
    x_part.curve_link = 0;
    x_part.family_allowed = true;
    x_part.lower_bound = "-3";
    x_part.upper_bound = "3";
    EXPECT_EQ(Redraw().size(), 2U);
    EXPECT_EQ(Redraw().at(1).points.front(), (GridPoint{70, 70}));
    EXPECT_EQ(plot.parser.VariableValue(bound.handle), 1);
}

TEST_F(IntegralAndCurveTest, DeliberateMessageOfACombinationThatCurvesCannotHold)
{
    document::FunctionSlot& x_part = plot.Define(0, "x", "integral(1)");
    x_part.curve_link = 1;
    x_part.integral_term = "(1)";
    plot.Define(1, "y", "").curve_link = document::kCurveYPart;
    EXPECT_TRUE(Redraw().empty());
    EXPECT_EQ(
        renderer.Problems(),
        std::vector({Problem{"Fehler", "Bei Integralfkt im Kurvenmodus unmöglicher Fehler "}}));
    plot.Define(1, "y", "_x");
    Redraw();
    EXPECT_TRUE(renderer.Problems().empty());
}

TEST(ClipSegment, AgreesWithManySmallPieces)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(-30, 30);
    constexpr int kPieces = 4000;
    for (int round = 0; round < 300; ++round) {
        const AreaPoint from{place(random), place(random)};
        const AreaPoint to{place(random), place(random)};
        double first = 2;
        double last = -1;
        for (int i = 0; i <= kPieces; ++i) {
            const double t = static_cast<double>(i) / kPieces;
            const double x = from.x + t * (to.x - from.x);
            const double y = from.y + t * (to.y - from.y);
            if (std::abs(x) > 10 || std::abs(y) > 5) continue;
            first = std::min(first, t);
            last = std::max(last, t);
        }
        const auto part = ClipSegment(from, to, 10, 5);
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        if (last < 0) {
            if (!part) continue;
            EXPECT_LT(std::hypot(part->second.x - part->first.x, part->second.y - part->first.y),
                      2 * length / kPieces);
            continue;
        }
        ASSERT_TRUE(part.has_value());
        const double tolerance = 2 * length / kPieces;
        EXPECT_NEAR(part->first.x, from.x + first * (to.x - from.x), tolerance);
        EXPECT_NEAR(part->first.y, from.y + first * (to.y - from.y), tolerance);
        EXPECT_NEAR(part->second.x, from.x + last * (to.x - from.x), tolerance);
        EXPECT_NEAR(part->second.y, from.y + last * (to.y - from.y), tolerance);
    }
    const auto far = ClipSegment({0, 0}, {1e150, 2e150}, 10, 5);
    ASSERT_TRUE(far.has_value());
    EXPECT_NEAR(far->second.x, 2.5, 1e-9);
    EXPECT_NEAR(far->second.y, 5, 1e-9);
}

}  // namespace
}  // namespace korvinth::render
