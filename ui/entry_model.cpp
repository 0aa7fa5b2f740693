#include "ui/entry_model.h"

#include <QPixmap>
#include <algorithm>

#include "ui/storable_fields.h"

namespace korvinth::ui {

EntryModel::EntryModel(const document::CollectionEditor& editor, const EntryPictures& pictures,
                       QObject* parent)
    : QAbstractListModel(parent), editor_(editor), pictures_(pictures)
{
}

void EntryModel::ShowEntries()
{
    beginResetModel();
    Search();
    endResetModel();
}

void EntryModel::ShowEntry(std::size_t place)
{
    const std::optional<int> row = Row(place);
    if (row) Q_EMIT dataChanged(index(*row), index(*row));
}

void EntryModel::SetSearch(const QString& text)
{
    beginResetModel();
    search_ = text;
    Search();
    endResetModel();
}

void EntryModel::Search()
{
    found_.clear();
    if (!search_.isEmpty()) found_ = editor_.Find(search_.toStdString());
}

std::size_t EntryModel::Place(int row) const
{
    const auto number = static_cast<std::size_t>(row);
    return search_.isEmpty() ? number : found_[number];
}

std::optional<int> EntryModel::Row(std::size_t place) const
{
    if (search_.isEmpty()) {
        if (place >= editor_.Entries().size()) return std::nullopt;
        return static_cast<int>(place);
    }
    const auto found = std::ranges::lower_bound(found_, place);
    if (found == found_.end() || *found != place) return std::nullopt;
    return static_cast<int>(found - found_.begin());
}

int EntryModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid()) return 0;
    return static_cast<int>(search_.isEmpty() ? editor_.Entries().size() : found_.size());
}

QVariant EntryModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const document::CollectionEntry& entry = Entry(index.row());
    const auto name = [&] { return ShownText(entry[document::Column::ShortText]); };
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole: return name();
        case Qt::AccessibleTextRole:
            return entry.is_protected ? name() + QStringLiteral(", geschützt") : name();
        case Qt::ToolTipRole: return "<p>" + name().toHtmlEscaped() + "</p>";
        case kProtectedRole: return entry.is_protected;
        case Qt::DecorationRole: {
            const QPixmap* picture = pictures_.Find(entry, picture_size_);
            return picture != nullptr ? QVariant(*picture) : QVariant();
        }
        default: return {};
    }
}

bool EntryModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid()) return false;
    Q_EMIT renamed(Place(index.row()), value.toString());
    return true;
}

Qt::ItemFlags EntryModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::ItemIsDropEnabled;  // between the rows
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled |
           Qt::ItemNeverHasChildren;
}

}  // namespace korvinth::ui
