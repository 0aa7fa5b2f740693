// A bound term: operations on numbers, equal subterms shared, calls of functions written out.
#pragma once

#include <cstdint>
#include <vector>

#include "term/builtins.h"
#include "term/error.h"

namespace korvinth::term {

struct UserFunction;
struct Program;

using NodeId = std::int32_t;
inline constexpr NodeId kNoNode = -1;

enum class Op : std::uint8_t {
    // Leaves.
    Constant,
    Variable,
    Argument,  // of the function whose body this graph is
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
    // A function too large to be written out; operands in Graph::call_arguments.
    Call,
};

constexpr bool IsLeaf(Op op) { return op <= Op::Argument; }

struct GraphNode
{
    Op op = Op::Constant;
    UnaryKernel kernel = UnaryKernel::Lanes;  // Unary
    Error error = Error::None;                // Unary: raised outside the domain
    NodeId a = kNoNode;                       // Call: first entry in Graph::call_arguments
    NodeId b = kNoNode;                       // Call: number of arguments
    NodeId c = kNoNode;
    union {
        double number = 0;       // Constant
        const double* cell;      // Variable
        std::int64_t index;      // Argument: its place; PowerInt: the exponent, 2 to 16 or negative
        ScalarFunction scalar;   // Unary
        const Program* program;  // Call
    };
};

// Operands stand before the nodes that use them.
struct Graph
{
    std::vector<GraphNode> nodes;
    std::vector<NodeId> call_arguments;
    NodeId root = kNoNode;

    void Clear()
    {
        nodes.clear();
        call_arguments.clear();
        root = kNoNode;
    }
    const GraphNode& operator[](NodeId id) const { return nodes[static_cast<std::size_t>(id)]; }
};

}  // namespace korvinth::term
