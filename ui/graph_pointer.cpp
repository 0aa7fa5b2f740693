#include "ui/graph_pointer.h"

#include <QContextMenuEvent>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QRubberBand>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "ui/click_button.h"

namespace korvinth::ui {
namespace {

constexpr int kArrowPercent = 10;
constexpr int kPagePercent = 50;
constexpr double kWheelStep = 120;  // eighths of a degree in one step of a wheel

}  // namespace

GraphPointer::GraphPointer(QWidget& area, const render::ViewRange& view, GraphGestures& gestures)
    : QObject(&area),
      area_(area),
      view_(view),
      gestures_(gestures),
      frame_(new QRubberBand(QRubberBand::Rectangle, &area))
{
    frame_->setObjectName("frame");
    area_.grabGesture(Qt::PinchGesture);
    area_.installEventFilter(this);
}

void GraphPointer::SetMode(PointerMode mode)
{
    Cancel();
    if (mode == mode_) return;
    mode_ = mode;
    ShowCursor();
    Q_EMIT modeChanged(mode);
    Q_EMIT moved();
}

QPointF GraphPointer::AreaUnits(QPointF pixels) const
{
    return {pixels.x() * view_.twips_per_pixel_x, pixels.y() * view_.twips_per_pixel_y};
}

void GraphPointer::ShowCursor()
{
    if (dragging_) {
        area_.setCursor(Qt::ClosedHandCursor);
    } else if (mode_ == PointerMode::Move) {
        area_.setCursor(Qt::OpenHandCursor);
    } else if (mode_ == PointerMode::ZoomFrame) {
        area_.setCursor(Qt::CrossCursor);
    } else {
        area_.unsetCursor();
    }
}

void GraphPointer::SetPlace(std::optional<QPointF> place)
{
    place_ = place;
    Q_EMIT moved();
}

bool GraphPointer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != &area_) return false;
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick: return Press(static_cast<const QMouseEvent&>(*event));
        case QEvent::MouseMove: return Move(static_cast<const QMouseEvent&>(*event));
        case QEvent::MouseButtonRelease: return Release(static_cast<const QMouseEvent&>(*event));
        case QEvent::Wheel: return Wheel(static_cast<const QWheelEvent&>(*event));
        case QEvent::KeyPress: return Key(static_cast<const QKeyEvent&>(*event));
        case QEvent::Gesture: return Pinch(static_cast<const QGestureEvent&>(*event));
        case QEvent::NativeGesture: return Pinch(static_cast<const QNativeGestureEvent&>(*event));
        case QEvent::ContextMenu: return ContextMenu(static_cast<const QContextMenuEvent&>(*event));
        case QEvent::Leave: SetPlace(std::nullopt); return false;
        case QEvent::Hide: Cancel(); return false;
        default: return false;
    }
}

bool GraphPointer::Press(const QMouseEvent& event)
{
    if (Busy()) return true;
    cancelled_button_ = Qt::NoButton;
    const bool left = event.button() == Qt::LeftButton;
    if (left && mode_ == PointerMode::ZoomFrame) {
        frame_start_ = event.position().toPoint();
        return true;
    }
    const bool plain = left && mode_ == PointerMode::Plain && KeysOf(event.modifiers()) == 0;
    if (plain && points_ != nullptr) {
        const QPointF place = AreaUnits(event.position());
        point_held_ = points_->GrabPoint(place.x(), place.y());
        if (point_held_) return true;
    }
    const bool moves = left && mode_ == PointerMode::Move && KeysOf(event.modifiers()) == 0;
    if (moves || event.button() == Qt::MiddleButton) {
        dragging_ = true;
        drag_button_ = event.button();
        drag_start_ = AreaUnits(event.position());
        gestures_.BeginDrag();
        ShowCursor();
    }
    return true;
}

bool GraphPointer::Move(const QMouseEvent& event)
{
    const QPointF place = AreaUnits(event.position());
    if (point_held_) {
        points_->DragPoint(place.x(), place.y());
    } else if (dragging_) {
        gestures_.Drag(place.x() - drag_start_.x(), place.y() - drag_start_.y());
    } else if (frame_start_) {
        // Both corners belong to the frame.
        const QPoint corner = event.position().toPoint();
        const auto [left, right] = std::minmax({frame_start_->x(), corner.x()});
        const auto [top, bottom] = std::minmax({frame_start_->y(), corner.y()});
        frame_->setGeometry(QRect(QPoint(left, top), QPoint(right, bottom)) & area_.rect());
        frame_->show();
    }
    SetPlace(place);
    return true;
}

