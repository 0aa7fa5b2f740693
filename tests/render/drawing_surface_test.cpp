#include "render/drawing_surface.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "render/recording_surface.h"

namespace korvinth::render {
namespace {

const Pen kBlue{document::MakeColour(0, 0, 255), 2, LineType::Solid};
const Pen kRed{document::MakeColour(255, 0, 0), 1, LineType::Dash};

TEST(DrawingSurface, AStrokeEndsAtAMoveOrAnotherPen)
{
    RecordingSurface surface(100, 100, 1);
    surface.SelectPen(kBlue);
    surface.LineTo({3, 4});
    surface.SelectPen(kBlue);  // the same pen goes on with the stroke
    surface.LineTo({5, 6});
    EXPECT_EQ(surface.SelectPen(kRed), kBlue);
    surface.LineTo({7, 8});
    surface.MoveTo({2, 2});
    surface.MoveTo({4, 4});  // a move alone draws nothing
    surface.LineTo({9, 9});
    const std::vector<StrokeCommand> strokes{
        {{{0, 0}, {3, 4}, {5, 6}}, kBlue}, {{{5, 6}, {7, 8}}, kRed}, {{{4, 4}, {9, 9}}, kRed}};
    EXPECT_EQ(surface.All<StrokeCommand>(), strokes);
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

}  // namespace
}  // namespace korvinth::render
