#include "document/additional_points.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "document/escaped_signs.h"
#include "document/list_text.h"
#include "document/number_text.h"
#include "document/storable_text.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

bool Balanced(std::string_view term)
{
    int depth = 0;
    for (const char c : term) {
        if (c == '(') ++depth;
        if (c == ')' && --depth < 0) return false;
    }
    return depth == 0;
}

std::string StoredCoordinate(std::string_view term)
{
    const std::string storable = StorableTerm(term);
    return "(" + EscapeSigns(storable, Balanced(storable) ? "%:" : "%:()") + ")";
}

std::string StoredPoint(const AdditionalPoint& point)
{
    const AdditionalPoint plain;
    std::string text = StoredCoordinate(point.x) + StoredCoordinate(point.y);
    const auto add = [&text](char key, int value) {
        text.append({':', key, '='}).append(std::to_string(value));
    };
    if (point.shape != plain.shape) add('s', static_cast<int>(point.shape));
    if (point.radius != plain.radius) add('r', point.radius);
    if (point.colour != plain.colour) add('c', static_cast<int>(point.colour));
    if (point.with_values) add('w', 1);
    if (point.hidden) add('h', 1);
    if (!point.name.empty()) text += ":n=" + EscapeSigns(term::TrimBlanks(point.name), "%:{}\\");
    return text;
}

void ReadField(std::string_view field, AdditionalPoint& point)
{
    if (field.size() < 2 || field[1] != '=') return;
    const std::string_view value = field.substr(2);
    const std::int64_t number = RoundHalfEven(LeadingNumber(value));
    const auto within = [number](std::int64_t lowest, std::int64_t highest) {
        return number >= lowest && number <= highest;
    };
    switch (field[0]) {
        case 's':
            if (within(0, kPointShapeCount - 1))
                point.shape = PointShape{static_cast<std::int16_t>(number)};
            break;
        case 'r':
            if (within(1, kLargestPoint)) point.radius = static_cast<int>(number);
            break;
        case 'c':
            if (within(0, static_cast<int>(kLastColour)))
                point.colour = Colour{static_cast<std::int32_t>(number)};
            break;
        case 'w': point.with_values = number != 0; break;
        case 'h': point.hidden = number != 0; break;
        case 'n': point.name = UnescapeSigns(value); break;
        default: break;
    }
}

void ReadCoordinates(std::string_view text, AdditionalPoint& point)
{
    const std::string_view first = term::MatchingGroup(text, 0);
    const std::string_view rest =
        text.starts_with('(') ? term::TrimBlanks(text.substr(first.size())) : std::string_view{};
    const std::string_view second = term::MatchingGroup(rest, 0);
    if (first.empty() || second.empty() || second != rest) {
        point.x = UnescapeSigns(text);
        return;
    }
    point.x = UnescapeSigns(first.substr(1, first.size() - 2));
    point.y = UnescapeSigns(second.substr(1, second.size() - 2));
}

AdditionalPoint ReadStoredPoint(std::string_view item)
{
    AdditionalPoint point;
    const std::vector<std::string_view> fields = SplitText(item, ":");
    ReadCoordinates(term::TrimBlanks(fields[0]), point);
    for (const std::string_view field : std::span(fields).subspan(1)) ReadField(field, point);
    return point;
}

// The sign between the coordinates: a "|", else a ";" that is in no inner bracket.
std::size_t FindMiddle(std::string_view text)
{
    const std::size_t bar = text.find('|');
    if (bar != std::string_view::npos) return bar;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != ';') continue;
        const std::string_view left = text.substr(0, i);
        if (std::ranges::count(left, '(') - std::ranges::count(left, ')') <= 1) return i;
    }
    return std::string_view::npos;
}

// The bracket around both coordinates: the first that stays open; npos when there is none.
std::size_t FindOuterBracket(std::string_view left)
{
    const std::vector<std::size_t> matches = term::MatchingBrackets(left);
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (left[i] == '(' && matches[i] == std::string_view::npos) return i;
    }
    return std::string_view::npos;
}

// Letters of any language, digits and primes.
bool IsPointName(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) {
        return IsLetter(c) || IsDigit(c) || c == '\'' || static_cast<unsigned char>(c) >= 0x80;
    });
}

bool IsPlainNumber(std::string_view text)
{
    text = term::TrimBlanks(text);
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    const std::size_t mark = text.find_first_of(",.");
    const std::string_view whole = text.substr(0, mark);
    const std::string_view fraction =
        mark == std::string_view::npos ? std::string_view{} : text.substr(mark + 1);
    return whole.size() + fraction.size() > 0 && std::ranges::all_of(whole, IsDigit) &&
           std::ranges::all_of(fraction, IsDigit);
}

