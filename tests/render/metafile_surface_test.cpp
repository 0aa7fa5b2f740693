#include "render/metafile_surface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <vector>

#include "metafile_reader.h"
#include "render/recording_surface.h"
#include "vector_scene.h"

namespace korvinth::render {
namespace {

using Points = std::vector<GridPoint>;

constexpr std::uint32_t kGeometric = 0x10000;
constexpr std::uint32_t kLineTypeBits = 0xF;

struct MetafileSurfaceTest : testing::Test
{
    MetafileSurfaceTest()
    {
        DrawScene(metafile);
        DrawScene(recorded);
    }

    // The lines, or everything else.
    std::vector<MetafileReader::Shape> Shapes(bool lines)
    {
        std::vector<MetafileReader::Shape> shapes = MetafileReader(metafile.Bytes()).shapes;
        std::erase_if(shapes, [lines](const MetafileReader::Shape& shape) {
            const Record record = shape.record;
            return lines != (record == Record::Polyline || record == Record::Polyline16);
        });
        return shapes;
    }

    FixedMetrics metrics;
    MetafileSurface metafile{kSceneWidth, kSceneHeight, ScreenSize{}, metrics};
    RecordingSurface recorded{kSceneWidth * kVectorSteps, kSceneHeight* kVectorSteps, kVectorSteps};
};

TEST(MetafileFrame, IsMeasuredOnTheScreenWithHalvesToEven)
{
    const ScreenSize screen{1280, 1024, 320, 240};
    EXPECT_EQ(MetafileFrame(800, 600, screen), (GridBox{0, 0, 20000, 14062}));  // 14062.5
    EXPECT_EQ(MetafileFrame(1, 8, screen), (GridBox{0, 0, 25, 188}));           // 187.5
}

TEST_F(MetafileSurfaceTest, ConsistsOfWholeRecordsAndLivingHandles)
{
    const MetafileReader reader(metafile.Bytes());
    EXPECT_EQ(reader.complaints, "");
    EXPECT_EQ(MetafileReader(metafile.Bytes()).complaints, "") << "asked for twice";
    EXPECT_EQ(MetafileReader(MetafileSurface(0, 0, {}, metrics).Bytes()).complaints, "");
}

TEST_F(MetafileSurfaceTest, BoundsFrameAndClipAreThePicture)
{
    const MetafileReader reader(metafile.Bytes());
    const GridBox picture{0, 0, kSceneWidth * kVectorSteps, kSceneHeight * kVectorSteps};
    EXPECT_EQ(reader.clip, picture);
    EXPECT_EQ(reader.bounds, (GridBox{0, 0, picture.right - 1, picture.bottom - 1}));
    EXPECT_EQ(reader.frame, MetafileFrame(kSceneWidth, kSceneHeight, ScreenSize{}));
    // Device units and hundredths of a millimetre tell the same size.
    EXPECT_NEAR(100.0 * reader.width_mm * picture.right / reader.device_width, reader.frame.right,
                0.5);
    EXPECT_NEAR(100.0 * reader.height_mm * picture.bottom / reader.device_height,
                reader.frame.bottom, 0.5);
}

TEST_F(MetafileSurfaceTest, StrokesHaveEveryPointAndTheirPen)
{
    const auto lines = Shapes(true);
    std::size_t line = 0;
    for (const StrokeCommand& stroke : recorded.All<StrokeCommand>()) {
        if (stroke.pen.type == LineType::Invisible) continue;
        SCOPED_TRACE(testing::Message() << "line type " << static_cast<int>(stroke.pen.type) << ", "
                                        << stroke.points.size() << " points");
        const Points wanted = Shifted(stroke.points);
        Points drawn;
        for (; drawn.size() < wanted.size(); ++line) {
            ASSERT_LT(line, lines.size());
            const auto& shape = lines[line];
            ASSERT_LE(shape.points.size(), 16384U);
            // Parts begin where the part before ends.
            if (!drawn.empty()) {
                ASSERT_EQ(shape.points.front(), drawn.back());
            }
            drawn.insert(drawn.end(), shape.points.begin() + (drawn.empty() ? 0 : 1),
                         shape.points.end());
            const bool solid = stroke.pen.type == LineType::SolidInside;
            EXPECT_EQ(shape.pen.style & kLineTypeBits,
                      solid ? 0U : static_cast<std::uint32_t>(stroke.pen.type));
            EXPECT_EQ(shape.pen.style & kGeometric, kGeometric);
            EXPECT_EQ(shape.pen.size, std::lround(stroke.pen.width * kVectorSteps));
            EXPECT_EQ(shape.pen.colour, static_cast<std::uint32_t>(stroke.pen.colour));
        }
        EXPECT_EQ(drawn, wanted);
    }
    EXPECT_EQ(line, lines.size());
}

TEST_F(MetafileSurfaceTest, AreasHaveTheirBrushAndNoUnwantedOutline)
{
    const auto areas = Shapes(false);
    ASSERT_EQ(areas.size(), 5U);
    const auto polygons = recorded.All<PolygonCommand>();
    const MetafileReader::Object none;
    EXPECT_EQ(areas[0].brush.colour, 0xFAFFFFU);
    EXPECT_EQ(areas[1].points, Shifted(polygons[0].corners));
    EXPECT_EQ(areas[1].pen.size, 2 * kVectorSteps);
    EXPECT_EQ(areas[1].brush.colour, static_cast<std::uint32_t>(polygons[0].fill.colour));
    EXPECT_EQ(areas[2].points, polygons[1].corners);
    EXPECT_EQ(areas[2].pen, none);
    EXPECT_EQ(areas[2].record, Record::Polygon);
    const GridBox disc = recorded.All<EllipseCommand>()[0].box;
    EXPECT_EQ(areas[3].points, (Points{{disc.left, disc.top}, {disc.right, disc.bottom}}));
    EXPECT_EQ(areas[3].pen, none);
    EXPECT_EQ(areas[4].brush, none) << "a frame is not filled";
    EXPECT_EQ(areas[4].pen.colour, 200U);
}

TEST_F(MetafileSurfaceTest, TextsHaveFontColourAndWidths)
{
    const auto texts = MetafileReader(metafile.Bytes()).texts;
    const auto wanted = recorded.All<TextCommand>();
    ASSERT_EQ(texts.size(), wanted.size());
    EXPECT_EQ(texts[0].units, u"−2,5·10⁷ <&> 𝑥");
    EXPECT_EQ(texts[0].widths.back(), 0U) << "the second half of a pair";
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(texts[i].at, wanted[i].top_left);
        EXPECT_EQ(texts[i].font.face, "Arial");
        EXPECT_EQ(texts[i].font.size, -std::lround(wanted[i].font.height * kVectorSteps));
        EXPECT_EQ(texts[i].colour, static_cast<std::uint32_t>(wanted[i].colour));
        EXPECT_EQ(std::accumulate(texts[i].widths.begin(), texts[i].widths.end(), 0U),
                  static_cast<std::uint32_t>(wanted[i].extent.width));
    }
}

}  // namespace
}  // namespace korvinth::render
