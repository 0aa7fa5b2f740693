// The lengths of dashes and gaps of the line types.
#pragma once

#include <array>
#include <span>

#include "document/display_attributes.h"

namespace korvinth::render {

// Visible lengths in pixels, dash and gap in turn; no lengths at all for an unbroken line.
class DashPattern
{
public:
    DashPattern() = default;
    DashPattern(document::LineType type, double width);

    // The same to the eye when round ends are added to each dash: they take the line's width.
    DashPattern WithRoundEnds(double width) const;

    bool Unbroken() const { return count_ == 0; }
    double Period() const { return period_; }
    std::span<const double> Lengths() const
    {
        return std::span<const double>(lengths_).first(count_);
    }

private:
    std::array<double, 6> lengths_{};
    std::size_t count_ = 0;
    double period_ = 0;
};

}  // namespace korvinth::render
