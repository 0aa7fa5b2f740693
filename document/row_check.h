// Checks the typed rows and splits them into the function slots.
#pragma once

#include <optional>
#include <string>

#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

struct RowCheck
{
    std::string errors;                     // all messages in one text, "" when the rows are right
    std::optional<SlotIndex> first_faulty;  // the first row with a message
    std::string first_message;
};

// Rebuilds slots, name lists and counters from document.rows. Names are tested with the parser,
// which must not know the functions of an earlier plot; it knows none of the rows' afterwards.
// A right row is rewritten as "name(variable) = term"; a wrong one keeps its text and has no slot.
RowCheck CheckNames(PlotDocument& document, term::MathParser& parser);

// Makes a curve of every two functions named x... and y... alike (xa and ya).
void checkxy(PlotDocument& document);

}  // namespace korvinth::document
