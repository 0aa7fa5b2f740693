#include "render/graph_trace.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "render/curve_graph.h"
#include "render/graph_value.h"
#include "render/pointer_text.h"
#include "render/renderer.h"
#include "render/sampling.h"

namespace korvinth::render {
namespace {

using document::FunctionSlot;
using document::SlotIndex;

constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();
constexpr double kOpen = std::numeric_limits<double>::infinity();

}  // namespace

GraphTrace::GraphTrace(const document::PlotDocument& document, term::MathParser& parser,
                       const ViewRange& view)
    : document_(document), parser_(parser), view_(view)
{
}

bool GraphTrace::IsCurve(SlotIndex slot) const
{
    return KindOf(document_.slots[slot]) == GraphKind::CurveXPart;
}

GraphTrace::Course GraphTrace::CourseOf(SlotIndex index) const
{
    const FunctionSlot& slot = document_.slots[index];
    if (IsCurve(index)) {
        const CurveSampling sampling =
            SampleCurve(document_, slot, DefaultSampleCount(view_), view_, parser_);
        return {sampling.first, sampling.first + sampling.count * sampling.step, sampling.step};
    }
    const double lower = BoundOr(document_, slot.lower_bound, -kOpen, parser_);
    const double upper = BoundOr(document_, slot.upper_bound, kOpen, parser_);
    return {std::min(lower, upper), std::max(lower, upper), PixelWidth(view_)};
}

bool GraphTrace::Begin()
{
    const std::vector<SlotIndex> graphs = GraphsToReadOff(document_);
    if (graphs.empty()) return false;
    slot_ = graphs.front();
    MoveToMiddle();
    return true;
}

void GraphTrace::MoveToMiddle()
{
    const Course course = CourseOf(*slot_);
    if (IsCurve(*slot_)) {
        at_ = course.first + (course.last - course.first) / 2;
    } else {
        at_ = std::clamp(view_.x_min + view_.width / 2, course.first, course.last);
    }
}

void GraphTrace::Move(int steps)
{
    if (!slot_) return;
    const Course course = CourseOf(*slot_);
    at_ = std::clamp(at_ + steps * course.step, course.first, course.last);
}

void GraphTrace::MoveToFirst()
{
    if (!slot_) return;
    const Course course = CourseOf(*slot_);
    at_ = course.first == -kOpen ? std::min(view_.x_min, course.last) : course.first;
}

void GraphTrace::MoveToLast()
{
    if (!slot_) return;
    const Course course = CourseOf(*slot_);
    const double last_pixel = view_.WorldX(view_.area_width - view_.twips_per_pixel_x);
    at_ = course.last == kOpen ? std::max(last_pixel, course.first) : course.last;
}

void GraphTrace::ChangeGraph(int step)
{
    const std::vector<SlotIndex> graphs = GraphsToReadOff(document_);
    if (!slot_ || graphs.empty()) return;
    const auto count = static_cast<int>(graphs.size());
    const auto present = static_cast<int>(std::ranges::find(graphs, *slot_) - graphs.begin());
    const bool from_curve = IsCurve(*slot_);
    slot_ = graphs[static_cast<std::size_t>((present % count + step + count) % count)];
    if (from_curve || IsCurve(*slot_)) {
        if (count > 1) MoveToMiddle();
    } else {
        Move(0);  // into the interval
    }
}

std::optional<ProbedPoint> GraphTrace::Point() const
{
    if (!slot_) return std::nullopt;
    const std::vector<SlotIndex> graphs = GraphsToReadOff(document_);
    if (std::ranges::find(graphs, *slot_) == graphs.end()) return std::nullopt;
    return IsCurve(*slot_) ? PointOfCurve(*slot_) : PointOfFunction(*slot_);
}

// The value belongs to the x that is shown, but at the ends of the interval to those.
ProbedPoint GraphTrace::PointOfFunction(SlotIndex slot) const
{
    const Course course = CourseOf(slot);
    double x = std::clamp(at_, course.first, course.last);
    if (x != course.first && x != course.last) {
        x = std::clamp(PointedX(view_, view_.AreaX(x)), course.first, course.last);
    }
    GraphValue value(document_, parser_, slot, view_.width / DefaultSampleCount(view_));
    return {slot, document_.slots[slot].name, x, value.At(x).value_or(kNoValue), {}, 0, {}};
}

ProbedPoint GraphTrace::PointOfCurve(SlotIndex x_part) const
{
    const Course course = CourseOf(x_part);
    const SlotIndex y_part{document_.slots[x_part].curve_link};
    const double t = std::clamp(at_, course.first, course.last);
    const auto value = [&](SlotIndex part) {
        return GraphValue(document_, parser_, part, course.step).At(t).value_or(kNoValue);
    };
    return {x_part,      document_.slots[x_part].name, value(x_part), value(y_part), t,
            course.step, document_.slots[y_part].name};
}

}  // namespace korvinth::render
