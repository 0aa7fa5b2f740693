// Functions that draw strokes instead of a graph.
#pragma once

#include "document/plot_document.h"
#include "document/slots.h"

namespace korvinth::document {

// Whether the slot's term holds the hatching pattern, itself or in a function that it calls.
bool IsHatched(const PlotDocument& document, SlotIndex slot);

}  // namespace korvinth::document
