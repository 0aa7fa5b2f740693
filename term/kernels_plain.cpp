// Kernels for any processor and library: the scalar mathematical functions, number by number.
#include <cstddef>
#include <cstdint>

namespace korvinth::term {
namespace {

constexpr std::size_t kVectorBytes = 16;
constexpr const char* kLevelName = "plain";
typedef double Vec __attribute__((vector_size(kVectorBytes)));
typedef std::int64_t Mask __attribute__((vector_size(kVectorBytes)));
inline bool AnyBits(Mask mask) { return (mask[0] | mask[1]) != 0; }

inline Mask EitherNaN(Vec a, Vec b) { return (a != a) | (b != b); }

namespace math {

#define KORVINTH_EACH(name, function) \
    inline Vec name(Vec x) { return Vec{function(x[0]), function(x[1])}; }

KORVINTH_EACH(Sqrt, __builtin_sqrt)
KORVINTH_EACH(Sin, __builtin_sin)
KORVINTH_EACH(Cos, __builtin_cos)
KORVINTH_EACH(Tan, __builtin_tan)
KORVINTH_EACH(Asin, __builtin_asin)
KORVINTH_EACH(Acos, __builtin_acos)
KORVINTH_EACH(Atan, __builtin_atan)
KORVINTH_EACH(Sinh, __builtin_sinh)
KORVINTH_EACH(Cosh, __builtin_cosh)
KORVINTH_EACH(Tanh, __builtin_tanh)
KORVINTH_EACH(Asinh, __builtin_asinh)
KORVINTH_EACH(Acosh, __builtin_acosh)
KORVINTH_EACH(Atanh, __builtin_atanh)
KORVINTH_EACH(Exp, __builtin_exp)
KORVINTH_EACH(Exp2, __builtin_exp2)
KORVINTH_EACH(Log, __builtin_log)
KORVINTH_EACH(Log2, __builtin_log2)
KORVINTH_EACH(Log10, __builtin_log10)
KORVINTH_EACH(Cbrt, __builtin_cbrt)
inline Vec Pow(Vec a, Vec b) { return Vec{__builtin_pow(a[0], b[0]), __builtin_pow(a[1], b[1])}; }

}  // namespace math
}  // namespace
}  // namespace korvinth::term

#define KORVINTH_KERNEL_TABLE kPlainKernels
#include "term/kernels_impl.h"
