// Finds places for the names of the graphs and writes them.
#pragma once

#include <optional>
#include <vector>

#include "document/slots.h"
#include "render/drawing_surface.h"
#include "render/label_space.h"

namespace korvinth::render {

// The drawn samples of each slot, in the order of their x.
using GraphTraces = document::SlotTable<std::vector<GridPoint>>;

// A place for the name of `slot`, `extent` in size, near the right end of its graph: clear of other
// texts and, when there is room, of every graph; in any case of its own. None without room.
std::optional<GridBox> PlaceGraphName(const GraphTraces& traces, document::SlotIndex slot,
                                      GridExtent extent, const DrawingSurface& surface,
                                      const LabelSpace& labels);

}  // namespace korvinth::render
