// The program with its windows: what starting and ending do in each of their steps.
#pragma once

#include <memory>

#include "app/application.h"
#include "app/command_line.h"
#include "app/start_up.h"
#include "ui/qt_dialogs.h"

namespace korvinth::app {

class MainWindow;

class Program final : public QObject, LifeCycle
{
    Q_OBJECT
public:
    Program();
    ~Program() override;

    // Runs the steps of starting, draws what the command line asks for and shows the main window.
    void Start(const CommandLine& command);
    MainWindow& Window() { return *window_; }

private:
    void RunParserOnce() override;
    void PrepareIntervalTexts() override;
    void SetDefaults() override;
    void LoadDefinitions() override;
    void ComputeMapping() override;
    void ArrangeWindows() override;
    void FinishIntervalTexts() override;
    void StopTimers() override;
    void CloseSliders() override;
    void CloseWindows() override;

    Application application_;
    ui::QtDialogs dialogs_;
    std::unique_ptr<MainWindow> window_;
};

}  // namespace korvinth::app
