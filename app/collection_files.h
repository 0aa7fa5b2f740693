// The file commands of the collection: opening, appending, saving, and the working collection.
#pragma once

#include <QObject>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/collection_control.h"
#include "app/collection_host.h"
#include "app/working_collection.h"
#include "document/save_collection.h"
#include "files/file_system.h"
#include "ui/dialogs.h"

namespace korvinth::app {

// What the collection's files ask of the rest of the program.
class CollectionFilesHost
{
public:
    virtual ~CollectionFilesHost() = default;
    virtual void RedrawGraph() = 0;
    virtual void ReadSettings() = 0;
    virtual void WriteSettings() = 0;
    virtual bool Animated() const = 0;
};

class CollectionFiles final : public QObject
{
    Q_OBJECT
public:
    // All outlive the object.
    CollectionFiles(files::FileSystem& disk, const files::Path& working,
                    CollectionControl& collection, CollectionHost& plot, CollectionFilesHost& host,
                    ui::Dialogs& dialogs);

    // At the start: creates the working collection, or has the settings read when there is one.
    void SetUpWorkingCollection();
    // Reads it and draws its plot. A damaged one is set aside.
    void ReadWorkingCollection();

    void Open();    // mn_open
    void Append();  // mn_mrg
    void Save();    // mn_save
    void SaveAs();  // mn_saveas
    // Opens this file, after the question whether changes are to be saved.
    void OpenFile(const files::Path& file);
    // A collection that comes with the program; it has no name to be saved under.
    void OpenBytes(std::string_view bytes);

    bool HasName() const { return !name_.empty(); }
    // Asks whether changes are to be saved, and saves; asks nothing when there are none.
    void OfferToSave();

    // Something that the working collection holds has changed.
    void Touch() { working_.Touch(); }
    void Flush();

private:
    std::optional<files::Path> AskForName();
    bool Exists(const files::Path& file, bool& exists);
    bool ChangedElsewhere() const;
    // False when no name was chosen; faults are shown, and the collection stays modified.
    bool SaveUnderName();
    bool SaveUnderNewName();
    void SaveTo(const files::Path& file, document::EarlierFile earlier);
    bool RestoreCopy(const files::Path& file);
    void ReadFile(const files::Path& file);
    void ReadAnew(std::string_view bytes, const files::Path& name);
    std::string Bytes();
    const std::shared_ptr<const std::string>& RowsText();
    std::optional<WorkingContent> ContentToWrite();
    void SetName(const files::Path& file);
    std::error_code KeepUnread();
    std::string SetAsideText() const;
    std::string UnreadText(std::error_code fault) const;
    void Exclaim(const std::string& fault);  // "" and no fault: nothing
    void Exclaim(std::error_code fault);

    files::FileSystem& disk_;
    CollectionControl& collection_;
    CollectionHost& plot_;
    CollectionFilesHost& host_;
    ui::Dialogs& dialogs_;
    files::Path name_;                   // empty while the collection has none
    bool damaged_ = false;               // the file of that name was not read to its end
    bool unread_ = false;                // the working collection was not, and is not set aside yet
    std::optional<std::size_t> digest_;  // of the named file when it was read or saved last

    // What the working collection was written from.
    struct Written
    {
        std::size_t changes = 0;
        bool modified = false;
        document::CollectionEntry plot;
        bool operator==(const Written&) const = default;
    };
    std::optional<Written> written_;
    std::shared_ptr<const std::string> rows_text_;  // of the entries, as they were ...
    std::size_t rows_changes_ = 0;                  // ... at this count of changes
    WorkingCollection working_;
};

}  // namespace korvinth::app
