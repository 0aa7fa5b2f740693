// How the plot looks: colours, widths and line types of the slots, switches, general settings.
#pragma once

#include <cstdint>
#include <string>

#include "document/slots.h"
#include "term/math_parser.h"

namespace korvinth::document {

// 24-bit colour, red + 256 * green + 65536 * blue.
enum class Colour : std::int32_t {};

constexpr Colour MakeColour(int red, int green, int blue)
{
    return Colour{red + 256 * green + 65536 * blue};
}
constexpr int Red(Colour colour) { return static_cast<std::int32_t>(colour) & 0xFF; }
constexpr int Green(Colour colour) { return (static_cast<std::int32_t>(colour) >> 8) & 0xFF; }
constexpr int Blue(Colour colour) { return (static_cast<std::int32_t>(colour) >> 16) & 0xFF; }

enum class LineType : std::int16_t {
    Solid = 0,
    Dash = 1,
    Dot = 2,
    DashDot = 3,
    DashDotDot = 4,
    Invisible = 5,
    SolidInside = 6,
};
inline constexpr int kLineTypeCount = 7;
inline constexpr int kWidestLine = 20;  // pixels

struct SlotAttributes
{
    Colour colour{};         // the slot's entry in the colour table
    std::int16_t width = 2;  // pixels
    LineType type = LineType::Solid;
    bool operator==(const SlotAttributes&) const = default;
};

// What is drawn with: files may hold any width and type, and keep them.
SlotAttributes Drawable(const SlotAttributes& stored);

// How the marks of an axis are spaced.
enum class StepMode : std::int16_t {
    Automatic = 0,  // 1, 2 or 5 times a power of ten; on the x-axis full parts of a turn in degrees
    Fixed = 1,      // the value of a term
    MultiplesOfPi = 2,
};

struct AxisStep
{
    StepMode mode = StepMode::Automatic;
    std::string fixed = "1";  // a term, read when a picture is drawn
    bool operator==(const AxisStep&) const = default;
};

// Whether one range follows when the other or the area changes, so that both axes keep one scale.
// When both ranges changed, X has y follow and Y has x follow.
enum class KeptRatio : std::int16_t { None = 0, X = 1, Y = 2 };

inline constexpr double kSmallestZoomFactor = 1;
inline constexpr int kSmallestDescription = 8;  // points
inline constexpr int kLargestDescription = 36;

struct DisplayAttributes
{
    DisplayAttributes();  // the default settings

    SlotTable<SlotAttributes> slots;

    // Visibility switches.
    bool x_numbers = true;
    bool y_numbers = true;
    bool help_lines = true;
    bool extra_help_lines = false;
    bool axes = true;
    bool axis_names = true;
    bool lines = true;
    bool points = true;
    bool graph_names = true;

    term::TrigMode angle_mode = term::TrigMode::Radians;
    bool detect_integrals = true;  // upper-case F(x) stands for the antiderivative of f

    Colour background = MakeColour(0xFF, 0xFF, 0xFF);
    Colour axis_colour = MakeColour(0x40, 0x40, 0x40);
    Colour number_colour = MakeColour(0x40, 0x40, 0x40);
    Colour help_line_colour = MakeColour(0xE4, 0xE7, 0xEB);
    Colour extra_help_line_colour = MakeColour(0xF1, 0xF3, 0xF5);
    Colour line_colour = MakeColour(0x60, 0x60, 0x60);
    double axis_width = 1.25;  // pixels
    double help_line_width = 1;
    int font_points = 9;
    std::string x_axis_name = "x";
    std::string y_axis_name = "y";
    AxisStep x_step;
    AxisStep y_step;

    bool constant_sample_count = false;
    int sample_count = 1000;  // of every slot while it is held constant
    double family_step = 1;
    int family_count = 0;  // 0 to 21 further members
    // An integrand g counts as infinite where 1 / (1 + |g|) is below this term.
    std::string integrand_limit = "0.0001";
    double zoom_factor_x = 2;
    double zoom_factor_y = 2;
    int calculator_places = 3;
    int timer_milliseconds = 40;
    bool smooth_drawing = true;
    KeptRatio kept_ratio = KeptRatio::None;
    int description_points = 14;             // font of the detailed description
    bool description_follows_window = true;  // its font grows with the window instead
    std::string unknown_items;               // of an attributes text, kept for writing

    bool operator==(const DisplayAttributes&) const = default;
};

}  // namespace korvinth::document
