// Loops over blocks of numbers, one for each operation and kind of operands, for several
// processors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "term/builtins.h"
#include "term/graph.h"

namespace korvinth::term {

// What some kernels need besides their operands.
struct KernelExtra
{
    ScalarFunction scalar = nullptr;  // of the operation, for samples that the kernel leaves to it
    std::int64_t exponent = 0;        // PowerInt
};

// out[i] = operation(a[i], b[i], c[i]) for i below n rounded up to a multiple of kKernelStep; an
// operand that is uniform is a single number. `out` may be one of the operands. NaN out of a number
// marks a sample that has no value.
using Kernel = void (*)(double* out, const double* a, const double* b, const double* c,
                        std::size_t n, const KernelExtra& extra);

// Blocks are padded to this many numbers.
inline constexpr std::size_t kKernelStep = 16;

inline constexpr std::size_t kFirstBinary = static_cast<std::size_t>(Op::Add);
inline constexpr std::size_t kBinaryCount = static_cast<std::size_t>(Op::Guard) - kFirstBinary + 1;
inline constexpr std::size_t kFirstTernary = static_cast<std::size_t>(Op::MultiplyAdd);
inline constexpr std::size_t kTernaryCount =
    static_cast<std::size_t>(Op::Select) - kFirstTernary + 1;

struct KernelTable
{
    const char* level;  // of the processor: "avx2", "sse2", "plain"
    Kernel unary[static_cast<std::size_t>(UnaryKernel::Count)];
    Kernel factorial;
    Kernel power_int;
    // [uniform operands: 1 = a, 2 = b]; index 3 is not used, such an operation is uniform itself.
    Kernel binary[kBinaryCount][3];
    // [uniform operands: 1 = a, 2 = b, 4 = c]; index 7 is not used.
    Kernel ternary[kTernaryCount][7];
    // Sets all errors to None; whether one of the values is NaN. One pass for both: on cheap terms
    // a second one over the errors would cost as much as the term itself.
    bool (*clear_errors)(const double* values, Error* errors, std::size_t n);
};

// The tables that this processor can run, the best one first.
std::span<const KernelTable* const> AvailableKernels();

}  // namespace korvinth::term
