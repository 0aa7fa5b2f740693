#include "render/view_history.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace korvinth::render {
namespace {

ViewRange ViewNumber(int number)
{
    ViewRange view;
    view.x_min = -number;
    view.y_min = -number - 0.5;
    view.x_max = number;
    view.y_max = number + 0.1;
    return view;
}

// Numbers of the views in the order in which they come back.
std::vector<int> PopAll(ViewHistory& history)
{
    std::vector<int> numbers;
    ViewRange view;
    while (history.PopView(view)) {
        numbers.push_back(static_cast<int>(view.x_max));
        EXPECT_EQ(view.y_max, view.x_max + 0.1);
        EXPECT_EQ(view.width, 2 * view.x_max);
    }
    return numbers;
}

ViewHistory Filled(int views)
{
    ViewHistory history;
    for (int number = 1; number <= views; ++number) history.PushView(ViewNumber(number));
    return history;
}

TEST(ViewHistory, WritesTheNewestViewFirstWithABlankAfterEach)
{
    EXPECT_EQ(Filled(2).Text(), "-2;-2.5;2;2.1 -1;-1.5;1;1.1 ");
}

TEST(ViewHistory, DoesNotPushTheNewestViewTwice)
{
    ViewHistory history = Filled(2);
    history.PushView(ViewNumber(2));
    EXPECT_EQ(PopAll(history), (std::vector{2, 1}));
    ViewRange view = ViewNumber(7);
    EXPECT_FALSE(history.PopView(view)) << "empty now";
    EXPECT_EQ(view.x_max, 7);
}

struct OverflowCase
{
    std::string_view behaviour;
    int pushed;
    int kept;
};
constexpr OverflowCase kOverflowCases[] = {
    {"fifty views are kept", 50, 50},
    {"the fifty-first push drops none", 51, 51},
    {"the fifty-second drops the oldest", 52, 51},
    {"and so does each one later", 60, 51},
};

TEST(ViewHistory, KeepsFiftyOneViewsOnceItHasOverflowed)
{
    for (const OverflowCase& row : kOverflowCases) {
        SCOPED_TRACE(row.behaviour);
        ViewHistory history = Filled(row.pushed);
        const std::vector<int> numbers = PopAll(history);
        ASSERT_EQ(static_cast<int>(numbers.size()), row.kept);
        EXPECT_EQ(numbers.front(), row.pushed);
        EXPECT_EQ(numbers.back(), row.pushed - row.kept + 1);
        EXPECT_TRUE(history.Empty());
    }
}

TEST(ViewHistory, OverflowsAtTheSamePlaceAfterPops)
{
    ViewHistory history = Filled(52);
    history.ClearViewHistory();
    EXPECT_TRUE(history.Empty());
    history = Filled(52);
    ViewRange view;
    for (int i = 0; i < 10; ++i) history.PopView(view);
    for (int number = 101; number <= 120; ++number) history.PushView(ViewNumber(number));
    const auto numbers = PopAll(history);
    EXPECT_EQ(numbers.size(), 51U);
    EXPECT_EQ(numbers.front(), 120);
}

}  // namespace
}  // namespace korvinth::render
