// The displayed coordinate window and its mapping onto the drawing area.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::render {

// World bounds and size of the drawing area. The area is measured in twips (1/1440 inch), its y
// grows downwards; a pixel of the surface is twips_per_pixel_x by twips_per_pixel_y twips.
struct ViewRange
{
    double x_min = -10;
    double x_max = 10;
    double y_min = -10;
    double y_max = 10;
    double t_min = 0;  // range of the curve parameter
    double t_max = 6.283185307179586;
    double area_width = 12000;
    double area_height = 9000;
    int twips_per_pixel_x = 15;
    int twips_per_pixel_y = 15;

    // Derived by UpdateMapping.
    double width = 20;
    double height = 20;
    double xmu = 600;  // twips per world unit
    double ymu = 450;

    double AreaX(double x) const { return xmu * (x - x_min); }
    double AreaY(double y) const { return area_height - ymu * (y - y_min); }
    double WorldX(double area_x) const { return area_x / xmu + x_min; }
    double WorldY(double area_y) const { return (area_height - area_y) / ymu + y_min; }
    double WidthInPixels() const { return area_width / twips_per_pixel_x; }
    double HeightInPixels() const { return area_height / twips_per_pixel_y; }
};

// Recomputes width, height, xmu and ymu alone.
void UpdateDerived(ViewRange& view);

// Recomputes the derived values after a change of bounds or area and sets the parser variables xmu,
// xmi, ymu, ymi, in that order.
void UpdateMapping(ViewRange& view, term::MathParser& parser,
                   const document::SystemVariables& variables);

// Turn a term in parser syntax into one whose value is in area units: "xmu*(" term "-xmi)" and the
// same in y. Callers hand the term in brackets, so that a comparison or a logic word in it stays
// together. makemy gives the height above the bottom edge; the caller subtracts it from the area
// height.
std::string makemx(std::string_view term);
std::string makemy(std::string_view term);

// The range at start: x from -10 to 10, y about 0 in the scale 1:1.
void SetStandardRange(ViewRange& view);

// Move the view by a percentage of its width or height; a positive one raises both bounds. They
// return whether anything changed. The caller updates the mapping.
bool scrlr(ViewRange& view, std::int16_t percent);
bool scrud(ViewRange& view, std::int16_t percent);

}  // namespace korvinth::render
