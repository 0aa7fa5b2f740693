#include "ui/graph_area.h"

#include <QPainter>
#include <utility>

namespace korvinth::ui {

GraphArea::GraphArea(Draw draw, QWidget* parent) : QWidget(parent), draw_(std::move(draw))
{
    setObjectName("Picture1");
    setAccessibleName("Zeichenfläche");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(160, 120);
    more_.setInterval(0);
    connect(&more_, &QTimer::timeout, this, [this] {
        DrawOn(false);
        update();
    });
}

void GraphArea::Outdate()
{
    outdated_ = true;
    more_.stop();
    update();
}

const QImage& GraphArea::Image()
{
    if (Unfinished()) DrawOn(true);
    return image_;
}

void GraphArea::DrawOn(bool whole)
{
    if (draw_(image_, std::exchange(outdated_, false), whole)) {
        more_.start();
    } else {
        more_.stop();
        Q_EMIT drawn();
    }
}

void GraphArea::SetMark(std::optional<QPointF> mark)
{
    if (mark == mark_) return;
    mark_ = mark;
    update();
}

void GraphArea::paintEvent(QPaintEvent*)
{
    if (outdated_) DrawOn(false);
    QPainter painter(this);
    if (image_.isNull()) {
        painter.fillRect(rect(), Qt::white);
    } else {
        painter.drawImage(rect(), image_);
    }
    if (!mark_) return;
    constexpr double kRadius = 4;
    constexpr double kRing = 1.75;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::white);
    painter.setPen(QPen(QColor(0x40, 0x40, 0x40), kRing));
    painter.drawEllipse(*mark_, kRadius, kRadius);
}

void GraphArea::resizeEvent(QResizeEvent*) { Q_EMIT resized(); }

}  // namespace korvinth::ui
