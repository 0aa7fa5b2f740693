// Strokes of whole pixels, for the exact rules.
#include <algorithm>
#include <cmath>

#include "render/stroke_path.h"
#include "render/stroke_raster.h"

namespace korvinth::render {
namespace {

constexpr int kWidestWithoutDiscs = 2;  // pixels of a hard line

}  // namespace

void StrokeRaster::AddHard(std::span<const PixelIndex> points, int width, const DashPattern& dashes)
{
    double phase = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const PixelIndex from = points[i - 1];
        const PixelIndex to = points[i];
        AddHardSegment(from, to, std::max(width, 1), dashes, phase);
        // Without its round join, a wide line shows a notch where it turns from steep to flat.
        if (i > 1 && dashes.Unbroken() && width > kWidestWithoutDiscs) AddDisc(from, width);
        phase += std::max(std::abs(static_cast<double>(to.x) - from.x),
                          std::abs(static_cast<double>(to.y) - from.y));
    }
}

// The pixels whose middle lies within a disc of that width about the middle of a pixel.
void StrokeRaster::AddDisc(PixelIndex at, int width)
{
    const double radius = width / 2.0;
    const int before = (width - 1) / 2;
    for (int row = 0; row < width; ++row) {
        const double y = static_cast<double>(at.y) - before + row;
        if (y < 0 || y >= plane_.Height()) continue;
        const double down = row + 0.5 - radius;
        const double reach = std::sqrt(radius * radius - down * down);
        const double aside = std::ceil(radius - reach - 0.5);  // columns outside the disc
        const double left = static_cast<double>(at.x) - before + aside;
        const double right = static_cast<double>(at.x) - before + width - 1 - aside;
        const int low = FloorWithin(left, 0, plane_.Width());
        const int high = FloorWithin(right, -1, plane_.Width() - 1);
        if (low > high) continue;
        const int pixel_row = static_cast<int>(y);
        std::fill(plane_.Row(pixel_row) + low, plane_.Row(pixel_row) + high + 1, std::uint8_t{255});
        plane_.Touch(pixel_row, low, high);
    }
}

void StrokeRaster::AddHardSegment(PixelIndex from, PixelIndex to, int width,
                                  const DashPattern& dashes, double phase)
{
    const double dx = static_cast<double>(to.x) - from.x;
    const double dy = static_cast<double>(to.y) - from.y;
    const bool steep = std::abs(dy) >= std::abs(dx);
    const double steps = steep ? std::abs(dy) : std::abs(dx);
    if (steps == 0) return;
    const double major0 = steep ? from.y : from.x;
    const double minor0 = steep ? from.x : from.y;
    const double direction = (steep ? dy : dx) > 0 ? 1 : -1;
    const double slope = (steep ? dx : dy) / steps;
    const int major_size = steep ? plane_.Height() : plane_.Width();
    const int minor_size = steep ? plane_.Width() : plane_.Height();

    // The steps that lie within the picture; the last pixel of the segment is left out.
    const double to_low = direction > 0 ? -major0 : major0 - (major_size - 1);
    const double to_high = direction > 0 ? major_size - 1 - major0 : major0;
    const double first = std::max(0.0, to_low);
    const double last = std::min(steps - 1, to_high);
    const int before = (width - 1) / 2;  // pixels of the line's width above or left of it
    // Wide dashes are rows of discs, which lengthen them.
    const bool round = !dashes.Unbroken() && width > kWidestWithoutDiscs;
    const DashPattern drawn_dashes = round ? dashes.WithRoundEnds(width - 1) : dashes;
    DashCursor cursor(drawn_dashes);
    if (!dashes.Unbroken() && first <= last) cursor.Advance(phase + first);
    for (double step = first; step <= last; ++step) {
        const bool visible = dashes.Unbroken() || cursor.Visible();
        if (!dashes.Unbroken()) cursor.Advance(1);
        if (!visible) continue;
        const int major = static_cast<int>(major0 + direction * step);
        if (round) {
            const int centre = static_cast<int>(std::floor(
                std::clamp<double>(minor0 + slope * step, -width, minor_size + width) + 0.5));
            AddDisc(steep ? PixelIndex{centre, major} : PixelIndex{major, centre}, width);
            continue;
        }
        const double middle = std::floor(minor0 + slope * step + 0.5) - before;
        const int low = FloorWithin(middle, 0, minor_size);
        const int high = FloorWithin(middle + width - 1, -1, minor_size - 1);
        for (int minor = low; minor <= high; ++minor) {
            const PixelIndex at = steep ? PixelIndex{minor, major} : PixelIndex{major, minor};
            plane_.Row(at.y)[at.x] = 255;
            plane_.Touch(at.y, at.x, at.x);
        }
    }
}

}  // namespace korvinth::render
