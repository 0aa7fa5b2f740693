#include "render/qt/raster_surface.h"

#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "render/qt/conversions.h"

namespace korvinth::render {
namespace {

std::uint32_t OpaquePixel(Colour colour)
{
    return 0xFF000000U | static_cast<std::uint32_t>(document::Red(colour)) << 16U |
           static_cast<std::uint32_t>(document::Green(colour)) << 8U |
           static_cast<std::uint32_t>(document::Blue(colour));
}

int FloorDivide(int value, int divisor)
{
    return value >= 0 ? value / divisor : -((divisor - 1 - value) / divisor);
}

}  // namespace

RasterSurface::RasterSurface(int width_pixels, int height_pixels, int steps_per_pixel, double scale)
    : DrawingSurface(width_pixels * steps_per_pixel, height_pixels * steps_per_pixel,
                     steps_per_pixel),
      scale_(scale),
      image_(static_cast<int>(std::lround(width_pixels * scale)),
             static_cast<int>(std::lround(height_pixels * scale)), QImage::Format_RGB32),
      raster_(image_.width(), image_.height())
{
    image_.fill(Qt::white);
}

RasterSurface::RasterSurface(QSize dots, int steps_per_pixel, double scale)
    : DrawingSurface(static_cast<int>(dots.width() / scale) * steps_per_pixel,
                     static_cast<int>(dots.height() / scale) * steps_per_pixel, steps_per_pixel),
      scale_(scale),
      image_(dots, QImage::Format_RGB32),
      raster_(image_.width(), image_.height())
{
    image_.fill(Qt::white);
}

PixelBuffer RasterSurface::Pixels()
{
    return {reinterpret_cast<std::uint32_t*>(image_.bits()),
            image_.bytesPerLine() / static_cast<std::ptrdiff_t>(sizeof(std::uint32_t))};
}

// Before anything but a stroke of the same colour is drawn.
void RasterSurface::LayStrokes()
{
    if (!strokes_colour_) return;
    raster_.Composite(Pixels(), OpaquePixel(*strokes_colour_));
    strokes_colour_.reset();
}

QPainter& RasterSurface::Painter()
{
    LayStrokes();
    if (!painter_) {
        painter_.emplace(&image_);
        painter_->setRenderHint(QPainter::Antialiasing, Smooth());
    }
    return *painter_;
}

void RasterSurface::DoStroke(std::span<const GridPoint> points, const Pen& pen)
{
    if (pen.type == LineType::Invisible || image_.isNull()) return;
    if (strokes_colour_ != pen.colour) LayStrokes();
    strokes_colour_ = pen.colour;
    if (Smooth()) {
        const double middle = 0.5 * StepsPerPixel();
        points_.clear();
        for (const GridPoint& point : points) {
            points_.push_back({ToDots(point.x + middle), ToDots(point.y + middle)});
        }
        const double width = pen.width * scale_;
        raster_.AddSmooth(points_, width, DashPattern(pen.type, width));
    } else {
        const int width = std::max(static_cast<int>(std::lround(pen.width)), 1);
        pixels_.clear();
        for (const GridPoint& point : points) pixels_.push_back({point.x, point.y});
        raster_.AddHard(pixels_, width, DashPattern(pen.type, width));
    }
}

void RasterSurface::DoPolygon(std::span<const GridPoint> corners, const Pen* outline,
                              const Brush& fill)
{
    if (image_.isNull()) return;
    const double shift = outline != nullptr ? 0.5 * StepsPerPixel() : 0;
    QPolygonF polygon;
    for (const GridPoint& corner : corners) {
        polygon << QPointF(ToDots(corner.x + shift), ToDots(corner.y + shift));
    }
    QPainter& painter = Painter();
    painter.setBrush(ToQt(fill.colour));
    if (outline != nullptr && outline->type != LineType::Invisible) {
        painter.setPen(QPen(ToQt(outline->colour), outline->width * scale_, Qt::SolidLine,
                            Qt::RoundCap, Qt::MiterJoin));
    } else {
        painter.setPen(Qt::NoPen);
    }
    painter.drawPolygon(polygon);
}

void RasterSurface::DoEllipse(const GridBox& box, const Brush& brush, bool filled)
{
    const int width = box.right - box.left;
    const int height = box.bottom - box.top;
    if (width <= 0 || height <= 0 || image_.isNull()) return;
    constexpr int kLargestDisc = 64;  // pixels
    if (scale_ == 1 && filled && width == height && width <= kLargestDisc * StepsPerPixel()) {
        StampDisc(box, brush.colour);
        return;
    }
    const QRectF area(ToDots(box.left), ToDots(box.top), ToDots(width), ToDots(height));
    const double half = scale_ / 2;
    QPainter& painter = Painter();
    painter.setPen(filled ? QPen(Qt::NoPen) : QPen(ToQt(brush.colour), scale_));
    painter.setBrush(filled ? QBrush(ToQt(brush.colour)) : QBrush(Qt::NoBrush));
    painter.drawEllipse(filled ? area : area.adjusted(half, half, -half, -half));
}

const RasterSurface::Disc& RasterSurface::PreparedDisc(int diameter, int phase_x, int phase_y)
{
    for (const Disc& disc : discs_) {
        if (disc.diameter == diameter && disc.phase_x == phase_x && disc.phase_y == phase_y) {
            return disc;
        }
    }
    const double steps = StepsPerPixel();
    const double radius = diameter / (2 * steps);
    Disc disc{diameter, phase_x, phase_y, static_cast<int>(std::ceil(diameter / steps)) + 2, {}};
    for (int y = 0; y < disc.size; ++y) {
        for (int x = 0; x < disc.size; ++x) {
            // The stamp begins one pixel left of and above the box.
            const double distance = std::hypot(x - 0.5 - (phase_x / steps + radius),
                                               y - 0.5 - (phase_y / steps + radius));
            const double strength = Smooth() ? std::clamp(radius + 0.5 - distance, 0.0, 1.0)
                                             : (distance < radius ? 1.0 : 0.0);
            disc.coverage.push_back(static_cast<std::uint8_t>(std::lround(strength * 255)));
        }
    }
    return discs_.emplace_back(std::move(disc));
}

void RasterSurface::StampDisc(const GridBox& box, Colour colour)
{
    LayStrokes();
    const int steps = StepsPerPixel();
    const int left = FloorDivide(box.left, steps);
    const int top = FloorDivide(box.top, steps);
    const Disc& disc =
        PreparedDisc(box.right - box.left, box.left - left * steps, box.top - top * steps);
    const PixelBuffer target = Pixels();
    const std::uint32_t pixel = OpaquePixel(colour);
    for (int row = 0; row < disc.size; ++row) {
        const int y = top - 1 + row;
        if (y < 0 || y >= image_.height()) continue;
        for (int column = 0; column < disc.size; ++column) {
            const int x = left - 1 + column;
            const std::uint8_t coverage =
                disc.coverage[static_cast<std::size_t>(row * disc.size + column)];
            if (x < 0 || x >= image_.width() || coverage == 0) continue;
            std::uint32_t& under = target.pixels[y * target.stride + x];
            under = Blend(under, pixel, coverage);
        }
    }
}

const RasterSurface::PreparedFont& RasterSurface::Prepared(const Font& font)
{
    for (const PreparedFont& prepared : fonts_) {
        if (prepared.font == font) return prepared;
    }
    QFont face(ToQt(font.face));
    face.setStyleHint(QFont::SansSerif);
    face.setPixelSize(std::max(static_cast<int>(std::lround(font.height * scale_)), 1));
    return fonts_.emplace_back(PreparedFont{font, face, QFontMetricsF(face, &image_)});
}

void RasterSurface::DoText(GridPoint top_left, std::string_view utf8, const Font& font,
                           Colour colour)
{
    if (image_.isNull()) return;
    const PreparedFont& prepared = Prepared(font);
    QPainter& painter = Painter();
    painter.setFont(prepared.face);
    painter.setPen(ToQt(colour));
    // Whole pixels, so that the same digits look the same everywhere.
    painter.drawText(QPointF(std::round(ToDots(top_left.x)),
                             std::round(ToDots(top_left.y) + prepared.metrics.ascent())),
                     ToQt(utf8));
}

GridExtent RasterSurface::DoMeasure(std::string_view utf8, const Font& font)
{
    const QFontMetricsF& metrics = Prepared(font).metrics;
    const double steps_per_dot = StepsPerPixel() / scale_;
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(ToQt(utf8)) * steps_per_dot)),
            static_cast<int>(std::ceil(metrics.height() * steps_per_dot))};
}

void RasterSurface::DoClear(Colour colour)
{
    if (image_.isNull()) return;
    LayStrokes();
    const PixelBuffer target = Pixels();
    for (int y = 0; y < image_.height(); ++y) {
        std::fill_n(target.pixels + y * target.stride, image_.width(), OpaquePixel(colour));
    }
}

void RasterSurface::DoRefresh()
{
    LayStrokes();
    painter_.reset();
}

}  // namespace korvinth::render
