#include "plots/CodeColors.h"

#include <algorithm>
#include <cstddef>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace graph {

namespace {

void writeEach(const unsigned char *codes, int distance, int count, const unsigned int *palette,
               unsigned int *out)
{
    for (int first = 0; first < count; first += codeBlock, codes += distance) {
        const int end = std::min(codeBlock, count - first);
        for (int i = 0; i < end; ++i)
            out[first + i] = palette[codes[i]];
    }
}

#if defined(__x86_64__)

constexpr int registerColors = 8;

// A register is the table of eight colours, and looks up eight codes at once.
__attribute__((target("avx2"))) void writeBlocks(const unsigned char *codes, int distance, int blocks,
                                                 const unsigned int *palette, unsigned int *out)
{
    const __m256i table = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(palette));
    for (int i = 0; i < blocks; ++i, codes += distance, out += codeBlock) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i *>(codes));
        const __m256i low = _mm256_cvtepu8_epi32(block);
        const __m256i high = _mm256_cvtepu8_epi32(_mm_srli_si128(block, 8));
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(out), _mm256_permutevar8x32_epi32(table, low));
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(out + 8), _mm256_permutevar8x32_epi32(table, high));
    }
}

#endif

} // namespace

void writeColors(const unsigned char *codes, int distance, int count, const std::vector<unsigned int> &colors,
                 unsigned int *out)
{
#if defined(__x86_64__)
    if (colors.size() <= registerColors && __builtin_cpu_supports("avx2")) {
        unsigned int palette[registerColors] = {};
        std::copy(colors.begin(), colors.end(), palette);
        const int blocks = count / codeBlock;
        writeBlocks(codes, distance, blocks, palette, out);
        const int done = blocks * codeBlock;
        codes += std::ptrdiff_t(blocks) * distance;
        out += done;
        count -= done;
    }
#endif
    writeEach(codes, distance, count, colors.data(), out);
}

} // namespace graph
