// Animated parameters: which ones run, and what one tick of the timer makes of each.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "document/plot_document.h"
#include "document/slots.h"

namespace korvinth::document {

// The parameters whose timers run, in the order in which they were started: a text with one
// character a parameter, whose code is the parameter's index.
class RunningSet
{
public:
    bool Empty() const { return text_.empty(); }
    bool Contains(ParameterIndex index) const;
    void Add(ParameterIndex index);  // at the end; one that runs stays where it is
    void Remove(ParameterIndex index);
    void Clear() { text_.clear(); }
    std::vector<ParameterIndex> Members() const;
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

struct TickResult
{
    double value;  // to be set
    double step;   // to be stored; its sign changes where the value turns
};

// One tick of a parameter: a value may land exactly on a bound, only the step beyond it wraps to
// exactly the other bound or turns.
TickResult NextTick(const Parameter& parameter);

// When the next tick is due (milliseconds) after one that was due at `due` and ended at `now`: the
// first multiple of the interval that is still to come. What a slow redraw has missed is left out,
// so that the rate stays even.
std::int64_t NextTickTime(std::int64_t due, std::int64_t now, std::int64_t interval);

}  // namespace korvinth::document
