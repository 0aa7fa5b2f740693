// The yardstick: the terms as C++ loops, -O2, one sample at a time.
#include <cmath>

#include "bench/native_terms.h"

namespace korvinth::bench {

namespace {
using std::fabs;

#define KORVINTH_LOOP(number, text, expression)                                                \
    void Term##number(const double* in, double* out, std::size_t n, [[maybe_unused]] double a, \
                      [[maybe_unused]] double b)                                               \
    {                                                                                          \
        for (std::size_t i = 0; i < n; ++i) {                                                  \
            const double x = in[i];                                                            \
            out[i] = (expression);                                                             \
        }                                                                                      \
    }
KORVINTH_BENCH_TERMS(KORVINTH_LOOP)
}  // namespace

#define KORVINTH_NAME(number, text, expression) Term##number,
extern const NativeLoop kNativeScalar[];
const NativeLoop kNativeScalar[] = {KORVINTH_BENCH_TERMS(KORVINTH_NAME)};

}  // namespace korvinth::bench
