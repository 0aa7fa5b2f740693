#include "document/plot_legend.h"

#include "document/parameter_values.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

// The points of a curve are drawn in the look of its x-part.
SlotIndex DrawnAs(const PlotDocument& document, SlotIndex slot)
{
    if (document.slots[slot].curve_link != kCurveYPart) return slot;
    for (const SlotIndex other : AllSlots()) {
        if (document.slots[other].curve_link == Number(slot)) return other;
    }
    return slot;
}

SlotAttributes LookOf(const PlotDocument& document, SlotIndex slot)
{
    SlotAttributes look = document.attributes.slots[slot];
    const std::int16_t colour = document.slots[slot].colour_index;
    if (colour >= 0 && colour < kSlotCount) {
        look.colour = document.attributes.slots[SlotIndex{colour}].colour;
    }
    return Drawable(look);
}

}  // namespace

std::vector<LegendLine> PlotLegend(const PlotDocument& document)
{
    std::vector<LegendLine> lines;
    for (const SlotIndex index : AllSlots()) {
        const FunctionSlot& slot = document.slots[index];
        const SlotIndex drawn_as = DrawnAs(document, index);
        if (slot.name.empty() || slot.raw_term.empty() || !document.slots[drawn_as].visible) {
            continue;
        }
        lines.push_back(
            {slot.name + "(" + slot.argument + ") = " + slot.raw_term, LookOf(document, drawn_as)});
    }
    std::string values;
    for (const Parameter& parameter : document.parameters) {
        if (parameter.name.empty() || (parameter.state & kSampleCountState) != 0) continue;
        if (!values.empty()) values += ";  ";
        values += parameter.name + " = " + term::ReplaceAll(FieldText(parameter.value), "-", "−");
    }
    if (!values.empty()) lines.push_back({values, std::nullopt});
    return lines;
}

}  // namespace korvinth::document
