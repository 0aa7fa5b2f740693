#include "render/qt/raster_surface.h"

#include <gtest/gtest.h>

#include <array>

#include "pixel_count.h"

namespace korvinth::render {
namespace {

constexpr Colour kBlack = document::MakeColour(0, 0, 0);
constexpr Colour kOrange = document::MakeColour(0xE0, 0x60, 0x10);
constexpr QRgb kWhitePixel = 0xFFFFFFFF;
constexpr QRgb kOrangePixel = 0xFFE06010;

// Pixels that are not white.
int Inked(const QImage& image)
{
    return CountPixels(image, [](const QColor& pixel) { return pixel != QColor(Qt::white); });
}

TEST(RasterSurface, DrawsCrispLinesOnPixelCentresAtBothGrids)
{
    for (const int steps : {kExactSteps, kSmoothSteps}) {
        RasterSurface surface(40, 20, steps);
        surface.SelectPen({kOrange, 1, LineType::Solid});
        surface.MoveTo({0, 7 * steps});
        surface.LineTo({40 * steps, 7 * steps});
        surface.Refresh();
        surface.SelectPen({kBlack, 2, LineType::Invisible});
        surface.LineTo({0, 0});
        surface.Refresh();
        for (int x = 0; x < 40; ++x) EXPECT_EQ(surface.Image().pixel(x, 7), kOrangePixel);
        EXPECT_EQ(Inked(surface.Image()), 40);
    }
}

TEST(RasterSurface, DrawsBetweenThePixelsOnTheFinerGrid)
{
    RasterSurface surface(40, 20, kSmoothSteps);
    surface.SelectPen({kBlack, 1, LineType::Solid});
    surface.MoveTo({0, 36});  // a fifth of a pixel below the middle of row 7
    surface.LineTo({200, 36});
    surface.Refresh();
    EXPECT_NEAR(qRed(surface.Image().pixel(20, 7)), 51, 2);
    EXPECT_NEAR(qRed(surface.Image().pixel(20, 8)), 204, 2);
}

TEST(RasterSurface, StampsMarkersWhereTheirBoxIs)
{
    for (const int steps : {kExactSteps, kSmoothSteps}) {
        RasterSurface surface(40, 20, steps);
        surface.PaintEllipse({7 * steps, 7 * steps, 13 * steps, 13 * steps}, {kOrange});
        surface.Refresh();
        const QImage& image = surface.Image();
        EXPECT_EQ(image.pixel(9, 9), kOrangePixel);
        EXPECT_EQ(image.pixel(10, 10), kOrangePixel);
        EXPECT_EQ(image.pixel(7, 7), kWhitePixel);
        EXPECT_EQ(image.pixel(6, 10), kWhitePixel);
        EXPECT_EQ(image.pixel(13, 10), kWhitePixel);
        // As wide as high, and the same on both sides.
        EXPECT_EQ(image.copy(7, 7, 6, 6), image.copy(7, 7, 6, 6).mirrored(true, true));
    }
}

TEST(RasterSurface, CutsMarkersOffAtTheEdges)
{
    RasterSurface surface(10, 10, kSmoothSteps);
    surface.PaintEllipse({-15, -15, 15, 15}, {kOrange});
    surface.PaintEllipse({35, 35, 65, 65}, {kOrange});
    surface.PaintEllipse({1000, 1000, 1030, 1030}, {kOrange});
    surface.PaintEllipse({-1030, -1030, -1000, -1000}, {kOrange});
    surface.Refresh();
    EXPECT_EQ(surface.Image().pixel(0, 0), kOrangePixel);
    EXPECT_EQ(surface.Image().pixel(9, 9), kOrangePixel);
    EXPECT_EQ(surface.Image().pixel(5, 4), kWhitePixel);
}

TEST(RasterSurface, FillsRegionsFromEdgeToEdge)
{
    RasterSurface surface(20, 20, kSmoothSteps);
    const std::array square{GridPoint{25, 25}, GridPoint{50, 25}, GridPoint{50, 50},
                            GridPoint{25, 50}};
    surface.FillRegion(square, {kOrange});
    surface.Refresh();
    EXPECT_EQ(Inked(surface.Image()), 25);
    EXPECT_EQ(surface.Image().pixel(5, 5), kOrangePixel);
    EXPECT_EQ(surface.Image().pixel(9, 9), kOrangePixel);
}

TEST(RasterSurface, KeepsTextsInsideTheirMeasure)
{
    RasterSurface surface(200, 60, kSmoothSteps);
    surface.SelectFont({"Arial", 12});
    const GridExtent extent = surface.MeasureText("\u22122,5\u00B710\u2077");
    ASSERT_GT(extent.width, 0);
    surface.TextOut({50, 50}, "\u22122,5\u00B710\u2077");
    surface.Refresh();
    const QImage& image = surface.Image();
    const int inked = Inked(image);
    EXPECT_GT(inked, 20);
    EXPECT_EQ(Inked(image.copy(9, 9, extent.width / 5 + 3, extent.height / 5 + 3)), inked);
}

// What is drawn last lies on top, whichever operations come before it.
TEST(RasterSurface, KeepsTheOrderOfDrawing)
{
    constexpr Colour kBlue = document::MakeColour(0, 0, 255);
    constexpr int kMiddle = 50;  // grid steps
    const auto stroke = [](RasterSurface& surface, Colour colour) {
        surface.SelectPen({colour, 3, LineType::Solid});
        surface.MoveTo({0, kMiddle});
        surface.LineTo({2 * kMiddle, kMiddle});
    };
    using Step = void (*)(RasterSurface&);
    const Step covers[] = {
        [](RasterSurface& surface) {
            surface.SelectPen({kBlue, 3, LineType::Solid});
            surface.MoveTo({kMiddle, 0});
            surface.LineTo({kMiddle, 2 * kMiddle});
        },
        [](RasterSurface& surface) {
            const std::array square{GridPoint{25, 25}, GridPoint{75, 25}, GridPoint{75, 75},
                                    GridPoint{25, 75}};
            surface.FillRegion(square, {kBlue});
        },
        [](RasterSurface& surface) {
            surface.PaintEllipse({25, 25, 75, 75}, {kBlue});
        },
        [](RasterSurface& surface) { surface.Clear(kBlue); },
    };
    for (const Step cover : covers) {
        SCOPED_TRACE(&cover - covers);
        RasterSurface surface(20, 20, kSmoothSteps);
        stroke(surface, kOrange);
        cover(surface);
        surface.Refresh();
        EXPECT_EQ(surface.Image().pixel(10, 10), 0xFF0000FF);
        stroke(surface, kOrange);
        surface.Refresh();
        EXPECT_EQ(surface.Image().pixel(10, 10), kOrangePixel);
    }
}

TEST(RasterSurface, DrawsOnAnAreaWithoutPixels)
{
    RasterSurface surface(0, 0, kSmoothSteps);
    const std::array triangle{GridPoint{0, 0}, GridPoint{9, 0}, GridPoint{0, 9}};
    surface.Clear(kOrange);
    surface.LineTo({100, 100});
    surface.Polygon(triangle);
    surface.PaintEllipse({0, 0, 10, 10}, {kOrange});
    surface.TextOut({0, 0}, "x");
    surface.Refresh();
    EXPECT_TRUE(surface.Image().isNull());
}

}  // namespace
}  // namespace korvinth::render
