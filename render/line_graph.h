// Draws the additional straight lines.
#pragma once

#include <string>

#include "document/additional_lines.h"
#include "document/plot_document.h"
#include "render/drawing_surface.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

class LineGraph
{
public:
    LineGraph(term::MathParser& parser, const document::PlotDocument& document)
        : parser_(parser), document_(document)
    {
    }

    // Draws the lines of the document that are not hidden and collects "item: message" of those
    // that have an error, CR LF after each. What is no line (neither y= nor x=) is left out.
    std::string interprete(DrawingSurface& surface, const ViewRange& view);

private:
    // A line in pixels; y runs downwards from the top edge.
    struct Segment
    {
        double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    };
    static void ClipTopAndBottom(Segment& line, double height);

    // False when a value is missing; the parser's error state says why.
    bool Locate(const document::LineTerm& line, term::ExprHandle handle, const ViewRange& view,
                Segment& segment);
    bool EvaluateAt(term::ExprHandle handle, double x, double& value);

    term::MathParser& parser_;
    const document::PlotDocument& document_;
};

}  // namespace korvinth::render
