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

// What the left button does in the area.
enum class PointerMode { Move = 1, ZoomFrame = 2, Plain = 4 };

// The window `graphform`: area, scroll bars, status line, zoom buttons. Turns what the hand does
// into gestures; where a click means something else, tells by signals.
class GraphForm : public QWidget
{
    Q_OBJECT
public:
    using Drawing = std::function<void(render::DrawingSurface&)>;
    // The point of a graph near a place of the area, if there is one.
    using Probe = std::function<std::optional<render::ProbedPoint>(double area_x, double area_y)>;

    // `drawing` draws the whole picture. `view` and `gestures` outlive the window.
    GraphForm(const render::ViewRange& view, GraphGestures& gestures, Drawing drawing,
              QWidget* parent = nullptr);
    void SetProbe(Probe probe);

    // Has the picture drawn anew when the events at hand are done; calls before that are one.
    void Redraw();
    // Size of the area in pixels as the toolkit counts them, at least 1 by 1. A screen of more dots
    // shows a finer picture of the same size.
    QSize AreaSize() const;
    // The present picture, without pointer marks.
    const QImage& Picture();

    PointerMode Mode() const { return mode_; }
    void SetMode(PointerMode mode);

Q_SIGNALS:
    void areaResized();                          // the picture is to be drawn for a new size
    void modeChanged(ui::PointerMode mode);      // check marks of the mode entries
    void pointerMoved(double x, double y);       // world, in the plain mode
    void plainClicked();                         // left, no key, plain mode
    void menuWanted(QPoint global, double x, double y);  // right click without keys; area units
    void rangeWindowWanted();
    void zoomFactorsWanted();
};

}  // namespace korvinth::ui
