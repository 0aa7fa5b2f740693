// What each operation of the scalar code computes from the values of its operands.
#pragma once

#include <cmath>
#include <cstdlib>

#include "term/arithmetic.h"
#include "term/error.h"
#include "term/eval_state.h"
#include "term/scalar_code.h"

namespace korvinth::term {

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

}  // namespace korvinth::term
