// What the picture shows, for those who listen.
#pragma once

#include <string>

#include "document/plot_document.h"
#include "render/view_range.h"

namespace korvinth::render {

// "x von −10 bis 10, y von −7,5 bis 7,5. f(x) = x², blau. a = 2": the ranges to the precision of a
// pixel, every drawn graph with its term and its colour, a curve by both of its rows; then the
// parameters.
std::string PictureText(const document::PlotDocument& document, const ViewRange& view);

}  // namespace korvinth::render
