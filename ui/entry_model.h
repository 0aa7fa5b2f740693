// The collection's entries as the rows of a list, all or those that a search finds.
#pragma once

#include <QAbstractListModel>
#include <QString>
#include <cstddef>
#include <optional>
#include <vector>

#include "document/collection_editor.h"
#include "ui/entry_pictures.h"

namespace korvinth::ui {

// A row is a line of the list, a place is an entry's in the collection.
class EntryModel : public QAbstractListModel
{
    Q_OBJECT
public:
    static constexpr int kProtectedRole = Qt::UserRole;

    // Both outlive the model.
    EntryModel(const document::CollectionEditor& editor, const EntryPictures& pictures,
               QObject* parent);

    void ShowEntries();                 // entries came, went or moved
    void ShowEntry(std::size_t place);  // it looks different
    void SetSearch(const QString& text);

    const document::CollectionEntry& Entry(int row) const { return editor_.Entries()[Place(row)]; }
    std::size_t Place(int row) const;
    std::optional<int> Row(std::size_t place) const;  // none when the search leaves it out

    QSize PictureSize() const { return picture_size_; }
    void SetPictureSize(QSize dots) { picture_size_ = dots; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

Q_SIGNALS:
    void renamed(std::size_t place, const QString& name);

private:
    void Search();

    const document::CollectionEditor& editor_;
    const EntryPictures& pictures_;
    QString search_;
    std::vector<std::size_t> found_;  // places, while something is searched for
    QSize picture_size_;
};

}  // namespace korvinth::ui
