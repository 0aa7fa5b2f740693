// The frame of all windows: terms on the left, the graph on the right.
#pragma once

#include <QMainWindow>
#include <string_view>

#include "app/application.h"

namespace korvinth::ui {
class GraphForm;
class InterForm;
class TermList;
}  // namespace korvinth::ui

namespace korvinth::app {

class MainWindow : public QMainWindow, private ViewListener
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
    void FollowArea();
    void ShowRanges();

    void updatex() override;
    void updatey() override;
    void updatet() override;
    void RedrawGraph() override;
    void HistoryChanged(bool) override {}
    void CollectParameters() override { application_.Apply(); }

    Application& application_;
    ui::TermList* terms_;
    ui::GraphForm* graph_;
    ui::InterForm* ranges_;
};

}  // namespace korvinth::app