bool GraphPointer::Release(const QMouseEvent& event)
{
    if (point_held_) {
        if (event.button() == Qt::LeftButton) {
            point_held_ = false;
            points_->DropPoint();
        }
        return true;
    }
    if (dragging_) {
        if (event.button() == drag_button_) EndDrag();
        return true;
    }
    if (frame_start_) {
        if (event.button() == Qt::LeftButton) ReleaseFrame(event);
        return true;
    }
    // What Esc has ended is no click.
    if (event.button() == std::exchange(cancelled_button_, Qt::NoButton)) return true;
    const unsigned keys = KeysOf(event.modifiers());
    const QPointF place = AreaUnits(event.position());
    if (keys != 0) {
        gestures_.zoom(ButtonOf(event.button()), keys, place.x(), place.y());
    } else if (event.button() == Qt::RightButton) {
        Q_EMIT menuWanted(event.globalPosition().toPoint(), place);
    } else if (event.button() == Qt::LeftButton && mode_ == PointerMode::Plain) {
        Q_EMIT plainClicked();
    }
    return true;
}

void GraphPointer::ReleaseFrame(const QMouseEvent& event)
{
    const QRect drawn = frame_->isHidden() ? QRect() : frame_->geometry();
    frame_->hide();
    frame_start_.reset();
    const QPointF place = AreaUnits(event.position());
    const QPointF corner = AreaUnits(drawn.topLeft());
    const QPointF extent = AreaUnits({1.0 * drawn.width(), 1.0 * drawn.height()});
    if (gestures_.ZoomToFrame({corner.x(), corner.y(), extent.x(), extent.y()})) {
        SetMode(PointerMode::Plain);
    } else {
        gestures_.zoom(ButtonOf(event.button()), KeysOf(event.modifiers()), place.x(), place.y());
    }
}

// The mouse asks for the menu when the button is released; the menu key opens it at the mark.
bool GraphPointer::ContextMenu(const QContextMenuEvent& event)
{
    if (event.reason() != QContextMenuEvent::Keyboard || Busy()) return true;
    Q_EMIT menuWanted(event.globalPos(), AreaUnits(event.pos()));
    return true;
}

void GraphPointer::EndDrag()
{
    dragging_ = false;
    gestures_.EndDrag();
    ShowCursor();
}

void GraphPointer::Cancel()
{
    if (Busy()) cancelled_button_ = dragging_ ? drag_button_ : Qt::LeftButton;
    frame_->hide();
    frame_start_.reset();
    if (std::exchange(point_held_, false)) points_->CancelPoint();
    if (!std::exchange(dragging_, false)) return;
    gestures_.CancelDrag();
    ShowCursor();
}

bool GraphPointer::Wheel(const QWheelEvent& event)
{
    if (Busy()) return true;
    // With Alt held the toolkit reports the other direction; else a wheel turned sideways is none.
    const QPoint delta = event.angleDelta();
    const bool turned = delta.y() == 0 && (event.modifiers() & Qt::AltModifier) != 0;
    const double steps = (turned ? delta.x() : delta.y()) / kWheelStep;
    if (steps == 0) return true;
    const QPointF place = AreaUnits(event.position());
    gestures_.ZoomByWheel(steps, KeysOf(event.modifiers()), place.x(), place.y());
    return true;
}

bool GraphPointer::Pinch(const QGestureEvent& event)
{
    const auto* pinch = static_cast<const QPinchGesture*>(event.gesture(Qt::PinchGesture));
    if (pinch == nullptr || Busy()) return false;
    const QPointF place = AreaUnits(area_.mapFromGlobal(pinch->centerPoint()));
    if ((pinch->changeFlags() & QPinchGesture::ScaleFactorChanged) != 0) {
        gestures_.ZoomByPinch(pinch->scaleFactor(), place.x(), place.y());
    }
    return true;
}

bool GraphPointer::Pinch(const QNativeGestureEvent& event)
{
    if (event.gestureType() != Qt::ZoomNativeGesture || Busy()) return false;
    const QPointF place = AreaUnits(event.position());
    gestures_.ZoomByPinch(1 + event.value(), place.x(), place.y());
    return true;
}

bool GraphPointer::Key(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Escape && Busy()) {
        Cancel();
        return true;
    }
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
        return false;
    }
    if (Busy()) return true;
    switch (event.key()) {
        case Qt::Key_Plus: gestures_.ZoomByKey(1); return true;
        case Qt::Key_Minus: gestures_.ZoomByKey(-1); return true;
        case Qt::Key_Home: gestures_.UseStandardRange(); return true;
        case Qt::Key_Backspace: gestures_.PopView(); return true;
        default: return ScrollKey(event);
    }
}

// Shift turns the Page keys to x.
bool GraphPointer::ScrollKey(const QKeyEvent& event)
{
    int percent_x = 0;
    int percent_y = 0;
    int& of_page = (event.modifiers() & Qt::ShiftModifier) != 0 ? percent_x : percent_y;
    switch (event.key()) {
        case Qt::Key_Left: percent_x = -kArrowPercent; break;
        case Qt::Key_Right: percent_x = kArrowPercent; break;
        case Qt::Key_Down: percent_y = -kArrowPercent; break;
        case Qt::Key_Up: percent_y = kArrowPercent; break;
        case Qt::Key_PageDown: of_page = -kPagePercent; break;
        case Qt::Key_PageUp: of_page = kPagePercent; break;
        default: return false;
    }
    gestures_.ScrollByKey(percent_x, percent_y);
    return true;
}

}  // namespace korvinth::ui
