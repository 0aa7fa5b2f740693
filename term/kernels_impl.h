// The kernels' bodies, compiled once for each level of processor. Before including it, a source
// defines kVectorBytes, kLevelName, KORVINTH_KERNEL_TABLE, Vec, Mask, AnyBits, EitherNaN and the
// vector mathematics (namespace math). Everything has internal linkage and no shared inline
// function or template is used, so that the linker cannot take code for one level for another's.
#pragma once

#include <cstddef>
#include <cstdint>

#include "term/arithmetic.h"
#include "term/kernels.h"

namespace korvinth::term {
namespace {

using Index = std::size_t;
constexpr Index kLanes = kVectorBytes / sizeof(double);

// Runs the statement that follows for i = 0, kLanes, ... below n, a whole kernel step a turn.
#define KORVINTH_FOR_EACH_VECTOR(i, n)                                \
    for (Index i##_step = 0; i##_step < (n); i##_step += kKernelStep) \
    _Pragma("GCC unroll 8") for (Index i = i##_step; i < i##_step + kKernelStep; i += kLanes)

// Unaligned access to a vector, of errors as well.
typedef double Loose __attribute__((vector_size(kVectorBytes), aligned(4), may_alias));

inline Vec Load(const double* p) { return *reinterpret_cast<const Loose*>(p); }
inline void Store(void* p, Vec v) { *static_cast<Loose*>(p) = v; }
// Not 0 + x, which would lose the sign of -0.
inline Vec All(double x) { return x - Vec{}; }
inline Vec Pick(Mask mask, Vec yes, Vec no) { return mask ? yes : no; }

constexpr double kInfinity = __builtin_inf();
constexpr double kHalfPi = 1.5707963267948966;

inline Mask SignBits() { return (Mask)All(-0.0); }
inline Vec Magnitude(Vec x) { return (Vec)((Mask)x & ~SignBits()); }
inline Vec WithSignOf(Vec x, Vec sign) { return (Vec)((Mask)x | ((Mask)sign & SignBits())); }
inline Mask IsNaN(Vec x) { return x != x; }

// Rounding by adding 2^52: exact below it, and above it every double is whole.
inline Vec RoundToEven(Vec x)
{
    const Vec size = Magnitude(x);
    const Vec big = All(0x1p52);
    const Vec rounded = (size + big) - big;
    return Pick(size < big, WithSignOf(rounded, x), x);
}
inline Vec FloorOf(Vec x)
{
    const Vec rounded = RoundToEven(x);
    return Pick(rounded > x, rounded - 1.0, rounded);
}
inline Vec CeilOf(Vec x)
{
    const Vec rounded = RoundToEven(x);
    return Pick(rounded < x, rounded + 1.0, rounded);
}
inline Vec TruncateOf(Vec x) { return WithSignOf(FloorOf(Magnitude(x)), x); }

// Vector functions fall back to slow calls for special arguments, so those are replaced before the
// call and their results after it.
#define KORVINTH_GUARDED(function, valid, harmless, otherwise) \
    Pick(valid, math::function(Pick(valid, x, All(harmless))), otherwise)

// The same where only the scalar function knows the special results: overflow and underflow.
#define KORVINTH_TAMED(name, function, valid, scalar)       \
    inline Vec name(Vec x)                                  \
    {                                                       \
        const Mask tame = (valid);                          \
        Vec result = math::function(Pick(tame, x, All(0))); \
        if (AnyBits(~tame)) {                               \
            for (Index i = 0; i < kLanes; ++i) {            \
                if (tame[i] == 0) result[i] = scalar(x[i]); \
            }                                               \
        }                                                   \
        return result;                                      \
    }
KORVINTH_TAMED(SinhOf, Sinh, Magnitude(x) < 709.0, __builtin_sinh)
KORVINTH_TAMED(CoshOf, Cosh, Magnitude(x) < 709.0, __builtin_cosh)
KORVINTH_TAMED(ExpOf, Exp, Magnitude(x) < 707.0, __builtin_exp)
KORVINTH_TAMED(Exp2Of, Exp2, Magnitude(x) < 1021.0, __builtin_exp2)

// --- one operand -------------------------------------------------------------------------------

inline Mask IsPositive(Vec x) { return (x > 0.0) & (x < kInfinity); }
inline Vec LogOfSpecial(Vec x) { return Pick(x <= 0.0, All(kDomainError), x); }
// A NaN stays what it is, a number is out of the domain.
inline Vec OutOfDomain(Vec x) { return Pick(IsNaN(x), x, All(kDomainError)); }

#define KORVINTH_UNARY(name, expression)                 \
    struct name                                          \
    {                                                    \
        static Vec Apply(Vec x) { return (expression); } \
    };

KORVINTH_UNARY(NegateOp, -x)
KORVINTH_UNARY(NotOp, Pick(IsNaN(x), x, Pick(x == 0.0, All(1), All(0))))
KORVINTH_UNARY(AbsOp, Magnitude(x))
KORVINTH_UNARY(SqrtOp, Pick(x < 0.0, All(kDomainError), math::Sqrt(x)))
KORVINTH_UNARY(SinOp, math::Sin(x))
KORVINTH_UNARY(CosOp, math::Cos(x))
KORVINTH_UNARY(TanOp, math::Tan(x))
KORVINTH_UNARY(AsinOp, KORVINTH_GUARDED(Asin, Magnitude(x) <= 1.0, 0, OutOfDomain(x)))
KORVINTH_UNARY(AcosOp, KORVINTH_GUARDED(Acos, Magnitude(x) <= 1.0, 0, OutOfDomain(x)))
KORVINTH_UNARY(AtanOp, math::Atan(x))
KORVINTH_UNARY(SinhOp, SinhOf(x))
KORVINTH_UNARY(CoshOp, CoshOf(x))
KORVINTH_UNARY(TanhOp, math::Tanh(x))
KORVINTH_UNARY(AsinhOp, math::Asinh(x))
KORVINTH_UNARY(AcoshOp, KORVINTH_GUARDED(Acosh, x >= 1.0, 1, OutOfDomain(x)))
KORVINTH_UNARY(AtanhOp, KORVINTH_GUARDED(Atanh, Magnitude(x) < 1.0, 0, OutOfDomain(x)))
KORVINTH_UNARY(ExpOp, ExpOf(x))
KORVINTH_UNARY(Exp2Op, Exp2Of(x))
KORVINTH_UNARY(LogOp, KORVINTH_GUARDED(Log, IsPositive(x), 1, LogOfSpecial(x)))
KORVINTH_UNARY(Log2Op, KORVINTH_GUARDED(Log2, IsPositive(x), 1, LogOfSpecial(x)))
KORVINTH_UNARY(Log10Op, KORVINTH_GUARDED(Log10, IsPositive(x), 1, LogOfSpecial(x)))
KORVINTH_UNARY(CeilOp, CeilOf(x))
KORVINTH_UNARY(FloorOp, FloorOf(x))
KORVINTH_UNARY(TruncateOp, TruncateOf(x))
KORVINTH_UNARY(RoundOp, RoundToEven(x))
KORVINTH_UNARY(SignOp, Pick(x > 0.0, All(1), Pick(x < 0.0, All(-1), x)))
KORVINTH_UNARY(CbrtOp, math::Cbrt(x))

template <class Op>
void RunUnary(double* out, const double* a, const double*, const double*, Index n,
              const KernelExtra&)
{
    KORVINTH_FOR_EACH_VECTOR(i, n) Store(out + i, Op::Apply(Load(a + i)));
}

void RunLanes(double* out, const double* a, const double*, const double*, Index n,
              const KernelExtra& extra)
{
    for (Index i = 0; i < n; ++i) out[i] = extra.scalar(a[i]);
}

void RunFactorial(double* out, const double* a, const double*, const double*, Index n,
                  const KernelExtra&)
{
    for (Index i = 0; i < n; ++i) out[i] = Factorial(a[i]);
}

// The products of WholePower, in the same order.
inline Vec PowerOfExponent(Vec x, std::int64_t exponent)
{
    Vec square = x;
    Vec result = (exponent & 1) != 0 ? x : All(1);
    for (std::int64_t rest = exponent >> 1; rest > 0; rest >>= 1) {
        square *= square;
        if ((rest & 1) != 0) result *= square;
    }
    return result;
}
// The exponents met most often let the compiler write the products out.
template <std::int64_t kExponent>
void RunFixedPower(double* out, const double* a, Index n)
{
    KORVINTH_FOR_EACH_VECTOR(i, n) Store(out + i, PowerOfExponent(Load(a + i), kExponent));
}
void RunPowerInt(double* out, const double* a, const double*, const double*, Index n,
                 const KernelExtra& extra)
{
    switch (extra.exponent) {
        case 2: return RunFixedPower<2>(out, a, n);
        case 3: return RunFixedPower<3>(out, a, n);
        case 4: return RunFixedPower<4>(out, a, n);
        default: break;
    }
    const bool inverse = extra.exponent < 0;
    const std::int64_t exponent = inverse ? -extra.exponent : extra.exponent;
    KORVINTH_FOR_EACH_VECTOR(i, n)
    {
        const Vec x = Load(a + i);
        Vec result = PowerOfExponent(x, exponent);
        if (inverse) result = Pick(x == 0.0, All(kDomainError), 1.0 / result);
        Store(out + i, result);
    }
}

// Sine, cosine and tangent in degrees and grads: x = n * kQuarter + rest, exact below 2^50.
struct Reduced
{
    Vec quadrant;  // 0 to 3
    Vec rest;
};
template <int kQuarter>
Reduced ReduceAngle(Vec x)
{
    const Vec n = RoundToEven(x / kQuarter);
    return {n - 4.0 * FloorOf(n * 0.25), x - n * kQuarter};
}
template <int kQuarter>
Vec SinOfQuadrant(Vec quadrant, Vec rest)
{
    const Mask odd = (quadrant == 1.0) | (quadrant == 3.0);
    const Vec angle = Pick(odd, kQuarter - Magnitude(rest), rest);
    Vec value = math::Sin(angle * (kHalfPi / kQuarter));
    if (kQuarter == 90) {
        value = Pick(Magnitude(angle) == 30.0, WithSignOf(All(0.5), angle), value);
    }
    return Pick(quadrant >= 2.0, -value, value) + 0.0;
}
template <int kQuarter>
Vec SinQuadrantOf(Vec x)
{
    const Reduced r = ReduceAngle<kQuarter>(x);
    return SinOfQuadrant<kQuarter>(r.quadrant, r.rest);
}
template <int kQuarter>
Vec CosQuadrantOf(Vec x)
{
    const Reduced r = ReduceAngle<kQuarter>(x);
    const Vec next = Pick(r.quadrant == 3.0, All(0), r.quadrant + 1.0);
    return SinOfQuadrant<kQuarter>(next, r.rest);
}
template <int kQuarter>
Vec TanQuadrantOf(Vec x)
{
    const Reduced r = ReduceAngle<kQuarter>(x);
    Vec value = math::Tan(r.rest * (kHalfPi / kQuarter));
    value = Pick(2.0 * Magnitude(r.rest) == kQuarter, WithSignOf(All(1), r.rest), value);
    const Mask odd = (r.quadrant == 1.0) | (r.quadrant == 3.0);
    return Pick(odd, Pick(value == 0.0, All(kDomainError), -1.0 / value), value + 0.0);
}

template <Vec (*kFunction)(Vec)>
void RunQuadrant(double* out, const double* a, const double*, const double*, Index n,
                 const KernelExtra& extra)
{
    KORVINTH_FOR_EACH_VECTOR(i, n)
    {
        const Vec x = Load(a + i);
        if (AnyBits(~(Magnitude(x) < 0x1p50))) {
            for (Index k = i; k < i + kLanes; ++k) out[k] = extra.scalar(a[k]);
        } else {
            Store(out + i, kFunction(x));
        }
    }
}

// --- two operands ------------------------------------------------------------------------------

// Hands a NaN on.
inline Vec OrNaN(Vec a, Vec b, Vec result) { return Pick(EitherNaN(a, b), a + b, result); }
inline Vec Truth(Mask mask) { return (Vec)(mask & (Mask)All(1)); }

// At least |log2(x)| of a positive finite x, from its exponent bits.
inline Vec ExponentBound(Vec x)
{
    const Vec biased = (Vec)((Mask)x >> 52 | (Mask)All(0x1p52)) - 0x1p52;
    return Magnitude(biased - 1023.0) + 1.0;
}

inline Vec PowerOf(Vec a, Vec b)
{
    const Vec size = Magnitude(a);
    const Mask whole = RoundToEven(b) == b;
    const Mask plain = (size > 0.0) & (size < kInfinity) & (Magnitude(b) < 0x1p52);
    // Far from overflow and underflow the vector function is exact enough and fast; |b log2 a| is
    // bounded through the exponent bits of a.
    const Mask tame = plain & (Magnitude(b) * ExponentBound(size) < 1000.0);
    Vec result = math::Pow(Pick(tame, size, All(1)), Pick(tame, b, All(1)));
    const Vec half = b * 0.5;
    const Mask odd = whole & (RoundToEven(half) != half);
    result = Pick((a < 0.0) & odd, -result, result);
    result = Pick((a < 0.0) & ~whole, All(kDomainError), result);
    if (AnyBits(~tame)) {
        for (Index i = 0; i < kLanes; ++i) {
            if (tame[i] == 0) result[i] = Power(a[i], b[i]);
        }
    }
    return result;
}
inline Vec WholeQuotientOf(Vec a, Vec b)
{
    Vec result = a;
    for (Index i = 0; i < kLanes; ++i) result[i] = WholeQuotient(a[i], b[i]);
    return result;
}

#define KORVINTH_BINARY(name, expression)                       \
    struct name                                                 \
    {                                                           \
        static Vec Apply(Vec a, Vec b) { return (expression); } \
    };

KORVINTH_BINARY(AddOp, a + b)
KORVINTH_BINARY(SubtractOp, a - b)
KORVINTH_BINARY(MultiplyOp, a* b)
KORVINTH_BINARY(DivideOp, Pick((b == 0.0) & ~IsNaN(a), All(kDomainError), a / b))
KORVINTH_BINARY(IntDivideOp, WholeQuotientOf(a, b))
KORVINTH_BINARY(PowerOp, PowerOf(a, b))
KORVINTH_BINARY(MinOp, Pick(IsNaN(a), a, Pick(a < b, a, b)))
KORVINTH_BINARY(MaxOp, Pick(IsNaN(a), a, Pick(a > b, a, b)))
KORVINTH_BINARY(EqualOp, OrNaN(a, b, Truth(a == b)))
KORVINTH_BINARY(NotEqualOp, OrNaN(a, b, Truth(a != b)))
KORVINTH_BINARY(LessOp, OrNaN(a, b, Truth(a < b)))
KORVINTH_BINARY(GreaterOp, OrNaN(a, b, Truth(a > b)))
KORVINTH_BINARY(LessEqualOp, OrNaN(a, b, Truth(a <= b)))
KORVINTH_BINARY(GreaterEqualOp, OrNaN(a, b, Truth(a >= b)))
KORVINTH_BINARY(AndOp, Pick(IsNaN(a) | (a == 0.0), a, Pick(IsNaN(b), b, Truth(b != 0.0))))
KORVINTH_BINARY(OrOp, Pick(IsNaN(a), a, Pick(a != 0.0, All(1), Pick(IsNaN(b), b, Truth(b != 0.0)))))
KORVINTH_BINARY(XorOp, OrNaN(a, b, Truth((a != 0.0) ^ (b != 0.0))))
KORVINTH_BINARY(EqvOp, OrNaN(a, b, Truth(~((a != 0.0) ^ (b != 0.0)))))
KORVINTH_BINARY(ImpOp, OrNaN(a, b, Truth((a == 0.0) | (b != 0.0))))
KORVINTH_BINARY(GuardOp, Pick(IsNaN(a), a, b))

template <bool kUniform>
struct Source
{
    explicit Source(const double* p) : from(p), all(All(*p)) {}
    Vec At(Index i) const { return kUniform ? all : Load(from + i); }
    const double* from;
    Vec all;
};

template <class Op, bool kA, bool kB>
void RunBinary(double* out, const double* a, const double* b, const double*, Index n,
               const KernelExtra&)
{
    const Source<kA> left(a);
    const Source<kB> right(b);
    KORVINTH_FOR_EACH_VECTOR(i, n) Store(out + i, Op::Apply(left.At(i), right.At(i)));
}

// --- three operands ----------------------------------------------------------------------------

// Products and sums are rounded one after the other, as the scalar code does.
#define KORVINTH_TERNARY(name, expression)                             \
    struct name                                                        \
    {                                                                  \
        static Vec Apply(Vec a, Vec b, Vec c) { return (expression); } \
    };

KORVINTH_TERNARY(MultiplyAddOp, a* b + c)
KORVINTH_TERNARY(MultiplySubtractOp, a* b - c)
KORVINTH_TERNARY(SubtractProductOp, c - a * b)
KORVINTH_TERNARY(SelectOp, Pick(IsNaN(a), a, Pick(a != 0.0, b, c)))

template <class Op, bool kA, bool kB, bool kC>
void RunTernary(double* out, const double* a, const double* b, const double* c, Index n,
                const KernelExtra&)
{
    const Source<kA> first(a);
    const Source<kB> second(b);
    const Source<kC> third(c);
    KORVINTH_FOR_EACH_VECTOR(i, n)
    {
        Store(out + i, Op::Apply(first.At(i), second.At(i), third.At(i)));
    }
}

bool ClearErrors(const double* values, Error* errors, Index n)
{
    static_assert(static_cast<int>(Error::None) == 0 && 2 * sizeof(Error) == sizeof(double));
    Mask found{};
    Mask found_too{};
    Index i = 0;
    for (; i + 4 * kLanes <= n; i += 4 * kLanes) {
        found |= EitherNaN(Load(values + i), Load(values + i + kLanes));
        found_too |= EitherNaN(Load(values + i + 2 * kLanes), Load(values + i + 3 * kLanes));
        Store(errors + i, Vec{});
        Store(errors + i + 2 * kLanes, Vec{});
    }
    bool any = AnyBits(found | found_too);
    for (; i < n; ++i) {
        any = any || values[i] != values[i];
        errors[i] = Error::None;
    }
    return any;
}

#define KORVINTH_BINARY_ROW(Op)                                                             \
    {                                                                                       \
        RunBinary<Op, false, false>, RunBinary<Op, true, false>, RunBinary<Op, false, true> \
    }
#define KORVINTH_TERNARY_ROW(Op)                                                   \
    {                                                                              \
        RunTernary<Op, false, false, false>, RunTernary<Op, true, false, false>,   \
            RunTernary<Op, false, true, false>, RunTernary<Op, true, true, false>, \
            RunTernary<Op, false, false, true>, RunTernary<Op, true, false, true>, \
            RunTernary<Op, false, true, true>                                      \
    }

}  // namespace

// The rows stand in the order of UnaryKernel and Op.
extern const KernelTable KORVINTH_KERNEL_TABLE;
const KernelTable KORVINTH_KERNEL_TABLE = {
    kLevelName,
    {RunLanes,
     RunUnary<NegateOp>,
     RunUnary<NotOp>,
     RunUnary<AbsOp>,
     RunUnary<SqrtOp>,
     RunUnary<SinOp>,
     RunUnary<CosOp>,
     RunUnary<TanOp>,
     RunQuadrant<SinQuadrantOf<90>>,
     RunQuadrant<CosQuadrantOf<90>>,
     RunQuadrant<TanQuadrantOf<90>>,
     RunQuadrant<SinQuadrantOf<100>>,
     RunQuadrant<CosQuadrantOf<100>>,
     RunQuadrant<TanQuadrantOf<100>>,
     RunUnary<AsinOp>,
     RunUnary<AcosOp>,
     RunUnary<AtanOp>,
     RunUnary<SinhOp>,
     RunUnary<CoshOp>,
     RunUnary<TanhOp>,
     RunUnary<AsinhOp>,
     RunUnary<AcoshOp>,
     RunUnary<AtanhOp>,
     RunUnary<ExpOp>,
     RunUnary<Exp2Op>,
     RunUnary<LogOp>,
     RunUnary<Log2Op>,
     RunUnary<Log10Op>,
     RunUnary<CeilOp>,
     RunUnary<FloorOp>,
     RunUnary<TruncateOp>,
     RunUnary<RoundOp>,
     RunUnary<SignOp>,
     RunUnary<CbrtOp>},
    RunFactorial,
    RunPowerInt,
    {KORVINTH_BINARY_ROW(AddOp),       KORVINTH_BINARY_ROW(SubtractOp),
     KORVINTH_BINARY_ROW(MultiplyOp),  KORVINTH_BINARY_ROW(DivideOp),
     KORVINTH_BINARY_ROW(IntDivideOp), KORVINTH_BINARY_ROW(PowerOp),
     KORVINTH_BINARY_ROW(MinOp),       KORVINTH_BINARY_ROW(MaxOp),
     KORVINTH_BINARY_ROW(EqualOp),     KORVINTH_BINARY_ROW(NotEqualOp),
     KORVINTH_BINARY_ROW(LessOp),      KORVINTH_BINARY_ROW(GreaterOp),
     KORVINTH_BINARY_ROW(LessEqualOp), KORVINTH_BINARY_ROW(GreaterEqualOp),
     KORVINTH_BINARY_ROW(AndOp),       KORVINTH_BINARY_ROW(OrOp),
     KORVINTH_BINARY_ROW(XorOp),       KORVINTH_BINARY_ROW(EqvOp),
     KORVINTH_BINARY_ROW(ImpOp),       KORVINTH_BINARY_ROW(GuardOp)},
    {KORVINTH_TERNARY_ROW(MultiplyAddOp), KORVINTH_TERNARY_ROW(MultiplySubtractOp),
     KORVINTH_TERNARY_ROW(SubtractProductOp), KORVINTH_TERNARY_ROW(SelectOp)},
    ClearErrors,
};

}  // namespace korvinth::term
