// Kernels for every x86-64 processor: two numbers at a time, the C library's vector functions.
#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace korvinth::term {
namespace {

constexpr std::size_t kVectorBytes = 16;
constexpr const char* kLevelName = "sse2";
typedef double Vec __attribute__((vector_size(kVectorBytes)));
typedef std::int64_t Mask __attribute__((vector_size(kVectorBytes)));
inline bool AnyBits(Mask mask) { return _mm_movemask_pd((Vec)mask) != 0; }

inline Mask EitherNaN(Vec a, Vec b) { return (Mask)_mm_cmpunord_pd(a, b); }

namespace math {
inline Vec Sqrt(Vec x) { return _mm_sqrt_pd(x); }
}  // namespace math

}  // namespace
}  // namespace korvinth::term

#define KORVINTH_LIBMVEC(name) _ZGVbN2v_##name
#define KORVINTH_LIBMVEC_POW _ZGVbN2vv_pow
#define KORVINTH_KERNEL_TABLE kSse2Kernels
// The mathematics first: the bodies call it.
#include "term/kernels_libmvec.h"

#include "term/kernels_impl.h"
