// The last look at a rebuilt plot: is every definition right?
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/apply_plot.h"
#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

// Each message with its context in front, as in "f: Ungültiger Term".
struct FinalCheck
{
    std::vector<std::string> errors;
    std::optional<SlotIndex> first_faulty;  // slot with an error
    // Right terms without a value at any of the samples, integrals that are hardly what is meant.
    std::vector<std::string> notes;
};

// A function that has no value at some arguments is right: 1/x is no error. Lines, points and
// ranges must have a value.
FinalCheck CheckDefinitions(const PlotDocument& document, term::MathParser& parser,
                            const PlotHost& host);

}  // namespace korvinth::document
