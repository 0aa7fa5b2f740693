#include "render/function_graph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

#include "plot_fixture.h"
#include "render/recording_surface.h"

namespace korvinth::render {
namespace {

using Points = std::vector<GridPoint>;

// 20 samples, 10 pixels apart, over 200 x 100 pixels; x from -10 to 10, y from -5 to 5.
struct GraphTest : testing::Test
{
    std::vector<StrokeCommand> Strokes(std::string_view term, int steps = 1)
    {
        RecordingSurface surface(200 * steps, 100 * steps, steps);
        Draw(surface, term);
        return surface.All<StrokeCommand>();
    }

    void Draw(DrawingSurface& surface, std::string_view term)
    {
        FunctionGraph graph(plot.parser, plot.document.variables);
        graph.drawf(surface, term, plot.view,
                    checkdef(plot.document, slot, samples, plot.view, plot.parser), style, nullptr);
    }

    TestPlot plot{200, 100};
    document::FunctionSlot slot;
    int samples = 20;
    GraphStyle style;
};

TEST_F(GraphTest, DrawsOnePointASample)
{
    const auto strokes = Strokes("_x/2");
    ASSERT_EQ(strokes.size(), 1U);
    ASSERT_EQ(strokes[0].points.size(), 21U);  // both ends included
    for (int k = 0; k <= 20; ++k) {
        EXPECT_EQ(strokes[0].points[static_cast<std::size_t>(k)], (GridPoint{10 * k, 100 - 5 * k}));
    }
}

TEST_F(GraphTest, OffersTheFinerGridToSmoothSurfaces)
{
    const auto strokes = Strokes("_x/2+0.02", 5);
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].points.front(), (GridPoint{0, 499}));
    EXPECT_EQ(strokes[0].points[1], (GridPoint{50, 474}));
}

TEST_F(GraphTest, StartsWithTheFirstSampleThatHasAValue)
{
    const auto strokes = Strokes("sqrt(_x)");
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].points.front(), (GridPoint{100, 50}));
    EXPECT_EQ(strokes[0].points.size(), 11U);
}

TEST_F(GraphTest, BreaksAtASampleWithoutAValue)
{
    const auto strokes = Strokes("1/_x");
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[0].points.back(), (GridPoint{90, 60}));
    EXPECT_EQ(strokes[1].points.front(), (GridPoint{110, 40}));
}

TEST_F(GraphTest, DrawsAPoleToTheEdgeOfTheBandAndDoesNotJoinItsSides)
{
    plot.Show(-10, 10, -0.05, 0.05);
    samples = 21;  // none at the pole
    const auto strokes = Strokes("1/_x");
    ASSERT_EQ(strokes.size(), 2U);
    // Two area heights below the bottom edge, and above it.
    EXPECT_EQ(strokes[0].points.back().y, 300);
    EXPECT_EQ(strokes[1].points.front().y, -100);
}

TEST_F(GraphTest, LeavesTheBandOnceAndComesBackFromTheLastSampleOutside)
{
    // Inside the band at -10..-8 and 8..10, far above between.
    const auto strokes = Strokes("iif(_x^2>56,0,1e6-_x)");
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[0].points, (Points{{0, 50}, {10, 50}, {20, 50}, {30, -100}}));
    EXPECT_EQ(strokes[1].points, (Points{{170, -100}, {180, 50}, {190, 50}, {200, 50}}));
}

TEST_F(GraphTest, LeavesOutSamplesBeyondTheBandAfterAGap)
{
    // Inside, beyond the band, without a value, beyond the band, inside.
    const auto strokes =
        Strokes("iif(_x<-5,0,iif(_x<0,1e6,iif(_x<1,sqrt(-1-_x^2),iif(_x<5,1e6,0))))");
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[0].points.back(), (GridPoint{50, -100}));
    EXPECT_EQ(strokes[1].points.front(), (GridPoint{150, 50}));
}

TEST_F(GraphTest, JoinsAJumpInsideTheBandByALine)
{
    const auto strokes = Strokes("iif(_x<0,-1,1)");
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].points[9], (GridPoint{90, 60}));
    EXPECT_EQ(strokes[0].points[10], (GridPoint{100, 40}));
}

