// Draws parametric curves.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "document/integral_sum.h"
#include "document/plot_document.h"
#include "document/slots.h"
#include "render/drawing_surface.h"
#include "render/graph_pen.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

// A point of the drawing area, in its units, y above the bottom edge.
struct AreaPoint
{
    double x = 0;
    double y = 0;
    bool operator==(const AreaPoint&) const = default;
};

// The part of a segment within |x| <= half_width and |y| <= half_height; nothing when it lies
// outside. (Liang and Barsky, "A new concept and method for line clipping", 1984.)
std::optional<std::pair<AreaPoint, AreaPoint>> ClipSegment(AreaPoint from, AreaPoint to,
                                                           double half_width, double half_height);

// The samples of a curve: parameter t = first + k * step for k = 0 .. count.
struct CurveSampling
{
    double first = 0;
    double step = 0;
    int count = 0;
};

// The interval of the curve's x-part; an open or wrong bound is that of the displayed t-range.
CurveSampling SampleCurve(const document::PlotDocument& document,
                          const document::FunctionSlot& slot, int count, const ViewRange& view,
                          term::MathParser& parser);

class CurveGraph
{
public:
    CurveGraph(term::MathParser& parser, const document::PlotDocument& document)
        : parser_(parser), document_(document)
    {
    }

    // Draws the curve of these two slots, neither an integral function. Samples without a value
    // break the line; what lies farther outside than two widths or heights of the area is cut off.
    void drawk(DrawingSurface& surface, document::SlotIndex x_part, document::SlotIndex y_part,
               const ViewRange& view, const CurveSampling& sampling, const GraphStyle& style);
    // The same where a part is an integral function, which is summed over the curve parameter from
    // its lower bound in both directions. False when a part has nothing to be drawn.
    bool stammk(DrawingSurface& surface, document::SlotIndex x_part, document::SlotIndex y_part,
                const ViewRange& view, const CurveSampling& sampling, const GraphStyle& style);

private:
    // Area units of one part at every sample, NaN where it has no value.
    void EvaluatePart(document::SlotIndex part, std::string_view mapped_term, double scale,
                      double minimum, const CurveSampling& sampling, std::vector<double>& values);
    void DrawPoints(DrawingSurface& surface, const ViewRange& view, const GraphStyle& style) const;

    term::MathParser& parser_;
    const document::PlotDocument& document_;
    std::vector<double> arguments_;
    std::vector<double> x_;
    std::vector<double> y_;
    std::vector<term::Error> errors_;
};

}  // namespace korvinth::render
