// What other programs find on the clipboard: the picture as a bitmap, or as a metafile.
#pragma once

#include <QImage>
#include <QMimeData>
#include <memory>
#include <string>

#include "app/application.h"
#include "files/file_system.h"
#include "render/metafile_surface.h"

namespace korvinth::app {

// The image of the toolkit, and PNG in its real size.
std::unique_ptr<QMimeData> BitmapFormats(const QImage& picture);

// The metafile under all names that programs ask for, then what is offered to those that take none.
std::unique_ptr<QMimeData> MetafileFormats(const std::string& metafile, const std::string& svg,
                                           const QImage& picture);

// mn_copytoclip: the picture on the screen.
void CopyBitmap(const QImage& picture);

// mn_emf (emfstart): replaces the metafile, which stays on the disk, and puts what the file then
// holds on the clipboard, with `picture` beside it. Deliberate: no error is told, the clipboard is
// empty then.
void CopyMetafile(Application& application, const render::ScreenSize& screen, const QImage& picture,
                  const files::Path& file, files::FileSystem& disk = files::Disk());

}  // namespace korvinth::app
