// Which numbers an axis shows, and how they are written.
#pragma once

#include <cstdint>
#include <numbers>
#include <string>

namespace korvinth::render {

// digits * 10^exponent / parts, counted in a unit: 1, pi, or a size of any kind.
struct MarkStep
{
    std::int64_t digits = 1;
    int exponent = 0;
    int parts = 1;
    double unit = 1;

    double Value() const { return Multiple(1); }
    double Multiple(std::int64_t count) const;
    bool operator==(const MarkStep&) const = default;
};

inline constexpr double kPiUnit = std::numbers::pi;

// The steps that an axis may choose from, each about twice the one below.
enum class StepLadder {
    Decimal,  // 1, 2, 5 times a power of ten
    Degrees,  // among them 15, 30, 45, 90, 180, 360
    Grads,    // among them 25, 50, 100, 200, 400
    Pi,       // pi/8, pi/4, pi/2, and pi times the decimal ones from 1 and below 1/8
};

// Rung 0 is the step 1, or pi.
MarkStep Rung(StepLadder ladder, int rung);

// The step that a number stands for, as a fraction of pi or a short decimal where it is one.
MarkStep StepOf(double value);

// The step of the thin lines between marks: a third, a quarter or a fifth.
MarkStep Subdivision(const MarkStep& step);

// The marks of an axis: multiples of a step, counted from the origin 0 in whole numbers. Mark n
// lies at n * step and is written from n itself, so that no rounding gets into the labels.
struct AxisMarks
{
    MarkStep step;
    std::int64_t first = 0;
    std::int64_t last = -1;  // below `first` when there are no marks
    // Where all numbers have many digits in common, the mark that is written in full; the others
    // show by how much they differ from it. 0 where every number is written in full.
    std::int64_t base = 0;
    int rung = 0;  // of the step in its ladder

    std::int64_t Count() const { return last - first + 1; }
    static double Origin() { return 0; }
    double Position(std::int64_t mark) const { return step.Multiple(mark); }
    // With decimal comma, minus sign and thin spaces between thousands; from 1e6 and below 1e-4 as
    // a number times a power of ten; multiples of pi as "3π/2". Differences begin with a sign.
    std::string Label(std::int64_t mark) const;
};

inline constexpr int kFewestMarks = 5;
inline constexpr int kMostMarks = 12;

// The marks between two bounds at a given step. None when the bounds are no numbers, not in order,
// or too close together for their size to be told apart.
AxisMarks MarksAt(const MarkStep& step, double lower, double upper);
AxisMarks MarksOnRung(StepLadder ladder, int rung, double lower, double upper);

// The widest steps that give at least 5 marks, which are never more than 12.
AxisMarks CoarseMarks(double lower, double upper, StepLadder ladder = StepLadder::Decimal);
// The finest steps that give at most 12 marks.
AxisMarks FineMarks(double lower, double upper, StepLadder ladder = StepLadder::Decimal);
// Marks at multiples of a number above 0: of the number itself, or of 2, 5, 10, ... times it where
// the bounds are more than `most` such steps apart.
AxisMarks FixedMarks(double step, double lower, double upper, int most);

}  // namespace korvinth::render
