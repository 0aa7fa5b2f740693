#include "render/view_zoom.h"

#include <cmath>

#include "render/axis_marks.h"

namespace korvinth::render {
namespace {

bool IsTooDeep(double lower, double upper)
{
    const AxisMarks marks = CoarseMarks(lower, upper);
    if (marks.Count() <= 0) return true;
    const double from_origin = std::nearbyint((lower - marks.Origin()) / marks.step.Value());
    return from_origin + 0.01 == from_origin;
}

void MoveByClick(ViewRange& view, ClickButton button, double area_x, double area_y)
{
    if (button == ClickButton::Right) {
        const double dx = (view.area_width / 2 - area_x) / view.xmu;
        const double dy = (view.area_height / 2 - area_y) / view.ymu;
        view.x_min -= dx;
        view.x_max -= dx;
        view.y_min += dy;  // area y grows downwards
        view.y_max += dy;
    } else if (button == ClickButton::Left) {
        view.x_min -= view.WorldX(area_x);
        view.x_max = view.x_min + view.width;
        view.y_min -= view.WorldY(area_y);
        view.y_max = view.y_min + view.height;
    }
}

void ZoomAbout(ViewRange& view, ClickButton button, unsigned keys, double area_x, double area_y,
               const ZoomFactors& factors)
{
    const bool outwards = button == ClickButton::Right;
    const double x = view.WorldX(area_x);
    const double y = view.WorldY(area_y);
    if ((keys & kCtrlKey) != 0) {
        const double factor = outwards ? factors.x : 1 / factors.x;
        view.x_min = x - (x - view.x_min) * factor;
        view.x_max = view.x_min + factor * view.width;
    }
    if ((keys & kAltKey) != 0) {
        const double factor = outwards ? factors.y : 1 / factors.y;
        view.y_min = y - (y - view.y_min) * factor;
        view.y_max = view.y_min + factor * view.height;
    }
}

}  // namespace

bool IsTooDeep(const ViewRange& view)
{
    return IsTooDeep(view.x_min, view.x_max) || IsTooDeep(view.y_min, view.y_max);
}

bool ZoomByClick(ViewRange& view, ViewHistory& history, ClickButton button, unsigned keys,
                 double area_x, double area_y, const ZoomFactors& factors)
{
    const ViewRange before = view;
    if (keys == kShiftKey) {
        history.PushView(view);
        MoveByClick(view, button, area_x, area_y);
    } else if ((keys & (kCtrlKey | kAltKey)) != 0) {
        history.PushView(view);
        ZoomAbout(view, button, keys, area_x, area_y, factors);
    } else {
        return false;
    }
    UpdateDerived(view);
    if (!IsTooDeep(view)) return true;
    // Deliberate: the entry stays in the history although the view stays as well.
    view = before;
    return false;
}

bool ZoomToFrame(ViewRange& view, ViewHistory& history, const ZoomFrame& frame)
{
    constexpr double kSmallestFrame = 300;
    if (!(frame.width > kSmallestFrame) || !(frame.height > kSmallestFrame)) return false;
    history.PushView(view);
    view.y_max = view.WorldY(frame.top);
    view.y_min = view.y_max - frame.height / view.ymu;
    view.x_min += frame.left / view.xmu;
    view.x_max = frame.width / view.xmu + view.x_min;
    UpdateDerived(view);
    return true;
}

}  // namespace korvinth::render
