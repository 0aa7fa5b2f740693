// The three ranges of the view: where their bounds stand in texts, view and parameters.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "document/plot_document.h"
#include "render/view_range.h"
#include "ui/range_actions.h"

namespace korvinth::app {

using document::RangeTexts;
using render::ViewRange;
using ui::RangeAxis;

// Where the bounds of an axis stand: in the texts, in the view, in the state of parameters.
struct AxisEntry
{
    RangeAxis axis;
    std::string_view name;
    std::string RangeTexts::*lower_text;
    std::string RangeTexts::*upper_text;
    double ViewRange::*lower;
    double ViewRange::*upper;
    unsigned state_bit;
};

inline constexpr std::array kAxes = {
    AxisEntry{RangeAxis::X, "x-Bereich", &RangeTexts::x_lower, &RangeTexts::x_upper,
              &ViewRange::x_min, &ViewRange::x_max, document::kInXRange},
    AxisEntry{RangeAxis::Y, "y-Bereich", &RangeTexts::y_lower, &RangeTexts::y_upper,
              &ViewRange::y_min, &ViewRange::y_max, document::kInYRange},
    AxisEntry{RangeAxis::T, "Kurvenparameter", &RangeTexts::t_lower, &RangeTexts::t_upper,
              &ViewRange::t_min, &ViewRange::t_max, document::kInTRange},
};

inline const AxisEntry& Entry(RangeAxis axis) { return kAxes[static_cast<std::size_t>(axis)]; }

inline bool SameBounds(const AxisEntry& entry, const ViewRange& a, const ViewRange& b)
{
    return a.*entry.lower == b.*entry.lower && a.*entry.upper == b.*entry.upper;
}

inline bool SameBounds(RangeAxis axis, const ViewRange& a, const ViewRange& b)
{
    return SameBounds(Entry(axis), a, b);
}

inline void CopyBounds(const AxisEntry& entry, const ViewRange& from, ViewRange& to)
{
    to.*entry.lower = from.*entry.lower;
    to.*entry.upper = from.*entry.upper;
}

// A y-range without texts is left to the view.
inline bool LeftToView(const AxisEntry& entry, const RangeTexts& texts)
{
    return entry.axis == RangeAxis::Y && (texts.*entry.lower_text).empty() &&
           (texts.*entry.upper_text).empty();
}

inline bool SamePlane(const ViewRange& a, const ViewRange& b)
{
    return SameBounds(RangeAxis::X, a, b) && SameBounds(RangeAxis::Y, a, b);
}

// Bounds that can be told apart and are not too far out to be drawn.
bool CanBeDisplayed(const ViewRange& view);

}  // namespace korvinth::app
