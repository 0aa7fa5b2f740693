#include "render/integral_graph.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>

namespace korvinth::render {

// One direction of the sum.
struct IntegralGraph::Pass
{
    int direction;  // +1 or -1
    double lower_bound;
    double first_index;  // of the lower bound on the sample grid, in general not whole
    bool one_by_one;
    const ViewRange& view;
    const Sampling& sampling;
    term::ExprHandle finite;
    term::ExprHandle height;
    term::ExprHandle sum;  // of the sum after the next step
};

term::ExprHandle IntegralGraph::ifdl(std::string_view integrand, std::string_view limit)
{
    return parser_.Parse("iif(1/(1+abs(" + std::string(integrand) + "))<" + std::string(limit) +
                         ",0,1)");
}

void IntegralGraph::stammf(DrawingSurface& surface, std::string_view integrand, double lower_bound,
                           std::string_view limit, bool one_by_one, const ViewRange& view,
                           const Sampling& sampling, const GraphStyle& style,
                           std::vector<GridPoint>* trace)
{
    const double first_index = (lower_bound - view.x_min) * sampling.sample_count / view.width;
    std::vector<GridPoint> left;
    for (const int direction : {1, -1}) {
        const double far_end = direction > 0 ? sampling.last_index : sampling.first_index;
        const double steps = (far_end - first_index) * direction;
        // Also for a lower bound that is no number.
        if (!(std::abs(steps) <= kMostIntegralSteps)) continue;
        const char* const prefix = direction > 0 ? "qq+sw*" : "qq-sw*";
        const Pass pass{direction,
                        lower_bound,
                        first_index,
                        one_by_one,
                        view,
                        sampling,
                        ifdl(integrand, limit),
                        parser_.Parse(integrand),
                        parser_.Parse(prefix + std::string(integrand))};
        GraphPen pen(surface, view, sampling, style, -view.y_min * view.ymu);
        if (trace != nullptr) pen.Trace(direction > 0 ? trace : &left);
        RunPass(pass, pen);
    }
    // From left to right, as the samples of every graph.
    if (trace != nullptr) trace->insert(trace->begin(), left.rbegin(), left.rend());
    parser_.EvalText("");
    // Deliberate: the handle given back is 4, which is none of ours; the graph's own expressions
    // stay compiled for the next redraw.
    parser_.ReleaseExpr(term::ExprHandle{4});
}

void IntegralGraph::RunPass(const Pass& pass, GraphPen& pen)
{
    const double step_sign = pass.direction;
    double step = 0;  // whole steps taken, with their sign
    double sum = 0;
    // The first look at the integrand is at the lower bound.
    parser_.SetVariableValue(variables_.x, pass.lower_bound);
    parser_.SetVariableValue(variables_.qq, 0);
    bool go_on = parser_.Evaluate(pass.finite) != 0;
    while (go_on) {
        const std::size_t valid = EvaluatePortion(pass, step, sum);
        for (std::size_t i = 0; i < valid; ++i) {
            const double index = pass.first_index + step;
            const bool within =
                index >= pass.sampling.first_index && index <= pass.sampling.last_index;
            pen.Draw(index, (sums_[i] - pass.view.y_min) * pass.view.ymu, within);
            step += step_sign;
            const double next = pass.first_index + step;
            go_on = pass.direction > 0 ? next <= pass.sampling.last_index
                                       : next >= pass.sampling.first_index;
            if (!go_on) return;
        }
        go_on = valid == kBlock;
    }
}

// Puts the sums before each of the next steps into sums_; the number of those that can be drawn:
// fewer than kBlock when the integrand ends. `sum` becomes the sum after them.
std::size_t IntegralGraph::EvaluatePortion(const Pass& pass, double first_step, double& sum)
{
    const double dx = pass.sampling.dx;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const double step = first_step + pass.direction * static_cast<double>(i);
        arguments_[i] = pass.lower_bound + step * dx;
    }
    if (pass.one_by_one) {
        for (std::size_t i = 0; i < kBlock; ++i) {
            sums_[i] = sum;
            parser_.SetVariableValue(variables_.x, arguments_[i]);
            sum = parser_.Evaluate(pass.sum);
            if (parser_.GetError() != term::Error::None) return i + 1;
            parser_.SetVariableValue(variables_.qq, sum);
            if (parser_.Evaluate(pass.finite) == 0) return i + 1;
        }
        return kBlock;
    }
    parser_.EvaluateBlock(pass.height, variables_.x, arguments_, heights_, errors_);
    parser_.EvaluateBlock(pass.finite, variables_.x, arguments_, finite_, errors_);
    for (std::size_t i = 0; i < kBlock; ++i) {
        sums_[i] = sum;
        // The sample before the gap is still drawn: it is the sum of the steps up to it.
        if (errors_[i] != term::Error::None || finite_[i] == 0) return i + 1;
        sum += pass.direction * (dx * heights_[i]);
    }
    return kBlock;
}

}  // namespace korvinth::render
