// The block form against the scalar code: kernel by kernel on every level that this processor can
// run, then on random terms.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "term/block_code.h"
#include "term/compiler.h"
#include "term/definitions.h"
#include "term/kernels.h"
#include "term/math_parser.h"
#include "term/program.h"

namespace korvinth::term {
namespace {

// One term compiled by hand, so that any table of kernels can run it.
class Bench
{
public:
    explicit Bench(TrigMode mode)
    {
        definitions_.Clear(Limits{});
        definitions_.SetMode(mode);
        x_ = definitions_.DefineVariable("x", VariableHandle{1});
        definitions_.DefineVariable("a", VariableHandle{2})->value = 1.3;
        definitions_.DefineVariable("y", VariableHandle{3})->value = -0.75;
    }

    void Compile(const std::string& term)
    {
        compiler_.Compile(term, program_);
        ASSERT_EQ(program_.fault, Error::None) << term;
    }
    double Scalar(double x)
    {
        x_->value = x;
        EvalState state;
        return program_.scalar.Run(state);
    }
    std::vector<double> Block(const KernelTable& kernels, std::span<const double> arguments)
    {
        std::vector<double> results(arguments.size());
        program_.block.Clear();
        EXPECT_TRUE(program_.block.Prepare(program_.graph, &x_->value, kernels));
        program_.block.BeginPass(program_.scalar);
        program_.block.Run(arguments, results, registers_);
        return results;
    }

private:
    Definitions definitions_;
    Compiler compiler_{definitions_};
    Variable* x_ = nullptr;
    Program program_;
    std::vector<double> registers_;
};

// Within `tolerance` relative to the value, or both without a value, or both infinite alike.
void ExpectAlike(double block, double scalar, double tolerance, double x)
{
    if (std::isnan(scalar) || std::isinf(scalar)) {
        EXPECT_TRUE(std::isnan(scalar) ? std::isnan(block) : block == scalar)
            << "x = " << x << ": " << block << " instead of " << scalar;
        return;
    }
    EXPECT_LE(std::fabs(block - scalar), tolerance * std::fabs(scalar) + 1e-300)
        << "x = " << x << ": " << block << " instead of " << scalar;
}

const std::vector<double>& SpecialArguments()
{
    static const double kInf = std::numeric_limits<double>::infinity();
    static const std::vector<double> kArguments = {
        0.0,   -0.0,         1,      -1,     0.5,     -0.5,    2,    -2,  2.5,
        3.5,   -2.5,         1e-300, -1e-5,  1e-310,  30,      45,   60,  90,
        180,   270,          -90,    -30,    50,      100,     200,  300, -100,
        1e6,   -1e6,         1e17,   -3e17,  1e300,   -1e300,  709,  710, 711,
        -709,  -746,         1023.5, 1024,   -1075,   170,     171,  20,  kInf,
        -kInf, std::nan(""), 0.9999, 1.0001, -1.0001, 3.14159, 1e-8, 7,   16.5};
    return kArguments;
}

// Every operation with its operands varying, and with one of them fixed.
std::vector<std::string> KernelTerms()
{
    std::vector<std::string> terms;
    for (const Builtin& builtin : Builtins()) terms.push_back(std::string(builtin.name) + "(x)");
    for (const char* const op : {"+", "-", "*", "/", "\\", "^", "=", "<>", "<", ">",
                                 "<=", ">=", " and ", " or ", " xor ", " eqv ", " imp "}) {
        const std::string sign(op);
        terms.push_back("(x" + sign + "x)");
        terms.push_back("(x" + sign + "a)");
        terms.push_back("(y" + sign + "x)");
        terms.push_back("(x" + sign + "(x-1))");
    }
    for (const char* const term :
         {"-x",         "not(x)",       "x!",           "x^3",
          "x^4",        "x^16",         "x^-2",         "x^-7",
          "x^0",        "x^0.5",        "min(x,a)",     "max(a,x)",
          "min(x,-x)",  "max(x,x^2)",   "x*x+x",        "x*a+x",
          "a*x+a",      "x*x+a",        "a*y+x",        "x*x-x",
          "x*a-x",      "x*x-a",        "a*y-x",        "x-x*x",
          "x-x*a",      "a-x*x",        "a-x*a",        "x-a*y",
          "iif(x,x,a)", "iif(x>0,a,x)", "iif(a>1,x,0)", "iif(x>0,ln(x),-x)",
          "iif(x,a,y)"}) {
        terms.emplace_back(term);
    }
    return terms;
}

TEST(BlockCode, EveryKernelAgreesWithTheScalarCodeOnEveryLevel)
{
    std::vector<double> arguments = SpecialArguments();
    for (int i = -200; i <= 200; ++i) arguments.push_back(i * 0.0731);
    for (const KernelTable* kernels : AvailableKernels()) {
        for (const TrigMode mode : {TrigMode::Radians, TrigMode::Degrees, TrigMode::Grads}) {
            Bench bench(mode);
            for (const std::string& term : KernelTerms()) {
                SCOPED_TRACE(std::string(kernels->level) + ", mode " +
                             std::to_string(static_cast<int>(mode)) + ": " + term);
                bench.Compile(term);
                const std::vector<double> results = bench.Block(*kernels, arguments);
                for (std::size_t i = 0; i < arguments.size(); ++i) {
                    ExpectAlike(results[i], bench.Scalar(arguments[i]), 1e-12, arguments[i]);
                }
            }
        }
    }
}

TEST(BlockCode, ArithmeticAgreesBitByBit)
{
    const std::vector<std::string> terms = {"x*x+a",   "x^2*a-y*x", "x-a*x",  "1/(x-1)+a",
                                            "x^7-3*x", "x/a*y",     "a*x^-3", "abs(x)-x"};
    std::vector<double> arguments;
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> range(-100, 100);
    for (int i = 0; i < 300; ++i) arguments.push_back(range(random));
    for (const KernelTable* kernels : AvailableKernels()) {
        Bench bench(TrigMode::Radians);
        for (const std::string& term : terms) {
            bench.Compile(term);
            const std::vector<double> results = bench.Block(*kernels, arguments);
            for (std::size_t i = 0; i < arguments.size(); ++i) {
                EXPECT_EQ(results[i], bench.Scalar(arguments[i])) << kernels->level << " " << term;
            }
        }
    }
}

// Terms whose value does not hang on the last bits of their parts: sums of positive terms,
// products, and functions that are smooth where they are used.
class RandomTerms
{
public:
    explicit RandomTerms(std::uint64_t seed) : random_(seed) {}

