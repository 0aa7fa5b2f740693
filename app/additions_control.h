// Keeps additional lines and points, their windows and the messages about them in step.
#pragma once

#include <QObject>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "app/application.h"
#include "document/additional_points.h"
#include "ui/dialogs.h"
#include "ui/graph_gestures.h"

namespace korvinth::ui {
class Asymptoten;
class Punkte;
}  // namespace korvinth::ui

namespace korvinth::app {

class ParameterControl;

class AdditionsControl : public QObject, public ui::PointHandle
{
    Q_OBJECT
public:
    // All outlive the control.
    AdditionsControl(Application& application, ParameterControl& parameters, ui::Dialogs& dialogs);

    // A window made on first use shows the plot's list and what is wrong with it.
    void SetLines(ui::Asymptoten& lines);
    void SetPoints(ui::Punkte& points);

    // After every change of the plot: the windows show its lists.
    void FollowPlot();
    void FollowSettings();
    // The list of lines has been taken from its window: its errors are told once more.
    void LinesTaken();
    // After a redraw: what it could not draw is told, each text once.
    void FollowRedraw();

    // ui::PointHandle
    bool GrabPoint(double area_x, double area_y) override;
    void DragPoint(double area_x, double area_y) override;
    void DropPoint() override;
    void CancelPoint() override;

Q_SIGNALS:
    void pointGrabbed();
    void pointMoved();    // the picture is to be drawn anew
    void pointDropped();  // a drag has changed the plot

private:
    // A point under the hand, and what its drag began with.
    struct HeldPoint
    {
        std::size_t index = 0;
        document::PointMove before;
    };
    std::string ProblemsOf(std::string_view title) const;
    void Tell(const std::string& title, const std::string& text);
    document::WorldPlace PlaceOf(double area_x, double area_y) const;
    void TakeMove(const document::PointMove& move);

    Application& application_;
    ParameterControl& parameters_;
    ui::Asymptoten* lines_ = nullptr;
    ui::Punkte* points_ = nullptr;
    ui::Dialogs& dialogs_;
    std::set<std::string> told_;
    bool lines_are_taken_ = false;
    HeldPoint held_;
    bool dragged_ = false;
};

}  // namespace korvinth::app
