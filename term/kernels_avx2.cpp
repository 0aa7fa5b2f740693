// Kernels for processors with AVX2: four numbers at a time, the C library's vector functions.
#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace korvinth::term {
namespace {

constexpr std::size_t kVectorBytes = 32;
constexpr const char* kLevelName = "avx2";
typedef double Vec __attribute__((vector_size(kVectorBytes)));
typedef std::int64_t Mask __attribute__((vector_size(kVectorBytes)));
inline bool AnyBits(Mask mask) { return _mm256_movemask_pd((Vec)mask) != 0; }

inline Mask EitherNaN(Vec a, Vec b) { return (Mask)_mm256_cmp_pd(a, b, _CMP_UNORD_Q); }

namespace math {
inline Vec Sqrt(Vec x) { return _mm256_sqrt_pd(x); }
}  // namespace math

}  // namespace
}  // namespace korvinth::term

#define KORVINTH_LIBMVEC(name) _ZGVdN4v_##name
#define KORVINTH_LIBMVEC_POW _ZGVdN4vv_pow
#define KORVINTH_KERNEL_TABLE kAvx2Kernels
// The mathematics first: the bodies call it.
#include "term/kernels_libmvec.h"

#include "term/kernels_impl.h"
