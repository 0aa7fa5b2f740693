// Finds the graph near the pointer.
#pragma once

#include <optional>
#include <string>

#include "document/plot_document.h"
#include "document/slots.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

// Pixels between pointer and graph.
inline constexpr double kProbeReach = 6;

// A point of a graph, in world units.
struct ProbedPoint
{
    document::SlotIndex slot{};
    std::string function;  // its name
    double x = 0;          // the pointer's, to the precision of a pixel
    double y = 0;
};

// The point at the pointer's x on the visible function graph nearest to a place in area units;
// nothing when none is within reach, has no value there or lies outside the area. Leaves parser
// variables as they were and no error.
std::optional<ProbedPoint> ProbeGraphs(const document::PlotDocument& document,
                                       term::MathParser& parser, const ViewRange& view,
                                       double area_x, double area_y);

}  // namespace korvinth::render
