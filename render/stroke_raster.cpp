#include "render/stroke_raster.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace korvinth::render {
namespace {

constexpr int kCellBits = 6;
constexpr int kCell = 1 << kCellBits;

bool IsNumber(PixelPoint point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

// Rounds toward a whole pixel within limits, for values of any size.
int FloorWithin(double value, int low, int high)
{
    return static_cast<int>(std::floor(std::clamp<double>(value, low, high)));
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

}  // namespace

// A segment turned so that it runs along the major axis: y when it is steep, x when it is flat.
struct StrokeRaster::Capsule
{
    double major0, minor0, major1, minor1;
    double reach;  // beyond this distance nothing is covered
    double length;
    bool start_cap;
};

StrokeRaster::StrokeRaster(int width, int height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      stride_(static_cast<std::size_t>(width_ + kCell - 1) / kCell * kCell),
      cells_(stride_ / kCell),
      coverage_(stride_ * static_cast<std::size_t>(height_)),
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
    bool start_cap = true;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const bool drawable = IsNumber(points[i - 1]) && IsNumber(points[i]);
        if (drawable) AddSegment(points[i - 1], points[i], width, start_cap);
        start_cap = !drawable;
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

void StrokeRaster::AddSegment(PixelPoint from, PixelPoint to, double width, bool with_start_cap)
{
    const double reach = width / 2 + 0.5;
    if (std::max(from.x, to.x) < -reach || std::min(from.x, to.x) > width_ + reach ||
        std::max(from.y, to.y) < -reach || std::min(from.y, to.y) > height_ + reach) {
        return;
    }
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::sqrt(dx * dx + dy * dy);
    if (std::abs(dy) >= std::abs(dx)) {
        AddCapsule<true>({from.y, from.x, to.y, to.x, reach, length, with_start_cap});
    } else {
        AddCapsule<false>({from.x, from.y, to.x, to.y, reach, length, with_start_cap});
    }
}

// Walks along the major axis; at each step the few pixels across the line get the coverage
// min(1, reach - distance).
template <bool kSteep>
void StrokeRaster::AddCapsule(const Capsule& c)
{
    const int major_size = kSteep ? height_ : width_;
    const int minor_size = kSteep ? width_ : height_;
    const std::size_t major_step = kSteep ? stride_ : 1;
    const std::size_t minor_step = kSteep ? 1 : stride_;

    const bool is_point = c.length < 1e-9;
    const double along_major = is_point ? 1.0 : (c.major1 - c.major0) / c.length;
    const double along_minor = is_point ? 0.0 : (c.minor1 - c.minor0) / c.length;
    const double slope = along_minor / along_major;
    const double extent = c.reach / std::abs(along_major);
    const double spread = extent * std::abs(along_minor);  // of the position along the line
    const double minor_low = std::min(c.minor0, c.minor1) - c.reach;
    const double minor_high = std::max(c.minor0, c.minor1) + c.reach;
    const int first = FloorWithin(std::min(c.major0, c.major1) - c.reach, 0, major_size);
    const int last = FloorWithin(std::max(c.major0, c.major1) + c.reach, -1, major_size - 1);
    const double major_rate = std::abs(along_major);
    const float inner = static_cast<float>(major_rate);
    const float reach = static_cast<float>(c.reach);

    for (int m = first; m <= last; ++m) {
        const double offset = m + 0.5 - c.major0;
        const double centre = c.minor0 + offset * slope;
        const int low = FloorWithin(std::max(centre - extent, minor_low), 0, minor_size);
        const int high = FloorWithin(std::min(centre + extent, minor_high), -1, minor_size - 1);
        if (low > high) continue;
        if constexpr (kSteep) Touch(m, low, high);
        std::uint8_t* pixel = coverage_.data() + static_cast<std::size_t>(m) * major_step +
                              static_cast<std::size_t>(low) * minor_step;
        const double position = offset / along_major;  // of the centre, along the line
        if (position - spread >= 0 && position + spread <= c.length) {
            float distance = static_cast<float>((low + 0.5 - centre) * major_rate);
            for (int n = low; n <= high; ++n, pixel += minor_step, distance += inner) {
                const float strength = std::min(reach - std::abs(distance), 1.0F);
                const int value = static_cast<int>(strength * 255.0F + 0.5F);
                if (value > *pixel) *pixel = static_cast<std::uint8_t>(value);
            }
            continue;
        }
        for (int n = low; n <= high; ++n, pixel += minor_step) {
            const double across = n + 0.5 - c.minor0;
            const double t = offset * along_major + across * along_minor;
            double distance = 0;
            if (t < 0) {
                if (!c.start_cap) continue;
                distance = std::sqrt(offset * offset + across * across);
            } else if (t > c.length) {
                const double end_major = m + 0.5 - c.major1;
                const double end_minor = n + 0.5 - c.minor1;
                distance = std::sqrt(end_major * end_major + end_minor * end_minor);
            } else {
                distance = std::abs(across * along_major - offset * along_minor);
            }
            const double strength = std::min(c.reach - distance, 1.0);
            const int value = static_cast<int>(strength * 255.0 + 0.5);
            if (value > *pixel) *pixel = static_cast<std::uint8_t>(value);
        }
    }
    if constexpr (!kSteep) {
        const int low = FloorWithin(minor_low, 0, minor_size);
        const int high = FloorWithin(minor_high, -1, minor_size - 1);
        if (first > last) return;
        for (int row = low; row <= high; ++row) Touch(row, first, last);
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
        std::uint32_t* pixels = target.pixels + row * target.stride;
        for (std::size_t cell = 0; cell < cells_; ++cell) {
            if (flags[cell] == 0) continue;
            flags[cell] = 0;
            const std::size_t start = cell * kCell;
            std::uint8_t* coverage =
                coverage_.data() + static_cast<std::size_t>(row) * stride_ + start;
            for (std::size_t group = 0; group < kCell; group += sizeof(std::uint64_t)) {
                std::uint64_t eight = 0;
                std::memcpy(&eight, coverage + group, sizeof eight);
                if (eight == 0) continue;
                for (std::size_t i = group; i < group + sizeof eight; ++i) {
                    if (coverage[i] == 0) continue;
                    std::uint32_t& pixel = pixels[start + i];
                    pixel = coverage[i] == 255 ? colour : Blend(pixel, colour, coverage[i]);
                }
                std::memset(coverage + group, 0, sizeof eight);
            }
        }
    }
    first_row_ = height_;
    last_row_ = -1;
}

}  // namespace korvinth::render
