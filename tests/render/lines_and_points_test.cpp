#include <string>
#include <vector>

#include "plot_fixture.h"
#include "render/point_graph.h"

namespace korvinth::render {
namespace {

struct LinesAndPointsTest : RenderedPlot
{
    LinesAndPointsTest() { plot.parser.DefineVariable("a=2"); }

    std::vector<StrokeCommand> Strokes(const std::string& lines_text)
    {
        plot.document.lines_text = lines_text;
        return Redraw();
    }
};

struct LineCase
{
    std::string_view behaviour, item;
    std::vector<GridPoint> points;
};
const LineCase kLineCases[] = {
    {"from edge to edge", "y=x/4", {{0, 75}, {200, 25}}},
    {"a rising line is cut at bottom and top", "y=2*x", {{75, 100}, {125, 0}}},
    {"a falling one at top and bottom", "y=-2*x", {{75, 0}, {125, 100}}},
    {"cut at one end only", "y=x+7", {{0, 80}, {80, 0}}},
    {"a horizontal line", "y=3", {{0, 20}, {200, 20}}},
    {"a horizontal line above the area is drawn, unclipped", "y=9", {{0, -40}, {200, -40}}},
    {"wholly above", "y=x+100", {}},
    {"wholly below", "y=x/100-9", {}},
    {"a vertical line", "x=2,5", {{125, 0}, {125, 100}}},
    {"a vertical line outside", "x=11", {}},
    {"the bounds are within", "x=-10", {{0, 0}, {0, 100}}},
    {"a parameter", "y=a", {{0, 30}, {200, 30}}},
    {"in the document's form", "y=_x/4", {{0, 75}, {200, 25}}},
    {"an equation inside the term", "y=wenn(x=2; 1; 1)", {{0, 40}, {200, 40}}},
    {"logic words", "y=wenn(a>1 und a<3; 1; 2)", {{0, 40}, {200, 40}}},
    {"blanks", " y = x / 4 ", {{0, 75}, {200, 25}}},
    {"neither x nor y", "z=x", {}},
    {"nothing after the sign", "y=", {}},
    {"an endless slope", "y=1e300*x*1e300", {}},
};

TEST_F(LinesAndPointsTest, LinesAreDrawnAndClipped)
{
    for (const LineCase& row : kLineCases) {
        SCOPED_TRACE(row.behaviour);
        const auto strokes = Strokes(std::string(row.item) + ":c=+0");
        ASSERT_EQ(strokes.size(), row.points.empty() ? 0U : 1U);
        if (!strokes.empty()) {
            EXPECT_EQ(strokes[0].points, row.points);
        }
    }
}

TEST_F(LinesAndPointsTest, LinesHaveTheirPensAndATangentFollowsItsFunction)
{
    plot.Define(0, "f", "_x^2/10").visible = false;
    plot.parser.DefineFunction("f(_x)=_x^2/10");
    const Pen pen = surface.CurrentPen();
    const auto strokes = Strokes("y=f(5)+f'(5)*(x-5):c=+2:+255\r\ny=1:c=+0:-1\r\ny=2:c=+6");
    ASSERT_EQ(strokes.size(), 2U) << "the second is hidden";
    EXPECT_EQ(strokes[0].pen, (Pen{document::MakeColour(255, 0, 0), 1, LineType::Dot}));
    // Slope 1.01: the difference quotient of one pixel.
    EXPECT_EQ(strokes[0].points, (std::vector<GridPoint>{{76, 100}, {175, 0}}));
    EXPECT_EQ(strokes[1].pen,
              (Pen{plot.document.attributes.line_colour, 1, LineType::SolidInside}));
    EXPECT_EQ(surface.CurrentPen(), pen);
    plot.document.attributes.lines = false;
    EXPECT_TRUE(Strokes("y=1:c=+0").empty());
}

TEST_F(LinesAndPointsTest, ErrorsOfLinesAreCollectedAndTheOthersDrawn)
{
    EXPECT_EQ(Strokes("y=2*(:c=+0\r\ny=1:c=+0\r\nx=1/0:c=+0\r\nz=(:c=+0").size(), 1U);
    EXPECT_EQ(renderer.Problems(), std::vector({Problem{"Aufgetretene Fehler bei Asymptoten:",
                                                        "y=2*(: Fehlerhafte Klammersetzung\r\n"
                                                        "x=1/0: Division durch 0\r\n"}}));
    const std::size_t programs = plot.parser.LivePrograms();
    Redraw();
    EXPECT_EQ(plot.parser.LivePrograms(), programs);
    Strokes("y=1:c=+0");
    EXPECT_TRUE(renderer.Problems().empty());
    EXPECT_EQ(plot.parser.GetError(), term::Error::None);
}

TEST_F(LinesAndPointsTest, PointsHaveTheirShapes)
{
    plot.document.points_text =
        "(a)(a):c=255\r\n(0)(1):s=1:r=5\r\n(-3)(0):s=2\r\n(5)(0):s=3:r=2\r\n"
        "(1)(1):h=1\r\n(1e300)(1)\r\n(11)(0)";
    Redraw();
    const auto ellipses = surface.All<EllipseCommand>();
    ASSERT_EQ(ellipses.size(), 3U);
    const Colour red = document::MakeColour(255, 0, 0);
    // The middle of pixel 120, 30 and four pixels to each side.
    RecordingSurface fine(200, 100, 2);
    renderer.RedrawAll(fine);
    EXPECT_EQ(fine.All<EllipseCommand>().at(0), (EllipseCommand{{233, 53, 249, 69}, {red}, true}));
    EXPECT_EQ(ellipses[2].brush.colour, plot.document.attributes.background) << "hollow";
    EXPECT_EQ(surface.All<StrokeCommand>().size(), 2U) << "the cross";
    EXPECT_EQ(fine.All<PolygonCommand>().at(0).corners.at(0), (GridPoint{297, 97}));
    EXPECT_TRUE(renderer.Problems().empty());
    plot.document.attributes.points = false;
    Redraw();
    EXPECT_EQ(surface.Commands().size(), 2U) << "background and refresh";
    EXPECT_FALSE(renderer.PointAt(120, 30));
}

TEST_F(LinesAndPointsTest, PointsShowTheirNamesWithValuesAndDoNotOverlapThem)
{
    plot.document.points_text = "(a)(1/3):n=P:w=1\r\n(a)(1/3):n=Q\r\n(-1e-9)(-a):n=R:w=1";
    Redraw();
    const auto names = surface.All<TextCommand>();
    ASSERT_EQ(names.size(), 3U);
    EXPECT_EQ(names[0].text, "P(2|0,3)");
    EXPECT_EQ(names[1].text, "Q");
    EXPECT_NE(names[1].top_left.x, names[0].top_left.x) << "on the other side";
    EXPECT_EQ(names[2].text, "R(0|−2)");
    plot.parser.SetVariableValue(plot.parser.DefineVariable("a"), 4);
    Redraw();
    EXPECT_EQ(surface.All<TextCommand>().at(0).text, "P(4|0,3)") << "the values are live";
}

TEST_F(LinesAndPointsTest, AFaultyPointIsLeftOutAndReported)
{
    plot.document.points_text = "(1)(2*)\r\n(1)(1/0):n=P\r\n(1)(1)\r\nabc";
    Redraw();
    EXPECT_EQ(surface.All<EllipseCommand>().size(), 1U);
    ASSERT_EQ(renderer.Problems().size(), 1U);
    EXPECT_EQ(renderer.Problems()[0].title, "Punktefenster:");
    EXPECT_TRUE(renderer.Problems()[0].text.starts_with(
        "(1 | 2*): Ungültiger Term\r\nP(1 | 1/0): Division durch 0\r\nabc: "));
}

TEST_F(LinesAndPointsTest, TheHandFindsTheNearestPoint)
{
    plot.document.points_text = "(0)(0):h=1\r\n(0)(0)\r\n(1)(0):r=10\r\n(0)(0)";
    Redraw();
    EXPECT_EQ(renderer.PointAt(100, 50), 3U) << "the one drawn on top";
    EXPECT_EQ(renderer.PointAt(107, 50), 2U);
    EXPECT_EQ(renderer.PointAt(124, 50), 2U) << "close by";
    EXPECT_FALSE(renderer.PointAt(126, 50));
}

}  // namespace
}  // namespace korvinth::render
