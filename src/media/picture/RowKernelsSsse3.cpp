// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/picture/RowArithmetic.h"
#include "media/picture/RowKernelsPortable.h"

#if defined(__x86_64__)

#include <tmmintrin.h>

#define QUELTO_SSSE3 __attribute__((target("ssse3")))

namespace quelto {

namespace {

using namespace arithmetic;

constexpr int PixelsPerIteration = 16;

QUELTO_SSSE3 inline __m128i load(const void* from)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

QUELTO_SSSE3 inline void store(void* to, __m128i value)
{
    _mm_storeu_si128(static_cast<__m128i*>(to), value);
}

/// The channel weights as four signed bytes, repeated for each pixel.
QUELTO_SSSE3 inline __m128i perPixel(int blue, int green, int red)
{
    return _mm_set1_epi32((blue & 0xff) | (green & 0xff) << 8 | (red & 0xff) << 16);
}

/// The pixels of one row in one loop iteration.
struct Pixels {
    __m128i first;
    __m128i second;
    __m128i third;
    __m128i fourth;
};

QUELTO_SSSE3 inline Pixels loadPixels(const std::uint8_t* from)
{
    return {load(from), load(from + 16), load(from + 32), load(from + 48)};
}

QUELTO_SSSE3 inline __m128i lumaSums(__m128i left, __m128i right)
{
    const auto weights = perPixel(LumaBlue, LumaGreen, LumaRed);
    const auto toSigned = _mm_set1_epi8(-128);
    const auto sums = _mm_hadd_epi16(_mm_maddubs_epi16(weights, _mm_xor_si128(left, toSigned)),
                                     _mm_maddubs_epi16(weights, _mm_xor_si128(right, toSigned)));
    const auto biased = _mm_add_epi16(sums, _mm_set1_epi16(static_cast<short>(LumaBias)));
    return _mm_srli_epi16(biased, 8);
}

QUELTO_SSSE3 inline __m128i luma(const Pixels& pixels)
{
    const auto left = lumaSums(pixels.first, pixels.second);
    const auto right = lumaSums(pixels.third, pixels.fourth);
    return _mm_packus_epi16(left, right);
}

/// The means of adjacent pixels.
QUELTO_SSSE3 inline __m128i halved(__m128i left, __m128i right)
{
    const auto leftValues = _mm_castsi128_ps(left);
    const auto rightValues = _mm_castsi128_ps(right);
    const auto even = _mm_castps_si128(_mm_shuffle_ps(leftValues, rightValues, 0x88));
    const auto odd = _mm_castps_si128(_mm_shuffle_ps(leftValues, rightValues, 0xdd));
    return _mm_avg_epu8(even, odd);
}

QUELTO_SSSE3 inline __m128i chromaOf8(__m128i left, __m128i right, __m128i weights)
{
    const auto sum = _mm_hadd_epi16(_mm_maddubs_epi16(left, weights), _mm_maddubs_epi16(right, weights));
    const auto rounded = _mm_add_epi16(sum, _mm_set1_epi16(ChromaRounding));
    return _mm_add_epi16(_mm_mulhi_epi16(rounded, _mm_set1_epi16(ChromaFactor)), _mm_set1_epi16(ChromaZero));
}

QUELTO_SSSE3 void convertRows(const PixelRows& pixels, const Nv12Rows& planes, int width)
{
    const auto cbWeights = perPixel(CbBlue, CbGreen, CbRed);
    const auto crWeights = perPixel(CrBlue, CrGreen, CrRed);
    const auto* top = pixels.top;
    const auto* bottom = pixels.bottom;
    const auto [lumaTop, lumaBottom, chroma] = planes;
    int column = 0;
    for (; column + PixelsPerIteration <= width; column += PixelsPerIteration) {
        const auto upper = loadPixels(top + column * 4);
        const auto lower = loadPixels(bottom + column * 4);
        store(lumaTop + column, luma(upper));
        store(lumaBottom + column, luma(lower));
        const auto left = halved(_mm_avg_epu8(upper.first, lower.first), _mm_avg_epu8(upper.second, lower.second));
        const auto right = halved(_mm_avg_epu8(upper.third, lower.third), _mm_avg_epu8(upper.fourth, lower.fourth));
        const auto cb = chromaOf8(left, right, cbWeights);
        const auto cr = chromaOf8(left, right, crWeights);
        store(chroma + column, _mm_or_si128(cb, _mm_slli_epi16(cr, 8)));
    }
    portable::convertRows(pixels, planes, column, width);
}

/// The sums of adjacent pixels per channel.
QUELTO_SSSE3 inline __m128i pairSums(__m128i pixels)
{
    const auto interleave = _mm_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15);
    return _mm_maddubs_epi16(_mm_shuffle_epi8(pixels, interleave), _mm_set1_epi8(1));
}

QUELTO_SSSE3 inline __m128i means(const std::uint8_t* top, const std::uint8_t* bottom)
{
    const auto sum = _mm_add_epi16(pairSums(load(top)), pairSums(load(bottom)));
    return _mm_srli_epi16(_mm_add_epi16(sum, _mm_set1_epi16(2)), 2);
}

QUELTO_SSSE3 void halveRows(const PixelRows& pixels, std::uint8_t* halved, int width)
{
    const auto* top = pixels.top;
    const auto* bottom = pixels.bottom;
    int column = 0;
    for (; column + 4 <= width; column += 4, top += 32, bottom += 32) {
        store(halved + column * 4, _mm_packus_epi16(means(top, bottom), means(top + 16, bottom + 16)));
    }
    portable::halveRows(pixels, halved, column, width);
}

QUELTO_SSSE3 void blendRows(std::span<const std::uint8_t* const> rows, const std::uint16_t* weights,
                            std::uint16_t* blended, int bytes)
{
    const auto zero = _mm_setzero_si128();
    int index = 0;
    for (; index + 16 <= bytes; index += 16) {
        auto low = zero;
        auto high = zero;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const auto weight = _mm_set1_epi16(static_cast<short>(weights[row]));
            const auto values = load(rows[row] + index);
            low = _mm_add_epi16(low, _mm_mulhi_epu16(_mm_unpacklo_epi8(zero, values), weight));
            high = _mm_add_epi16(high, _mm_mulhi_epu16(_mm_unpackhi_epi8(zero, values), weight));
        }
        store(blended + index, _mm_srli_epi16(low, 1));
        store(blended + index + 8, _mm_srli_epi16(high, 1));
    }
    portable::blendRows(rows, weights, blended, index, bytes);
}

