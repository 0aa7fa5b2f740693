#include "render/stroke_raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "render/stroke_path.h"

namespace korvinth::render {
namespace {

constexpr int kLanes = CoveragePlane::kOverhang;  // pixels that are worked out together

// Eight 16-bit numbers that the compiler keeps in a vector register where there is one.
using Lanes = std::int16_t __attribute__((vector_size(sizeof(std::int16_t) * kLanes)));
using LaneBytes = std::uint8_t __attribute__((vector_size(kLanes)));

// Distances in lanes are fixed-point numbers: a pixel is 8 * 255, so that a shift gives coverage.
constexpr int kCoverageShift = 3;
constexpr double kPixel = 255 << kCoverageShift;
constexpr double kHalfCoverage = 4;  // half of one step of coverage, for rounding
constexpr double kLargestReach = 7;  // pixels; wider strokes would leave the lanes' numbers

Lanes LoadLanes(const std::int16_t* from)
{
    Lanes lanes{};
    std::memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

bool IsNumber(PixelPoint point) { return std::isfinite(point.x) && std::isfinite(point.y); }

// The part of a segment, as fractions of it, that comes near the rows and columns of the picture.
struct Part
{
    double first = 0;
    double last = 1;
    bool Empty() const { return first > last; }
};

void ClipPart(Part& part, double from, double to, double low, double high)
{
    const double change = to - from;
    if (change == 0) {
        if (from < low || from > high) part.last = -1;
        return;
    }
    const double one = (low - from) / change;
    const double other = (high - from) / change;
    part.first = std::max(part.first, std::min(one, other));
    part.last = std::min(part.last, std::max(one, other));
}

// The coverage of eight pixels whose distances from the line are given.
Lanes CoverageOf(Lanes aside, std::int16_t reach)
{
    const Lanes full = Lanes{} + static_cast<std::int16_t>(kPixel);
    const Lanes near = reach - (aside < 0 ? -aside : aside);
    const Lanes limited = near < 0 ? Lanes{} : near;
    return (limited > full ? full : limited) >> kCoverageShift;
}

void RaiseTo(std::uint8_t* pixel, Lanes coverage)
{
    LaneBytes bytes{};
    std::memcpy(&bytes, pixel, sizeof bytes);
    const Lanes there = __builtin_convertvector(bytes, Lanes);
    bytes = __builtin_convertvector(there > coverage ? there : coverage, LaneBytes);
    std::memcpy(pixel, &bytes, sizeof bytes);
}

}  // namespace

struct StrokeRaster::Segment
{
    PixelPoint from;
    PixelPoint to;
    double along_x = 1;  // direction, of length 1
    double along_y = 0;
    double length = 0;
    double reach = 0;  // beyond this distance from the line nothing is covered
    bool start_cap = true;
    bool level = false;  // in the direction of an axis
    bool upright = false;
    double slope = 0;      // change of x a row
    double extent = 0;     // half of what the line covers of a row, away from its ends
    Lanes lane_offsets{};  // change of the distance from the first of eight pixels on

    Segment(PixelPoint start, PixelPoint end, double width, bool with_start_cap)
        : from(start), to(end), reach(width / 2 + 0.5), start_cap(with_start_cap)
    {
        constexpr double kPoint = 1e-9;
        constexpr double kStraight = 1e-9;
        const double dx = to.x - from.x;
        const double dy = to.y - from.y;
        length = std::sqrt(dx * dx + dy * dy);
        if (length > kPoint) {
            along_x = dx / length;
            along_y = dy / length;
        }
        level = std::abs(along_y) < kStraight;
        upright = std::abs(along_x) < kStraight;
        if (!level) {
            slope = along_x / along_y;
            extent = reach / std::abs(along_y);
        }
        for (int lane = 0; lane < kLanes; ++lane) {
            lane_offsets[lane] = static_cast<std::int16_t>(std::lrint(lane * along_y * kPixel));
        }
    }

