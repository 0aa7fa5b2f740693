// Turns what mouse, wheel, fingers and keys do in the graph's area into gestures.
#pragma once

#include <QObject>
#include <QPoint>
#include <QPointF>
#include <optional>

#include "render/view_range.h"
#include "ui/graph_gestures.h"

class QContextMenuEvent;
class QGestureEvent;
class QKeyEvent;
class QMouseEvent;
class QNativeGestureEvent;
class QRubberBand;
class QWheelEvent;
class QWidget;

namespace korvinth::ui {

// What the left button does in the area.
enum class PointerMode { Move = 1, ZoomFrame = 2, Plain = 4 };

class GraphPointer : public QObject
{
    Q_OBJECT
public:
    // Watches the events of `area`, whose child it becomes.
    GraphPointer(QWidget& area, const render::ViewRange& view, GraphGestures& gestures);

    PointerMode Mode() const { return mode_; }
    void SetMode(PointerMode mode);
    // Where the pointer is while it only points, in area units.
    std::optional<QPointF> Place() const { return place_; }
    // While a drag or a frame is on its way.
    bool Busy() const { return dragging_ || frame_start_ || point_held_; }
    // Outlives the pointer; without one there are no points to take hold of.
    void SetPointHandle(PointHandle* points) { points_ = points; }

Q_SIGNALS:
    void modeChanged(korvinth::ui::PointerMode mode);
    void moved();         // Place() is another one
    void plainClicked();  // left, no key, plain mode
    // Right button, no key; or the menu key.
    void menuWanted(QPoint global, QPointF place);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Press(const QMouseEvent& event);
    bool Move(const QMouseEvent& event);
    bool Release(const QMouseEvent& event);
    bool Wheel(const QWheelEvent& event);
    bool Pinch(const QGestureEvent& event);
    bool Pinch(const QNativeGestureEvent& event);
    bool ContextMenu(const QContextMenuEvent& event);
    bool Key(const QKeyEvent& event);
    bool ScrollKey(const QKeyEvent& event);
    void ReleaseFrame(const QMouseEvent& event);
    void EndDrag();
    void Cancel();
    void SetPlace(std::optional<QPointF> place);
    void ShowCursor();
    QPointF AreaUnits(QPointF pixels) const;

    QWidget& area_;
    const render::ViewRange& view_;
    GraphGestures& gestures_;
    QRubberBand* frame_;
    PointerMode mode_ = PointerMode::Plain;
    std::optional<QPointF> place_;
    bool dragging_ = false;
    PointHandle* points_ = nullptr;
    bool point_held_ = false;
    Qt::MouseButton drag_button_ = Qt::NoButton;
    Qt::MouseButton cancelled_button_ = Qt::NoButton;  // still held after Esc
    QPointF drag_start_;                               // area units
    std::optional<QPoint> frame_start_;
};

}  // namespace korvinth::ui
