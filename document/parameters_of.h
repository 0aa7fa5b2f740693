// Which parameters a graph depends on.
#pragma once

#include <set>

#include "document/plot_document.h"

namespace korvinth::document {

// The parameters in use that change the graph of a slot: those in its term and its interval, in the
// functions that it calls, in the other part of a curve, and those of its integral function.
std::set<ParameterIndex> ParametersOf(const PlotDocument& document, SlotIndex slot);

}  // namespace korvinth::document
