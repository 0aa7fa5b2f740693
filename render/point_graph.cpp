#include "render/point_graph.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "document/number_text.h"
#include "render/axes.h"
#include "render/grid_rounding.h"
#include "term/words.h"

namespace korvinth::render {
namespace {

using document::AdditionalPoint;
using document::PointShape;

constexpr double kStrokeWidth = 2;  // pixels, of a cross
constexpr double kReach = 5;        // pixels around a sign that count as the sign
constexpr double kNameGap = 2;      // pixels between sign and name
constexpr int kMostPlaces = 6;

std::ptrdiff_t SamplesInside(const GraphTraces& traces, const GridBox& box)
{
    std::ptrdiff_t samples = 0;
    for (const std::vector<GridPoint>& trace : traces) {
        samples += std::ranges::count_if(trace, [&box](GridPoint point) {
            return point.x >= box.left && point.x < box.right && point.y >= box.top &&
                   point.y < box.bottom;
        });
    }
    return samples;
}

// As many places as pixels can tell apart; decimal comma and minus sign.
std::string CoordinateText(double value, double world_per_pixel)
{
    constexpr double kLongest = 1e15;
    const double places = std::ceil(-std::log10(world_per_pixel));
    const int shown = static_cast<int>(std::clamp<double>(places, 0, kMostPlaces));
    if (!(std::abs(value) < kLongest)) return document::ShortestGermanText(value);
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, shown);
    std::string text(buffer.data(), end.ptr);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) text.pop_back();
    }
    if (text == "-0") return "0";
    return term::ReplaceAll(term::ReplaceAll(text, ".", ","), "-", "−");
}

}  // namespace

std::string PointGraph::Draw(DrawingSurface& surface, const ViewRange& view,
                             const GraphTraces& traces, LabelSpace& labels)
{
    places_.clear();
    std::string errors;
    const Pen pen = surface.CurrentPen();
    const std::vector<AdditionalPoint> points = document::Text2Points(document_.points_text);
    for (std::size_t index = 0; index < points.size(); ++index) {
        const AdditionalPoint& point = points[index];
        if (point.hidden) continue;
        double x = 0;
        double y = 0;
        if (!Evaluate(point.x, x) || !Evaluate(point.y, y)) {
            errors += document::PointText(point) + ": " + parser_.ErrorText() + "\r\n";
            continue;
        }
        const double width = view.WidthInPixels();
        const double height = view.HeightInPixels();
        const double radius = point.radius;
        const Place place{index, (x - view.x_min) / view.width * width,
                          (view.y_max - y) / view.height * height, radius + kReach};
        const bool seen = place.x >= -radius && place.x <= width + radius && place.y >= -radius &&
                          place.y <= height + radius;
        if (!seen) continue;  // also without a number
        places_.push_back(place);
        DrawSign(surface, point, place, document_.attributes.background);
        std::string name = point.name;
        if (point.with_values) {
            name += "(" + CoordinateText(x, view.width / width) + "|" +
                    CoordinateText(y, view.height / height) + ")";
        }
        if (!name.empty()) DrawName(surface, point, place, name, traces, labels);
    }
    surface.SelectPen(pen);
    parser_.EvalText("");
    return errors;
}

std::optional<std::size_t> PointGraph::PointAt(double pixel_x, double pixel_y) const
{
    const Place* nearest = nullptr;
    double shortest = 0;
    for (const Place& place : places_) {
        const double distance = std::hypot(place.x - pixel_x, place.y - pixel_y);
        // Of two on the same place the one drawn last, which is seen.
        if (distance > place.reach || (nearest != nullptr && distance > shortest)) continue;
        nearest = &place;
        shortest = distance;
    }
    if (nearest == nullptr) return std::nullopt;
    return nearest->index;
}

bool PointGraph::Evaluate(const std::string& coordinate, double& value)
{
    value = parser_.EvalText(document::TranslateCoordinate(document_, coordinate));
    return parser_.GetError() == term::Error::None;
}

void PointGraph::DrawSign(DrawingSurface& surface, const AdditionalPoint& point, const Place& place,
                          Colour background)
{
    const double steps = surface.StepsPerPixel();
    const double radius = point.radius;
    const auto grid = [steps](double pixel) { return RoundToGrid(pixel * steps); };
    // Boxes go by edges, strokes by pixel centres.
    const GridBox box{grid(place.x + 0.5 - radius), grid(place.y + 0.5 - radius),
                      grid(place.x + 0.5 + radius), grid(place.y + 0.5 + radius)};
    switch (point.shape) {
        case PointShape::Dot: surface.PaintEllipse(box, {point.colour}); break;
        case PointShape::Circle:
            // Hollow, as a point that a graph leaves out.
            surface.PaintEllipse(box, {point.colour});
            if (point.radius > 1) {
                const int rim = grid(point.radius > 3 ? 1.5 : 1);
                surface.PaintEllipse(
                    {box.left + rim, box.top + rim, box.right - rim, box.bottom - rim},
                    {background});
            }
            break;
        case PointShape::Cross: {
            surface.SelectPen({point.colour, kStrokeWidth, LineType::Solid});
            const int left = grid(place.x - radius);
            const int right = grid(place.x + radius);
            const int top = grid(place.y - radius);
            const int bottom = grid(place.y + radius);
            surface.MoveTo({left, top});
            surface.LineTo({right, bottom});
            surface.MoveTo({left, bottom});
            surface.LineTo({right, top});
            break;
        }
        case PointShape::Square: {
            const std::array<GridPoint, 4> corners{{{box.left, box.top},
                                                    {box.right, box.top},
                                                    {box.right, box.bottom},
                                                    {box.left, box.bottom}}};
            surface.FillRegion(corners, {point.colour});
            break;
        }
    }
}

void PointGraph::DrawName(DrawingSurface& surface, const AdditionalPoint& point, const Place& place,
                          const std::string& text, const GraphTraces& traces,
                          LabelSpace& labels) const
{
    const Font font =
        surface.SelectFont({"Arial", FontPixels(document_.attributes.font_points + 1)});
    const double steps = surface.StepsPerPixel();
    const GridExtent extent = surface.MeasureText(text);
    const double gap = point.radius + kNameGap;
    const int right = RoundToGrid((place.x + gap) * steps);
    const int left = RoundToGrid((place.x - gap) * steps) - extent.width;
    const int above = RoundToGrid((place.y - gap / 2) * steps) - extent.height;
    const int below = RoundToGrid((place.y + gap / 2) * steps);
    // Without a free place the name of a point still belongs to its picture.
    GridPoint best{right, above};
    std::ptrdiff_t fewest = -1;
    for (const GridPoint corner :
         {best, GridPoint{left, above}, GridPoint{right, below}, GridPoint{left, below}}) {
        const GridBox box{corner.x, corner.y, corner.x + extent.width, corner.y + extent.height};
        if (!labels.Free(box)) continue;
        const std::ptrdiff_t samples = SamplesInside(traces, box);
        if (fewest >= 0 && samples >= fewest) continue;
        best = corner;
        fewest = samples;
    }
    labels.Take({best.x, best.y, best.x + extent.width, best.y + extent.height});
    surface.SetTextColour(point.colour);
    surface.TextOut(best, text);
    surface.SelectFont(font);
}

}  // namespace korvinth::render
