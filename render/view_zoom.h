// Changes of the view by clicks and frames.
#pragma once

#include "render/view_history.h"
#include "render/view_range.h"

namespace korvinth::render {

enum class ClickButton { Left, Right, Other };

// Bits of the keys held with a click.
inline constexpr unsigned kShiftKey = 1;
inline constexpr unsigned kCtrlKey = 2;
inline constexpr unsigned kAltKey = 4;

// Of one zoom step, each at least 1.
struct ZoomFactors
{
    double x = 2;
    double y = 2;
};

// In area units.
struct ZoomFrame
{
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

// A click at a place in area units. Shift alone moves the origin there (left button) or brings the
// place to the centre (right button). Ctrl zooms in x, Alt in y, both in both, about the place: out
// with the right button, else in. False, and nothing changed, without a key; also when the view
// would become too deep: then the history keeps the entry. The caller updates the mapping.
bool ZoomByClick(ViewRange& view, ViewHistory& history, ClickButton button, unsigned keys,
                 double area_x, double area_y, const ZoomFactors& factors);

// Shows the part of the view inside the frame. False for a frame of 300 twips or less in either
// direction.
bool ZoomToFrame(ViewRange& view, ViewHistory& history, const ZoomFrame& frame);

// Whether the marks of an axis can no longer be told apart in double precision: marks at automatic
// steps, since a fixed step may be far wider than the view.
bool IsTooDeep(const ViewRange& view);

}  // namespace korvinth::render
