// The marks of a collection file that its reader and its writer share.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "document/collection.h"

namespace korvinth::document {

// The kinds of lines. The numbers are places in kKeywords.
enum class Keyword {
    None = 0,
    EndOfBlock = 1,
    EndOfSection = 2,
    ShortText = 3,
    LongText = 4,
    Colours = 5,
    Widths = 6,
    LineTypes = 7,
    FirstRange = 8,
    LastRange = 13,
    Attributes = 14,
    FirstFiller = 15,
    LastFiller = 19,
    Lines = 20,
    Points = 21,
    Invisible = 22,
};

// Deliberate: five fillers that begin no real line keep the places of the last three.
inline constexpr std::array<std::string_view, 23> kKeywords = {
    "",   "}",  "[",  "short:", "long:", "Coltab=", "LDicke=",  "LArt=",
    "x[", "y[", "t[", "x$[",    "y$[",   "t$[",     "Attribs=", "(]",
    "(]", "(]", "(]", "(]",     "asy=",  "Punkte=", "$"};

constexpr std::string_view Mark(Keyword keyword)
{
    return kKeywords[static_cast<std::size_t>(keyword)];
}

// Sections, in brackets. Only the first is written.
inline constexpr std::array<std::string_view, 2> kModeNames = {"Funktionenplotter",
                                                               "Kurvenplotter"};
inline constexpr std::string_view kSecondSection = "[Kurvenplotter]";

inline constexpr std::string_view kEndOfValue = "\\end\\";
inline constexpr std::string_view kWrittenBreak = "\\n";  // in a value of several lines

// The keyword that a trimmed line begins with.
Keyword KeywordOf(std::string_view line);

// The column of a trimmed line that is kept whole, nothing for every other line.
std::optional<Column> ColumnOfWholeLine(std::string_view line);

}  // namespace korvinth::document
