#include "render/picture_text.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

#include "document/colour_name.h"
#include "tests/document/plot_fixture.h"

namespace korvinth::render {
namespace {

class PictureTextTest : public document::PlotTest
{
protected:
    void Show(double x_min, double x_max, double y_min, double y_max)
    {
        view = {x_min, x_max, y_min, y_max};
        UpdateDerived(view);
    }

    ViewRange view;
};

TEST_F(PictureTextTest, TellsRangesGraphsAndParameters)
{
    Show(-10, 10, -7.5, 7.5);
    EXPECT_EQ(PictureText(document, view), "x von −10 bis 10, y von −7,5 bis 7,5. Kein Graph");
    Show(0, 1e6, -1.0 / 3, 5);
    Apply({"f(x)=a*x²", "g(x)=x", "h(x)=(", "x(t)=cos(t)", "y(t)=t"});
    document.FindParameter("a")->value = -2;
    document.slots[Slot(1)].visible = false;
    EXPECT_EQ(PictureText(document, view),
              "x von 0 bis 1000000, y von −0,333 bis 5. f(x) = a*x², blau. "
              "x(t) = cos(t), y(t) = t, purpur. a = −2")
        << "neither what is hidden nor what has a fault";
}

TEST(ColourName, IsThatOfTheNearestColour)
{
    struct Case
    {
        int red, green, blue;
        std::string_view name;
    };
    constexpr Case kCases[] = {
        {0, 0, 255, "blau"},      {255, 0, 0, "rot"},        {0, 128, 0, "grün"},
        {255, 255, 0, "gelb"},    {255, 165, 0, "orange"},   {0, 255, 255, "türkis"},
        {255, 0, 255, "magenta"}, {0, 0, 0, "schwarz"},      {250, 250, 250, "weiß"},
        {120, 125, 122, "grau"},  {0, 0, 128, "dunkelblau"}, {139, 69, 19, "braun"},
        {255, 192, 203, "rosa"},
    };
    for (const Case& row : kCases) {
        EXPECT_EQ(document::ColourName(document::MakeColour(row.red, row.green, row.blue)),
                  row.name);
    }
}

TEST(ColourName, TellsTheGraphsOfANewPlotApart)
{
    std::set<std::string_view> names;
    const document::DisplayAttributes attributes;
    for (const document::SlotIndex slot : document::AllSlots()) {
        const std::string_view name = document::ColourName(attributes.slots[slot].colour);
        EXPECT_TRUE(names.insert(name).second) << name;
    }
}

}  // namespace
}  // namespace korvinth::render