    double Left() const { return std::min(from.x, to.x) - reach; }
    double Right() const { return std::max(from.x, to.x) + reach; }
    double Top() const { return std::min(from.y, to.y) - reach; }
    double Bottom() const { return std::max(from.y, to.y) + reach; }
};

void StrokeRaster::AddSmooth(std::span<const PixelPoint> points, double width,
                             const DashPattern& dashes)
{
    if (!dashes.Unbroken()) {
        AddDashed(points, width, dashes);
        return;
    }
    std::size_t i = 0;
    while (i < points.size()) {
        if (!IsNumber(points[i])) {
            ++i;
            continue;
        }
        Straightener line(points[i]);
        bool start_cap = true;
        for (++i; i < points.size() && IsNumber(points[i]); ++i) {
            if (line.Extend(points[i])) continue;
            AddSegment(line.Start(), line.End(), width, start_cap);
            start_cap = false;
            line = Straightener(line.End());
            line.Extend(points[i]);
        }
        AddSegment(line.Start(), line.End(), width, start_cap);
    }
}

void StrokeRaster::AddDashed(std::span<const PixelPoint> points, double width,
                             const DashPattern& dashes)
{
    const DashPattern round_dashes = dashes.WithRoundEnds(width);
    DashCursor cursor(round_dashes);
    const double margin = width / 2 + 1;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const PixelPoint from = points[i - 1];
        const PixelPoint to = points[i];
        if (!IsNumber(from) || !IsNumber(to)) continue;
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        if (length == 0) continue;
        Part part;
        ClipPart(part, from.x, to.x, -margin, plane_.Width() + margin);
        ClipPart(part, from.y, to.y, -margin, plane_.Height() + margin);
        if (part.Empty()) {
            cursor.Advance(length);
            continue;
        }
        const auto at = [&](double along) {
            return PixelPoint{from.x + (to.x - from.x) * along / length,
                              from.y + (to.y - from.y) * along / length};
        };
        double along = part.first * length;
        const double end = part.last * length;
        cursor.Advance(along);
        if (end + round_dashes.Period() <= end) break;  // too fine for the numbers
        while (along + cursor.Left() < end) {
            const double next = along + cursor.Left();
            if (cursor.Visible()) AddSegment(at(along), at(next), width, true);
            cursor.GoToNext();
            along = next;
        }
        if (cursor.Visible() && along < end) AddSegment(at(along), at(end), width, true);
        cursor.Advance(length - along);
    }
}

void StrokeRaster::AddSegment(PixelPoint from, PixelPoint to, double width, bool with_start_cap)
{
    const Segment segment(from, to, width, with_start_cap);
    if (segment.Right() < 0 || segment.Left() > plane_.Width() || segment.Bottom() < 0 ||
        segment.Top() > plane_.Height()) {
        return;
    }
    int row = FloorWithin(segment.Top(), 0, plane_.Height());
    const int last_row = FloorWithin(segment.Bottom(), -1, plane_.Height() - 1);
    constexpr double kWidestSteepRow = kLanes / 2.0 - 0.5;
    if (segment.extent > 0 && segment.extent <= kWidestSteepRow) {
        // Rows in the middle of a steep line, which its ends do not reach.
        const double end = segment.extent * std::abs(segment.along_x * segment.along_y);
        const int first_inner =
            FloorWithin(std::min(from.y, to.y) + end + 0.5, -1, plane_.Height() - 1) + 1;
        const int last_inner =
            FloorWithin(std::max(from.y, to.y) - end - 0.5, -1, plane_.Height() - 1) - 1;
        const auto centre = [&](int at) { return from.x + (at + 0.5 - from.y) * segment.slope; };
        const double room = segment.extent + kLanes;
        const auto inside = [&](int at) {
            return centre(at) > room && centre(at) < plane_.Width() - room;
        };
        if (first_inner <= last_inner && inside(first_inner) && inside(last_inner)) {
            for (; row < first_inner; ++row) AddRow(segment, row);
            AddSteepRows(segment, first_inner, last_inner);
            row = last_inner + 1;
        }
    }
    for (; row <= last_row; ++row) AddRow(segment, row);
}

// Eight pixels a row hold all that the line covers; positions are fixed-point numbers.
void StrokeRaster::AddSteepRows(const Segment& segment, int first_row, int last_row)
{
    constexpr int kFraction = 16;
    constexpr double kOne = 1 << kFraction;
    const auto reach = static_cast<std::int16_t>(segment.reach * kPixel + kHalfCoverage);
    const auto across = static_cast<std::int64_t>(std::llrint(segment.along_y * kPixel));
    const auto slope = static_cast<std::int64_t>(std::llrint(segment.slope * kOne * kOne));
    const double first_centre = segment.from.x + (first_row + 0.5 - segment.from.y) * segment.slope;
    auto centre = static_cast<std::int64_t>(first_centre * kOne * kOne);
    const auto extent = static_cast<std::int64_t>(segment.extent * kOne) + 1;
    std::uint8_t* coverage = plane_.Row(first_row);
    for (int row = first_row; row <= last_row; ++row) {
        const std::int64_t middle = centre >> kFraction;
        const std::int64_t low = (middle - extent) >> kFraction;
        const std::int64_t from_middle = (low << kFraction) + (1 << (kFraction - 1)) - middle;
        const auto aside = static_cast<std::int16_t>((from_middle * across) >> kFraction);
        RaiseTo(coverage + low, CoverageOf(segment.lane_offsets + aside, reach));
        const int left = static_cast<int>(low);
        plane_.TouchCell(row, CoveragePlane::CellOf(left));
        plane_.TouchCell(row, CoveragePlane::CellOf(left + kLanes - 1));
        centre += slope;
        coverage += plane_.Stride();
    }
    plane_.TouchRows(first_row, last_row);
}

// The pixels of a row that lie beside the line get min(1, reach - distance) by eights, those around
// its ends one by one.
void StrokeRaster::AddRow(const Segment& segment, int row)
{
    const PixelPoint from = segment.from;
    const double down = row + 0.5 - from.y;
    const double centre = from.x + down * segment.slope;
    double left = segment.Left();
    double right = segment.Right();
    if (!segment.level) {
        left = std::max(left, centre - segment.extent);
        right = std::min(right, centre + segment.extent);
    }
    const int low = FloorWithin(left, 0, plane_.Width());
    const int high = FloorWithin(right, -1, plane_.Width() - 1);
    if (low > high) return;
    plane_.Touch(row, low, high);
    // The pixels whose nearest point of the line is not an end.
    int first = low;
    int last = high;
    const double before = down * segment.along_y;  // along the line, at from.x
    if (segment.upright) {
        if (before < 0 || before > segment.length) last = low - 1;
    } else {
        const double one = from.x - before / segment.along_x - 0.5;
        const double other = one + segment.length / segment.along_x;
        first = FloorWithin(std::min(one, other), low - 1, high) + 1;
        last = FloorWithin(std::max(one, other), low - 1, high);
    }
    if (segment.reach > kLargestReach || first > last) {
        AddEndPixels(segment, row, low, high);
        return;
    }
    AddEndPixels(segment, row, low, first - 1);
    AddSpan(segment, row, first, last);
    AddEndPixels(segment, row, last + 1, high);
}

void StrokeRaster::AddSpan(const Segment& segment, int row, int first, int last)
{
    static constexpr std::array<std::int16_t, 2 * kLanes> kMasks{-1, -1, -1, -1, -1, -1, -1, -1};
    const double at_first = (first + 0.5 - segment.from.x) * segment.along_y -
                            (row + 0.5 - segment.from.y) * segment.along_x;
    const auto reach = static_cast<std::int16_t>(segment.reach * kPixel + kHalfCoverage);
    std::uint8_t* pixel = plane_.Row(row) + first;
    for (int n = first; n <= last; n += kLanes, pixel += kLanes) {
        const double distance = (at_first + (n - first) * segment.along_y) * kPixel;
        const Lanes aside =
            segment.lane_offsets + static_cast<std::int16_t>(static_cast<int>(distance));
        const int count = std::min(last - n + 1, kLanes);
        const Lanes mask = LoadLanes(&kMasks[static_cast<std::size_t>(kLanes - count)]);
        RaiseTo(pixel, CoverageOf(aside, reach) & mask);
    }
}

void StrokeRaster::AddEndPixels(const Segment& segment, int row, int first, int last)
{
    std::uint8_t* pixel = plane_.Row(row);
    for (int n = first; n <= last; ++n) {
        const double x = n + 0.5 - segment.from.x;
        const double y = row + 0.5 - segment.from.y;
        const double along = x * segment.along_x + y * segment.along_y;
        if (along < 0 && !segment.start_cap) continue;  // the segment before covers it
        const double nearest = std::clamp(along, 0.0, segment.length);
        const double aside_x = x - nearest * segment.along_x;
        const double aside_y = y - nearest * segment.along_y;
        const double square = aside_x * aside_x + aside_y * aside_y;
        if (square >= segment.reach * segment.reach) continue;
        const double strength = std::min(segment.reach - std::sqrt(square), 1.0);
        const int value = static_cast<int>(strength * 255 + 0.5);
        if (value > pixel[n]) pixel[n] = static_cast<std::uint8_t>(value);
    }
}

}  // namespace korvinth::render
