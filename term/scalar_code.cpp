#include "term/scalar_code.h"

#include <array>
#include <cmath>

#include "term/arithmetic.h"
#include "term/limits.h"
#include "term/program.h"

namespace korvinth::term {

namespace {

// Where an operand comes from. A product, sum or difference of two cells is computed in place
// instead of by a node of its own, which saves the dearest thing here, an indirect call.
struct Cell
{
    static double Get(const Operand& operand, EvalState&) { return *operand.cell; }
};
struct Sub
{
    static double Get(const Operand& operand, EvalState& state)
    {
        return operand.node->run(*operand.node, state);
    }
};
struct CellProduct
{
    static double Get(const Operand& operand, EvalState&)
    {
        return *operand.cell * *operand.second;
    }
};
struct CellSum
{
    static double Get(const Operand& operand, EvalState&)
    {
        return *operand.cell + *operand.second;
    }
};
struct CellDifference
{
    static double Get(const Operand& operand, EvalState&)
    {
        return *operand.cell - *operand.second;
    }
};

enum class Kind : std::uint8_t { Cell, Sub, Product, Sum, Difference };

template <class Rule, class A>
double RunUnary(const ScalarNode& node, EvalState& state)
{
    return Rule::Apply(A::Get(node.a, state), node, state);
}
template <class Rule, class A, class B>
double RunBinary(const ScalarNode& node, EvalState& state)
{
    const double a = A::Get(node.a, state);
    return Rule::Apply(a, B::Get(node.b, state), state);
}
template <class Rule, class A, class B, class C>
double RunTernary(const ScalarNode& node, EvalState& state)
{
    const double a = A::Get(node.a, state);
    const double b = B::Get(node.b, state);
    return Rule::Apply(a, b, C::Get(node.c, state));
}

// Calls `pick` with the type that stands for the kind.
template <class Pick>
ScalarRun WithKind(Kind kind, const Pick& pick)
{
    switch (kind) {
        case Kind::Cell: return pick(Cell{});
        case Kind::Product: return pick(CellProduct{});
        case Kind::Sum: return pick(CellSum{});
        case Kind::Difference: return pick(CellDifference{});
        default: return pick(Sub{});
    }
}
template <class Pick>
ScalarRun WithPlainKind(Kind kind, const Pick& pick)
{
    return kind == Kind::Cell ? pick(Cell{}) : pick(Sub{});
}

template <class Rule>
ScalarRun PickUnary(Kind a)
{
    return WithKind(a, []<class A>(A) -> ScalarRun { return RunUnary<Rule, A>; });
}
template <class Rule>
ScalarRun PickBinary(Kind a, Kind b)
{
    return WithKind(a, [b]<class A>(A) {
        return WithKind(b, []<class B>(B) -> ScalarRun { return RunBinary<Rule, A, B>; });
    });
}
template <class Rule>
ScalarRun PickPlainBinary(Kind a, Kind b)
{
    return WithPlainKind(a, [b]<class A>(A) {
        return WithPlainKind(b, []<class B>(B) -> ScalarRun { return RunBinary<Rule, A, B>; });
    });
}
template <class Rule>
ScalarRun PickTernary(Kind a, Kind b, Kind c)
{
    return WithPlainKind(a, [b, c]<class A>(A) {
        return WithPlainKind(b, [c]<class B>(B) {
            return WithKind(c, []<class C>(C) -> ScalarRun { return RunTernary<Rule, A, B, C>; });
        });
    });
}

// Operands of an operation that may be computed in place: which of a, b and c, by bit.
constexpr unsigned InPlaceOperands(Op op)
{
    switch (op) {
        case Op::Unary:
        case Op::PowerInt:
        case Op::Add:
        case Op::Subtract:
        case Op::Multiply:
        case Op::Divide:
        case Op::Min:
        case Op::Max: return 3;
        case Op::MultiplyAdd:
        case Op::MultiplySubtract:
        case Op::SubtractProduct: return 4;
        default: return 0;
    }
}

// Functions in the table: NaN out of a number is the function's own error.
struct TableRule
{
    static double Apply(double x, const ScalarNode& node, EvalState& state)
    {
        const double result = node.scalar(x);
        if (std::isnan(result) && !std::isnan(x)) [[unlikely]] {
            // An infinite angle has no error of its own.
            const bool of_an_angle =
                node.error == Error::DivisionByZero ||
                (node.error >= Error::InvalidSecant && node.error <= Error::InvalidCotangent);
            return state.Fail(of_an_angle && std::isinf(x) ? Error::InvalidTerm : node.error);
        }
        return result;
    }
};
// The frequent functions, called without a detour; these have a value wherever x is finite.
template <double (*kFunction)(double)>
struct FunctionRule
{
    static double Apply(double x, const ScalarNode&, EvalState&) { return kFunction(x); }
};
struct AbsRule
{
    static double Apply(double x, const ScalarNode&, EvalState&) { return std::fabs(x); }
};
struct NegateRule
{
    static double Apply(double x, const ScalarNode&, EvalState&) { return -x; }
};
struct SqrtRule
{
    static double Apply(double x, const ScalarNode&, EvalState& state)
    {
        if (x < 0) [[unlikely]]
            return state.Fail(Error::InvalidRoot);
        return std::sqrt(x);
    }
};
struct LogRule
{
    static double Apply(double x, const ScalarNode&, EvalState& state)
    {
        if (x <= 0) [[unlikely]]
            return state.Fail(Error::InvalidLog);
        return std::log(x);
    }
};
struct FactorialRule
{
    static double Apply(double x, const ScalarNode&, EvalState& state)
    {
        const double result = Factorial(x);
        if (std::isnan(result) && !std::isnan(x)) {
            return state.Fail(x > kLargestFactorial ? Error::FactorialOverflow
                                                    : Error::ArgumentType);
        }
        return result;
    }
};
struct SquareRule
{
    static double Apply(double x, const ScalarNode&, EvalState&) { return x * x; }
};
struct CubeRule
{
    static double Apply(double x, const ScalarNode&, EvalState&) { return x * x * x; }
};
struct PowerIntRule
{
    static double Apply(double x, const ScalarNode& node, EvalState& state)
    {
        const double power = WholePower(x, std::abs(static_cast<int>(node.index)));
        if (node.index > 0) return power;
        if (x == 0) return state.Fail(Error::InvalidExponent);
        return 1 / power;
    }
};

struct AddRule
{
    static double Apply(double a, double b, EvalState&) { return a + b; }
};
struct SubtractRule
{
    static double Apply(double a, double b, EvalState&) { return a - b; }
};
struct MultiplyRule
{
    static double Apply(double a, double b, EvalState&) { return a * b; }
};
struct DivideRule
{
    static double Apply(double a, double b, EvalState& state)
    {
        if (b == 0) [[unlikely]] {
            return std::isnan(a) ? a : state.Fail(Error::DivisionByZero);
        }
        return a / b;
    }
};
struct IntDivideRule
{
    static double Apply(double a, double b, EvalState& state)
    {
        if (std::isnan(a) || std::isnan(b)) return a + b;
        if (std::nearbyint(b) == 0) return state.Fail(Error::IntegerDivisionByZero);
        return WholeQuotient(a, b);
    }
};
struct PowerRule
{
    static double Apply(double a, double b, EvalState& state)
    {
        const double result = Power(a, b);
        if (std::isnan(result) && !std::isnan(a) && !std::isnan(b)) [[unlikely]] {
            return state.Fail(Error::InvalidExponent);
        }
        return result;
    }
};
struct MinRule
{
    static double Apply(double a, double b, EvalState&)
    {
        const double smaller = a < b ? a : b;
        return std::isnan(a) ? a : smaller;
    }
};
struct MaxRule
{
    static double Apply(double a, double b, EvalState&)
    {
        const double larger = a > b ? a : b;
        return std::isnan(a) ? a : larger;
    }
};

// Truth values of two operands that both must have a value.
template <class Test>
struct TruthRule
{
    static double Apply(double a, double b, EvalState&)
    {
        if (std::isunordered(a, b)) [[unlikely]]
            return a + b;
        return Test::Holds(a, b) ? 1.0 : 0.0;
    }
};
struct EqualTest
{
    static bool Holds(double a, double b) { return a == b; }
};
struct NotEqualTest
{
    static bool Holds(double a, double b) { return a != b; }
};
struct LessTest
{
    static bool Holds(double a, double b) { return a < b; }
};
struct GreaterTest
{
    static bool Holds(double a, double b) { return a > b; }
};
struct LessEqualTest
{
    static bool Holds(double a, double b) { return a <= b; }
};
struct GreaterEqualTest
{
    static bool Holds(double a, double b) { return a >= b; }
};
struct XorTest
{
    static bool Holds(double a, double b) { return (a != 0) != (b != 0); }
};
struct EqvTest
{
    static bool Holds(double a, double b) { return (a != 0) == (b != 0); }
};
struct ImpTest
{
    static bool Holds(double a, double b) { return a == 0 || b != 0; }
};

struct MultiplyAddRule
{
    static double Apply(double a, double b, double c) { return a * b + c; }
};
struct MultiplySubtractRule
{
    static double Apply(double a, double b, double c) { return a * b - c; }
};
struct SubtractProductRule
{
    static double Apply(double a, double b, double c) { return c - a * b; }
};

double Truth(double value) { return std::isnan(value) ? value : value != 0 ? 1.0 : 0.0; }

double RunLoad(const ScalarNode& node, EvalState&) { return *node.a.cell; }
double RunArgument(const ScalarNode& node, EvalState& state) { return state.arguments[node.index]; }
double RunAnd(const ScalarNode& node, EvalState& state)
{
    const double a = Sub::Get(node.a, state);
    if (a == 0 || std::isnan(a)) return a;
    return Truth(Sub::Get(node.b, state));
}
double RunOr(const ScalarNode& node, EvalState& state)
{
    const double a = Sub::Get(node.a, state);
    if (std::isnan(a)) return a;
    return a != 0 ? 1.0 : Truth(Sub::Get(node.b, state));
}
double RunGuard(const ScalarNode& node, EvalState& state)
{
    const double a = Sub::Get(node.a, state);
    return std::isnan(a) ? a : Sub::Get(node.b, state);
}
double RunSelect(const ScalarNode& node, EvalState& state)
{
    const double a = Sub::Get(node.a, state);
    if (std::isnan(a)) [[unlikely]]
        return a;
    return Sub::Get(a != 0 ? node.b : node.c, state);
}
double RunCall(const ScalarNode& node, EvalState& state)
{
    std::array<double, kMaxFunctionParameters> arguments;
    double check = 0;
    for (std::uint32_t i = 0; i < node.argument_count; ++i) {
        const ScalarNode& argument = *node.arguments[i];
        arguments[i] = argument.run(argument, state);
        if (std::isnan(arguments[i])) check = arguments[i];
    }
    if (std::isnan(check)) return check;
    const double* const outer = state.arguments;
    state.arguments = arguments.data();
    const double result = node.program->scalar.Run(state);
    state.arguments = outer;
    return result;
}

// A comparison of two cells decides.
template <class Test>
double RunSelectByTest(const ScalarNode& node, EvalState& state)
{
    const double left = *node.a.cell;
    const double right = *node.a.second;
    if (std::isunordered(left, right)) [[unlikely]]
        return left + right;
    return Sub::Get(Test::Holds(left, right) ? node.b : node.c, state);
}

ScalarRun PickSelectByTest(Op test)
{
    switch (test) {
        case Op::Equal: return RunSelectByTest<EqualTest>;
        case Op::NotEqual: return RunSelectByTest<NotEqualTest>;
        case Op::Less: return RunSelectByTest<LessTest>;
        case Op::Greater: return RunSelectByTest<GreaterTest>;
        case Op::LessEqual: return RunSelectByTest<LessEqualTest>;
        case Op::GreaterEqual: return RunSelectByTest<GreaterEqualTest>;
        default: return nullptr;
    }
}

ScalarRun PickUnaryRun(const GraphNode& node, Kind cell)
{
    if (node.op == Op::Factorial) return PickUnary<FactorialRule>(cell);
    if (node.op == Op::PowerInt) {
        if (node.index == 2) return PickUnary<SquareRule>(cell);
        if (node.index == 3) return PickUnary<CubeRule>(cell);
        return PickUnary<PowerIntRule>(cell);
    }
    switch (node.kernel) {
        case UnaryKernel::Sin: return PickUnary<FunctionRule<std::sin>>(cell);
        case UnaryKernel::Cos: return PickUnary<FunctionRule<std::cos>>(cell);
        case UnaryKernel::Exp: return PickUnary<FunctionRule<std::exp>>(cell);
        case UnaryKernel::Tan: return PickUnary<FunctionRule<std::tan>>(cell);
        case UnaryKernel::Atan: return PickUnary<FunctionRule<std::atan>>(cell);
        case UnaryKernel::Sinh: return PickUnary<FunctionRule<std::sinh>>(cell);
        case UnaryKernel::Cosh: return PickUnary<FunctionRule<std::cosh>>(cell);
        case UnaryKernel::Tanh: return PickUnary<FunctionRule<std::tanh>>(cell);
        case UnaryKernel::Abs: return PickUnary<AbsRule>(cell);
        case UnaryKernel::Negate: return PickUnary<NegateRule>(cell);
        case UnaryKernel::Sqrt: return PickUnary<SqrtRule>(cell);
        case UnaryKernel::Log: return PickUnary<LogRule>(cell);
        default: return PickUnary<TableRule>(cell);
    }
}

ScalarRun PickRun(const GraphNode& node, Kind a, Kind b, Kind c)
{
    switch (node.op) {
        case Op::Constant:
        case Op::Variable: return RunLoad;
        case Op::Argument: return RunArgument;
        case Op::Unary:
        case Op::Factorial:
        case Op::PowerInt: return PickUnaryRun(node, a);
        case Op::Add: return PickBinary<AddRule>(a, b);
        case Op::Subtract: return PickBinary<SubtractRule>(a, b);
        case Op::Multiply: return PickBinary<MultiplyRule>(a, b);
        case Op::Divide: return PickBinary<DivideRule>(a, b);
        case Op::IntDivide: return PickPlainBinary<IntDivideRule>(a, b);
        case Op::Power: return PickPlainBinary<PowerRule>(a, b);
        case Op::Min: return PickBinary<MinRule>(a, b);
        case Op::Max: return PickBinary<MaxRule>(a, b);
        case Op::Equal: return PickPlainBinary<TruthRule<EqualTest>>(a, b);
        case Op::NotEqual: return PickPlainBinary<TruthRule<NotEqualTest>>(a, b);
        case Op::Less: return PickPlainBinary<TruthRule<LessTest>>(a, b);
        case Op::Greater: return PickPlainBinary<TruthRule<GreaterTest>>(a, b);
        case Op::LessEqual: return PickPlainBinary<TruthRule<LessEqualTest>>(a, b);
        case Op::GreaterEqual: return PickPlainBinary<TruthRule<GreaterEqualTest>>(a, b);
        case Op::And: return RunAnd;
        case Op::Or: return RunOr;
        case Op::Xor: return PickPlainBinary<TruthRule<XorTest>>(a, b);
        case Op::Eqv: return PickPlainBinary<TruthRule<EqvTest>>(a, b);
        case Op::Imp: return PickPlainBinary<TruthRule<ImpTest>>(a, b);
        case Op::Guard: return RunGuard;
        case Op::MultiplyAdd: return PickTernary<MultiplyAddRule>(a, b, c);
        case Op::MultiplySubtract: return PickTernary<MultiplySubtractRule>(a, b, c);
        case Op::SubtractProduct: return PickTernary<SubtractProductRule>(a, b, c);
        case Op::Select: return RunSelect;
        case Op::Call: return RunCall;
    }
    return nullptr;
}

// Operations that look at their operands one after the other take them as nodes.
constexpr bool TakesNodes(Op op)
{
    return op == Op::And || op == Op::Or || op == Op::Guard || op == Op::Select;
}

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
    call_arguments_.clear();
    root_ = nullptr;
}

void ScalarCode::Build(const Graph& graph)
{
    Clear();
    nodes_.resize(graph.nodes.size());
    call_arguments_.reserve(graph.call_arguments.size());
    for (const NodeId id : graph.call_arguments) {
        call_arguments_.push_back(&nodes_[static_cast<std::size_t>(id)]);
    }
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        const GraphNode& from = graph.nodes[i];
        ScalarNode& to = nodes_[i];
        if (IsLeaf(from.op)) {
            to.run = from.op == Op::Argument ? RunArgument : RunLoad;
            to.a.cell = CellOf(from);
            to.index = from.op == Op::Argument ? from.index : 0;
            continue;
        }
        if (from.op == Op::Call) {
            to.run = RunCall;
            to.program = from.program;
            to.arguments = call_arguments_.data() + from.a;
            to.argument_count = static_cast<std::uint32_t>(from.b);
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
}

double FoldedValue(const Graph& graph, const GraphNode& node)
{
    std::array<ScalarNode, 4> nodes;
    const std::array<NodeId, 3> operands = {node.a, node.b, node.c};
    std::array<Operand*, 3> places = {&nodes[3].a, &nodes[3].b, &nodes[3].c};
    for (std::size_t i = 0; i < operands.size(); ++i) {
        if (operands[i] == kNoNode) continue;
        nodes[i].run = RunLoad;
        nodes[i].a.cell = &graph[operands[i]].number;
        places[i]->node = &nodes[i];
    }
    nodes[3].run = PickRun(node, Kind::Sub, Kind::Sub, Kind::Sub);
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
