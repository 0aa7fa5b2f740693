#include "document/value_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <limits>
#include <span>
#include <vector>

#include "document/number_text.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

constexpr std::size_t kPortion = 1024;
constexpr int kStepsPerRow = 1000;            // of the sum of an integral function
constexpr double kMostIntegralSteps = 1.1e9;  // the longest table and a little beyond it
constexpr double kRoundingTolerance = 1e-9;   // of the end of the range, in rows
constexpr std::string_view kContext = "Tabelle: ";

std::string Message(std::string_view text) { return std::string(kContext).append(text); }

// The parts between semicolons outside of brackets: "min(1;2);3;1" has three.
std::vector<std::string_view> SplitParts(std::string_view text)
{
    std::vector<std::string_view> parts;
    int depth = 0;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '(' || c == '[' || c == '{') ++depth;
        if (c == ')' || c == ']' || c == '}') --depth;
        if (c != ';' || depth > 0) continue;
        parts.push_back(text.substr(begin, i - begin));
        begin = i + 1;
    }
    parts.push_back(text.substr(begin));
    return parts;
}

// One column of the table; evaluated in portions, or summed beforehand.
class Column
{
public:
    Column(const PlotDocument& document, term::MathParser& parser, SlotIndex index,
           const RowGrid& grid)
        : parser_(parser), x_(document.variables.x)
    {
        const FunctionSlot& slot = document.slots[index];
        if (slot.integral_term.empty()) {
            if (!slot.parser_term.empty()) handle_ = parser.Parse(slot.parser_term);
        } else {
            const double lower_bound = document.parameters[LowerBoundParameter(index)].value;
            const IntegralRule rule = RuleOf(document.attributes, parser, kStepsPerRow);
            sums_ = SumIntegral(parser, x_, slot.integral_term, lower_bound, grid, rule);
        }
    }
    Column(const Column&) = delete;
    Column& operator=(const Column&) = delete;
    ~Column()
    {
        if (handle_ != term::ExprHandle::Invalid) parser_.ReleaseExpr(handle_);
    }

    // NaN for rows without a value.
    void Evaluate(std::size_t first_row, std::span<const double> arguments)
    {
        const auto values = std::span(values_).first(arguments.size());
        std::ranges::fill(values, std::numeric_limits<double>::quiet_NaN());
        if (!sums_.empty()) {
            std::copy_n(sums_.begin() + static_cast<std::ptrdiff_t>(first_row), values.size(),
                        values.begin());
        } else if (handle_ != term::ExprHandle::Invalid) {
            std::array<term::Error, kPortion> errors{};
            parser_.EvaluateBlock(handle_, x_, arguments, values,
                                  std::span(errors).first(values.size()));
            for (std::size_t i = 0; i < values.size(); ++i) {
                if (errors[i] != term::Error::None) {
                    values[i] = std::numeric_limits<double>::quiet_NaN();
                }
            }
        }
    }

    void AppendCell(std::size_t row_of_portion, std::string& line) const
    {
        const double value = values_[row_of_portion];
        line += ';';
        if (!std::isnan(value)) line += ShortestGermanText(value + 0.0);  // no "-0"
    }

private:
    term::MathParser& parser_;
    term::VariableHandle x_;
    term::ExprHandle handle_ = term::ExprHandle::Invalid;
    std::vector<double> sums_;
    std::array<double, kPortion> values_{};
};

// Gives the parser's step another value for as long as it lives.
class StepGuard
{
public:
    StepGuard(term::MathParser& parser, term::VariableHandle sw, double value)
        : parser_(parser), sw_(sw), former_(parser.VariableValue(sw))
    {
        parser_.SetVariableValue(sw_, value);
    }
    StepGuard(const StepGuard&) = delete;
    StepGuard& operator=(const StepGuard&) = delete;
    ~StepGuard() { parser_.SetVariableValue(sw_, former_); }

private:
    term::MathParser& parser_;
    term::VariableHandle sw_;
    double former_;
};

std::string CheckLowerBounds(const PlotDocument& document, const RowGrid& grid)
{
    for (SlotIndex index : AllSlots()) {
        if (document.slots[index].integral_term.empty()) continue;
        const Parameter& bound = document.parameters[LowerBoundParameter(index)];
        if (!(IntegralSteps(grid, {kStepsPerRow}, bound.value) <= kMostIntegralSteps)) {
            return Message("Untere Grenze " + bound.name + " liegt zu weit entfernt!");
        }
    }
    return {};
}

void WriteRows(std::deque<Column>& columns, const RowGrid& grid, std::ostream& out)
{
    std::vector<double> arguments;
    std::string text;
    for (std::size_t row = 0; row < grid.rows; row += kPortion) {
        arguments.clear();
        for (std::size_t i = row; i < std::min(grid.rows, row + kPortion); ++i) {
            arguments.push_back(grid.At(i));
        }
        for (Column& column : columns) column.Evaluate(row, arguments);
        text.clear();
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            text += ShortestGermanText(arguments[i] + 0.0);
            for (const Column& column : columns) column.AppendCell(i, text);
            text += '\n';
        }
        out << text;
    }
}

}  // namespace

std::string ReadTableRange(const PlotDocument& document, term::MathParser& parser,
                           std::string_view text, RowGrid& grid)
{
    const std::vector<std::string_view> parts = SplitParts(text);
    std::array<double, 3> values{};
    const bool complete =
        parts.size() == values.size() && std::ranges::none_of(parts, [](std::string_view part) {
            return term::TrimBlanks(part).empty();
        });
    if (!complete) return Message("Anfang;Ende;Schrittweite erwartet!");
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::string translated = document.Translate(parts[i]);
        values[i] = parser.EvalText(translated.empty() ? parts[i] : translated);
        const bool faulty = parser.GetError() != term::Error::None;
        std::string message = Message(parser.ErrorText());
        parser.EvalText("");
        if (faulty) return message;
        if (!std::isfinite(values[i])) return Message("Bereich ist nicht endlich!");
    }
    const auto [start, end, step] = values;
    if (step == 0) return Message("Schrittweite darf nicht 0 sein!");
    const double steps = (end - start) / step;
    if (steps < 0) return Message("Schrittweite hat das falsche Vorzeichen!");
    if (!(steps < static_cast<double>(kMostTableRows))) {
        return Message("mehr als " + std::to_string(kMostTableRows) + " Zeilen!");
    }
    const double whole = std::floor(steps + kRoundingTolerance * std::max(1.0, steps));
    grid = {start, step, static_cast<std::size_t>(whole) + 1};
    return {};
}

std::string WriteValueTable(const PlotDocument& document, term::MathParser& parser,
                            const RowGrid& grid, std::ostream& out)
{
    if (std::string message = CheckLowerBounds(document, grid); !message.empty()) return message;
    const StepGuard step(parser, document.variables.sw, kStepWithoutView);
    std::deque<Column> columns;
    std::string header = "x";
    for (SlotIndex index : AllSlots()) {
        const FunctionSlot& slot = document.slots[index];
        if (slot.name.empty()) continue;
        header += ";" + slot.name + "(" + slot.argument + ")";
        columns.emplace_back(document, parser, index, grid);
    }
    out << header << '\n';
    WriteRows(columns, grid, out);
    parser.EvalText("");
    return {};
}

}  // namespace korvinth::document
