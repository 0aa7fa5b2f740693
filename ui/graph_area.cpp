#include "ui/graph_area.h"

#include <QAccessibleWidget>
#include <QPainter>
#include <utility>

namespace korvinth::ui {
namespace {

constexpr auto kName = "Zeichenfläche";

// A picture, whose value is what a mark on it says.
class SpokenArea : public QAccessibleWidget
{
public:
    explicit SpokenArea(GraphArea* area) : QAccessibleWidget(area, QAccessible::Graphic) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Value) return QAccessibleWidget::text(kind);
        return static_cast<const GraphArea*>(widget())->ToldValues();
    }
};

QAccessibleInterface* MakeSpokenArea(const QString&, QObject* object)
{
    auto* area = qobject_cast<GraphArea*>(object);
    return area == nullptr ? nullptr : new SpokenArea(area);
}

}  // namespace

GraphArea::GraphArea(Draw draw, QWidget* parent) : QWidget(parent), draw_(std::move(draw))
{
    setObjectName("Picture1");
    QAccessible::installFactory(&MakeSpokenArea);
    setAccessibleName(kName);
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
    if (outdated_) drawn_ratio_ = devicePixelRatioF();
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

// The name too, since that of the control in hand is what all readers of screens speak.
void GraphArea::TellValues(const QString& values)
{
    if (values == told_values_) return;
    told_values_ = values;
    setAccessibleName(values.isEmpty() ? QString(kName) : values);
    QAccessibleValueChangeEvent changed(this, values);
    QAccessible::updateAccessibility(&changed);
}

void GraphArea::paintEvent(QPaintEvent*)
{
    // Another screen may have more or fewer dots.
    if (!image_.isNull() && drawn_ratio_ != devicePixelRatioF()) outdated_ = true;
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

QVariant GraphArea::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (query != Qt::ImCursorRectangle) return QWidget::inputMethodQuery(query);
    return QRect(mark_ ? mark_->toPoint() : rect().center(), QSize(1, 1));
}

void GraphArea::resizeEvent(QResizeEvent*) { Q_EMIT resized(); }

}  // namespace korvinth::ui
