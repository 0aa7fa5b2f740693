// Draws what lies under the graphs: background, help lines, axes, their numbers and names.
#pragma once

#include "document/display_attributes.h"
#include "render/axis_scale.h"
#include "render/drawing_surface.h"
#include "render/label_space.h"
#include "render/view_range.h"

namespace korvinth::render {

// Screen pixels of a font size in points.
constexpr double FontPixels(double points)
{
    constexpr double kPixelsPerInch = 96;
    constexpr double kPointsPerInch = 72;
    return points * kPixelsPerInch / kPointsPerInch;
}

// Clears the surface and draws the coordinate system as the attributes' switches have it. The
// places of numbers and names are taken from `labels`. Draws no marks where a range has none.
void helpline(DrawingSurface& surface, const ViewRange& view,
              const document::DisplayAttributes& attributes, const AxisScales& scales,
              LabelSpace& labels);

}  // namespace korvinth::render
