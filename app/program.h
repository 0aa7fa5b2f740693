// The program with its windows: what starting and ending do in each of their steps.
#pragma once

#include <QObject>
#include <memory>

#include "app/application.h"
#include "app/collection_files.h"
#include "app/command_line.h"
#include "app/help_control.h"
#include "app/start_up.h"
#include "document/settings_file.h"
#include "ui/dialogs.h"

namespace korvinth::app {

class MainWindow;
class PictureCommands;

class Program final : public QObject, LifeCycle, CollectionFilesHost
{
    Q_OBJECT
public:
    // The program's files are in `directory`. Dialogs and disk outlive the program; the disk bears
    // calls from two threads.
    Program(const files::Path& directory, ui::Dialogs& dialogs,
            files::FileSystem& disk = files::Disk());
    ~Program() override;
    Q_DISABLE_COPY_MOVE(Program)

    // Runs the steps of starting, draws what the command line asks for and shows the main window.
    void Start(const CommandLine& command);
    MainWindow& Window() { return *window_; }
    CollectionFiles& Files() { return *files_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // LifeCycle
    void RunParserOnce() override;
    void PrepareIntervalTexts() override;
    void SetDefaults() override;
    void LoadDefinitions() override;
    void ComputeMapping() override;
    void SetUpWorkingCollection() override;
    void ReadCollection() override;
    void ArrangeWindows() override;
    void FinishIntervalTexts() override;
    void OfferToSave() override;
    void StopTimers() override;
    void CloseSliders() override;
    void CloseWindows() override;
    // LifeCycle and CollectionFilesHost
    void WriteSettings() override;
    // CollectionFilesHost
    void RedrawGraph() override;
    void ReadSettings() override;
    bool Animated() const override;

    void ConnectEntries();
    void SaveSettings();  // mn_saveopt

    files::FileSystem& disk_;
    Application application_;
    document::SettingsFile settings_;
    const bool first_start_;  // there are no files of an earlier one
    WorkingPlace place_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<CollectionFiles> files_;
    std::unique_ptr<HelpControl> help_;
    std::unique_ptr<PictureCommands> pictures_;
};

}  // namespace korvinth::app
