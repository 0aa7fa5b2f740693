#include "render/renderer.h"

#include <string>
#include <vector>

#include "plot_fixture.h"

namespace korvinth::render {
namespace {

using document::SlotIndex;

struct RendererTest : RenderedPlot
{
    // Height of the graph over the bottom edge at x = 10, in pixels, stroke by stroke.
    std::vector<int> Heights()
    {
        std::vector<int> heights;
        for (const StrokeCommand& stroke : Redraw())
            heights.push_back(100 - stroke.points.back().y);
        return heights;
    }

    document::Parameter& DefineParameter(double value)
    {
        document::Parameter& parameter = plot.document.parameters[document::ParameterIndex{26}];
        parameter.name = "a";
        parameter.value = value;
        parameter.handle = plot.parser.DefineVariable("a");
        plot.parser.SetVariableValue(parameter.handle, value);
        return parameter;
    }
};

TEST_F(RendererTest, DrawsSlotsInOrderInTheirPens)
{
    plot.Define(12, "h", "-1");
    plot.Define(3, "g", "2");
    plot.Define(0, "f", "1").colour_index = 7;  // slots between may be free
    plot.document.attributes.slots[SlotIndex{3}].width = 5;
    plot.document.attributes.slots[SlotIndex{12}].type = LineType::Dot;
    const Pen pen{document::MakeColour(9, 8, 7), 3, LineType::Dash};
    surface.SelectPen(pen);
    EXPECT_EQ(Heights(), (std::vector{60, 70, 40}));
    EXPECT_EQ(surface.CurrentPen(), pen) << "given back";
    const auto strokes = surface.All<StrokeCommand>();
    EXPECT_TRUE(std::holds_alternative<ClearCommand>(surface.Commands().front()));
    EXPECT_TRUE(std::holds_alternative<RefreshCommand>(surface.Commands().back()));
    EXPECT_EQ(strokes[0].pen.colour, plot.document.attributes.slots[SlotIndex{7}].colour);
    EXPECT_EQ(strokes[1].pen.width, 5);
    EXPECT_EQ(strokes[2].pen.type, LineType::Dot);
}

TEST_F(RendererTest, LeavesOutHiddenAndEmptySlots)
{
    plot.Define(0, "f", "1").visible = false;
    plot.Define(1, "g", "");
    EXPECT_TRUE(Redraw().empty());
}

TEST_F(RendererTest, DrawsNothingWhileTheGateIsClosed)
{
    plot.Define(0, "f", "1");
    {
        const RedrawGate::Suppression outer(plot.gate);
        {
            const RedrawGate::Suppression inner(plot.gate);
        }
        Redraw();
        EXPECT_TRUE(surface.Commands().empty());
    }
    EXPECT_EQ(Redraw().size(), 1U);
}

TEST_F(RendererTest, SetsTheStepToThatOfTheSlotAndThenOfTheView)
{
    plot.Define(0, "f", "sw");
    plot.Define(1, "g", "10*sw");
    plot.document.slots[SlotIndex{0}].support_points = 11;    // sw = 2
    plot.document.slots[SlotIndex{1}].support_points = 1001;  // sw = 0.02
    EXPECT_EQ(Heights(), (std::vector{70, 52}));
    EXPECT_DOUBLE_EQ(plot.parser.EvalText("sw"), 20.0 / 200);
}

TEST_F(RendererTest, TakesOneSampleAPixelUnlessTheCountsAreHeldConstant)
{
    EXPECT_EQ(renderer.SampleCount(SlotIndex{5}), 200);
    plot.view.area_width = 300 * 15;
    EXPECT_EQ(renderer.SampleCount(SlotIndex{5}), 300);
    plot.document.attributes.constant_sample_count = true;
    plot.document.attributes.sample_count = 77;
    EXPECT_EQ(renderer.SampleCount(SlotIndex{5}), 77);
}

TEST_F(RendererTest, DrawsAFamilyFromThePresentValueUpAndRestoresIt)
{
    plot.Define(0, "f", "a").family_allowed = true;
    plot.Define(1, "g", "-a");  // not allowed as a family
    DefineParameter(0.5).family = true;
    plot.document.attributes.family_count = 3;
    plot.document.attributes.family_step = 1;
    EXPECT_EQ(Heights(), (std::vector{55, 65, 75, 85, 45}));
    EXPECT_DOUBLE_EQ(plot.parser.EvalText("a"), 0.5);
    plot.document.slots[SlotIndex{0}].upper_bound = "a";
    const auto strokes = Redraw();
    EXPECT_EQ(strokes.at(3).points.back().x - strokes.at(0).points.back().x, 30)
        << "so do the ends of intervals";
    plot.document.slots[SlotIndex{0}].upper_bound.clear();
    plot.document.parameters[document::ParameterIndex{26}].family = false;
    EXPECT_EQ(Heights(), (std::vector{55, 45})) << "both switches count";
}

TEST_F(RendererTest, DrawsMarkersInTheColourOfTheSlot)
{
    auto& slot = plot.Define(2, "f", "_x");
    slot.point_radius = 4;
    slot.support_points = 11;
    Redraw();
    const auto markers = surface.All<EllipseCommand>();
    ASSERT_EQ(markers.size(), 11U);
    EXPECT_EQ(markers[0].brush.colour, plot.document.attributes.slots[SlotIndex{2}].colour);
}

TEST_F(RendererTest, NamesTheGraphsInTheirColours)
{
    plot.document.attributes.graph_names = true;
    plot.Define(0, "f", "1");
    plot.Define(4, "g", "-1");
    plot.Define(5, "h", "100");  // out of view
    Redraw();
    const auto names = surface.All<TextCommand>();
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[0].text, "f");
    EXPECT_EQ(names[1].text, "g");
    EXPECT_EQ(names[1].colour, plot.document.attributes.slots[SlotIndex{4}].colour);
    plot.document.attributes.slots[SlotIndex{0}].type = LineType::Invisible;
    Redraw();
    EXPECT_EQ(surface.All<TextCommand>().size(), 1U);
}

TEST_F(RendererTest, KeepsTheNumberOfProgramsFromRedrawToRedraw)
{
    for (int slot = 0; slot < document::kSlotCount; ++slot) {
        document::FunctionSlot& f = plot.Define(slot, "f", "a*sin(_x)+" + std::to_string(slot));
        f.lower_bound = "-a";
        f.family_allowed = true;
    }
    DefineParameter(1).family = true;
    plot.document.attributes.family_count = 2;
    Redraw();
    const std::size_t programs = plot.parser.LivePrograms();
    for (int i = 0; i < 200; ++i) {
        plot.Show(-10 + i, 10 + i, -5, 5);
        Redraw();
    }
    EXPECT_EQ(plot.parser.LivePrograms(), programs);
}

}  // namespace
}  // namespace korvinth::render
