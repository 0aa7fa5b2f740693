// Turns the text of a term into a program: looks names up, shares and folds subterms.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "term/definitions.h"
#include "term/error.h"
#include "term/graph.h"
#include "term/program.h"
#include "term/syntax_tree.h"
#include "term/token.h"

namespace korvinth::term {

struct Fault
{
    Error error = Error::None;
    std::string_view data;  // valid while the text and the definitions are
};

class Compiler
{
public:
    explicit Compiler(Definitions& definitions) : definitions_(definitions) {}

    // Compiles `text` into the program's graph and scalar code and stamps it with the present
    // generation. A fault is stored in the program, which then has no code.
    void Compile(std::string_view text, Program& program);

    // Parses the body of a function that is about to be defined and checks that everything it names
    // exists, that it does not call itself and that it keeps to the limits with all it calls.
    Fault CheckFunction(UserFunction& function);

private:
    // The function whose body is being compiled and the nodes that its parameters stand for.
    struct Frame
    {
        const UserFunction* function = nullptr;
        std::span<const NodeId> arguments;
        std::uint32_t surely_used = 0;  // bit i: parameter i is evaluated whatever happens
    };
    struct Facts
    {
        Fault fault;
        std::uint32_t depth = 0;  // as in UserFunction
    };
    // A call that is in the graph already.
    struct KnownCall
    {
        const UserFunction* function = nullptr;
        std::vector<NodeId> arguments;
        bool operator==(const KnownCall&) const = default;
    };
    struct KnownCallHash
    {
        std::size_t operator()(const KnownCall& call) const;
    };

    Fault ParseText(std::string_view text, SyntaxTree& tree);
    // Looks up every name of a tree, bodies of called functions included.
    Facts Examine(const SyntaxTree& tree, const UserFunction* function);
    Facts ExamineFunction(UserFunction& function);

    // Makes the graph of a term, or of a body with `frame` for its parameters. False when it is
    // larger than the limits allow.
    bool BuildGraph(const SyntaxTree& tree, Frame frame, Graph& graph);
    bool FitsWrittenOut(const UserFunction& function);

    NodeId Build(const SyntaxTree& tree, std::int32_t index, Frame& frame, bool surely);
    NodeId BuildName(const SyntaxNode& node, Frame& frame, bool surely);
    NodeId BuildOperation(const SyntaxTree& tree, const SyntaxNode& node, Frame& frame,
                          bool surely);
    NodeId BuildCall(const SyntaxTree& tree, const SyntaxNode& node, Frame& frame, bool surely);
    NodeId BuildUserCall(const UserFunction& function, std::span<const NodeId> arguments);
    NodeId BuildBuiltin(const Builtin& builtin, NodeId argument);

    NodeId Constant(double value);
    NodeId Unary(UnaryKernel kernel, ScalarFunction scalar, Error error, NodeId a);
    NodeId Add(NodeId a, NodeId b);
    NodeId Subtract(NodeId a, NodeId b);
    NodeId Multiply(NodeId a, NodeId b);
    NodeId Divide(NodeId a, NodeId b);
    NodeId Power(NodeId a, NodeId b);
    NodeId Operation(Op op, NodeId a, NodeId b = kNoNode, NodeId c = kNoNode);
    // The node itself, an equal one that exists already, or the constant that it amounts to.
    NodeId Intern(GraphNode node);
    const GraphNode& Node(NodeId id) const { return graph_->nodes[static_cast<std::size_t>(id)]; }

    Definitions& definitions_;
    Graph* graph_ = nullptr;
    std::size_t written_ = 0;  // instructions built so far, shared ones included
    bool too_large_ = false;   // what is built from now on is thrown away

    // Scratch, kept between terms.
    std::vector<Token> tokens_;
    SyntaxTree tree_;
    std::vector<std::int32_t> table_;  // open addressing: node id + 1, 0 = free
    std::unordered_map<KnownCall, NodeId, KnownCallHash> known_calls_;
    std::uint32_t call_depth_ = 0;  // of ExamineFunction
};

}  // namespace korvinth::term
