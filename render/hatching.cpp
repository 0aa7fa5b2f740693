#include "render/hatching.h"

#include <algorithm>
#include <cmath>

namespace korvinth::render {

double HatchShift(double first_x, double step)
{
    // No simple fraction, so that stripes of other widths do not meet the samples either.
    constexpr double kClearance = 0.0707;
    const double phase = first_x / step;
    if (!std::isfinite(phase)) return 0;
    const double beyond_half = phase - std::floor(2 * phase) / 2;
    return std::clamp(beyond_half, kClearance, 0.5 - kClearance) - beyond_half;
}

}  // namespace korvinth::render
