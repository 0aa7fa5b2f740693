// Draws the graph of a function of x.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "document/plot_document.h"
#include "render/drawing_surface.h"
#include "render/graph_pen.h"
#include "render/sampling.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

// Holds the scratch space of the evaluation, so that a redraw allocates nothing for its samples.
class FunctionGraph
{
public:
    FunctionGraph(term::MathParser& parser, const document::SystemVariables& variables)
        : parser_(parser), variables_(variables)
    {
    }

    // Draws one sample after the other with the surface's pen, as a line or as markers. Samples at
    // which the term has no value are left out and break the line; so do poles whose values leave
    // the band of two area heights. The drawn samples are added to `trace` unless it is null.
    void drawf(DrawingSurface& surface, std::string_view parser_term, const ViewRange& view,
               const Sampling& sampling, const GraphStyle& style, std::vector<GridPoint>* trace);

private:
    static constexpr std::size_t kBlock = 512;

    term::MathParser& parser_;
    const document::SystemVariables& variables_;
    std::array<double, kBlock> arguments_{};
    std::array<double, kBlock> values_{};
    std::array<term::Error, kBlock> errors_{};
};

}  // namespace korvinth::render
