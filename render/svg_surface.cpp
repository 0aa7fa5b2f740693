#include "render/svg_surface.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "render/dash_pattern.h"
#include "render/svg_path.h"
#include "render/utf8.h"

namespace korvinth::render {
namespace {

constexpr std::string_view kFurtherFaces = ", Liberation Sans, sans-serif";

// Few decimals, without zeros at their end.
std::string NumberText(double value)
{
    constexpr double kPlaces = 1000;
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                   std::round(value * kPlaces) / kPlaces);
    return {buffer.data(), end.ptr};
}

std::string ColourText(Colour colour)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text = "#";
    for (const int part :
         {document::Red(colour), document::Green(colour), document::Blue(colour)}) {
        text += kDigits[static_cast<std::size_t>(part / 16)];
        text += kDigits[static_cast<std::size_t>(part % 16)];
    }
    return text;
}

// Characters that no document may hold are left out.
std::string Escaped(std::string_view utf8)
{
    std::string text;
    while (!utf8.empty()) {
        const std::string_view before = utf8;
        const char32_t character = TakeCharacter(utf8);
        const bool allowed = character >= U' ' && character != 0xFFFE && character != 0xFFFF;
        switch (character) {
            case U'&': text += "&amp;"; break;
            case U'<': text += "&lt;"; break;
            case U'>': text += "&gt;"; break;
            case U'"': text += "&quot;"; break;
            case kReplacement: text += "\uFFFD"; break;
            default:
                if (allowed) text += before.substr(0, before.size() - utf8.size());
        }
    }
    return text;
}

std::string Quoted(std::string_view name, std::string_view value)
{
    std::string text = " ";
    text += name;
    text += "=\"";
    text += value;
    text += '"';
    return text;
}

std::string Quoted(std::string_view name, int value) { return Quoted(name, std::to_string(value)); }

std::string DashText(const Pen& pen)
{
    std::string text;
    const DashPattern dashes = DashPattern(pen.type, pen.width).WithRoundEnds(pen.width);
    for (const double length : dashes.Lengths()) {
        if (!text.empty()) text += ' ';
        text += NumberText(length * kVectorSteps);
    }
    return text;
}

}  // namespace

SvgSurface::SvgSurface(int width_pixels, int height_pixels, std::optional<double> mm_per_pixel,
                       const TextMetrics& metrics)
    : DrawingSurface(width_pixels * kVectorSteps, height_pixels * kVectorSteps, kVectorSteps),
      mm_per_pixel_(mm_per_pixel),
      metrics_(metrics)
{
}

void SvgSurface::Add(std::string_view name, const Style& style, std::string rest)
{
    auto used = std::ranges::find(styles_, style, &UsedStyle::style);
    if (used == styles_.end()) used = styles_.insert(styles_.end(), {style, 0});
    ++used->uses;
    elements_.push_back(
        {std::string(name), static_cast<std::size_t>(used - styles_.begin()), std::move(rest)});
}

void SvgSurface::DoStroke(std::span<const GridPoint> points, const Pen& pen)
{
    if (pen.type == LineType::Invisible) return;
    Style style{{"stroke", ColourText(pen.colour)},
                {"stroke-width", NumberText(pen.width * kVectorSteps)}};
    if (std::string dashes = DashText(pen); !dashes.empty()) {
        style.push_back({"stroke-dasharray", std::move(dashes)});
    }
    Add("path", style, Quoted("d", SvgPath(points, kVectorSteps / 2)) + "/>");
}

void SvgSurface::DoPolygon(std::span<const GridPoint> corners, const Pen* outline,
                           const Brush& fill)
{
    Style style{{"fill", ColourText(fill.colour)}};
    int shift = 0;
    if (outline != nullptr) {
        shift = kVectorSteps / 2;
        if (outline->type != LineType::Invisible) {
            style.push_back({"stroke", ColourText(outline->colour)});
            style.push_back({"stroke-width", NumberText(outline->width * kVectorSteps)});
            style.push_back({"stroke-linejoin", "miter"});
        }
    }
    Add("path", style, Quoted("d", SvgPath(corners, shift) + "z") + "/>");
}

