#include "app/picture_file.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QSaveFile>
#include <cmath>
#include <memory>

#include "app/toolkit.h"
#include "render/qt/raster_surface.h"

namespace korvinth::app {
namespace {

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

std::string Save(const QImage& image, const QString& name)
{
    const QFileInfo info(name);
    if (!info.dir().exists()) return "Den Ordner gibt es nicht";
    // A device or a pipe would be replaced by a file.
    if (info.exists() && !info.isFile()) return "Das ist keine gewöhnliche Datei";
    QSaveFile file(name);
    if (file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit()) return "";
    return file.errorString().toStdString();
}

}  // namespace

std::string WritePicture(Application& application, const std::string& file)
{
    const DrawingToolkit toolkit;
    const render::ViewRange& view = application.View();
    render::RasterSurface surface(
        static_cast<int>(std::lround(view.area_width / view.twips_per_pixel_x)),
        static_cast<int>(std::lround(view.area_height / view.twips_per_pixel_y)),
        render::GridSteps(application.Document().attributes.smooth_drawing));
    if (surface.Image().isNull()) return "Für ein Bild dieser Größe reicht der Speicher nicht";
    application.Draw(surface);
    surface.Refresh();
    return Save(surface.Image(), QString::fromStdString(file));
}

}  // namespace korvinth::app
