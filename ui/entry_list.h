// The list of the collection's entries: a small picture, the name, a lock on protected ones.
#pragma once

#include <QListView>
#include <QTimer>
#include <cstddef>
#include <optional>
#include <vector>

#include "ui/entry_command.h"
#include "ui/entry_model.h"
#include "ui/entry_pictures.h"

namespace korvinth::ui {

// Tells what the user wants done; the entries change elsewhere.
class EntryList : public QListView
{
    Q_OBJECT
public:
    // The editor outlives the list.
    EntryList(const document::CollectionEditor& editor, PreviewSource previews, QWidget* parent);

    EntryModel& Entries() { return model_; }
    std::vector<std::size_t> SelectedPlaces() const;  // ascending
    // Of the selected ones that with the focus, else the first.
    std::optional<std::size_t> CurrentPlace() const;
    void Select(const std::vector<std::size_t>& places);  // and scrolls to the first
    void EditName(std::size_t place);
    void FinishEditing();  // what is being typed is taken

    int RowHeight() const;  // pixels
    // What stands in the list while it has no rows.
    void SetPlaceholder(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void commandWanted(EntryCommand command);
    // To stand in front of the entry at `before`.
    void moved(const std::vector<std::size_t>& places, std::size_t before);
    void selectedChanged();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void changeEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private:
    QSize PictureSize() const;  // pixels
    void FollowFont();
    std::optional<int> RowWithoutPicture() const;
    void DrawNextPicture();
    void PaintHint();

    EntryPictures pictures_;
    EntryModel model_;
    QTimer picture_timer_;
    QString placeholder_;
};

}  // namespace korvinth::ui
