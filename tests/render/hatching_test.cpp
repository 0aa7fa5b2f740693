#include "render/hatching.h"

#include <set>
#include <string>
#include <vector>

#include "document/hatched_term.h"
#include "document/parameter_use.h"
#include "plot_fixture.h"

namespace korvinth::render {
namespace {

using document::SlotIndex;

constexpr std::string_view kFill = "(abs(ceil(Sin(pi/dichte*_x/sw))))";

struct HatchingTest : RenderedPlot
{
    HatchingTest() { plot.Define(0, "f", std::string(kFill) + "*2"); }

    void Hatch(double width, term::TrigMode mode = term::TrigMode::Radians)
    {
        plot.document.attributes.angle_mode = mode;
        plot.parser.SetTrigMode(mode);
        document::Parameter& stripes = plot.document.parameters[document::ParameterIndex{26}];
        stripes.name = "dichte";
        stripes.handle = plot.parser.DefineVariable("dichte");
        document::SetParameterValue(plot.document, plot.parser, document::ParameterIndex{26},
                                    width);
    }

    // The heights of the graph at its samples, 0 for a gap.
    std::vector<int> Samples(int pixel_width)
    {
        plot.view.area_width = pixel_width * 15.0;
        UpdateMapping(plot.view, plot.parser, plot.document.variables);
        RecordingSurface picture(pixel_width, 100, 1);
        renderer.RedrawAll(picture);
        std::vector<int> heights;
        for (const StrokeCommand& stroke : picture.All<StrokeCommand>()) {
            for (const GridPoint& point : stroke.points) heights.push_back(point.y);
        }
        return heights;
    }
};

// The lengths of the runs of equal samples; the first and the last are cut off by the view.
std::set<int> RunLengths(const std::vector<int>& heights)
{
    std::set<int> lengths;
    std::size_t start = 0;
    bool first = true;
    for (std::size_t i = 1; i < heights.size(); ++i) {
        if (heights[i] == heights[i - 1]) continue;
        if (!first) lengths.insert(static_cast<int>(i - start));
        first = false;
        start = i;
    }
    return lengths;
}

TEST_F(HatchingTest, StripesAreEquallyWideAtEveryZoomAndSizeInEveryAngleMode)
{
    const struct
    {
        double x_min, x_max;
    } views[] = {{-10, 10},     {-5, 5},        {0, 8},      {-7.5, 12.5},  {-1e-9, 1e-9},
                 {0.99, 1.013}, {1e6, 1e6 + 3}, {-3e4, 5e4}, {1, 1 + 1e-11}};
    for (const term::TrigMode mode :
         {term::TrigMode::Radians, term::TrigMode::Degrees, term::TrigMode::Grads}) {
        for (const double width : {1.0, 2.0, 5.0, 10.0, 17.0}) {
            Hatch(width, mode);
            for (const auto& view : views) {
                for (const int pixels : {200, 201, 737, 1000}) {
                    SCOPED_TRACE(testing::Message()
                                 << "mode " << static_cast<int>(mode) << ", width " << width
                                 << ", from " << view.x_min << ", " << pixels << " pixels");
                    plot.Show(view.x_min, view.x_max, -5, 5);
                    EXPECT_EQ(RunLengths(Samples(pixels)), std::set{static_cast<int>(width)});
                }
            }
        }
    }
}

TEST_F(HatchingTest, StripesOfBrokenWidthDifferByOneSampleAtMost)
{
    Hatch(2.5);
    EXPECT_EQ(RunLengths(Samples(200)), (std::set{2, 3}));
}

TEST_F(HatchingTest, OnlyHatchedGraphsAreShifted)
{
    Hatch(10);
    plot.Define(1, "g", "_x*f(_x)");
    plot.Define(2, "h", "g(2*_x)+1");
    plot.Define(3, "k", "_x");
    const std::vector hatched{true, true, true, false, false};
    for (std::int16_t slot = 0; slot < 5; ++slot) {
        EXPECT_EQ(document::IsHatched(plot.document, SlotIndex{slot}),
                  hatched[static_cast<std::size_t>(slot)]);
    }
}

TEST_F(HatchingTest, FamiliesOfEveryKindLeaveTheParametersAsTheyWere)
{
    document::Parameter& a = plot.document.parameters[document::ParameterIndex{27}];
    a.name = "a";
    a.family = true;
    a.handle = plot.parser.DefineVariable("a");
    plot.parser.SetVariableValue(a.handle, 0.5);
    Hatch(10);
    plot.Define(0, "f", std::string(kFill) + "*(a+2)").family_allowed = true;
    document::FunctionSlot& integral = plot.Define(1, "g", "integral(a)");
    integral.integral_term = "(a)";
    integral.family_allowed = true;
    document::FunctionSlot& x_part = plot.Define(2, "x", "a*cos(_x)");
    x_part.curve_link = 3;
    x_part.family_allowed = true;
    plot.Define(3, "y", "a*sin(_x)").curve_link = document::kCurveYPart;
    plot.document.attributes.family_count = 21;
    plot.document.attributes.family_step = 0.1;
    plot.parser.SetVariableValue(plot.document.variables.qq, 7);

    const auto strokes_of = [&](bool hatched, bool sum, bool curve) {
        plot.document.slots[SlotIndex{0}].visible = hatched;
        plot.document.slots[SlotIndex{1}].visible = sum;
        plot.document.slots[SlotIndex{2}].visible = curve;
        std::set<std::vector<int>> tops;  // of the strokes: no two members look the same
        for (const StrokeCommand& stroke : Redraw()) {
            std::vector<int> heights;
            for (const GridPoint& point : stroke.points) heights.push_back(point.y);
            tops.insert(heights);
        }
        return tops.size();
    };
    EXPECT_EQ(strokes_of(true, false, false), 22U);
    EXPECT_EQ(strokes_of(false, true, false), 44U) << "to the right and to the left";
    EXPECT_EQ(strokes_of(false, false, true), 22U);
    EXPECT_EQ(plot.parser.VariableValue(a.handle), 0.5);
    EXPECT_EQ(plot.parser.VariableValue(plot.document.variables.qq), 7);
    EXPECT_DOUBLE_EQ(plot.parser.VariableValue(plot.document.variables.sw), 20.0 / 200);
}

}  // namespace
}  // namespace korvinth::render
