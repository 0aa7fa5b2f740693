#include "app/clipboard.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <cmath>

#include "app/picture_file.h"

namespace korvinth::app {
namespace {

constexpr const char* kMetafileNames[] = {
    "image/x-emf",
    "image/emf",
    "application/x-emf",
    "application/emf",
    "application/x-openoffice-emf;windows_formatname=\"Image EMF\"",
    "application/x-qt-windows-mime;value=\"Enhanced Metafile\"",
};

// Beside a metafile the bitmap has these names only: word processors that find image/png or
// image/bmp take it and leave the metafile.
constexpr const char* kFallbackNames[] = {"image/x-bmp", "image/x-MS-bmp"};

// On a screen of more dots the image has more of them, too, on the same paper.
QByteArray BytesOf(QImage picture, const char* format)
{
    constexpr double kInchesPerMetre = 1000 / 25.4;
    const int dots = static_cast<int>(
        std::lround(render::kUsualResolution * kInchesPerMetre * picture.devicePixelRatio()));
    picture.setDotsPerMeterX(dots);
    picture.setDotsPerMeterY(dots);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, format);
    return bytes;
}

// The clipboard takes what it is given into its possession.
void Put(std::unique_ptr<QMimeData> formats)
{
    QGuiApplication::clipboard()->setMimeData(formats.release());
}

}  // namespace

std::unique_ptr<QMimeData> BitmapFormats(const QImage& picture)
{
    auto formats = std::make_unique<QMimeData>();
    formats->setData("image/png", BytesOf(picture, "PNG"));
    formats->setImageData(picture);
    return formats;
}

std::unique_ptr<QMimeData> MetafileFormats(const std::string& metafile, const std::string& svg,
                                           const QImage& picture)
{
    auto formats = std::make_unique<QMimeData>();
    const QByteArray bytes = QByteArray::fromStdString(metafile);
    for (const char* const name : kMetafileNames) formats->setData(name, bytes);
    formats->setData("image/svg+xml", QByteArray::fromStdString(svg));
    const QByteArray bitmap = BytesOf(picture, "BMP");
    for (const char* const name : kFallbackNames) formats->setData(name, bitmap);
    return formats;
}

void CopyBitmap(const QImage& picture) { Put(BitmapFormats(picture)); }

void CopyMetafile(Application& application, const render::ScreenSize& screen, const QImage& picture,
                  const files::Path& file, files::FileSystem& disk)
{
    render::PictureOptions options;
    options.screen = screen;
    const std::error_code fault = files::ReplaceFile(
        disk, file, MakePicture(application, render::PictureFormat::Emf, options).bytes);
    QGuiApplication::clipboard()->clear();
    std::string metafile;
    if (fault || disk.Read(file, metafile)) return;
    Put(MetafileFormats(
        metafile, MakePicture(application, render::PictureFormat::Svg, options).bytes, picture));
}

}  // namespace korvinth::app
