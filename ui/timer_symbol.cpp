#include "ui/timer_symbol.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace korvinth::ui {

TimerSymbol::TimerSymbol(QWidget* parent) : QAbstractButton(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
}

void TimerSymbol::SetFramed(bool framed)
{
    framed_ = framed;
    update();
}

void TimerSymbol::SetStep(bool has_step)
{
    has_step_ = has_step;
    update();
}

QSize TimerSymbol::sizeHint() const
{
    const int side = fontMetrics().height() + 4;
    return {side, side};
}

void TimerSymbol::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1);
    const QColor accent = palette().color(QPalette::Highlight);
    if (framed_) {
        QColor ground = accent;
        ground.setAlphaF(0.18F);
        painter.setPen(QPen(accent, 1.5));
        painter.setBrush(ground);
        painter.drawRoundedRect(area, 3, 3);
    } else if (hasFocus() || underMouse()) {
        painter.setPen(QPen(hasFocus() ? accent : palette().color(QPalette::Mid), 1));
        painter.drawRoundedRect(area, 3, 3);
    }

    // A stop watch: case, crown, hand.
    QColor ink = palette().color(QPalette::WindowText);
    if (!has_step_) ink.setAlphaF(0.45F);
    const qreal unit = area.height() / 20;
    const QPointF centre(area.center().x(), area.center().y() + unit * 1.2);
    const qreal radius = 5.8 * unit;
    painter.setPen(QPen(ink, 1.5 * unit, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(centre, radius, radius);
    painter.drawLine(QPointF(centre.x(), centre.y() - radius),
                     QPointF(centre.x(), centre.y() - radius - 2 * unit));
    painter.drawLine(QPointF(centre.x() - 1.8 * unit, centre.y() - radius - 2.2 * unit),
                     QPointF(centre.x() + 1.8 * unit, centre.y() - radius - 2.2 * unit));
    painter.drawLine(centre, QPointF(centre.x() + 2.2 * unit, centre.y() - 2.6 * unit));
}

void TimerSymbol::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

void TimerSymbol::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) Q_EMIT settingsWanted();
    QAbstractButton::mousePressEvent(event);
}

void TimerSymbol::contextMenuEvent(QContextMenuEvent* event)
{
    // The right button has asked already when it went down.
    if (event->reason() != QContextMenuEvent::Mouse) Q_EMIT settingsWanted();
    event->accept();
}

}  // namespace korvinth::ui
