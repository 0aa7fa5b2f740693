// A mark that keys move along the graphs.
#pragma once

#include <optional>

#include "document/plot_document.h"
#include "document/slots.h"
#include "render/graph_probe.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

// Keeps its place in world units, so that it stays on its graph when view or parameters change.
class GraphTrace
{
public:
    // All outlive it.
    GraphTrace(const document::PlotDocument& document, term::MathParser& parser,
               const ViewRange& view);

    bool Active() const { return slot_.has_value(); }
    // On the first graph that is to be seen, in the middle of the view, on a curve in that of its
    // interval; false when there is no graph.
    bool Begin();
    void End() { slot_.reset(); }

    // By pixels, on a curve by samples, as far as the ends of the graph's interval.
    void Move(int steps);
    // The ends of the interval, an open one ends with the view.
    void MoveToFirst();
    void MoveToLast();
    // To the next graph in the order of the rows (+1) or the former one (-1), round about.
    // Functions keep their x.
    void ChangeGraph(int step);

    // Nothing when the graph is no longer to be seen.
    std::optional<ProbedPoint> Point() const;

private:
    // What the mark runs through: x of a function, the parameter of a curve.
    struct Course
    {
        double first, last;  // infinite where the interval is open
        double step;
    };

    bool IsCurve(document::SlotIndex slot) const;
    Course CourseOf(document::SlotIndex index) const;
    void MoveToMiddle();
    ProbedPoint PointOfFunction(document::SlotIndex slot) const;
    ProbedPoint PointOfCurve(document::SlotIndex x_part) const;

    const document::PlotDocument& document_;
    term::MathParser& parser_;
    const ViewRange& view_;
    std::optional<document::SlotIndex> slot_;
    double at_ = 0;
};

}  // namespace korvinth::render
