#include "ui/graph_tracer.h"

#include <QKeyEvent>
#include <QWidget>

#include "ui/graph_pointer.h"

namespace korvinth::ui {
namespace {

constexpr int kFarStep = 10;

// How far to move a view of this size, in percent of it, so that a place outside comes to lie a
// quarter of it inside.
double PercentToReach(double place, double size)
{
    constexpr double kInside = 25;
    if (place < 0) return 100 * place / size - kInside;
    if (place > size) return 100 * (place - size) / size + kInside;
    return 0;  // also for a place that there is not
}

}  // namespace

GraphTracer::GraphTracer(QWidget& area, const GraphPointer& pointer, const render::ViewRange& view,
                         GraphGestures& gestures)
    : QObject(&area), pointer_(pointer), view_(view), gestures_(gestures)
{
    area.installEventFilter(this);
}

void GraphTracer::SetActive(bool active)
{
    if (trace_ == nullptr || active == Active()) return;
    if (active && !trace_->Begin()) {
        Q_EMIT refused();
        return;
    }
    if (!active) trace_->End();
    Q_EMIT activeChanged(active);
    if (!active) return;
    KeepInView();
    Q_EMIT moved();
}

std::optional<render::ProbedPoint> GraphTracer::Point()
{
    if (!Active()) return std::nullopt;
    auto point = trace_->Point();
    if (!point) SetActive(false);
    return point;
}

bool GraphTracer::eventFilter(QObject*, QEvent* event)
{
    return event->type() == QEvent::KeyPress && !pointer_.Busy() &&
           Key(static_cast<const QKeyEvent&>(*event));
}

bool GraphTracer::Key(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_T && event.modifiers() == Qt::NoModifier) {
        SetActive(!Active());
        return true;
    }
    if (!Active()) return false;
    if (event.key() == Qt::Key_Escape) {
        SetActive(false);
        return true;
    }
    if (!MoveByKey(event)) return false;
    KeepInView();
    Q_EMIT moved();
    return true;
}

bool GraphTracer::MoveByKey(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers keys = event.modifiers() & ~Qt::KeypadModifier;
    const bool far = keys == Qt::ControlModifier;
    if (keys != Qt::NoModifier && !far) return false;
    const int step = far ? kFarStep : 1;
    switch (event.key()) {
        case Qt::Key_Left: trace_->Move(-step); return true;
        case Qt::Key_Right: trace_->Move(step); return true;
        case Qt::Key_Up: trace_->ChangeGraph(-1); return true;
        case Qt::Key_Down: trace_->ChangeGraph(1); return true;
        case Qt::Key_Home: trace_->MoveToFirst(); return true;
        case Qt::Key_End: trace_->MoveToLast(); return true;
        default: return false;
    }
}

// A run of keys is one entry of the view's history.
void GraphTracer::KeepInView()
{
    const auto point = trace_->Point();
    if (!point) return;
    const double x = PercentToReach(view_.AreaX(point->x), view_.area_width);
    const double y = PercentToReach(view_.AreaY(point->y), view_.area_height);
    if (x != 0 || y != 0) gestures_.ScrollByKey(x, -y);
}

}  // namespace korvinth::ui
