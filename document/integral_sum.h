// Integral functions summed numerically at evenly spaced places.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "document/display_attributes.h"
#include "term/math_parser.h"

namespace korvinth::document {

// Row k lies at start + k * step; the step is not 0.
struct RowGrid
{
    double start = 0;
    double step = 1;
    std::size_t rows = 0;
    double At(std::size_t row) const { return start + static_cast<double>(row) * step; }
};

struct IntegralRule
{
    int steps_per_row = 1000;  // of the sum
    // The integrand g counts as infinite where 1 / (1 + |g|) is below this.
    double limit = 1e-4;
};

// The rule with the limit that the document's attributes hold as a term.
IntegralRule RuleOf(const DisplayAttributes& attributes, term::MathParser& parser,
                    int steps_per_row);

// The number of steps from `lower_bound` to the farthest row.
double IntegralSteps(const RowGrid& grid, const IntegralRule& rule, double lower_bound);

// The integral of `integrand` (parser syntax, in the variable `x`) from `lower_bound` to each row,
// by the rectangle rule F(x + h) = F(x) + h g(x) to the right and F(x - h) = F(x) - h g(x) to the
// left, h = |step| / steps_per_row. The first step in either direction is shorter: it ends at the
// next point that lies a whole number of steps from the rows, so that the sum meets every row.
// A direction ends where the integrand has no value or is infinite; NaN for the rows behind.
std::vector<double> SumIntegral(term::MathParser& parser, term::VariableHandle x,
                                std::string_view integrand, double lower_bound, const RowGrid& grid,
                                const IntegralRule& rule);

}  // namespace korvinth::document
