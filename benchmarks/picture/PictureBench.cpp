// SPDX-License-Identifier: GPL-3.0-or-later
// Compares our image conversion with swscale and libyuv, from various screen sizes to 1080p.
#include "media/picture/FrameConverter.h"

#include <benchmark/benchmark.h>

extern "C" {
#include <libswscale/swscale.h>
}

#ifdef QUELTO_HAS_LIBYUV
#include <libyuv.h>
#endif

namespace quelto {
namespace {

constexpr QSize OutputSize{1920, 1080};

/// Alternates between several sources and targets, as in a recording, so that no image is still in a cache.
class Images {
public:
    explicit Images(QSize source)
        : m_size(source)
        , m_pool(OutputSize, static_cast<int>(Count))
    {
        for (std::size_t index = 0; index < Count; ++index) {
            auto& pixels = m_pixels.emplace_back(static_cast<std::size_t>(source.width() * source.height() * 4));
            std::uint32_t state = 1;
            for (auto& byte : pixels) {
                state = state * 1664525 + 1013904223;
                byte = static_cast<std::uint8_t>(state >> 24);
            }
            m_frames.push_back(m_pool.tryAcquire());
        }
    }

    RgbImage next()
    {
        m_index = (m_index + 1) % Count;
        return {.pixels = m_pixels[m_index].data(), .stride = m_size.width() * 4, .size = m_size};
    }
    const VideoFrame& frame() const { return *m_frames[m_index]; }

private:
    static constexpr std::size_t Count = 4;

    QSize m_size;
    FramePool m_pool;
    std::vector<std::vector<std::uint8_t>> m_pixels;
    std::vector<std::shared_ptr<VideoFrame>> m_frames;
    std::size_t m_index = 0;
};

QSize sourceSize(const benchmark::State& state)
{
    return {static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
}

void ours(benchmark::State& state, InstructionSet instructionSet)
{
    Images images(sourceSize(state));
    FrameConverter converter(instructionSet);
    for (auto _ : state) {
        const auto image = images.next();
        converter.convert(image, images.frame());
    }
}

void swscale(benchmark::State& state)
{
    struct Free {
        void operator()(SwsContext* context) const { sws_freeContext(context); }
    };
    const auto size = sourceSize(state);
    Images images(size);
    const std::unique_ptr<SwsContext, Free> context(
        sws_getContext(size.width(), size.height(), AV_PIX_FMT_BGR0, OutputSize.width(), OutputSize.height(),
                       AV_PIX_FMT_NV12, size == OutputSize ? SWS_POINT : SWS_AREA, nullptr, nullptr, nullptr));
    sws_setColorspaceDetails(context.get(), sws_getCoefficients(SWS_CS_ITU709), 1, sws_getCoefficients(SWS_CS_ITU709),
                             0, 0, 1 << 16, 1 << 16);
    for (auto _ : state) {
        const auto image = images.next();
        const auto& frame = images.frame();
        std::uint8_t* planes[] = {frame.luma, frame.chroma};
        const int strides[] = {frame.stride, frame.stride};
        sws_scale(context.get(), &image.pixels, &image.stride, 0, size.height(), planes, strides);
    }
}

#ifdef QUELTO_HAS_LIBYUV
/// BT.601 only, with an intermediate scaled image.
void libyuvBt601(benchmark::State& state)
{
    const auto size = sourceSize(state);
    Images images(size);
    std::vector<std::uint8_t> scaled(static_cast<std::size_t>(OutputSize.width() * OutputSize.height() * 4));
    for (auto _ : state) {
        auto image = images.next();
        const auto& frame = images.frame();
        if (size != OutputSize) {
            libyuv::ARGBScale(image.pixels, image.stride, size.width(), size.height(), scaled.data(),
                              OutputSize.width() * 4, OutputSize.width(), OutputSize.height(), libyuv::kFilterBox);
            image = {.pixels = scaled.data(), .stride = OutputSize.width() * 4, .size = OutputSize};
        }
        libyuv::ARGBToNV12(image.pixels, image.stride, frame.luma, frame.stride, frame.chroma, frame.stride,
                           OutputSize.width(), OutputSize.height());
    }
}
#endif

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->Args({1920, 1080})->Args({2560, 1440})->Args({3840, 2160})->Args({1366, 768})->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(ours, avx2, InstructionSet::avx2)->Apply(sizes);
BENCHMARK_CAPTURE(ours, ssse3, InstructionSet::ssse3)->Apply(sizes);
BENCHMARK_CAPTURE(ours, portable, InstructionSet::portable)->Apply(sizes);
BENCHMARK(swscale)->Apply(sizes);
#ifdef QUELTO_HAS_LIBYUV
BENCHMARK(libyuvBt601)->Apply(sizes);
#endif

} // namespace
} // namespace quelto
