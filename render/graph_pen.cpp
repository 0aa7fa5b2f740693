#include "render/graph_pen.h"

#include <cmath>

#include "render/grid_rounding.h"

namespace korvinth::render {

GraphPen::GraphPen(DrawingSurface& surface, const ViewRange& view, const Sampling& sampling,
                   const GraphStyle& style, double last_clamped)
    : surface_(surface),
      style_(style),
      pixels_per_sample_(sampling.pixels_per_sample),
      area_height_(view.area_height),
      twips_per_pixel_(view.twips_per_pixel_y),
      clamp_limit_(2 * view.area_height),
      steps_(surface.StepsPerPixel()),
      last_clamped_(last_clamped)
{
}

void GraphPen::Break()
{
    skip_ = true;
    pen_up_ = true;
}

void GraphPen::Draw(double index, double value, bool within)
{
    if (std::isnan(value)) {
        Break();
        return;
    }
    if (std::abs(value) <= clamp_limit_) {
        skip_ = false;
        last_clamped_ = 0;
    } else {
        if (last_clamped_ == 0) {
            skip_ = false;
            last_clamped_ = value;
        } else {
            pen_up_ = true;
        }
        value = std::copysign(clamp_limit_, value);
    }
    if (!within) skip_ = true;
    // Deliberate: beyond the band after a gap, the samples stay left out until one lies inside.
    if (!skip_) DrawPoint(index, value);
}

void GraphPen::DrawPoint(double index, double value)
{
    const double pixel_x = index * pixels_per_sample_;
    const double pixel_y = (area_height_ - value) / twips_per_pixel_;
    const GridPoint point{RoundToGrid(pixel_x * steps_), RoundToGrid(pixel_y * steps_)};
    if (style_.point_radius > 0) {
        DrawMarker(surface_, style_, pixel_x, pixel_y);
    } else if (pen_up_) {
        surface_.MoveTo(point);
    } else {
        surface_.LineTo(point);
    }
    pen_up_ = false;
    if (trace_ != nullptr) trace_->push_back(point);
}

void DrawMarker(DrawingSurface& surface, const GraphStyle& style, double pixel_x, double pixel_y)
{
    const double steps = surface.StepsPerPixel();
    const double x = pixel_x + 1;
    const double y = pixel_y + 1;
    const double radius = style.point_radius;
    surface.PaintEllipse({RoundToGrid((x - radius) * steps), RoundToGrid((y - radius) * steps),
                          RoundToGrid((x + radius) * steps), RoundToGrid((y + radius) * steps)},
                         Brush{style.colour});
}

}  // namespace korvinth::render
