// Every change of the displayed ranges: typed, by hand, by parameters, by the size of the area.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "document/plot_document.h"
#include "document/plot_entry.h"
#include "document/range_bounds.h"
#include "render/view_history.h"
#include "render/view_range.h"
#include "render/view_zoom.h"
#include "term/math_parser.h"
#include "ui/graph_gestures.h"
#include "ui/range_actions.h"

namespace korvinth::app {

// What the windows show of the view.
class ViewListener
{
public:
    virtual ~ViewListener() = default;
    virtual void updatex() = 0;  // the range window shows the x-range
    virtual void updatey() = 0;
    virtual void updatet() = 0;
    virtual void RedrawGraph() = 0;
    virtual void HistoryChanged(bool can_go_back) = 0;
    // A range was typed whose terms name something new: the plot is to be rebuilt, which makes
    // parameters of such names.
    virtual void CollectParameters() {}
    // The ranges that were accepted are in force now; what they were before.
    virtual void ParametersCollected(const document::RangeTexts& /*before*/) {}
};

using document::KeptRatio;

// Owns the view and its history. After a change: mapping, texts of the ranges in the document,
// listener, redraw. A range that a gesture has moved is stated by numbers from then on, no longer
// by the terms that were typed.
class ViewControl final : public ui::GraphGestures, public ui::RangeActions
{
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    // Both outlive the object. Displays the standard range.
    ViewControl(term::MathParser& parser, document::PlotDocument& document,
                Clock clock = std::chrono::steady_clock::now);

    const render::ViewRange& View() const { return view_; }
    const render::ViewHistory& History() const { return history_; }
    void SetListener(ViewListener* listener) { listener_ = listener; }

    // Pixels of the screen. Redraws nothing, since more than the view depends on the size.
    void SetAreaSize(int width, int height);
    void UpdateMapping();

    // Reads the document's range texts: on behalf of a rebuild, so without history or redraw. The
    // faults, "" when all are taken; tells whether a range has changed.
    std::string ReadRanges(bool& changed);
    // Displays the ranges of an entry whose texts are in the document, as far as they can be, past
    // the history and without redrawing. ReadRanges follows.
    void TakeStated(const document::DisplayedRanges& stated);
    // Sets the state of the parameters that the ranges' terms use; ReadRanges does it as well.
    void MarkParameters();
    // A parameter has a new value: reads the ranges whose terms use it, if any, past the history
    // and without redrawing. A range that cannot be displayed now stays as it is.
    void FollowParameter(document::ParameterIndex index);

    void SetKeptRatio(KeptRatio kept);  // applied at once
    KeptRatio Kept() const { return document_.attributes.kept_ratio; }
    void SetClickZoomLocked(bool locked) { click_zoom_locked_ = locked; }
    bool ClickZoomLocked() const { return click_zoom_locked_; }
    void SetZoomFactors(const render::ZoomFactors& factors) { factors_ = factors; }
    const render::ZoomFactors& Factors() const { return factors_; }
    void ClearViewHistory();

    std::vector<ui::RangeFault> TakeRanges(const document::RangeTexts& typed) override;

    void zoom(render::ClickButton button, unsigned keys, double x, double y) override;
    bool ZoomToFrame(const render::ZoomFrame& frame) override;
    void ZoomByWheel(double steps, unsigned keys, double x, double y) override;
    void ZoomByPinch(double factor, double x, double y) override;
    void BeginDrag() override;
    void Drag(double dx, double dy) override;
    void EndDrag() override;
    void CancelDrag() override;
    void scrlr(std::int16_t percent) override;
    void scrud(std::int16_t percent) override;
    void ScrollByKey(double percent_x, double percent_y) override;
    void ZoomByKey(int steps) override;
    void einszueins(render::ClickButton button) override;
    void UseStandardRange() override;
    void PopView() override;

private:
    // Successive gestures of one kind within a second are one entry of the history.
    enum class Run { None, Wheel, Keys };

    struct Snapshot
    {
        render::ViewRange view;
        document::RangeTexts texts;
    };

    Snapshot TakeSnapshot() const { return {view_, document_.ranges}; }
    void RestoreRanges(const Snapshot& snapshot);

    // What comes after every change of the bounds. False, and the bounds are back at `before`, when
    // they cannot be displayed.
    bool Adopt(const render::ViewRange& before);
    bool KeepRatio(const render::ViewRange& before);
    bool StillLeftToView(const render::ViewRange& before) const;
    void StateByNumbers(const render::ViewRange& before);
    void Announce(const render::ViewRange& before);
    // A gesture: `change` of the bounds, and the earlier view into the history unless refused.
    bool Gesture(Run run, const std::function<void(render::ViewRange&)>& change);
    void Remember(Run run, const render::ViewRange& before);
    void AnnounceHistory();

    void ScaleYLikeX();
    void ScaleXLikeY();
    bool OneScale() const;

    bool InForce(ui::RangeAxis axis) const;
    bool LeftByZoom(ui::RangeAxis axis, const document::RangeBounds& bounds) const;
    void ForgetParameters(unsigned state_bit);
    void AnnounceTaken(const std::vector<ui::RangeFault>& faults);
    bool CollectNewNames(const document::RangeTexts& typed);
    std::vector<ui::RangeFault> TakeTyped(const document::RangeTexts& typed);

    term::MathParser& parser_;
    document::PlotDocument& document_;
    Clock clock_;
    render::ViewRange view_;
    render::ViewHistory history_;
    render::ZoomFactors factors_;
    ViewListener* listener_ = nullptr;
    bool click_zoom_locked_ = false;
    bool y_is_free_ = true;  // nobody has set the y-range since the standard range: it keeps 1:1
    Run run_ = Run::None;
    std::chrono::steady_clock::time_point run_time_{};
    std::optional<Snapshot> drag_start_;
};

}  // namespace korvinth::app
