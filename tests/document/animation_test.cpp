#include "document/animation.h"

#include <gtest/gtest.h>

#include "document/list_text.h"
#include "document/number_text.h"

namespace korvinth::document {
namespace {

struct TickCase
{
    std::string_view behaviour;
    double step;
    AnimationMode mode;
    std::string_view values;  // the first one is where it starts
    double last_step;
};
constexpr AnimationMode kWrap = AnimationMode::Wrap;
constexpr AnimationMode kBounce = AnimationMode::Bounce;

// Between the bounds 0 and 10.
constexpr TickCase kTickCases[] = {
    {"a wrap goes exactly to the lower bound", 3, kWrap, "0 3 6 9 0 3", 3},
    {"a wrap downwards goes exactly to the upper bound", -3, kWrap, "0 10 7 4 1 10", -3},
    {"a turn goes one step back and stores the sign", 3, kBounce, "0 3 6 9 6 3 0 3", 3},
    {"a turn at the upper bound leaves the step negative", 3, kBounce, "6 9 6", -3},
    {"a value may land on the bounds (wrap)", 5, kWrap, "0 5 10 0", 5},
    {"a value may land on the bounds (turn)", 5, kBounce, "0 5 10 5 0 5", 5},
    {"a value typed above the bounds walks back", 3, kBounce, "20 17 14 11 8", -3},
    {"a value typed above the bounds wraps", 3, kWrap, "20 0 3", 3},
    // Deliberate: both comparisons act on one tick.
    {"a step as wide as the interval turns twice in one tick", 10, kBounce, "5 15 5 15", 10},
};

TEST(NextTick, WrapsAndTurnsAtTheBounds)
{
    for (const TickCase& row : kTickCases) {
        SCOPED_TRACE(row.behaviour);
        const std::vector<std::string_view> values = SplitText(row.values, " ");
        Parameter parameter;
        parameter.lower = 0;
        parameter.step = row.step;
        parameter.mode = row.mode;
        parameter.value = LeadingNumber(values.front());
        for (std::size_t k = 1; k < values.size(); ++k) {
            const TickResult next = NextTick(parameter);
            EXPECT_EQ(ShortestText(next.value), values[k]) << "tick " << k;
            parameter.value = next.value;
            parameter.step = next.step;
        }
        EXPECT_EQ(parameter.step, row.last_step);
    }
}

TEST(NextTickTime, KeepsToTheGridAndLeavesOutWhatIsLate)
{
    struct Row
    {
        std::string_view behaviour;
        std::int64_t due, now, next;
    };
    constexpr Row kRows[] = {
        {"a tick in time", 40, 45, 80},
        {"a tick that began late but ended in time", 40, 79, 80},
        {"a redraw of exactly one interval", 40, 80, 120},
        {"a slow redraw", 40, 101, 120},
        {"a standstill of a second is not made up", 40, 1050, 1080},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(NextTickTime(row.due, row.now, 40), row.next) << row.behaviour;
    }
}

TEST(RunningSet, IsATextOfParameterCharactersInTheOrderOfTheirStart)
{
    RunningSet running;
    for (const int number : {60, 0, 26, 60}) {
        running.Add(ParameterIndex{static_cast<std::int16_t>(number)});
    }
    EXPECT_EQ(running.Text(), std::string("\x3c\x00\x1a", 3));
    running.Remove(ParameterIndex{0});
    running.Remove(ParameterIndex{13});
    EXPECT_EQ(running.Members(), (std::vector{ParameterIndex{60}, ParameterIndex{26}}));
    EXPECT_FALSE(running.Contains(ParameterIndex{0}));
    EXPECT_FALSE(running.Empty());
}

}  // namespace
}  // namespace korvinth::document
