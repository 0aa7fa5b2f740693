// What the status line under the graph says about a place.
#pragma once

#include <string>
#include <string_view>

#include "render/graph_probe.h"
#include "render/view_range.h"

namespace korvinth::render {

// World units of one screen pixel.
double PixelWidth(const ViewRange& view);
double PixelHeight(const ViewRange& view);

// A number as beside axes, to the precision of `resolution`: decimal comma, minus sign, powers of
// ten.
std::string Typeset(double value, double resolution);

// The x of a place in the area, rounded to what a pixel tells apart.
double PointedX(const ViewRange& view, double area_x);

// "x = 1,25   y = −0,5" to the precision of a pixel; "" outside the area.
std::string PointerText(const ViewRange& view, double area_x, double area_y);

// "f(1,25) = 0,949"; of a curve "x(0,5) = 1,756   y(0,5) = 0,959". Values have one digit more than
// the picture shows; "f(0) ist nicht definiert" where there is none.
std::string ValueText(const ViewRange& view, const ProbedPoint& point);

}  // namespace korvinth::render
