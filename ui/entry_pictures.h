// Small pictures of the collection's entries, drawn when they are first asked for and then kept.
#pragma once

#include <QByteArray>
#include <QCache>
#include <QImage>
#include <QPixmap>
#include <QSize>
#include <functional>

#include "document/collection.h"

namespace korvinth::ui {

// Draws an entry's plot, `size` in pixels of the image.
using PreviewSource = std::function<QImage(const document::CollectionEntry&, QSize size)>;

// The pictures belong to what the entries hold, not to their places.
class EntryPictures
{
public:
    explicit EntryPictures(PreviewSource source);

    // nullptr while it has not been drawn.
    const QPixmap* Find(const document::CollectionEntry& entry, QSize size) const;
    void Draw(const document::CollectionEntry& entry, QSize size, qreal dots_per_pixel);

private:
    PreviewSource source_;
    QCache<QByteArray, QPixmap> pictures_;
};

}  // namespace korvinth::ui
