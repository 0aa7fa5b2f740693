#include "render/drawing_surface.h"

#include <gtest/gtest.h>

#include <array>

#include "render/recording_surface.h"

namespace korvinth::render {
namespace {

const Pen kBlue{document::MakeColour(0, 0, 255), 2, LineType::Solid};
const Pen kRed{document::MakeColour(255, 0, 0), 1, LineType::Dash};

using Points = std::vector<GridPoint>;

TEST(DrawingSurface, JoinsConsecutiveLinesToOneStroke)
{
    RecordingSurface surface(100, 100, 1);
    surface.SelectPen(kBlue);
    surface.MoveTo({1, 2});
    surface.LineTo({3, 4});
    surface.SelectPen(kBlue);  // the same pen goes on with the stroke
    surface.LineTo({5, 6});
    ASSERT_EQ(surface.Commands().size(), 1U);
    EXPECT_EQ(surface.All<StrokeCommand>().front(),
              (StrokeCommand{{{1, 2}, {3, 4}, {5, 6}}, kBlue}));
}

TEST(DrawingSurface, BeginsANewStrokeWhereThePenChanges)
{
    RecordingSurface surface(100, 100, 1);
    surface.SelectPen(kBlue);
    surface.LineTo({3, 4});
    EXPECT_EQ(surface.SelectPen(kRed), kBlue);
    surface.LineTo({5, 6});
    const auto strokes = surface.All<StrokeCommand>();
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[0], (StrokeCommand{{{0, 0}, {3, 4}}, kBlue}));
    EXPECT_EQ(strokes[1], (StrokeCommand{{{3, 4}, {5, 6}}, kRed}));
}

TEST(DrawingSurface, BreaksTheStrokeAtEveryMove)
{
    RecordingSurface surface(100, 100, 1);
    surface.LineTo({1, 1});
    surface.MoveTo({2, 2});
    surface.MoveTo({4, 4});  // a move alone draws nothing
    surface.LineTo({5, 5});
    const auto strokes = surface.All<StrokeCommand>();
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[0].points, (Points{{0, 0}, {1, 1}}));
    EXPECT_EQ(strokes[1].points, (Points{{4, 4}, {5, 5}}));
}

TEST(DrawingSurface, KeepsTheOrderOfStrokesAndOtherShapes)
{
    RecordingSurface surface(100, 100, 1);
    const std::array triangle{GridPoint{0, 0}, GridPoint{4, 0}, GridPoint{0, 4}};
    surface.LineTo({1, 1});
    surface.PaintEllipse({0, 0, 4, 4}, {});
    surface.LineTo({2, 2});
    surface.Polygon(triangle);
    surface.LineTo({3, 3});
    surface.TextOut({0, 0}, "x");
    surface.LineTo({4, 4});
    surface.Refresh();
    std::string kinds;
    for (const DrawingCommand& command : surface.Commands()) {
        kinds += "spetcr"[command.index()];
    }
    EXPECT_EQ(kinds, "sespstsr");
}

TEST(DrawingSurface, LeavesOutAreasAndTextsWithoutExtent)
{
    RecordingSurface surface(100, 100, 1);
    const std::array edge{GridPoint{0, 0}, GridPoint{4, 0}};
    surface.Polygon(edge);
    surface.FillRegion(edge, {});
    surface.TextOut({0, 0}, "");
    EXPECT_TRUE(surface.Commands().empty());
}

TEST(DrawingSurface, OutlinesPolygonsAndNotRegions)
{
    RecordingSurface surface(100, 100, 1);
    const std::array triangle{GridPoint{0, 0}, GridPoint{4, 0}, GridPoint{0, 4}};
    surface.SelectPen(kBlue);
    surface.SelectBrush({kRed.colour});
    surface.Polygon(triangle);
    surface.FillRegion(triangle, {kBlue.colour});
    const auto polygons = surface.All<PolygonCommand>();
    ASSERT_EQ(polygons.size(), 2U);
    EXPECT_TRUE(polygons[0].outlined);
    EXPECT_EQ(polygons[0].outline, kBlue);
    EXPECT_EQ(polygons[0].fill, Brush{kRed.colour});
    EXPECT_FALSE(polygons[1].outlined);
    EXPECT_EQ(polygons[1].fill, Brush{kBlue.colour});
}

TEST(RecordingSurface, MeasuresCharactersAndNotBytes)
{
    RecordingSurface surface(100, 100, 5);
    surface.SelectFont({"Arial", 10});
    EXPECT_EQ(surface.MeasureText("\u2212\u03C0"), surface.MeasureText("-1"));
    EXPECT_EQ(surface.MeasureText("-1"), (GridExtent{50, 60}));
}

}  // namespace
}  // namespace korvinth::render
