// Value tables of all functions as semicolon-separated text.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "document/integral_sum.h"
#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

inline constexpr std::size_t kMostTableRows = 1'000'000;

// The step of difference quotients where no view gives one.
inline constexpr double kStepWithoutView = 0.0001;

// Reads "start;end;step", three terms; the end belongs to the table when it falls on the grid.
// Returns a German message when the range makes no sense, "" otherwise.
std::string ReadTableRange(const PlotDocument& document, term::MathParser& parser,
                           std::string_view text, RowGrid& grid);

// Writes "x;f(x);g(x)" and one line for each row of the grid: decimal comma, shortest digits that
// read back to the same double, an empty cell where a function has no value. Integral functions are
// summed from their lower bound. Returns a German message, with nothing written, when a lower bound
// is too far away for that.
std::string WriteValueTable(const PlotDocument& document, term::MathParser& parser,
                            const RowGrid& grid, std::ostream& out);

}  // namespace korvinth::document
