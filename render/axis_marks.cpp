#include "render/axis_marks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "render/mark_label.h"

namespace korvinth::render {
namespace {

// Beyond this many steps from the origin, neighbouring marks are one and the same number.
constexpr double kFarthestMark = 1e15;
// Products of marks and digits stay whole numbers of 64 bits.
constexpr double kLargestProduct = 9e18;

constexpr int kRungsADecade = 3;

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

MarkStep DecimalRung(int rung)
{
    constexpr std::array<std::int64_t, kRungsADecade> kDigits{1, 2, 5};
    const int place = (rung % kRungsADecade + kRungsADecade) % kRungsADecade;
    return {kDigits[static_cast<std::size_t>(place)], (rung - place) / kRungsADecade};
}

// Parts of a turn replace the decimal steps from `from` on; above them, multiples of the turn.
template <std::size_t kSize>
MarkStep TurnRung(const std::array<MarkStep, kSize>& parts, int from, int rung)
{
    if (rung < from) return DecimalRung(rung);
    const auto above = static_cast<std::size_t>(rung - from);
    if (above < kSize) return parts[above];
    MarkStep step = DecimalRung(static_cast<int>(above - kSize) + 1);
    step.digits *= parts.back().digits;
    step.exponent += parts.back().exponent;
    return step;
}

int WidestRung(StepLadder ladder, double range, int times)
{
    int rung = static_cast<int>(std::floor(kRungsADecade * std::log10(range)));
    while (range / Rung(ladder, rung).Value() >= times) ++rung;
    while (range / Rung(ladder, rung).Value() < times) --rung;
    return rung;
}

// The number as a fraction of pi with a small denominator, if it is one.
bool FractionOfPi(double value, MarkStep& step)
{
    constexpr int kLargestDenominator = 180;
    constexpr double kLargestNumerator = 1000;
    constexpr double kTolerance = 1e-13;
    for (int parts = 1; parts <= kLargestDenominator; ++parts) {
        const double exact = value / kPiUnit * parts;
        const double whole = std::nearbyint(exact);
        if (whole < 1 || std::abs(exact - whole) > kTolerance * whole) continue;
        if (whole > kLargestNumerator) return false;
        step = {static_cast<std::int64_t>(whole), 0, parts, kPiUnit};
        return true;
    }
    return false;
}

// The number by its decimal digits, if they are few.
bool ShortDecimal(double value, MarkStep& step)
{
    constexpr int kMostDigits = 6;
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::scientific);
    const std::string text(buffer.data(), end.ptr);
    const std::size_t mark = text.find('e');
    std::string digits = text.substr(0, mark);
    std::erase(digits, '.');
    if (digits.size() > kMostDigits) return false;
    const int exponent = std::atoi(text.c_str() + mark + 1) - static_cast<int>(digits.size()) + 1;
    step = {std::atoll(digits.c_str()), exponent};
    return true;
}

// The mark that shares the digits of all and has the fewest itself; 0 when no label is long.
std::int64_t CommonPart(const AxisMarks& marks)
{
    constexpr std::int64_t kMostCompared = 400;
    constexpr int kMostDigits = 6;
    constexpr int kDigitsSaved = 3;
    if (marks.Count() < 2 || marks.Count() > kMostCompared) return 0;
    if (marks.first <= 0 && marks.last >= 0) return 0;
    int longest = 0;
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        longest = std::max(longest, LabelDigits(marks.step, mark));
    }
    if (longest <= std::max(kMostDigits, LabelDigits(marks.step, 1) + kDigitsSaved)) return 0;

    // The outermost marks may be too close to the border for a long number.
    const int margin = marks.Count() > 2 ? 1 : 0;
    const std::int64_t middle = marks.first + (marks.last - marks.first) / 2;
    std::int64_t base = middle;
    const auto rank = [&](std::int64_t mark) {
        return std::pair{LabelDigits(marks.step, mark), std::abs(mark - middle)};
    };
    for (std::int64_t mark = marks.first + margin; mark <= marks.last - margin; ++mark) {
        if (rank(mark) < rank(base)) base = mark;
    }
    return base;
}

}  // namespace

double MarkStep::Multiple(std::int64_t count) const
{
    constexpr int kExactPowers = 22;  // powers of ten up to this one are exact
    const auto whole = static_cast<double>(count) * static_cast<double>(digits);
    if (exponent < 0 && exponent >= -kExactPowers) {
        return whole / PowerOfTen(-exponent) / parts * unit;
    }
    return whole * unit / parts * PowerOfTen(exponent);
}

MarkStep Rung(StepLadder ladder, int rung)
{
    constexpr std::array kDegrees{MarkStep{15},   MarkStep{3, 1},  MarkStep{45},
                                  MarkStep{9, 1}, MarkStep{18, 1}, MarkStep{36, 1}};
    constexpr std::array kGrads{MarkStep{25}, MarkStep{5, 1}, MarkStep{1, 2}, MarkStep{2, 2},
                                MarkStep{4, 2}};
    constexpr int kRungAboveTen = 4;
    constexpr int kLowestHalving = -3;
    switch (ladder) {
        case StepLadder::Degrees: return TurnRung(kDegrees, kRungAboveTen, rung);
        case StepLadder::Grads: return TurnRung(kGrads, kRungAboveTen, rung);
        case StepLadder::Pi: {
            MarkStep step = DecimalRung(rung);
            if (rung < 0 && rung >= kLowestHalving) step = {1, 0, 1 << -rung};
            step.unit = kPiUnit;
            return step;
        }
        case StepLadder::Decimal: break;
    }
    return DecimalRung(rung);
}

