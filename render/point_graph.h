// Draws the additional points and finds the one under the hand.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "document/additional_points.h"
#include "document/plot_document.h"
#include "render/drawing_surface.h"
#include "render/graph_names.h"
#include "render/label_space.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

class PointGraph
{
public:
    PointGraph(term::MathParser& parser, const document::PlotDocument& document)
        : parser_(parser), document_(document)
    {
    }

    // Draws the points of the document that are not hidden, with their names beside them where the
    // fewest samples of graphs are, and collects "point: message" of those that have an error, CR
    // LF after each.
    std::string Draw(DrawingSurface& surface, const ViewRange& view, const GraphTraces& traces,
                     LabelSpace& labels);

    // The number of the drawn point nearest to a place of the area, in pixels, among those whose
    // sign or its near surroundings the place lies in.
    std::optional<std::size_t> PointAt(double pixel_x, double pixel_y) const;
    // Nothing is under the hand any more.
    void Forget() { places_.clear(); }

private:
    struct Place
    {
        std::size_t index;
        double x, y;  // pixels
        double reach;
    };
    bool Evaluate(const std::string& coordinate, double& value);
    static void DrawSign(DrawingSurface& surface, const document::AdditionalPoint& point,
                         const Place& place, Colour background);
    void DrawName(DrawingSurface& surface, const document::AdditionalPoint& point,
                  const Place& place, const std::string& text, const GraphTraces& traces,
                  LabelSpace& labels) const;

    term::MathParser& parser_;
    const document::PlotDocument& document_;
    std::vector<Place> places_;  // of the last drawing
};

}  // namespace korvinth::render
