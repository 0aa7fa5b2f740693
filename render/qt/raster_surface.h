// A drawing surface on an image in memory.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "render/drawing_surface.h"
#include "render/stroke_raster.h"

namespace korvinth::render {

// Grid steps to a pixel: the exact pixel rules, or smooth lines between the pixels.
inline constexpr int kExactSteps = 1;
inline constexpr int kSmoothSteps = 5;

constexpr int GridSteps(bool smooth) { return smooth ? kSmoothSteps : kExactSteps; }

// Opaque pixels, white at first. An image for a screen of more dots has `scale` dots to a pixel;
// everything grows with it. Strokes go through a rasteriser of its own, since the toolkit's
// antialiased wide polylines take too long for steep graphs; texts and areas are the toolkit's.
class RasterSurface final : public DrawingSurface
{
public:
    // A scale other than 1 wants more than one step to a dot.
    RasterSurface(int width_pixels, int height_pixels, int steps_per_pixel, double scale = 1);
    // An image of just so many dots, whether they make whole pixels or not.
    RasterSurface(QSize dots, int steps_per_pixel, double scale);

    // Complete after Refresh.
    const QImage& Image() const { return image_; }

protected:
    void DoStroke(std::span<const GridPoint> points, const Pen& pen) override;
    void DoPolygon(std::span<const GridPoint> corners, const Pen* outline,
                   const Brush& fill) override;
    void DoEllipse(const GridBox& box, const Brush& brush, bool filled) override;
    void DoText(GridPoint top_left, std::string_view utf8, const Font& font,
                Colour colour) override;
    GridExtent DoMeasure(std::string_view utf8, const Font& font) override;
    void DoClear(Colour colour) override;
    void DoRefresh() override;

private:
    // A disc's coverage about its middle, kept for the next marker of its kind.
    struct Disc
    {
        int diameter = 0;  // grid steps
        int phase_x = 0;   // position of the box within a pixel, in grid steps
        int phase_y = 0;
        int size = 0;  // pixels
        std::vector<std::uint8_t> coverage;
    };
    struct PreparedFont
    {
        Font font;
        QFont face;
        QFontMetricsF metrics;
    };

    bool Smooth() const { return StepsPerPixel() > 1; }
    double ToDots(double grid_steps) const { return grid_steps * scale_ / StepsPerPixel(); }
    PixelBuffer Pixels();
    void LayStrokes();
    QPainter& Painter();
    const Disc& PreparedDisc(int diameter, int phase_x, int phase_y);
    void StampDisc(const GridBox& box, Colour colour);
    const PreparedFont& Prepared(const Font& font);

    double scale_;
    QImage image_;
    StrokeRaster raster_;
    // Of the strokes in the raster that are not laid onto the image yet. Strokes of one colour are
    // laid together, since that costs more than to draw them: a family's members are.
    std::optional<Colour> strokes_colour_;
    std::optional<QPainter> painter_;  // open between the first use and Refresh
    std::vector<PixelPoint> points_;
    std::vector<PixelIndex> pixels_;
    std::vector<Disc> discs_;
    std::vector<PreparedFont> fonts_;
};

}  // namespace korvinth::render
