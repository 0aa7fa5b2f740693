// A plot without windows: parser, document and view as the program sets them up at start.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>
#include <vector>

#include "document/apply_plot.h"
#include "document/plot_document.h"
#include "render/recording_surface.h"
#include "render/redraw_gate.h"
#include "render/renderer.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

struct TestPlot
{
    // An area of so many pixels at 15 twips a pixel.
    explicit TestPlot(int width = 200, int height = 100)
    {
        document::DefineSystemVariables(parser, document);
        view.area_width = width * 15.0;
        view.area_height = height * 15.0;
        Show(-10, 10, -5, 5);
    }

    void Show(double x_min, double x_max, double y_min, double y_max)
    {
        view.x_min = x_min;
        view.x_max = x_max;
        view.y_min = y_min;
        view.y_max = y_max;
        UpdateMapping(view, parser, document.variables);
    }

    // Without axes, help lines, numbers and names.
    void DrawGraphsAlone()
    {
        document::DisplayAttributes& look = document.attributes;
        look.axes = look.axis_names = look.x_numbers = look.y_numbers = look.help_lines = false;
        look.graph_names = false;
    }

    document::FunctionSlot& Define(int index, std::string_view name, std::string_view parser_term)
    {
        document::FunctionSlot& slot =
            document.slots[document::SlotIndex{static_cast<std::int16_t>(index)}];
        slot.name = name;
        slot.parser_term = parser_term;
        slot.colour_index = static_cast<std::int16_t>(index);
        return slot;
    }

    document::PlotDocument document;
    term::MathParser parser;
    ViewRange view;
    RedrawGate gate;
};

// A plot of graphs alone, 200 x 100 pixels, ten a unit: x from -10 to 10, y from -5 to 5.
struct RenderedPlot : testing::Test
{
    RenderedPlot() { plot.DrawGraphsAlone(); }

    static document::SlotIndex Slot(int index)
    {
        return document::SlotIndex{static_cast<std::int16_t>(index)};
    }
    std::vector<StrokeCommand> Redraw()
    {
        surface.Forget();
        renderer.RedrawAll(surface);
        return surface.All<StrokeCommand>();
    }

    TestPlot plot{200, 100};
    RecordingSurface surface{200, 100, 1};
    Renderer renderer{plot.document, plot.parser, plot.view, plot.gate};
};

}  // namespace korvinth::render
