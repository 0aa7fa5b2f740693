// From fractional to whole grid steps.
#pragma once

#include <algorithm>
#include <cmath>

namespace korvinth::render {

// Rounds half to even. Numbers beyond any surface are limited, so that back ends can calculate with
// the result; what is no number becomes 0.
inline int RoundToGrid(double value)
{
    constexpr double kFarthest = 1 << 24;
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::lrint(std::clamp(value, -kFarthest, kFarthest)));
}

}  // namespace korvinth::render
