// A term through translation, parsing, scalar and block evaluation, which must agree. Input: the
// term, then up to three lines "f(_x)=..." of functions that it may call.
#include <algorithm>
#include <array>
#include <cmath>

#include "document/apply_plot.h"
#include "document/plot_document.h"
#include "fuzz/fuzzing.h"
#include "term/math_parser.h"
#include "term/term_translator.h"

namespace {

using namespace korvinth;
using term::Error;

// Enough for the block code; the kinds of arguments that terms treat in ways of their own.
constexpr std::array<double, 24> kArguments = {
    -10, -3.7,  -1,   -0.5,   -1e-9,  0,    1e-9, 0.3, 0.5,  1,    1.5,   2,
    3,   3.141, 7.25, 100.75, 1234.5, -170, 170,  1e6, 1e15, 1e20, 1e300, -1e300};

struct Value
{
    double value = 0;
    Error error = Error::None;
};

class Evaluation
{
public:
    Evaluation(term::MathParser& parser, term::VariableHandle x, term::ExprHandle handle)
        : parser_(parser), x_(x), handle_(handle)
    {
    }

    Value At(double argument)
    {
        parser_.SetVariableValue(x_, argument);
        const double value = parser_.Evaluate(handle_);
        return {value, parser_.GetError()};
    }

    // Whether an argument a little beside this one gives nearly the same. Functions of the vector
    // library differ by some units in the last place, so elsewhere nothing can be compared.
    bool IsSteadyAt(double argument, const Value& here)
    {
        for (const double step : {1e-15, 4e-15, 3e-14, 1e-12, 1e-9, 1e-7, 1e-5}) {
            for (const double sign : {-1.0, 1.0}) {
                const double shift = sign * step;
                const Value near = At(argument + shift * std::max(std::fabs(argument), 1.0));
                if (near.error != here.error || !Close(near.value, here.value)) return false;
            }
        }
        return true;
    }

    static bool Close(double a, double b)
    {
        return a == b || std::fabs(a - b) <= 1e-3 * std::max(std::fabs(a), std::fabs(b));
    }

    // The argument's own rounding: what is left where x less x is 0 on one side only.
    static bool IsRounding(double difference, double argument)
    {
        return std::fabs(difference) <= 4e-15 * std::max(std::fabs(argument), 1.0);
    }

private:
    term::MathParser& parser_;
    term::VariableHandle x_;
    term::ExprHandle handle_;
};

void Compare(term::MathParser& parser, term::VariableHandle x, const std::string& text)
{
    const term::ExprHandle handle = parser.Parse(text);
    const Error parse_error = parser.GetError();
    parser.EvalText(text);
    if (handle == term::ExprHandle::Invalid) {
        fuzzing::Require(parse_error != Error::None, "a term without a handle has an error", text);
        fuzzing::Require(parser.GetError() == parse_error, "EvalText tells Parse's error", text);
        fuzzing::Require(!parser.ErrorText().empty(), "an error has a text", text);
        return;
    }
    fuzzing::Require(parse_error == Error::None, "a term with a handle has no error", text);
    Evaluation evaluation(parser, x, handle);
    std::array<double, kArguments.size()> results{};
    std::array<Error, kArguments.size()> errors{};
    parser.EvaluateBlock(handle, x, kArguments, results, errors);
    for (std::size_t i = 0; i < kArguments.size(); ++i) {
        const Value scalar = evaluation.At(kArguments[i]);
        parser.SetVariableValue(x, kArguments[i]);
        const double again = parser.EvalText(text);
        fuzzing::Require(again == scalar.value && parser.GetError() == scalar.error,
                         "EvalText gives what Evaluate gives", text);
        fuzzing::Require(!std::isnan(results[i]) && !std::isnan(scalar.value), "no value is NaN",
                         text);
        const bool agree = errors[i] == scalar.error &&
                           (Evaluation::Close(results[i], scalar.value) ||
                            Evaluation::IsRounding(results[i] - scalar.value, kArguments[i]));
        if (agree || !evaluation.IsSteadyAt(kArguments[i], scalar)) continue;
        const auto shown = [](double value, Error error) {
            return std::to_string(value) + ", error " + std::to_string(static_cast<int>(error));
        };
        fuzzing::Require(
            false, "block and scalar code agree at " + std::to_string(kArguments[i]) + ": " + text,
            shown(results[i], errors[i]), shown(scalar.value, scalar.error));
    }
    parser.ReleaseExpr(handle);
    fuzzing::Require(parser.LivePrograms() == 0, "no program is left", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static term::MathParser parser;
    const std::vector<std::string> lines = fuzzing::Lines(fuzzing::Input(data, size), 4);
    document::PlotDocument document;
    for (std::size_t i = 0; i < 3; ++i) {
        document.slots[document::SlotIndex{static_cast<std::int16_t>(i)}].name = "fgh"[i];
    }
    parser.Reset();
    DefineSystemVariables(parser, document);
    parser.SetVariableValue(document.variables.sw, 0.001);
    parser.DefineVariable("a=2,5");
    for (std::size_t i = 1; i < lines.size(); ++i) {
        parser.DefineFunction(document.Translate(lines[i]));
    }
    const std::string translated = document.Translate(lines.front());
    Compare(parser, document.variables.x, translated);
    document.Translate(lines.front(), term::Derivatives::Keep);
    return 0;
}
