#include "term/compiler.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

#include "term/arithmetic.h"
#include "term/lexer.h"
#include "term/parser.h"

namespace korvinth::term {

namespace {

// Which of several faults is told: wrong arguments, then unknown functions, then unknown variables.
int Rank(Error error)
{
    switch (error) {
        case Error::None: return 4;
        case Error::UndefinedVariable: return 3;
        case Error::UndefinedFunction: return 2;
        case Error::ArgumentCount: return 1;
        default: return 0;
    }
}

void KeepFirst(Fault& fault, const Fault& other)
{
    if (Rank(other.error) < Rank(fault.error)) fault = other;
}

// iif, min and max: operator and number of arguments.
struct SeveralArguments
{
    std::string_view name;
    Op op;
    std::size_t arity;
};
constexpr SeveralArguments kSeveralArguments[] = {
    {"iif", Op::Select, 3}, {"min", Op::Min, 2}, {"max", Op::Max, 2}};

const SeveralArguments* FindSeveralArguments(std::string_view name)
{
    const auto* found =
        std::find_if(std::begin(kSeveralArguments), std::end(kSeveralArguments),
                     [&](const SeveralArguments& entry) { return entry.name == name; });
    return found == std::end(kSeveralArguments) ? nullptr : found;
}

Op BinaryOp(Operator op)
{
    switch (op) {
        case Operator::Imp: return Op::Imp;
        case Operator::Eqv: return Op::Eqv;
        case Operator::Xor: return Op::Xor;
        case Operator::Or: return Op::Or;
        case Operator::And: return Op::And;
        case Operator::Equal: return Op::Equal;
        case Operator::NotEqual: return Op::NotEqual;
        case Operator::Less: return Op::Less;
        case Operator::Greater: return Op::Greater;
        case Operator::LessEqual: return Op::LessEqual;
        case Operator::GreaterEqual: return Op::GreaterEqual;
        default: return Op::IntDivide;
    }
}

double Negated(double x) { return -x; }
double Inverted(double x) { return std::isnan(x) ? x : x == 0 ? 1.0 : 0.0; }

std::size_t HashOf(const GraphNode& node)
{
    auto hash = std::bit_cast<std::uint64_t>(node.number);
    const auto mix = [&](std::uint64_t value) {
        hash = (hash ^ value) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 29;
    };
    mix(static_cast<std::uint64_t>(node.op) + 256 * static_cast<std::uint64_t>(node.kernel));
    mix(static_cast<std::uint32_t>(node.a));
    mix(static_cast<std::uint32_t>(node.b) +
        (std::uint64_t{static_cast<std::uint32_t>(node.c)} << 32));
    return static_cast<std::size_t>(hash);
}

bool Same(const GraphNode& x, const GraphNode& y)
{
    return x.op == y.op && x.kernel == y.kernel && x.a == y.a && x.b == y.b && x.c == y.c &&
           std::bit_cast<std::uint64_t>(x.number) == std::bit_cast<std::uint64_t>(y.number);
}

}  // namespace

Fault Compiler::ParseText(std::string_view text, SyntaxTree& tree)
{
    const Error error = Lex(text, definitions_, tokens_);
    if (error != Error::None) {
        tree.Clear();
        return {error, {}};
    }
    const ParseFault fault = ParseTokens(tokens_, definitions_.GetLimits(), tree);
    return {fault.error, fault.data};
}

Compiler::Facts Compiler::Examine(const SyntaxTree& tree, const UserFunction* function)
{
    Facts facts;
    facts.depth = tree.root < 0 ? 1 : tree.nodes[static_cast<std::size_t>(tree.root)].depth;
    std::uint32_t callee_depth = 0;
    for (const SyntaxNode& node : tree.nodes) {
        if (node.kind == SyntaxKind::Name) {
            const bool is_parameter =
                function != nullptr &&
                std::find(function->parameters.begin(), function->parameters.end(), node.name) !=
                    function->parameters.end();
            if (!is_parameter && definitions_.FindVariable(node.name) == nullptr) {
                KeepFirst(facts.fault, {Error::UndefinedVariable, node.name});
            }
        } else if (node.kind == SyntaxKind::Call) {
            const auto arity = static_cast<std::size_t>(node.right);
            if (UserFunction* callee = definitions_.FindFunction(node.name, arity)) {
                const Facts inner = ExamineFunction(*callee);
                KeepFirst(facts.fault, inner.fault);
                callee_depth = std::max(callee_depth, inner.depth);
                continue;
            }
            const std::string name = definitions_.Canonical(node.name);
            const SeveralArguments* several = FindSeveralArguments(name);
            const bool fits = several != nullptr ? several->arity == arity
                                                 : arity == 1 && FindBuiltin(name) != nullptr;
            if (fits) continue;
            const bool known = definitions_.IsFunctionName(node.name);
            KeepFirst(facts.fault,
                      {known ? Error::ArgumentCount : Error::UndefinedFunction, node.name});
        }
    }
    facts.depth += callee_depth;
    if (facts.depth > kMaxEvaluationDepth) facts.fault = {Error::OutOfSpace, {}};
    return facts;
}

Compiler::Facts Compiler::ExamineFunction(UserFunction& function)
{
    if (function.generation != definitions_.Generation()) {
        // A function is defined after those that it calls, so the calls come to an end.
        if (call_depth_ >= kMaxEvaluationDepth / 2) return {{Error::OutOfSpace, {}}, 0};
        ++call_depth_;
        const Facts facts = Examine(function.body, &function);
        --call_depth_;
        function.generation = definitions_.Generation();
        function.fault = facts.fault.error;
        function.fault_data = facts.fault.data;
        function.depth = facts.depth;
    }
    return {{function.fault, function.fault_data}, function.depth};
}

Fault Compiler::CheckFunction(UserFunction& function)
{
    if (const Fault fault = ParseText(function.text, function.body); fault.error != Error::None) {
        return fault;
    }
    if (function.body.root < 0) return {Error::UndefinedFunction, function.name};
    const Fault fault = Examine(function.body, &function).fault;
    if (fault.error == Error::None && !FitsWrittenOut(function)) return {Error::OutOfSpace, {}};
    return fault;
}

bool Compiler::FitsWrittenOut(const UserFunction& function)
{
    Graph graph;
    static constexpr std::array<double, kMaxFunctionParameters> kStandIns{};
    std::vector<NodeId> parameters;
    for (std::size_t i = 0; i < function.parameters.size(); ++i) {
        GraphNode parameter;
        parameter.op = Op::Variable;
        parameter.cell = &kStandIns[i];
        parameters.push_back(static_cast<NodeId>(i));
        graph.nodes.push_back(parameter);
    }
    return BuildGraph(function.body, {&function, parameters, 0}, graph);
}

void Compiler::Compile(std::string_view text, Program& program)
{
    program.graph.Clear();
    program.scalar.Clear();
    program.block.Clear();
    Fault fault = ParseText(text, tree_);
    if (fault.error == Error::None) fault = Examine(tree_, nullptr).fault;
    if (fault.error == Error::None && !BuildGraph(tree_, {}, program.graph)) {
        fault.error = Error::OutOfSpace;
    }
    program.fault = fault.error;
    program.fault_data = fault.data;
    program.generation = 0;
    if (fault.error != Error::None) return;
    program.scalar.Build(program.graph);
    program.generation = definitions_.Generation();
}

bool Compiler::BuildGraph(const SyntaxTree& tree, Frame frame, Graph& graph)
{
    graph_ = &graph;
    graph.nodes.reserve(graph.nodes.size() + 2 * tree.nodes.size() + 8);
    table_.assign(std::max<std::size_t>(64, std::bit_ceil(4 * tree.nodes.size())), 0);
    known_calls_.clear();
    written_ = 0;
    too_large_ = false;
    graph.root = tree.root < 0 ? Constant(0) : Build(tree, tree.root, frame, true);
    graph_ = nullptr;
    if (too_large_) graph.Clear();
    return !too_large_;
}

std::size_t Compiler::KnownCallHash::operator()(const KnownCall& call) const
{
    std::size_t hash = std::hash<const void*>{}(call.function);
    for (const NodeId argument : call.arguments) {
        hash = (hash ^ static_cast<std::uint32_t>(argument)) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 29;
    }
    return hash;
}

NodeId Compiler::Build(const SyntaxTree& tree, std::int32_t index, Frame& frame, bool surely)
{
    const SyntaxNode& node = tree.nodes[static_cast<std::size_t>(index)];
    if (++written_ > kMaxCompiledInstructions) too_large_ = true;
    if (too_large_) return Constant(0);
    switch (node.kind) {
        case SyntaxKind::Number: return Constant(node.value);
        case SyntaxKind::Name: return BuildName(node, frame, surely);
        case SyntaxKind::Call: return BuildCall(tree, node, frame, surely);
        default: return BuildOperation(tree, node, frame, surely);
    }
}

NodeId Compiler::BuildName(const SyntaxNode& node, Frame& frame, bool surely)
{
    if (frame.function != nullptr) {
        const auto& parameters = frame.function->parameters;
        const auto found = std::find(parameters.begin(), parameters.end(), node.name);
        if (found != parameters.end()) {
            const auto place = static_cast<std::size_t>(found - parameters.begin());
            if (surely) frame.surely_used |= 1U << place;
            return frame.arguments[place];
        }
    }
    GraphNode variable;
    variable.op = Op::Variable;
    variable.cell = &definitions_.FindVariable(node.name)->value;
    return Intern(variable);
}

NodeId Compiler::BuildOperation(const SyntaxTree& tree, const SyntaxNode& node, Frame& frame,
                                bool surely)
{
    const NodeId a = Build(tree, node.left, frame, surely);
    if (node.op == Operator::Negate) return Unary(UnaryKernel::Negate, Negated, Error::None, a);
    if (node.op == Operator::Not) return Unary(UnaryKernel::Not, Inverted, Error::None, a);
    if (node.op == Operator::Factorial) return Operation(Op::Factorial, a);
    const bool lazy = node.op == Operator::And || node.op == Operator::Or;
    const NodeId b = Build(tree, node.right, frame, surely && !lazy);
    switch (node.op) {
        case Operator::Add: return Add(a, b);
        case Operator::Subtract: return Subtract(a, b);
        case Operator::Multiply: return Multiply(a, b);
        case Operator::Divide: return Divide(a, b);
        case Operator::Power: return Power(a, b);
        default: return Operation(BinaryOp(node.op), a, b);
    }
}

NodeId Compiler::BuildCall(const SyntaxTree& tree, const SyntaxNode& node, Frame& frame,
                           bool surely)
{
    const auto arity = static_cast<std::size_t>(node.right);
    const UserFunction* user = definitions_.FindFunction(node.name, arity);
    const std::string name = user == nullptr ? definitions_.Canonical(node.name) : std::string();
    const bool select = user == nullptr && name == "iif";
    std::array<NodeId, kMaxFunctionParameters> arguments{};
    for (std::size_t i = 0; i < arity; ++i) {
        const std::int32_t argument = tree.arguments[static_cast<std::size_t>(node.left) + i];
        arguments[i] = Build(tree, argument, frame, surely && !(select && i > 0));
    }
    if (user != nullptr) return BuildUserCall(*user, {arguments.data(), arity});
    if (const SeveralArguments* several = FindSeveralArguments(name)) {
        if (select) return Operation(Op::Select, arguments[0], arguments[1], arguments[2]);
        return Operation(several->op, arguments[0], arguments[1]);
    }
    return BuildBuiltin(*FindBuiltin(name), arguments[0]);
}

// The body written out, unless the same call has been written out before: without that, functions
// that call the one before them several times would grow the term by that factor with each.
NodeId Compiler::BuildUserCall(const UserFunction& function, std::span<const NodeId> arguments)
{
    const auto [known, is_new] = known_calls_.try_emplace(
        KnownCall{&function, {arguments.begin(), arguments.end()}}, kNoNode);
    if (!is_new) return known->second;
    NodeId& place = known->second;  // stays where it is while the table grows
    Frame frame{&function, arguments, 0};
    NodeId result = Build(function.body, function.body.root, frame, true);
    // An argument counts even when the body does not look at it.
    for (std::size_t i = arguments.size(); i-- > 0;) {
        const bool used = (frame.surely_used >> i & 1U) != 0;
        if (!used && !IsLeaf(Node(arguments[i]).op)) {
            result = Operation(Op::Guard, arguments[i], result);
        }
    }
    return place = result;
}

NodeId Compiler::BuildBuiltin(const Builtin& builtin, NodeId argument)
{
    const TrigMode mode = definitions_.Mode();
    const NodeId value = Unary(builtin.Kernel(mode), builtin.Scalar(mode), builtin.error, argument);
    if (builtin.angle != Angle::Result || mode == TrigMode::Radians) return value;
    return Multiply(value, Constant(FromRadians(mode)));
}

NodeId Compiler::Constant(double value)
{
    GraphNode node;
    node.op = Op::Constant;
    node.number = value;
    return Intern(node);
}

NodeId Compiler::Unary(UnaryKernel kernel, ScalarFunction scalar, Error error, NodeId a)
{
    GraphNode node;
    node.op = Op::Unary;
    node.kernel = kernel;
    node.error = error;
    node.a = a;
    node.scalar = scalar;
    return Intern(node);
}

NodeId Compiler::Add(NodeId a, NodeId b)
{
    if (Node(a).op == Op::Multiply) return Operation(Op::MultiplyAdd, Node(a).a, Node(a).b, b);
    if (Node(b).op == Op::Multiply) {
        // The sum commutes, but the first error found must stay that of the left operand.
        if (IsLeaf(Node(a).op)) return Operation(Op::MultiplyAdd, Node(b).a, Node(b).b, a);
    }
    return Operation(Op::Add, a, b);
}

NodeId Compiler::Subtract(NodeId a, NodeId b)
{
    if (Node(a).op == Op::Multiply) {
        return Operation(Op::MultiplySubtract, Node(a).a, Node(a).b, b);
    }
    const bool leaves =
        Node(b).op == Op::Multiply && IsLeaf(Node(Node(b).a).op) && IsLeaf(Node(Node(b).b).op);
    if (leaves || (Node(b).op == Op::Multiply && IsLeaf(Node(a).op))) {
        return Operation(Op::SubtractProduct, Node(b).a, Node(b).b, a);
    }
    return Operation(Op::Subtract, a, b);
}

NodeId Compiler::Divide(NodeId a, NodeId b)
{
    if (Node(b).op == Op::Constant) {
        const double divisor = Node(b).number;
        int exponent = 0;
        const bool power_of_two = std::fabs(std::frexp(divisor, &exponent)) == 0.5;
        if (power_of_two && std::abs(exponent) < 1000) {
            return Multiply(a, Constant(1 / divisor));
        }
    }
    return Operation(Op::Divide, a, b);
}

// Small whole exponents become products.
NodeId Compiler::Power(NodeId a, NodeId b)
{
    if (Node(b).op == Op::Constant && Node(a).op != Op::Constant) {
        const double exponent = Node(b).number;
        if (exponent == 1) return a;
        if (exponent == 2 && IsLeaf(Node(a).op)) return Operation(Op::Multiply, a, a);
        const bool whole = exponent == std::trunc(exponent);
        if (whole && exponent != 0 && std::fabs(exponent) <= kLargestWholePower) {
            GraphNode node;
            node.op = Op::PowerInt;
            node.a = a;
            node.index = static_cast<std::int64_t>(exponent);
            return Intern(node);
        }
    }
    return Operation(Op::Power, a, b);
}

// -y * c with a constant c is y * -c.
NodeId Compiler::Multiply(NodeId a, NodeId b)
{
    const GraphNode& left = Node(a);
    if (left.op == Op::Unary && left.kernel == UnaryKernel::Negate && Node(b).op == Op::Constant) {
        return Operation(Op::Multiply, left.a, Constant(-Node(b).number));
    }
    return Operation(Op::Multiply, a, b);
}

NodeId Compiler::Operation(Op op, NodeId a, NodeId b, NodeId c)
{
    GraphNode node;
    node.op = op;
    node.a = a;
    node.b = b;
    node.c = c;
    return Intern(node);
}

NodeId Compiler::Intern(GraphNode node)
{
    if (!IsLeaf(node.op)) {
        bool constant = true;
        for (const NodeId operand : OperandsOf(node)) {
            if (operand == kNoNode) continue;
            constant = constant && Node(operand).op == Op::Constant;
            node.depth = std::max(node.depth, Node(operand).depth + 1);
        }
        if (node.depth > kMaxEvaluationDepth) too_large_ = true;
        if (constant) {
            const double value = FoldedValue(*graph_, node);
            if (!std::isnan(value)) return Constant(value);
        }
    }
    if (2 * graph_->nodes.size() >= table_.size()) {
        table_.assign(2 * table_.size(), 0);
        for (std::size_t i = 0; i < graph_->nodes.size(); ++i) {
            std::size_t place = HashOf(graph_->nodes[i]) & (table_.size() - 1);
            while (table_[place] != 0) place = (place + 1) & (table_.size() - 1);
            table_[place] = static_cast<std::int32_t>(i) + 1;
        }
    }
    std::size_t place = HashOf(node) & (table_.size() - 1);
    for (; table_[place] != 0; place = (place + 1) & (table_.size() - 1)) {
        if (Same(Node(table_[place] - 1), node)) return table_[place] - 1;
    }
    graph_->nodes.push_back(node);
    table_[place] = static_cast<std::int32_t>(graph_->nodes.size());
    return table_[place] - 1;
}

}  // namespace korvinth::term
