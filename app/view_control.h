// Every change of the displayed ranges: typed, by hand, by parameters, by the size of the area.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "document/plot_document.h"
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
};

// Whether one range follows when the other or the area changes, so that both axes keep one scale.
// When both ranges changed, X has y follow and Y has x follow.
enum class KeptRatio { None, X, Y };

// Owns the view and its history. After a change: mapping, texts of the ranges in the document,
// listener, redraw. A range that a gesture has moved is stated by numbers from then on, no longer
// by the terms that were typed.
class ViewControl final : public ui::GraphGestures, public ui::RangeActions
{
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    // Both outlive the object. The mapping is there from the start, the standard range displayed.
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
    // A parameter has a new value: reads the ranges whose terms use it, if any, past the history
    // and without redrawing. A range that cannot be displayed now stays as it is.
    void FollowParameter(document::ParameterIndex index);

    void SetKeptRatio(KeptRatio kept);  // applied at once
    KeptRatio Kept() const { return kept_ratio_; }
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
    void ScrollByKey(std::int16_t percent_x, std::int16_t percent_y) override;
    void ZoomByKey(int steps) override;
    void einszueins(render::ClickButton button) override;
    void UseStandardRange() override;
    void PopView() override;
};

}  // namespace korvinth::app
