#include "app/collection_control.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "app/entry_preview.h"
#include "document/collection_file.h"
#include "ui/sammlung.h"
#include "ui/sammtext.h"
#include "ui/storable_fields.h"

namespace korvinth::app {
namespace {

using document::Collection;
using document::CollectionEntry;
using document::Column;
using ui::EntryCommand;

// Entries on the clipboard: the bytes of a collection file.
const QString kEntriesFormat = QStringLiteral("application/x-korvinth-sammlung");

struct CommandEntry
{
    std::string_view name;
    EntryCommand command;
};
constexpr CommandEntry kCommands[] = {
    {"mn_add", EntryCommand::AddPlot},        {"mn_newentry", EntryCommand::NewEntry},
    {"mn_einakt", EntryCommand::Draw},        {"mn_rename", EntryCommand::Rename},
    {"mn_copy", EntryCommand::Copy},          {"mn_insert", EntryCommand::Insert},
    {"mn_insaft", EntryCommand::InsertAfter}, {"mn_cut", EntryCommand::Cut},
    {"mn_clr", EntryCommand::Remove},         {"mn_protect", EntryCommand::Protect},
};

std::string FontEntry(std::size_t number) { return "mnfs1[" + std::to_string(number) + "]"; }

// For texts and mails: name, description and terms of each entry.
QString ReadableText(const std::vector<CollectionEntry>& entries)
{
    QString text;
    for (const CollectionEntry& entry : entries) {
        if (!text.isEmpty()) text += '\n';
        for (const Column column : {Column::ShortText, Column::LongText, Column::Functions}) {
            if (!entry[column].empty()) text += ui::ShownText(entry[column]) + '\n';
        }
    }
    return text;
}

bool EntriesOnClipboard()
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr && data->hasFormat(kEntriesFormat);
}

std::vector<std::size_t> Places(std::size_t first, std::size_t count)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < count; ++i) places.push_back(first + i);
    return places;
}

}  // namespace

CollectionControl::CollectionControl(CollectionHost& host, document::DisplayAttributes& attributes,
                                     const Menus& menus, ui::Dialogs& dialogs, QWidget* parent)
    : host_(host),
      attributes_(attributes),
      menus_(menus),
      dialogs_(dialogs),
      window_(new ui::Sammlung(editor_, DrawPreview, parent))
{
    ConnectMenus();
    ConnectWindows();
    FollowSelection();
    ShowState();
}

CollectionControl::~CollectionControl() = default;

void CollectionControl::ConnectMenus()
{
    const auto on = [this](std::string_view entry, auto action) {
        connect(&menus_.Entry(entry), &QAction::triggered, this, action);
    };
    for (const CommandEntry& entry : kCommands) {
        on(entry.name, [this, command = entry.command] { Run(command); });
    }
    for (const char* entry : {"mn_shc", "mn_col"}) on(entry, [this] { Q_EMIT windowWanted(); });
    for (const char* entry : {"mn_dtl", "mnf_det"}) {
        on(entry, [this] { Q_EMIT descriptionWanted(); });
    }
    on("mn_ivar", [this](bool chosen) { SetFontFollowsWindow(!chosen); });
    for (std::size_t i = 0; i < std::size(kDescriptionPoints); ++i) {
        on(FontEntry(i), [this, i] { ChooseFont(kDescriptionPoints[i]); });
    }
}

void CollectionControl::ConnectWindows()
{
    connect(window_, &ui::Sammlung::commandWanted, this, &CollectionControl::Run);
    connect(window_, &ui::Sammlung::renamed, this, &CollectionControl::Rename);
    connect(window_, &ui::Sammlung::moved, this, &CollectionControl::Move);
    connect(window_, &ui::Sammlung::selectedChanged, this, &CollectionControl::FollowSelection);
    // Another program answers, in its own time: it is asked only where the answer is seen.
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            [this] { ShowInsertion(true); });
    const auto ask = [this] { ShowInsertion(EntriesOnClipboard()); };
    connect(&menus_.Menu("mn_samml"), &QMenu::aboutToShow, this, ask);
    connect(window_, &ui::Sammlung::menuOpens, this, ask);
}

void CollectionControl::ShowEntries()
{
    editor_.Forget();
    window_->ClearSearch();
    window_->ShowEntries({});
    ShowState();
    Q_EMIT entriesReplaced();
}

void CollectionControl::SetFileName(const QString& name)
{
    file_name_ = name;
    ShowState();
}

void CollectionControl::FinishEditing() { window_->FinishEditing(); }

std::optional<std::size_t> CollectionControl::SelectedEntry() const
{
    return window_->CurrentPlace();
}

