#include "app/program.h"

#include <QAction>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>

#include "app/examples.h"
#include "app/main_window.h"
#include "app/picture_commands.h"
#include "document/interval_text.h"
#include "files/path_text.h"

namespace korvinth::app {
namespace {

bool HoldsFiles(files::FileSystem& disk, const files::Path& directory)
{
    std::error_code fault;
    return disk.Exists(directory / document::kSettingsFileName, fault) ||
           disk.Exists(directory / kWorkingCollectionName, fault);
}

// What is copied as a metafile.
files::Path MetafileOf(const WorkingPlace& place)
{
    return files::WithEnding(place.collection, ".emf");
}

bool IsKeyOf(const QAction& entry, QEvent& event)
{
    const auto& key = static_cast<QKeyEvent&>(event);
    return QKeySequence(key.keyCombination()) == entry.shortcut();
}

}  // namespace

Program::Program(const files::Path& directory, ui::Dialogs& dialogs, files::FileSystem& disk)
    : disk_(disk),
      settings_(disk, directory),
      first_start_(!HoldsFiles(disk, directory)),
      place_(TakeWorkingPlace(directory)),
      window_(std::make_unique<MainWindow>(application_, dialogs)),
      files_(std::make_unique<CollectionFiles>(disk, place_.collection, window_->Entries(),
                                               window_->PlotSession(),
                                               static_cast<CollectionFilesHost&>(*this), dialogs)),
      help_(std::make_unique<HelpControl>(*window_, directory)),
      pictures_(std::make_unique<PictureCommands>(application_, *window_, dialogs,
                                                  MetafileOf(place_), disk))
{
    connect(window_.get(), &MainWindow::closing, this, [this] { RunSteps(EndSteps(), *this); });
    connect(window_.get(), &MainWindow::fileDropped, this,
            [this](const QString& file) { files_->OpenFile(files::PathOf(file.toStdString())); });
    Session& session = window_->PlotSession();
    connect(&session, &Session::settingsTouched, this, &Program::WriteSettings);
    connect(&session, &Session::touched, files_.get(), &CollectionFiles::Touch);
    CollectionControl& entries = window_->Entries();
    connect(&entries, &CollectionControl::plotTaken, this, &Program::WriteSettings);
    connect(&entries, &CollectionControl::descriptionFontChanged, this, &Program::WriteSettings);
    ConnectEntries();
    QCoreApplication::instance()->installEventFilter(this);
}

Program::~Program() = default;

void Program::ConnectEntries()
{
    const auto on = [this](std::string_view entry, auto action) {
        connect(&window_->MenuEntry(entry), &QAction::triggered, this, action);
    };
    on("mn_open", [this] { files_->Open(); });
    on("mn_mrg", [this] { files_->Append(); });
    on("mn_save", [this] { files_->Save(); });
    on("mn_saveas", [this] { files_->SaveAs(); });
    on("mn_examples", [this] {
        files_->OpenBytes(ExampleCollection());
        Q_EMIT window_->Entries().windowWanted();
    });
    on("mn_saveopt", [this] { SaveSettings(); });
}

void Program::Start(const CommandLine& command)
{
    RunSteps(StartSteps(), *this);
    if (command.AsksForPlot()) window_->PlotSession().DrawRequest(command);
    window_->show();
    const bool draws = command.AsksForPlot() || !command.collection.empty();
    if (first_start_ && !draws) help_->ShowWelcome();
    if (!command.collection.empty()) files_->OpenFile(files::PathOf(command.collection));
}

// Whatever the user does by hand or key may change something that the working collection holds.
bool Program::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
        case QEvent::MouseButtonRelease:
        case QEvent::KeyRelease:
        case QEvent::Wheel:
        case QEvent::Drop: files_->Touch(); break;
        case QEvent::ShortcutOverride:
            // On some desktops Ctrl+E would be the way to the end of a field's text.
            if (IsKeyOf(window_->MenuEntry("mn_export"), *event)) {
                event->ignore();
                return true;
            }
            break;
        default: break;
    }
    return QObject::eventFilter(watched, event);
}

void Program::RunParserOnce() { application_.Parser().EvalText("1"); }

void Program::PrepareIntervalTexts()
{
    for (document::FunctionSlot& slot : application_.Document().slots) {
        slot.lower_bound.clear();
        slot.upper_bound.clear();
    }
}

void Program::SetDefaults() { application_.Document().attributes = document::DisplayAttributes(); }

void Program::LoadDefinitions()
{
    application_.Parser().Reset();
    document::DefineSystemVariables(application_.Parser(), application_.Document());
}

void Program::ComputeMapping() { application_.UpdateMapping(); }

void Program::SetUpWorkingCollection()
{
    if (place_.lock) {  // only this program writes there
        files::RemoveLeftovers(disk_, place_.collection);
        files::RemoveLeftovers(disk_, MetafileOf(place_));
    }
    files_->SetUpWorkingCollection();
    // A second program may have no working collection yet, but the settings are those of all.
    if (place_.collection.filename() != kWorkingCollectionName) ReadSettings();
}

void Program::ReadCollection()
{
    files_->ReadWorkingCollection();
    window_->PlotSession().ForgetSteps();
}

void Program::ArrangeWindows() { window_->ArrangeWindows(); }

void Program::FinishIntervalTexts()
{
    for (document::FunctionSlot& slot : application_.Document().slots) {
        const bool open = slot.lower_bound.empty() && slot.upper_bound.empty();
        if (open) slot.interval = document::kOpenInterval;
    }
}

void Program::WriteSettings()
{
    settings_.WriteSettings(application_.Document().attributes);  // a fault is told to nobody
}

void Program::ReadSettings()
{
    settings_.ReadSettings(application_.Document().attributes);
    window_->PlotSession().FollowSettings();
}

void Program::SaveSettings()
{
    WriteSettings();
    // Deliberate: with a named collection they are written once more, which does no harm.
    if (files_->HasName()) WriteSettings();
}

void Program::OfferToSave()
{
    files_->OfferToSave();
    files_->Flush();
}

void Program::RedrawGraph() { window_->PlotSession().Redraw(); }

bool Program::Animated() const { return window_->PlotSession().Animation().Active(); }

void Program::StopTimers() { window_->PlotSession().Animation().StopAll(); }

void Program::CloseSliders() { window_->CloseSliders(); }

void Program::CloseWindows() { window_->CloseWindows(); }

}  // namespace korvinth::app
