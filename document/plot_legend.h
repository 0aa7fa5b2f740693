// What a printed plot says below its picture: functions and values of parameters.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/plot_document.h"

namespace korvinth::document {

struct LegendLine
{
    std::string text;
    std::optional<SlotAttributes> graph;  // how the graph that it names is drawn
    bool operator==(const LegendLine&) const = default;
};

// A line "f(x) = term" for every function that is shown, then one with the parameters' values,
// decimal commas and minus signs as in print.
std::vector<LegendLine> PlotLegend(const PlotDocument& document);

}  // namespace korvinth::document
