#include "app/picture_file.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QPdfWriter>
#include <cmath>
#include <memory>

#include "app/page_layout.h"
#include "app/page_picture.h"
#include "app/picture_image.h"
#include "app/toolkit.h"
#include "files/path_text.h"
#include "render/qt/text_metrics.h"
#include "render/svg_surface.h"

namespace korvinth::app {
namespace {

constexpr double kMmPerInch = 25.4;
// As the toolkit counts, from 0 for the smallest file to 100 for the quickest writing. A graph
// takes four fifths of the usual time and 4 % more bytes.
constexpr int kPngQuality = 50;
constexpr const char* kTooLarge = "Für ein Bild dieser Größe reicht der Speicher nicht";

// Texts need the toolkit's application object for their fonts; it is made here unless windows have
// one already. It needs no display.
class DrawingToolkit
{
public:
    DrawingToolkit()
    {
        if (QCoreApplication::instance() != nullptr) return;
#ifndef Q_OS_WIN  // where a display is never missing and its plugin is the one that is installed
        qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
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

PictureBytes MakePng(Application& application, const render::PictureOptions& options)
{
    const render::ViewRange view = SizedView(application.View(), options);
    const QSize dots = AreaOf(view);
    if (qint64{dots.width()} * dots.height() > render::kLargestPicture) return {"", kTooLarge, ""};
    QImage image =
        DrawImage(application, view, dots, options.resolution / render::kUsualResolution);
    if (image.isNull()) return {"", kTooLarge, ""};
    constexpr double kInchesPerMetre = 1000 / kMmPerInch;
    const int dots_per_metre = static_cast<int>(std::lround(options.resolution * kInchesPerMetre));
    image.setDotsPerMeterX(dots_per_metre);
    image.setDotsPerMeterY(dots_per_metre);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG", kPngQuality)) return {"", kTooLarge, ""};
    return {bytes.toStdString(), "", ""};
}

PictureBytes MakeSvg(Application& application, const render::PictureOptions& options)
{
    const render::ToolkitTextMetrics metrics;
    if (options.page.scale) {
        const PlacedPicture picture = ScalePicture(application.View(), *options.page.scale);
        if (!picture.fault.empty()) return {"", picture.fault, ""};
        render::SvgSurface surface(picture.width, picture.height, picture.mm_per_pixel, metrics);
        application.Draw(surface, picture.view);
        return {surface.Bytes(), "", ""};
    }
    const render::ViewRange view = SizedView(application.View(), options);
    const QSize area = AreaOf(view);
    render::SvgSurface surface(area.width(), area.height(), std::nullopt, metrics);
    application.Draw(surface, view);
    return {surface.Bytes(), "", ""};
}

PictureBytes MakeEmf(Application& application, const render::PictureOptions& options)
{
    const render::ToolkitTextMetrics metrics;
    const render::ViewRange view = SizedView(application.View(), options);
    const QSize area = AreaOf(view);
    render::MetafileSurface surface(area.width(), area.height(), options.screen, metrics);
    application.Draw(surface, view);
    return {surface.Bytes(), "", ""};
}

}  // namespace

PictureBytes MakePage(Application& application, const QPageSize& paper,
                      const render::PageOptions& options)
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
        writer.setPageLayout({paper,
                              options.landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                              QMarginsF()});
        QPainter painter(&writer);
        if (!painter.isActive()) return {"", kTooLarge, ""};
        const QSizeF sheet = writer.pageLayout().fullRect(QPageLayout::Millimeter).size();
        report = DrawPage(painter, {QPointF(), sheet}, options, application);
    }
    if (!report.fault.empty()) return {"", report.fault, ""};
    return {bytes.toStdString(), "", report.note};
}

PictureBytes MakePicture(Application& application, render::PictureFormat format,
                         const render::PictureOptions& options)
{
    const DrawingToolkit toolkit;
    switch (format) {
        case render::PictureFormat::Png: return MakePng(application, options);
        case render::PictureFormat::Svg: return MakeSvg(application, options);
        case render::PictureFormat::Pdf:
            return MakePage(application, QPageSize(QPageSize::A4), options.page);
        case render::PictureFormat::Emf: break;
    }
    return MakeEmf(application, options);
}

std::string WriteBytes(const std::string& file, const PictureBytes& picture,
                       files::FileSystem& disk)
{
    if (!picture.fault.empty()) return picture.fault;
    const std::error_code fault = files::ReplaceFile(disk, files::PathOf(file), picture.bytes);
    // The file itself need not be there.
    if (fault == std::errc::no_such_file_or_directory) return "Den Ordner gibt es nicht";
    return fault ? files::ErrorText(fault) : "";
}

PictureReport WritePicture(Application& application, const std::string& file,
                           const render::PictureOptions& options, files::FileSystem& disk)
{
    const std::optional<render::PictureFormat> format = render::FormatOf(file);
    if (!format) return {"Bilder gibt es als .png, .svg, .pdf und .emf", ""};
    const PictureBytes picture = MakePicture(application, *format, options);
    const std::string fault = WriteBytes(file, picture, disk);
    return {fault, fault.empty() ? picture.note : ""};
}

}  // namespace korvinth::app
