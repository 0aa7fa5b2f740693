#include "document/parameters_of.h"

#include <gtest/gtest.h>

#include "plot_fixture.h"

namespace korvinth::document {
namespace {

class ParametersOfTest : public PlotTest
{
protected:
    std::set<std::string> Names(int slot)
    {
        std::set<std::string> names;
        for (const ParameterIndex index : ParametersOf(document, Slot(slot))) {
            names.insert(document.parameters[index].name);
        }
        return names;
    }
};

TEST_F(ParametersOfTest, FollowsCallsCurvesIntegralsAndIntervals)
{
    Apply({"f(x)=a*x+sin(b)+1e3", "g(x)=f(c*x)", "h(x)=d*x+2e3+e3*0", "xp(t)=k*cos(t)",
           "yp(t)=m*sin(t)", "k2(x)=F(x)"});
    document.slots[Slot(2)].upper_bound = "n+1";
    Apply();
    using Set = std::set<std::string>;
    EXPECT_EQ(Names(0), (Set{"a", "b"}));
    EXPECT_EQ(Names(1), (Set{"a", "b", "c"}));
    EXPECT_EQ(Names(2), (Set{"d", "e3", "n"}));
    EXPECT_EQ(Names(3), (Set{"k", "m"}));
    EXPECT_EQ(Names(5), (Set{"a", "b", "k2u", "k2anz"}));
    EXPECT_EQ(Names(7), Set{}) << "an empty row";
}

}  // namespace
}  // namespace korvinth::document
