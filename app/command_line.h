// The argument list of the program, read into a plain description of what it asks for.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "render/picture_options.h"
#include "term/math_parser.h"

namespace korvinth::app {

inline constexpr int kMostPlaces = 22;

// Two bounds as typed; both are terms.
struct BoundTerms
{
    std::string lower, upper;
    bool operator==(const BoundTerms&) const = default;
};

struct CommandLine
{
    struct Parameter
    {
        std::string name, term;
        bool operator==(const Parameter&) const = default;
    };
    struct Interval  // an empty bound is an open end
    {
        std::string function;
        BoundTerms bounds;
        bool operator==(const Interval&) const = default;
    };

    std::vector<std::string> rows;  // at most 13
    std::vector<Parameter> parameters;
    std::vector<Interval> intervals;
    std::optional<BoundTerms> x_range, y_range;
    term::TrigMode angle_mode = term::TrigMode::Radians;
    int width = 800;  // of the picture, in pixels
    int height = 600;
    std::string output;                // file of the picture, a folder for --alle, "" for none
    std::string collection;            // file, "" for none
    std::optional<std::string> entry;  // of the collection, by name or number
    bool list = false;                 // the collection's entries
    bool all = false;                  // draws every entry
    render::PictureOptions picture;
    std::vector<std::string> calculations;
    std::optional<int> places;
    std::optional<std::string> table;  // first, last and step as typed
    bool help = false;
    bool version = false;

    // True when the window is to be opened, since nothing else is asked for.
    bool OpensWindow() const
    {
        return output.empty() && calculations.empty() && !table && !help && !version && !list;
    }
    // True when a plot is described by options.
    bool AsksForPlot() const
    {
        return !rows.empty() || !parameters.empty() || !intervals.empty() || x_range || y_range ||
               angle_mode != term::TrigMode::Radians;
    }
};

struct ParsedCommandLine
{
    CommandLine command;
    std::string usage_error;  // German, one line: a wrong call; `command` is then incomplete
    std::string input_error;  // German, one line: an argument that is no text
};

// Reads the arguments that follow the program's name. Options are --name=value or --name value; a
// value may begin with "-", also in the second form.
ParsedCommandLine ParseCommandLine(std::span<const std::string> arguments);

// The text of --hilfe.
std::string HelpText();
// One line for calls that are wrong.
std::string_view UsageLine();

}  // namespace korvinth::app
