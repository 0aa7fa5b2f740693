// Evaluates a graph for one set of values: a tree of nodes specialised by the kind of operands.
// What several nodes need and what takes long to compute is kept for the rest of the evaluation.
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

struct KeptValue;

struct ScalarNode
{
    ScalarRun run = nullptr;
    Operand a{};
    Operand b{};
    Operand c{};
    union {
        ScalarFunction scalar = nullptr;
        std::int64_t index;
        KeptValue* kept;
        std::uint64_t* pass;
    };
    Error error = Error::None;
};

// The value of a node that several others need.
struct KeptValue
{
    ScalarNode node;
    const std::uint64_t* current_pass = nullptr;
    std::uint64_t pass = 0;  // in which the value was computed
    double value = 0;
};

class ScalarCode
{
public:
    ScalarCode() = default;
    ScalarCode(const ScalarCode&) = delete;  // the nodes refer to each other
    ScalarCode& operator=(const ScalarCode&) = delete;
    ScalarCode(ScalarCode&&) = delete;
    ScalarCode& operator=(ScalarCode&&) = delete;
    ~ScalarCode() = default;

    // One node for each of the graph's. The code refers to constants inside the graph, which must
    // not move afterwards.
    void Build(const Graph& graph);
    void Clear();

    const ScalarNode& Root() const { return *root_; }
    double Run(EvalState& state) const { return root_->run(*root_, state); }

    // For values of single nodes with the variables as they are: before the first of them.
    void BeginPass() { ++pass_; }
    double Run(NodeId id, EvalState& state) const
    {
        const ScalarNode& node = nodes_[static_cast<std::size_t>(id)];
        return node.run(node, state);
    }

private:
    void KeepSharedValues(const Graph& graph);

    std::vector<ScalarNode> nodes_;
    std::vector<KeptValue> kept_;
    ScalarNode start_;  // begins a pass; the root where values are kept
    const ScalarNode* root_ = nullptr;
    std::uint64_t pass_ = 0;
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
