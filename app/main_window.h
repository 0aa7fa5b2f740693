// The main window `mother`: menus, child windows and their arrangement.
#pragma once

#include <QMainWindow>
#include <memory>

#include "app/application.h"
#include "app/arrangement.h"
#include "app/collection_control.h"
#include "app/menus.h"
#include "app/plot_commands.h"
#include "app/session.h"
#include "ui/dialogs.h"

class QLabel;
class QMdiArea;

namespace korvinth::ui {
class Asymptoten;
class ChildWindow;
class MiniCalc;
class OptionsGraph;
class Punkte;
class ZoomDialog;
}  // namespace korvinth::ui

namespace korvinth::app {

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    // Shows the plot that the application holds. Both outlive the window.
    MainWindow(Application& application, ui::Dialogs& dialogs, QWidget* parent = nullptr);
    ~MainWindow() override;
    Q_DISABLE_COPY_MOVE(MainWindow)

    Session& PlotSession() { return *session_; }
    CollectionControl& Entries() { return *collection_; }
    ui::GraphForm& Graph() { return *graphform_; }
    QAction& MenuEntry(std::string_view name) { return menus_.Entry(name); }

    void ShowOutcome(const QString& outcome);  // in the status bar, until the next one
    void ArrangeWindows();
    void CloseSliders();
    void CloseWindows();

Q_SIGNALS:
    void closing();  // before the window closes, while everything is there
    void fileDropped(const QString& file);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void MakeChildren(Application& application);
    ui::ChildWindow* MakeChild(QWidget* content);
    ui::ChildWindow* MakeFreeChild(QWidget* content);  // hidden; above the others, closed by Esc
    QList<ui::ChildWindow*> Children() const;          // in the order of their making
    void MakeCollection(Application& application);
    void ConnectWindowEntries();
    void ConnectSession();
    void MakeShortcuts();

    void ShowChild(ui::ChildWindow* child);
    void ShowParameterList();
    void ShowRanges();
    void ShowLines();
    void ShowPoints();
    void ShowDescription();
    void ShowCalculator();
    void DockAll();        // mn_dock
    void SetGraphFree();   // mn_gri
    void MaximiseGraph();  // mn_ghm
    void ActivateNext(int step);
    void ActivateFormer();
    void ShowZoomFactors();
    void ShowSettings();  // mn_groptions
    void PlaceCollection(const Box& place);
    void ShowCollection();
    void SetRangesFree(bool free);
    void PlaceFreeRanges();
    void ShowBesideGraph(ui::ChildWindow* child, QWidget* content);
    void ShowAbout();

    Application& application_;
    ui::Dialogs& dialogs_;
    Menus menus_;
    QMdiArea* area_;
    QLabel* outcome_;
    // Contents first: the frames take them in.
    ui::TermForm* termform_ = nullptr;
    ui::GraphForm* graphform_ = nullptr;
    ui::ParameterColumn* sliders_ = nullptr;
    ui::ChildWindow* terms_frame_ = nullptr;
    ui::ChildWindow* sliders_frame_ = nullptr;
    ui::ChildWindow* graph_frame_ = nullptr;
    ui::ChildWindow* collection_frame_ = nullptr;
    // Made on first use.
    ui::ZoomDialog* zoom_dialog_ = nullptr;
    ui::OptionsGraph* settings_ = nullptr;
    ui::ParameterList* parameter_list_ = nullptr;
    ui::InterForm* interform_ = nullptr;
    ui::Asymptoten* lines_ = nullptr;
    ui::Punkte* points_ = nullptr;
    ui::MiniCalc* calculator_ = nullptr;
    ui::ChildWindow* list_frame_ = nullptr;
    ui::ChildWindow* ranges_frame_ = nullptr;
    ui::ChildWindow* lines_frame_ = nullptr;
    ui::ChildWindow* points_frame_ = nullptr;
    ui::ChildWindow* description_frame_ = nullptr;
    ui::ChildWindow* calculator_frame_ = nullptr;
    std::unique_ptr<Session> session_;
    std::unique_ptr<CollectionControl> collection_;
    std::unique_ptr<PlotCommands> commands_;
    GraphPlace graph_place_ = GraphPlace::Docked;
    bool collection_waits_ = false;  // hidden for lack of room
};

}  // namespace korvinth::app
