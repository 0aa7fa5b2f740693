// Writes the numbers and the names of the axes.
#pragma once

#include "document/display_attributes.h"
#include "render/axis_layout.h"
#include "render/drawing_surface.h"
#include "render/label_space.h"

namespace korvinth::render {

// As the attributes' switches have it, each text where `labels` has room for it.
void DrawAxisTexts(DrawingSurface& surface, const AxisLayout& layout,
                   const document::DisplayAttributes& attributes, LabelSpace& labels);

}  // namespace korvinth::render
