#include "document/final_check.h"

#include <algorithm>
#include <array>
#include <span>

#include "document/hatched_term.h"
#include "document/outside_terms.h"

namespace korvinth::document {
namespace {

using term::Error;
using term::MathParser;

// Few enough that a term with a value somewhere near the left end costs little.
constexpr std::size_t kPortion = 64;
constexpr int kCurveSteps = 256;
// So that the search for a value takes some milliseconds; every term gets at least one argument.
constexpr std::size_t kMostOperations = 1'000'000;

constexpr std::string_view kHatchedIntegral =
    "Das Integral einer schraffierten Funktion zählt nur ihre Striche";

enum class Outcome { HasValue, NoValue, OutOfSpace };

// As many of the arguments as the search may take, spread over all.
std::vector<double> Thinned(std::span<const double> arguments, std::size_t operations)
{
    const std::size_t step = 1 + arguments.size() * operations / kMostOperations;
    std::vector<double> thinned;
    for (std::size_t i = 0; i < arguments.size(); i += step) thinned.push_back(arguments[i]);
    return thinned;
}

// Where there is no value, the parser's error state says why.
Outcome SearchValue(const PlotDocument& document, MathParser& parser, term::ExprHandle handle,
                    std::span<const double> arguments)
{
    std::array<double, kPortion> results{};
    std::array<Error, kPortion> errors{};
    while (!arguments.empty()) {
        const std::size_t count = std::min(kPortion, arguments.size());
        const auto found = std::span(errors).first(count);
        parser.EvaluateBlock(handle, document.variables.x, arguments.first(count),
                             std::span(results).first(count), found);
        if (std::ranges::find(found, Error::OutOfSpace) != found.end()) return Outcome::OutOfSpace;
        if (std::ranges::find(found, Error::None) != found.end()) return Outcome::HasValue;
        arguments = arguments.subspan(count);
    }
    return Outcome::NoValue;
}

// Arguments over the range of the curve parameter, none when its bounds have no value.
std::vector<double> CurveArguments(const PlotDocument& document, MathParser& parser)
{
    const double lower = parser.EvalText(document.Translate(document.ranges.t_lower));
    const bool lower_right = parser.GetError() == Error::None;
    const double upper = parser.EvalText(document.Translate(document.ranges.t_upper));
    const bool upper_right = parser.GetError() == Error::None;
    parser.EvalText("");
    std::vector<double> arguments;
    if (!lower_right || !upper_right) return arguments;
    for (int k = 0; k <= kCurveSteps; ++k) {
        arguments.push_back(lower + (upper - lower) * k / kCurveSteps);
    }
    return arguments;
}

void CheckSlot(const PlotDocument& document, MathParser& parser, const FunctionSlot& slot,
               std::span<const double> arguments, FinalCheck& check)
{
    const term::ExprHandle handle = parser.Parse(slot.parser_term);
    if (parser.GetError() != Error::None) {
        check.errors.push_back(slot.name + ": " + parser.ErrorText());
    } else if (!arguments.empty()) {
        const Outcome outcome = SearchValue(document, parser, handle,
                                            Thinned(arguments, parser.OperationCount(handle)));
        if (outcome == Outcome::OutOfSpace) {
            check.errors.push_back(
                slot.name + ": " +
                term::ErrorMessage(static_cast<std::int32_t>(Error::OutOfSpace), ""));
        } else if (outcome == Outcome::NoValue) {
            check.notes.push_back(slot.name + ": " + parser.ErrorText());
        }
    }
    parser.ReleaseExpr(handle);
    parser.EvalText("");
}

// One message for each window: that of its first faulty term.
void CheckOutside(MathParser& parser, const OutsideTerms& outside, FinalCheck& check)
{
    for (const std::string& term : outside.terms) {
        parser.EvalText(term);
        if (parser.GetError() == Error::None) continue;
        check.errors.push_back(std::string(outside.window) + ": " + parser.ErrorText());
        break;
    }
    parser.EvalText("");
}

}  // namespace

FinalCheck CheckDefinitions(const PlotDocument& document, MathParser& parser, const PlotHost& host)
{
    FinalCheck check;
    const std::vector<double> plain_arguments = host.DisplayedArguments();
    const std::vector<double> curve_arguments = CurveArguments(document, parser);
    for (const SlotIndex index : AllSlots()) {
        const FunctionSlot& slot = document.slots[index];
        const bool plain = slot.curve_link == kPlainFunction;
        CheckSlot(document, parser, slot, plain ? plain_arguments : curve_arguments, check);
        if (!slot.integral_term.empty() && IsHatched(document, index)) {
            check.notes.push_back(slot.name + ": " + std::string(kHatchedIntegral));
        }
        if (!check.errors.empty() && !check.first_faulty) check.first_faulty = index;
    }
    for (const OutsideTerms& outside : TermsOutsideSlots(document)) {
        CheckOutside(parser, outside, check);
    }
    return check;
}

}  // namespace korvinth::document
