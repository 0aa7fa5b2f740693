// A bound term: operations on numbers, equal subterms shared, calls of functions written out.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "term/builtins.h"
#include "term/error.h"

namespace korvinth::term {

using NodeId = std::int32_t;
inline constexpr NodeId kNoNode = -1;

enum class Op : std::uint8_t {
    // Leaves.
    Constant,
    Variable,
    // One operand.
    Unary,
    Factorial,
    PowerInt,
    // Two operands.
    Add,
    Subtract,
    Multiply,
    Divide,
    IntDivide,
    Power,
    Min,
    Max,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    And,
    Or,
    Xor,
    Eqv,
    Imp,
    Guard,  // b, provided that a has a value
    // Three operands; rounded twice, like the two operations that they replace.
    MultiplyAdd,       // a * b + c
    MultiplySubtract,  // a * b - c
    SubtractProduct,   // c - a * b
    Select,            // a <> 0 ? b : c, the other one is not looked at
};

constexpr bool IsLeaf(Op op) { return op <= Op::Variable; }

struct GraphNode
{
    Op op = Op::Constant;
    UnaryKernel kernel = UnaryKernel::Lanes;  // Unary
    Error error = Error::None;                // Unary: raised outside the domain
    NodeId a = kNoNode;
    NodeId b = kNoNode;
    NodeId c = kNoNode;
    std::uint32_t depth = 1;  // levels of operands, this one included
    union {
        double number = 0;      // Constant
        const double* cell;     // Variable
        std::int64_t index;     // PowerInt: the exponent, 2 to 16 or negative
        ScalarFunction scalar;  // Unary
    };
};

inline std::array<NodeId, 3> OperandsOf(const GraphNode& node) { return {node.a, node.b, node.c}; }

// Operands stand before the nodes that use them.
struct Graph
{
    std::vector<GraphNode> nodes;
    NodeId root = kNoNode;

    void Clear()
    {
        nodes.clear();
        root = kNoNode;
    }
    const GraphNode& operator[](NodeId id) const { return nodes[static_cast<std::size_t>(id)]; }
};

}  // namespace korvinth::term
