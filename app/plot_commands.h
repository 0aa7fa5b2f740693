// The menu entries that work on the plot: what they do and what their marks show.
#pragma once

#include "app/menus.h"
#include "app/session.h"
#include "ui/graphform.h"
#include "ui/termform.h"

namespace korvinth::app {

// Connects the entries and keeps their marks in step with the plot.
class PlotCommands : public QObject
{
    Q_OBJECT
public:
    // All outlive the object.
    PlotCommands(const Menus& menus, Session& session, ui::TermForm& terms, ui::GraphForm& graph);

    // Pop-up menus, at a point of the screen.
    void ShowRowMenu(QPoint place);  // for the editor's current row (popchange)
    void ShowGraphMenu(QPoint place);

private:
    template <class Action>
    void On(std::string_view entry, Action action);
    void ConnectPlot();
    void ConnectView();
    void ConnectRow();
    void ChooseKeptRatio(KeptRatio ratio);
    void ToggleMode(ui::PointerMode mode);
    void ToggleTracing();
    void SetState(document::EditorState state);

    void ShowState();
    void ShowRowState();

    const Menus& menus_;
    Session& session_;
    ui::TermForm& terms_;
    ui::GraphForm& graph_;
};

}  // namespace korvinth::app
