#include "render/drawing_surface.h"

#include <utility>

namespace korvinth::render {

DrawingSurface::DrawingSurface(int width, int height, int steps_per_pixel)
    : width_(width), height_(height), steps_per_pixel_(steps_per_pixel)
{
}

Pen DrawingSurface::SelectPen(const Pen& pen)
{
    if (!(pen == pen_)) FlushStroke();
    return std::exchange(pen_, pen);
}

Brush DrawingSurface::SelectBrush(const Brush& brush) { return std::exchange(brush_, brush); }

Font DrawingSurface::SelectFont(const Font& font) { return std::exchange(font_, font); }

Colour DrawingSurface::SetTextColour(Colour colour) { return std::exchange(text_colour_, colour); }

void DrawingSurface::MoveTo(GridPoint to)
{
    FlushStroke();
    position_ = to;
}

void DrawingSurface::LineTo(GridPoint to)
{
    if (stroke_.empty()) stroke_.push_back(position_);
    stroke_.push_back(to);
    position_ = to;
}

void DrawingSurface::Polygon(std::span<const GridPoint> corners)
{
    FlushStroke();
    if (corners.size() > 2) DoPolygon(corners, &pen_, brush_);
}

void DrawingSurface::FillRegion(std::span<const GridPoint> corners, const Brush& brush)
{
    FlushStroke();
    if (corners.size() > 2) DoPolygon(corners, nullptr, brush);
}

void DrawingSurface::PaintEllipse(const GridBox& box, const Brush& brush)
{
    FlushStroke();
    DoEllipse(box, brush, true);
}

void DrawingSurface::FrameEllipse(const GridBox& box, const Brush& brush)
{
    FlushStroke();
    DoEllipse(box, brush, false);
}

void DrawingSurface::TextOut(GridPoint top_left, std::string_view utf8)
{
    FlushStroke();
    if (!utf8.empty()) DoText(top_left, utf8, font_, text_colour_);
}

GridExtent DrawingSurface::MeasureText(std::string_view utf8) { return DoMeasure(utf8, font_); }

void DrawingSurface::Clear(Colour colour)
{
    FlushStroke();
    DoClear(colour);
}

void DrawingSurface::Refresh()
{
    FlushStroke();
    DoRefresh();
}

void DrawingSurface::FlushStroke()
{
    if (stroke_.empty()) return;
    DoStroke(stroke_, pen_);
    stroke_.clear();
}

}  // namespace korvinth::render
