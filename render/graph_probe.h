// Finds the graph near the pointer.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/plot_document.h"
#include "document/slots.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

// Pixels between pointer and graph.
inline constexpr int kProbeReach = 6;

// A point of a graph, in world units; a coordinate without a value is NaN.
struct ProbedPoint
{
    document::SlotIndex slot{};
    std::string function;  // its name
    double x = 0;          // of a function: the pointer's, to the precision of a pixel
    double y = 0;
    // Of a curve: the parameter, the distance between two samples of it, the name of the y-part.
    std::optional<double> t = {};
    double t_step = 0;
    std::string y_function = {};
};

// The slots whose graphs are to be seen, a curve by its x-part.
std::vector<document::SlotIndex> GraphsToReadOff(const document::PlotDocument& document);

// The point on the visible graph nearest to a place in area units: on graphs of functions, integral
// functions included, at the pointer's x, on curves the nearest one. Nothing when no graph is
// within reach, has no value there or lies outside the area. Leaves parser variables as they were
// and no error.
std::optional<ProbedPoint> ProbeGraphs(const document::PlotDocument& document,
                                       term::MathParser& parser, const ViewRange& view,
                                       double area_x, double area_y);

}  // namespace korvinth::render
