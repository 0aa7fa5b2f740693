// The area `Picture1` of the graph window: shows an image and a mark on it.
#pragma once

#include <QImage>
#include <QPointF>
#include <QWidget>
#include <functional>
#include <optional>

namespace korvinth::ui {

class GraphArea : public QWidget
{
    Q_OBJECT
public:
    // `draw` gives the image when one is asked for.
    GraphArea(std::function<QImage()> draw, QWidget* parent);

    // The image is out of date; the next painting asks for a new one. Calls before that are one.
    void Outdate();
    // The present image, without the mark.
    const QImage& Image();
    void SetMark(std::optional<QPointF> mark);  // in pixels
    std::optional<QPointF> Mark() const { return mark_; }

    QSize sizeHint() const override { return {640, 480}; }

Q_SIGNALS:
    void resized();
    void drawn();  // a new image was made

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    std::function<QImage()> draw_;
    QImage image_;
    bool outdated_ = false;
    std::optional<QPointF> mark_;
};

}  // namespace korvinth::ui