    // Any term; with an error at some arguments as a rule.
    std::string Wild(int depth)
    {
        if (depth == 0) return Leaf();
        switch (Number(9)) {
            case 0: return "(" + Wild(depth - 1) + "+" + Wild(depth - 1) + ")";
            case 1: return "(" + Wild(depth - 1) + "-" + Wild(depth - 1) + ")";
            case 2: return Wild(depth - 1) + "*" + Wild(depth - 1);
            case 3: return "(" + Wild(depth - 1) + ")/(" + Wild(depth - 1) + ")";
            case 4: return "(" + Wild(depth - 1) + ")^" + std::to_string(Number(5) - 2);
            case 5: {
                const auto builtins = Builtins();
                const auto index =
                    static_cast<std::size_t>(Number(static_cast<int>(builtins.size())));
                return std::string(builtins[index].name) + "(" + Wild(depth - 1) + ")";
            }
            case 6:
                return "iif(" + Wild(depth - 1) + ">" + Leaf() + "," + Wild(depth - 1) + "," +
                       Wild(depth - 1) + ")";
            case 7: return "min(" + Wild(depth - 1) + "," + Wild(depth - 1) + ")";
            default: return "g(" + Wild(depth - 1) + ")";
        }
    }

    // Positive everywhere, within about [0.1, 1000].
    std::string Tame(int depth)
    {
        if (depth == 0) return Number(2) == 0 ? "(1+x^2)" : "(2+sin(x))";
        switch (Number(8)) {
            case 0: return "(" + Tame(depth - 1) + "+" + Tame(depth - 1) + ")";
            case 1: return "sqrt(" + Tame(depth - 1) + "*" + Tame(depth - 1) + ")";
            case 2: return "ln(2+" + Tame(depth - 1) + ")";
            case 3: return "(1+atan(" + Tame(depth - 1) + "))";
            case 4: return "exp(1/(1+" + Tame(depth - 1) + "))";
            case 5: return "max(" + Tame(depth - 1) + "," + Tame(depth - 1) + ")";
            case 6: return "(2+tanh(" + Tame(depth - 1) + "))";
            default: return "(" + Tame(depth - 1) + "/(1+" + Tame(depth - 1) + ")+0.5)";
        }
    }

private:
    int Number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }
    std::string Leaf()
    {
        switch (Number(4)) {
            case 0: return "a";
            case 1: return std::to_string(Number(5));
            default: return "x";
        }
    }

