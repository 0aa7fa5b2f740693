#include "render/curve_graph.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "document/number_text.h"
#include "render/grid_rounding.h"
#include "render/sampling.h"
#include "term/words.h"

namespace korvinth::render {
namespace {

using document::FunctionSlot;
using document::SlotIndex;

// A lower bound farther away from the curve's interval, in steps, draws nothing.
constexpr double kMostCurveSteps = 2'000'000;

// Keeps the products of clipping finite.
constexpr double kFarthest = 1e150;

// Differs from every point, itself included.
constexpr AreaPoint kNowhere{std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::quiet_NaN()};

// Draws the segments of a curve that are inside the band, each run of them as one line.
class BandPen
{
public:
    BandPen(DrawingSurface& surface, const ViewRange& view)
        : surface_(surface),
          view_(view),
          half_width_(2 * view.area_width),
          half_height_(2 * view.area_height)
    {
    }

    void Break()
    {
        last_ = kNowhere;
        pen_at_ = kNowhere;
    }

    void Draw(AreaPoint point)
    {
        point.x = std::clamp(point.x, -kFarthest, kFarthest);
        point.y = std::clamp(point.y, -kFarthest, kFarthest);
        if (!std::isnan(last_.x)) {
            const auto part = ClipSegment(last_, point, half_width_, half_height_);
            if (part) {
                if (pen_at_ != part->first) surface_.MoveTo(GridOf(part->first));
                surface_.LineTo(GridOf(part->second));
                pen_at_ = part->second;
            }
        }
        last_ = point;
    }

    bool Inside(AreaPoint point) const
    {
        return std::abs(point.x) <= half_width_ && std::abs(point.y) <= half_height_;
    }
    double PixelX(AreaPoint point) const { return point.x / view_.twips_per_pixel_x; }
    double PixelY(AreaPoint point) const
    {
        return (view_.area_height - point.y) / view_.twips_per_pixel_y;
    }

private:
    GridPoint GridOf(AreaPoint point) const
    {
        const double steps = surface_.StepsPerPixel();
        return {RoundToGrid(PixelX(point) * steps), RoundToGrid(PixelY(point) * steps)};
    }

    DrawingSurface& surface_;
    const ViewRange& view_;
    double half_width_;
    double half_height_;
    AreaPoint last_ = kNowhere;
    AreaPoint pen_at_ = kNowhere;  // where the surface's pen rests
};

}  // namespace

std::optional<std::pair<AreaPoint, AreaPoint>> ClipSegment(AreaPoint from, AreaPoint to,
                                                           double half_width, double half_height)
{
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    double enter = 0;
    double leave = 1;
    // Each edge as: p * t <= q for the part inside of it.
    const struct
    {
        double p, q;
    } edges[] = {{-dx, from.x + half_width},
                 {dx, half_width - from.x},
                 {-dy, from.y + half_height},
                 {dy, half_height - from.y}};
    for (const auto& edge : edges) {
        if (edge.p == 0) {
            if (edge.q < 0) return std::nullopt;
        } else if (edge.p < 0) {
            enter = std::max(enter, edge.q / edge.p);
        } else {
            leave = std::min(leave, edge.q / edge.p);
        }
    }
    if (enter > leave) return std::nullopt;
    // Ends that are inside stay what they are, bit by bit, so that lines go on without a gap.
    const auto at = [&](double t) {
        return AreaPoint{std::clamp(from.x + t * dx, -half_width, half_width),
                         std::clamp(from.y + t * dy, -half_height, half_height)};
    };
    return std::pair{enter > 0 ? at(enter) : from, leave < 1 ? at(leave) : to};
}

CurveSampling SampleCurve(const document::PlotDocument& document, const FunctionSlot& slot,
                          int count, const ViewRange& view, term::MathParser& parser)
{
    double first = BoundOr(document, slot.lower_bound, view.t_min, parser);
    double last = BoundOr(document, slot.upper_bound, view.t_max, parser);
    if (first > last) std::swap(first, last);
    const int samples = std::clamp(count, kFewestSamples, kMostSamples);
    return {first, (last - first) / samples, samples};
}

void CurveGraph::drawk(DrawingSurface& surface, SlotIndex x_part, SlotIndex y_part,
                       const ViewRange& view, const CurveSampling& sampling,
                       const GraphStyle& style)
{
    const std::string& x_term = document_.slots[x_part].parser_term;
    const std::string& y_term = document_.slots[y_part].parser_term;
    arguments_.resize(static_cast<std::size_t>(sampling.count) + 1);
    for (std::size_t k = 0; k < arguments_.size(); ++k) {
        arguments_[k] = sampling.first + static_cast<double>(k) * sampling.step + sampling.shift;
    }
    EvaluatePart(x_part, makemx("(" + x_term + ")"), view.xmu, view.x_min, sampling, x_);
    EvaluatePart(y_part, makemy("(" + y_term + ")"), view.ymu, view.y_min, sampling, y_);
    DrawPoints(surface, view, style);
}

bool CurveGraph::stammk(DrawingSurface& surface, SlotIndex x_part, SlotIndex y_part,
                        const ViewRange& view, const CurveSampling& sampling,
                        const GraphStyle& style)
{
    if (document_.slots[x_part].parser_term.empty() ||
        document_.slots[y_part].parser_term.empty()) {
        return false;
    }
    drawk(surface, x_part, y_part, view, sampling, style);
    return true;
}

void CurveGraph::EvaluatePart(SlotIndex part, std::string_view mapped_term, double scale,
                              double minimum, const CurveSampling& sampling,
                              std::vector<double>& values)
{
    const FunctionSlot& slot = document_.slots[part];
    const term::VariableHandle x = document_.variables.x;
    if (!slot.integral_term.empty() && sampling.step > 0) {
        const document::RowGrid grid{sampling.first, sampling.step, arguments_.size()};
        // As the parser knows it: a family may change it.
        const double bound =
            parser_.VariableValue(document_.parameters[document::LowerBoundParameter(part)].handle);
        const document::IntegralRule rule = document::RuleOf(document_.attributes, parser_, 1);
        values.assign(arguments_.size(), std::numeric_limits<double>::quiet_NaN());
        if (!(IntegralSteps(grid, rule, bound) <= kMostCurveSteps)) return;
        values = SumIntegral(parser_, x, slot.integral_term, bound, grid, rule);
        for (double& value : values) value = scale * (value - minimum);
        return;
    }
    values.resize(arguments_.size());
    errors_.resize(arguments_.size());
    const term::ExprHandle handle = parser_.Parse(mapped_term);
    parser_.EvaluateBlock(handle, x, arguments_, values, errors_);
    for (std::size_t k = 0; k < values.size(); ++k) {
        if (errors_[k] != term::Error::None) values[k] = std::numeric_limits<double>::quiet_NaN();
    }
    parser_.EvalText("");
}

void CurveGraph::DrawPoints(DrawingSurface& surface, const ViewRange& view,
                            const GraphStyle& style) const
{
    BandPen pen(surface, view);
    for (std::size_t k = 0; k < x_.size(); ++k) {
        const AreaPoint point{x_[k], y_[k]};
        if (std::isnan(point.x) || std::isnan(point.y)) {
            pen.Break();
        } else if (style.point_radius == 0) {
            pen.Draw(point);
        } else if (pen.Inside(point)) {
            DrawMarker(surface, style, pen.PixelX(point), pen.PixelY(point));
        }
    }
}

}  // namespace korvinth::render
