#include "document/plot_document.h"

#include <algorithm>
#include <array>

namespace korvinth::document {
namespace {

void AppendInBrackets(std::vector<std::string>& items, const std::string& bound)
{
    if (!bound.empty()) items.push_back("(" + bound + ")");
}

}  // namespace

PlotDocument::PlotDocument()
{
    for (SlotIndex slot : AllSlots()) slots[slot].colour_index = static_cast<std::int16_t>(slot);
}

void PlotDocument::TakeName(std::string_view name)
{
    if (name.size() != 1) return;
    std::erase_if(free_names, [&](char c) { return c == name.front() || c == ' '; });
}

std::string PlotDocument::Translate(std::string_view term, term::Derivatives derivatives) const
{
    std::array<std::string, kSlotCount> names;
    std::transform(slots.begin(), slots.end(), names.begin(),
                   [](const FunctionSlot& slot) { return slot.name; });
    return term::TermTranslator(names).Translate(term, derivatives);
}

SlotIndex PlotDocument::SampledSlot(SlotIndex drawn) const
{
    const FunctionSlot& slot = slots[drawn];
    if (slot.curve_link < 0 || !slot.integral_term.empty()) return drawn;
    const SlotIndex y_part{slot.curve_link};
    return slots[y_part].integral_term.empty() ? drawn : y_part;
}

Parameter* PlotDocument::FindParameter(std::string_view name)
{
    if (name.empty()) return nullptr;
    for (Parameter& parameter : parameters) {
        if (parameter.name == name) return &parameter;
    }
    return nullptr;
}

std::vector<std::string> PlotDocument::BracketedBounds() const
{
    std::vector<std::string> items;
    for (const FunctionSlot& slot : slots) {
        if (slot.name.empty()) continue;
        AppendInBrackets(items, slot.lower_bound);
        AppendInBrackets(items, slot.upper_bound);
    }
    for (const std::string* bound : {&ranges.x_lower, &ranges.x_upper, &ranges.y_lower,
                                     &ranges.y_upper, &ranges.t_lower, &ranges.t_upper}) {
        AppendInBrackets(items, *bound);
    }
    return items;
}

}  // namespace korvinth::document