void CollectionControl::Run(EntryCommand command)
{
    const std::optional<std::size_t> selected = SelectedEntry();
    switch (command) {
        case EntryCommand::AddPlot: AddEntry(host_.CurrentPlot()); break;
        case EntryCommand::NewEntry: AddEntry({}); break;
        case EntryCommand::Draw:
            if (selected) host_.DrawEntry(editor_.Entries()[*selected]);
            break;
        case EntryCommand::TakePlot: TakePlot(); break;
        case EntryCommand::Rename:
            if (!selected || !MayChange({*selected}, "umbenannt")) return;
            Q_EMIT windowWanted();
            window_->EditName(*selected);
            break;
        case EntryCommand::Copy: Copy(); break;
        case EntryCommand::Insert: Insert(false); break;
        case EntryCommand::InsertAfter: Insert(true); break;
        case EntryCommand::Cut: Cut(); break;
        case EntryCommand::Remove: Remove(); break;
        case EntryCommand::Protect: ToggleProtection(); break;
        case EntryCommand::Undo: GoBack(editor_.Undo()); break;
        case EntryCommand::Redo: GoBack(editor_.Redo()); break;
    }
}

// Behind the last one, ready for its name to be typed.
void CollectionControl::AddEntry(CollectionEntry entry)
{
    const std::size_t place = editor_.Entries().size();
    entry.Set(Column::ShortText, "Eintrag " + std::to_string(place + 1));
    std::vector<CollectionEntry> entries;
    entries.push_back(std::move(entry));
    editor_.Insert(place, std::move(entries));
    window_->ClearSearch();
    FollowChange({place});
    Q_EMIT windowWanted();
    window_->EditName(place);
}

void CollectionControl::TakePlot()
{
    const std::optional<std::size_t> selected = SelectedEntry();
    if (!selected || !MayChange({*selected}, "geändert")) return;
    editor_.SetPlot(*selected, host_.CurrentPlot());
    FollowChange({*selected});
    Q_EMIT plotTaken();
}

void CollectionControl::Copy() const
{
    Collection copied;
    for (const std::size_t place : window_->SelectedPlaces()) {
        copied.entries.push_back(editor_.Entries()[place]);
    }
    if (copied.entries.empty()) return;
    auto data = std::make_unique<QMimeData>();
    data->setData(kEntriesFormat, QByteArray::fromStdString(document::WriteCollection(copied)));
    data->setText(ReadableText(copied.entries));
    QGuiApplication::clipboard()->setMimeData(data.release());
}

void CollectionControl::Insert(bool behind)
{
    if (!EntriesOnClipboard()) return;
    const QByteArray bytes = QGuiApplication::clipboard()->mimeData()->data(kEntriesFormat);
    Collection copied;
    document::ReadCollection(bytes.toStdString(), document::ReadMode::Open, copied);
    const std::size_t count = copied.entries.size();
    if (count == 0) return;
    const std::vector<std::size_t> selected = window_->SelectedPlaces();
    std::size_t before = editor_.Entries().size();
    if (!selected.empty()) before = behind ? selected.back() + 1 : selected.front();
    editor_.Insert(before, std::move(copied.entries));
    window_->ClearSearch();
    FollowChange(Places(before, count));
}

void CollectionControl::Cut()
{
    if (!MayChange(window_->SelectedPlaces(), "ausgeschnitten")) return;
    Copy();
    RemoveSelected();
}

void CollectionControl::Remove()
{
    if (MayChange(window_->SelectedPlaces(), "gelöscht")) RemoveSelected();
}

void CollectionControl::RemoveSelected()
{
    const std::vector<std::size_t> places = window_->SelectedPlaces();
    if (places.empty()) return;
    editor_.Remove(places);
    const std::size_t left = editor_.Entries().size();
    FollowChange(left == 0 ? Places(0, 0) : Places(std::min(places.front(), left - 1), 1));
}

// Protects the selected entries unless they are so already.
void CollectionControl::ToggleProtection()
{
    const std::vector<std::size_t> places = window_->SelectedPlaces();
    editor_.SetProtected(places, !AllProtected(places));
    FollowChange(places);
}

bool CollectionControl::AllProtected(const std::vector<std::size_t>& places) const
{
    return !places.empty() && std::ranges::all_of(places, [this](std::size_t place) {
        return editor_.Entries()[place].is_protected;
    });
}

// An entry always has a name.
void CollectionControl::Rename(std::size_t place, const QString& name)
{
    if (name.trimmed().isEmpty()) return;
    editor_.SetText(place, Column::ShortText, name.toStdString());
    window_->ShowEntry(place);
    ShowState();
    Q_EMIT changed();
}

void CollectionControl::Move(const std::vector<std::size_t>& places, std::size_t before)
{
    const std::size_t changes = editor_.Changes();
    const std::size_t first = editor_.Move(places, before);
    if (editor_.Changes() != changes) FollowChange(Places(first, places.size()));
}

