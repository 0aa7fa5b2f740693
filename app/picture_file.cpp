#include "app/picture_file.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <cmath>
#include <memory>

#include "app/page_layout.h"
#include "app/page_picture.h"
#include "app/toolkit.h"
#include "render/qt/raster_surface.h"
#include "render/qt/text_metrics.h"
#include "render/svg_surface.h"

namespace korvinth::app {
namespace {

constexpr double kMmPerInch = 25.4;
constexpr const char* kTooLarge = "Für ein Bild dieser Größe reicht der Speicher nicht";

// Texts need the toolkit's application object for their fonts; it is made here unless windows have
// one already. It needs no display.
class DrawingToolkit
{
public:
    DrawingToolkit()
    {
        if (QCoreApplication::instance() != nullptr) return;
        qputenv("QT_QPA_PLATFORM", "offscreen");
        PrepareToolkit();
        application_ = std::make_unique<QGuiApplication>(argument_count_, arguments_);
        UseGerman(*application_);
    }

private:
    char name_[9] = "korvinth";
    char* arguments_[2] = {name_, nullptr};
    int argument_count_ = 1;
    std::unique_ptr<QGuiApplication> application_;
};

// Of the screen's picture, in pixels.
QSize AreaOf(const render::ViewRange& view)
{
    return {static_cast<int>(std::lround(view.WidthInPixels())),
            static_cast<int>(std::lround(view.HeightInPixels()))};
}

// A dot is a part of a screen pixel at more than the usual resolution, so that texts and lines keep
// their size on paper.
PictureBytes MakePng(Application& application, const PictureOptions& options)
{
    const QSize dots = AreaOf(application.View());
    if (qint64{dots.width()} * dots.height() > kLargestPicture) return {"", kTooLarge, ""};
    const double scale = options.resolution / kUsualResolution;
    const bool smooth = application.Document().attributes.smooth_drawing || scale != 1;
    const int steps = render::GridSteps(smooth) * static_cast<int>(std::ceil(scale));
    render::RasterSurface surface(dots, steps, scale);
    if (surface.Image().isNull()) return {"", kTooLarge, ""};
    render::ViewRange view = application.View();
    view.area_width /= scale;
    view.area_height /= scale;
    application.Draw(surface, view);
    QImage image = surface.Image();
    constexpr double kInchesPerMetre = 1000 / kMmPerInch;
    const int dots_per_metre = static_cast<int>(std::lround(options.resolution * kInchesPerMetre));
    image.setDotsPerMeterX(dots_per_metre);
    image.setDotsPerMeterY(dots_per_metre);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) return {"", kTooLarge, ""};
    return {bytes.toStdString(), "", ""};
}

PictureBytes MakeSvg(Application& application, const PictureOptions& options)
{
    const render::ToolkitTextMetrics metrics;
    if (options.page.scale) {
        const PlacedPicture picture = ScalePicture(application.View(), *options.page.scale);
        if (!picture.fault.empty()) return {"", picture.fault, ""};
        render::SvgSurface surface(picture.width, picture.height, picture.mm_per_pixel, metrics);
        application.Draw(surface, picture.view);
        return {surface.Bytes(), "", ""};
    }
    const QSize area = AreaOf(application.View());
    render::SvgSurface surface(area.width(), area.height(), std::nullopt, metrics);
    application.Draw(surface, application.View());
    return {surface.Bytes(), "", ""};
}

PictureBytes MakeEmf(Application& application, const PictureOptions& options)
{
    const render::ToolkitTextMetrics metrics;
    const QSize area = AreaOf(application.View());
    render::MetafileSurface surface(area.width(), area.height(), options.screen, metrics);
    application.Draw(surface, application.View());
    return {surface.Bytes(), "", ""};
}

PictureBytes MakePdf(Application& application, const PictureOptions& options)
{
    constexpr int kResolution = 2540;  // a hundredth of a millimetre
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    PageReport report;
    {
        QPdfWriter writer(&buffer);
        writer.setCreator("Korvinth 2");
        writer.setResolution(kResolution);
        // The margins are the page's own matter: here they would be rounded to points.
        writer.setPageLayout(
            {QPageSize(QPageSize::A4),
             options.page.landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()});
        QPainter painter(&writer);
        if (!painter.isActive()) return {"", kTooLarge, ""};
        const QSizeF sheet = writer.pageLayout().fullRect(QPageLayout::Millimeter).size();
        report = DrawPage(painter, {QPointF(), sheet}, options.page, application);
    }
    if (!report.fault.empty()) return {"", report.fault, ""};
    return {bytes.toStdString(), "", report.note};
}

}  // namespace

PictureBytes MakePicture(Application& application, PictureFormat format,
                         const PictureOptions& options)
{
    const DrawingToolkit toolkit;
    switch (format) {
        case PictureFormat::Png: return MakePng(application, options);
        case PictureFormat::Svg: return MakeSvg(application, options);
        case PictureFormat::Pdf: return MakePdf(application, options);
        case PictureFormat::Emf: break;
    }
    return MakeEmf(application, options);
}

PictureReport WritePicture(Application& application, const std::string& file,
                           const PictureOptions& options, files::FileSystem& disk)
{
    const std::optional<PictureFormat> format = FormatOf(file);
    if (!format) return {"Bilder gibt es als .png, .svg, .pdf und .emf", ""};
    const PictureBytes picture = MakePicture(application, *format, options);
    if (!picture.fault.empty()) return {picture.fault, ""};
    const std::error_code fault = files::ReplaceFile(disk, file, picture.bytes);
    // The file itself need not be there.
    if (fault == std::errc::no_such_file_or_directory) return {"Den Ordner gibt es nicht", ""};
    if (fault) return {files::ErrorText(fault), ""};
    return {"", picture.note};
}

}  // namespace korvinth::app