    std::mt19937_64 random_;
};

struct EngineFixture
{
    MathParser parser;
    VariableHandle x = parser.DefineVariable("x");

    EngineFixture()
    {
        parser.DefineVariable("a=1.3");
        parser.DefineFunction("g(t)=t^2-1");
    }
    // Evaluates both ways and compares; the tolerance is 0 where only the errors count.
    void Compare(const std::string& term, const std::vector<double>& arguments, double tolerance)
    {
        const ExprHandle handle = parser.Parse(term);
        ASSERT_EQ(parser.GetError(), Error::None) << term << ": " << parser.ErrorText();
        std::vector<double> results(arguments.size());
        std::vector<Error> errors(arguments.size());
        parser.SetVariableValue(x, 42);
        parser.EvaluateBlock(handle, x, arguments, results, errors);
        EXPECT_EQ(parser.VariableValue(x), 42) << "the variable keeps its value";
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            parser.SetVariableValue(x, arguments[i]);
            const double value = parser.Evaluate(handle);
            ASSERT_EQ(errors[i], parser.GetError()) << term << " at " << arguments[i];
            if (tolerance > 0) ExpectAlike(results[i], value, tolerance, arguments[i]);
        }
        parser.ReleaseExpr(handle);
    }
};

std::vector<double> Grid(int count)
{
    std::vector<double> arguments;
    for (int i = 0; i < count; ++i) arguments.push_back(-8 + 16.0 * i / (count - 1));
    return arguments;
}

TEST(EvaluateBlock, AgreesWithEvaluateOnRandomTerms)
{
    const std::uint64_t seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomTerms terms(seed);
    EngineFixture engine;
    for (int i = 0; i < 400; ++i) engine.Compare(terms.Wild(1 + i % 4), Grid(41), 0);
    for (int i = 0; i < 300; ++i) engine.Compare(terms.Tame(1 + i % 5), Grid(67), 1e-12);
}

TEST(EvaluateBlock, AnyNumberOfSamplesAndResultsInPlace)
{
    EngineFixture engine;
    const ExprHandle handle = engine.parser.Parse("x^2-a*x+sin(x)");
    const ExprHandle identity = engine.parser.Parse("x");
    const ExprHandle constant = engine.parser.Parse("a");
    for (const int count : {0, 1, 7, 8, 15, 16, 17, 255, 511, 512, 513, 1025, 2000}) {
        SCOPED_TRACE(count);
        std::vector<double> arguments =
            count < 2 ? std::vector<double>(static_cast<std::size_t>(count), 0.5) : Grid(count);
        std::vector<double> apart(arguments.size());
        std::vector<Error> errors(arguments.size());
        engine.parser.EvaluateBlock(handle, engine.x, arguments, apart, errors);
        std::vector<double> in_place = arguments;
        engine.parser.EvaluateBlock(handle, engine.x, in_place, in_place, errors);
        EXPECT_EQ(in_place, apart);
        std::vector<double> same(arguments.size());
        engine.parser.EvaluateBlock(identity, engine.x, arguments, same, errors);
        EXPECT_EQ(same, arguments);
        engine.parser.EvaluateBlock(constant, engine.x, arguments, same, errors);
        EXPECT_EQ(same, std::vector<double>(arguments.size(), 1.3));
    }
}