/// One output pixel as four sums.
QUELTO_SSSE3 inline __m128i resampled(const std::uint16_t* blended, const ColumnPlan& plan, int column)
{
    const auto interleave = _mm_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15);
    const auto* source = blended + static_cast<std::ptrdiff_t>(plan.first[static_cast<std::size_t>(column)]) * 4;
    auto sum = _mm_set1_epi32(1 << (ResampleShift - 1));
    for (int pair = 0; pair < plan.pairs; ++pair) {
        const auto values = _mm_shuffle_epi8(load(source + pair * 8), interleave);
        sum = _mm_add_epi32(sum, _mm_madd_epi16(values, load(&plan.weightsOf(column, pair))));
    }
    return _mm_srai_epi32(sum, ResampleShift);
}

QUELTO_SSSE3 void resampleRow(const std::uint16_t* blended, const ColumnPlan& plan, std::uint8_t* pixels, int width)
{
    int column = 0;
    for (; column + 4 <= width; column += 4) {
        const auto left = _mm_packs_epi32(resampled(blended, plan, column), resampled(blended, plan, column + 1));
        const auto right = _mm_packs_epi32(resampled(blended, plan, column + 2), resampled(blended, plan, column + 3));
        store(pixels + column * 4, _mm_packus_epi16(left, right));
    }
    portable::resampleRow(blended, plan, pixels, column, width);
}

constexpr RowKernels Kernels{
    .convertRows = convertRows, .halveRows = halveRows, .blendRows = blendRows, .resampleRow = resampleRow};

} // namespace

const RowKernels* ssse3Kernels() noexcept
{
    return __builtin_cpu_supports("ssse3") ? &Kernels : nullptr;
}

} // namespace quelto

#else

const quelto::RowKernels* quelto::ssse3Kernels() noexcept
{
    return nullptr;
}

#endif
