#include "document/calculator.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "document/integral_term.h"
#include "document/number_text.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

constexpr int kSignificantDigits = 15;
constexpr std::string_view kSyntax = "Error: Syntax";
constexpr std::string_view kOverflow = "Error: Overflow";

// The parser knows integral functions as 0, which would be a wrong result.
bool CallsIntegralFunction(const PlotDocument& document, std::string_view translated)
{
    return CallsFunction(translated, "integral") ||
           std::ranges::any_of(document.slots, [&](const FunctionSlot& slot) {
               return !slot.integral_term.empty() && CallsFunction(translated, slot.name);
           });
}

}  // namespace

double RoundToPlaces(double value, int places)
{
    if (places >= kMostDecimalPlaces || !std::isfinite(value)) return value;
    // All digits of the largest double, the point, the sign and the places.
    char buffer[400];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed,
                                   places < 0 ? 0 : places);
    double rounded = value;
    std::from_chars(buffer, end.ptr, rounded);
    return rounded;
}

std::string GeneralNumberText(double value)
{
    if (value == 0) return "0";  // without the sign of a negative zero
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value,
                                   std::chars_format::scientific, kSignificantDigits - 1);
    std::string digits(buffer, end.ptr);
    const std::size_t mark = digits.find('e');
    if (mark == std::string::npos) return digits;
    std::size_t end_of_digits = digits.find_last_not_of('0', mark - 1) + 1;
    if (digits[end_of_digits - 1] == '.') --end_of_digits;
    digits.erase(end_of_digits, mark - end_of_digits);
    return DecimalText(digits, "E");
}

std::string CalculatorLine(term::MathParser& parser, const PlotDocument& document,
                           std::string_view term, int places)
{
    const std::string translated = document.Translate(term);
    if (translated.empty() && !term::TrimBlanks(term).empty()) return std::string(kSyntax);
    const double value = parser.EvalText(translated);
    const term::Error error = parser.GetError();
    if (error == term::Error::UndefinedVariable) return std::string(kSyntax);
    if (error != term::Error::None) return std::string(kCalculatorError) + parser.ErrorText();
    if (CallsIntegralFunction(document, translated)) {
        return std::string(kCalculatorError).append(kIntegralNotAlone);
    }
    if (!std::isfinite(value)) return std::string(kOverflow);
    return GeneralNumberText(RoundToPlaces(value, places));
}

std::optional<int> DecimalPlacesOf(term::MathParser& parser, std::string_view text)
{
    const std::int64_t places = RoundHalfEven(EvalNumberField(parser, text));
    if (places < 0 || places > kMostDecimalPlaces) return std::nullopt;
    return static_cast<int>(places);
}

}  // namespace korvinth::document
