#include "app/view_control.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <numbers>
#include <string_view>
#include <utility>

#include "document/number_text.h"
#include "document/parameter_use.h"
#include "document/range_bounds.h"

namespace korvinth::app {
namespace {

using document::RangeTexts;
using render::ViewRange;
using ui::RangeAxis;
using ui::RangeBound;
using ui::RangeFault;

constexpr int kTwipsPerPixel = 15;
// Scales that differ by less are one.
constexpr double kSameScale = 1e-9;

// Gestures end here; further out than what can be typed, so that one scale can be kept beside it.
constexpr double kFarthestView = 1e18;
// About 0 the doubles go on far beyond what a picture needs.
constexpr double kNarrowestView = 1e-30;

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

constexpr std::array kAxes = {
    AxisEntry{RangeAxis::X, "x-Bereich", &RangeTexts::x_lower, &RangeTexts::x_upper,
              &ViewRange::x_min, &ViewRange::x_max, document::kInXRange},
    AxisEntry{RangeAxis::Y, "y-Bereich", &RangeTexts::y_lower, &RangeTexts::y_upper,
              &ViewRange::y_min, &ViewRange::y_max, document::kInYRange},
    AxisEntry{RangeAxis::T, "Kurvenparameter", &RangeTexts::t_lower, &RangeTexts::t_upper,
              &ViewRange::t_min, &ViewRange::t_max, document::kInTRange},
};

const AxisEntry& Entry(RangeAxis axis) { return kAxes[static_cast<std::size_t>(axis)]; }

bool SameBounds(const AxisEntry& entry, const ViewRange& a, const ViewRange& b)
{
    return a.*entry.lower == b.*entry.lower && a.*entry.upper == b.*entry.upper;
}

bool SameBounds(RangeAxis axis, const ViewRange& a, const ViewRange& b)
{
    return SameBounds(Entry(axis), a, b);
}

void CopyBounds(const AxisEntry& entry, const ViewRange& from, ViewRange& to)
{
    to.*entry.lower = from.*entry.lower;
    to.*entry.upper = from.*entry.upper;
}

bool SameTexts(const AxisEntry& entry, const RangeTexts& a, const RangeTexts& b)
{
    return a.*entry.lower_text == b.*entry.lower_text && a.*entry.upper_text == b.*entry.upper_text;
}

// A y-range without texts is left to the view.
bool LeftToView(const AxisEntry& entry, const RangeTexts& texts)
{
    return entry.axis == RangeAxis::Y && (texts.*entry.lower_text).empty() &&
           (texts.*entry.upper_text).empty();
}

RangeFault FaultOf(const AxisEntry& entry, const document::RangeBounds& bounds)
{
    const std::string name(entry.name);
    switch (bounds.faulty) {
        case document::FaultyBound::Lower:
            return {entry.axis, RangeBound::Lower, name + ", untere Grenze: " + bounds.fault};
        case document::FaultyBound::Upper:
            return {entry.axis, RangeBound::Upper, name + ", obere Grenze: " + bounds.fault};
        case document::FaultyBound::Both:
        case document::FaultyBound::None: break;
    }
    return {entry.axis, RangeBound::Both, name + ": " + bounds.fault};
}

bool HasLetter(std::string_view text)
{
    return std::ranges::any_of(text, [](unsigned char c) { return std::isalpha(c) != 0; });
}

bool CanBeDisplayed(const ViewRange& view)
{
    for (const double bound : {view.x_min, view.x_max, view.y_min, view.y_max}) {
        if (!(std::abs(bound) <= kFarthestView)) return false;
    }
    return view.x_max - view.x_min >= kNarrowestView && view.y_max - view.y_min >= kNarrowestView &&
           !render::IsTooDeep(view);
}

}  // namespace

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
    if (kept_ratio_ == KeptRatio::Y) {
        ScaleXLikeY();
    } else if (kept_ratio_ == KeptRatio::X || keeps_scale) {
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
    if (kept_ratio_ == KeptRatio::None) return false;
    const bool x_changed = !SameBounds(RangeAxis::X, before, view_);
    const bool y_changed = !SameBounds(RangeAxis::Y, before, view_);
    if (!x_changed && !y_changed) return false;
    const bool y_follows = x_changed == y_changed ? kept_ratio_ == KeptRatio::X : x_changed;
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

bool ViewControl::InForce(RangeAxis axis) const
{
    const AxisEntry& entry = Entry(axis);
    const RangeTexts& texts = document_.ranges;
    return texts.*entry.lower_text == document::ShortestText(view_.*entry.lower) &&
           texts.*entry.upper_text == document::ShortestText(view_.*entry.upper);
}

std::string ViewControl::ReadRanges(bool& changed)
{
    const ViewRange before = view_;
    const RangeTexts& texts = document_.ranges;
    std::string faults;
    for (const AxisEntry& entry : kAxes) {
        if (LeftToView(entry, texts)) {
            y_is_free_ = true;
            ScaleYLikeX();
            continue;
        }
        // Numbers that a zoom has left are taken although they may be too close to be typed.
        if (InForce(entry.axis)) continue;
        if (entry.axis == RangeAxis::Y) y_is_free_ = false;
        const document::RangeBounds bounds = document::ReadRangeBounds(
            parser_, document_, texts.*entry.lower_text, texts.*entry.upper_text);
        if (!bounds.fault.empty()) {
            faults += std::string(entry.name) + ": " + bounds.fault + "; ";
            continue;
        }
        view_.*entry.lower = bounds.lower;
        view_.*entry.upper = bounds.upper;
    }
    MarkParameters();
    const ViewRange read = view_;
    if (KeepRatio(before)) StateByNumbers(read);
    UpdateMapping();
    for (const AxisEntry& entry : kAxes) changed = changed || !SameBounds(entry, before, view_);
    if (listener_ != nullptr) {
        listener_->updatex();
        listener_->updatey();
        listener_->updatet();
    }
    return faults;
}

void ViewControl::MarkParameters()
{
    for (const AxisEntry& entry : kAxes) ForgetParameters(entry.state_bit);
    for (const AxisEntry& entry : kAxes) {
        for (const auto text : {entry.lower_text, entry.upper_text}) {
            if (!HasLetter(document_.ranges.*text)) continue;
            const std::string term = document_.Translate(document_.ranges.*text);
            for (const document::ParameterIndex index : document::AllParameters()) {
                document::Parameter& parameter = document_.parameters[index];
                if (parameter.name.empty() || (parameter.state & entry.state_bit) != 0) continue;
                if (document::TermUsesParameter(document_, parser_, index, term)) {
                    parameter.state |= entry.state_bit;
                }
            }
        }
    }
}

void ViewControl::ForgetParameters(unsigned state_bit)
{
    for (document::Parameter& parameter : document_.parameters) parameter.state &= ~state_bit;
}

void ViewControl::FollowParameter(document::ParameterIndex index)
{
    const ViewRange before = view_;
    const unsigned state = document_.parameters[index].state;
    for (const AxisEntry& entry : kAxes) {
        if ((state & entry.state_bit) == 0) continue;
        const document::RangeBounds bounds =
            document::ReadRangeBounds(parser_, document_, document_.ranges.*entry.lower_text,
                                      document_.ranges.*entry.upper_text);
        if (!bounds.fault.empty()) continue;
        view_.*entry.lower = bounds.lower;
        view_.*entry.upper = bounds.upper;
    }
    const ViewRange followed = view_;
    if (KeepRatio(before)) {
        if (CanBeDisplayed(view_)) {
            StateByNumbers(followed);
        } else {
            view_ = before;
        }
    } else if (LeftToView(Entry(RangeAxis::Y), document_.ranges)) {
        ScaleYLikeX();
    }
    UpdateMapping();
    Announce(before);
}

ViewControl::Snapshot ViewControl::TakeSnapshot() const
{
    Snapshot snapshot{view_, document_.ranges, {}};
    for (const document::Parameter& parameter : document_.parameters) {
        snapshot.parameter_states.push_back(parameter.state);
    }
    return snapshot;
}

void ViewControl::RestoreRanges(const Snapshot& snapshot)
{
    for (const AxisEntry& entry : kAxes) CopyBounds(entry, snapshot.view, view_);
    document_.ranges = snapshot.texts;
    auto state = snapshot.parameter_states.begin();
    for (document::Parameter& parameter : document_.parameters) parameter.state = *state++;
    UpdateMapping();
}

std::vector<RangeFault> ViewControl::TakeTyped(const RangeTexts& typed)
{
    RangeTexts& texts = document_.ranges;
    std::vector<RangeFault> faults;
    for (const AxisEntry& entry : kAxes) {
        if (SameTexts(entry, typed, texts)) continue;
        if (LeftToView(entry, typed)) {
            texts.y_lower.clear();
            texts.y_upper.clear();
            y_is_free_ = true;
            continue;
        }
        const document::RangeBounds bounds = document::ReadRangeBounds(
            parser_, document_, typed.*entry.lower_text, typed.*entry.upper_text);
        if (!bounds.fault.empty()) {
            faults.push_back(FaultOf(entry, bounds));
            continue;
        }
        texts.*entry.lower_text = typed.*entry.lower_text;
        texts.*entry.upper_text = typed.*entry.upper_text;
        view_.*entry.lower = bounds.lower;
        view_.*entry.upper = bounds.upper;
        if (entry.axis == RangeAxis::Y) y_is_free_ = false;
    }
    return faults;
}

std::vector<RangeFault> ViewControl::TakeRanges(const RangeTexts& typed)
{
    const Snapshot before = TakeSnapshot();
    const bool y_was_free = y_is_free_;
    std::vector<RangeFault> faults = TakeTyped(typed);
    const bool y_left = LeftToView(Entry(RangeAxis::Y), document_.ranges);
    if (y_left && !LeftToView(Entry(RangeAxis::Y), before.texts)) ScaleYLikeX();
    // What was typed stays as the ranges' terms, what follows becomes numbers.
    const ViewRange typed_view = view_;
    KeepRatio(before.view);
    if (!CanBeDisplayed(view_)) {
        RestoreRanges(before);
        y_is_free_ = y_was_free;
        faults.push_back({RangeAxis::X, RangeBound::Both,
                          "Der Bereich ist zu schmal oder zu groß für die Darstellung"});
        return faults;
    }
    StateByNumbers(typed_view);
    MarkParameters();
    UpdateMapping();
    const bool moved = !SameBounds(RangeAxis::X, before.view, view_) ||
                       !SameBounds(RangeAxis::Y, before.view, view_);
    if (moved) Remember(Run::None, before.view);
    if (listener_ == nullptr) return faults;
    for (const AxisEntry& entry : kAxes) {
        const bool refused = std::ranges::any_of(
            faults, [&entry](const RangeFault& fault) { return fault.axis == entry.axis; });
        if (refused) continue;  // what was typed waits for its correction
        if (entry.axis == RangeAxis::X) listener_->updatex();
        if (entry.axis == RangeAxis::Y) listener_->updatey();
        if (entry.axis == RangeAxis::T) listener_->updatet();
    }
    listener_->RedrawGraph();
    return faults;
}

void ViewControl::UseStandardRange()
{
    const Snapshot before = TakeSnapshot();
    document_.ranges = {};
    for (const AxisEntry& entry : kAxes) ForgetParameters(entry.state_bit);
    y_is_free_ = true;
    render::SetStandardRange(view_);
    view_.t_min = 0;
    view_.t_max = 2 * std::numbers::pi;
    UpdateMapping();
    const bool moved = !SameBounds(RangeAxis::X, before.view, view_) ||
                       !SameBounds(RangeAxis::Y, before.view, view_);
    if (moved) Remember(Run::None, before.view);
    if (listener_ == nullptr) return;
    listener_->updatex();
    listener_->updatey();
    listener_->updatet();
    listener_->RedrawGraph();
}

}  // namespace korvinth::app
