#include "render/axis_marks.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace korvinth::render {
namespace {

constexpr std::string_view kMinus = "\u2212";
constexpr std::string_view kThinSpace = "\u2009";

// Beyond this many steps from the origin, neighbouring marks are one and the same number.
constexpr double kFarthestMark = 1e15;

double PowerOfTen(int exponent)
{
    const std::string text = "1e" + std::to_string(exponent);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

bool Divisible(double lower, double upper)
{
    const double range = upper - lower;
    return std::isfinite(lower) && std::isfinite(upper) && std::isnormal(range) && range > 0;
}

// The widest step that goes into the range at least so many times.
MarkStep WidestStep(double range, int times)
{
    MarkStep step{1, static_cast<int>(std::floor(std::log10(range)))};
    while (range / step.Value() >= times) step = Coarser(step);
    while (range / step.Value() < times) step = Finer(step);
    return step;
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

MarkStep Finer(MarkStep step)
{
    switch (step.digit) {
        case 5: return {2, step.exponent};
        case 2: return {1, step.exponent};
        default: return {5, step.exponent - 1};
    }
}

MarkStep Coarser(MarkStep step)
{
    switch (step.digit) {
        case 1: return {2, step.exponent};
        case 2: return {5, step.exponent};
        default: return {1, step.exponent + 1};
    }
}

double MarkStep::Value() const { return digit * PowerOfTen(exponent); }

double AxisMarks::Position(std::int64_t mark) const
{
    constexpr int kExactPowers = 22;  // powers of ten up to this one are exact
    const auto multiple = static_cast<double>(mark) * step.digit;
    if (step.exponent < 0 && step.exponent >= -kExactPowers) {
        return multiple / PowerOfTen(-step.exponent);
    }
    return multiple * PowerOfTen(step.exponent);
}

std::string AxisMarks::Label(std::int64_t mark) const
{
    if (mark == 0) return "0";
    constexpr int kLargestPlainDigits = 6;    // 999 999 is written out
    constexpr int kSmallestPlainDigits = -3;  // 0,0001 is written out

    std::string digits = std::to_string(std::abs(mark) * step.digit);
    const int whole = static_cast<int>(digits.size()) + step.exponent;
    digits.erase(digits.find_last_not_of('0') + 1);
    std::string text(mark < 0 ? kMinus : std::string_view());
    if (whole <= kLargestPlainDigits && whole >= kSmallestPlainDigits) {
        return text + PlainNumber(digits, whole);
    }
    return text + PlainNumber(digits, 1) + "\u00B710" + Superscript(whole - 1);
}

AxisMarks MarksAt(MarkStep step, double lower, double upper)
{
    AxisMarks marks{step};
    if (!Divisible(lower, upper)) return marks;
    const double value = step.Value();
    const double first = std::ceil(lower / value);
    const double last = std::floor(upper / value);
    if (!(value > 0) || !(std::abs(first) < kFarthestMark) || !(std::abs(last) < kFarthestMark)) {
        return marks;
    }
    marks.first = static_cast<std::int64_t>(first);
    marks.last = static_cast<std::int64_t>(last);
    // The quotients may be rounded across a whole number.
    if (marks.Position(marks.first - 1) >= lower) --marks.first;
    if (marks.Position(marks.last + 1) <= upper) ++marks.last;
    return marks;
}

AxisMarks CoarseMarks(double lower, double upper)
{
    if (!Divisible(lower, upper)) return {};
    // The step depends on the range alone as far as possible, so that it stays while the view
    // moves.
    const MarkStep step = WidestStep(upper - lower, kFewestMarks);
    const AxisMarks marks = MarksAt(step, lower, upper);
    if (marks.Count() <= kMostMarks) return marks;
    // 13 marks are possible only in steps of 2, and then there are 5 in steps of 5.
    return MarksAt(Coarser(step), lower, upper);
}

AxisMarks FineMarks(double lower, double upper)
{
    if (!Divisible(lower, upper)) return {};
    // A range of less than 12 steps holds at most 12 marks.
    AxisMarks marks = CoarseMarks(lower, upper);
    for (MarkStep step = Finer(marks.step); (upper - lower) / step.Value() < kMostMarks;
         step = Finer(step)) {
        const AxisMarks finer = MarksAt(step, lower, upper);
        if (finer.Count() > kMostMarks || finer.Count() < kFewestMarks) break;
        marks = finer;
    }
    return marks;
}

}  // namespace korvinth::render
