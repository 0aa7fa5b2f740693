#include "document/range_bounds.h"

#include <algorithm>
#include <cmath>

namespace korvinth::document {
namespace {

// The fault of one bound, "" when it is a number that can be displayed.
std::string ReadBound(term::MathParser& parser, const PlotDocument& document,
                      const std::string& text, double& value, bool& unknown_name)
{
    std::string fault;
    const std::string term = document.Translate(text);
    value = parser.EvalText(term);
    unknown_name = parser.GetError() == term::Error::UndefinedVariable;
    if (parser.GetError() != term::Error::None) {
        fault = parser.ErrorText();
    } else if (term.empty()) {
        fault = term::ErrorMessage(static_cast<int>(term::Error::InvalidTerm), "");
    } else if (!(std::abs(value) <= kLargestBound)) {
        fault = "Die Grenzen müssen zwischen -10^15 und 10^15 liegen";
    }
    parser.EvalText("");
    return fault;
}

}  // namespace

RangeBounds ReadRangeBounds(term::MathParser& parser, const PlotDocument& document,
                            const std::string& lower_text, const std::string& upper_text)
{
    RangeBounds bounds;
    bounds.fault = ReadBound(parser, document, lower_text, bounds.lower, bounds.unknown_name);
    bounds.faulty = FaultyBound::Lower;
    if (bounds.fault.empty()) {
        bounds.fault = ReadBound(parser, document, upper_text, bounds.upper, bounds.unknown_name);
        bounds.faulty = FaultyBound::Upper;
    }
    if (!bounds.fault.empty()) return bounds;

    const double size = std::max(std::abs(bounds.lower), std::abs(bounds.upper));
    if (!(bounds.lower < bounds.upper)) {
        bounds.fault = "Die untere Grenze muss kleiner als die obere sein";
    } else if (bounds.upper - bounds.lower < kSmallestRelativeWidth * size) {
        bounds.fault = "Der Bereich ist zu schmal";
    }
    bounds.faulty = bounds.fault.empty() ? FaultyBound::None : FaultyBound::Both;
    return bounds;
}

}  // namespace korvinth::document
