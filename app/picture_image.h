// Draws the plot into an image: for a file, or as the small preview of one.
#pragma once

#include <QImage>
#include <QSize>
#include <memory>
#include <optional>
#include <string>

#include "app/application.h"
#include "render/picture_options.h"
#include "render/qt/raster_surface.h"

namespace korvinth::app {

// The same part of the plane in a picture of the size that is asked for.
render::ViewRange SizedView(const render::ViewRange& screen, const render::PictureOptions& options);

// Of a view's picture, in pixels.
QSize AreaOf(const render::ViewRange& view);

// An image of so many dots; `scale` of them are a pixel, so that texts and lines grow with it. No
// image when there is no memory for it.
QImage DrawImage(Application& application, const render::ViewRange& view, QSize dots, double scale);

// The same piece by piece.
class ImageDrawing
{
public:
    ImageDrawing(Application& application, render::ViewRange view, QSize dots, double scale);
    bool Continue();  // the next piece; false when the picture is complete
    QImage Image();   // as far as it is drawn

private:
    render::RasterSurface surface_;
    std::optional<Application::Drawing> drawing_;  // none without memory
};

// A page is drawn at once, other pictures are still to be drawn.
struct ImagePreview
{
    QImage image;
    std::unique_ptr<ImageDrawing> drawing;
    std::string fault;  // German; "" when there is one of both
};

// What MakePicture makes of these options, at most as many dots large as `room`.
ImagePreview PreviewImage(Application& application, render::PictureFormat format,
                          const render::PictureOptions& options, QSize room);

}  // namespace korvinth::app
