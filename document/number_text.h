// Numbers as texts and texts as numbers, as the program's fields and files write them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "term/math_parser.h"

namespace korvinth::document {

// A number in scientific notation ("1.25e+00") as the program shows it: without an exponent from
// 1e-05 to below 1e+15, else with `exponent_mark` for the "e". The digits stay as they are.
std::string DecimalText(std::string_view scientific, std::string_view exponent_mark);

// Shortest digits that read back to the same double, decimal point, exponent as "1e-07".
std::string ShortestText(double value);
// The same with a decimal comma.
std::string ShortestGermanText(double value);
// Shortest digits of the value rounded to a decimal place that tells `resolution` apart: a
// resolution of 0.04 shows hundredths.
std::string RoundedText(double value, double resolution);
// Leading numeric prefix of a text, 0 when there is none. Independent of the locale.
double LeadingNumber(std::string_view text);
// Rounds half to even; limited to the range of the type.
std::int64_t RoundHalfEven(double value);
// The rule of numeric dialog fields: every "," becomes "." and the text is evaluated.
double EvalNumberField(term::MathParser& parser, std::string_view text);

}  // namespace korvinth::document
