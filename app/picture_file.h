// Draws the plot into a file: image, vector graphic, page or metafile.
#pragma once

#include <QPageSize>
#include <string>

#include "app/application.h"
#include "files/file_system.h"
#include "render/picture_options.h"

namespace korvinth::app {

// The content of a picture file.
struct PictureBytes
{
    std::string bytes;
    std::string fault;  // German; "" when there is a picture
    std::string note;   // what of the plot the picture leaves out
};

// The whole picture; pixels of its size are dots of an image. The screen's picture is left alone.
// Works without a display.
PictureBytes MakePicture(Application& application, render::PictureFormat format,
                         const render::PictureOptions& options);

// The page of a PDF file on this paper; landscape turns it.
PictureBytes MakePage(Application& application, const QPageSize& paper,
                      const render::PageOptions& options);

struct PictureReport
{
    std::string fault;  // German; "" when the file is written
    std::string note;
};

// Either the file is complete or an existing one is as it was. What went wrong, in German.
std::string WriteBytes(const std::string& file, const PictureBytes& picture,
                       files::FileSystem& disk);

// Writes the format of the file's ending in the same way.
PictureReport WritePicture(Application& application, const std::string& file,
                           const render::PictureOptions& options,
                           files::FileSystem& disk = files::Disk());

}  // namespace korvinth::app
