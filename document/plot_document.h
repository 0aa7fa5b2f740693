// The one definition of what is drawn: function slots, parameters, ranges, lines and points.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "document/display_attributes.h"
#include "document/slots.h"
#include "term/math_parser.h"
#include "term/term_translator.h"

namespace korvinth::document {

// Values of FunctionSlot::curve_link besides the slot number of a curve's y-part.
inline constexpr std::int16_t kPlainFunction = -2;  // y = f(x)
inline constexpr std::int16_t kCurveYPart = -1;     // drawn with its x-part

// Names for rows typed without one. Deliberate: it starts at f and ends with a to e.
inline constexpr std::string_view kFreeNames = "fghijklmnopqrstuvwxyzabcde";

// The parameter of the hatching pattern: the width of a stripe in samples.
inline constexpr std::string_view kStripeWidthName = "dichte";

struct FunctionSlot
{
    std::string name;            // "" marks a free slot
    std::string term;            // the argument replaced by the free variable, else as typed
    std::string raw_term;        // as typed
    std::string argument = "x";  // the argument's name as typed
    std::string lower_bound;     // ends of the drawing interval as typed, "" for an open end
    std::string upper_bound;
    std::int16_t colour_index = 0;  // into the colour table of DisplayAttributes
    std::int16_t stripe_count = 0;  // stripes of a hatched term
    std::string interval = "-oo ; +oo";
    std::int16_t curve_link = kPlainFunction;
    bool visible = true;
    bool family_allowed = false;
    std::int16_t point_radius = 0;  // 0 draws a line, 1 to 10 draws discs of that radius
    int support_points = 0;  // of its graph as set by hand, 0 leaves them to the area's width

    // Made by ApplyPlot; empty when the slot has nothing to draw.
    std::string parser_term;    // in parser syntax
    std::string integral_term;  // the bracketed integrand when parser_term is integral(...)
};

enum class AnimationMode : std::int32_t { Wrap = 0, Bounce = 1 };

// What of the pointer's place in the graph a parameter follows.
enum class Coupling : std::int32_t { None = 0, X = 1, Y = 2, Angle = 3 };

// Bits of Parameter::state.
inline constexpr unsigned kInXRange = 1;
inline constexpr unsigned kInYRange = 2;
inline constexpr unsigned kInTRange = 4;
inline constexpr unsigned kSampleCountState = 8;
inline constexpr unsigned kIntegralBoundState = 16;
inline constexpr unsigned kIntegerState = 32;

struct Parameter
{
    std::string name;  // "" marks a free entry
    std::string caption;
    term::VariableHandle handle = term::VariableHandle::Invalid;
    double value = 1;
    double lower = -10;
    double upper = 10;
    double step = 0;  // change per timer tick
    AnimationMode mode = AnimationMode::Wrap;
    Coupling coupling = Coupling::None;
    bool family = false;  // drawn for several values at once
    unsigned state = 0;
};

// Bounds of the displayed ranges as typed; they are terms and may use parameters.
struct RangeTexts
{
    std::string x_lower = "-10", x_upper = "10";
    std::string y_lower, y_upper;  // "" leaves the bound to the view
    std::string t_lower = "0", t_upper = "2*pi";
};

// Handles of the parser variables that the program keeps for the whole run.
struct SystemVariables
{
    term::VariableHandle x, qq, sw, xmu, xmi, ymu, ymi;
};

class PlotDocument
{
public:
    PlotDocument();  // free slots, each with a colour of its own

    // The rows as last applied: what the term editor holds, invalid rows included.
    SlotTable<std::string> rows;
    SlotTable<FunctionSlot> slots;
    std::int16_t slots_in_use = 0;
    std::int16_t last_slot_in_use = -1;  // -1 when no slot is in use

    ParameterTable<Parameter> parameters;
    // Values of parameters that no term uses at present; they come back with their name.
    std::map<std::string, Parameter, std::less<>> dormant_parameters;

    std::string free_names{kFreeNames};
    std::string name_list = ":";       // ":f,0:g,1:" for functions f and g in slots 0 and 1
    std::string x_list = ":";          // the same for names that begin with x, without the x
    std::string parameter_list = ":";  // ":a,26:b,27:"

    RangeTexts ranges;
    std::string lines_text;   // additional lines, text form in document/additional_lines.h
    std::string points_text;  // additional points, text form in document/additional_points.h

    std::string unknown_lines;  // of the entry that the plot comes from, kept for writing

    DisplayAttributes attributes;
    SystemVariables variables{};

    // Removes a one-letter name and every blank from the pool of free names; longer names leave it.
    void TakeName(std::string_view name);

    // Translate with the names of this document's functions.
    std::string Translate(std::string_view term,
                          term::Derivatives derivatives = term::Derivatives::Expand) const;

    // The slot whose sample count the graph of `drawn` has: itself, but the y-part of a curve of
    // which only that is an integral function, with a count of its own.
    SlotIndex SampledSlot(SlotIndex drawn) const;

    // The parameter of this name among those in use, nullptr when there is none.
    Parameter* FindParameter(std::string_view name);

    // The bounds of all intervals and ranges in brackets, one after the other: "(0)(2*pi)(-1)(a)".
    // (makedtxt of the range window.)
    std::vector<std::string> BracketedBounds() const;
};

}  // namespace korvinth::document