TEST(EvaluateBlock, ErrorsSampleBySample)
{
    EngineFixture engine;
    const std::vector<double> arguments = {-4, -1, 0, 1, 4, 9, 16, 25, 36, -9};
    std::vector<double> results(arguments.size());
    std::vector<Error> errors(arguments.size());
    const ExprHandle handle = engine.parser.Parse("iif(x=9,x!,1/x)*sqrt(x)*iif(x=16,171!,1)");
    engine.parser.EvaluateBlock(handle, engine.x, arguments, results, errors);
    const std::vector<Error> expected = {
        Error::InvalidRoot, Error::InvalidRoot, Error::DivisionByZero,    Error::None,
        Error::None,        Error::None,        Error::FactorialOverflow, Error::None,
        Error::None,        Error::InvalidRoot};
    EXPECT_EQ(errors, expected);
    EXPECT_EQ(engine.parser.GetError(), Error::InvalidRoot) << "that of the first faulty sample";
    for (std::size_t i = 0; i < errors.size(); ++i) {
        EXPECT_EQ(results[i] == 0, errors[i] != Error::None);
    }
    engine.parser.EvaluateBlock(ExprHandle{5}, engine.x, arguments, results, errors);
    EXPECT_EQ(errors, std::vector<Error>(errors.size(), Error::InvalidTerm));
}

TEST(EvaluateBlock, AFailedOperationIsToldFromANumberThatIsNone)
{
    EngineFixture engine;
    const double huge = 1e308;
    const std::vector<double> arguments = {-huge, huge, -1, 0, 1, 2, -2, 0.5, -0.5, 3};
    for (const char* const term :
         {"sqrt(x*10-x*10)", "sqrt(x)", "ln(x*10-x*10)", "asin(x)", "asin(x*10-x*10)", "1/x",
          "(x*10-x*10)/0", "(x*10-x*10)+1/x", "1/x+(x*10-x*10)", "sqrt(x)+ln(x)", "x^-2",
          "1/(x-x*1)", "min(1/x,x*10-x*10)", "iif(x*10-x*10,1/x,0)", "(1/x) and (1/x)",
          "acosh(x)>0", "sqrt(sin(x)^2+cos(x)^2-1)", "ln(x)^0"}) {
        engine.Compare(term, arguments, 0);
    }
}

TEST(EvaluateBlock, FunctionsTooLargeToBeWrittenOutAndForeignVariables)
{
    EngineFixture engine;
    engine.parser.DefineFunction("p(t)=t");
    std::string name = "p";
    for (const char next : std::string("qrstuvw")) {
        engine.parser.DefineFunction(std::string(1, next) + "(t)=" + name + "(t)+" + name +
                                     "(t+1)+" + name + "(t/2)");
        name = std::string(1, next);
    }
    engine.Compare("w(x)*a", Grid(20), 1e-12);
    engine.Compare("sqrt(w(x))", Grid(20), 1e-12);
    // Over another variable than the term's own, every sample is the same.
    const VariableHandle other = engine.parser.DefineVariable("other");
    engine.parser.SetVariableValue(engine.x, 3);
    const ExprHandle handle = engine.parser.Parse("x^2");
    std::vector<double> results(20);
    std::vector<Error> errors(20);
    engine.parser.EvaluateBlock(handle, other, Grid(20), results, errors);
    EXPECT_EQ(results, std::vector<double>(20, 9));
    engine.parser.EvaluateBlock(handle, VariableHandle::Invalid, Grid(20), results, errors);
    EXPECT_EQ(results, std::vector<double>(20, 9));
}

}  // namespace
}  // namespace korvinth::term
