// The terms of the evaluation benchmark: as text for the parser and as C++ for the yardsticks.
#pragma once

#include <cstddef>

// TERM(number, text, expression in x, a and b)
#define KORVINTH_BENCH_TERMS(TERM)                                                    \
    TERM(1, "x^2+a", x* x + a)                                                        \
    TERM(2, "a*sin(b*x)+1", a* sin(b* x) + 1)                                         \
    TERM(3, "sin(x)/x", sin(x) / x)                                                   \
    TERM(4, "1/(x-1)+a", 1 / (x - 1) + a)                                             \
    TERM(5, "sqrt(x^2-1)", sqrt(x* x - 1))                                            \
    TERM(6, "exp(-x^2/2)*cos(5*x)", exp(-x* x / 2) * cos(5 * x))                      \
    TERM(7, "x^3-3*x+1", x* x* x - 3 * x + 1)                                         \
    TERM(8, "iif(x>0,x*ln(x),-x)", x > 0 ? x * log(x) : -x)                           \
    TERM(9, "abs(sin(x))+abs(cos(x))", fabs(sin(x)) + fabs(cos(x)))                   \
    TERM(10, "(sin(x+0.01)-2*sin(x)+sin(x-0.01))/0.01^2",                             \
         (sin(x + 0.01) - 2 * sin(x) + sin(x - 0.01)) / (0.01 * 0.01))                \
    TERM(11, "min(x^2,max(2-x,0.5))",                                                 \
         (x * x < (2 - x > 0.5 ? 2 - x : 0.5) ? x * x : (2 - x > 0.5 ? 2 - x : 0.5))) \
    TERM(12, "tan(x)*atan(x)+sinh(x/4)-ln(x^2+2)/ln(2)",                              \
         tan(x) * atan(x) + sinh(x / 4) - log(x * x + 2) / log(2.0))                  \
    TERM(13, "(x-1)*(x+2)*(x-3)/(x^2+1)", (x - 1) * (x + 2) * (x - 3) / (x * x + 1))  \
    TERM(14, "a*exp(-b*x)", a* exp(-b* x))

namespace korvinth::bench {

// Evaluates one term of the table at n values of x.
using NativeLoop = void (*)(const double* in, double* out, std::size_t n, double a, double b);

extern const NativeLoop kNativeScalar[];
extern const NativeLoop kNativeVector[];

}  // namespace korvinth::bench
