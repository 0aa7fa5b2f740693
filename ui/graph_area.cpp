#include "ui/graph_area.h"

#include <QPainter>
#include <utility>

namespace korvinth::ui {

GraphArea::GraphArea(std::function<QImage()> draw, QWidget* parent)
    : QWidget(parent), draw_(std::move(draw))
{
    setObjectName("Picture1");
    setAccessibleName("Zeichenfläche");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(160, 120);
}

void GraphArea::Outdate()
{
    outdated_ = true;
    update();
}

const QImage& GraphArea::Image()
{
    if (std::exchange(outdated_, false)) {
        image_ = draw_();
        Q_EMIT drawn();
    }
    return image_;
}

void GraphArea::SetMark(std::optional<QPointF> mark)
{
    if (mark == mark_) return;
    mark_ = mark;
    update();
}

void GraphArea::paintEvent(QPaintEvent*)
{
    const QImage& image = Image();
    QPainter painter(this);
    if (image.isNull()) {
        painter.fillRect(rect(), Qt::white);
    } else {
        painter.drawImage(rect(), image);
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
