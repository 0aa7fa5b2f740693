// The graph window: area, scroll bars, status line and zoom buttons.
#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "render/drawing_surface.h"
#include "render/graph_probe.h"
#include "render/graph_trace.h"
#include "render/qt/raster_surface.h"
#include "render/view_range.h"
#include "ui/graph_gestures.h"
#include "ui/graph_pointer.h"
#include "ui/graph_tracer.h"

class QLabel;
class QScrollBar;

namespace korvinth::ui {

class ClickButton;
class GraphArea;

// Hands what changes the view to its gestures; what means something else it tells by signals.
class GraphForm : public QWidget
{
    Q_OBJECT
public:
    // Draws the next piece of a picture; false when the picture is complete.
    using Pieces = std::function<bool()>;
    // Begins a picture.
    using Drawing = std::function<Pieces(render::DrawingSurface&)>;
    // What the picture shows, in words.
    using Description = std::function<std::string()>;
    // The point of a graph near a place of the area, if there is one.
    using Probe = std::function<std::optional<render::ProbedPoint>(double area_x, double area_y)>;

    // `drawing` draws the whole picture. `view` and `gestures` outlive the window.
    GraphForm(const render::ViewRange& view, GraphGestures& gestures, Drawing drawing,
              QWidget* parent = nullptr);
    void SetProbe(Probe probe);
    // Asked for when nothing has changed for a second.
    void SetDescription(Description description);
    // The mark that keys move; outlives the window.
    void SetTrace(render::GraphTrace* trace) { tracer_->SetTrace(trace); }
    // Outlives the window.
    void SetPointHandle(PointHandle* points) { pointer_->SetPointHandle(points); }
    // Antialiased, or by the exact pixel rules.
    void SetSmooth(bool smooth);

    // Has the picture drawn anew once the events at hand are done: calls before that are one, and
    // the picture is that of the newest view.
    void Redraw();
    // Size of the area in pixels as the toolkit counts them, at least 1 by 1. A screen of more dots
    // shows a finer picture of the same size.
    QSize AreaSize() const;
    // The whole present picture, without marks of the pointer.
    const QImage& Picture();
    // A picture that takes long is drawn in slices between events; a newer one takes its place.
    bool Unfinished() const;
    // How long a picture may take before what there is of it is shown, 100 ms unless set; later
    // slices take half of that.
    void SetSlice(std::chrono::milliseconds slice) { slice_ = slice; }

    PointerMode Mode() const { return pointer_->Mode(); }
    void SetMode(PointerMode mode) { pointer_->SetMode(mode); }

    // The arrow keys move the mark; the pointer has none meanwhile.
    bool Tracing() const { return tracer_->Active(); }
    void SetTracing(bool tracing) { tracer_->SetActive(tracing); }

Q_SIGNALS:
    void areaResized();  // the picture is to be drawn for a new size
    void modeChanged(korvinth::ui::PointerMode mode);
    void tracingChanged(bool tracing);
    void pointerMoved(double x, double y);  // world coordinates, in the plain mode
    void plainClicked();                    // left button, no key, in the plain mode
    // Right button, no key; `place` in area units.
    void menuWanted(QPoint global, QPointF place);
    void rangeWindowWanted();
    void zoomFactorsWanted();

private:
    void MakeControls();
    void ArrangeControls();
    void ClickZoomButton(render::ClickButton button, unsigned keys);
    void FollowPointer();
    void ShowReadout();
    void ShowPoint(const render::ProbedPoint& point, std::string text);
    void FollowTracing();
    void Describe();
    bool Draw(QImage& image, bool anew, bool whole);

    bool smooth_ = true;
    std::chrono::milliseconds slice_{100};
    std::unique_ptr<render::RasterSurface> surface_;  // of the picture being drawn
    Pieces pieces_;

    const render::ViewRange& view_;
    GraphGestures& gestures_;
    Drawing drawing_;
    Probe probe_;
    Description description_;
    QTimer quiet_;  // since the last change
    GraphArea* area_;
    GraphPointer* pointer_;
    GraphTracer* tracer_;
    QScrollBar* hscroll_;
    QScrollBar* vscroll_;
    QLabel* readout_;
    ClickButton* zoom_button_;
    ClickButton* one_to_one_;
};

}  // namespace korvinth::ui
