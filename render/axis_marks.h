// Which numbers an axis shows, and how they are written.
#pragma once

#include <cstdint>
#include <string>

namespace korvinth::render {

// 1, 2 or 5 times a power of ten.
struct MarkStep
{
    int digit = 1;
    int exponent = 0;

    double Value() const;
    bool operator==(const MarkStep&) const = default;
};

MarkStep Finer(MarkStep step);
MarkStep Coarser(MarkStep step);

// The marks of an axis: multiples of a step, counted from the origin 0 in whole numbers. Mark n
// lies at n * step and is written from n itself, so that no rounding gets into the labels.
struct AxisMarks
{
    MarkStep step;
    std::int64_t first = 0;
    std::int64_t last = -1;  // below `first` when there are no marks

    std::int64_t Count() const { return last - first + 1; }
    static double Origin() { return 0; }
    double Position(std::int64_t mark) const;
    // With decimal comma, minus sign and thin spaces between thousands; from 1e6 and below 1e-4 as
    // a number times a power of ten.
    std::string Label(std::int64_t mark) const;
};

// "⁻¹²"
std::string Superscript(int exponent);

inline constexpr int kFewestMarks = 5;
inline constexpr int kMostMarks = 12;

// The marks between two bounds at a given step. None when the bounds are no numbers, not in order,
// or too close together for their size to be told apart.
AxisMarks MarksAt(MarkStep step, double lower, double upper);

// The widest steps that give at least 5 marks, which are never more than 12.
AxisMarks CoarseMarks(double lower, double upper);
// The finest steps that give at most 12 marks.
AxisMarks FineMarks(double lower, double upper);

}  // namespace korvinth::render
