// What hands do to the view: clicks, frames, wheel, drags, keys; and its history.
#include <cmath>
#include <optional>
#include <utility>

#include "app/view_axes.h"
#include "app/view_control.h"

namespace korvinth::app {
namespace {

constexpr std::chrono::seconds kLongestPauseInRun{1};
// One step of the wheel: four of them are about one click of factor 2.
constexpr double kWheelFactor = 1.2;

// Zooms by factors above 1 in; a factor of 1 leaves its bounds as they are.
void ZoomAbout(ViewRange& view, double factor_x, double factor_y, double area_x, double area_y)
{
    if (factor_x != 1) {
        const double x = view.WorldX(area_x);
        const double width = view.width / factor_x;
        view.x_min = x - (x - view.x_min) / factor_x;
        view.x_max = view.x_min + width;
    }
    if (factor_y != 1) {
        const double y = view.WorldY(area_y);
        const double height = view.height / factor_y;
        view.y_min = y - (y - view.y_min) / factor_y;
        view.y_max = view.y_min + height;
    }
}

void MoveByPercent(ViewRange& view, double percent_x, double percent_y)
{
    const double dx = percent_x * view.width / 100;
    const double dy = percent_y * view.height / 100;
    view.x_min += dx;
    view.x_max += dx;
    view.y_min += dy;
    view.y_max += dy;
}

}  // namespace

void ViewControl::AnnounceHistory()
{
    if (listener_ != nullptr) listener_->HistoryChanged(!history_.Empty());
}

void ViewControl::Remember(Run run, const ViewRange& before)
{
    const auto now = clock_();
    const bool continues = run != Run::None && run == run_ && now - run_time_ <= kLongestPauseInRun;
    run_ = run;
    run_time_ = now;
    if (continues) return;
    history_.PushView(before);
    AnnounceHistory();
}

bool ViewControl::Gesture(Run run, const std::function<void(ViewRange&)>& change)
{
    const ViewRange before = view_;
    change(view_);
    if (SamePlane(before, view_) || !Adopt(before)) return false;
    Remember(run, before);
    return true;
}

void ViewControl::ClearViewHistory()
{
    history_.ClearViewHistory();
    run_ = Run::None;
    AnnounceHistory();
}

void ViewControl::SetKeptRatio(KeptRatio kept)
{
    document_.attributes.kept_ratio = kept;
    if (kept == KeptRatio::X) einszueins(render::ClickButton::Left);
    if (kept == KeptRatio::Y) einszueins(render::ClickButton::Right);
}

void ViewControl::einszueins(render::ClickButton button)
{
    const KeptRatio kept = std::exchange(document_.attributes.kept_ratio, KeptRatio::None);
    Gesture(Run::None, [this, button](ViewRange&) {
        if (button == render::ClickButton::Left) ScaleYLikeX();
        if (button == render::ClickButton::Right) ScaleXLikeY();
    });
    document_.attributes.kept_ratio = kept;
}

void ViewControl::zoom(render::ClickButton button, unsigned keys, double x, double y)
{
    if (click_zoom_locked_ || keys == 0) return;
    const ViewRange before = view_;
    // Pushes the view itself: a refused zoom leaves its entry.
    if (render::ZoomByClick(view_, history_, button, keys, x, y, factors_)) Adopt(before);
    run_ = Run::None;
    AnnounceHistory();
}

bool ViewControl::ZoomToFrame(const render::ZoomFrame& frame)
{
    const ViewRange before = view_;
    if (!render::ZoomToFrame(view_, history_, frame)) return false;
    Adopt(before);
    run_ = Run::None;
    AnnounceHistory();
    return true;
}

void ViewControl::ZoomByWheel(double steps, unsigned keys, double x, double y)
{
    const bool only_x = (keys & render::kCtrlKey) != 0;
    const bool only_y = !only_x && (keys & (render::kAltKey | render::kShiftKey)) != 0;
    const double factor = std::pow(kWheelFactor, steps);
    Gesture(Run::Wheel, [=](ViewRange& view) {
        ZoomAbout(view, only_y ? 1 : factor, only_x ? 1 : factor, x, y);
    });
}

void ViewControl::ZoomByPinch(double factor, double x, double y)
{
    if (!(factor > 0)) return;
    Gesture(Run::Wheel, [=](ViewRange& view) { ZoomAbout(view, factor, factor, x, y); });
}

void ViewControl::ZoomByKey(int steps)
{
    const double factor_x = std::pow(factors_.x, steps);
    const double factor_y = std::pow(factors_.y, steps);
    Gesture(Run::Keys, [=](ViewRange& view) {
        ZoomAbout(view, factor_x, factor_y, view.area_width / 2, view.area_height / 2);
    });
}

void ViewControl::ScrollByKey(double percent_x, double percent_y)
{
    Gesture(Run::Keys, [=](ViewRange& view) { MoveByPercent(view, percent_x, percent_y); });
}

// Deliberate: the scroll bars leave the history alone.
void ViewControl::scrlr(std::int16_t percent)
{
    const ViewRange before = view_;
    if (render::scrlr(view_, percent)) Adopt(before);
}

void ViewControl::scrud(std::int16_t percent)
{
    const ViewRange before = view_;
    if (render::scrud(view_, percent)) Adopt(before);
}

void ViewControl::BeginDrag()
{
    if (!drag_start_) drag_start_ = TakeSnapshot();
}

void ViewControl::Drag(double dx, double dy)
{
    if (!drag_start_) return;
    const ViewRange before = view_;
    const ViewRange& start = drag_start_->view;
    const double world_dx = dx / view_.xmu;
    const double world_dy = dy / view_.ymu;
    view_.x_min = start.x_min - world_dx;
    view_.x_max = start.x_max - world_dx;
    view_.y_min = start.y_min + world_dy;
    view_.y_max = start.y_max + world_dy;
    Adopt(before);
}

void ViewControl::EndDrag()
{
    if (!drag_start_) return;
    const ViewRange start = drag_start_->view;
    drag_start_.reset();
    if (!SamePlane(start, view_)) Remember(Run::None, start);
}

void ViewControl::CancelDrag()
{
    if (!drag_start_) return;
    const ViewRange before = view_;
    RestoreRanges(*drag_start_);
    drag_start_.reset();
    Announce(before);
    if (listener_ != nullptr) listener_->RedrawGraph();
}

void ViewControl::PopView()
{
    const ViewRange before = view_;
    if (!history_.PopView(view_)) return;
    run_ = Run::None;
    Adopt(before);
    AnnounceHistory();
}

}  // namespace korvinth::app
