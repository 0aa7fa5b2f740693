#include "app/picture_image.h"

#include <QPageSize>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "app/page_layout.h"
#include "app/page_picture.h"

namespace korvinth::app {
namespace {

constexpr double kMmPerInch = 25.4;
constexpr double kSmallestPreviewScale = 0.05;  // smaller texts are no dot high

// Of the grid to a dot.
int Steps(Application& application, double scale)
{
    const bool smooth = application.Document().attributes.smooth_drawing || scale != 1;
    return render::GridSteps(smooth) * static_cast<int>(std::ceil(scale));
}

// `scale` dots to a pixel before it is made to fit.
ImagePreview FittedImage(Application& application, const render::ViewRange& view, QSize picture,
                         double scale, QSize room)
{
    const double shrunk = std::min(
        {1.0, double(room.width()) / picture.width(), double(room.height()) / picture.height()});
    const QSize dots = (QSizeF(picture) * shrunk).toSize().expandedTo({1, 1});
    return {QImage(),
            std::make_unique<ImageDrawing>(application, view, dots,
                                           std::max(scale * shrunk, kSmallestPreviewScale)),
            ""};
}

ImagePreview PageImage(Application& application, const render::PageOptions& options, QSize room)
{
    QSizeF sheet = QPageSize(QPageSize::A4).size(QPageSize::Millimeter);
    if (options.landscape) sheet.transpose();
    // A painter takes whole dots an inch alone.
    const int resolution = std::max(
        1, static_cast<int>(std::min(room.width() / sheet.width(), room.height() / sheet.height()) *
                            kMmPerInch));
    QImage image((sheet * resolution / kMmPerInch).toSize(), QImage::Format_RGB32);
    if (image.isNull()) return {};
    image.fill(Qt::white);
    constexpr double kInchesPerMetre = 1000 / kMmPerInch;
    image.setDotsPerMeterX(static_cast<int>(std::lround(resolution * kInchesPerMetre)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    PageReport report = DrawPage(painter, {QPointF(), sheet}, options, application);
    painter.end();
    if (!report.fault.empty()) return {{}, {}, report.fault};
    return {image, {}, ""};
}

}  // namespace

render::ViewRange SizedView(const render::ViewRange& screen, const render::PictureOptions& options)
{
    render::ViewRange view = screen;
    if (options.size) {
        view.area_width = double(options.size->width) * view.twips_per_pixel_x;
        view.area_height = double(options.size->height) * view.twips_per_pixel_y;
    }
    return view;
}

QSize AreaOf(const render::ViewRange& view)
{
    return {static_cast<int>(std::lround(view.WidthInPixels())),
            static_cast<int>(std::lround(view.HeightInPixels()))};
}

QImage DrawImage(Application& application, const render::ViewRange& view, QSize dots, double scale)
{
    ImageDrawing drawing(application, view, dots, scale);
    while (drawing.Continue()) {
    }
    return drawing.Image();
}

ImageDrawing::ImageDrawing(Application& application, render::ViewRange view, QSize dots,
                           double scale)
    : surface_(dots, Steps(application, scale), scale)
{
    if (surface_.Image().isNull()) return;
    view.area_width = dots.width() / scale * view.twips_per_pixel_x;
    view.area_height = dots.height() / scale * view.twips_per_pixel_y;
    drawing_.emplace(application, surface_, view);
}

bool ImageDrawing::Continue() { return drawing_ && drawing_->Continue(); }

QImage ImageDrawing::Image()
{
    if (drawing_) surface_.Refresh();
    return surface_.Image();
}

ImagePreview PreviewImage(Application& application, render::PictureFormat format,
                          const render::PictureOptions& options, QSize room)
{
    if (format == render::PictureFormat::Pdf) return PageImage(application, options.page, room);
    if (format == render::PictureFormat::Svg && options.page.scale) {
        const PlacedPicture picture = ScalePicture(application.View(), *options.page.scale);
        if (!picture.fault.empty()) return {{}, {}, picture.fault};
        return FittedImage(application, picture.view, {picture.width, picture.height}, 1, room);
    }
    const render::ViewRange view = SizedView(application.View(), options);
    return FittedImage(application, view, AreaOf(view),
                       options.resolution / render::kUsualResolution, room);
}

}  // namespace korvinth::app
