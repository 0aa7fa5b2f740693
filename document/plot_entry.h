// The plot as an entry of a collection, and back.
#pragma once

#include <cstddef>
#include <string>

#include "document/collection.h"
#include "document/plot_document.h"

namespace korvinth::document {

// The ranges in force, as numbers.
struct DisplayedRanges
{
    double x_lower = -10, x_upper = 10;
    double y_lower = -10, y_upper = 10;
    double t_lower = 0, t_upper = 6.283185307179586;
};

// The columns from 2 on; columns 0 and 1 are the user's. The plot is as ApplyPlot has left it, rows
// with a fault included.
// Texts are written in the signs of StorableTerm.
CollectionEntry EntryOfPlot(const PlotDocument& plot, const DisplayedRanges& ranges);

// The most items of a list, and names of parameters, that an entry may have.
inline constexpr std::size_t kMostListItems = 10'000;
inline constexpr std::size_t kMostParameterNames = 1'000;

// Makes the plot that the entry describes, for ApplyPlot to build: everything that makes up the
// earlier plot goes; looks and settings that the entry does not state stay. Returns "", or what was
// wrong with lines of the entry, one German message each; the rest is taken.
std::string FillPlot(const CollectionEntry& entry, PlotDocument& plot);

// The ranges that the entry states as numbers; one that it does not state, or wrongly, is that of
// `others`.
DisplayedRanges StatedRanges(const CollectionEntry& entry, const DisplayedRanges& others);

}  // namespace korvinth::document
