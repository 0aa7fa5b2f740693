// Evaluates a graph for one set of values: a tree of nodes specialised by the kind of operands.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "term/error.h"
#include "term/eval_state.h"
#include "term/graph.h"

namespace korvinth::term {

// One of: the number in a cell (a variable or constant), the value of a node, or what is cheap to
// compute in place from two cells.
struct Operand
{
    union {
        const double* cell = nullptr;
        const ScalarNode* node;
    };
    const double* second = nullptr;
};

struct ScalarNode
{
    ScalarRun run = nullptr;
    Operand a{};
    Operand b{};
    Operand c{};
    union {
        ScalarFunction scalar = nullptr;
        std::int64_t index;
        const Program* program;
    };
    const ScalarNode* const* arguments = nullptr;  // of a call
    std::uint32_t argument_count = 0;
    Error error = Error::None;
};

class ScalarCode
{
public:
    // One node for each of the graph's. The code refers to constants inside the graph, which must
    // not move afterwards.
    void Build(const Graph& graph);
    void Clear();

    const ScalarNode& Root() const { return *root_; }
    double Run(EvalState& state) const { return root_->run(*root_, state); }
    double Run(NodeId id, EvalState& state) const
    {
        const ScalarNode& node = nodes_[static_cast<std::size_t>(id)];
        return node.run(node, state);
    }

private:
    std::vector<ScalarNode> nodes_;
    std::vector<const ScalarNode*> call_arguments_;
    const ScalarNode* root_ = nullptr;
};

// The value of an operation whose operands are all constants, as the code would compute it; NaN
// when it has none.
double FoldedValue(const Graph& graph, const GraphNode& node);

// The number that a result that is NaN stands for: the one noted, else Error::InvalidTerm.
inline Error FaultOf(const EvalState& state)
{
    return state.error == Error::None ? Error::InvalidTerm : state.error;
}

}  // namespace korvinth::term
