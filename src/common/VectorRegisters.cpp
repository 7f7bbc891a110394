#include "common/VectorRegisters.h"

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
#include <immintrin.h>

namespace {

__attribute__((target("avx"))) void clearUpperHalves()
{
    _mm256_zeroupper();
}

} // namespace

void graph::clearWideRegisters()
{
    if (__builtin_cpu_supports("avx"))
        clearUpperHalves();
}
#else
void graph::clearWideRegisters() {}
#endif
