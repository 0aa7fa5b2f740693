// The collection of saved plots while there are windows: its entries, their commands, what its
// windows show.
#pragma once

#include <QObject>
#include <QString>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/collection_host.h"
#include "app/menus.h"
#include "document/collection.h"
#include "document/collection_editor.h"
#include "document/display_attributes.h"
#include "ui/dialogs.h"
#include "ui/entry_command.h"

class QWidget;

namespace korvinth::ui {
class Sammlung;
class SammText;
}  // namespace korvinth::ui

namespace korvinth::app {

class CollectionControl : public QObject
{
    Q_OBJECT
public:
    // Makes the windows as children of `parent`. All outlive the control. `attributes` are the
    // plot's; the description's font is kept there.
    CollectionControl(CollectionHost& host, document::DisplayAttributes& attributes,
                      const Menus& menus, ui::Dialogs& dialogs, QWidget* parent);
    ~CollectionControl() override;
    Q_DISABLE_COPY_MOVE(CollectionControl)

    // For reading and writing files. Whoever changes the entries past the editor calls ShowEntries.
    document::Collection& Entries() { return collection_; }
    document::CollectionEditor& Editor() { return editor_; }

    // The entries are others: nothing of before can be taken back, nothing is selected. Whether
    // they count as modified is left to the caller.
    void ShowEntries();
    // In the caption, without its folder; "" while the collection has no name.
    void SetFileName(const QString& name);
    // After the editor's modified flag was set or cleared, and when the attributes have changed.
    void ShowState();
    // A name being typed in the list is taken. Call it before saving and ending.
    void FinishEditing();

    // The one that commands for a single entry work on.
    std::optional<std::size_t> SelectedEntry() const;

    ui::Sammlung& Window() { return *window_; }
    ui::SammText& DescriptionWindow();  // made on first use

Q_SIGNALS:
    void changed();                 // entries or their order, by the user's hand
    void entriesReplaced();         // ShowEntries has run
    void windowWanted();            // `sammlung` is to be seen
    void descriptionWanted();       // `sammtext` is to be seen
    void descriptionFontChanged();  // a setting
    void plotTaken();               // into an entry, from the window

private:
    void ConnectMenus();
    void ConnectWindows();

    void Run(ui::EntryCommand command);
    void AddEntry(document::CollectionEntry entry);
    void TakePlot();
    void Copy() const;
    void Insert(bool behind);
    void Cut();
    void Remove();
    void RemoveSelected();
    void ToggleProtection();
    void Rename(std::size_t place, const QString& name);
    void Move(const std::vector<std::size_t>& places, std::size_t before);
    void TakeDescription(const std::string& text, document::Typing typing);
    void GoBack(std::optional<std::size_t> select);

    void FollowChange(const std::vector<std::size_t>& select);
    void FollowSelection();
    void ShowDescription();  // of the selected entry
    void ShowInsertion(bool possible);
    void ShowCommands();
    bool AllProtected(const std::vector<std::size_t>& places) const;
    // Asks when there are protected entries among them.
    bool MayChange(const std::vector<std::size_t>& places, std::string_view done);
    void ChooseFont(int points);
    void SetFontFollowsWindow(bool follows);

    CollectionHost& host_;
    document::DisplayAttributes& attributes_;
    const Menus& menus_;
    ui::Dialogs& dialogs_;
    document::Collection collection_;
    document::CollectionEditor editor_{collection_};
    QString file_name_;
    ui::Sammlung* window_;
    ui::SammText* description_ = nullptr;
    // Whether the description of a protected entry may change: what the user has answered for it.
    struct Answer
    {
        std::size_t place;
        bool may_change;
    };
    std::optional<Answer> answer_;
    bool insertion_possible_ = true;  // as far as known: the clipboard is asked when a menu opens
};

}  // namespace korvinth::app
