#include "app/collection_files.h"

#include <functional>
#include <utility>

#include "document/collection_file.h"
#include "document/save_collection.h"
#include "files/path_text.h"

namespace korvinth::app {
namespace {

using document::CollectionEntry;

constexpr const char* kFilter = "Textdateien (*.txt)|*.txt|Alle Dateien (*.*)|*.*";
constexpr const char* kOpenTitle = "Sammlungsdatei öffnen";
constexpr const char* kAppendTitle = "Einträge aus welcher Datei anhängen?";
constexpr const char* kSaveTitle = "Sammlungsdatei speichern";
constexpr const char* kAttention = "Achtung!";
constexpr const char* kMessage = "Meldung:";
constexpr const char* kError = "Fehler";

// Whether an entry draws anything or moves the view: a file made by hand has no buffer entry.
bool HasPlot(const CollectionEntry& buffer) { return buffer != CollectionEntry(); }

std::size_t Digest(std::string_view bytes) { return std::hash<std::string_view>()(bytes); }

}  // namespace

CollectionFiles::CollectionFiles(files::FileSystem& disk, const files::Path& working,
                                 CollectionControl& collection, CollectionHost& plot,
                                 CollectionFilesHost& host, ui::Dialogs& dialogs)
    : disk_(disk),
      collection_(collection),
      plot_(plot),
      host_(host),
      dialogs_(dialogs),
      working_(
          disk, working, [this] { return ContentToWrite(); }, [this] { return host_.Animated(); })
{
    connect(&collection_, &CollectionControl::changed, this, &CollectionFiles::Touch);
    connect(&working_, &WorkingCollection::failed, this, [this](std::error_code fault) {
        written_.reset();
        Exclaim(fault);
    });
}

// Much is asked while nothing has changed; only changes cost time.
std::optional<WorkingContent> CollectionFiles::ContentToWrite()
{
    if (KeepUnread()) return std::nullopt;
    const document::CollectionEditor& editor = collection_.Editor();
    const Written now{editor.Changes(), editor.Modified(), plot_.CurrentPlot()};
    if (now == written_) return std::nullopt;
    written_ = now;
    return WorkingContent{RowsText()->size(), [now, rows = RowsText()] {
                              return WithModifiedMark(document::WriteCollection(now.plot, *rows),
                                                      now.modified);
                          }};
}

// An animation changes the plot alone: a large collection is not put together anew at its steps.
const std::shared_ptr<const std::string>& CollectionFiles::RowsText()
{
    const document::CollectionEditor& editor = collection_.Editor();
    if (!rows_text_ || rows_changes_ != editor.Changes()) {
        rows_text_ = std::make_shared<const std::string>(document::RowsText(editor.Entries()));
        rows_changes_ = editor.Changes();
    }
    return rows_text_;
}

// The bytes of the whole collection with the current plot in front.
std::string CollectionFiles::Bytes()
{
    return document::WriteCollection(plot_.CurrentPlot(), *RowsText());
}

void CollectionFiles::Exclaim(const std::string& fault)
{
    if (!fault.empty()) dialogs_.ShowExclamation(kError, fault);
}

void CollectionFiles::Exclaim(std::error_code fault)
{
    if (fault) Exclaim(files::ErrorText(fault) + ".");
}

void CollectionFiles::SetName(const files::Path& file)
{
    name_ = file;
    collection_.SetFileName(QString::fromStdString(files::Utf8(file.filename())));
}

void CollectionFiles::SetUpWorkingCollection()
{
    bool exists = false;
    if (!Exists(working_.File(), exists) || exists) {
        host_.ReadSettings();
    } else {
        Exclaim(document::CreateEmptyCollection(disk_, working_.File()));
    }
}

void CollectionFiles::ReadWorkingCollection()
{
    std::string bytes, fault;
    document::Collection& entries = collection_.Entries();
    if (const auto unreadable = disk_.Read(working_.File(), bytes)) {
        std::error_code unknown;
        const bool exists = disk_.Exists(working_.File(), unknown);
        if (!exists && !unknown) return;  // not created, as was said
        fault = files::ErrorText(unreadable) + ".";
    } else {
        fault = document::ReadCollection(bytes, document::ReadMode::Open, entries);
    }
    unread_ = !fault.empty();
    const std::error_code stays = KeepUnread();
    working_.Expect(bytes.size());
    collection_.ShowEntries();
    RowsText();  // while one waits for the start anyway
    collection_.Editor().SetModified(HasModifiedMark(bytes) || !fault.empty());
    SetName({});
    collection_.ShowState();
    if (entries.buffer_loaded && HasPlot(entries.buffer)) plot_.DrawEntry(entries.buffer);
    if (fault.empty()) return;
    dialogs_.ShowError(kError, fault + "\n\n" + (stays ? UnreadText(stays) : SetAsideText()));
    working_.Touch();
}

std::string CollectionFiles::SetAsideText() const
{
    return "Die Datei mit den zuletzt bearbeiteten Daten ist beschädigt. Sie wurde als \"" +
           files::Utf8(working_.File().filename()) +
           ".defekt\" aufgehoben, alles Lesbare ist geladen.";
}

std::string CollectionFiles::UnreadText(std::error_code fault) const
{
    return "Die Datei \"" + files::Utf8(working_.File().filename()) +
           "\" mit den zuletzt bearbeiteten Daten ist nicht ganz lesbar und ließ sich nicht "
           "beiseitelegen: " +
           files::ErrorText(fault) + ". Bis das gelingt, bleibt sie, wie sie ist.";
}

// What was not read is set aside before anything is written in its place. An older one that was set
// aside stays as well.
std::error_code CollectionFiles::KeepUnread()
{
    if (!unread_) return {};
    std::error_code fault;
    files::Path target = files::WithEnding(working_.File(), ".defekt");
    for (int i = 2; disk_.Exists(target, fault); ++i) {
        target = files::WithEnding(working_.File(), ".defekt" + std::to_string(i));
    }
    if (!fault) fault = disk_.Rename(working_.File(), target);
    if (fault == std::errc::no_such_file_or_directory) fault.clear();  // nothing to keep any more
    unread_ = bool{fault};
    return fault;
}

bool CollectionFiles::Exists(const files::Path& file, bool& exists)
{
    std::error_code fault;
    exists = disk_.Exists(file, fault);
    if (!fault) return true;
    Exclaim(fault);
    return false;
}

// What could not be saved is offered again, under another name: nobody shall have to leave without.
void CollectionFiles::OfferToSave()
{
    collection_.FinishEditing();
    for (bool elsewhere = !HasName(); collection_.Editor().Modified(); elsewhere = true) {
        const bool save = dialogs_.AskYesNo(
            kAttention, "Die Sammlung ist geändert worden. Soll sie gespeichert werden?");
        if (!save || !(elsewhere ? SaveUnderNewName() : SaveUnderName())) return;
    }
}

void CollectionFiles::Open()
{
    OfferToSave();
    const std::optional<std::string> chosen = dialogs_.OpenFile(kOpenTitle, kFilter);
    if (!chosen) return;
    const files::Path file = files::PathOf(*chosen);
    bool exists = false;
    if (!Exists(file, exists)) return;
    if (!exists && !RestoreCopy(file)) {
        // Deliberate: with No the name is taken all the same, and the entries stay.
        const bool create = dialogs_.AskYesNo(
            kMessage, "Diese Datei gibt es noch nicht. Soll sie neu erzeugt werden?");
        if (!create) {
            digest_.reset();
            return SetName(file);
        }
        const std::string fault = document::CreateEmptyCollection(disk_, file);
        if (!fault.empty()) return Exclaim(fault);
    }
    ReadFile(file);
}

// An interrupted saving can leave a file under the name of its copy only.
bool CollectionFiles::RestoreCopy(const files::Path& file)
{
    const files::Path copy = files::WithEnding(file, ".tmp");
    bool exists = false;
    if (!Exists(copy, exists) || !exists) return false;
    if (!dialogs_.AskYesNo(kMessage, "Von dieser Datei gibt es nur noch die Sicherung \"" +
                                         files::Utf8(copy.filename()) +
                                         "\". Soll sie wiederhergestellt werden?")) {
        return false;
    }
    const std::error_code fault = disk_.Rename(copy, file);
    Exclaim(fault);
    return !fault;
}

void CollectionFiles::OpenFile(const files::Path& file)
{
    OfferToSave();
    ReadFile(file);
}

void CollectionFiles::OpenBytes(std::string_view bytes)
{
    OfferToSave();
    ReadAnew(bytes, {});
}

void CollectionFiles::ReadFile(const files::Path& file)
{
    std::string bytes;
    if (const auto fault = disk_.Read(file, bytes)) return Exclaim(fault);
    ReadAnew(bytes, file);
}

// The working collection is a copy of the chosen file before anything is read from it.
void CollectionFiles::ReadAnew(std::string_view bytes, const files::Path& name)
{
    working_.Forget();
    written_.reset();
    std::error_code unwritten = KeepUnread();
    if (!unwritten) unwritten = files::ReplaceFile(disk_, working_.File(), bytes);
    Exclaim(unwritten);
    working_.Expect(bytes.size());
    document::Collection& entries = collection_.Entries();
    const std::string fault = document::ReadCollection(bytes, document::ReadMode::Open, entries);
    damaged_ = !fault.empty();
    collection_.ShowEntries();
    RowsText();  // while one waits for the file anyway
    collection_.Editor().SetModified(false);
    SetName(name);
    digest_ = Digest(bytes);
    collection_.ShowState();
    if (entries.buffer_loaded && HasPlot(entries.buffer)) plot_.DrawEntry(entries.buffer);
    host_.RedrawGraph();
    if (damaged_) dialogs_.ShowError(kError, fault);
    working_.Touch();
}

void CollectionFiles::Append()
{
    collection_.FinishEditing();
    files::Path file;
    for (bool exists = false; !exists;) {
        const std::optional<std::string> chosen = dialogs_.OpenFile(kAppendTitle, kFilter);
        if (!chosen) return;
        file = files::PathOf(*chosen);
        if (!Exists(file, exists)) return;
    }
    std::string bytes;
    if (const auto fault = disk_.Read(file, bytes)) return Exclaim(fault);
    document::Collection& entries = collection_.Entries();
    const std::size_t before = entries.entries.size();
    const std::string fault = document::ReadCollection(bytes, document::ReadMode::Append, entries);
    collection_.ShowEntries();
    if (entries.entries.size() != before) collection_.Editor().SetModified(true);
    collection_.ShowState();
    host_.RedrawGraph();
    if (!fault.empty()) dialogs_.ShowError(kError, fault);
    working_.Touch();
}

void CollectionFiles::Save()
{
    collection_.FinishEditing();
    if (HasName()) {
        SaveUnderName();
    } else {
        SaveUnderNewName();
    }
}

bool CollectionFiles::ChangedElsewhere() const
{
    std::string bytes;
    return digest_ && !disk_.Read(name_, bytes) && Digest(bytes) != *digest_;
}

void CollectionFiles::SaveAs()
{
    collection_.FinishEditing();
    SaveUnderNewName();
}

bool CollectionFiles::SaveUnderName()
{
    if (ChangedElsewhere() &&
        !dialogs_.AskYesNo(kMessage,
                           "Diese Datei ist inzwischen von einem anderen Programm geändert worden. "
                           "Soll sie überschrieben werden?",
                           ui::Preset::No)) {
        return SaveUnderNewName();  // both remain
    }
    SaveTo(name_, damaged_ ? document::EarlierFile::Damaged : document::EarlierFile::Complete);
    return true;
}

bool CollectionFiles::SaveUnderNewName()
{
    const std::optional<files::Path> file = AskForName();
    // Another file than the damaged one, or the user has agreed to overwrite it.
    if (file) SaveTo(*file, document::EarlierFile::Complete);
    return file.has_value();
}

std::optional<files::Path> CollectionFiles::AskForName()
{
    for (;;) {
        const std::optional<std::string> chosen = dialogs_.SaveFile(kSaveTitle, kFilter);
        if (!chosen) return std::nullopt;
        const files::Path file = files::PathOf(*chosen);
        bool exists = false;
        if (!Exists(file, exists)) return std::nullopt;
        if (!exists || dialogs_.AskYesNo(
                           kMessage, "Diese Datei gibt es bereits. Soll sie überschrieben werden?",
                           ui::Preset::No)) {
            return file;
        }
    }
}

void CollectionFiles::SaveTo(const files::Path& file, document::EarlierFile earlier)
{
    working_.Forget();
    written_.reset();
    KeepUnread();  // saving brings the working collection up to date
    const std::string bytes = Bytes();
    const std::string fault =
        document::SaveCollection(disk_, file, working_.File(), bytes, earlier);
    if (fault.empty()) {
        damaged_ = false;
        SetName(file);
        digest_ = Digest(bytes);
        collection_.Editor().SetModified(false);
        collection_.ShowState();
    }
    working_.Touch();
    host_.WriteSettings();
    Exclaim(fault);
}

void CollectionFiles::Flush() { Exclaim(working_.Flush()); }

}  // namespace korvinth::app
