// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/picture/RowArithmetic.h"
#include "media/picture/RowKernelsPortable.h"

#if defined(__x86_64__)

#include <immintrin.h>

#define QUELTO_AVX2 __attribute__((target("avx2")))

namespace quelto {

namespace {

using namespace arithmetic;

constexpr int PixelsPerIteration = 32;
// Screen images are not in the cache, and the hardware prefetcher stops at page boundaries. This prefetch distance
// measured best.
constexpr int PrefetchBytes = 2048;

QUELTO_AVX2 inline __m256i load(const void* from)
{
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

QUELTO_AVX2 inline void store(void* to, __m256i value)
{
    _mm256_storeu_si256(static_cast<__m256i*>(to), value);
}

/// The channel weights as four signed bytes, repeated for each pixel.
QUELTO_AVX2 inline __m256i perPixel(int blue, int green, int red)
{
    return _mm256_set1_epi32((blue & 0xff) | (green & 0xff) << 8 | (red & 0xff) << 16);
}

/// Restores the element order after instructions that work on each 128-bit lane separately: 0 4 1 5 2 6 3 7.
QUELTO_AVX2 inline __m256i joinLanes(__m256i interleaved)
{
    return _mm256_permutevar8x32_epi32(interleaved, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}

/// The pixels of one row in one loop iteration.
struct Pixels {
    __m256i first;
    __m256i second;
    __m256i third;
    __m256i fourth;
};

QUELTO_AVX2 inline Pixels loadPixels(const std::uint8_t* from)
{
    return {load(from), load(from + 32), load(from + 64), load(from + 96)};
}

/// Prefetches memory for a later iteration. Has no effect past the end of an image.
QUELTO_AVX2 inline void prefetch(const std::uint8_t* from)
{
    _mm_prefetch(from + PrefetchBytes, _MM_HINT_T0);
    _mm_prefetch(from + PrefetchBytes + 64, _MM_HINT_T0);
}

QUELTO_AVX2 inline __m256i lumaSums(__m256i left, __m256i right)
{
    const auto weights = perPixel(LumaBlue, LumaGreen, LumaRed);
    const auto toSigned = _mm256_set1_epi8(-128);
    const auto sums = _mm256_hadd_epi16(_mm256_maddubs_epi16(weights, _mm256_xor_si256(left, toSigned)),
                                        _mm256_maddubs_epi16(weights, _mm256_xor_si256(right, toSigned)));
    const auto biased = _mm256_add_epi16(sums, _mm256_set1_epi16(static_cast<short>(LumaBias)));
    return _mm256_srli_epi16(biased, 8);
}

QUELTO_AVX2 inline __m256i luma(const Pixels& pixels)
{
    const auto left = lumaSums(pixels.first, pixels.second);
    const auto right = lumaSums(pixels.third, pixels.fourth);
    return joinLanes(_mm256_packus_epi16(left, right));
}

/// The means of adjacent pixels, in the order 0 1 4 5 | 2 3 6 7.
QUELTO_AVX2 inline __m256i halved(__m256i left, __m256i right)
{
    const auto leftValues = _mm256_castsi256_ps(left);
    const auto rightValues = _mm256_castsi256_ps(right);
    const auto even = _mm256_castps_si256(_mm256_shuffle_ps(leftValues, rightValues, 0x88));
    const auto odd = _mm256_castps_si256(_mm256_shuffle_ps(leftValues, rightValues, 0xdd));
    return _mm256_avg_epu8(even, odd);
}

QUELTO_AVX2 inline __m256i chromaOf16(__m256i left, __m256i right, __m256i weights)
{
    const auto sum = _mm256_hadd_epi16(_mm256_maddubs_epi16(left, weights), _mm256_maddubs_epi16(right, weights));
    const auto rounded = _mm256_add_epi16(sum, _mm256_set1_epi16(ChromaRounding));
    return _mm256_add_epi16(_mm256_mulhi_epi16(rounded, _mm256_set1_epi16(ChromaFactor)),
                            _mm256_set1_epi16(ChromaZero));
}

QUELTO_AVX2 void convertRows(const PixelRows& pixels, const Nv12Rows& planes, int width)
{
    const auto cbWeights = perPixel(CbBlue, CbGreen, CbRed);
    const auto crWeights = perPixel(CrBlue, CrGreen, CrRed);
    const auto* top = pixels.top;
    const auto* bottom = pixels.bottom;
    const auto [lumaTop, lumaBottom, chroma] = planes;
    int column = 0;
    for (; column + PixelsPerIteration <= width; column += PixelsPerIteration) {
        prefetch(top + column * 4);
        prefetch(bottom + column * 4);
        const auto upper = loadPixels(top + column * 4);
        const auto lower = loadPixels(bottom + column * 4);
        store(lumaTop + column, luma(upper));
        store(lumaBottom + column, luma(lower));
        const auto left =
            halved(_mm256_avg_epu8(upper.first, lower.first), _mm256_avg_epu8(upper.second, lower.second));
        const auto right =
            halved(_mm256_avg_epu8(upper.third, lower.third), _mm256_avg_epu8(upper.fourth, lower.fourth));
        const auto cb = chromaOf16(left, right, cbWeights);
        const auto cr = chromaOf16(left, right, crWeights);
        store(chroma + column, joinLanes(_mm256_or_si256(cb, _mm256_slli_epi16(cr, 8))));
    }
    portable::convertRows(pixels, planes, column, width);
}

/// The sums of adjacent pixels per channel.
QUELTO_AVX2 inline __m256i pairSums(__m256i pixels)
{
    const auto interleave = _mm256_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15, //
                                             0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15);
    return _mm256_maddubs_epi16(_mm256_shuffle_epi8(pixels, interleave), _mm256_set1_epi8(1));
}

QUELTO_AVX2 inline __m256i means(const std::uint8_t* top, const std::uint8_t* bottom)
{
    const auto sum = _mm256_add_epi16(pairSums(load(top)), pairSums(load(bottom)));
    return _mm256_srli_epi16(_mm256_add_epi16(sum, _mm256_set1_epi16(2)), 2);
}

QUELTO_AVX2 void halveRows(const PixelRows& pixels, std::uint8_t* halved, int width)
{
    const auto* top = pixels.top;
    const auto* bottom = pixels.bottom;
    int column = 0;
    for (; column + 8 <= width; column += 8, top += 64, bottom += 64) {
        _mm_prefetch(top + PrefetchBytes, _MM_HINT_T0);
        _mm_prefetch(bottom + PrefetchBytes, _MM_HINT_T0);
        const auto packed = _mm256_packus_epi16(means(top, bottom), means(top + 32, bottom + 32));
        store(halved + column * 4, _mm256_permute4x64_epi64(packed, 0xd8));
    }
    portable::halveRows(pixels, halved, column, width);
}

QUELTO_AVX2 void blendRows(std::span<const std::uint8_t* const> rows, const std::uint16_t* weights,
                           std::uint16_t* blended, int bytes)
{
    const auto zero = _mm256_setzero_si256();
    int index = 0;
    for (; index + 32 <= bytes; index += 32) {
        auto low = zero;
        auto high = zero;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const auto weight = _mm256_set1_epi16(static_cast<short>(weights[row]));
            const auto values = load(rows[row] + index);
            low = _mm256_add_epi16(low, _mm256_mulhi_epu16(_mm256_unpacklo_epi8(zero, values), weight));
            high = _mm256_add_epi16(high, _mm256_mulhi_epu16(_mm256_unpackhi_epi8(zero, values), weight));
        }
        low = _mm256_srli_epi16(low, 1);
        high = _mm256_srli_epi16(high, 1);
        store(blended + index, _mm256_permute2x128_si256(low, high, 0x20));
        store(blended + index + 16, _mm256_permute2x128_si256(low, high, 0x31));
    }
    portable::blendRows(rows, weights, blended, index, bytes);
}

/// Two output pixels as eight sums.
QUELTO_AVX2 inline __m256i resampled(const std::uint16_t* blended, const ColumnPlan& plan, int column)
{
    const auto interleave = _mm256_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15, //
                                             0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15);
    const auto* first = plan.first.data() + column;
    const auto* left = blended + static_cast<std::ptrdiff_t>(first[0]) * 4;
    const auto* right = blended + static_cast<std::ptrdiff_t>(first[1]) * 4;
    const auto* weights = plan.weights.data() + static_cast<std::ptrdiff_t>(column) * plan.pairs;
    auto sum = _mm256_set1_epi32(1 << (ResampleShift - 1));
    for (int pair = 0; pair < plan.pairs; ++pair) {
        const auto values = _mm256_inserti128_si256(
            _mm256_castsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(static_cast<const void*>(left)))),
            _mm_loadu_si128(static_cast<const __m128i*>(static_cast<const void*>(right))), 1);
        sum = _mm256_add_epi32(sum, _mm256_madd_epi16(_mm256_shuffle_epi8(values, interleave), load(weights)));
        left += 8;
        right += 8;
        weights += 2;
    }
    return _mm256_srai_epi32(sum, ResampleShift);
}

QUELTO_AVX2 void resampleRow(const std::uint16_t* blended, const ColumnPlan& plan, std::uint8_t* pixels, int width)
{
    int column = 0;
    for (; column + 8 <= width; column += 8) {
        const auto left = _mm256_packs_epi32(resampled(blended, plan, column), resampled(blended, plan, column + 2));
        const auto right =
            _mm256_packs_epi32(resampled(blended, plan, column + 4), resampled(blended, plan, column + 6));
        store(pixels + column * 4, joinLanes(_mm256_packus_epi16(left, right)));
    }
    portable::resampleRow(blended, plan, pixels, column, width);
}

constexpr RowKernels Kernels{
    .convertRows = convertRows, .halveRows = halveRows, .blendRows = blendRows, .resampleRow = resampleRow};

} // namespace

const RowKernels* avx2Kernels() noexcept
{
    return __builtin_cpu_supports("avx2") ? &Kernels : nullptr;
}

} // namespace quelto

#else

const quelto::RowKernels* quelto::avx2Kernels() noexcept
{
    return nullptr;
}

#endif
