#include "ui/click_button.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace korvinth::ui {

render::ClickButton ButtonOf(Qt::MouseButton button)
{
    if (button == Qt::LeftButton) return render::ClickButton::Left;
    return button == Qt::RightButton ? render::ClickButton::Right : render::ClickButton::Other;
}

unsigned KeysOf(Qt::KeyboardModifiers modifiers)
{
    unsigned keys = 0;
    if ((modifiers & Qt::ShiftModifier) != 0) keys |= render::kShiftKey;
    if ((modifiers & Qt::ControlModifier) != 0) keys |= render::kCtrlKey;
    if ((modifiers & Qt::AltModifier) != 0) keys |= render::kAltKey;
    return keys;
}

// The mouse goes its own way, so that only keys and assistive programs come through `clicked`.
ClickButton::ClickButton(QWidget* parent) : QToolButton(parent)
{
    connect(this, &QToolButton::clicked, this, [this] {
        Q_EMIT clickedWith(shift_held_ ? render::ClickButton::Right : render::ClickButton::Left, 0);
    });
}

void ClickButton::mousePressEvent(QMouseEvent* event)
{
    setDown(true);
    event->accept();
}

void ClickButton::mouseReleaseEvent(QMouseEvent* event)
{
    const bool clicked = isDown() && rect().contains(event->position().toPoint());
    setDown(false);
    if (clicked) Q_EMIT clickedWith(ButtonOf(event->button()), KeysOf(event->modifiers()));
}

void ClickButton::keyReleaseEvent(QKeyEvent* event)
{
    shift_held_ = event->modifiers().testFlag(Qt::ShiftModifier);
    QToolButton::keyReleaseEvent(event);
    shift_held_ = false;
}

void ZoomButton::paintEvent(QPaintEvent* event)
{
    ClickButton::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // A square of 16 units in the middle of the button.
    constexpr double kUnits = 16;
    constexpr double kPart = 0.8;
    const double scale = kPart * std::min(width(), height()) / kUnits;
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(scale, scale);
    painter.translate(-kUnits / 2, -kUnits / 2);
    painter.setPen(QPen(palette().color(QPalette::ButtonText), 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawEllipse(QPointF(6.5, 6.5), 4.75, 4.75);
    painter.drawLine(QPointF(10.2, 10.2), QPointF(14.5, 14.5));
}

}  // namespace korvinth::ui
