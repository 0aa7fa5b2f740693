#include "app/application.h"

#include <cmath>

#include "render/variable_scope.h"

namespace korvinth::app {

Application::Application()
{
    document::DefineSystemVariables(parser_, document_);
    views_.UpdateMapping();
}

bool Application::SetAreaSize(int width, int height)
{
    const double before = View().area_width;
    views_.SetAreaSize(width, height);
    return View().area_width != before;
}

void Application::ForgetSampleCounts()
{
    for (document::FunctionSlot& slot : document_.slots) slot.support_points = 0;
}

document::PlotReport Application::Apply()
{
    document::PlotReport report = document::ApplyPlot(document_, parser_, *this);
    // A faulty term keeps no range from being taken; what is wrong with ranges was then said.
    const bool terms_are_right = report.errors.empty();
    bool changed = false;
    const std::string faults = views_.ReadRanges(changed);
    if (!terms_are_right) return report;
    if (changed) {
        // The notes speak of the displayed range.
        report = document::ApplyPlot(document_, parser_, *this);
        views_.MarkParameters();
    }
    if (!faults.empty()) {
        report.errors += faults;
        report.status = report.errors;
    }
    return report;
}

std::string Application::TakeEntry(const document::CollectionEntry& entry)
{
    std::string faults = document::FillPlot(entry, document_);
    views_.TakeStated(document::StatedRanges(entry, Ranges()));
    return faults;
}

document::DisplayedRanges Application::Ranges() const
{
    const render::ViewRange& view = View();
    return {view.x_min, view.x_max, view.y_min, view.y_max, view.t_min, view.t_max};
}

void Application::Draw(render::DrawingSurface& surface, const render::ViewRange& view)
{
    Drawing drawing(*this, surface, view);
    while (drawing.Continue()) {
    }
}

Application::Drawing::Drawing(Application& application, render::DrawingSurface& surface,
                              const render::ViewRange& view)
    : application_(application),
      view_(view),
      renderer_(application.document_, application.parser_, view_, always_open_)
{
    InView([&] { redraw_ = renderer_.Begin(surface); });
}

bool Application::Drawing::Continue()
{
    bool more = false;
    InView([&] { more = renderer_.Continue(*redraw_); });
    return more;
}

template <class Piece>
void Application::Drawing::InView(Piece draw)
{
    const document::SystemVariables& variables = application_.document_.variables;
    const render::VariableScope step(application_.parser_, variables.sw);
    render::UpdateMapping(view_, application_.parser_, variables);
    draw();
    application_.views_.UpdateMapping();
}

void Application::StopAnimation()
{
    if (windows_ != nullptr) windows_->StopAnimation();
}

void Application::StoreRows(document::PlotDocument& plot)
{
    if (windows_ != nullptr) windows_->StoreRows(plot);
}

void Application::RowsChecked(const document::PlotDocument& plot)
{
    if (windows_ != nullptr) windows_->RowsChecked(plot);
}

void Application::InitSlider(document::ParameterIndex index)
{
    if (windows_ != nullptr) windows_->InitSlider(index);
}

std::vector<double> Application::DisplayedArguments() const
{
    const render::ViewRange& view = View();
    const auto samples = static_cast<int>(std::lround(view.area_width / view.twips_per_pixel_x));
    std::vector<double> arguments;
    for (int k = 0; k <= samples; ++k) {
        arguments.push_back(view.x_min + k * (view.x_max - view.x_min) / samples);
    }
    return arguments;
}

}  // namespace korvinth::app
