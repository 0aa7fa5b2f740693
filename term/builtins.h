// The table of built-in functions: what the compiler, both evaluators and the help know of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "term/error.h"
#include "term/math_parser.h"

namespace korvinth::term {

// Whether arguments or results are angles, and so depend on the angle mode.
enum class Angle : std::uint8_t { None, Argument, Result };

// Block kernels of functions with one argument; Lanes calls the scalar function sample by sample.
enum class UnaryKernel : std::uint8_t {
    Lanes,
    Negate,
    Not,
    Abs,
    Sqrt,
    Sin,
    Cos,
    Tan,
    SinDegrees,
    CosDegrees,
    TanDegrees,
    SinGrads,
    CosGrads,
    TanGrads,
    Asin,
    Acos,
    Atan,
    Sinh,
    Cosh,
    Tanh,
    Asinh,
    Acosh,
    Atanh,
    Exp,
    Exp2,
    Log,
    Log2,
    Log10,
    Ceil,
    Floor,
    Truncate,
    Round,
    Sign,
    Cbrt,
    Count,
};

using ScalarFunction = double (*)(double);

// A function with one argument. `scalar` and `kernel` have an entry for each angle mode when the
// argument is an angle, else the first one serves all. Outside its domain a scalar function gives
// NaN, which raises `error`.
struct Builtin
{
    std::string_view name;
    Angle angle;
    Error error;
    ScalarFunction scalar[3];
    UnaryKernel kernel[3];

    ScalarFunction Scalar(TrigMode mode) const
    {
        return scalar[angle == Angle::Argument ? static_cast<int>(mode) - 1 : 0];
    }
    UnaryKernel Kernel(TrigMode mode) const
    {
        return kernel[angle == Angle::Argument ? static_cast<int>(mode) - 1 : 0];
    }
};

std::span<const Builtin> Builtins();
// By name in lower case; nullptr when there is none with one argument.
const Builtin* FindBuiltin(std::string_view name);
// Also true for iif, min and max.
bool IsBuiltinFunction(std::string_view name);

// Units of a quarter turn: pi/2, 90 or 100.
double QuarterTurn(TrigMode mode);

// Factor from radians to the unit of the mode.
double FromRadians(TrigMode mode);

}  // namespace korvinth::term
