// What a hand can do to the view in the graph window, free of the toolkit.
#pragma once

#include <cstdint>
#include <string>

#include "render/view_zoom.h"

namespace korvinth::ui {

// Places and distances are in area units. Each call changes the view and has the picture redrawn;
// a view beyond the precision of doubles is refused without a message.
class GraphGestures
{
public:
    virtual ~GraphGestures() = default;

    // A click with keys held (bits kShiftKey, kCtrlKey, kAltKey).
    virtual void zoom(render::ClickButton button, unsigned keys, double x, double y) = 0;
    // False for a frame that is too small.
    virtual bool ZoomToFrame(const render::ZoomFrame& frame) = 0;
    // One step of a wheel is 1, positive zooms in; parts of steps are fine. `keys` as for the
    // wheel: Ctrl only x, Alt or Shift only y, none both.
    virtual void ZoomByWheel(double steps, unsigned keys, double x, double y) = 0;
    // Two fingers: `factor` above 1 zooms in.
    virtual void ZoomByPinch(double factor, double x, double y) = 0;

    // A drag: the world follows the hand by the distance since BeginDrag.
    virtual void BeginDrag() = 0;
    virtual void Drag(double dx, double dy) = 0;
    virtual void EndDrag() = 0;
    virtual void CancelDrag() = 0;  // the view of BeginDrag comes back

    // Scroll bars: a percentage of the view; positive raises both bounds.
    virtual void scrlr(std::int16_t percent) = 0;
    virtual void scrud(std::int16_t percent) = 0;
    // The same by keys, which is one entry of the history for a run of presses.
    virtual void ScrollByKey(double percent_x, double percent_y) = 0;
    // One step about the centre; positive zooms in.
    virtual void ZoomByKey(int steps) = 0;

    // Both axes get one scale: y follows with the left button, x with the right one.
    virtual void einszueins(render::ClickButton button) = 0;
    virtual void UseStandardRange() = 0;
    virtual void PopView() = 0;
};

// The additional points as things that a hand takes hold of; places in area units.
class PointHandle
{
public:
    virtual ~PointHandle() = default;
    virtual bool GrabPoint(double area_x, double area_y) = 0;  // false: none to drag
    virtual void DragPoint(double area_x, double area_y) = 0;
    virtual void DropPoint() = 0;
    virtual void CancelPoint() = 0;  // back to where it was grabbed
};

}  // namespace korvinth::ui
