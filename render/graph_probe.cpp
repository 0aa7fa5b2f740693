#include "render/graph_probe.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "document/integral_sum.h"
#include "render/curve_graph.h"
#include "render/graph_value.h"
#include "render/pointer_text.h"
#include "render/renderer.h"
#include "render/sampling.h"

namespace korvinth::render {
namespace {

using document::FunctionSlot;

// The graph of one function near a place, in pixels about that place.
class NearGraph
{
public:
    NearGraph(const document::PlotDocument& document, term::MathParser& parser,
              const ViewRange& view, document::SlotIndex index, const FunctionSlot& slot)
        : view_(view),
          sampling_(checkdef(document, slot, DefaultSampleCount(view), view, parser)),
          value_(document, parser, index, sampling_.dx)
    {
    }

    std::optional<double> Value(double x)
    {
        // Half a pixel more, since the pointer's x is rounded.
        const double margin = PixelWidth(view_) / 2;
        if (x < sampling_.first_x - margin || x > sampling_.last_x + margin) return std::nullopt;
        return value_.At(x);
    }

    // Pixels from the place to the nearest piece of the graph.
    double Distance(double area_x, double area_y)
    {
        double nearest = std::numeric_limits<double>::infinity();
        std::optional<double> former;
        for (int dx = -kProbeReach; dx <= kProbeReach; ++dx) {
            const std::optional<double> y =
                Value(view_.WorldX(area_x + dx * view_.twips_per_pixel_x));
            std::optional<double> dy;
            if (y) dy = (view_.AreaY(*y) - area_y) / view_.twips_per_pixel_y;
            if (dy && former) nearest = std::min(nearest, DistanceToPiece(dx, *former, *dy));
            former = dy;
        }
        return nearest;
    }

private:
    // From the origin to the piece between (dx - 1, from) and (dx, to).
    static double DistanceToPiece(double dx, double from, double to)
    {
        const double rise = to - from;
        const double along = std::clamp(-((dx - 1) + from * rise) / (1 + rise * rise), 0.0, 1.0);
        return std::hypot(dx - 1 + along, from + along * rise);
    }

    const ViewRange& view_;
    Sampling sampling_;
    GraphValue value_;
};

// World coordinates of one part of a curve at every sample, NaN where it has none.
std::vector<double> PartOfCurve(const document::PlotDocument& document, term::MathParser& parser,
                                document::SlotIndex part, const CurveSampling& sampling)
{
    const FunctionSlot& slot = document.slots[part];
    const auto count = static_cast<std::size_t>(sampling.count) + 1;
    if (!slot.integral_term.empty() && sampling.step > 0) {
        const document::RowGrid grid{sampling.first, sampling.step, count};
        const double bound = document.parameters[document::LowerBoundParameter(part)].value;
        return SumIntegral(parser, document.variables.x, slot.integral_term, bound, grid,
                           document::RuleOf(document.attributes, parser, 1));
    }
    std::vector<double> values(count);
    std::vector<term::Error> errors(count);
    for (std::size_t k = 0; k < count; ++k) {
        values[k] = sampling.first + static_cast<double>(k) * sampling.step;
    }
    const term::ExprHandle handle = parser.Parse(slot.parser_term);
    parser.EvaluateBlock(handle, document.variables.x, values, values, errors);
    parser.ReleaseExpr(handle);
    for (std::size_t k = 0; k < count; ++k) {
        if (errors[k] != term::Error::None) values[k] = std::numeric_limits<double>::quiet_NaN();
    }
    return values;
}

// The point of a curve nearest to a place, if it is nearer than `nearest` pixels, which becomes its
// distance.
std::optional<ProbedPoint> ProbeCurve(const document::PlotDocument& document,
                                      term::MathParser& parser, const ViewRange& view,
                                      document::SlotIndex x_part, double area_x, double area_y,
                                      double& nearest)
{
    const FunctionSlot& slot = document.slots[x_part];
    const document::SlotIndex y_part{slot.curve_link};
    const CurveSampling sampling =
        SampleCurve(document, slot, DefaultSampleCount(view), view, parser);
    parser.SetVariableValue(document.variables.sw, sampling.step);
    const std::vector<double> x = PartOfCurve(document, parser, x_part, sampling);
    const std::vector<double> y = PartOfCurve(document, parser, y_part, sampling);
    parser.EvalText("");

    std::optional<ProbedPoint> found;
    for (std::size_t k = 1; k < x.size(); ++k) {
        const double from_x = (view.AreaX(x[k - 1]) - area_x) / view.twips_per_pixel_x;
        const double from_y = (view.AreaY(y[k - 1]) - area_y) / view.twips_per_pixel_y;
        const double dx = (view.AreaX(x[k]) - area_x) / view.twips_per_pixel_x - from_x;
        const double dy = (view.AreaY(y[k]) - area_y) / view.twips_per_pixel_y - from_y;
        const double length = dx * dx + dy * dy;
        const double along =
            length > 0 ? std::clamp(-(from_x * dx + from_y * dy) / length, 0.0, 1.0) : 0;
        const double distance = std::hypot(from_x + along * dx, from_y + along * dy);
        if (!(distance < nearest)) continue;  // nor where a part has no value
        nearest = distance;
        found = ProbedPoint{x_part,
                            slot.name,
                            x[k - 1] + along * (x[k] - x[k - 1]),
                            y[k - 1] + along * (y[k] - y[k - 1]),
                            sampling.first + (static_cast<double>(k - 1) + along) * sampling.step,
                            sampling.step,
                            document.slots[y_part].name};
    }
    return found;
}

}  // namespace

std::vector<document::SlotIndex> GraphsToReadOff(const document::PlotDocument& document)
{
    std::vector<document::SlotIndex> graphs;
    for (const document::SlotIndex index : document::AllSlots()) {
        const FunctionSlot& slot = document.slots[index];
        if (!slot.visible || slot.parser_term.empty() || !HasInk(document, index)) continue;
        const GraphKind kind = KindOf(slot);
        if (kind == GraphKind::CurveYPart) continue;
        const document::SlotIndex last_part =
            kind == GraphKind::CurveXPart ? document::SlotIndex{slot.curve_link} : index;
        if (!document.slots[last_part].parser_term.empty()) graphs.push_back(index);
    }
    return graphs;
}

std::optional<ProbedPoint> ProbeGraphs(const document::PlotDocument& document,
                                       term::MathParser& parser, const ViewRange& view,
                                       double area_x, double area_y)
{
    const double argument = parser.VariableValue(document.variables.x);
    const double step = parser.VariableValue(document.variables.sw);
    const double x = PointedX(view, area_x);
    std::optional<ProbedPoint> found;
    double nearest = kProbeReach;
    for (const document::SlotIndex index : GraphsToReadOff(document)) {
        const FunctionSlot& slot = document.slots[index];
        if (KindOf(slot) == GraphKind::CurveXPart) {
            const auto point = ProbeCurve(document, parser, view, index, area_x, area_y, nearest);
            if (point) found = point;
            continue;
        }
        NearGraph graph(document, parser, view, index, slot);
        const std::optional<double> y = graph.Value(x);
        if (!y || *y < view.y_min || *y > view.y_max) continue;
        const double distance = graph.Distance(area_x, area_y);
        if (distance > nearest) continue;
        nearest = distance;
        found = ProbedPoint{index, slot.name, x, *y, {}, 0, {}};
    }
    parser.SetVariableValue(document.variables.x, argument);
    parser.SetVariableValue(document.variables.sw, step);
    return found;
}

}  // namespace korvinth::render
