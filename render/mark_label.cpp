#include "render/mark_label.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <string_view>

namespace korvinth::render {
namespace {

constexpr std::string_view kMinus = "\u2212";
constexpr std::string_view kThinSpace = "\u2009";
constexpr std::string_view kTimes = "\u00B7";
constexpr std::string_view kPi = "\u03C0";

// digits * 10^exponent, without zeros at the end of the digits.
struct Decimal
{
    std::int64_t digits = 0;
    int exponent = 0;
};

Decimal WithoutZeros(Decimal number)
{
    constexpr int kTen = 10;
    while (number.digits != 0 && number.digits % kTen == 0) {
        number.digits /= kTen;
        ++number.exponent;
    }
    return number;
}

std::string Grouped(std::string_view whole)
{
    std::string text;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (i > 0 && (whole.size() - i) % 3 == 0) text += kThinSpace;
        text += whole[i];
    }
    return text;
}

// Digits without leading or trailing zeros, read with the comma after the first `whole` of them.
std::string PlainNumber(const std::string& digits, int whole)
{
    if (whole <= 0) {
        return "0," + std::string(static_cast<std::size_t>(-whole), '0') + digits;
    }
    const auto split = static_cast<std::size_t>(whole);
    if (split >= digits.size()) return Grouped(digits + std::string(split - digits.size(), '0'));
    return Grouped(digits.substr(0, split)) + "," + digits.substr(split);
}

std::string WriteDecimal(Decimal number)
{
    constexpr int kLargestPlainDigits = 6;    // 999 999 is written out
    constexpr int kSmallestPlainDigits = -3;  // 0,0001 is written out
    number = WithoutZeros(number);
    const std::string digits = std::to_string(std::abs(number.digits));
    const int whole = static_cast<int>(digits.size()) + number.exponent;
    std::string text(number.digits < 0 ? kMinus : std::string_view());
    if (whole <= kLargestPlainDigits && whole >= kSmallestPlainDigits) {
        return text + PlainNumber(digits, whole);
    }
    return (text + PlainNumber(digits, 1)).append(kTimes) + "10" + Superscript(whole - 1);
}

// A multiple of a step that is no short decimal, to a thousandth of the step.
Decimal Rounded(const MarkStep& step, std::int64_t count)
{
    constexpr int kPlacesOfAStep = 3;
    constexpr double kMostDigits = 1e17;
    int exponent = static_cast<int>(std::floor(std::log10(step.Value()))) - kPlacesOfAStep;
    const auto scaled = [&] { return step.Multiple(count) / std::pow(10.0, exponent); };
    while (!(std::abs(scaled()) < kMostDigits)) ++exponent;
    return WithoutZeros({std::llround(scaled()), exponent});
}

struct Fraction
{
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;
};

// The factor of pi where it is written as a fraction.
Fraction Reduced(const MarkStep& step, std::int64_t count)
{
    std::int64_t numerator = count * step.digits;
    std::int64_t denominator = step.parts;
    const std::int64_t common = std::gcd(numerator, denominator);
    return {numerator / common, denominator / common};
}

bool IsFraction(const MarkStep& step) { return step.unit == kPiUnit && step.parts > 1; }

std::string WriteFractionOfPi(const MarkStep& step, std::int64_t count)
{
    const auto [numerator, denominator] = Reduced(step, count);
    std::string factor = WriteDecimal({numerator, step.exponent});
    if (factor == "1") factor = "";
    if (factor == std::string(kMinus) + "1") factor = kMinus;
    if (factor.ends_with(kMinus) || factor.find(kTimes) == std::string::npos) {
        factor += kPi;
    } else {
        factor.append(kTimes).append(kPi);
    }
    return denominator == 1 ? factor : factor + "/" + std::to_string(denominator);
}

Decimal DecimalOf(const MarkStep& step, std::int64_t count)
{
    if (step.unit != 1 && step.unit != kPiUnit) return Rounded(step, count);
    return WithoutZeros({count * step.digits, step.exponent});
}

}  // namespace

std::string Superscript(int exponent)
{
    constexpr std::array<std::string_view, 10> kDigits{"\u2070", "\u00B9", "\u00B2", "\u00B3",
                                                       "\u2074", "\u2075", "\u2076", "\u2077",
                                                       "\u2078", "\u2079"};
    std::string text;
    if (exponent < 0) text = "\u207B";
    for (const char digit : std::to_string(std::abs(exponent))) {
        text += kDigits[static_cast<std::size_t>(digit - '0')];
    }
    return text;
}

std::string MarkLabel(const MarkStep& step, std::int64_t count)
{
    if (count == 0) return "0";
    if (step.unit == kPiUnit) return WriteFractionOfPi(step, count);
    return WriteDecimal(DecimalOf(step, count));
}

int LabelDigits(const MarkStep& step, std::int64_t count)
{
    if (count == 0) return 1;
    const std::int64_t digits =
        IsFraction(step) ? Reduced(step, count).numerator : DecimalOf(step, count).digits;
    return static_cast<int>(std::to_string(std::abs(digits)).size());
}

}  // namespace korvinth::render
