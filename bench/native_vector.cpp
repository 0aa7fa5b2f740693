// The second yardstick: the same loops, vectorised by the compiler for AVX2 with fused operations
// and the C library's vector functions.
#include "bench/native_terms.h"

extern "C" {
#define KORVINTH_VECTOR_FUNCTION __attribute__((simd("notinbranch"), const, nothrow))
KORVINTH_VECTOR_FUNCTION double sin(double);
KORVINTH_VECTOR_FUNCTION double cos(double);
KORVINTH_VECTOR_FUNCTION double tan(double);
KORVINTH_VECTOR_FUNCTION double atan(double);
KORVINTH_VECTOR_FUNCTION double sinh(double);
KORVINTH_VECTOR_FUNCTION double exp(double);
KORVINTH_VECTOR_FUNCTION double log(double);
double sqrt(double);
double fabs(double);
}

namespace korvinth::bench {

namespace {
#define KORVINTH_LOOP(number, text, expression)                                                \
    void Term##number(const double* in, double* out, std::size_t n, [[maybe_unused]] double a, \
                      [[maybe_unused]] double b)                                               \
    {                                                                                          \
        _Pragma("omp simd") for (std::size_t i = 0; i < n; ++i)                                \
        {                                                                                      \
            const double x = in[i];                                                            \
            out[i] = (expression);                                                             \
        }                                                                                      \
    }
KORVINTH_BENCH_TERMS(KORVINTH_LOOP)
}  // namespace

#define KORVINTH_NAME(number, text, expression) Term##number,
extern const NativeLoop kNativeVector[];
const NativeLoop kNativeVector[] = {KORVINTH_BENCH_TERMS(KORVINTH_NAME)};

}  // namespace korvinth::bench
