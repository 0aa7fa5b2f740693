#include "document/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "term/words.h"

namespace korvinth::document {
namespace {

// The range of decimal exponents that are written without "e".
constexpr int kLowestFixedExponent = -5;
constexpr int kHighestFixedExponent = 14;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t CountDigits(std::string_view text)
{
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count])) ++count;
    return count;
}

// The length of the unsigned number that a text begins with: digits, a point, an exponent.
std::size_t NumberLength(std::string_view text)
{
    const std::size_t whole = CountDigits(text);
    std::size_t length = whole;
    if (length < text.size() && text[length] == '.') {
        const std::size_t fraction = CountDigits(text.substr(length + 1));
        if (whole + fraction == 0) return 0;
        length += 1 + fraction;
    }
    if (length == 0 || length == text.size() || (text[length] != 'e' && text[length] != 'E')) {
        return length;
    }
    std::size_t exponent = length + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    const std::size_t digits = CountDigits(text.substr(exponent));
    return digits == 0 ? length : exponent + digits;
}

// The nearest double to a number that no double holds: nothing, or the largest one.
double OutOfRangeNumber(std::string_view number)
{
    const std::size_t exponent = number.find_first_of("eE");
    const bool small = exponent == std::string_view::npos
                           ? number.front() == '0' || number.front() == '.'
                           : number[exponent + 1] == '-';
    return small ? 0 : std::numeric_limits<double>::max();
}

}  // namespace

std::string DecimalText(std::string_view scientific, std::string_view exponent_mark)
{
    const std::size_t mark = scientific.find('e');
    if (mark == std::string_view::npos) return std::string(scientific);  // inf and nan
    const int exponent = std::atoi(std::string(scientific.substr(mark + 1)).c_str());
    std::string text(scientific.substr(0, mark));
    if (exponent < kLowestFixedExponent || exponent > kHighestFixedExponent) {
        return text.append(exponent_mark).append(scientific.substr(mark + 1));
    }
    std::string sign;
    std::string digits;
    for (char c : text) {
        if (c == '-') sign = "-";
        if (IsDigit(c)) digits += c;
    }
    if (exponent < 0) {
        return sign + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    }
    const auto point = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= point) return sign + digits.append(point - digits.size(), '0');
    return sign + digits.insert(point, ".");
}

std::string ShortestText(double value)
{
    char buffer[64];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    return DecimalText({buffer, end.ptr}, "e");
}

std::string ShortestGermanText(double value)
{
    std::string text = ShortestText(value);
    std::replace(text.begin(), text.end(), '.', ',');
    return text;
}

std::string RoundedText(double value, double resolution)
{
    if (!std::isfinite(value) || !(resolution > 0)) return ShortestText(value);
    constexpr double kMostPlaces = 320;
    const double places = std::min(std::ceil(-std::log10(resolution)), kMostPlaces);
    if (places <= 0) {
        const double unit = std::pow(10, -places);
        const double rounded = std::nearbyint(value / unit) * unit;
        return ShortestText(std::isfinite(rounded) ? rounded + 0.0 : value);
    }
    char buffer[700];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed,
                                   static_cast<int>(places));
    return ShortestText(LeadingNumber({buffer, end.ptr}) + 0.0);  // no minus sign before 0
}

double LeadingNumber(std::string_view text)
{
    text = term::TrimBlanks(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    const std::string_view number = text.substr(0, NumberLength(text));
    if (number.empty()) return 0;
    double value = 0;
    const auto end = std::from_chars(number.data(), number.data() + number.size(), value);
    if (end.ec == std::errc::result_out_of_range) value = OutOfRangeNumber(number);
    return negative ? -value : value;
}

std::int64_t RoundHalfEven(double value)
{
    constexpr double kLimit = 9223372036854775808.0;  // 2^63, the first value out of range
    if (std::isnan(value)) return 0;
    const double rounded = std::nearbyint(value);
    if (rounded >= kLimit) return std::numeric_limits<std::int64_t>::max();
    if (rounded < -kLimit) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(rounded);
}

double EvalNumberField(term::MathParser& parser, std::string_view text)
{
    return parser.EvalText(term::ReplaceAll(text, ",", "."));
}

}  // namespace korvinth::document
