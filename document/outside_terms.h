// The terms of a plot outside its function slots: additional lines, additional points, ranges.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "document/plot_document.h"

namespace korvinth::document {

struct OutsideTerms
{
    std::string_view window;         // where the user typed them
    std::vector<std::string> terms;  // in parser syntax
};

// Each item is a term of its own: joined into one text, a bracket left open in one item would be
// closed by the next, and a long list would exceed the parser's limits. An item that translates to
// nothing is handed on as typed, for the parser to refuse. Equations that are no lines are left
// out.
std::array<OutsideTerms, 3> TermsOutsideSlots(const PlotDocument& document);

}  // namespace korvinth::document
