#include "term/scalar_code.h"

#include <algorithm>
#include <array>
#include <utility>

#include "term/scalar_operations.h"

namespace korvinth::term {

namespace {

Kind KindInPlace(Op op)
{
    switch (op) {
        case Op::Multiply: return Kind::Product;
        case Op::Add: return Kind::Sum;
        case Op::Subtract: return Kind::Difference;
        default: return Kind::Sub;
    }
}

const double* CellOf(const GraphNode& node)
{
    if (node.op == Op::Constant) return &node.number;
    return node.op == Op::Variable ? node.cell : nullptr;
}

// Lets an operand refer to the node with this id; what is returned tells how.
Kind Bind(const Graph& graph, const ScalarNode* nodes, const GraphNode& user, NodeId id,
          bool in_place, Operand& operand)
{
    if (id == kNoNode) return Kind::Sub;
    const GraphNode& node = graph[id];
    if (!TakesNodes(user.op)) {
        operand.cell = CellOf(node);
        if (operand.cell != nullptr) return Kind::Cell;
        const Kind kind = in_place ? KindInPlace(node.op) : Kind::Sub;
        if (kind != Kind::Sub) {
            operand.cell = CellOf(graph[node.a]);
            operand.second = CellOf(graph[node.b]);
            if (operand.cell != nullptr && operand.second != nullptr) return kind;
        }
    }
    operand.node = nodes + id;
    return Kind::Sub;
}

double RunKept(const ScalarNode& node, EvalState& state)
{
    KeptValue& kept = *node.kept;
    if (kept.pass != *kept.current_pass) {
        kept.value = kept.node.run(kept.node, state);
        kept.pass = *kept.current_pass;
    }
    return kept.value;  // of one that is NaN the error has been noted
}

double RunStart(const ScalarNode& node, EvalState& state)
{
    ++*node.pass;
    return node.a.node->run(*node.a.node, state);
}

// The nodes that several others need and that cost more than looking their value up.
std::vector<NodeId> SharedNodes(const Graph& graph)
{
    constexpr std::uint32_t kCheap = 32;  // operations, each counted as often as it would run
    std::vector<std::uint32_t> costs(graph.nodes.size());
    std::vector<std::uint8_t> uses(graph.nodes.size());
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        std::uint32_t cost = 1;
        for (const NodeId operand : OperandsOf(graph.nodes[i])) {
            if (operand != kNoNode) cost += costs[static_cast<std::size_t>(operand)];
        }
        costs[i] = std::min(cost, kCheap + 1);
    }
    uses[static_cast<std::size_t>(graph.root)] = 1;
    std::vector<NodeId> shared;
    for (std::size_t i = graph.nodes.size(); i-- > 0;) {
        if (uses[i] == 0) continue;
        if (uses[i] > 1 && costs[i] > kCheap) shared.push_back(static_cast<NodeId>(i));
        for (const NodeId operand : OperandsOf(graph.nodes[i])) {
            if (operand == kNoNode) continue;
            std::uint8_t& count = uses[static_cast<std::size_t>(operand)];
            count = std::min<std::uint8_t>(count + 1, 2);
        }
    }
    return shared;
}

// Takes a condition that compares two cells into the selection.
void BindTest(const Graph& graph, const GraphNode& test, ScalarNode& select)
{
    const ScalarRun run = PickSelectByTest(test.op);
    if (run == nullptr) return;
    const double* left = CellOf(graph[test.a]);
    const double* right = CellOf(graph[test.b]);
    if (left == nullptr || right == nullptr) return;
    select.run = run;
    select.a.cell = left;
    select.a.second = right;
}

}  // namespace

void ScalarCode::Clear()
{
    nodes_.clear();
    kept_.clear();
    root_ = nullptr;
}

void ScalarCode::Build(const Graph& graph)
{
    Clear();
    nodes_.resize(graph.nodes.size());
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        const GraphNode& from = graph.nodes[i];
        ScalarNode& to = nodes_[i];
        if (IsLeaf(from.op)) {
            to.run = PickPlainRun(from);
            to.a.cell = CellOf(from);
            continue;
        }
        const unsigned in_place = InPlaceOperands(from.op);
        const Kind a = Bind(graph, nodes_.data(), from, from.a, (in_place & 1) != 0, to.a);
        const Kind b = Bind(graph, nodes_.data(), from, from.b, (in_place & 2) != 0, to.b);
        const Kind c = Bind(graph, nodes_.data(), from, from.c, (in_place & 4) != 0, to.c);
        to.run = PickRun(from, a, b, c);
        to.error = from.error;
        if (from.op == Op::Unary) {
            to.scalar = from.scalar;
        } else {
            to.index = from.index;
        }
        if (from.op == Op::Select) BindTest(graph, graph[from.a], to);
    }
    root_ = &nodes_[static_cast<std::size_t>(graph.root)];
    KeepSharedValues(graph);
}

// Puts a node that looks the value up in front of each node that is worth it.
void ScalarCode::KeepSharedValues(const Graph& graph)
{
    const std::vector<NodeId> shared = SharedNodes(graph);
    if (shared.empty()) return;
    kept_.resize(shared.size());
    for (std::size_t i = 0; i < shared.size(); ++i) {
        ScalarNode& node = nodes_[static_cast<std::size_t>(shared[i])];
        kept_[i].node = std::exchange(node, {});
        kept_[i].current_pass = &pass_;
        kept_[i].pass = pass_;  // which is over
        node.run = RunKept;
        node.kept = &kept_[i];
    }
    start_ = {};
    start_.run = RunStart;
    start_.a.node = root_;
    start_.pass = &pass_;
    root_ = &start_;
}

double FoldedValue(const Graph& graph, const GraphNode& node)
{
    std::array<ScalarNode, 4> nodes;
    const std::array<NodeId, 3> operands = {node.a, node.b, node.c};
    std::array<Operand*, 3> places = {&nodes[3].a, &nodes[3].b, &nodes[3].c};
    for (std::size_t i = 0; i < operands.size(); ++i) {
        if (operands[i] == kNoNode) continue;
        nodes[i].run = PickPlainRun(graph[operands[i]]);
        nodes[i].a.cell = &graph[operands[i]].number;
        places[i]->node = &nodes[i];
    }
    nodes[3].run = PickPlainRun(node);
    nodes[3].error = node.error;
    if (node.op == Op::Unary) {
        nodes[3].scalar = node.scalar;
    } else {
        nodes[3].index = node.index;
    }
    EvalState state;
    return nodes[3].run(nodes[3], state);
}

}  // namespace korvinth::term
