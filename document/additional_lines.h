// The straight lines laid over the graphs: list items, their text form, their terms.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "document/display_attributes.h"
#include "document/plot_document.h"

namespace korvinth::document {

inline constexpr std::string_view kWrongLineTypeTitle = "Fehler:";
inline constexpr std::string_view kWrongLineType = "Unerlaubter Wert für die Linienart!";

struct AdditionalLine
{
    std::string equation;  // as shown in the list: "y=2*x+1", "x=3"
    LineType type = LineType::Solid;
    std::optional<Colour> colour;  // the common colour of the lines when there is none
    bool hidden = false;
    bool operator==(const AdditionalLine&) const = default;
};

// What is entered for a line. Deliberate: a term without "=" gets "y=" in front.
std::string LineEquation(std::string_view input);

// The line type in a field: its leading number, 0 to 6; nothing for any other. (chdicke)
std::optional<LineType> ReadLineType(std::string_view field);

// The place of the line with this equation. (findinlist)
std::optional<std::size_t> FindInList(std::span<const AdditionalLine> lines,
                                      std::string_view equation);

// The text form, one item a line, joined by CR LF: "y=TERM:c=+3", then ":+255" for a colour of its
// own and ":-1" for a hidden line. With the line breaks as "+", the colons as blanks and without
// "y=", "x=" and "c=" such a text is a sum, a valid term. It holds no "}" and no "\n".
std::string ReadList(std::span<const AdditionalLine> lines);

// The list of a text, also of one that TakeLines made. (text2list)
std::vector<AdditionalLine> Text2List(std::string_view lines_text);

// The text of the list as the document keeps it: x is the free variable, but for "x=".
// Deliberate: every "x=" is guarded, also inside a term. (takeit)
std::string TakeLines(std::span<const AdditionalLine> lines);

enum class LineDirection { None, Rising, Vertical };

// "y=" is Rising, "x=" Vertical; None for every other equation, also one with nothing behind the
// "=", which is not drawn.
LineDirection DirectionOf(std::string_view equation);

// Both in parser syntax. A term that translates to nothing is as typed, for the parser to refuse.
struct LineTerm
{
    LineDirection direction = LineDirection::None;
    std::string term;  // the right side; of None the whole equation
};

// x stands for the free variable, whether the equation comes from the list or from the document's
// text.
LineTerm TranslateLine(const PlotDocument& document, std::string_view equation);

}  // namespace korvinth::document
