#include "term/kernels.h"

#include <vector>

namespace korvinth::term {

extern const KernelTable kPlainKernels;
#ifdef KORVINTH_HAS_LIBMVEC
extern const KernelTable kAvx2Kernels;
extern const KernelTable kSse2Kernels;
#endif

std::span<const KernelTable* const> AvailableKernels()
{
    static const std::vector<const KernelTable*> kTables = [] {
        std::vector<const KernelTable*> tables;
#ifdef KORVINTH_HAS_LIBMVEC
        if (__builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0) {
            tables.push_back(&kAvx2Kernels);
        }
        tables.push_back(&kSse2Kernels);
#endif
        tables.push_back(&kPlainKernels);
        return tables;
    }();
    return kTables;
}

}  // namespace korvinth::term
