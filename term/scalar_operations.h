// Finds the function that runs an operation, by the kinds of its operands.
#pragma once

#include <cstdint>

#include "term/graph.h"
#include "term/scalar_code.h"

namespace korvinth::term {

// Where an operand comes from: a cell, a node, or two cells that are combined in place.
enum class Kind : std::uint8_t { Cell, Sub, Product, Sum, Difference };

// Operands of an operation that may be computed in place: which of a, b and c, by bit.
unsigned InPlaceOperands(Op op);
// Operations that look at their operands one after the other take them as nodes.
bool TakesNodes(Op op);

ScalarRun PickRun(const GraphNode& node, Kind a, Kind b, Kind c);
// With all operands, if there are any, taken from nodes.
inline ScalarRun PickPlainRun(const GraphNode& node)
{
    return PickRun(node, Kind::Sub, Kind::Sub, Kind::Sub);
}
// For a selection whose condition compares two cells; nullptr when `test` is no comparison.
ScalarRun PickSelectByTest(Op test);

}  // namespace korvinth::term
