#include "app/additions_control.h"

#include <QTimer>

#include "app/parameter_control.h"
#include "ui/asymptoten.h"
#include "ui/punkte.h"

namespace korvinth::app {
namespace {

// A box with a thousand lines would be taller than the screen.
std::string Shortened(const std::string& text)
{
    constexpr int kMostLines = 12;
    std::size_t end = 0;
    for (int line = 0; line < kMostLines; ++line) {
        end = text.find('\n', end);
        if (end == std::string::npos) return text;
        ++end;
    }
    return end == text.size() ? text : text.substr(0, end) + "...";
}

}  // namespace

AdditionsControl::AdditionsControl(Application& application, ParameterControl& parameters,
                                   ui::Asymptoten& lines, ui::Punkte& points, ui::Dialogs& dialogs)
    : application_(application),
      parameters_(parameters),
      lines_(lines),
      points_(points),
      dialogs_(dialogs)
{
}

void AdditionsControl::FollowPlot()
{
    const document::PlotDocument& plot = application_.Document();
    lines_.text2list(plot.lines_text);
    lines_.SetCommonColour(plot.attributes.line_colour);
    points_.text2list(plot.points_text);
}

void AdditionsControl::LinesTaken()
{
    told_.clear();
    lines_are_taken_ = true;
}

void AdditionsControl::FollowRedraw()
{
    std::string line_problems;
    std::string point_problems;
    for (const render::Problem& problem : application_.Problems()) {
        std::string title(problem.title);
        if (title == render::kLineProblems) {
            line_problems = problem.text;
            if (lines_are_taken_) title = render::kTakenLineProblems;
        } else if (title == render::kPointProblems) {
            point_problems = problem.text;
        }
        if (told_.insert(problem.text).second) Tell(title, problem.text);
    }
    lines_are_taken_ = false;
    lines_.ShowProblems(line_problems);
    points_.ShowProblems(point_problems);
}

// A redraw may run while a window paints; the box comes when that is done.
void AdditionsControl::Tell(const std::string& title, const std::string& text)
{
    QTimer::singleShot(0, this,
                       [this, title, text] { dialogs_.ShowError(title, Shortened(text)); });
}

bool AdditionsControl::GrabPoint(double area_x, double area_y)
{
    const render::ViewRange& view = application_.View();
    const document::PlotDocument& plot = application_.Document();
    const std::optional<std::size_t> index =
        application_.PointAt(area_x / view.twips_per_pixel_x, area_y / view.twips_per_pixel_y);
    if (!index) return false;
    const auto move = document::MovePoint(plot, *index, PlaceOf(area_x, area_y));
    if (!move) return false;  // its coordinates are terms
    held_ = {*index, {plot.points_text, {}}};
    for (const document::ParameterChange& change : move->parameters) {
        held_.before.parameters.push_back({change.index, plot.parameters[change.index].value});
    }
    dragged_ = false;
    Q_EMIT pointGrabbed();
    return true;
}

void AdditionsControl::DragPoint(double area_x, double area_y)
{
    const auto move =
        document::MovePoint(application_.Document(), held_.index, PlaceOf(area_x, area_y));
    if (!move) return;
    TakeMove(*move);
    dragged_ = true;
}

void AdditionsControl::DropPoint()
{
    if (dragged_) Q_EMIT pointDropped();
}

void AdditionsControl::CancelPoint()
{
    if (dragged_) TakeMove(held_.before);
}

document::WorldPlace AdditionsControl::PlaceOf(double area_x, double area_y) const
{
    const render::ViewRange& view = application_.View();
    return {view.WorldX(area_x), view.WorldY(area_y), view.twips_per_pixel_x / view.xmu,
            view.twips_per_pixel_y / view.ymu};
}

void AdditionsControl::TakeMove(const document::PointMove& move)
{
    document::PlotDocument& plot = application_.Document();
    plot.points_text = move.points_text;
    {
        const ParameterControl::Together together(parameters_);
        for (const document::ParameterChange& change : move.parameters) {
            parameters_.setpar(change.index, change.value);
        }
    }
    points_.text2list(plot.points_text);
    Q_EMIT pointMoved();
}

}  // namespace korvinth::app
