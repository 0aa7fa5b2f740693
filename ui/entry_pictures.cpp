#include "ui/entry_pictures.h"

#include <utility>

namespace korvinth::ui {
namespace {

constexpr int kMostPictures = 500;  // more than any screen shows at once

// Descriptions and protection do not change the picture.
QByteArray KeyOf(const document::CollectionEntry& entry, QSize size)
{
    QByteArray key = QByteArray::number(size.width()) + 'x' + QByteArray::number(size.height());
    for (int column = 2; column < document::kColumnCount; ++column) {
        const std::string_view text = entry[document::Column{column}];
        key.append('\0').append(text.data(), static_cast<qsizetype>(text.size()));
    }
    return key;
}

}  // namespace

EntryPictures::EntryPictures(PreviewSource source)
    : source_(std::move(source)), pictures_(kMostPictures)
{
}

const QPixmap* EntryPictures::Find(const document::CollectionEntry& entry, QSize size) const
{
    return pictures_.object(KeyOf(entry, size));
}

void EntryPictures::Draw(const document::CollectionEntry& entry, QSize size, qreal dots_per_pixel)
{
    auto* picture = new QPixmap(QPixmap::fromImage(source_(entry, size)));
    picture->setDevicePixelRatio(dots_per_pixel);
    pictures_.insert(KeyOf(entry, size), picture);
}

}  // namespace korvinth::ui