void SvgSurface::DoEllipse(const GridBox& box, const Brush& brush, bool filled)
{
    // A frame is a pixel wide and lies inside the box.
    const double inset = filled ? 0 : kVectorSteps / 2.0;
    const double radius_x = (box.right - box.left) / 2.0 - inset;
    const double radius_y = (box.bottom - box.top) / 2.0 - inset;
    if (radius_x <= 0 || radius_y <= 0) return;
    Style style{{"fill", ColourText(brush.colour)}};
    if (!filled) {
        style = {{"stroke", ColourText(brush.colour)},
                 {"stroke-width", std::to_string(kVectorSteps)}};
    }
    std::string place = Quoted("cx", NumberText((box.left + box.right) / 2.0)) +
                        Quoted("cy", NumberText((box.top + box.bottom) / 2.0));
    if (radius_x == radius_y) {
        Add("circle", style, place + Quoted("r", NumberText(radius_x)) + "/>");
    } else {
        Add("ellipse", style,
            place + Quoted("rx", NumberText(radius_x)) + Quoted("ry", NumberText(radius_y)) + "/>");
    }
}

void SvgSurface::DoText(GridPoint top_left, std::string_view utf8, const Font& font, Colour colour)
{
    const Style style{{"fill", ColourText(colour)},
                      {"font-family", Escaped(font.face) + std::string(kFurtherFaces)},
                      {"font-size", NumberText(font.height * kVectorSteps) + "px"}};
    const auto base_line =
        static_cast<int>(std::lround(top_left.y + metrics_.Ascent(font) * kVectorSteps));
    Add("text", style,
        Quoted("x", top_left.x) + Quoted("y", base_line) + ">" + Escaped(utf8) + "</text>");
}

GridExtent SvgSurface::DoMeasure(std::string_view utf8, const Font& font)
{
    return MeasuredExtent(metrics_, utf8, font, kVectorSteps);
}

void SvgSurface::DoClear(Colour colour)
{
    Add("rect", {{"fill", ColourText(colour)}},
        Quoted("width", Width()) + Quoted("height", Height()) + "/>");
}

// Made from the style, so that pictures inside one page do not change each other's.
std::string SvgSurface::ClassName(const Style& style)
{
    constexpr std::uint32_t kBasis = 2166136261U;
    constexpr std::uint32_t kPrime = 16777619U;
    std::uint32_t hash = kBasis;
    for (const Attribute& attribute : style) {
        for (const unsigned char c : attribute.name + ':' + attribute.value + ';') {
            hash = (hash ^ c) * kPrime;
        }
    }
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 36);
    return "k" + std::string(digits.data(), end.ptr);
}

std::string SvgSurface::SizeText(int grid_steps) const
{
    const double pixels = static_cast<double>(grid_steps) / kVectorSteps;
    return mm_per_pixel_ ? NumberText(pixels * *mm_per_pixel_) + "mm" : NumberText(pixels);
}

std::string SvgSurface::Bytes()
{
    FlushStroke();
    const std::string box = Quoted("width", Width()) + Quoted("height", Height());
    std::string text =
        "<svg xmlns=\"http://www.w3.org/2000/svg\"" + Quoted("width", SizeText(Width())) +
        Quoted("height", SizeText(Height())) +
        Quoted("viewBox", "0 0 " + std::to_string(Width()) + " " + std::to_string(Height())) +
        ">\n";
    std::string sheet;
    for (const UsedStyle& used : styles_) {
        if (used.uses < 2) continue;
        sheet += "." + ClassName(used.style) + "{";
        for (const Attribute& attribute : used.style) {
            sheet += attribute.name + ":" + attribute.value + ";";
        }
        sheet.back() = '}';
        sheet += '\n';
    }
    if (!sheet.empty()) text += "<style>\n" + sheet + "</style>\n";
    const std::string clip = "k" + std::to_string(Width()) + "x" + std::to_string(Height());
    text += "<clipPath" + Quoted("id", clip) + "><rect" + box + "/></clipPath>\n<g" +
            Quoted("clip-path", "url(#" + clip + ")") + Quoted("fill", "none") +
            Quoted("stroke-linecap", "round") + Quoted("stroke-linejoin", "round") + ">\n";
    for (const Element& element : elements_) {
        const UsedStyle& used = styles_[element.style];
        text += "<" + element.name;
        if (used.uses > 1) {
            text += Quoted("class", ClassName(used.style));
        } else {
            for (const Attribute& attribute : used.style) {
                text += Quoted(attribute.name, attribute.value);
            }
        }
        text += element.rest + "\n";
    }
    return text + "</g>\n</svg>\n";
}

}  // namespace korvinth::render
