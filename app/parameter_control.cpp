#include "app/parameter_control.h"

#include <utility>

#include "document/parameter_use.h"
#include "ui/para.h"
#include "ui/parameter_column.h"
#include "ui/parameter_list.h"
#include "ui/timer_dialog.h"

namespace korvinth::app {

using document::Bounds;
using document::Parameter;
using document::ParameterIndex;
using document::SlotIndex;

namespace {

// States whose parameters occur in the range definitions.
constexpr unsigned kInAnyRange = document::kInXRange | document::kInYRange | document::kInTRange;

Bounds BoundsOf(const Parameter& parameter) { return {parameter.lower, parameter.upper}; }

}  // namespace

ParameterControl::ParameterControl(document::PlotDocument& document, term::MathParser& parser,
                                   ui::ParameterColumn& column, ui::Dialogs& dialogs,
                                   ParameterHost& host)
    : document_(document), parser_(parser), column_(column), dialogs_(dialogs), host_(host)
{
    ConnectWindows();
}

void ParameterControl::SetList(ui::ParameterList& list)
{
    using ui::ParameterList;
    list_ = &list;
    connect(&list, &ParameterList::couplingChosen, this, &ParameterControl::couplingChosen);
    connect(&list, &ParameterList::sliderWanted, this, [this](ParameterIndex index) {
        ShowWindow(index, true);
        column_.Reveal(index);
    });
    connect(&list, &ParameterList::showAllWanted, this, &ParameterControl::ShowAllWindows);
    connect(&list, &ParameterList::familyParameterChosen, this,
            [this](ParameterIndex index) { SetFamily(index, true); });
    connect(&list, &ParameterList::noFamilyParameterChosen, this, &ParameterControl::ReleaseFamily);
    connect(&list, &ParameterList::familyFunctionToggled, this, &ParameterControl::AllowFamily);
    ShowList();
    ShowButton();
}

ui::TimerDialog& ParameterControl::TimerSettings()
{
    if (timer_dialog_ == nullptr) {
        timer_dialog_ = new ui::TimerDialog(&column_);
        connect(timer_dialog_, &ui::TimerDialog::confirmed, this, &ParameterControl::ConfirmTimer);
    }
    return *timer_dialog_;
}

void ParameterControl::ShowList()
{
    if (list_ != nullptr) list_->refpar(document_);
}

void ParameterControl::ConnectWindows()
{
    using ui::ParameterColumn;
    connect(&column_, &ParameterColumn::sliderMoved, this,
            [this](ParameterIndex index, double value) { setpar(index, value, true); });
    connect(&column_, &ParameterColumn::valueTyped, this, &ParameterControl::TakeValue);
    connect(&column_, &ParameterColumn::boundsTyped, this, &ParameterControl::chpari);
    connect(&column_, &ParameterColumn::timerClicked, this, &ParameterControl::ClickTimer);
    connect(&column_, &ParameterColumn::timerSettingsWanted, this,
            &ParameterControl::OpenTimerDialog);
    connect(&column_, &ParameterColumn::familyChosen, this, &ParameterControl::SetFamily);
    connect(&column_, &ParameterColumn::couplingChosen, this, &ParameterControl::couplingChosen);
    connect(&column_, &ParameterColumn::couplingsReset, this, &ParameterControl::couplingsReset);
    connect(&column_, &ParameterColumn::closed, this,
            [this](ParameterIndex index) { ShowWindow(index, false); });
}

bool ParameterControl::InUse(ParameterIndex index) const
{
    return !document_.parameters[index].name.empty();
}

void ParameterControl::ShowCouplings()
{
    for (const ParameterIndex index : document::AllParameters()) {
        if (ui::Para* window = column_.Window(index)) {
            window->ShowCoupling(document_.parameters[index].coupling);
        }
    }
    ShowList();
}

void ParameterControl::InitSlider(ParameterIndex index)
{
    column_.Make(index).init(document_.parameters[index]);
}

void ParameterControl::FollowPlot()
{
    std::set<std::string> in_use;
    for (const ParameterIndex index : document::AllParameters()) {
        const std::string& name = document_.parameters[index].name;
        const bool known = shown_names_.contains(name);
        // Deliberate: the width of hatching stripes has its window only when it is asked for.
        const bool wanted =
            known ? !closed_names_.contains(name) : name != document::kStripeWidthName;
        if (InUse(index)) {
            in_use.insert(name);
            if (wanted) {
                shown_names_.insert(name);
                InitSlider(index);
            }
        }
        column_.ShowWindow(index, InUse(index) && wanted);
    }
    std::erase_if(shown_names_, [&](const std::string& name) { return !in_use.contains(name); });
    std::erase_if(closed_names_, [&](const std::string& name) { return !in_use.contains(name); });
    FollowRange();
    ShowList();
    ShowButton();
}

// A range that has not changed leaves bounds alone that the user has typed since.
void ParameterControl::FollowRange()
{
    const Bounds displayed = host_.DisplayedXRange();
    for (const SlotIndex slot : document::AllSlots()) {
        const ParameterIndex index = document::LowerBoundParameter(slot);
        if (!InUse(index)) {
            followed_[slot] = {};
            continue;
        }
        const Bounds bounds = IntegralBoundRange(parser_, document_, slot, displayed);
        if (std::exchange(followed_[slot], bounds) != bounds) setparb(index, bounds);
    }
}

void ParameterControl::ShowWindow(ParameterIndex index, bool visible)
{
    if (!InUse(index)) return;
    const std::string& name = document_.parameters[index].name;
    shown_names_.insert(name);
    if (visible) {
        closed_names_.erase(name);
        if (!column_.IsShown(index)) InitSlider(index);
    } else {
        closed_names_.insert(name);
    }
    column_.ShowWindow(index, visible);
    ShowButton();
}

void ParameterControl::ShowAllWindows(bool visible)
{
    for (const ParameterIndex index : document::AllParameters()) ShowWindow(index, visible);
}

void ParameterControl::ShowButton()
{
    if (list_ == nullptr) return;
    std::size_t in_use = 0;
    for (const ParameterIndex index : document::AllParameters()) in_use += InUse(index) ? 1 : 0;
    list_->schalt(in_use > 0 && column_.Shown().size() == in_use);
}

void ParameterControl::setpar(ParameterIndex index, double value, bool from_slider)
{
    if (!InUse(index)) return;
    const Parameter& parameter = document_.parameters[index];
    const double accepted = document::AcceptedValue(value, parameter.state);
    // The parser knows the new value before the ranges are read, so that they do not lag behind.
    document::SetParameterValue(document_, parser_, index, accepted);
    if ((parameter.state & kInAnyRange) != 0) RereadRanges();
    ui::Para* window = column_.Window(index);
    if (window != nullptr && !from_slider) window->PlaceSlider(accepted);
    Redraw();
    if (window != nullptr) window->ShowValue(accepted);
}

void ParameterControl::RereadRanges()
{
    ranges_wait_ = held_ > 0;
    if (!ranges_wait_) host_.RereadRanges();
}

// Bounds of integrals come first: the ranges and the intervals of functions may use the parameter.
void ParameterControl::Redraw()
{
    redraw_waits_ = held_ > 0;
    if (redraw_waits_) return;
    FollowRange();
    host_.RedrawGraph();
    host_.RefreshCalculator();
}

void ParameterControl::Release()
{
    if (--held_ > 0) return;
    if (ranges_wait_) RereadRanges();
    if (redraw_waits_) Redraw();
}

void ParameterControl::TakeValue(ParameterIndex index, const QString& text)
{
    const double shown = document_.parameters[index].value;
    setpar(index, document::FieldValue(parser_, text.toStdString(), shown));
}

void ParameterControl::chpari(ParameterIndex index, const QString& lower, const QString& upper)
{
    if (!InUse(index)) return;
    const Bounds stored = BoundsOf(document_.parameters[index]);
    const Bounds typed{document::FieldValue(parser_, lower.toStdString(), stored.lower),
                       document::FieldValue(parser_, upper.toStdString(), stored.upper)};
    const auto refusal = CheckBounds(document_.parameters[index], typed);
    setparb(index, refusal ? stored : typed);
    if (refusal) dialogs_.ShowError(refusal->title, refusal->text);
}

void ParameterControl::setparb(ParameterIndex index, const Bounds& bounds)
{
    Parameter& parameter = document_.parameters[index];
    parameter.lower = bounds.lower;
    parameter.upper = bounds.upper;
    if (ui::Para* window = column_.Window(index)) window->ShowBounds(bounds, parameter.value);
}

void ParameterControl::ClickTimer(ParameterIndex index)
{
    // Deliberate: a parameter without a step asks for one first.
    if (document_.parameters[index].step == 0) {
        OpenTimerDialog(index);
    } else {
        Q_EMIT timerToggled(index);
    }
}

void ParameterControl::OpenTimerDialog(ParameterIndex index)
{
    if (!InUse(index)) return;
    TimerSettings().init(index, document_.parameters[index]);
    // Below the slider that it is for, not over the graph.
    if (const ui::Para* window = column_.Window(index); window != nullptr && window->isVisible()) {
        timer_dialog_->OpenBelow(*window);
        return;
    }
    timer_dialog_->open();
}

void ParameterControl::ConfirmTimer(ParameterIndex index, const QString& step,
                                    document::AnimationMode mode)
{
    if (TakeTimer(index, step, mode)) {
        timer_dialog_->accept();
    } else {
        timer_dialog_->AskAgain();
    }
}

bool ParameterControl::TakeTimer(ParameterIndex index, const QString& step,
                                 document::AnimationMode mode)
{
    Parameter& parameter = document_.parameters[index];
    const double typed = document::FieldValue(parser_, step.toStdString(), parameter.step);
    if (const auto refusal = CheckStep(typed, BoundsOf(parameter))) {
        dialogs_.ShowError(refusal->title, refusal->text);
        return false;
    }
    parameter.mode = mode;
    parameter.step = typed;
    if (ui::Para* window = column_.Window(index)) window->ShowStep(typed);
    Q_EMIT stepChanged(index);
    return true;
}

void ParameterControl::SetFamily(ParameterIndex index, bool family)
{
    for (Parameter& parameter : document_.parameters) parameter.family = false;
    for (auto& [name, parameter] : document_.dormant_parameters) parameter.family = false;
    document_.parameters[index].family = family && InUse(index);
    for (const ParameterIndex other : document::AllParameters()) {
        ui::Para* window = column_.Window(other);
        if (window != nullptr) window->ShowFamily(document_.parameters[other].family);
    }
    ShowList();
    Redraw();
    host_.FamilyChosen();
}

void ParameterControl::ReleaseFamily() { SetFamily(ParameterIndex{}, false); }

void ParameterControl::AllowFamily(SlotIndex slot, bool allowed)
{
    document_.slots[slot].family_allowed = allowed;
    Redraw();
    host_.FamilyChosen();
}

void ParameterControl::ShowRunning(ParameterIndex index, bool running)
{
    if (ui::Para* window = column_.Window(index)) window->ShowRunning(running);
}

}  // namespace korvinth::app
