// The forms of the definition lines of a collection entry, which its writer and its reader share.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "document/plot_document.h"

namespace korvinth::document {

// First signs of lines. A row of the term editor that has a fault is kept as it was typed.
inline constexpr char kInvisibleMark = '$';
inline constexpr std::string_view kFaultyMark = "$$";
inline constexpr char kParameterMark = 'P';
inline constexpr char kSlotMark = 'S';
inline constexpr char kIntervalMark = 'D';

// In the brackets behind a "u": the sample count of an integral function.
inline constexpr std::string_view kSampleCountKey = ",anz";

// A displayed range: "x[0;1]" with the numbers in force, "x$[0;2*pi]" with the terms.
struct RangeAxisLine
{
    std::string_view numbers, terms;  // up to the bracket
    std::string RangeTexts::*lower;
    std::string RangeTexts::*upper;
};
inline constexpr RangeAxisLine kRangeLines[] = {
    {"x", "x$", &RangeTexts::x_lower, &RangeTexts::x_upper},
    {"y", "y$", &RangeTexts::y_lower, &RangeTexts::y_upper},
    {"t", "t$", &RangeTexts::t_lower, &RangeTexts::t_upper},
};

// A letter or "_", then letters, "_" and digits: what the parser takes as a name.
bool IsName(std::string_view text);

// "head[inner]"; nothing when the line has another form.
struct BracketedLine
{
    std::string_view head, inner;
};
std::optional<BracketedLine> ReadBracketed(std::string_view line);

// The parts between semicolons that stand in no bracket.
std::vector<std::string_view> SplitItems(std::string_view inner);
// The parts before and behind the first such semicolon; where brackets do not match, the first of
// all. Nothing without one.
std::optional<std::pair<std::string_view, std::string_view>> SplitBounds(std::string_view inner);

// The name in front of a bracket or "=" of a row as typed, "" when it has none.
std::string NameOfRow(std::string_view row);

// The names in a text; those of an exponent such as e5 may be among them.
std::set<std::string, std::less<>> NamesIn(std::string_view text);

// The slot's entry of the colour table.
SlotIndex ColourPlace(const FunctionSlot& slot);

}  // namespace korvinth::document
