// The keys that move a mark along the graphs in the graph's area.
#pragma once

#include <QObject>

#include "render/graph_trace.h"
#include "render/view_range.h"
#include "ui/graph_gestures.h"

class QKeyEvent;
class QWidget;

namespace korvinth::ui {

class GraphPointer;

// T begins and ends tracing, Esc ends it. Then the arrow keys, with Ctrl ten times as far, Home and
// End are the mark's; all other keys keep their meaning.
class GraphTracer : public QObject
{
    Q_OBJECT
public:
    // Watches the keys of `area`, whose child it becomes; they go past the pointer, but for those
    // that come while it is busy. All outlive it.
    GraphTracer(QWidget& area, const GraphPointer& pointer, const render::ViewRange& view,
                GraphGestures& gestures);

    // Without a trace there is nothing to move.
    void SetTrace(render::GraphTrace* trace) { trace_ = trace; }
    bool Active() const { return trace_ != nullptr && trace_->Active(); }
    void SetActive(bool active);
    // Where the mark is; ends tracing when its graph is gone.
    std::optional<render::ProbedPoint> Point();

Q_SIGNALS:
    void activeChanged(bool active);
    void refused();  // there is no graph
    void moved();    // by a key

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Key(const QKeyEvent& event);
    bool MoveByKey(const QKeyEvent& event);
    void KeepInView();

    const GraphPointer& pointer_;
    const render::ViewRange& view_;
    GraphGestures& gestures_;
    render::GraphTrace* trace_ = nullptr;
};

}  // namespace korvinth::ui