void CollectionControl::TakeDescription(const std::string& text, document::Typing typing)
{
    const std::optional<std::size_t> selected = SelectedEntry();
    if (!selected || editor_.Entries()[*selected][Column::LongText] == text) return;
    // Asked once: a refusal makes the text unchangeable, so that typing on asks nothing more.
    if (!answer_) answer_ = Answer{*selected, MayChange({*selected}, "geändert")};
    if (!answer_->may_change) {
        FollowSelection();
        return;
    }
    editor_.SetText(*selected, Column::LongText, text, typing);
    ShowState();
    Q_EMIT changed();
}

void CollectionControl::GoBack(std::optional<std::size_t> select)
{
    if (!select) return;
    const std::size_t count = editor_.Entries().size();
    FollowChange(count == 0 ? Places(0, 0) : Places(std::min(*select, count - 1), 1));
}

void CollectionControl::FollowChange(const std::vector<std::size_t>& select)
{
    window_->ShowEntries(select);
    ShowState();
    Q_EMIT changed();
}

void CollectionControl::FollowSelection()
{
    const std::optional<std::size_t> selected = SelectedEntry();
    if (answer_ && answer_->place != selected) answer_.reset();
    ShowDescription();
    ShowCommands();
}

ui::SammText& CollectionControl::DescriptionWindow()
{
    if (description_ == nullptr) {
        description_ = new ui::SammText(window_->window());
        connect(description_, &ui::SammText::edited, this, &CollectionControl::TakeDescription);
        ShowDescription();
        ShowState();
    }
    return *description_;
}

void CollectionControl::ShowDescription()
{
    if (description_ == nullptr) return;
    if (const std::optional<std::size_t> selected = SelectedEntry()) {
        description_->ShowText(editor_.Entries()[*selected][Column::LongText],
                               !answer_ || answer_->may_change);
    } else {
        description_->ShowNothing();
    }
}

void CollectionControl::ShowState()
{
    window_->ShowFile(file_name_, editor_.Modified());
    const bool follows = attributes_.description_follows_window;
    menus_.SetChecked("mn_ivar", !follows);
    for (std::size_t i = 0; i < std::size(kDescriptionPoints); ++i) {
        menus_.SetChecked(FontEntry(i), kDescriptionPoints[i] == attributes_.description_points);
    }
    if (description_ != nullptr) {
        description_->SetFontPoints(follows ? std::nullopt
                                            : std::optional(attributes_.description_points));
    }
    ShowCommands();
}

void CollectionControl::ShowInsertion(bool possible)
{
    insertion_possible_ = possible;
    ShowCommands();
}

void CollectionControl::ShowCommands()
{
    const std::vector<std::size_t> places = window_->SelectedPlaces();
    const auto possible = [&](EntryCommand command) {
        switch (command) {
            case EntryCommand::AddPlot:
            case EntryCommand::NewEntry: return true;
            case EntryCommand::Insert:
            case EntryCommand::InsertAfter: return insertion_possible_;
            case EntryCommand::Undo: return editor_.CanUndo();
            case EntryCommand::Redo: return editor_.CanRedo();
            default: return !places.empty();
        }
    };
    for (const CommandEntry& entry : kCommands) {
        menus_.SetEnabled(entry.name, possible(entry.command));
        window_->ShowCommand(entry.command, possible(entry.command));
    }
    for (const EntryCommand command :
         {EntryCommand::TakePlot, EntryCommand::Undo, EntryCommand::Redo}) {
        window_->ShowCommand(command, possible(command));
    }
    menus_.SetChecked("mn_protect", AllProtected(places));
    window_->ShowProtection(AllProtected(places));
}

// `done` as in "Soll er trotzdem gelöscht werden?"
bool CollectionControl::MayChange(const std::vector<std::size_t>& places, std::string_view done)
{
    const auto locked = std::ranges::count_if(
        places, [this](std::size_t place) { return editor_.Entries()[place].is_protected; });
    if (locked == 0) return true;
    std::string text = "Unter den angewählten Einträgen sind geschützte. Sollen sie trotzdem ";
    if (places.size() == 1) {
        const CollectionEntry& entry = editor_.Entries()[places.front()];
        text = "Der Eintrag „" + std::string(entry[Column::ShortText]) +
               "“ ist geschützt. Soll er trotzdem ";
    }
    // No is the answer to a key that was meant for something else.
    return dialogs_.AskYesNo("Achtung!", text + std::string(done) + " werden?", ui::Preset::No);
}

// A chosen size is meant to be seen.
void CollectionControl::ChooseFont(int points)
{
    attributes_.description_points = points;
    SetFontFollowsWindow(false);
}

void CollectionControl::SetFontFollowsWindow(bool follows)
{
    attributes_.description_follows_window = follows;
    ShowState();
    Q_EMIT descriptionFontChanged();
}

}  // namespace korvinth::app
