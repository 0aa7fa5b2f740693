#include "document/parameter_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

#include "document/number_text.h"
#include "term/builtins.h"

namespace korvinth::document {
namespace {

// Enough to read well, few enough to hide what binary fractions leave behind.
constexpr int kFieldDigits = 12;

// The value of one end of an interval, nothing when it is open or has no value.
std::optional<double> IntervalEnd(term::MathParser& parser, const PlotDocument& document,
                                  const std::string& text)
{
    if (text.empty()) return {};
    const double value = parser.EvalText(document.Translate(text));
    const bool valid = parser.GetError() == term::Error::None && std::isfinite(value);
    parser.EvalText("");
    if (!valid) return {};
    return value;
}

}  // namespace

double AcceptedValue(double value, unsigned state)
{
    if ((state & kSampleCountState) != 0) {
        return std::clamp(std::trunc(value), kFewestSupportPoints, kMostSupportPoints);
    }
    return (state & kIntegerState) != 0 ? std::trunc(value) : value;
}

int SliderPosition(double value, const Bounds& bounds)
{
    double position = (value - bounds.lower) * kSliderSteps / (bounds.upper - bounds.lower);
    if (!std::isfinite(position)) {  // beyond the largest number on the way
        const double width = bounds.upper / 4 - bounds.lower / 4;
        position = (value / 4 - bounds.lower / 4) / width * kSliderSteps;
    }
    if (std::isnan(position)) return 0;
    return static_cast<int>(RoundHalfEven(std::clamp(position, 0.0, double{kSliderSteps})));
}

double SliderValue(int position, const Bounds& bounds)
{
    if (position >= kSliderSteps) return bounds.upper;  // not the last digit beyond it
    const double way = (bounds.upper - bounds.lower) * position / kSliderSteps;
    if (std::isfinite(way)) return bounds.lower + way;
    const double part = static_cast<double>(position) / kSliderSteps;
    return bounds.lower * (1 - part) + bounds.upper * part;
}

std::optional<Refusal> CheckBounds(const Parameter& parameter, const Bounds& bounds)
{
    if (!(bounds.lower < bounds.upper)) {
        return Refusal{"Ungültige Parametergrenzen von " + parameter.name + ":",
                       "Untere Grenze muss kleiner sein als obere Grenze!"};
    }
    const bool sample_count = (parameter.state & kSampleCountState) != 0;
    if (sample_count &&
        (bounds.lower < kFewestSupportPoints || bounds.upper > kMostSupportPoints)) {
        return Refusal{"Fehlerhafte Eingabe",
                       "Stützstellenanzahl muss im Bereich [2; 20000] liegen!"};
    }
    return {};
}

std::optional<Refusal> CheckStep(double step, const Bounds& bounds)
{
    if (bounds.upper - bounds.lower >= std::abs(step)) return {};
    return Refusal{"Inakzeptable Schrittweite", "Schrittweite ist größer als das Intervall!"};
}

Bounds IntegralBoundRange(term::MathParser& parser, const PlotDocument& document, SlotIndex slot,
                          const Bounds& displayed)
{
    const FunctionSlot& function = document.slots[slot];
    const auto lower = IntervalEnd(parser, document, function.lower_bound);
    const auto upper = IntervalEnd(parser, document, function.upper_bound);
    const double width = displayed.upper - displayed.lower;
    if (lower && upper) return *lower < *upper ? Bounds{*lower, *upper} : displayed;
    if (lower) return {*lower, *lower < displayed.upper ? displayed.upper : *lower + width};
    if (upper) return {*upper > displayed.lower ? displayed.lower : *upper - width, *upper};
    return displayed;
}

std::string FieldText(double value)
{
    if (value == 0) return "0";  // without the sign of a negative zero
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value,
                                   std::chars_format::scientific, kFieldDigits - 1);
    double rounded = value;
    std::from_chars(buffer, end.ptr, rounded);
    return ShortestGermanText(rounded);
}

double FieldValue(term::MathParser& parser, std::string_view text)
{
    const double value = EvalNumberField(parser, text);
    const bool valid = parser.GetError() == term::Error::None && std::isfinite(value);
    parser.EvalText("");
    return valid ? value : 0;
}

double FieldValue(term::MathParser& parser, std::string_view text, double shown)
{
    return text == FieldText(shown) ? shown : FieldValue(parser, text);
}

double CoupledValue(Coupling coupling, double x, double y, term::TrigMode mode)
{
    if (coupling == Coupling::X) return x;
    if (coupling == Coupling::Y) return y;
    constexpr double kQuarters = 4;
    const double quarters = std::atan2(y, x) / (std::numbers::pi / 2);
    return (quarters < 0 ? quarters + kQuarters : quarters) * term::QuarterTurn(mode);
}

}  // namespace korvinth::document
