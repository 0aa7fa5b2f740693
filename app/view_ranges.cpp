// The displayed ranges as texts: read, typed, following parameters.
#include <algorithm>
#include <cctype>
#include <numbers>
#include <string_view>

#include "app/view_axes.h"
#include "app/view_control.h"
#include "document/number_text.h"
#include "document/parameter_use.h"
#include "document/range_bounds.h"

namespace korvinth::app {
namespace {

using ui::RangeBound;
using ui::RangeFault;

bool SameTexts(const AxisEntry& entry, const RangeTexts& a, const RangeTexts& b)
{
    return a.*entry.lower_text == b.*entry.lower_text && a.*entry.upper_text == b.*entry.upper_text;
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

}  // namespace

bool ViewControl::InForce(RangeAxis axis) const
{
    const AxisEntry& entry = Entry(axis);
    const RangeTexts& texts = document_.ranges;
    return texts.*entry.lower_text == document::ShortestText(view_.*entry.lower) &&
           texts.*entry.upper_text == document::ShortestText(view_.*entry.upper);
}

// Numbers that a zoom has left are taken although they are too close to be typed: they come from a
// file or from an earlier step.
bool ViewControl::LeftByZoom(RangeAxis axis, const document::RangeBounds& bounds) const
{
    const AxisEntry& entry = Entry(axis);
    const RangeTexts& texts = document_.ranges;
    if (bounds.faulty != document::FaultyBound::Both || !(bounds.lower < bounds.upper) ||
        texts.*entry.lower_text != document::ShortestText(bounds.lower) ||
        texts.*entry.upper_text != document::ShortestText(bounds.upper)) {
        return false;
    }
    ViewRange view = view_;
    view.*entry.lower = bounds.lower;
    view.*entry.upper = bounds.upper;
    return CanBeDisplayed(view);
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
        if (InForce(entry.axis)) continue;
        if (entry.axis == RangeAxis::Y) y_is_free_ = false;
        const document::RangeBounds bounds = document::ReadRangeBounds(
            parser_, document_, texts.*entry.lower_text, texts.*entry.upper_text);
        if (!bounds.fault.empty() && !LeftByZoom(entry.axis, bounds)) {
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

void ViewControl::TakeStated(const document::DisplayedRanges& stated)
{
    const ViewRange before = view_;
    view_.x_min = stated.x_lower;
    view_.x_max = stated.x_upper;
    view_.y_min = stated.y_lower;
    view_.y_max = stated.y_upper;
    view_.t_min = stated.t_lower;
    view_.t_max = stated.t_upper;
    if (!CanBeDisplayed(view_)) {
        view_ = before;
        return;
    }
    const ViewRange unscaled = view_;
    y_is_free_ = LeftToView(Entry(RangeAxis::Y), document_.ranges);
    const document::KeptRatio kept = document_.attributes.kept_ratio;
    if (kept == document::KeptRatio::Y) {
        ScaleXLikeY();
    } else if (kept == document::KeptRatio::X || y_is_free_) {
        ScaleYLikeX();
    }
    if (!CanBeDisplayed(view_)) view_ = unscaled;
    StateByNumbers(unscaled);
    UpdateMapping();
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

// New names in typed bounds become parameters; false when there are none.
bool ViewControl::CollectNewNames(const RangeTexts& typed)
{
    const Snapshot before = TakeSnapshot();
    bool found = false;
    for (const AxisEntry& entry : kAxes) {
        if (SameTexts(entry, typed, before.texts) || LeftToView(entry, typed)) continue;
        const document::RangeBounds bounds = document::ReadRangeBounds(
            parser_, document_, typed.*entry.lower_text, typed.*entry.upper_text);
        if (!bounds.unknown_name) continue;
        found = true;
        document_.ranges.*entry.lower_text = typed.*entry.lower_text;
        document_.ranges.*entry.upper_text = typed.*entry.upper_text;
    }
    if (!found || listener_ == nullptr) {
        document_.ranges = before.texts;
        return false;
    }
    listener_->CollectParameters();
    RestoreRanges(before);
    return true;
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
    const bool collected = CollectNewNames(typed);
    y_is_free_ = y_was_free;
    std::vector<RangeFault> faults = TakeTyped(typed);
    const bool y_was_left = LeftToView(Entry(RangeAxis::Y), before.texts);
    if (LeftToView(Entry(RangeAxis::Y), document_.ranges) && !y_was_left) ScaleYLikeX();
    // What was typed stays as the ranges' terms, what follows becomes numbers.
    const ViewRange typed_view = view_;
    KeepRatio(before.view);
    if (CanBeDisplayed(view_)) {
        StateByNumbers(typed_view);
        MarkParameters();
        UpdateMapping();
    } else {
        RestoreRanges(before);
        y_is_free_ = y_was_free;
        faults.push_back({RangeAxis::X, RangeBound::Both,
                          "Der Bereich ist zu schmal oder zu groß für die Darstellung"});
    }
    // What was refused needs its new parameters no longer.
    if (collected && !faults.empty()) listener_->CollectParameters();
    if (!SamePlane(before.view, view_)) Remember(Run::None, before.view);
    AnnounceTaken(faults);
    if (collected) listener_->ParametersCollected(before.texts);
    return faults;
}

void ViewControl::AnnounceTaken(const std::vector<RangeFault>& faults)
{
    if (listener_ == nullptr) return;
    const auto refused = [&faults](RangeAxis axis) {
        return std::ranges::any_of(faults,
                                   [axis](const RangeFault& fault) { return fault.axis == axis; });
    };
    // What was refused waits in its field for the correction.
    if (!refused(RangeAxis::X)) listener_->updatex();
    if (!refused(RangeAxis::Y)) listener_->updatey();
    if (!refused(RangeAxis::T)) listener_->updatet();
    listener_->RedrawGraph();
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
    if (!SamePlane(before.view, view_)) Remember(Run::None, before.view);
    AnnounceTaken({});
}

}  // namespace korvinth::app
