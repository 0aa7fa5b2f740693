// What exists once while the program runs, and the steps that change it in a fixed order.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/view_control.h"
#include "document/apply_plot.h"
#include "document/plot_document.h"
#include "document/plot_entry.h"
#include "render/drawing_surface.h"
#include "render/graph_probe.h"
#include "render/graph_trace.h"
#include "render/redraw_gate.h"
#include "render/renderer.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::app {

// What applying a plot asks of the windows. There are none when the program runs without a window.
class ApplyHooks
{
public:
    virtual ~ApplyHooks() = default;
    virtual void StopAnimation() = 0;
    virtual void StoreRows(document::PlotDocument& plot) = 0;
    virtual void RowsChecked(const document::PlotDocument& plot) = 0;
    virtual void InitSlider(document::ParameterIndex index) = 0;
};

// Owns the parser, the plot and the view. It is complete without windows: they write into the plot,
// call Apply, and draw through Draw.
class Application final : public document::PlotHost
{
public:
    Application();

    term::MathParser& Parser() { return parser_; }
    document::PlotDocument& Document() { return document_; }
    const render::ViewRange& View() const { return views_.View(); }
    ViewControl& Views() { return views_; }

    // The drawing area in pixels of the screen. Another width sets the sample counts anew unless
    // the settings hold them constant.
    bool SetAreaSize(int width, int height);  // whether the width is another one

    // Rebuilds the parser's state from the plot and reads the displayed ranges, which may use
    // parameters. A range that cannot be displayed is reported, the old one stays in force.
    document::PlotReport Apply();

    // Makes the entry's plot and ranges the present ones, for Apply to build. What is wrong with
    // the entry, "" when nothing.
    std::string TakeEntry(const document::CollectionEntry& entry);

    // The displayed ranges in force.
    document::DisplayedRanges Ranges() const;

    // The whole picture; the surface has the area's size.
    void Draw(render::DrawingSurface& surface) { renderer_.RedrawAll(surface); }
    // The same piece by piece.
    render::Renderer::Redraw BeginDrawing(render::DrawingSurface& surface)
    {
        return renderer_.Begin(surface);
    }
    bool ContinueDrawing(render::Renderer::Redraw& redraw) { return renderer_.Continue(redraw); }
    // The picture of another view, for files and paper; whatever belongs to the screen's stays as
    // it is. The view's derived values need not be up to date.
    void Draw(render::DrawingSurface& surface, const render::ViewRange& view);
    class Drawing;  // the same piece by piece
    // What the last drawing of the screen's picture could not do.
    const std::vector<render::Problem>& Problems() const { return renderer_.Problems(); }
    // The additional point that was drawn at a pixel.
    std::optional<std::size_t> PointAt(double pixel_x, double pixel_y) const
    {
        return renderer_.PointAt(pixel_x, pixel_y);
    }
    // Sample counts that were set by hand go, after the settings for them have changed.
    void ForgetSampleCounts();

    // The graph near a place of the area.
    std::optional<render::ProbedPoint> ProbeGraphs(double area_x, double area_y)
    {
        return render::ProbeGraphs(document_, parser_, View(), area_x, area_y);
    }

    // The mark that keys move along the graphs of the screen's picture.
    render::GraphTrace& Trace() { return trace_; }

    // Steps between the samples of a slot's graph.
    int SampleCount(document::SlotIndex slot) const { return renderer_.SampleCount(slot); }

    // The windows, while they are there; nullptr takes them away.
    void Attach(ApplyHooks* windows) { windows_ = windows; }

    // What ApplyPlot needs of the windows and the view.
    void StopAnimation() override;
    void StoreRows(document::PlotDocument& plot) override;
    void RowsChecked(const document::PlotDocument& plot) override;
    void UpdateMapping() override { views_.UpdateMapping(); }
    void InitSlider(document::ParameterIndex index) override;
    std::vector<double> DisplayedArguments() const override;

private:
    term::MathParser parser_;
    document::PlotDocument document_;
    ViewControl views_{parser_, document_};
    ApplyHooks* windows_ = nullptr;
    render::RedrawGate redraw_gate_;
    render::Renderer renderer_{document_, parser_, views_.View(), redraw_gate_};
    render::GraphTrace trace_{document_, parser_, views_.View()};
};

// After each piece the screen's picture can be drawn again. Application and surface outlive it.
class Application::Drawing
{
public:
    Drawing(Application& application, render::DrawingSurface& surface,
            const render::ViewRange& view);
    bool Continue();  // the next piece; false when the picture is complete

private:
    template <class Piece>
    void InView(Piece draw);

    Application& application_;
    render::ViewRange view_;
    const render::RedrawGate always_open_;
    render::Renderer renderer_;
    std::optional<render::Renderer::Redraw> redraw_;
};

}  // namespace korvinth::app
