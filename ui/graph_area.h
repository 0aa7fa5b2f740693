// The area `Picture1` of the graph window: shows an image and a mark on it, and tells in words what
// they show.
#pragma once

#include <QImage>
#include <QPointF>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>

namespace korvinth::ui {

class GraphArea : public QWidget
{
    Q_OBJECT
public:
    // Draws on: at an image begun anew, or at the present one. `whole` has it finished before it
    // returns, else it returns after a moment. False when the image is complete.
    using Draw = std::function<bool(QImage& image, bool anew, bool whole)>;
    GraphArea(Draw draw, QWidget* parent);

    // The image is out of date; the next painting asks for a new one. Calls before that are one.
    void Outdate();
    // The whole image, without the mark.
    const QImage& Image();
    // An image is shown that is not complete yet; the rest is drawn between events.
    bool Unfinished() const { return outdated_ || more_.isActive(); }
    void SetMark(std::optional<QPointF> mark);  // in pixels
    std::optional<QPointF> Mark() const { return mark_; }
    // The values at a mark that keys move, heard when they change; "" without one.
    void TellValues(const QString& values);
    const QString& ToldValues() const { return told_values_; }

    QSize sizeHint() const override { return {640, 480}; }
    // The place of the cursor is that of the mark, for the menu key.
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

Q_SIGNALS:
    void resized();
    void drawn();  // a new image was made

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void DrawOn(bool whole);

    Draw draw_;
    QImage image_;
    QTimer more_;  // runs while there is more to draw
    bool outdated_ = false;
    double drawn_ratio_ = 1;  // of the screen's dots to pixels, when the image was begun
    std::optional<QPointF> mark_;
    QString told_values_;
};

}  // namespace korvinth::ui
