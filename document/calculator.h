// The pocket calculator: one term in, one line out.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

// From this number of decimal places on, a double is left as it is.
inline constexpr int kMostDecimalPlaces = 22;

// What the line of a term without a result begins with.
inline constexpr std::string_view kCalculatorError = "Error: ";

// The value rounded to so many decimal places; halves of the exact decimal value go to the even
// neighbour, so 2.675, which is slightly less, gives 2.67.
double RoundToPlaces(double value, int places);

// At most 15 significant digits and a decimal point, never a comma; from 1E+15 and below 1E-05 with
// an exponent.
std::string GeneralNumberText(double value);

// The result of a typed term. Deliberate: a German message stands behind an English "Error: ", an
// unknown name is "Error: Syntax", and an infinite value "Error: Overflow".
std::string CalculatorLine(term::MathParser& parser, const PlotDocument& document,
                           std::string_view term, int places);

// The number of decimal places that a text asks for: a term, with point or comma, rounded to a
// whole number, halves to the even one. Nothing below 0 and above kMostDecimalPlaces. Deliberate: a
// text that has no value asks for 0.
std::optional<int> DecimalPlacesOf(term::MathParser& parser, std::string_view text);

}  // namespace korvinth::document
