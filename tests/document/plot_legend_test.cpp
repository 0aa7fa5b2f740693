#include "document/plot_legend.h"

#include "plot_fixture.h"

namespace korvinth::document {
namespace {

using PlotLegendTest = PlotTest;

TEST_F(PlotLegendTest, NamesWhatIsShownInItsLookAndTheParameters)
{
    ASSERT_EQ(Apply({"f(x)=a*x²", "x^3", "x(t)=cos(t)", "y(t)=b"}).errors, "");
    document.FindParameter("a")->value = -0.5;
    document.FindParameter("b")->value = 2;
    document.slots[Slot(1)].visible = false;
    document.slots[Slot(0)].colour_index = 5;
    const std::vector<LegendLine> lines = PlotLegend(document);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0].text, "f(x) = a*x²");
    EXPECT_EQ(lines[0].graph->colour, document.attributes.slots[Slot(5)].colour);
    EXPECT_EQ(lines[1].text, "x(t) = cos(t)");
    EXPECT_EQ(lines[2].text, "y(t) = b");
    EXPECT_EQ(lines[2].graph, lines[1].graph) << "both parts of a curve are one graph";
    EXPECT_EQ(lines[3], (LegendLine{"a = −0,5;  b = 2", std::nullopt}));
    document.slots[Slot(2)].visible = false;
    EXPECT_EQ(PlotLegend(document).size(), 2U) << "a hidden curve is hidden in both parts";
    EXPECT_TRUE(PlotLegend(PlotDocument()).empty());
}

}  // namespace
}  // namespace korvinth::document
