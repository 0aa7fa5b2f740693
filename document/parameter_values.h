// What a parameter accepts: values, bounds and steps, and where its slider stands.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

inline constexpr int kSliderSteps = 1000;  // positions 0 to 1000
inline constexpr int kSliderPage = 50;
inline constexpr double kFewestSupportPoints = 2;
inline constexpr double kMostSupportPoints = 20000;

struct Bounds
{
    double lower = 0;
    double upper = 0;
    bool operator==(const Bounds&) const = default;
};

// A message for the user; what was typed is not taken.
struct Refusal
{
    std::string title;
    std::string text;
};

// The value that a parameter of this state takes: whole numbers, support points from 2 to 20000.
double AcceptedValue(double value, unsigned state);

// The slider rests at its end for values outside the bounds.
int SliderPosition(double value, const Bounds& bounds);
double SliderValue(int position, const Bounds& bounds);

std::optional<Refusal> CheckBounds(const Parameter& parameter, const Bounds& bounds);
// A step as wide as the interval is accepted.
std::optional<Refusal> CheckStep(double step, const Bounds& bounds);

// Bounds of an integral's lower bound: the display interval of its function. An open end, or one
// that has no value, is the displayed one, or where that is on the wrong side of the other end, as
// far from it as the displayed range is wide. Leaves no error in the parser.
Bounds IntegralBoundRange(term::MathParser& parser, const PlotDocument& document, SlotIndex slot,
                          const Bounds& displayed);

// The number that a field shows: twelve digits, decimal comma, so that 0.1 + 0.2 reads "0,3".
std::string FieldText(double value);
// The value of a typed term, 0 when it has none. Leaves no error in the parser.
double FieldValue(term::MathParser& parser, std::string_view text);
// The same, but a text that is what the field shows for `shown` keeps all of its digits.
double FieldValue(term::MathParser& parser, std::string_view text, double shown);

}  // namespace korvinth::document
