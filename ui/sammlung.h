// The window of the collection: its entries, a search, what the selected entry holds.
#pragma once

#include <QString>
#include <QWidget>
#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "document/collection_editor.h"
#include "ui/entry_command.h"
#include "ui/entry_pictures.h"

class QFormLayout;
class QLabel;
class QLineEdit;
class QMenu;
class QScrollArea;
class QToolButton;

namespace korvinth::ui {

class EntryList;

class Sammlung : public QWidget
{
    Q_OBJECT
public:
    // The editor outlives the window.
    Sammlung(const document::CollectionEditor& editor, PreviewSource previews,
             QWidget* parent = nullptr);

    // Entries came, went, moved or were replaced; those at `select` become the selected ones.
    void ShowEntries(const std::vector<std::size_t>& select);
    void ShowEntry(std::size_t place);  // it holds something else
    void ShowFile(const QString& name, bool modified);
    // What the pop-up menu offers, and how it calls the command there.
    void ShowCommand(EntryCommand command, bool possible);
    void ShowProtection(bool all_protected);

    std::vector<std::size_t> SelectedPlaces() const;
    std::optional<std::size_t> CurrentPlace() const;
    void EditName(std::size_t place);
    void FinishEditing();
    // All entries are to be seen, for one that the search would leave out.
    void ClearSearch();

    // Heights in pixels: with the fewest rows that are of use, and with every entry in view.
    int LeastHeight() const;
    int FullHeight() const;

Q_SIGNALS:
    void commandWanted(EntryCommand command);
    void renamed(std::size_t place, const QString& name);
    void moved(const std::vector<std::size_t>& places, std::size_t before);
    void selectedChanged();
    void heightChanged();  // the details came or went
    void menuOpens();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* MakeHead();
    void MakeDetails();
    void MakeMenu();
    void MakeClearButton();
    void ShowSelected();
    void ShowDetails(const document::CollectionEntry* entry);
    void TakeSearch(const QString& text);
    int HeightOfRows(int rows) const;

    const document::CollectionEditor& editor_;
    QToolButton* unfold_;
    QLabel* selected_;
    QLineEdit* search_;
    EntryList* list_;
    QScrollArea* details_;
    QFormLayout* fields_ = nullptr;
    std::map<document::Column, QLabel*> contents_;  // of the details
    QMenu* menu_;
    std::map<EntryCommand, QAction*> actions_;
    std::vector<std::size_t> sought_from_;  // selected when the search began
};

}  // namespace korvinth::ui