MarkStep StepOf(double value)
{
    MarkStep step{1, 0, 1, value};
    if (ShortDecimal(value, step) || FractionOfPi(value, step)) return step;
    return step;
}

MarkStep Subdivision(const MarkStep& step)
{
    std::int64_t digits = step.digits;
    while (digits != 0 && digits % 10 == 0) digits /= 10;
    int parts = digits % 5 == 0 || digits == 1 ? 5 : 4;
    if (digits % 3 == 0 && digits % 4 != 0) parts = 3;  // 15, 30, 45, 90 degrees
    if (step.unit == kPiUnit && digits == 1) parts = step.parts == 1 ? 4 : 3;
    MarkStep finer = step;
    finer.parts *= parts;
    return finer;
}

std::string AxisMarks::Label(std::int64_t mark) const
{
    if (base == 0 || mark == base) return MarkLabel(step, mark);
    return mark > base ? "+" + MarkLabel(step, mark - base) : MarkLabel(step, mark - base);
}

AxisMarks MarksAt(const MarkStep& step, double lower, double upper)
{
    AxisMarks marks{step};
    if (!Divisible(lower, upper)) return marks;
    const double value = step.Value();
    if (!(value > 0) || !std::isfinite(value)) return marks;
    const double first = std::ceil(lower / value);
    const double last = std::floor(upper / value);
    const double farthest =
        std::min(kFarthestMark, kLargestProduct / static_cast<double>(step.digits));
    if (!(std::abs(first) < farthest) || !(std::abs(last) < farthest)) return marks;
    marks.first = static_cast<std::int64_t>(first);
    marks.last = static_cast<std::int64_t>(last);
    // The quotients may be rounded across a whole number.
    if (marks.Position(marks.first - 1) >= lower) --marks.first;
    if (marks.Position(marks.last + 1) <= upper) ++marks.last;
    marks.base = CommonPart(marks);
    return marks;
}

AxisMarks MarksOnRung(StepLadder ladder, int rung, double lower, double upper)
{
    AxisMarks marks = MarksAt(Rung(ladder, rung), lower, upper);
    marks.rung = rung;
    return marks;
}

AxisMarks CoarseMarks(double lower, double upper, StepLadder ladder)
{
    if (!Divisible(lower, upper)) return {};
    // The step depends on the range alone as far as possible, so that it stays while the view
    // moves.
    const int rung = WidestRung(ladder, upper - lower, kFewestMarks);
    const AxisMarks marks = MarksOnRung(ladder, rung, lower, upper);
    if (marks.Count() <= kMostMarks) return marks;
    // 13 marks are possible only in steps of 2, and then there are 5 in steps of 5: no two rungs
    // are farther apart than these.
    return MarksOnRung(ladder, rung + 1, lower, upper);
}

AxisMarks FineMarks(double lower, double upper, StepLadder ladder)
{
    if (!Divisible(lower, upper)) return {};
    // A range of less than 12 steps holds at most 12 marks.
    AxisMarks marks = CoarseMarks(lower, upper, ladder);
    for (int rung = marks.rung - 1; (upper - lower) / Rung(ladder, rung).Value() < kMostMarks;
         --rung) {
        const AxisMarks finer = MarksOnRung(ladder, rung, lower, upper);
        if (finer.Count() > kMostMarks || finer.Count() < kFewestMarks) break;
        marks = finer;
    }
    return marks;
}

AxisMarks FixedMarks(double step, double lower, double upper, int most)
{
    if (!Divisible(lower, upper) || !(step > 0) || !std::isfinite(step)) return {};
    constexpr std::int64_t kLargestWhole = 1'000'000;
    const MarkStep smallest = StepOf(step);
    const double decades = std::log10(upper - lower) - std::log10(step) - std::log10(most);
    const int rung = decades > 0 ? static_cast<int>(std::ceil(decades * kRungsADecade)) : 0;
    const auto thinned = [&](int factor) {
        const MarkStep times = DecimalRung(factor);
        MarkStep wider = smallest;
        wider.digits *= times.digits;
        wider.exponent += times.exponent;
        // A fraction is written with whole numbers.
        for (; wider.parts > 1 && wider.exponent > 0 && wider.digits < kLargestWhole;
             --wider.exponent) {
            wider.digits *= 10;
        }
        return wider;
    };
    // The rungs are not quite evenly spaced.
    const int start = std::max(0, rung - 1);
    for (int factor = start; factor <= rung; ++factor) {
        if ((upper - lower) / thinned(factor).Value() <= most) {
            return MarksAt(thinned(factor), lower, upper);
        }
    }
    return MarksAt(thinned(rung + 1), lower, upper);
}

}  // namespace korvinth::render
