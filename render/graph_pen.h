// Draws the samples of one graph: the clamp band, breaks in the line, markers.
#pragma once

#include <vector>

#include "render/drawing_surface.h"
#include "render/sampling.h"
#include "render/view_range.h"

namespace korvinth::render {

// How the samples of a slot are shown.
struct GraphStyle
{
    int point_radius = 0;  // pixels; 0 draws a line
    Colour colour{};       // of the markers
};

// A disc for one sample. Deliberate: its centre is one pixel right of and one pixel below the
// sample, whose place is given in pixels.
void DrawMarker(DrawingSurface& surface, const GraphStyle& style, double pixel_x, double pixel_y);

// Samples come in the order of their index. Values are in area units above the bottom edge.
class GraphPen
{
public:
    // `last_clamped`: the value before the first sample, 0 when that lay inside the clamp band.
    GraphPen(DrawingSurface& surface, const ViewRange& view, const Sampling& sampling,
             const GraphStyle& style, double last_clamped = 0);

    // A sample that has no value: left out, and the next one begins a new line.
    void Break();
    // `within`: whether the sample belongs to the slot's interval; the others only count for the
    // clamping.
    void Draw(double index, double value, bool within = true);

    // Collects the drawn samples, for finding a place beside the graph; null collects nothing.
    void Trace(std::vector<GridPoint>* trace) { trace_ = trace; }

private:
    void DrawPoint(double index, double value);

    DrawingSurface& surface_;
    GraphStyle style_;
    double pixels_per_sample_;
    double area_height_;
    double twips_per_pixel_;
    double clamp_limit_;
    double steps_;
    double last_clamped_;
    bool skip_ = true;
    bool pen_up_ = true;
    std::vector<GridPoint>* trace_ = nullptr;
};

}  // namespace korvinth::render