TEST_F(GraphTest, DrawsTheIntervalWithBothEnds)
{
    slot.lower_bound = "-5";
    slot.upper_bound = "5";
    const auto strokes = Strokes("0");
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].points.front(), (GridPoint{50, 50}));
    EXPECT_EQ(strokes[0].points.back(), (GridPoint{150, 50}));
}

TEST_F(GraphTest, StartsAFractionalIntervalBetweenThePixels)
{
    slot.lower_bound = "-9.5";
    const auto strokes = Strokes("_x/2");
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].points.front(), (GridPoint{5, 98}));  // 97.5, halves to even
    EXPECT_EQ(strokes[0].points.back().x, 195);
}

TEST_F(GraphTest, KeepsAComparisonTogether)
{
    const auto strokes = Strokes("_x>0");
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].points.front(), (GridPoint{0, 50}));
    EXPECT_EQ(strokes[0].points.back(), (GridPoint{200, 40}));
}

TEST_F(GraphTest, MarksEverySampleOnePixelRightAndBelow)
{
    style = {3, document::MakeColour(1, 2, 3)};
    for (const int steps : {1, 5}) {
        RecordingSurface surface(200 * steps, 100 * steps, steps);
        Draw(surface, "sqrt(_x)");
        EXPECT_TRUE(surface.All<StrokeCommand>().empty());
        const auto markers = surface.All<EllipseCommand>();
        ASSERT_EQ(markers.size(), 11U);
        EXPECT_EQ(markers[0].box, (GridBox{98 * steps, 48 * steps, 104 * steps, 54 * steps}));
        EXPECT_EQ(markers[0].brush, Brush{style.colour});
        EXPECT_TRUE(markers[0].filled);
    }
}

TEST_F(GraphTest, DrawsNothingForATermThatIsWrong)
{
    for (const std::string_view term : {"", "sin(", "unknown(_x)", "q*_x", "_x +* 2"}) {
        SCOPED_TRACE(term);
        const auto strokes = Strokes(term);
        if (term.empty()) continue;  // the empty term is the number 0
        EXPECT_TRUE(strokes.empty());
        EXPECT_EQ(plot.parser.GetError(), term::Error::None);
    }
}

TEST_F(GraphTest, SurvivesEveryKindOfValueAndRange)
{
    const double ranges[][4] = {{-10, 10, -5, 5},       {0, 0, 0, 0},
                                {5, -5, 3, -3},         {-1e300, 1e300, -1e308, 1e308},
                                {0, 1e-300, 0, 1e-300}, {NAN, 1, 0, INFINITY}};
    for (const auto& range : ranges) {
        plot.Show(range[0], range[1], range[2], range[3]);
        for (const std::string_view term :
             {"exp(_x^3)", "-exp(exp(_x))", "1/(_x-_x)", "_x*1e308*10", "tan(_x)", "ln(_x)"}) {
            SCOPED_TRACE(testing::Message() << term << " from " << range[0] << " to " << range[1]);
            for (const StrokeCommand& stroke : Strokes(term)) {
                EXPECT_LE(stroke.points.size(), 21U);
                for (const GridPoint& point : stroke.points) {
                    EXPECT_GE(point.y, -100);
                    EXPECT_LE(point.y, 300);
                }
            }
        }
    }
}

TEST_F(GraphTest, TakesAsManySamplesAsAsked)
{
    for (const int count : {2, 511, 512, 513, 20000}) {
        samples = count;
        const auto strokes = Strokes("0");
        ASSERT_EQ(strokes.size(), 1U);
        EXPECT_EQ(static_cast<int>(strokes[0].points.size()), count + 1);
        EXPECT_EQ(strokes[0].points.back(), (GridPoint{200, 50}));
    }
}

TEST_F(GraphTest, KeepsItsExpressionCompiledForTheNextRedraw)
{
    Strokes("_x/2");
    const std::size_t programs = plot.parser.LivePrograms();
    EXPECT_GT(programs, 0U);
    for (int i = 0; i < 1000; ++i) Strokes("_x/2");
    EXPECT_EQ(plot.parser.LivePrograms(), programs);
}

}  // namespace
}  // namespace korvinth::render
