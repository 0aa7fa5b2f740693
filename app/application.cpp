#include "app/application.h"

#include <cmath>

#include "document/range_bounds.h"

namespace korvinth::app {
namespace {

constexpr int kTwipsPerPixel = 15;

// Takes two bounds over; the fault with the range's name, "" when there is none.
std::string TakeBounds(const std::string& range, const document::RangeBounds& bounds, double& lower,
                       double& upper, bool& changed)
{
    if (!bounds.fault.empty()) return range + ": " + bounds.fault + "; ";
    changed = changed || lower != bounds.lower || upper != bounds.upper;
    lower = bounds.lower;
    upper = bounds.upper;
    return "";
}

}  // namespace

Application::Application()
{
    document::DefineSystemVariables(parser_, document_);
    ScaleYLikeX();
    UpdateMapping();
}

void Application::SetAreaSize(int width, int height)
{
    view_.twips_per_pixel_x = kTwipsPerPixel;
    view_.twips_per_pixel_y = kTwipsPerPixel;
    view_.area_width = width * kTwipsPerPixel;
    view_.area_height = height * kTwipsPerPixel;
    ScaleYLikeX();
    UpdateMapping();
    renderer_.FollowArea();
}

void Application::UpdateMapping() { render::UpdateMapping(view_, parser_, document_.variables); }

void Application::ScaleYLikeX()
{
    if (!document_.ranges.y_lower.empty()) return;
    const double centre = (view_.y_min + view_.y_max) / 2;
    const double height = (view_.x_max - view_.x_min) * view_.area_height / view_.area_width;
    view_.y_min = centre - height / 2;
    view_.y_max = centre + height / 2;
}

document::PlotReport Application::Apply()
{
    document::PlotReport report = document::ApplyPlot(document_, parser_, *this);
    if (!report.errors.empty()) return report;

    bool changed = false;
    const std::string faults = ReadRanges(changed);
    UpdateMapping();
    // The notes speak of the displayed range.
    if (changed) report = document::ApplyPlot(document_, parser_, *this);
    if (!faults.empty()) {
        report.errors += faults;
        report.status = report.errors;
    }
    return report;
}

std::string Application::ReadRanges(bool& changed)
{
    const document::RangeTexts& texts = document_.ranges;
    const auto read = [&](const std::string& lower, const std::string& upper) {
        return document::ReadRangeBounds(parser_, document_, lower, upper);
    };
    std::string faults = TakeBounds("x-Bereich", read(texts.x_lower, texts.x_upper), view_.x_min,
                                    view_.x_max, changed);
    if (texts.y_lower.empty()) {
        ScaleYLikeX();
    } else {
        faults += TakeBounds("y-Bereich", read(texts.y_lower, texts.y_upper), view_.y_min,
                             view_.y_max, changed);
    }
    faults += TakeBounds("Kurvenparameter", read(texts.t_lower, texts.t_upper), view_.t_min,
                         view_.t_max, changed);
    return faults;
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
    const auto samples = static_cast<int>(std::lround(view_.area_width / view_.twips_per_pixel_x));
    std::vector<double> arguments;
    for (int k = 0; k <= samples; ++k) {
        arguments.push_back(view_.x_min + k * (view_.x_max - view_.x_min) / samples);
    }
    return arguments;
}

}  // namespace korvinth::app
