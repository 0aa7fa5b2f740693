// Bounds of a displayed range: terms in, two numbers that can be displayed or a message out.
#pragma once

#include <string>

#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

// Beyond this size of the bounds, or when the range is narrower than this part of them, the mapping
// would run out of digits.
inline constexpr double kLargestBound = 1e15;
inline constexpr double kSmallestRelativeWidth = 1e-12;

enum class FaultyBound { None, Lower, Upper, Both };

struct RangeBounds
{
    double lower = 0;
    double upper = 0;
    std::string fault;  // German, "" when the bounds can be displayed
    FaultyBound faulty = FaultyBound::None;
    bool unknown_name = false;  // the fault is a name that could become a parameter
};

// Values of two terms at the present values of the parameters. Leaves no error in the parser.
RangeBounds ReadRangeBounds(term::MathParser& parser, const PlotDocument& document,
                            const std::string& lower_text, const std::string& upper_text);

}  // namespace korvinth::document
