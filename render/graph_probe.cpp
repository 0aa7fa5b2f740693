#include "render/graph_probe.h"

#include <algorithm>
#include <cmath>
#include <limits>

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
              const ViewRange& view, const FunctionSlot& slot)
        : parser_(parser),
          view_(view),
          argument_(document.variables.x),
          sampling_(checkdef(document, slot, DefaultSampleCount(view), view, parser))
    {
        parser_.SetVariableValue(document.variables.sw, sampling_.dx);
        term_ = parser_.Parse(slot.parser_term);
    }
    ~NearGraph()
    {
        parser_.ReleaseExpr(term_);
        parser_.EvalText("");
    }
    NearGraph(const NearGraph&) = delete;
    NearGraph& operator=(const NearGraph&) = delete;

    std::optional<double> Value(double x)
    {
        // Half a pixel more, since the pointer's x is rounded.
        const double margin = PixelWidth(view_) / 2;
        if (x < sampling_.first_x - margin || x > sampling_.last_x + margin) return std::nullopt;
        parser_.SetVariableValue(argument_, x);
        const double y = parser_.Evaluate(term_);
        if (parser_.GetError() != term::Error::None || !std::isfinite(y)) return std::nullopt;
        return y;
    }

    // Pixels from the place to the nearest piece of the graph.
    double Distance(double area_x, double area_y)
    {
        double nearest = std::numeric_limits<double>::infinity();
        std::optional<double> former;
        for (double dx = -kProbeReach; dx <= kProbeReach; ++dx) {
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

    term::MathParser& parser_;
    const ViewRange& view_;
    term::VariableHandle argument_;
    Sampling sampling_;
    term::ExprHandle term_{};
};

}  // namespace

std::optional<ProbedPoint> ProbeGraphs(const document::PlotDocument& document,
                                       term::MathParser& parser, const ViewRange& view,
                                       double area_x, double area_y)
{
    const double argument = parser.VariableValue(document.variables.x);
    const double step = parser.VariableValue(document.variables.sw);
    const double x = PointedX(view, area_x);
    std::optional<ProbedPoint> found;
    double nearest = kProbeReach;
    for (const document::SlotIndex index : document::AllSlots()) {
        const FunctionSlot& slot = document.slots[index];
        if (!slot.visible || slot.parser_term.empty()) continue;
        if (KindOf(slot) != GraphKind::Function) continue;
        NearGraph graph(document, parser, view, slot);
        const std::optional<double> y = graph.Value(x);
        if (!y || *y < view.y_min || *y > view.y_max) continue;
        const double distance = graph.Distance(area_x, area_y);
        if (distance > nearest) continue;
        nearest = distance;
        found = ProbedPoint{index, slot.name, x, *y};
    }
    parser.SetVariableValue(document.variables.x, argument);
    parser.SetVariableValue(document.variables.sw, step);
    return found;
}

}  // namespace korvinth::render
