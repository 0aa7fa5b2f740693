#include "render/dash_pattern.h"

#include <algorithm>

namespace korvinth::render {
namespace {

using document::LineType;

// In multiples of the line's width.
constexpr std::array kDash{5.0, 3.0};
constexpr std::array kDot{1.0, 2.0};
constexpr std::array kDashDot{5.0, 2.0, 1.0, 2.0};
constexpr std::array kDashDotDot{5.0, 2.0, 1.0, 2.0, 1.0, 2.0};

std::span<const double> Multiples(LineType type)
{
    switch (type) {
        case LineType::Dash: return kDash;
        case LineType::Dot: return kDot;
        case LineType::DashDot: return kDashDot;
        case LineType::DashDotDot: return kDashDotDot;
        case LineType::Solid:
        case LineType::Invisible:
        case LineType::SolidInside: break;
    }
    return {};
}

}  // namespace

DashPattern::DashPattern(LineType type, double width)
{
    // Below this width the gaps would close to the eye.
    constexpr double kSmallestUnit = 1.5;
    const double unit = std::max(width, kSmallestUnit);
    for (const double multiple : Multiples(type)) {
        lengths_[count_] = multiple * unit;
        period_ += lengths_[count_];
        ++count_;
    }
}

DashPattern DashPattern::WithRoundEnds(double width) const
{
    // A dot keeps a trace of a length, so that no painter takes it for nothing.
    constexpr double kDot = 0.1;
    DashPattern pattern = *this;
    for (std::size_t dash = 0; dash < count_; dash += 2) {
        const double taken = std::min(width, lengths_[dash] - kDot);
        pattern.lengths_[dash] -= taken;
        pattern.lengths_[dash + 1] += taken;
    }
    return pattern;
}

}  // namespace korvinth::render
