// A term in which the parameters are replaced by their present values.
#pragma once

#include <string>
#include <string_view>

#include "document/plot_document.h"

namespace korvinth::document {

// Replaces every parameter in use, but not `argument`, the name of the function's own variable.
// Values have a decimal comma, negative ones are put in brackets, and "*" comes between a digit and
// a value: with a = 3, "2a" becomes "2*3". The term stays as typed otherwise. (entpara)
std::string SubstituteParameters(const PlotDocument& document, std::string_view term,
                                 std::string_view argument);

}  // namespace korvinth::document
