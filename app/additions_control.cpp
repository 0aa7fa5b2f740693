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
                                   ui::Dialogs& dialogs)
    : application_(application), parameters_(parameters), dialogs_(dialogs)
{
}

void AdditionsControl::SetLines(ui::Asymptoten& lines)
{
    lines_ = &lines;
    lines_->text2list(application_.Document().lines_text);
    FollowSettings();
    lines_->ShowProblems(ProblemsOf(render::kLineProblems));
}

void AdditionsControl::SetPoints(ui::Punkte& points)
{
    points_ = &points;
    points_->text2list(application_.Document().points_text);
    points_->ShowProblems(ProblemsOf(render::kPointProblems));
}

void AdditionsControl::FollowPlot()
{
    const document::PlotDocument& plot = application_.Document();
    if (lines_ != nullptr) lines_->text2list(plot.lines_text);
    FollowSettings();
    if (points_ != nullptr) points_->text2list(plot.points_text);
}

void AdditionsControl::FollowSettings()
{
    if (lines_ != nullptr) lines_->SetCommonColour(application_.Document().attributes.line_colour);
}

void AdditionsControl::LinesTaken()
{
    told_.clear();
    lines_are_taken_ = true;
}

void AdditionsControl::FollowRedraw()
{
    for (const render::Problem& problem : application_.Problems()) {
        const bool taken = problem.title == render::kLineProblems && lines_are_taken_;
        const std::string title(taken ? render::kTakenLineProblems : problem.title);
        if (told_.insert(problem.text).second) Tell(title, problem.text);
    }
    lines_are_taken_ = false;
    if (lines_ != nullptr) lines_->ShowProblems(ProblemsOf(render::kLineProblems));
    if (points_ != nullptr) points_->ShowProblems(ProblemsOf(render::kPointProblems));
}

// Of the last redraw, "" when there were none.
std::string AdditionsControl::ProblemsOf(std::string_view title) const
{
    std::string text;
    for (const render::Problem& problem : application_.Problems()) {
        if (problem.title == title) text = problem.text;
    }
    return text;
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
    if (points_ != nullptr) points_->text2list(plot.points_text);
    Q_EMIT pointMoved();
}

}  // namespace korvinth::app
