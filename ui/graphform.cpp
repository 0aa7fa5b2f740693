#include "ui/graphform.h"

#include <QPainter>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "render/qt/raster_surface.h"

namespace korvinth::ui {

GraphArea::GraphArea(QWidget* parent) : QWidget(parent)
{
    setObjectName("Picture1");
    setAccessibleName("Zeichenfläche");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(160, 120);
}

void GraphArea::Show(const QImage& image)
{
    image_ = image;
    update();
}

void GraphArea::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (image_.isNull()) {
        painter.fillRect(rect(), Qt::white);
    } else {
        painter.drawImage(rect(), image_);
    }
}

void GraphArea::resizeEvent(QResizeEvent*) { Q_EMIT resized(); }

GraphForm::GraphForm(Drawing drawing, QWidget* parent)
    : QWidget(parent), drawing_(std::move(drawing)), area_(new GraphArea(this))
{
    setObjectName("graphform");
    setWindowTitle("Funktionenplotter");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area_);
    connect(area_, &GraphArea::resized, this, &GraphForm::areaResized);
}

QSize GraphForm::AreaSize() const { return area_->size().expandedTo({1, 1}); }

void GraphForm::Redraw()
{
    const QSize size = AreaSize();
    const double scale = area_->devicePixelRatioF();
    const int steps = render::kSmoothSteps * static_cast<int>(std::ceil(scale));
    render::RasterSurface surface(size.width(), size.height(), steps, scale);
    drawing_(surface);
    surface.Refresh();
    area_->Show(surface.Image());
}

}  // namespace korvinth::ui
