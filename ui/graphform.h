// The graph window: one drawing area that shows what its drawing routine put onto a surface.
#pragma once

#include <QImage>
#include <QWidget>
#include <functional>

#include "render/drawing_surface.h"

namespace korvinth::ui {

// The area `Picture1`: shows an image, tells when its size changed.
class GraphArea : public QWidget
{
    Q_OBJECT
public:
    explicit GraphArea(QWidget* parent);
    void Show(const QImage& image);
    const QImage& Image() const { return image_; }

Q_SIGNALS:
    void resized();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QImage image_;
};

class GraphForm : public QWidget
{
    Q_OBJECT
public:
    using Drawing = std::function<void(render::DrawingSurface&)>;

    // `drawing` draws the whole picture.
    explicit GraphForm(Drawing drawing, QWidget* parent = nullptr);

    // Draws the picture anew and shows it.
    void Redraw();
    // Size of the area in pixels as the toolkit counts them, at least 1 by 1. A screen of more dots
    // shows a finer picture of the same size.
    QSize AreaSize() const;
    // What the area shows.
    const QImage& Picture() const { return area_->Image(); }

Q_SIGNALS:
    void areaResized();  // the picture is to be drawn for a new size

private:
    Drawing drawing_;
    GraphArea* area_;
};

}  // namespace korvinth::ui
