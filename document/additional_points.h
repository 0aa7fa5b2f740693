// The points laid over the graphs: list items, their text form, and what dragging one changes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "document/display_attributes.h"
#include "document/plot_document.h"

namespace korvinth::document {

enum class PointShape : std::int16_t { Dot = 0, Circle = 1, Cross = 2, Square = 3 };
inline constexpr int kPointShapeCount = 4;
inline constexpr int kLargestPoint = 10;

struct AdditionalPoint
{
    std::string x, y;  // terms as typed; an item that is no point has all its text in x
    PointShape shape = PointShape::Dot;
    int radius = 4;  // pixels, 1 to 10
    Colour colour = MakeColour(0x20, 0x20, 0x20);
    std::string name;          // drawn beside the point
    bool with_values = false;  // the coordinates after the name: "P(2|4)"
    bool hidden = false;
    bool operator==(const AdditionalPoint&) const = default;
};

// As the list shows it: "(2 | a)", "P(2 | a)".
std::string PointText(const AdditionalPoint& point);

// Reads "(2 | a)", "P(2|a)", "2|a" and the same with ";" into name and coordinates of a point; the
// rest of it stays.
void ReadPointText(std::string_view text, AdditionalPoint& point);

// The text form, one line a point, joined by CR LF: "(X)(Y)", a product of the coordinates, then
// what differs from a new point, each after a colon: ":s=1" shape, ":r=10" radius, ":c=255" colour,
// ":w=1" with values, ":h=1" hidden, ":n=P" name. Signs that would disturb a collection file or
// this form, and the brackets of a coordinate where they do not match, are written as "%7D".
std::string ReadPoints(std::span<const AdditionalPoint> points);
std::vector<AdditionalPoint> Text2Points(std::string_view points_text);

// A coordinate in parser syntax and in brackets; one that translates to nothing is as typed.
std::string TranslateCoordinate(const PlotDocument& document, std::string_view coordinate);

struct ParameterChange
{
    ParameterIndex index{};
    double value = 0;
    bool operator==(const ParameterChange&) const = default;
};

// What moving a point changes: the document's points text, parameters, or one of each.
struct PointMove
{
    std::string points_text;
    std::vector<ParameterChange> parameters;
};

// A place in the world, and the distances that the hand cannot tell apart there, above 0: numbers
// are rounded to the power of ten below them.
struct WorldPlace
{
    double x = 0, y = 0;
    double x_grain = 0.01, y_grain = 0.01;
};

// Moves point `index` of the document's text. Nothing unless both coordinates are plain numbers or
// plain parameters. A point (a | a) moves along the diagonal; a whole-number parameter stays whole.
std::optional<PointMove> MovePoint(const PlotDocument& document, std::size_t index,
                                   const WorldPlace& place);

}  // namespace korvinth::document
