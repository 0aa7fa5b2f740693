#include "render/qt/painter_surface.h"

#include <gtest/gtest.h>

#include <QImage>
#include <array>
#include <functional>

#include "render/qt/raster_surface.h"

namespace korvinth::render {
namespace {

constexpr int kWidth = 120;  // pixels
constexpr int kHeight = 60;
constexpr Colour kInk = document::MakeColour(0, 0, 0);

using Drawing = std::function<void(DrawingSurface&)>;

QImage OnPainter(const Drawing& draw)
{
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(1.0 / kVectorSteps, 1.0 / kVectorSteps);
    PainterSurface surface(painter, kWidth, kHeight);
    draw(surface);
    surface.Refresh();
    return image;
}

QImage OnRaster(const Drawing& draw)
{
    RasterSurface surface(kWidth, kHeight, kSmoothSteps);
    draw(surface);
    surface.Refresh();
    return surface.Image();
}

// Of black, 1 for a whole pixel.
double Ink(const QImage& image, int x, int y) { return 1 - qGray(image.pixel(x, y)) / 255.0; }

// The screen's surface is the measure of what a drawing should look like.
void ExpectAlike(const Drawing& draw, double tolerance)
{
    const QImage painter = OnPainter(draw);
    const QImage raster = OnRaster(draw);
    double ink = 0;
    double difference = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            ink += Ink(raster, x, y);
            difference += std::abs(Ink(painter, x, y) - Ink(raster, x, y));
        }
    }
    EXPECT_GT(ink, 10);
    EXPECT_LT(difference, tolerance * ink);
}

TEST(PainterSurface, DrawsWhatTheScreenShows)
{
    for (int type = 0; type <= 6; ++type) {
        if (static_cast<LineType>(type) == LineType::Invisible) continue;
        // Thinner lines have no round ends on an image.
        for (const double width : {2.0, 4.0}) {
            SCOPED_TRACE(testing::Message() << "line type " << type << ", width " << width);
            ExpectAlike(
                [&](DrawingSurface& surface) {
                    const int s = surface.StepsPerPixel();
                    surface.SelectPen({kInk, width, static_cast<LineType>(type)});
                    surface.MoveTo({5 * s, 5 * s});
                    surface.LineTo({110 * s, 5 * s});
                    surface.LineTo({110 * s, 50 * s});
                },
                0.25);
        }
    }
    ExpectAlike(
        [](DrawingSurface& surface) {
            const int s = surface.StepsPerPixel();
            const std::array corners{GridPoint{10 * s, 10 * s}, GridPoint{20 * s, 10 * s},
                                     GridPoint{20 * s, 40 * s}, GridPoint{10 * s, 40 * s}};
            surface.FillRegion(corners, {kInk});
            surface.PaintEllipse({30 * s, 10 * s, 42 * s, 22 * s}, {kInk});
            surface.FrameEllipse({50 * s, 10 * s, 80 * s, 40 * s}, {kInk});
            surface.PaintEllipse({110 * s, 50 * s, 140 * s, 80 * s}, {kInk});  // cut off
        },
        0.1);
}

TEST(PainterSurface, KeepsToItsPictureAndLeavesThePainterAsItWas)
{
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(1.0 / kVectorSteps, 1.0 / kVectorSteps);
    {
        PainterSurface surface(painter, 50, 30);
        surface.Clear(kInk);
        surface.SelectPen({kInk, 9, LineType::Invisible});
        surface.LineTo({9000, 9000});
        surface.SelectPen({kInk, 9, LineType::Solid});
        surface.LineTo({9000, 100});  // handed on when the surface goes
    }
    EXPECT_FALSE(painter.hasClipping());
    painter.end();
    EXPECT_EQ(Ink(image, 49, 29), 1);
    EXPECT_EQ(Ink(image, 50, 0), 0);
    EXPECT_EQ(Ink(image, 0, 30), 0);
}

TEST(PainterSurface, TextsFillTheirMeasure)
{
    int wide = 0;
    const QImage image = OnPainter([&wide](DrawingSurface& surface) {
        surface.SelectFont({"Arial", 20});
        const GridExtent extent = surface.MeasureText("MMMM");
        wide = extent.width / kVectorSteps;
        surface.TextOut({10 * kVectorSteps, 10 * kVectorSteps}, "MMMM");
    });
    int last = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            if (Ink(image, x, y) < 0.5) continue;
            last = std::max(last, x);
            EXPECT_GE(x, 10);
            EXPECT_GE(y, 10);
            EXPECT_LE(y, 34);
        }
    }
    EXPECT_NEAR(last, 10 + wide, 3);
}

}  // namespace
}  // namespace korvinth::render
