// Draws the graph of an integral function, summing it sample by sample.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "document/plot_document.h"
#include "render/drawing_surface.h"
#include "render/graph_pen.h"
#include "render/sampling.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

// Longer ways from the lower bound to the slot's interval draw nothing.
inline constexpr double kMostIntegralSteps = 2'000'000;

class IntegralGraph
{
public:
    IntegralGraph(term::MathParser& parser, const document::SystemVariables& variables)
        : parser_(parser), variables_(variables)
    {
    }

    // Draws the integral of `integrand` from `lower_bound` on, first to the right, then to the
    // left, by the rectangle rule F(x + dx) = F(x) + dx g(x). The samples lie on the slot's grid
    // shifted so that it passes through the lower bound. A direction ends at the first sample where
    // the integrand has no value or 1 / (1 + |g|) is below `limit`. `one_by_one`: the integrand
    // looks at the running sum. The drawn samples are added to `trace` unless it is null.
    void stammf(DrawingSurface& surface, std::string_view integrand, double lower_bound,
                std::string_view limit, bool one_by_one, const ViewRange& view,
                const Sampling& sampling, const GraphStyle& style, std::vector<GridPoint>* trace);

private:
    struct Pass;

    // 1 where the integrand is finite and not too large, else 0.
    term::ExprHandle ifdl(std::string_view integrand, std::string_view limit);
    void RunPass(const Pass& pass, GraphPen& pen);
    std::size_t EvaluatePortion(const Pass& pass, double first_step, double& sum);

    static constexpr std::size_t kBlock = 512;

    term::MathParser& parser_;
    const document::SystemVariables& variables_;
    std::array<double, kBlock> arguments_{};
    std::array<double, kBlock> finite_{};
    std::array<double, kBlock> heights_{};
    std::array<double, kBlock> sums_{};
    std::array<term::Error, kBlock> errors_{};
};

}  // namespace korvinth::render
