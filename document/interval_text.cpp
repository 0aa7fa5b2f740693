#include "document/interval_text.h"

#include "term/words.h"

namespace korvinth::document {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

std::string Without(std::string_view text, std::string_view unwanted)
{
    return term::ReplaceAll(text, unwanted, "");
}

}  // namespace

std::string IntervalText(std::string_view lower, std::string_view upper)
{
    std::string text(lower.empty() ? "-oo" : lower);
    text += " ; ";
    text += upper.empty() ? "+oo" : upper;
    return text;
}

std::string IntervalRow(const FunctionSlot& function)
{
    if (function.name.empty() || function.curve_link == kCurveYPart) return {};
    const std::string_view prefix = function.curve_link >= 0 ? "Param. für " : "";
    return std::string(prefix) + function.name + ": ] " + function.interval + " [";
}

IntervalReading ReadIntervalRow(std::string_view row)
{
    std::string text = Without(row, " ");
    std::size_t prefix = text.find(':');
    if (prefix == kNone) prefix = text.find(']');
    if (prefix != kNone) text.erase(0, prefix + 1);
    text = Without(Without(text, "["), "]");

    IntervalReading reading;
    reading.empty = text.empty();
    const std::size_t semicolon = text.find(';');
    reading.has_semicolon = semicolon != kNone;
    if (!reading.has_semicolon) return reading;
    const std::string_view bounds = text;
    reading.lower = Without(Without(bounds.substr(0, semicolon), "-oo"), "oo");
    reading.upper = Without(Without(bounds.substr(semicolon + 1), "+oo"), "oo");
    return reading;
}

}  // namespace korvinth::document
