#include "render/qt/painter_surface.h"

#include <QPolygonF>
#include <QVector>
#include <cmath>

#include "render/dash_pattern.h"
#include "render/qt/conversions.h"

namespace korvinth::render {
namespace {

QPolygonF Places(std::span<const GridPoint> points, double shift)
{
    QPolygonF places;
    places.reserve(static_cast<qsizetype>(points.size()));
    for (const GridPoint& point : points) places << QPointF(point.x + shift, point.y + shift);
    return places;
}

constexpr double kHalfPixel = kVectorSteps / 2.0;

QPen LinePen(const Pen& pen, Qt::PenJoinStyle join)
{
    if (pen.type == LineType::Invisible) return Qt::NoPen;
    QPen line(ToQt(pen.colour), pen.width * kVectorSteps, Qt::SolidLine, Qt::RoundCap, join);
    const DashPattern dashes = DashPattern(pen.type, pen.width).WithRoundEnds(pen.width);
    QVector<qreal> multiples;
    for (const double length : dashes.Lengths()) multiples << length / pen.width;
    if (!dashes.Unbroken()) line.setDashPattern(multiples);
    return line;
}

}  // namespace

PainterSurface::PainterSurface(QPainter& painter, int width_pixels, int height_pixels)
    : DrawingSurface(width_pixels * kVectorSteps, height_pixels * kVectorSteps, kVectorSteps),
      painter_(painter)
{
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setClipRect(QRectF(0, 0, Width(), Height()), Qt::IntersectClip);
}

PainterSurface::~PainterSurface()
{
    FlushStroke();
    painter_.restore();
}

void PainterSurface::DoStroke(std::span<const GridPoint> points, const Pen& pen)
{
    if (pen.type == LineType::Invisible) return;
    painter_.setPen(LinePen(pen, Qt::RoundJoin));
    painter_.drawPolyline(Places(points, kHalfPixel));
}

void PainterSurface::DoPolygon(std::span<const GridPoint> corners, const Pen* outline,
                               const Brush& fill)
{
    painter_.setPen(outline != nullptr ? LinePen(*outline, Qt::MiterJoin) : QPen(Qt::NoPen));
    painter_.setBrush(ToQt(fill.colour));
    painter_.drawPolygon(Places(corners, outline != nullptr ? kHalfPixel : 0));
}

void PainterSurface::DoEllipse(const GridBox& box, const Brush& brush, bool filled)
{
    const QRectF area(QPointF(box.left, box.top), QPointF(box.right, box.bottom));
    if (!area.isValid()) return;
    painter_.setPen(filled ? QPen(Qt::NoPen) : QPen(ToQt(brush.colour), kVectorSteps));
    painter_.setBrush(filled ? QBrush(ToQt(brush.colour)) : QBrush(Qt::NoBrush));
    // A frame is a pixel wide and lies inside the box.
    painter_.drawEllipse(filled ? area
                                : area.adjusted(kHalfPixel, kHalfPixel, -kHalfPixel, -kHalfPixel));
}

void PainterSurface::DoText(GridPoint top_left, std::string_view utf8, const Font& font,
                            Colour colour)
{
    painter_.setFont(UnhintedFont(font, static_cast<int>(std::lround(font.height * kVectorSteps))));
    painter_.setPen(ToQt(colour));
    painter_.drawText(QPointF(top_left.x, top_left.y + metrics_.Ascent(font) * kVectorSteps),
                      ToQt(utf8));
}

GridExtent PainterSurface::DoMeasure(std::string_view utf8, const Font& font)
{
    return MeasuredExtent(metrics_, utf8, font, kVectorSteps);
}

void PainterSurface::DoClear(Colour colour)
{
    painter_.fillRect(QRectF(0, 0, Width(), Height()), ToQt(colour));
}

}  // namespace korvinth::render
