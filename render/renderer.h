// Redraws the whole picture: coordinate system, graphs, lines, points.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/plot_document.h"
#include "document/slots.h"
#include "render/curve_graph.h"
#include "render/drawing_surface.h"
#include "render/function_graph.h"
#include "render/graph_names.h"
#include "render/integral_graph.h"
#include "render/label_space.h"
#include "render/line_graph.h"
#include "render/point_graph.h"
#include "render/redraw_gate.h"
#include "render/sampling.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

enum class GraphKind { Function, Integral, CurveXPart, CurveYPart };

GraphKind KindOf(const document::FunctionSlot& slot);

// False for lines without ink: nothing of the graph is to be seen or read off.
bool HasInk(const document::PlotDocument& document, document::SlotIndex slot);

// A message with the title of its box.
struct Problem
{
    std::string title, text;
    bool operator==(const Problem&) const = default;
};

inline constexpr std::string_view kLineProblems = "Aufgetretene Fehler bei Asymptoten:";
inline constexpr std::string_view kPointProblems = "Punktefenster:";
// In place of kLineProblems when the list has just been taken from its window.
inline constexpr std::string_view kTakenLineProblems = "Geradenfenster:";

// Reads the document and the view, sets parser variables for the samples and leaves them as they
// were, but for `sw`, which stays the step of everything that is no slot of its own.
class Renderer
{
public:
    Renderer(const document::PlotDocument& document, term::MathParser& parser,
             const ViewRange& view, const RedrawGate& gate);

    // Does nothing while the gate is closed.
    void RedrawAll(DrawingSurface& surface);

    // What the last redraw could not do; the same comes with every redraw until its cause is gone,
    // so whoever shows it shows it once.
    const std::vector<Problem>& Problems() const { return problems_; }

    // The number of the additional point at a place of the area, in pixels.
    std::optional<std::size_t> PointAt(double pixel_x, double pixel_y) const
    {
        return point_graph_.PointAt(pixel_x, pixel_y);
    }

    // Steps between the samples of a slot's graph: those of its integral function, those set by
    // hand, those of the settings while they hold the counts constant, else one a pixel column.
    int SampleCount(document::SlotIndex slot) const;

private:
    void DrawSlot(DrawingSurface& surface, document::SlotIndex index);
    void DrawMember(DrawingSurface& surface, document::SlotIndex index, const GraphStyle& style,
                    bool first_member);
    void DrawIntegral(DrawingSurface& surface, document::SlotIndex slot, const Sampling& sampling,
                      const GraphStyle& style, std::vector<GridPoint>* trace);
    void DrawCurve(DrawingSurface& surface, document::SlotIndex x_part, const GraphStyle& style);
    void DrawFamily(DrawingSurface& surface, document::SlotIndex index, const GraphStyle& style);
    void DrawNames(DrawingSurface& surface, LabelSpace& labels) const;
    void DrawLinesAndPoints(DrawingSurface& surface, LabelSpace& labels);
    void AddProblem(std::string_view title, const std::string& text);
    document::SlotAttributes LookOf(document::SlotIndex slot) const;

    const document::PlotDocument& document_;
    term::MathParser& parser_;
    const ViewRange& view_;
    const RedrawGate& gate_;
    FunctionGraph function_graph_;
    IntegralGraph integral_graph_;
    CurveGraph curve_graph_;
    LineGraph line_graph_;
    PointGraph point_graph_;
    std::vector<Problem> problems_;
    GraphTraces traces_;  // of the last redraw
};

}  // namespace korvinth::render
