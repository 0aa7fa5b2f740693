#include "term/scalar_operations.h"

#include <cmath>

#include "term/scalar_rules.h"

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

double RunLoad(const ScalarNode& node, EvalState&) { return *node.a.cell; }
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

}  // namespace

unsigned InPlaceOperands(Op op)
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

bool TakesNodes(Op op)
{
    return op == Op::And || op == Op::Or || op == Op::Guard || op == Op::Select;
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

ScalarRun PickRun(const GraphNode& node, Kind a, Kind b, Kind c)
{
    switch (node.op) {
        case Op::Constant:
        case Op::Variable: return RunLoad;
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
    }
    return nullptr;
}

}  // namespace korvinth::term
