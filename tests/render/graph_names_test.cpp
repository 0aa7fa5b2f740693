#include "render/graph_names.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string_view>

#include "render/recording_surface.h"

namespace korvinth::render {
namespace {

constexpr document::SlotIndex kFirst{0};
constexpr document::SlotIndex kSecond{1};
constexpr GridExtent kExtent{10, 12};

std::vector<GridPoint> Trace(const std::function<double(int)>& y, int last = 200)
{
    std::vector<GridPoint> trace;
    for (int x = 0; x <= last; ++x) trace.push_back({x, static_cast<int>(std::lround(y(x)))});
    return trace;
}

struct NameTest : testing::Test
{
    std::optional<GridBox> Place(document::SlotIndex slot)
    {
        return PlaceGraphName(traces, slot, kExtent, surface, labels);
    }

    RecordingSurface surface{200, 100, 1};
    LabelSpace labels{200, 100, 2};
    GraphTraces traces;
};

TEST_F(NameTest, StandsAboveTheRightEndOfALevelGraph)
{
    traces[kFirst] = Trace([](int) { return 50; });
    const auto box = Place(kFirst);
    ASSERT_TRUE(box);
    EXPECT_EQ(*box, (GridBox{186, 35, 196, 47}));
}

struct GraphCase
{
    std::string_view behaviour;
    double (*y)(int);
};
constexpr GraphCase kGraphCases[] = {
    {"rising", [](int x) { return 100 - x / 2.0; }},
    {"falling", [](int x) { return x / 2.0; }},
    {"leaving at the top", [](int x) { return 90 - x * x / 100.0; }},
    {"leaving at the bottom", [](int x) { return 10 + x * x / 100.0; }},
    {"along the top edge", [](int) { return 1.0; }},
    {"along the bottom edge", [](int) { return 99.0; }},
};

TEST_F(NameTest, KeepsClearOfItsOwnGraphAndInsideTheArea)
{
    for (const GraphCase& row : kGraphCases) {
        SCOPED_TRACE(row.behaviour);
        traces[kFirst] = Trace(row.y);
        const auto box = Place(kFirst);
        ASSERT_TRUE(box);
        EXPECT_GE(box->left, 0);
        EXPECT_GE(box->top, 0);
        EXPECT_LE(box->right, 200);
        EXPECT_LE(box->bottom, 100);
        for (const GridPoint& point : traces[kFirst]) {
            EXPECT_FALSE(point.x > box->left && point.x < box->right && point.y > box->top &&
                         point.y < box->bottom);
        }
    }
}

TEST_F(NameTest, AvoidsOtherGraphsAndTexts)
{
    traces[kFirst] = Trace([](int) { return 50; });
    traces[kSecond] = Trace([](int) { return 40; });  // where the name would be
    const auto box = Place(kFirst);
    ASSERT_TRUE(box);
    EXPECT_EQ(box->top, 53);
    ASSERT_TRUE(labels.Take(*box));
    const auto next = Place(kFirst);
    ASSERT_TRUE(next);
    EXPECT_LE(next->right, box->left - 2);
}

TEST_F(NameTest, IsLeftOutWithoutRoom)
{
    traces[kFirst] = Trace([](int x) { return x % 2 == 0 ? -50 : 150; });
    EXPECT_FALSE(Place(kFirst));
    traces[kFirst] = Trace([](int) { return 200; });  // nowhere in the area
    EXPECT_FALSE(Place(kFirst));
    traces[kFirst].clear();
    EXPECT_FALSE(Place(kFirst));
}

}  // namespace
}  // namespace korvinth::render
