#include "document/integral_sum.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>

#include "document/number_text.h"

namespace korvinth::document {
namespace {

constexpr std::size_t kPortion = 1024;
// A lower bound this close to a point of the sum, in steps, lies on it but for rounding.
constexpr double kOnThePoint = 1e-6;

enum class Direction : std::int64_t { Left = -1, Right = 1 };

// One sum over the points start + index * h; row k of an ascending grid has the index k times the
// steps of a row.
class Summation
{
public:
    Summation(term::MathParser& parser, term::VariableHandle x, term::ExprHandle integrand,
              const RowGrid& grid, const IntegralRule& rule)
        : parser_(parser),
          x_(x),
          integrand_(integrand),
          grid_(grid),
          limit_(rule.limit),
          steps_per_row_(rule.steps_per_row),
          width_(grid.step / rule.steps_per_row),
          sums_(grid.rows, std::numeric_limits<double>::quiet_NaN())
    {
    }

    std::vector<double> Run(double lower_bound)
    {
        const double position = (lower_bound - grid_.start) / width_;
        const double nearest = std::round(position);
        const bool on_a_point = std::abs(position - nearest) < kOnThePoint;
        const double first_right = on_a_point ? nearest : std::ceil(position);
        const double first_left = on_a_point ? nearest : std::floor(position);

        std::array<double, 1> height{lower_bound};
        if (EvaluateIntegrand(height) == 0) return sums_;
        const auto last = static_cast<std::int64_t>(grid_.rows - 1) * steps_per_row_;
        if (first_right <= static_cast<double>(last)) {
            const auto index = static_cast<std::int64_t>(first_right);
            const double first_width = on_a_point ? 0 : ArgumentAt(index) - lower_bound;
            SumOver(index, last, Direction::Right, first_width * height.front());
        }
        if (first_left >= 0) {
            const auto index = static_cast<std::int64_t>(first_left);
            const double first_width = on_a_point ? 0 : ArgumentAt(index) - lower_bound;
            SumOver(index, 0, Direction::Left, first_width * height.front());
        }
        return sums_;
    }

private:
    double ArgumentAt(std::int64_t index) const
    {
        const std::int64_t row = index / steps_per_row_;
        const std::int64_t step = index % steps_per_row_;
        return grid_.start + static_cast<double>(row) * grid_.step +
               static_cast<double>(step) * width_;
    }

    // Replaces arguments by values; the number of values in front of the first one that is missing
    // or infinite.
    std::size_t EvaluateIntegrand(std::span<double> samples)
    {
        std::array<term::Error, kPortion> errors{};
        const auto found = std::span(errors).first(samples.size());
        parser_.EvaluateBlock(integrand_, x_, samples, samples, found);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const bool finite = 1 / (1 + std::abs(samples[i])) >= limit_;
            if (found[i] != term::Error::None || !finite) return i;
        }
        return samples.size();
    }

    void SumOver(std::int64_t index, std::int64_t last, Direction direction, double sum)
    {
        const auto sign = static_cast<std::int64_t>(direction);
        std::array<double, kPortion> samples{};
        while ((last - index) * sign >= 0) {
            const auto count =
                std::min(kPortion, static_cast<std::size_t>((last - index) * sign) + 1);
            const auto portion = std::span(samples).first(count);
            for (std::size_t i = 0; i < count; ++i) {
                portion[i] = ArgumentAt(index + sign * static_cast<std::int64_t>(i));
            }
            const std::size_t valid = EvaluateIntegrand(portion);
            for (double height : portion.first(valid)) {
                Store(index, sum);
                sum += static_cast<double>(sign) * width_ * height;
                index += sign;
            }
            if (valid < count) return;
        }
    }

    void Store(std::int64_t index, double sum)
    {
        if (index < 0 || index % steps_per_row_ != 0) return;
        const auto row = static_cast<std::size_t>(index / steps_per_row_);
        if (row < sums_.size()) sums_[row] = sum;
    }

    term::MathParser& parser_;
    term::VariableHandle x_;
    term::ExprHandle integrand_;
    RowGrid grid_;  // ascending
    double limit_;
    std::int64_t steps_per_row_;
    double width_;
    std::vector<double> sums_;
};

}  // namespace

IntegralRule RuleOf(const DisplayAttributes& attributes, term::MathParser& parser,
                    int steps_per_row)
{
    const double limit = EvalNumberField(parser, attributes.integrand_limit);
    return {steps_per_row, limit};
}

double IntegralSteps(const RowGrid& grid, const IntegralRule& rule, double lower_bound)
{
    if (grid.rows == 0) return 0;
    const double farthest = std::max(std::abs(grid.start - lower_bound),
                                     std::abs(grid.At(grid.rows - 1) - lower_bound));
    return farthest / std::abs(grid.step) * rule.steps_per_row;
}

std::vector<double> SumIntegral(term::MathParser& parser, term::VariableHandle x,
                                std::string_view integrand, double lower_bound, const RowGrid& grid,
                                const IntegralRule& rule)
{
    if (grid.rows == 0) return {};
    const bool descending = grid.step < 0;
    RowGrid ascending = grid;
    if (descending) ascending = {grid.At(grid.rows - 1), -grid.step, grid.rows};
    const term::ExprHandle handle = parser.Parse(integrand);
    std::vector<double> sums = Summation(parser, x, handle, ascending, rule).Run(lower_bound);
    parser.ReleaseExpr(handle);
    parser.EvalText("");
    if (descending) std::reverse(sums.begin(), sums.end());
    return sums;
}

}  // namespace korvinth::document
