#include "render/pointer_text.h"

#include <cmath>

#include "document/number_text.h"
#include "render/mark_label.h"

namespace korvinth::render {
namespace {

// "f(1,25) = 0,949"
std::string ValueAt(const std::string& function, const std::string& argument, double value,
                    double resolution)
{
    const std::string call = function + "(" + argument + ")";
    if (std::isnan(value)) return call + " ist nicht definiert";
    return call + " = " + Typeset(value, resolution);
}

}  // namespace

std::string Typeset(double value, double resolution)
{
    const std::string plain = document::RoundedText(value, resolution);
    const std::size_t mark = plain.find('e');
    std::string text;
    for (const char c : plain.substr(0, mark)) {
        if (c == '-') {
            text += "−";
        } else {
            text += c == '.' ? ',' : c;
        }
    }
    if (mark == std::string::npos) return text;
    const auto exponent = static_cast<int>(document::LeadingNumber(plain.substr(mark + 1)));
    return text + "·10" + Superscript(exponent);
}

double PixelWidth(const ViewRange& view) { return view.twips_per_pixel_x / view.xmu; }
double PixelHeight(const ViewRange& view) { return view.twips_per_pixel_y / view.ymu; }

double PointedX(const ViewRange& view, double area_x)
{
    return document::LeadingNumber(document::RoundedText(view.WorldX(area_x), PixelWidth(view)));
}

std::string PointerText(const ViewRange& view, double area_x, double area_y)
{
    const bool inside =
        area_x >= 0 && area_x < view.area_width && area_y >= 0 && area_y < view.area_height;
    if (!inside) return "";
    return "x = " + Typeset(view.WorldX(area_x), PixelWidth(view)) +
           "   y = " + Typeset(view.WorldY(area_y), PixelHeight(view));
}

std::string ValueText(const ViewRange& view, const ProbedPoint& point)
{
    const double x_resolution = PixelWidth(view) / 10;
    const double y_resolution = PixelHeight(view) / 10;
    if (!point.t) {
        const std::string x = Typeset(point.x, PixelWidth(view));
        return ValueAt(point.function, x, point.y, y_resolution);
    }
    const std::string t = Typeset(*point.t, point.t_step);
    return ValueAt(point.function, t, point.x, x_resolution) + "   " +
           ValueAt(point.y_function, t, point.y, y_resolution);
}

}  // namespace korvinth::render
