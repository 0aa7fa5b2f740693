#include "app/view_control.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/view_axes.h"
#include "document/number_text.h"

namespace korvinth::app {
namespace {

constexpr int kTwipsPerPixel = 15;
// Scales that differ by less are one.
constexpr double kSameScale = 1e-9;

// Gestures end here; further out than what can be typed, so that one scale can be kept beside it.
constexpr double kFarthestView = 1e18;
// About 0 the doubles go on far beyond what a picture needs.
constexpr double kNarrowestView = 1e-30;

}  // namespace

bool CanBeDisplayed(const ViewRange& view)
{
    for (const double bound : {view.x_min, view.x_max, view.y_min, view.y_max}) {
        if (!(std::abs(bound) <= kFarthestView)) return false;
    }
    return view.x_max - view.x_min >= kNarrowestView && view.y_max - view.y_min >= kNarrowestView &&
           !render::IsTooDeep(view);
}

ViewControl::ViewControl(term::MathParser& parser, document::PlotDocument& document, Clock clock)
    : parser_(parser), document_(document), clock_(std::move(clock))
{
    ScaleYLikeX();
    UpdateMapping();
}

void ViewControl::SetAreaSize(int width, int height)
{
    const ViewRange before = view_;
    const bool keeps_scale = y_is_free_ && OneScale();
    view_.twips_per_pixel_x = kTwipsPerPixel;
    view_.twips_per_pixel_y = kTwipsPerPixel;
    view_.area_width = std::max(width, 1) * kTwipsPerPixel;
    view_.area_height = std::max(height, 1) * kTwipsPerPixel;
    if (document_.attributes.kept_ratio == KeptRatio::Y) {
        ScaleXLikeY();
    } else if (document_.attributes.kept_ratio == KeptRatio::X || keeps_scale) {
        ScaleYLikeX();
    }
    if (!CanBeDisplayed(view_)) {
        for (const AxisEntry& entry : kAxes) CopyBounds(entry, before, view_);
    }
    StateByNumbers(before);
    UpdateMapping();
    if (listener_ == nullptr) return;
    listener_->updatex();  // their numbers go by the size of a pixel
    listener_->updatey();
}

void ViewControl::UpdateMapping() { render::UpdateMapping(view_, parser_, document_.variables); }

bool ViewControl::OneScale() const
{
    const double xmu = view_.area_width / (view_.x_max - view_.x_min);
    const double ymu = view_.area_height / (view_.y_max - view_.y_min);
    return std::abs(xmu - ymu) <= kSameScale * xmu;
}

void ViewControl::ScaleYLikeX()
{
    if (OneScale()) return;
    const double centre = view_.y_min + (view_.y_max - view_.y_min) / 2;
    const double height = (view_.x_max - view_.x_min) * view_.area_height / view_.area_width;
    view_.y_min = centre - height / 2;
    view_.y_max = centre + height / 2;
}

void ViewControl::ScaleXLikeY()
{
    if (OneScale()) return;
    const double centre = view_.x_min + (view_.x_max - view_.x_min) / 2;
    const double width = (view_.y_max - view_.y_min) * view_.area_width / view_.area_height;
    view_.x_min = centre - width / 2;
    view_.x_max = centre + width / 2;
}

// The other range follows the one that changed.
bool ViewControl::KeepRatio(const ViewRange& before)
{
    if (document_.attributes.kept_ratio == KeptRatio::None) return false;
    const bool x_changed = !SameBounds(RangeAxis::X, before, view_);
    const bool y_changed = !SameBounds(RangeAxis::Y, before, view_);
    if (!x_changed && !y_changed) return false;
    const bool y_follows =
        x_changed == y_changed ? document_.attributes.kept_ratio == KeptRatio::X : x_changed;
    if (y_follows) {
        ScaleYLikeX();
    } else {
        ScaleXLikeY();
    }
    return true;
}

// A y-range left to the view has one scale with x about the same centre.
bool ViewControl::StillLeftToView(const ViewRange& before) const
{
    const double shift = (view_.y_min + view_.y_max) / 2 - (before.y_min + before.y_max) / 2;
    return OneScale() && std::abs(shift) <= kSameScale * (view_.y_max - view_.y_min);
}

// Ranges that were moved are no longer what their terms say.
void ViewControl::StateByNumbers(const ViewRange& before)
{
    RangeTexts& texts = document_.ranges;
    for (const AxisEntry& entry : kAxes) {
        const bool as_stated =
            LeftToView(entry, texts) ? StillLeftToView(before) : SameBounds(entry, before, view_);
        if (as_stated) continue;
        texts.*entry.lower_text = document::ShortestText(view_.*entry.lower);
        texts.*entry.upper_text = document::ShortestText(view_.*entry.upper);
        ForgetParameters(entry.state_bit);
    }
}

void ViewControl::Announce(const ViewRange& before)
{
    if (listener_ == nullptr) return;
    if (!SameBounds(RangeAxis::X, before, view_)) listener_->updatex();
    if (!SameBounds(RangeAxis::Y, before, view_)) listener_->updatey();
    if (!SameBounds(RangeAxis::T, before, view_)) listener_->updatet();
}

bool ViewControl::Adopt(const ViewRange& before)
{
    KeepRatio(before);
    const bool displayable = CanBeDisplayed(view_);
    if (!displayable) {
        for (const AxisEntry& entry : kAxes) CopyBounds(entry, before, view_);
    }
    StateByNumbers(before);
    UpdateMapping();
    Announce(before);
    if (displayable && listener_ != nullptr) listener_->RedrawGraph();
    return displayable;
}

void ViewControl::RestoreRanges(const Snapshot& snapshot)
{
    for (const AxisEntry& entry : kAxes) CopyBounds(entry, snapshot.view, view_);
    document_.ranges = snapshot.texts;
    MarkParameters();
    UpdateMapping();
}

}  // namespace korvinth::app
