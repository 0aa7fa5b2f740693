#include "term/builtins.h"

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <unordered_map>

namespace korvinth::term {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Degrees and grads: x = n * quarter + r with |r| <= quarter / 2, exact for every finite x, so that
// sin(180) and cos(90) are 0.
struct Reduced
{
    int quadrant;  // n mod 4
    double rest;   // r
};

template <int kQuarter>
Reduced Reduce(double x)
{
    if (std::fabs(x) < 0x1p50) {
        const double n = std::nearbyint(x / kQuarter);
        return {static_cast<int>(n - 4 * std::floor(n / 4)), x - n * kQuarter};
    }
    int n = 0;
    const double rest = std::remquo(x, kQuarter, &n);
    return {n & 3, rest};
}

template <int kQuarter>
double SinReduced(double x)
{
    constexpr double kToRadians = std::numbers::pi / (2 * kQuarter);
    // Half a right angle's third is the one angle in degrees with a plain sine.
    if (kQuarter == 90 && std::fabs(x) == 30) return std::copysign(0.5, x);
    return std::sin(x * kToRadians);
}

template <int kQuarter>
double SinOfQuadrant(int quadrant, double rest)
{
    const double angle = (quadrant & 1) != 0 ? kQuarter - std::fabs(rest) : rest;
    const double value = SinReduced<kQuarter>(angle);
    return ((quadrant & 2) != 0 ? -value : value) + 0.0;
}

template <int kQuarter>
double Sin(double x)
{
    if (!std::isfinite(x)) return kNaN;
    const Reduced r = Reduce<kQuarter>(x);
    return SinOfQuadrant<kQuarter>(r.quadrant, r.rest);
}

template <int kQuarter>
double Cos(double x)
{
    if (!std::isfinite(x)) return kNaN;
    const Reduced r = Reduce<kQuarter>(x);
    return SinOfQuadrant<kQuarter>((r.quadrant + 1) & 3, r.rest);
}

template <int kQuarter>
double Tan(double x)
{
    if (!std::isfinite(x)) return kNaN;
    constexpr double kToRadians = std::numbers::pi / (2 * kQuarter);
    const Reduced r = Reduce<kQuarter>(x);
    const double value = 2 * std::fabs(r.rest) == kQuarter ? std::copysign(1.0, r.rest)
                                                           : std::tan(r.rest * kToRadians);
    if ((r.quadrant & 1) == 0) return value + 0.0;
    return value == 0 ? kNaN : -1 / value;
}

double SinRad(double x) { return std::sin(x); }
double CosRad(double x) { return std::cos(x); }
double TanRad(double x) { return std::tan(x); }

double InverseOrNaN(double x) { return x == 0 ? kNaN : 1 / x; }

template <ScalarFunction kFunction>
double InverseOf(double x)
{
    return InverseOrNaN(kFunction(x));
}
template <ScalarFunction kSin, ScalarFunction kCos>
double CotOf(double x)
{
    const double sine = kSin(x);
    return sine == 0 ? kNaN : kCos(x) / sine;
}

double Abs(double x) { return std::fabs(x); }
double Sqrt(double x) { return x < 0 ? kNaN : std::sqrt(x); }
double Asin(double x) { return std::fabs(x) > 1 ? kNaN : std::asin(x); }
double Acos(double x) { return std::fabs(x) > 1 ? kNaN : std::acos(x); }
double Atan(double x) { return std::atan(x); }
double Sinh(double x) { return std::sinh(x); }
double Cosh(double x) { return std::cosh(x); }
double Tanh(double x) { return std::tanh(x); }
double Coth(double x) { return InverseOrNaN(std::tanh(x)); }
double Sech(double x) { return 1 / std::cosh(x); }
double Csch(double x) { return InverseOrNaN(std::sinh(x)); }
double Asinh(double x) { return std::asinh(x); }
double Acosh(double x) { return x < 1 ? kNaN : std::acosh(x); }
double Atanh(double x) { return std::fabs(x) >= 1 ? kNaN : std::atanh(x); }
double Acoth(double x) { return std::fabs(x) <= 1 ? kNaN : std::atanh(1 / x); }
double Asech(double x) { return x <= 0 || x > 1 ? kNaN : std::acosh(1 / x); }
double Acsch(double x) { return x == 0 ? kNaN : std::asinh(1 / x); }
double Exp(double x) { return std::exp(x); }
double Exp2(double x) { return std::exp2(x); }
double Log(double x) { return x <= 0 ? kNaN : std::log(x); }
double Log2(double x) { return x <= 0 ? kNaN : std::log2(x); }
double Log10(double x) { return x <= 0 ? kNaN : std::log10(x); }
double Ceil(double x) { return std::ceil(x); }
double Floor(double x) { return std::floor(x); }
double Truncate(double x) { return std::trunc(x); }
double Round(double x) { return std::nearbyint(x); }  // halves to even
double Sign(double x) { return x > 0 ? 1 : x < 0 ? -1 : x; }
double Cbrt(double x) { return std::cbrt(x); }

constexpr Builtin Plain(std::string_view name, ScalarFunction scalar, UnaryKernel kernel,
                        Error error = Error::None)
{
    return {name, Angle::None, error, {scalar, scalar, scalar}, {kernel, kernel, kernel}};
}
constexpr Builtin Inverse(std::string_view name, ScalarFunction scalar, UnaryKernel kernel,
                          Error error = Error::None)
{
    return {name, Angle::Result, error, {scalar, scalar, scalar}, {kernel, kernel, kernel}};
}
constexpr Builtin Lanes(std::string_view name, ScalarFunction rad, ScalarFunction deg,
                        ScalarFunction grad, Error error)
{
    return {name, Angle::Argument, error, {rad, deg, grad}, {}};
}

using K = UnaryKernel;

// Domain error of each function; where it is None every NaN is Error::InvalidTerm.
constexpr auto kBuiltins = std::to_array<Builtin>({
    {"sin",
     Angle::Argument,
     Error::None,
     {SinRad, Sin<90>, Sin<100>},
     {K::Sin, K::SinDegrees, K::SinGrads}},
    {"cos",
     Angle::Argument,
     Error::None,
     {CosRad, Cos<90>, Cos<100>},
     {K::Cos, K::CosDegrees, K::CosGrads}},
    {"tan",
     Angle::Argument,
     Error::DivisionByZero,
     {TanRad, Tan<90>, Tan<100>},
     {K::Tan, K::TanDegrees, K::TanGrads}},
    Lanes("sec", InverseOf<CosRad>, InverseOf<Cos<90>>, InverseOf<Cos<100>>, Error::InvalidSecant),
    Lanes("csc", InverseOf<SinRad>, InverseOf<Sin<90>>, InverseOf<Sin<100>>,
          Error::InvalidCosecant),
    Lanes("cot", CotOf<SinRad, CosRad>, CotOf<Sin<90>, Cos<90>>, CotOf<Sin<100>, Cos<100>>,
          Error::InvalidCotangent),
    Inverse("asin", Asin, K::Asin, Error::InvalidArcsine),
    Inverse("acos", Acos, K::Acos, Error::InvalidArccosine),
    Inverse("atan", Atan, K::Atan),
    Plain("sinh", Sinh, K::Sinh),
    Plain("cosh", Cosh, K::Cosh),
    Plain("tanh", Tanh, K::Tanh),
    Plain("coth", Coth, K::Lanes, Error::InvalidCoth),
    Plain("sech", Sech, K::Lanes),
    Plain("csch", Csch, K::Lanes, Error::InvalidCsch),
    Plain("asinh", Asinh, K::Asinh),
    Plain("acosh", Acosh, K::Acosh, Error::InvalidAcosh),
    Plain("atanh", Atanh, K::Atanh, Error::InvalidAtanh),
    Plain("acoth", Acoth, K::Lanes, Error::InvalidAcoth),
    Plain("asech", Asech, K::Lanes, Error::InvalidAsech),
    Plain("acsch", Acsch, K::Lanes, Error::InvalidAcsch),
    Plain("abs", Abs, K::Abs),
    Plain("sqrt", Sqrt, K::Sqrt, Error::InvalidRoot),
    Plain("cbrt", Cbrt, K::Cbrt),
    Plain("exp", Exp, K::Exp),
    Plain("exp2", Exp2, K::Exp2),
    Plain("ln", Log, K::Log, Error::InvalidLog),
    Plain("log", Log, K::Log, Error::InvalidLog),
    Plain("log2", Log2, K::Log2, Error::InvalidLog2),
    Plain("log10", Log10, K::Log10, Error::InvalidLog10),
    Plain("lg", Log10, K::Log10, Error::InvalidLog10),
    Plain("ceil", Ceil, K::Ceil),
    Plain("floor", Floor, K::Floor),
    Plain("int", Truncate, K::Truncate),
    Plain("round", Round, K::Round),
    Plain("sgn", Sign, K::Sign),
});

}  // namespace

std::span<const Builtin> Builtins() { return kBuiltins; }

const Builtin* FindBuiltin(std::string_view name)
{
    static const auto kIndex = [] {
        std::unordered_map<std::string_view, const Builtin*> index;
        for (const Builtin& builtin : kBuiltins) index.emplace(builtin.name, &builtin);
        return index;
    }();
    const auto found = kIndex.find(name);
    return found == kIndex.end() ? nullptr : found->second;
}

bool IsBuiltinFunction(std::string_view name)
{
    return name == "iif" || name == "min" || name == "max" || FindBuiltin(name) != nullptr;
}

double QuarterTurn(TrigMode mode)
{
    switch (mode) {
        case TrigMode::Degrees: return 90;
        case TrigMode::Grads: return 100;
        default: return std::numbers::pi / 2;
    }
}

double FromRadians(TrigMode mode)
{
    return mode == TrigMode::Radians ? 1 : 2 * QuarterTurn(mode) / std::numbers::pi;
}

}  // namespace korvinth::term
