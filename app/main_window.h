// The frame of all windows: terms on the left, the graph on the right.
#pragma once

#include <QMainWindow>
#include <memory>
#include <string_view>

#include "app/application.h"

namespace korvinth::ui {
class Dialogs;
class GraphForm;
class TermForm;
}  // namespace korvinth::ui

namespace korvinth::app {

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    // Shows the rows that the plot holds. `application` outlives the window.
    explicit MainWindow(Application& application, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Tells what applying the plot has found, and draws.
    void ShowOutcome(std::string_view errors, std::string_view notes);

private:
    void MakeMenus();
    void ApplyRows();
    void ApplyIntervals();
    void FollowArea();

    Application& application_;
    std::unique_ptr<ui::Dialogs> dialogs_;
    ui::TermForm* terms_;
    ui::GraphForm* graph_;
};

}  // namespace korvinth::app
