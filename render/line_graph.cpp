#include "render/line_graph.h"

#include "render/grid_rounding.h"
#include "render/variable_scope.h"

namespace korvinth::render {

using document::AdditionalLine;
using document::LineDirection;
using term::Error;

std::string LineGraph::interprete(DrawingSurface& surface, const ViewRange& view)
{
    const VariableScope argument(parser_, document_.variables.x);
    const Colour common = document_.attributes.line_colour;
    const double steps = surface.StepsPerPixel();
    std::string errors;
    const Pen previous = surface.SelectPen({common, 1, LineType::Solid});
    for (const AdditionalLine& line : document::Text2List(document_.lines_text)) {
        if (line.hidden) continue;
        const document::LineTerm term = document::TranslateLine(document_, line.equation);
        if (term.direction == LineDirection::None) continue;
        const term::ExprHandle handle = parser_.Parse(term.term);
        Segment at;
        const bool located = parser_.GetError() == Error::None && Locate(term, handle, view, at);
        if (!located) errors += line.equation + ": " + parser_.ErrorText() + "\r\n";
        parser_.ReleaseExpr(handle);
        if (!located || !(at.x1 >= 0 && at.x2 <= view.WidthInPixels())) continue;
        surface.SelectPen({line.colour.value_or(common), 1, line.type});
        surface.MoveTo({RoundToGrid(at.x1 * steps), RoundToGrid(at.y1 * steps)});
        surface.LineTo({RoundToGrid(at.x2 * steps), RoundToGrid(at.y2 * steps)});
    }
    surface.SelectPen(previous);
    parser_.EvalText("");
    return errors;
}

bool LineGraph::Locate(const document::LineTerm& line, term::ExprHandle handle,
                       const ViewRange& view, Segment& segment)
{
    const double width = view.WidthInPixels();
    const double height = view.HeightInPixels();
    double left = 0;
    double right = 0;
    if (!EvaluateAt(handle, view.x_min, left)) return false;
    if (line.direction == LineDirection::Vertical) {
        const double pixel = (left - view.x_min) / view.width * width;
        segment = {pixel, 0, pixel, height};
        return true;
    }
    if (!EvaluateAt(handle, view.x_max, right)) return false;
    const double pixels = height / view.height;
    segment = {0, (view.y_max - left) * pixels, width, (view.y_max - right) * pixels};
    ClipTopAndBottom(segment, height);
    return true;
}

// Deliberate: a horizontal line is not clipped, not even one outside the area.
void LineGraph::ClipTopAndBottom(Segment& line, double height)
{
    const double from = line.y1;
    const double slope = (line.y2 - line.y1) / line.x2;
    if (slope == 0) return;
    if (line.y2 > height) {
        line.x2 = (height - from) / slope;
        line.y2 = height;
    } else if (line.y2 < 0) {
        line.x2 = -from / slope;
        line.y2 = 0;
    }
    if (from > height) {
        line.x1 = (height - from) / slope;
        line.y1 = height;
    } else if (from < 0) {
        line.x1 = -from / slope;
        line.y1 = 0;
    }
}

bool LineGraph::EvaluateAt(term::ExprHandle handle, double x, double& value)
{
    parser_.SetVariableValue(document_.variables.x, x);
    value = parser_.Evaluate(handle);
    return parser_.GetError() == Error::None;
}

}  // namespace korvinth::render