// One coordinate of a point that can be dragged: a number, or the parameter of this index.
struct Movable
{
    bool is_parameter = false;
    ParameterIndex index{};
};

std::optional<Movable> MovableCoordinate(const PlotDocument& document, std::string_view term)
{
    if (IsPlainNumber(term)) return Movable{};
    const std::string_view name = term::TrimBlanks(term);
    if (name.empty()) return std::nullopt;
    for (const ParameterIndex index : AllParameters()) {
        if (document.parameters[index].name == name) return Movable{true, index};
    }
    return std::nullopt;
}

double RoundToGrain(double value, double grain)
{
    const double exponent = std::floor(std::log10(grain));
    // Powers of ten with an exponent above 0 are exact, so that 0.3 does not become 0.30000000004.
    const double power = std::pow(10.0, std::abs(exponent));
    const double rounded = exponent < 0 ? std::nearbyint(value * power) / power
                                        : std::nearbyint(value / power) * power;
    return std::isfinite(rounded) ? rounded + 0.0 : value;
}

}  // namespace

std::string PointText(const AdditionalPoint& point)
{
    if (point.y.empty()) return point.name + point.x;
    return point.name + "(" + point.x + " | " + point.y + ")";
}

void ReadPointText(std::string_view text, AdditionalPoint& point)
{
    text = term::TrimBlanks(text);
    point.name.clear();
    point.x = text;
    point.y.clear();
    const std::size_t middle = FindMiddle(text);
    if (middle == std::string_view::npos) return;
    std::string_view left = text.substr(0, middle);
    std::string_view right = text.substr(middle + 1);
    const std::size_t bracket = FindOuterBracket(left);
    if (bracket != std::string_view::npos && right.ends_with(')') &&
        IsPointName(term::TrimBlanks(left.substr(0, bracket)))) {
        point.name = term::TrimBlanks(left.substr(0, bracket));
        left.remove_prefix(bracket + 1);
        right.remove_suffix(1);
    }
    point.x = term::TrimBlanks(left);
    point.y = term::TrimBlanks(right);
}

std::string ReadPoints(std::span<const AdditionalPoint> points)
{
    std::string text;
    for (const AdditionalPoint& point : points) {
        if (!text.empty()) text += kListSeparator;
        text += StoredPoint(point);
    }
    return text;
}

std::vector<AdditionalPoint> Text2Points(std::string_view points_text)
{
    std::vector<AdditionalPoint> points;
    for (const std::string_view item : SplitText(points_text, kListSeparator)) {
        if (!term::TrimBlanks(item).empty()) points.push_back(ReadStoredPoint(item));
    }
    return points;
}

std::string TranslateCoordinate(const PlotDocument& document, std::string_view coordinate)
{
    const std::string term = document.Translate(coordinate);
    return "(" + (term.empty() ? std::string(coordinate) : term) + ")";
}

std::optional<PointMove> MovePoint(const PlotDocument& document, std::size_t index,
                                   const WorldPlace& place)
{
    std::vector<AdditionalPoint> points = Text2Points(document.points_text);
    if (index >= points.size()) return std::nullopt;
    AdditionalPoint& point = points[index];
    const auto x = MovableCoordinate(document, point.x);
    const auto y = MovableCoordinate(document, point.y);
    if (!x || !y || !std::isfinite(place.x) || !std::isfinite(place.y)) return std::nullopt;

    PointMove move;
    const auto set = [&](const Movable& coordinate, double value, std::string& term) {
        if (!coordinate.is_parameter) {
            term = ShortestGermanText(value);
        } else {
            const bool whole = (document.parameters[coordinate.index].state & kIntegerState) != 0;
            move.parameters.push_back({coordinate.index, whole ? std::nearbyint(value) : value});
        }
    };
    const bool diagonal = x->is_parameter && y->is_parameter && x->index == y->index;
    if (diagonal) {
        const double grain = std::min(place.x_grain, place.y_grain);
        set(*x, RoundToGrain((place.x + place.y) / 2, grain), point.x);
    } else {
        set(*x, RoundToGrain(place.x, place.x_grain), point.x);
        set(*y, RoundToGrain(place.y, place.y_grain), point.y);
    }
    move.points_text = ReadPoints(points);
    return move;
}

}  // namespace korvinth::document
