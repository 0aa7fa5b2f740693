#include "render/stroke_raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace korvinth::render {
namespace {

constexpr int kCellBits = 4;
constexpr int kCell = 1 << kCellBits;
constexpr int kFlagGroup = sizeof(std::uint64_t);  // cells whose flags are looked at together
constexpr int kLanes = 8;                          // pixels that are worked out together

// Eight 16-bit numbers that the compiler keeps in a vector register where there is one.
using Lanes = std::int16_t __attribute__((vector_size(sizeof(std::int16_t) * kLanes)));
using LaneBytes = std::uint8_t __attribute__((vector_size(kLanes)));

// Distances in lanes are fixed-point numbers: a pixel is 8 * 255, so that a shift gives coverage.
constexpr int kCoverageShift = 3;
constexpr double kPixel = 255 << kCoverageShift;
constexpr double kLargestReach = 7;  // pixels; wider strokes would leave the lanes' numbers

Lanes LoadLanes(const std::int16_t* from)
{
    Lanes lanes{};
    std::memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

bool IsNumber(PixelPoint point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

// The whole pixel below, within limits of -1 and above, for values of any size.
int FloorWithin(double value, int low, int high)
{
    return static_cast<int>(std::clamp<double>(value, low, high) + 1) - 1;
}

// Where a running length stands in a dash pattern.
class DashCursor
{
public:
    // `shrink` is taken off each dash and added to each gap: what round ends add to a dash.
    DashCursor(const DashPattern& pattern, double shrink) : pattern_(pattern), shrink_(shrink) {}

    bool Visible() const { return index_ % 2 == 0; }
    double Left() const { return Length(index_) - done_; }
    void Advance(double length)
    {
        done_ += std::fmod(length, pattern_.Period());
        while (done_ >= Length(index_)) {
            done_ -= Length(index_);
            index_ = (index_ + 1) % pattern_.Lengths().size();
        }
    }

private:
    double Length(std::size_t index) const
    {
        // A dot keeps a trace of a length, so that it is met on the way.
        constexpr double kDot = 1e-3;
        const double length = pattern_.Lengths()[index];
        const double dash = pattern_.Lengths()[index & ~std::size_t{1}];
        const double taken = std::min(shrink_, dash - kDot);
        return index % 2 == 0 ? length - taken : length + taken;
    }

    const DashPattern& pattern_;
    double shrink_;
    std::size_t index_ = 0;
    double done_ = 0;
};

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

// Joins points that lie on a straight line but for a tenth of a pixel, in the order of the line.
class Straightener
{
public:
    explicit Straightener(PixelPoint start) : start_(start), end_(start) {}

    PixelPoint Start() const { return start_; }
    PixelPoint End() const { return end_; }

    // False when the point lies off the line so far: a new one begins at End().
    bool Extend(PixelPoint point)
    {
        constexpr double kTolerance = 0.1;
        const PixelPoint to{point.x - start_.x, point.y - start_.y};
        const double length = std::sqrt(to.x * to.x + to.y * to.y);
        if (length < length_) return false;
        if (length > kTolerance) {
            if (narrowed_ && (Cross(low_, to) < 0 || Cross(to, high_) < 0)) return false;
            const double aside = kTolerance / length;
            const PixelPoint low{to.x + to.y * aside, to.y - to.x * aside};
            const PixelPoint high{to.x - to.y * aside, to.y + to.x * aside};
            if (!narrowed_ || Cross(low_, low) > 0) low_ = low;
            if (!narrowed_ || Cross(high, high_) > 0) high_ = high;
            narrowed_ = true;
        }
        length_ = length;
        end_ = point;
        return true;
    }

private:
    static double Cross(PixelPoint a, PixelPoint b) { return a.x * b.y - a.y * b.x; }

    PixelPoint start_;
    PixelPoint end_;
    double length_ = 0;
    bool narrowed_ = false;
    PixelPoint low_;  // directions that keep every point so far within the tolerance
    PixelPoint high_;
};

// Only covered pixels are touched, so a cell may reach beyond the end of a row.
void CompositeCell(std::uint8_t* coverage, std::uint32_t* pixels, std::uint32_t colour)
{
    for (int group = 0; group < kCell; group += static_cast<int>(sizeof(std::uint64_t))) {
        std::uint64_t covered = 0;
        std::memcpy(&covered, coverage + group, sizeof covered);
        if (covered == 0) continue;
        for (int i = group; i < group + static_cast<int>(sizeof covered); ++i) {
            if (coverage[i] != 0) pixels[i] = Blend(pixels[i], colour, coverage[i]);
        }
        std::memset(coverage + group, 0, sizeof covered);
    }
}

}  // namespace

struct StrokeRaster::Segment
{
    PixelPoint from;
    PixelPoint to;
    double along_x;  // direction, of length 1
    double along_y;
    double length;
    double reach;  // beyond this distance from the line nothing is covered
    bool start_cap;
    Lanes lane_offsets;  // change of the distance from the first of eight pixels on
};

StrokeRaster::StrokeRaster(int width, int height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      stride_(static_cast<std::size_t>(width_ + kCell * kFlagGroup - 1) / (kCell * kFlagGroup) *
              (kCell * kFlagGroup)),
      cells_(stride_ / kCell),
      coverage_(stride_ * static_cast<std::size_t>(height_) + kLanes),
      touched_(cells_ * static_cast<std::size_t>(height_)),
      first_row_(height_)
{
}

void StrokeRaster::Touch(int row, int first_x, int last_x)
{
    const std::size_t base = static_cast<std::size_t>(row) * cells_;
    for (int cell = first_x >> kCellBits; cell <= last_x >> kCellBits; ++cell) {
        touched_[base + static_cast<std::size_t>(cell)] = 1;
    }
    first_row_ = std::min(first_row_, row);
    last_row_ = std::max(last_row_, row);
}

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
    DashCursor cursor(dashes, width);
    const double margin = width / 2 + 1;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const PixelPoint from = points[i - 1];
        const PixelPoint to = points[i];
        if (!IsNumber(from) || !IsNumber(to)) continue;
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        if (length == 0) continue;
        Part part;
        ClipPart(part, from.x, to.x, -margin, width_ + margin);
        ClipPart(part, from.y, to.y, -margin, height_ + margin);
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
        while (along < end) {
            const double next = std::min(along + cursor.Left(), end);
            if (cursor.Visible()) AddSegment(at(along), at(next), width, true);
            if (next <= along) break;  // too fine for the numbers
            cursor.Advance(next - along);
            along = next;
        }
        cursor.Advance(length - along);
    }
}

// Each row has a few pixels near the line; those beside it get min(1, reach - distance) by eights,
// those around its ends one by one.
void StrokeRaster::AddSegment(PixelPoint from, PixelPoint to, double width, bool with_start_cap)
{
    const double reach = width / 2 + 0.5;
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::sqrt(dx * dx + dy * dy);
    const double left = std::min(from.x, to.x) - reach;
    const double right = std::max(from.x, to.x) + reach;
    const double top = std::min(from.y, to.y) - reach;
    const double bottom = std::max(from.y, to.y) + reach;
    if (right < 0 || left > width_ || bottom < 0 || top > height_) return;

    Segment segment{from, to, 1, 0, length, reach, with_start_cap, {}};
    if (length > 1e-9) {
        segment.along_x = dx / length;
        segment.along_y = dy / length;
    }
    for (int lane = 0; lane < kLanes; ++lane) {
        segment.lane_offsets[lane] =
            static_cast<std::int16_t>(std::lrint(lane * segment.along_y * kPixel));
    }
    constexpr double kLevel = 1e-9;  // directions so close to an axis are taken to be on it
    const bool level = std::abs(segment.along_y) < kLevel;
    const bool upright = std::abs(segment.along_x) < kLevel;
    const double slope = level ? 0 : segment.along_x / segment.along_y;
    const double extent = level ? 0 : reach / std::abs(segment.along_y);
    const bool wide = reach > kLargestReach;

    const int last_row = FloorWithin(bottom, -1, height_ - 1);
    for (int row = FloorWithin(top, 0, height_); row <= last_row; ++row) {
        const double down = row + 0.5 - from.y;
        const double centre = from.x + down * slope;
        const int low = FloorWithin(level ? left : std::max(centre - extent, left), 0, width_);
        const int high =
            FloorWithin(level ? right : std::min(centre + extent, right), -1, width_ - 1);
        if (low > high) continue;
        Touch(row, low, high);
        // The pixels beside the line: those whose nearest point of it is not an end.
        int first = low;
        int last = high;
        const double before = down * segment.along_y;  // along the line, at from.x
        if (upright) {
            if (before < 0 || before > length) last = low - 1;
        } else {
            const double one = from.x - before / segment.along_x - 0.5;
            const double other = one + length / segment.along_x;
            first = FloorWithin(std::min(one, other), low - 1, high) + 1;
            last = FloorWithin(std::max(one, other), low - 1, high);
        }
        if (wide || first > last) {
            AddEndPixels(segment, row, low, high);
            continue;
        }
        AddEndPixels(segment, row, low, first - 1);
        AddSpan(segment, row, first, last);
        AddEndPixels(segment, row, last + 1, high);
    }
}

void StrokeRaster::AddSpan(const Segment& segment, int row, int first, int last)
{
    static constexpr std::array<std::int16_t, 2 * kLanes> kMasks{-1, -1, -1, -1, -1, -1, -1, -1};
    const double at_first = (first + 0.5 - segment.from.x) * segment.along_y -
                            (row + 0.5 - segment.from.y) * segment.along_x;
    const auto reach =
        static_cast<std::int16_t>(segment.reach * kPixel + (1 << kCoverageShift) / 2);
    const Lanes full = Lanes{} + static_cast<std::int16_t>(kPixel);
    std::uint8_t* pixel = coverage_.data() + Offset(first, row);
    for (int n = first; n <= last; n += kLanes, pixel += kLanes) {
        const double distance = (at_first + (n - first) * segment.along_y) * kPixel;
        const Lanes aside =
            segment.lane_offsets + static_cast<std::int16_t>(static_cast<int>(distance));
        const Lanes near = reach - (aside < 0 ? -aside : aside);
        const Lanes limited = near < 0 ? Lanes{} : (near > full ? full : near);
        const int count = std::min(last - n + 1, kLanes);
        const Lanes coverage = (limited >> kCoverageShift) &
                               LoadLanes(&kMasks[static_cast<std::size_t>(kLanes - count)]);
        LaneBytes bytes{};
        std::memcpy(&bytes, pixel, sizeof bytes);
        const Lanes there = __builtin_convertvector(bytes, Lanes);
        bytes = __builtin_convertvector(there > coverage ? there : coverage, LaneBytes);
        std::memcpy(pixel, &bytes, sizeof bytes);
    }
}

void StrokeRaster::AddEndPixels(const Segment& segment, int row, int first, int last)
{
    std::uint8_t* pixel = coverage_.data() + Offset(0, row);
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

void StrokeRaster::AddHard(std::span<const PixelIndex> points, int width, const DashPattern& dashes)
{
    double phase = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const PixelIndex from = points[i - 1];
        const PixelIndex to = points[i];
        AddHardSegment(from, to, std::max(width, 1), dashes, phase);
        phase += std::max(std::abs(static_cast<double>(to.x) - from.x),
                          std::abs(static_cast<double>(to.y) - from.y));
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
    const int major_size = steep ? height_ : width_;
    const int minor_size = steep ? width_ : height_;

    // The steps that lie within the picture; the last pixel of the segment is left out.
    const double to_low = direction > 0 ? -major0 : major0 - (major_size - 1);
    const double to_high = direction > 0 ? major_size - 1 - major0 : major0;
    const double first = std::max(0.0, to_low);
    const double last = std::min(steps - 1, to_high);
    const int before = (width - 1) / 2;  // pixels of the line's width above or left of it
    DashCursor cursor(dashes, 0);
    if (!dashes.Unbroken() && first <= last) cursor.Advance(phase + first);
    for (double step = first; step <= last; ++step) {
        const bool visible = dashes.Unbroken() || cursor.Visible();
        if (!dashes.Unbroken()) cursor.Advance(1);
        if (!visible) continue;
        const int major = static_cast<int>(major0 + direction * step);
        const double middle = std::floor(minor0 + slope * step + 0.5) - before;
        const int low = FloorWithin(middle, 0, minor_size);
        const int high = FloorWithin(middle + width - 1, -1, minor_size - 1);
        for (int minor = low; minor <= high; ++minor) {
            const PixelIndex at = steep ? PixelIndex{minor, major} : PixelIndex{major, minor};
            coverage_[Offset(at.x, at.y)] = 255;
            Touch(at.y, at.x, at.x);
        }
    }
}

void StrokeRaster::Composite(const PixelBuffer& target, std::uint32_t colour)
{
    for (int row = first_row_; row <= last_row_; ++row) {
        std::uint8_t* flags = touched_.data() + static_cast<std::size_t>(row) * cells_;
        for (std::size_t group = 0; group < cells_; group += kFlagGroup) {
            std::uint64_t flagged = 0;
            std::memcpy(&flagged, flags + group, sizeof flagged);
            if (flagged == 0) continue;
            for (std::size_t cell = group; cell < group + kFlagGroup; ++cell) {
                if (flags[cell] == 0) continue;
                std::uint8_t* coverage =
                    coverage_.data() + static_cast<std::size_t>(row) * stride_ + cell * kCell;
                std::uint32_t* pixels =
                    target.pixels + row * target.stride + static_cast<std::ptrdiff_t>(cell * kCell);
                CompositeCell(coverage, pixels, colour);
            }
            std::memset(flags + group, 0, sizeof flagged);
        }
    }
    first_row_ = height_;
    last_row_ = -1;
}

}  // namespace korvinth::render
