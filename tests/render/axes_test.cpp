#include "render/axes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "plot_fixture.h"
#include "render/recording_surface.h"

namespace korvinth::render {
namespace {

struct AxesTest : testing::Test
{
    void Draw(int width = 800, int height = 600)
    {
        view.area_width = width * 15.0;
        view.area_height = height * 15.0;
        UpdateDerived(view);
        surface = std::make_unique<RecordingSurface>(width * 5, height * 5, 5);
        LabelSpace labels(surface->Width(), surface->Height(), 5);
        helpline(*surface, view, attributes, ReadAxisScales(attributes, parser), labels);
    }

    std::multiset<std::string> Texts()
    {
        std::multiset<std::string> texts;
        for (const TextCommand& text : surface->All<TextCommand>()) texts.insert(text.text);
        return texts;
    }

    std::size_t Lines(Colour colour)
    {
        const auto strokes = surface->All<StrokeCommand>();
        return static_cast<std::size_t>(std::count_if(
            strokes.begin(), strokes.end(),
            [&](const StrokeCommand& stroke) { return stroke.pen.colour == colour; }));
    }

    void Show(double x_min, double x_max, double y_min, double y_max)
    {
        view = {x_min, x_max, y_min, y_max};
    }

    ViewRange view;
    document::DisplayAttributes attributes;
    term::MathParser parser;
    std::unique_ptr<RecordingSurface> surface;
};

TEST_F(AxesTest, LabelsTheMarksOfBothAxesAndZeroOnce)
{
    Show(-10, 10, -7.5, 7.5);
    Draw();
    EXPECT_EQ(Texts(), (std::multiset<std::string>{"x", "y", "0", "\u22128", "\u22126", "\u22124",
                                                   "\u22122", "2", "4", "6", "8", "\u22126",
                                                   "\u22124", "\u22122", "2", "4", "6"}));
}

TEST_F(AxesTest, DrawsOnlyTheBackgroundWithEverythingOff)
{
    for (bool document::DisplayAttributes::*const on :
         {&document::DisplayAttributes::x_numbers, &document::DisplayAttributes::y_numbers,
          &document::DisplayAttributes::help_lines, &document::DisplayAttributes::axes,
          &document::DisplayAttributes::axis_names}) {
        attributes.*on = false;
    }
    Draw();
    EXPECT_EQ(surface->Commands(),
              (std::vector<DrawingCommand>{ClearCommand{attributes.background}}));
}

TEST_F(AxesTest, KeepsZeroWhenOneAxisHasNoNumbers)
{
    attributes.x_numbers = false;
    Draw();
    EXPECT_EQ(Texts().count("0"), 1U);
    attributes.y_numbers = false;
    Draw();
    EXPECT_EQ(Texts().count("0"), 0U);
}

TEST_F(AxesTest, CountsInTheStepsOfTheSettings)
{
    parser.DefineVariable("pi=3.141592653589793");
    parser.DefineVariable("a=3");
    Show(-4, 8, 0.5, 7);
    attributes.x_step = {document::StepMode::Fixed, "a*pi/6"};
    attributes.y_step = {document::StepMode::MultiplesOfPi, ""};
    Draw();
    EXPECT_EQ(Texts(), (std::multiset<std::string>{
                           "y", "0", "\u2212\u03C0", "\u2212\u03C0/2", "\u03C0/2", "\u03C0",
                           "3\u03C0/2", "2\u03C0", "\u03C0/4", "\u03C0/2", "3\u03C0/4", "\u03C0",
                           "5\u03C0/4", "3\u03C0/2", "7\u03C0/4", "2\u03C0"}));
    attributes.angle_mode = term::TrigMode::Degrees;
    attributes.x_step.mode = document::StepMode::Automatic;
    Show(-100, 200, -200, 100);
    Draw(700, 500);
    EXPECT_EQ(Texts().count("30") + Texts().count("180"), 2U);
}

TEST_F(AxesTest, CountsAutomaticallyWhenAFixedStepHasNoValue)
{
    Draw();
    const auto automatic = surface->Commands();
    for (const std::string term : {"", "0", "-1", "1/0", "gelöscht"}) {
        SCOPED_TRACE(term);
        attributes.x_step = {document::StepMode::Fixed, term};
        attributes.y_step = attributes.x_step;
        Draw();
        EXPECT_EQ(surface->Commands(), automatic);
    }
}

TEST_F(AxesTest, KeepsAZeroOfOneAxisAloneOutOfTheOthersNumbers)
{
    const auto rows_of = [this](const std::string& text) {
        std::set<int> rows;
        for (const TextCommand& command : surface->All<TextCommand>()) {
            if (command.text == text) rows.insert(command.top_left.y);
        }
        return rows;
    };
    Show(-1, 9, -3, 3);
    Draw();
    EXPECT_EQ(rows_of("0"), rows_of("4")) << "the zero of both is in the row of x";
    Show(1, 9, -3, 3);
    Draw();
    ASSERT_EQ(rows_of("0").size(), 1U);
    EXPECT_LT(*rows_of("0").begin(), *rows_of("4").begin());
}

TEST_F(AxesTest, PutsAdditionalHelpLinesBetweenTheMarks)
{
    Show(-10, 10, -10, 10);
    attributes.extra_help_lines = true;
    Draw();
    EXPECT_EQ(Lines(attributes.help_line_colour), 2U * 11);
    EXPECT_EQ(Lines(attributes.extra_help_line_colour), 2U * 41);
    attributes.x_step = {document::StepMode::Fixed, "1e-9"};
    Draw();
    EXPECT_EQ(Lines(attributes.extra_help_line_colour), 41U) << "none between lines that are close";
}

TEST_F(AxesTest, DrawsLinesOnPixelCentres)
{
    Show(-9.87, 11.3, -3.21, 7.77);
    attributes.extra_help_lines = true;
    Draw();
    for (const StrokeCommand& stroke : surface->All<StrokeCommand>()) {
        for (const GridPoint& point : stroke.points) {
            EXPECT_EQ(point.x % 5, 0);
            EXPECT_EQ(point.y % 5, 0);
        }
    }
}

TEST_F(AxesTest, SticksNumbersToTheEdgeWhenTheirAxisIsOutOfView)
{
    Show(5, 25, 100, 150);
    Draw();
    const auto texts = Texts();
    EXPECT_EQ(texts.count("0"), 0U);
    EXPECT_EQ(texts.count("x") + texts.count("y"), 0U);
    EXPECT_EQ(texts.count("12"), 1U);
    EXPECT_EQ(texts.count("125"), 1U);
    for (const TextCommand& text : surface->All<TextCommand>()) {
        const bool at_left = text.top_left.x <= 5 * 5;
        const bool at_bottom = text.top_left.y + text.extent.height >= surface->Height() - 5 * 5;
        EXPECT_TRUE(at_left || at_bottom) << text.text;
    }
}

TEST_F(AxesTest, DrawsTheAxesOnTheVeryEdgesOfTheView)
{
    for (const auto& [from, to] : {std::pair{0, 10}, {-10, 0}}) {
        SCOPED_TRACE(from);
        Show(from, to, from, to);
        Draw();
        const bool first = from == 0;
        int level = -1;
        int upright = -1;
        for (const StrokeCommand& stroke : surface->All<StrokeCommand>()) {
            if (stroke.pen.width != attributes.axis_width) continue;
            const auto& [a, b] = std::pair{stroke.points.front(), stroke.points.back()};
            (a.y == b.y ? level : upright) = a.y == b.y ? a.y : a.x;
        }
        EXPECT_EQ(level, first ? 599 * 5 : 0);
        EXPECT_EQ(upright, first ? 0 : 799 * 5);
        const std::string number = first ? "8" : "\u22128";
        for (const TextCommand& text : surface->All<TextCommand>()) {
            if (text.text != number) continue;
            const bool beside_x = first ? text.top_left.y > 560 * 5 : text.top_left.y < 40 * 5;
            const bool beside_y = first ? text.top_left.x < 40 * 5 : text.top_left.x > 740 * 5;
            EXPECT_TRUE(beside_x || beside_y);
        }
    }
}

TEST_F(AxesTest, LeavesNumbersOutOfATinyArea)
{
    for (const auto& [width, height] : {std::pair{60, 40}, {800, 30}, {30, 600}, {1, 1}}) {
        SCOPED_TRACE(testing::Message() << width << "x" << height);
        Draw(width, height);
        EXPECT_TRUE(Texts().empty());
    }
}

bool Overlap(const TextCommand& a, const TextCommand& b)
{
    return a.top_left.x < b.top_left.x + b.extent.width &&
           b.top_left.x < a.top_left.x + a.extent.width &&
           a.top_left.y < b.top_left.y + b.extent.height &&
           b.top_left.y < a.top_left.y + a.extent.height;
}

TEST_F(AxesTest, TextsNeverOverlapNorLeaveTheAreaWhateverTheView)
{
    constexpr unsigned kSeed = 31337;
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> exponent(-12, 12);
    std::uniform_real_distribution<double> place(-1.5, 0.5);
    std::uniform_int_distribution<int> size(1, 1000);
    std::size_t seen = 0;
    for (int i = 0; i < 1500; ++i) {
        SCOPED_TRACE(testing::Message() << "seed " << kSeed << " view " << i);
        const double width = std::pow(10, exponent(random));
        const double height = std::pow(10, exponent(random));
        const double x = place(random) * width;
        const double y = place(random) * height;
        Show(x, x + width, y, y + height);
        attributes.x_step = {static_cast<document::StepMode>(i % 3), i % 2 == 0 ? "1/7" : "1e-9"};
        attributes.y_step = {static_cast<document::StepMode>(i / 3 % 3), "0.123456"};
        attributes.font_points = 6 + i % 31;
        Draw(size(random), size(random));
        ASSERT_LE(surface->All<StrokeCommand>().size(), 1000U);
        const auto texts = surface->All<TextCommand>();
        seen += texts.size();
        for (auto one = texts.begin(); one != texts.end(); ++one) {
            ASSERT_GT(one->top_left.x, 0);
            ASSERT_GT(one->top_left.y, 0);
            ASSERT_LT(one->top_left.x + one->extent.width, surface->Width());
            ASSERT_LT(one->top_left.y + one->extent.height, surface->Height());
            for (auto other = one + 1; other != texts.end(); ++other) {
                ASSERT_FALSE(Overlap(*one, *other)) << one->text << " and " << other->text;
            }
        }
    }
    EXPECT_GT(seen, 10000U);
}

TEST_F(AxesTest, DrawFewCommandsInRangesThatAreNone)
{
    const double ranges[][2] = {{NAN, 1},          {0, INFINITY},  {1, 1},         {5, -5},
                                {-1e308, 1.7e308}, {1, 1 + 1e-15}, {-1e300, 1e300}};
    attributes.extra_help_lines = true;
    for (const auto& x : ranges) {
        for (const auto& y : ranges) {
            SCOPED_TRACE(testing::Message() << x[0] << ".." << x[1] << " " << y[0] << ".." << y[1]);
            Show(x[0], x[1], y[0], y[1]);
            Draw();
            EXPECT_LT(surface->Commands().size(), 400U);
            for (const StrokeCommand& stroke : surface->All<StrokeCommand>()) {
                for (const GridPoint& point : stroke.points) {
                    EXPECT_LE(std::abs(point.x), 2 * surface->Width());
                    EXPECT_LE(std::abs(point.y), 2 * surface->Height());
                }
            }
        }
    }
}

}  // namespace
}  // namespace korvinth::render
