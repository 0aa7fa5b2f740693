#include "render/hatching.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "document/integral_term.h"

namespace korvinth::render {
namespace {

using document::SlotIndex;

bool IsHatched(const document::PlotDocument& document, SlotIndex slot,
               document::SlotTable<bool>& seen)
{
    if (seen[slot]) return false;
    seen[slot] = true;
    const std::string& term = document.slots[slot].parser_term;
    if (term.find(document::kStripeWidthName) != std::string::npos) return true;
    return std::ranges::any_of(document::AllSlots(), [&](SlotIndex other) {
        const std::string& name = document.slots[other].name;
        return !name.empty() && document::CallsFunction(term, name) &&
               IsHatched(document, other, seen);
    });
}

}  // namespace

bool IsHatched(const document::PlotDocument& document, SlotIndex slot)
{
    // Without this parameter no term holds the pattern.
    const auto* const found = std::ranges::find(document.parameters, document::kStripeWidthName,
                                                &document::Parameter::name);
    if (found == document.parameters.end()) return false;
    document::SlotTable<bool> seen;
    return IsHatched(document, slot, seen);
}

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
