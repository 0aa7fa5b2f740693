#include "render/picture_text.h"

#include "document/colour_name.h"
#include "document/plot_legend.h"
#include "render/graph_probe.h"
#include "render/pointer_text.h"
#include "render/renderer.h"

namespace korvinth::render {
namespace {

using document::FunctionSlot;
using document::SlotIndex;

std::string RangeText(std::string_view axis, double lower, double upper, double resolution)
{
    return std::string(axis) + " von " + Typeset(lower, resolution) + " bis " +
           Typeset(upper, resolution);
}

std::string Equation(const FunctionSlot& slot)
{
    return slot.name + "(" + slot.argument + ") = " + slot.raw_term;
}

std::string GraphText(const document::PlotDocument& document, SlotIndex index)
{
    const FunctionSlot& slot = document.slots[index];
    std::string text = Equation(slot) + ", ";
    if (KindOf(slot) == GraphKind::CurveXPart) {
        text += Equation(document.slots[SlotIndex{slot.curve_link}]) + ", ";
    }
    const bool in_table = slot.colour_index >= 0 && slot.colour_index < document::kSlotCount;
    const SlotIndex entry = in_table ? SlotIndex{slot.colour_index} : index;
    text += document::ColourName(document.attributes.slots[entry].colour);
    return text;
}

}  // namespace

std::string PictureText(const document::PlotDocument& document, const ViewRange& view)
{
    std::string text = RangeText("x", view.x_min, view.x_max, PixelWidth(view)) + ", " +
                       RangeText("y", view.y_min, view.y_max, PixelHeight(view));
    const std::vector<SlotIndex> graphs = GraphsToReadOff(document);
    if (graphs.empty()) text += ". Kein Graph";
    for (const SlotIndex index : graphs) text += ". " + GraphText(document, index);
    for (const document::LegendLine& line : document::PlotLegend(document)) {
        if (!line.graph) text += ". " + line.text;  // the parameters
    }
    return text;
}

}  // namespace korvinth::render
