#include "document/colour_name.h"

#include <array>
#include <cmath>
#include <limits>

namespace korvinth::document {
namespace {

struct NamedColour
{
    Colour colour;
    std::string_view name;
};
// Names that are told apart by ear, in the places where people use them.
constexpr NamedColour kNamedColours[] = {
    {MakeColour(0x00, 0x00, 0x00), "schwarz"},     {MakeColour(0xFF, 0xFF, 0xFF), "weiß"},
    {MakeColour(0x80, 0x80, 0x80), "grau"},        {MakeColour(0x40, 0x40, 0x40), "dunkelgrau"},
    {MakeColour(0xC8, 0xC8, 0xC8), "hellgrau"},    {MakeColour(0xE0, 0x10, 0x10), "rot"},
    {MakeColour(0x80, 0x00, 0x00), "dunkelrot"},   {MakeColour(0xF0, 0x80, 0x10), "orange"},
    {MakeColour(0x90, 0x50, 0x18), "braun"},       {MakeColour(0xFF, 0xF0, 0x00), "gelb"},
    {MakeColour(0x20, 0xB0, 0x20), "grün"},        {MakeColour(0x18, 0x88, 0x50), "grün"},
    {MakeColour(0x00, 0x50, 0x20), "dunkelgrün"},  {MakeColour(0x70, 0xF0, 0x70), "hellgrün"},
    {MakeColour(0x10, 0xA8, 0x60), "smaragdgrün"}, {MakeColour(0x10, 0x70, 0x70), "petrol"},
    {MakeColour(0x00, 0xD0, 0xD8), "türkis"},      {MakeColour(0x10, 0x30, 0xE0), "blau"},
    {MakeColour(0x08, 0x10, 0x70), "dunkelblau"},  {MakeColour(0x38, 0x90, 0xE8), "hellblau"},
    {MakeColour(0x30, 0x50, 0x68), "graublau"},    {MakeColour(0x88, 0x18, 0xFF), "violett"},
    {MakeColour(0x78, 0x30, 0x90), "purpur"},      {MakeColour(0x90, 0x08, 0xB0), "rotviolett"},
    {MakeColour(0xF0, 0x10, 0x98), "pink"},        {MakeColour(0xFF, 0xB0, 0xC8), "rosa"},
    {MakeColour(0xFF, 0x00, 0xFF), "magenta"},
};

// Lightness and two opponent colours in which equal distances look alike. (Ottosson, "A perceptual
// color space for image processing", 2020.)
std::array<double, 3> Oklab(Colour colour)
{
    const auto linear = [](int channel) {
        const double share = channel / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    const double red = linear(Red(colour));
    const double green = linear(Green(colour));
    const double blue = linear(Blue(colour));
    const double l = std::cbrt(0.4122214708 * red + 0.5363325363 * green + 0.0514459929 * blue);
    const double m = std::cbrt(0.2119034982 * red + 0.6806995451 * green + 0.1073969566 * blue);
    const double s = std::cbrt(0.0883024619 * red + 0.2817188376 * green + 0.6299787005 * blue);
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
            1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
            0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

}  // namespace

std::string_view ColourName(Colour colour)
{
    const std::array<double, 3> wanted = Oklab(colour);
    std::string_view name;
    double nearest = std::numeric_limits<double>::infinity();
    for (const NamedColour& named : kNamedColours) {
        const std::array<double, 3> known = Oklab(named.colour);
        const double distance =
            std::hypot(wanted[0] - known[0], wanted[1] - known[1], wanted[2] - known[2]);
        if (distance >= nearest) continue;
        nearest = distance;
        name = named.name;
    }
    return name;
}

}  // namespace korvinth::document
