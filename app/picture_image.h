// Draws the plot into an image: for a file, or as the small preview of one.
#pragma once

#include <QImage>
#include <QSize>
#include <string>

#include "app/application.h"
#include "render/picture_options.h"

namespace korvinth::app {

// The same part of the plane in a picture of the size that is asked for.
render::ViewRange SizedView(const render::ViewRange& screen, const render::PictureOptions& options);

// Of a view's picture, in pixels.
QSize AreaOf(const render::ViewRange& view);

// An image of so many dots; `scale` of them are a pixel, so that texts and lines grow with it. No
// image when there is no memory for it.
QImage DrawImage(Application& application, render::ViewRange view, QSize dots, double scale);

struct ImagePreview
{
    QImage image;
    std::string fault;  // German; "" when there is an image
};

// What MakePicture makes of these options, at most as many dots large as `room`.
ImagePreview PreviewImage(Application& application, render::PictureFormat format,
                          const render::PictureOptions& options, QSize room);

}  // namespace korvinth::app
