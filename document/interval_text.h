// Display intervals as texts: as the term editor shows them, and as typed.
#pragma once

#include <string>
#include <string_view>

#include "document/plot_document.h"

namespace korvinth::document {

// What a row without bounds gets when it is inserted or emptied. Deliberate: no blank before the
// semicolon, unlike in the text that IntervalText makes.
inline constexpr std::string_view kOpenInterval = "-oo; +oo";

// "a ; b"; an empty bound is "-oo" or "+oo".
std::string IntervalText(std::string_view lower, std::string_view upper);

// What the editor shows for a function: "f: ] a ; b [", for the x-part of a curve
// "Param. für x: ] a ; b [". Empty for a free slot, and for the y-part of a curve: the x-part
// holds the interval of both.
std::string IntervalRow(const FunctionSlot& function);

struct IntervalReading
{
    bool empty = false;  // nothing is typed, the bounds stay as they are
    bool has_semicolon = false;
    std::string lower;  // "" when open
    std::string upper;
};

// Reads a row as IntervalRow shows it; the part in front of the interval may be missing.
// Deliberate: every "oo" goes, also inside a longer word, and "-oo" only from the lower bound.
IntervalReading ReadIntervalRow(std::string_view row);

}  // namespace korvinth::document
