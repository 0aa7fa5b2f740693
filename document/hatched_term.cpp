#include "document/hatched_term.h"

#include <algorithm>
#include <string>

#include "document/integral_term.h"

namespace korvinth::document {
namespace {

bool IsHatched(const PlotDocument& document, SlotIndex slot, SlotTable<bool>& seen)
{
    if (seen[slot]) return false;
    seen[slot] = true;
    const std::string& term = document.slots[slot].parser_term;
    if (term.find(kStripeWidthName) != std::string::npos) return true;
    return std::ranges::any_of(AllSlots(), [&](SlotIndex other) {
        const std::string& name = document.slots[other].name;
        return !name.empty() && CallsFunction(term, name) && IsHatched(document, other, seen);
    });
}

}  // namespace

bool IsHatched(const PlotDocument& document, SlotIndex slot)
{
    // Without this parameter no term holds the pattern.
    const auto* const found =
        std::ranges::find(document.parameters, kStripeWidthName, &Parameter::name);
    if (found == document.parameters.end()) return false;
    SlotTable<bool> seen;
    return IsHatched(document, slot, seen);
}

}  // namespace korvinth::document
