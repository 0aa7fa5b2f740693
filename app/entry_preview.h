// Draws an entry of the collection as a small picture, beside the plot that the windows show.
#pragma once

#include <QImage>
#include <QSize>

#include "document/collection.h"

namespace korvinth::app {

// `size` in pixels of the image. White paper when the plot would take long to draw.
QImage DrawPreview(const document::CollectionEntry& entry, QSize size);

}  // namespace korvinth::app
