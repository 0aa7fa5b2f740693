// Walks along a stroke: joins samples that lie on a line, finds its dashes.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "render/dash_pattern.h"
#include "render/stroke_raster.h"

namespace korvinth::render {

// The whole pixel below, within limits of -1 and above, for values of any size.
inline int FloorWithin(double value, int low, int high)
{
    return static_cast<int>(std::clamp<double>(value, low, high) + 1) - 1;
}

// Where a running length stands in a dash pattern.
class DashCursor
{
public:
    explicit DashCursor(const DashPattern& pattern) : pattern_(pattern) {}

    bool Visible() const { return index_ % 2 == 0; }
    double Left() const { return Length(index_) - done_; }
    void Advance(double length)
    {
        done_ += std::fmod(length, pattern_.Period());
        while (done_ >= Length(index_)) {
            const double beyond = done_ - Length(index_);
            GoToNext();
            done_ = beyond;
        }
    }
    // To the start of the next dash or gap. Lengths added up would not quite meet it.
    void GoToNext()
    {
        done_ = 0;
        index_ = (index_ + 1) % pattern_.Lengths().size();
    }

private:
    double Length(std::size_t index) const { return pattern_.Lengths()[index]; }

    const DashPattern& pattern_;
    std::size_t index_ = 0;
    double done_ = 0;
};

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

}  // namespace korvinth::render
