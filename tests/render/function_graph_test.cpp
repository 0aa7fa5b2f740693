#include "render/function_graph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "plot_fixture.h"
#include "render/recording_surface.h"

namespace korvinth::render {
namespace {

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
    const auto finer = Strokes("_x/2+0.02", 5);
    EXPECT_EQ(finer.at(0).points.at(1), (GridPoint{50, 474}));
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

struct StrokeCase
{
    std::string_view behaviour, term, lower, upper;
    std::string_view ends;  // first and last point of each stroke
};
constexpr StrokeCase kStrokeCases[] = {
    {"starts with the first sample that has a value", "sqrt(_x)", "", "", "(100|50)-(200|18)"},
    {"breaks at a sample without a value", "1/_x", "", "", "(0|51)-(90|60)(110|40)-(200|49)"},
    {"leaves the band once and comes back from the last sample outside", "iif(_x^2>56,0,1e6-_x)",
     "", "", "(0|50)-(30|-100)(170|-100)-(200|50)"},
    {"leaves out samples beyond the band after a gap",
     "iif(_x<-5,0,iif(_x<0,1e6,iif(_x<1,sqrt(-1-_x^2),iif(_x<5,1e6,0))))", "", "",
     "(0|50)-(50|-100)(150|50)-(200|50)"},
    {"joins a jump inside the band by a line", "iif(_x<0,-1,1)", "", "", "(0|60)-(200|40)"},
    {"keeps a comparison together", "_x>0", "", "", "(0|50)-(200|40)"},
    {"draws the interval with both ends", "0", "-5", "5", "(50|50)-(150|50)"},
    // 97.5, halves to even
    {"starts a fractional interval between the pixels", "_x/2", "-9.5", "", "(5|98)-(195|2)"},
};

std::string PointText(GridPoint point)
{
    return "(" + std::to_string(point.x) + "|" + std::to_string(point.y) + ")";
}

TEST_F(GraphTest, BeginsAndEndsStrokesWhereTheSamplesDo)
{
    for (const StrokeCase& row : kStrokeCases) {
        SCOPED_TRACE(row.behaviour);
        slot.lower_bound = row.lower;
        slot.upper_bound = row.upper;
        std::string ends;
        for (const StrokeCommand& stroke : Strokes(row.term)) {
            ends += PointText(stroke.points.front()) + "-" + PointText(stroke.points.back());
        }
        EXPECT_EQ(ends, row.ends);
    }
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
    for (const std::string_view term : {"sin(", "unknown(_x)", "q*_x", "_x +* 2"}) {
        SCOPED_TRACE(term);
        EXPECT_TRUE(Strokes(term).empty());
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

}  // namespace
}  // namespace korvinth::render
