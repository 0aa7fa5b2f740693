#include "document/animation.h"

#include <cmath>

namespace korvinth::document {
namespace {

char Character(ParameterIndex index) { return static_cast<char>(Number(index)); }

}  // namespace

bool RunningSet::Contains(ParameterIndex index) const
{
    return text_.find(Character(index)) != std::string::npos;
}

void RunningSet::Add(ParameterIndex index)
{
    if (!Contains(index)) text_ += Character(index);
}

void RunningSet::Remove(ParameterIndex index) { std::erase(text_, Character(index)); }

std::vector<ParameterIndex> RunningSet::Members() const
{
    std::vector<ParameterIndex> members;
    for (const char character : text_) members.push_back(ParameterIndex{character});
    return members;
}

TickResult NextTick(const Parameter& parameter)
{
    double value = parameter.value;
    double step = parameter.step;  // as stored
    double move = step;            // of this tick
    const bool bounce = parameter.mode == AnimationMode::Bounce;
    // Deliberate: the comparisons are strict, so that a value may land exactly on a bound; a wrap
    // leaves the rest of the step out, and a turn goes one step back from where the value stood.
    if (value + move > parameter.upper) {
        if (bounce) {
            step = move = -std::abs(step);
        } else {
            value = parameter.lower;
            move = 0;
        }
    }
    if (value + move < parameter.lower) {
        if (bounce) {
            step = move = std::abs(step);
        } else {
            value = parameter.upper;
            move = 0;
        }
    }
    return {value + move, step};
}

std::int64_t NextTickTime(std::int64_t due, std::int64_t now, std::int64_t interval)
{
    const std::int64_t next = due + interval;
    if (next > now) return next;
    return next + ((now - next) / interval + 1) * interval;
}

}  // namespace korvinth::document
