// The vector functions of the GNU C library (2.35 or later, x86-64) under the names of the kernels.
#pragma once

namespace korvinth::term {

extern "C" {
Vec KORVINTH_LIBMVEC(sin)(Vec);
Vec KORVINTH_LIBMVEC(cos)(Vec);
Vec KORVINTH_LIBMVEC(tan)(Vec);
Vec KORVINTH_LIBMVEC(asin)(Vec);
Vec KORVINTH_LIBMVEC(acos)(Vec);
Vec KORVINTH_LIBMVEC(atan)(Vec);
Vec KORVINTH_LIBMVEC(sinh)(Vec);
Vec KORVINTH_LIBMVEC(cosh)(Vec);
Vec KORVINTH_LIBMVEC(tanh)(Vec);
Vec KORVINTH_LIBMVEC(asinh)(Vec);
Vec KORVINTH_LIBMVEC(acosh)(Vec);
Vec KORVINTH_LIBMVEC(atanh)(Vec);
Vec KORVINTH_LIBMVEC(exp)(Vec);
Vec KORVINTH_LIBMVEC(exp2)(Vec);
Vec KORVINTH_LIBMVEC(log)(Vec);
Vec KORVINTH_LIBMVEC(log2)(Vec);
Vec KORVINTH_LIBMVEC(log10)(Vec);
Vec KORVINTH_LIBMVEC(cbrt)(Vec);
Vec KORVINTH_LIBMVEC_POW(Vec, Vec);
}

namespace {
namespace math {

inline Vec Sin(Vec x) { return KORVINTH_LIBMVEC(sin)(x); }
inline Vec Cos(Vec x) { return KORVINTH_LIBMVEC(cos)(x); }
inline Vec Tan(Vec x) { return KORVINTH_LIBMVEC(tan)(x); }
inline Vec Asin(Vec x) { return KORVINTH_LIBMVEC(asin)(x); }
inline Vec Acos(Vec x) { return KORVINTH_LIBMVEC(acos)(x); }
inline Vec Atan(Vec x) { return KORVINTH_LIBMVEC(atan)(x); }
inline Vec Sinh(Vec x) { return KORVINTH_LIBMVEC(sinh)(x); }
inline Vec Cosh(Vec x) { return KORVINTH_LIBMVEC(cosh)(x); }
inline Vec Tanh(Vec x) { return KORVINTH_LIBMVEC(tanh)(x); }
inline Vec Asinh(Vec x) { return KORVINTH_LIBMVEC(asinh)(x); }
inline Vec Acosh(Vec x) { return KORVINTH_LIBMVEC(acosh)(x); }
inline Vec Atanh(Vec x) { return KORVINTH_LIBMVEC(atanh)(x); }
inline Vec Exp(Vec x) { return KORVINTH_LIBMVEC(exp)(x); }
inline Vec Exp2(Vec x) { return KORVINTH_LIBMVEC(exp2)(x); }
inline Vec Log(Vec x) { return KORVINTH_LIBMVEC(log)(x); }
inline Vec Log2(Vec x) { return KORVINTH_LIBMVEC(log2)(x); }
inline Vec Log10(Vec x) { return KORVINTH_LIBMVEC(log10)(x); }
inline Vec Cbrt(Vec x) { return KORVINTH_LIBMVEC(cbrt)(x); }
inline Vec Pow(Vec a, Vec b) { return KORVINTH_LIBMVEC_POW(a, b); }

}  // namespace math
}  // namespace
}  // namespace korvinth::term
