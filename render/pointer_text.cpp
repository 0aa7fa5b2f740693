#include "render/pointer_text.h"

#include "document/number_text.h"
#include "render/mark_label.h"

namespace korvinth::render {
namespace {

// As numbers are written beside axes: decimal comma, minus sign, powers of ten.
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

}  // namespace

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
    const std::string y = Typeset(point.y, PixelHeight(view) / 10);
    if (!point.t) {
        return point.function + "(" + Typeset(point.x, PixelWidth(view)) + ") = " + y;
    }
    const std::string t = "(" + Typeset(*point.t, point.t_step) + ") = ";
    return point.function + t + Typeset(point.x, PixelWidth(view) / 10) + "   " + point.y_function +
           t + y;
}

}  // namespace korvinth::render
