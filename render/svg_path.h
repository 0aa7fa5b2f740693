// The text of a path of straight lines, as short as the notation allows.
#pragma once

#include <span>
#include <string>

#include "render/drawing_surface.h"

namespace korvinth::render {

// Each line goes to a place or by a distance, whichever is shorter; `shift` is added to all places.
// At least one point.
std::string SvgPath(std::span<const GridPoint> points, int shift);

}  // namespace korvinth::render
