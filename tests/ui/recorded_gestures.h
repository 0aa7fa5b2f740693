// Stands in for what the gestures in the graph's area do to the view.
#pragma once

#include <QString>
#include <string>
#include <utility>

#include "ui/graph_gestures.h"

namespace korvinth::ui {

// Writes down what it is asked for, in area units.
class RecordedGestures : public GraphGestures
{
public:
    void zoom(render::ClickButton button, unsigned keys, double x, double y) override
    {
        Add("zoom", {static_cast<double>(button), static_cast<double>(keys), x, y});
    }
    bool ZoomToFrame(const render::ZoomFrame& frame) override
    {
        Add("frame", {frame.left, frame.top, frame.width, frame.height});
        return frame.width > 300 && frame.height > 300;
    }
    void ZoomByWheel(double steps, unsigned keys, double x, double y) override
    {
        Add("wheel", {steps, static_cast<double>(keys), x, y});
    }
    void ZoomByPinch(double factor, double x, double y) override { Add("pinch", {factor, x, y}); }
    void BeginDrag() override { Add("begin", {}); }
    void Drag(double dx, double dy) override { Add("drag", {dx, dy}); }
    void EndDrag() override { Add("end", {}); }
    void CancelDrag() override { Add("cancel", {}); }
    void scrlr(std::int16_t percent) override { Add("scrlr", {1.0 * percent}); }
    void scrud(std::int16_t percent) override { Add("scrud", {1.0 * percent}); }
    void ScrollByKey(double x, double y) override { Add("keys", {x, y}); }
    void ZoomByKey(int steps) override { Add("keyzoom", {1.0 * steps}); }
    void einszueins(render::ClickButton button) override
    {
        Add("1:1", {static_cast<double>(button)});
    }
    void UseStandardRange() override { Add("standard", {}); }
    void PopView() override { Add("back", {}); }

    std::string Take() { return std::exchange(calls_, ""); }

private:
    void Add(const char* name, std::initializer_list<double> numbers)
    {
        if (!calls_.empty()) calls_ += "; ";
        calls_ += name;
        for (const double number : numbers) {
            calls_ += " " + QString::number(number, 'g', 6).toStdString();
        }
    }
    std::string calls_;
};

}  // namespace korvinth::ui
